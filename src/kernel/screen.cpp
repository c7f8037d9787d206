#include "kernel/screen.h"

#include "kernel/distances.h"
#include "store/logModules.h"

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MFnCamera.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cmath>
#include <limits>

namespace tq {

namespace {

// A pixel coordinate truncated toward zero into the view's 16-bit range.
short truncatedPixel(double value)
{
    if (std::isnan(value))
        return 0;
    const double whole = std::trunc(value);
    if (whole <= std::numeric_limits<short>::min())
        return std::numeric_limits<short>::min();
    if (whole >= std::numeric_limits<short>::max())
        return std::numeric_limits<short>::max();
    return static_cast<short>(whole);
}

} // namespace

MPoint worldToViewPoint(const MPoint& p)
{
    short x = 0;
    short y = 0;
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status)
        view.worldToView(p, x, y); // the pixel is given even when it lies outside the port
    return MPoint(x, y, 0.0, 1.0);
}

MPoint viewToWorldPoint(const MPoint& p)
{
    MPoint nearPoint(0.0, 0.0, 0.0, 1.0);
    MPoint farPoint;
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (!status)
        return nearPoint;
    status = view.viewToWorld(truncatedPixel(p.x), truncatedPixel(p.y), nearPoint, farPoint);
    if (!status)
        return MPoint(0.0, 0.0, 0.0, 1.0);
    return nearPoint;
}

short pixelDistance(const MPoint& a, const MPoint& b)
{
    // Both positions are 16-bit pixels, so the distance is below 92682 and fits an int.
    const int whole = static_cast<int>(planarDistance(worldToViewPoint(a), worldToViewPoint(b)));
    const int low = whole & 0xFFFF;
    return static_cast<short>(low >= 0x8000 ? low - 0x10000 : low);
}

MFloatPoint cameraEyePoint()
{
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    MDagPath cameraPath;
    if (status)
        status = view.getCamera(cameraPath);
    if (!status)
        return MFloatPoint(0.0f, 0.0f, 0.0f, 1.0f);
    MFnCamera camera(cameraPath, &status);
    if (!status) {
        status.pAPIerror(logModule::kFunctions, __LINE__, "cameraEyePoint");
        return MFloatPoint(0.0f, 0.0f, 0.0f, 1.0f);
    }
    const MPoint eye = camera.eyePoint(MSpace::kWorld, &status);
    if (!status)
        status.pAPIerror(logModule::kFunctions, __LINE__, "cameraEyePoint");
    return MFloatPoint(static_cast<float>(eye.x), static_cast<float>(eye.y), static_cast<float>(eye.z), 1.0f);
}

} // namespace tq
