// Strokes with a shape and the slicing stroke, drawn as a user draws them: a Shift-left drag
// across the trunk cuts a closed loop round it, two loops and Enter make a closed band; the
// rectangle and circle figures are closed on the scan; a closed figure drawn from an anchor
// row is laid on the row, and Shift turns it round.

#include "toolTest.h"

#include "kernel/strokeWalk.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

#include <maya/M3dView.h>
#include <maya/MFnMesh.h>
#include <maya/MItDag.h>

#include <cmath>

namespace {

using namespace tooltest;

// Across the raised trunk, near its tip, where nothing lies behind it in the test's view.
constexpr Drag kTrunkHigh{360, 445, 470, 445, 30};
constexpr Drag kTrunkLow{360, 425, 470, 425, 30};

class ShapedStrokes : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 8);
        MGlobal::setOptionVarValue("tq_vspan", 2);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    void setFigure(int mode)
    {
        ASSERT_TRUE(host::runCommand("tqSarnContext -e -figure " + std::to_string(mode) + " " + contextName).status);
    }

    static tq::RowList strokes()
    {
        MStatus status;
        return tq::readStrokeRows(status);
    }

    static MPoint pixelOf(const MPoint& p)
    {
        short x = 0;
        short y = 0;
        M3dView::active3dView().worldToView(p, x, y);
        return MPoint(x, y);
    }

    // The turn of `points` round the pixel `centre` in the view, in radians, counter-clockwise
    // positive.
    static double turnAround(const MPointArray& points, const MPoint& centre)
    {
        double turn = 0.0;
        for (unsigned int i = 1; i < points.length(); ++i) {
            const MVector a = pixelOf(points[i - 1]) - centre;
            const MVector b = pixelOf(points[i]) - centre;
            turn += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
        }
        return turn;
    }
};

TEST_F(ShapedStrokes, ASlicingStrokeCutsAClosedLoopRoundTheTrunkAndTwoMakeAClosedBandAtEnter)
{
    ASSERT_TRUE(stroke(kTrunkHigh, {true, false}));
    tq::RowList stored = strokes();
    ASSERT_EQ(stored.size(), 1u) << host::logText();
    const MPointArray loop = stored[0];
    ASSERT_GT(loop.length(), 60u);
    EXPECT_TRUE(loop[0] == loop[loop.length() - 1]) << "the loop closes on its first point";
    EXPECT_LT(farthestFromScan(loop), surfaceTolerance());
    // Round the trunk: the loop reaches behind it about as far as it spans across the view.
    MBoundingBox extent;
    for (const MPoint& p : loop)
        extent.expand(p);
    EXPECT_GT(extent.depth(), 0.5 * extent.width());
    EXPECT_LT(extent.height(), 0.5 * extent.width()) << "a cut across the trunk, not along it";

    ASSERT_TRUE(stroke(kTrunkLow, {true, false}));
    ASSERT_EQ(strokes().size(), 2u);
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_FALSE(loggedError()) << host::logText();
    const std::vector<MDagPath> made = retopoMeshes();
    ASSERT_EQ(made.size(), 1u);
    MFnMesh band(made[0]);
    // A closed band: its seam shares the vertices, 8 quads round and 2 across.
    EXPECT_EQ(band.numPolygons(), 8 * 2);
    EXPECT_EQ(band.numVertices(), 8 * 3);
    MPointArray vertices;
    band.getPoints(vertices, MSpace::kWorld);
    EXPECT_LT(farthestFromScan(vertices), 1e-3 * box.width());
    EXPECT_EQ(host::journalLines().back(), "tqSarn_scratch");
    host::undo();
    EXPECT_TRUE(retopoMeshes().empty());
}

TEST_F(ShapedStrokes, ASlicingStrokeOffTheModelStoresNothing)
{
    ASSERT_TRUE(stroke({20, 400, 140, 400}, {true, false}));
    EXPECT_TRUE(strokes().empty());
    EXPECT_FALSE(loggedError()) << host::logText();
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_TRUE(retopoMeshes().empty());
}

