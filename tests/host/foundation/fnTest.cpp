#include <maya/MFn.h>

#include "foundation/fnHierarchy.h"

#include <gtest/gtest.h>

namespace {

using host::fnIsA;

TEST(FnTest, enumeratorsKeepTheDevkitNumbering)
{
    static_assert(MFn::kInvalid == 0 && MFn::kBase == 1 && MFn::kDependencyNode == 4);
    EXPECT_EQ(MFn::kDagNode, 107);
    EXPECT_EQ(MFn::kTransform, 110);
    EXPECT_EQ(MFn::kShape, 248);
    EXPECT_EQ(MFn::kMesh, 296);
    EXPECT_EQ(MFn::kDistanceBetween, 322);
    EXPECT_EQ(MFn::kPluginDependNode, 459);
    EXPECT_EQ(MFn::kPluginLocatorNode, 460);
    EXPECT_EQ(MFn::kMeshVertComponent, 554);
    EXPECT_EQ(MFn::kPluginDeformerNode, 614);
    EXPECT_EQ(MFn::kPluginShape, 710);
    EXPECT_EQ(MFn::kPluginTransformNode, 910);
    EXPECT_EQ(MFn::kPluginConstraintNode, 1012);
    EXPECT_EQ(MFn::kPluginBlendShape, 1112);
    EXPECT_EQ(MFn::kLast, 1113);
    EXPECT_EQ(MFn::kAttribute3Long, MFn::kAttribute3Int);
    EXPECT_EQ(MFn::kData2Long, MFn::kData2Int);
}

TEST(FnTest, pluginNodeFilterMatchesEveryPluginNodeKind)
{
    for (MFn::Type type : {MFn::kPluginDependNode, MFn::kPluginLocatorNode, MFn::kPluginDeformerNode,
                           MFn::kPluginTransformNode, MFn::kPluginConstraintNode, MFn::kPluginShape,
                           MFn::kPluginGeometryFilter, MFn::kPluginSkinCluster, MFn::kPluginBlendShape,
                           MFn::kPluginObjectSet, MFn::kPluginManipulatorNode}) {
        EXPECT_TRUE(fnIsA(type, MFn::kPluginDependNode)) << type;
        EXPECT_TRUE(fnIsA(type, MFn::kDependencyNode)) << type;
    }
    // Plug-ins built against the devkit pass the filter as the number 459.
    EXPECT_TRUE(fnIsA(MFn::kPluginLocatorNode, static_cast<MFn::Type>(459)));
    EXPECT_FALSE(fnIsA(MFn::kMesh, MFn::kPluginDependNode));
    EXPECT_FALSE(fnIsA(MFn::kTransform, MFn::kPluginDependNode));
}

TEST(FnTest, pluginNodesAlsoMatchTheirBuiltInFamily)
{
    EXPECT_TRUE(fnIsA(MFn::kPluginLocatorNode, MFn::kLocator));
    EXPECT_TRUE(fnIsA(MFn::kPluginLocatorNode, MFn::kShape));
    EXPECT_TRUE(fnIsA(MFn::kPluginLocatorNode, MFn::kDagNode));
    EXPECT_FALSE(fnIsA(MFn::kPluginLocatorNode, MFn::kTransform));
    EXPECT_TRUE(fnIsA(MFn::kPluginTransformNode, MFn::kTransform));
    EXPECT_TRUE(fnIsA(MFn::kPluginConstraintNode, MFn::kConstraint));
    EXPECT_TRUE(fnIsA(MFn::kPluginConstraintNode, MFn::kTransform));
    EXPECT_TRUE(fnIsA(MFn::kPluginDeformerNode, MFn::kGeometryFilt));
    EXPECT_FALSE(fnIsA(MFn::kPluginDependNode, MFn::kDagNode));
}

TEST(FnTest, builtInNodeHierarchy)
{
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kMesh));
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kSurface));
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kShape));
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kDagNode));
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kDependencyNode));
    EXPECT_TRUE(fnIsA(MFn::kMesh, MFn::kNamedObject));
    EXPECT_FALSE(fnIsA(MFn::kMesh, MFn::kTransform));
    EXPECT_FALSE(fnIsA(MFn::kDagNode, MFn::kMesh));
    EXPECT_TRUE(fnIsA(MFn::kCamera, MFn::kShape));
    EXPECT_TRUE(fnIsA(MFn::kJoint, MFn::kTransform));
    EXPECT_TRUE(fnIsA(MFn::kAimConstraint, MFn::kTransform));
    EXPECT_TRUE(fnIsA(MFn::kPolyTweak, MFn::kDependencyNode));
    EXPECT_FALSE(fnIsA(MFn::kPolyTweak, MFn::kDagNode));
    EXPECT_TRUE(fnIsA(MFn::kShadingEngine, MFn::kSet));
}

TEST(FnTest, dataComponentAndAttributeFamilies)
{
    EXPECT_TRUE(fnIsA(MFn::kMeshData, MFn::kGeometryData));
    EXPECT_TRUE(fnIsA(MFn::kMeshData, MFn::kData));
    EXPECT_TRUE(fnIsA(MFn::kData3Double, MFn::kNumericData));
    EXPECT_FALSE(fnIsA(MFn::kMeshData, MFn::kDependencyNode));
    EXPECT_TRUE(fnIsA(MFn::kMeshVertComponent, MFn::kSingleIndexedComponent));
    EXPECT_TRUE(fnIsA(MFn::kMeshEdgeComponent, MFn::kComponent));
    EXPECT_TRUE(fnIsA(MFn::kMeshPolygonComponent, MFn::kMeshComponent));
    EXPECT_FALSE(fnIsA(MFn::kMeshVertComponent, MFn::kDoubleIndexedComponent));
    EXPECT_TRUE(fnIsA(MFn::kDoubleLinearAttribute, MFn::kUnitAttribute));
    EXPECT_TRUE(fnIsA(MFn::kTypedAttribute, MFn::kAttribute));
    EXPECT_TRUE(fnIsA(MFn::kAttribute3Double, MFn::kNumericAttribute));
    EXPECT_TRUE(fnIsA(MFn::kAttribute3Double, MFn::kCompoundAttribute));
    EXPECT_FALSE(fnIsA(MFn::kNumericAttribute, MFn::kData));
}

TEST(FnTest, baseInvalidAndOutOfRangeValues)
{
    EXPECT_TRUE(fnIsA(MFn::kMeshData, MFn::kBase));
    EXPECT_TRUE(fnIsA(MFn::kAddDoubleLinear, MFn::kBase));
    EXPECT_TRUE(fnIsA(MFn::kAddDoubleLinear, MFn::kAddDoubleLinear));
    EXPECT_FALSE(fnIsA(MFn::kInvalid, MFn::kInvalid));
    EXPECT_FALSE(fnIsA(MFn::kInvalid, MFn::kBase));
    EXPECT_FALSE(fnIsA(MFn::kMesh, MFn::kInvalid));
    EXPECT_FALSE(fnIsA(MFn::kLast, MFn::kBase));
    EXPECT_FALSE(fnIsA(static_cast<MFn::Type>(1500), MFn::kBase));
}

} // namespace
