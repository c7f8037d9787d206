#include <maya/M3dView.h>

#include "dg/access.h"
#include "dg/fnMacros.h"
#include "dg/messages.h"
#include "dg/scene.h"
#include "view/cameraNode.h"
#include "view/views.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <cmath>
#include <limits>

using host::View;
using host::ViewAccess;
using host::ViewProjection;

namespace {

short toShort(double pixel)
{
    const double r = std::floor(pixel + 0.5);
    if (r < std::numeric_limits<short>::min())
        return std::numeric_limits<short>::min();
    if (r > std::numeric_limits<short>::max())
        return std::numeric_limits<short>::max();
    return static_cast<short>(r);
}

View* viewOf(const M3dView& view, MStatus* status)
{
    host::ensureCameraType();
    View* v = host::findView(ViewAccess::id(view));
    TQHOST_SET_STATUS(status, v ? MStatus::kSuccess : MStatus::kFailure);
    return v;
}

bool projectionOf(const M3dView& view, ViewProjection& projection, MStatus* status)
{
    View* v = viewOf(view, status);
    if (!v)
        return false;
    if (!host::viewProjection(*v, projection)) {
        TQHOST_SET_STATUS(status, MStatus::kFailure);
        return false;
    }
    return true;
}

} // namespace

M3dView::M3dView()
    : fViewId(0)
{
}

M3dView::~M3dView() = default;

M3dView M3dView::active3dView(MStatus* ReturnStatus)
{
    host::ensureCameraType();
    View* v = host::activeViewState();
    TQHOST_SET_STATUS(ReturnStatus, v ? MStatus::kSuccess : MStatus::kFailure);
    return ViewAccess::make(v ? v->id : 0);
}

unsigned int M3dView::numberOf3dViews()
{
    return static_cast<unsigned int>(host::liveViews().size());
}

MStatus M3dView::get3dView(const unsigned int index, M3dView& view)
{
    const auto& views = host::liveViews();
    if (index >= views.size())
        return MStatus::kInvalidParameter;
    view = ViewAccess::make(views[index].id);
    return MStatus::kSuccess;
}

int M3dView::portWidth(MStatus* ReturnStatus)
{
    View* v = viewOf(*this, ReturnStatus);
    return v ? v->width : 0;
}

int M3dView::portHeight(MStatus* ReturnStatus)
{
    View* v = viewOf(*this, ReturnStatus);
    return v ? v->height : 0;
}

bool M3dView::isVisible(MStatus* ReturnStatus) { return viewOf(*this, ReturnStatus) != nullptr; }

MStatus M3dView::getCamera(MDagPath& camera)
{
    MStatus st;
    View* v = viewOf(*this, &st);
    if (!v)
        return st;
    camera = host::Access::pathTo(v->camera.get());
    return MStatus::kSuccess;
}

MStatus M3dView::setCamera(MDagPath& camera)
{
    MStatus st;
    View* v = viewOf(*this, &st);
    if (!v)
        return st;
    host::NodeBody* shape = host::cameraShapeOf(host::Access::node(camera.node()));
    if (!shape)
        return MStatus::kInvalidParameter;
    if (shape != v->camera.get()) {
        v->camera = host::Scene::current().shared(shape);
        host::sendEvent("modelEditorChanged");
    }
    return MStatus::kSuccess;
}

MStatus M3dView::scheduleRefreshAllViews()
{
    host::ensureCameraType();
    for (const View& v : host::liveViews())
        ++host::findView(v.id)->refreshes;
    return MStatus::kSuccess;
}

MStatus M3dView::scheduleRefresh()
{
    MStatus st;
    if (View* v = viewOf(*this, &st))
        ++v->refreshes;
    return st;
}

MStatus M3dView::refresh(bool all, bool /*force*/)
{
    if (all)
        return scheduleRefreshAllViews();
    return scheduleRefresh();
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& worldPt, MVector& worldVector) const
{
    MStatus st;
    ViewProjection p;
    if (!projectionOf(*this, p, &st))
        return st;
    MPoint farPt;
    p.ray(x_pos, y_pos, worldPt, farPt);
    worldVector = p.rayDirection(x_pos, y_pos);
    return MStatus::kSuccess;
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt, MPoint& farClipPt) const
{
    MStatus st;
    ViewProjection p;
    if (!projectionOf(*this, p, &st))
        return st;
    p.ray(x_pos, y_pos, nearClipPt, farClipPt);
    return MStatus::kSuccess;
}

MStatus M3dView::viewToObjectSpace(short x_pos, short y_pos, const MMatrix& localMatrixInverse, MPoint& oPt,
                                   MVector& oVector) const
{
    MPoint worldPt;
    MVector worldVector;
    MStatus st = viewToWorld(x_pos, y_pos, worldPt, worldVector);
    if (!st)
        return st;
    oPt = worldPt * localMatrixInverse;
    oVector = worldVector * localMatrixInverse;
    return MStatus::kSuccess;
}

bool M3dView::worldToView(const MPoint& worldPt, short& x_pos, short& y_pos, MStatus* ReturnStatus) const
{
    ViewProjection p;
    if (!projectionOf(*this, p, ReturnStatus))
        return false;
    const MPoint w = worldPt.w != 0.0 && worldPt.w != 1.0 ? MPoint(worldPt.x / worldPt.w, worldPt.y / worldPt.w,
                                                                   worldPt.z / worldPt.w)
                                                            : worldPt;
    if (!std::isfinite(w.x) || !std::isfinite(w.y) || !std::isfinite(w.z)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return false;
    }
    double u = 0.0, v = 0.0, depth = 0.0;
    if (!p.project(w, u, v, depth))
        return false;
    x_pos = toShort(u);
    y_pos = toShort(v);
    // In view: a pixel of the port, not nearer than the near plane (within rounding).
    return x_pos >= 0 && x_pos < p.width && y_pos >= 0 && y_pos < p.height &&
           (p.orthographic || depth >= p.nearClip * (1.0 - 1e-9));
}

MStatus M3dView::projectionMatrix(MMatrix& projectionMatrix) const
{
    MStatus st;
    ViewProjection p;
    if (!projectionOf(*this, p, &st))
        return st;
    projectionMatrix = p.projectionMatrix();
    return MStatus::kSuccess;
}

MStatus M3dView::modelViewMatrix(MMatrix& modelViewMatrix) const
{
    MStatus st;
    ViewProjection p;
    if (!projectionOf(*this, p, &st))
        return st;
    modelViewMatrix = p.viewMatrix();
    return MStatus::kSuccess;
}
