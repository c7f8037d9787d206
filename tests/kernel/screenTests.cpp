// World points and pixels of the active view: the conversions, the pixel distance with its
// 16-bit wrap, the camera's eye, the samplers built on them, and life without a view.

#include "kernel/screen.h"
#include "kernel/segmentSampling.h"

#include "kernelTest.h"

#include <cmath>
#include <string>

namespace {

using namespace kerneltest;

std::string pixelsOf(const MPointArray& samples)
{
    std::string out;
    for (const MPoint& p : samples) {
        const MPoint v = tq::worldToViewPoint(p);
        out += "(" + std::to_string(int(v.x)) + "," + std::to_string(int(v.y)) + ")";
    }
    return out;
}

using Screen = ViewTest;

TEST_F(Screen, ConversionsAndTheCameraEye)
{
    EXPECT_EQ(tq::worldToViewPoint(MPoint(-2, -1.5, 7)), MPoint(300, 250, 0, 1));
    // Pixels are truncated on the way back; the near point lies towards the camera.
    const MPoint world = tq::viewToWorldPoint(MPoint(300.9, 250.7));
    EXPECT_NEAR(world.x, -2.0, 1e-9);
    EXPECT_NEAR(world.y, -1.5, 1e-9);
    EXPECT_GT(world.z, 0.0);

    ASSERT_TRUE(host::setActiveView(host::makeView(640, 480, host::makeCamera(MPoint(3, 4, 5), MPoint(0, 0, 0)))));
    EXPECT_LT(MPoint(tq::cameraEyePoint()).distanceTo(MPoint(3, 4, 5)), 1e-5);

    host::newScene(); // no view: everything at the origin
    EXPECT_EQ(tq::worldToViewPoint(MPoint(1, 2, 3)), MPoint(0, 0, 0, 1));
    EXPECT_EQ(tq::viewToWorldPoint(MPoint(10, 10)), MPoint(0, 0, 0, 1));
    EXPECT_EQ(MPoint(tq::cameraEyePoint()), MPoint(0, 0, 0, 1));
    EXPECT_EQ(tq::pixelDistance(MPoint(0, 0, 0), MPoint(100, 0, 0)), 0);
}

TEST_F(Screen, PixelDistanceTruncatesAndWrapsAt16Bits)
{
    EXPECT_EQ(tq::pixelDistance(atPixel(100, 100), atPixel(110, 110)), 14) << "14.14 pixels";
    EXPECT_EQ(tq::pixelDistance(MPoint(0, 0, 3), MPoint(0.5, 0, -3)), 50) << "depth is not seen";
    const MPoint left = atPixel(-16000, 400);
    EXPECT_EQ(tq::pixelDistance(left, atPixel(16767, 400)), 32767);
    EXPECT_EQ(tq::pixelDistance(left, atPixel(16768, 400)), 32768 - 65536);
}

TEST_F(Screen, PixelSamplingFollowsTheZoom)
{
    const MPoint a = atPixel(100, 100), b = atPixel(195, 100);
    const MPointArray samples = tq::sampleSegmentByPixels(a, b, 10);
    ASSERT_EQ(samples.length(), 9u) << "95 pixels in steps of 10";
    EXPECT_EQ(samples[0], a);
    EXPECT_NEAR(samples[8].x, a.x + (b.x - a.x) * 8 / 9.0, 1e-12);

    EXPECT_EQ(tq::sampleSegmentByPixels(a, atPixel(109, 100), 10).length(), 0u) << "below one step, not even a";
    EXPECT_EQ(tq::sampleSegmentByPixels(atPixel(-16000, 400), atPixel(24000, 400), 10).length(), 0u) << "wrapped";

    ASSERT_TRUE(host::setViewCamera(view, host::makeOrthoCamera(MPoint(0, 0, 10), MPoint(0, 0, 0), 20.0)));
    EXPECT_EQ(tq::sampleSegmentByPixels(a, b, 10).length(), 4u) << "zoomed out: 47 pixels";
}

TEST_F(Screen, MultispitWalksThePerimeterAndClosesOnItsStart)
{
    const MPoint a = atPixel(100, 100);
    const MPointArray ring = tq::multispit(a, atPixel(200, 100), atPixel(200, 200), atPixel(100, 200), 10);
    ASSERT_EQ(ring.length(), 41u);
    EXPECT_EQ(ring[40], a);
    for (unsigned int i = 0; i + 1 < ring.length(); ++i)
        EXPECT_EQ(tq::pixelDistance(ring[i], ring[i + 1]), 10) << "after point " << i;

    EXPECT_EQ(pixelsOf(tq::multispit(a, atPixel(105, 100), atPixel(105, 105), atPixel(100, 105), 10)), "(100,100)");
    // Short sides lose their own corners: a (but for the closing copy) and (105, 150).
    EXPECT_EQ(pixelsOf(tq::multispit(a, atPixel(105, 100), atPixel(105, 150), atPixel(100, 150), 10)),
              "(105,100)(105,110)(105,120)(105,130)(105,140)(100,150)(100,140)(100,130)(100,120)(100,110)(100,100)");
}

TEST(SegmentSampling, ByDensityLeavesTheEndOut)
{
    const MPointArray line = tq::sampleSegmentByDensity(points({{0, 0, 0}, {0, 1.05, 0}}), 10);
    ASSERT_EQ(line.length(), 10u);
    EXPECT_NEAR(line[9].y, 0.945, 1e-12);
    EXPECT_EQ(tq::sampleSegmentByDensity(points({{0, 0, 0}, {0.09, 0, 0}}), 10).length(), 0u);
    // Anything but two distinct points comes back as it is.
    EXPECT_EQ(tq::sampleSegmentByDensity(points({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}), 10).length(), 3u);
}

} // namespace
