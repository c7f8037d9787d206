// What the tool draws itself while the left button is held, as the viewport's frames show it:
// the stroke in a colour that brightens with its length, a dot at its start, three arcs
// spinning around the pointer, the preview of the band a redraw would make, and the glue
// marker under a hovering pointer.

#include "toolTest.h"

#include <host/viewport.h>

#include <cmath>
#include <cstdio>

namespace {

using namespace tooltest;
using host::DrawPrimitive;
using host::DrawRecord;

constexpr host::Modifiers kCtrl{false, true};

class StrokeFeedback : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 4);
        MGlobal::setOptionVarValue("tq_vspan", 4);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    // Press at (x0, y) and drag to the right, `events` drag events 8 pixels apart; the button
    // stays down.
    static void dragRight(int x0, int y, int events, host::Modifiers held = {})
    {
        ASSERT_TRUE(host::mousePress(x0, y, host::MouseButton::kLeft, held));
        for (int i = 1; i <= events; ++i)
            ASSERT_TRUE(host::mouseDrag(x0 + 8 * i, y, held)) << host::logText();
    }

    static std::vector<DrawRecord> feedback() { return host::drawFrame().feedback; }

    static std::vector<DrawRecord> only(const std::vector<DrawRecord>& records, DrawPrimitive primitive)
    {
        std::vector<DrawRecord> out;
        for (const DrawRecord& r : records)
            if (r.primitive == primitive)
                out.push_back(r);
        return out;
    }

    static double endAngle(const DrawRecord& arc) { return std::atan2(arc.arcEnd.y, arc.arcEnd.x); }
};

TEST_F(StrokeFeedback, ADragDrawsItsStrokeStartAndASpinningMarkerInOrder)
{
    ASSERT_NO_FATAL_FAILURE(dragRight(230, 130, 8));
    const std::vector<DrawRecord> first = feedback();
    ASSERT_FALSE(first.empty());
    EXPECT_TRUE(only(first, DrawPrimitive::kMesh).empty()) << "no preview without anchors or a redraw";

    // The hint text, then the stroke's drawable: the start dot, three arcs, the stroke.
    ASSERT_EQ(first[0].primitive, DrawPrimitive::kText);
    EXPECT_EQ(first[0].points[0], MPoint(300, 5, 0));
    EXPECT_EQ(first[0].state.color, MColor(0.8800880f, 0.8800880f, 0.2200220f, 2.2002201f));
    const std::vector<DrawRecord> strokes = only(first, DrawPrimitive::kLineStrip);
    ASSERT_EQ(strokes.size(), 1u);
    const DrawRecord& strokeLine = strokes[0];
    EXPECT_GT(strokeLine.state.drawable, first[0].state.drawable);
    EXPECT_FALSE(strokeLine.is2d);
    EXPECT_EQ(strokeLine.state.lineWidth, 2.5f);
    MPointArray points;
    for (const MPoint& p : strokeLine.points)
        points.append(p);
    EXPECT_LT(farthestFromScan(points), surfaceTolerance()) << "the stroke drawn is on the scan";

    const std::vector<DrawRecord> arcs = only(first, DrawPrimitive::kArc);
    ASSERT_EQ(arcs.size(), 3u);
    const double radii[] = {16.0, 13.0, 10.0};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(arcs[i].radius, radii[i]);
        EXPECT_TRUE(arcs[i].is2d);
        EXPECT_NEAR(arcs[i].points[0].x, 230 + 8 * 8, 1.0) << "around the pointer";
        EXPECT_NEAR(arcs[i].points[0].y, 130, 1.0);
        EXPECT_EQ(arcs[i].state.drawable, strokeLine.state.drawable);
    }
    EXPECT_TRUE(arcs[2].filled);
    const std::vector<DrawRecord> dots = only(first, DrawPrimitive::kCircle);
    ASSERT_EQ(dots.size(), 1u);
    EXPECT_TRUE(dots[0].filled && dots[0].radius == 3.0);
    EXPECT_NEAR(dots[0].points[0].x, 230 + 8, 1.0) << "at the stroke's start";

    // One more event: the outer arcs turn against each other, and the longer stroke is brighter.
    ASSERT_TRUE(host::mouseDrag(230 + 8 * 9, 130));
    const std::vector<DrawRecord> next = feedback();
    const std::vector<DrawRecord> nextArcs = only(next, DrawPrimitive::kArc);
    ASSERT_EQ(nextArcs.size(), 3u);
    EXPECT_NEAR(std::remainder(endAngle(nextArcs[0]) - endAngle(arcs[0]), 2 * M_PI), -0.12, 1e-9);
    EXPECT_NEAR(std::remainder(endAngle(nextArcs[1]) - endAngle(arcs[1]), 2 * M_PI), 0.12, 1e-9);
    const DrawRecord longer = only(next, DrawPrimitive::kLineStrip).at(0);
    EXPECT_GT(longer.points.size(), strokeLine.points.size());
    EXPECT_GT(longer.state.color.r, strokeLine.state.color.r);
    ASSERT_TRUE(host::mouseRelease(230 + 8 * 9, 130));
    EXPECT_TRUE(feedback().empty()) << "the release draws no feedback";
}

