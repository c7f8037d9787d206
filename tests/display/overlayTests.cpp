// The overlay as a frame of the viewport shows it: what the store holds, drawn in the active
// view only, in the overlay's colours and look.

#include "store/storeAttributes.h"
#include "store/storeWrites.h"

#include "../support/pluginTest.h"

#include <host/viewport.h>

#include <maya/MViewport2Renderer.h>

#include <algorithm>

namespace {

using host::DrawPrimitive;
using host::DrawRecord;
using plugintest::intArray;
using plugintest::pointArray;

class Overlay : public plugintest::PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        MStatus status;
        camera = host::makeCamera(MPoint(0, 0, 20), MPoint(0, 0, 0), 54.43, "overlayCam", &status);
        view = host::makeView(800, 600, camera, &status);
        ASSERT_TRUE(host::setActiveView(view));
        store = makeStore();
        MGlobal::removeOptionVar("tqCutDp");
    }
    void TearDown() override
    {
        MGlobal::removeOptionVar("tqCutDp");
        PluginTest::TearDown();
    }

    std::vector<DrawRecord> frame(host::ViewId which = 0)
    {
        const host::FrameRecords records = host::drawFrame(which);
        const host::OverrideRecords* drawn = records.find("store");
        return drawn ? drawn->records : std::vector<DrawRecord>();
    }

    static std::vector<DrawRecord> only(const std::vector<DrawRecord>& records, DrawPrimitive primitive)
    {
        std::vector<DrawRecord> out;
        std::copy_if(records.begin(), records.end(), std::back_inserter(out),
                     [&](const DrawRecord& r) { return r.primitive == primitive; });
        return out;
    }

    static bool hasText(const std::vector<DrawRecord>& records, const std::string& text)
    {
        return std::any_of(records.begin(), records.end(), [&](const DrawRecord& r) { return r.text == text; });
    }

    MObject camera;
    host::ViewId view = 0;
    MObject store;
};

TEST_F(Overlay, StrokesAreDashedNumberedListsWithTheirEndsMarked)
{
    EXPECT_TRUE(frame().empty()) << "an empty store draws nothing";

    ASSERT_TRUE(tq::appendStroke(pointArray({{0, 0, 0}, {1, 0, 0}, {2, 1, 0}})));
    ASSERT_TRUE(tq::appendStroke(pointArray({{0, 2, 0}, {1, 2, 0}, {1, 3, 0}, {0, 2, 0}})));
    const std::vector<DrawRecord> records = frame();
    const std::vector<DrawRecord> lists = only(records, DrawPrimitive::kLineList);
    ASSERT_EQ(lists.size(), 2u);
    // Three points take four list entries: the last is doubled.
    EXPECT_EQ(lists[0].points.size(), 4u);
    EXPECT_EQ(lists[0].points[3], lists[0].points[2]);
    EXPECT_EQ(lists[1].points.size(), 4u);
    EXPECT_TRUE(hasText(records, "1") && hasText(records, "2"));
    // The closed second stroke (even count) shows "o" and "x" together on its first point.
    EXPECT_TRUE(hasText(records, "o") && hasText(records, "x"));
    for (const DrawRecord& r : lists) {
        EXPECT_GT(r.state.color.r, 1.0f) << "the golden yellow keeps its gain";
        EXPECT_EQ(r.state.depthPriority, 990u);
    }
}

TEST_F(Overlay, ShadowRowsAreGreenAloneAndRedThenBlueAsAPair)
{
    MGlobal::setOptionVarValue("tqCutDp", 0.0);
    ASSERT_TRUE(tq::writeShadowStrokes(pointArray({{0, 0, 0}, {1, 0, 0}}), MPointArray(), pointArray({{0, 1, 0}, {1, 1, 0}})));
    std::vector<DrawRecord> strips = only(frame(), DrawPrimitive::kLineStrip);
    ASSERT_EQ(strips.size(), 1u);
    EXPECT_EQ(strips[0].state.color, MColor(0.1f, 0.9f, 0.1f, 1.0f));
    EXPECT_TRUE(strips[0].state.xray);
    EXPECT_EQ(strips[0].state.depthPriority, 50u);

    ASSERT_TRUE(tq::writeShadowStrokes(pointArray({{0, 0, 0}, {1, 0, 0}}), pointArray({{0, 1, 0}, {1, 1, 0}}), MPointArray()));
    MHWRender::MRenderer::setGeometryDrawDirty(store, true); // only a write of `sizes` asks by itself
    strips = only(frame(), DrawPrimitive::kLineStrip);
    ASSERT_EQ(strips.size(), 2u);
    EXPECT_EQ(strips[0].state.color, MColor(0.9f, 0.1f, 0.1f, 1.0f));
    EXPECT_EQ(strips[1].state.color, MColor(0.1f, 0.1f, 0.9f, 1.0f));
}

