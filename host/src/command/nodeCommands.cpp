// Built-in commands on nodes: createNode, delete, objExists, rename, parent, ls.

#include "command/builtinArgs.h"

#include "dg/access.h"
#include "dg/nodeType.h"
#include "dg/plugNames.h"
#include "dg/scene.h"
#include "dg/wildcardMatch.h"
#include "ui/selectionState.h"

#include "dg/evaluation.h"
#include "mesh/meshHistory.h"
#include "mesh/meshNode.h"

#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <unordered_set>

namespace host {
namespace {

NodeBody* namedNode(const CommandCall& call, const std::string& name, MStatus& st)
{
    NodeBody* node = findNodeByPath(name);
    if (!node)
        st = commandError(call, "No object matches name: " + name);
    return node;
}

// A name that a path, a plug or a component string can address: none of "|.[]" or blanks.
bool addressableName(const std::string& name)
{
    return !name.empty() && name.find_first_of("|.[] \t\n\r") == std::string::npos;
}

MStatus createNodeCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"n", "name", 1}, {"p", "parent", 1}, {"s", "shared", 0}, {"ss", "skipSelect", 0}}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 1)
        return commandError(call, "needs exactly one node type");
    std::string typeName = a.operands().front().text;
    const NodeType* type = NodeTypeRegistry::instance().find(typeName);
    if (!type)
        return commandError(call, "Unknown node type '" + typeName + "'");
    std::string name = a.text("name");
    if (a.has("name") && !addressableName(name))
        return commandError(call, "'" + name + "' is not a valid name");
    if (a.has("shared") && !name.empty()) {
        if (NodeBody* existing = Scene::current().findByName(name)) {
            result = CommandValue::ofString(existing->name);
            return MStatus::kSuccess;
        }
    }
    NodeBody* parent = nullptr;
    MStatus st;
    if (a.has("parent") && !(parent = namedNode(call, a.text("parent"), st)))
        return st;
    NodePtr madeParent;
    NodePtr node = Scene::current().createNode(type, name, parent, &st, &madeParent);
    if (!node)
        return st ? MStatus(MStatus::kFailure) : st;

    struct Life {
        NodePtr top;
        std::vector<Scene::DeletedNode> removed;
    };
    auto life = std::make_shared<Life>();
    life->top = madeParent ? madeParent : node;
    recordUndo([life] { life->removed = Scene::current().deleteNodeForUndo(life->top.get(), nullptr); },
               [life] {
                   Scene::current().restoreDeleted(life->removed);
                   life->removed.clear();
               });
    if (!a.has("skipSelect")) {
        MSelectionList next;
        next.add(MString(nodePathName(node.get()).c_str()));
        changeSelection(next);
    }
    result = CommandValue::ofString(node->name);
    return MStatus::kSuccess;
}

// What deleting a shape's history changes, kept to take it back: the nodes it deleted (with
// their links and places in the DAG) and the shape's own geometry before.
struct HistoryChange {
    NodePtr shape;
    Value ownGeometry;
    std::vector<Scene::DeletedNode> deleted;
};

MStatus collapseHistory(HistoryChange& change)
{
    NodeBody* shape = change.shape.get();
    // Anything upstream may go; its parents too (an intermediate shape's transform).
    std::vector<NodeBody*> upstream;
    std::vector<NodeBody*> queue{shape};
    for (std::size_t i = 0; i < queue.size(); ++i)
        for (const auto& link : connectionsOf(queue[i]))
            if (link.second.node == queue[i] && link.first.node &&
                std::find(queue.begin(), queue.end(), link.first.node) == queue.end())
                queue.push_back(link.first.node);
    upstream.assign(queue.begin() + 1, queue.end());
    for (std::size_t i = 0, n = upstream.size(); i < n; ++i) {
        NodeBody* parent = upstream[i]->parent;
        if (parent && parent != Scene::current().world() &&
            std::find(upstream.begin(), upstream.end(), parent) == upstream.end())
            upstream.push_back(parent);
    }
    std::vector<Scene::DeletedNode> before;
    for (NodeBody* n : upstream) {
        Scene::DeletedNode record;
        record.node = Scene::current().shared(n);
        record.parent = n->parent;
        if (n->parent) {
            const auto& siblings = n->parent->children;
            record.childPosition = std::size_t(std::find(siblings.begin(), siblings.end(), n) - siblings.begin());
        }
        record.connections = connectionsOf(n);
        before.push_back(std::move(record));
    }
    bakeShapeEdits(shape);
    const AttributeBody* own = Access::attribute(meshAttributes().cachedInMesh);
    change.ownGeometry = readValue(shape, PlugKey{own, {}});
    MStatus st = deleteConstructionHistory(shape);
    change.deleted.clear();
    for (Scene::DeletedNode& record : before)
        if (!record.node->isAlive)
            change.deleted.push_back(std::move(record));
    return st;
}

