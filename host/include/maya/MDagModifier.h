#pragma once
// MDagModifier: an MDGModifier that also creates DAG nodes under a parent and reparents.

#include <maya/MDGModifier.h>

class MDagModifier : public MDGModifier {
public:
    MDagModifier();
    ~MDagModifier() override;

    // These hide MDGModifier's forms, as in the devkit: a DG node is made through an
    // MDGModifier reference (or a qualified call).
    MObject createNode(const MTypeId& typeId, const MObject& parent = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);
    MObject createNode(const MString& type, const MObject& parent = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);
    MStatus reparentNode(const MObject& node, const MObject& newParent = MObject::kNullObj);
};
