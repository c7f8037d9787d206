#include <maya/MPxConstraint.h>

// Made with the host's built-in constraint type (nodeTypes.cpp), which every plug-in
// constraint type inherits.
MObject MPxConstraint::enableRestPosition;
MObject MPxConstraint::lockOutput;

MPxConstraint::MPxConstraint() = default;
MPxConstraint::~MPxConstraint() = default;

MPxNode::Type MPxConstraint::type() const { return kConstraintNode; }
const MObject MPxConstraint::weightAttribute() const { return MObject(); }
const MObject MPxConstraint::targetAttribute() const { return MObject(); }
const MObject MPxConstraint::constraintRotateOrderAttribute() const { return MObject(); }
const MObject MPxConstraint::passiveOutputAttribute() const { return MObject(); }
void MPxConstraint::getOutputAttributes(MObjectArray& attributeArray) { attributeArray.clear(); }
const char* MPxConstraint::className() { return "MPxConstraint"; }
