// Application-wide state a plug-in relies on: option variables, named events and node
// attribute callbacks.

#include "dgTest.h"

#include <host/commands.h>

#include <maya/MCallbackIdArray.h>
#include <maya/MEventMessage.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MPlug.h>

#include <string>
#include <vector>

namespace {

using hosttest::str;

using DgMessages = DgTest;

TEST_F(DgMessages, OptionVariablesKeepTheirTypeAndCanBeRemoved)
{
    // Option variables outlive scenes, so each name here is used by this test only.
    const MString intVar = "dgTestsIntVar", doubleVar = "dgTestsDoubleVar", stringVar = "dgTestsStringVar";
    MGlobal::removeOptionVar(intVar);
    MGlobal::removeOptionVar(doubleVar);
    MGlobal::removeOptionVar(stringVar);

    bool exists = true;
    EXPECT_EQ(MGlobal::optionVarIntValue(intVar, &exists), 0);
    EXPECT_FALSE(exists);
    EXPECT_FALSE(MGlobal::optionVarExists(intVar));

    EXPECT_TRUE(MGlobal::setOptionVarValue(intVar, 12));
    EXPECT_TRUE(MGlobal::setOptionVarValue(doubleVar, 0.75));
    EXPECT_TRUE(MGlobal::setOptionVarValue(stringVar, MString("left")));
    exists = false;
    EXPECT_EQ(MGlobal::optionVarIntValue(intVar, &exists), 12);
    EXPECT_TRUE(exists);
    exists = false;
    EXPECT_EQ(MGlobal::optionVarDoubleValue(doubleVar, &exists), 0.75);
    EXPECT_TRUE(exists);
    exists = false;
    EXPECT_EQ(str(MGlobal::optionVarStringValue(stringVar, &exists)), "left");
    EXPECT_TRUE(exists);

    // Overwriting replaces; a new scene leaves option variables alone.
    EXPECT_TRUE(MGlobal::setOptionVarValue(intVar, -3));
    host::newScene();
    EXPECT_EQ(MGlobal::optionVarIntValue(intVar), -3);

    MGlobal::removeOptionVar(intVar);
    EXPECT_FALSE(MGlobal::optionVarExists(intVar));
    exists = true;
    EXPECT_EQ(MGlobal::optionVarIntValue(intVar, &exists), 0);
    EXPECT_FALSE(exists);
    EXPECT_TRUE(MGlobal::optionVarExists(doubleVar)) << "removing one variable removed another";

    MGlobal::removeOptionVar(doubleVar);
    MGlobal::removeOptionVar(stringVar);
}

struct EventCounter {
    int calls = 0;
};

void countEvent(void* clientData) { ++static_cast<EventCounter*>(clientData)->calls; }

TEST_F(DgMessages, EventCallbacksRunUntilRemoved)
{
    EventCounter toolChanged, other, second;
    MStatus status;
    MCallbackId id = MEventMessage::addEventCallback("ToolChanged", countEvent, &toolChanged, &status);
    ASSERT_TRUE(status);
    MCallbackId otherId = MEventMessage::addEventCallback("Undo", countEvent, &other, &status);
    ASSERT_TRUE(status);
    MCallbackId secondId = MEventMessage::addEventCallback("ToolChanged", countEvent, &second, &status);
    ASSERT_TRUE(status);
    EXPECT_NE(id, secondId);

    host::sendEvent("ToolChanged");
    host::sendEvent("ToolChanged");
    EXPECT_EQ(toolChanged.calls, 2);
    EXPECT_EQ(second.calls, 2);
    EXPECT_EQ(other.calls, 0) << "a callback heard an event it did not ask for";

    EXPECT_TRUE(MMessage::removeCallback(id));
    host::sendEvent("ToolChanged");
    EXPECT_EQ(toolChanged.calls, 2) << "a removed callback still runs";
    EXPECT_EQ(second.calls, 3);
    EXPECT_FALSE(MMessage::removeCallback(id)) << "removing twice succeeded";

    MCallbackIdArray ids;
    ids.append(otherId);
    ids.append(secondId);
    EXPECT_TRUE(MMessage::removeCallbacks(ids));
    host::sendEvent("ToolChanged");
    host::sendEvent("Undo");
    EXPECT_EQ(second.calls, 3);
    EXPECT_EQ(other.calls, 0);

    // Unknown event names are refused.
    MEventMessage::addEventCallback("noSuchEventAnywhere", countEvent, &other, &status);
    EXPECT_FALSE(status);
}

TEST_F(DgMessages, SelectionChangedFiresWhenTheSelectionChanges)
{
    create("dgAffects", "picked");
    EventCounter counter;
    MStatus status;
    MCallbackId id = MEventMessage::addEventCallback("SelectionChanged", countEvent, &counter, &status);
    ASSERT_TRUE(status);
    ASSERT_TRUE(MGlobal::selectByName("picked", MGlobal::kReplaceList));
    EXPECT_GE(counter.calls, 1);
    const int afterSelect = counter.calls;
    ASSERT_TRUE(MGlobal::clearSelectionList());
    EXPECT_GT(counter.calls, afterSelect);
    MMessage::removeCallback(id);
}

TEST_F(DgMessages, SessionEventsFireWhenTheirStateChanges)
{
    EventCounter history, mode, saved;
    MStatus status;
    MCallbackId ids[3];
    ids[0] = MEventMessage::addEventCallback("constructionHistoryChanged", countEvent, &history, &status);
    ASSERT_TRUE(status);
    ids[1] = MEventMessage::addEventCallback("SelectModeChanged", countEvent, &mode, &status);
    ASSERT_TRUE(status);
    // Accepted, as every plug-in written for a session expects, though the host never saves.
    ids[2] = MEventMessage::addEventCallback("SceneSaved", countEvent, &saved, &status);
    ASSERT_TRUE(status);

    ASSERT_TRUE(host::runCommand("constructionHistory -tgl false").status);
    ASSERT_TRUE(host::runCommand("constructionHistory -tgl false").status);
    ASSERT_TRUE(host::runCommand("constructionHistory -tgl true").status);
    EXPECT_EQ(history.calls, 2) << "only changes are events";

    MGlobal::setSelectionMode(MGlobal::kSelectObjectMode);
    const int before = mode.calls;
    ASSERT_TRUE(MGlobal::setSelectionMode(MGlobal::kSelectComponentMode));
    ASSERT_TRUE(MGlobal::setSelectionMode(MGlobal::kSelectComponentMode));
    ASSERT_TRUE(MGlobal::setSelectionMode(MGlobal::kSelectObjectMode));
    EXPECT_EQ(mode.calls - before, 2);
    EXPECT_EQ(saved.calls, 0);
    for (MCallbackId id : ids)
        MMessage::removeCallback(id);
}

struct AttributeChange {
    int message;
    std::string plug;
    std::string otherPlug;
};

void recordAttributeChange(MNodeMessage::AttributeMessage msg, MPlug& plug, MPlug& otherPlug, void* clientData)
{
    auto* changes = static_cast<std::vector<AttributeChange>*>(clientData);
    changes->push_back({static_cast<int>(msg), str(plug.partialName(true)),
                        otherPlug.isNull() ? std::string() : str(otherPlug.partialName(true))});
}

TEST_F(DgMessages, AttributeChangedCallbackHearsSetsAndConnections)
{
    MObject node = create("dgConnRecorder", "watched");
    create("dgConnRecorder", "feeder");
    std::vector<AttributeChange> changes;
    MStatus status;
    MCallbackId id = MNodeMessage::addAttributeChangedCallback(node, recordAttributeChange, &changes, &status);
    ASSERT_TRUE(status);

    MCallbackIdArray onNode;
    ASSERT_TRUE(MMessage::nodeCallbacks(node, onNode));
    ASSERT_EQ(onNode.length(), 1u);
    EXPECT_EQ(onNode[0], id);

    ASSERT_TRUE(host::setDouble("watched.input", 2.0));
    bool sawSet = false;
    for (const AttributeChange& c : changes)
        if ((c.message & MNodeMessage::kAttributeSet) && c.plug == "watched.in") {
            sawSet = true;
            EXPECT_FALSE(c.message & MNodeMessage::kOtherPlugSet) << "a set has no other plug";
        }
    EXPECT_TRUE(sawSet) << "no kAttributeSet for watched.in among " << changes.size() << " messages";

    changes.clear();
    host::setDouble("feeder.input", 1.0);
    for (const AttributeChange& c : changes)
        EXPECT_NE(c.plug.rfind("feeder", 0), 0u) << "heard a change on another node: " << c.plug;

    changes.clear();
    ASSERT_TRUE(host::connect("feeder.output", "watched.input"));
    bool sawConnection = false;
    for (const AttributeChange& c : changes)
        if ((c.message & MNodeMessage::kConnectionMade) && c.plug == "watched.in" && c.otherPlug == "feeder.out") {
            sawConnection = true;
            EXPECT_TRUE(c.message & MNodeMessage::kOtherPlugSet) << "callbacks test this bit before reading otherPlug";
        }
    EXPECT_TRUE(sawConnection) << "no kConnectionMade from feeder.out to watched.in";

    ASSERT_TRUE(MMessage::removeCallback(id));
    changes.clear();
    host::setInt("watched.made", 5);
    EXPECT_TRUE(changes.empty()) << "a removed callback still runs";
}

} // namespace
