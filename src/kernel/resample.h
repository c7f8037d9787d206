#pragma once
// Arc-length resampling of polylines: a stroke, dense where the hand was slow and sparse
// where it was fast, becomes a row of evenly spaced points. Works in whatever space the
// points are given in; samples lie on the input's chords, never on a surface.

#include <maya/MPointArray.h>

namespace tq {

// `points`: m points of a polyline, in order. Returns `count` points equally spaced along
// its arc length, the first on points[0] and the last on points[m - 1] up to rounding; input
// corners between samples are cut. Fewer than 2 input points come back unchanged, whatever
// `count` is. Nothing else is guarded: a count of 1 gives one not-a-number sample, a count
// below 1 throws std::out_of_range, and a polyline of length 0 (or a first or last segment of
// length 0) gives not-a-number samples. Call it through resampleRow.
MPointArray resamplePolyline(const MPointArray& points, int count);

// resamplePolyline with `count` raised to 2 when it is lower: the entry point for every
// caller, so the resampler never sees a count below 2.
MPointArray resampleRow(const MPointArray& points, int count);

} // namespace tq
