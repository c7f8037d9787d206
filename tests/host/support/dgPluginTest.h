#pragma once
// The fixture of the suites that drive the DG test plug-in: the plug-in loaded once per
// process, and a new scene with an empty log for every test.

#include "hostTestSupport.h"

#ifndef DG_TEST_PLUGIN
#error "DG_TEST_PLUGIN must name the path of dgTestPlugin.so"
#endif

namespace hosttest {

class DgPluginTest : public SceneTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
        SceneTest::SetUp();
    }

    // Creates a node and fails the test when that does not work.
    MObject create(const std::string& type, const std::string& name, const std::string& parent = "")
    {
        MStatus status;
        MObject node = host::createNode(type, name, parent, &status);
        EXPECT_TRUE(status) << "createNode " << type << " '" << name << "':\n" << host::logText();
        EXPECT_FALSE(node.isNull()) << "createNode " << type << " '" << name << "'";
        return node;
    }
};

} // namespace hosttest
