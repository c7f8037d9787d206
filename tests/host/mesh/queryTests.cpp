// Mesh queries and attribute edits: normals (object and world space), UV sets and their
// assignment, edge smoothing, and bad input failing cleanly without changing the mesh.

#include "meshTest.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnPointArrayData.h>

namespace {

using meshtest::added;
using meshtest::ints;
using meshtest::MeshTest;
using meshtest::near;
using meshtest::P3;
using meshtest::pointsOf;

using MeshQueries = MeshTest;

TEST_F(MeshQueries, PolygonNormalOfANonPlanarQuadIsNewells)
{
    MFnMesh fn;
    createMesh(fn, {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {4}, {0, 1, 2, 3});
    MVector n;
    ASSERT_TRUE(fn.getPolygonNormal(0, n));
    // Not the normal of any three corners: (0,-1,1)/sqrt2 from the first three, for one.
    const double s = 1.0 / std::sqrt(6.0);
    EXPECT_TRUE(near(n, -s, -s, 2 * s));
}

TEST_F(MeshQueries, AreaAndAngleWeightedVertexNormalsDiffer)
{
    // Vertex 0 joins a large triangle facing +z and a small one facing +x, both with a right
    // angle there: angles weigh them equally, areas favour the large one 100 to 1.
    MFnMesh fn;
    createMesh(fn, {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {0, 1, 0}, {0, 0, 1}}, {3, 3}, {0, 1, 2, 0, 3, 4});
    const double h = 1.0 / std::sqrt(2.0), l = 1.0 / std::sqrt(10001.0);
    MVector n;
    ASSERT_TRUE(fn.getVertexNormal(0, true, n));
    EXPECT_TRUE(near(n, h, 0, h));
    ASSERT_TRUE(fn.getVertexNormal(0, false, n));
    EXPECT_TRUE(near(n, l, 0, 100 * l));
    ASSERT_TRUE(fn.getVertexNormal(0, n));
    EXPECT_TRUE(near(n, l, 0, 100 * l)) << "the default is not area weighting";
    MFloatVectorArray all;
    ASSERT_TRUE(fn.getVertexNormals(true, all));
    ASSERT_EQ(all.length(), 5u);
    EXPECT_TRUE(near(MVector(all[0]), h, 0, h));
    EXPECT_TRUE(near(MVector(all[3]), 1, 0, 0));
}

TEST_F(MeshQueries, WorldSpaceUsesTheInclusiveMatrixAndTheInverseTransposeForNormals)
{
    MFnMesh fn;
    createMesh(fn, {{1, 0, 0}, {0, 1, 0}, {1, 0, 1}}, {3}, {0, 1, 2});
    ASSERT_TRUE(host::setDouble("polySurface1.scaleX", 2.0));
    ASSERT_TRUE(host::setDouble("polySurface1.rotateZ", 1.5707963267948966));
    ASSERT_TRUE(host::setDouble("polySurface1.translateZ", 5.0));
    // Scale x by 2, turn 90 degrees about z ((x, y) -> (-y, x)), move up 5.
    const std::vector<P3> world = pointsOf(fn, MSpace::kWorld);
    ASSERT_EQ(world.size(), 3u);
    EXPECT_TRUE(near(MVector(world[0][0], world[0][1], world[0][2]), 0, 2, 5, 1e-5));
    EXPECT_TRUE(near(MVector(world[1][0], world[1][1], world[1][2]), -1, 0, 5, 1e-5));
    MPoint p;
    ASSERT_TRUE(fn.getPoint(2, p, MSpace::kWorld));
    EXPECT_TRUE(near(MVector(p), 0, 2, 6));

    // The world triangle's own normal: (1,2,0)/sqrt5 after the scale, then turned.
    const double r = 1.0 / std::sqrt(5.0);
    MVector n;
    ASSERT_TRUE(fn.getPolygonNormal(0, n, MSpace::kWorld));
    EXPECT_TRUE(near(n, -2 * r, r, 0));
    ASSERT_TRUE(fn.getVertexNormal(1, true, n, MSpace::kWorld));
    EXPECT_TRUE(near(n, -2 * r, r, 0));
    ASSERT_TRUE(fn.getPolygonNormal(0, n));
    EXPECT_TRUE(near(n, std::sqrt(0.5), std::sqrt(0.5), 0)) << "object space moved with the transform";

    // A world-space write lands where asked.
    ASSERT_TRUE(fn.setPoint(1, MPoint(0, 4, 5), MSpace::kWorld));
    ASSERT_TRUE(fn.getPoint(1, p));
    EXPECT_TRUE(near(MVector(p), 2, 0, 0));
}

TEST_F(MeshQueries, UVsRoundTripThroughSetAssignAndGet)
{
    MFnMesh fn;
    createStrip(fn);
    EXPECT_EQ(hosttest::str(fn.currentUVSetName()), "map1");
    EXPECT_EQ(fn.numUVSets(), 1);
    const float u[] = {0, 0.5f, 1, 0, 0.5f, 1}, v[] = {0, 0, 0, 1, 1, 1};
    ASSERT_TRUE(fn.setUVs(MFloatArray(u, 6), MFloatArray(v, 6)));
    EXPECT_EQ(fn.numUVs(), 6);
    // Faces 0 and 2 mapped, face 1 not.
    const int counts[] = {4, 0, 4}, ids[] = {0, 1, 4, 3, 1, 2, 5, 4};
    ASSERT_TRUE(fn.assignUVs(MIntArray(counts, 3), MIntArray(ids, 8)));
    MIntArray gotCounts, gotIds;
    ASSERT_TRUE(fn.getAssignedUVs(gotCounts, gotIds));
    EXPECT_EQ(ints(gotCounts), (std::vector<int>{4, 0, 4}));
    EXPECT_EQ(ints(gotIds), (std::vector<int>{0, 1, 4, 3, 1, 2, 5, 4}));
    float pu = -1, pv = -1;
    ASSERT_TRUE(fn.getPolygonUV(2, 2, pu, pv));
    EXPECT_EQ(pu, 1.0f);
    EXPECT_EQ(pv, 1.0f);
    int uvId = -1;
    EXPECT_EQ(fn.getPolygonUVid(1, 0, uvId).statusCode(), MStatus::kFailure);

    // One corner more for face 1 is still a partly mapped face; a new face has no UVs.
    ASSERT_TRUE(fn.assignUV(1, 0, 1));
    ASSERT_TRUE(fn.getAssignedUVs(gotCounts, gotIds));
    EXPECT_EQ(ints(gotCounts), (std::vector<int>{4, 0, 4}));
    ASSERT_TRUE(added(fn, {{4, 0, 0}, {4, 1, 0}, {3, 1, 0}}));
    ASSERT_TRUE(fn.getAssignedUVs(gotCounts, gotIds));
    EXPECT_EQ(ints(gotCounts), (std::vector<int>{4, 0, 4, 0}));

    // A second set by a taken name gets the next free one and can become current.
    MString second = fn.createUVSetWithName("map1");
    EXPECT_EQ(hosttest::str(second), "map2");
    ASSERT_TRUE(fn.setCurrentUVSetName(second));
    EXPECT_EQ(hosttest::str(fn.currentUVSetName()), "map2");
    EXPECT_EQ(fn.numUVs(), 0);
    const MString map1("map1");
    EXPECT_EQ(fn.numUVs(map1), 6);
    EXPECT_FALSE(fn.setCurrentUVSetName("noSuchSet"));

    // Shrinking the UVs drops the assignments to the ones gone.
    ASSERT_TRUE(fn.setUVs(MFloatArray(u, 3), MFloatArray(v, 3), &map1));
    ASSERT_TRUE(fn.getAssignedUVs(gotCounts, gotIds, &map1));
    EXPECT_EQ(ints(gotCounts), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(MeshQueries, EdgesStartSmoothAndSmoothingEditsAreAllOrNothing)
{
    MFnMesh fn;
    createStrip(fn);
    for (int e = 0; e < fn.numEdges(); ++e)
        EXPECT_TRUE(fn.isEdgeSmooth(e)) << e;
    ASSERT_TRUE(fn.setEdgeSmoothing(4, false));
    ASSERT_TRUE(fn.cleanupEdgeSmoothing());
    EXPECT_FALSE(fn.isEdgeSmooth(4));
    const int good[] = {0, 1}, bad[] = {2, 99}, off[] = {0, 0};
    EXPECT_FALSE(fn.setEdgeSmoothings(MIntArray(bad, 2), MIntArray(off, 2)));
    EXPECT_TRUE(fn.isEdgeSmooth(2)) << "a refused call changed an edge";
    ASSERT_TRUE(fn.setEdgeSmoothings(MIntArray(good, 2), MIntArray(off, 2)));
    EXPECT_FALSE(fn.isEdgeSmooth(0));
    EXPECT_FALSE(fn.isEdgeSmooth(1));
    // Deleting face 0 keeps the flags with their edges: old edges 1, 4, 5 are 0, 1, 2 now.
    ASSERT_TRUE(fn.deleteFace(0));
    EXPECT_FALSE(fn.isEdgeSmooth(0));
    EXPECT_FALSE(fn.isEdgeSmooth(1));
    EXPECT_TRUE(fn.isEdgeSmooth(2));
}

TEST_F(MeshQueries, BadInputFailsWithoutChangingTheMesh)
{
    const float nan = std::nanf("");
    MFnMesh fn;
    createStrip(fn);
    const std::vector<P3> points = meshtest::stripPoints();
    const std::size_t nodes = host::nodeNames().size();

    EXPECT_FALSE(added(fn, {{0, 0, 0}, {nan, 1, 0}, {1, 1, 1}}));
    EXPECT_FALSE(added(fn, {{9, 9, 9}, {9, 9, 9}, {9, 9, 9}})) << "a polygon with one distinct corner";
    EXPECT_FALSE(added(fn, {{9, 9, 9}, {8, 9, 9}}));
    EXPECT_FALSE(added(fn, {{7, 0, 0}, {8, 0, 0}, {8, 1, 0}}, true, -1.0));
    EXPECT_EQ(fn.numVertices(), 8) << "a refused polygon left vertices behind";
    EXPECT_FALSE(fn.setPoint(0, MPoint(nan, 0, 0)));
    EXPECT_FALSE(fn.setPoint(8, MPoint(0, 0, 0)));
    MPointArray tooFew(3);
    EXPECT_FALSE(fn.setPoints(tooFew));
    EXPECT_EQ(pointsOf(fn), points);

    MPoint p;
    MIntArray ids;
    MVector n;
    int2 edge;
    MStatus status;
    EXPECT_FALSE(fn.getPoint(-1, p));
    EXPECT_FALSE(fn.getPolygonVertices(3, ids));
    EXPECT_FALSE(fn.getVertexNormal(8, true, n));
    EXPECT_FALSE(fn.getEdgeVertices(10, edge));
    EXPECT_FALSE(fn.deleteFace(3));
    EXPECT_FALSE(fn.deleteEdge(-1));
    EXPECT_FALSE(fn.deleteVertex(8));
    const float zero[] = {0};
    ASSERT_TRUE(fn.setUVs(MFloatArray(zero, 1), MFloatArray(zero, 1)));
    EXPECT_FALSE(fn.assignUV(0, 4, 0)) << "corner 4 of a quad";
    const int wrongCounts[] = {3, 0, 0};
    EXPECT_FALSE(fn.assignUVs(MIntArray(wrongCounts, 3), MIntArray()));
    EXPECT_EQ(fn.numPolygons(), 3);

    // A failed create makes no node; the set stays on its mesh.
    MFnMesh creator;
    MFloatPointArray bad;
    bad.append(0, 0, 0);
    bad.append(nan, 1, 0);
    bad.append(1, 1, 0);
    const int three[] = {3}, tri[] = {0, 1, 2}, outOfRange[] = {0, 1, 5};
    creator.create(3, 1, bad, MIntArray(three, 1), MIntArray(tri, 3), MObject::kNullObj, &status);
    EXPECT_FALSE(status);
    bad.set(MFloatPoint(0, 1, 0), 1);
    creator.create(3, 1, bad, MIntArray(three, 1), MIntArray(outOfRange, 3), MObject::kNullObj, &status);
    EXPECT_FALSE(status);
    creator.create(4, 1, bad, MIntArray(three, 1), MIntArray(tri, 3), MObject::kNullObj, &status);
    EXPECT_FALSE(status) << "more vertices claimed than given";
    EXPECT_EQ(host::nodeNames().size(), nodes);

    // Objects of the wrong kind, nothing, and deleted shapes.
    EXPECT_FALSE(MFnMesh().setObject(host::findNode("polySurface1")));
    MFnPointArrayData arrayFn;
    EXPECT_FALSE(MFnMesh().setObject(arrayFn.create()));
    MFnMesh unattached;
    EXPECT_EQ(unattached.numVertices(&status), 0);
    EXPECT_FALSE(status);
    EXPECT_EQ(unattached.getRawPoints(&status), nullptr);
    EXPECT_FALSE(status);
    ASSERT_TRUE(host::deleteNode("polySurface1"));
    EXPECT_EQ(fn.numVertices(&status), 0);
    EXPECT_FALSE(status);
    EXPECT_FALSE(fn.setPoint(0, MPoint(1, 1, 1)));
}

} // namespace
