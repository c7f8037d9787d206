#pragma once
// Small searches over arrays of vertex numbers and values, as the gesture code asks them.

#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>

namespace tq {

// True when `value` stands in `array`; a linear scan.
bool arrayContains(int value, const MIntArray& array);
// True when some element of `a` stands in `b`.
bool arraysShareValue(const MIntArray& a, const MIntArray& b);
// The index of the value of smallest magnitude, the first among equals; 0 for an empty array.
// Deliberate: the search starts from a best of 99999.0, so values all at or beyond that
// magnitude also answer 0.
unsigned int nearestToZeroIndex(const MFloatArray& values);
// Writes 0.0 into point.x when `vertex` stands in `median`: a vertex of the symmetry median
// stays on the plane x = 0.
void snapToMedian(int vertex, const MIntArray& median, MPoint& point);

} // namespace tq
