// The context command as the panel's scripts send it: edit flags act in their fixed order and
// show their messages on the first info line; query flags answer in theirs, the last set flag
// winning; the interactive sizes and the pinch keep their limits.

#include "../support/pluginTest.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"

#include <host/commands.h>

namespace {

using namespace plugintest;

class ContextCommand : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeStore();
        host::CommandOutput made = host::runCommand("tqSarnContext");
        ASSERT_TRUE(made.status) << host::logText();
        context = made.text;
    }

    // `flags` sent to the context in edit mode; the status comes back.
    MStatus edit(const std::string& flags) { return host::runCommand("tqSarnContext -e " + flags + " " + context).status; }

    std::string query(const std::string& flags)
    {
        host::CommandOutput out = host::runCommand("tqSarnContext -q " + flags + " " + context);
        EXPECT_TRUE(out.status) << host::logText();
        return out.text;
    }

    static double storeDouble(const char* name)
    {
        double value = -1.0;
        EXPECT_TRUE(tq::readDoubleAttr(name, value, tq::findStoreNode()));
        return value;
    }

    static std::string info1() { return MGlobal::optionVarStringValue("tqSarn_info1").asChar(); }

    std::string context;
};

TEST_F(ContextCommand, SpanFlagsSetBothCountsAndQueriesAnswerInTheirOrder)
{
    ASSERT_TRUE(edit("-u 10"));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_uspan"), 10);
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 1) << "-u alone sets V from the argument not given";
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "tqTweakNode")) << "the missing argument is logged";
    host::clearLog();
    ASSERT_TRUE(edit("-uspan 6 -vspan 9"));
    EXPECT_EQ(query("-u"), "6");
    EXPECT_EQ(query("-v"), "9");
    EXPECT_EQ(query("-u -v"), "6") << "U is answered after V";

    // Deliberate in the syntax: the figure is a boolean flag read as an int.
    ASSERT_TRUE(edit("-figure 1"));
    EXPECT_EQ(query("-fig"), "1");
    EXPECT_EQ(query("-v -fig"), "1") << "the figure is answered last";
    EXPECT_FALSE(loggedError()) << host::logText();
}

TEST_F(ContextCommand, InteractiveSizesAboveATenthAreWrittenAndAlwaysShown)
{
    const double move = storeDouble("radiusMoveInteractive");
    ASSERT_TRUE(edit("-rmi 0.1"));
    EXPECT_EQ(storeDouble("radiusMoveInteractive"), move) << "exactly 0.1 writes nothing";
    EXPECT_EQ(info1(), "Move Radius: 0.1");
    ASSERT_TRUE(edit("-radiusmoveinter 2.5"));
    EXPECT_EQ(storeDouble("radiusMoveInteractive"), 2.5);

    ASSERT_TRUE(edit("-rri 3"));
    EXPECT_EQ(storeDouble("radiusRelaxInteractive"), 3.0);
    EXPECT_EQ(info1(), "Relax Radius: 3");
    ASSERT_TRUE(edit("-iri 0.05"));
    EXPECT_NE(storeDouble("intensityRelaxInteractive"), 0.05);
    EXPECT_EQ(info1(), "Relax intensity: 0.05");

    ASSERT_TRUE(edit("-dd 2.5"));
    EXPECT_EQ(storeDouble("displaySize"), 2.5);
    // Several flags in one call act in the command's order: the last message stands.
    ASSERT_TRUE(edit("-rri 4 -freeze 1 -rmi 5"));
    EXPECT_EQ(info1(), "Relax Radius: 4");
}

TEST_F(ContextCommand, PinchIsClampedThroughSinglePrecisionOnBothSides)
{
    ASSERT_TRUE(edit("-pinch 2"));
    EXPECT_EQ(storeDouble("pinch"), double(0.95f));
    EXPECT_EQ(info1().rfind("Pinch value: 0.94999", 0), 0u) << info1();
    ASSERT_TRUE(edit("-pch -0.95"));
    EXPECT_EQ(storeDouble("pinch"), -double(0.95f));
    ASSERT_TRUE(edit("-pch 0.95"));
    EXPECT_EQ(storeDouble("pinch"), 0.95) << "the upper limit itself is kept";
    ASSERT_TRUE(edit("-pch 0.3"));
    EXPECT_EQ(storeDouble("pinch"), 0.3);
}

TEST_F(ContextCommand, FlagsOfPiecesStillToComeAreAcceptedAndTheMessagesShow)
{
    ASSERT_TRUE(edit("-relaxBrush 1"));
    EXPECT_EQ(info1(), "Relax Brush");
    ASSERT_TRUE(edit("-rb 1 -i 0.5 -rad 20"));
    ASSERT_TRUE(edit("-moveBrush 0"));
    EXPECT_EQ(info1(), "Move Brush");
    ASSERT_TRUE(edit("-reverseBridge 1"));
    EXPECT_EQ(info1(), "Reverse direction");
    ASSERT_TRUE(edit("-freezeMedian 0"));
    EXPECT_EQ(info1(), "Freeze Median");
    // Without a view, a sarn or anchors these log what they miss, and the command still succeeds.
    for (const char* flag : {"-relax 1", "-mt 0.01", "-sbl 1", "-slice 1", "-refreshPlayer 1", "-refresh 1", "-b 1"})
        EXPECT_TRUE(edit(flag)) << flag;
    // Enter from the panel: with no strokes, the lines go back to the activation text.
    ASSERT_TRUE(edit("-complete 1"));
    EXPECT_EQ(info1(), "tqSarn activated,");
}

} // namespace
