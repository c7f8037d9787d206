// MUIDrawManager's records: every call keeps the state it was made in, brackets reset the
// state, and bad calls are refused or reported rather than drawn.

#include "viewTest.h"

#include <maya/MColorArray.h>
#include <maya/MPointArray.h>
#include <maya/MUintArray.h>

using MHWRender::MUIDrawManager;
using viewtest::ViewTest;

namespace {

MPointArray pointsOf(std::initializer_list<MPoint> points)
{
    MPointArray a;
    for (const MPoint& p : points)
        a.append(p);
    return a;
}

} // namespace

TEST_F(ViewTest, recordsKeepTheStateEachCallWasMadeIn)
{
    host::RecordingDrawManager recorder;
    MUIDrawManager& dm = recorder.manager();
    dm.beginDrawable(MUIDrawManager::kSelectable, 42);
    dm.setColor(MColor(1.6941694f, 0.44f, 0.44f, 2.2002201f));
    dm.setLineWidth(2.5f);
    dm.setLineStyle(MUIDrawManager::kDashed);
    dm.line(MPoint(0, 0, 0), MPoint(1, 2, 3));
    dm.setLineStyle(1, 0xFF00);
    dm.setDepthPriority(990);
    dm.line2d(MPoint(10, 20), MPoint(30, 40));
    dm.setLineStyle(MUIDrawManager::kShortDotted);
    dm.setFontName("Arial");
    dm.setFontSize(36);
    dm.text(MPoint(1, 1, 1), "o", MUIDrawManager::kCenter);
    dm.endDrawable();

    dm.beginDrawInXray();
    dm.setPointSize(4.0f);
    dm.circle2d(MPoint(5, 6), 4.5, true);
    ASSERT_TRUE(dm.points(pointsOf({MPoint(1, 0, 0), MPoint(2, 0, 0)}), false));
    dm.endDrawInXray();

    const auto& r = recorder.records();
    ASSERT_EQ(r.size(), 5u);
    // Colours keep channels above 1 exactly as given.
    EXPECT_EQ(r[0].primitive, host::DrawPrimitive::kLine);
    EXPECT_FALSE(r[0].is2d);
    EXPECT_EQ(r[0].points.size(), 2u);
    EXPECT_EQ(r[0].points[1], MPoint(1, 2, 3));
    EXPECT_EQ(r[0].state.color, MColor(1.6941694f, 0.44f, 0.44f, 2.2002201f));
    EXPECT_FLOAT_EQ(r[0].state.lineWidth, 2.5f);
    EXPECT_EQ(r[0].state.lineStyle, MUIDrawManager::kDashed);
    EXPECT_FALSE(r[0].state.stipple);
    EXPECT_TRUE(r[0].state.inDrawable);
    EXPECT_FALSE(r[0].state.xray);
    EXPECT_EQ(r[0].state.drawable, 0);
    EXPECT_EQ(r[0].state.selectability, MUIDrawManager::kSelectable);
    EXPECT_EQ(r[0].state.selectionName, 42u);
    EXPECT_EQ(r[0].state.depthPriority, 0u);

    EXPECT_TRUE(r[1].is2d);
    EXPECT_TRUE(r[1].state.stipple);
    EXPECT_EQ(r[1].state.stippleFactor, 1u);
    EXPECT_EQ(r[1].state.stipplePattern, 0xFF00);
    EXPECT_EQ(r[1].state.depthPriority, 990u);

    EXPECT_EQ(r[2].primitive, host::DrawPrimitive::kText);
    EXPECT_EQ(r[2].text, "o");
    EXPECT_EQ(r[2].alignment, MUIDrawManager::kCenter);
    EXPECT_EQ(r[2].state.fontName, "Arial");
    EXPECT_EQ(r[2].state.fontSize, 36u);
    EXPECT_FALSE(r[2].state.stipple) << "a named style replaces the pattern";
    EXPECT_EQ(r[2].state.lineStyle, MUIDrawManager::kShortDotted);

    // The x-ray bracket starts from the defaults again.
    EXPECT_EQ(r[3].primitive, host::DrawPrimitive::kCircle);
    EXPECT_TRUE(r[3].is2d);
    EXPECT_TRUE(r[3].filled);
    EXPECT_DOUBLE_EQ(r[3].radius, 4.5);
    EXPECT_TRUE(r[3].state.xray);
    EXPECT_TRUE(r[3].state.inDrawable);
    EXPECT_EQ(r[3].state.drawable, 1);
    EXPECT_EQ(r[3].state.color, host::DrawState().color);
    EXPECT_FLOAT_EQ(r[3].state.lineWidth, 1.0f);
    EXPECT_EQ(r[3].state.fontSize, unsigned(MUIDrawManager::kDefaultFontSize));
    EXPECT_EQ(r[3].state.depthPriority, 0u);
    EXPECT_FLOAT_EQ(r[3].state.pointSize, 4.0f);
    EXPECT_EQ(r[4].primitive, host::DrawPrimitive::kPoints);
    EXPECT_EQ(r[4].points.size(), 2u);
    EXPECT_TRUE(host::logEntries().empty()) << host::logText();
}

