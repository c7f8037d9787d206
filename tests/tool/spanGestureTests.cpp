// Editing the last sarn as a user does: a middle-Shift drag changes its spans (sideways) and
// its pinch (up and down) live, as one undo step; a Ctrl-left stroke redraws it along a new
// second stroke, keeping the rest of the mesh and the numbering of its vertices.

#include "toolTest.h"

#include "store/storeAttributes.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"

#include <maya/MFnMesh.h>
#include <maya/MItDag.h>

namespace {

using namespace tooltest;
using plugintest::meshText;
using plugintest::samePoints;

constexpr host::Modifiers kShift{true, false};
constexpr host::Modifiers kCtrl{false, true};

class SpanGesture : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        MGlobal::setOptionVarValue("tq_uspan", 4);
        MGlobal::setOptionVarValue("tq_vspan", 4);
        ASSERT_NO_FATAL_FAILURE(connectStore());
        ASSERT_NO_FATAL_FAILURE(activate());
    }

    // Two strokes and Enter: a sarn; the retopo mesh is selected afterwards.
    void drawSarn(int yA, int yB)
    {
        ASSERT_TRUE(stroke({230, yA, 390, yA}));
        ASSERT_TRUE(stroke({230, yB, 390, yB}));
        ASSERT_TRUE(host::pressKey(host::Key::kEnter));
        ASSERT_TRUE(retopo().isValid()) << host::logText();
    }

    static MDagPath retopo() { return tq::getActiveMeshPath(); }

    // A middle-button drag with Shift from (x, y) through each offset in turn.
    static MStatus middleShiftDrag(int x, int y, const std::vector<std::pair<int, int>>& offsets)
    {
        MStatus status = host::mousePress(x, y, host::MouseButton::kMiddle, kShift);
        int lastX = x, lastY = y;
        for (const auto& [dx, dy] : offsets) {
            lastX = x + dx;
            lastY = y + dy;
            MStatus moved = host::mouseDrag(lastX, lastY, kShift);
            if (!moved)
                status = moved;
        }
        MStatus released = host::mouseRelease(lastX, lastY, kShift);
        return status ? released : status;
    }

    unsigned retopoCount() const
    {
        unsigned count = 0;
        for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
            MDagPath path;
            it.getPath(path);
            if (!(path == scan) && !MFnDagNode(path).isIntermediateObject())
                ++count;
        }
        return count;
    }

    static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

    static double storedPinch()
    {
        double pinch = 0.0;
        tq::readDoubleAttr("pinch", pinch, tq::findStoreNode());
        return pinch;
    }

    static std::vector<std::vector<int>> shadowIndices()
    {
        MIntArray a, b, c;
        tq::readShadowIndices(a, b, c);
        return {ints(a), ints(b), ints(c)};
    }

    static MPointArray worldPoints(const MDagPath& mesh)
    {
        MPointArray points;
        MFnMesh(mesh).getPoints(points, MSpace::kWorld);
        return points;
    }
};

TEST_F(SpanGesture, ASeventyFivePixelDragAddsThreeSpansAndOneUndoPutsThePatchBack)
{
    ASSERT_NO_FATAL_FAILURE(drawSarn(130, 80));
    const MDagPath mesh = retopo();
    ASSERT_EQ(MFnMesh(mesh).numPolygons(), 4 * 4);
    const std::string before = meshText(mesh);
    const auto rowsBefore = shadowIndices();
    const unsigned queued = host::undoQueueLength();

    // Every event rebuilds the patch from where the pointer is, measured from the press.
    ASSERT_TRUE(middleShiftDrag(300, 200, {{10, 0}, {30, 0}, {60, 0}, {75, 0}})) << host::logText();
    EXPECT_FALSE(loggedError()) << host::logText();
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_uspan"), 7);
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 7) << "on an open sarn both counts follow";
    EXPECT_EQ(MFnMesh(mesh).numPolygons(), 7 * 7);
    EXPECT_EQ(MFnMesh(mesh).numVertices(), 8 * 8);
    EXPECT_LT(farthestFromScan(worldPoints(mesh)), 1e-3 * box.width());
    EXPECT_EQ(host::nodeNames("tqPatchNode").size(), 1u) << "the patch changes in place";
    EXPECT_EQ(host::undoQueueLength(), queued + 1) << "the whole drag is one step";
    EXPECT_EQ(host::journalLines().back(), "tqSarn_changeSpans");
    const std::string after = meshText(mesh);

    host::undo();
    EXPECT_EQ(meshText(mesh), before);
    EXPECT_EQ(shadowIndices(), rowsBefore);
    host::redo();
    EXPECT_EQ(meshText(mesh), after);
}

