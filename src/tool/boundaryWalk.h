#pragma once
// Walks along the open border of the retopo mesh, edge by edge, as the anchor chain and the
// bridges need them. An edge is on the border when MItMeshEdge::onBoundary says so. Every
// walk stands one edge iterator on the next edge (setIndex), so it costs the length of the run
// it makes, and it gives up after kBoundaryStepLimit steps: a border longer than that yields
// no closed run, and an open run that the limit cuts short is not found.

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>

namespace tq {

constexpr int kBoundaryStepLimit = 999;
// The limit the tool passes to boundaryPath: no limit beyond the walk's own.
constexpr int kBoundaryPathLimit = 99999;

// The border edges among `edges` (the edges round one vertex): `first` the first found,
// `second` the last found other than `first`; -1 for what is not there.
void boundaryEdgesAt(const MDagPath& meshPath, const MIntArray& edges, int& first, int& second);

// The border edges from vertex `a` to vertex `b`, in walking order: the shorter of the two
// walks round the border that reach `b`, shorter than `limit`. Empty when neither does.
// Deliberate: an invalid mesh path gives five zeros, not an empty list; callers that go on
// get edge 0 five times, and the stored rows of old scenes were made that way.
MIntArray boundaryPath(const MDagPath& meshPath, int a, int b, int limit);

// From `startEdge`, never through `avoidEdge`, along border edges not yet taken, until an edge
// ends at `target` (found) or the step limit.
MIntArray walkBoundary(const MDagPath& meshPath, int target, int startEdge, int avoidEdge, bool& found);

// The whole border loop through vertex `v`, starting and ending with edges at `v`; empty when
// `v` is not on the border or the loop is longer than the step limit.
MIntArray boundaryLoop(const MDagPath& meshPath, int v);

// A run from `a` to a new second anchor `b`, walked from the first edge of `path` (the old run)
// in the direction it took. A path of fewer than 2 edges is walked anew with boundaryPath.
// Empty when `b` is not reached within the step limit.
MIntArray extendBoundaryPath(const MDagPath& meshPath, const MIntArray& path, int a, int b);

// From `startEdge`, `steps` steps along border edges not yet taken, never through `avoidEdge`;
// a step takes every such edge among the neighbours of the edge it stands on. The facing row
// of a bridge is walked this way, one edge more than its anchor row has.
MIntArray walkBoundarySteps(const MDagPath& meshPath, int startEdge, int avoidEdge, int steps);

// The edges round vertex `v`, and the two ends of edge `e` (false, and -1s, for an edge the
// mesh does not have).
MIntArray edgesAroundVertex(const MDagPath& meshPath, int v);
bool edgeEnds(const MDagPath& meshPath, int e, int& v0, int& v1);

// The vertices of a run of edges from `start`: each edge adds its end that is not the last
// vertex added.
MIntArray edgesToVertices(const MDagPath& meshPath, const MIntArray& edges, int start);

} // namespace tq
