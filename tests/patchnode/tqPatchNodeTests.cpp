// tqPatchNode between a source mesh and an output mesh: passing its input through while
// nothing is stored or while suspended, rebuilding the stored mesh otherwise, and rebuilding
// the same mesh in a new node from its stored arrays alone, as a saved scene keeps them.

#include "patchNodeTest.h"

#include <maya/MFloatArray.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MVectorArray.h>

namespace {

using namespace patchnodetest;

// The stored arrays in the order a writer sets them; polyconnUV last, as its write is the
// one that reaches the output.
const char* const kStoredArrays[] = {"vertexarray", "polycount", "polyconnect", "uarray",     "varray",
                                     "normalsin",   "facelist",  "vertexlist",  "hardenvalues", "edgesharden",
                                     "polycountUV", "polyconnUV"};

class PatchNode : public PatchNodeTest {
protected:
    void SetUp() override
    {
        PatchNodeTest::SetUp();
        source = addGrid("src");
        ASSERT_FALSE(host::createNode("tqPatchNode", "patch").isNull()) << host::logText();
        output = addOutput("patch", "out");
        ASSERT_TRUE(host::connect(source + ".outMesh", "patch.inMesh"));
    }

    // A mesh shape `name`Shape under a transform `name`, fed by `node`.outMesh.
    static std::string addOutput(const std::string& node, const std::string& name)
    {
        host::createNode("transform", name);
        const std::string shape = name + "Shape";
        host::createNode("mesh", shape, name);
        EXPECT_TRUE(host::connect(node + ".outMesh", shape + ".inMesh")) << host::logText();
        return shape;
    }

    // A torus with UVs and one hard edge, standing apart.
    static std::string addTorus()
    {
        MStatus status;
        host::addMesh(host::torus(1.0f, 0.3f, 8, 6), "torus", &status);
        EXPECT_TRUE(status) << host::logText();
        MSelectionList list;
        MDagPath path;
        list.add("torus");
        list.getDagPath(0, path);
        MFnMesh fn(path);
        EXPECT_TRUE(fn.setEdgeSmoothing(3, false));
        return shapeOf("torus");
    }

    static void setInts(const std::string& plug, const std::vector<int>& values)
    {
        MFnIntArrayData fn;
        EXPECT_TRUE(host::setData(plug, fn.create(MIntArray(values.data(), unsigned(values.size())))));
    }

    // What the tool's feed writes: the whole mesh of `shape`, polyconnUV last.
    static void feed(const std::string& node, const std::string& shape)
    {
        MSelectionList list;
        MDagPath path;
        list.add(shape.c_str());
        list.getDagPath(0, path);
        MFnMesh fn(path);
        MPointArray points;
        fn.getPoints(points);
        MIntArray counts, connects, uvCounts, uvIds, smooth, edges;
        fn.getVertices(counts, connects);
        MFloatArray u, v;
        fn.getUVs(u, v);
        fn.getAssignedUVs(uvCounts, uvIds);
        for (int e = 0; e < fn.numEdges(); ++e) {
            edges.append(e);
            smooth.append(fn.isEdgeSmooth(e) ? 1 : 0);
        }
        EXPECT_TRUE(host::setInt(node + ".numpolys", fn.numPolygons()));
        EXPECT_TRUE(host::setInt(node + ".numverts", fn.numVertices()));
        MFnPointArrayData pointsFn;
        EXPECT_TRUE(host::setData(node + ".vertexarray", pointsFn.create(points)));
        MFnIntArrayData intsFn;
        MFnFloatArrayData floatsFn;
        EXPECT_TRUE(host::setData(node + ".polycount", intsFn.create(counts)));
        EXPECT_TRUE(host::setData(node + ".polyconnect", intsFn.create(connects)));
        EXPECT_TRUE(host::setData(node + ".uarray", floatsFn.create(u)));
        EXPECT_TRUE(host::setData(node + ".varray", floatsFn.create(v)));
        EXPECT_TRUE(host::setData(node + ".hardenvalues", intsFn.create(smooth)));
        EXPECT_TRUE(host::setData(node + ".edgesharden", intsFn.create(edges)));
        EXPECT_TRUE(host::setData(node + ".polycountUV", intsFn.create(uvCounts)));
        EXPECT_TRUE(host::setData(node + ".polyconnUV", intsFn.create(uvIds)));
    }

