#include "kernel/indexArrays.h"

#include <cmath>

namespace tq {

bool arrayContains(int value, const MIntArray& array)
{
    for (const int v : array) {
        if (v == value)
            return true;
    }
    return false;
}

bool arraysShareValue(const MIntArray& a, const MIntArray& b)
{
    for (const int v : a) {
        if (arrayContains(v, b))
            return true;
    }
    return false;
}

unsigned int nearestToZeroIndex(const MFloatArray& values)
{
    double best = 99999.0;
    unsigned int bestIndex = 0;
    for (unsigned int i = 0; i < values.length(); ++i) {
        if (std::fabs(values[i]) < best) {
            best = std::fabs(values[i]);
            bestIndex = i;
        }
    }
    return bestIndex;
}

void snapToMedian(int vertex, const MIntArray& median, MPoint& point)
{
    if (arrayContains(vertex, median))
        point.x = 0.0;
}

} // namespace tq
