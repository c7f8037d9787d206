#pragma once
// MHWRender::MPxDrawOverride: the base of a plug-in's Viewport 2.0 drawing for the nodes of
// a draw classification (registered with MDrawRegistry). The host makes one override per
// node, keeps it while the node and the registration live, and at each frame calls
// prepareForDraw and, when hasUIDrawables is true, addUIDrawables. With isAlwaysDirty false
// those two run only at the first frame and after MRenderer::setGeometryDrawDirty; other
// frames show what the last update drew. The host has no graphics device: the draw callback
// is kept but never called.

#include <maya/MBoundingBox.h>
#include <maya/MDagPath.h>
#include <maya/MDrawContext.h>
#include <maya/MFrameContext.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MUIDrawManager.h>
#include <maya/MUserData.h>
#include <maya/MViewport2Renderer.h>

namespace host {
class DrawAccess;
} // namespace host

namespace MHWRender {

class MPxDrawOverride {
public:
    typedef void (*GeometryDrawOverrideCb)(const MDrawContext&, const MUserData*);

    MPxDrawOverride(const MObject& obj, GeometryDrawOverrideCb callback, bool isAlwaysDirty = true);
    virtual ~MPxDrawOverride();

    virtual DrawAPI supportedDrawAPIs() const;
    virtual bool hasUIDrawables() const;
    virtual MMatrix transform(const MDagPath& objPath, const MDagPath& cameraPath) const;
    virtual MBoundingBox boundingBox(const MDagPath& objPath, const MDagPath& cameraPath) const;
    virtual bool isBounded(const MDagPath& objPath, const MDagPath& cameraPath) const;
    virtual bool disableInternalBoundingBoxDraw() const;
    virtual bool excludedFromPostEffects() const;
    virtual bool isTransparent() const;

    virtual MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                                      const MFrameContext& frameContext, MUserData* oldData) = 0;
    virtual void addUIDrawables(const MDagPath& objPath, MUIDrawManager& drawManager,
                                const MFrameContext& frameContext, const MUserData* data);

    static const char* className();

private:
    MPxDrawOverride(const MPxDrawOverride&) = delete;
    MPxDrawOverride& operator=(const MPxDrawOverride&) = delete;

    friend class host::DrawAccess;
    GeometryDrawOverrideCb fCallback;
    bool fAlwaysDirty;
    MObject fObject;
};

} // namespace MHWRender
