#pragma once
// The whole-array steps that resamplePolyline is written in. Each takes its arguments
// read-only and returns a fresh array; none keeps state or changes an argument. Value arrays
// are plain vectors of doubles; index arrays are value arrays of whole numbers, truncated to
// integers where they are used.
//
// Element access on value arrays is checked: a bad index throws std::out_of_range with the
// text "invalid vector subscript". Access to point arrays is not checked; the resampler's
// clamp of its segment numbers keeps those indices in range.

#include <maya/MPointArray.h>

#include <cstddef>
#include <vector>

namespace tq {

using ValueArray = std::vector<double>;
using CountArray = std::vector<int>;

// Checked read of a value array. Deliberate: the text of the error is the one the resampler
// has always raised for an index past the end, and whoever catches it may log it as it stands.
double valueAt(const ValueArray& values, std::size_t index);

// `count` values from `low` to `high`: element i is i * step + low, step = (high - low) /
// (count - 1). Empty for a count of 0 or less. Deliberate: a count of 1 divides by zero and
// gives one not-a-number, which the resampler's callers never ask for.
ValueArray linspace(double low, double high, int count);

// Length of each of the m - 1 segments of `points`:
// valueRoots(componentSums(pointSquares(pointDifferences(points)))).
ValueArray segmentLengths(const MPointArray& points);

// The m - 1 differences points[i + 1] - points[i], as points with w = 1. Empty for fewer than
// two points.
MPointArray pointDifferences(const MPointArray& points);

// (x², y², z², 1) per point.
MPointArray pointSquares(const MPointArray& points);

// x + y + z per point, summed in that order.
ValueArray componentSums(const MPointArray& points);

// Square root of each value.
ValueArray valueRoots(const ValueArray& values);

// Sum of all values, from the first; 0.0 for none.
double valueTotal(const ValueArray& values);

// values[i] / s.
ValueArray valueQuotientByScalar(const ValueArray& values, double s);

// A leading 0.0, then the running sums of `values`: one element longer than `values`.
ValueArray cumulativeFromZero(const ValueArray& values);

// A histogram of `values` over the intervals of `grid`: element i counts the values v with
// grid[i] <= v < grid[i + 1]; the last interval is also closed on the right. grid.size() - 1
// elements, none for a grid of fewer than two. Quadratic on purpose: both arrays are sorted
// where it is used, and they hold a stroke's worth of points.
CountArray intervalCounts(const ValueArray& grid, const ValueArray& values);

// source[trunc(indices[i])], checked.
ValueArray gatherValues(const ValueArray& source, const ValueArray& indices);

// a[i] - b[i] and a[i] / b[i], for each element of a; b is read checked.
ValueArray valueDifference(const ValueArray& a, const ValueArray& b);
ValueArray valueQuotient(const ValueArray& a, const ValueArray& b);

// (v, v, v, 1) per value.
MPointArray pointBroadcast(const ValueArray& values);

// source[trunc(indices[i]) + offset], offset 0 or 1; unchecked.
MPointArray gatherPoints(const MPointArray& source, const ValueArray& indices, int offset);

// (a[i] - b[i]) with w = 1, for each point of a.
MPointArray pointDifferencesBetween(const MPointArray& a, const MPointArray& b);

// (a.x * b.x, a.y * b.y, a.z * b.z, 1), for each point of a.
MPointArray pointProducts(const MPointArray& a, const MPointArray& b);

// a[i] moved by the vector (b[i].x, b[i].y, b[i].z), keeping a[i].w; for each point of a.
MPointArray pointSums(const MPointArray& a, const MPointArray& b);

} // namespace tq
