#pragma once
// MHWRender::MFrameContext: what is known of the frame being drawn (camera, viewport size,
// matrices) independently of any device state. The host hands one out with the draw
// manager to draw overrides and to tool contexts; it always describes the view being drawn
// (for a tool, the active view) as that view is at the time of the call.

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace host {
class DrawAccess;
} // namespace host

namespace MHWRender {

class MFrameContext {
public:
    enum MatrixType {
        kWorldMtx,
        kWorldTransposeMtx,
        kWorldInverseMtx,
        kWorldTranspInverseMtx,
        kViewMtx,
        kViewTransposeMtx,
        kViewInverseMtx,
        kViewTranspInverseMtx,
        kProjectionMtx,
        kProjectionTranposeMtx,
        kProjectionInverseMtx,
        kProjectionTranspInverseMtx,
        kViewProjMtx,
        kViewProjTranposeMtx,
        kViewProjInverseMtx,
        kViewProjTranspInverseMtx,
        kWorldViewMtx,
        kWorldViewTransposeMtx,
        kWorldViewInverseMtx,
        kWorldViewTranspInverseMtx,
        kWorldViewProjMtx,
        kWorldViewProjTransposeMtx,
        kWorldViewProjInverseMtx,
        kWorldViewProjTranspInverseMtx
    };
    // The frame knows no object, so the kWorld* types give identity for the object's matrix.
    virtual MMatrix getMatrix(MFrameContext::MatrixType mtype, MStatus* ReturnStatus = nullptr) const;

    enum TupleType { kViewPosition, kViewDirection, kViewUp, kViewRight, kViewportPixelSize };
    virtual MDoubleArray getTuple(MFrameContext::TupleType ttype, MStatus* ReturnStatus = nullptr) const;

    virtual MStatus getViewportDimensions(int& originX, int& originY, int& width, int& height) const;
    virtual float getGlobalLineWidth() const;

    MDagPath getCurrentCameraPath(MStatus* ReturnStatus = nullptr) const;

    enum DisplayStyle {
        kGouraudShaded = (0x1),
        kWireFrame = (0x1 << 1),
        kBoundingBox = (0x1 << 2),
        kTextured = (0x1 << 3),
        kDefaultMaterial = (0x1 << 4),
        kXrayJoint = (0x1 << 5),
        kXray = (0x1 << 6),
        kTwoSidedLighting = (0x1 << 7),
        kFlatShaded = (0x1 << 8),
        kShadeActiveOnly = (0x1 << 9)
    };
    unsigned int getDisplayStyle() const;

    static bool inUserInteraction();
    static bool userChangingViewContext();

    static const char* className();

protected:
    MFrameContext();
    virtual ~MFrameContext();

private:
    friend class host::DrawAccess;
    unsigned int fViewId = 0; // the host view this context describes; 0 is none
};

} // namespace MHWRender
