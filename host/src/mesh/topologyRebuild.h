#pragma once
// What the topology operations (split ring, bridge, merge) share: they describe the mesh
// they make as plain arrays plus where each new element came from, and this turns that into
// mesh data that keeps what survives of the old mesh (UVs of unchanged corners, smooth flags
// of edges between old vertices).

#include "mesh/meshGeometry.h"

#include <string>
#include <vector>

namespace host {

struct TopologyResult {
    std::vector<float> points;         // xyz per new vertex
    std::vector<int> counts, connects; // the new faces
    std::vector<int> oldVertex;        // per new vertex: the old vertex it is, or -1 for a new one
    std::vector<int> oldFaceVertex;    // per new face-vertex: the old face-vertex whose UVs it keeps, or -1
};

// Builds `out` from `result` over a copy of `old`: the UV sets keep their names and UVs;
// corners mapped to an old face-vertex keep its UV id, others have none; an edge between two
// old vertices that an old edge joined keeps that edge's smooth flag, other edges are smooth.
// False, with `why`, when the faces do not make a mesh.
bool finishTopology(const MeshGeometry& old, const TopologyResult& result, MeshGeometry& out, std::string* why);

// Checks faces for what a manifold mesh cannot have: a vertex twice in one face, an edge used
// by more than two faces, or twice in the same direction. Only edges with an end in
// `watched` (per vertex, non-zero = watched; empty = every vertex) are checked. False with a
// line naming the first problem.
bool manifoldFaces(const std::vector<int>& counts, const std::vector<int>& connects,
                   const std::vector<char>& watched, std::string* why);

} // namespace host
