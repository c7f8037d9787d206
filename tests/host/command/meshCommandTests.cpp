// The built-in commands the tool's mesh operations send: move -a on vertices and transforms,
// and delete -constructionHistory, with their undo.

#include "commandTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDGModifier.h>
#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MPoint.h>

using Items = std::vector<std::string>;

class MeshCommandTest : public CommandTest {
protected:
    // A 2 x 2 plane of four vertices under a transform at x = 1; returns the shape's name.
    std::string addPlane(const std::string& name)
    {
        MStatus status;
        MObject transform = host::addMesh(host::gridPlane(2.0f, 2.0f, 1, 1), name, &status);
        EXPECT_TRUE(status) << host::logText();
        run("setAttr " + name + ".translate 1 0 0");
        return hosttest::nameOf(MFnDagNode(transform).child(0));
    }
    static MPoint worldPoint(const std::string& shape, int vertex)
    {
        MDagPath path;
        MDagPath::getAPathTo(host::findNode(shape), path);
        MPoint p;
        EXPECT_TRUE(MFnMesh(path).getPoint(vertex, p, MSpace::kWorld));
        return p;
    }
};

TEST_F(MeshCommandTest, MoveSetsTweaksSoVerticesReachWorldPositions)
{
    std::string shape = addPlane("plane");
    MPoint other = worldPoint(shape, 1);
    // The tool's form: absolute world positions, vertex by vertex, one statement each.
    run("move -a 5 6 7 |plane|" + shape + ".vtx[0];move -a -1 0 0.5 |plane|" + shape + ".vtx[3];");
    EXPECT_TRUE(worldPoint(shape, 0).isEquivalent(MPoint(5.0, 6.0, 7.0), 1e-6));
    EXPECT_TRUE(worldPoint(shape, 3).isEquivalent(MPoint(-1.0, 0.0, 0.5), 1e-6));
    EXPECT_TRUE(worldPoint(shape, 1).isEquivalent(other, 1e-6)) << "other vertices stay";
    Items tweak = run("getAttr " + shape + ".pnts[0]").items;
    ASSERT_EQ(tweak.size(), 3u);

    run("move -r 0 1 0 plane.vtx[0:1]");
    EXPECT_TRUE(worldPoint(shape, 0).isEquivalent(MPoint(5.0, 7.0, 7.0), 1e-6));
    EXPECT_TRUE(worldPoint(shape, 1).isEquivalent(other + MVector(0.0, 1.0, 0.0), 1e-6));

    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(worldPoint(shape, 0).isEquivalent(MPoint(5.0, 6.0, 7.0), 1e-6));
    EXPECT_TRUE(worldPoint(shape, 1).isEquivalent(other, 1e-6));
    ASSERT_TRUE(host::redo());
    EXPECT_TRUE(worldPoint(shape, 0).isEquivalent(MPoint(5.0, 6.0, 7.0), 1e-6));
}

TEST_F(MeshCommandTest, MoveRefusesWhatItCannotMove)
{
    std::string shape = addPlane("plane");
    EXPECT_NE(failing("move -a 1 2 3 plane.vtx[9]").find("does not exist"), std::string::npos);
    EXPECT_NE(failing("move -a 1 2 plane.vtx[0]").find("'plane.vtx[0]' is not a number"), std::string::npos);
    EXPECT_NE(failing("move -a 1 2 3 plane.f[0]").find("only mesh vertices can be moved"), std::string::npos);
    EXPECT_NE(failing("move -a -r 1 2 3 plane.vtx[0]").find("not both"), std::string::npos);
    EXPECT_EQ(run("getAttr -size " + shape + ".pnts").text, "0") << "a refused move tweaks nothing";
}

TEST_F(MeshCommandTest, MovePlacesTransformsInTheWorld)
{
    run("createNode transform -n parent; setAttr parent.translate 10 0 0; createNode transform -n kid -p parent");
    run("move -a 1 2 3 kid");
    EXPECT_EQ(run("getAttr kid.translate").items, (Items{"-9", "2", "3"}));
    run("move -r 1 1 1 kid");
    EXPECT_EQ(run("getAttr kid.translate").items, (Items{"-8", "3", "4"}));
    run("move -a -os 0 0 0 kid");
    EXPECT_EQ(run("getAttr kid.translate").items, (Items{"0", "0", "0"}));
}

TEST_F(MeshCommandTest, DeleteHistoryBakesAndIsUndone)
{
    std::string source = addPlane("source");
    std::string target = addPlane("target");
    run("createNode polyTweak -n tweak; connectAttr " + source + ".outMesh tweak.inputPolymesh; " +
        "connectAttr tweak.output " + target + ".inMesh; setAttr tweak.tweak[0] 0 3 0");
    MPoint moved = worldPoint(target, 0);
    host::flushUndoQueue();

    run("delete -constructionHistory |target|" + target);
    EXPECT_FALSE(exists("tweak"));
    EXPECT_TRUE(exists(source)) << "a visible mesh upstream is no history to delete";
    EXPECT_EQ(run("listHistory -ac " + target).items, Items{target});
    EXPECT_TRUE(worldPoint(target, 0).isEquivalent(moved, 1e-6)) << "the mesh keeps its shape";

    ASSERT_TRUE(host::undo());
    EXPECT_EQ(run("listHistory -ac " + target).items, (Items{target, "tweak", source}));
    EXPECT_TRUE(worldPoint(target, 0).isEquivalent(moved, 1e-6));
    ASSERT_TRUE(host::redo());
    EXPECT_FALSE(exists("tweak"));
    EXPECT_NE(failing("delete -ch parentless").find("No object matches name: parentless"), std::string::npos);
}

TEST_F(MeshCommandTest, DeletingAShapeTakesTheHistoryThatFedOnlyIt)
{
    std::string source = addPlane("source");
    std::string target = addPlane("target");
    std::string other = addPlane("other");
    run("createNode polyTweak -n tweak; connectAttr " + source + ".outMesh tweak.inputPolymesh; " +
        "connectAttr tweak.output " + target + ".inMesh; createNode polyTweak -n shared; " +
        "connectAttr shared.output " + other + ".inMesh; connectAttr shared.output tweak.inputPolymesh -f");
    host::flushUndoQueue();

    run("delete |target|" + target);
    EXPECT_FALSE(exists("tweak")) << "it fed only the deleted shape";
    EXPECT_TRUE(exists("shared")) << "it still feeds another object";
    EXPECT_TRUE(exists(source)) << "a visible mesh is an object of its own";
    EXPECT_TRUE(exists("target")) << "the transform stays";

    ASSERT_TRUE(host::undo());
    EXPECT_EQ(run("listHistory -ac " + target).items, (Items{target, "tweak", "shared"}));
}

// The poly-modifier pattern sends "delete -constructionHistory" through a modifier; the
// modifier's undo brings the history back.
TEST_F(MeshCommandTest, DeleteHistoryThroughAModifier)
{
    std::string source = addPlane("source");
    std::string target = addPlane("target");
    run("createNode polyTweak -n tweak; connectAttr " + source + ".outMesh tweak.inputPolymesh; " +
        "connectAttr tweak.output " + target + ".inMesh");
    MDGModifier modifier;
    modifier.commandToExecute(MString("delete -constructionHistory |target|") + target.c_str());
    ASSERT_TRUE(modifier.doIt());
    EXPECT_FALSE(exists("tweak"));
    ASSERT_TRUE(modifier.undoIt());
    EXPECT_EQ(run("listHistory -ac " + target).items, (Items{target, "tweak", source}));
}
