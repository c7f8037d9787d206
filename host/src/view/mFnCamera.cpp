#include <maya/MFnCamera.h>

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"
#include "view/cameraNode.h"

#include <maya/MEulerRotation.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>

#include <cmath>

using host::Access;
using host::CameraSettings;
using host::NodeBody;

TQHOST_DEFINE_MFN(MFnCamera, MFn::kCamera)

namespace {

constexpr double kPi = 3.14159265358979323846;

NodeBody* shapeOf(const MObject& object, MStatus* status)
{
    host::ensureCameraType();
    NodeBody* n = Access::node(object);
    const bool ok = host::isCameraShape(n);
    TQHOST_SET_STATUS(status, ok ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return ok ? n : nullptr;
}

// Object space to the asked space: the shape itself has no transformation of its own.
MMatrix spaceMatrix(NodeBody* shape, MSpace::Space space)
{
    switch (space) {
    case MSpace::kWorld: return host::cameraFrame(shape);
    case MSpace::kTransform:
    case MSpace::kPostTransform: return host::localMatrix(shape->parent);
    default: return MMatrix();
    }
}

MVector direction(NodeBody* shape, const MVector& local, MSpace::Space space)
{
    const MVector v = local * spaceMatrix(shape, space);
    return v.length() > 0.0 ? v.normal() : local;
}

// The transform that places the camera: its parent, when that is a transform.
NodeBody* placing(NodeBody* shape)
{
    NodeBody* t = shape->parent;
    return t && t->isAlive && t->type->isTransform ? t : nullptr;
}

MStatus setTriple(NodeBody* transform, const char* x, const char* y, const char* z, const MVector& value)
{
    MFnDependencyNode fn(Access::object(host::Scene::current().shared(transform)));
    const char* names[3] = {x, y, z};
    for (int i = 0; i < 3; ++i) {
        MStatus st;
        MPlug plug = fn.findPlug(names[i], true, &st);
        if (st)
            st = plug.setDouble(value[i]);
        if (!st)
            return st;
    }
    return MStatus::kSuccess;
}

MMatrix parentWorld(NodeBody* transform)
{
    NodeBody* p = transform->parent;
    return p && p != host::Scene::current().world() ? host::worldMatrix(p) : MMatrix();
}

MStatus placeEye(NodeBody* shape, const MPoint& worldEye)
{
    NodeBody* t = placing(shape);
    if (!t)
        return MStatus::kFailure;
    const MPoint local = worldEye * parentWorld(t).inverse();
    return setTriple(t, "translateX", "translateY", "translateZ", MVector(local.x, local.y, local.z));
}

// Turns the camera so that it looks along `forward` with its up as near `upHint` as it can.
MStatus aim(NodeBody* shape, const MVector& forward, const MVector& upHint)
{
    NodeBody* t = placing(shape);
    if (!t)
        return MStatus::kFailure;
    if (!(forward.length() > 1e-12))
        return MStatus::kInvalidParameter;
    const MVector f = forward.normal();
    MVector right = f ^ upHint;
    if (right.length() < 1e-9 * upHint.length() || !(right.length() > 0.0))
        right = f ^ (std::fabs(f.y) < 0.9 ? MVector::yAxis : MVector::zAxis);
    right.normalize();
    const MVector up = right ^ f;
    const MVector back = -f;
    const double rows[4][4] = {{right.x, right.y, right.z, 0.0},
                               {up.x, up.y, up.z, 0.0},
                               {back.x, back.y, back.z, 0.0},
                               {0.0, 0.0, 0.0, 1.0}};
    MMatrix parent = parentWorld(t);
    for (int i = 0; i < 3; ++i)
        parent(3, i) = 0.0;
    const MMatrix local = MMatrix(rows) * parent.inverse();
    MFnDependencyNode fn(Access::object(host::Scene::current().shared(t)));
    int order = fn.findPlug("rotateOrder", true).asInt();
    if (order < 0 || order > 5)
        order = 0;
    const MEulerRotation r = MEulerRotation::decompose(local, static_cast<MEulerRotation::RotationOrder>(order));
    return setTriple(t, "rotateX", "rotateY", "rotateZ", MVector(r.x, r.y, r.z));
}

MPoint toWorld(NodeBody* shape, const MPoint& p, MSpace::Space space)
{
    if (space == MSpace::kWorld)
        return p;
    if (space == MSpace::kTransform || space == MSpace::kPostTransform) {
        NodeBody* t = placing(shape);
        return t ? p * parentWorld(t) : p;
    }
    return p * host::worldMatrix(shape);
}

bool finite(const MPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

} // namespace

MFnCamera::MFnCamera(const MDagPath& object, MStatus* ReturnStatus)
{
    MStatus s = setObject(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MObject MFnCamera::create(MStatus* ReturnStatus)
{
    MObject none;
    return create(none, ReturnStatus);
}

MObject MFnCamera::create(MObject& parent, MStatus* ReturnStatus)
{
    host::ensureCameraType();
    NodeBody* p = parent.isNull() ? nullptr : Access::node(parent);
    if (!parent.isNull() && (!p || !p->type->isTransform)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    MStatus st;
    host::NodePtr madeParent;
    host::NodePtr shape = host::Scene::current().createNode(host::NodeTypeRegistry::instance().find("camera"), "",
                                                            p, &st, &madeParent);
    TQHOST_SET_STATUS(ReturnStatus, st);
    if (!shape)
        return MObject();
    setObject(Access::object(shape));
    return Access::object(madeParent ? madeParent : shape);
}

MPoint MFnCamera::eyePoint(MSpace::Space space, MStatus* ReturnStatus) const
{
    NodeBody* n = shapeOf(fObject, ReturnStatus);
    return n ? MPoint::origin * spaceMatrix(n, space) : MPoint::origin;
}

MVector MFnCamera::viewDirection(MSpace::Space space, MStatus* ReturnStatus) const
{
    NodeBody* n = shapeOf(fObject, ReturnStatus);
    return n ? direction(n, MVector::zNegAxis, space) : MVector::zNegAxis;
}

MVector MFnCamera::upDirection(MSpace::Space space, MStatus* ReturnStatus) const
{
    NodeBody* n = shapeOf(fObject, ReturnStatus);
    return n ? direction(n, MVector::yAxis, space) : MVector::yAxis;
}

MVector MFnCamera::rightDirection(MSpace::Space space, MStatus* ReturnStatus) const
{
    NodeBody* n = shapeOf(fObject, ReturnStatus);
    return n ? direction(n, MVector::xAxis, space) : MVector::xAxis;
}

MPoint MFnCamera::centerOfInterestPoint(MSpace::Space space, MStatus* ReturnStatus) const
{
    NodeBody* n = shapeOf(fObject, ReturnStatus);
    if (!n)
        return MPoint::origin;
    return MPoint(0.0, 0.0, -host::readCamera(n).centerOfInterest) * spaceMatrix(n, space);
}

MStatus MFnCamera::set(const MPoint& wsEyeLocation, const MVector& wsViewDirection, const MVector& wsUpDirection,
                       double horizFieldOfView, double aspectRatio)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!finite(wsEyeLocation) || !(horizFieldOfView > 0.0 && horizFieldOfView < kPi) || !(aspectRatio > 0.0))
        return MStatus::kInvalidParameter;
    st = aim(n, wsViewDirection, wsUpDirection);
    if (st)
        st = placeEye(n, wsEyeLocation);
    if (st)
        st = setHorizontalFieldOfView(horizFieldOfView);
    if (st)
        st = setAspectRatio(aspectRatio);
    return st;
}

MStatus MFnCamera::setEyePoint(const MPoint& eyeLocation, MSpace::Space space)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!finite(eyeLocation))
        return MStatus::kInvalidParameter;
    return placeEye(n, toWorld(n, eyeLocation, space));
}

MStatus MFnCamera::setCenterOfInterestPoint(const MPoint& centerOfInterest, MSpace::Space space)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!finite(centerOfInterest))
        return MStatus::kInvalidParameter;
    const MPoint target = toWorld(n, centerOfInterest, space);
    const MMatrix frame = host::cameraFrame(n);
    const MVector toTarget = target - MPoint(frame(3, 0), frame(3, 1), frame(3, 2));
    if (!(toTarget.length() > 1e-12))
        return MStatus::kInvalidParameter;
    st = aim(n, toTarget, MVector(frame(1, 0), frame(1, 1), frame(1, 2)));
    if (st)
        st = host::writeCameraValue(n, host::cameraAttributes().centerOfInterest, toTarget.length());
    return st;
}

