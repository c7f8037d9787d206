#pragma once
// The fixture of the tool suite: the tool test plug-in loaded, a new scene, the host's select
// tool active, no modifier held, and an empty log, journal and undo queue.

#include "hostTestSupport.h"

#include <host/commands.h>
#include <host/tools.h>

#include <maya/MGlobal.h>

#include <algorithm>

#ifndef TOOL_TEST_PLUGIN
#error "TOOL_TEST_PLUGIN must name the path of toolTestPlugin.so"
#endif

class ToolTest : public hosttest::SceneTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(hosttest::ensurePluginLoaded(TOOL_TEST_PLUGIN));
        hosttest::SceneTest::SetUp();
        host::setToolTo("selectSuperContext");
        // A test that stopped mid-gesture leaves its button down; let go of it.
        host::mouseRelease(0, 0);
        host::holdModifiers({});
        host::clearJournal();
        host::clearLog();
        MGlobal::removeOptionVar("testTool.value");
    }

    // A new context of the test plug-in, by its command; fails the test when none is made.
    std::string makeContext(const std::string& flags = "")
    {
        host::CommandOutput out = host::runCommand("testContext " + flags);
        EXPECT_TRUE(out.status) << host::logText();
        return out.text;
    }

    host::CommandOutput run(const std::string& text)
    {
        host::CommandOutput out = host::runCommand(text);
        EXPECT_TRUE(out.status) << text << "\n" << host::logText();
        return out;
    }

    // The plug-in's log lines, without their "toolTest: " prefix, and test markers.
    static std::vector<std::string> toolLines()
    {
        std::vector<std::string> out;
        const std::string prefix = "toolTest: ";
        for (const host::LogEntry& e : host::logEntries())
            if (e.text.compare(0, prefix.size(), prefix) == 0)
                out.push_back(e.text.substr(prefix.size()));
        return out;
    }

    static bool logged(const std::string& line)
    {
        std::vector<std::string> lines = toolLines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
};