MStatus deleteHistory(const CommandCall& call, const std::vector<NodeBody*>& nodes)
{
    std::vector<NodeBody*> shapes;
    for (NodeBody* node : nodes) {
        if (isMeshShape(node)) {
            shapes.push_back(node);
            continue;
        }
        for (NodeBody* child : node->children)
            if (isMeshShape(child))
                shapes.push_back(child);
    }
    if (shapes.empty())
        return commandError(call, "-constructionHistory: no mesh shape among the objects");
    for (NodeBody* shape : shapes) {
        auto change = std::make_shared<HistoryChange>();
        change->shape = Scene::current().shared(shape);
        MStatus st = collapseHistory(*change);
        if (!st)
            return commandError(call, "cannot delete the construction history of " + shape->name, st.statusCode());
        recordUndo(
            [change] {
                // Parents come back before their children, and the links with them.
                Scene::current().restoreDeleted(change->deleted);
                if (change->ownGeometry.kind == Value::Kind::kData && !change->ownGeometry.data.isNull())
                    setShapeGeometry(change->shape.get(), change->ownGeometry.data);
            },
            [change] { collapseHistory(*change); });
    }
    return MStatus::kSuccess;
}

// The exclusive history of every mesh shape among `nodes` and their DAG descendants.
std::vector<NodePtr> historyOfDeleted(const std::vector<NodePtr>& nodes)
{
    std::vector<NodeBody*> shapes;
    std::vector<NodeBody*> queue;
    for (const NodePtr& n : nodes)
        queue.push_back(n.get());
    for (std::size_t i = 0; i < queue.size(); ++i) {
        if (isMeshShape(queue[i]))
            shapes.push_back(queue[i]);
        for (NodeBody* child : queue[i]->children)
            queue.push_back(child);
    }
    std::vector<NodePtr> out;
    for (NodeBody* shape : shapes)
        for (NodeBody* history : historyFeedingOnly(shape))
            if (std::find(queue.begin(), queue.end(), history) == queue.end())
                out.push_back(Scene::current().shared(history));
    return out;
}

MStatus deleteCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"ch", "constructionHistory", 0}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> names = a.operandTexts();
    if (names.empty())
        names = selectionNames();
    if (names.empty())
        return commandError(call, "Not enough objects or values.");
    // Every name is checked before anything goes, so a bad name leaves the scene alone.
    std::vector<NodePtr> nodes;
    for (const std::string& name : names) {
        if (name.find('.') != std::string::npos)
            return commandError(call, "deleting components or attributes is not supported: " + name);
        MStatus st;
        NodeBody* node = namedNode(call, name, st);
        if (!node)
            return st;
        nodes.push_back(Scene::current().shared(node));
    }
    if (a.has("constructionHistory")) {
        std::vector<NodeBody*> raw;
        for (const NodePtr& n : nodes)
            raw.push_back(n.get());
        return deleteHistory(call, raw);
    }
    // History that fed only the deleted shapes goes with them, as the objects' inputs would
    // otherwise be left feeding nothing; it is found once, before anything goes.
    for (const NodePtr& history : historyOfDeleted(nodes))
        nodes.push_back(history);
    auto removed = std::make_shared<std::vector<std::vector<Scene::DeletedNode>>>();
    auto remove = [nodes, removed] {
        removed->clear();
        Scene& scene = Scene::current();
        for (const NodePtr& n : nodes) {
            if (!n->isAlive) // gone already as the child of an earlier one
                continue;
            NodeBody* parent = n->parent;
            const bool hidden = isIntermediateShape(n.get());
            removed->push_back(scene.deleteNodeForUndo(n.get(), nullptr));
            // A transform that only held an intermediate shape of that history goes with it.
            if (hidden && parent && parent != scene.world() && parent->isAlive && parent->type->isTransform &&
                parent->children.empty())
                removed->push_back(scene.deleteNodeForUndo(parent, nullptr));
        }
    };
    remove();
    recordUndo(
        [removed] {
            for (auto it = removed->rbegin(); it != removed->rend(); ++it)
                Scene::current().restoreDeleted(*it);
            removed->clear();
        },
        remove);
    return MStatus::kSuccess;
}

