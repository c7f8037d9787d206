// Anchors, bridges and merges as a user makes them: Ctrl-Shift-left clicks on border vertices
// of the retopo mesh pick an anchor run (or the whole loop), one stroke grows a band from it,
// a Ctrl-left stroke redraws it, a middle-button press on another border previews a bridge or
// a merge that Enter sends to the host, and a middle-Ctrl drag twists a closed loop. Each
// change of the mesh is one step of the host's undo queue.

#include "toolTest.h"

#include "store/storeAttributes.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"

#include <maya/M3dView.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshEdge.h>

#include <algorithm>
#include <set>

namespace {

using namespace tooltest;
using plugintest::samePoints;

constexpr host::Modifiers kNone{false, false};
constexpr host::Modifiers kShift{true, false};
constexpr host::Modifiers kCtrl{false, true};
constexpr host::Modifiers kShiftCtrl{true, true};

struct Pixel {
    int x, y;
};

class AnchorGesture : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 6);
        MGlobal::setOptionVarValue("tq_vspan", 2);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    // Two horizontal strokes and Enter: a sarn of 6 x 2 quads; its rows (7 vertices each, the
    // first along yA) come back in `near` and `far`.
    void drawSarn(int yA, int yB, MIntArray& near, MIntArray& far)
    {
        ASSERT_TRUE(stroke({230, yA, 390, yA}));
        ASSERT_TRUE(stroke({230, yB, 390, yB}));
        ASSERT_TRUE(host::pressKey(host::Key::kEnter));
        ASSERT_TRUE(mesh().isValid()) << host::logText();
        MIntArray third;
        ASSERT_TRUE(tq::readShadowIndices(near, far, third));
        ASSERT_EQ(near.length(), 7u);
        ASSERT_EQ(far.length(), 7u);
    }

    static MDagPath mesh() { return tq::getActiveMeshPath(); }

    static MPointArray positions()
    {
        MPointArray points;
        MFnMesh(mesh()).getPoints(points, MSpace::kWorld);
        return points;
    }

    static Pixel pixelOf(const MPoint& p)
    {
        short x = 0, y = 0;
        M3dView::active3dView().worldToView(p, x, y);
        return {x, y};
    }

    static Pixel pixelOfVertex(int v) { return pixelOf(positions()[unsigned(v)]); }

    static MStatus click(Pixel at, host::MouseButton button, host::Modifiers held)
    {
        MStatus pressed = host::mousePress(at.x, at.y, button, held);
        MStatus released = host::mouseRelease(at.x, at.y, held);
        return pressed ? released : pressed;
    }

    static MStatus pickAnchor(int vertex) { return click(pixelOfVertex(vertex), host::MouseButton::kLeft, kShiftCtrl); }

    static std::vector<int> playerRow()
    {
        MStatus status;
        return ints(tq::readPlayerVertices(status));
    }

    static MPointArray playerPoints()
    {
        MStatus status;
        return tq::readPlayerPoints(status);
    }

    // A left drag through the pixels in turn, 8 events between each two.
    static MStatus polyStroke(const std::vector<Pixel>& at, host::Modifiers held)
    {
        MStatus status = host::mousePress(at[0].x, at[0].y, host::MouseButton::kLeft, held);
        for (std::size_t k = 1; k < at.size(); ++k)
            for (int i = 1; i <= 8; ++i)
                if (!host::mouseDrag(at[k - 1].x + (at[k].x - at[k - 1].x) * i / 8,
                                     at[k - 1].y + (at[k].y - at[k - 1].y) * i / 8, held))
                    status = MStatus::kFailure;
        MStatus released = host::mouseRelease(at.back().x, at.back().y, held);
        return status ? released : status;
    }

    // The most faces on one edge (2 on a manifold mesh with a border), and the smallest
    // distance between two vertices (0 when a vertex is doubled).
    static int mostFacesOnAnEdge()
    {
        int most = 0;
        for (MItMeshEdge it(mesh()); !it.isDone(); it.next()) {
            int faces = 0;
            it.numConnectedFaces(faces);
            most = std::max(most, faces);
        }
        return most;
    }

    // Triangle meshes the overlay draws in the next frame: the faces a bridge or merge
    // preview will make.
    static long previewMeshes()
    {
        const host::FrameRecords frame = host::drawFrame();
        const host::OverrideRecords* overlay = frame.find("store");
        if (!overlay)
            return 0;
        return std::count_if(overlay->records.begin(), overlay->records.end(), [](const host::DrawRecord& r) {
            return r.primitive == host::DrawPrimitive::kMesh && r.state.xray;
        });
    }

    static double closestPair(const MPointArray& points)
    {
        double closest = 1e30;
        for (unsigned i = 0; i < points.length(); ++i)
            for (unsigned j = i + 1; j < points.length(); ++j)
                closest = std::min(closest, points[i].distanceTo(points[j]));
        return closest;
    }
};

