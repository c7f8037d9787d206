// Loading the built tqSarn module: its identity, what it registers, the banner once, and a
// registration clash half-way.

#include "host/harness.h"
#include "host/log.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

MStatus initializePlugin(MObject obj);
MStatus uninitializePlugin(MObject obj);

namespace {

int bannerCount()
{
    int count = 0;
    for (const host::LogEntry& entry : host::logEntries())
        count += entry.text.find("(Beta version, use at your own risk)") != std::string::npos;
    return count;
}

class PluginModule : public ::testing::Test {
protected:
    static void unloadAll()
    {
        host::newScene();
        for (const std::string& name : host::loadedPlugins())
            host::unloadPlugin(name);
    }
    void SetUp() override
    {
        unloadAll();
        host::clearLog();
    }
    void TearDown() override { unloadAll(); }
};

TEST_F(PluginModule, LoadsAndUnloadsByPathWithItsIdentityAndOneBanner)
{
    std::string name;
    ASSERT_TRUE(host::loadPlugin(TQSARN_MODULE, &name)) << host::logText();
    EXPECT_EQ(name, "tqSarn");
    const host::PluginRegistrations regs = host::pluginRegistrations(name);
    EXPECT_EQ(regs.vendor, "Halvane");
    EXPECT_EQ(regs.version, "0.97");
    EXPECT_EQ(regs.apiVersion, "Any");
    EXPECT_EQ(regs.nodeTypes, (std::vector<std::string>{"tqSarn", "tqPatchNode"}));
    EXPECT_EQ(regs.commands, std::vector<std::string>{"tqPatchCmd"});
    EXPECT_EQ(regs.contextCommands, std::vector<std::string>{"tqSarnContext"});
    EXPECT_EQ(regs.toolCommands, std::vector<std::string>{"tqSarnCmd"});
    EXPECT_EQ(bannerCount(), 1);
    EXPECT_FALSE(host::createNode("tqSarn").isNull());
    host::newScene();
    EXPECT_TRUE(host::unloadPlugin(name)) << host::logText();
    EXPECT_TRUE(host::createNode("tqSarn").isNull());
}

TEST_F(PluginModule, AClashStopsTheLoadAtThatStepWithoutABanner)
{
    // The same code linked into this program registers the store node first, so the
    // module's own registration of it clashes.
    ASSERT_TRUE(host::loadLinkedPlugin("tqSarnLinked", initializePlugin, uninitializePlugin));
    host::clearLog();
    std::string name;
    EXPECT_FALSE(host::loadPlugin(TQSARN_MODULE, &name));
    EXPECT_EQ(bannerCount(), 0);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "tqSarn")) << host::logText();
    EXPECT_TRUE(host::pluginRegistrations(name).nodeTypes.empty());
    EXPECT_FALSE(host::createNode("tqSarn").isNull()) << "the first registration is untouched";
}

} // namespace
