// The shadow's rows told as vertex numbers of the selected retopo mesh: what is written,
// what is left alone, and how one closed row closes them all.

#include "kernel/stackShadow.h"

#include "store/storeWrites.h"

#include "kernelTest.h"

#include <stdexcept>

namespace {

using namespace kerneltest;

using StackShadow = StripTest;

TEST_F(StackShadow, RowsBecomeIndexRowsAndOneClosedRowClosesThemAll)
{
    const MPointArray top = points({{0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}});
    ASSERT_TRUE(tq::writeShadowStrokes(points({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}), top, MPointArray()));
    EXPECT_TRUE(tq::stackShadow());
    // The point on vertex 0 goes to the nearest other vertex, 4 (a tie with 1).
    EXPECT_EQ(indexRows(), (Rows{{4, 1, 2, 3}, {4, 5, 6, 7}, {42}}));
    EXPECT_EQ(shadowSizes(), (std::vector<int>{4, 4}));
    // An empty second row is stored empty.
    ASSERT_TRUE(tq::writeShadowStrokes(points({{1, 0, 0}, {2, 0, 0}, {2, 1, 0}}), MPointArray(), MPointArray()));
    EXPECT_TRUE(tq::stackShadow());
    EXPECT_EQ(indexRows(), (Rows{{1, 2, 6}, {}, {42}}));

    // A closed first row: each row's last entry becomes its first.
    ASSERT_TRUE(tq::writeShadowStrokes(points({{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 0, 0}}), top,
                                       MPointArray()));
    EXPECT_TRUE(tq::stackShadow());
    EXPECT_EQ(indexRows(), (Rows{{1, 2, 6, 5, 1}, {4, 5, 6, 4}, {42}}));

    // A third row is written, and closed with the others; the sizes are left alone.
    ASSERT_TRUE(tq::writePointArrayAttr(points({{1, 0, 0}, {2, 0, 0}, {1, 0, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0},
                                                {2, 0, 0}, {3, 0, 0}, {3, 1, 0}}),
                                        "strokesShadow", store));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({3, 3, 3}), "sizesShadow", store));
    EXPECT_TRUE(tq::stackShadow());
    EXPECT_EQ(indexRows(), (Rows{{1, 2, 1}, {5, 6, 5}, {2, 3, 2}}));
    EXPECT_EQ(shadowSizes(), (std::vector<int>{3, 3, 3}));
}

TEST_F(StackShadow, RefusalsWriteNothing)
{
    ASSERT_TRUE(tq::writeShadowStrokes(points({{1, 0, 0}, {2, 0, 0}}), points({{1, 1, 0}, {2, 1, 0}}), MPointArray()));
    ASSERT_TRUE(host::select({}));
    EXPECT_EQ(tq::stackShadow(), MStatus::kInvalidParameter) << "no retopo mesh";

    ASSERT_TRUE(host::select({"strip"}));
    ASSERT_TRUE(tq::writeShadowStrokes(MPointArray(), MPointArray(), points({{1, 0, 0}, {2, 0, 0}})));
    EXPECT_THROW(tq::stackShadow(), std::out_of_range) << "one row is no shadow a patch leaves";
    EXPECT_EQ(indexRows(), (Rows{{42}, {42}, {42}}));

    ASSERT_TRUE(host::deleteNode("store"));
    EXPECT_EQ(tq::stackShadow(), MStatus::kInvalidParameter) << "no store";
}

} // namespace
