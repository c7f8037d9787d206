// DAG paths and the hierarchy: path names, extending to shapes past intermediate objects,
// parents and children, and hierarchy edits through MDagModifier.

#include "dagTest.h"

#include <maya/MDagModifier.h>
#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MObjectHandle.h>

#include <string>

namespace {

using hosttest::nameOf;
using hosttest::str;

using DagPaths = DagTest;

TEST_F(DagPaths, FullAndPartialPathNames)
{
    MObject cube = create("transform", "pCube1");
    MObject shape = create("dgLocator", "pCubeShape1", "pCube1");

    MDagPath path;
    ASSERT_TRUE(MDagPath::getAPathTo(shape, path));
    EXPECT_EQ(str(path.fullPathName()), "|pCube1|pCubeShape1");
    EXPECT_EQ(str(path.partialPathName()), "pCubeShape1");
    EXPECT_EQ(path.length(), 2u);
    EXPECT_TRUE(path.node() == shape);
    EXPECT_TRUE(path.transform() == cube);
    EXPECT_TRUE(path.hasFn(MFn::kPluginLocatorNode));
    EXPECT_TRUE(path.isValid());

    MDagPath cubePath = MDagPath::getAPathTo(cube);
    EXPECT_EQ(str(cubePath.fullPathName()), "|pCube1");
    EXPECT_EQ(str(cubePath.partialPathName()), "pCube1");
    EXPECT_EQ(cubePath.length(), 1u);
    EXPECT_TRUE(cubePath.transform() == cube);

    MFnDagNode fn(shape);
    EXPECT_EQ(str(fn.fullPathName()), "|pCube1|pCubeShape1");
    EXPECT_EQ(str(fn.partialPathName()), "pCubeShape1");
    EXPECT_TRUE(host::findNode("|pCube1|pCubeShape1") == shape);
    EXPECT_TRUE(host::findNode("pCube1|pCubeShape1") == shape);

    // Deeper, under a group.
    create("transform", "grp");
    create("transform", "inner", "grp");
    create("dgLocator", "innerShape", "|grp|inner");
    MDagPath deep = pathTo("innerShape");
    EXPECT_EQ(str(deep.fullPathName()), "|grp|inner|innerShape");
    EXPECT_EQ(str(deep.partialPathName()), "innerShape");
    EXPECT_EQ(deep.length(), 3u);
    EXPECT_EQ(nameOf(deep.transform()), "inner");

    // Push and pop walk the same path.
    ASSERT_EQ(cubePath.childCount(), 1u);
    EXPECT_TRUE(cubePath.child(0) == shape);
    ASSERT_TRUE(cubePath.push(shape));
    EXPECT_EQ(str(cubePath.fullPathName()), "|pCube1|pCubeShape1");
    EXPECT_TRUE(cubePath == path);
    ASSERT_TRUE(cubePath.pop());
    EXPECT_EQ(str(cubePath.fullPathName()), "|pCube1");

    // A dependency node has no DAG path.
    MObject dgNode = create("dgAffects", "notInDag");
    MDagPath none;
    EXPECT_FALSE(MDagPath::getAPathTo(dgNode, none));
}

TEST_F(DagPaths, NamesAreUniqueInTheSceneSoPartialPathsAreBareNames)
{
    // The host keeps every node name unique in the scene (not only among siblings): a taken
    // name gets the smallest free number after its stem, and the shortest unique partial
    // path of any node is then its own name.
    create("transform", "left");
    create("transform", "right");
    MObject leftLeaf = create("transform", "leaf", "left");
    MObject rightLeaf = create("transform", "leaf", "right");
    EXPECT_EQ(nameOf(leftLeaf), "leaf");
    EXPECT_EQ(nameOf(rightLeaf), "leaf1");
    EXPECT_EQ(str(MDagPath::getAPathTo(leftLeaf).partialPathName()), "leaf");
    EXPECT_EQ(str(MDagPath::getAPathTo(rightLeaf).partialPathName()), "leaf1");
    EXPECT_EQ(str(MDagPath::getAPathTo(rightLeaf).fullPathName()), "|right|leaf1");
    EXPECT_TRUE(host::findNode("|right|leaf1") == rightLeaf);
    EXPECT_TRUE(host::findNode("|left|leaf1").isNull()) << "a path must match the node's parents";
    EXPECT_EQ(nameOf(create("transform", "leaf", "left")), "leaf2");
}

TEST_F(DagPaths, ExtendToShapeSkipsIntermediateObjects)
{
    // One shape.
    create("transform", "one");
    MObject oneShape = create("dgLocator", "oneShape", "one");
    MDagPath path = pathTo("one");
    ASSERT_TRUE(path.extendToShape());
    EXPECT_TRUE(path.node() == oneShape);
    EXPECT_EQ(str(path.fullPathName()), "|one|oneShape");
    // Already at a shape: nothing changes.
    EXPECT_TRUE(path.extendToShape());
    EXPECT_EQ(str(path.fullPathName()), "|one|oneShape");

    // An intermediate shape (flagged through MFnDagNode) before the real one.
    create("transform", "mixed");
    MObject original = create("dgLocator", "mixedOrig", "mixed");
    MObject result = create("dgLocator", "mixedShape", "mixed");
    MFnDagNode originalFn(original);
    ASSERT_TRUE(originalFn.setIntermediateObject(true));
    EXPECT_TRUE(originalFn.isIntermediateObject());
    EXPECT_TRUE(host::getBool("mixedOrig.intermediateObject")) << "the flag and the attribute disagree";
    path = pathTo("mixed");
    ASSERT_TRUE(path.extendToShape());
    EXPECT_TRUE(path.node() == result) << "extended to " << str(path.fullPathName());

    // Flagged through the attribute instead, by short name.
    create("transform", "viaAttr");
    create("dgLocator", "viaAttrOrig", "viaAttr");
    MObject viaAttrShape = create("dgLocator", "viaAttrShape", "viaAttr");
    ASSERT_TRUE(host::setBool("viaAttrOrig.io", true));
    EXPECT_TRUE(MFnDagNode(host::findNode("viaAttrOrig")).isIntermediateObject());
    path = pathTo("viaAttr");
    ASSERT_TRUE(path.extendToShape());
    EXPECT_TRUE(path.node() == viaAttrShape) << "extended to " << str(path.fullPathName());
}

TEST_F(DagPaths, ExtendToShapeFailsWithNoneOrSeveralCandidates)
{
    create("transform", "empty");
    MDagPath path = pathTo("empty");
    EXPECT_FALSE(path.extendToShape());
    EXPECT_EQ(str(path.fullPathName()), "|empty") << "a failed extend changed the path";

    create("transform", "onlyIntermediate");
    create("dgLocator", "onlyIntermediateShape", "onlyIntermediate");
    ASSERT_TRUE(host::setBool("onlyIntermediateShape.intermediateObject", true));
    path = pathTo("onlyIntermediate");
    EXPECT_FALSE(path.extendToShape());
    EXPECT_EQ(str(path.fullPathName()), "|onlyIntermediate");

    create("transform", "two");
    create("dgLocator", "twoA", "two");
    create("dgLocator", "twoB", "two");
    path = pathTo("two");
    EXPECT_FALSE(path.extendToShape());
    EXPECT_EQ(str(path.fullPathName()), "|two");

    // A child transform is not a shape.
    create("transform", "parentOnly");
    create("transform", "childXform", "parentOnly");
    path = pathTo("parentOnly");
    EXPECT_FALSE(path.extendToShape());
}

TEST_F(DagPaths, ParentsAndChildrenInCreationOrder)
{
    MObject top = create("transform", "top");
    MObject first = create("transform", "first", "top");
    MObject shape = create("dgLocator", "topShape", "top");
    MObject second = create("transform", "second", "top");

    MFnDagNode topFn(top);
    ASSERT_EQ(topFn.childCount(), 3u);
    EXPECT_TRUE(topFn.child(0) == first);
    EXPECT_TRUE(topFn.child(1) == shape);
    EXPECT_TRUE(topFn.child(2) == second);
    EXPECT_TRUE(topFn.hasChild(shape));
    EXPECT_TRUE(topFn.isParentOf(second));
    EXPECT_FALSE(topFn.isChildOf(second));

    MFnDagNode secondFn(second);
    ASSERT_EQ(secondFn.parentCount(), 1u);
    EXPECT_TRUE(secondFn.parent(0) == top);
    EXPECT_TRUE(secondFn.hasParent(top));
    EXPECT_TRUE(secondFn.isChildOf(top));

    // A top-level node's parent is the world.
    ASSERT_EQ(topFn.parentCount(), 1u);
    EXPECT_TRUE(topFn.parent(0).hasFn(MFn::kWorld));

    // A shape made without a parent gets a transform of its own.
    MStatus status;
    MObject lonely = host::createNode("dgLocator", "lonelyShape", "", &status);
    ASSERT_TRUE(status) << host::logText();
    EXPECT_TRUE(lonely.hasFn(MFn::kPluginLocatorNode)) << "createNode returned " << lonely.apiTypeStr();
    MFnDagNode lonelyFn(lonely);
    ASSERT_EQ(lonelyFn.parentCount(), 1u);
    MObject madeParent = lonelyFn.parent(0);
    EXPECT_TRUE(madeParent.hasFn(MFn::kTransform));
    EXPECT_EQ(MDagPath::getAPathTo(lonely).length(), 2u);

    // Deleting a transform deletes what is below it.
    MObjectHandle shapeHandle(shape);
    ASSERT_TRUE(host::deleteNode("top"));
    EXPECT_FALSE(shapeHandle.isAlive());
    EXPECT_TRUE(host::findNode("topShape").isNull());
    EXPECT_TRUE(host::findNode("first").isNull());
}

TEST_F(DagPaths, DagModifierCreatesUnderAParentAndReparentsUndoably)
{
    MObject a = create("transform", "groupA");
    MObject b = create("transform", "groupB");

    MDagModifier mod;
    MStatus status;
    MObject shape = mod.createNode("dgLocator", a, &status);
    ASSERT_TRUE(status) << host::logText();
    ASSERT_TRUE(mod.renameNode(shape, "movingShape"));
    ASSERT_TRUE(mod.doIt()) << host::logText();
    EXPECT_EQ(str(MDagPath::getAPathTo(shape).fullPathName()), "|groupA|movingShape");

    MDagModifier move;
    ASSERT_TRUE(move.reparentNode(shape, b));
    ASSERT_TRUE(move.doIt()) << host::logText();
    EXPECT_EQ(str(MDagPath::getAPathTo(shape).fullPathName()), "|groupB|movingShape");
    EXPECT_EQ(MFnDagNode(a).childCount(), 0u);

    ASSERT_TRUE(move.undoIt());
    EXPECT_EQ(str(MDagPath::getAPathTo(shape).fullPathName()), "|groupA|movingShape");
    EXPECT_EQ(MFnDagNode(b).childCount(), 0u);

    ASSERT_TRUE(mod.undoIt());
    EXPECT_FALSE(MObjectHandle(shape).isAlive());
    EXPECT_EQ(MFnDagNode(a).childCount(), 0u);

    // Reparenting to the world makes a top-level node.
    MObject child = create("transform", "nested", "groupA");
    MDagModifier toWorld;
    ASSERT_TRUE(toWorld.reparentNode(child));
    ASSERT_TRUE(toWorld.doIt());
    EXPECT_EQ(str(MDagPath::getAPathTo(child).fullPathName()), "|nested");
}

} // namespace
