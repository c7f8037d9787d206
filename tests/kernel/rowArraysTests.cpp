// Rows as whole arrays: closing into loops over the spare last slot, and the magnet's
// fallback point.

#include "kernel/rowArrays.h"

#include "kernelTest.h"

#include <tuple>

namespace {

using namespace kerneltest;

TEST(RowArrays, LoopsCloseOverTheLastSlot)
{
    // Overwritten, not appended to; too short for a loop is refused and left; empty is fine.
    for (const auto& [row, closed, status] : {std::tuple{std::vector<int>{5, 6, 7}, std::vector<int>{5, 6, 5}, true},
                                              std::tuple{std::vector<int>{5, 6}, std::vector<int>{5, 6}, false},
                                              std::tuple{std::vector<int>{}, std::vector<int>{}, true}}) {
        MIntArray indices = intArray(row);
        EXPECT_EQ(bool(tq::closeIndexLoop(indices)), status) << row.size();
        EXPECT_EQ(ints(indices), closed) << row.size();
    }
    MPointArray row = points({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0.9, 0.1, 0}});
    EXPECT_TRUE(tq::closePointLoop(row));
    EXPECT_EQ(xs(row), (std::vector<double>{0, 1, 1, 0}));
    MPointArray pair = points({{0, 0, 0}, {1, 0, 0}});
    EXPECT_FALSE(tq::closePointLoop(pair));
    EXPECT_EQ(xs(pair), (std::vector<double>{0, 1}));
}

TEST(RowArrays, MagnetFallbackReplacesAPointNearAnyCoordinatePlane)
{
    MPointArray row = points({{1, 1, 1}});
    row.append(MPoint(7, 8, 9, 0.5));
    MPoint set(0.0001, -3, 0.5);
    EXPECT_EQ(tq::magnetFallback(set, row), MPoint(0.0001, -3, 0.5));
    for (const MPoint& unset : {MPoint(2, 3, 0.00005), MPoint(0, 5, 5), MPoint(5, -0.00001, 5)}) {
        MPoint p = unset;
        EXPECT_EQ(tq::magnetFallback(p, row), MPoint(7, 8, 9, 0.5)) << unset.x << ", " << unset.y << ", " << unset.z;
        EXPECT_EQ(p, MPoint(7, 8, 9, 0.5)) << "the argument changes too";
    }
    MPoint lonely(0, 1, 1);
    EXPECT_EQ(tq::magnetFallback(lonely, MPointArray()), MPoint(0, 1, 1));
}

} // namespace
