#pragma once
// What the overlay draws, copied whole from the store at every frame: the draw override keeps
// no state of its own, so the tool changes the display only by writing the store.

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

namespace tq {

struct OverlayData {
    MPointArray pointsDebug; // read and dropped
    MPointArray strokesShadow;
    MPointArray freezeMedian;
    MPointArray playersLine;
    MPointArray verticestweak; // read and dropped
    MIntArray sizesShadow;
    MPointArray freepoints;
    MIntArray tweakRadius;
    double displaySize = 0.0;
    MPointArray playerpts;
    MIntArray fuseindices;
    MPointArray fusemesh;
    MPointArray sublines;
    MPointArray magnetPt; // view pixels
    MIntArray sizes;
    MPointArray strokes;
    MPointArray fusept;
    double intensityRelaxInteractive = 0.0;
    double radiusRelaxInteractive = 0.0;
    double radiusMoveInteractive = 0.0;
    MPoint interPoint;
    MVector interNormal;
    int displayInfo = 0;
    int symmetry = 0;
    int mode = 0;

    // Reads every attribute from the store node, in a fixed order; a null node reads nothing
    // and leaves the data empty.
    void read(const MObject& store);
};

// The depth priority the overlay's rows draw at: 50 plus the option variable `tqCutDp`
// (2.5 when it is not set).
double depthOffset();

} // namespace tq
