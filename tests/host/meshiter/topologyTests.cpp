// What the iterators say about the mesh around the current element: neighbours, boundaries,
// centres and normals, in object space and under a rotated, scaled, moved transform.

#include "meshIterTest.h"

#include <maya/MItGeometry.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MVectorArray.h>

#include <cmath>

using namespace meshitertest;

namespace {

const double kPi = 3.14159265358979323846;

class Topology : public MeshIterTest {};

TEST_F(Topology, VertexNeighboursInsideAndOnTheBoundary)
{
    makeRigGrid();
    MItMeshVertex it(path);
    int previous = 0;
    MIntArray vertices, edges, faces;
    ASSERT_TRUE(it.setIndex(5, previous)); // inside
    ASSERT_TRUE(it.getConnectedVertices(vertices));
    ASSERT_TRUE(it.getConnectedEdges(edges));
    ASSERT_TRUE(it.getConnectedFaces(faces));
    EXPECT_EQ(sorted(ints(vertices)), (std::vector<int>{1, 4, 6, 9}));
    EXPECT_EQ(ints(faces), (std::vector<int>{0, 1, 3, 4}));
    ASSERT_EQ(edges.length(), 4u);
    EXPECT_FALSE(it.onBoundary());
    // The k-th connected vertex is across the k-th connected edge.
    for (unsigned int k = 0; k < edges.length(); ++k) {
        int other = -1;
        ASSERT_TRUE(it.getOppositeVertex(other, edges[k]));
        EXPECT_EQ(other, vertices[k]);
    }

    ASSERT_TRUE(it.setIndex(4, previous)); // middle of the left side
    ASSERT_TRUE(it.getConnectedVertices(vertices));
    ASSERT_TRUE(it.getConnectedFaces(faces));
    EXPECT_EQ(sorted(ints(vertices)), (std::vector<int>{0, 5, 8}));
    EXPECT_EQ(ints(faces), (std::vector<int>{0, 3}));
    EXPECT_TRUE(it.onBoundary());

    // Every vertex but the four inner ones is on the boundary.
    std::vector<int> inner;
    for (it.reset(); !it.isDone(); it.next())
        if (!it.onBoundary())
            inner.push_back(it.index());
    EXPECT_EQ(inner, (std::vector<int>{5, 6, 9, 10}));
}

TEST_F(Topology, EdgeNeighboursAndBoundary)
{
    makeRigGrid();
    MItMeshEdge it(path);
    int previous = 0;
    MIntArray faces, edges;
    ASSERT_TRUE(it.setIndex(1, previous)); // vertices 1 and 5, between faces 0 and 1
    EXPECT_EQ(sorted({it.index(0), it.index(1)}), (std::vector<int>{1, 5}));
    EXPECT_EQ(it.getConnectedFaces(faces), 2);
    EXPECT_EQ(ints(faces), (std::vector<int>{0, 1}));
    EXPECT_EQ(it.getConnectedEdges(edges), 5);
    EXPECT_EQ(sorted(ints(edges)), (std::vector<int>{0, 2, 4, 6, 10}));
    EXPECT_TRUE(near(it.center(), MPoint(1, 0.5, 0)));

    int boundary = 0; // a 3 x 3 grid has 12 boundary edges of its 24
    for (it.reset(); !it.isDone(); it.next())
        boundary += it.onBoundary() ? 1 : 0;
    EXPECT_EQ(boundary, 12);
}

TEST_F(Topology, PolygonVerticesNeighboursAndCentre)
{
    makeRigGrid();
    MItMeshPolygon it(path);
    int previous = 0;
    ASSERT_TRUE(it.setIndex(4, previous)); // the middle quad
    MIntArray list;
    ASSERT_TRUE(it.getVertices(list));
    EXPECT_EQ(ints(list), (std::vector<int>{5, 6, 10, 9}));
    EXPECT_EQ(it.vertexIndex(2), 10u);
    EXPECT_TRUE(near(it.point(2), MPoint(2, 2, 0)));
    EXPECT_TRUE(near(it.center(), MPoint(1.5, 1.5, 0)));
    ASSERT_TRUE(it.getConnectedFaces(list));
    EXPECT_EQ(sorted(ints(list)), (std::vector<int>{1, 3, 5, 7})); // not 0: only a corner in common
    ASSERT_TRUE(it.getConnectedVertices(list));
    EXPECT_EQ(sorted(ints(list)), (std::vector<int>{1, 2, 4, 7, 8, 11, 13, 14}));
    ASSERT_TRUE(it.getConnectedEdges(list));
    EXPECT_EQ(list.length(), 8u);
    EXPECT_FALSE(it.onBoundary());
    ASSERT_TRUE(it.setIndex(0, previous));
    EXPECT_TRUE(it.onBoundary());
}

// Two triangles meeting at the origin at 90 and 45 degrees, facing +Z and -Y, with equal
// areas: the angle-weighted normal there leans twice as far towards +Z as towards -Y.
class FoldedPair : public MeshIterTest {
protected:
    void SetUp() override
    {
        MeshIterTest::SetUp();
        shape = makeMesh({MFloatPoint(0, 0, 0), MFloatPoint(1, 0, 0), MFloatPoint(0, 1, 0), MFloatPoint(1, 0, -1)},
                         {{0, 1, 2}, {0, 3, 1}});
        path = shapePath(shape);
    }
    const MVector kAngleWeighted = MVector(0, -1, 2).normal();
};

TEST_F(FoldedPair, VertexNormalsAreAngleWeightedAndFaceVertexNormalsFollowSmoothing)
{
    MItMeshVertex vertex(path);
    MVector n;
    ASSERT_TRUE(vertex.getNormal(n));
    EXPECT_TRUE(near(n, kAngleWeighted));
    EXPECT_TRUE(near(MItGeometry(path).normal(), kAngleWeighted));
    MItMeshPolygon polygon(path);
    ASSERT_TRUE(polygon.getNormal(n));
    EXPECT_TRUE(near(n, MVector(0, 0, 1)));
    // Smooth edges: the face sees the vertex normal at the shared corner.
    ASSERT_TRUE(polygon.getNormal(0u, n));
    EXPECT_TRUE(near(n, kAngleWeighted));

    // Harden the fold (edge 0, vertices 0 and 1): each face keeps its own normal there.
    MItMeshEdge edge(path);
    ASSERT_EQ(sorted({edge.index(0), edge.index(1)}), (std::vector<int>{0, 1}));
    ASSERT_TRUE(edge.setSmoothing(false));
    EXPECT_FALSE(edge.isSmooth());
    ASSERT_TRUE(polygon.getNormal(0u, n));
    EXPECT_TRUE(near(n, MVector(0, 0, 1)));
    MVectorArray normals;
    ASSERT_TRUE(vertex.getNormals(normals));
    ASSERT_EQ(normals.length(), 2u);
    EXPECT_TRUE(near(normals[0], MVector(0, 0, 1)));
    EXPECT_TRUE(near(normals[1], MVector(0, -1, 0)));
    ASSERT_TRUE(vertex.getNormal(n, 1));
    EXPECT_TRUE(near(n, MVector(0, -1, 0)));
    ASSERT_TRUE(vertex.getNormal(n)); // the vertex normal does not depend on smoothing
    EXPECT_TRUE(near(n, kAngleWeighted));
}

// A walk over every polygon reads its corner normals from one table per version of the mesh;
// it must give what a walk over a component gives corner by corner, and follow an edit.
TEST_F(FoldedPair, AWholeWalkGivesAComponentWalksCornerNormalsAndFollowsEdits)
{
    auto cornerNormals = [](MItMeshPolygon& it) {
        std::vector<MVector> out;
        MVectorArray normals;
        for (it.reset(); !it.isDone(); it.next()) {
            EXPECT_TRUE(it.getNormals(normals));
            out.insert(out.end(), normals.begin(), normals.end());
        }
        return out;
    };
    MItMeshPolygon whole(path);
    for (int round = 0; round < 2; ++round) {
        MObject twoFaces = component(MFn::kMeshPolygonComponent, {0, 1});
        MItMeshPolygon part(path, twoFaces);
        const std::vector<MVector> expected = cornerNormals(part);
        const std::vector<MVector> got = cornerNormals(whole);
        ASSERT_EQ(got.size(), 6u);
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_TRUE(got[i] == expected[i]) << "round " << round << ", corner " << i;
        MItMeshVertex vertex(path);
        int previous = 0;
        ASSERT_TRUE(vertex.setIndex(3, previous));
        ASSERT_TRUE(vertex.setPosition(MPoint(1, 0.5, -1)));
    }
}

// The grid tilted into the plane z = x under rig: scale x by 2, turn 90 degrees about Z,
// move by (1, 2, 3). Object (x, y, z) lands at (1 - y, 2 + 2x, 3 + z).
class WorldSpace : public MeshIterTest {
protected:
    void SetUp() override
    {
        MeshIterTest::SetUp();
        makeRigGrid(1.0f);
        ASSERT_TRUE(host::setDouble("rig.scaleX", 2.0));
        ASSERT_TRUE(host::setDouble("rig.rotateZ", kPi / 2));
        ASSERT_TRUE(host::setDouble("rig.translateX", 1.0));
        ASSERT_TRUE(host::setDouble("rig.translateY", 2.0));
        ASSERT_TRUE(host::setDouble("rig.translateZ", 3.0));
    }
    // The tilted plane's normal (-1, 0, 1) seen through the transform.
    const MVector kWorldNormal = MVector(0, -1, 2).normal();
};

TEST_F(WorldSpace, PositionsAndMeasuresUseTheInclusiveMatrix)
{
    MItMeshVertex it(path);
    it.next(); // vertex 1 at (1, 0, 1)
    EXPECT_TRUE(near(it.position(MSpace::kWorld), MPoint(1, 4, 4)));

    MItMeshEdge edge(path); // edge 0: vertices 0 and 1
    EXPECT_TRUE(near(edge.point(1, MSpace::kWorld), MPoint(1, 4, 4)));
    double length = 0.0;
    ASSERT_TRUE(edge.getLength(length, MSpace::kWorld));
    EXPECT_NEAR(length, std::sqrt(5.0), 1e-5);

    MItMeshPolygon polygon(path);
    double area = 0.0;
    ASSERT_TRUE(polygon.getArea(area, MSpace::kWorld));
    EXPECT_NEAR(area, std::sqrt(5.0), 1e-5);
    EXPECT_TRUE(near(polygon.center(MSpace::kWorld), MPoint(0.5, 3, 3.5)));

    // Made from the shape object there is no path: world space is object space.
    MItMeshVertex byObject(shape);
    byObject.next();
    EXPECT_TRUE(near(byObject.position(MSpace::kWorld), MPoint(1, 0, 1)));
}

TEST_F(WorldSpace, NormalsAreTransformedAsNormals)
{
    MVector n;
    for (MItMeshPolygon polygon(path); !polygon.isDone(); polygon.next()) {
        ASSERT_TRUE(polygon.getNormal(n, MSpace::kWorld));
        EXPECT_TRUE(near(n, kWorldNormal)) << "face " << polygon.index();
        // Perpendicular to the face's edges as they lie in the world.
        const MPoint a = polygon.point(0, MSpace::kWorld), b = polygon.point(1, MSpace::kWorld),
                     c = polygon.point(3, MSpace::kWorld);
        EXPECT_NEAR(n * (b - a), 0.0, 1e-5);
        EXPECT_NEAR(n * (c - a), 0.0, 1e-5);
    }
    for (MItMeshVertex vertex(path); !vertex.isDone(); vertex.next()) {
        ASSERT_TRUE(vertex.getNormal(n, MSpace::kWorld));
        EXPECT_TRUE(near(n, kWorldNormal)) << "vertex " << vertex.index();
    }
    EXPECT_TRUE(near(MItGeometry(path).normal(MSpace::kWorld), kWorldNormal));
}

TEST_F(WorldSpace, AWalkSeesItsTransformAndMeshChangeUnderIt)
{
    MItMeshPolygon polygon(path);
    MVectorArray normals;
    ASSERT_TRUE(polygon.getNormals(normals, MSpace::kWorld));
    EXPECT_TRUE(near(normals[0], kWorldNormal));
    ASSERT_TRUE(host::setDouble("rig.rotateZ", 0.0));
    polygon.next();
    ASSERT_TRUE(polygon.getNormals(normals, MSpace::kWorld));
    MItMeshPolygon fresh(path);
    fresh.next();
    MVector unrotated;
    ASSERT_TRUE(fresh.getNormal(unrotated, MSpace::kWorld));
    EXPECT_FALSE(near(unrotated, kWorldNormal));
    EXPECT_TRUE(near(normals[0], unrotated)) << "the rotation is gone";
    EXPECT_TRUE(near(polygon.center(MSpace::kWorld), fresh.center(MSpace::kWorld)));

    MFnMesh(path).setPoint(polygon.vertexIndex(0), MPoint(10, 0, 0));
    EXPECT_TRUE(near(polygon.point(0, MSpace::kObject), MPoint(10, 0, 0)));
}

TEST_F(WorldSpace, WorldPositionsAreWrittenThroughTheInverse)
{
    MItMeshVertex it(path);
    int previous = 0;
    ASSERT_TRUE(it.setIndex(5, previous));
    ASSERT_TRUE(it.setPosition(MPoint(0, 0, 0), MSpace::kWorld));
    EXPECT_TRUE(near(it.position(MSpace::kWorld), MPoint(0, 0, 0)));
    EXPECT_TRUE(near(it.position(), MPoint(-1, 1, -3)));
    ASSERT_TRUE(it.translateBy(MVector(0, 2, 0), MSpace::kWorld)); // +y in the world is +x in the object
    EXPECT_TRUE(near(it.position(), MPoint(0, 1, -3)));
}

} // namespace
