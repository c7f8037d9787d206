#pragma once
// Shared pieces of the kernel suites: arrays from literals, an orthographic view whose pixels
// are easy to reason about, and a scene with the plug-in loaded and meshes made from literals.

#include "../support/pluginTest.h"

#include "store/storeAttributes.h"
#include "store/storeReads.h"

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

using plugintest::intArray;
using plugintest::ints;
using plugintest::P3;

inline MPointArray points(const std::vector<P3>& list) { return plugintest::pointArray(list); }

inline std::vector<double> xs(const MPointArray& a)
{
    std::vector<double> out;
    for (const MPoint& p : a)
        out.push_back(p.x);
    return out;
}

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

// A new scene with the plug-in loaded.
using SceneTest = plugintest::PluginTest;

using Rows = std::vector<std::vector<int>>;

// A store, and a selected retopo mesh of three unit quads in a row sharing their edges:
// vertices 0-3 along y = 0 at x = 0..3, vertices 4-7 above them along y = 1. The index rows
// start marked {42}, so a test can tell which were written.
class StripTest : public SceneTest {
protected:
    void SetUp() override
    {
        SceneTest::SetUp();
        store = host::createNode("tqSarn", "store");
        makeMesh("strip", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}},
                 {4, 4, 4}, {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6});
        ASSERT_TRUE(host::select({"strip"}));
        for (const char* name : {"shadowIndices1", "shadowIndices2", "shadowIndices3"})
            ASSERT_TRUE(tq::writeIntArrayAttr(intArray({42}), name, store));
    }

    Rows indexRows()
    {
        MIntArray a, b, c;
        EXPECT_TRUE(tq::readShadowIndices(a, b, c));
        return {ints(a), ints(b), ints(c)};
    }

    std::vector<int> shadowSizes()
    {
        MIntArray sizes;
        EXPECT_TRUE(tq::readShadowSizes(store, sizes));
        return ints(sizes);
    }

    MObject store;
};

} // namespace kerneltest
