#pragma once
// ViewProjection: how one camera maps the world onto a port of width x height pixels, and
// back. View coordinates (u, v) are continuous pixels with the origin at the bottom left;
// pixel (x, y) sits at u = x, v = y. The horizontal field of view (or the orthographic
// width) spans the port's width; the vertical one follows the port's aspect.

#include "dg/nodeBody.h"

#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

namespace host {

struct ViewProjection {
    int width = 0;
    int height = 0;
    bool orthographic = false;
    MPoint eye;
    MVector right, up, forward; // world, unit; forward is the view direction
    double nearClip = 0.1;
    double farClip = 10000.0;
    double tanHalfWidth = 1.0;  // perspective: tan of half the horizontal field of view
    double tanHalfHeight = 1.0;
    double halfWidth = 1.0;     // orthographic: half the view's extent in world units
    double halfHeight = 1.0;

    // The view coordinates of a world point and its depth along the view direction. False
    // (with u, v unset) when the point is not in front of a perspective camera's eye.
    bool project(const MPoint& world, double& u, double& v, double& depth) const;
    // The points on the near and far clip planes that (u, v) sees.
    void ray(double u, double v, MPoint& nearPoint, MPoint& farPoint) const;
    // The unit direction of the ray through (u, v).
    MVector rayDirection(double u, double v) const;

    // World to camera (row vectors, the camera looking down -Z), and camera to clip space
    // in OpenGL's convention.
    MMatrix viewMatrix() const;
    MMatrix projectionMatrix() const;
};

// The projection of a camera shape into a port; false when the node is not a live camera
// or the port is empty.
bool makeProjection(NodeBody* cameraShape, int width, int height, ViewProjection& out);

} // namespace host
