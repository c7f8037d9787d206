#pragma once
// Rows to quads: the generator behind every operation that adds faces (append, change of
// spans, redraw, scratch). Each pair of consecutive rows bounds a band; the band is cut into
// columns along the rows and into `bandSpans` quads across, and each quad goes onto the mesh
// through MFnMesh::addPolygon with vertex merging, so that quads, bands and earlier patches
// share the vertices that meet.
//
// Deliberate: the order of creation is fixed (column outermost, then the quads across the
// band, corners in the order a0-side, a1-side, then back), so a new, unmerged corner gets the
// next vertex number in that order. The append operations find the far row of a new patch by
// that numbering.

#include "store/strokeSet.h"

#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>

namespace tq {

// Inputs:
// - `fnMesh`: attached to the retopo mesh, or unattached: the first quad then makes a new
//   mesh, and the function set is attached to it for the rest.
// - `rows`: the row list, world positions; read only.
// - `rowSpans`: a row of exactly rowSpans + 1 points is taken as it stands, any other is
//   resampled to rowSpans points. Deliberate: callers pass the true quad count of a prepared
//   row, or U spans + 1 for a raw stroke, so a raw stroke of U spans + 2 points keeps its
//   points and gets one quad more than any other; the redraw and scratch results rely on it.
//   A first row that ends exactly on its start is given at least 3.
// - `bandSpans`: quads across each band. Bands of 4 or more are pinched (bandPinch).
// - `tolerateUnevenRows`: lets a pair of rows of different lengths through the length test.
// Outputs:
// - returns the face indices of the new quads in creation order;
// - `ok`: false when a pair of rows could not be used: the list is then empty, though the
//   faces of earlier pairs stay on the mesh (there is no rollback);
// - `lastOwner`: what the last addPolygon call returned.
//
// Also empties the retopo mesh's vertex tweaks first, and afterwards writes the last pair of
// rows as the shadow with their vertex numbers (stackShadow). A failing addPolygon or shadow
// write is logged and the work goes on. Vertices merge within `tq_mergThreshold` (0.001).
MIntArray buildPatchFaces(MFnMesh& fnMesh, const RowList& rows, unsigned int rowSpans, unsigned int bandSpans,
                          bool tolerateUnevenRows, bool& ok, MObject& lastOwner);

} // namespace tq
