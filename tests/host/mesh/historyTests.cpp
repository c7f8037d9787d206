// The mesh node and its history: pnts tweaks on the output, how long in-place edits last
// with and without history, the poly-modifier surgery a command performs to insert a node
// into a mesh's history, and deleting that history again.

#include "meshTest.h"

#include <maya/MDGModifier.h>
#include <maya/MDagModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MPlug.h>

namespace {

using meshtest::MeshTest;
using meshtest::P3;
using meshtest::pointOf;
using meshtest::pointsOf;

MObject pointArrayData(const std::vector<P3>& points)
{
    MFnPointArrayData fn;
    return fn.create(meshtest::pointArray(points));
}

MPlug plugOf(const MObject& node, const char* attr) { return MFnDependencyNode(node).findPlug(attr); }

// The tweaks of a float3 array plug as a dense point array (missing elements are zero).
std::vector<P3> offsetsOf(const MObject& node, const char* attr)
{
    MPlug array = plugOf(node, attr);
    MIntArray indices;
    array.getExistingArrayAttributeIndices(indices);
    std::vector<P3> out;
    for (int i : indices) {
        if (out.size() <= std::size_t(i))
            out.resize(std::size_t(i) + 1, P3{0, 0, 0});
        MPlug element = array.elementByLogicalIndex(unsigned(i));
        for (unsigned int k = 0; k < 3; ++k)
            out[std::size_t(i)][k] = element.child(k).asFloat();
    }
    return out;
}

std::vector<P3> shifted(std::vector<P3> points, float dz)
{
    for (P3& p : points)
        p[2] += dz;
    return points;
}

using MeshHistory = MeshTest;

TEST_F(MeshHistory, TweaksAreAddedToTheOutputAndAPointArrayReplacesThem)
{
    MFnMesh fn;
    createStrip(fn);
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[2].pnty", 0.5));
    EXPECT_EQ(pointOf(fn, 2), (P3{2, 0.5f, 0}));

    MPlug pnts = plugOf(fn.object(), "pnts");
    ASSERT_TRUE(pnts.setValue(pointArrayData({{0, 0, 1}, {0, 0, 0}})));
    std::vector<P3> expected = meshtest::stripPoints();
    expected[0] = {0, 0, 1};
    EXPECT_EQ(pointsOf(fn), expected) << "element 2 was not dropped, or element 0 not written";
    EXPECT_EQ(pnts.numElements(), 2u);

    // Non-finite points refuse the write and leave the tweaks.
    const float nan = std::nanf("");
    EXPECT_FALSE(pnts.setValue(pointArrayData({{nan, 0, 0}})));
    EXPECT_EQ(pointsOf(fn), expected);

    ASSERT_TRUE(pnts.setValue(pointArrayData({})));
    EXPECT_EQ(pnts.numElements(), 0u);
    EXPECT_EQ(pointsOf(fn), meshtest::stripPoints());
}

TEST_F(MeshHistory, EditsWithoutHistoryLastAndLaterTweaksAddToThem)
{
    MFnMesh fn;
    createStrip(fn);
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[1].pnty", 1.0));
    ASSERT_TRUE(fn.setPoint(0, MPoint(0, 0, 3)));
    ASSERT_TRUE(fn.setPoint(1, MPoint(5, 5, 5)));
    EXPECT_EQ(pointOf(fn, 1), (P3{5, 5, 5}));

    // Re-evaluating for the tweaks keeps the edits: the edited output, less its tweak, is
    // the shape's own geometry now.
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[1].pnty", 2.0));
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[0].pntx", 1.0));
    EXPECT_EQ(pointOf(fn, 0), (P3{1, 0, 3}));
    EXPECT_EQ(pointOf(fn, 1), (P3{5, 6, 5}));
    ASSERT_TRUE(plugOf(fn.object(), "pnts").setValue(pointArrayData({})));
    EXPECT_EQ(pointOf(fn, 1), (P3{5, 4, 5}));
}

TEST_F(MeshHistory, EditsWithHistoryLastUntilTheInputChangesAndDeleteHistoryKeepsTheResult)
{
    MFnMesh source;
    createStrip(source);
    create("testMeshModifier", "mod");
    create("mesh", "dstShape");
    create("mesh", "otherShape");
    ASSERT_TRUE(host::connect("polySurfaceShape1.outMesh", "mod.inMesh"));
    ASSERT_TRUE(host::connect("mod.outMesh", "dstShape.inMesh"));
    ASSERT_TRUE(host::connect("mod.outMesh", "otherShape.inMesh"));

    MFnMesh dst(host::findNode("dstShape"));
    ASSERT_EQ(pointsOf(dst), meshtest::stripPoints());
    ASSERT_TRUE(dst.setPoint(0, MPoint(9, 9, 9)));
    EXPECT_EQ(pointOf(dst, 0), (P3{9, 9, 9}));
    EXPECT_EQ(host::getDouble("mod.offset2"), 0.0);
    EXPECT_EQ(pointOf(dst, 0), (P3{9, 9, 9})) << "reading upstream plugs undid the edit";
    EXPECT_EQ(pointOf(source, 0), (P3{0, 0, 0})) << "the edit reached upstream";

    // A changed input is evaluated again and replaces the edit.
    ASSERT_TRUE(host::setDouble("mod.offset2", 1.0));
    EXPECT_EQ(pointsOf(dst), shifted(meshtest::stripPoints(), 1.0f));

    // A duplicate shows what the shape shows, without the history.
    MFnDagNode dstNode(dst.object());
    MDagPath copyPath;
    ASSERT_TRUE(MDagPath::getAPathTo(dstNode.duplicate(), copyPath));
    ASSERT_TRUE(copyPath.extendToShape());
    EXPECT_FALSE(plugOf(copyPath.node(), "inMesh").isConnected());
    EXPECT_EQ(pointsOf(MFnMesh(copyPath)), shifted(meshtest::stripPoints(), 1.0f));
    // ... and holds that geometry as its own: evaluated again for a tweak, it keeps it.
    ASSERT_TRUE(host::setDouble(host::nodeName(copyPath.node()) + ".pnts[0].pntx", 0.5));
    EXPECT_EQ(pointOf(MFnMesh(copyPath), 0), (P3{0.5f, 0, 1}));

    // The modifier also feeds otherShape, so deleting dstShape's history keeps it.
    ASSERT_TRUE(dst.setPoint(3, MPoint(3, 0, 7)));
    std::vector<P3> before = pointsOf(dst);
    ASSERT_TRUE(host::deleteHistory("dstShape")) << host::logText();
    EXPECT_FALSE(plugOf(dst.object(), "inMesh").isConnected());
    EXPECT_FALSE(host::findNode("mod").isNull());
    EXPECT_EQ(pointsOf(dst), before) << "deleting history changed the geometry";
    ASSERT_TRUE(host::setDouble("mod.offset2", 2.0));
    EXPECT_EQ(pointsOf(dst), before) << "the shape still follows its former input";

    // Now the modifier feeds only otherShape; the visible source mesh is not history.
    ASSERT_TRUE(host::deleteHistory("otherShape"));
    EXPECT_TRUE(host::findNode("mod").isNull());
    EXPECT_FALSE(host::findNode("polySurfaceShape1").isNull());
    EXPECT_EQ(pointsOf(MFnMesh(host::findNode("otherShape"))), shifted(meshtest::stripPoints(), 2.0f));
    EXPECT_TRUE(host::logContains(host::LogLevel::kInfo, "mod")) << host::logText();
}

// The sequence a poly-modifier command runs on a mesh without history, step by step through
// the API: the mesh is duplicated into an intermediate "orig" shape under the same transform,
// its tweaks move to a polyTweak node, and orig -> polyTweak -> modifier -> mesh is connected.
TEST_F(MeshHistory, PolyModifierSurgeryKeepsTheMeshAndDeleteHistoryUndoesTheChain)
{
    MFnMesh fn;
    MObject transform = createStrip(fn);
    MObject shape = fn.object();
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[5].pntz", 0.5));
    ASSERT_TRUE(fn.setPoint(2, MPoint(2, 0, 1)));
    const std::vector<P3> before = pointsOf(fn);
    ASSERT_EQ(before.size(), 8u);
    ASSERT_EQ(before[5], (P3{1, 1, 0.5f}));

    // Duplicate, move the copy's shape under the mesh's transform, hide it, drop the rest.
    MFnDagNode dagFn(shape);
    MObject dupTransform = dagFn.duplicate();
    MDagPath dupPath;
    ASSERT_TRUE(MDagPath::getAPathTo(dupTransform, dupPath));
    ASSERT_TRUE(dupPath.extendToShape());
    MObject orig = dupPath.node();
    EXPECT_EQ(pointsOf(MFnMesh(orig)), before) << "the duplicate does not show the mesh";
    MDagModifier dagMod;
    ASSERT_TRUE(dagMod.reparentNode(orig, transform));
    ASSERT_TRUE(dagMod.doIt());
    MFnDagNode origFn(orig);
    ASSERT_TRUE(origFn.setIntermediateObject(true));
    origFn.setName("polySurfaceShape1Orig");
    ASSERT_TRUE(dagMod.deleteNode(dupTransform));
    ASSERT_TRUE(dagMod.doIt());

    // The tweaks move to a polyTweak node; the mesh and the copy lose theirs.
    MDGModifier dgMod;
    MObject tweak = dgMod.createNode("polyTweak");
    MObject modifier = dgMod.createNode("testMeshModifier");
    ASSERT_TRUE(dgMod.doIt());
    const std::vector<P3> tweaks = offsetsOf(shape, "pnts");
    ASSERT_TRUE(plugOf(tweak, "tweak").setValue(pointArrayData(tweaks)));
    ASSERT_TRUE(plugOf(shape, "pnts").setValue(pointArrayData({})));
    ASSERT_TRUE(plugOf(orig, "pnts").setValue(pointArrayData({})));
    ASSERT_TRUE(dgMod.connect(plugOf(orig, "outMesh"), plugOf(tweak, "inputPolymesh")));
    ASSERT_TRUE(dgMod.connect(plugOf(tweak, "output"), plugOf(modifier, "inMesh")));
    ASSERT_TRUE(dgMod.connect(plugOf(modifier, "outMesh"), plugOf(shape, "inMesh")));
    ASSERT_TRUE(dgMod.doIt());

    // The transform's shape is the visible mesh, which shows what it showed before.
    MDagPath meshPath;
    ASSERT_TRUE(MDagPath::getAPathTo(transform, meshPath));
    ASSERT_TRUE(meshPath.extendToShape());
    EXPECT_EQ(meshPath.node(), shape);
    EXPECT_EQ(MFnDagNode(transform).childCount(), 2u);
    EXPECT_EQ(pointsOf(MFnMesh(meshPath)), before);
    EXPECT_EQ(pointOf(MFnMesh(orig), 5), (P3{1, 1, 0})) << "the orig shape kept the tweak";
    ASSERT_TRUE(host::setDouble(host::nodeName(modifier) + ".offset2", 1.0));
    const std::vector<P3> modified = shifted(before, 1.0f);
    EXPECT_EQ(pointsOf(fn), modified);

    // Deleting the history leaves a plain mesh with the same output.
    ASSERT_TRUE(host::deleteHistory("polySurface1")) << host::logText();
    EXPECT_TRUE(host::nodeNames("polyTweak").empty());
    EXPECT_TRUE(host::nodeNames("testMeshModifier").empty());
    EXPECT_TRUE(host::findNode("polySurfaceShape1Orig").isNull());
    EXPECT_EQ(MFnDagNode(transform).childCount(), 1u);
    EXPECT_FALSE(plugOf(shape, "inMesh").isConnected());
    EXPECT_EQ(pointsOf(fn), modified);
    ASSERT_TRUE(host::setDouble("polySurfaceShape1.pnts[0].pntx", 1.0));
    EXPECT_EQ(pointOf(fn, 0), (P3{1, 0, 1}));
}

TEST_F(MeshHistory, DeleteHistoryRefusesWhatIsNoMesh)
{
    MFnMesh fn;
    createStrip(fn);
    EXPECT_TRUE(host::deleteHistory("polySurface1")) << "a mesh without history is no error";
    EXPECT_EQ(pointsOf(fn), meshtest::stripPoints());
    create("transform", "empty");
    host::clearLog();
    EXPECT_FALSE(host::deleteHistory("empty"));
    EXPECT_FALSE(host::deleteHistory("noSuchNode"));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "noSuchNode"));
}

} // namespace
