// A sarn drawn as a user draws it: two left-button strokes over the scan and Enter make a
// strip of quads with the configured spans, on the surface, in one undoable step.

#include "toolTest.h"

#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include <maya/MFnMesh.h>
#include <maya/MItDag.h>

namespace {

using namespace tooltest;

class SarnGesture : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 6);
        MGlobal::setOptionVarValue("tq_vspan", 3);
        ASSERT_NO_FATAL_FAILURE(connectStore());
    }

    void drawTwoStrokes()
    {
        ASSERT_TRUE(stroke({230, 130, 390, 130}));
        ASSERT_TRUE(stroke({230, 80, 390, 80}));
        ASSERT_EQ(storedSizes().size(), 2u);
    }
};

TEST_F(SarnGesture, TwoStrokesAndEnterMakeASarnOnTheScanThatUndoesInOneStep)
{
    ASSERT_NO_FATAL_FAILURE(activate());
    ASSERT_TRUE(host::selection().empty());
    ASSERT_NO_FATAL_FAILURE(drawTwoStrokes());
    const unsigned queued = host::undoQueueLength();

    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_FALSE(loggedError()) << host::logText();
    const std::vector<MDagPath> made = retopoMeshes();
    ASSERT_EQ(made.size(), 1u) << "nothing selected: Enter makes a new mesh";
    MFnMesh sarn(made[0]);
    EXPECT_EQ(sarn.numPolygons(), 6 * 3);
    MPointArray vertices;
    sarn.getPoints(vertices, MSpace::kWorld);
    EXPECT_EQ(vertices.length(), 7u * 4u);
    EXPECT_LT(farthestFromScan(vertices), surfaceTolerance());
    EXPECT_EQ(host::nodeNames("tqPatchNode").size(), 1u);
    // The strokes are used up; the sarn's rows are remembered as the shadow.
    EXPECT_TRUE(storedSizes().empty());
    EXPECT_TRUE(tq::hasShadow());
    EXPECT_EQ(host::undoQueueLength(), queued + 1);

    // One undo takes the sarn away with its history and its transform; redo brings it back.
    host::undo();
    EXPECT_TRUE(retopoMeshes().empty());
    EXPECT_TRUE(host::nodeNames("tqPatchNode").empty());
    EXPECT_EQ(host::nodeNames("transform").size(), 3u) << "scan, camera and store only";
    host::redo();
    ASSERT_EQ(retopoMeshes().size(), 1u);
    EXPECT_EQ(MFnMesh(retopoMeshes()[0]).numPolygons(), 6 * 3);
    MPointArray again;
    MFnMesh(retopoMeshes()[0]).getPoints(again, MSpace::kWorld);
    EXPECT_TRUE(plugintest::samePoints(again, vertices));
}

TEST_F(SarnGesture, EnterWithOneStrokeOnlyResetsTheLinesAndASelectedMeshReceivesTheSarn)
{
    MDagPath retopo = makeMesh("retopo", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
    retopo.extendToShape();
    ASSERT_NO_FATAL_FAILURE(activate());
    ASSERT_TRUE(host::select({"retopo"}));
    ASSERT_TRUE(stroke({230, 130, 390, 130}));
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_EQ(storedSizes().size(), 1u);
    EXPECT_EQ(MFnMesh(retopo).numPolygons(), 1);
    EXPECT_TRUE(host::nodeNames("tqPatchNode").empty());

    ASSERT_TRUE(stroke({230, 80, 390, 80}));
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_EQ(retopoMeshes().size(), 1u);
    EXPECT_EQ(MFnMesh(retopo).numPolygons(), 1 + 6 * 3);
    EXPECT_EQ(host::journalLines().back(), "tqSarn_scratch_orphan");
    host::undo();
    EXPECT_EQ(MFnMesh(retopo).numPolygons(), 1);
}

TEST_F(SarnGesture, WithAnAnchorRowOneStrokeAppendsABandAtRelease)
{
    ASSERT_NO_FATAL_FAILURE(activate());
    ASSERT_TRUE(stroke({220, 150, 340, 150}));
    ASSERT_TRUE(stroke({220, 115, 340, 115}));
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    ASSERT_EQ(retopoMeshes().size(), 1u);
    MFnMesh sarn(retopoMeshes()[0]);
    ASSERT_EQ(sarn.numPolygons(), 18);
    // The sarn's far row becomes the anchor row, as a pick of its boundary would make it.
    MIntArray row1, row2, row3;
    ASSERT_TRUE(tq::readShadowIndices(row1, row2, row3));
    ASSERT_EQ(row2.length(), 7u);
    ASSERT_TRUE(tq::writePlayerVertices(row2));
    ASSERT_TRUE(tq::writePlayersFromVertices(row2));

    ASSERT_TRUE(stroke({220, 85, 340, 85}));
    EXPECT_EQ(info1(), "Sarn Patch created");
    EXPECT_EQ(sarn.numPolygons(), 18 + 6 * 3);
    MPointArray vertices;
    sarn.getPoints(vertices, MSpace::kWorld);
    // On the scan to a thousandth of its size: the band's vertices go along their normals.
    EXPECT_LT(farthestFromScan(vertices), 1e-3 * box.width());
    EXPECT_EQ(host::journalLines().back(), "tqSarn_appendPatch");
    host::undo();
    EXPECT_EQ(sarn.numPolygons(), 18);
}

} // namespace
