// Strokes beyond a free line on the surface. A shaped stroke (figure mode 1 line, 2 rectangle,
// 3 circle) is built in the view from the first hit and the cursor and then shot onto the
// source. The slicing stroke (Shift-left, no anchor chain) goes through the source: every
// cursor ray keeps its camera-facing hits in sliceFront and its back-facing hits in sliceBack,
// and the release joins the two rows into one closed loop that cuts round the model. A closed
// figure drawn from an anchor row is laid on that row point by point.

#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "kernel/distances.h"
#include "kernel/meshQueries.h"
#include "kernel/screen.h"
#include "kernel/segmentSampling.h"
#include "kernel/strokeWalk.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnCamera.h>
#include <maya/MItMeshPolygon.h>

#include <algorithm>
#include <cmath>
#include <limits>

using tq::tool::logged;

namespace {

constexpr float kThroughReach = 10000.0f;
constexpr float kThroughTolerance = 0.001f;
constexpr double kNoFacingHit = 9999999.0;
constexpr short kFigureStep = 10; // pixels between the samples of a straight side
constexpr int kSliceBridgeSteps = 10;
constexpr int kSliceSplit = 6;
// Deliberate: the program's own degree factor, a hair below pi / 180; the circle's points
// and so the closing point of a large circle depend on it.
constexpr double kDegree = 0.01745277777777778;
constexpr double kCircleSpan = 400.0; // pixels; the step rule gives a small circle few points
constexpr double kCircleSpanPerDegree = 17.0;

MPoint widened(const MFloatPoint& p) { return MPoint(p.x, p.y, p.z); }

// A pixel coordinate in the view's 16-bit range; a not-a-number reads as 0.
short viewPixel(double value)
{
    if (std::isnan(value))
        return 0;
    return static_cast<short>(std::clamp(std::trunc(value), double(std::numeric_limits<short>::min()),
                                         double(std::numeric_limits<short>::max())));
}

// The active camera of `view`; false with none.
bool viewCamera(M3dView& view, MDagPath& camera)
{
    const MStatus status = view.getCamera(camera);
    return status && camera.isValid();
}

} // namespace

MPoint tqSarnContext::throughHit(const MPoint& pixelPoint)
{
    MPoint result = MPoint::origin;
    MPoint nearPoint;
    MVector direction;
    if (!view.viewToWorld(viewPixel(pixelPoint.x), viewPixel(pixelPoint.y), nearPoint, direction))
        return result;
    MStatus status;
    MDagPath source = tq::getSourceMeshPath(status);
    if (!status || !source.isValid() || !source.hasFn(MFn::kMesh))
        return result;
    MFnMesh mesh(source);
    MFloatPointArray hits;
    MIntArray faces;
    const MFloatPoint start(float(nearPoint.x), float(nearPoint.y), float(nearPoint.z));
    const MFloatVector along(float(direction.x), float(direction.y), float(direction.z));
    if (!mesh.allIntersections(start, along, nullptr, nullptr, false, MSpace::kWorld, kThroughReach, true,
                               &accelParams, true, hits, nullptr, &faces, nullptr, nullptr, nullptr,
                               kThroughTolerance) ||
        hits.length() == 0)
        return result;

    const MFloatPoint eyeFloat = tq::cameraEyePoint();
    const MPoint eye(eyeFloat.x, eyeFloat.y, eyeFloat.z);
    MItMeshPolygon polygon(source, MObject::kNullObj, &status);
    if (!status) {
        logged(status, __LINE__);
        return result;
    }
    double best = kNoFacingHit;
    for (unsigned int k = 0; k < hits.length() && k < faces.length(); ++k) {
        int previous = 0;
        if (!logged(polygon.setIndex(faces[k], previous), __LINE__))
            continue;
        MVector normal;
        logged(polygon.getNormal(normal, MSpace::kWorld), __LINE__);
        const MPoint centre = polygon.center(MSpace::kWorld);
        const MPoint hit = widened(hits[k]);
        if (normal * (centre - eye) <= 0.0) {
            // Deliberate: a facing hit behind a nearer one is dropped from both rows; only
            // hits that beat the best so far make the front row.
            const double distance = hit.distanceTo(eye);
            if (distance < best) {
                best = distance;
                sliceFront.append(hit);
                result = hit;
            }
        } else {
            sliceBack.append(hit);
        }
    }
    return result;
}

