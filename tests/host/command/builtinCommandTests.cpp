// The built-in commands the tool sends, through command text: what they do to the scene and
// what they return.

#include "commandTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

using Items = std::vector<std::string>;

class BuiltinCommandTest : public CommandTest {
protected:
    static std::vector<std::string> selectedNodes()
    {
        MSelectionList active;
        MGlobal::getActiveSelectionList(active);
        std::vector<std::string> out;
        for (unsigned i = 0; i < active.length(); ++i) {
            MObject node;
            active.getDependNode(i, node);
            out.push_back(host::nodeName(node));
        }
        return out;
    }
    static std::string sourceOf(const std::string& plugName)
    {
        MPlug source = host::findPlug(plugName).source();
        return source.isNull() ? std::string() : source.name().asChar();
    }
};

TEST_F(BuiltinCommandTest, CreateNodeNamesParentsAndSelects)
{
    // The tool's own form: the result is the name the host gave.
    EXPECT_EQ(run("createNode \"mesh\" -n \"tqMeshShape1\";").text, "tqMeshShape1");
    EXPECT_EQ(run("createNode \"mesh\" -n \"tqMeshShape1\";").text, "tqMeshShape2") << "a taken name is numbered";
    MObject shape = host::findNode("tqMeshShape1");
    MFnDagNode fn(shape);
    EXPECT_EQ(hosttest::nameOf(fn.parent(0)), "polySurface1") << "a shape made alone gets a transform";
    EXPECT_EQ(selectedNodes(), Items{"tqMeshShape2"}) << "the new node is selected";

    run("createNode transform -n top; createNode transform -n child -p top");
    EXPECT_EQ(hosttest::nameOf(MFnDagNode(host::findNode("child")).parent(0)), "top");
    run("createNode transform -n quiet -ss");
    EXPECT_EQ(selectedNodes(), Items{"child"}) << "-skipSelect keeps the selection";
    EXPECT_EQ(run("createNode transform -n top -shared").text, "top") << "-shared finds the existing node";
    EXPECT_EQ(host::nodeNames("transform").size(), 5u);

    EXPECT_NE(failing("createNode noSuchType").find("Unknown node type 'noSuchType'"), std::string::npos);
    EXPECT_NE(failing("createNode transform -p nowhere").find("No object matches name: nowhere"), std::string::npos);
}

TEST_F(BuiltinCommandTest, DeleteChecksEveryNameFirst)
{
    run("createNode transform -n a; createNode transform -n b; createNode transform -n c -p b");
    std::string log = failing("delete a nothing");
    EXPECT_NE(log.find("delete: No object matches name: nothing"), std::string::npos) << log;
    EXPECT_TRUE(exists("a")) << "a bad name leaves every node alone";

    run("delete a b");
    EXPECT_FALSE(exists("a"));
    EXPECT_FALSE(exists("b"));
    EXPECT_FALSE(exists("c")) << "DAG children go with their parent";

    run("createNode transform -n d; select -r d; delete");
    EXPECT_FALSE(exists("d")) << "with no names, the selection goes";
    EXPECT_NE(failing("delete").find("Not enough objects"), std::string::npos);
    EXPECT_NE(failing("delete polySurface1.vtx[0]").find("not supported"), std::string::npos);
}

TEST_F(BuiltinCommandTest, ObjExistsKnowsNodesPathsAndPlugs)
{
    run("createNode transform -n a; createNode transform -n b -p a");
    for (const char* name : {"a", "|a", "|a|b", "b", "a.translateX", "|a|b.visibility"})
        EXPECT_EQ(run(std::string("objExists ") + name).text, "1") << name;
    for (const char* name : {"nothing", "|b", "a.noAttribute", "|a|nothing"})
        EXPECT_EQ(run(std::string("objExists ") + name).text, "0") << name;
    EXPECT_EQ(run("objExists a").result.resultType(), MCommandResult::kInt);
}

TEST_F(BuiltinCommandTest, SelectReplacesAddsRemovesTogglesAndClears)
{
    run("createNode transform -n a; createNode transform -n b; createNode transform -n c");
    run("select -r a b");
    EXPECT_EQ(selectedNodes(), (Items{"a", "b"}));
    run("select -add c");
    EXPECT_EQ(selectedNodes(), (Items{"a", "b", "c"}));
    run("select -d b");
    EXPECT_EQ(selectedNodes(), (Items{"a", "c"}));
    run("select -tgl a b");
    EXPECT_EQ(selectedNodes(), (Items{"c", "b"}));
    run("select -cl");
    EXPECT_TRUE(selectedNodes().empty());

    std::string log = failing("select -r a nothing");
    EXPECT_NE(log.find("No object matches name: nothing"), std::string::npos);
    EXPECT_TRUE(selectedNodes().empty()) << "a bad name changes nothing";
    EXPECT_NE(failing("select -add -d a").find("use only one of"), std::string::npos);
}

