#include "kernel/rowArrays.h"

#include <cmath>

namespace tq {

namespace {

constexpr double kUnsetCoordinate = 0.0001;

template <typename Array>
MStatus closeLoop(Array& items)
{
    const unsigned int n = items.length();
    if (n == 0)
        return MStatus::kSuccess;
    if (n < 3)
        return MStatus::kFailure;
    items[n - 1] = items[0];
    return MStatus::kSuccess;
}

} // namespace

MPointArray concatPoints(const MPointArray& a, const MPointArray& b)
{
    MPointArray out(a);
    for (const MPoint& p : b)
        out.append(p);
    return out;
}

MStatus closeIndexLoop(MIntArray& indices) { return closeLoop(indices); }

MStatus closePointLoop(MPointArray& points) { return closeLoop(points); }

MPoint magnetFallback(MPoint& point, const MPointArray& points)
{
    const bool set = std::fabs(point.x) >= kUnsetCoordinate && std::fabs(point.y) >= kUnsetCoordinate &&
                     std::fabs(point.z) >= kUnsetCoordinate;
    if (set)
        return point;
    if (points.length() != 0)
        point = points[points.length() - 1];
    return point;
}

} // namespace tq