TEST_F(AnchorGesture, TwoClickedBorderVerticesSelectTheRunBetweenThemAndBackspaceStepsBack)
{
    MIntArray near, far;
    ASSERT_NO_FATAL_FAILURE(drawSarn(150, 115, near, far));
    ASSERT_TRUE(pickAnchor(far[0]));
    EXPECT_EQ(info1(), "1 anchor point(s) selected,");
    EXPECT_EQ(playerPoints().length(), 1u);
    ASSERT_TRUE(pickAnchor(far[6]));
    EXPECT_EQ(info1(), "2 anchor point(s) selected,");
    // The shorter way round the border: the sarn's far row, in order from the first click.
    EXPECT_EQ(playerRow(), ints(far));
    const MPointArray all = positions();
    const MPointArray row = playerPoints();
    ASSERT_EQ(row.length(), 7u);
    for (unsigned i = 0; i < 7; ++i)
        EXPECT_TRUE(row[i].isEquivalent(all[unsigned(far[i])], 1e-6)) << i;
    EXPECT_FALSE(tq::hasShadow()) << "the second anchor drops the shadow";

    // A click off the mesh changes nothing.
    ASSERT_TRUE(click({600, 400}, host::MouseButton::kLeft, kShiftCtrl));
    EXPECT_EQ(playerRow(), ints(far));

    // Backspace: back to the first anchor alone, then to none.
    ASSERT_TRUE(host::pressKey(host::Key::kBackspace));
    EXPECT_TRUE(playerRow().empty());
    ASSERT_EQ(playerPoints().length(), 1u);
    EXPECT_TRUE(playerPoints()[0].isEquivalent(all[unsigned(far[0])], 1e-6));
    ASSERT_TRUE(host::pressKey(host::Key::kBackspace));
    EXPECT_EQ(playerPoints().length(), 0u);
    // A new second click picks from the first anchor again.
    ASSERT_TRUE(pickAnchor(far[0]));
    ASSERT_TRUE(pickAnchor(far[3]));
    EXPECT_EQ(playerRow(), (std::vector<int>{far[0], far[1], far[2], far[3]}));
}

TEST_F(AnchorGesture, ClickingOneVertexTwiceSelectsTheWholeBorderLoop)
{
    MIntArray near, far;
    ASSERT_NO_FATAL_FAILURE(drawSarn(150, 115, near, far));
    ASSERT_TRUE(pickAnchor(near[0]));
    ASSERT_TRUE(pickAnchor(near[0]));
    const std::vector<int> loop = playerRow();
    ASSERT_EQ(loop.size(), 2u * (6 + 2) + 1);
    EXPECT_EQ(loop.front(), near[0]);
    EXPECT_EQ(loop.back(), near[0]);
    EXPECT_TRUE(tq::playerLoopClosed());
    // Every border vertex once, each step along a border edge.
    EXPECT_EQ(std::set<int>(loop.begin(), loop.end()).size(), 16u);
    MFnMesh fn(mesh());
    for (std::size_t i = 0; i + 1 < loop.size(); ++i) {
        bool border = false;
        for (MItMeshEdge it(mesh()); !it.isDone(); it.next())
            if ((it.index(0) == loop[i] && it.index(1) == loop[i + 1]) ||
                (it.index(1) == loop[i] && it.index(0) == loop[i + 1]))
                border = it.onBoundary();
        EXPECT_TRUE(border) << loop[i] << " to " << loop[i + 1];
    }
}

