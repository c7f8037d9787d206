#pragma once
// Walking a stroke by arc length: its length, turning it to start at another point, and
// dropping points along it at even steps of arc length. A closed figure is laid on an anchor
// row with these: started at the point under the cursor and given the row's count of points
// over the row's length.

#include <maya/MPointArray.h>

namespace tq {

// The sum of the segment lengths of `points`; 0.0 for fewer than 2 points.
double strokeLength(const MPointArray& points);

// A new array: the points from index `start` to the end, then those from 0 to `start` - 1.
// An empty array, or a `start` outside it, comes back as it is.
MPointArray rotateToIndex(const MPointArray& points, int start);

// Walks `points` from the first point forwards, or from the last backwards, and drops the
// point it stands on whenever at least total / count of arc length lies behind the last drop;
// points are taken as they are, never interpolated. Inputs: `points`, the polyline; `total`,
// the arc length to cover; `count`, the wanted number of drops.
// Output: the dropped points, in walking order. The walk stops past the far end (the first
// point is never dropped walking backwards, and the start point is not dropped either way),
// once more than `total` has been stepped, or after as many drops as `points` has points.
// Deliberate: overshooting each step at a vertex is not carried over, so a polyline of about
// `total` in length gives fewer than `count` points; callers take the shorter array as it is.
// A `count` below 1 or a `total` that is not positive gives no point.
MPointArray walkStroke(const MPointArray& points, double total, int count, bool forward);

} // namespace tq
