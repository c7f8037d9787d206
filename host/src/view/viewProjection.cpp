#include "view/viewProjection.h"

#include "view/cameraNode.h"

#include <cmath>

namespace host {

bool makeProjection(NodeBody* cameraShape, int width, int height, ViewProjection& out)
{
    if (!isCameraShape(cameraShape) || width <= 0 || height <= 0)
        return false;
    const CameraSettings s = readCamera(cameraShape);
    const MMatrix frame = cameraFrame(cameraShape);
    out.width = width;
    out.height = height;
    out.orthographic = s.orthographic;
    out.eye = MPoint(frame(3, 0), frame(3, 1), frame(3, 2));
    out.right = MVector(frame(0, 0), frame(0, 1), frame(0, 2));
    out.up = MVector(frame(1, 0), frame(1, 1), frame(1, 2));
    out.forward = -MVector(frame(2, 0), frame(2, 1), frame(2, 2));
    out.nearClip = s.nearClip;
    out.farClip = s.farClip > s.nearClip ? s.farClip : s.nearClip + 1.0;
    const double aspect = double(height) / double(width);
    out.tanHalfWidth = std::tan(0.5 * s.horizontalFieldOfView());
    out.tanHalfHeight = out.tanHalfWidth * aspect;
    out.halfWidth = 0.5 * s.orthographicWidth;
    out.halfHeight = out.halfWidth * aspect;
    return true;
}

bool ViewProjection::project(const MPoint& world, double& u, double& v, double& depth) const
{
    const MVector d = world - eye;
    const double x = d * right;
    const double y = d * up;
    depth = d * forward;
    double nx, ny;
    if (orthographic) {
        nx = x / halfWidth;
        ny = y / halfHeight;
    } else {
        if (!(depth > 1e-12))
            return false;
        nx = x / (depth * tanHalfWidth);
        ny = y / (depth * tanHalfHeight);
    }
    u = 0.5 * width * (1.0 + nx);
    v = 0.5 * height * (1.0 + ny);
    return std::isfinite(u) && std::isfinite(v);
}

void ViewProjection::ray(double u, double v, MPoint& nearPoint, MPoint& farPoint) const
{
    const double nx = 2.0 * u / width - 1.0;
    const double ny = 2.0 * v / height - 1.0;
    if (orthographic) {
        const MPoint origin = eye + right * (nx * halfWidth) + up * (ny * halfHeight);
        nearPoint = origin + forward * nearClip;
        farPoint = origin + forward * farClip;
        return;
    }
    // A direction whose forward component is 1 reaches each clip plane at its distance.
    const MVector d = right * (nx * tanHalfWidth) + up * (ny * tanHalfHeight) + forward;
    nearPoint = eye + d * nearClip;
    farPoint = eye + d * farClip;
}

MVector ViewProjection::rayDirection(double u, double v) const
{
    if (orthographic)
        return forward;
    const double nx = 2.0 * u / width - 1.0;
    const double ny = 2.0 * v / height - 1.0;
    return (right * (nx * tanHalfWidth) + up * (ny * tanHalfHeight) + forward).normal();
}

MMatrix ViewProjection::viewMatrix() const
{
    const MVector back = -forward;
    const double camera[4][4] = {{right.x, right.y, right.z, 0.0},
                                 {up.x, up.y, up.z, 0.0},
                                 {back.x, back.y, back.z, 0.0},
                                 {eye.x, eye.y, eye.z, 1.0}};
    return MMatrix(camera).inverse();
}

MMatrix ViewProjection::projectionMatrix() const
{
    const double n = nearClip;
    const double f = farClip;
    double m[4][4] = {{0.0}};
    if (orthographic) {
        m[0][0] = 1.0 / halfWidth;
        m[1][1] = 1.0 / halfHeight;
        m[2][2] = -2.0 / (f - n);
        m[3][2] = -(f + n) / (f - n);
        m[3][3] = 1.0;
    } else {
        m[0][0] = 1.0 / tanHalfWidth;
        m[1][1] = 1.0 / tanHalfHeight;
        m[2][2] = -(f + n) / (f - n);
        m[2][3] = -1.0;
        m[3][2] = -2.0 * f * n / (f - n);
    }
    return MMatrix(m);
}

} // namespace host
