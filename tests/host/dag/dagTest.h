#pragma once
// The fixture of the DAG suite: the DG suite's, and paths to named nodes.

#include "dgPluginTest.h"

#include <maya/MDagPath.h>

class DagTest : public hosttest::DgPluginTest {
protected:
    // A path to the named node, failing the test when there is none.
    MDagPath pathTo(const std::string& nameOrPath)
    {
        MObject node = host::findNode(nameOrPath);
        EXPECT_FALSE(node.isNull()) << "no node '" << nameOrPath << "'";
        MDagPath path;
        EXPECT_TRUE(MDagPath::getAPathTo(node, path)) << "no DAG path to '" << nameOrPath << "'";
        return path;
    }
};
