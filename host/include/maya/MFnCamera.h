#pragma once
// MFnCamera: creates, edits and queries cameras. A camera shape looks down its local -Z with
// +Y up; in world space it follows the path's (or its parents') matrices. Perspective
// cameras see a horizontal field of view set by the film aperture and the focal length;
// orthographic ones see orthographicWidth across. Moving a camera (setEyePoint, set,
// setCenterOfInterestPoint) edits its parent transform.

#include <maya/MFnDagNode.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

class MFnCamera : public MFnDagNode {
    TQHOST_DECLARE_MFN(MFnCamera, MFnDagNode)

    MFnCamera(const MDagPath& object, MStatus* ReturnStatus = nullptr);

    // A camera shape under a new transform (returned); the function set attaches to the shape.
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(MObject& parent, MStatus* ReturnStatus = nullptr);

    MPoint eyePoint(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MVector viewDirection(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MVector upDirection(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MVector rightDirection(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MPoint centerOfInterestPoint(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;

    MStatus set(const MPoint& wsEyeLocation, const MVector& wsViewDirection, const MVector& wsUpDirection,
                double horizFieldOfView, double aspectRatio);
    MStatus setEyePoint(const MPoint& eyeLocation, MSpace::Space space = MSpace::kObject);
    // Aims the camera at the point (keeping its up as near as it can) and sets the distance.
    MStatus setCenterOfInterestPoint(const MPoint& centerOfInterest, MSpace::Space space = MSpace::kObject);

    MStatus setHorizontalFilmAperture(double hFilmAperture);
    double horizontalFilmAperture(MStatus* ReturnStatus = nullptr) const;
    MStatus setVerticalFilmAperture(double vFilmAperture);
    double verticalFilmAperture(MStatus* ReturnStatus = nullptr) const;
    MStatus setAspectRatio(double aspectRatio);
    double aspectRatio(MStatus* ReturnStatus = nullptr) const;

    MStatus setHorizontalFieldOfView(double fov);
    double horizontalFieldOfView(MStatus* ReturnStatus = nullptr) const;
    MStatus setVerticalFieldOfView(double fov);
    double verticalFieldOfView(MStatus* ReturnStatus = nullptr) const;
    MStatus setFocalLength(double focalLength);
    double focalLength(MStatus* ReturnStatus = nullptr) const;

    MStatus setNearClippingPlane(double dNear);
    double nearClippingPlane(MStatus* ReturnStatus = nullptr) const;
    MStatus setFarClippingPlane(double dFar);
    double farClippingPlane(MStatus* ReturnStatus = nullptr) const;
    MStatus setNearFarClippingPlanes(double dNear, double dFar);

    MStatus setCenterOfInterest(double dist);
    double centerOfInterest(MStatus* ReturnStatus = nullptr) const;

    MStatus setIsOrtho(bool orthoState);
    MStatus setIsOrtho(bool orthoState, double useDist);
    bool isOrtho(MStatus* ReturnStatus = nullptr) const;
    MStatus setOrthoWidth(double orthoWidth);
    double orthoWidth(MStatus* ReturnStatus = nullptr) const;
};
