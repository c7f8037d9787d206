// The declarations a plug-in compiles against, held to the reference's exact forms: what
// compiles here must compile against a devkit, so the host's signatures may be no looser
// (no const where the reference takes a modifiable object, no missing status argument) and
// return what the reference returns. Most checks are at compile time; the tests run the
// members whose behaviour changed with their form.

#include "dgTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MApiNamespace.h>
#include <maya/MArrayDataBuilder.h>
#include <maya/MArrayDataHandle.h>
#include <maya/MDGContext.h>
#include <maya/MDGModifier.h>
#include <maya/MDataBlock.h>
#include <maya/MEventMessage.h>
#include <maya/MFnComponent.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIOStream.h>
#include <maya/MItDag.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MItSelectionList.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPxConstraint.h>
#include <maya/MSelectionList.h>
#include <maya/MUserData.h>

#include <type_traits>

namespace {

// Each line compiles only when a member of exactly that type exists.
[[maybe_unused]] MStatus (MPlugArray::*plugArrayClear)() = &MPlugArray::clear;
[[maybe_unused]] bool (MDGContext::*contextIsNormal)(MStatus*) const = &MDGContext::isNormal;
[[maybe_unused]] MString (MFnEnumAttribute::*enumDefault)(MStatus*) const = &MFnEnumAttribute::defaultValue;
[[maybe_unused]] MStatus (MItDag::*dagPrune)() = &MItDag::prune;
[[maybe_unused]] MObject (MFnDagNode::*dagCreate)(const MString&, MObject&, MStatus*) = &MFnDagNode::create;
[[maybe_unused]] MObject (MFnDagNode::*dagCreateNamed)(const MString&, const MString&, MObject&, MStatus*) =
    &MFnDagNode::create;
[[maybe_unused]] MObject (MFnDagNode::*dagCreateById)(const MTypeId&, MObject&, MStatus*) = &MFnDagNode::create;
[[maybe_unused]] MStatus (MDGModifier::*newPlugValue)(const MPlug&, MObject&) = &MDGModifier::newPlugValue;
[[maybe_unused]] MStatus (*globalSelect)(MObject&, MGlobal::ListAdjustment) = &MGlobal::select;
[[maybe_unused]] MStatus (*globalSelectPath)(const MDagPath&, const MObject&, MGlobal::ListAdjustment) =
    &MGlobal::select;
[[maybe_unused]] MStatus (*globalUnselect)(MObject&) = &MGlobal::unselect;
[[maybe_unused]] MStatus (*globalUnselectPath)(const MDagPath&, const MObject&) = &MGlobal::unselect;
[[maybe_unused]] MStatus (*globalDelete)(MObject&) = &MGlobal::deleteNode;
[[maybe_unused]] MStatus (MFnSingleIndexedComponent::*addElements)(MIntArray&) =
    &MFnSingleIndexedComponent::addElements;
[[maybe_unused]] bool (MFnComponent::*componentIsEqual)(MObject&, MStatus*) const = &MFnComponent::isEqual;
[[maybe_unused]] MStatus (MArrayDataHandle::*arraySet)(MArrayDataBuilder&) = &MArrayDataHandle::set;
[[maybe_unused]] unsigned int (MPlug::*evaluateNumElements)(MStatus*) = &MPlug::evaluateNumElements;
[[maybe_unused]] unsigned int (MPlug::*existingIndices)(MIntArray&, MStatus*) =
    &MPlug::getExistingArrayAttributeIndices;
[[maybe_unused]] MDGContext (MDataBlock::*blockContext)(MStatus*) = &MDataBlock::context;
[[maybe_unused]] bool (MUserData::*userDeleteAfterUse)() = &MUserData::deleteAfterUse;
[[maybe_unused]] int& (MFnIntArrayData::*intElement)(unsigned int) = &MFnIntArrayData::operator[];
[[maybe_unused]] int (MFnIntArrayData::*intElementConst)(unsigned int) const = &MFnIntArrayData::operator[];
[[maybe_unused]] MStatus (MItMeshVertex::*vertexReset)(MObject&) = &MItMeshVertex::reset;
[[maybe_unused]] MStatus (MItMeshVertex::*vertexResetPath)(const MDagPath&, MObject&) = &MItMeshVertex::reset;
[[maybe_unused]] MStatus (MItMeshEdge::*edgeReset)(MObject&, MObject&) = &MItMeshEdge::reset;
[[maybe_unused]] MStatus (MItMeshEdge::*edgeResetPath)(const MDagPath&, MObject&) = &MItMeshEdge::reset;
[[maybe_unused]] MStatus (MItMeshPolygon::*polygonReset)(const MObject&) = &MItMeshPolygon::reset;
[[maybe_unused]] MStatus (MItMeshPolygon::*polygonResetPath)(const MDagPath&, MObject&) = &MItMeshPolygon::reset;

// The iterators take the objects they walk by modifiable reference, so a temporary (or a
// const object) is refused as it is by the reference; MItMeshPolygon's object form alone is
// const there.
static_assert(std::is_constructible_v<MItMeshVertex, MObject&>);
static_assert(!std::is_constructible_v<MItMeshVertex, MObject>);
static_assert(!std::is_constructible_v<MItMeshVertex, const MObject&>);
static_assert(!std::is_constructible_v<MItMeshVertex, const MDagPath&, const MObject&>);
static_assert(std::is_constructible_v<MItMeshVertex, const MDagPath&, MObject&>);
static_assert(!std::is_constructible_v<MItMeshEdge, MObject>);
static_assert(!std::is_constructible_v<MItMeshEdge, MObject&, const MObject&>);
static_assert(std::is_constructible_v<MItMeshEdge, MObject&, MObject&>);
static_assert(!std::is_constructible_v<MItMeshEdge, const MDagPath&, const MObject&>);
static_assert(std::is_constructible_v<MItMeshPolygon, const MObject&>);
static_assert(!std::is_constructible_v<MItMeshPolygon, const MDagPath&, const MObject&>);
static_assert(!std::is_constructible_v<MItGeometry, MObject>);
static_assert(!std::is_constructible_v<MItGeometry, const MDagPath&, const MObject&>);
static_assert(std::is_constructible_v<MItGeometry, const MDagPath&, MObject&>);
static_assert(!std::is_constructible_v<MItGeometry, MDataHandle&, const MObject&>);
static_assert(std::is_constructible_v<MItSelectionList, const MSelectionList&>);
static_assert(std::is_base_of_v<MPxNode, MPxConstraint>);

// The forward declarations stand in for the headers that need only the names.
[[maybe_unused]] void (*takesNames)(MFnMesh*, MHWRender::MUIDrawManager*, MItSelectionList*) = nullptr;

using ReferenceForms = DgTest;

TEST_F(ReferenceForms, MembersWhoseResultChangedWithTheirForm)
{
    MStatus status;
    MPlugArray plugs(2, MPlug());
    EXPECT_TRUE(plugs.clear());
    EXPECT_EQ(plugs.length(), 0u);

    status = MStatus::kFailure;
    EXPECT_TRUE(MDGContext::fsNormal.isNormal(&status));
    EXPECT_TRUE(status);

    create("transform", "top");
    create("transform", "below", "top");
    MItDag dag;
    EXPECT_TRUE(dag.prune());
    while (!dag.isDone())
        dag.next();
    EXPECT_FALSE(dag.prune()) << "nothing to prune once the walk is done";
}

TEST_F(ReferenceForms, SelectAndUnselectTakeNodesAndComponents)
{
    MObject transform = host::addMesh(host::gridPlane(2.0f, 2.0f, 1, 1), "plane");
    ASSERT_FALSE(transform.isNull());
    ASSERT_TRUE(MGlobal::clearSelectionList());
    ASSERT_TRUE(MGlobal::select(transform, MGlobal::kReplaceList));
    MSelectionList active;
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(active.length(), 1u);
    ASSERT_TRUE(MGlobal::unselect(transform));
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(active.length(), 0u);

    MSelectionList corners;
    ASSERT_TRUE(corners.add("plane.vtx[0:1]"));
    MDagPath path;
    MObject component;
    ASSERT_TRUE(corners.getDagPath(0, path, component));
    ASSERT_TRUE(MGlobal::select(path, component, MGlobal::kReplaceList));
    ASSERT_TRUE(MGlobal::unselect(path, component));
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(active.length(), 0u) << "unselecting the component empties the selection";
}

TEST_F(ReferenceForms, SelectionListIteratorFiltersByKind)
{
    host::addMesh(host::gridPlane(2.0f, 2.0f, 1, 1), "plane");
    create("transform", "empty");
    create("dgAffects", "plainNode");
    MSelectionList list;
    for (const char* item : {"plane", "empty", "plainNode", "plane.e[2]"})
        ASSERT_TRUE(list.add(item)) << item;

    std::vector<std::string> all;
    for (MItSelectionList it(list); !it.isDone(); it.next()) {
        MObject node;
        ASSERT_TRUE(it.getDependNode(node));
        all.push_back(hosttest::nameOf(node));
    }
    EXPECT_EQ(all.size(), 4u);

    // A transform that is no mesh stands for the mesh below it; other items drop out.
    std::vector<std::string> meshes;
    bool sawComponent = false;
    for (MItSelectionList it(list, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        MObject component;
        ASSERT_TRUE(it.getDagPath(path, component));
        EXPECT_EQ(it.itemType(), MItSelectionList::kDagSelectionItem);
        meshes.push_back(path.partialPathName().asChar());
        sawComponent = sawComponent || it.hasComponents();
    }
    EXPECT_EQ(meshes.size(), 2u) << "the plane, and its edge";
    EXPECT_TRUE(sawComponent);

    MItSelectionList plain(list, MFn::kDependencyNode);
    plain.setFilter(MFn::kTransform);
    int transforms = 0;
    for (; !plain.isDone(); plain.next())
        ++transforms;
    EXPECT_EQ(transforms, 2) << "plane and empty";
}

} // namespace
