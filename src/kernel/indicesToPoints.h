#pragma once
// From positions back to vertex numbers: rows are kept as world positions, and this is how
// the tool finds which vertices of the retopo mesh they stand on now.

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// `meshPath`: the mesh to search; an invalid path means the retopo mesh (the active one).
// `points`: n world positions. Returns n vertex numbers, one per point, in order: the vertex
// nearest to each point by a brute-force scan of the live world positions.
//
// Deliberate: the scan runs from the highest vertex number down to 1 and never looks at
// vertex 0, so 0 is never returned; among vertices at equal distance the highest number wins;
// and the first vertex nearer than 0.001 is taken at once, even when a lower one lies nearer
// still. These rules decide which of coincident vertices (a seam, an unmerged border) a row
// is tied to, and the shadow and anchor rows stored in scenes depend on them. A point with no
// vertex within 9999.0 gets -1.
//
// Empty `points`: an empty result and kInvalidParameter. A mesh of fewer than 3 vertices (or
// none to be found): an empty result, shorter than `points`, with kSuccess.
MIntArray indicesToPoints(const MDagPath& meshPath, const MPointArray& points, MStatus& status);

} // namespace tq
