#pragma once
// Component objects of the retopo mesh, made from lists of vertex or face numbers. An empty
// list makes no component: the result is the null object, and host iterators built on a null
// component walk the whole mesh, which callers rely on.

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace tq {

// A single-indexed component of `kind` (kMeshVertComponent, kMeshPolygonComponent) holding
// `indices` in order; the null object for an empty list.
MObject componentFromIndices(const MIntArray& indices, MFn::Type kind);

// The vertices of the faces of the last patch, in the order first met walking the faces. The
// store's `newFaces` wins: `faces` counts only when the store cannot be read (no store).
MObject newFacesVertexComponent(const MDagPath& meshPath, const MIntArray& faces);

// The vertices that appeared when a mesh grew from `firstCount` to `lastCount` vertices, in
// descending order (lastCount - 1 down to firstCount); null when it did not grow.
MObject deltaVertices(int firstCount, int lastCount);

// Deliberate: the numbers firstCount + 1 to lastCount, ascending. It differs from
// deltaVertices by one (1-based: firstCount is left out and lastCount taken in); both are kept
// as the tool has always used them.
MObject rangeDifferenceComponent(int firstCount, int lastCount);

// The vertices new in a mesh grown from `firstCount` to `lastCount` that do not lie on the
// two shadow rows it was grown between, from lastCount - 1 down. With fewer than two shadow
// rows: kFailure and the null object. An invalid path means the retopo mesh.
MObject strip_vertices(int firstCount, int lastCount, MStatus& status, const MDagPath& meshPath);

} // namespace tq