TEST_F(StrokeFeedback, ARedrawStrokePreviewsTheBandBeforeTheStrokeInRed)
{
    ASSERT_TRUE(stroke({230, 175, 390, 175}));
    ASSERT_TRUE(stroke({230, 150, 390, 150}));
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    ASSERT_TRUE(tq::getActiveMeshPath().isValid()) << host::logText();

    ASSERT_NO_FATAL_FAILURE(dragRight(230, 120, 12, kCtrl));
    const std::vector<DrawRecord> records = feedback();
    const std::vector<DrawRecord> bands = only(records, DrawPrimitive::kMesh);
    ASSERT_EQ(bands.size(), 1u) << "the band between the last shadow row and the stroke";
    const DrawRecord& band = bands[0];
    EXPECT_EQ(band.meshMode, MHWRender::MUIDrawManager::kTriangles);
    EXPECT_FALSE(band.points.empty());
    EXPECT_EQ(band.points.size() % 3, 0u);
    EXPECT_GT(band.state.color.r, band.state.color.b) << "a redraw previews in red";
    EXPECT_LE(band.state.color.a, 0.7f);
    const DrawRecord strokeLine = only(records, DrawPrimitive::kLineStrip).at(0);
    EXPECT_LT(band.state.drawable, strokeLine.state.drawable) << "the preview first, the stroke over it";
    EXPECT_EQ(strokeLine.state.lineWidth, 3.0f);
    EXPECT_GT(strokeLine.state.color.r, strokeLine.state.color.g) << "a redraw stroke is red";

    // A frame of the view shows the feedback over the scan, with the overlay's text panels.
    const std::string png = ::testing::TempDir() + "strokeFeedback.png";
    host::RenderStats stats;
    ASSERT_TRUE(host::renderFrame(png, host::RenderOptions(), &stats)) << host::logText();
    EXPECT_EQ(stats.frame.feedback.size(), records.size());
    EXPECT_GE(stats.records, records.size());
    const host::OverrideRecords* overlay = stats.frame.find("store");
    ASSERT_NE(overlay, nullptr);
    EXPECT_FALSE(only(overlay->records, DrawPrimitive::kText).empty());
    std::remove(png.c_str());
    ASSERT_TRUE(host::mouseRelease(230 + 8 * 12, 120, kCtrl));
}

TEST_F(StrokeFeedback, AHoveringPointerInGlueModeMarksTheVertexItWouldGlueTo)
{
    ASSERT_TRUE(host::pointerMove(320, 240));
    EXPECT_TRUE(only(feedback(), DrawPrimitive::kCircle).empty()) << "no marker without glue";

    MGlobal::setOptionVarValue("tq_glue", 1);
    ASSERT_TRUE(host::pointerMove(321, 240));
    const std::vector<DrawRecord> marks = only(feedback(), DrawPrimitive::kCircle);
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_TRUE(marks[0].filled && marks[0].is2d);
    EXPECT_EQ(marks[0].state.color, MColor(0.9f, 0.9f, 0.9f, 1.0f));
    EXPECT_FALSE(marks[1].filled);
    EXPECT_EQ(marks[1].state.color, MColor(0.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_NEAR(marks[0].points[0].x, 321, 15.0) << "on a vertex of the face under the pointer";
}

} // namespace