    static void setPositions(const std::string& node, const MPointArray& points)
    {
        MFnPointArrayData fn;
        EXPECT_TRUE(host::setData(node + ".vertexarray", fn.create(points)));
    }

    std::string source;
    std::string output;
};

TEST_F(PatchNode, WithNothingStoredPassesItsInputAtEveryState)
{
    const MeshView input = viewMesh(source);
    for (int state : {0, 1, 2}) {
        ASSERT_TRUE(host::setInt("patch.nodeState", state));
        EXPECT_EQ(viewMesh(output), input) << "state " << state;
    }
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();

    // A vertex count with no arrays asks for a mesh nobody can make: logged, output kept.
    ASSERT_TRUE(host::setInt("patch.nodeState", 0));
    ASSERT_TRUE(host::setInt("patch.numverts", 4));
    setInts("patch.polyconnUV", {});
    EXPECT_EQ(viewMesh(output), input);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "tqPatchNode")) << host::logText();
}

TEST_F(PatchNode, RebuildsTheStoredMeshAndIgnoresItsInput)
{
    const std::string torus = addTorus();
    const MeshView stored = viewMesh(torus);
    feed("patch", torus);
    EXPECT_EQ(viewMesh(output), stored);

    // Blocking is not the pass-through: it rebuilds as the normal state does.
    ASSERT_TRUE(host::setInt("patch.nodeState", 2));
    EXPECT_EQ(viewMesh(output), stored);

    // A change upstream reaches the node, which still shows what it stores.
    ASSERT_TRUE(host::setInt("patch.nodeState", 0));
    ASSERT_TRUE(host::runCommand("setAttr " + source + ".pnts[0] 0 5 0").status);
    EXPECT_EQ(viewMesh(output), stored);
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();

    // The UV ids alone, written last as the feed does, reach the output: emptied, the mesh
    // keeps its UV list and has none assigned.
    setInts("patch.polycountUV", {});
    setInts("patch.polyconnUV", {});
    const MeshView unmapped = viewMesh(output);
    EXPECT_EQ(unmapped.points, stored.points);
    EXPECT_EQ(unmapped.u, stored.u);
    EXPECT_EQ(unmapped.uvCounts, std::vector<int>(stored.counts.size(), 0));
    EXPECT_TRUE(unmapped.uvIds.empty());
}

TEST_F(PatchNode, SuspendedPassesItsInputAtTheStoredPositions)
{
    feed("patch", addTorus());
    MeshView input = viewMesh(source);
    ASSERT_TRUE(host::setInt("patch.nodeState", 1));
    // The torus's positions do not fit the grid: the input goes through as it is.
    EXPECT_EQ(viewMesh(output), input);

    MPointArray moved;
    for (std::size_t i = 0; i < input.points.size(); i += 3) {
        moved.append(MPoint(input.points[i], input.points[i + 1] + 1.0f, input.points[i + 2]));
        input.points[i + 1] += 1.0f;
    }
    setPositions("patch", moved);
    EXPECT_EQ(viewMesh(output), input);
}

TEST_F(PatchNode, StoredArraysAloneRebuildTheSameMeshInANewNode)
{
    const std::string torus = addTorus();
    feed("patch", torus);
    // The arrays as a scene file keeps them; the new node has no input at all.
    ASSERT_FALSE(host::createNode("tqPatchNode", "copy").isNull());
    const std::string copyOutput = addOutput("copy", "copyOut");
    for (const char* count : {"numpolys", "numverts"})
        ASSERT_TRUE(host::setInt(std::string("copy.") + count, host::getInt(std::string("patch.") + count)));
    for (const char* array : kStoredArrays)
        ASSERT_TRUE(host::setData(std::string("copy.") + array, host::getData(std::string("patch.") + array)))
            << array;

    EXPECT_EQ(viewMesh(copyOutput), viewMesh(torus));
    EXPECT_EQ(viewMesh(copyOutput), viewMesh(output));
}

} // namespace
