#include "kernel/distances.h"

#include <cmath>

namespace tq {

double planarDistance(const MPoint& a, const MPoint& b)
{
    const double dy = b.y - a.y;
    const double dx = b.x - a.x;
    return std::sqrt(dy * dy + dx * dx);
}

double pointDistance(const MPoint& a, const MPoint& b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double dz = b.z - a.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

double scalarProjection(const MVector& v, const MVector& w)
{
    return v.length() * std::cos(v.angle(w));
}

} // namespace tq
