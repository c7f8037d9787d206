#pragma once
// MPxConstraint: the base of plug-in constraint nodes. A constraint node is a transform-like
// DAG node whose outputs drive another object; the host evaluates it like any other node and
// leaves the constraining itself to the plug-in's compute.

#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MPxConstraint : public MPxNode {
public:
    enum UpVectorType { kScene = 0, kObject, kObjectRotation, kVector, kLast };

    MPxConstraint();
    ~MPxConstraint() override;

    Type type() const override;

    // The attributes a constraint command connects; a constraint that has none returns null.
    virtual const MObject weightAttribute() const;
    virtual const MObject targetAttribute() const;
    virtual const MObject constraintRotateOrderAttribute() const;

    static MObject enableRestPosition;
    static MObject lockOutput;

    static const char* className();

protected:
    virtual const MObject passiveOutputAttribute() const;
    virtual void getOutputAttributes(MObjectArray& attributeArray);
};
