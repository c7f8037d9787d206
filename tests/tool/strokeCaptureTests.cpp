// Strokes drawn with the left button on the scan: every stored point on the surface, clicks
// and misses storing nothing, the lazy tail, glue to the scan's vertices, and the keys that
// take strokes back.

#include "toolTest.h"

#include "store/storePredicates.h"
#include "store/storeWrites.h"

#include <maya/MFnMesh.h>

namespace {

using namespace tooltest;

class StrokeCapture : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    // The stroke a drag stores, taken back with Backspace so the next starts afresh.
    MPointArray strokeOf(const Drag& d)
    {
        EXPECT_TRUE(stroke(d));
        const MPointArray points = storedStrokes();
        EXPECT_TRUE(host::pressKey(host::Key::kBackspace));
        return points;
    }
};

const Drag kAcross{220, 130, 400, 130};

TEST_F(StrokeCapture, ADragStoresOneSurfacePointPerEventAndAClickStoresNothing)
{
    ASSERT_TRUE(stroke(kAcross));
    EXPECT_EQ(storedSizes(), std::vector<int>{kAcross.steps + 1});
    EXPECT_LT(farthestFromScan(storedStrokes()), surfaceTolerance());
    EXPECT_EQ(info1(), "1 stroke(s)");

    EXPECT_TRUE(host::mousePress(300, 300));
    EXPECT_TRUE(host::mouseRelease(300, 300));
    EXPECT_EQ(storedSizes(), std::vector<int>{kAcross.steps + 1});
    EXPECT_EQ(info1(), "1 stroke(s)");

    // Off the scan into the corner of the view and back: the events that miss add nothing,
    // and what is kept is still on the surface.
    ASSERT_TRUE(host::mousePress(300, 130));
    int misses = 0;
    for (int x : {300, 320, 340})
        host::mouseDrag(x, 130);
    for (int x : {5, 6, 7}) {
        host::mouseDrag(x, 5);
        ++misses;
    }
    for (int x : {360, 380})
        host::mouseDrag(x, 130);
    ASSERT_TRUE(host::mouseRelease(380, 130));
    ASSERT_EQ(storedSizes(), (std::vector<int>{kAcross.steps + 1, 8 - misses}));
    EXPECT_LT(farthestFromScan(storedStrokes()), surfaceTolerance());
    EXPECT_EQ(info1(), "2 stroke(s)");
}

TEST_F(StrokeCapture, LazySmoothingLagsTheTailOnceTheStrokeIsAsLongAsIt)
{
    const Drag nine{220, 110, 400, 150, 8};
    const Drag fifteen{220, 110, 400, 150, 14};
    const MPointArray rawNine = strokeOf(nine);
    const MPointArray rawFifteen = strokeOf(fifteen);

    MGlobal::setOptionVarValue("tq_lazyActive", 1);
    MGlobal::setOptionVarValue("tq_lazyDistance", 1); // a tail of 10 points
    MGlobal::setOptionVarValue("tq_lazyStrength", 1);
    EXPECT_TRUE(plugintest::samePoints(strokeOf(nine), rawNine)) << "9 points are shorter than the tail";

    const MPointArray smoothed = strokeOf(fifteen);
    ASSERT_EQ(smoothed.length(), rawFifteen.length());
    EXPECT_TRUE(smoothed[0] == rawFifteen[0]);
    EXPECT_TRUE(smoothed[14] == rawFifteen[14]) << "the newest point never moves";
    int moved = 0;
    for (unsigned i = 1; i < 14; ++i)
        moved += smoothed[i] == rawFifteen[i] ? 0 : 1;
    EXPECT_GT(moved, 5);
    EXPECT_LT(farthestFromScan(smoothed), surfaceTolerance()) << "smoothed points go back onto the scan";

    MGlobal::setOptionVarValue("tq_lazyStrength", 3);
    const MPointArray stronger = strokeOf(fifteen);
    EXPECT_FALSE(plugintest::samePoints(stronger, smoothed));
    MGlobal::removeOptionVar("tq_lazyActive");
    MGlobal::removeOptionVar("tq_lazyDistance");
    MGlobal::removeOptionVar("tq_lazyStrength");
}

TEST_F(StrokeCapture, GlueSnapsEverySampleToAVertexOfTheScan)
{
    MGlobal::setOptionVarValue("tq_glue", 1);
    ASSERT_TRUE(stroke(kAcross));
    const MPointArray points = storedStrokes();
    ASSERT_GT(points.length(), 2u);
    MPointArray vertices;
    MFnMesh(scan).getPoints(vertices, MSpace::kWorld);
    for (unsigned i = 0; i < points.length(); ++i) {
        double nearest = 1e300;
        for (const MPoint& v : vertices)
            nearest = std::min(nearest, v.distanceTo(points[i]));
        EXPECT_LT(nearest, surfaceTolerance()) << "point " << i;
    }
}

TEST_F(StrokeCapture, BackspaceTakesBackTheLastStrokeAndEscDropsTheSession)
{
    ASSERT_TRUE(stroke(kAcross));
    const MPointArray first = storedStrokes();
    ASSERT_TRUE(stroke({220, 90, 400, 90}));
    ASSERT_TRUE(tq::writeShadowStrokes(plugintest::pointArray({{0, 0, 0}, {1, 0, 0}}),
                                       plugintest::pointArray({{0, 1, 0}, {1, 1, 0}}), MPointArray()));

    ASSERT_TRUE(host::pressKey(host::Key::kBackspace));
    EXPECT_EQ(storedSizes(), std::vector<int>{kAcross.steps + 1});
    EXPECT_TRUE(plugintest::samePoints(storedStrokes(), first));
    EXPECT_FALSE(tq::hasShadow()) << "Backspace costs the shadow";

    ASSERT_TRUE(stroke({220, 90, 400, 90}));
    ASSERT_TRUE(host::pressKey(host::Key::kEscape));
    EXPECT_TRUE(storedSizes().empty());
    EXPECT_EQ(info1(), "Operation cancelled");
    EXPECT_EQ(host::nodeNames("mesh").size(), 1u);

    // With nothing left, Backspace clears the lines and harms nothing.
    ASSERT_TRUE(host::pressKey(host::Key::kBackspace));
    EXPECT_TRUE(storedSizes().empty());
    EXPECT_FALSE(loggedError()) << host::logText();
}

} // namespace
