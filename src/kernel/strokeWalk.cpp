#include "kernel/strokeWalk.h"

namespace tq {

double strokeLength(const MPointArray& points)
{
    double length = 0.0;
    for (unsigned int i = 1; i < points.length(); ++i)
        length += points[i - 1].distanceTo(points[i]);
    return length;
}

MPointArray rotateToIndex(const MPointArray& points, int start)
{
    const int length = static_cast<int>(points.length());
    if (length == 0 || start < 0 || start >= length)
        return points;
    MPointArray out;
    out.setLength(points.length());
    for (int i = 0; i < length; ++i)
        out[static_cast<unsigned int>(i)] = points[static_cast<unsigned int>((start + i) % length)];
    return out;
}

MPointArray walkStroke(const MPointArray& points, double total, int count, bool forward)
{
    MPointArray out;
    const int length = static_cast<int>(points.length());
    // Also refuses a not-a-number total, which would never end a walk by length.
    if (length == 0 || count < 1 || !(total > 0.0))
        return out;
    const double step = total / count;
    double walked = 0.0;
    double since = 0.0;
    int i = forward ? 0 : length - 1;
    for (int dropped = 0; dropped < length;) {
        if ((forward && i > length - 1) || (!forward && i == 0))
            break;
        if (step > since) {
            const int next = forward ? i + 1 : i - 1;
            // Stepping off the last point ends the walk at the next test.
            if (next < length)
                since += points[static_cast<unsigned int>(i)].distanceTo(points[static_cast<unsigned int>(next)]);
            i = next;
            continue;
        }
        if (i >= 0 && i < length)
            out.append(points[static_cast<unsigned int>(i)]);
        walked += step;
        since = 0.0;
        if (walked > total)
            break;
        ++dropped;
    }
    return out;
}

} // namespace tq
