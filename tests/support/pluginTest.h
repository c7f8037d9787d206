#pragma once
// Shared pieces of the plug-in suites: the plug-in linked into the test program and loaded
// once per process, a fixture that starts every test from a new scene with an empty log and
// without the option variables the tool reads, builders of host arrays from literals, and
// readers of what a user would look at afterwards.

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace plugintest {

constexpr const char* kPluginName = "tqSarn";

using P3 = std::array<double, 3>;

inline bool ensurePluginLoaded()
{
    return host::isPluginLoaded(kPluginName) || host::loadLinkedPlugin(kPluginName, initializePlugin, uninitializePlugin);
}

inline void forgetOptionVars()
{
    for (const char* name : {"tq_uspan", "tq_vspan", "tq_glue", "tq_bdiv", "tq_sarnRadius", "tq_sarnBackFace",
                             "tq_mergThreshold", "tq_distancesnap", "tqSarn_info1", "tqSarn_info2"})
        MGlobal::removeOptionVar(name);
}

inline MPointArray pointArray(const std::vector<P3>& list)
{
    MPointArray out;
    for (const P3& p : list)
        out.append(MPoint(p[0], p[1], p[2]));
    return out;
}

inline MIntArray intArray(const std::vector<int>& values) { return MIntArray(values.data(), unsigned(values.size())); }

inline std::vector<int> ints(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

// Exact equality of two point arrays, naming the first difference.
inline ::testing::AssertionResult samePoints(const MPointArray& a, const MPointArray& b)
{
    if (a.length() != b.length())
        return ::testing::AssertionFailure() << "lengths " << a.length() << " and " << b.length();
    for (unsigned int i = 0; i < a.length(); ++i)
        if (!(a[i] == b[i]))
            return ::testing::AssertionFailure() << "point " << i << " differs: (" << a[i].x << ", " << a[i].y << ", "
                                                 << a[i].z << ") and (" << b[i].x << ", " << b[i].y << ", " << b[i].z
                                                 << ")";
    return ::testing::AssertionSuccess();
}

// The points and faces of a mesh as text, for exact comparisons.
inline std::string meshText(const MDagPath& path)
{
    std::ostringstream out;
    MFnMesh mesh(path);
    MPointArray points;
    mesh.getPoints(points);
    MIntArray counts, connects;
    mesh.getVertices(counts, connects);
    out << "points";
    for (const MPoint& p : points)
        out << " " << p.x << "," << p.y << "," << p.z;
    out << "\nfaces";
    for (int c : counts)
        out << " " << c;
    out << " /";
    for (int v : connects)
        out << " " << v;
    return out.str();
}

// A text of what an undo must restore: every node with its type and its incoming
// connections, and every mesh's points and faces. Two equal texts are two scenes a user
// cannot tell apart.
inline std::string sceneText()
{
    std::ostringstream out;
    MItDependencyNodes it;
    for (; !it.isDone(); it.next()) {
        MObject node = it.thisNode();
        MFnDependencyNode fn(node);
        out << fn.name().asChar() << " : " << fn.typeName().asChar() << "\n";
        MPlugArray plugs;
        fn.getConnections(plugs);
        for (unsigned int i = 0; i < plugs.length(); ++i) {
            MPlug source = plugs[i].source();
            if (!source.isNull())
                out << "  " << source.name().asChar() << " -> " << plugs[i].name().asChar() << "\n";
        }
        MDagPath path;
        if (node.hasFn(MFn::kMesh) && MDagPath::getAPathTo(node, path))
            out << meshText(path) << "\n";
    }
    return out.str();
}

class PluginTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ensurePluginLoaded()) << host::logText();
        host::newScene();
        host::clearLog();
        host::flushUndoQueue();
        host::clearJournal();
        forgetOptionVars();
    }

    void TearDown() override
    {
        if (HasFailure() && !host::logEntries().empty())
            std::cerr << "Host log of the failed test:\n" << host::logText();
        forgetOptionVars();
    }

    static MObject makeStore(const std::string& name = "store") { return host::createNode("tqSarn", name); }

    // A mesh shape under a new transform called `name`, from literal arrays.
    static MDagPath makeMesh(const std::string& name, const std::vector<P3>& vertices, const std::vector<int>& counts,
                             const std::vector<int>& connects)
    {
        MFloatPointArray p;
        for (const P3& v : vertices)
            p.append(float(v[0]), float(v[1]), float(v[2]));
        MFnMesh fn;
        MStatus status;
        fn.create(int(vertices.size()), int(counts.size()), p, intArray(counts), intArray(connects),
                  host::createNode("transform", name), &status);
        EXPECT_TRUE(status) << host::logText();
        MDagPath path;
        fn.getPath(path);
        return path;
    }

    static bool loggedError() { return host::logContains(host::LogLevel::kError, ""); }
};

} // namespace plugintest
