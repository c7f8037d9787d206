// The undo queue and the journal: built-in and plug-in commands undone and redone in order,
// one entry per call, no entry with undo disabled, and the Undo and Redo events.

#include "commandTest.h"

#include <maya/MDGModifier.h>
#include <maya/MEventMessage.h>
#include <maya/MMessage.h>

using Items = std::vector<std::string>;

class UndoTest : public CommandTest {
protected:
    void TearDown() override
    {
        for (MCallbackId id : fCallbacks)
            MMessage::removeCallback(id);
        CommandTest::TearDown();
    }
    // Counts the named event into `count` for the rest of the test.
    void countEvent(const char* name, int* count)
    {
        fCallbacks.push_back(MEventMessage::addEventCallback(
            name, [](void* data) { ++*static_cast<int*>(data); }, count));
    }
    std::vector<MCallbackId> fCallbacks;
};

TEST_F(UndoTest, BuiltinCommandsAreUndoneAndRedone)
{
    create("dgAffects", "n1");
    create("dgAffects", "n2");
    create("dgAffects", "n3");
    run("connectAttr n1.b n3.a", false);
    host::clearLog();

    run("createNode transform -n made");
    run("setAttr n1.a 4");
    run("connectAttr n2.b n3.a -f");
    run("rename n2 moved");
    run("select -r made");
    ASSERT_EQ(host::undoQueueLength(), 5u);

    ASSERT_TRUE(host::undo()); // select
    EXPECT_EQ(host::selection(), Items{"made"}) << "createNode had selected it";
    ASSERT_TRUE(host::undo()); // rename
    EXPECT_TRUE(exists("n2"));
    ASSERT_TRUE(host::undo()); // connectAttr -f
    EXPECT_EQ(std::string(host::findPlug("n3.a").source().name().asChar()), "n1.b")
        << "the forced connection gives the old one back";
    ASSERT_TRUE(host::undo()); // setAttr
    EXPECT_EQ(host::getDouble("n1.a"), 0.0);
    ASSERT_TRUE(host::undo()); // createNode
    EXPECT_FALSE(exists("made"));
    EXPECT_TRUE(host::selection().empty());
    EXPECT_FALSE(host::undo()) << "nothing left";
    EXPECT_TRUE(host::logContains(host::LogLevel::kWarning, "There are no more commands to undo."));

    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(host::redo());
    EXPECT_TRUE(exists("made"));
    EXPECT_EQ(host::getDouble("n1.a"), 4.0);
    EXPECT_EQ(std::string(host::findPlug("n3.a").source().name().asChar()), "moved.b");
    EXPECT_FALSE(exists("n2"));
    EXPECT_EQ(host::selection(), Items{"made"});
    EXPECT_FALSE(host::redo());
}

TEST_F(UndoTest, DeleteIsUndoneWithItsConnections)
{
    create("dgAffects", "n1");
    create("dgAffects", "n2");
    run("connectAttr n1.b n2.a", false);
    run("delete n1");
    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(exists("n1"));
    EXPECT_EQ(std::string(host::findPlug("n2.a").source().name().asChar()), "n1.b");
    ASSERT_TRUE(host::redo());
    EXPECT_FALSE(exists("n1"));

    // Both in one text are one entry: its undo takes the connection back too.
    run("createNode dgAffects -n n3; connectAttr n3.b n2.a; delete n3");
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(exists("n3"));
    EXPECT_EQ(std::string(host::findPlug("n2.a").source().name().asChar()), "");
}

TEST_F(UndoTest, PluginCommandsUndoInReverseAndRedoInOrder)
{
    run("testSet -n a -v 1");
    run("testSet -n b -v 2");
    run("testSet -n a -v 3");
    host::clearLog();
    ASSERT_TRUE(host::undo());
    EXPECT_EQ(MGlobal::optionVarDoubleValue("a"), 1.0);
    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(MGlobal::optionVarExists("a")) << "undone to before it existed";
    EXPECT_FALSE(MGlobal::optionVarExists("b"));
    ASSERT_TRUE(host::redo());
    ASSERT_TRUE(host::redo());
    EXPECT_EQ(pluginLines(), (Items{"testSet.undoIt a", "testSet.undoIt b", "testSet.undoIt a", "testSet.redoIt a",
                                    "testSet.redoIt b"}));
    EXPECT_EQ(MGlobal::optionVarDoubleValue("a"), 1.0);
    EXPECT_EQ(MGlobal::optionVarDoubleValue("b"), 2.0);
    EXPECT_EQ(host::redoQueueLength(), 1u);
}