MStatus tqSarnContext::sliceStrokeDrag(MHWRender::MUIDrawManager& drawManager,
                                       const MHWRender::MFrameContext& frameContext)
{
    if (tq::hasPlayerVertices())
        return MStatus::kSuccess;
    const MPoint cursor(curX, curY, 0.0, 1.0);
    if (figureMode == 0) {
        const MPoint hit = throughHit(cursor);
        // Off the model the cursor itself is previewed, in view pixels.
        if (hit == MPoint::origin) {
            previewPoints.append(cursor);
        } else {
            currentStroke.append(hit);
            previewPoints.clear();
        }
    } else if (figureMode >= 1 && figureMode <= 3) {
        // The figure is built on the near plane and every point shot through the model anew.
        const MPoint world = tq::viewToWorldPoint(cursor);
        recordFirstHit(world);
        MPointArray figure;
        if (figureMode == 1)
            figure = tq::sampleSegmentByPixels(firstHit, world, kFigureStep);
        else if (figureMode == 2)
            figureRectangle(figure, world);
        else
            figureCircle(figure, world);
        figureOnSource(figure);
    }
    // The stroke and its preview, no text; the marker sits on the newest hit. An empty stroke
    // (no hit yet) draws nothing, which is no fault.
    const MPoint newest = currentStroke.length() ? currentStroke[currentStroke.length() - 1] : MPoint::origin;
    drawStrokeFeedback(drawManager, frameContext, newest, MString());
    view.refresh();
    return MStatus::kSuccess;
}

void tqSarnContext::figureOnSource(const MPointArray& points)
{
    currentStroke.clear();
    sliceFront.clear();
    sliceBack.clear();
    for (const MPoint& point : points) {
        const MPoint hit = throughHit(tq::worldToViewPoint(point));
        if (hit != MPoint::origin)
            currentStroke.append(hit);
    }
}

void tqSarnContext::figureRectangle(MPointArray& out, const MPoint& current)
{
    MDagPath cameraPath;
    if (!viewCamera(view, cameraPath))
        return;
    MStatus status;
    const MVector right = MFnCamera(cameraPath).rightDirection(MSpace::kWorld, &status);
    if (!logged(status, __LINE__))
        return;
    const double along = tq::scalarProjection(current - firstHit, right);
    const MPointArray ring =
        tq::multispit(firstHit, firstHit + right * along, current, current - right * along, kFigureStep);
    for (const MPoint& p : ring)
        out.append(p);
}

void tqSarnContext::figureCircle(MPointArray& out, const MPoint& current)
{
    MDagPath cameraPath;
    if (!viewCamera(view, cameraPath))
        return;
    const double radius = firstHit.distanceTo(current);
    // The aspect of the drag in the view is not kept: nothing reads it.
    const double pixels = tq::planarDistance(tq::worldToViewPoint(current), tq::worldToViewPoint(firstHit));
    const int step = std::max(static_cast<int>(std::trunc((kCircleSpan - pixels) / kCircleSpanPerDegree)), 1);
    const MMatrix cameraMatrix = cameraPath.inclusiveMatrix();
    const MFloatPoint eyeFloat = tq::cameraEyePoint();
    const MVector toCentre = firstHit - MPoint(eyeFloat.x, eyeFloat.y, eyeFloat.z);
    const unsigned int first = out.length();
    for (int degrees = 0; degrees < 360; degrees += step) {
        const double angle = degrees * kDegree;
        out.append(MPoint(radius * std::cos(angle), radius * std::sin(angle), 0.0, 1.0) * cameraMatrix + toCentre);
    }
    out.append(out[first]);
}

