#include <maya/MFnDagNode.h>

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"
#include "mesh/meshHistory.h"

#include <maya/MDagPathArray.h>

using host::Access;
using host::NodeBody;
using host::Scene;

TQHOST_DEFINE_MFN(MFnDagNode, MFn::kDagNode)

namespace {

// Copies the node's stored values (not its connections) to a new node of its type.
host::NodePtr copyNode(NodeBody* source, NodeBody* parent)
{
    host::NodePtr copy = Scene::current().createNode(source->type, source->name, parent, nullptr);
    if (!copy)
        return nullptr;
    for (const auto& entry : source->slots) {
        if (!entry.second.hasValue || entry.second.hasSource)
            continue;
        host::PlugSlot& s = copy->slot(entry.first);
        s.value = entry.second.value;
        if (s.value.kind == host::Value::Kind::kData)
            s.value.data = host::shareData(entry.second.value.data);
        s.hasValue = true;
        s.dirty = entry.second.dirty;
    }
    // A mesh's geometry is more than its stored values: in-place edits and history output.
    host::copyShapeGeometry(source, copy.get());
    return copy;
}

host::NodePtr copyTree(NodeBody* source, NodeBody* parent)
{
    host::NodePtr copy = copyNode(source, parent);
    if (!copy)
        return nullptr;
    std::vector<NodeBody*> children = source->children;
    for (NodeBody* c : children)
        copyTree(c, copy.get());
    return copy;
}

// Grows `box` by the node's bounds in its parent's space; false when it bounds nothing.
// A transform bounds its children, each placed by its own matrix.
bool boundsBelow(NodeBody* node, MBoundingBox& box)
{
    if (node->type->isShape)
        return host::shapeBounds(node, box);
    bool found = false;
    for (NodeBody* child : node->children) {
        MBoundingBox b;
        if (!boundsBelow(child, b))
            continue;
        if (child->type->isTransform)
            b.transformUsing(host::localMatrix(child));
        if (found)
            box.expand(b);
        else
            box = b;
        found = true;
    }
    return found;
}

} // namespace

