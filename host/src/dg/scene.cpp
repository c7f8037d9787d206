#include "dg/scene.h"

#include "dg/access.h"
#include "dg/barrier.h"
#include "dg/evaluation.h"
#include "dg/messages.h"
#include "dg/nodeTypes.h"

#include "host/log.h"

#include <maya/MPxNode.h>

#include <algorithm>
#include <cctype>

namespace host {
namespace {

std::string defaultName(const NodeType* type)
{
    if (type->name == "mesh")
        return "polySurfaceShape1";
    if (type->name == "camera")
        return "cameraShape1";
    return type->name + "1";
}

std::string defaultParentName(const NodeType* type)
{
    if (type->name == "mesh")
        return "polySurface1";
    if (type->name == "camera")
        return "camera1";
    if (type->name == "locator")
        return "locator1";
    return "transform1";
}

} // namespace

Scene::Scene()
{
    ensureBuiltinTypes();
    fWorld = std::make_shared<NodeBody>(NodeTypeRegistry::instance().find("world"), "");
}

Scene& Scene::current()
{
    static Scene* scene = new Scene(); // lives for the process; plug-in code may run at exit
    return *scene;
}

void Scene::reset()
{
    bumpSceneStamp();
    // Delete top-down so that DAG children go with their parents.
    while (!fNodes.empty()) {
        NodeBody* last = fNodes.back().get();
        NodeBody* top = last;
        while (top->parent && top->parent != fWorld.get())
            top = top->parent;
        deleteNode(top);
    }
    fNodes.clear();
    fByName.clear();
    fWorld->children.clear();
    const NodeType* set = NodeTypeRegistry::instance().find("objectSet");
    createNode(set, "initialShadingGroup", nullptr, nullptr);
    createNode(set, "defaultLightSet", nullptr, nullptr);
}

std::string Scene::uniqueName(const std::string& requested, const NodeBody* self) const
{
    auto taken = [&](const std::string& n) {
        auto it = fByName.find(n);
        return it != fByName.end() && it->second != self;
    };
    if (!requested.empty() && !taken(requested))
        return requested;
    std::string stem = requested;
    while (!stem.empty() && std::isdigit(static_cast<unsigned char>(stem.back())))
        stem.pop_back();
    if (stem.empty())
        stem = "node";
    for (unsigned long n = 1;; ++n) {
        std::string candidate = stem + std::to_string(n);
        if (!taken(candidate))
            return candidate;
    }
}

void Scene::insertName(NodeBody* node) { fByName[node->name] = node; }

void Scene::eraseName(NodeBody* node)
{
    auto it = fByName.find(node->name);
    if (it != fByName.end() && it->second == node)
        fByName.erase(it);
}

NodeBody* Scene::findByName(const std::string& name) const
{
    auto it = fByName.find(name);
    return it == fByName.end() ? nullptr : it->second;
}

NodePtr Scene::shared(const NodeBody* node) const
{
    if (!node)
        return nullptr;
    return std::const_pointer_cast<NodeBody>(node->shared_from_this());
}

NodePtr Scene::createNode(const NodeType* type, const std::string& requestedName, NodeBody* parent,
                          MStatus* status, NodePtr* madeParent)
{
    bumpSceneStamp();
    auto fail = [&](MStatus::MStatusCode code, const std::string& why) {
        if (status)
            *status = code;
        if (!why.empty())
            writeLog(LogLevel::kError, why);
        return NodePtr();
    };
    if (status)
        *status = MStatus::kSuccess;
    if (!type || !type->creator || type->name == "world" || type->name == "dependNode" ||
        type->name == "dagNode" || type->name == "shape")
        return fail(MStatus::kInvalidParameter, type ? "Cannot create a node of the abstract type '" + type->name + "'"
                                                     : std::string());
    if (parent && (!parent->isAlive || !parent->type->isDag))
        return fail(MStatus::kInvalidParameter, "The parent of a new node must be a DAG node");
    if (parent && !type->isDag)
        return fail(MStatus::kInvalidParameter, "'" + type->name + "' is not a DAG node type and takes no parent");
    if (parent && type->isDag && !parent->type->isTransform && parent != fWorld.get())
        return fail(MStatus::kInvalidParameter, "A DAG node can only be parented under a transform");

    NodePtr autoParent;
    if (type->isShape && (!parent || parent == fWorld.get())) {
        const NodeType* transform = NodeTypeRegistry::instance().find("transform");
        std::string parentName = defaultParentName(type);
        autoParent = createNode(transform, parentName, nullptr, status);
        if (!autoParent)
            return NodePtr();
        parent = autoParent.get();
        if (madeParent)
            *madeParent = autoParent;
    }

    std::string name = uniqueName(requestedName.empty() ? defaultName(type) : requestedName);
    auto node = std::make_shared<NodeBody>(type, name);
    node->serial = fNextSerial++;
    MPxNode* px = guarded<MPxNode*>(type->name + " creator", nullptr, [&] { return type->creator(); });
    if (!px) {
        if (autoParent)
            deleteNode(autoParent.get());
        return fail(MStatus::kFailure, "The creator of node type '" + type->name + "' made no node");
    }
    node->px.reset(px);
    Access::bind(px, node.get());

    fNodes.push_back(node);
    insertName(node.get());
    const_cast<NodeType*>(type)->liveNodes++;
    if (type->isDag) {
        NodeBody* p = parent ? parent : fWorld.get();
        node->parent = p;
        p->children.push_back(node.get());
    }
    // Computed attributes of a new node have never been computed: they start dirty.
    for (const auto& entry : type->affects)
        for (const AttributeBody* affected : entry.second)
            if (affected->arrayDepth() == 0 || (affected->flags.array && affected->arrayDepth() == 1))
                node->slot(PlugKey{affected, {}}).dirty = true;
    guardedVoid(type->name + " postConstructor", [&] { px->postConstructor(); });
    return node;
}

void Scene::detachFromDag(NodeBody* node, std::size_t* position)
{
    bumpSceneStamp();
    if (!node->parent)
        return;
    auto& siblings = node->parent->children;
    auto it = std::find(siblings.begin(), siblings.end(), node);
    if (position)
        *position = std::size_t(it - siblings.begin());
    if (it != siblings.end())
        siblings.erase(it);
}

std::vector<Scene::DeletedNode> Scene::deleteNodeForUndo(NodeBody* node, MStatus* status)
{
    bumpSceneStamp();
    std::vector<DeletedNode> out;
    if (status)
        *status = MStatus::kSuccess;
    if (!node || !node->isAlive || node == fWorld.get()) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return out;
    }
    // Children first, so that restoring in reverse brings parents back before children.
    std::vector<NodeBody*> children = node->children;
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        auto sub = deleteNodeForUndo(*it, nullptr);
        out.insert(out.end(), sub.begin(), sub.end());
    }
    DeletedNode record;
    record.node = shared(node);
    record.connections = connectionsOf(node);
    for (const auto& c : record.connections)
        disconnectPlugs(c.first, c.second, nullptr);
    record.parent = node->parent;
    detachFromDag(node, &record.childPosition);
    node->parent = nullptr;
    node->isAlive = false;
    eraseName(node);
    fNodes.erase(std::remove_if(fNodes.begin(), fNodes.end(), [&](const NodePtr& n) { return n.get() == node; }),
                 fNodes.end());
    const_cast<NodeType*>(node->type)->liveNodes--;
    fDead.push_back(record.node);
    out.push_back(std::move(record));
    return out;
}

