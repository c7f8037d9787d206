#pragma once
// New vertices onto the source surface. After a generator has put quads on the retopo mesh in
// the plane of their rows, each new vertex is cast along its normal, both ways, onto the
// dense source mesh, and goes to the nearest hit. The same casts vote on whether the new
// quads face the source's way.

#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace tq {

// `meshPath`: the retopo mesh (an invalid path is looked up by the retopo mesh's name).
// `vertices`: a vertex component of the vertices to move. `accelParams`: the context's
// parameters for the source mesh, so every cast reuses its accelerator.
// Moves each vertex that hits the source within `tq_distancesnap` (read at every vertex, so
// a change takes effect at once) to the hit nearest in either direction; a vertex with no hit
// stays. Returns true when the new faces are to be turned over: each hit votes +1 when the
// source face's stored normal (`inputNormals`) agrees with the vertex normal and -1 otherwise,
// and a vote below 1 (a tie, no hit at all) flips.
// With a null component nothing moves: the answer is whether the first vertex of shadow row 2
// opposes the source's closest normal (false when that row is empty).
bool projectVertices(const MDagPath& meshPath, MObject& vertices, MMeshIsectAccelParams& accelParams,
                     MStatus& status);

} // namespace tq
