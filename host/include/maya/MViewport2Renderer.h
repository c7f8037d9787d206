#pragma once
// MHWRender::MRenderer: the Viewport 2.0 renderer. In the host its job is change tracking:
// setGeometryDrawDirty marks a node's draw override for an update at the next frame.

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace MHWRender {

enum DrawAPI {
    kNone = 0,
    kOpenGL = 1 << 0,
    kDirectX11 = 1 << 1,
    kOpenGLCoreProfile = 1 << 2,
    kAllDevices = kOpenGL | kDirectX11 | kOpenGLCoreProfile
};

inline DrawAPI operator|(DrawAPI a, DrawAPI b)
{
    return static_cast<DrawAPI>(static_cast<unsigned int>(a) | static_cast<unsigned int>(b));
}

class MRenderer {
public:
    static MRenderer* theRenderer(bool initializeRenderer = true);

    // The host reports Core Profile OpenGL: the device its viewport stands in for.
    DrawAPI drawAPI() const;
    bool drawAPIIsOpenGL() const;

    static void setGeometryDrawDirty(MObject obj, bool topologyChanged = true);

private:
    MRenderer();
    ~MRenderer();
    MRenderer(const MRenderer&) = delete;
    MRenderer& operator=(const MRenderer&) = delete;
};

} // namespace MHWRender