// A strip of 1100 quads, all off screen but the vertices the test clicks: its border has 2202
// edges, and a walk gives up after 999 steps.
TEST_F(AnchorGesture, WalksStopAt999StepsOnALongBorder)
{
    constexpr int n = 1100;
    std::vector<plugintest::P3> vertices;
    for (int row = 0; row < 2; ++row)
        for (int i = 0; i <= n; ++i)
            vertices.push_back({1000.0 + i, 1.0 - row, 0.0}); // top row 0..n, bottom row n+1..2n+1
    std::vector<int> counts(n, 4), connects;
    for (int i = 0; i < n; ++i)
        for (int v : {n + 1 + i, n + 2 + i, i + 1, i})
            connects.push_back(v);
    const MPoint c = box.center() + MVector(0.0, 0.0, 0.5 * box.depth());
    const double step = 0.12 * box.width();
    const int top0 = 0, top999 = 999, top1001 = 1001, top550 = 550, bottom550 = n + 1 + 550;
    int k = 0;
    for (int v : {top0, top999, top1001, top550, bottom550}) {
        const MPoint p = c + MVector((k - 2) * step, (k % 2) * step, 0.0);
        vertices[std::size_t(v)] = {p.x, p.y, p.z};
        ++k;
    }
    makeMesh("strip", vertices, counts, connects);
    ASSERT_TRUE(host::select({"strip"}));
    MGlobal::setOptionVarValue("tq_sarnBackFace", 0); // the moved vertices bend the strip

    // 999 edges along the top: found at the limit.
    ASSERT_TRUE(pickAnchor(top0));
    ASSERT_TRUE(pickAnchor(top999));
    std::vector<int> run = playerRow();
    ASSERT_EQ(run.size(), 1000u);
    EXPECT_EQ(run.front(), top0);
    EXPECT_EQ(run.back(), top999);

    // 1001 edges one way, 1201 the other: not found, the row is the first anchor alone.
    ASSERT_TRUE(host::pressKey(host::Key::kEscape));
    ASSERT_TRUE(pickAnchor(top0));
    ASSERT_TRUE(pickAnchor(top1001));
    EXPECT_EQ(playerRow(), std::vector<int>{top0});

    // Across the strip's middle, 1101 edges either way; and the whole loop of 2202.
    ASSERT_TRUE(host::pressKey(host::Key::kEscape));
    ASSERT_TRUE(pickAnchor(top550));
    ASSERT_TRUE(pickAnchor(bottom550));
    EXPECT_EQ(playerRow(), std::vector<int>{top550});
    ASSERT_TRUE(host::pressKey(host::Key::kEscape));
    ASSERT_TRUE(pickAnchor(top550));
    ASSERT_TRUE(pickAnchor(top550));
    EXPECT_EQ(playerRow(), std::vector<int>{top550});
}

