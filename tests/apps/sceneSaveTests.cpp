// `tqsarn play --save`: a real session through the plug-in (two strokes, Enter, a third
// stroke) saved as a .ma file opens as the same scene, with the retopo mesh, its tqPatchNode
// history and the store's strokes and shadow, and the tool goes on from it.

#include "tqsarnTest.h"

#include "sceneDigest.h"

#include <host/commands.h>
#include <host/log.h>
#include <host/sceneFiles.h>
#include <host/tools.h>
#include <host/viewport.h>

#include <maya/MFnDagNode.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MItDag.h>

namespace tqsarntest {
namespace {

// A drag of seven steps along a row of pixels, as a user's stroke.
std::string stroke(int x0, int x1, int y)
{
    std::string drag;
    for (int i = 1; i <= 7; ++i)
        drag += std::string(i > 1 ? ", " : "") + "{\"pixel\": [" + std::to_string(x0 + (x1 - x0) * i / 7) + ", " +
                std::to_string(y) + "]}";
    return "{\"kind\": \"press\", \"button\": \"left\", \"at\": {\"pixel\": [" + std::to_string(x0) + ", " +
           std::to_string(y) + "]}},\n{\"kind\": \"drag\", \"points\": [" + drag +
           "]},\n{\"kind\": \"release\", \"at\": {\"pixel\": [" + std::to_string(x1) + ", " + std::to_string(y) + "]}}";
}

void drawStroke(int x0, int x1, int y)
{
    ASSERT_TRUE(host::mousePress(x0, y));
    for (int i = 1; i <= 7; ++i)
        ASSERT_TRUE(host::mouseDrag(x0 + (x1 - x0) * i / 7, y));
    ASSERT_TRUE(host::mouseRelease(x1, y));
}

// Faces of the visible meshes other than the scan.
int retopoFaces()
{
    int faces = 0;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MFnDagNode dag(it.currentItem());
        if (!dag.isIntermediateObject() && std::string(dag.name().asChar()) != "scanShape")
            faces += MFnMesh(it.currentItem()).numPolygons();
    }
    return faces;
}

unsigned pointCount(const std::string& plug)
{
    MObject data = host::getData(plug);
    return data.isNull() ? 0u : MFnPointArrayData(data).length();
}

class SaveScene : public TqsarnTest {};

TEST_F(SaveScene, ASessionsSceneOpensWithItsStoreAndTheToolGoesOn)
{
    if (!fs::exists(fs::path(TQSARN_SCAN_DIR) / "refined_elephant.off"))
        GTEST_SKIP() << "the scans are not fetched (scripts/scans)";
    const std::string session = write("session.json", R"({
  "version": 1, "scan": ")" + std::string(TQSARN_SCAN_DIR) + R"(/refined_elephant.off",
  "view": {"width": 960, "height": 720},
  "optionVars": {"tq_uspan": 6, "tq_vspan": 3},
  "steps": [
{"kind": "camera", "position": [0, 0, 3], "target": [0, 0, 0], "fov": 30},
)" + stroke(349, 480, 288) + ",\n" + stroke(349, 480, 229) +
                                                             R"(,
{"kind": "key", "key": "enter"},
)" + stroke(349, 482, 170) + "\n]}");
    const Outcome run = tqsarn({"play", session, "--out", path("out"), "--save", path("scene.ma")});
    ASSERT_EQ(run.code, tqsarn::kExitOk) << run.err;
    EXPECT_TRUE(has(run.out, "Scene saved to " + path("scene.ma")));
    EXPECT_EQ(report()["scene"], path("scene.ma"));
    // The store holds the third stroke and the shadow of the sarn.
    const int faces = retopoFaces();
    ASSERT_EQ(faces, 18);
    ASSERT_GT(pointCount("tqSarn.strokes"), 0u);
    ASSERT_GT(pointCount("tqSarn.strokesShadow"), 0u);
    const std::vector<std::string> played = hosttest::sceneDigest();

    host::setToolTo("selectSuperContext");
    host::newScene();
    host::clearLog();
    std::string error;
    ASSERT_TRUE(host::openScene(path("scene.ma"), &error)) << error;
    EXPECT_EQ(hosttest::sceneDigest(), played);
    EXPECT_EQ(host::nodeNames("tqPatchNode").size(), 1u);
    // Saved again, the scene gives the same file: every value came back.
    ASSERT_TRUE(host::saveScene(path("again.ma")));
    std::ifstream first(path("scene.ma")), second(path("again.ma"));
    std::stringstream a, b;
    a << first.rdbuf();
    b << second.rdbuf();
    std::string again = b.str();
    again.replace(again.find("again.ma"), 8, "scene.ma");
    again.replace(again.rfind("again.ma"), 8, "scene.ma");
    EXPECT_TRUE(again == a.str()) << "the scene saves to another text after opening";

    // The tool works on the opened scene: activating it starts a new set of strokes (as in
    // Maya, where the tool's activation resets the store's working strokes), and two more
    // strokes and Enter make a second sarn beside the first.
    MStatus status;
    host::makeView(960, 720, host::findNode("sessionCamera1"), &status);
    ASSERT_TRUE(status);
    const host::CommandOutput context = host::runCommand("tqSarnContext", false);
    ASSERT_TRUE(context.status && host::setToolTo(context.text)) << host::logText();
    drawStroke(349, 482, 350);
    drawStroke(349, 482, 410);
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_GT(retopoFaces(), faces) << host::logText();
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();
    host::setToolTo("selectSuperContext");
}

TEST_F(SaveScene, AnUnwritableSceneIsReported)
{
    writeSphere();
    const std::string session = write("s.json", R"({"version": 1, "scan": "sphere.obj", "steps": []})");
    const Outcome run = tqsarn({"play", session, "--out", path("out"), "--save", path("missing/dir/scene.ma")});
    EXPECT_EQ(run.code, tqsarn::kExitUsage);
    EXPECT_TRUE(has(run.err, "Cannot save the scene to " + path("missing/dir/scene.ma")));
}

} // namespace
} // namespace tqsarntest
