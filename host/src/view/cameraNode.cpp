#include "view/cameraNode.h"

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/nodeTypes.h"

#include <maya/MFnNumericAttribute.h>
#include <maya/MPxNode.h>
#include <maya/MVector.h>

#include <cmath>

namespace host {
namespace {

constexpr double kMillimetresPerInch = 25.4;

CameraAttributes gCamera;
const NodeType* gCameraType = nullptr;

MObject number(const char* longName, const char* shortName, MFnNumericData::Type type, double defaultValue)
{
    MFnNumericAttribute fn;
    MObject a = fn.create(longName, shortName, type, defaultValue);
    fn.setKeyable(true);
    fn.setStorable(true);
    return a;
}

MStatus initCamera()
{
    const CameraSettings d;
    gCamera.horizontalFilmAperture = number("horizontalFilmAperture", "hfa", MFnNumericData::kDouble,
                                            d.horizontalFilmAperture);
    gCamera.verticalFilmAperture = number("verticalFilmAperture", "vfa", MFnNumericData::kDouble,
                                          d.verticalFilmAperture);
    gCamera.focalLength = number("focalLength", "fl", MFnNumericData::kDouble, d.focalLength);
    gCamera.orthographic = number("orthographic", "o", MFnNumericData::kBoolean, 0.0);
    gCamera.orthographicWidth = number("orthographicWidth", "ow", MFnNumericData::kDouble, d.orthographicWidth);
    gCamera.nearClipPlane = number("nearClipPlane", "ncp", MFnNumericData::kDouble, d.nearClip);
    gCamera.farClipPlane = number("farClipPlane", "fcp", MFnNumericData::kDouble, d.farClip);
    gCamera.centerOfInterest = number("centerOfInterest", "coi", MFnNumericData::kDouble, d.centerOfInterest);
    for (const MObject* a : {&gCamera.horizontalFilmAperture, &gCamera.verticalFilmAperture, &gCamera.focalLength,
                             &gCamera.orthographic, &gCamera.orthographicWidth, &gCamera.nearClipPlane,
                             &gCamera.farClipPlane, &gCamera.centerOfInterest}) {
        MStatus st = MPxNode::addAttribute(*a);
        if (!st)
            return st;
    }
    return MStatus::kSuccess;
}

double readNumber(NodeBody* node, const MObject& attribute, double fallback)
{
    Storage s = pull(node, PlugKey{Access::attribute(attribute), {}});
    if (!s.value || s.value->kind != Value::Kind::kNumeric)
        return fallback;
    const double v = s.value->num[s.component >= 0 ? s.component : 0];
    return std::isfinite(v) ? v : fallback;
}

MVector unitOr(const MVector& v, const MVector& fallback)
{
    const double len = v.length();
    return len > 1e-12 && std::isfinite(len) ? v / len : fallback;
}

} // namespace

void ensureCameraType()
{
    if (gCameraType)
        return;
    ensureBuiltinTypes();
    const NodeType* shape = NodeTypeRegistry::instance().find("shape");
    gCameraType = NodeTypeRegistry::instance().find("camera");
    if (!gCameraType)
        gCameraType = registerBuiltinType("camera", MFn::kCamera, shape, initCamera, [] { return new MPxNode(); },
                                          true, true, false);
}

const CameraAttributes& cameraAttributes()
{
    ensureCameraType();
    return gCamera;
}

bool isCameraShape(const NodeBody* node)
{
    return node && node->isAlive && gCameraType && node->type == gCameraType;
}

NodeBody* cameraShapeOf(NodeBody* node)
{
    ensureCameraType();
    if (!node || !node->isAlive)
        return nullptr;
    if (isCameraShape(node))
        return node;
    NodeBody* found = nullptr;
    for (NodeBody* child : node->children) {
        if (!isCameraShape(child))
            continue;
        if (found)
            return nullptr;
        found = child;
    }
    return found;
}

double CameraSettings::horizontalFieldOfView() const
{
    return 2.0 * std::atan(0.5 * horizontalFilmAperture * kMillimetresPerInch / focalLength);
}

double CameraSettings::verticalFieldOfView() const
{
    return 2.0 * std::atan(0.5 * verticalFilmAperture * kMillimetresPerInch / focalLength);
}

double CameraSettings::focalLengthFor(double horizontalFov) const
{
    return 0.5 * horizontalFilmAperture * kMillimetresPerInch / std::tan(0.5 * horizontalFov);
}

CameraSettings readCamera(NodeBody* shape)
{
    CameraSettings s;
    if (!isCameraShape(shape))
        return s;
    const CameraSettings d;
    s.horizontalFilmAperture = readNumber(shape, gCamera.horizontalFilmAperture, d.horizontalFilmAperture);
    s.verticalFilmAperture = readNumber(shape, gCamera.verticalFilmAperture, d.verticalFilmAperture);
    s.focalLength = readNumber(shape, gCamera.focalLength, d.focalLength);
    s.orthographic = readNumber(shape, gCamera.orthographic, 0.0) != 0.0;
    s.orthographicWidth = readNumber(shape, gCamera.orthographicWidth, d.orthographicWidth);
    s.nearClip = readNumber(shape, gCamera.nearClipPlane, d.nearClip);
    s.farClip = readNumber(shape, gCamera.farClipPlane, d.farClip);
    s.centerOfInterest = readNumber(shape, gCamera.centerOfInterest, d.centerOfInterest);
    // Values a user could set but no lens has: fall back rather than divide by zero.
    if (s.horizontalFilmAperture <= 0.0)
        s.horizontalFilmAperture = d.horizontalFilmAperture;
    if (s.verticalFilmAperture <= 0.0)
        s.verticalFilmAperture = d.verticalFilmAperture;
    if (s.focalLength <= 0.0)
        s.focalLength = d.focalLength;
    if (s.orthographicWidth <= 0.0)
        s.orthographicWidth = d.orthographicWidth;
    return s;
}

MStatus writeCameraValue(NodeBody* shape, const MObject& attribute, double value)
{
    if (!isCameraShape(shape) || !std::isfinite(value))
        return MStatus::kInvalidParameter;
    return writeValue(shape, PlugKey{Access::attribute(attribute), {}}, Value::numeric(value));
}

MMatrix cameraFrame(NodeBody* shape)
{
    const MMatrix m = worldMatrix(shape);
    const MVector x = unitOr(MVector(m(0, 0), m(0, 1), m(0, 2)), MVector::xAxis);
    MVector y = MVector(m(1, 0), m(1, 1), m(1, 2));
    y = unitOr(y - x * (y * x), MVector::yAxis);
    const MVector z = x ^ y;
    const double rows[4][4] = {{x.x, x.y, x.z, 0.0}, {y.x, y.y, y.z, 0.0}, {z.x, z.y, z.z, 0.0},
                               {m(3, 0), m(3, 1), m(3, 2), 1.0}};
    return MMatrix(rows);
}

} // namespace host
