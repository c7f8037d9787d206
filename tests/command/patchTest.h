#pragma once
// Shared pieces of the patch suites: the plug-in linked into the test program and loaded once,
// a new scene with a store for every test, a selected retopo mesh to build on, and readers of
// what a user would look at on the mesh afterwards.

#include "../support/pluginTest.h"


#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <string>
#include <vector>

namespace patchtest {

using plugintest::P3;
using Faces = std::vector<std::vector<int>>;

inline MPointArray row(const std::vector<P3>& list) { return plugintest::pointArray(list); }

// `count` points from `from` in steps of `step`.
inline MPointArray straightRow(const P3& from, const P3& step, int count)
{
    MPointArray out;
    for (int i = 0; i < count; ++i)
        out.append(MPoint(from[0] + i * step[0], from[1] + i * step[1], from[2] + i * step[2]));
    return out;
}

using plugintest::intArray;
using plugintest::ints;

class PatchTest : public plugintest::PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        store = makeStore();
        ASSERT_FALSE(store.isNull()) << host::logText();
    }

    // A selected retopo mesh "retopo" holding one unit quad far from where the tests build,
    // so its vertices 0-3 and face 0 are taken before any patch.
    MDagPath makeRetopo()
    {
        MFloatPointArray p;
        for (const P3& v : std::vector<P3>{{100, 0, 0}, {101, 0, 0}, {101, 1, 0}, {100, 1, 0}})
            p.append(float(v[0]), float(v[1]), float(v[2]));
        MFnMesh fn;
        MStatus status;
        fn.create(4, 1, p, intArray({4}), intArray({0, 1, 2, 3}), host::createNode("transform", "retopo"), &status);
        EXPECT_TRUE(status) << host::logText();
        EXPECT_TRUE(host::select({"retopo"}));
        MDagPath path;
        fn.getPath(path);
        return path;
    }

    static MPointArray meshPoints(MFnMesh& fn)
    {
        MPointArray points;
        EXPECT_TRUE(fn.getPoints(points, MSpace::kWorld));
        return points;
    }

    static Faces faceVertices(MFnMesh& fn, const MIntArray& faces)
    {
        Faces out;
        for (int f : faces) {
            MIntArray vertices;
            EXPECT_TRUE(fn.getPolygonVertices(f, vertices)) << "face " << f;
            out.push_back(ints(vertices));
        }
        return out;
    }

    MObject store;
};

} // namespace patchtest
