#pragma once
// Small operations on rows as whole arrays: joining two, closing one into a loop, and the
// fallback that stands in a row's last point for an unset one.

#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

// A new array: the points of a, then those of b.
MPointArray concatPoints(const MPointArray& a, const MPointArray& b);

// Close a row that already has a spare end slot: its first element is written over its last,
// and the length stays. Deliberate: the former last element is lost, nothing is appended. An
// empty row is left as it is with kSuccess; a row of 1 or 2 elements is left as it is with
// kFailure, since it cannot be a loop.
MStatus closeIndexLoop(MIntArray& indices);
MStatus closePointLoop(MPointArray& points);

// Returns `point`, or, when any one of its |x|, |y|, |z| is below 0.0001, the last point of
// `points` (w included), which is also written into `point`. With `points` empty the point
// stays as it was. Deliberate: each coordinate is tested on its own, not the point's length,
// so a point that merely lies on a coordinate plane counts as unset too; the tool has always
// read an unset point that way, and that is kept.
MPoint magnetFallback(MPoint& point, const MPointArray& points);

} // namespace tq
