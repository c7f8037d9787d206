// The shadow kept true to the mesh: loops closed in both faces, the finishing step, the
// twist of a row by one place, and positions that follow the vertices after they moved.

#include "kernel/shadowRows.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

#include "kernelTest.h"

namespace {

using kerneltest::intArray;
using kerneltest::ints;
using kerneltest::points;
using kerneltest::Rows;

class ShadowRows : public kerneltest::StripTest {
protected:
    void writeIndexRows(const std::vector<int>& a, const std::vector<int>& b, const std::vector<int>& c = {})
    {
        ASSERT_TRUE(tq::writeShadowIndices(intArray(a), intArray(b), intArray(c)));
    }

    // The position face as rows of x coordinates (the strip's vertices differ in x and y).
    std::vector<std::vector<MPoint>> positionRows()
    {
        MStatus status;
        std::vector<std::vector<MPoint>> out;
        for (const MPointArray& row : tq::readShadowRows(status))
            out.emplace_back(row.begin(), row.end());
        return out;
    }
};

TEST_F(ShadowRows, FinitionClosesRowOneByAppendingAndRowTwoInPlace)
{
    // Rows 1 and 2 are closed differently, and row 2 becomes the anchor chain.
    writeIndexRows({1, 2, 3}, {4, 5, 6, 7});
    tq::finition();
    EXPECT_EQ(indexRows(), (Rows{{1, 2, 3, 1}, {4, 5, 6, 4}, {}}));
    MStatus status;
    EXPECT_EQ(ints(tq::readPlayerVertices(status)), (std::vector<int>{4, 5, 6, 4}));
    const MPointArray anchors = tq::readPlayerPoints(status);
    ASSERT_EQ(anchors.length(), 4u);
    EXPECT_EQ(anchors[1], MPoint(1, 1, 0));

    // A row 1 that is already closed keeps its length.
    writeIndexRows({1, 2, 3, 1}, {4, 5, 6, 7});
    tq::finition();
    EXPECT_EQ(indexRows(), (Rows{{1, 2, 3, 1}, {4, 5, 6, 4}, {}}));
}

TEST_F(ShadowRows, TwistTurnsRowTwoOnePlaceAndKeepsLoopsClosed)
{
    writeIndexRows({0, 1, 2, 0}, {4, 5, 6, 4});
    EXPECT_TRUE(tq::twistRows(1));
    EXPECT_EQ(indexRows()[1], (std::vector<int>{5, 6, 4, 5}));
    EXPECT_TRUE(tq::twistRows(-7)); // only the sign counts
    EXPECT_EQ(indexRows()[1], (std::vector<int>{4, 5, 6, 4}));
    EXPECT_TRUE(tq::twistRows(-1));
    EXPECT_EQ(indexRows()[1], (std::vector<int>{6, 4, 5, 6}));
    // The positions follow the turned numbers.
    EXPECT_EQ(positionRows()[1].front(), MPoint(2, 1, 0));

    // Two places: shifted, nothing written over.
    writeIndexRows({0, 1}, {4, 5});
    EXPECT_TRUE(tq::twistRows(1));
    EXPECT_EQ(indexRows()[1], (std::vector<int>{5, 5}));

    writeIndexRows({0, 1, 2}, {4, 5});
    EXPECT_EQ(tq::twistRows(1), MStatus::kInvalidParameter);
    EXPECT_EQ(indexRows()[1], (std::vector<int>{4, 5}));
}

TEST_F(ShadowRows, PositionsFollowTheVerticesOnlyWithAnAnchorChain)
{
    writeIndexRows({1, 2}, {5, 6});
    ASSERT_TRUE(tq::writeShadowStrokes(points({{9, 9, 9}, {9, 9, 9}}), points({{9, 9, 9}, {9, 9, 9}}), MPointArray()));
    // No anchor chain and no boundary edit: nothing at all happens.
    EXPECT_TRUE(tq::refreshShadowRows());
    EXPECT_EQ(positionRows()[0][0], MPoint(9, 9, 9));

    ASSERT_TRUE(tq::writePlayerVertices(intArray({5, 6})));
    ASSERT_TRUE(host::setDouble("strip.translateZ", 2.0));
    EXPECT_TRUE(tq::refreshShadowRows());
    EXPECT_EQ(positionRows(), (std::vector<std::vector<MPoint>>{{MPoint(1, 0, 2), MPoint(2, 0, 2)},
                                                                {MPoint(1, 1, 2), MPoint(2, 1, 2)}}));
    EXPECT_TRUE(tq::refreshPlayerLine(tq::getActiveMeshPath()));
    MStatus status;
    EXPECT_EQ(tq::readPlayerPoints(status)[0], MPoint(1, 1, 2));

    // A third row stands alone in the position face, while three index rows remain.
    writeIndexRows({1, 2}, {5, 6}, {3, 7});
    EXPECT_TRUE(tq::refreshShadowRows());
    EXPECT_EQ(positionRows(), (std::vector<std::vector<MPoint>>{{MPoint(3, 0, 2), MPoint(3, 1, 2)}}));
    EXPECT_EQ(indexRows().size(), 3u);
    MIntArray sizes;
    MPointArray last;
    EXPECT_TRUE(tq::lastShadowRow(sizes, last));
    EXPECT_EQ(ints(sizes), (std::vector<int>{2}));
    EXPECT_EQ(last[1], MPoint(3, 1, 2));
}

TEST_F(ShadowRows, StackSlicesClosesEveryRowOrNothing)
{
    writeIndexRows({0, 1, 2, 3}, {4, 5, 6, 7});
    ASSERT_TRUE(tq::writeShadowStrokes(points({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}),
                                       points({{0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}}), MPointArray()));
    MPointArray outer;
    MIntArray outerIndices;
    EXPECT_TRUE(tq::stackSlices(outer, outerIndices));
    EXPECT_EQ(indexRows(), (Rows{{0, 1, 2, 0}, {4, 5, 6, 4}, {}}));
    EXPECT_EQ(positionRows()[1].back(), MPoint(0, 1, 0));
    EXPECT_EQ(ints(outerIndices), (std::vector<int>{4, 5, 6, 7}));
    EXPECT_EQ(outer[3], MPoint(0, 1, 0));

    // A row of two cannot be a loop: nothing is written.
    writeIndexRows({0, 1}, {4, 5, 6, 7});
    EXPECT_EQ(tq::stackSlices(outer, outerIndices), MStatus::kFailure);
    EXPECT_EQ(indexRows(), (Rows{{0, 1}, {4, 5, 6, 7}, {}}));
}

} // namespace
