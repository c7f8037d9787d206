// Draw overrides in frames: one per node, made when first drawn and destroyed with the node
// or the registration; prepareForDraw gets back its user data; an override that is not
// always dirty updates only when told; a throwing override costs only its own drawing.

#include "viewTest.h"

#include <maya/MViewport2Renderer.h>

using MHWRender::MUIDrawManager;
using viewtest::ViewTest;

namespace {

const host::DrawRecord* findText(const std::vector<host::DrawRecord>& records, const std::string& prefix)
{
    for (const host::DrawRecord& r : records)
        if (r.primitive == host::DrawPrimitive::kText && r.text.rfind(prefix, 0) == 0)
            return &r;
    return nullptr;
}

} // namespace

TEST_F(ViewTest, anOverrideDrawsItsNodeWithTheStateItSet)
{
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 320, 240);
    locator("lineLoc");
    setPoint("lineLoc.lineStart", MPoint(-1, 0, 0));
    setPoint("lineLoc.lineEnd", MPoint(1, 0.5, 0));
    ASSERT_TRUE(host::setDouble("lineLoc.lineWidth", 4.0));
    ASSERT_TRUE(host::setInt("lineLoc.lineStyle", MUIDrawManager::kShortDashed));
    ASSERT_TRUE(host::setString("lineLoc.label", "hello"));
    setPoint("lineLoc.labelPosition", MPoint(100, 50, 0));

    host::FrameRecords frame = host::drawFrame();
    const host::OverrideRecords* drawn = frame.find("lineLoc");
    ASSERT_NE(drawn, nullptr) << host::logText();
    EXPECT_EQ(drawn->node, "|transform1|lineLoc");
    EXPECT_TRUE(drawn->updated);
    const auto& r = drawn->records;
    ASSERT_EQ(r.size(), 4u);
    EXPECT_EQ(r[0].primitive, host::DrawPrimitive::kLine);
    EXPECT_FALSE(r[0].is2d);
    EXPECT_EQ(r[0].points[0], MPoint(-1, 0, 0));
    EXPECT_EQ(r[0].points[1], MPoint(1, 0.5, 0));
    EXPECT_EQ(r[0].state.color, MColor(1, 0, 0));
    EXPECT_FLOAT_EQ(r[0].state.lineWidth, 4.0f);
    EXPECT_EQ(r[0].state.lineStyle, MUIDrawManager::kShortDashed);
    EXPECT_EQ(r[0].state.selectability, MUIDrawManager::kSelectable);
    EXPECT_EQ(r[0].state.selectionName, 7u);
    EXPECT_FALSE(r[0].state.xray);

    EXPECT_EQ(r[1].text, "hello");
    EXPECT_TRUE(r[1].is2d);
    EXPECT_EQ(r[1].points[0], MPoint(100, 50, 0));
    EXPECT_EQ(r[1].state.fontName, "DejaVu Sans");
    EXPECT_EQ(r[1].state.fontSize, 20u);
    EXPECT_EQ(r[1].state.depthPriority, 990u);
    EXPECT_EQ(r[1].state.drawable, 1);
    EXPECT_EQ(r[1].state.selectability, MUIDrawManager::kNonSelectable);
    EXPECT_EQ(r[2].primitive, host::DrawPrimitive::kPoint);
    EXPECT_FLOAT_EQ(r[2].state.pointSize, 6.0f);
    EXPECT_EQ(r[3].text, "prepared 1");

    // In x-ray the line's bracket says so.
    ASSERT_TRUE(host::setBool("lineLoc.xray", true));
    frame = host::drawFrame();
    EXPECT_TRUE(frame.find("lineLoc")->records[0].state.xray);
    EXPECT_TRUE(frame.find("lineLoc")->records[0].state.inDrawable);
    EXPECT_EQ(frame.all().size(), 4u);
}

