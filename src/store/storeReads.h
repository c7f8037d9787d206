#pragma once
// Named reads of the store. Unless a node is passed in, each finds the store by itself and
// reads one whole attribute. With no store the arrays come back empty and the status is
// kInvalidParameter; a never-written attribute also reads as empty.

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// Point counts of the working strokes, from the given store node.
MStatus readSizes(const MObject& store, MIntArray& out);
// Point counts of the shadow rows, from the given store node.
MStatus readShadowSizes(const MObject& store, MIntArray& out);
// The working strokes end to end. A null node is not an error here: kSuccess, `out` empty.
MStatus readStrokes(const MObject& store, MPointArray& out);
// The shadow rows end to end.
MStatus readShadowStrokes(MPointArray& out);

// The anchor chain as vertex ids of the retopo mesh, and its positions.
MIntArray readPlayerVertices(MStatus& status);
MPointArray readPlayerPoints(MStatus& status);
// Face ids of the last patch on the retopo mesh.
MIntArray readNewFaces();
// The three index rows of the shadow. A failure of one is logged and the others are still
// read; the result is the first failure.
MStatus readShadowIndices(MIntArray& out1, MIntArray& out2, MIntArray& out3);

// The pinch of the spans. The panel's slider wins while the pinch is not locked: with the
// check box "lockedPinchChk" unchecked and the slider "pinchSlid" present, the pinch is the
// slider's value in hundredths. Otherwise, and when the check box is missing, it is the
// store's `pinch`.
double getPinch();

} // namespace tq
