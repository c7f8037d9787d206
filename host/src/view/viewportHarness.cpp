// The harness's cameras and views (host/viewport.h).

#include "host/viewport.h"

#include "dg/access.h"
#include "dg/scene.h"
#include "view/cameraNode.h"
#include "view/views.h"

#include "host/log.h"

#include <maya/MFnCamera.h>
#include <maya/MFnDependencyNode.h>

#include <cmath>

namespace host {
namespace {

constexpr double kPi = 3.14159265358979323846;

MStatus fail(MStatus* status, MStatus::MStatusCode code, const std::string& why)
{
    writeLog(LogLevel::kError, why);
    if (status)
        *status = code;
    return code;
}

bool finite(const MPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

MObject makeAnyCamera(const MPoint& position, const MPoint& target, bool ortho, double size, const std::string& name,
                      MStatus* status)
{
    ensureCameraType();
    if (!finite(position) || !finite(target) || !((target - position).length() > 1e-12)) {
        fail(status, MStatus::kInvalidParameter,
             "Cannot make a camera: its position and target must be distinct points");
        return MObject();
    }
    if (ortho ? !(size > 0.0 && std::isfinite(size)) : !(size > 0.0 && size < 180.0)) {
        fail(status, MStatus::kInvalidParameter,
             ortho ? "Cannot make a camera: the orthographic width must be positive"
                   : "Cannot make a camera: the field of view must be between 0 and 180 degrees");
        return MObject();
    }
    MStatus st;
    MFnCamera fn;
    MObject transform = fn.create(&st);
    if (!st) {
        fail(status, st.statusCode(), "Cannot make a camera: " + std::string(st.errorString().asChar()));
        return MObject();
    }
    MObject shape = fn.object();
    if (!name.empty()) {
        MFnDependencyNode(transform).setName(MString(name.c_str()));
        MFnDependencyNode(shape).setName(MString((name + "Shape").c_str()));
    }
    fn.setEyePoint(position, MSpace::kWorld);
    fn.setCenterOfInterestPoint(target, MSpace::kWorld);
    if (ortho) {
        fn.setOrthoWidth(size);
        fn.setIsOrtho(true);
    } else {
        fn.setHorizontalFieldOfView(size * kPi / 180.0);
    }
    if (status)
        *status = MStatus::kSuccess;
    return shape;
}

NodePtr cameraNodeOf(const MObject& camera)
{
    ensureCameraType();
    NodeBody* shape = cameraShapeOf(Access::node(camera));
    return shape ? Scene::current().shared(shape) : nullptr;
}

} // namespace

MObject makeCamera(const MPoint& position, const MPoint& target, double horizontalFovDegrees, const std::string& name,
                   MStatus* status)
{
    return makeAnyCamera(position, target, false, horizontalFovDegrees, name, status);
}

MObject makeOrthoCamera(const MPoint& position, const MPoint& target, double orthographicWidth,
                        const std::string& name, MStatus* status)
{
    return makeAnyCamera(position, target, true, orthographicWidth, name, status);
}

ViewId makeView(int width, int height, const MObject& camera, MStatus* status)
{
    if (width <= 0 || height <= 0 || width > 32767 || height > 32767) {
        fail(status, MStatus::kInvalidParameter, "Cannot make a view of " + std::to_string(width) + " x " +
                                                     std::to_string(height) + " pixels");
        return 0;
    }
    NodePtr shape = cameraNodeOf(camera);
    if (!shape) {
        fail(status, MStatus::kInvalidParameter, "Cannot make a view: the object given is not a camera");
        return 0;
    }
    if (status)
        *status = MStatus::kSuccess;
    return addView(width, height, std::move(shape)).id;
}

MStatus setActiveView(ViewId view)
{
    if (!makeViewActive(view))
        return fail(nullptr, MStatus::kInvalidParameter, "No view " + std::to_string(view) + " to make active");
    return MStatus::kSuccess;
}

ViewId activeView()
{
    View* v = activeViewState();
    return v ? v->id : 0;
}

std::vector<ViewId> views()
{
    std::vector<ViewId> out;
    for (const View& v : liveViews())
        out.push_back(v.id);
    return out;
}

MStatus setViewCamera(ViewId view, const MObject& camera)
{
    View* v = viewOrActive(view);
    if (!v)
        return fail(nullptr, MStatus::kInvalidParameter, "No view " + std::to_string(view) + " to set a camera on");
    NodePtr shape = cameraNodeOf(camera);
    if (!shape)
        return fail(nullptr, MStatus::kInvalidParameter, "Cannot set a view's camera: the object is not a camera");
    MDagPath path = Access::pathTo(shape.get());
    M3dView api = ViewAccess::make(v->id);
    return api.setCamera(path);
}

MStatus resizeView(ViewId view, int width, int height)
{
    View* v = viewOrActive(view);
    if (!v || width <= 0 || height <= 0 || width > 32767 || height > 32767)
        return fail(nullptr, MStatus::kInvalidParameter, "Cannot resize view " + std::to_string(view));
    v->width = width;
    v->height = height;
    return MStatus::kSuccess;
}

MStatus removeView(ViewId view)
{
    if (!dropView(view))
        return fail(nullptr, MStatus::kInvalidParameter, "No view " + std::to_string(view) + " to remove");
    return MStatus::kSuccess;
}

unsigned int refreshCount(ViewId view)
{
    View* v = viewOrActive(view);
    return v ? v->refreshes : 0;
}

void setUserChangingView(bool changing) { setUserChangingViewFlag(changing); }

} // namespace host
