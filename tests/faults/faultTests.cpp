// Faults and bad input at the tool: sources no retopology can stand on, and a scene pulled
// from under the tool mid-session. Each gives a failed status or a log line, keeps what the
// user made, leaves every mesh valid and the store pointing into it, and never crashes.

#include "../tool/toolTest.h"

#include "sceneChecks.h"

#include "store/storeLookup.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MItDag.h>

#include <limits>

namespace {

using namespace tooltest;

class Faults : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 4);
        MGlobal::setOptionVarValue("tq_vspan", 2);
    }

    // Two strokes over the middle of the view and Enter; the statuses of the three steps.
    std::vector<MStatus> sarnAttempt()
    {
        return {stroke({230, 130, 390, 130}), stroke({230, 80, 390, 80}), host::pressKey(host::Key::kEnter)};
    }

    // A sarn on the scan, selected as the retopo mesh.
    MDagPath sarn()
    {
        for (const MStatus& s : sarnAttempt())
            EXPECT_TRUE(s) << host::logText();
        const MDagPath made = tq::getActiveMeshPath();
        EXPECT_TRUE(made.isValid());
        return made;
    }

    // The gestures a user goes on with after a fault: strokes, Enter, Backspace, Esc, both
    // brushes, a span change; then everything undone. Nothing may break the scene.
    void goOn(const char* after)
    {
        SCOPED_TRACE(after);
        sarnAttempt();
        EXPECT_EQ(tqcheck::checkScene(scan), "");
        stroke({250, 100, 370, 110});
        host::pressKey(host::Key::kBackspace);
        host::mousePress(310, 110, host::MouseButton::kMiddle);
        host::mouseDrag(330, 115);
        host::mouseRelease(330, 115);
        host::mousePress(310, 110, host::MouseButton::kMiddle, {true, false});
        host::mouseDrag(360, 110, {true, false});
        host::mouseRelease(360, 110, {true, false});
        host::pressKey(host::Key::kEscape);
        EXPECT_EQ(tqcheck::checkScene(scan), "");
        while (host::undoQueueLength() > 0)
            if (!host::undo())
                break;
        // The store is not judged here: an undo the tool refuses leaves its memory as it stood.
        EXPECT_EQ(tqcheck::checkScene(scan, false), "");
    }

    static bool failedOrLogged(const std::vector<MStatus>& steps, std::size_t logBefore)
    {
        for (const MStatus& s : steps)
            if (!s)
                return true;
        return host::logEntries().size() > logBefore;
    }

    // Replaces the store's source with a mesh made from the arrays, and activates the tool.
    void useSource(const MFloatPointArray& points, const MIntArray& counts, const MIntArray& connects)
    {
        MStatus status;
        MFnMesh fn;
        fn.create(int(points.length()), int(counts.length()), points, counts, connects,
                  host::createNode("transform", "bad"), &status);
        makeStore();
        if (status) {
            MDagPath path;
            fn.getPath(path);
            ASSERT_TRUE(host::connect(path.partialPathName().asChar() + std::string(".outMesh"), "store.tqSarnMesh"));
        }
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    static void elephantArrays(MFloatPointArray& points, MIntArray& counts, MIntArray& connects)
    {
        const host::MeshArrays& e = elephant();
        for (std::size_t i = 0; i + 2 < e.points.size(); i += 3)
            points.append(e.points[i], e.points[i + 1], e.points[i + 2]);
        counts = MIntArray(e.counts.data(), unsigned(e.counts.size()));
        connects = MIntArray(e.connects.data(), unsigned(e.connects.size()));
    }
};