TEST_F(ShapedStrokes, RectangleAndCircleFiguresAreClosedOnTheScan)
{
    // A rectangle 75 by 55 pixels: a point every 10 pixels of each side, and the closing one.
    ASSERT_NO_FATAL_FAILURE(setFigure(2));
    ASSERT_TRUE(stroke({230, 120, 305, 175}));
    ASSERT_EQ(strokes().size(), 1u);
    const MPointArray rectangle = strokes()[0];
    EXPECT_EQ(rectangle.length(), 7u + 5u + 7u + 5u + 1u);
    EXPECT_TRUE(rectangle[0] == rectangle[rectangle.length() - 1]);
    EXPECT_LT(farthestFromScan(rectangle), surfaceTolerance());

    // A circle of 45 pixels: a point every 20 degrees (fewer for larger circles), and the
    // closing one.
    ASSERT_NO_FATAL_FAILURE(setFigure(3));
    ASSERT_TRUE(stroke({260, 150, 305, 150}));
    ASSERT_EQ(strokes().size(), 2u);
    const MPointArray circle = strokes()[1];
    EXPECT_EQ(circle.length(), 18u + 1u);
    EXPECT_TRUE(circle[0] == circle[circle.length() - 1]);
    EXPECT_LT(farthestFromScan(circle), surfaceTolerance());
    EXPECT_NEAR(std::fabs(turnAround(circle, MPoint(260, 150))), 2.0 * M_PI, 1e-6) << "once round the press";
}

TEST_F(ShapedStrokes, AClosedFigureFromAnAnchorRowIsLaidOnTheRowAndShiftTurnsItRound)
{
    MGlobal::setOptionVarValue("tq_uspan", 6);
    ASSERT_TRUE(stroke({220, 150, 340, 150}));
    ASSERT_TRUE(stroke({220, 115, 340, 115}));
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    ASSERT_EQ(retopoMeshes().size(), 1u);
    MFnMesh sarn(retopoMeshes()[0]);
    ASSERT_EQ(sarn.numPolygons(), 6 * 2);
    MIntArray row1, row2, row3;
    ASSERT_TRUE(tq::readShadowIndices(row1, row2, row3));
    ASSERT_EQ(row2.length(), 7u);
    ASSERT_TRUE(tq::writePlayerVertices(row2));
    ASSERT_TRUE(tq::writePlayersFromVertices(row2));
    MStatus status;
    const double rowLength = tq::strokeLength(tq::readPlayerPoints(status));

    // A circle round (280, 60) through (320, 60), below the row.
    ASSERT_NO_FATAL_FAILURE(setFigure(3));
    const Drag circle{280, 60, 320, 60, 10};
    auto newRow = [&](host::Modifiers held) {
        EXPECT_TRUE(stroke(circle, held));
        EXPECT_EQ(info1(), "Sarn Patch created");
        EXPECT_EQ(sarn.numPolygons(), 6 * 2 + 6 * 2);
        MStatus readStatus;
        return tq::readPlayerPoints(readStatus);
    };
    const MPointArray drawn = newRow({});
    ASSERT_EQ(drawn.length(), 7u) << "the row's count of points";
    EXPECT_LT(farthestFromScan(drawn), 1e-3 * box.width());
    // From the cursor along the circle for about the row's length, not round the whole circle.
    const MPoint cursor(320, 60);
    EXPECT_LT(pixelOf(drawn[0]).distanceTo(cursor), 20.0);
    EXPECT_NEAR(tq::strokeLength(drawn), rowLength, 0.35 * rowLength);
    host::undo();
    ASSERT_EQ(sarn.numPolygons(), 6 * 2);

    const MPointArray reversed = newRow({true, false});
    ASSERT_EQ(reversed.length(), 7u);
    const MPoint centre(280, 60);
    const double turn = turnAround(drawn, centre);
    const double turnReversed = turnAround(reversed, centre);
    EXPECT_GT(std::fabs(turn), 0.5);
    EXPECT_LT(turn * turnReversed, 0.0) << "Shift lays the figure the other way round";
}

} // namespace
