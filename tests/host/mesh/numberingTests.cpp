// The numbering contract of meshes: create keeps the given numbering, addPolygon merges
// corners into existing vertices by the tolerance rule, edges are numbered by first
// appearance, deletions renumber compactly in order; and where addPolygon puts a new mesh.

#include "meshTest.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMeshData.h>

namespace {

using meshtest::added;
using meshtest::edgesOf;
using meshtest::ints;
using meshtest::MeshTest;
using meshtest::P3;
using meshtest::pointArray;
using meshtest::pointOf;
using meshtest::pointsOf;
using Edges = std::vector<std::array<int, 2>>;

using MeshNumbering = MeshTest;

TEST_F(MeshNumbering, CreateKeepsTheGivenNumberingAndNumbersEdgesByFirstAppearance)
{
    MFnMesh fn;
    createStrip(fn);
    EXPECT_EQ(pointsOf(fn), meshtest::stripPoints());
    MIntArray counts, connects;
    ASSERT_TRUE(fn.getVertices(counts, connects));
    EXPECT_EQ(ints(counts), (std::vector<int>{4, 4, 4}));
    EXPECT_EQ(ints(connects), (std::vector<int>{0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6}));
    // A shared edge keeps the direction of the face that met it first.
    EXPECT_EQ(edgesOf(fn), (Edges{{0, 1}, {1, 5}, {5, 4}, {4, 0}, {1, 2}, {2, 6}, {6, 5}, {2, 3}, {3, 7}, {7, 6}}));
    EXPECT_EQ(fn.numFaceVertices(), 12);
}

TEST_F(MeshNumbering, AddPolygonReusesVerticesWithinToleranceAcrossCalls)
{
    MFnMesh fn;
    int face = -1;
    ASSERT_TRUE(added(fn, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, true, 0.01, &face));
    EXPECT_EQ(face, 0);
    // Two corners land near vertices 1 and 2; the other two are new and numbered in corner order.
    ASSERT_TRUE(added(fn, {{1.005f, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1.005f, 0}}, true, 0.01, &face));
    EXPECT_EQ(face, 1);
    EXPECT_EQ(fn.numVertices(), 6);
    MIntArray ids;
    ASSERT_TRUE(fn.getPolygonVertices(1, ids));
    EXPECT_EQ(ints(ids), (std::vector<int>{1, 4, 5, 2}));
    // The merged vertex keeps its position; the new face reuses edge 1 -> 2.
    EXPECT_EQ(pointOf(fn, 1), (P3{1, 0, 0}));
    EXPECT_EQ(edgesOf(fn), (Edges{{0, 1}, {1, 2}, {2, 3}, {3, 0}, {1, 4}, {4, 5}, {5, 2}}));
}

TEST_F(MeshNumbering, AddPolygonMergesWithVerticesOfTheSameCall)
{
    MFnMesh fn;
    // The loop closed by repeating its first point: the last corner merges into vertex 0,
    // which this call made, and the repeated corner drops out.
    ASSERT_TRUE(added(fn, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}}));
    EXPECT_EQ(fn.numVertices(), 4);
    EXPECT_EQ(fn.polygonVertexCount(0), 4);
}

TEST_F(MeshNumbering, ToleranceBoundaryMergesAndTiesGoToTheLowestIndex)
{
    // Vertex 0 on the +x side in one mesh and on the -x side in the other, so the winner
    // cannot come from where the vertices sit in space.
    for (float side : {1.0f, -1.0f}) {
        SCOPED_TRACE(side);
        MFnMesh fn;
        createMesh(fn, {{side, 0, 0}, {-side, 0, 0}, {0, 5, 0}}, {3}, {0, 1, 2});
        // (0,0,0) is 1 from both vertices 0 and 1, well within the tolerance.
        ASSERT_TRUE(added(fn, {{0, 0, 0}, {0, -3, 0}, {2, -3, 0}}, true, 1.5));
        MIntArray ids;
        ASSERT_TRUE(fn.getPolygonVertices(1, ids));
        EXPECT_EQ(ints(ids), (std::vector<int>{0, 3, 4}));
    }
    MFnMesh fn;
    createMesh(fn, {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}, {3}, {0, 1, 2});
    // Distance 0.25 exactly: merges at tolerance 0.25, not just below it.
    ASSERT_TRUE(added(fn, {{4.25f, 0, 0}, {4, -3, 0}, {6, -3, 0}}, true, 0.24999));
    EXPECT_EQ(fn.numVertices(), 6);
    ASSERT_TRUE(added(fn, {{0.25f, 0, 0}, {0, -6, 0}, {2, -6, 0}}, true, 0.25));
    MIntArray ids;
    ASSERT_TRUE(fn.getPolygonVertices(2, ids));
    EXPECT_EQ(ids[0], 0) << "a corner exactly at the tolerance did not merge";
}

