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
std::vector<DrawRecord> drawMarker(const MPoint& center, const MColor& color, bool thin)
{
    host::RecordingDrawManager recorder;
    MHWRender::MUIDrawManager& dm = recorder.manager();
    dm.beginDrawable();
    dm.setColor(kRed);
    tq::drawRingMarker(dm, center, color, 4.0, thin);
    dm.circle2d(MPoint(0, 0), 1.0);
    dm.endDrawable();
    return recorder.records();
}

using RingMarker = kerneltest::ViewTest;

TEST_F(RingMarker, OutlineAndCoreWithDarkRingsUnlessThin)
{
    // Off z = 0 the centre is a world point, drawn where the view shows it; the thick marker
    // has dark rings either side of the outline.
    const std::vector<DrawRecord> thick = drawMarker(MPoint(-2, -1.5, 1), kGold, false);
    ASSERT_EQ(thick.size(), 5u);
    const std::vector<double> radii = {4.0, 0.5, 6.0, 3.0};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(thick[i].primitive == host::DrawPrimitive::kCircle && thick[i].is2d);
        EXPECT_DOUBLE_EQ(thick[i].radius, radii[i]);
        EXPECT_EQ(thick[i].filled, i == 1);
        EXPECT_EQ(thick[i].state.color, i < 2 ? kGold : MColor(0.01f, 0.01f, 0.01f, 0.98f));
        EXPECT_EQ(thick[i].points.at(0), MPoint(300, 250, 0));
    }
    EXPECT_EQ(thick[4].state.color, kGold) << "the marker's colour is set again at the end";

    // A centre on z = 0 is read as pixels; opaque black keeps the colour already set.
    const std::vector<DrawRecord> thin = drawMarker(MPoint(40, 30, 0), MColor(0.0f, 0.0f, 0.0f, 1.0f), true);
    ASSERT_EQ(thin.size(), 3u);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(thin[i].points.at(0), MPoint(40, 30, 0)) << i;
        EXPECT_EQ(thin[i].state.color, kRed) << i;
    }
    const MColor seeThrough(0.0f, 0.0f, 0.0f, 0.5f);
    EXPECT_EQ(drawMarker(MPoint(40, 30, 0), seeThrough, true)[0].state.color, seeThrough);
}

} // namespace