TEST_F(Faults, BadSourcesAreRefusedOrUsedWithoutHarm)
{
    struct Case {
        const char* name;
        void (*spoil)(MFloatPointArray&, MIntArray&, MIntArray&);
        bool buildable; // a sarn can still be made on what is left
    };
    const Case cases[] = {
        {"an empty scan",
         [](MFloatPointArray& p, MIntArray& c, MIntArray& v) {
             p.clear();
             c.clear();
             v.clear();
         },
         false},
        {"NaN coordinates",
         [](MFloatPointArray& p, MIntArray&, MIntArray&) {
             for (unsigned int i = 0; i < p.length(); i += 3)
                 p[i].y = std::numeric_limits<float>::quiet_NaN();
         },
         false},
        {"huge coordinates",
         [](MFloatPointArray& p, MIntArray&, MIntArray&) {
             for (unsigned int i = 0; i < p.length(); i += 2)
                 p[i] = MFloatPoint(p[i].x * 1e30f, p[i].y * 1e30f, p[i].z);
         },
         false},
        {"degenerate triangles",
         [](MFloatPointArray& p, MIntArray&, MIntArray& v) {
             // Every second triangle collapsed to a point or a line.
             for (unsigned int t = 0; t + 2 < v.length(); t += 6) {
                 p[unsigned(v[t + 1])] = p[unsigned(v[t])];
                 if (t % 12 == 0)
                     p[unsigned(v[t + 2])] = p[unsigned(v[t])];
             }
         },
         true},
        {"non-manifold triangles",
         [](MFloatPointArray& p, MIntArray& c, MIntArray& v) {
             // Fins: a third and fourth triangle on many edges.
             const unsigned int corners = v.length();
             for (unsigned int t = 0; t + 2 < corners; t += 30) {
                 const MFloatPoint& a = p[unsigned(v[t])];
                 p.append(a.x + 0.01f, a.y + 0.01f, a.z + 0.05f);
                 c.append(3);
                 v.append(v[t]);
                 v.append(v[t + 1]);
                 v.append(int(p.length()) - 1);
             }
         },
         true},
        {"a scan with holes",
         [](MFloatPointArray&, MIntArray& c, MIntArray& v) {
             // Two triangles of every five gone.
             MIntArray keptCounts, keptConnects;
             for (unsigned int t = 0; t < c.length(); ++t)
                 if (t % 5 >= 2) {
                     keptCounts.append(3);
                     for (int k = 0; k < 3; ++k)
                         keptConnects.append(v[3 * t + unsigned(k)]);
                 }
             c = keptCounts;
             v = keptConnects;
         },
         true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        host::setToolTo("selectSuperContext");
        host::deleteNode("store");
        host::deleteNode("bad");
        host::flushUndoQueue();
        MFloatPointArray points;
        MIntArray counts, connects;
        elephantArrays(points, counts, connects);
        c.spoil(points, counts, connects);
        ASSERT_NO_FATAL_FAILURE(useSource(points, counts, connects));
        host::clearLog();
        const std::size_t logBefore = host::logEntries().size();
        const std::vector<MStatus> steps = sarnAttempt();
        EXPECT_EQ(tqcheck::checkScene(scan), "");
        const std::vector<MDagPath> made = retopoMeshes();
        if (made.empty()) {
            EXPECT_TRUE(failedOrLogged(steps, logBefore)) << "refused without a word";
        } else if (c.buildable) {
            EXPECT_GT(MFnMesh(made.back()).numPolygons(), 0);
        }
        goOn(c.name);
    }
}

TEST_F(Faults, TheSceneChangedUnderTheToolMidSession)
{
    struct Case {
        const char* name;
        const char* command; // %s is the retopo mesh's transform
        bool keepsSarn;      // the sarn the user made is still there, as it was
    };
    const Case cases[] = {
        {"the store deleted", "delete store", true},
        {"the source disconnected", "disconnectAttr %scan.outMesh store.tqSarnMesh", true},
        {"the source deleted", "delete scan", true},
        {"the retopo mesh renamed", "rename %s renamedSarn", true},
        {"the retopo mesh deleted", "delete %s", false},
        {"a patch node deleted from its history", "delete `ls -type tqPatchNode`", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        host::setToolTo("selectSuperContext");
        host::newScene();
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 4);
        MGlobal::setOptionVarValue("tq_vspan", 2);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
        const MDagPath made = sarn();
        ASSERT_TRUE(made.isValid());
        MDagPath transform = made;
        transform.pop();
        const std::string before = plugintest::meshText(made);

        std::string command = c.command;
        if (const std::size_t at = command.find("%scan"); at != std::string::npos)
            command.replace(at, 5, scan.partialPathName().asChar());
        if (const std::size_t at = command.find("%s"); at != std::string::npos)
            command.replace(at, 2, transform.partialPathName().asChar());
        host::clearLog();
        const host::CommandOutput done = host::runCommand(command);
        ASSERT_TRUE(done.status) << command << "\n" << host::logText();
        if (c.keepsSarn) {
            std::vector<MDagPath> meshes = retopoMeshes();
            ASSERT_FALSE(meshes.empty());
            EXPECT_EQ(plugintest::meshText(meshes.front()), before);
        }
        // The user goes on as if nothing happened.
        sarnAttempt();
        EXPECT_EQ(tqcheck::checkScene(scan, false), "");
        goOn(c.name);
    }
}

TEST_F(Faults, UnloadingThePluginWithTheToolActiveKeepsTheWork)
{
    ASSERT_NO_FATAL_FAILURE(connectStore());
    ASSERT_NO_FATAL_FAILURE(activate());
    const MDagPath made = sarn();
    ASSERT_TRUE(made.isValid());
    const std::string before = plugintest::meshText(made);
    ASSERT_TRUE(stroke({230, 180, 390, 180})); // the first stroke of the next sarn
    ASSERT_EQ(storedSizes().size(), 1u);

    host::clearLog();
    EXPECT_FALSE(host::unloadPlugin(plugintest::kPluginName)) << "the store is in the scene";
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, plugintest::kPluginName)) << host::logText();
    EXPECT_EQ(plugintest::meshText(made), before);
    EXPECT_EQ(tqcheck::checkScene(scan), "");
    // The tool was put down; a new one picks the work up.
    EXPECT_NE(host::currentTool(), contextName);
    ASSERT_NO_FATAL_FAILURE(activate());
    const std::size_t strokes = storedSizes().size();
    ASSERT_TRUE(stroke({230, 200, 390, 200}));
    EXPECT_EQ(storedSizes().size(), strokes + 1);

    // With the scene emptied, the plug-in unloads with its tool active, and loads again.
    host::newScene();
    ASSERT_NO_FATAL_FAILURE(activate());
    EXPECT_TRUE(host::unloadPlugin(plugintest::kPluginName)) << host::logText();
    EXPECT_EQ(host::currentTool(), "selectSuperContext");
    EXPECT_TRUE(plugintest::ensurePluginLoaded()) << host::logText();
}

} // namespace
