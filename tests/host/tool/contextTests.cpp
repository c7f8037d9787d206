// Contexts made by a context command: their names, edit and query flags, setToolTo and the
// ToolChanged event, and what happens to them when their plug-in goes.

#include "toolTest.h"

#include <maya/MCommandResult.h>
#include <maya/MEventMessage.h>
#include <maya/MMessage.h>

using Lines = std::vector<std::string>;

class ContextTest : public ToolTest {};

TEST_F(ContextTest, ContextsAreNamedAfterTheirCommand)
{
    std::string first = makeContext();
    std::string second = makeContext();
    const std::string stem = "testContext";
    ASSERT_EQ(first.compare(0, stem.size(), stem), 0) << first;
    ASSERT_EQ(second.compare(0, stem.size(), stem), 0) << second;
    EXPECT_EQ(std::stoi(second.substr(stem.size())), std::stoi(first.substr(stem.size())) + 1);
    EXPECT_EQ(makeContext("myTool"), "myTool");
    EXPECT_FALSE(host::runCommand("testContext myTool").status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "a tool context named 'myTool' exists already"));
}

TEST_F(ContextTest, EditAndQueryFlagsReachItsCommand)
{
    std::string ctx = makeContext();
    run("testContext -e -lv 5 -t \"My title\" " + ctx);
    EXPECT_TRUE(logged("testContextCmd.doEditFlags"));
    host::CommandOutput level = run("testContext -q -lv " + ctx);
    EXPECT_EQ(level.text, "5");
    EXPECT_EQ(level.result.resultType(), MCommandResult::kInt);
    EXPECT_EQ(run("testContext -query -title " + ctx).text, "My title");
    EXPECT_EQ(run("testContext -q -rf " + ctx).text, "0");
    // The flags of one query answer in order: the last one's result stands.
    EXPECT_EQ(run("testContext -q -lv -t " + ctx).text, "My title");
    EXPECT_EQ(host::undoQueueLength(), 0u) << "edits and queries are not undoable";
}

TEST_F(ContextTest, FlagsAtCreationActAsEdits)
{
    std::string ctx = makeContext("-lv 3 -t Made");
    EXPECT_EQ(run("testContext -q -lv " + ctx).text, "3");
    EXPECT_EQ(run("testContext -q -t " + ctx).text, "Made");
}

TEST_F(ContextTest, ExistsAndImagesAreTheHostsFlags)
{
    std::string ctx = makeContext("-i1 \"tool.png\"");
    EXPECT_EQ(run("testContext -exists " + ctx).text, "1");
    EXPECT_EQ(run("testContext -q -ex noSuchContext").text, "0");
    EXPECT_EQ(run("testContext -q -i1 " + ctx).text, "tool.png");
    run("testContext -e -image2 other.png " + ctx);
    EXPECT_EQ(run("testContext -q -i2 " + ctx).text, "other.png");
    EXPECT_FALSE(logged("testContextCmd.doEditFlags")) << "the host's own flags do not reach the plug-in";
}

TEST_F(ContextTest, BadEditsAndQueriesFailClearly)
{
    std::string ctx = makeContext();
    struct Case {
        std::string text;
        std::string message;
    };
    const Case cases[] = {
        {"testContext -e -lv 1 noSuch", "no testContext context named 'noSuch'"},
        {"testContext -e -zz 1 " + ctx, "testContext: Invalid flag '-zz'"},
        {"testContext -e -lv x " + ctx, "expects an integer, got 'x'"},
        {"testContext -q -lv", "needs the name of a context to query"},
        {"testContext -e -q -lv " + ctx, "cannot be used together"},
    };
    for (const Case& c : cases) {
        host::clearLog();
        EXPECT_FALSE(host::runCommand(c.text).status) << c.text;
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, c.message)) << c.text << "\n" << host::logText();
    }
}

TEST_F(ContextTest, SetToolToCleansUpSetsUpThenSendsToolChanged)
{
    auto marker = [](void*) { MGlobal::displayInfo("toolTest: event ToolChanged"); };
    MCallbackId id = MEventMessage::addEventCallback("ToolChanged", marker, nullptr);
    std::string a = makeContext("-t A");
    std::string b = makeContext("-t B");
    host::clearLog();
    run("setToolTo " + a);
    run("setToolTo " + b);
    EXPECT_EQ(toolLines(), (Lines{"testContext.toolOnSetup A", "event ToolChanged", "testContext.toolOffCleanup A",
                                  "testContext.toolOnSetup B", "event ToolChanged"}));
    EXPECT_EQ(run("currentCtx").text, b);
    EXPECT_EQ(host::currentTool(), b);
    EXPECT_EQ(host::toolCursor(), "doubleCrossHairCursor");
    EXPECT_EQ(host::toolTitle(), "B");
    EXPECT_EQ(host::toolHelp(), "Drag to set testTool.value");

    ASSERT_TRUE(host::setToolTo("selectSuperContext"));
    EXPECT_TRUE(logged("testContext.toolOffCleanup B"));
    EXPECT_EQ(host::toolCursor(), "defaultCursor");
    MMessage::removeCallback(id);
}

TEST_F(ContextTest, SetToolToAnUnknownToolChangesNothing)
{
    std::string ctx = makeContext();
    run("setToolTo " + ctx);
    EXPECT_FALSE(host::runCommand("setToolTo noSuchTool").status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "setToolTo: no tool context named 'noSuchTool'"));
    EXPECT_EQ(host::currentTool(), ctx);
    EXPECT_FALSE(logged("testContext.toolOffCleanup Test Tool"));
}

TEST_F(ContextTest, DeleteUIRemovesAToolContextLeavingTheActiveOneFirst)
{
    std::string ctx = makeContext("-t A");
    run("setToolTo " + ctx);
    run("deleteUI -toolContext " + ctx);
    EXPECT_TRUE(logged("testContext.toolOffCleanup A"));
    EXPECT_EQ(host::currentTool(), "selectSuperContext");
    EXPECT_EQ(run("testContext -exists " + ctx).text, "0");
    EXPECT_FALSE(host::runCommand("deleteUI -toolContext " + ctx).status);
    EXPECT_FALSE(host::runCommand("deleteUI -toolContext selectSuperContext").status);
}

TEST_F(ContextTest, TheCompleteFlagReachesTheContext)
{
    std::string ctx = makeContext();
    run("testContext -e -cmp true " + ctx);
    EXPECT_TRUE(logged("testContext.completeAction"));
}

// The plug-in's code goes with its library: its contexts and the undo steps it owns must go
// first.
TEST_F(ContextTest, UnloadingThePluginRetiresItsTools)
{
    std::string ctx = makeContext();
    run("setToolTo " + ctx);
    ASSERT_TRUE(host::mousePress(1, 1));
    ASSERT_TRUE(host::mouseDrag(5, 5));
    ASSERT_TRUE(host::mouseRelease(9, 9));
    ASSERT_EQ(host::undoQueueLength(), 1u);

    run("unloadPlugin toolTestPlugin");
    EXPECT_EQ(host::currentTool(), "selectSuperContext");
    EXPECT_TRUE(logged("testContext.toolOffCleanup Test Tool"));
    EXPECT_TRUE(logged("testToolCmd.destroyed 9")) << "the undo queue let go of the tool command";
    EXPECT_EQ(host::undoQueueLength(), 0u);
    EXPECT_FALSE(host::runCommand("setToolTo " + ctx).status);

    run(std::string("loadPlugin \"") + TOOL_TEST_PLUGIN + "\"");
    EXPECT_FALSE(makeContext().empty());
}
