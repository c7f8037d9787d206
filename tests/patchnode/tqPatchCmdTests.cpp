// tqPatchCmd inserting a tqPatchNode into a mesh's history: with history, without it (the
// intermediate "Orig" shape, construction history on and off), with tweaks; its flags; and
// the surgery taken back through the command's own undoIt.

#include "patchNodeTest.h"

#include "patchnode/tqPatchCmd.h"
#include "patchnode/tqPatchNode.h"

#include <maya/MFloatVector.h>

namespace {

using namespace patchnodetest;

class PatchCmd : public PatchNodeTest {
protected:
    // A mesh "dst" fed by the shape of another mesh "src": a mesh with history.
    std::string addMeshWithHistory()
    {
        const std::string src = addGrid("src");
        const std::string dst = addGrid("dst");
        EXPECT_TRUE(host::connect(src + ".outMesh", dst + ".inMesh")) << host::logText();
        return dst;
    }

    static std::vector<std::string> patchNodes() { return host::nodeNames("tqPatchNode"); }

    // Offsets on two vertices of the shape; returns them by logical index.
    static std::vector<std::pair<int, MFloatVector>> addTweaks(const std::string& shape)
    {
        std::vector<std::pair<int, MFloatVector>> tweaks = {{1, MFloatVector(0.5f, 0.0f, 0.25f)},
                                                            {6, MFloatVector(0.0f, -1.0f, 0.0f)}};
        for (const auto& [i, t] : tweaks) {
            const std::string text = "setAttr " + shape + ".pnts[" + std::to_string(i) + "] " + std::to_string(t.x) +
                                     " " + std::to_string(t.y) + " " + std::to_string(t.z);
            EXPECT_TRUE(host::runCommand(text).status) << host::logText();
        }
        return tweaks;
    }

    // A float3 element (pnts, tweak) read through its three children.
    static MFloatVector element(const std::string& plugName)
    {
        MPlug plug = host::findPlug(plugName);
        return MFloatVector(plug.child(0u).asFloat(), plug.child(1u).asFloat(), plug.child(2u).asFloat());
    }

    static void expectNoTweaksLeft(const std::string& shape)
    {
        MPlug pnts = host::findPlug(shape + ".pnts");
        for (unsigned int i = 0; i < pnts.numElements(); ++i) {
            const std::string name = shape + ".pnts[" + std::to_string(pnts.elementByPhysicalIndex(i).logicalIndex()) + "]";
            EXPECT_TRUE(element(name).isEquivalent(MFloatVector(0.0f, 0.0f, 0.0f), 0.0f)) << name;
        }
    }
};

TEST_F(PatchCmd, OnAMeshWithHistoryGoesBetweenTheInputAndTheMesh)
{
    const std::string dst = addMeshWithHistory();
    const MeshView before = viewMesh(dst);

    host::CommandOutput out = host::runCommand("tqPatchCmd -m dst -o myPatch");
    ASSERT_TRUE(out.status) << host::logText();
    EXPECT_EQ(out.text, "myPatch");
    EXPECT_EQ(sourceOf(dst + ".inMesh"), "myPatch.outMesh");
    EXPECT_EQ(sourceOf("myPatch.inMesh"), "srcShape.outMesh");
    EXPECT_TRUE(intermediateShapes("dst").empty());
    // The polyTweak is made all the same, and left unconnected.
    EXPECT_EQ(host::nodeNames("polyTweak").size(), 1u);
    EXPECT_FALSE(host::findPlug("polyTweak1.output").isConnected());
    EXPECT_EQ(viewMesh(dst), before);
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();
}

TEST_F(PatchCmd, OnAMeshWithoutHistoryFeedsTheNodeFromAnOrigShape)
{
    const std::string shape = addGrid("plane");
    const MeshView before = viewMesh(shape);
    const std::vector<std::string> transforms = host::nodeNames("transform");

    host::CommandOutput out = host::runCommand("tqPatchCmd -m plane -o tqPatch");
    ASSERT_TRUE(out.status) << host::logText();
    EXPECT_EQ(out.text, "tqPatch");
    const std::vector<std::string> orig = intermediateShapes("plane");
    ASSERT_EQ(orig.size(), 1u);
    EXPECT_EQ(orig[0].substr(orig[0].size() - 4), "Orig");
    EXPECT_EQ(sourceOf("tqPatch.inMesh"), orig[0] + ".outMesh");
    EXPECT_EQ(sourceOf(shape + ".inMesh"), "tqPatch.outMesh");
    // The duplicate's own transform is gone again.
    EXPECT_EQ(host::nodeNames("transform"), transforms);
    EXPECT_EQ(viewMesh(shape), before);
    EXPECT_EQ(viewMesh(orig[0]), before);
}

TEST_F(PatchCmd, WithHistoryOffAMeshWithoutHistoryKeepsNone)
{
    const std::string shape = addGrid("plane");
    const MeshView before = viewMesh(shape);
    ASSERT_TRUE(host::runCommand("constructionHistory -tgl off").status);

    ASSERT_TRUE(host::runCommand("tqPatchCmd -m plane").status) << host::logText();
    EXPECT_EQ(sourceOf(shape + ".inMesh"), "");
    EXPECT_TRUE(patchNodes().empty());
    EXPECT_TRUE(intermediateShapes("plane").empty());
    EXPECT_EQ(viewMesh(shape), before);
}

TEST_F(PatchCmd, TweaksMoveIntoThePolyTweakInFrontOfTheNode)
{
    // Without history (tweaks over the shape's own geometry) and with history.
    for (bool withHistory : {false, true}) {
        SCOPED_TRACE(withHistory ? "with history" : "without history");
        host::newScene();
        const std::string shape = withHistory ? addMeshWithHistory() : addGrid("dst");
        const auto tweaks = addTweaks(shape);
        // A connection on one component of an offset moves with it.
        host::createNode("transform", "driver");
        ASSERT_TRUE(host::connect("driver.translateX", shape + ".pnts[3].pntx"));
        const MeshView before = viewMesh(shape);

        ASSERT_TRUE(host::runCommand("tqPatchCmd -m dst").status) << host::logText();
        const std::vector<std::string> polyTweaks = host::nodeNames("polyTweak");
        ASSERT_EQ(polyTweaks.size(), 1u);
        const std::string& tweak = polyTweaks[0];
        expectNoTweaksLeft(shape);
        for (const auto& [i, t] : tweaks) {
            const MFloatVector moved = element(tweak + ".tweak[" + std::to_string(i) + "]");
            EXPECT_TRUE(moved.isEquivalent(t, 1e-6f)) << "tweak " << i;
        }
        EXPECT_EQ(sourceOf(tweak + ".tweak[3].tweakX"), "driver.translateX");
        EXPECT_EQ(sourceOf("tqPatch.inMesh"), tweak + ".output");
        EXPECT_EQ(sourceOf(tweak + ".inputPolymesh"),
                  withHistory ? "srcShape.outMesh" : intermediateShapes("dst").at(0) + ".outMesh");
        EXPECT_EQ(viewMesh(shape), before);
    }
}

TEST_F(PatchCmd, NamesTheNodeTqPatchWithoutOAndRefusesAMissingOrWrongMesh)
{
    addGrid("a");
    addGrid("b");
    EXPECT_EQ(host::runCommand("tqPatchCmd -mesh a").text, "tqPatch");
    EXPECT_EQ(host::runCommand("tqPatchCmd -m b").text, "tqPatch1");

    host::clearLog();
    const std::vector<std::string> nodes = host::nodeNames();
    // Without -m no path comes of the empty name: an error, and still success.
    EXPECT_TRUE(host::runCommand("tqPatchCmd -o other").status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "Invalid mesh shape path: ")) << host::logText();
    EXPECT_EQ(host::nodeNames(), nodes);

