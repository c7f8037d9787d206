// tqPatchCmd inserting a tqPatchNode into a mesh's history: with history, without it (the
// intermediate "Orig" shape, construction history on and off), with tweaks; its flags and
// bad names; and the surgery taken back through the command's own undoIt.

#include "patchNodeTest.h"

#include "patchnode/tqPatchCmd.h"
#include "patchnode/tqPatchNode.h"

#include <maya/MFloatVector.h>
#include <maya/MFnDagNode.h>

namespace {

using namespace patchnodetest;

// Offsets set on the shape's pnts, by logical index.
const std::vector<std::pair<int, MFloatVector>> kTweaks = {{1, MFloatVector(0.5f, 0.0f, 0.25f)},
                                                           {6, MFloatVector(0.0f, -1.0f, 0.0f)}};

class PatchCmd : public PatchNodeTest {
protected:
    // "dst" without history, or fed by the shape of another grid "src".
    static std::string addTarget(bool withHistory)
    {
        const std::string dst = addGrid("dst");
        if (withHistory) {
            EXPECT_TRUE(host::connect(addGrid("src") + ".outMesh", dst + ".inMesh")) << host::logText();
        }
        return dst;
    }

    static void addTweaks(const std::string& shape)
    {
        for (const auto& [i, t] : kTweaks) {
            MPlug element = host::findPlug(shape + ".pnts").elementByLogicalIndex(unsigned(i));
            for (unsigned int c = 0; c < 3; ++c)
                EXPECT_TRUE(element.child(c).setValue(t[c]));
        }
    }

    // A float3 element (pnts, tweak) read through its three children.
    static MFloatVector element(const std::string& plugName)
    {
        MPlug plug = host::findPlug(plugName);
        return MFloatVector(plug.child(0u).asFloat(), plug.child(1u).asFloat(), plug.child(2u).asFloat());
    }

    static std::vector<std::string> intermediateShapes(const std::string& transform)
    {
        std::vector<std::string> out;
        MFnDagNode fn(host::findNode(transform));
        for (unsigned int i = 0; i < fn.childCount(); ++i)
            if (MFnDagNode(fn.child(i)).isIntermediateObject())
                out.push_back(host::nodeName(fn.child(i)));
        return out;
    }
};

TEST_F(PatchCmd, OnAMeshWithHistoryGoesBetweenTheInputAndTheMesh)
{
    const MeshView before = viewMesh(addTarget(true));
    host::CommandOutput out = host::runCommand("tqPatchCmd -m dst -o myPatch");
    ASSERT_TRUE(out.status) << host::logText();
    EXPECT_EQ(out.text, "myPatch");
    EXPECT_EQ(sourceOf("dstShape.inMesh"), "myPatch.outMesh");
    EXPECT_EQ(sourceOf("myPatch.inMesh"), "srcShape.outMesh");
    EXPECT_TRUE(intermediateShapes("dst").empty());
    // A polyTweak is made all the same, and left unconnected.
    EXPECT_EQ(host::nodeNames("polyTweak").size(), 1u);
    EXPECT_FALSE(host::findPlug("polyTweak1.output").isConnected());
    EXPECT_EQ(viewMesh("dst"), before);
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();
}

TEST_F(PatchCmd, OnAMeshWithoutHistoryFeedsTheNodeFromAnOrigShape)
{
    const MeshView before = viewMesh(addTarget(false));
    const std::vector<std::string> transforms = host::nodeNames("transform");
    ASSERT_EQ(host::runCommand("tqPatchCmd -m dst -o tqPatch").text, "tqPatch") << host::logText();
    const std::vector<std::string> orig = intermediateShapes("dst");
    ASSERT_EQ(orig.size(), 1u);
    EXPECT_EQ(orig[0].substr(orig[0].size() - 4), "Orig");
    EXPECT_EQ(sourceOf("tqPatch.inMesh"), orig[0] + ".outMesh");
    EXPECT_EQ(sourceOf("dstShape.inMesh"), "tqPatch.outMesh");
    EXPECT_EQ(host::nodeNames("transform"), transforms); // the duplicate's own is gone
    EXPECT_EQ(viewMesh("dstShape"), before);
    EXPECT_EQ(viewMesh(orig[0]), before);

    // With construction history off, the chain is baked at once: the mesh keeps none.
    ASSERT_TRUE(host::runCommand("constructionHistory -tgl off").status);
    const MeshView other = viewMesh(addGrid("other"));
    ASSERT_TRUE(host::runCommand("tqPatchCmd -m other").status) << host::logText();
    EXPECT_EQ(sourceOf("otherShape.inMesh"), "");
    EXPECT_TRUE(intermediateShapes("other").empty());
    EXPECT_EQ(host::nodeNames("tqPatchNode"), std::vector<std::string>{"tqPatch"});
    EXPECT_EQ(viewMesh("otherShape"), other);
}

TEST_F(PatchCmd, NamesTheNodeTqPatchWithoutOAndRefusesAMissingOrWrongMesh)
{
    addGrid("a");
    addGrid("b");
    EXPECT_EQ(host::runCommand("tqPatchCmd -mesh a").text, "tqPatch");
    EXPECT_EQ(host::runCommand("tqPatchCmd -m b").text, "tqPatch1");

    // Without -m, with a name that is no mesh or nothing at all: an error each, still
    // success, and the scene as it was.
    host::createNode("transform", "group");
    const std::vector<std::string> nodes = host::nodeNames();
    for (const char* args : {"-o other", "-m group", "-m nowhere"}) {
        host::clearLog();
        EXPECT_TRUE(host::runCommand(std::string("tqPatchCmd ") + args).status);
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, "")) << args;
        EXPECT_EQ(host::nodeNames(), nodes) << args;
    }
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "Invalid mesh shape path: ")) << host::logText();
}

