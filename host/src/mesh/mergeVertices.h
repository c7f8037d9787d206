#pragma once
// The merge operation (polyMergeVertex, node polyMergeVert): named vertices that lie close
// together become one.

#include "mesh/meshGeometry.h"

#include <string>
#include <vector>

namespace host {

// Inputs: `mesh`; `vertices`, the vertices that may merge (repeats allowed); `distance`,
// the largest distance (inclusive, object space) at which two of them merge; merging is
// transitive, so a chain of close vertices becomes one; `alwaysMergeTwo`: when exactly two
// distinct vertices are named, they merge whatever the distance.
//
// Each group becomes its lowest-numbered vertex, placed at the mean of the group's
// positions. Faces use the survivor instead; a face left with fewer than three distinct
// corners in a row is removed.
//
// Output `out`: the surviving vertices are renumbered compactly in their old order, faces
// keep their order (removed ones closing up); `merged`, how many vertices went. False, with
// `why` and `out` untouched, on a vertex that does not exist, a negative distance, or a
// merge that would give a face the same vertex twice, or an edge more than two faces or two
// faces of opposite winding.
bool mergeVertices(const MeshGeometry& mesh, const std::vector<int>& vertices, double distance, bool alwaysMergeTwo,
                   MeshGeometry& out, int* merged, std::string* why);

} // namespace host
