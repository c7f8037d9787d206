// The shared ring marker as a drawer sees it: which circles, in which colours and widths,
// and where, for pixel and world centres.

#include "kernel/ringMarker.h"

#include "kernelTest.h"

namespace {

using host::DrawRecord;

const MColor kRed(1.0f, 0.0f, 0.0f, 1.0f);
const MColor kGold(1.0f, 0.8f, 0.1f, 1.0f);

// The marker between a red colour set before and a circle drawn after, which shows the state
// the marker leaves behind.
std::vector<DrawRecord> drawMarker(const MPoint& center, const MColor& color, double radius, bool thin)
{
    host::RecordingDrawManager recorder;
    MHWRender::MUIDrawManager& dm = recorder.manager();
    dm.beginDrawable();
    dm.setColor(kRed);
    tq::drawRingMarker(dm, center, color, radius, thin);
    dm.circle2d(MPoint(0, 0), 1.0);
    dm.endDrawable();
    return recorder.records();
}

using RingMarker = kerneltest::ViewTest;

TEST_F(RingMarker, ThickHasDarkRingsAroundTheOutline)
{
    // Off z = 0 the centre is a world point, drawn where the view shows it.
    const std::vector<DrawRecord> drawn = drawMarker(MPoint(-2, -1.5, 1), kGold, 4.0, false);
    ASSERT_EQ(drawn.size(), 5u);
    const MColor nearBlack(0.01f, 0.01f, 0.01f, 0.98f);
    const std::vector<double> radii = {4.0, 0.5, 6.0, 3.0};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(drawn[i].primitive == host::DrawPrimitive::kCircle && drawn[i].is2d);
        EXPECT_DOUBLE_EQ(drawn[i].radius, radii[i]);
        EXPECT_EQ(drawn[i].filled, i == 1);
        EXPECT_EQ(drawn[i].state.color, i < 2 ? kGold : nearBlack);
        EXPECT_FLOAT_EQ(drawn[i].state.lineWidth, i < 2 ? 2.0f : 1.0f);
        EXPECT_EQ(drawn[i].points.at(0), MPoint(300, 250, 0));
    }
    EXPECT_EQ(drawn[4].state.color, kGold) << "the marker's colour is set again at the end";
}

TEST_F(RingMarker, ThinAndBlack)
{
    // A centre on z = 0 is read as pixels; opaque black keeps the colour already set.
    const std::vector<DrawRecord> drawn = drawMarker(MPoint(40, 30, 0), MColor(0.0f, 0.0f, 0.0f, 1.0f), 7.0, true);
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_DOUBLE_EQ(drawn[1].radius, 3.5);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(drawn[i].filled, i == 1);
        EXPECT_EQ(drawn[i].points.at(0), MPoint(40, 30, 0)) << i;
        EXPECT_EQ(drawn[i].state.color, kRed) << i;
        EXPECT_FLOAT_EQ(drawn[i].state.lineWidth, 1.5f) << i;
    }
    const MColor seeThrough(0.0f, 0.0f, 0.0f, 0.5f);
    EXPECT_EQ(drawMarker(MPoint(40, 30, 0), seeThrough, 7.0, true)[0].state.color, seeThrough);
}

} // namespace