MStatus objExistsCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 1)
        return commandError(call, "needs exactly one name");
    const std::string& name = a.operands().front().text;
    bool exists = findNodeByPath(name) != nullptr;
    if (!exists && name.find('.') != std::string::npos) {
        MPlug plug;
        exists = parsePlug(name, plug, nullptr);
    }
    result = CommandValue::ofInt(exists ? 1 : 0);
    return MStatus::kSuccess;
}

MStatus renameCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> names = a.operandTexts();
    if (names.size() == 1)
        names.insert(names.begin(), selectionNames().empty() ? std::string() : selectionNames().front());
    if (names.size() != 2 || names.front().empty())
        return commandError(call, "needs the object and its new name");
    if (!addressableName(names[1]))
        return commandError(call, "'" + names[1] + "' is not a valid name");
    MStatus st;
    NodeBody* node = namedNode(call, names[0], st);
    if (!node)
        return st;
    NodePtr keep = Scene::current().shared(node);
    std::string before = node->name;
    st = Scene::current().rename(node, names[1]);
    if (!st)
        return commandError(call, "cannot rename " + before, st.statusCode());
    std::string after = node->name;
    recordUndo([keep, before] { Scene::current().rename(keep.get(), before); },
               [keep, after] { Scene::current().rename(keep.get(), after); });
    result = CommandValue::ofString(after);
    return MStatus::kSuccess;
}

// Where one object of a parent command was before it moved.
struct ParentMove {
    NodePtr node;
    NodeBody* oldParent;
    std::size_t oldPosition;
};

// Puts the object back under its old parent at its old place among the children.
void takeBack(const ParentMove& m)
{
    NodeBody* world = Scene::current().world();
    if (!Scene::current().reparent(m.node.get(), m.oldParent == world ? nullptr : m.oldParent) || !m.oldParent)
        return;
    auto& s = m.oldParent->children;
    auto at = std::find(s.begin(), s.end(), m.node.get());
    if (at == s.end())
        return;
    s.erase(at);
    s.insert(s.begin() + std::ptrdiff_t(std::min(m.oldPosition, s.size())), m.node.get());
}

MStatus parentCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"w", "world", 0}, {"r", "relative", 0}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> names = a.operandTexts();
    NodeBody* parent = nullptr;
    MStatus st;
    if (!a.has("world")) {
        if (names.size() < 2)
            return commandError(call, "needs the objects and their new parent");
        if (!(parent = namedNode(call, names.back(), st)))
            return st;
        names.pop_back();
    }
    auto moves = std::make_shared<std::vector<ParentMove>>();
    for (const std::string& name : names) {
        NodeBody* node = namedNode(call, name, st);
        if (!node)
            return st;
        NodeBody* old = node->parent;
        std::size_t position = old ? std::size_t(std::find(old->children.begin(), old->children.end(), node) -
                                                 old->children.begin())
                                   : 0;
        moves->push_back(ParentMove{Scene::current().shared(node), old, position});
    }
    std::vector<std::string> out;
    for (std::size_t i = 0; i < moves->size(); ++i) {
        const ParentMove& m = (*moves)[i];
        st = Scene::current().reparent(m.node.get(), parent);
        if (!st) {
            // All or nothing: the objects moved so far go back where they were.
            for (std::size_t k = i; k-- > 0;)
                takeBack((*moves)[k]);
            return commandError(call, "cannot parent " + m.node->name + " there", st.statusCode());
        }
        out.push_back(nodePathName(m.node.get()));
    }
    NodePtr keepParent = parent ? Scene::current().shared(parent) : nullptr;
    recordUndo(
        [moves] {
            for (auto it = moves->rbegin(); it != moves->rend(); ++it)
                takeBack(*it);
        },
        [moves, keepParent] {
            for (const ParentMove& m : *moves)
                Scene::current().reparent(m.node.get(), keepParent.get());
        });
    result = CommandValue::ofStrings(out);
    return MStatus::kSuccess;
}

