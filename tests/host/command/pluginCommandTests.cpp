// Plug-in commands run through the host: syntax checks before doIt, results of every kind
// through MGlobal::executeCommand and MCommandResult, the exception barrier, and when an
// instance is kept or deleted.

#include "commandTest.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <algorithm>

using Items = std::vector<std::string>;

class PluginCommandTest : public CommandTest {};

TEST_F(PluginCommandTest, ResultsReachEveryExecuteCommandForm)
{
    MStringArray strings;
    ASSERT_TRUE(MGlobal::executeCommand("testArgs -am 3 -s x", strings));
    ASSERT_EQ(strings.length(), 2u);
    EXPECT_EQ(hosttest::str(strings[1]), "s=x");

    run("testSet -n a -v 2.5");
    double d = 0.0;
    ASSERT_TRUE(MGlobal::executeCommand("testSet -q -n a", d));
    EXPECT_EQ(d, 2.5);
    int i = 0;
    ASSERT_TRUE(MGlobal::executeCommand("testSet -q -n a", i));
    EXPECT_EQ(i, 2);
    MString text;
    ASSERT_TRUE(MGlobal::executeCommand("testSet -q -n a", text));
    EXPECT_EQ(hosttest::str(text), "2.5");
    EXPECT_EQ(hosttest::str(MGlobal::executeCommandStringResult("testSet -q -n a")), "2.5");

    MCommandResult result;
    ASSERT_TRUE(MGlobal::executeCommand("testSet -q -n a", result));
    EXPECT_EQ(result.resultType(), MCommandResult::kDouble);
    ASSERT_TRUE(result.getResult(d));
    EXPECT_EQ(d, 2.5);
    EXPECT_FALSE(result.getResult(text)) << "a double is not a string";
    ASSERT_TRUE(MGlobal::executeCommand("testArgs -am 1", result));
    EXPECT_EQ(result.resultType(), MCommandResult::kStringArray);
    EXPECT_FALSE(result.getResult(d));

    create("dgAttrKinds", "k");
    run("setAttr k.vectorAttr 1 2 3");
    MDoubleArray doubles;
    ASSERT_TRUE(MGlobal::executeCommand("getAttr k.vectorAttr", doubles));
    EXPECT_EQ(doubles.length(), 3u);
    EXPECT_EQ(doubles[2], 3.0);
    MIntArray ints;
    ASSERT_TRUE(MGlobal::executeCommand("objExists k", ints));
    ASSERT_EQ(ints.length(), 1u);
    EXPECT_EQ(ints[0], 1);
}

TEST_F(PluginCommandTest, SelectionItemsAndDefaultObjects)
{
    run("createNode transform -n a; createNode transform -n b");
    EXPECT_EQ(run("testArgs -sel a thing").items, (Items{"sel=a", "obj=thing"}));
    run("select -r a b");
    EXPECT_EQ(run("testArgs").items, (Items{"obj=a", "obj=b"})) << "no objects given: the selection";
    std::string log = failing("testArgs -sel nothing");
    EXPECT_NE(log.find("No object matches name: nothing"), std::string::npos) << log;
}

TEST_F(PluginCommandTest, EditAndQueryModes)
{
    EXPECT_EQ(run("testArgs -q -am -d").items, (Items{"am=0", "d=0", "q"}))
        << "in query mode the flags take no arguments";
    EXPECT_EQ(run("testArgs -e -am 4").items, (Items{"am=4", "e"}));
    EXPECT_NE(failing("testArgs -e -q").find("cannot be used together"), std::string::npos);
    EXPECT_NE(failing("testSet -e -v 1").find("the command has no edit mode"), std::string::npos);
}

TEST_F(PluginCommandTest, AThrowingDoItIsCaughtAndNamed)
{
    std::string log = failing("testSet -v 1 -t");
    EXPECT_NE(log.find("testSet.doIt"), std::string::npos) << log;
    EXPECT_NE(log.find("throws on purpose"), std::string::npos) << log;
    EXPECT_EQ(host::undoQueueLength(), 0u);
    Items lines = pluginLines();
    EXPECT_NE(std::find(lines.begin(), lines.end(), "testSet.destroyed testSet.value"), lines.end())
        << "the failed instance is deleted";
}

TEST_F(PluginCommandTest, AFailingDoItReportsItself)
{
    std::string log = failing("testSet -v 1 -f");
    EXPECT_NE(log.find("testSet fails on purpose"), std::string::npos) << log;
    EXPECT_NE(log.find("testSet: the command failed"), std::string::npos) << log;
    EXPECT_EQ(host::undoQueueLength(), 0u);
}

TEST_F(PluginCommandTest, OnlyUndoableInstancesRunWithUndoAreKept)
{
    run("testSet -n a -v 1 -nu");
    EXPECT_EQ(pluginLines(), (Items{"testSet.doIt a", "testSet.destroyed a"}))
        << "a command that is not undoable is deleted after doIt";
    host::clearLog();
    ASSERT_TRUE(MGlobal::executeCommand("testSet -n b -v 1", false, false));
    EXPECT_EQ(pluginLines(), (Items{"testSet.doIt b", "testSet.destroyed b"})) << "undo disabled: no entry";
    host::clearLog();
    run("testSet -n c -v 1");
    EXPECT_EQ(pluginLines(), Items{"testSet.doIt c"}) << "the undo queue owns it";
    EXPECT_EQ(host::undoQueueLength(), 1u);
    EXPECT_EQ(MGlobal::optionVarDoubleValue("b"), 1.0);
}

TEST_F(PluginCommandTest, ToolCommandsRunAsText)
{
    run("testToolCmd -v 4");
    EXPECT_EQ(MGlobal::optionVarDoubleValue("testTool.value"), 4.0);
    EXPECT_EQ(host::undoQueueLength(), 1u);
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(MGlobal::optionVarExists("testTool.value"));
    EXPECT_NE(failing("testToolCmd -v").find("testToolCmd: the flag '-v' needs 1 argument(s)"), std::string::npos);
}
