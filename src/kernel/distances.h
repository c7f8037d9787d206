#pragma once
// Distances between points and the length of one vector along another, in world units or in
// whatever plane the points are given in. No view is involved; see screen.h for pixels.

#include <maya/MPoint.h>
#include <maya/MVector.h>

namespace tq {

// sqrt((b.y - a.y)² + (b.x - a.x)²): the distance in the xy plane, z and w ignored. Used on
// view positions, which carry pixels in x and y.
double planarDistance(const MPoint& a, const MPoint& b);

// The Euclidean distance in x, y and z.
double pointDistance(const MPoint& a, const MPoint& b);

// |v| · cos(angle between v and w): the length of v along w, negative when they oppose.
double scalarProjection(const MVector& v, const MVector& w);

} // namespace tq