MStatus lsCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"sl", "selection", 0},
                        {"l", "long", 0},
                        {"typ", "type", 1},
                        {"dag", "dag", 0},
                        {"tr", "transforms", 0},
                        {"s", "shapes", 0}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> patterns = a.operandTexts();
    std::vector<NodeBody*> candidates;
    if (a.has("selection")) {
        for (const std::string& name : selectionNames()) {
            std::string nodePart = name.substr(0, name.find('.'));
            if (NodeBody* n = findNodeByPath(nodePart))
                candidates.push_back(n);
        }
    } else {
        for (const NodePtr& n : Scene::current().nodes())
            candidates.push_back(n.get());
    }
    std::vector<std::string> out;
    std::unordered_set<std::string> listed;
    for (NodeBody* n : candidates) {
        if (a.has("dag") && !n->type->isDag)
            continue;
        if (a.has("transforms") && !n->type->isTransform)
            continue;
        if (a.has("shapes") && !n->type->isShape)
            continue;
        if (a.has("type")) {
            bool any = false;
            for (unsigned u = 0; u < a.uses("type"); ++u)
                any = any || n->type->isA(a.text("type", 0, u));
            if (!any)
                continue;
        }
        if (!patterns.empty()) {
            bool any = false;
            for (const std::string& p : patterns)
                // A pattern with '|' names paths, any other names: "?" is no path separator.
                any = any || wildcardMatch(p, p.find('|') == std::string::npos ? n->name : nodePathName(n));
            if (!any)
                continue;
        }
        std::string name = a.has("long") ? nodePathName(n) : n->name;
        if (listed.insert(name).second)
            out.push_back(name);
    }
    result = CommandValue::ofStrings(out);
    return MStatus::kSuccess;
}

// listRelatives [-c] [-s] [-f] [-ni] [-type t] names: the DAG children of each node, in
// order (with -s only the shapes); no names means the selection.
MStatus listRelativesCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"c", "children", 0},
                        {"s", "shapes", 0},
                        {"f", "fullPath", 0},
                        {"ni", "noIntermediate", 0},
                        {"typ", "type", 1}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> names = a.operandTexts();
    if (names.empty())
        names = selectionNames();
    std::vector<std::string> out;
    for (const std::string& name : names) {
        NodeBody* n = findNodeByPath(name.substr(0, name.find('.')));
        if (!n)
            return commandError(call, "No object matches name: " + name, MStatus::kNotFound);
        for (NodeBody* child : n->children) {
            if (a.has("shapes") && !child->type->isShape)
                continue;
            if (a.has("noIntermediate") && isIntermediateShape(child))
                continue;
            if (a.has("type") && !child->type->isA(a.text("type")))
                continue;
            out.push_back(a.has("fullPath") ? nodePathName(child) : child->name);
        }
    }
    result = CommandValue::ofStrings(out);
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("listRelatives", listRelativesCommand);
        registerBuiltinCommand("createNode", createNodeCommand);
        registerBuiltinCommand("delete", deleteCommand);
        registerBuiltinCommand("objExists", objExistsCommand);
        registerBuiltinCommand("rename", renameCommand);
        registerBuiltinCommand("parent", parentCommand);
        registerBuiltinCommand("ls", lsCommand);
    }
} gRegistrar;

} // namespace
} // namespace host
