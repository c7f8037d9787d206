// Mesh queries: the surface point under a pixel on a real scan, through a perspective and an
// orthographic camera; positions of vertex numbers; vertex components of a mesh that grew.

#include "kernel/components.h"
#include "kernel/meshQueries.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"

#include "kernelTest.h"

#include <host/meshFiles.h>

#include <maya/MBoundingBox.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnSingleIndexedComponent.h>

#include <cmath>

namespace {

using kerneltest::intArray;
using kerneltest::ints;

std::vector<int> elements(const MObject& component)
{
    if (component.isNull())
        return {};
    MIntArray out;
    MFnSingleIndexedComponent(component).getElements(out);
    return ints(out);
}

class RayHitAtPixel : public kerneltest::SceneTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        MStatus status;
        std::string error;
        MObject transform = host::importMesh(std::string(TQSARN_SCAN_DIR) + "/refined_elephant.off", &status, &error);
        ASSERT_TRUE(status) << error;
        MFnDagNode(transform).getPath(scan);
        ASSERT_TRUE(scan.extendToShape());
        box = MFnDagNode(scan).boundingBox();
    }

    // Looks at the scan's centre from `offset` away, through a 640 x 480 view.
    M3dView viewFrom(const MVector& offset, bool orthographic)
    {
        const MPoint centre = box.center();
        MStatus status;
        MObject camera = orthographic ? host::makeOrthoCamera(centre + offset, centre, 2.0 * box.width(), "", &status)
                                      : host::makeCamera(centre + offset, centre, 54.43, "", &status);
        EXPECT_TRUE(status);
        EXPECT_TRUE(host::setActiveView(host::makeView(640, 480, camera, &status)));
        return M3dView::active3dView();
    }

    // Every pixel of a coarse grid: a hit is the first surface point along that pixel's ray,
    // with the normal of the face it lies on.
    void expectFirstHitsAlongRays(const M3dView& view)
    {
        MFnMesh mesh(scan);
        MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
        int hits = 0;
        for (short x = 20; x < 640; x += 40) {
            for (short y = 20; y < 480; y += 40) {
                MFloatPointArray points;
                MIntArray faces;
                MVector normal;
                const bool hit = tq::rayHitAtPixel(scan, points, normal, view, &accel, x, y, faces, true);
                MPoint source;
                MVector direction;
                ASSERT_TRUE(view.viewToWorld(x, y, source, direction));
                MFloatPoint nearest;
                int nearestFace = -1;
                const bool expected = mesh.closestIntersection(
                    MFloatPoint(float(source.x), float(source.y), float(source.z)),
                    MFloatVector(float(direction.x), float(direction.y), float(direction.z)), nullptr, nullptr, false,
                    MSpace::kWorld, 10000.0f, false, nullptr, nearest, nullptr, &nearestFace, nullptr, nullptr,
                    nullptr, 0.001f);
                ASSERT_EQ(hit, expected) << "pixel " << x << ", " << y;
                if (!hit)
                    continue;
                ++hits;
                ASSERT_EQ(points.length(), faces.length());
                EXPECT_EQ(faces[0], nearestFace) << "pixel " << x << ", " << y;
                EXPECT_LT(MPoint(points[0]).distanceTo(MPoint(nearest)), 1e-4) << "pixel " << x << ", " << y;
                MVector faceNormal;
                ASSERT_TRUE(mesh.getPolygonNormal(faces[0], faceNormal, MSpace::kWorld));
                EXPECT_LT((normal - faceNormal).length(), 1e-9);
                for (unsigned i = 1; i < points.length(); ++i)
                    EXPECT_LE(source.distanceTo(MPoint(points[i - 1])), source.distanceTo(MPoint(points[i])) + 1e-4);
            }
        }
        EXPECT_GT(hits, 20) << "the grid should meet the scan often";
    }

    MDagPath scan;
    MBoundingBox box;
};

TEST_F(RayHitAtPixel, FindsTheFirstSurfacePointUnderAPerspectiveCamera)
{
    expectFirstHitsAlongRays(viewFrom(MVector(0.3, 0.4, 1.2) * box.width(), false));
}

TEST_F(RayHitAtPixel, FindsTheFirstSurfacePointUnderAnOrthographicCamera)
{
    expectFirstHitsAlongRays(viewFrom(MVector(2.0, 0.5, 0.2) * box.width(), true));
}