TEST_F(ViewTest, overridesAreMadeOncePerNodeAndGoWithTheirNodes)
{
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 100, 100);
    host::drawFrame(); // overrides of nodes gone with an earlier scene go now
    host::clearLog();
    locator("first");
    locator("second");
    host::drawFrame();
    host::FrameRecords frame = host::drawFrame();
    ASSERT_EQ(frame.overrides.size(), 2u);
    EXPECT_EQ(frame.overrides[0].node, "|transform1|first") << "creation order";
    EXPECT_EQ(logCount("drawTestOverride made for"), 2);
    // prepareForDraw got its own user data back each time.
    EXPECT_NE(findText(frame.overrides[1].records, "prepared 2"), nullptr);

    // A hidden node is not drawn, but keeps its override.
    ASSERT_TRUE(host::setBool("transform1.visibility", false));
    EXPECT_EQ(host::drawFrame().overrides.size(), 1u);
    ASSERT_TRUE(host::setBool("transform1.visibility", true));

    ASSERT_TRUE(host::deleteNode("first"));
    frame = host::drawFrame();
    ASSERT_EQ(frame.overrides.size(), 1u);
    EXPECT_EQ(logCount("drawTestOverride destroyed"), 1);
    EXPECT_EQ(logCount("drawTestOverride made for"), 2);

    // Unloading the plug-in destroys what is left while its code is still there.
    host::newScene();
    ASSERT_TRUE(host::unloadPlugin(hosttest::pluginNameOf(DRAW_TEST_PLUGIN))) << host::logText();
    EXPECT_EQ(logCount("drawTestOverride destroyed"), 2);
    EXPECT_TRUE(host::drawFrame().overrides.empty());
    ASSERT_TRUE(hosttest::ensurePluginLoaded(DRAW_TEST_PLUGIN));
}

TEST_F(ViewTest, anOverrideThatIsNotAlwaysDirtyUpdatesOnlyWhenMarked)
{
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 100, 100);
    locator("lazy");
    ASSERT_TRUE(host::setBool("lazy.alwaysDirty", false));
    setPoint("lazy.lineEnd", MPoint(1, 0, 0));

    host::FrameRecords frame = host::drawFrame();
    EXPECT_TRUE(frame.find("lazy")->updated);
    frame = host::drawFrame();
    EXPECT_FALSE(frame.find("lazy")->updated);
    EXPECT_NE(findText(frame.find("lazy")->records, "prepared 1"), nullptr) << "the last drawing is kept";

    // A changed plug reaches preEvaluation, which marks the geometry dirty.
    setPoint("lazy.lineEnd", MPoint(2, 0, 0));
    frame = host::drawFrame();
    EXPECT_TRUE(frame.find("lazy")->updated);
    EXPECT_EQ(frame.find("lazy")->records[0].points[1], MPoint(2, 0, 0));
    EXPECT_NE(findText(frame.find("lazy")->records, "prepared 2"), nullptr);

    // Without that call a change does not show...
    ASSERT_TRUE(host::setBool("lazy.markDirty", false));
    host::drawFrame();
    setPoint("lazy.lineEnd", MPoint(3, 0, 0));
    frame = host::drawFrame();
    EXPECT_FALSE(frame.find("lazy")->updated);
    EXPECT_EQ(frame.find("lazy")->records[0].points[1], MPoint(2, 0, 0));
    // ...until someone marks it.
    MHWRender::MRenderer::setGeometryDrawDirty(host::findNode("lazy"));
    frame = host::drawFrame();
    EXPECT_EQ(frame.find("lazy")->records[0].points[1], MPoint(3, 0, 0));

    // Another view has drawn nothing yet, so it updates there.
    const host::ViewId other = host::makeView(40, 40, host::makeCamera(MPoint(5, 5, 5), MPoint::origin));
    EXPECT_TRUE(host::drawFrame(other).find("lazy")->updated);
}

TEST_F(ViewTest, aThrowingOverrideIsLoggedAndTheFrameGoesOn)
{
    lookFrom(MPoint(0, 0, 10), MPoint::origin, 100, 100);
    locator("bad");
    locator("good");
    ASSERT_TRUE(host::setInt("bad.throwIn", 2));
    host::FrameRecords frame = host::drawFrame();
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "addUIDrawables was told to throw")) << host::logText();
    ASSERT_NE(frame.find("bad"), nullptr);
    EXPECT_TRUE(frame.find("bad")->records.empty());
    EXPECT_EQ(frame.find("good")->records.size(), 2u);

    ASSERT_TRUE(host::setInt("bad.throwIn", 1));
    host::clearLog();
    frame = host::drawFrame();
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "prepareForDraw")) << host::logText();

    ASSERT_TRUE(host::setInt("bad.throwIn", 0));
    frame = host::drawFrame();
    EXPECT_EQ(frame.find("bad")->records.size(), 2u);
}

TEST_F(ViewTest, aFrameWithoutAViewStillRunsTheOverrides)
{
    locator("alone");
    host::FrameRecords frame = host::drawFrame();
    EXPECT_EQ(frame.view, 0u);
    ASSERT_NE(frame.find("alone"), nullptr);
    EXPECT_EQ(frame.find("alone")->records.size(), 2u);
}
