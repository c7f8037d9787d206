// Rendered frames: the PNG shows the records where the view puts them, and the meshes under
// them, with depth deciding what hides what unless x-ray says otherwise.

#include "viewTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <QColor>
#include <QImage>

#include <filesystem>

using viewtest::ViewTest;

namespace {

class RenderTest : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        fPng = (std::filesystem::path(::testing::TempDir()) /
                (std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png"))
                   .string();
    }
    void TearDown() override
    {
        std::error_code ec;
        std::filesystem::remove(fPng, ec);
        ViewTest::TearDown();
    }

    QImage render(const host::RenderOptions& options = host::RenderOptions(), host::RenderStats* stats = nullptr)
    {
        MStatus status = host::renderFrame(fPng, options, stats);
        EXPECT_TRUE(status) << host::logText();
        QImage image(QString::fromStdString(fPng));
        EXPECT_FALSE(image.isNull()) << fPng;
        return image;
    }

    // The image pixel of a view pixel (origin bottom left).
    static QColor at(const QImage& image, int x, int y) { return image.pixelColor(x, image.height() - 1 - y); }

    static bool red(const QColor& c) { return c.red() > 200 && c.green() < 70 && c.blue() < 70; }
    static bool yellow(const QColor& c) { return c.red() > 170 && c.green() > 170 && c.blue() < 110; }
    // The shaded surface is a neutral grey; the background is bluish.
    static bool surface(const QColor& c) { return std::abs(c.red() - c.green()) <= 3 && c.red() > 90; }

    static std::string describe(const QColor& c)
    {
        return "rgb(" + std::to_string(c.red()) + ", " + std::to_string(c.green()) + ", " +
               std::to_string(c.blue()) + ")";
    }

    std::string fPng;
};

} // namespace

TEST_F(RenderTest, aLineIsRedExactlyWhereTheViewPutsIt)
{
    lookFrom(MPoint(0.3, 0.2, 10), MPoint(0, 0, 0), 320, 240, 40.0);
    locator("lineLoc");
    setPoint("lineLoc.lineStart", MPoint(-2, -0.5, 0));
    setPoint("lineLoc.lineEnd", MPoint(2, 0.8, 0));

    host::RenderStats stats;
    const QImage image = render(host::RenderOptions(), &stats);
    ASSERT_EQ(image.width(), 320);
    ASSERT_EQ(image.height(), 240);
    EXPECT_EQ(stats.frame.overrides.size(), 1u);
    EXPECT_GE(stats.records, 2u);

    M3dView view = M3dView::active3dView();
    for (int i = 1; i < 10; ++i) {
        const double t = i / 10.0;
        const MPoint p = MPoint(-2, -0.5, 0) + (MPoint(2, 0.8, 0) - MPoint(-2, -0.5, 0)) * t;
        short x, y;
        ASSERT_TRUE(view.worldToView(p, x, y));
        EXPECT_TRUE(red(at(image, x, y))) << "on the line at " << x << ", " << y << ": " << describe(at(image, x, y));
        EXPECT_FALSE(red(at(image, x, y + 12))) << "above the line at " << x << ", " << y + 12;
        EXPECT_FALSE(red(at(image, x, y - 12))) << "below the line at " << x << ", " << y - 12;
    }
}

TEST_F(RenderTest, twoDimensionalTextAppearsAtItsPixel)
{
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 300, 200);
    locator("labelLoc");
    setPoint("labelLoc.lineStart", MPoint(100, 100, 100)); // the line stays out of sight
    setPoint("labelLoc.lineEnd", MPoint(100, 101, 100));
    ASSERT_TRUE(host::setString("labelLoc.label", "HHHH"));
    setPoint("labelLoc.labelPosition", MPoint(40, 120, 0));
    const QImage image = render();

    // Text runs right of its position and up from its baseline.
    auto yellowIn = [&](int x0, int y0, int x1, int y1) {
        int n = 0;
        for (int x = x0; x < x1; ++x)
            for (int y = y0; y < y1; ++y)
                n += yellow(at(image, x, y)) ? 1 : 0;
        return n;
    };
    EXPECT_GT(yellowIn(46, 121, 100, 140), 40);
    EXPECT_EQ(yellowIn(150, 121, 204, 140), 0);
    EXPECT_EQ(yellowIn(46, 60, 100, 100), 0);
    EXPECT_TRUE(yellow(at(image, 40, 120))) << "the point under the label";
}

TEST_F(RenderTest, aMeshCoversItsPixelsAndHidesWhatIsBehindIt)
{
    MObject camera = host::makeOrthoCamera(MPoint(0, 10, 0), MPoint::origin, 10.0);
    ASSERT_NE(host::makeView(200, 200, camera), 0u);
    MStatus status;
    host::addMesh(host::gridPlane(4.0f, 4.0f, 2, 2), "plane", &status);
    ASSERT_TRUE(status) << host::logText();
    // A line under the plane, seen through it only in x-ray.
    locator("under");
    setPoint("under.lineStart", MPoint(-1, -1, 0.5));
    setPoint("under.lineEnd", MPoint(1, -1, 0.5));

    host::RenderStats stats;
    QImage image = render(host::RenderOptions(), &stats);
    EXPECT_EQ(stats.triangles, 8);
    // 10 units over 200 pixels: the 4 x 4 plane spans pixels 60 to 140 both ways.
    for (int x : {62, 100, 138})
        for (int y : {62, 100, 138})
            EXPECT_TRUE(surface(at(image, x, y))) << x << ", " << y << ": " << describe(at(image, x, y));
    for (int x : {30, 57, 143, 170})
        EXPECT_FALSE(surface(at(image, x, 100))) << x << ": " << describe(at(image, x, 100));
    M3dView view = M3dView::active3dView();
    short lx, ly;
    ASSERT_TRUE(view.worldToView(MPoint(0, -1, 0.5), lx, ly));
    EXPECT_TRUE(surface(at(image, lx, ly))) << "the line is hidden: " << describe(at(image, lx, ly));

    ASSERT_TRUE(host::setBool("under.xray", true));
    image = render();
    EXPECT_TRUE(red(at(image, lx, ly))) << "x-ray shows it: " << describe(at(image, lx, ly));

    // As a retopology mesh the plane is translucent: blue over the background, not grey.
    host::RenderOptions wire;
    wire.wireframeMeshes = {"plane"};
    image = render(wire);
    const QColor c = at(image, 80, 80);
    EXPECT_FALSE(surface(c)) << describe(c);
    EXPECT_GT(c.blue(), c.red() + 30) << describe(c);
}

TEST_F(RenderTest, renderingWithoutAViewOrToABadPathFails)
{
    EXPECT_FALSE(host::renderFrame(fPng));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "no active view"));
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 32, 32);
    EXPECT_FALSE(host::renderFrame("/nonexistent-folder/frame.png"));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "cannot write"));
}
