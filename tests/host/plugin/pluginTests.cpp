// The plug-in loader: loading by path, what a plug-in registered and in which order,
// refusing to unload while its nodes live, half-failed initializes, exceptions thrown by
// initializePlugin, and plug-ins linked into the program.

#include "hostTestSupport.h"

#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

#include <algorithm>
#include <string>
#include <vector>

#ifndef DG_TEST_PLUGIN
#error "DG_TEST_PLUGIN, CLASH_PLUGIN and THROW_PLUGIN must name the test plug-ins"
#endif

namespace {

using host::LogLevel;
using hosttest::ensurePluginLoaded;
using hosttest::joined;
using hosttest::nameOf;
using hosttest::str;

const std::vector<std::string> kDgTypes = {"dgAttrKinds",    "dgAffects", "testMeshModifier", "dgRefuse",
                                           "dgForgetful",    "dgArraySum", "dgConnRecorder",  "dgThrower",
                                           "dgHooks",        "dgLocator"};

bool contains(const std::vector<std::string>& items, const std::string& item)
{
    return std::find(items.begin(), items.end(), item) != items.end();
}

std::string directoryOf(const std::string& path) { return path.substr(0, path.find_last_of('/')); }

// Unloads a plug-in left loaded by an earlier test, so a test can watch a fresh load.
::testing::AssertionResult ensureUnloaded(const std::string& name)
{
    if (!host::isPluginLoaded(name))
        return ::testing::AssertionSuccess();
    host::newScene();
    if (!host::unloadPlugin(name))
        return ::testing::AssertionFailure() << "could not unload " << name << ":\n" << host::logText();
    return ::testing::AssertionSuccess();
}

using PluginLoading = hosttest::SceneTest;

TEST_F(PluginLoading, LoadReportsIdentityAndRegistrationOrder)
{
    ASSERT_TRUE(ensureUnloaded("dgTestPlugin"));
    host::clearLog();
    std::string name;
    ASSERT_TRUE(host::loadPlugin(DG_TEST_PLUGIN, &name)) << host::logText();
    EXPECT_EQ(name, "dgTestPlugin");
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_TRUE(contains(host::loadedPlugins(), "dgTestPlugin")) << joined(host::loadedPlugins());
    EXPECT_FALSE(host::logContains(LogLevel::kError, "")) << host::logText();

    const host::PluginRegistrations regs = host::pluginRegistrations("dgTestPlugin");
    EXPECT_EQ(regs.vendor, "tqSarn tests");
    EXPECT_EQ(regs.version, "2.5");
    EXPECT_EQ(regs.apiVersion, "Any");
    EXPECT_EQ(regs.nodeTypes, kDgTypes) << joined(regs.nodeTypes);
    EXPECT_TRUE(regs.commands.empty()) << joined(regs.commands);
    EXPECT_TRUE(regs.contextCommands.empty()) << joined(regs.contextCommands);
    EXPECT_EQ(regs.drawOverrides, (std::vector<std::string>{"drawdb/geometry/dgTest|dgTestPluginOverride"}))
        << joined(regs.drawOverrides);
    for (const std::string& type : kDgTypes)
        EXPECT_TRUE(MFnPlugin::isNodeRegistered(type.c_str())) << type;

    MObject pluginObject = MFnPlugin::findPlugin("dgTestPlugin");
    ASSERT_FALSE(pluginObject.isNull());
    MFnPlugin fn;
    ASSERT_TRUE(fn.setObject(pluginObject));
    EXPECT_EQ(str(fn.name()), "dgTestPlugin");
    EXPECT_EQ(str(fn.vendor()), "tqSarn tests");
    EXPECT_EQ(str(fn.version()), "2.5");
    EXPECT_EQ(str(fn.loadPath()), directoryOf(DG_TEST_PLUGIN));
    EXPECT_TRUE(MFnPlugin::findPlugin("noSuchPlugin").isNull());
}

TEST_F(PluginLoading, SecondLoadOfTheSamePluginIsRefused)
{
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    EXPECT_FALSE(host::loadPlugin(DG_TEST_PLUGIN));
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").nodeTypes, kDgTypes)
        << joined(host::pluginRegistrations("dgTestPlugin").nodeTypes);
    const std::vector<std::string> loaded = host::loadedPlugins();
    EXPECT_EQ(std::count(loaded.begin(), loaded.end(), "dgTestPlugin"), 1) << joined(loaded);
}

TEST_F(PluginLoading, NodesKnowTheirTypeAndPlugin)
{
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    MObject dep = host::createNode("dgAffects", "dep");
    MObject loc = host::createNode("dgLocator", "locShape");
    MObject xform = host::createNode("transform", "plainXform");
    ASSERT_FALSE(dep.isNull());
    ASSERT_FALSE(loc.isNull());
    ASSERT_FALSE(xform.isNull());

    MFnDependencyNode depFn(dep);
    EXPECT_EQ(str(depFn.typeName()), "dgAffects");
    EXPECT_EQ(depFn.typeId().id(), 0x7F102u);
    EXPECT_EQ(str(depFn.pluginName()), "dgTestPlugin");
    EXPECT_TRUE(dep.hasFn(MFn::kPluginDependNode));
    EXPECT_TRUE(dep.hasFn(MFn::kDependencyNode));
    EXPECT_FALSE(dep.hasFn(MFn::kDagNode));
    MPxNode* user = depFn.userNode();
    ASSERT_NE(user, nullptr);
    EXPECT_TRUE(user->thisMObject() == dep);
    EXPECT_EQ(str(user->typeName()), "dgAffects");
    EXPECT_TRUE(user->typeId() == MTypeId(0x7F102));
    EXPECT_EQ(str(user->name()), "dep");
    EXPECT_EQ(user->type(), MPxNode::kDependNode);

    MFnDependencyNode locFn(loc);
    EXPECT_EQ(str(locFn.typeName()), "dgLocator");
    EXPECT_EQ(str(locFn.pluginName()), "dgTestPlugin");
    EXPECT_TRUE(loc.hasFn(MFn::kPluginLocatorNode));
    EXPECT_TRUE(loc.hasFn(MFn::kDagNode));
    ASSERT_NE(locFn.userNode(), nullptr);
    EXPECT_EQ(locFn.userNode()->type(), MPxNode::kLocatorNode);
    EXPECT_EQ(str(MFnDependencyNode::classification("dgLocator")), "drawdb/geometry/dgTest");
    EXPECT_EQ(str(MFnDependencyNode::classification("dgAffects")), "");

    MFnDependencyNode xformFn(xform);
    EXPECT_EQ(str(xformFn.pluginName()), "");
    EXPECT_EQ(xformFn.userNode(), nullptr) << "a built-in node has no plug-in implementation";

    // Function sets create plug-in nodes too.
    MFnDependencyNode creator;
    MStatus status;
    MObject made = creator.create("dgRefuse", "madeByFn", &status);
    ASSERT_TRUE(status) << host::logText();
    EXPECT_EQ(nameOf(made), "madeByFn");
    EXPECT_TRUE(host::findNode("madeByFn") == made);
    MFnDagNode dagCreator;
    MObject madeShape = dagCreator.create("dgLocator", "madeShape", xform, &status);
    ASSERT_TRUE(status) << host::logText();
    EXPECT_EQ(str(MFnDagNode(madeShape).fullPathName()), "|plainXform|madeShape");
}

TEST_F(PluginLoading, UnloadIsRefusedWhileNodesLiveAndSucceedsAfterwards)
{
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    // The last type registered is the first one uninitializePlugin gives back.
    ASSERT_FALSE(host::createNode("dgLocator", "blockerShape").isNull());

    host::clearLog();
    EXPECT_FALSE(host::unloadPlugin("dgTestPlugin"));
    EXPECT_TRUE(host::logContains(LogLevel::kError, "dgTestPlugin")) << "a refused unload said nothing:\n"
                                                                     << host::logText();
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").nodeTypes, kDgTypes)
        << joined(host::pluginRegistrations("dgTestPlugin").nodeTypes);
    for (const std::string& type : kDgTypes)
        EXPECT_TRUE(MFnPlugin::isNodeRegistered(type.c_str())) << type;
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").drawOverrides.size(), 1u);
    // The refused unload changed nothing for the live node or for new ones.
    EXPECT_EQ(host::getDouble("blockerShape.size"), 1.0);
    ASSERT_FALSE(host::createNode("dgAffects", "stillWorks").isNull());
    ASSERT_TRUE(host::setDouble("stillWorks.a", 1.0));
    EXPECT_EQ(host::getDouble("stillWorks.b"), 2.0);

    host::newScene();
    host::clearLog();
    ASSERT_TRUE(host::unloadPlugin("dgTestPlugin")) << host::logText();
    EXPECT_FALSE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_FALSE(contains(host::loadedPlugins(), "dgTestPlugin"));
    for (const std::string& type : kDgTypes)
        EXPECT_FALSE(MFnPlugin::isNodeRegistered(type.c_str())) << type << " outlived its plug-in";
    MStatus status;
    EXPECT_TRUE(host::createNode("dgAffects", "", "", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(host::nodeNames("dgAffects").empty());

    // Loading again brings everything back, attributes included.
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").nodeTypes, kDgTypes);
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").drawOverrides.size(), 1u)
        << "the draw override was not given back at unload, so registering it again failed";
    ASSERT_FALSE(host::createNode("dgAffects", "again").isNull());
    ASSERT_TRUE(host::setDouble("again.a", 3.0));
    EXPECT_EQ(host::getDouble("again.b"), 6.0);
    EXPECT_EQ(host::getDouble("again.c"), 9.0);
}

TEST_F(PluginLoading, RefusedUnloadKeepsWhatCouldNotBeDeregistered)
{
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    ASSERT_FALSE(host::createNode("dgAffects", "keeper").isNull());

    // uninitializePlugin gives types back last-first and stops at dgAffects, in use.
    EXPECT_FALSE(host::unloadPlugin("dgTestPlugin"));
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    const std::vector<std::string> left = host::pluginRegistrations("dgTestPlugin").nodeTypes;
    EXPECT_EQ(left, (std::vector<std::string>{"dgAttrKinds", "dgAffects"})) << joined(left);
    EXPECT_FALSE(MFnPlugin::isNodeRegistered("dgLocator"));
    EXPECT_TRUE(MFnPlugin::isNodeRegistered("dgAffects"));
    ASSERT_TRUE(host::setDouble("keeper.a", 2.0));
    EXPECT_EQ(host::getDouble("keeper.c"), 6.0);

    // A deleted node, even one kept for undo, does not hold the plug-in.
    ASSERT_TRUE(host::deleteNode("keeper"));
    ASSERT_TRUE(host::unloadPlugin("dgTestPlugin")) << host::logText();
    EXPECT_FALSE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_FALSE(MFnPlugin::isNodeRegistered("dgAffects"));
    ASSERT_TRUE(ensurePluginLoaded(DG_TEST_PLUGIN));
    EXPECT_EQ(host::pluginRegistrations("dgTestPlugin").nodeTypes, kDgTypes);
}

TEST_F(PluginLoading, NameClashFailsInitializeAndKeepsEarlierRegistrations)
{
    ASSERT_TRUE(ensureUnloaded("clashPlugin"));
    host::clearLog();
    EXPECT_FALSE(host::loadPlugin(CLASH_PLUGIN));
    EXPECT_TRUE(host::logContains(LogLevel::kError, "transform")) << "the error does not name the clashing type:\n"
                                                                  << host::logText();
    EXPECT_TRUE(host::logContains(LogLevel::kError, "clashPlugin")) << "the error does not name the plug-in:\n"
                                                                    << host::logText();

    // Half loaded: the two types registered before the clash stay.
    EXPECT_TRUE(host::isPluginLoaded("clashPlugin"));
    const host::PluginRegistrations regs = host::pluginRegistrations("clashPlugin");
    EXPECT_EQ(regs.nodeTypes, (std::vector<std::string>{"clashFirst", "clashSecond"})) << joined(regs.nodeTypes);
    EXPECT_TRUE(MFnPlugin::isNodeRegistered("clashFirst"));
    EXPECT_TRUE(MFnPlugin::isNodeRegistered("clashSecond"));
    MObject first = host::createNode("clashFirst", "clashed");
    ASSERT_FALSE(first.isNull()) << host::logText();
    EXPECT_EQ(str(MFnDependencyNode(first).pluginName()), "clashPlugin");

    // The built-in type it tried to take is untouched.
    MObject xform = host::createNode("transform", "stillBuiltIn");
    ASSERT_FALSE(xform.isNull());
    EXPECT_TRUE(xform.hasFn(MFn::kTransform));
    EXPECT_EQ(str(MFnDependencyNode(xform).pluginName()), "");
    EXPECT_EQ(MFnDependencyNode(xform).userNode(), nullptr);

    // What it did register goes away with it.
    host::newScene();
    ASSERT_TRUE(host::unloadPlugin("clashPlugin")) << host::logText();
    EXPECT_FALSE(MFnPlugin::isNodeRegistered("clashFirst"));
    EXPECT_FALSE(host::isPluginLoaded("clashPlugin"));
}

TEST_F(PluginLoading, ThrowingInitializeIsCaughtAndLogged)
{
    ASSERT_TRUE(ensureUnloaded("throwPlugin"));
    host::clearLog();
    EXPECT_FALSE(host::loadPlugin(THROW_PLUGIN));
    EXPECT_TRUE(host::logContains(LogLevel::kError, "initializePlugin"))
        << "the error does not name the entry point:\n"
        << host::logText();
    EXPECT_EQ(host::pluginRegistrations("throwPlugin").nodeTypes, (std::vector<std::string>{"throwFirst"}));
    EXPECT_TRUE(MFnPlugin::isNodeRegistered("throwFirst"));
    EXPECT_FALSE(host::createNode("throwFirst", "afterThrow").isNull());

    if (host::isPluginLoaded("throwPlugin")) {
        host::newScene();
        EXPECT_TRUE(host::unloadPlugin("throwPlugin")) << host::logText();
    }
}

TEST_F(PluginLoading, MissingLibraryFailsCleanly)
{
    const std::string missing = directoryOf(DG_TEST_PLUGIN) + "/noSuchPlugin.so";
    EXPECT_FALSE(host::loadPlugin(missing));
    EXPECT_TRUE(host::logContains(LogLevel::kError, "noSuchPlugin")) << host::logText();
    EXPECT_FALSE(host::isPluginLoaded("noSuchPlugin"));
    EXPECT_FALSE(host::unloadPlugin("noSuchPlugin"));
}

// ---- A plug-in linked into this program -------------------------------------------------

class LinkedNode : public MPxNode {
public:
    static void* creator() { return new LinkedNode; }
    static MStatus initialize()
    {
        MStatus status;
        MFnNumericAttribute nAttr;
        input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        output = nAttr.create("output", "out", MFnNumericData::kDouble, 0.0, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        CHECK_MSTATUS_AND_RETURN_IT(addAttribute(input));
        CHECK_MSTATUS_AND_RETURN_IT(addAttribute(output));
        return attributeAffects(input, output);
    }
    MStatus compute(const MPlug& plug, MDataBlock& block) override
    {
        if (plug != output)
            return MS::kUnknownParameter;
        MDataHandle out = block.outputValue(output);
        out.setDouble(block.inputValue(input).asDouble() - 1.0);
        out.setClean();
        return MS::kSuccess;
    }
    static MObject input;
    static MObject output;
    static const MTypeId id;
};
MObject LinkedNode::input;
MObject LinkedNode::output;
const MTypeId LinkedNode::id(0x7F1A0);

MStatus initializeLinked(MObject obj)
{
    MFnPlugin plugin(obj, "tqSarn tests", "0.1", "Any");
    return plugin.registerNode("linkedNode", LinkedNode::id, LinkedNode::creator, LinkedNode::initialize);
}

MStatus uninitializeLinked(MObject obj)
{
    MFnPlugin plugin(obj);
    if (!MFnPlugin::isNodeRegistered("linkedNode"))
        return MS::kSuccess;
    return plugin.deregisterNode(LinkedNode::id);
}

TEST_F(PluginLoading, LinkedPluginRegistersAndDeregisters)
{
    ASSERT_TRUE(ensureUnloaded("linkedTestPlugin"));
    ASSERT_TRUE(host::loadLinkedPlugin("linkedTestPlugin", initializeLinked, uninitializeLinked))
        << host::logText();
    EXPECT_TRUE(host::isPluginLoaded("linkedTestPlugin"));
    EXPECT_EQ(host::pluginRegistrations("linkedTestPlugin").nodeTypes, (std::vector<std::string>{"linkedNode"}));
    ASSERT_FALSE(host::createNode("linkedNode", "linked").isNull());
    ASSERT_TRUE(host::setDouble("linked.in", 5.0));
    EXPECT_EQ(host::getDouble("linked.out"), 4.0);

    // Deregistering a type in use fails; once its nodes are gone it succeeds.
    MObject pluginObject = MFnPlugin::findPlugin("linkedTestPlugin");
    ASSERT_FALSE(pluginObject.isNull());
    MFnPlugin fn;
    ASSERT_TRUE(fn.setObject(pluginObject));
    EXPECT_FALSE(fn.deregisterNode(LinkedNode::id));
    EXPECT_TRUE(MFnPlugin::isNodeRegistered("linkedNode"));
    host::newScene();
    EXPECT_TRUE(fn.deregisterNode(LinkedNode::id)) << host::logText();
    EXPECT_FALSE(MFnPlugin::isNodeRegistered("linkedNode"));
    EXPECT_TRUE(host::pluginRegistrations("linkedTestPlugin").nodeTypes.empty());
    EXPECT_TRUE(host::createNode("linkedNode").isNull());

    // The plug-in can register it again, and unloads cleanly.
    EXPECT_TRUE(fn.registerNode("linkedNode", LinkedNode::id, LinkedNode::creator, LinkedNode::initialize))
        << host::logText();
    EXPECT_FALSE(host::createNode("linkedNode", "linkedAgain").isNull());
    host::newScene();
    EXPECT_TRUE(host::unloadPlugin("linkedTestPlugin")) << host::logText();
    EXPECT_FALSE(host::isPluginLoaded("linkedTestPlugin"));
}

} // namespace
