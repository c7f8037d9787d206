#pragma once
// The split-ring operation (polySplitRing): a new edge loop across the ring of each given
// edge.

#include "mesh/meshGeometry.h"

#include <string>
#include <vector>

namespace host {

// Inputs: `mesh`; `edges`, the root edges (one per ring; more than one edge of a ring is
// allowed and changes nothing); `weight`, where the loop crosses each edge: with `absolute`
// false a fraction of the edge from its root side (0 to 1), with `absolute` true a distance
// from that side (clamped to the edge).
//
// The ring of a root edge runs across quads to each quad's opposite edge, both ways, and
// stops at a border or at a face that is not a quad; every ring edge gets a new vertex, the
// root side carried across each quad so the loop stays parallel to itself. Each quad of the
// ring becomes two quads; a face where the ring stops gains the new vertex as a corner.
//
// Output `out`: old vertices and faces keep their numbers; new vertices follow, one per split
// edge in ascending order of the old edge; each split quad keeps the half holding its first
// corner (starting at that corner) and the other halves follow in the order of their faces.
// False, with `why` and `out` untouched, on an edge that does not exist, a weight outside its
// range, or rings that cross each other in a quad.
bool splitRing(const MeshGeometry& mesh, const std::vector<int>& edges, double weight, bool absolute,
               MeshGeometry& out, std::string* why);

} // namespace host