TEST_F(BuiltinCommandTest, SelectTakesComponents)
{
    // Components are checked against the mesh, so the shape needs geometry (9 vertices).
    host::addMesh(host::gridPlane(1.0f, 1.0f, 2, 2), "polySurface1");
    run("rename polySurfaceShape1 shape");
    run("select -r polySurface1.vtx[2:4] shape.f[1]");
    MSelectionList active;
    MGlobal::getActiveSelectionList(active);
    ASSERT_EQ(active.length(), 2u);
    MDagPath path;
    MObject component;
    ASSERT_TRUE(active.getDagPath(0, path, component));
    EXPECT_EQ(std::string(path.partialPathName().asChar()), "shape");
    EXPECT_EQ(component.apiType(), MFn::kMeshVertComponent);
}

TEST_F(BuiltinCommandTest, SetsForceElementMakesTheShapeAMember)
{
    run("createNode \"mesh\" -n \"tqMeshShape1\";");
    run("sets -e -forceElement \"initialShadingGroup\" |polySurface1|tqMeshShape1");
    EXPECT_EQ(sourceOf("initialShadingGroup.dagSetMembers[0]"), "tqMeshShape1.message");
    run("sets -e -forceElement initialShadingGroup tqMeshShape1");
    EXPECT_EQ(host::findPlug("initialShadingGroup.dagSetMembers").numElements(), 1u) << "no second membership";
    EXPECT_NE(failing("sets -e -fe polySurface1 tqMeshShape1").find("is not a set"), std::string::npos);
    EXPECT_NE(failing("sets -fe initialShadingGroup tqMeshShape1").find("only the edit form"), std::string::npos);
}

TEST_F(BuiltinCommandTest, SetAttrAndGetAttrOnEveryKind)
{
    create("dgAttrKinds", "k");
    run("setAttr k.intAttr 12; setAttr k.doubleAttr -0.5; setAttr k.boolAttr false; setAttr k.floatAttr 1.25");
    EXPECT_EQ(run("getAttr k.intAttr").result.resultType(), MCommandResult::kInt);
    EXPECT_EQ(run("getAttr k.intAttr").text, "12");
    EXPECT_EQ(run("getAttr k.doubleAttr").result.resultType(), MCommandResult::kDouble);
    EXPECT_EQ(run("getAttr k.doubleAttr").text, "-0.5");
    EXPECT_EQ(run("getAttr k.boolAttr").text, "0");
    EXPECT_EQ(run("getAttr k.floatAttr").text, "1.25");

    run("setAttr k.vectorAttr 1 2 3; setAttr k.offset 4 5 6");
    EXPECT_EQ(run("getAttr k.vectorAttr").items, (Items{"1", "2", "3"}));
    EXPECT_EQ(run("getAttr k.offset").items, (Items{"4", "5", "6"}));
    EXPECT_EQ(run("getAttr k.offsetY").text, "5");

    run("setAttr k.stringAttr -type \"string\" \"two words\"");
    EXPECT_EQ(run("getAttr k.stringAttr").text, "two words");
    run("setAttr -type doubleArray k.doublesAttr 3 0.5 1.5 2.5");
    EXPECT_EQ(run("getAttr k.doublesAttr").items, (Items{"0.5", "1.5", "2.5"}));
    run("setAttr k.intsAttr -type Int32Array 2 7 8");
    EXPECT_EQ(run("getAttr k.intsAttr").items, (Items{"7", "8"}));
    run("setAttr k.pointsAttr -type pointArray 1 1 2 3 1");
    EXPECT_EQ(run("getAttr k.pointsAttr").items, (Items{"1", "2", "3", "1"}));
    EXPECT_EQ(run("getAttr -type k.pointsAttr").text, "pointArray");
}