TEST_F(Overlay, TheAnchorRowSaysClosedOnlyForAnExactLoop)
{
    ASSERT_TRUE(tq::writePlayerPoints(pointArray({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0.0001}})));
    std::vector<DrawRecord> records = frame();
    EXPECT_FALSE(hasText(records, "Closed"));
    EXPECT_TRUE(hasText(records, "4\""));
    EXPECT_EQ(only(records, DrawPrimitive::kLineStrip).size(), 1u) << "the anchor row's line";

    ASSERT_TRUE(tq::writePlayerPoints(pointArray({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}})));
    MHWRender::MRenderer::setGeometryDrawDirty(store, true); // only a write of `sizes` asks by itself
    records = frame();
    EXPECT_TRUE(hasText(records, "Closed"));
    EXPECT_EQ(only(records, DrawPrimitive::kMesh).size(), 1u) << "the loop's direction arrow";
}

TEST_F(Overlay, ShowsInTheActiveViewOnly)
{
    ASSERT_TRUE(tq::appendStroke(pointArray({{0, 0, 0}, {1, 0, 0}})));
    MStatus status;
    MObject other = host::makeCamera(MPoint(20, 0, 0), MPoint(0, 0, 0), 54.43, "sideCam", &status);
    const host::ViewId side = host::makeView(400, 300, other, &status);
    EXPECT_TRUE(frame(side).empty());
    EXPECT_FALSE(frame(view).empty());
}

TEST_F(Overlay, FreezeMarksBrushSizesAndTheMoveCircleShowWhatTheBrushesWillDo)
{
    ASSERT_TRUE(tq::writePointArrayAttr(pointArray({{0, 0, 0}, {1, 0, 0}}), "freepoints", store));
    ASSERT_TRUE(tq::writePointArrayAttr(pointArray({{0, 1, 0}}), "freezeMedian", store));
    std::vector<DrawRecord> circles = only(frame(), DrawPrimitive::kCircle);
    // Each frozen vertex is a filled dot with a black rim: blue on the border, slate on the median.
    ASSERT_EQ(circles.size(), 6u);
    EXPECT_TRUE(circles[0].is2d && circles[0].filled && circles[0].radius == 4.5);
    EXPECT_EQ(circles[0].state.color, MColor(0.1f, 0.1f, 0.8f, 1.0f));
    EXPECT_FALSE(circles[1].filled);
    EXPECT_EQ(circles[4].radius, 5.0);
    ASSERT_TRUE(tq::writePointArrayAttr(MPointArray(), "freepoints", store));
    ASSERT_TRUE(tq::writePointArrayAttr(MPointArray(), "freezeMedian", store));

    // Holding the move-radius key: the brush's size around the last hit, in deep red.
    ASSERT_TRUE(tq::writeTripleAttr(MPoint(1, 2, 3), "interPoint", store));
    ASSERT_TRUE(tq::writeDoubleAttr(40.0, "radiusMoveInteractive", store));
    ASSERT_TRUE(tq::writeIntAttr(4, "displayInfo", store));
    circles = only(frame(), DrawPrimitive::kCircle);
    ASSERT_GE(circles.size(), 2u);
    EXPECT_EQ(circles[0].points[0], MPoint(1, 2, 3));
    EXPECT_NEAR(circles[0].radius, 40.0 * 0.03, 1e-12);
    EXPECT_NEAR(circles[1].radius, 40.0 * 0.03 * 0.8, 1e-12);
    EXPECT_TRUE(circles[1].filled);
    ASSERT_TRUE(tq::writeIntAttr(1, "displayInfo", store));

    // During a move stroke: the circle on the mesh, the option's radius times 0.03.
    MGlobal::setOptionVarValue("tq_sarnTweakR", 20);
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({20, 100, 100}), "tweakRadius", store));
    circles = only(frame(), DrawPrimitive::kCircle);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_NEAR(circles[0].radius, 0.6, 1e-12);
    EXPECT_EQ(circles[0].state.depthPriority, 9999u);
    MGlobal::removeOptionVar("tq_sarnTweakR");
}

} // namespace
