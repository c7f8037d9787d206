// Loading the built tqSarn module: its identity, what it registers in its order, the banner
// once, a registration clash at each step, and unloading in its own order.
//
// A module that failed half-way cannot be unloaded again (its first deregistration fails), so
// a case that leaves it so needs a process of its own, as ctest gives every case.

#include "host/harness.h"
#include "host/log.h"

#include <maya/MDrawRegistry.h>
#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

int bannerCount()
{
    int count = 0;
    for (const host::LogEntry& entry : host::logEntries())
        count += entry.text.find("(Beta version, use at your own risk)") != std::string::npos;
    return count;
}

// The module's registrations in their order: what another plug-in takes first to make the
// module's own registration clash at that step.
enum class Step { kStoreNode, kDrawOverride, kContextCommand, kTweakNode, kAttachCommand, kPatchNode };

Step gBlockedStep = Step::kStoreNode;

class PlaceHolderNode : public MPxNode {
public:
    static void* creator() { return new PlaceHolderNode; }
    static MStatus initialize() { return MStatus::kSuccess; }
};

// Never called: the registration alone takes the name.
void* noObject() { return nullptr; }
MHWRender::MPxDrawOverride* noOverride(const MObject&) { return nullptr; }

MStatus blockStep(MObject obj)
{
    MFnPlugin plugin(obj, "tqSarn tests", "1.0", "Any");
    switch (gBlockedStep) {
    case Step::kStoreNode:
        return plugin.registerNode("tqSarn", MTypeId(0x80025), PlaceHolderNode::creator, PlaceHolderNode::initialize);
    case Step::kDrawOverride:
        return MHWRender::MDrawRegistry::registerDrawOverrideCreator("drawdb/geometry/tqSarn", "tqSarn", noOverride);
    case Step::kContextCommand:
        return plugin.registerContextCommand("tqSarnContext", noObject);
    case Step::kTweakNode:
        return plugin.registerNode("tqTweakNode", MTypeId(0x80032), PlaceHolderNode::creator,
                                   PlaceHolderNode::initialize);
    case Step::kAttachCommand:
        return plugin.registerCommand("tqPatchCmd", noObject);
    case Step::kPatchNode:
        return plugin.registerNode("tqPatchNode", MTypeId(0x80026), PlaceHolderNode::creator,
                                   PlaceHolderNode::initialize);
    }
    return MStatus::kFailure;
}

MStatus releaseStep(MObject) { return MStatus::kSuccess; }

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
        if (host::isPluginLoaded("tqSarn"))
            GTEST_SKIP() << "an earlier case in this process left the module half-loaded";
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
    EXPECT_EQ(regs.nodeTypes, (std::vector<std::string>{"tqSarn", "tqTweakNode", "tqPatchNode"}));
    EXPECT_EQ(regs.drawOverrides, std::vector<std::string>{"drawdb/geometry/tqSarn|tqSarn"});
    EXPECT_EQ(regs.commands, std::vector<std::string>{"tqPatchCmd"});
    EXPECT_EQ(regs.contextCommands, std::vector<std::string>{"tqSarnContext"});
    EXPECT_EQ(regs.toolCommands, std::vector<std::string>{"tqSarnCmd"});
    EXPECT_EQ(bannerCount(), 1);
    EXPECT_FALSE(host::createNode("tqSarn").isNull());
    host::newScene();
    EXPECT_TRUE(host::unloadPlugin(name)) << host::logText();
    EXPECT_TRUE(host::createNode("tqSarn").isNull());
}

TEST_F(PluginModule, UnloadingTakesTheTweakNodeLast)
{
    std::string name;
    ASSERT_TRUE(host::loadPlugin(TQSARN_MODULE, &name)) << host::logText();
    ASSERT_FALSE(host::createNode("tqTweakNode", "tweak").isNull()) << host::logText();
    EXPECT_FALSE(host::unloadPlugin(name));
    // Every other step ran before the live node stopped the last one.
    const host::PluginRegistrations left = host::pluginRegistrations(name);
    EXPECT_EQ(left.nodeTypes, std::vector<std::string>{"tqTweakNode"});
    EXPECT_TRUE(left.drawOverrides.empty());
    EXPECT_TRUE(left.contextCommands.empty());
    EXPECT_TRUE(left.commands.empty());
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "pluginMain")) << host::logText();
}

class RegistrationClash : public PluginModule, public ::testing::WithParamInterface<Step> {};

TEST_P(RegistrationClash, StopsTheLoadAtThatStepWithoutABanner)
{
    const Step blocked = GetParam();
    gBlockedStep = blocked;
    ASSERT_TRUE(host::loadLinkedPlugin("blocker", blockStep, releaseStep)) << host::logText();
    host::clearLog();
    std::string name;
    EXPECT_FALSE(host::loadPlugin(TQSARN_MODULE, &name));
    EXPECT_EQ(bannerCount(), 0);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "pluginMain")) << host::logText();

    // What the steps before the clash registered stays; nothing from the clash on is there.
    auto before = [blocked](Step step) { return step < blocked; };
    std::vector<std::string> nodes;
    for (auto [step, type] : {std::pair{Step::kStoreNode, "tqSarn"}, std::pair{Step::kTweakNode, "tqTweakNode"},
                              std::pair{Step::kPatchNode, "tqPatchNode"}})
        if (before(step))
            nodes.push_back(type);
    const host::PluginRegistrations regs = host::pluginRegistrations(name);
    EXPECT_EQ(regs.nodeTypes, nodes);
    EXPECT_EQ(regs.drawOverrides.size(), before(Step::kDrawOverride) ? 1u : 0u);
    EXPECT_EQ(regs.contextCommands.size(), before(Step::kContextCommand) ? 1u : 0u);
    EXPECT_EQ(regs.commands.size(), before(Step::kAttachCommand) ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(EachStep, RegistrationClash,
                         ::testing::Values(Step::kStoreNode, Step::kDrawOverride, Step::kContextCommand,
                                           Step::kTweakNode, Step::kAttachCommand, Step::kPatchNode));

} // namespace
