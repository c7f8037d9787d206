// Growing the retopo mesh over a source surface: a sarn from free strokes, a band from the
// player row to a stroke, a band swept along one stroke. Each lands on the source, feeds its
// own patch node, and undoes and redoes as one step.

#include "command/appendRows.h"
#include "command/tqSarnToolCmd.h"
#include "kernel/patchPlumbing.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include "patchTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MFnDagNode.h>
#include <maya/MVectorArray.h>

#include <cmath>

namespace {

using patchtest::intArray;
using patchtest::ints;
using patchtest::straightRow;
using plugintest::meshText;

TEST(AppendRows, TheFarRowIsPredictedFromTheCreationOrder)
{
    EXPECT_EQ(ints(tq::calculateLAST(3, 4, 100)), (std::vector<int>{107, 106, 111, 115}));
    EXPECT_TRUE(ints(tq::calculateLAST(0, 4, 100)).empty());

    // Rows swept along a stroke keep the first row's width and stop one step short of it.
    const tq::RowList rows = tq::rowsAlongStroke(straightRow({0, 0, 0}, {1, 0, 0}, 5), straightRow({2, 0, 1}, {0, 0, 1}, 2));
    ASSERT_EQ(rows.size(), 3u);
    for (std::size_t r = 1; r < rows.size(); ++r) {
        ASSERT_EQ(rows[r].length(), 5u);
        EXPECT_NEAR(rows[r][0].distanceTo(rows[r][4]), 4.0 * 4.0 / 5.0, 1e-9) << "row " << r;
    }
}

// A round source: a sphere of radius 10 around (0, -10, 0), so that its top touches the plane
// y = 0 at the origin and falls away from it; connected to the store, with its face normals
// stored as activation writes them. Strokes are drawn in or above the plane y = 0, so every
// point between them that is projected moves down onto the sphere.
class Append : public patchtest::PatchTest {
protected:
    void SetUp() override
    {
        PatchTest::SetUp();
        MFnDagNode transform(host::addMesh(host::uvSphere(10, 128, 64), "source"));
        ASSERT_TRUE(host::setDouble("source.translateY", -10));
        MDagPath path;
        transform.getPath(path);
        ASSERT_TRUE(path.extendToShape());
        ASSERT_TRUE(host::connect(host::nodeName(transform.child(0)) + ".worldMesh", "store.tqSarnMesh"));
        source.setObject(path);
        MVectorArray normals;
        for (int f = 0; f < source.numPolygons(); ++f) {
            MVector normal;
            source.getPolygonNormal(f, normal, MSpace::kWorld);
            normals.append(normal);
        }
        ASSERT_TRUE(tq::writeVectorArrayAttr(normals, "inputNormals", store));
        for (MStatus cleared : {tq::clearStrokes(), tq::clearShadow(), tq::clearShadowIndices(),
                                tq::clearPlayerVertices(), tq::writePlayerPoints(MPointArray())})
            ASSERT_TRUE(cleared);
        accel = MFnMesh::autoUniformGridParams();
    }

    // A selected retopo strip of 4 quads along x at z = 0..1 on the source; its far row
    // (vertices 5-9, at z = 1) is the player row.
    MDagPath makeStrip()
    {
        const MDagPath strip = makeMesh("strip",
                                        {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0},
                                         {0, 0, 1}, {1, 0, 1}, {2, 0, 1}, {3, 0, 1}, {4, 0, 1}},
                                        {4, 4, 4, 4}, {0, 5, 6, 1, 1, 6, 7, 2, 2, 7, 8, 3, 3, 8, 9, 4});
        EXPECT_TRUE(host::select({"strip"}));
        EXPECT_TRUE(tq::writePlayerVertices(intArray({5, 6, 7, 8, 9})));
        EXPECT_TRUE(tq::writePlayersFromVertices(intArray({5, 6, 7, 8, 9})));
        return strip;
    }

    MPointArray playerPoints()
    {
        MStatus status;
        return tq::readPlayerPoints(status);
    }

    // How many of `vertices` lie on the source surface (within 1e-4).
    int countOnSource(const MDagPath& mesh, const std::vector<int>& vertices)
    {
        MFnMesh fn(mesh);
        int on = 0;
        for (int v : vertices) {
            MPoint p, closest;
            fn.getPoint(v, p, MSpace::kWorld);
            source.getClosestPoint(p, closest, MSpace::kWorld);
            on += p.distanceTo(closest) < 1e-4 ? 1 : 0;
        }
        return on;
    }

    static std::vector<int> range(int from, int to)
    {
        std::vector<int> out;
        for (int v = from; v < to; ++v)
            out.push_back(v);
        return out;
    }

    // Undo and redo the last step: the mesh goes back to `before` and comes again exactly.
    // (An operation that saved no store state reports its refused restore; the mesh is what
    // counts here.)
    void expectUndoRedo(const MDagPath& mesh, const std::string& before)
    {
        const std::string after = meshText(mesh);
        host::undo();
        EXPECT_EQ(meshText(mesh), before);
        host::redo();
        EXPECT_EQ(meshText(mesh), after);
    }

    MFnMesh source;
    MMeshIsectAccelParams accel;
};