TEST_F(AnchorGesture, OneStrokeFromAnchorsGrowsABandOnTheirVerticesAndACtrlStrokeRedrawsIt)
{
    MIntArray near, far;
    ASSERT_NO_FATAL_FAILURE(drawSarn(150, 115, near, far));
    ASSERT_TRUE(pickAnchor(far[0]));
    ASSERT_TRUE(pickAnchor(far[6]));
    const int vertices = MFnMesh(mesh()).numVertices();
    const unsigned queued = host::undoQueueLength();

    ASSERT_TRUE(stroke({230, 80, 390, 80}));
    EXPECT_EQ(info1(), "Sarn Patch created");
    MFnMesh fn(mesh());
    EXPECT_EQ(fn.numPolygons(), 12 + 12);
    EXPECT_EQ(fn.numVertices(), vertices + 7 * 2) << "the anchors' vertices are the band's first row";
    EXPECT_GT(closestPair(positions()), 1e-4);
    EXPECT_EQ(mostFacesOnAnEdge(), 2);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    MIntArray first, last, third;
    ASSERT_TRUE(tq::readShadowIndices(first, last, third));
    EXPECT_EQ(ints(first), ints(far));
    EXPECT_EQ(playerRow(), ints(last));

    // A Ctrl-left stroke a little higher rebuilds the band to it (mode 4): same topology, the
    // far row moved up; one undo puts every vertex back.
    const MPointArray before = positions();
    const Pixel farBefore = pixelOfVertex(last[3]);
    ASSERT_TRUE(stroke({230, 70, 390, 70}, kCtrl));
    EXPECT_EQ(host::journalLines().back(), "tqSarn_redrawPatch");
    EXPECT_EQ(fn.numPolygons(), 24);
    EXPECT_EQ(fn.numVertices(), vertices + 14);
    EXPECT_LT(pixelOfVertex(last[3]).y, farBefore.y - 4);
    host::undo();
    EXPECT_TRUE(samePoints(positions(), before));
}

TEST_F(AnchorGesture, ACtrlStrokeMovesTheAnchorRowOntoItInOneUndoStep)
{
    MIntArray near, far;
    ASSERT_NO_FATAL_FAILURE(drawSarn(150, 115, near, far));
    ASSERT_TRUE(pickAnchor(far[0]));
    ASSERT_TRUE(pickAnchor(far[6]));
    const MPointArray before = positions();
    const unsigned queued = host::undoQueueLength();

    ASSERT_TRUE(stroke({240, 105, 380, 105}, kCtrl));
    EXPECT_EQ(host::journalLines().back(), "tqSarn_redrawBoundary");
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    const MPointArray after = positions();
    ASSERT_EQ(after.length(), before.length());
    EXPECT_NEAR(pixelOf(after[unsigned(far[0])]).x, 240, 2);
    EXPECT_NEAR(pixelOf(after[unsigned(far[6])]).x, 380, 2);
    for (int v : ints(far))
        EXPECT_NEAR(pixelOf(after[unsigned(v)]).y, 105, 2) << v;
    for (int v : ints(near))
        EXPECT_EQ(after[unsigned(v)], before[unsigned(v)]) << "only the row moves";
    host::undo();
    EXPECT_TRUE(samePoints(positions(), before));
}

class BridgeGesture : public AnchorGesture {
protected:
    // Two sarns one above the other, the upper one's far row facing the lower one's near row,
    // and that far row picked as the anchor row.
    void SetUp() override
    {
        AnchorGesture::SetUp();
        ASSERT_NO_FATAL_FAILURE(drawSarn(160, 135, upperNear, upperFar));
        ASSERT_NO_FATAL_FAILURE(drawSarn(100, 75, lowerNear, lowerFar));
        ASSERT_EQ(MFnMesh(mesh()).numPolygons(), 24);
        ASSERT_TRUE(pickAnchor(upperFar[0]));
        ASSERT_TRUE(pickAnchor(upperFar[6]));
    }

    MIntArray upperNear, upperFar, lowerNear, lowerFar;
};

