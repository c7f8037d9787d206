// The tool command as the undo queue sees it: patches appended, vertices moved, each a step
// that undoes and redoes exactly, with its journal line; its flags as typed text.

#include "command/buildPatchFaces.h"
#include "command/tqSarnToolCmd.h"
#include "kernel/patchPlumbing.h"
#include "store/optionVars.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include "patchTest.h"

#include <maya/MArgList.h>
#include <maya/MItGeometry.h>

namespace {

using patchtest::ints;
using patchtest::straightRow;
using plugintest::meshText;
using plugintest::sceneText;

class ToolCommand : public patchtest::PatchTest {
protected:
    void SetUp() override
    {
        PatchTest::SetUp();
        mesh = makeRetopo();
        // A session's store: its index rows written (empty), and a remembered anchor chain, so
        // that the store's copies have something to restore.
        ASSERT_TRUE(tq::clearShadowIndices());
        ASSERT_TRUE(tq::writePlayerVertices(patchtest::intArray({1, 2})));
        ASSERT_TRUE(tq::writePlayersFromVertices(patchtest::intArray({1, 2})));
    }

    // What the context does for an append: remember the store, attach a suspended patch node,
    // grow a band of quads between two rows at height `y`, feed the node the whole mesh,
    // resume it, and finalize. Returns the number of new faces.
    unsigned appendBand(double y)
    {
        auto* cmd = new tqSarnToolCmd();
        EXPECT_TRUE(cmd->saveStoreState("undo"));
        const MString name = tq::uniqueName("tqPatch");
        MObject node;
        EXPECT_TRUE(tq::attachPatchNode(name, mesh, node)) << host::logText();
        EXPECT_TRUE(tq::suspendPatchNode(node));

        MFnMesh fn(mesh);
        bool ok = false;
        MObject owner;
        const MIntArray faces = tq::buildPatchFaces(fn, {straightRow({0, y, 0}, {1, 0, 0}, 4),
                                                         straightRow({0, y + 1, 0}, {1, 0, 0}, 4)},
                                                    3, 2, false, ok, owner);
        EXPECT_TRUE(ok);
        tq::PatchFeed feed;
        EXPECT_TRUE(tq::readPatchFeed(fn, feed));
        cmd->setAfterFeed(feed);
        cmd->setMode(tqSarnToolCmd::kAppendPatch);
        cmd->setPatchName(name);
        EXPECT_TRUE(cmd->writeAfterFeed(node));
        EXPECT_TRUE(tq::resumePatchNode(node));
        EXPECT_TRUE(cmd->saveStoreState("redo"));
        EXPECT_TRUE(cmd->finalize()) << host::logText();
        return faces.length();
    }

    // Moves every vertex up by `dz` as one step.
    void liftVertices(double dz)
    {
        MPointArray before, after;
        MItGeometry(mesh).allPositions(before, MSpace::kWorld);
        for (MPoint p : before)
            after.append(p + MVector(0, 0, dz));
        auto* cmd = new tqSarnToolCmd();
        ASSERT_TRUE(cmd->applyPositions(mesh, after));
        cmd->setTweakPositions(before, after);
        ASSERT_TRUE(cmd->finalize());
    }

    int faceCount() { return MFnMesh(mesh).numPolygons(); }