TEST_F(MeshNumbering, WithoutMergingEveryCornerIsANewVertex)
{
    MFnMesh fn;
    createMesh(fn, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {3}, {0, 1, 2});
    ASSERT_TRUE(added(fn, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, false));
    EXPECT_EQ(fn.numVertices(), 6);
    MIntArray ids;
    ASSERT_TRUE(fn.getPolygonVertices(1, ids));
    EXPECT_EQ(ints(ids), (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(fn.numEdges(), 6);
}

TEST_F(MeshNumbering, DeletionsRenumberCompactlyKeepingRelativeOrder)
{
    {
        MFnMesh fn;
        createStrip(fn);
        // Face 0 takes vertices 0 and 4 and its edges 0, 2, 3 with it.
        ASSERT_TRUE(fn.deleteFace(0));
        EXPECT_EQ(pointsOf(fn), (std::vector<P3>{{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}}));
        MIntArray counts, connects;
        ASSERT_TRUE(fn.getVertices(counts, connects));
        EXPECT_EQ(ints(connects), (std::vector<int>{0, 1, 4, 3, 1, 2, 5, 4}));
        // Old edges 1, 4, 5, 6, 7, 8, 9 in that order, not renumbered by first appearance.
        EXPECT_EQ(edgesOf(fn), (Edges{{0, 3}, {0, 1}, {1, 4}, {4, 3}, {1, 2}, {2, 5}, {5, 4}}));
    }
    {
        MFnMesh fn;
        createStrip(fn);
        // Vertex 3 takes face 2, and vertex 7 that only face 2 used.
        ASSERT_TRUE(fn.deleteVertex(3));
        EXPECT_EQ(pointsOf(fn), (std::vector<P3>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}}));
        MIntArray counts, connects;
        ASSERT_TRUE(fn.getVertices(counts, connects));
        EXPECT_EQ(ints(connects), (std::vector<int>{0, 1, 4, 3, 1, 2, 5, 4}));
    }
    {
        MFnMesh fn;
        createStrip(fn);
        // Edge 5 (2 -> 6) is shared by faces 1 and 2: both go, face 0 stays.
        ASSERT_TRUE(fn.deleteEdge(5));
        EXPECT_EQ(fn.numPolygons(), 1);
        EXPECT_EQ(pointsOf(fn), (std::vector<P3>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}));
        EXPECT_EQ(edgesOf(fn), (Edges{{0, 1}, {1, 3}, {3, 2}, {2, 0}}));
    }
}

TEST_F(MeshNumbering, UnattachedAddPolygonMakesATransformAndShapeAndStaysOnIt)
{
    MFnMesh fn;
    MStatus status;
    MObject made = fn.addPolygon(pointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), true, 1e-6, MObject::kNullObj, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(host::nodeName(made), "polySurface1");
    EXPECT_EQ(host::nodeName(fn.object()), "polySurfaceShape1");
    EXPECT_EQ(hosttest::str(fn.fullPathName()), "|polySurface1|polySurfaceShape1");
    // Later calls add to that mesh; a second unattached set makes the next one.
    ASSERT_TRUE(added(fn, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}));
    EXPECT_EQ(fn.numPolygons(), 2);
    EXPECT_EQ(fn.numVertices(), 4);
    MFnMesh other;
    EXPECT_EQ(host::nodeName(other.addPolygon(pointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}))), "polySurface2");
    EXPECT_EQ(host::nodeName(other.object()), "polySurfaceShape2");
}

TEST_F(MeshNumbering, AddPolygonOnAnEmptyShapeOrWithAParentMakesANewShape)
{
    MObject empty = create("mesh", "emptyShape");
    MFnMesh fn(empty);
    ASSERT_EQ(fn.numVertices(), 0);
    MObject made = fn.addPolygon(pointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(host::nodeName(made), "polySurface2") << "polySurface1 holds the empty shape";
    EXPECT_NE(fn.object(), empty);
    EXPECT_EQ(MFnMesh(empty).numVertices(), 0) << "the empty shape was filled instead of left alone";

    MObject holder = create("transform", "holder");
    MFnMesh underHolder;
    EXPECT_EQ(underHolder.addPolygon(pointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), true, 1e-6, holder), holder);
    EXPECT_EQ(hosttest::str(underHolder.fullPathName()), "|holder|holderShape");
    EXPECT_EQ(underHolder.numPolygons(), 1);

    // Mesh data as the owner is filled in place and stays the set's object.
    MFnMeshData dataFn;
    MObject data = dataFn.create();
    MFnMesh intoData;
    EXPECT_EQ(intoData.addPolygon(pointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), true, 1e-6, data), data);
    EXPECT_EQ(MFnMesh(data).numPolygons(), 1);
}

TEST_F(MeshNumbering, CreateReturnsTheTransformTheShapeOrTheData)
{
    MFnMesh fn;
    const std::vector<P3> tri = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    MObject made = createMesh(fn, tri, {3}, {0, 1, 2});
    EXPECT_TRUE(made.hasFn(MFn::kTransform));
    EXPECT_EQ(MFnDagNode(made).child(0), fn.object());

    MObject parent = create("transform", "rig");
    MObject shape = createMesh(fn, tri, {3}, {0, 1, 2}, parent);
    EXPECT_EQ(host::nodeName(shape), "rigShape");
    EXPECT_EQ(fn.object(), shape);

    // Mesh data is filled in place; it has no place in the world, so world space is object space.
    MFnMeshData dataFn;
    MObject data = dataFn.create();
    EXPECT_EQ(createMesh(fn, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {3}, {0, 1, 2}, data), data);
    EXPECT_EQ(fn.object(), data);
    MStatus status;
    const float* raw = MFnMesh(data).getRawPoints(&status);
    ASSERT_TRUE(status);
    ASSERT_NE(raw, nullptr);
    EXPECT_EQ(std::vector<float>(raw, raw + 9), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(pointsOf(fn, MSpace::kWorld), pointsOf(fn));
}

} // namespace