TEST_F(PatchCmd, TweaksMoveIntoAPolyTweakAndItsOwnUndoTakesTheSurgeryBack)
{
    for (bool withHistory : {false, true}) {
        SCOPED_TRACE(withHistory ? "with history" : "without history");
        host::newScene();
        const std::string shape = addTarget(withHistory);
        addTweaks(shape);
        // A connection on one component of an offset moves with it.
        host::createNode("transform", "driver");
        ASSERT_TRUE(host::connect("driver.translateX", shape + ".pnts[3].pntx"));
        const MeshView before = viewMesh(shape);
        const std::string input = sourceOf(shape + ".inMesh");
        const std::vector<std::string> transforms = host::nodeNames("transform");

        // The host never undoes this command (it is not undoable); an instance can be.
        tqPatchCmd cmd;
        ASSERT_TRUE(cmd.insertModifier(pathOf(shape), "tqPatch", tqPatchNode::id)) << host::logText();
        MPlug pnts = host::findPlug(shape + ".pnts");
        for (unsigned int i = 0; i < pnts.numElements(); ++i) {
            MPlug e = pnts.elementByPhysicalIndex(i);
            EXPECT_TRUE(element(e.name().asChar()).isEquivalent(MFloatVector(0.0f, 0.0f, 0.0f), 0.0f)) << i;
        }
        for (const auto& [i, t] : kTweaks)
            EXPECT_TRUE(element("polyTweak1.tweak[" + std::to_string(i) + "]").isEquivalent(t, 1e-6f)) << i;
        EXPECT_EQ(sourceOf("polyTweak1.tweak[3].tweakX"), "driver.translateX");
        EXPECT_EQ(sourceOf("tqPatch.inMesh"), "polyTweak1.output");
        EXPECT_EQ(sourceOf("polyTweak1.inputPolymesh"),
                  withHistory ? "srcShape.outMesh" : intermediateShapes("dst").at(0) + ".outMesh");
        EXPECT_EQ(viewMesh(shape), before);

        ASSERT_TRUE(cmd.undoIt()) << host::logText();
        EXPECT_EQ(sourceOf(shape + ".inMesh"), input);
        EXPECT_EQ(sourceOf(shape + ".pnts[3].pntx"), "driver.translateX");
        EXPECT_TRUE(intermediateShapes("dst").empty());
        EXPECT_EQ(host::nodeNames("transform"), transforms);
        for (const auto& [i, t] : kTweaks)
            EXPECT_TRUE(element(shape + ".pnts[" + std::to_string(i) + "]").isEquivalent(t, 1e-6f)) << i;
        EXPECT_EQ(viewMesh(shape), before);
        // The nodes it made stay, connected to nothing.
        EXPECT_FALSE(host::findPlug("tqPatch.inMesh").isConnected());
        EXPECT_FALSE(host::findPlug("tqPatch.outMesh").isConnected());
        EXPECT_FALSE(host::findPlug("polyTweak1.output").isConnected());
    }
}

} // namespace