namespace {

// A positive, finite value written to one camera attribute.
MStatus writePositive(const MObject& object, const MObject& attribute, double value)
{
    MStatus st;
    NodeBody* n = shapeOf(object, &st);
    if (!n)
        return st;
    if (!(value > 0.0) || !std::isfinite(value))
        return MStatus::kInvalidParameter;
    return host::writeCameraValue(n, attribute, value);
}

template <class F>
double readSetting(const MObject& object, MStatus* status, F get)
{
    NodeBody* n = shapeOf(object, status);
    return n ? get(host::readCamera(n)) : get(CameraSettings());
}

} // namespace

MStatus MFnCamera::setHorizontalFilmAperture(double hFilmAperture)
{
    return writePositive(fObject, host::cameraAttributes().horizontalFilmAperture, hFilmAperture);
}

double MFnCamera::horizontalFilmAperture(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.horizontalFilmAperture; });
}

MStatus MFnCamera::setVerticalFilmAperture(double vFilmAperture)
{
    return writePositive(fObject, host::cameraAttributes().verticalFilmAperture, vFilmAperture);
}

double MFnCamera::verticalFilmAperture(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.verticalFilmAperture; });
}

MStatus MFnCamera::setAspectRatio(double aspectRatio)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!(aspectRatio > 0.0) || !std::isfinite(aspectRatio))
        return MStatus::kInvalidParameter;
    return setVerticalFilmAperture(host::readCamera(n).horizontalFilmAperture / aspectRatio);
}

