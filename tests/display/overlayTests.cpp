// The overlay as a frame of the viewport shows it: what the store holds, drawn in the active
// view only, in the overlay's colours and look.

#include "store/infoLines.h"
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

    // A frame after a write the store does not announce by itself.
    std::vector<DrawRecord> redrawn()
    {
        MHWRender::MRenderer::setGeometryDrawDirty(store, true);
        return frame();
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
    EXPECT_TRUE(only(frame(), DrawPrimitive::kLineList).empty()) << "an empty store draws no stroke";

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
    EXPECT_TRUE(frame(side).empty()) << "not even the text panels";
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

TEST_F(Overlay, TheTextPanelsStartANewLineAtEachComma)
{
    auto texts = [this] { return only(redrawn(), DrawPrimitive::kText); };
    // Nothing said yet: the placeholders, line 2 at the top and line 1 at the bottom.
    std::vector<DrawRecord> lines = texts();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].text, "... 2");
    EXPECT_EQ(lines[0].points[0], MPoint(10, 600 - 20, 0));
    EXPECT_EQ(lines[1].text, "... 1");
    EXPECT_EQ(lines[1].points[0], MPoint(10, 55, 0));
    for (const DrawRecord& r : lines) {
        EXPECT_TRUE(r.is2d && r.state.xray);
        EXPECT_NEAR(r.state.color.r, 1.10011f, 1e-5) << "mid grey, a quarter opaque";
        EXPECT_NEAR(r.state.color.b, 1.18812f, 1e-5);
        EXPECT_EQ(r.state.color.a, 0.25f);
        EXPECT_EQ(r.state.fontName, "Arial");
        EXPECT_EQ(r.state.fontSize, 9u);
        EXPECT_EQ(r.state.depthPriority, 990u);
    }

    // The upper panel grows down, the lower one up; a message without a comma is one line.
    tq::setInfo2("Relax brush,Intensity: 0.5,");
    tq::setInfo1("Sarn created");
    lines = texts();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].text, "Relax brush");
    EXPECT_EQ(lines[1].text, "Intensity: 0.5");
    EXPECT_EQ(lines[1].points[0], MPoint(10, 600 - 20 - 16, 0));
    EXPECT_EQ(lines[2].text, "Sarn created");
    EXPECT_EQ(lines[2].points[0], MPoint(10, 55, 0));
    EXPECT_EQ(frame().back().primitive, DrawPrimitive::kText) << "the panels close the overlay";

    // Switched off, both panels are empty.
    ASSERT_TRUE(tq::writeIntAttr(0, "displayInfo", store));
    EXPECT_TRUE(texts().empty());
}

TEST_F(Overlay, NormalSpikesAndTheSymmetryPlaneShowWhenAsked)
{
    // A quad as the last patch of the selected retopo mesh, and a source box 2 x 4 x 6.
    makeMesh("retopo", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {4}, {0, 1, 2, 3});
    ASSERT_TRUE(host::select({"retopo"}));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({0}), "newFaces", store));
    makeMesh("source", {{-1, -2, -3}, {1, -2, -3}, {1, 2, 3}, {-1, 2, 3}}, {4}, {0, 1, 2, 3});
    ASSERT_TRUE(host::connect("sourceShape.outMesh", "store.tqSarnMesh"));

    ASSERT_TRUE(tq::writeDoubleAttr(0.01, "displaySize", store));
    EXPECT_TRUE(only(redrawn(), DrawPrimitive::kLineList).empty()) << "0.01 is too small for spikes";

    ASSERT_TRUE(tq::writeDoubleAttr(0.5, "displaySize", store));
    std::vector<DrawRecord> records = redrawn();
    const std::vector<DrawRecord> spikes = only(records, DrawPrimitive::kLineList);
    ASSERT_EQ(spikes.size(), 1u);
    ASSERT_EQ(spikes[0].points.size(), 16u) << "two spikes for each of the quad's four vertices";
    for (std::size_t i = 0; i < 16; i += 2) {
        EXPECT_NEAR(spikes[0].points[i].distanceTo(spikes[0].points[i + 1]), 0.5, 1e-6);
        EXPECT_NEAR(std::abs(spikes[0].points[i + 1].z), 0.5, 1e-6) << "along the quad's normal";
    }
    EXPECT_EQ(spikes[0].state.lineStyle, MHWRender::MUIDrawManager::kShortDashed);
    EXPECT_EQ(only(records, DrawPrimitive::kCircle).size(), 8u) << "a dot on each tip";
    EXPECT_TRUE(only(records, DrawPrimitive::kRect).empty()) << "no symmetry plane while symmetry is off";

    ASSERT_TRUE(tq::writeDoubleAttr(0.0, "displaySize", store));
    ASSERT_TRUE(tq::writeIntAttr(1, "symmetry", store));
    records = redrawn();
    const std::vector<DrawRecord> sheets = only(records, DrawPrimitive::kRect);
    ASSERT_EQ(sheets.size(), 1u);
    EXPECT_EQ(sheets[0].points[0], MPoint(0, 0, 0)) << "at the centre of the source's box";
    EXPECT_NEAR(sheets[0].scaleX, 6 * 0.6, 1e-9);
    EXPECT_NEAR(sheets[0].scaleY, 4 * 0.6, 1e-9);
    const std::vector<DrawRecord> guides = only(records, DrawPrimitive::kLine);
    ASSERT_EQ(guides.size(), 2u);
    for (const DrawRecord& line : guides)
        EXPECT_TRUE(line.points[0].x == 0.0 && line.points[1].x == 0.0) << "both on the plane x = centre";
    EXPECT_TRUE(guides[0].points[0].isEquivalent(MPoint(0, -1.2, -3.6)));
    EXPECT_TRUE(guides[1].points[1].isEquivalent(MPoint(0, 2.4, 1.8)));
}

} // namespace
