#include <maya/MPxLocatorNode.h>

MObject MPxLocatorNode::underWorldObject;
MObject MPxLocatorNode::localPosition;
MObject MPxLocatorNode::localPositionX;
MObject MPxLocatorNode::localPositionY;
MObject MPxLocatorNode::localPositionZ;
MObject MPxLocatorNode::worldPosition;
MObject MPxLocatorNode::worldPositionX;
MObject MPxLocatorNode::worldPositionY;
MObject MPxLocatorNode::worldPositionZ;
MObject MPxLocatorNode::localScale;
MObject MPxLocatorNode::localScaleX;
MObject MPxLocatorNode::localScaleY;
MObject MPxLocatorNode::localScaleZ;

MPxLocatorNode::MPxLocatorNode() = default;
MPxLocatorNode::~MPxLocatorNode() = default;

MPxNode::Type MPxLocatorNode::type() const { return kLocatorNode; }
bool MPxLocatorNode::isBounded() const { return false; }
MBoundingBox MPxLocatorNode::boundingBox() const { return MBoundingBox(); }
bool MPxLocatorNode::excludeAsLocator() const { return false; }
bool MPxLocatorNode::isTransparent() const { return false; }