MStatus Scene::deleteNode(NodeBody* node)
{
    bumpSceneStamp();
    MStatus st;
    deleteNodeForUndo(node, &st);
    return st;
}

void Scene::restoreDeleted(const std::vector<DeletedNode>& deleted)
{
    bumpSceneStamp();
    for (auto it = deleted.rbegin(); it != deleted.rend(); ++it) {
        NodeBody* node = it->node.get();
        if (!node || node->isAlive || !node->px)
            continue;
        node->isAlive = true;
        node->name = uniqueName(node->name);
        insertName(node);
        // Back into creation order.
        auto pos = std::lower_bound(fNodes.begin(), fNodes.end(), node->serial,
                                    [](const NodePtr& n, std::uint64_t s) { return n->serial < s; });
        fNodes.insert(pos, it->node);
        const_cast<NodeType*>(node->type)->liveNodes++;
        if (it->parent) {
            node->parent = it->parent;
            auto& siblings = it->parent->children;
            siblings.insert(siblings.begin() + std::min(it->childPosition, siblings.size()), node);
        }
    }
    for (auto it = deleted.rbegin(); it != deleted.rend(); ++it)
        for (const auto& c : it->connections)
            connectPlugs(c.first, c.second, true, nullptr);
}

MStatus Scene::rename(NodeBody* node, const std::string& requested)
{
    if (!node || !node->isAlive || requested.empty())
        return MStatus::kInvalidParameter;
    std::string previous = node->name;
    eraseName(node);
    node->name = uniqueName(requested, node);
    insertName(node);
    if (previous != node->name)
        notifyNameChanged(node, previous);
    return MStatus::kSuccess;
}

MStatus Scene::reparent(NodeBody* node, NodeBody* newParent)
{
    bumpSceneStamp();
    if (!node || !node->isAlive || !node->type->isDag)
        return MStatus::kInvalidParameter;
    NodeBody* target = newParent ? newParent : fWorld.get();
    if (!target->isAlive || !target->type->isDag || (target != fWorld.get() && !target->type->isTransform))
        return MStatus::kInvalidParameter;
    if (node->type->isShape && target == fWorld.get())
        return MStatus::kInvalidParameter;
    for (NodeBody* p = target; p; p = p->parent)
        if (p == node)
            return MStatus::kInvalidParameter; // would make a cycle
    detachFromDag(node, nullptr);
    node->parent = target;
    target->children.push_back(node);
    return MStatus::kSuccess;
}

void Scene::dropDeadImplementations(const std::string& pluginName)
{
    for (const auto& weak : fDead)
        if (auto n = weak.lock())
            if (!n->isAlive && n->type->pluginName == pluginName)
                n->px.reset();
    fDead.erase(std::remove_if(fDead.begin(), fDead.end(), [](const std::weak_ptr<NodeBody>& w) { return w.expired(); }),
                fDead.end());
}

} // namespace host
