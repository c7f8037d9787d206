// The relax and move brushes on a sarn over the scan: what they move, what they must leave
// alone, that every moved vertex stays on the scan, and that a stroke of many drag events is
// one undo step.

#include "toolTest.h"

#include "store/storeLookup.h"

#include <maya/M3dView.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshVertex.h>

#include <cmath>

namespace {

using namespace tooltest;

class Brushes : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 6);
        MGlobal::setOptionVarValue("tq_vspan", 3);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
        ASSERT_TRUE(stroke({230, 140, 390, 140}));
        ASSERT_TRUE(stroke({230, 70, 390, 70}));
        ASSERT_TRUE(host::pressKey(host::Key::kEnter));
        sarn = tq::getActiveMeshPath();
        ASSERT_TRUE(sarn.isValid());
        ASSERT_EQ(MFnMesh(sarn).numPolygons(), 18);
    }

    // A world radius for a brush option: relax reads its option times 0.05, move times 0.03.
    static void setRelaxRadius(double world) { MGlobal::setOptionVarValue("tq_sarnRadius", world / 0.05); }
    static void setMoveRadius(double world) { MGlobal::setOptionVarValue("tq_sarnTweakR", int(world / 0.03)); }

    MPointArray positions() const
    {
        MPointArray out;
        MFnMesh(sarn).getPoints(out, MSpace::kWorld);
        return out;
    }

    // The pixel of the sarn's vertex `v`.
    void pixelOf(int v, short& x, short& y) const
    {
        M3dView::active3dView().worldToView(positions()[unsigned(v)], x, y);
    }

    // How far the interior vertices stand from the middle of their neighbours, summed: 0 for
    // an even grid, large for a crumpled one.
    double unevenness() const
    {
        const MPointArray p = positions();
        double sum = 0.0;
        for (MItMeshVertex it(sarn); !it.isDone(); it.next()) {
            if (it.onBoundary())
                continue;
            MIntArray around;
            it.getConnectedVertices(around);
            MVector middle;
            for (int n : around)
                middle += MVector(p[unsigned(n)]) / double(around.length());
            sum += (MVector(p[unsigned(it.index())]) - middle).length();
        }
        return sum;
    }

    static std::vector<int> boundaryVertices(const MDagPath& mesh)
    {
        std::vector<int> out;
        for (MItMeshVertex it(mesh); !it.isDone(); it.next())
            if (it.onBoundary())
                out.push_back(it.index());
        return out;
    }

    // Pulls the interior vertices unevenly along the sarn, then puts them back on the scan.
    void crumple()
    {
        MFnMesh mesh(sarn);
        MPointArray p = positions();
        const std::vector<int> border = boundaryVertices(sarn);
        const MVector along = p[1] - p[0];
        for (unsigned v = 0; v < p.length(); ++v)
            if (std::find(border.begin(), border.end(), int(v)) == border.end())
                p[v] += along * (v % 2 ? 0.45 : -0.3);
        for (MPoint& q : p) {
            MPointOnMesh nearest;
            onSurface.getClosestPoint(q, nearest);
            q = MPoint(nearest.getPoint()) * scan.inclusiveMatrix();
        }
        ASSERT_TRUE(mesh.setPoints(p, MSpace::kWorld));
    }

    // A middle-button stroke of `steps` drag events from the pixel (x, y), `dx` across.
    static void brushStroke(short x, short y, int dx, int steps, host::Modifiers held)
    {
        ASSERT_TRUE(host::mousePress(x, y, host::MouseButton::kMiddle, held));
        for (int i = 1; i <= steps; ++i)
            host::mouseDrag(x + dx * i / steps, y, held);
        ASSERT_TRUE(host::mouseRelease(x + dx, y, held));
    }

    MDagPath sarn;
};