TEST_F(SpanGesture, SpansMoveByWholeTwentyFivePixelStepsAndStayWithinOneToFifty)
{
    ASSERT_NO_FATAL_FAILURE(drawSarn(130, 80));
    ASSERT_TRUE(middleShiftDrag(300, 200, {{24, 0}}));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 4);
    ASSERT_TRUE(middleShiftDrag(300, 200, {{-25, 0}}));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 3);
    EXPECT_EQ(MFnMesh(retopo()).numPolygons(), 3 * 3);
    // Far to the left: one span is the least; the sarn is one quad.
    ASSERT_TRUE(middleShiftDrag(300, 200, {{-200, 0}}));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_uspan"), 1);
    EXPECT_EQ(MFnMesh(retopo()).numPolygons(), 1);
    MGlobal::setOptionVarValue("tq_vspan", 12);
    ASSERT_TRUE(middleShiftDrag(0, 200, {{1000, 0}}));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 50);
    EXPECT_FALSE(loggedError()) << host::logText();
}

TEST_F(SpanGesture, PinchFollowsTheVerticalDragAndStopsAtItsLimit)
{
    ASSERT_NO_FATAL_FAILURE(drawSarn(130, 80));
    const MDagPath mesh = retopo();
    const MPointArray flat = worldPoints(mesh);

    ASSERT_TRUE(host::mousePress(300, 200, host::MouseButton::kMiddle, kShift));
    ASSERT_TRUE(host::mouseDrag(300, 275, kShift));
    EXPECT_DOUBLE_EQ(storedPinch(), 0.5);
    EXPECT_TRUE(has(info1(), "Pinch value: 0.5")) << info1();
    const MPointArray pinched = worldPoints(mesh);
    EXPECT_EQ(pinched.length(), flat.length()) << "a pinch keeps the spans";
    EXPECT_FALSE(samePoints(pinched, flat)) << "the spans crowd to one end";
    ASSERT_TRUE(host::mouseDrag(300, 200 - 300, kShift));
    EXPECT_DOUBLE_EQ(storedPinch(), -double(0.95f));
    ASSERT_TRUE(host::mouseRelease(300, 200 - 300, kShift));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 4);

    // Each press drops the pinch again.
    ASSERT_TRUE(host::mousePress(300, 200, host::MouseButton::kMiddle, kShift));
    EXPECT_EQ(storedPinch(), 0.0);
    ASSERT_TRUE(host::mouseRelease(300, 200, kShift));
}

TEST_F(SpanGesture, TheToolCommandsSpanFlagsRebuildTheSarnAsOneUndoStep)
{
    // With no shadow yet the counts are written, and then the command refuses.
    EXPECT_FALSE(host::runCommand("tqSarnCmd -u 5 -v 2").status);
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_uspan"), 5);
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 2);
    host::clearLog();

    ASSERT_NO_FATAL_FAILURE(drawSarn(130, 80));
    const MDagPath mesh = retopo();
    ASSERT_EQ(MFnMesh(mesh).numPolygons(), 5 * 2);
    const std::string before = meshText(mesh);
    const unsigned queued = host::undoQueueLength();
    ASSERT_TRUE(host::runCommand("tqSarnCmd -uspan 3 -vspan 6").status) << host::logText();
    EXPECT_EQ(MFnMesh(mesh).numPolygons(), 3 * 6);
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    EXPECT_LT(farthestFromScan(worldPoints(mesh)), 1e-3 * box.width());
    host::undo();
    EXPECT_EQ(meshText(mesh), before);
    EXPECT_FALSE(loggedError()) << host::logText();
}