double MFnCamera::aspectRatio(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus,
                       [](const CameraSettings& s) { return s.horizontalFilmAperture / s.verticalFilmAperture; });
}

MStatus MFnCamera::setHorizontalFieldOfView(double fov)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!(fov > 0.0 && fov < kPi))
        return MStatus::kInvalidParameter;
    return host::writeCameraValue(n, host::cameraAttributes().focalLength, host::readCamera(n).focalLengthFor(fov));
}

double MFnCamera::horizontalFieldOfView(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.horizontalFieldOfView(); });
}

MStatus MFnCamera::setVerticalFieldOfView(double fov)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!(fov > 0.0 && fov < kPi))
        return MStatus::kInvalidParameter;
    const CameraSettings s = host::readCamera(n);
    return host::writeCameraValue(n, host::cameraAttributes().focalLength,
                                  0.5 * s.verticalFilmAperture * 25.4 / std::tan(0.5 * fov));
}

double MFnCamera::verticalFieldOfView(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.verticalFieldOfView(); });
}

MStatus MFnCamera::setFocalLength(double focalLength)
{
    return writePositive(fObject, host::cameraAttributes().focalLength, focalLength);
}

double MFnCamera::focalLength(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.focalLength; });
}

MStatus MFnCamera::setNearClippingPlane(double dNear)
{
    return writePositive(fObject, host::cameraAttributes().nearClipPlane, dNear);
}

double MFnCamera::nearClippingPlane(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.nearClip; });
}

MStatus MFnCamera::setFarClippingPlane(double dFar)
{
    return writePositive(fObject, host::cameraAttributes().farClipPlane, dFar);
}

double MFnCamera::farClippingPlane(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.farClip; });
}

MStatus MFnCamera::setNearFarClippingPlanes(double dNear, double dFar)
{
    if (!(dNear > 0.0) || !(dFar > dNear) || !std::isfinite(dFar))
        return MStatus::kInvalidParameter;
    MStatus st = setNearClippingPlane(dNear);
    return st ? setFarClippingPlane(dFar) : st;
}

MStatus MFnCamera::setCenterOfInterest(double dist)
{
    return writePositive(fObject, host::cameraAttributes().centerOfInterest, dist);
}

double MFnCamera::centerOfInterest(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.centerOfInterest; });
}

MStatus MFnCamera::setIsOrtho(bool orthoState)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    return host::writeCameraValue(n, host::cameraAttributes().orthographic, orthoState ? 1.0 : 0.0);
}

MStatus MFnCamera::setIsOrtho(bool orthoState, double useDist)
{
    MStatus st;
    NodeBody* n = shapeOf(fObject, &st);
    if (!n)
        return st;
    if (!(useDist > 0.0) || !std::isfinite(useDist))
        return MStatus::kInvalidParameter;
    // Keep what is seen at `useDist` the same size across the switch.
    const CameraSettings s = host::readCamera(n);
    if (orthoState && !s.orthographic)
        st = setOrthoWidth(2.0 * useDist * std::tan(0.5 * s.horizontalFieldOfView()));
    else if (!orthoState && s.orthographic)
        st = setHorizontalFieldOfView(2.0 * std::atan(0.5 * s.orthographicWidth / useDist));
    return st ? setIsOrtho(orthoState) : st;
}

bool MFnCamera::isOrtho(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.orthographic; });
}

MStatus MFnCamera::setOrthoWidth(double orthoWidth)
{
    return writePositive(fObject, host::cameraAttributes().orthographicWidth, orthoWidth);
}

double MFnCamera::orthoWidth(MStatus* ReturnStatus) const
{
    return readSetting(fObject, ReturnStatus, [](const CameraSettings& s) { return s.orthographicWidth; });
}
