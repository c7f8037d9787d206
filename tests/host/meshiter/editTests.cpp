// Moving points through the iterators: on a shape (the edit lasts through re-evaluation and
// reaches what is downstream), on mesh data objects, and on a data handle inside a compute.

#include "meshIterTest.h"

#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

using namespace meshitertest;

namespace {

MPoint pointOf(const MDagPath& path, int vertex)
{
    MPoint p;
    EXPECT_TRUE(MFnMesh(path).getPoint(vertex, p));
    return p;
}

class Edits : public MeshIterTest {};

TEST_F(Edits, VertexIteratorEditsLastOnAShapeWithoutHistory)
{
    makeRigGrid();
    for (MItMeshVertex it(path); !it.isDone(); it.next())
        ASSERT_TRUE(it.setPosition(it.position() + MVector(0, 0, it.index())));
    EXPECT_TRUE(near(pointOf(path, 7), MPoint(3, 1, 7)));

    // Re-evaluating the shape (a tweak changes) keeps the edits and adds the tweak.
    ASSERT_TRUE(host::setDouble("rigShape.pnts[7].pntx", 0.5));
    EXPECT_TRUE(near(pointOf(path, 7), MPoint(3.5, 1, 7)));
    EXPECT_TRUE(near(pointOf(path, 15), MPoint(3, 3, 15)));

    // Edge and polygon iterators move the vertices they name.
    ASSERT_TRUE(MItMeshEdge(path).setPoint(MPoint(-1, -1, 0), 1)); // edge 0 ends at vertex 1
    MItMeshPolygon polygon(path);
    int previous = 0;
    ASSERT_TRUE(polygon.setIndex(8, previous));
    ASSERT_TRUE(polygon.setPoint(MPoint(5, 5, 5), 2)); // vertex 15
    EXPECT_TRUE(near(pointOf(path, 1), MPoint(-1, -1, 0)));
    EXPECT_TRUE(near(pointOf(path, 15), MPoint(5, 5, 5)));
}

TEST_F(Edits, GeometryIteratorSetsAllPositionsInPlace)
{
    makeRigGrid();
    ASSERT_TRUE(host::setDouble("rig.translateX", 10.0));
    MItGeometry it(path);
    MPointArray points;
    ASSERT_TRUE(it.allPositions(points, MSpace::kWorld));
    ASSERT_EQ(points.length(), 16u);
    EXPECT_TRUE(near(points[1], MPoint(11, 0, 0)));
    for (unsigned int i = 0; i < points.length(); ++i)
        points[i].z = 2.0 * i;
    ASSERT_TRUE(it.setAllPositions(points, MSpace::kWorld));
    EXPECT_TRUE(near(pointOf(path, 6), MPoint(2, 1, 12)));

    points.setLength(15); // the wrong number: refused
    EXPECT_FALSE(it.setAllPositions(points));

    // Per point, and over a component.
    it.next();
    ASSERT_TRUE(it.setPosition(MPoint(7, 7, 7)));
    MObject two = component(MFn::kMeshVertComponent, {3, 0});
    MItGeometry some(path, two);
    ASSERT_TRUE(some.setAllPositions(MPointArray(2, MPoint(-2, -2, -2))));

    ASSERT_TRUE(host::setDouble("rigShape.pnts[0].pntz", 1.0)); // re-evaluate
    EXPECT_TRUE(near(pointOf(path, 1), MPoint(7, 7, 7)));
    EXPECT_TRUE(near(pointOf(path, 3), MPoint(-2, -2, -2)));
    EXPECT_TRUE(near(pointOf(path, 0), MPoint(-2, -2, -1)));
}

TEST_F(Edits, MeshDataIsEditedInPlaceAndCopiesAreNot)
{
    makeRigGrid();
    MObject data = MFnMeshData().create();
    makeGrid(2, data);
    MItGeometry it(data);
    MPointArray points;
    ASSERT_TRUE(it.allPositions(points));
    for (unsigned int i = 0; i < points.length(); ++i)
        points[i].y += 1.0;
    ASSERT_TRUE(it.setAllPositions(points));
    MPoint p;
    ASSERT_TRUE(MFnMesh(data).getPoint(4, p));
    EXPECT_TRUE(near(p, MPoint(1, 2, 0)));

    // A data object read from the shape shares its payload; editing it leaves the shape alone.
    MObject copy = host::getData("rigShape.outMesh");
    MItMeshVertex vit(copy);
    ASSERT_TRUE(vit.setPosition(MPoint(9, 9, 9)));
    EXPECT_TRUE(near(vit.position(), MPoint(9, 9, 9)));
    EXPECT_TRUE(near(pointOf(path, 0), MPoint(0, 0, 0)));
}

TEST_F(Edits, LongWalksStayLinear)
{
    // 40 401 vertices moved one by one and asked for their neighbours: fast unless a call
    // costs more than its own vertex.
    MObject big = makeGrid(200);
    MDagPath bigPath = shapePath(big);
    MIntArray around;
    long neighbours = 0;
    for (MItMeshVertex it(bigPath); !it.isDone(); it.next()) {
        ASSERT_TRUE(it.setPosition(it.position() + MVector(0, 0, 1)));
        ASSERT_TRUE(it.getConnectedVertices(around));
        neighbours += around.length();
    }
    EXPECT_EQ(neighbours, 2L * (2 * 200 * 201)); // each edge seen from both ends
    EXPECT_TRUE(near(pointOf(bigPath, 40400), MPoint(200, 200, 1)));
}

// ---- Inside a compute

// Copies its input mesh to its output and moves the output's points through MItGeometry on
// the output handle: every point up by 1, then vertex 0 to (9, 9, 9).
class LiftNode : public MPxNode {
public:
    static void* creator() { return new LiftNode; }
    static MStatus initialize()
    {
        MFnTypedAttribute fn;
        inMesh = fn.create("inMesh", "i", MFnData::kMesh);
        outMesh = fn.create("outMesh", "o", MFnData::kMesh);
        fn.setWritable(false);
        addAttribute(inMesh);
        addAttribute(outMesh);
        return attributeAffects(inMesh, outMesh);
    }
    MStatus compute(const MPlug& plug, MDataBlock& block) override
    {
        if (plug != outMesh)
            return MS::kUnknownParameter;
        MDataHandle in = block.inputValue(inMesh);
        MDataHandle out = block.outputValue(outMesh);
        out.copy(in);

        MPointArray points;
        MItGeometry input(in); // read-only
        input.allPositions(points);
        readOnlyWrite = input.setAllPositions(points);

        MItGeometry it(out, false);
        it.allPositions(points);
        for (unsigned int i = 0; i < points.length(); ++i)
            points[i].y += 1.0;
        it.setAllPositions(points);
        for (it.reset(); !it.isDone(); it.next())
            if (it.index() == 0)
                it.setPosition(MPoint(9, 9, 9));
        out.setClean();
        return MS::kSuccess;
    }
    static MObject inMesh, outMesh;
    static MStatus readOnlyWrite;
};
MObject LiftNode::inMesh;
MObject LiftNode::outMesh;
MStatus LiftNode::readOnlyWrite;

MStatus initializeLift(MObject obj)
{
    MFnPlugin plugin(obj, "tqSarn tests", "0.1", "Any");
    return plugin.registerNode("meshiterLift", MTypeId(0x7F1B0), LiftNode::creator, LiftNode::initialize);
}

MStatus uninitializeLift(MObject obj) { return MFnPlugin(obj).deregisterNode(MTypeId(0x7F1B0)); }

TEST_F(Edits, DataHandleInsideAComputeIsEditedInPlace)
{
    if (!host::isPluginLoaded("meshiterLiftPlugin")) {
        ASSERT_TRUE(host::loadLinkedPlugin("meshiterLiftPlugin", initializeLift, uninitializeLift))
            << host::logText();
    }
    makeRigGrid();
    ASSERT_FALSE(host::createNode("meshiterLift", "lift").isNull());
    ASSERT_TRUE(host::connect("rigShape.outMesh", "lift.inMesh"));

    LiftNode::readOnlyWrite = MS::kSuccess;
    MObject out = host::getData("lift.outMesh");
    ASSERT_FALSE(out.isNull()) << host::logText();
    EXPECT_FALSE(LiftNode::readOnlyWrite);
    MItGeometry result(out);
    MPointArray points;
    ASSERT_TRUE(result.allPositions(points));
    ASSERT_EQ(points.length(), 16u);
    EXPECT_TRUE(near(points[0], MPoint(9, 9, 9)));
    EXPECT_TRUE(near(points[6], MPoint(2, 2, 0)));
    EXPECT_TRUE(near(points[15], MPoint(3, 4, 0)));
    // The input is the shape's own mesh: untouched.
    EXPECT_TRUE(near(pointOf(path, 0), MPoint(0, 0, 0)));
    EXPECT_TRUE(near(pointOf(path, 15), MPoint(3, 3, 0)));
}

} // namespace