MFnDagNode::MFnDagNode(const MDagPath& object, MStatus* ReturnStatus)
{
    MStatus s = setObject(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MStatus MFnDagNode::setObject(const MDagPath& path)
{
    MStatus s = attach(path.node());
    fPath = s ? path : MDagPath();
    return s;
}

MStatus MFnDagNode::setObject(MObject& object)
{
    fPath = MDagPath();
    return attach(object);
}

MStatus MFnDagNode::setObject(const MObject& object)
{
    fPath = MDagPath();
    return attach(object);
}

MObject MFnDagNode::create(const MString& type, const MString& name, MObject& parent, MStatus* ReturnStatus)
{
    const host::NodeType* t = host::NodeTypeRegistry::instance().find(type.asChar());
    NodeBody* p = parent.isNull() ? nullptr : Access::node(parent);
    if (!t || !t->isDag || (!parent.isNull() && !p)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    MStatus st;
    host::NodePtr madeParent;
    host::NodePtr node = Scene::current().createNode(t, name.asChar(), p, &st, &madeParent);
    TQHOST_SET_STATUS(ReturnStatus, st);
    if (!node)
        return MObject();
    // With no parent given, a shape comes back as the transform made for it.
    MObject result = Access::object(madeParent ? madeParent : node);
    setObject(result);
    return result;
}

MObject MFnDagNode::create(const MString& type, MObject& parent, MStatus* ReturnStatus)
{
    return create(type, MString(), parent, ReturnStatus);
}

MObject MFnDagNode::create(const MTypeId& typeId, MObject& parent, MStatus* ReturnStatus)
{
    return create(typeId, MString(), parent, ReturnStatus);
}

MObject MFnDagNode::create(const MTypeId& typeId, const MString& name, MObject& parent, MStatus* ReturnStatus)
{
    const host::NodeType* t = host::NodeTypeRegistry::instance().find(typeId);
    if (!t) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    return create(MString(t->name.c_str()), name, parent, ReturnStatus);
}

unsigned int MFnDagNode::parentCount(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n && n->parent ? 1u : 0u;
}

MObject MFnDagNode::parent(unsigned int i, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n || !n->parent || i != 0) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    return Access::object(n->parent->shared_from_this());
}

MStatus MFnDagNode::addChild(MObject& child, unsigned int index, bool)
{
    NodeBody* n = Access::node(fObject, nullptr);
    NodeBody* c = Access::node(child);
    if (!n || !c)
        return MStatus::kInvalidParameter;
    MStatus st = Scene::current().reparent(c, n);
    if (st && index != kNextPos && index < n->children.size()) {
        n->children.pop_back();
        n->children.insert(n->children.begin() + index, c);
    }
    return st;
}

MStatus MFnDagNode::removeChild(MObject& child)
{
    NodeBody* n = Access::node(fObject, nullptr);
    NodeBody* c = Access::node(child);
    if (!n || !c || c->parent != n)
        return MStatus::kInvalidParameter;
    return Scene::current().reparent(c, nullptr);
}

unsigned int MFnDagNode::childCount(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? static_cast<unsigned int>(n->children.size()) : 0u;
}

MObject MFnDagNode::child(unsigned int i, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n || i >= n->children.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    return Access::object(n->children[i]->shared_from_this());
}

bool MFnDagNode::hasParent(const MObject& node, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n && n->parent && n->parent == Access::node(node);
}

bool MFnDagNode::hasChild(const MObject& node, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    NodeBody* c = Access::node(node);
    return n && c && c->parent == n;
}

bool MFnDagNode::isChildOf(const MObject& node, MStatus* ReturnStatus) const { return hasParent(node, ReturnStatus); }

bool MFnDagNode::isParentOf(const MObject& node, MStatus* ReturnStatus) const { return hasChild(node, ReturnStatus); }

bool MFnDagNode::isInstanced(bool, MStatus* ReturnStatus) const
{
    Access::node(fObject, ReturnStatus);
    return false;
}

unsigned int MFnDagNode::instanceCount(bool, MStatus* ReturnStatus) const
{
    return Access::node(fObject, ReturnStatus) ? 1u : 0u;
}

MObject MFnDagNode::duplicate(bool, bool, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n)
        return MObject();
    host::NodePtr copy;
    if (n->type->isShape) {
        // A shape's copy goes under a new transform, which is what comes back.
        const host::NodeType* transform = host::NodeTypeRegistry::instance().find("transform");
        host::NodePtr parent = Scene::current().createNode(transform, n->parent ? n->parent->name : "transform1",
                                                           nullptr, nullptr);
        if (parent && copyTree(n, parent.get()))
            copy = parent;
    } else {
        copy = copyTree(n, n->parent == Scene::current().world() ? nullptr : n->parent);
    }
    TQHOST_SET_STATUS(ReturnStatus, copy ? MStatus::kSuccess : MStatus::kFailure);
    return copy ? Access::object(copy) : MObject();
}

MStatus MFnDagNode::getPath(MDagPath& path) const
{
    if (fPath.isValid()) {
        path = fPath;
        return MStatus::kSuccess;
    }
    return MDagPath::getAPathTo(fObject, path);
}

MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const { return MDagPath::getAllPathsTo(fObject, paths); }

MDagPath MFnDagNode::dagPath(MStatus* ReturnStatus) const
{
    MDagPath p;
    MStatus st = getPath(p);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return p;
}

MString MFnDagNode::fullPathName(MStatus* ReturnStatus) const { return dagPath(ReturnStatus).fullPathName(); }

MString MFnDagNode::partialPathName(MStatus* ReturnStatus) const { return dagPath(ReturnStatus).partialPathName(); }

MMatrix MFnDagNode::transformationMatrix(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return host::localMatrix(n);
}

bool MFnDagNode::isIntermediateObject(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    const host::AttributeBody* a = n ? n->type->findAttribute("intermediateObject") : nullptr;
    return a && host::readValue(n, host::PlugKey{a, {}}).num[0] != 0.0;
}

MStatus MFnDagNode::setIntermediateObject(bool isIntermediate)
{
    NodeBody* n = Access::node(fObject, nullptr);
    const host::AttributeBody* a = n ? n->type->findAttribute("intermediateObject") : nullptr;
    if (!a)
        return MStatus::kInvalidParameter;
    return host::writeValue(n, host::PlugKey{a, {}}, host::Value::numeric(isIntermediate ? 1.0 : 0.0));
}

MBoundingBox MFnDagNode::boundingBox(MStatus* ReturnStatus) const
{
    MBoundingBox box;
    if (NodeBody* n = Access::node(fObject, ReturnStatus))
        boundsBelow(n, box);
    return box;
}
