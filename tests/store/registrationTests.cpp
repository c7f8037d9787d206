// The store node's place in loading and unloading the plug-in.

#include "storeTest.h"

#include "store/storeWrites.h"

#include <maya/MFnDependencyNode.h>

namespace {

using namespace storetest;
using plugintest::kPluginName;

class Registration : public StoreTest {};

TEST_F(Registration, UnloadWithALiveStoreStopsAtTheFirstStep)
{
    MObject store = makeStore();
    EXPECT_EQ(MFnDependencyNode(store).typeId(), MTypeId(0x80025)); // saved scenes know it by this id
    EXPECT_TRUE(store.hasFn(MFn::kPluginLocatorNode));
    EXPECT_EQ(std::string(MFnDependencyNode::classification("tqSarn").asChar()), "drawdb/geometry/tqSarn");
    const host::PluginRegistrations before = host::pluginRegistrations(kPluginName);

    EXPECT_FALSE(host::unloadPlugin(kPluginName));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "pluginMain"));
    // Nothing after the store's step ran: every registration is still in place.
    const host::PluginRegistrations after = host::pluginRegistrations(kPluginName);
    EXPECT_EQ(after.nodeTypes, before.nodeTypes);
    EXPECT_EQ(after.drawOverrides, before.drawOverrides);
    EXPECT_EQ(after.contextCommands, before.contextCommands);
    EXPECT_EQ(after.commands, before.commands);
    EXPECT_TRUE(tq::setPinch(0.3)); // and the store still works

    // Once the store is gone the plug-in unloads, and loads again.
    host::newScene();
    EXPECT_TRUE(host::unloadPlugin(kPluginName)) << host::logText();
    EXPECT_TRUE(host::createNode("tqSarn").isNull());
    ASSERT_TRUE(plugintest::ensurePluginLoaded());
    EXPECT_FALSE(makeStore().isNull());
}

} // namespace
