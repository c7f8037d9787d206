#pragma once
// Shared pieces of the patch node suites: the plug-in linked into the test program and
// loaded once, a new scene per test with construction history on, generated grids, and
// readers of what a user sees of a mesh and of its history.

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace patchnodetest {

template <class Array>
auto toVector(const Array& a)
{
    return std::vector<std::decay_t<decltype(a[0])>>(a.begin(), a.end());
}

// A mesh as a user compares two: object-space points, faces, UVs and their assignment, and
// each edge's smooth flag (1 smooth).
struct MeshView {
    std::vector<double> points;
    std::vector<int> counts, connects, uvCounts, uvIds, smooth;
    std::vector<float> u, v;

    bool operator==(const MeshView& o) const
    {
        return std::tie(points, counts, connects, uvCounts, uvIds, smooth, u, v) ==
               std::tie(o.points, o.counts, o.connects, o.uvCounts, o.uvIds, o.smooth, o.u, o.v);
    }
};

inline MDagPath pathOf(const std::string& name)
{
    MSelectionList list;
    MDagPath path;
    EXPECT_TRUE(list.add(name.c_str()) && list.getDagPath(0, path)) << name;
    return path;
}

// The evaluated mesh of a shape, or of the one shape under a transform.
inline MeshView viewMesh(const std::string& name)
{
    MFnMesh fn(pathOf(name));
    MPointArray points;
    MIntArray counts, connects, uvCounts, uvIds;
    MFloatArray u, v;
    fn.getPoints(points);
    fn.getVertices(counts, connects);
    fn.getUVs(u, v);
    fn.getAssignedUVs(uvCounts, uvIds);
    MeshView view{{}, toVector(counts), toVector(connects), toVector(uvCounts), toVector(uvIds), {}, toVector(u),
                  toVector(v)};
    for (const MPoint& p : points)
        view.points.insert(view.points.end(), {p.x, p.y, p.z});
    for (int e = 0; e < fn.numEdges(); ++e)
        view.smooth.push_back(fn.isEdgeSmooth(e) ? 1 : 0);
    return view;
}

// The plug feeding `plugName`, as "node.attribute", or "" when nothing does.
inline std::string sourceOf(const std::string& plugName)
{
    MPlug source = host::findPlug(plugName).source();
    return source.isNull() ? std::string() : std::string(source.name().asChar());
}

class PatchNodeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!host::isPluginLoaded("tqSarn")) {
            ASSERT_TRUE(host::loadLinkedPlugin("tqSarn", initializePlugin, uninitializePlugin)) << host::logText();
        }
        host::newScene();
        host::runCommand("constructionHistory -tgl on", false);
        host::clearLog();
    }

    void TearDown() override
    {
        if (HasFailure() && !host::logEntries().empty())
            std::cerr << "Host log of the failed test:\n" << host::logText();
        host::runCommand("constructionHistory -tgl on", false);
    }

    // A grid of 3 x 3 quads: the transform `name`, and its shape, whose name is returned.
    static std::string addGrid(const std::string& name)
    {
        MStatus status;
        host::addMesh(host::gridPlane(2.0f, 2.0f, 3, 3), name, &status);
        EXPECT_TRUE(status) << host::logText();
        return name + "Shape";
    }
};

} // namespace patchnodetest
