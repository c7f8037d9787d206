#pragma once
// The preparations of the append operations: rows swept along a stroke, a stroke tied to
// the player row, and the far row of a band predicted from the order in which quads are made.

#include "store/strokeSet.h"

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// `firstRow` (n points) swept along `guide`: the first row itself, then for each guide point
// a row of n points across the guide, centred on it and as wide as the first row's chord.
// Each row holds n samples from its start toward its end, the end itself left out, so the
// last point stops one step short of the carried end. An empty first row gives no rows.
// Deliberate: the turn factor divides the angle by 1.5757 (not pi/2). A guide point on the
// current row's middle, or one that would turn the row to no width, adds no row.
RowList rowsAlongStroke(MPointArray firstRow, MPointArray guide);

// Writes the middle of the player row (`playerpts`) over the first point of the first row.
// No rows, an empty first row or no player row: kInvalidParameter, nothing changed.
MStatus anchorStrokeToPlayerMidpoint(RowList& rows);

// Puts the player row in front of the working strokes, as their first stroke.
MStatus insertPlayerStroke(const MPointArray& playerPoints);

// The vertex numbers of the far row of a band of `spans` quads along and `vSpans` across,
// grown onto an existing row from a mesh of `oldVertexCount` vertices: c, c - 1, c + vSpans,
// c + 2 vSpans, ... (spans + 1 numbers) with c = oldVertexCount - 1 + 2 vSpans. The first
// column adds two vertices per step across and every later column one. Empty for spans < 1.
MIntArray calculateLAST(int spans, int vSpans, int oldVertexCount);

} // namespace tq
