#pragma once
// The built-in `mesh` shape and `polyTweak` node, and the shape-side services the mesh
// function sets and iterators use.
//
// A mesh shape's output is its input mesh (history) or its own geometry (kept in
// `cachedInMesh`), with the `pnts` tweaks added. In-place edits change the evaluated output
// directly; on a shape without history they are also owed to the shape's own geometry,
// which is brought up to date lazily (bakeShapeEdits) so that a loop of single-vertex edits
// costs no more than the edits.

#include "dg/nodeBody.h"
#include "mesh/meshGeometry.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace host {

struct MeshAttributes {
    MObject inMesh, outMesh, cachedInMesh, worldMesh, pnts, pntx, pnty, pntz;
};
struct PolyTweakAttributes {
    MObject inputPolymesh, output, tweak, tweakX, tweakY, tweakZ;
};

// Called once by the built-in type registration.
void registerMeshTypes(const NodeType* shapeBase, const NodeType* dependBase);

const MeshAttributes& meshAttributes();
const PolyTweakAttributes& polyTweakAttributes();

bool isMeshShape(const NodeBody* node);
// True when something is connected to the shape's inMesh.
bool hasHistory(NodeBody* shape);

// The shape's evaluated output (a mesh data object); null with a failed status when the
// node is not a live mesh shape.
MObject shapeOutput(NodeBody* shape, MStatus* status = nullptr);
const MeshGeometry* shapeGeometry(NodeBody* shape, MStatus* status = nullptr);

// In-place edits: beginShapeEdit evaluates the output, detaches it from every other holder
// and returns it for writing; endShapeEdit tells the graph it changed (downstream plugs go
// dirty, the output itself stays clean) and records the debt to the own geometry.
MeshGeometry* beginShapeEdit(NodeBody* shape, MStatus* status = nullptr);
void endShapeEdit(NodeBody* shape);

// Replaces the shape's own geometry (what it shows without history) and drops pending edits.
MStatus setShapeGeometry(NodeBody* shape, const MObject& meshData);
// Brings the own geometry up to date with in-place edits made without history.
void bakeShapeEdits(NodeBody* shape);
// The shape's tweaks as (vertex, offset) in vertex order.
std::vector<std::pair<int, MFloatVector>> shapeTweaks(NodeBody* shape);

} // namespace host
