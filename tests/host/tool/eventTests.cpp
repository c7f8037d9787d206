// Events of the view delivered to the active context: every button and modifier, a modifier
// let go before the button, keys, the undo step a gesture makes, and frames drawn on refresh.

#include "toolTest.h"

#include <host/viewport.h>

#include <maya/MPoint.h>

using Lines = std::vector<std::string>;
using host::Modifiers;
using host::MouseButton;

class EventTest : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        fContext = makeContext();
        host::setToolTo(fContext);
        host::clearLog();
    }

    // The context's event lines ("doPress ...") and nothing else.
    static Lines eventLines()
    {
        Lines out;
        for (const std::string& line : toolLines())
            if (line.compare(0, 14, "testContext.do") == 0)
                out.push_back(line.substr(12));
        return out;
    }

    std::string fContext;
};

TEST_F(EventTest, EveryButtonAndModifierReachesTheHandlers)
{
    const std::pair<MouseButton, int> buttons[] = {{MouseButton::kLeft, 64}, {MouseButton::kMiddle, 128}};
    for (const auto& button : buttons) {
        for (int shift = 0; shift < 2; ++shift) {
            for (int ctrl = 0; ctrl < 2; ++ctrl) {
                host::clearLog();
                Modifiers held{shift == 1, ctrl == 1};
                ASSERT_TRUE(host::mousePress(10, 20, button.first, held));
                ASSERT_TRUE(host::mouseDrag(11, 21));
                ASSERT_TRUE(host::mouseRelease(12, 22));
                std::string state = "button=" + std::to_string(button.second) + " shift=" + std::to_string(shift) +
                                    " ctrl=" + std::to_string(ctrl);
                EXPECT_EQ(eventLines(), (Lines{"doPress " + state + " at 10,20", "doDrag " + state + " at 11,21",
                                               "doRelease " + state + " at 12,22"}));
            }
        }
    }
}

TEST_F(EventTest, AModifierLetGoBeforeTheButtonIsSeenAtRelease)
{
    ASSERT_TRUE(host::mousePress(5, 5, MouseButton::kLeft, Modifiers{false, true}));
    ASSERT_TRUE(host::mouseDrag(6, 6));
    ASSERT_TRUE(host::mouseRelease(7, 7, Modifiers{}));
    EXPECT_EQ(eventLines(), (Lines{"doPress button=64 shift=0 ctrl=1 at 5,5", "doDrag button=64 shift=0 ctrl=1 at 6,6",
                                   "doRelease button=64 shift=0 ctrl=0 at 7,7"}));
    // Shift taken mid-drag shows from that event on.
    host::clearLog();
    ASSERT_TRUE(host::mousePress(1, 1, MouseButton::kMiddle));
    host::holdModifiers(Modifiers{true, false});
    ASSERT_TRUE(host::mouseDrag(2, 2));
    ASSERT_TRUE(host::mouseRelease(3, 3));
    EXPECT_EQ(eventLines(), (Lines{"doPress button=128 shift=0 ctrl=0 at 1,1",
                                   "doDrag button=128 shift=1 ctrl=0 at 2,2",
                                   "doRelease button=128 shift=1 ctrl=0 at 3,3"}));
}

TEST_F(EventTest, TheRightButtonBelongsToTheView)
{
    ASSERT_TRUE(host::mousePress(1, 1, MouseButton::kRight));
    ASSERT_TRUE(host::mouseDrag(2, 2));
    ASSERT_TRUE(host::mouseRelease(3, 3));
    EXPECT_TRUE(eventLines().empty());
}

TEST_F(EventTest, PointerMovesAndKeys)
{
    ASSERT_TRUE(host::pointerMove(3, 4, Modifiers{true, false}));
    EXPECT_EQ(eventLines(), Lines{"doPtrMoved button=0 shift=1 ctrl=0 at 3,4"});
    for (host::Key key : {host::Key::kEnter, host::Key::kBackspace, host::Key::kDelete, host::Key::kEscape})
        ASSERT_TRUE(host::pressKey(key));
    Lines actions;
    for (const std::string& line : toolLines())
        if (line.find("Action") != std::string::npos)
            actions.push_back(line);
    EXPECT_EQ(actions, (Lines{"testContext.completeAction", "testContext.deleteAction", "testContext.deleteAction",
                              "testContext.abortAction"}));
}

TEST_F(EventTest, EventsOutOfOrderFailAndChangeNothing)
{
    EXPECT_FALSE(host::mouseDrag(1, 1));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "mouseDrag: no mouse button is down"));
    EXPECT_FALSE(host::mouseRelease(1, 1));
    ASSERT_TRUE(host::mousePress(1, 1));
    EXPECT_FALSE(host::mousePress(2, 2, MouseButton::kMiddle));
    EXPECT_FALSE(host::pointerMove(2, 2));
    EXPECT_FALSE(host::mouseDrag(40000, 2));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "is out of range"));
    ASSERT_TRUE(host::mouseRelease(3, 3));
    EXPECT_EQ(eventLines(),
              (Lines{"doPress button=64 shift=0 ctrl=0 at 1,1", "doRelease button=64 shift=0 ctrl=0 at 3,3"}));
}

