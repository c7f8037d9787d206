#pragma once
// MDagModifier: an MDGModifier that also creates DAG nodes under a parent and reparents.

#include <maya/MDGModifier.h>

class MDagModifier : public MDGModifier {
public:
    MDagModifier();
    ~MDagModifier() override;

    using MDGModifier::createNode;
    MObject createNode(const MTypeId& typeId, const MObject& parent, MStatus* ReturnStatus = nullptr);
    MObject createNode(const MString& type, const MObject& parent, MStatus* ReturnStatus = nullptr);
    MStatus reparentNode(const MObject& node, const MObject& newParent = MObject::kNullObj);
};
