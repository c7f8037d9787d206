#pragma once
// MPxLocatorNode: a plug-in shape that draws in the viewport (through a draw override under
// Viewport 2.0) and renders nothing. Its nodes are DAG shapes under a transform.

#include <maya/MBoundingBox.h>
#include <maya/MPxNode.h>

class MPxLocatorNode : public MPxNode {
public:
    MPxLocatorNode();
    ~MPxLocatorNode() override;

    Type type() const override;
    virtual bool isBounded() const;
    virtual MBoundingBox boundingBox() const;
    virtual bool excludeAsLocator() const;
    virtual bool isTransparent() const;

    static MObject underWorldObject;
    static MObject localPosition;
    static MObject localPositionX;
    static MObject localPositionY;
    static MObject localPositionZ;
    static MObject worldPosition;
    static MObject worldPositionX;
    static MObject worldPositionY;
    static MObject worldPositionZ;
    static MObject localScale;
    static MObject localScaleX;
    static MObject localScaleY;
    static MObject localScaleZ;
};
