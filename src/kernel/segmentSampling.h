#pragma once
// Straight runs turned into points: by a count, by a density in world units, or by a step in
// pixels of the active view, so that how many points a guide gets depends on the zoom.
// Every sampler leaves the end point out and returns a new array.

#include <maya/MPoint.h>
#include <maya/MPointArray.h>

namespace tq {

// `count` points a + d·i, d = (b - a) / count, i from 0; b itself is never among them. Empty
// for a count below 1.
MPointArray sampleSegmentByCount(const MPoint& a, const MPoint& b, int count);

// n = pixelDistance(a, b) / step points (whole-number division) a + d·i, d = (b - a) / n.
// Deliberate: a segment shorter than one step gives no point at all, not even a, and a
// distance that wrapped negative gives none either. A step of 0 or less gives none.
MPointArray sampleSegmentByPixels(const MPoint& a, const MPoint& b, short step);

// `two` must hold exactly 2 distinct points, or a copy of it comes back. Otherwise
// n = trunc(|two[1] - two[0]| · density) points two[0] + d·i, d = (two[1] - two[0]) / n;
// none when the points are closer than 1 / density.
MPointArray sampleSegmentByDensity(const MPointArray& two, int density);

// The perimeter of the quadrilateral a, b, c, d: each side in that order sampled as
// sampleSegmentByPixels does, then a once more so the ring closes on its exact start.
// Deliberate: a side shorter than one step loses its own corner, so a small quad loses
// corners and one smaller than a step everywhere is just a.
MPointArray multispit(const MPoint& a, const MPoint& b, const MPoint& c, const MPoint& d, short step);

} // namespace tq
