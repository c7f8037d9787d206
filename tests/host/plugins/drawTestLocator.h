#pragma once
// A locator whose draw override draws what its attributes say, for the viewport tests: a
// line (ends, colour, width, style, x-ray) in one drawable, a 2-D label with a point in a
// second, and the count of prepareForDraw calls (carried from frame to frame in the user
// data) in a third. The override says in the log when it is made and destroyed, and can be
// told to throw from prepareForDraw or addUIDrawables.

#include <maya/MObject.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MTypeId.h>

class DrawTestLocator : public MPxLocatorNode {
public:
    static void* creator();
    static MStatus initialize();
    // Asks for a redraw when a plug changed, unless markDirty is off.
    MStatus preEvaluation(const MDGContext& context, const MEvaluationNode& evaluationNode) override;

    static const MTypeId id;
    static const char* const typeName;
    static const char* const drawClassification;
    static const char* const drawRegistrant;

    static MObject lineStart;
    static MObject lineEnd;
    static MObject lineColor;
    static MObject lineWidth;
    static MObject lineStyle;
    static MObject xray;
    static MObject label;
    static MObject labelPosition;
    static MObject alwaysDirty; // read once, when the override is made
    static MObject markDirty;
    static MObject throwIn;     // 1: prepareForDraw throws, 2: addUIDrawables throws
};

MHWRender::MPxDrawOverride* createDrawTestOverride(const MObject& obj);
