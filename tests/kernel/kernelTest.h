#pragma once
// Shared pieces of the kernel suites: arrays from literals, an orthographic view whose pixels
// are easy to reason about, and a scene with the plug-in loaded and meshes made from literals.

#include <host/harness.h>
#include <host/log.h>
#include <host/viewport.h>

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace kerneltest {

using P3 = std::array<double, 3>;

inline MPointArray points(const std::vector<P3>& list)
{
    MPointArray out;
    for (const P3& p : list)
        out.append(MPoint(p[0], p[1], p[2]));
    return out;
}

inline std::vector<double> xs(const MPointArray& a)
{
    std::vector<double> out;
    for (const MPoint& p : a)
        out.push_back(p.x);
    return out;
}

inline std::vector<int> ints(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

inline MIntArray intArray(const std::vector<int>& values) { return MIntArray(values.data(), unsigned(values.size())); }

// A new scene seen by an orthographic camera on +Z, 10 units across a 1000 x 800 view: 100
// pixels to the unit, the origin at pixel (500, 400).
class ViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::newScene();
        MStatus status;
        MObject camera = host::makeOrthoCamera(MPoint(0, 0, 10), MPoint(0, 0, 0), 10.0, "kernelCam", &status);
        ASSERT_TRUE(status) << host::logText();
        view = host::makeView(1000, 800, camera, &status);
        ASSERT_TRUE(status && host::setActiveView(view)) << host::logText();
    }

    // The world point on z = 0 under a pixel.
    static MPoint atPixel(double x, double y) { return MPoint((x - 500) / 100, (y - 400) / 100, 0.0); }

    host::ViewId view = 0;
};

// A new scene with the plug-in linked into the test program loaded (once per process).
class SceneTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!host::isPluginLoaded("tqSarn")) {
            ASSERT_TRUE(host::loadLinkedPlugin("tqSarn", initializePlugin, uninitializePlugin)) << host::logText();
        }
        host::newScene();
        host::clearLog();
    }

    // A mesh shape under a new transform named `name`.
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
};

} // namespace kerneltest
