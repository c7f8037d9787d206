// Patch meshes in the scene: names numbered as saved scenes expect, a new mesh shape made
// and selected, a patch node attached to a mesh's history and taken out again.

#include "kernel/nodeLookup.h"
#include "kernel/patchPlumbing.h"
#include "store/storeLookup.h"

#include "kernelTest.h"

#include <host/commands.h>

#include <maya/MFnDagNode.h>

namespace {

using plugintest::sceneText;

class PatchPlumbing : public kerneltest::SceneTest {};

TEST_F(PatchPlumbing, UniqueNamesCountOnlyPatchNodesAndNarrowTheCounter)
{
    host::createNode("transform", "tqPatch1"); // not a patch node: its name does not count
    EXPECT_STREQ(tq::uniqueName("tqPatch").asChar(), "tqPatch1");
    host::deleteNode("tqPatch1");
    for (int i = 1; i <= 127; ++i)
        ASSERT_FALSE(host::createNode("tqPatchNode", "tqPatch" + std::to_string(i)).isNull());
    EXPECT_STREQ(tq::uniqueName("tqPatch").asChar(), "tqPatch-128");
    EXPECT_STREQ(tq::uniqueName("other").asChar(), "other1");
}

TEST_F(PatchPlumbing, CreateMeshShapeMakesASelectedShadedMeshEvenWhenItsNameIsTaken)
{
    makeMesh("tqMeshShape1", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
    MStatus status;
    const MDagPath transform = tq::createMeshShape(status);
    ASSERT_TRUE(status) << host::logText();
    ASSERT_TRUE(transform.isValid());
    MDagPath shape = transform;
    ASSERT_TRUE(shape.extendToShape());
    EXPECT_NE(std::string(shape.partialPathName().asChar()), "tqMeshShape1");
    EXPECT_EQ(tq::getActiveMeshPath().fullPathName(), shape.fullPathName());
    const std::string shaded = std::string(shape.partialPathName().asChar()) + ".message -> initialShadingGroup.dagSetMembers";
    EXPECT_NE(sceneText().find(shaded), std::string::npos) << sceneText();
}

TEST_F(PatchPlumbing, AttachAndDetachAPatchNode)
{
    const MDagPath mesh = makeMesh("retopo", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {4}, {0, 1, 2, 3});
    ASSERT_TRUE(host::select({"retopo"}));
    MObject node;
    MStatus status;
    EXPECT_FALSE(tq::patchNodeOfActiveMesh(node, status));

    ASSERT_TRUE(tq::attachPatchNode("tqPatch1", mesh, node)) << host::logText();
    MObject found;
    EXPECT_TRUE(tq::patchNodeOfActiveMesh(found, status));
    EXPECT_TRUE(found == node);
    EXPECT_TRUE(tq::findPatchNodeByName("tqPatch1", found));
    EXPECT_FALSE(tq::findPatchNodeByName("tqPatch2", found));

    // An unknown name, or a node with nothing connected, changes nothing.
    const std::string attached = sceneText();
    EXPECT_EQ(tq::detachPatchNode("tqPatch2"), MStatus::kInvalidParameter);
    MObject loose = host::createNode("tqPatchNode", "loose");
    EXPECT_FALSE(tq::reconnectAround(loose));
    host::deleteNode("loose");
    EXPECT_EQ(sceneText(), attached);

    ASSERT_TRUE(tq::detachPatchNode("tqPatch1"));
    EXPECT_TRUE(host::nodeNames("tqPatchNode").empty());
    EXPECT_FALSE(tq::patchNodeOfActiveMesh(found, status));
    EXPECT_EQ(MFnMesh(mesh).numPolygons(), 1);
}

TEST_F(PatchPlumbing, FindMeshByNameFallsBackOnTheSelectedMesh)
{
    const MDagPath mesh = makeMesh("retopo", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
    MStatus status;
    EXPECT_STREQ(tq::findMeshByName("retopo", status).fullPathName().asChar(), "|retopo");
    ASSERT_TRUE(host::select({"retopo"}));
    // An unknown name still answers the selected mesh, with success: callers test the path.
    EXPECT_EQ(tq::findMeshByName("nothing", status).fullPathName(), mesh.fullPathName());
    EXPECT_TRUE(status);
}

} // namespace