TEST_F(BuiltinCommandTest, SetAttrOnMeshTweaksAndFlags)
{
    run("createNode \"mesh\" -n \"tqMeshShape1\";");
    // The tool's forms: a tweak element, and the intermediate-object flag by path.
    run("setAttr |polySurface1|tqMeshShape1.pnts[3] 0.5 -1 2");
    EXPECT_EQ(run("getAttr tqMeshShape1.pnts[3]").items, (Items{"0.5", "-1", "2"}));
    EXPECT_EQ(run("getAttr -size tqMeshShape1.pnts").text, "1");
    run("setAttr |polySurface1|tqMeshShape1.intermediateObject true");
    EXPECT_EQ(run("getAttr tqMeshShape1.intermediateObject").text, "1");
}

TEST_F(BuiltinCommandTest, SetAttrRefusesBadValuesAndLeavesThePlug)
{
    create("dgAttrKinds", "k");
    create("dgAffects", "src");
    run("setAttr k.vectorAttr 1 2 3");
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {"setAttr k.vectorAttr 9 9", "takes 3 value(s), got 2"},
        {"setAttr k.vectorAttr 9 x 9", "'x' is not a value"},
        {"setAttr k.noSuchAttr 1", "noSuchAttr"},
        {"setAttr k.pointsAttr -type pointArray 2 1 2 3 1", "needs 8 value(s)"},
        {"setAttr k.vectorAttr -type weird 1 2 3", "-type 'weird' is not supported"},
        {"setAttr k.intAttr", "no value given"},
        {"setAttr polySurface1.pnts 1 2 3", "No object matches name"},
    };
    for (const Case& c : cases)
        EXPECT_NE(failing(c.text).find(c.message), std::string::npos) << c.text << "\n" << host::logText();
    EXPECT_EQ(run("getAttr k.vectorAttr").items, (Items{"1", "2", "3"}));

    run("connectAttr src.b k.doubleAttr");
    EXPECT_NE(failing("setAttr k.doubleAttr 1").find("is locked or connected"), std::string::npos);
}

TEST_F(BuiltinCommandTest, ConnectAttrForceReplacesTheSource)
{
    create("dgAffects", "n1");
    create("dgAffects", "n2");
    create("dgAffects", "n3");
    EXPECT_EQ(run("connectAttr n1.b n3.a").text, "Connected n1.b to n3.a.");
    std::string log = failing("connectAttr n2.b n3.a");
    EXPECT_NE(log.find("connectAttr"), std::string::npos) << log;
    EXPECT_EQ(sourceOf("n3.a"), "n1.b");
    // The tool writes the force flag after the plugs.
    run("connectAttr n2.b n3.a -f;");
    EXPECT_EQ(sourceOf("n3.a"), "n2.b");
    run("disconnectAttr n2.b n3.a");
    EXPECT_EQ(sourceOf("n3.a"), "");
    EXPECT_FALSE(host::runCommand("disconnectAttr n2.b n3.a").status) << "nothing to disconnect";
}

TEST_F(BuiltinCommandTest, ListHistoryFollowsTheInputs)
{
    run("createNode \"mesh\" -n \"tqMeshShape1\"; createNode polyTweak -n tweak1; createNode polyTweak -n tweak2");
    run("connectAttr tweak1.output tweak2.inputPolymesh; connectAttr tweak2.output tqMeshShape1.inMesh");
    Items expected{"tqMeshShape1", "tweak2", "tweak1"};
    EXPECT_EQ(run("listHistory -ac |polySurface1|tqMeshShape1").items, expected);
    EXPECT_EQ(run("listHistory -ac polySurface1").items, expected) << "a transform stands for its shape";
    EXPECT_EQ(run("listHistory -lv 1 tqMeshShape1").items, (Items{"tqMeshShape1", "tweak2"}));
    EXPECT_EQ(run("listHistory -f true tweak1").items, (Items{"tweak1", "tweak2", "tqMeshShape1"}));
    // The tool counts the history through the string-array form of executeCommand.
    MStringArray names;
    ASSERT_TRUE(MGlobal::executeCommand("listHistory -ac |polySurface1|tqMeshShape1", names));
    EXPECT_EQ(names.length(), 3u);
    EXPECT_FALSE(MGlobal::executeCommand("listHistory -ac |nothing", names));
}

TEST_F(BuiltinCommandTest, DgdirtyMarksThePlugsDirty)
{
    create("dgAffects", "n");
    run("setAttr n.a 2");
    host::getDouble("n.b");
    ASSERT_FALSE(host::isDirty("n.b"));
    run("dgdirty n");
    EXPECT_TRUE(host::isDirty("n.b"));
    host::getDouble("n.b");
    run("dgdirty n.a");
    EXPECT_TRUE(host::isDirty("n.b")) << "dirtying a plug dirties what it affects";
    EXPECT_NE(failing("dgdirty n nothing").find("No object matches name: nothing"), std::string::npos);
}

