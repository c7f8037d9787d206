#pragma once
// MEvaluationNode: what an evaluation graph node tells a node before it is evaluated: the
// node, and which of its plugs are dirty.

#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <vector>

class MEvaluationNode {
public:
    MEvaluationNode(const MEvaluationNode& other);
    ~MEvaluationNode();

    MObject dependencyNode(MStatus* ReturnStatus = nullptr) const;
    bool dirtyPlugExists(const MObject& attribute, MStatus* ReturnStatus = nullptr) const;
    MPlug dirtyPlug(const MObject& attribute, MStatus* ReturnStatus = nullptr) const;
    unsigned int dirtyPlugCount() const;

private:
    friend class host::Access;
    MEvaluationNode();
    MObject fNode;
    std::vector<MPlug> fDirty;
};
