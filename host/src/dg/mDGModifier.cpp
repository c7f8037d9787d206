#include <maya/MDGModifier.h>

#include "dg/access.h"
#include "dg/commandRunner.h"
#include "dg/evaluation.h"
#include "dg/scene.h"

#include "host/log.h"

#include <maya/MDagModifier.h>

#include <algorithm>

using host::Access;
using host::NodeBody;
using host::Scene;

namespace host {

// One recorded edit: applied by doIt, taken back by undoIt, applied again by a second doIt.
struct ModifierOp {
    virtual ~ModifierOp() = default;
    virtual MStatus apply() = 0;
    virtual void revert() = 0;
};

} // namespace host

namespace {

using Op = std::shared_ptr<host::ModifierOp>;

// The node exists from the moment it is recorded, so that its handle can be used; undo
// removes it and a later doIt brings the same node back.
struct CreateOp : host::ModifierOp {
    host::NodePtr node;
    host::NodePtr madeParent;
    std::vector<Scene::DeletedNode> removed;
    bool first = true;
    MStatus apply() override
    {
        if (first) {
            first = false;
            return MStatus::kSuccess;
        }
        Scene::current().restoreDeleted(removed);
        removed.clear();
        return MStatus::kSuccess;
    }
    void revert() override
    {
        NodeBody* top = madeParent ? madeParent.get() : node.get();
        removed = Scene::current().deleteNodeForUndo(top, nullptr);
    }
};

struct DeleteOp : host::ModifierOp {
    MObject node;
    bool includeParents = true;
    std::vector<std::vector<Scene::DeletedNode>> removed;
    MStatus apply() override
    {
        NodeBody* n = Access::node(node);
        if (!n)
            return MStatus::kInvalidParameter;
        NodeBody* parent = n->parent;
        MStatus st;
        removed.push_back(Scene::current().deleteNodeForUndo(n, &st));
        // A transform left with nothing under it goes too, as when its shape is deleted.
        while (includeParents && parent && parent != Scene::current().world() && parent->children.empty()) {
            NodeBody* next = parent->parent;
            removed.push_back(Scene::current().deleteNodeForUndo(parent, nullptr));
            parent = next;
        }
        return st;
    }
    void revert() override
    {
        for (auto it = removed.rbegin(); it != removed.rend(); ++it)
            Scene::current().restoreDeleted(*it);
        removed.clear();
    }
};

struct RenameOp : host::ModifierOp {
    MObject node;
    std::string newName, oldName;
    MStatus apply() override
    {
        NodeBody* n = Access::node(node);
        if (!n)
            return MStatus::kInvalidParameter;
        oldName = n->name;
        return Scene::current().rename(n, newName);
    }
    void revert() override
    {
        if (NodeBody* n = Access::node(node))
            Scene::current().rename(n, oldName);
    }
};

struct ConnectOp : host::ModifierOp {
    MPlug source, destination;
    bool connect = true;
    MStatus apply() override { return run(connect); }
    void revert() override { run(!connect); }
    MStatus run(bool make)
    {
        std::string error;
        MStatus st = make ? host::connectPlugs(Access::plugRef(source), Access::plugRef(destination), false, &error)
                          : host::disconnectPlugs(Access::plugRef(source), Access::plugRef(destination), &error);
        if (!st && !error.empty())
            host::writeLog(host::LogLevel::kError, error);
        return st;
    }
};

struct PlugValueOp : host::ModifierOp {
    MPlug plug;
    host::Value value, previous;
    MStatus apply() override
    {
        NodeBody* n = Access::plugNode(plug);
        if (!n)
            return MStatus::kInvalidParameter;
        host::PlugKey key = Access::plugKey(plug);
        previous = host::readValue(n, key);
        return host::writeValue(n, key, value);
    }
    void revert() override
    {
        if (NodeBody* n = Access::plugNode(plug))
            host::writeValue(n, Access::plugKey(plug), previous);
    }
};

struct CommandOp : host::ModifierOp {
    std::string text;
    host::CommandOutcome outcome;
    bool ran = false;
    MStatus apply() override
    {
        if (ran && outcome.redo) {
            outcome.redo();
            return MStatus::kSuccess;
        }
        ran = true;
        outcome = host::runCommandText(text, false);
        return outcome.status;
    }
    void revert() override
    {
        if (outcome.undo)
            outcome.undo();
    }
};

struct ReparentOp : host::ModifierOp {
    MObject node, newParent;
    NodeBody* oldParent = nullptr;
    std::size_t oldPosition = 0;
    MStatus apply() override
    {
        NodeBody* n = Access::node(node);
        if (!n)
            return MStatus::kInvalidParameter;
        oldParent = n->parent;
        if (oldParent) {
            auto& s = oldParent->children;
            oldPosition = std::size_t(std::find(s.begin(), s.end(), n) - s.begin());
        }
        return Scene::current().reparent(n, Access::node(newParent));
    }
    void revert() override
    {
        NodeBody* n = Access::node(node);
        if (!n || !oldParent)
            return;
        Scene::current().reparent(n, oldParent == Scene::current().world() ? nullptr : oldParent);
        auto& s = oldParent->children;
        s.erase(std::find(s.begin(), s.end(), n));
        s.insert(s.begin() + std::min(oldPosition, s.size()), n);
    }
};

Op makePlugValueOp(const MPlug& plug, const host::Value& v)
{
    auto op = std::make_shared<PlugValueOp>();
    op->plug = plug;
    op->value = v;
    return op;
}

} // namespace

