#pragma once
// The built-in `camera` shape: film back, focal length, orthographic switch and width, clip
// planes and the centre of interest, with Maya's names and defaults. CameraSettings is a
// camera's values read at once, with the field of view they imply.

#include "dg/nodeBody.h"

#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <string>

namespace host {

struct CameraAttributes {
    MObject horizontalFilmAperture, verticalFilmAperture, focalLength, orthographic, orthographicWidth,
        nearClipPlane, farClipPlane, centerOfInterest;
};

// Registers the type on first use; every entry point of views and cameras calls it.
void ensureCameraType();
const CameraAttributes& cameraAttributes();

bool isCameraShape(const NodeBody* node);
// The camera shape a node stands for: the node itself, or the one camera shape below a
// transform. Null when there is none or more than one.
NodeBody* cameraShapeOf(NodeBody* node);

struct CameraSettings {
    double horizontalFilmAperture = 1.41732; // inches
    double verticalFilmAperture = 0.94488;
    double focalLength = 35.0; // millimetres
    bool orthographic = false;
    double orthographicWidth = 30.0;
    double nearClip = 0.1;
    double farClip = 10000.0;
    double centerOfInterest = 5.0;

    double horizontalFieldOfView() const; // radians
    double verticalFieldOfView() const;
    // The focal length that gives a horizontal field of view (radians) with this film back.
    double focalLengthFor(double horizontalFov) const;
};

CameraSettings readCamera(NodeBody* shape);
MStatus writeCameraValue(NodeBody* shape, const MObject& attribute, double value);

// The camera's world matrix (its path's inclusive matrix) without scale or shear: rows are
// right, up, backward (+Z) and the eye.
MMatrix cameraFrame(NodeBody* shape);

} // namespace host
