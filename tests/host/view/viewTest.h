#pragma once
// The fixture of the viewport suite: a new scene with the draw test plug-in loaded, and a
// camera with a view to look through.

#include "hostTestSupport.h"

#include <host/viewport.h>

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <cmath>
#include <ostream>
#include <string>

#ifndef DRAW_TEST_PLUGIN
#error "DRAW_TEST_PLUGIN must name the path of drawTestPlugin.so"
#endif

inline std::ostream& operator<<(std::ostream& os, const MPoint& p)
{
    return os << "(" << p.x << ", " << p.y << ", " << p.z << ")";
}

namespace viewtest {

inline ::testing::AssertionResult near(const MVector& a, const MVector& b, double tolerance = 1e-9)
{
    if ((a - b).length() <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not within "
                                         << tolerance << " of (" << b.x << ", " << b.y << ", " << b.z << ")";
}

inline ::testing::AssertionResult near(const MPoint& a, const MPoint& b, double tolerance = 1e-9)
{
    return near(MVector(a), MVector(b), tolerance);
}

class ViewTest : public hosttest::SceneTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(hosttest::ensurePluginLoaded(DRAW_TEST_PLUGIN));
        SceneTest::SetUp();
    }

    // A perspective camera and an active view through it.
    host::ViewId lookFrom(const MPoint& eye, const MPoint& target, int width, int height, double fov = 54.43)
    {
        MStatus status;
        MObject camera = host::makeCamera(eye, target, fov, "", &status);
        EXPECT_TRUE(status) << host::logText();
        host::ViewId view = host::makeView(width, height, camera, &status);
        EXPECT_TRUE(status) << host::logText();
        EXPECT_TRUE(host::setActiveView(view));
        return view;
    }

    // A draw test locator `name` under a transform `name`Xf.
    MObject locator(const std::string& name)
    {
        MStatus status;
        MObject node = host::createNode("drawTestLocator", name, "", &status);
        EXPECT_TRUE(status) << host::logText();
        return node;
    }

    static void setPoint(const std::string& plug, const MPoint& p)
    {
        EXPECT_TRUE(host::setDouble(plug + "X", p.x));
        EXPECT_TRUE(host::setDouble(plug + "Y", p.y));
        EXPECT_TRUE(host::setDouble(plug + "Z", p.z));
    }

    static int logCount(const std::string& text)
    {
        int n = 0;
        for (const host::LogEntry& e : host::logEntries())
            n += e.text.find(text) != std::string::npos ? 1 : 0;
        return n;
    }
};

} // namespace viewtest
