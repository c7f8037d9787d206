#include "kernel/resampleArrays.h"

#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace tq {

double valueAt(const ValueArray& values, std::size_t index)
{
    if (index >= values.size())
        throw std::out_of_range("invalid vector subscript");
    return values[index];
}

namespace {

// An index held as a double, truncated toward zero. A negative or not-a-number index cannot
// name an element, so it becomes one past any array and fails the checked read.
std::size_t truncatedIndex(double index)
{
    if (!(index > -1.0) || !(index < 4294967296.0))
        return static_cast<std::size_t>(-1);
    return static_cast<std::size_t>(std::trunc(index));
}

} // namespace

ValueArray linspace(double low, double high, int count)
{
    ValueArray out;
    if (count <= 0)
        return out;
    const double step = (high - low) / static_cast<double>(count - 1);
    out.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        out.push_back(static_cast<double>(i) * step + low);
    return out;
}

ValueArray segmentLengths(const MPointArray& points)
{
    return valueRoots(componentSums(pointSquares(pointDifferences(points))));
}

MPointArray pointDifferences(const MPointArray& points)
{
    MPointArray out;
    for (unsigned int i = 0; i + 1 < points.length(); ++i) {
        const MPoint& p = points[i];
        const MPoint& q = points[i + 1];
        out.append(MPoint(q.x - p.x, q.y - p.y, q.z - p.z, 1.0));
    }
    return out;
}

MPointArray pointSquares(const MPointArray& points)
{
    MPointArray out;
    for (const MPoint& p : points)
        out.append(MPoint(p.x * p.x, p.y * p.y, p.z * p.z, 1.0));
    return out;
}

ValueArray componentSums(const MPointArray& points)
{
    ValueArray out;
    out.reserve(points.length());
    for (const MPoint& p : points)
        out.push_back(p.x + p.y + p.z);
    return out;
}

ValueArray valueRoots(const ValueArray& values)
{
    ValueArray out;
    out.reserve(values.size());
    for (double v : values)
        out.push_back(std::sqrt(v));
    return out;
}

double valueTotal(const ValueArray& values)
{
    double total = 0.0;
    for (double v : values)
        total += v;
    return total;
}

ValueArray valueQuotientByScalar(const ValueArray& values, double s)
{
    ValueArray out;
    out.reserve(values.size());
    for (double v : values)
        out.push_back(v / s);
    return out;
}

ValueArray cumulativeFromZero(const ValueArray& values)
{
    ValueArray out;
    out.reserve(values.size() + 1);
    double running = 0.0;
    out.push_back(running);
    for (double v : values) {
        running += v;
        out.push_back(running);
    }
    return out;
}

CountArray intervalCounts(const ValueArray& grid, const ValueArray& values)
{
    CountArray out;
    if (grid.size() < 2)
        return out;
    const std::size_t last = grid.size() - 2;
    out.reserve(grid.size() - 1);
    for (std::size_t i = 0; i <= last; ++i) {
        const double low = valueAt(grid, i);
        const double high = valueAt(grid, i + 1);
        int count = 0;
        for (double v : values) {
            // Only the last interval holds its right end, so that the final point is counted.
            const bool belowHigh = (i == last) ? v <= high : v < high;
            if (v >= low && belowHigh)
                ++count;
        }
        out.push_back(count);
    }
    return out;
}

ValueArray gatherValues(const ValueArray& source, const ValueArray& indices)
{
    ValueArray out;
    out.reserve(indices.size());
    for (double index : indices)
        out.push_back(valueAt(source, truncatedIndex(index)));
    return out;
}

ValueArray valueDifference(const ValueArray& a, const ValueArray& b)
{
    ValueArray out;
    out.reserve(a.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        out.push_back(a[i] - valueAt(b, i));
    return out;
}

ValueArray valueQuotient(const ValueArray& a, const ValueArray& b)
{
    ValueArray out;
    out.reserve(a.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        out.push_back(a[i] / valueAt(b, i));
    return out;
}

MPointArray pointBroadcast(const ValueArray& values)
{
    MPointArray out;
    for (double v : values)
        out.append(MPoint(v, v, v, 1.0));
    return out;
}

MPointArray gatherPoints(const MPointArray& source, const ValueArray& indices, int offset)
{
    MPointArray out;
    for (double index : indices) {
        const std::size_t i = truncatedIndex(index) + static_cast<std::size_t>(offset);
        out.append(source[static_cast<unsigned int>(i)]);
    }
    return out;
}

MPointArray pointDifferencesBetween(const MPointArray& a, const MPointArray& b)
{
    MPointArray out;
    for (unsigned int i = 0; i < a.length(); ++i)
        out.append(MPoint(a[i].x - b[i].x, a[i].y - b[i].y, a[i].z - b[i].z, 1.0));
    return out;
}

MPointArray pointProducts(const MPointArray& a, const MPointArray& b)
{
    MPointArray out;
    for (unsigned int i = 0; i < a.length(); ++i)
        out.append(MPoint(a[i].x * b[i].x, a[i].y * b[i].y, a[i].z * b[i].z, 1.0));
    return out;
}

MPointArray pointSums(const MPointArray& a, const MPointArray& b)
{
    MPointArray out;
    for (unsigned int i = 0; i < a.length(); ++i)
        out.append(MPoint(a[i].x + b[i].x, a[i].y + b[i].y, a[i].z + b[i].z, a[i].w));
    return out;
}

} // namespace tq