TEST_F(ViewTest, meshesAndArraysAreRecordedWhole)
{
    host::RecordingDrawManager recorder;
    MUIDrawManager& dm = recorder.manager();
    dm.beginDrawable();
    MColorArray colours;
    colours.append(MColor(1, 0, 0));
    colours.append(MColor(0, 1, 0));
    colours.append(MColor(0, 0, 1));
    MUintArray indices;
    for (unsigned int i : {0u, 1u, 2u, 2u, 1u, 0u})
        indices.append(i);
    dm.mesh(MUIDrawManager::kTriangles, pointsOf({MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}), nullptr,
            &colours, &indices);
    dm.mesh2d(MUIDrawManager::kTriStrip, pointsOf({MPoint(0, 0), MPoint(10, 0), MPoint(0, 10), MPoint(10, 10)}));
    ASSERT_TRUE(dm.lineList(pointsOf({MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(2, 0, 0)}), false));
    ASSERT_TRUE(dm.lineStrip(pointsOf({MPoint(0, 0), MPoint(5, 5)}), true));
    dm.arc2d(MPoint(50, 50), MVector(1, 0, 0), MVector(0, 1, 0), 16.0);
    dm.rect(MPoint(0, 0, 0), MVector(1, 0, 0), MVector(0, 1, 0), 0.6, 0.3, true);
    dm.endDrawable();

    const auto& r = recorder.records();
    ASSERT_EQ(r.size(), 6u);
    EXPECT_EQ(r[0].meshMode, MUIDrawManager::kTriangles);
    EXPECT_EQ(r[0].indices, (std::vector<unsigned int>{0, 1, 2, 2, 1, 0}));
    ASSERT_EQ(r[0].colors.size(), 3u);
    EXPECT_EQ(r[0].colors[2], MColor(0, 0, 1));
    EXPECT_TRUE(r[1].is2d);
    EXPECT_EQ(r[1].meshMode, MUIDrawManager::kTriStrip);
    EXPECT_EQ(r[1].points.size(), 4u);
    EXPECT_EQ(r[2].points.size(), 3u) << "an odd list is kept as given";
    EXPECT_EQ(r[3].primitive, host::DrawPrimitive::kLineStrip);
    EXPECT_EQ(r[4].arcEnd, MVector(0, 1, 0));
    EXPECT_EQ(r[5].up, MVector(1, 0, 0));
    EXPECT_EQ(r[5].normal, MVector(0, 1, 0));
    EXPECT_DOUBLE_EQ(r[5].scaleX, 0.6);
}

TEST_F(ViewTest, callsThatCannotDrawAreRefusedAndStrayOnesReported)
{
    host::RecordingDrawManager recorder;
    MUIDrawManager& dm = recorder.manager();
    dm.beginDrawable();
    EXPECT_EQ(dm.lineStrip(pointsOf({MPoint(1, 1, 1)}), false).statusCode(), MStatus::kInvalidParameter);
    EXPECT_EQ(dm.points(MPointArray(), true).statusCode(), MStatus::kInvalidParameter);
    EXPECT_TRUE(recorder.records().empty());
    MUintArray bad;
    bad.append(7);
    dm.mesh(MUIDrawManager::kPoints, pointsOf({MPoint(0, 0, 0)}), nullptr, nullptr, &bad);
    EXPECT_TRUE(host::logContains(host::LogLevel::kWarning, "index is past the last"));
    dm.endDrawable();

    // Outside a bracket a call is still recorded, marked so, and reported once.
    host::clearLog();
    dm.line(MPoint(0, 0, 0), MPoint(1, 1, 1));
    dm.circle(MPoint(0, 0, 0), MVector(0, 0, 1), 1.0);
    ASSERT_EQ(recorder.records().size(), 3u);
    EXPECT_FALSE(recorder.records()[1].state.inDrawable);
    EXPECT_EQ(recorder.records()[1].state.drawable, -1);
    EXPECT_EQ(logCount("outside beginDrawable"), 1);
    dm.endDrawInXray();
    EXPECT_TRUE(host::logContains(host::LogLevel::kWarning, "without its matching begin"));

    recorder.clear();
    EXPECT_TRUE(recorder.records().empty());
    dm.beginDrawable();
    dm.point(MPoint(0, 0, 0));
    EXPECT_EQ(recorder.records()[0].state.drawable, 0) << "clearing starts the bracket count again";
}

TEST_F(ViewTest, theToolsFeedbackShowsInTheActiveViewsFrames)
{
    const host::ViewId first = lookFrom(MPoint(0, 0, 10), MPoint::origin, 200, 100);
    MObject other = host::makeCamera(MPoint(10, 0, 0), MPoint::origin);
    const host::ViewId second = host::makeView(50, 50, other);
    host::clearFeedback();
    MUIDrawManager& dm = host::feedbackDrawManager();
    dm.beginDrawable();
    dm.setColor(MColor(0.75f, 0.25f, 0.75f));
    dm.circle2d(MPoint(20, 30), 3.0, true);
    dm.endDrawable();

    host::FrameRecords frame = host::drawFrame();
    EXPECT_EQ(frame.view, first);
    ASSERT_EQ(frame.feedback.size(), 1u);
    EXPECT_EQ(frame.feedback[0].state.color, MColor(0.75f, 0.25f, 0.75f));
    // It stays until cleared, and only the active view shows it.
    EXPECT_EQ(host::drawFrame().feedback.size(), 1u);
    EXPECT_TRUE(host::drawFrame(second).feedback.empty());
    host::clearFeedback();
    EXPECT_TRUE(host::drawFrame().feedback.empty());

    // The context a tool gets describes the active view.
    int x, y, w, h;
    ASSERT_TRUE(host::frameContext().getViewportDimensions(x, y, w, h));
    EXPECT_EQ(w, 200);
    ASSERT_TRUE(host::setActiveView(second));
    ASSERT_TRUE(host::frameContext().getViewportDimensions(x, y, w, h));
    EXPECT_EQ(w, 50);
}