TEST_F(RayHitAtPixel, NeverHitsOnTheViewsLeftOrBottomEdgeOrWithoutAMesh)
{
    // So close that the scan fills the whole view: every other pixel hits.
    const M3dView view = viewFrom(MVector(0.0, 0.0, 0.7) * box.depth(), true);
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
    MFloatPointArray points;
    MIntArray faces;
    MVector normal;
    ASSERT_TRUE(tq::rayHitAtPixel(scan, points, normal, view, &accel, 320, 240, faces, false));
    EXPECT_FALSE(tq::rayHitAtPixel(scan, points, normal, view, &accel, 0, 240, faces, false));
    EXPECT_FALSE(tq::rayHitAtPixel(scan, points, normal, view, &accel, 320, 0, faces, false));
    EXPECT_FALSE(tq::rayHitAtPixel(MDagPath(), points, normal, view, &accel, 320, 240, faces, false));
}

class MeshQueries : public kerneltest::SceneTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        // Two quads side by side: vertices 1 and 4 are on the border, none inside.
        grid = makeMesh("grid", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}}, {4, 4},
                        {0, 1, 4, 3, 1, 2, 5, 4});
        ASSERT_TRUE(host::select({"grid"}));
    }

    MDagPath grid;
};

TEST_F(MeshQueries, VertexPositionsAreLiveWorldPositionsAndRefuseNumbersPastTheMesh)
{
    ASSERT_TRUE(host::setDouble("grid.translateX", 10.0));
    MStatus status;
    MPointArray got = tq::vertexPositions(intArray({5, 0}), MDagPath(), status);
    ASSERT_TRUE(status);
    ASSERT_EQ(got.length(), 2u);
    EXPECT_EQ(got[0], MPoint(12, 1, 0));
    EXPECT_EQ(got[1], MPoint(10, 0, 0));

    for (int past : {6, 7, 100}) {
        got = tq::vertexPositions(intArray({0, past}), grid, status);
        EXPECT_FALSE(status) << past;
        EXPECT_EQ(got.length(), 0u) << past;
    }
    EXPECT_EQ(tq::vertexCount(grid), 6);
    EXPECT_EQ(tq::vertexCount(MDagPath()), 0);
    EXPECT_EQ(tq::allVertexPositions(status).length(), 6u);
}

TEST_F(MeshQueries, GrownVerticesAndFaceVertices)
{
    EXPECT_EQ(elements(tq::deltaVertices(10, 12)), (std::vector<int>{11, 10}));
    EXPECT_EQ(elements(tq::rangeDifferenceComponent(10, 12)), (std::vector<int>{11, 12}));
    EXPECT_TRUE(tq::deltaVertices(12, 12).isNull());
    EXPECT_TRUE(tq::componentFromIndices(MIntArray(), MFn::kMeshVertComponent).isNull());

    // Without a store the faces given count; a store's `newFaces` wins over them.
    EXPECT_EQ(elements(tq::newFacesVertexComponent(grid, intArray({1, 0}))), (std::vector<int>{1, 2, 5, 4, 0, 3}));
    MObject store = host::createNode("tqSarn", "store");
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({0}), "newFaces", store));
    EXPECT_EQ(elements(tq::newFacesVertexComponent(grid, intArray({1}))), (std::vector<int>{0, 1, 4, 3}));

    // Every vertex of two quads is on the border; an empty list looks at the whole mesh.
    EXPECT_FALSE(tq::hasInteriorVertex(grid, intArray({1, 4})));
    EXPECT_FALSE(tq::hasInteriorVertex(grid, MIntArray()));
}

TEST_F(MeshQueries, StripVerticesLeavesOutTheTwoShadowRows)
{
    MObject store = host::createNode("tqSarn", "store");
    MStatus status;
    EXPECT_TRUE(tq::strip_vertices(0, 6, status, grid).isNull());
    EXPECT_FALSE(status);

    // Rows along y = 0 and y = 1 hold vertices 1, 2 and 4, 5 (vertex 0 is never matched).
    ASSERT_TRUE(tq::writePointArrayAttr(kerneltest::points({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}, {2, 1, 0}}),
                                        "strokesShadow", store));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({2, 2}), "sizesShadow", store));
    EXPECT_EQ(elements(tq::strip_vertices(0, 6, status, grid)), (std::vector<int>{3, 0}));
    EXPECT_TRUE(status);
}

} // namespace
