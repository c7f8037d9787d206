// The active selection and selection lists: by name, path and plug, as MGlobal, the rich
// selection and the harness see them.

#include "dagTest.h"

#include <maya/MDagPath.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MRichSelection.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <string>
#include <vector>

namespace {

using hosttest::joined;
using hosttest::str;

class DagSelection : public DagTest {
protected:
    void SetUp() override
    {
        DagTest::SetUp();
        if (HasFatalFailure())
            return;
        cube = create("transform", "pCube1");
        shape = create("dgLocator", "pCubeShape1", "pCube1");
        dgNode = create("dgAffects", "dgNode1");
    }

    static std::vector<std::string> strings(const MSelectionList& list)
    {
        MStringArray array;
        list.getSelectionStrings(array);
        std::vector<std::string> out;
        for (unsigned int i = 0; i < array.length(); ++i)
            out.push_back(str(array[i]));
        return out;
    }

    MObject cube, shape, dgNode;
};

TEST_F(DagSelection, SelectByNameFillsTheActiveList)
{
    ASSERT_TRUE(MGlobal::selectByName("pCube1", MGlobal::kReplaceList)) << host::logText();
    MSelectionList active;
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    ASSERT_EQ(active.length(), 1u);
    MDagPath path;
    ASSERT_TRUE(active.getDagPath(0, path));
    EXPECT_EQ(str(path.fullPathName()), "|pCube1");
    MObject node;
    ASSERT_TRUE(active.getDependNode(0, node));
    EXPECT_TRUE(node == cube);

    // Adding is the default; a DG node has no path.
    ASSERT_TRUE(MGlobal::selectByName("dgNode1"));
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    ASSERT_EQ(active.length(), 2u);
    ASSERT_TRUE(active.getDependNode(1, node));
    EXPECT_TRUE(node == dgNode);
    EXPECT_FALSE(active.getDagPath(1, path));
    EXPECT_EQ(host::selection(), (std::vector<std::string>{"pCube1", "dgNode1"})) << joined(host::selection());

    // Selecting the same item again does not duplicate it.
    ASSERT_TRUE(MGlobal::selectByName("pCube1"));
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    EXPECT_EQ(active.length(), 2u);

    EXPECT_FALSE(MGlobal::selectByName("noSuchNode", MGlobal::kReplaceList));
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    EXPECT_EQ(active.length(), 2u) << "a failed select replaced the selection";

    ASSERT_TRUE(MGlobal::clearSelectionList());
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    EXPECT_TRUE(active.isEmpty());
    EXPECT_TRUE(host::selection().empty());
}

TEST_F(DagSelection, HarnessSelectReplacesAndNewSceneEmpties)
{
    ASSERT_TRUE(host::select({"pCube1", "|pCube1|pCubeShape1"})) << host::logText();
    EXPECT_EQ(host::selection(), (std::vector<std::string>{"pCube1", "pCubeShape1"})) << joined(host::selection());
    ASSERT_TRUE(host::select({"dgNode1"}));
    EXPECT_EQ(host::selection(), (std::vector<std::string>{"dgNode1"})) << joined(host::selection());

    // A deleted node leaves the selection.
    ASSERT_TRUE(host::select({"pCube1", "dgNode1"}));
    ASSERT_TRUE(host::deleteNode("dgNode1"));
    EXPECT_EQ(host::selection(), (std::vector<std::string>{"pCube1"})) << joined(host::selection());

    host::newScene();
    EXPECT_TRUE(host::selection().empty());
}

TEST_F(DagSelection, ListsTakeNamesPathsAndPlugs)
{
    MSelectionList list;
    ASSERT_TRUE(list.add("pCube1"));
    ASSERT_TRUE(list.add(MDagPath::getAPathTo(shape)));
    ASSERT_TRUE(list.add(MFnDependencyNode(dgNode).findPlug("a")));
    ASSERT_EQ(list.length(), 3u);

    MDagPath path;
    ASSERT_TRUE(list.getDagPath(1, path));
    EXPECT_EQ(str(path.fullPathName()), "|pCube1|pCubeShape1");
    MPlug plug;
    ASSERT_TRUE(list.getPlug(2, plug));
    EXPECT_TRUE(plug.node() == dgNode);
    EXPECT_EQ(str(MFnAttribute(plug.attribute()).name()), "a");
    EXPECT_FALSE(list.getPlug(0, plug)) << "a node is not a plug";

    EXPECT_TRUE(list.hasItem(cube));
    EXPECT_TRUE(list.hasItem(MDagPath::getAPathTo(shape)));

    // Plugs by name, paths by name, and unknown names.
    MSelectionList byName;
    ASSERT_TRUE(byName.add("dgNode1.b"));
    ASSERT_TRUE(byName.add("|pCube1|pCubeShape1"));
    ASSERT_TRUE(byName.getPlug(0, plug));
    EXPECT_EQ(str(MFnAttribute(plug.attribute()).name()), "b");
    ASSERT_TRUE(byName.getDagPath(1, path));
    EXPECT_TRUE(path.node() == shape);
    EXPECT_FALSE(byName.add("noSuchNode"));
    EXPECT_EQ(byName.length(), 2u);

    // Wildcards match names.
    MSelectionList wild;
    ASSERT_TRUE(wild.add("pCube*"));
    EXPECT_TRUE(wild.hasItem(cube));
    EXPECT_TRUE(wild.hasItem(MDagPath::getAPathTo(shape)));
    EXPECT_FALSE(wild.hasItem(dgNode));

    // The list becomes the active selection, and the rich selection holds it.
    ASSERT_TRUE(MGlobal::setActiveSelectionList(list));
    MSelectionList active;
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    EXPECT_EQ(strings(active), strings(list)) << joined(strings(active));

    MRichSelection rich;
    ASSERT_TRUE(MGlobal::getRichSelection(rich));
    MSelectionList fromRich;
    ASSERT_TRUE(rich.getSelection(fromRich));
    EXPECT_EQ(strings(fromRich), strings(list)) << joined(strings(fromRich));
    MSelectionList symmetry;
    rich.getSymmetry(symmetry);
    EXPECT_TRUE(symmetry.isEmpty()) << "the host has no symmetry";
}

} // namespace