    MDagPath mesh;
};

TEST_F(ToolCommand, AChainOfStepsUndoesAndRedoesExactly)
{
    // The store's anchor chain, the mesh and its patch nodes are what a user sees of a step.
    const std::string start = meshText(mesh);
    ASSERT_EQ(appendBand(0), 6u);
    EXPECT_EQ(faceCount(), 7);
    ASSERT_EQ(appendBand(1), 6u); // shares the first band's top row
    EXPECT_EQ(faceCount(), 13);
    liftVertices(0.5);
    const std::string end = meshText(mesh);
    EXPECT_EQ(host::journalLines(),
              (std::vector<std::string>{"tqSarn_appendPatch", "tqSarn_appendPatch", "tqSarn_tweak"}));
    EXPECT_EQ(host::nodeNames("tqPatchNode"), (std::vector<std::string>{"tqPatch1", "tqPatch2"}));

    ASSERT_TRUE(host::undo()) << host::logText();
    MPoint lifted;
    ASSERT_TRUE(MFnMesh(mesh).getPoint(4, lifted));
    EXPECT_EQ(lifted.z, 0.0);
    ASSERT_TRUE(host::undo()) << host::logText();
    EXPECT_EQ(faceCount(), 7);
    EXPECT_EQ(host::nodeNames("tqPatchNode"), (std::vector<std::string>{"tqPatch1"}));
    ASSERT_TRUE(host::undo()) << host::logText();
    EXPECT_EQ(meshText(mesh), start);
    EXPECT_TRUE(host::nodeNames("tqPatchNode").empty());
    MStatus status;
    EXPECT_EQ(ints(tq::readPlayerVertices(status)), (std::vector<int>{1, 2}));

    for (int step = 0; step < 3; ++step)
        ASSERT_TRUE(host::redo()) << "redo " << step << "\n" << host::logText();
    EXPECT_EQ(meshText(mesh), end);
    EXPECT_EQ(host::nodeNames("tqPatchNode"), (std::vector<std::string>{"tqPatch1", "tqPatch2"}));
}

TEST_F(ToolCommand, AMoveCannotBeUndoneOnceTheVertexCountChanged)
{
    liftVertices(1.0);
    // Faces added outside the undo queue: the mesh has more vertices than the move saved.
    MFnMesh fn(mesh);
    bool ok = false;
    MObject owner;
    tq::buildPatchFaces(fn, {straightRow({0, 0, 0}, {1, 0, 0}, 2), straightRow({0, 1, 0}, {1, 0, 0}, 2)}, 1, 1,
                        false, ok, owner);
    ASSERT_TRUE(ok);
    const std::string moved = meshText(mesh);
    EXPECT_FALSE(host::undo());
    EXPECT_EQ(meshText(mesh), moved);
}

TEST_F(ToolCommand, RestoringARedoStateNeedsAnUndoState)
{
    tqSarnToolCmd cmd;
    ASSERT_TRUE(cmd.saveStoreState("redo"));
    EXPECT_EQ(cmd.restoreStoreState("redo"), MStatus::kInvalidParameter);
    ASSERT_TRUE(cmd.saveStoreState("undo"));
    EXPECT_TRUE(cmd.restoreStoreState("redo"));
}

// The tool command is typed as text under the name the plug-in registers it by, with its
// context command.
using ToolCommandText = ToolCommand;

TEST_F(ToolCommandText, TheFirstFlagSetDecides)
{
    EXPECT_TRUE(host::runCommand("tqSarnCmd -glue 1 -u 4").status);
    EXPECT_TRUE(tq::isGlueOn());
    EXPECT_TRUE(host::runCommand("tqSarnCmd -glue 0").status);
    EXPECT_FALSE(tq::isGlueOn());

    // -uspan needs -vspan too: the missing argument fails and nothing changes.
    const std::string before = sceneText();
    EXPECT_FALSE(host::runCommand("tqSarnCmd -u 4").status);
    EXPECT_EQ(sceneText(), before);

    ASSERT_TRUE(tq::appendStroke(straightRow({0, 0, 0}, {1, 0, 0}, 3)));
    EXPECT_TRUE(host::runCommand("tqSarnCmd -close 1 -help 1").status);
    MPointArray strokes;
    ASSERT_TRUE(tq::readStrokes(store, strokes));
    EXPECT_EQ(strokes[2], MPoint(0, 0, 0));

    const host::CommandOutput help = host::runCommand("tqSarnCmd -help 1");
    EXPECT_NE(help.text.find("tqSarn"), std::string::npos);
    // -relax is not a flag doIt tests: a fresh command runs its redo, which changes nothing.
    EXPECT_TRUE(host::runCommand("tqSarnCmd -relax 1").status);
    EXPECT_EQ(sceneText(), before);
}

} // namespace
