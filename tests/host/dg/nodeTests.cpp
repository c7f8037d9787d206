// Nodes as a whole: naming, identity, the new scene, undoable edits through MDGModifier and
// iteration over the scene's nodes.

#include "dgTest.h"

#include <maya/MDGModifier.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>
#include <maya/MUuid.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using hosttest::joined;
using hosttest::nameOf;
using hosttest::str;

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

using DgNodes = DgTest;

TEST_F(DgNodes, TakenNamesGetTheSmallestFreeNumber)
{
    EXPECT_EQ(nameOf(create("dgAffects", "tqPatch")), "tqPatch");
    EXPECT_EQ(nameOf(create("dgAffects", "tqPatch")), "tqPatch1");
    EXPECT_EQ(nameOf(create("dgAffects", "tqPatch")), "tqPatch2");

    // A requested name ending in digits counts on from its stem.
    EXPECT_EQ(nameOf(create("dgAffects", "pCube1")), "pCube1");
    EXPECT_EQ(nameOf(create("dgAffects", "pCube2")), "pCube2");
    EXPECT_EQ(nameOf(create("dgAffects", "pCube1")), "pCube3");

    // A freed name is handed out again.
    ASSERT_TRUE(host::deleteNode("tqPatch1"));
    EXPECT_EQ(nameOf(create("dgAffects", "tqPatch")), "tqPatch1");

    // Without a name a node is named after its type, numbered from 1.
    EXPECT_EQ(nameOf(create("dgRefuse", "")), "dgRefuse1");
    EXPECT_EQ(nameOf(create("dgRefuse", "")), "dgRefuse2");

    // Renaming to a taken name picks a free one the same way; the result is returned.
    MObject node = host::findNode("dgRefuse2");
    MFnDependencyNode fn(node);
    MStatus status;
    EXPECT_EQ(str(fn.setName("tqPatch", false, &status)), "tqPatch3");
    EXPECT_TRUE(status);
    EXPECT_EQ(str(fn.name()), "tqPatch3");
    EXPECT_TRUE(host::findNode("dgRefuse2").isNull());
    EXPECT_TRUE(host::findNode("tqPatch3") == node);

    const std::vector<std::string> names = host::nodeNames("dgAffects");
    EXPECT_EQ(names.size(), 6u) << joined(names);
    std::set<std::string> unique(names.begin(), names.end());
    EXPECT_EQ(unique.size(), names.size()) << joined(names);
}

TEST_F(DgNodes, UuidsAreUniqueAndSurviveRenames)
{
    MObject a = create("dgAffects", "first");
    MObject b = create("dgAffects", "second");
    MObject c = create("transform", "third");
    const MUuid ua = MFnDependencyNode(a).uuid();
    const MUuid ub = MFnDependencyNode(b).uuid();
    const MUuid uc = MFnDependencyNode(c).uuid();
    EXPECT_TRUE(ua.valid());
    EXPECT_TRUE(ub.valid());
    EXPECT_TRUE(uc.valid());
    EXPECT_NE(str(ua.asString()), str(ub.asString()));
    EXPECT_NE(str(ua.asString()), str(uc.asString()));
    EXPECT_NE(str(ub.asString()), str(uc.asString()));

    MFnDependencyNode(a).setName("renamed");
    EXPECT_TRUE(MFnDependencyNode(a).uuid() == ua) << "a rename changed the uuid";

    // The default nodes of a scene are new nodes too.
    const MUuid defaultSet = MFnDependencyNode(host::findNode("initialShadingGroup")).uuid();
    host::newScene();
    const MUuid after = MFnDependencyNode(host::findNode("initialShadingGroup")).uuid();
    EXPECT_TRUE(after.valid());
    EXPECT_NE(str(after.asString()), str(defaultSet.asString()));
    EXPECT_NE(str(MFnDependencyNode(create("dgAffects", "first")).uuid().asString()), str(ua.asString()));
}

