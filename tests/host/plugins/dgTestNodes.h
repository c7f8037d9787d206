#pragma once
// Node types of the DG test plug-in. Each one exercises one part of the dependency graph
// through the public API only, the way a production plug-in would; the tests observe them
// through plugs, never through these classes.

#include <maya/MObject.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

// Every attribute kind and flag combination, plus one computed output that reports whether
// a typed input still holds null data.
class DgAttrKindsNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;

    static MObject intAttr;
    static MObject doubleAttr;
    static MObject boolAttr;
    static MObject floatAttr;
    static MObject vectorAttr;
    static MObject pointAttr;
    static MObject offsetX;
    static MObject offsetY;
    static MObject offsetZ;
    static MObject offset;
    static MObject pointsAttr;
    static MObject intsAttr;
    static MObject vectorsAttr;
    static MObject doublesAttr;
    static MObject stringAttr;
    static MObject meshAttr;
    static MObject childDouble;
    static MObject childInt;
    static MObject compoundAttr;
    static MObject modeAttr;
    static MObject matrixAttr;
    static MObject linkAttr;
    static MObject flagsOn;
    static MObject flagsOff;
    static MObject plain;
    static MObject pointCount;
};

// a affects b; b and c affect each other.
class DgAffectsNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject a;
    static MObject b;
    static MObject c;
};

// Computes "computed" and refuses "refused" with kUnknownParameter.
class DgRefuseNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject input;
    static MObject refused;
    static MObject computed;
};

// Computes "output" but never marks it clean; writes how often it ran into "calls".
class DgForgetfulNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject input;
    static MObject output;
    static MObject calls;

private:
    int fCalls = 0;
};

// Sums a sparse input array, counts its elements and doubles each one into an output array
// with the same logical indices.
class DgArraySumNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject inputs;
    static MObject sum;
    static MObject count;
    static MObject doubled;
};

// output = 2 * input; counts connections made and broken on itself in int attributes.
class DgConnRecorderNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;
    MStatus connectionMade(const MPlug& plug, const MPlug& otherPlug, bool asSrc) override;
    MStatus connectionBroken(const MPlug& plug, const MPlug& otherPlug, bool asSrc) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject input;
    static MObject output;
    static MObject made;
    static MObject madeAsSource;
    static MObject broken;
};

// Its compute throws a C++ exception.
class DgThrowerNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject input;
    static MObject output;
};

// postConstructor sets "tag"; setDependentsDirty makes "input" dirty "extra", which no
// attributeAffects links to it.
class DgHooksNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    void postConstructor() override;
    MStatus setDependentsDirty(const MPlug& plug, MPlugArray& plugArray) override;
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject input;
    static MObject extra;
    static MObject tag;
};

// A locator shape with one attribute of its own.
class DgLocatorNode : public MPxLocatorNode {
public:
    static void* creator();
    static MStatus initialize();

    static const MTypeId id;
    static const char* const typeName;
    static const char* const drawClassification;
    static MObject size;
};