    // A name that is no mesh, or nothing at all: an error each, and the scene as it was.
    host::createNode("transform", "group");
    const std::vector<std::string> withGroup = host::nodeNames();
    for (const char* name : {"group", "nowhere"}) {
        host::clearLog();
        EXPECT_TRUE(host::runCommand(std::string("tqPatchCmd -m ") + name).status);
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, "")) << name;
        EXPECT_EQ(host::nodeNames(), withGroup) << name;
    }
}

TEST_F(PatchCmd, ItsOwnUndoTakesTheSurgeryBackAndLeavesTheNewNodes)
{
    for (bool withHistory : {false, true}) {
        SCOPED_TRACE(withHistory ? "with history" : "without history");
        host::newScene();
        const std::string shape = withHistory ? addMeshWithHistory() : addGrid("dst");
        const auto tweaks = addTweaks(shape);
        const MeshView before = viewMesh(shape);
        const std::string input = sourceOf(shape + ".inMesh");
        const std::vector<std::string> transforms = host::nodeNames("transform");

        // The host never undoes this command (it is not undoable); the instance can be.
        tqPatchCmd cmd;
        MSelectionList list;
        MDagPath path;
        ASSERT_TRUE(list.add(shape.c_str()) && list.getDagPath(0, path));
        ASSERT_TRUE(cmd.insertModifier(path, "tqPatch", tqPatchNode::id)) << host::logText();
        ASSERT_EQ(sourceOf(shape + ".inMesh"), "tqPatch.outMesh");

        ASSERT_TRUE(cmd.undoIt()) << host::logText();
        EXPECT_EQ(sourceOf(shape + ".inMesh"), input);
        EXPECT_TRUE(intermediateShapes("dst").empty());
        EXPECT_EQ(host::nodeNames("transform"), transforms);
        for (const auto& [i, t] : tweaks)
            EXPECT_TRUE(element(shape + ".pnts[" + std::to_string(i) + "]").isEquivalent(t, 1e-6f)) << i;
        EXPECT_EQ(viewMesh(shape), before);
        // The created nodes stay, connected to nothing.
        EXPECT_EQ(patchNodes(), std::vector<std::string>{"tqPatch"});
        EXPECT_FALSE(host::findPlug("tqPatch.inMesh").isConnected());
        EXPECT_FALSE(host::findPlug("tqPatch.outMesh").isConnected());
        EXPECT_EQ(host::nodeNames("polyTweak").size(), 1u);
    }
}

} // namespace
