// Walking meshes: every element in index order, a component's elements in its order with
// missing ones skipped, jumping with setIndex, and failing cleanly on bad input.

#include "meshIterTest.h"

#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPointArray.h>

using namespace meshitertest;

namespace {

template <class It>
std::vector<int> walk(It& it)
{
    std::vector<int> out;
    for (; !it.isDone(); it.next())
        out.push_back(static_cast<int>(it.index()));
    return out;
}

std::vector<int> range(int n)
{
    std::vector<int> out(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        out[static_cast<std::size_t>(i)] = i;
    return out;
}

class Iteration : public MeshIterTest {};

TEST_F(Iteration, WholeMeshVisitsEveryElementInIndexOrder)
{
    makeRigGrid();
    MStatus s;
    MItMeshVertex vertices(path, MObject::kNullObj, &s);
    ASSERT_TRUE(s);
    EXPECT_EQ(vertices.count(), 16);
    EXPECT_EQ(walk(vertices), range(16));
    MItMeshEdge edges(shape, &s); // by object
    ASSERT_TRUE(s);
    EXPECT_EQ(walk(edges), range(24));
    MItMeshPolygon polygons(path);
    EXPECT_EQ(polygons.count(), 9u);
    EXPECT_EQ(walk(polygons), range(9));
    MItGeometry points(MDagPath::getAPathTo(rig)); // the transform's path leads to its shape
    EXPECT_EQ(walk(points), range(16));

    ASSERT_TRUE(vertices.reset());
    EXPECT_EQ(walk(vertices).size(), 16u);
}

TEST_F(Iteration, ComponentOrderIsKeptAndMissingElementsAreSkipped)
{
    makeRigGrid();
    MFnSingleIndexedComponent fn;
    MObject verts = fn.create(MFn::kMeshVertComponent);
    for (int e : {7, 2, 99, 2, 15, 16, 0})
        fn.addElement(e);
    MItMeshVertex vit(path, verts);
    fn.addElement(3); // too late: the walk copied the list
    EXPECT_EQ(vit.count(), 5);
    EXPECT_EQ(walk(vit), (std::vector<int>{7, 2, 2, 15, 0}));
    ASSERT_TRUE(vit.reset());
    EXPECT_TRUE(near(vit.position(), MPoint(3, 1, 0)));

    MObject edges = component(MFn::kMeshEdgeComponent, {23, 24, 5, 1000});
    MItMeshEdge eit(path, edges);
    EXPECT_EQ(walk(eit), (std::vector<int>{23, 5}));
    MObject faces = component(MFn::kMeshPolygonComponent, {9, 8, 4, 8});
    MItMeshPolygon pit(path, faces);
    EXPECT_EQ(pit.count(), 3u);
    EXPECT_EQ(walk(pit), (std::vector<int>{8, 4, 8}));
    MObject missing = component(MFn::kMeshVertComponent, {16, 40});
    MItMeshVertex none(path, missing);
    EXPECT_TRUE(none.isDone());

    MPointArray points;
    ASSERT_TRUE(MItGeometry(path, verts).allPositions(points));
    ASSERT_EQ(points.length(), 6u);
    EXPECT_TRUE(near(points[3], MPoint(3, 3, 0)));

    ASSERT_TRUE(fn.setCompleteData(3)); // complete: every element, whatever the count says
    ASSERT_TRUE(vit.reset(path, verts));
    EXPECT_EQ(walk(vit), range(16));
}

TEST_F(Iteration, SetIndexJumpsAndReportsThePreviousElement)
{
    makeRigGrid();
    MItMeshVertex it(path);
    int previous = -7;
    ASSERT_TRUE(it.setIndex(10, previous));
    EXPECT_EQ(previous, 0);
    EXPECT_TRUE(near(it.position(), MPoint(2, 2, 0)));
    it.next();
    EXPECT_EQ(it.index(), 11);
    previous = -7;
    EXPECT_FALSE(it.setIndex(16, previous)); // out of range: refused, nothing moves
    EXPECT_FALSE(it.setIndex(-1, previous));
    EXPECT_EQ(previous, -7);
    EXPECT_EQ(it.index(), 11);

    MItMeshPolygon pit(path);
    ASSERT_TRUE(pit.setIndex(8, previous));
    pit.next();
    EXPECT_TRUE(pit.isDone());
}

TEST_F(Iteration, BadInputFailsWithoutCrashing)
{
    makeRigGrid();
    MStatus s;
    MItMeshVertex nullObject(MObject::kNullObj, &s);
    EXPECT_FALSE(s);
    EXPECT_TRUE(nullObject.isDone());
    EXPECT_FALSE(nullObject.next());
    nullObject.position(MSpace::kObject, &s);
    EXPECT_FALSE(s);
    MIntArray list;
    EXPECT_FALSE(nullObject.getConnectedVertices(list));

    // Not a mesh, an invalid path, a component of the wrong kind, not a component.
    MItMeshEdge notMesh(rig, &s);
    EXPECT_FALSE(s);
    MItMeshPolygon invalidPath(MDagPath(), MObject::kNullObj, &s);
    EXPECT_FALSE(s);
    MObject empty = host::createNode("transform", "empty");
    MItGeometry geometry(empty, &s);
    EXPECT_FALSE(s);
    EXPECT_FALSE(geometry.setPosition(MPoint()));
    MObject edge = component(MFn::kMeshEdgeComponent, {1});
    MItMeshVertex wrongKind(path, edge, &s);
    EXPECT_FALSE(s);
    EXPECT_TRUE(wrongKind.isDone());
    MItMeshPolygon notComponent(path, rig, &s);
    EXPECT_FALSE(s);

    // Arguments out of range, and calls past the end.
    MItMeshPolygon pit(path);
    pit.vertexIndex(4, &s);
    EXPECT_FALSE(s);
    MVector n;
    EXPECT_FALSE(pit.getNormal(7u, n));
    EXPECT_FALSE(pit.getNormal(n, MSpace::kInvalid));
    MItMeshEdge eit(path);
    EXPECT_FALSE(eit.setPoint(MPoint(), 2));
    MItMeshVertex vit(path);
    EXPECT_FALSE(vit.getNormal(n, 8)); // face 8 does not use vertex 0
    int other = -1;
    EXPECT_FALSE(vit.getOppositeVertex(other, 23));
    while (!vit.isDone())
        vit.next();
    EXPECT_FALSE(vit.next());
    EXPECT_FALSE(vit.setPosition(MPoint(1, 1, 1)));
}

TEST_F(Iteration, MeshChangingUnderTheIteratorEndsTheWalk)
{
    makeRigGrid();
    MObject faces = component(MFn::kMeshPolygonComponent, {0, 8, 1});
    MItMeshPolygon it(path, faces);
    MFnMesh mesh(path);
    ASSERT_TRUE(mesh.deleteFace(8));
    ASSERT_TRUE(mesh.deleteFace(7));
    it.next(); // face 8 is gone: skipped
    EXPECT_EQ(it.index(), 1u);
    EXPECT_EQ(it.count(), 2u);

    MItMeshVertex vit(path);
    ASSERT_TRUE(host::deleteNode("rig"));
    MStatus s;
    vit.position(MSpace::kObject, &s);
    EXPECT_FALSE(s);
    EXPECT_FALSE(vit.setPosition(MPoint(1, 2, 3)));
    vit.next();
    EXPECT_TRUE(vit.isDone());
}

} // namespace