TEST_F(Append, ScratchMakesASarnFromTwoStrokesOnTheSource)
{
    const MDagPath mesh = makeRetopo();
    const std::string before = meshText(mesh);
    tq::setUSpans(4);
    tq::setVSpans(2);
    ASSERT_TRUE(tq::appendStroke(straightRow({-2, 0, -1}, {0.5, 0, 0}, 9)));
    ASSERT_TRUE(tq::appendStroke(straightRow({-2, 0, 1}, {0.5, 0, 0}, 9)));

    auto* cmd = new tqSarnToolCmd();
    cmd->setMode(tqSarnToolCmd::kScratchOrphan);
    cmd->setPatchName(tq::uniqueName("tqPatch"));
    cmd->setMeshPath(mesh);
    MObject node;
    ASSERT_TRUE(tq::attachPatchNode(cmd->getPatchName(), mesh, node));
    ASSERT_TRUE(cmd->saveNondestructStrokes(0));
    ASSERT_TRUE(cmd->scratchPatch(mesh, accel, false)) << host::logText();
    tq::clearStrokes();
    ASSERT_TRUE(cmd->finalize());

    EXPECT_EQ(MFnMesh(mesh).numPolygons(), 1 + 8);
    // The rows stay where they were drawn; the middle row between them, 5 vertices, is
    // projected down onto the sphere.
    EXPECT_EQ(countOnSource(mesh, range(4, 4 + 15)), 5);
    EXPECT_EQ(ints(tq::readNewFaces()).size(), 8u);
    EXPECT_EQ(host::journalLines().back(), "tqSarn_scratch_orphan");
    expectUndoRedo(mesh, before);
}

TEST_F(Append, OutOfReachOfTheSourceTheVerticesStayAndTheFacesTurnOver)
{
    const MDagPath mesh = makeRetopo();
    tq::setUSpans(2);
    tq::setVSpans(2);
    MGlobal::setOptionVarValue("tq_distancesnap", 0.1);
    // Drawn this way round the quads face up, the source's way; only the out-of-reach vote
    // turns them over.
    ASSERT_TRUE(tq::appendStroke(straightRow({0, 5, 1}, {1, 0, 0}, 3)));
    ASSERT_TRUE(tq::appendStroke(straightRow({0, 5, 0}, {1, 0, 0}, 3)));
    tqSarnToolCmd cmd;
    cmd.setPatchName("tqPatch1");
    MObject node;
    ASSERT_TRUE(tq::attachPatchNode("tqPatch1", mesh, node));
    ASSERT_TRUE(cmd.saveNondestructStrokes(0));
    ASSERT_TRUE(cmd.scratchPatch(mesh, accel, false));

    MFnMesh fn(mesh);
    EXPECT_EQ(countOnSource(mesh, range(4, fn.numVertices())), 0);
    // No vote for the source's side: the new quads are stored turned over, and the mesh the
    // node gives back shows them so; the first quad (not new) keeps its winding.
    MIntArray counts, corners;
    fn.getVertices(counts, corners);
    EXPECT_EQ(ints(corners).front(), 0);
    const std::vector<int> all = ints(corners);
    const std::vector<int> firstNew(all.begin() + 4, all.begin() + 8);
    MPoint a, b, c;
    fn.getPoint(firstNew[0], a);
    fn.getPoint(firstNew[1], b);
    fn.getPoint(firstNew[2], c);
    EXPECT_LT(((b - a) ^ (c - b)).y, 0.0) << "the new quad faces down, away from the source";
}

TEST_F(Append, ABandBetweenThePlayerRowAndAStrokeMovesThePlayerRowToItsFarSide)
{
    const MDagPath strip = makeStrip();
    const std::string before = meshText(strip);
    tq::setVSpans(2);
    ASSERT_TRUE(tq::appendStroke(straightRow({0, 0, 3}, {1, 0, 0}, 5)));

    auto* cmd = new tqSarnToolCmd();
    ASSERT_TRUE(cmd->appendPatchBetweenStrokes(playerPoints(), accel, false)) << host::logText();
    ASSERT_TRUE(cmd->finalize());

    EXPECT_EQ(MFnMesh(strip).numPolygons(), 4 + 8);
    EXPECT_EQ(countOnSource(strip, range(10, 20)), 5) << "only the middle row is projected onto the sphere";
    MStatus status;
    const MIntArray players = tq::readPlayerVertices(status);
    EXPECT_EQ(ints(players), ints(tq::calculateLAST(4, 2, 10)));
    for (const MPoint& p : playerPoints())
        EXPECT_NEAR(p.z, 3.0, 1e-5) << "the new player row lies on the stroke";
    EXPECT_FALSE(tq::hasStrokePoints());
    expectUndoRedo(strip, before);
}

TEST_F(Append, ABandSweptAlongOneStrokeLeavesNoPlayerRow)
{
    const MDagPath strip = makeStrip();
    const std::string before = meshText(strip);
    // The stroke starts on the player row's middle, where the sweep begins: 3 guide points,
    // the first on the row itself, make 2 bands.
    tq::setVSpans(3);
    ASSERT_TRUE(tq::appendStroke(straightRow({2, 0, 1}, {0, 0, 1}, 5)));

    auto* cmd = new tqSarnToolCmd();
    ASSERT_TRUE(cmd->appendPatchAlongStroke(playerPoints(), accel)) << host::logText();
    ASSERT_TRUE(cmd->finalize());

    MFnMesh fn(strip);
    EXPECT_EQ(fn.numPolygons(), 4 + 8);
    EXPECT_EQ(countOnSource(strip, range(10, fn.numVertices())), fn.numVertices() - 10);
    MStatus status;
    EXPECT_EQ(tq::readPlayerVertices(status).length(), 0u);
    EXPECT_EQ(tq::getUSpans(), 4);
    // Its undo removes the patch, and then reports the store it never saved.
    EXPECT_FALSE(host::undo());
    EXPECT_EQ(meshText(strip), before);
}

} // namespace