TEST_F(DgNodes, NewSceneDeletesEveryNodeAndMakesTheDefaults)
{
    MObject plugInNode = create("dgAffects", "willGo");
    MObject xform = create("transform", "xformWillGo");
    MObjectHandle handle(plugInNode);
    ASSERT_TRUE(handle.isAlive());

    host::newScene();
    EXPECT_FALSE(handle.isAlive()) << "a node of the old scene is still alive";
    EXPECT_FALSE(MObjectHandle(xform).isAlive());
    EXPECT_TRUE(host::findNode("willGo").isNull());
    EXPECT_TRUE(host::nodeNames("dgAffects").empty());
    EXPECT_TRUE(host::nodeNames("transform").empty() || !contains(host::nodeNames("transform"), "xformWillGo"));

    for (const char* name : {"initialShadingGroup", "defaultLightSet"}) {
        MObject set = host::findNode(name);
        ASSERT_FALSE(set.isNull()) << name << " is missing from the new scene";
        MFnDependencyNode fn(set);
        EXPECT_EQ(str(fn.typeName()), "objectSet") << name;
        EXPECT_TRUE(set.hasFn(MFn::kSet)) << name;
        EXPECT_TRUE(fn.isDefaultNode()) << name;
    }
    EXPECT_FALSE(MFnDependencyNode(create("dgAffects", "")).isDefaultNode());

    // The plug-in stays loaded and its names are free again.
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_EQ(nameOf(create("dgAffects", "willGo")), "willGo");
}

TEST_F(DgNodes, ModifierCreatesAndUndoesNodes)
{
    MDGModifier mod;
    MStatus status;
    MObject node = mod.createNode("dgAffects", &status);
    ASSERT_TRUE(status) << host::logText();
    ASSERT_TRUE(mod.doIt()) << host::logText();
    ASSERT_FALSE(node.isNull());
    const std::string name = nameOf(node);
    EXPECT_TRUE(contains(host::nodeNames("dgAffects"), name)) << joined(host::nodeNames("dgAffects"));
    ASSERT_TRUE(host::setDouble(name + ".a", 2.0));
    EXPECT_EQ(host::getDouble(name + ".b"), 4.0);

    ASSERT_TRUE(mod.undoIt());
    EXPECT_TRUE(host::nodeNames("dgAffects").empty()) << joined(host::nodeNames("dgAffects"));
    EXPECT_TRUE(host::findNode(name).isNull());
    EXPECT_FALSE(MObjectHandle(node).isAlive());

    // doIt after undoIt redoes.
    ASSERT_TRUE(mod.doIt());
    EXPECT_TRUE(contains(host::nodeNames("dgAffects"), name));
}

TEST_F(DgNodes, ModifierConnectsRenamesAndSetsUndoably)
{
    MObject a = create("dgConnRecorder", "srcNode");
    MObject b = create("dgConnRecorder", "dstNode");
    MFnDependencyNode fa(a), fb(b);

    MDGModifier mod;
    ASSERT_TRUE(mod.connect(fa.findPlug("output"), fb.findPlug("input")));
    ASSERT_TRUE(mod.renameNode(b, "renamedNode"));
    ASSERT_TRUE(mod.newPlugValueDouble(fa.findPlug("input"), 3.0));
    // Nothing happens before doIt.
    EXPECT_FALSE(fb.findPlug("input").isConnected());
    EXPECT_EQ(nameOf(b), "dstNode");

    ASSERT_TRUE(mod.doIt()) << host::logText();
    EXPECT_TRUE(fb.findPlug("input").isDestination());
    EXPECT_EQ(nameOf(b), "renamedNode");
    EXPECT_EQ(host::getDouble("renamedNode.output"), 12.0);

    ASSERT_TRUE(mod.undoIt()) << host::logText();
    EXPECT_FALSE(fb.findPlug("input").isConnected());
    EXPECT_FALSE(fa.findPlug("output").isConnected());
    EXPECT_EQ(nameOf(b), "dstNode");
    EXPECT_TRUE(host::findNode("renamedNode").isNull());
    EXPECT_EQ(host::getDouble("srcNode.input"), 0.0);
}