MDGModifier::MDGModifier() = default;
MDGModifier::~MDGModifier() = default;

void MDGModifier::record(std::shared_ptr<host::ModifierOp> op) { fOps.push_back(std::move(op)); }

MObject MDGModifier::createNodeUnder(const MString& type, const MObject& parent, MStatus* ReturnStatus)
{
    const host::NodeType* t = host::NodeTypeRegistry::instance().find(type.asChar());
    MStatus st = MStatus::kInvalidParameter;
    host::NodePtr made, madeParent;
    if (t)
        made = Scene::current().createNode(t, "", Access::node(parent), &st, &madeParent);
    if (ReturnStatus)
        *ReturnStatus = made ? MStatus(MStatus::kSuccess) : st;
    if (!made)
        return MObject();
    auto op = std::make_shared<CreateOp>();
    op->node = made;
    op->madeParent = madeParent;
    record(op);
    // Maya's modifier hands back the transform when it had to make one for a shape.
    return Access::object(madeParent ? madeParent : made);
}

MObject MDGModifier::createNodeUnder(const MTypeId& typeId, const MObject& parent, MStatus* ReturnStatus)
{
    const host::NodeType* t = host::NodeTypeRegistry::instance().find(typeId);
    if (!t) {
        if (ReturnStatus)
            *ReturnStatus = MStatus::kInvalidParameter;
        return MObject();
    }
    return createNodeUnder(MString(t->name.c_str()), parent, ReturnStatus);
}

MObject MDGModifier::createNode(const MTypeId& typeId, MStatus* ReturnStatus)
{
    return createNodeUnder(typeId, MObject::kNullObj, ReturnStatus);
}

MObject MDGModifier::createNode(const MString& type, MStatus* ReturnStatus)
{
    return createNodeUnder(type, MObject::kNullObj, ReturnStatus);
}

MStatus MDGModifier::deleteNode(const MObject& node, bool includeParents)
{
    if (!Access::node(node))
        return MStatus::kInvalidParameter;
    auto op = std::make_shared<DeleteOp>();
    op->node = node;
    op->includeParents = includeParents;
    record(op);
    return MStatus::kSuccess;
}

MStatus MDGModifier::renameNode(const MObject& node, const MString& newName)
{
    if (!Access::node(node) || newName.length() == 0)
        return MStatus::kInvalidParameter;
    auto op = std::make_shared<RenameOp>();
    op->node = node;
    op->newName = newName.asChar();
    record(op);
    return MStatus::kSuccess;
}