TEST_F(BuiltinCommandTest, ChangeSelectModeAndConstructionHistory)
{
    run("changeSelectMode -component");
    EXPECT_EQ(MGlobal::selectionMode(), MGlobal::kSelectComponentMode);
    run("changeSelectMode -object");
    EXPECT_EQ(MGlobal::selectionMode(), MGlobal::kSelectObjectMode);
    EXPECT_EQ(run("changeSelectMode -q -o").text, "1");
    EXPECT_EQ(run("changeSelectMode -q -co").text, "0");

    int on = -1;
    ASSERT_TRUE(MGlobal::executeCommand("constructionHistory -query -toggle", on));
    EXPECT_EQ(on, 1) << "history is on in a new session";
    run("constructionHistory -tgl false");
    EXPECT_EQ(run("constructionHistory -q -tgl").text, "0");
    run("constructionHistory -toggle on");
    EXPECT_EQ(run("constructionHistory -q -tgl").text, "1");
}

TEST_F(BuiltinCommandTest, OptionVarSetsQueriesAndRemoves)
{
    run("optionVar -iv a 3 -fv b 0.25 -sv c \"some text\"");
    EXPECT_EQ(MGlobal::optionVarIntValue("a"), 3);
    EXPECT_EQ(MGlobal::optionVarDoubleValue("b"), 0.25);
    EXPECT_EQ(std::string(MGlobal::optionVarStringValue("c").asChar()), "some text");
    EXPECT_EQ(run("optionVar -q a").result.resultType(), MCommandResult::kInt);
    EXPECT_EQ(run("optionVar -q b").result.resultType(), MCommandResult::kDouble);
    EXPECT_EQ(run("optionVar -q c").text, "some text");
    EXPECT_EQ(run("optionVar -exists a").text, "1");
    run("optionVar -remove a");
    EXPECT_EQ(run("optionVar -exists a").text, "0");
    EXPECT_EQ(run("optionVar -q a").text, "0") << "a missing variable reads as 0";

    EXPECT_NE(failing("optionVar -iv a lots").find("needs a whole number"), std::string::npos);
    EXPECT_FALSE(MGlobal::optionVarExists("a")) << "a bad value stores nothing";
    EXPECT_NE(failing("optionVar -iva a 1").find("not supported"), std::string::npos);
}

TEST_F(BuiltinCommandTest, RenameParentAndLs)
{
    run("createNode transform -n a; createNode transform -n b");
    EXPECT_EQ(run("rename a renamed").text, "renamed");
    EXPECT_EQ(run("rename b renamed").text, "renamed1") << "a taken name is numbered";
    EXPECT_EQ(run("parent renamed1 renamed").items, Items{"|renamed|renamed1"});
    EXPECT_EQ(run("ls -l -type transform").items, (Items{"|renamed", "|renamed|renamed1"}));
    EXPECT_EQ(run("parent -w renamed1").items, Items{"|renamed1"});
    run("select -r renamed1");
    EXPECT_EQ(run("ls -sl").items, Items{"renamed1"});
    EXPECT_NE(failing("parent renamed renamed").find("cannot parent"), std::string::npos);
    EXPECT_NE(failing("rename renamed \"a|b\"").find("not a valid name"), std::string::npos);
}

TEST_F(BuiltinCommandTest, UnloadAndLoadPluginByCommand)
{
    create("dgAffects", "n");
    EXPECT_FALSE(host::runCommand("unloadPlugin dgTestPlugin").status) << "its nodes are in the scene";
    run("delete n");
    run("unloadPlugin dgTestPlugin");
    EXPECT_FALSE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_EQ(host::undoQueueLength(), 0u) << "unloading empties the undo queue";
    EXPECT_EQ(run(std::string("loadPlugin \"") + DG_TEST_PLUGIN + "\"").items, Items{"dgTestPlugin"});
    EXPECT_TRUE(host::isPluginLoaded("dgTestPlugin"));
    EXPECT_EQ(run(std::string("loadPlugin \"") + DG_TEST_PLUGIN + "\"").items, Items{"dgTestPlugin"})
        << "loading a loaded plug-in is no error";
}
