#pragma once
// Construction history of mesh shapes: copying a shape's geometry to a duplicate, and
// collapsing a shape's history into its own geometry (what `delete -ch` does).

#include "dg/nodeBody.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

namespace host {

// The shape's current geometry without its pnts tweaks, as a new mesh data object: with
// history the evaluated input (and any in-place edits still standing), without it the own
// geometry. Null with a failed status when the node is not a live mesh shape.
MObject shapeOwnGeometry(NodeBody* shape, MStatus* status = nullptr);

// Gives `copy` (a new mesh shape made by duplicating `source`) the source's own geometry, so
// that with the tweaks it copied it shows what the source shows. Nothing for other nodes.
void copyShapeGeometry(NodeBody* source, NodeBody* copy);

// Makes the shape's current output, minus its tweaks, its own geometry; disconnects inMesh
// and deletes the upstream nodes that fed only this shape (dependency nodes and intermediate
// shapes, and transforms left empty by them). Writes what it did to the log. A shape with no
// history keeps its geometry and only has pending in-place edits made its own.
MStatus deleteConstructionHistory(NodeBody* shape);

// A shape with intermediateObject set: hidden history, not an object of its own.
bool isIntermediateShape(NodeBody* node);

// The history that would be left feeding nothing once `shape` is gone: the nodes upstream of
// its inMesh that feed only it and each other, nearest first. Empty for a shape without
// history and for other nodes.
std::vector<NodeBody*> historyFeedingOnly(NodeBody* shape);

} // namespace host