TEST_F(BridgeGesture, MiddleCtrlOnTheFacingBorderPreviewsABridgeThatEnterMakesAndOneUndoTakesBack)
{
    const MPointArray before = positions();
    const unsigned queuedBefore = host::undoQueueLength();
    ASSERT_TRUE(click(pixelOfVertex(lowerNear[0]), host::MouseButton::kMiddle, kCtrl));
    EXPECT_FALSE(loggedError()) << host::logText();
    EXPECT_EQ(host::undoQueueLength(), queuedBefore) << "a preview is no undo step";
    MPointArray facing;
    ASSERT_TRUE(tq::readPointArrayAttr("fusept", facing, tq::findStoreNode()));
    ASSERT_EQ(facing.length(), 7u);
    for (unsigned i = 0; i < 7; ++i)
        EXPECT_TRUE(facing[i].isEquivalent(before[unsigned(lowerNear[i])], 1e-6)) << i;
    MStatus status;
    EXPECT_EQ(tq::readIntAttr("mode", tq::findStoreNode(), status), 1);
    MIntArray triangles;
    tq::readIntArrayAttr("fuseindices", triangles, tq::findStoreNode());
    EXPECT_EQ(triangles.length(), 6u * 6u);
    EXPECT_EQ(MFnMesh(mesh()).numPolygons(), 24) << "nothing changes before Enter";
    EXPECT_EQ(previewMeshes(), 1);

    const unsigned queued = host::undoQueueLength();
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_EQ(info1(), "Bridge creagted");
    MFnMesh fn(mesh());
    // tq_bdiv unset: one division, a row of 7 new vertices and two quads per anchor edge.
    EXPECT_EQ(fn.numPolygons(), 24 + 12);
    EXPECT_EQ(fn.numVertices(), int(before.length()) + 7);
    EXPECT_EQ(mostFacesOnAnEdge(), 2);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    EXPECT_TRUE(playerRow().empty());
    EXPECT_EQ(previewMeshes(), 0);
    host::undo();
    EXPECT_EQ(fn.numPolygons(), 24);
    EXPECT_TRUE(samePoints(positions(), before));
}

TEST_F(BridgeGesture, MiddleShiftOnTheFacingBorderPreviewsAMergeThatEnterMakesAndOneUndoTakesBack)
{
    const MPointArray before = positions();
    ASSERT_TRUE(click(pixelOfVertex(lowerNear[0]), host::MouseButton::kMiddle, kShift));
    MStatus status;
    EXPECT_EQ(tq::readIntAttr("mode", tq::findStoreNode(), status), 0);
    EXPECT_EQ(MFnMesh(mesh()).numVertices(), int(before.length()));

    const unsigned queued = host::undoQueueLength();
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    EXPECT_EQ(info1(), "Boundary edges merged");
    MFnMesh fn(mesh());
    EXPECT_EQ(fn.numPolygons(), 24);
    EXPECT_EQ(fn.numVertices(), int(before.length()) - 7) << "each anchor meets its facing vertex";
    EXPECT_EQ(mostFacesOnAnEdge(), 2);
    // The merged row lies halfway between the two rows it joins.
    const MPoint halfway = before[unsigned(upperFar[3])] + (before[unsigned(lowerNear[3])] - before[unsigned(upperFar[3])]) * 0.5;
    const MPointArray after = positions();
    double nearest = 1e30;
    for (const MPoint& p : after)
        nearest = std::min(nearest, p.distanceTo(halfway));
    EXPECT_LT(nearest, 1e-5);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    host::undo();
    EXPECT_EQ(fn.numVertices(), int(before.length()));
    EXPECT_TRUE(samePoints(positions(), before));
}

TEST_F(BridgeGesture, ReverseBridgeFromThePanelTurnsThePreviewRound)
{
    ASSERT_TRUE(click(pixelOfVertex(lowerNear[0]), host::MouseButton::kMiddle, kCtrl));
    MPointArray facing, turned;
    tq::readPointArrayAttr("fusept", facing, tq::findStoreNode());
    ASSERT_TRUE(host::runCommand("tqSarnContext -e -reverseBridge 1 " + contextName).status);
    EXPECT_EQ(info1(), "Reverse direction");
    tq::readPointArrayAttr("fusept", turned, tq::findStoreNode());
    ASSERT_EQ(turned.length(), 7u);
    EXPECT_TRUE(turned[0].isEquivalent(facing[0], 1e-9)) << "it starts at the picked vertex";
    EXPECT_FALSE(turned[1].isEquivalent(facing[1], 1e-6)) << "and walks the other way";
    ASSERT_TRUE(host::runCommand("tqSarnContext -e -reverseBridge 1 " + contextName).status);
    tq::readPointArrayAttr("fusept", turned, tq::findStoreNode());
    EXPECT_TRUE(samePoints(turned, facing));
}

