// Arc-length resampling through resampleRow and resamplePolyline: where samples land on real
// polylines, and what degenerate inputs give.

#include "kernel/resample.h"

#include "kernelTest.h"

#include <cmath>
#include <random>

namespace {

using namespace kerneltest;
using Xs = std::vector<double>;

// Arc length from the start of `line` to the point on it nearest to `p`, by brute force.
double arcPositionOf(const MPointArray& line, const MPoint& p)
{
    double best = 1e300, bestArc = 0.0, arc = 0.0;
    for (unsigned int i = 0; i + 1 < line.length(); ++i) {
        const MVector seg = line[i + 1] - line[i];
        const double len = seg.length();
        const double f = std::fmin(1.0, std::fmax(0.0, len > 0.0 ? ((p - line[i]) * seg) / (len * len) : 0.0));
        if ((line[i] + seg * f - p).length() < best) {
            best = (line[i] + seg * f - p).length();
            bestArc = arc + f * len;
        }
        arc += len;
    }
    return bestArc;
}

TEST(Resample, SamplesAreEvenAlongTheArcFromEndToEnd)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> step(-1.0, 1.0);
    for (int walk = 0; walk < 20; ++walk) {
        MPointArray in;
        MPoint p(0, 0, 0);
        const int m = 2 + walk % 9;
        for (int i = 0; i < m; ++i, p += MVector(1.05 + step(random), step(random), step(random)))
            in.append(p);
        const double total = arcPositionOf(in, in[in.length() - 1]);
        for (int count : {2, 3, m, 2 * m + 3, 57}) {
            SCOPED_TRACE("walk " + std::to_string(walk) + " count " + std::to_string(count));
            const MPointArray out = tq::resampleRow(in, count);
            ASSERT_EQ(out.length(), unsigned(count));
            EXPECT_LT((out[0] - in[0]).length(), 1e-9);
            EXPECT_LT((out[out.length() - 1] - in[in.length() - 1]).length(), 1e-9);
            for (int k = 1; k + 1 < count; ++k)
                EXPECT_NEAR(arcPositionOf(in, out[unsigned(k)]), total * k / (count - 1), 1e-9 * total) << k;
        }
    }
}

TEST(Resample, ShortInputsSmallCountsAndZeroLengths)
{
    for (int count : {-3, 0, 1, 9}) {
        EXPECT_EQ(tq::resamplePolyline(MPointArray(), count).length(), 0u) << count;
        EXPECT_EQ(xs(tq::resamplePolyline(points({{4, 5, 6}}), count)), (Xs{4})) << count;
    }
    for (int count : {-1, 0, 1})
        EXPECT_EQ(xs(tq::resampleRow(points({{0, 0, 0}, {1, 0, 0}, {5, 0, 0}}), count)), (Xs{0, 5})) << count;
    for (const MPoint& p : tq::resampleRow(points({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}), 3))
        EXPECT_TRUE(std::isnan(p.x)) << "a polyline of no length";
    // A repeated point inside is passed over; a repeated first point traps the first sample.
    EXPECT_EQ(xs(tq::resampleRow(points({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {2, 0, 0}}), 5)), (Xs{0, 0.5, 1, 1.5, 2}));
    const MPointArray first = tq::resampleRow(points({{0, 0, 0}, {0, 0, 0}, {2, 0, 0}}), 3);
    ASSERT_EQ(first.length(), 3u);
    EXPECT_TRUE(std::isnan(first[0].x));
    EXPECT_NEAR(first[1].x, 1.0, 1e-12);
}

} // namespace
