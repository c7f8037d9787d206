// tqPatchNode between a source grid and an output mesh: passing its input through while
// nothing is stored or while suspended, rebuilding the stored mesh otherwise, and rebuilding
// the same mesh in a new node from its stored arrays alone, as a saved scene keeps them.

#include "patchNodeTest.h"

#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnPointArrayData.h>

#include <numeric>

namespace {

using namespace patchnodetest;

class PatchNode : public PatchNodeTest {
protected:
    void SetUp() override
    {
        PatchNodeTest::SetUp();
        ASSERT_FALSE(host::createNode("tqPatchNode", "patch").isNull()) << host::logText();
        ASSERT_TRUE(host::connect(addGrid("src") + ".outMesh", "patch.inMesh"));
        addOutput("patch", "out");
    }

    // A mesh "<name>Shape" under a transform `name`, fed by `node`.
    static void addOutput(const std::string& node, const std::string& name)
    {
        host::createNode("transform", name);
        host::createNode("mesh", name + "Shape", name);
        EXPECT_TRUE(host::connect(node + ".outMesh", name + "Shape.inMesh")) << host::logText();
    }

    // A torus with UVs and one hard edge, standing apart.
    static MeshView torus()
    {
        host::addMesh(host::torus(1.0f, 0.3f, 8, 6), "torus");
        EXPECT_TRUE(MFnMesh(pathOf("torus")).setEdgeSmoothing(3, false));
        return viewMesh("torus");
    }

    static void setInts(const std::string& plug, const std::vector<int>& values)
    {
        MFnIntArrayData fn;
        EXPECT_TRUE(host::setData(plug, fn.create(MIntArray(values.data(), unsigned(values.size())))));
    }

    static void setPoints(const std::string& plug, const std::vector<double>& xyz)
    {
        MPointArray points;
        for (std::size_t i = 0; i + 2 < xyz.size(); i += 3)
            points.append(MPoint(xyz[i], xyz[i + 1], xyz[i + 2]));
        MFnPointArrayData fn;
        EXPECT_TRUE(host::setData(plug, fn.create(points)));
    }

    // What the tool's feed writes of a mesh, polyconnUV last: that write reaches the output.
    static void feed(const std::string& node, const MeshView& m)
    {
        EXPECT_TRUE(host::setInt(node + ".numpolys", int(m.counts.size())));
        EXPECT_TRUE(host::setInt(node + ".numverts", int(m.points.size() / 3)));
        setPoints(node + ".vertexarray", m.points);
        setInts(node + ".polycount", m.counts);
        setInts(node + ".polyconnect", m.connects);
        for (const auto& [name, values] : {std::pair{".uarray", &m.u}, std::pair{".varray", &m.v}}) {
            MFnFloatArrayData fn;
            EXPECT_TRUE(host::setData(node + name, fn.create(MFloatArray(values->data(), unsigned(values->size())))));
        }
        std::vector<int> edges(m.smooth.size());
        std::iota(edges.begin(), edges.end(), 0);
        setInts(node + ".hardenvalues", m.smooth);
        setInts(node + ".edgesharden", edges);
        setInts(node + ".polycountUV", m.uvCounts);
        setInts(node + ".polyconnUV", m.uvIds);
    }
};

TEST_F(PatchNode, WithNothingStoredPassesItsInputAtEveryState)
{
    const MeshView input = viewMesh("srcShape");
    for (int state : {0, 1, 2}) {
        ASSERT_TRUE(host::setInt("patch.nodeState", state));
        EXPECT_EQ(viewMesh("outShape"), input) << "state " << state;
    }
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();

    // A vertex count with no arrays asks for a mesh nobody can make: logged, output kept.
    ASSERT_TRUE(host::setInt("patch.nodeState", 0));
    ASSERT_TRUE(host::setInt("patch.numverts", 4));
    setInts("patch.polyconnUV", {});
    EXPECT_EQ(viewMesh("outShape"), input);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "tqPatchNode")) << host::logText();
}

TEST_F(PatchNode, RebuildsTheStoredMeshAndIgnoresItsInput)
{
    const MeshView stored = torus();
    feed("patch", stored);
    EXPECT_EQ(viewMesh("outShape"), stored);
    // Blocking is not the pass-through: it rebuilds as the normal state does.
    ASSERT_TRUE(host::setInt("patch.nodeState", 2));
    EXPECT_EQ(viewMesh("outShape"), stored);
    // A change upstream reaches the node, which still shows what it stores.
    ASSERT_TRUE(host::setInt("patch.nodeState", 0));
    ASSERT_TRUE(host::runCommand("setAttr srcShape.pnts[0] 0 5 0").status);
    EXPECT_EQ(viewMesh("outShape"), stored);
    EXPECT_FALSE(host::logContains(host::LogLevel::kError, "")) << host::logText();

    // The UV ids alone reach the output: emptied, the UV list stays and none is assigned.
    setInts("patch.polycountUV", {});
    setInts("patch.polyconnUV", {});
    const MeshView unmapped = viewMesh("outShape");
    EXPECT_EQ(unmapped.points, stored.points);
    EXPECT_EQ(unmapped.u, stored.u);
    EXPECT_EQ(unmapped.uvCounts, std::vector<int>(stored.counts.size(), 0));
    EXPECT_TRUE(unmapped.uvIds.empty());
}

TEST_F(PatchNode, SuspendedPassesItsInputAtTheStoredPositions)
{
    feed("patch", torus());
    MeshView input = viewMesh("srcShape");
    ASSERT_TRUE(host::setInt("patch.nodeState", 1));
    // The torus's positions do not fit the grid: the input goes through as it is.
    EXPECT_EQ(viewMesh("outShape"), input);

    MeshView moved = input;
    for (std::size_t i = 1; i < moved.points.size(); i += 3)
        moved.points[i] += 1.0;
    setPoints("patch.vertexarray", moved.points);
    EXPECT_EQ(viewMesh("outShape"), moved);
    // The input itself was not moved: without positions it goes through as it came.
    setPoints("patch.vertexarray", {});
    EXPECT_EQ(viewMesh("outShape"), input);
}

TEST_F(PatchNode, StoredArraysAloneRebuildTheSameMeshInANewNode)
{
    const MeshView stored = torus();
    feed("patch", stored);
    // The values as a scene file keeps them, into a node with no input at all.
    ASSERT_FALSE(host::createNode("tqPatchNode", "copy").isNull());
    addOutput("copy", "copyOut");
    for (const char* count : {"numpolys", "numverts"})
        ASSERT_TRUE(host::setInt(std::string("copy.") + count, host::getInt(std::string("patch.") + count)));
    for (const char* array : {"vertexarray", "polycount", "polyconnect", "uarray", "varray", "normalsin", "facelist",
                              "vertexlist", "hardenvalues", "edgesharden", "polycountUV", "polyconnUV"})
        ASSERT_TRUE(host::setData(std::string("copy.") + array, host::getData(std::string("patch.") + array)))
            << array;
    EXPECT_EQ(viewMesh("copyOutShape"), stored);
}

} // namespace