TEST_F(EventTest, ADragIsOneUndoStep)
{
    ASSERT_TRUE(host::mousePress(1, 1));
    ASSERT_TRUE(host::mouseDrag(20, 5));
    ASSERT_TRUE(host::mouseRelease(37, 5));
    EXPECT_EQ(host::undoQueueLength(), 1u);
    EXPECT_EQ(host::journalLines(), Lines{"testToolCmd -v 37"}) << "finalize journals its argument list";
    EXPECT_EQ(MGlobal::optionVarDoubleValue("testTool.value"), 37.0);

    ASSERT_TRUE(host::mousePress(50, 50));
    ASSERT_TRUE(host::mouseRelease(50, 50));
    EXPECT_EQ(host::undoQueueLength(), 1u) << "a click without a drag finalizes nothing";

    host::clearLog();
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(MGlobal::optionVarExists("testTool.value"));
    ASSERT_TRUE(host::redo());
    EXPECT_EQ(MGlobal::optionVarDoubleValue("testTool.value"), 37.0);
    EXPECT_EQ(toolLines(), (Lines{"testToolCmd.undoIt 37", "testToolCmd.redoIt 37"}));
    EXPECT_EQ(host::journalLines(),
              (Lines{"testToolCmd -v 37", "undo: testToolCmd -v 37", "redo: testToolCmd -v 37"}));
}

TEST_F(EventTest, ToolCommandsNotFinalizedGoAtTheNextPress)
{
    ASSERT_TRUE(host::mousePress(1, 1));
    ASSERT_TRUE(host::mouseDrag(2, 2));
    ASSERT_TRUE(host::mouseRelease(8, 2));
    EXPECT_FALSE(logged("testToolCmd.destroyed -8")) << "the context may still use it";
    ASSERT_TRUE(host::mousePress(1, 1));
    EXPECT_TRUE(logged("testToolCmd.destroyed -8"));
    EXPECT_FALSE(logged("testToolCmd.destroyed 8")) << "the finalized one belongs to the undo queue";
    ASSERT_TRUE(host::mouseRelease(1, 1));
}

TEST_F(EventTest, ARefreshDrawsAFrameWithTheFeedback)
{
    MStatus status;
    MObject camera = host::makeCamera(MPoint(0.0, 0.0, 10.0), MPoint(0.0, 0.0, 0.0), 54.43, "", &status);
    ASSERT_TRUE(status) << host::logText();
    host::makeView(200, 100, camera, &status);
    ASSERT_TRUE(status) << host::logText();

    unsigned before = host::toolFramesDrawn();
    ASSERT_TRUE(host::mousePress(10, 10));
    ASSERT_TRUE(host::mouseDrag(50, 60));
    EXPECT_EQ(host::toolFramesDrawn(), before) << "the context asked for no refresh";
    EXPECT_FALSE(logged("testContext.drawFeedback"));
    ASSERT_TRUE(host::mouseRelease(50, 60));

    run("testContext -e -rf true " + fContext);
    ASSERT_TRUE(host::mousePress(10, 10));
    ASSERT_TRUE(host::mouseDrag(50, 60));
    EXPECT_EQ(host::toolFramesDrawn(), before + 2);
    EXPECT_TRUE(logged("testContext.drawFeedback"));
    host::FrameRecords frame = host::drawFrame();
    ASSERT_EQ(frame.feedback.size(), 2u) << "the drag's line and the feedback's point";
    EXPECT_EQ(frame.feedback[0].primitive, host::DrawPrimitive::kLine);
    EXPECT_TRUE(frame.feedback[0].is2d);
    ASSERT_EQ(frame.feedback[0].points.size(), 2u);
    EXPECT_EQ(frame.feedback[0].points[1], MPoint(50.0, 60.0, 0.0));
    EXPECT_EQ(frame.feedback[1].primitive, host::DrawPrimitive::kPoint);
    ASSERT_TRUE(host::mouseRelease(50, 60));
}

TEST_F(EventTest, AThrowingHandlerIsCaughtAndNamed)
{
    run("testContext -e -lv 13 " + fContext);
    EXPECT_FALSE(host::mousePress(4, 4));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, fContext + ".doPress"));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "throws on purpose"));
    // The gesture goes on: the button is down, and the other handlers still run.
    ASSERT_TRUE(host::mouseRelease(4, 4));
    EXPECT_TRUE(logged("testContext.doRelease button=64 shift=0 ctrl=0 at 4,4"));
}
