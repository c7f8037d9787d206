#pragma once
// The stored preview of a pending bridge or merge, as the overlay draws it: the facing row
// (`fusept`), the anchor row followed by the facing row (`fusemesh`), the triangles between
// them (`fuseindices`), the kind (`mode`: 1 bridge, 0 merge, -1 a bridge whose rows share a
// vertex) and the division lines of a bridge (`sublines`). These helpers need nothing of the
// tool's state, so the context command reaches them too.

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// The overlay draws the store anew at the next frame. Its node only asks for that when the
// working strokes change, so writers of the anchor row and of the previews call this.
void overlayChanged();

// Two triangles per quad between the rows 0..n-1 and n..2n-1 of 2n points: 6 (n - 1) indices.
// Fewer than 2 points a row: none.
MIntArray stripTriangles(int n);

// The division lines from the stored preview: `tq_bdiv` + 1 lines (0 divisions when it is
// unset), line j at j / (divisions + 1) of the way from the facing row to the anchor row, so
// line 0 lies on the facing row. No preview: nothing written. An anchor row shorter than the
// facing row: no lines.
MStatus refreshSublines();

// For each pair (rowA[i], rowB[i]) the world point halfway between the two vertices. A vertex
// the mesh does not have takes the other's position; a pair of two such is left out.
MPointArray mergeMidpoints(const MDagPath& meshPath, const MIntArray& rowA, const MIntArray& rowB);

} // namespace tq
