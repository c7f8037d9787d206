#pragma once
// Writes and clears of the store. Each finds the store anew and replaces whole arrays; a
// writer of `strokes` writes `sizes` as well, since `sizes` is what tells the overlay to
// rebuild. Host failures are logged with the module name "functions" and a line, and go on
// unless said otherwise below.
//
// With no store node a clear does nothing and returns kSuccess (`clearPlayersLine` excepted);
// a write is skipped and returns kInvalidParameter.

#include "store/strokeSet.h"

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// Empties `strokes`, then `sizes`; a failure of the first stops the second.
MStatus clearStrokes();
// Drops the last working stroke: `sizes` loses its last entry, then `strokes` its last that
// many points. False when there was no stroke (or no store).
bool popLastStroke();
// Appends a finished stroke to the working set: `strokes` grows by the points, then `sizes`
// by their count. An empty stroke is refused with kInvalidParameter.
MStatus appendStroke(const MPointArray& points);

// Empties `strokesShadow`, then `sizesShadow`.
MStatus clearShadow();
// Empties the three shadow index rows; a failure stops the rest.
MStatus clearShadowIndices();
// Empties the fuse preview (`fusept`, `fusemesh`, `fuseindices`) and also `sizesShadow`,
// which leaves `strokesShadow` holding points that no row claims.
MStatus clearFuseData();
MStatus clearNewFaces();
MStatus clearPlayerVertices();
// Empties `playersLine` alone. Unlike the other clears, no store is kUnknownParameter.
MStatus clearPlayersLine();
// Empties the frozen-border markers and unchecks the panel's "freezeBtn".
MStatus clearFreePoints();
// Empties the frozen-median markers and unchecks the panel's "freezeSymBtn".
MStatus clearFreezeMedian();
MStatus clearMagnetPoints();

// The anchor chain's positions: written to `playersLine`, then to `playerpts`.
MStatus writePlayerPoints(const MPointArray& points);
// Positions of `ids` on the retopo mesh (the active selection), in world space, written as
// with writePlayerPoints. A failed conversion is logged and returned with nothing written.
MStatus writePlayersFromVertices(const MIntArray& ids);
MStatus writePlayerVertices(const MIntArray& ids);
MStatus writeNewFaces(const MIntArray& ids);

// Writes the three index rows, then `sizesShadow` as the lengths of the non-empty rows in
// order. Deliberate: those sizes no longer match the rows by position when a middle row is
// empty, nor the stored positions; readers walk by `sizesShadow` and live with it.
MStatus writeShadowIndices(const MIntArray& row1, const MIntArray& row2, const MIntArray& row3);
// Either-or: with `row3` empty the shadow is `row1` then `row2` (two sizes, even when `row2`
// is empty); with `row3` set it replaces both, and the shadow is `row3` alone.
MStatus writeShadowStrokes(const MPointArray& row1, const MPointArray& row2, const MPointArray& row3);
// The guide strokes of the last patch: `sizesNondestruct`, then `strokesNondestruct`.
MStatus writeNondestructRows(const RowList& rows);

MStatus setPinch(double value);

} // namespace tq
