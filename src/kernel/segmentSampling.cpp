#include "kernel/segmentSampling.h"

#include "kernel/debugDump.h"
#include "kernel/screen.h"

#include <maya/MVector.h>

#include <cstdint>

namespace tq {

namespace {

// Appends n points from p towards q, q left out; nothing when n is 0 or negative.
void appendSteps(MPointArray& out, const MPoint& p, const MPoint& q, int n)
{
    if (n <= 0)
        return;
    const MVector d = (q - p) / static_cast<double>(n);
    for (int i = 0; i < n; ++i)
        out.append(p + d * static_cast<double>(i));
}

// pixelDistance(p, q) / step, truncating toward zero. The step is never 0 in the tool (it
// always samples every 10 pixels); a zero step here counts as no samples instead of trapping.
int pixelSteps(const MPoint& p, const MPoint& q, short step)
{
    if (step <= 0)
        return 0;
    return pixelDistance(p, q) / step;
}

} // namespace

MPointArray sampleSegmentByCount(const MPoint& a, const MPoint& b, int count)
{
    MPointArray out;
    appendSteps(out, a, b, count);
    return out;
}

MPointArray sampleSegmentByPixels(const MPoint& a, const MPoint& b, short step)
{
    MPointArray out;
    appendSteps(out, a, b, pixelSteps(a, b, step));
    return out;
}

MPointArray sampleSegmentByDensity(const MPointArray& two, int density)
{
    if (two.length() != 2 || two[0] == two[1])
        return two;
    const MVector span = two[1] - two[0];
    const double wanted = span.length() * static_cast<double>(density);
    // Truncated to 64 bits, of which the low 32 are the loop's bound; a not-a-number or
    // unbounded length gives no point rather than an undefined conversion.
    std::int64_t n = 0;
    if (wanted > -9.2e18 && wanted < 9.2e18)
        n = static_cast<std::int64_t>(wanted);
    MPointArray out;
    if (n <= 0)
        return out;
    // A low half of 2^31 or more is a negative signed bound: the loop would not run.
    const std::uint32_t low = static_cast<std::uint32_t>(static_cast<std::uint64_t>(n));
    if (low == 0 || low > static_cast<std::uint32_t>(INT32_MAX))
        return out;
    const std::int32_t bound = static_cast<std::int32_t>(low);
    const MVector d = span / static_cast<double>(n);
    for (std::int32_t i = 0; i < bound; ++i)
        out.append(two[0] + d * static_cast<double>(i));
    return out;
}

MPointArray multispit(const MPoint& a, const MPoint& b, const MPoint& c, const MPoint& d, short step)
{
    const MPoint ring[5] = {a, b, c, d, a};
    MPointArray out;
    for (int side = 0; side < 4; ++side)
        appendSteps(out, ring[side], ring[side + 1], pixelSteps(ring[side], ring[side + 1], step));
    out.append(a);
    dumpPoints(out, "multispit");
    return out;
}

} // namespace tq
