#pragma once
// The fixture of the command suite: the DG and tool test plug-ins loaded, and every test
// from a new scene with an empty log, journal and undo queue.

#include "dgPluginTest.h"

#include <host/commands.h>

#include <maya/MGlobal.h>

#ifndef TOOL_TEST_PLUGIN
#error "TOOL_TEST_PLUGIN must name the path of toolTestPlugin.so"
#endif

class CommandTest : public hosttest::DgPluginTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(hosttest::ensurePluginLoaded(TOOL_TEST_PLUGIN));
        hosttest::DgPluginTest::SetUp();
        host::clearJournal();
        for (const char* name : {"testSet.value", "testTool.value", "a", "b", "c"})
            MGlobal::removeOptionVar(name);
        MGlobal::setSelectionMode(MGlobal::kSelectObjectMode);
    }

    // Runs command text and fails the test, with the log, when it fails.
    host::CommandOutput run(const std::string& text, bool undoEnabled = true)
    {
        host::CommandOutput out = host::runCommand(text, undoEnabled);
        EXPECT_TRUE(out.status) << text << "\n" << host::logText();
        return out;
    }

    // Runs command text that must fail, and returns the log it left.
    std::string failing(const std::string& text)
    {
        host::clearLog();
        host::CommandOutput out = host::runCommand(text);
        EXPECT_FALSE(out.status) << text << " should have failed";
        return host::logText();
    }

    // The plug-in's own log lines, without their "toolTest: " prefix.
    static std::vector<std::string> pluginLines()
    {
        std::vector<std::string> out;
        const std::string prefix = "toolTest: ";
        for (const host::LogEntry& e : host::logEntries())
            if (e.text.compare(0, prefix.size(), prefix) == 0)
                out.push_back(e.text.substr(prefix.size()));
        return out;
    }

    static bool exists(const std::string& name) { return !host::findNode(name).isNull(); }
};