TEST_F(DgNodes, ModifierDeletesAndUndoRestoresValuesAndConnections)
{
    MObject a = create("dgConnRecorder", "doomed");
    create("dgConnRecorder", "survivor");
    ASSERT_TRUE(host::setDouble("doomed.input", 1.5));
    ASSERT_TRUE(host::connect("doomed.output", "survivor.input"));

    MDGModifier mod;
    ASSERT_TRUE(mod.deleteNode(a));
    ASSERT_TRUE(mod.doIt()) << host::logText();
    EXPECT_TRUE(host::findNode("doomed").isNull());
    EXPECT_FALSE(MObjectHandle(a).isAlive());
    EXPECT_FALSE(host::findPlug("survivor.input").isConnected());

    ASSERT_TRUE(mod.undoIt()) << host::logText();
    EXPECT_TRUE(host::findNode("doomed") == a) << "undo made a different node";
    EXPECT_TRUE(MObjectHandle(a).isAlive());
    EXPECT_EQ(host::getDouble("doomed.input"), 1.5);
    EXPECT_TRUE(host::findPlug("survivor.input").isDestination());
    ASSERT_TRUE(host::setDouble("doomed.input", 2.0));
    EXPECT_EQ(host::getDouble("survivor.output"), 8.0);
}

TEST_F(DgNodes, IteratorFilterSelectsPlugInNodesOnly)
{
    create("dgAffects", "plugA");
    create("transform", "plainXform");
    MObject shape = create("dgLocator", "plugLocShape", "plainXform");
    create("dgRefuse", "plugB");

    std::vector<std::string> found;
    for (MItDependencyNodes it(MFn::kPluginDependNode); !it.isDone(); it.next())
        found.push_back(nameOf(it.item()));
    EXPECT_EQ(found, (std::vector<std::string>{"plugA", nameOf(shape), "plugB"})) << joined(found);

    std::vector<std::string> locators;
    for (MItDependencyNodes it(MFn::kPluginLocatorNode); !it.isDone(); it.next())
        locators.push_back(nameOf(it.thisNode()));
    EXPECT_EQ(locators, (std::vector<std::string>{nameOf(shape)})) << joined(locators);

    std::vector<std::string> all;
    for (MItDependencyNodes it; !it.isDone(); it.next())
        all.push_back(nameOf(it.item()));
    for (const char* name : {"initialShadingGroup", "defaultLightSet", "plugA", "plainXform", "plugB"})
        EXPECT_TRUE(contains(all, name)) << name << " missing from " << joined(all);
    // Creation order.
    auto at = [&](const std::string& n) { return std::find(all.begin(), all.end(), n) - all.begin(); };
    EXPECT_LT(at("plugA"), at("plainXform"));
    EXPECT_LT(at("plainXform"), at("plugB"));
}

TEST_F(DgNodes, PluginNodeFilterHasTheDevkitValue)
{
    // Plug-ins compiled against the devkit pass the number, so it has to match.
    EXPECT_EQ(static_cast<int>(MFn::kPluginDependNode), 459);
    EXPECT_EQ(static_cast<int>(MFn::kPluginLocatorNode), 460);

    create("dgAffects", "plugA");
    create("transform", "plainXform");
    MObject shape = create("dgLocator", "plugLocShape", "plainXform");
    std::vector<std::string> found;
    for (MItDependencyNodes it(MFn::Type(459)); !it.isDone(); it.next())
        found.push_back(nameOf(it.item()));
    EXPECT_EQ(found, (std::vector<std::string>{"plugA", nameOf(shape)})) << joined(found);
}

} // namespace