TEST_F(Brushes, RelaxWithAFrozenBorderEvensTheSarnOnTheScanInOneUndoStep)
{
    ASSERT_NO_FATAL_FAILURE(crumple());
    const MPointArray crumpled = positions();
    const double unevenBefore = unevenness();
    ASSERT_TRUE(host::runCommand("tqSarnContext -e -freeze 1 " + contextName).status);
    setRelaxRadius(box.width());
    const unsigned queued = host::undoQueueLength();

    ASSERT_NO_FATAL_FAILURE(brushStroke(310, 105, 20, 15, {true, true}));
    EXPECT_EQ(host::undoQueueLength(), queued + 1) << "fifteen drag events, one step";
    EXPECT_EQ(host::journalLines().back(), "tqSarn_brushRelax");
    const MPointArray relaxed = positions();
    EXPECT_LT(unevenness(), 0.6 * unevenBefore);
    EXPECT_LT(farthestFromScan(relaxed), surfaceTolerance());
    for (int v : boundaryVertices(sarn))
        EXPECT_TRUE(relaxed[unsigned(v)].isEquivalent(crumpled[unsigned(v)], 1e-9)) << "border vertex " << v;

    host::undo();
    EXPECT_TRUE(plugintest::samePoints(positions(), crumpled));
    host::redo();
    EXPECT_TRUE(plugintest::samePoints(positions(), relaxed));
}

TEST_F(Brushes, RelaxLeavesVerticesOutsideItsSphereWhereTheyAre)
{
    ASSERT_NO_FATAL_FAILURE(crumple());
    short x, y;
    pixelOf(9, x, y);
    setRelaxRadius(0.05 * box.width());
    const MPointArray before = positions();
    ASSERT_NO_FATAL_FAILURE(brushStroke(x, y, 0, 5, {true, true}));
    const MPointArray after = positions();
    int moved = 0;
    for (unsigned v = 0; v < after.length(); ++v) {
        if (before[v].distanceTo(before[9]) > 0.06 * box.width()) {
            EXPECT_TRUE(after[v].isEquivalent(before[v], 1e-9)) << "vertex " << v << " is outside the brush";
        }
        moved += after[v].isEquivalent(before[v], 1e-9) ? 0 : 1;
    }
    EXPECT_GT(moved, 0);
}

TEST_F(Brushes, MoveFollowsThePointerWithItsFalloffAndUndoesInOneStep)
{
    const MPointArray before = positions();
    short x, y;
    pixelOf(9, x, y);
    setMoveRadius(0.15 * box.width());
    const unsigned queued = host::undoQueueLength();
    ASSERT_NO_FATAL_FAILURE(brushStroke(x, y, 25, 10, {}));
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    EXPECT_EQ(host::journalLines().back(), "tqSarn_tweak");
    const MPointArray after = positions();
    EXPECT_LT(farthestFromScan(after), surfaceTolerance());

    // The vertex under the press follows the cursor most; the farther, the less.
    const double centre = after[9].distanceTo(before[9]);
    EXPECT_GT(centre, 0.01 * box.width());
    for (unsigned v = 0; v < after.length(); ++v) {
        if (v != 9 && before[v].distanceTo(before[9]) > 0.05 * box.width()) {
            EXPECT_LT(after[v].distanceTo(before[v]), centre) << "vertex " << v;
        }
    }
    host::undo();
    EXPECT_TRUE(plugintest::samePoints(positions(), before));
    host::redo();
    EXPECT_TRUE(plugintest::samePoints(positions(), after));
}

TEST_F(Brushes, BackFacingVerticesAreLeftAloneUnlessTheOptionSaysOtherwise)
{
    ASSERT_NO_FATAL_FAILURE(crumple());
    // From behind the scan the sarn looks away from the camera.
    MStatus status;
    const MPoint centre = box.center();
    MObject behind = host::makeCamera(centre - MVector(0.0, 0.0, 1.6 * box.width()), centre, 54.43, "", &status);
    ASSERT_TRUE(host::setActiveView(host::makeView(640, 480, behind, &status)));
    short x, y;
    pixelOf(9, x, y);
    setRelaxRadius(box.width());
    const MPointArray before = positions();
    ASSERT_NO_FATAL_FAILURE(brushStroke(x, y, 0, 5, {true, true}));
    EXPECT_TRUE(plugintest::samePoints(positions(), before));

    MGlobal::setOptionVarValue("tq_sarnBackFace", 0);
    ASSERT_NO_FATAL_FAILURE(brushStroke(x, y, 0, 5, {true, true}));
    EXPECT_FALSE(plugintest::samePoints(positions(), before));
    MGlobal::removeOptionVar("tq_sarnBackFace");
}

} // namespace
