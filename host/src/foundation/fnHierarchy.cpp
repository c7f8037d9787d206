#include "foundation/fnHierarchy.h"

#include <array>
#include <vector>

namespace host {
namespace {

struct Edge {
    MFn::Type child;
    MFn::Type parent;
};

// Child -> parent links. A type may have several parents; the plug-in node kinds list
// kPluginDependNode as one of theirs, which is what lets a filter of kPluginDependNode
// (MItDependencyNodes(MFn::kPluginDependNode), or the plain number 459 a plug-in may pass)
// visit every plug-in node, locators, deformers, transforms and shapes included. Types not
// listed here only match themselves and kBase.
constexpr Edge kEdges[] = {
    // Nodes.
    {MFn::kNamedObject, MFn::kBase},
    {MFn::kDependencyNode, MFn::kNamedObject},
    {MFn::kDagNode, MFn::kDependencyNode},
    {MFn::kWorld, MFn::kDagNode},
    {MFn::kUnderWorld, MFn::kDagNode},
    {MFn::kTransform, MFn::kDagNode},
    {MFn::kJoint, MFn::kTransform},
    {MFn::kIkHandle, MFn::kTransform},
    {MFn::kIkEffector, MFn::kTransform},
    {MFn::kLodGroup, MFn::kTransform},
    {MFn::kConstraint, MFn::kTransform},
    {MFn::kAimConstraint, MFn::kConstraint},
    {MFn::kGeometryConstraint, MFn::kConstraint},
    {MFn::kNormalConstraint, MFn::kConstraint},
    {MFn::kOrientConstraint, MFn::kConstraint},
    {MFn::kParentConstraint, MFn::kConstraint},
    {MFn::kPointConstraint, MFn::kConstraint},
    {MFn::kPoleVectorConstraint, MFn::kConstraint},
    {MFn::kScaleConstraint, MFn::kConstraint},
    {MFn::kTangentConstraint, MFn::kConstraint},
    {MFn::kPointOnPolyConstraint, MFn::kConstraint},
    {MFn::kShape, MFn::kDagNode},
    {MFn::kCamera, MFn::kShape},
    {MFn::kLocator, MFn::kShape},
    {MFn::kGeometric, MFn::kShape},
    {MFn::kSurface, MFn::kGeometric},
    {MFn::kMesh, MFn::kSurface},
    {MFn::kNurbsSurface, MFn::kSurface},
    {MFn::kCurve, MFn::kGeometric},
    {MFn::kNurbsCurve, MFn::kCurve},
    {MFn::kLight, MFn::kShape},
    {MFn::kAmbientLight, MFn::kLight},
    {MFn::kNonAmbientLight, MFn::kLight},
    {MFn::kAreaLight, MFn::kNonAmbientLight},
    {MFn::kNonExtendedLight, MFn::kNonAmbientLight},
    {MFn::kDirectionalLight, MFn::kNonExtendedLight},
    {MFn::kPointLight, MFn::kNonExtendedLight},
    {MFn::kSpotLight, MFn::kNonExtendedLight},
    {MFn::kSet, MFn::kDependencyNode},
    {MFn::kShadingEngine, MFn::kSet},
    {MFn::kPolyTweak, MFn::kDependencyNode},
    {MFn::kPolySplitRing, MFn::kDependencyNode},
    {MFn::kPolyBridgeEdge, MFn::kDependencyNode},
    {MFn::kPolyMergeVert, MFn::kDependencyNode},
    {MFn::kGroupId, MFn::kDependencyNode},
    {MFn::kGroupParts, MFn::kDependencyNode},
    {MFn::kGeometryFilt, MFn::kDependencyNode},
    {MFn::kWeightGeometryFilt, MFn::kGeometryFilt},
    {MFn::kTweak, MFn::kGeometryFilt},
    {MFn::kBlendShape, MFn::kGeometryFilt},
    {MFn::kSkinClusterFilter, MFn::kGeometryFilt},
    {MFn::kClusterFilter, MFn::kWeightGeometryFilt},

    // Plug-in nodes.
    {MFn::kPluginDependNode, MFn::kDependencyNode},
    {MFn::kPluginLocatorNode, MFn::kLocator},
    {MFn::kPluginLocatorNode, MFn::kPluginDependNode},
    {MFn::kPluginTransformNode, MFn::kTransform},
    {MFn::kPluginTransformNode, MFn::kPluginDependNode},
    {MFn::kPluginConstraintNode, MFn::kConstraint},
    {MFn::kPluginConstraintNode, MFn::kPluginDependNode},
    {MFn::kPluginShape, MFn::kShape},
    {MFn::kPluginShape, MFn::kPluginDependNode},
    {MFn::kPluginDeformerNode, MFn::kWeightGeometryFilt},
    {MFn::kPluginDeformerNode, MFn::kPluginDependNode},
    {MFn::kPluginGeometryFilter, MFn::kGeometryFilt},
    {MFn::kPluginGeometryFilter, MFn::kPluginDependNode},
    {MFn::kPluginSkinCluster, MFn::kSkinClusterFilter},
    {MFn::kPluginSkinCluster, MFn::kPluginDependNode},
    {MFn::kPluginBlendShape, MFn::kBlendShape},
    {MFn::kPluginBlendShape, MFn::kPluginDependNode},
    {MFn::kPluginObjectSet, MFn::kSet},
    {MFn::kPluginObjectSet, MFn::kPluginDependNode},
    {MFn::kPluginManipulatorNode, MFn::kDagNode},
    {MFn::kPluginManipulatorNode, MFn::kPluginDependNode},
    {MFn::kPluginManipContainer, MFn::kPluginDependNode},
    {MFn::kPluginMotionPathNode, MFn::kPluginDependNode},
    {MFn::kPluginFieldNode, MFn::kPluginDependNode},
    {MFn::kPluginEmitterNode, MFn::kPluginDependNode},
    {MFn::kPluginSpringNode, MFn::kPluginDependNode},
    {MFn::kPluginIkSolver, MFn::kPluginDependNode},
    {MFn::kPluginHardwareShader, MFn::kPluginDependNode},
    {MFn::kPluginHwShaderNode, MFn::kPluginDependNode},
    {MFn::kPluginImagePlaneNode, MFn::kPluginDependNode},
    {MFn::kPluginCameraSet, MFn::kPluginDependNode},
    {MFn::kPluginParticleAttributeMapperNode, MFn::kPluginDependNode},
    {MFn::kPluginClientDevice, MFn::kPluginDependNode},
    {MFn::kPluginThreadedDevice, MFn::kPluginDependNode},

    // Data.
    {MFn::kData, MFn::kBase},
    {MFn::kComponentListData, MFn::kData},
    {MFn::kDoubleArrayData, MFn::kData},
    {MFn::kFloatArrayData, MFn::kData},
    {MFn::kIntArrayData, MFn::kData},
    {MFn::kUInt64ArrayData, MFn::kData},
    {MFn::kPointArrayData, MFn::kData},
    {MFn::kVectorArrayData, MFn::kData},
    {MFn::kFloatVectorArrayData, MFn::kData},
    {MFn::kMatrixData, MFn::kData},
    {MFn::kMatrixFloatData, MFn::kData},
    {MFn::kMatrixArrayData, MFn::kData},
    {MFn::kStringData, MFn::kData},
    {MFn::kStringArrayData, MFn::kData},
    {MFn::kSphereData, MFn::kData},
    {MFn::kDynArrayAttrsData, MFn::kData},
    {MFn::kNumericData, MFn::kData},
    {MFn::kData2Double, MFn::kNumericData},
    {MFn::kData2Float, MFn::kNumericData},
    {MFn::kData2Int, MFn::kNumericData},
    {MFn::kData2Short, MFn::kNumericData},
    {MFn::kData3Double, MFn::kNumericData},
    {MFn::kData3Float, MFn::kNumericData},
    {MFn::kData3Int, MFn::kNumericData},
    {MFn::kData3Short, MFn::kNumericData},
    {MFn::kData4Double, MFn::kNumericData},
    {MFn::kPluginData, MFn::kData},
    {MFn::kGeometryData, MFn::kData},
    {MFn::kMeshData, MFn::kGeometryData},
    {MFn::kNurbsCurveData, MFn::kGeometryData},
    {MFn::kNurbsSurfaceData, MFn::kGeometryData},
    {MFn::kLatticeData, MFn::kGeometryData},
    {MFn::kSubdivData, MFn::kGeometryData},
    {MFn::kPluginGeometryData, MFn::kGeometryData},

    // Components.
    {MFn::kComponent, MFn::kBase},
    {MFn::kSingleIndexedComponent, MFn::kComponent},
    {MFn::kDoubleIndexedComponent, MFn::kComponent},
    {MFn::kTripleIndexedComponent, MFn::kComponent},
    {MFn::kUint64SingleIndexedComponent, MFn::kComponent},
    {MFn::kMeshComponent, MFn::kComponent},
    {MFn::kMeshVertComponent, MFn::kSingleIndexedComponent},
    {MFn::kMeshVertComponent, MFn::kMeshComponent},
    {MFn::kMeshEdgeComponent, MFn::kSingleIndexedComponent},
    {MFn::kMeshEdgeComponent, MFn::kMeshComponent},
    {MFn::kMeshPolygonComponent, MFn::kSingleIndexedComponent},
    {MFn::kMeshPolygonComponent, MFn::kMeshComponent},
    {MFn::kMeshFrEdgeComponent, MFn::kSingleIndexedComponent},
    {MFn::kMeshFrEdgeComponent, MFn::kMeshComponent},
    {MFn::kMeshMapComponent, MFn::kSingleIndexedComponent},
    {MFn::kMeshMapComponent, MFn::kMeshComponent},
    {MFn::kMeshVtxFaceComponent, MFn::kDoubleIndexedComponent},
    {MFn::kMeshVtxFaceComponent, MFn::kMeshComponent},
    {MFn::kMeshFaceVertComponent, MFn::kDoubleIndexedComponent},
    {MFn::kMeshFaceVertComponent, MFn::kMeshComponent},
    {MFn::kCurveCVComponent, MFn::kSingleIndexedComponent},
    {MFn::kCurveEPComponent, MFn::kSingleIndexedComponent},
    {MFn::kSurfaceCVComponent, MFn::kDoubleIndexedComponent},
    {MFn::kLatticeComponent, MFn::kTripleIndexedComponent},

    // Attributes.
    {MFn::kAttribute, MFn::kBase},
    {MFn::kNumericAttribute, MFn::kAttribute},
    {MFn::kTypedAttribute, MFn::kAttribute},
    {MFn::kGenericAttribute, MFn::kAttribute},
    {MFn::kCompoundAttribute, MFn::kAttribute},
    {MFn::kEnumAttribute, MFn::kAttribute},
    {MFn::kMatrixAttribute, MFn::kAttribute},
    {MFn::kFloatMatrixAttribute, MFn::kAttribute},
    {MFn::kMessageAttribute, MFn::kAttribute},
    {MFn::kLightDataAttribute, MFn::kAttribute},
    {MFn::kUnitAttribute, MFn::kAttribute},
    {MFn::kDoubleAngleAttribute, MFn::kUnitAttribute},
    {MFn::kFloatAngleAttribute, MFn::kUnitAttribute},
    {MFn::kDoubleLinearAttribute, MFn::kUnitAttribute},
    {MFn::kFloatLinearAttribute, MFn::kUnitAttribute},
    {MFn::kTimeAttribute, MFn::kUnitAttribute},
    // Numeric compounds (double3 and friends) are read with MFnNumericAttribute and have
    // children like any compound.
    {MFn::kAttribute2Double, MFn::kNumericAttribute},
    {MFn::kAttribute2Double, MFn::kCompoundAttribute},
    {MFn::kAttribute2Float, MFn::kNumericAttribute},
    {MFn::kAttribute2Float, MFn::kCompoundAttribute},
    {MFn::kAttribute2Short, MFn::kNumericAttribute},
    {MFn::kAttribute2Short, MFn::kCompoundAttribute},
    {MFn::kAttribute2Int, MFn::kNumericAttribute},
    {MFn::kAttribute2Int, MFn::kCompoundAttribute},
    {MFn::kAttribute3Double, MFn::kNumericAttribute},
    {MFn::kAttribute3Double, MFn::kCompoundAttribute},
    {MFn::kAttribute3Float, MFn::kNumericAttribute},
    {MFn::kAttribute3Float, MFn::kCompoundAttribute},
    {MFn::kAttribute3Short, MFn::kNumericAttribute},
    {MFn::kAttribute3Short, MFn::kCompoundAttribute},
    {MFn::kAttribute3Int, MFn::kNumericAttribute},
    {MFn::kAttribute3Int, MFn::kCompoundAttribute},
    {MFn::kAttribute4Double, MFn::kNumericAttribute},
    {MFn::kAttribute4Double, MFn::kCompoundAttribute},
};

constexpr int kTypeCount = MFn::kLast;

bool inRange(int value) { return value > MFn::kInvalid && value < kTypeCount; }

// Parents of each type, built once from the edge table.
const std::vector<std::vector<int>>& parents()
{
    static const std::vector<std::vector<int>> table = [] {
        std::vector<std::vector<int>> result(kTypeCount);
        for (const Edge& edge : kEdges)
            result[edge.child].push_back(edge.parent);
        return result;
    }();
    return table;
}

} // namespace

bool fnIsA(MFn::Type actual, MFn::Type wanted)
{
    const int start = static_cast<int>(actual);
    const int goal = static_cast<int>(wanted);
    if (!inRange(start) || !inRange(goal))
        return false;
    if (start == goal || goal == MFn::kBase)
        return true;
    const auto& table = parents();
    std::array<bool, kTypeCount> seen{};
    std::vector<int> pending{start};
    seen[start] = true;
    while (!pending.empty()) {
        const int current = pending.back();
        pending.pop_back();
        for (int parent : table[current]) {
            if (parent == goal)
                return true;
            if (!seen[parent]) {
                seen[parent] = true;
                pending.push_back(parent);
            }
        }
    }
    return false;
}

} // namespace host
