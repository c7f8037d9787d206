#pragma once
// Shared pieces of the store suites: the plug-in linked into the test program and loaded
// once, a fixture that starts every test from a new scene with an empty log and without the
// option variables the store reads, and small builders.

#include <host/harness.h>
#include <host/log.h>
#include <host/meshArrays.h>
#include <host/meshFiles.h>

#include <maya/MFnDagNode.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace storetest {

constexpr const char* kPluginName = "tqSarn";

inline bool ensurePluginLoaded()
{
    return host::isPluginLoaded(kPluginName) || host::loadLinkedPlugin(kPluginName, initializePlugin, uninitializePlugin);
}

inline void forgetOptionVars()
{
    for (const char* name : {"tq_uspan", "tq_vspan", "tq_glue", "tq_bdiv", "tq_sarnRadius", "tq_sarnBackFace",
                             "tqSarn_info1", "tqSarn_info2"})
        MGlobal::removeOptionVar(name);
}

class StoreTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ensurePluginLoaded()) << host::logText();
        host::newScene();
        host::clearLog();
        forgetOptionVars();
    }
    void TearDown() override
    {
        if (HasFailure())
            std::cerr << "Host log of the failed test:\n" << host::logText();
        forgetOptionVars();
    }

    static MObject makeStore(const std::string& name = "store") { return host::createNode("tqSarn", name); }

    // A mesh in the scene under a transform of that name; returns the shape's name.
    static std::string addMeshShape(const host::MeshArrays& mesh, const std::string& name)
    {
        MFnDagNode transform(host::addMesh(mesh, name));
        return host::nodeName(transform.child(0));
    }

    // A mesh connected to the store as its source; returns the shape's name.
    static std::string addSourceMesh(const host::MeshArrays& mesh)
    {
        const std::string shape = addMeshShape(mesh, "source");
        EXPECT_TRUE(host::connect(shape + ".outMesh", "store.tqSarnMesh"));
        return shape;
    }

    static bool loggedError() { return host::logContains(host::LogLevel::kError, ""); }
};

inline MPointArray points(std::initializer_list<MPoint> list)
{
    MPointArray out;
    for (const MPoint& p : list)
        out.append(p);
    return out;
}

inline MIntArray ints(std::initializer_list<int> list)
{
    MIntArray out;
    for (int v : list)
        out.append(v);
    return out;
}

inline std::vector<int> toVector(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

// Exact equality of two point arrays, naming the first difference.
inline ::testing::AssertionResult samePoints(const MPointArray& a, const MPointArray& b)
{
    if (a.length() != b.length())
        return ::testing::AssertionFailure() << "lengths " << a.length() << " and " << b.length();
    for (unsigned int i = 0; i < a.length(); ++i)
        if (!(a[i] == b[i]))
            return ::testing::AssertionFailure() << "point " << i << " differs";
    return ::testing::AssertionSuccess();
}

} // namespace storetest
