// Components made and read with MFnSingleIndexedComponent, and their agreement with the
// selection list: components parsed from strings drive the iterators, and components made
// by the function set print as selection strings.

#include "meshIterTest.h"

#include <maya/MFnComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

using namespace meshitertest;

namespace {

std::vector<int> elementsOf(const MObject& component)
{
    MIntArray out;
    EXPECT_TRUE(MFnSingleIndexedComponent(component).getElements(out));
    return ints(out);
}

std::vector<std::string> strings(const MStringArray& a)
{
    std::vector<std::string> out;
    for (unsigned int i = 0; i < a.length(); ++i)
        out.emplace_back(a[i].asChar());
    return out;
}

class Components : public MeshIterTest {};

TEST_F(Components, ElementsRoundTripInTheOrderGiven)
{
    MFnSingleIndexedComponent fn;
    MStatus s;
    MObject c = fn.create(MFn::kMeshEdgeComponent, &s);
    ASSERT_TRUE(s);
    EXPECT_TRUE(fn.isEmpty());
    EXPECT_EQ(fn.elementMax(), -1);

    ASSERT_TRUE(fn.addElement(4));
    MIntArray more;
    for (int e : {1, 1, 7})
        more.append(e);
    ASSERT_TRUE(fn.addElements(more));
    EXPECT_EQ(fn.elementCount(), 4);
    EXPECT_EQ(elementsOf(c), (std::vector<int>{4, 1, 1, 7}));
    EXPECT_EQ(fn.element(2), 1);
    EXPECT_EQ(fn.elementMax(), 7);

    // Another function set on the same object sees the same elements.
    MFnComponent base(c, &s);
    ASSERT_TRUE(s);
    EXPECT_EQ(base.componentType(), MFn::kMeshEdgeComponent);
    EXPECT_EQ(base.elementCount(), 4);
}

TEST_F(Components, CompleteComponents)
{
    MFnSingleIndexedComponent fn;
    MObject c = fn.create(MFn::kMeshVertComponent);
    ASSERT_TRUE(fn.setCompleteData(5));
    EXPECT_TRUE(fn.isComplete());
    int n = -1;
    ASSERT_TRUE(fn.getCompleteData(n));
    EXPECT_EQ(n, 5);
    EXPECT_EQ(fn.elementCount(), 5);
    EXPECT_EQ(elementsOf(c), (std::vector<int>{0, 1, 2, 3, 4}));

    ASSERT_TRUE(fn.setComplete(false));
    ASSERT_TRUE(fn.getCompleteData(n));
    EXPECT_EQ(n, 0);
    EXPECT_TRUE(fn.isEmpty());
}

TEST_F(Components, EqualityIgnoresOrderAndRepeats)
{
    MObject a = component(MFn::kMeshPolygonComponent, {2, 1, 2, 0});
    MFnSingleIndexedComponent fn(a);
    MObject same = component(MFn::kMeshPolygonComponent, {0, 1, 2});
    MObject more = component(MFn::kMeshPolygonComponent, {0, 1, 2, 3});
    MObject vertices = component(MFn::kMeshVertComponent, {0, 1, 2});
    EXPECT_TRUE(fn.isEqual(same));
    EXPECT_FALSE(fn.isEqual(more));
    EXPECT_FALSE(fn.isEqual(vertices)); // another kind
    MFnSingleIndexedComponent full;
    MObject complete = full.create(MFn::kMeshPolygonComponent);
    full.setCompleteData(3);
    EXPECT_TRUE(fn.isEqual(complete));
}

TEST_F(Components, BadInputIsRefused)
{
    makeRigGrid();
    MStatus s;
    MFnSingleIndexedComponent fn;
    EXPECT_TRUE(fn.create(MFn::kMesh, &s).isNull());
    EXPECT_FALSE(s);
    EXPECT_TRUE(fn.create(MFn::kDoubleIndexedComponent, &s).isNull());
    EXPECT_FALSE(s);
    EXPECT_FALSE(fn.addElement(1)); // attached to nothing

    MFnSingleIndexedComponent onNode(rig, &s);
    EXPECT_FALSE(s);
    EXPECT_FALSE(onNode.setCompleteData(3));

    MObject c = component(MFn::kMeshVertComponent, {2});
    ASSERT_TRUE(fn.setObject(c));
    EXPECT_FALSE(fn.addElement(-1));
    MIntArray mixed;
    for (int e : {5, -3, 6})
        mixed.append(e);
    EXPECT_FALSE(fn.addElements(mixed)); // all or nothing
    EXPECT_EQ(elementsOf(c), (std::vector<int>{2}));
    fn.element(1, &s);
    EXPECT_FALSE(s);
    EXPECT_FALSE(fn.setCompleteData(-2));
}

TEST_F(Components, SelectionStringsDriveTheIterators)
{
    makeRigGrid();
    MSelectionList list;
    ASSERT_TRUE(list.add("rigShape.vtx[2:4]"));
    ASSERT_TRUE(list.add("rig.f[*]"));
    MDagPath p;
    MObject c;
    ASSERT_TRUE(list.getDagPath(0, p, c));
    EXPECT_EQ(elementsOf(c), (std::vector<int>{2, 3, 4}));
    std::vector<MPoint> seen;
    for (MItMeshVertex it(p, c); !it.isDone(); it.next())
        seen.push_back(it.position());
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_TRUE(near(seen[0], MPoint(2, 0, 0)));
    EXPECT_TRUE(near(seen[1], MPoint(3, 0, 0)));
    EXPECT_TRUE(near(seen[2], MPoint(0, 1, 0)));

    ASSERT_TRUE(list.getDagPath(1, p, c));
    EXPECT_TRUE(MFnComponent(c).isComplete());
    MItMeshPolygon faces(p, c);
    EXPECT_EQ(faces.count(), 9u);
}

TEST_F(Components, MadeComponentsPrintAsSelectionStrings)
{
    makeRigGrid();
    MFnSingleIndexedComponent fn;
    MObject c = fn.create(MFn::kMeshEdgeComponent);
    for (int e : {3, 4, 5, 9})
        fn.addElement(e);
    MSelectionList list;
    ASSERT_TRUE(list.add(path, c));
    MStringArray out;
    ASSERT_TRUE(list.getSelectionStrings(out));
    EXPECT_EQ(strings(out), (std::vector<std::string>{"rigShape.e[3:5]", "rigShape.e[9]"}));
}

} // namespace