void tqSarnContext::closeSliceStroke()
{
    currentStroke.clear();
    if (sliceFront.length() == 0 || sliceBack.length() == 0)
        return;
    MPointArray loop = sliceFront;
    const MPoint lastFront = sliceFront[sliceFront.length() - 1];
    const MVector acrossEnd = (sliceBack[sliceBack.length() - 1] - lastFront) / double(kSliceBridgeSteps);
    for (int k = 1; k <= kSliceBridgeSteps; ++k)
        loop.append(lastFront + acrossEnd * double(k));
    for (unsigned int i = sliceBack.length(); i-- > 0;)
        loop.append(sliceBack[i]);
    const MPoint firstBack = sliceBack[0];
    const MVector acrossStart = (sliceFront[0] - firstBack) / double(kSliceBridgeSteps);
    for (int k = 1; k <= kSliceBridgeSteps; ++k)
        loop.append(firstBack + acrossStart * double(k));

    // Deliberate: only the cut points are kept, so the loop's own first point is not among
    // them; the last cut lands on it and closes the loop instead.
    currentStroke.setSizeIncrement(loop.length() * kSliceSplit);
    for (unsigned int i = 0; i + 1 < loop.length(); ++i) {
        const MVector sixth = (loop[i + 1] - loop[i]) / double(kSliceSplit);
        for (int k = 1; k <= kSliceSplit; ++k)
            currentStroke.append(loop[i] + sixth * double(k));
    }
    logged(snapToSource(currentStroke), __LINE__);
    if (currentStroke.length())
        currentStroke[currentStroke.length() - 1] = currentStroke[0];
}

MStatus tqSarnContext::snapToSource(MPointArray& points)
{
    MStatus status;
    MDagPath source = tq::getSourceMeshPath(status);
    if (!status)
        return status;
    if (!source.isValid() || !source.hasFn(MFn::kMesh))
        return MStatus::kInvalidParameter;
    const MMatrix matrix = source.inclusiveMatrix();
    if (!intersector.isCreated()) {
        MObject shape = source.node();
        status = intersector.create(shape, matrix);
        if (!status)
            return status;
        sourceMatrix = matrix;
    }
    for (MPoint& point : points) {
        MPointOnMesh nearest;
        if (intersector.getClosestPoint(point, nearest, 1.7976931348623157e308))
            point = MPoint(nearest.getPoint()) * matrix;
    }
    return MStatus::kSuccess;
}

int tqSarnContext::nearestStrokePoint(const MPointArray& stroke) const
{
    const MPoint cursor(curX, curY, 0.0, 1.0);
    int nearest = -1;
    double best = 0.0;
    for (unsigned int i = 0; i < stroke.length(); ++i) {
        const double distance = tq::planarDistance(tq::worldToViewPoint(stroke[i]), cursor);
        if (nearest < 0 || distance < best) {
            best = distance;
            nearest = static_cast<int>(i);
        }
    }
    return nearest;
}

MPointArray tqSarnContext::matchFigureToRow(const MPointArray& stroke, const MIntArray& rowIds)
{
    MStatus status;
    const MPointArray rowPoints = tq::vertexPositions(rowIds, MDagPath(), status);
    logged(status, __LINE__);
    const double total = tq::strokeLength(rowPoints);
    const int start = nearestStrokePoint(stroke);
    if (stroke.length() == 0 || start < 0)
        return MPointArray();
    const MPointArray rotated = tq::rotateToIndex(stroke, start);
    const int count = static_cast<int>(rowIds.length());
    const MPointArray forward = tq::walkStroke(rotated, total, count, true);
    const MPointArray backward = tq::walkStroke(rotated, total, count, false);
    // A walk of one point has no direction to compare either: the figure stays as drawn.
    if (forward.length() < 2 || backward.length() < 2)
        return stroke;
    const MVector drawn = stroke[stroke.length() / 8] - stroke[0];
    const double alongForward = tq::scalarProjection(forward[1] - forward[0], drawn);
    const double alongBackward = tq::scalarProjection(backward[1] - backward[0], drawn);
    if (alongForward > alongBackward)
        return reverseFigure ? backward : forward;
    return reverseFigure ? forward : backward;
}
