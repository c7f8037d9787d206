#pragma once
// Shared pieces of the patch node suites: the plug-in linked into the test program and
// loaded once, a new scene per test with construction history on, generated meshes added as
// transform and shape, and readers of what a user would see on a mesh and in its history.

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace patchnodetest {

// A mesh as a user compares two of them: positions (object space), faces, UVs, smoothing.
struct MeshView {
    std::vector<float> points;
    std::vector<int> counts;
    std::vector<int> connects;
    std::vector<float> u, v;
    std::vector<int> uvCounts, uvIds;
    std::vector<bool> smooth;

    bool operator==(const MeshView& o) const
    {
        return points == o.points && counts == o.counts && connects == o.connects && u == o.u && v == o.v &&
               uvCounts == o.uvCounts && uvIds == o.uvIds && smooth == o.smooth;
    }
};

inline std::vector<int> ints(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

// Reads the evaluated mesh of a shape (or of the one shape under a transform).
inline MeshView viewMesh(const std::string& name)
{
    MSelectionList list;
    MDagPath path;
    MeshView view;
    if (!list.add(name.c_str()) || !list.getDagPath(0, path)) {
        ADD_FAILURE() << "no mesh " << name;
        return view;
    }
    MFnMesh fn(path);
    MPointArray points;
    fn.getPoints(points);
    for (const MPoint& p : points)
        for (double c : {p.x, p.y, p.z})
            view.points.push_back(float(c));
    MIntArray counts, connects, uvCounts, uvIds;
    fn.getVertices(counts, connects);
    view.counts = ints(counts);
    view.connects = ints(connects);
    MFloatArray u, v;
    fn.getUVs(u, v);
    view.u.assign(u.begin(), u.end());
    view.v.assign(v.begin(), v.end());
    fn.getAssignedUVs(uvCounts, uvIds);
    view.uvCounts = ints(uvCounts);
    view.uvIds = ints(uvIds);
    for (int e = 0; e < fn.numEdges(); ++e)
        view.smooth.push_back(fn.isEdgeSmooth(e));
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

    // A grid of n x n quads named `name` (transform) with the shape `name`Shape.
    static std::string addGrid(const std::string& name, int n = 3)
    {
        MStatus status;
        host::addMesh(host::gridPlane(2.0f, 2.0f, n, n), name, &status);
        EXPECT_TRUE(status) << host::logText();
        return shapeOf(name);
    }

    static std::string shapeOf(const std::string& transform)
    {
        MFnDagNode fn(host::findNode(transform));
        return host::nodeName(fn.child(0));
    }

    // The child shapes of a transform that are intermediate objects.
    static std::vector<std::string> intermediateShapes(const std::string& transform)
    {
        std::vector<std::string> out;
        MFnDagNode fn(host::findNode(transform));
        for (unsigned int i = 0; i < fn.childCount(); ++i) {
            MFnDagNode child(fn.child(i));
            if (child.isIntermediateObject())
                out.push_back(child.name().asChar());
        }
        return out;
    }
};

} // namespace patchnodetest