MStatus MDGModifier::connect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode,
                             const MObject& destAttr)
{
    return connect(MPlug(sourceNode, sourceAttr), MPlug(destNode, destAttr));
}

MStatus MDGModifier::connect(const MPlug& source, const MPlug& dest)
{
    if (source.isNull() || dest.isNull())
        return MStatus::kInvalidParameter;
    auto op = std::make_shared<ConnectOp>();
    op->source = source;
    op->destination = dest;
    record(op);
    return MStatus::kSuccess;
}

MStatus MDGModifier::disconnect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode,
                                const MObject& destAttr)
{
    return disconnect(MPlug(sourceNode, sourceAttr), MPlug(destNode, destAttr));
}

MStatus MDGModifier::disconnect(const MPlug& source, const MPlug& dest)
{
    if (source.isNull() || dest.isNull())
        return MStatus::kInvalidParameter;
    auto op = std::make_shared<ConnectOp>();
    op->source = source;
    op->destination = dest;
    op->connect = false;
    record(op);
    return MStatus::kSuccess;
}

MStatus MDGModifier::newPlugValue(const MPlug& plug, MObject& plugValue)
{
    if (plug.isNull())
        return MStatus::kInvalidParameter;
    record(makePlugValueOp(plug, host::Value::ofData(plugValue)));
    return MStatus::kSuccess;
}

MStatus MDGModifier::newPlugValueBool(const MPlug& plug, bool v)
{
    return newPlugValueDouble(plug, v ? 1.0 : 0.0);
}
MStatus MDGModifier::newPlugValueInt(const MPlug& plug, int v) { return newPlugValueDouble(plug, v); }
MStatus MDGModifier::newPlugValueFloat(const MPlug& plug, float v) { return newPlugValueDouble(plug, v); }
MStatus MDGModifier::newPlugValueShort(const MPlug& plug, short v) { return newPlugValueDouble(plug, v); }
MStatus MDGModifier::newPlugValueDouble(const MPlug& plug, double v)
{
    if (plug.isNull())
        return MStatus::kInvalidParameter;
    record(makePlugValueOp(plug, host::Value::numeric(v)));
    return MStatus::kSuccess;
}

MStatus MDGModifier::newPlugValueString(const MPlug& plug, const MString& v)
{
    if (plug.isNull())
        return MStatus::kInvalidParameter;
    MPlug copy(plug);
    MDataHandle h = copy.asMDataHandle();
    h.setString(v);
    record(makePlugValueOp(plug, *Access::handleValue(h)));
    return MStatus::kSuccess;
}

MStatus MDGModifier::commandToExecute(const MString& command)
{
    auto op = std::make_shared<CommandOp>();
    op->text = command.asChar();
    record(op);
    return MStatus::kSuccess;
}

MStatus MDGModifier::doIt()
{
    MStatus result;
    for (; fDone < fOps.size(); ++fDone) {
        MStatus st = fOps[fDone]->apply();
        if (!st)
            result = st;
    }
    return result;
}

MStatus MDGModifier::undoIt()
{
    while (fDone > 0)
        fOps[--fDone]->revert();
    return MStatus::kSuccess;
}

// ---- MDagModifier -------------------------------------------------------------------------

MDagModifier::MDagModifier() = default;
MDagModifier::~MDagModifier() = default;

MObject MDagModifier::createNode(const MTypeId& typeId, const MObject& parent, MStatus* ReturnStatus)
{
    return createNodeUnder(typeId, parent, ReturnStatus);
}

MObject MDagModifier::createNode(const MString& type, const MObject& parent, MStatus* ReturnStatus)
{
    return createNodeUnder(type, parent, ReturnStatus);
}

MStatus MDagModifier::reparentNode(const MObject& node, const MObject& newParent)
{
    NodeBody* n = Access::node(node);
    if (!n || !n->type->isDag)
        return MStatus::kInvalidParameter;
    auto op = std::make_shared<ReparentOp>();
    op->node = node;
    op->newParent = newParent;
    record(op);
    return MStatus::kSuccess;
}
