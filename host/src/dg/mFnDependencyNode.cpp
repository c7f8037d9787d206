#include <maya/MFnDependencyNode.h>

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"

#include <maya/MPlugArray.h>

using host::Access;
using host::NodeBody;

TQHOST_DEFINE_MFN(MFnDependencyNode, MFn::kDependencyNode)

namespace {

// A DG node by type; DAG types need MFnDagNode::create.
MObject createDG(MFnDependencyNode& fn, const host::NodeType* type, const MString& name, MStatus* status)
{
    if (!type || type->isDag) {
        TQHOST_SET_STATUS(status, MStatus::kInvalidParameter);
        return MObject();
    }
    MStatus st;
    host::NodePtr node = host::Scene::current().createNode(type, name.asChar(), nullptr, &st);
    TQHOST_SET_STATUS(status, st);
    if (!node)
        return MObject();
    MObject o = Access::object(node);
    fn.setObject(o);
    return o;
}

} // namespace

MObject MFnDependencyNode::create(const MTypeId& typeId, MStatus* ReturnStatus)
{
    return createDG(*this, host::NodeTypeRegistry::instance().find(typeId), MString(), ReturnStatus);
}

MObject MFnDependencyNode::create(const MTypeId& typeId, const MString& name, MStatus* ReturnStatus)
{
    return createDG(*this, host::NodeTypeRegistry::instance().find(typeId), name, ReturnStatus);
}

MObject MFnDependencyNode::create(const MString& type, MStatus* ReturnStatus)
{
    return createDG(*this, host::NodeTypeRegistry::instance().find(type.asChar()), MString(), ReturnStatus);
}

MObject MFnDependencyNode::create(const MString& type, const MString& name, MStatus* ReturnStatus)
{
    return createDG(*this, host::NodeTypeRegistry::instance().find(type.asChar()), name, ReturnStatus);
}

MTypeId MFnDependencyNode::typeId(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? n->type->id : MTypeId(0);
}

MString MFnDependencyNode::typeName(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? MString(n->type->name.c_str()) : MString();
}

MString MFnDependencyNode::name(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? MString(n->name.c_str()) : MString();
}

MString MFnDependencyNode::absoluteName(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? MString((":" + n->name).c_str()) : MString();
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* ReturnStatus)
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n)
        return MString();
    MStatus st = host::Scene::current().rename(n, name.asChar());
    TQHOST_SET_STATUS(ReturnStatus, st);
    return MString(n->name.c_str());
}

MUuid MFnDependencyNode::uuid(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? n->uuid : MUuid();
}

MString MFnDependencyNode::pluginName(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? MString(n->type->pluginName.c_str()) : MString();
}

MPxNode* MFnDependencyNode::userNode(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n || n->type->pluginName.empty()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return nullptr;
    }
    return n->px.get();
}

bool MFnDependencyNode::isDefaultNode(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n && (n->name == "initialShadingGroup" || n->name == "defaultLightSet");
}

bool MFnDependencyNode::isFromReferencedFile(MStatus* ReturnStatus) const
{
    Access::node(fObject, ReturnStatus);
    return false;
}

MStatus MFnDependencyNode::getConnections(MPlugArray& array) const
{
    array.clear();
    NodeBody* n = Access::node(fObject, nullptr);
    if (!n)
        return MStatus::kInvalidParameter;
    for (const auto& entry : n->slots)
        if (entry.second.hasSource || !entry.second.destinations.empty())
            array.append(Access::plug(n, entry.first));
    return MStatus::kSuccess;
}

unsigned int MFnDependencyNode::attributeCount(MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n ? static_cast<unsigned int>(n->type->attributes.size()) : 0u;
}

MObject MFnDependencyNode::attribute(unsigned int index, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    if (!n || index >= n->type->attributes.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    return n->type->attributes[index];
}

MObject MFnDependencyNode::attribute(const MString& attrName, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    host::AttributeBody* a = n ? n->type->findAttribute(attrName.asChar()) : nullptr;
    if (!a) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    return Access::object(a->shared_from_this());
}

bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    return n && n->type->findAttribute(name.asChar());
}

MStatus MFnDependencyNode::getAffectedAttributes(const MObject& attr, MObjectArray& affected) const
{
    affected.clear();
    NodeBody* n = Access::node(fObject, nullptr);
    const host::AttributeBody* a = Access::attribute(attr);
    if (!n || !a)
        return MStatus::kInvalidParameter;
    auto it = n->type->affects.find(a);
    if (it != n->type->affects.end())
        for (const host::AttributeBody* b : it->second)
            affected.append(Access::object(std::const_pointer_cast<host::AttributeBody>(b->shared_from_this())));
    return MStatus::kSuccess;
}

MStatus MFnDependencyNode::getAffectingAttributes(const MObject& attr, MObjectArray& affecting) const
{
    affecting.clear();
    NodeBody* n = Access::node(fObject, nullptr);
    const host::AttributeBody* a = Access::attribute(attr);
    if (!n || !a)
        return MStatus::kInvalidParameter;
    for (const auto& entry : n->type->affects)
        for (const host::AttributeBody* b : entry.second)
            if (b == a)
                affecting.append(
                    Access::object(std::const_pointer_cast<host::AttributeBody>(entry.first->shared_from_this())));
    return MStatus::kSuccess;
}

MPlug MFnDependencyNode::findPlug(const MObject& attr, bool, MStatus* ReturnStatus) const
{
    return findPlug(attr, ReturnStatus);
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, bool, MStatus* ReturnStatus) const
{
    return findPlug(attrName, ReturnStatus);
}

MPlug MFnDependencyNode::findPlug(const MObject& attr, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    const host::AttributeBody* a = Access::attribute(attr);
    if (!n || !a || n->type->findAttribute(a->longName) != a) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MPlug();
    }
    return Access::plug(n, host::PlugKey{a, {}});
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, MStatus* ReturnStatus) const
{
    NodeBody* n = Access::node(fObject, ReturnStatus);
    const host::AttributeBody* a = n ? n->type->findAttribute(attrName.asChar()) : nullptr;
    if (!a) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MPlug();
    }
    return Access::plug(n, host::PlugKey{a, {}});
}

MString MFnDependencyNode::classification(const MString& nodeTypeName)
{
    const host::NodeType* t = host::NodeTypeRegistry::instance().find(nodeTypeName.asChar());
    return t ? MString(t->classification.c_str()) : MString();
}
