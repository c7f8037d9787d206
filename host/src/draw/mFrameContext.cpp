#include <maya/MDrawContext.h>
#include <maya/MFrameContext.h>

#include "dg/access.h"
#include "dg/fnMacros.h"
#include "draw/drawAccess.h"
#include "view/cameraNode.h"
#include "view/views.h"

using host::DrawAccess;

namespace MHWRender {
namespace {

// The projection of the context's view, or false with a failed status.
bool projectionOf(const MFrameContext& context, host::ViewProjection& p, MStatus* status)
{
    host::ensureCameraType();
    const host::View* v = host::findView(DrawAccess::view(context));
    const bool ok = v && host::viewProjection(*v, p);
    TQHOST_SET_STATUS(status, ok ? MStatus::kSuccess : MStatus::kFailure);
    return ok;
}

MDoubleArray tuple(double a, double b, double c)
{
    MDoubleArray out;
    out.append(a);
    out.append(b);
    out.append(c);
    return out;
}

} // namespace

MFrameContext::MFrameContext() = default;
MFrameContext::~MFrameContext() = default;

MMatrix MFrameContext::getMatrix(MFrameContext::MatrixType mtype, MStatus* ReturnStatus) const
{
    host::ViewProjection p;
    if (!projectionOf(*this, p, ReturnStatus))
        return MMatrix();
    const MMatrix view = p.viewMatrix();
    const MMatrix projection = p.projectionMatrix();
    // Types come in fours: the matrix, its transpose, its inverse, its inverse transposed.
    MMatrix m;
    switch (mtype / 4) {
    case 0: m = MMatrix(); break; // the object's matrix: no object in a frame
    case 1: m = view; break;
    case 2: m = projection; break;
    case 3: m = view * projection; break;
    case 4: m = view; break;
    default: m = view * projection; break;
    }
    switch (mtype % 4) {
    case 1: return m.transpose();
    case 2: return m.inverse();
    case 3: return m.inverse().transpose();
    default: return m;
    }
}

MDoubleArray MFrameContext::getTuple(MFrameContext::TupleType ttype, MStatus* ReturnStatus) const
{
    host::ViewProjection p;
    if (!projectionOf(*this, p, ReturnStatus))
        return MDoubleArray();
    switch (ttype) {
    case kViewPosition: return tuple(p.eye.x, p.eye.y, p.eye.z);
    case kViewDirection: return tuple(p.forward.x, p.forward.y, p.forward.z);
    case kViewUp: return tuple(p.up.x, p.up.y, p.up.z);
    case kViewRight: return tuple(p.right.x, p.right.y, p.right.z);
    case kViewportPixelSize: {
        MDoubleArray size;
        size.append(p.width);
        size.append(p.height);
        return size;
    }
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
    return MDoubleArray();
}

MStatus MFrameContext::getViewportDimensions(int& originX, int& originY, int& width, int& height) const
{
    const host::View* v = host::findView(DrawAccess::view(*this));
    originX = originY = 0;
    width = v ? v->width : 0;
    height = v ? v->height : 0;
    return v ? MStatus::kSuccess : MStatus::kFailure;
}

float MFrameContext::getGlobalLineWidth() const { return 1.0f; }

MDagPath MFrameContext::getCurrentCameraPath(MStatus* ReturnStatus) const
{
    const host::View* v = host::findView(DrawAccess::view(*this));
    TQHOST_SET_STATUS(ReturnStatus, v ? MStatus::kSuccess : MStatus::kFailure);
    return v ? host::Access::pathTo(v->camera.get()) : MDagPath();
}

unsigned int MFrameContext::getDisplayStyle() const { return kGouraudShaded; }

bool MFrameContext::inUserInteraction() { return host::userChangingView(); }

bool MFrameContext::userChangingViewContext() { return host::userChangingView(); }

const char* MFrameContext::className() { return "MFrameContext"; }

MDrawContext::MDrawContext() = default;
MDrawContext::~MDrawContext() = default;

MMatrix MDrawContext::getMatrix(MFrameContext::MatrixType mtype, MStatus* ReturnStatus) const
{
    return MFrameContext::getMatrix(mtype, ReturnStatus);
}

MDoubleArray MDrawContext::getTuple(MFrameContext::TupleType ttype, MStatus* ReturnStatus) const
{
    return MFrameContext::getTuple(ttype, ReturnStatus);
}

MStatus MDrawContext::getViewportDimensions(int& originX, int& originY, int& width, int& height) const
{
    return MFrameContext::getViewportDimensions(originX, originY, width, height);
}

MStatus MDrawContext::getRenderTargetSize(int& width, int& height) const
{
    int x = 0, y = 0;
    return getViewportDimensions(x, y, width, height);
}

const char* MDrawContext::className() { return "MDrawContext"; }

} // namespace MHWRender

namespace host {

HostFrameContext::HostFrameContext(unsigned int viewId) { DrawAccess::setView(*this, viewId); }
HostFrameContext::~HostFrameContext() = default;

} // namespace host
