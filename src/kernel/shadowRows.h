#pragma once
// The shadow kept true to the mesh. The shadow (the rows of the last patch) lives on the
// store twice: as up to three rows of vertex numbers (`shadowIndices1..3`) and as the world
// positions of the same rows (`strokesShadow`/`sizesShadow`). The numbers are the truth; these
// routines make the positions follow them, close rows into loops, and turn a loop by one place.
//
// Deliberate: a third row replaces the first two in the position face (writeShadowStrokes),
// while the index face keeps all three; readers of the positions then see one row.

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// Closes every row of a loop patch, in both faces. `indices` receives the outer index row
// (row 3 when set, else row 2) and `points` the outer position row. A non-empty index row of
// fewer than 3 numbers cannot close: kFailure, nothing written. Fewer than two position rows
// breaks the generators' invariant and raises std::out_of_range.
MStatus stackSlices(MPointArray& points, MIntArray& indices);

// The finishing step after a closed patch. Deliberate: row 1 is closed by appending its first
// number when its ends differ (it grows by one), while row 2 gets its first number written over
// its last (same length); the next patch grows from row 2, which becomes the player row.
// Each failure is logged and the next step runs all the same.
void finition();

// Turns shadow row 2 by one place against row 1: toward its start for a positive direction,
// toward its end for a negative one, and a closed row stays closed. 0 does nothing. Rows of
// unequal length, or an empty row 2, give kInvalidParameter.
MStatus twistRows(short direction);

// Rewrites the position face from the present positions of the index rows on the retopo
// mesh. Nothing happens unless the store has player vertices or is in boundary edit mode.
// Rows 1 and 2 of unequal length (with no row 3): kFailure; when their positions come out of
// unequal length the position face is emptied and the result is kInvalidParameter.
MStatus refreshShadowRows();

// The position face rewritten from the positions of the given index rows on the retopo mesh.
MStatus repositionShadow(const MIntArray& row1, const MIntArray& row2, const MIntArray& row3);

// The position face rewritten from the stored index rows on `meshPath`; numbers past the
// mesh's vertices are skipped. An invalid path is kFailure.
MStatus repositionShadowFromMesh(const MDagPath& meshPath);

// Ends an edit of a patch: the working strokes are cleared, the patch node (when not null)
// resumes, and the shadow positions follow the mesh. Always kSuccess.
MStatus finishPatchEdit(const MObject& patchNode);

// Appends the last row of the position face to `points` and its length to `sizes` (neither is
// cleared first). No shadow: kInvalidParameter.
MStatus lastShadowRow(MIntArray& sizes, MPointArray& points);

// Rewrites the anchor chain's positions (`playersLine`, `playerpts`) from its vertex numbers
// (`playervtx`) on `meshPath`. No anchor chain: kSuccess, nothing written.
MStatus refreshPlayerLine(const MDagPath& meshPath);

// Closes both rows as loops (first number over the last); kFailure unless both hold more
// than 2 numbers.
MStatus closeIndexRows(MIntArray& a, MIntArray& b);

} // namespace tq
