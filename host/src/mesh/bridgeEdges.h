#pragma once
// The bridge operation (polyBridgeEdge): rows of quads between two border edge sets.

#include "mesh/meshGeometry.h"

#include <string>
#include <vector>

namespace host {

// Inputs: `mesh`; `edges`, border edges forming two separate chains (open or closed) with
// as many edges each, listed in any interleaving; the k-th edge of the first chain (the one
// holding edges[0]) pairs with the k-th edge of the other, in the order given; `divisions`,
// the rows of new vertices between the chains (0 or more).
//
// The first chain is walked from its end nearest the start of the list (a closed chain from
// the start of edges[0]); the partners of its edges, in that order, must walk the other
// chain. New faces wind against the faces along the first chain, so the mesh stays
// consistently oriented there.
//
// Output `out`: old vertices and faces keep their numbers; new vertices follow row by row
// from the first chain towards the other, each row in walk order; new faces follow, strip
// by strip in walk order, each strip from the first chain to the other. False, with `why`
// and `out` untouched, on an edge that does not exist or is not a border, a repeated edge,
// not exactly two chains, chains of unequal length, pairs that do not follow each other
// along both chains, or a division count outside 0 to 10000.
bool bridgeEdges(const MeshGeometry& mesh, const std::vector<int>& edges, int divisions, MeshGeometry& out,
                 std::string* why);

} // namespace host
