#include <maya/MEvaluationNode.h>

#include "dg/fnMacros.h"

MEvaluationNode::MEvaluationNode() = default;
MEvaluationNode::MEvaluationNode(const MEvaluationNode& other) = default;
MEvaluationNode::~MEvaluationNode() = default;

MObject MEvaluationNode::dependencyNode(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fNode;
}

bool MEvaluationNode::dirtyPlugExists(const MObject& attribute, MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    for (const MPlug& p : fDirty)
        if (p.attribute() == attribute)
            return true;
    return false;
}

MPlug MEvaluationNode::dirtyPlug(const MObject& attribute, MStatus* ReturnStatus) const
{
    for (const MPlug& p : fDirty)
        if (p.attribute() == attribute) {
            TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
            return p;
        }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
    return MPlug();
}

unsigned int MEvaluationNode::dirtyPlugCount() const { return static_cast<unsigned int>(fDirty.size()); }
