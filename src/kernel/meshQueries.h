#pragma once
// The read side of the tool's dealings with meshes: the surface point under a pixel, and the
// live world positions of vertices. Nothing here keeps state or caches a hit; the speed of
// the pixel query rests on the accelerator parameters its caller owns and hands to every call.

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MVector.h>

namespace tq {

// The ray through pixel (x, y) of `view` against the mesh at `meshPath`, forward only, up to
// 10000 units, with hit tolerance 0.001. `hitPoints` and `hitFaces` receive every hit, nearest
// first. With `wantNormal`, `normal` is the world normal of the nearest hit's face (the face's
// own normal, not interpolated). False when nothing was hit, when the path is invalid, and for
// any pixel with x <= 0 or y <= 0: a pixel on the view's left or bottom edge never hits.
bool rayHitAtPixel(const MDagPath& meshPath, MFloatPointArray& hitPoints, MVector& normal, const M3dView& view,
                   MMeshIsectAccelParams* accelParams, short x, short y, MIntArray& hitFaces, bool wantNormal);

// World positions of the vertices `indices`, in order, on `meshPath` (an invalid path means
// the retopo mesh). An index past the mesh gives kFailure and an empty array. Deliberate: the
// bound is tested against index - 1, so an index equal to the vertex count passes that test
// and fails at the iterator instead; the outcome is the same empty array.
MPointArray vertexPositions(const MIntArray& indices, const MDagPath& meshPath, MStatus& status);

// World positions of every vertex of the retopo mesh, in vertex order.
MPointArray allVertexPositions(MStatus& status);

// The vertex count of the mesh; 0 for an invalid path or a failing host call.
int vertexCount(const MDagPath& meshPath);

// True when some vertex of `indices` is not on a border of the mesh. An empty list inspects
// the whole mesh (a null component walks every vertex).
bool hasInteriorVertex(const MDagPath& meshPath, const MIntArray& indices);

} // namespace tq