TEST_F(UndoTest, OneCallIsOneEntry)
{
    run("testSet -n a -v 1; createNode transform -n t; testSet -n b -v 2");
    EXPECT_EQ(host::undoQueueLength(), 1u);
    host::clearLog();
    ASSERT_TRUE(host::undo());
    EXPECT_EQ(pluginLines(), (Items{"testSet.undoIt b", "testSet.undoIt a"}));
    EXPECT_FALSE(exists("t"));
    ASSERT_TRUE(host::redo());
    EXPECT_TRUE(exists("t"));
    EXPECT_EQ(MGlobal::optionVarDoubleValue("b"), 2.0);
}

TEST_F(UndoTest, UndoDisabledMakesNoEntry)
{
    ASSERT_TRUE(MGlobal::executeCommand("createNode transform -n quiet; testSet -n a -v 1", false, false));
    EXPECT_EQ(host::undoQueueLength(), 0u);
    EXPECT_FALSE(host::undo());
    EXPECT_TRUE(exists("quiet"));
    run("objExists quiet; optionVar -q a");
    EXPECT_EQ(host::undoQueueLength(), 0u) << "a call that changed nothing makes no entry";
}

TEST_F(UndoTest, ANewEntryDropsWhatWasUndone)
{
    run("testSet -n a -v 1");
    run("testSet -n b -v 2");
    ASSERT_TRUE(host::undo());
    host::clearLog();
    run("testSet -n c -v 3");
    EXPECT_EQ(pluginLines(), (Items{"testSet.doIt c", "testSet.destroyed b"}));
    EXPECT_EQ(host::redoQueueLength(), 0u);
    EXPECT_FALSE(host::redo());
    EXPECT_EQ(host::undoQueueLabels(), (Items{"testSet -n a -v 1", "testSet -n c -v 3"}));
}

TEST_F(UndoTest, UndoAndRedoSendTheirEvents)
{
    int undos = 0, redos = 0;
    countEvent("Undo", &undos);
    countEvent("Redo", &redos);
    run("testSet -n a -v 1");
    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(host::redo());
    ASSERT_TRUE(host::undo());
    EXPECT_EQ(undos, 2);
    EXPECT_EQ(redos, 1);
    // The commands of the language reach the same queue.
    run("redo");
    EXPECT_EQ(redos, 2);
    EXPECT_EQ(MGlobal::optionVarDoubleValue("a"), 1.0);
    run("undo");
    EXPECT_EQ(host::undoQueueLength(), 0u) << "undo itself makes no entry";
}

TEST_F(UndoTest, TheJournalEchoesDisplayedCallsAndUndoRedo)
{
    ASSERT_TRUE(MGlobal::executeCommand("  testSet -n a -v 1;  ", true, true));
    ASSERT_TRUE(MGlobal::executeCommand("testSet -n b -v 2", false, true));
    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(host::undo());
    ASSERT_TRUE(host::redo());
    EXPECT_EQ(host::journalLines(),
              (Items{"testSet -n a -v 1;", "undo: testSet -n b -v 2", "undo: testSet -n a -v 1;",
                     "redo: testSet -n a -v 1;"}));
    host::clearJournal();
    EXPECT_TRUE(host::journalLines().empty());
}

TEST_F(UndoTest, ANewSceneEmptiesTheQueue)
{
    run("testSet -n a -v 1");
    host::newScene();
    EXPECT_EQ(host::undoQueueLength(), 0u);
    EXPECT_EQ(pluginLines().back(), "testSet.destroyed a");
}

// MDGModifier::commandToExecute runs text without an undo entry, and undoes it itself.
TEST_F(UndoTest, ModifierCommandTextIsUndoneByTheModifier)
{
    MDGModifier modifier;
    modifier.commandToExecute("createNode transform -n fromModifier");
    ASSERT_TRUE(modifier.doIt());
    EXPECT_TRUE(exists("fromModifier"));
    EXPECT_EQ(host::undoQueueLength(), 0u);
    ASSERT_TRUE(modifier.undoIt());
    EXPECT_FALSE(exists("fromModifier"));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_TRUE(exists("fromModifier"));
}
