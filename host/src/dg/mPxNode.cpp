#include <maya/MPxNode.h>

#include "dg/access.h"
#include "dg/nodeTypes.h"

#include <maya/MDGContext.h>
#include <maya/MDataBlock.h>
#include <maya/MEvaluationNode.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

MObject MPxNode::message;
MObject MPxNode::isHistoricallyInteresting;
MObject MPxNode::caching;
MObject MPxNode::state;
MObject MPxNode::frozen;

MPxNode::MPxNode() = default;
MPxNode::~MPxNode() = default;

void MPxNode::postConstructor() {}

MStatus MPxNode::compute(const MPlug&, MDataBlock&) { return MStatus::kUnknownParameter; }

MStatus MPxNode::setDependentsDirty(const MPlug&, MPlugArray&) { return MStatus::kSuccess; }

MStatus MPxNode::preEvaluation(const MDGContext&, const MEvaluationNode&) { return MStatus::kSuccess; }

MStatus MPxNode::postEvaluation(const MDGContext&, const MEvaluationNode&, PostEvaluationType)
{
    return MStatus::kSuccess;
}

MStatus MPxNode::connectionMade(const MPlug&, const MPlug&, bool) { return MStatus::kUnknownParameter; }

MStatus MPxNode::connectionBroken(const MPlug&, const MPlug&, bool) { return MStatus::kUnknownParameter; }

MPxNode::SchedulingType MPxNode::schedulingType() const { return kDefaultScheduling; }

MPxNode::Type MPxNode::type() const
{
    return fNode ? fNode->type->pxType : kDependNode;
}

bool MPxNode::isAbstractClass() const { return false; }

MTypeId MPxNode::typeId() const { return fNode ? fNode->type->id : MTypeId(0); }

MString MPxNode::typeName() const { return fNode ? MString(fNode->type->name.c_str()) : MString(); }

MString MPxNode::name() const { return fNode ? MString(fNode->name.c_str()) : MString(); }

MObject MPxNode::thisMObject() const
{
    return fNode ? host::Access::object(fNode->shared_from_this()) : MObject();
}

MStatus MPxNode::addAttribute(const MObject& attr)
{
    host::NodeType* type = host::NodeTypeRegistry::instance().initializing;
    if (!type)
        return MStatus::kFailure; // only inside a node type's initialize
    return host::addAttributeToType(type, attr);
}

MStatus MPxNode::attributeAffects(const MObject& whenChanges, const MObject& isAffected)
{
    host::NodeType* type = host::NodeTypeRegistry::instance().initializing;
    const host::AttributeBody* from = host::Access::attribute(whenChanges);
    const host::AttributeBody* to = host::Access::attribute(isAffected);
    if (!type || !from || !to)
        return MStatus::kInvalidParameter;
    if (type->findAttribute(from->longName) != from || type->findAttribute(to->longName) != to)
        return MStatus::kInvalidParameter;
    auto& list = type->affects[from];
    for (const host::AttributeBody* a : list)
        if (a == to)
            return MStatus::kSuccess;
    list.push_back(to);
    return MStatus::kSuccess;
}

MStatus MPxNode::inheritAttributesFrom(const MString& parentClassName)
{
    host::NodeType* type = host::NodeTypeRegistry::instance().initializing;
    const host::NodeType* parent = host::NodeTypeRegistry::instance().find(parentClassName.asChar());
    if (!type || !parent)
        return MStatus::kInvalidParameter;
    for (const MObject& a : parent->attributes) {
        const host::AttributeBody* body = host::Access::attribute(a);
        if (body && !type->findAttribute(body->longName))
            host::addAttributeToType(type, a);
    }
    for (const auto& entry : parent->affects)
        for (const host::AttributeBody* to : entry.second)
            type->affects[entry.first].push_back(to);
    return MStatus::kSuccess;
}