TEST_F(SpanGesture, AClosedSarnKeepsAtLeastFourSpansAroundIt)
{
    // Two loops on the flank, each closed on its start by the tool command's -close.
    for (const int y : {150, 110}) {
        ASSERT_TRUE(host::mousePress(250, y, host::MouseButton::kLeft));
        for (const auto& [x, dy] : std::vector<std::pair<int, int>>{{300, -12}, {350, 0}, {300, 12}, {255, 1}})
            ASSERT_TRUE(host::mouseDrag(x, y + dy));
        ASSERT_TRUE(host::mouseRelease(255, y + 1));
    }
    ASSERT_EQ(storedSizes().size(), 2u);
    ASSERT_TRUE(host::runCommand("tqSarnCmd -close 1").status) << host::logText();
    MGlobal::setOptionVarValue("tq_uspan", 12);
    ASSERT_TRUE(host::pressKey(host::Key::kEnter));
    ASSERT_TRUE(tq::shadowIsClosed()) << host::logText();
    const int faces = MFnMesh(retopo()).numPolygons();

    ASSERT_TRUE(middleShiftDrag(300, 200, {{-30 * 25, 0}})) << host::logText();
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_uspan"), 4);
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 4) << "around a loop only U changes";
    EXPECT_EQ(MFnMesh(retopo()).numPolygons(), 4 * 4);
    EXPECT_FALSE(loggedError()) << host::logText();
    host::undo();
    EXPECT_EQ(MFnMesh(retopo()).numPolygons(), faces);
}

TEST_F(SpanGesture, ACtrlStrokeRedrawsTheSarnAndKeepsItsNeighboursAndNumbers)
{
    ASSERT_NO_FATAL_FAILURE(drawSarn(175, 150));
    const MDagPath mesh = retopo();
    const int neighbourCount = MFnMesh(mesh).numVertices();
    ASSERT_NO_FATAL_FAILURE(drawSarn(120, 90));
    ASSERT_TRUE(retopo() == mesh) << "the second sarn joins the selected mesh";
    MFnMesh fn(mesh);
    const MPointArray before = worldPoints(mesh);
    MIntArray countsBefore, cornersBefore;
    fn.getVertices(countsBefore, cornersBefore);
    const unsigned queued = host::undoQueueLength();

    // The second guide stroke drawn again, lower.
    ASSERT_TRUE(stroke({230, 70, 390, 70}, kCtrl)) << host::logText();
    EXPECT_FALSE(loggedError()) << host::logText();
    EXPECT_EQ(host::undoQueueLength(), queued + 1);
    EXPECT_EQ(host::journalLines().back(), "tqSarn_redrawScratch");
    EXPECT_EQ(host::nodeNames("tqPatchNode").size(), 2u) << "no new history";
    EXPECT_EQ(retopoCount(), 1u) << "nothing is left of the generation";
    const MPointArray after = worldPoints(mesh);
    ASSERT_EQ(after.length(), before.length());
    MIntArray counts, corners;
    fn.getVertices(counts, corners);
    EXPECT_EQ(ints(counts), ints(countsBefore));
    EXPECT_EQ(ints(corners), ints(cornersBefore)) << "every quad keeps its vertex numbers";
    for (int i = 0; i < neighbourCount; ++i)
        EXPECT_LT(after[unsigned(i)].distanceTo(before[unsigned(i)]), surfaceTolerance()) << "neighbour vertex " << i;
    // The far row followed the new stroke: the patch grew by the 20 pixels between them.
    double moved = 0.0;
    for (unsigned i = unsigned(neighbourCount); i < after.length(); ++i)
        moved = std::max(moved, after[i].distanceTo(before[i]));
    EXPECT_GT(moved, 1e-3 * box.width());
    EXPECT_LT(farthestFromScan(after), 1e-3 * box.width());

    host::undo();
    EXPECT_TRUE(samePoints(worldPoints(mesh), before));
}

} // namespace
