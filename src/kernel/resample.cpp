#include "kernel/resample.h"

#include "kernel/resampleArrays.h"

#include <cstddef>

namespace tq {

// Deliberate: a chain of whole-array steps, each making a new array, rather than a walk with
// a running distance. The samples depend on this exact order of rounding (normalise first,
// then accumulate, then divide by the segment's share), and rows that later meet by position
// within a merge tolerance rely on getting the same samples from the same stroke.
MPointArray resamplePolyline(const MPointArray& points, int count)
{
    const unsigned int m = points.length();
    if (m < 2)
        return points;

    const ValueArray t = linspace(0.0, 1.0, count);
    const ValueArray lengths = segmentLengths(points);
    const double total = valueTotal(lengths);
    const ValueArray unit = valueQuotientByScalar(lengths, total);
    const ValueArray cum = cumulativeFromZero(unit);

    // The wanted fractions t are the grid and the input points' fractions are counted in it.
    const CountArray counts = intervalCounts(t, cum);

    // bins[k]: how many input points lie below t[k], the 1-based segment that holds it.
    ValueArray bins;
    bins.reserve(counts.size() + 1);
    int running = 0;
    bins.push_back(0.0);
    for (int c : counts) {
        if (c >= 1)
            running += c;
        bins.push_back(static_cast<double>(running));
    }

    // Pin the ends to the first and last segments, whatever rounding did to t and cum.
    const double lastSegment = static_cast<double>(m - 1);
    for (std::size_t k = 0; k < bins.size(); ++k) {
        const double tk = valueAt(t, k);
        if (bins[k] <= 0.0 || tk <= 0.0)
            bins[k] = 1.0;
        else if (bins[k] >= static_cast<double>(m) || tk >= 1.0)
            bins[k] = lastSegment;
    }
    for (double& b : bins)
        b -= 1.0;

    const ValueArray segUnit = gatherValues(unit, bins);
    const ValueArray start = gatherValues(cum, bins);
    const ValueArray s = valueQuotient(valueDifference(t, start), segUnit);
    const MPointArray S = pointBroadcast(s);
    const MPointArray b = gatherPoints(points, bins, 1);
    const MPointArray a = gatherPoints(points, bins, 0);
    const MPointArray e = pointProducts(pointDifferencesBetween(b, a), S);
    return pointSums(gatherPoints(points, bins, 0), e);
}

MPointArray resampleRow(const MPointArray& points, int count)
{
    return resamplePolyline(points, count < 2 ? 2 : count);
}

} // namespace tq