// With no anchors, a middle-Ctrl drag from a border vertex to one of another sarn merges the
// two in one undo step.
TEST_F(AnchorGesture, MiddleCtrlDragBetweenTwoBorderVerticesMergesThem)
{
    MIntArray upperNear, upperFar, lowerNear, lowerFar;
    ASSERT_NO_FATAL_FAILURE(drawSarn(160, 135, upperNear, upperFar));
    ASSERT_NO_FATAL_FAILURE(drawSarn(100, 75, lowerNear, lowerFar));
    const MPointArray before = positions();
    const Pixel from = pixelOfVertex(upperFar[3]), to = pixelOfVertex(lowerNear[3]);
    const unsigned queued = host::undoQueueLength();
    ASSERT_TRUE(host::mousePress(from.x, from.y, host::MouseButton::kMiddle, kCtrl));
    ASSERT_TRUE(host::mouseDrag((from.x + to.x) / 2, (from.y + to.y) / 2, kCtrl));
    ASSERT_TRUE(host::mouseDrag(to.x, to.y, kCtrl));
    MPointArray magnet;
    tq::readPointArrayAttr("magnetPt", magnet, tq::findStoreNode());
    ASSERT_EQ(magnet.length(), 2u);
    EXPECT_NEAR(magnet[1].x, to.x, 1.0);
    ASSERT_TRUE(host::mouseRelease(to.x, to.y, kCtrl));
    EXPECT_EQ(MFnMesh(mesh()).numVertices(), int(before.length()) - 1);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    host::undo();
    EXPECT_TRUE(samePoints(positions(), before));
}

// A closed anchor loop round a sarn, a band grown from it to a stroke drawn round it, and a
// middle-Ctrl drag that turns the band's outer row: one undo step puts it back.
TEST_F(AnchorGesture, MiddleCtrlDragTwistsTheBandOfAClosedLoopInOneUndoStep)
{
    MIntArray near, far;
    ASSERT_NO_FATAL_FAILURE(drawSarn(140, 110, near, far));
    ASSERT_TRUE(pickAnchor(near[0]));
    ASSERT_TRUE(pickAnchor(near[0]));
    ASSERT_TRUE(tq::playerLoopClosed());
    // Round the sarn in the loop's direction, from beside its first vertex.
    const std::vector<int> loop = playerRow();
    const Pixel start = pixelOfVertex(loop[0]), second = pixelOfVertex(loop[1]);
    const bool alongRow = std::abs(second.x - start.x) > std::abs(second.y - start.y);
    std::vector<Pixel> round{{210, 160}, {410, 160}, {410, 90}, {210, 90}, {210, 160}};
    if (!alongRow)
        std::reverse(round.begin(), round.end());
    ASSERT_TRUE(polyStroke(round, kNone));
    const int faces = MFnMesh(mesh()).numPolygons();
    ASSERT_EQ(faces, 12 + 16 * 2) << host::logText();
    ASSERT_TRUE(tq::playerLoopClosed());
    ASSERT_TRUE(tq::hasShadow());

    const MPointArray before = positions();
    const unsigned queued = host::undoQueueLength();
    ASSERT_TRUE(host::mousePress(500, 300, host::MouseButton::kMiddle, kCtrl));
    for (int dx : {0, 4, 8, 12})
        ASSERT_TRUE(host::mouseDrag(500 + dx, 300, kCtrl));
    ASSERT_TRUE(host::mouseRelease(512, 300, kCtrl));
    EXPECT_FALSE(samePoints(positions(), before)) << "the band turned";
    EXPECT_EQ(MFnMesh(mesh()).numPolygons(), faces);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    host::undo();
    EXPECT_TRUE(samePoints(positions(), before));
}

} // namespace
