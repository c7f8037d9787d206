// Stroke capture: the pointer in pixels becomes points on the dense source surface. A stroke
// grows by one sample per drag event, with no spacing test (equal spacing comes later, when
// the tool command resamples it), and after every event the whole stroke is cast anew onto
// the surface, so what lazy smoothing pulled off the surface goes back onto it.

#include "tool/tqSarnContext.h"

#include "tool/boundaryWalk.h"

#include "tool/toolLog.h"

#include "kernel/meshQueries.h"
#include "kernel/screen.h"
#include "kernel/segmentSampling.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/tqSarn.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItMeshPolygon.h>

#include <algorithm>

using tq::tool::logged;

namespace {

constexpr float kStrokeRayReach = 10000.0f;
constexpr float kStrokeRayTolerance = 0.0001f;
constexpr float kProjectionReach = 100.0f;
constexpr float kProjectionTolerance = 0.01f;
constexpr int kLineDensity = 10; // points per unit length of a straight stroke
constexpr int kLazyTailStep = 10;
constexpr double kNoGlueDistance = 9999.0;

MPoint widened(const MFloatPoint& p) { return MPoint(p.x, p.y, p.z); }

MFloatPoint narrowed(const MPoint& p) { return MFloatPoint(float(p.x), float(p.y), float(p.z)); }

} // namespace

MPoint tqSarnContext::castStrokeRay(bool& hitFound, short x, short y)
{
    hitFound = false;
    if (tq::isGlueOn() && glueHit != MPoint::origin) {
        hitFound = true;
        return glueHit;
    }
    MPoint nearPoint;
    MVector direction;
    if (!view.viewToWorld(x, y, nearPoint, direction))
        return MPoint::origin;
    MStatus status;
    MDagPath source = tq::getSourceMeshPath(status);
    if (!status || !source.isValid() || !source.hasFn(MFn::kMesh))
        return MPoint::origin;
    MFnMesh mesh(source);
    MFloatPointArray hits;
    const MFloatVector rayDirection(float(direction.x), float(direction.y), float(direction.z));
    const bool found = mesh.allIntersections(narrowed(nearPoint), rayDirection, nullptr, nullptr, true,
                                             MSpace::kWorld, kStrokeRayReach, true, &accelParams, true, hits,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, kStrokeRayTolerance);
    if (!found || hits.length() == 0)
        return MPoint::origin;
    hitFound = true;
    return widened(hits[0]);
}

void tqSarnContext::recordFirstHit(const MPoint& hit)
{
    // Deliberate: a hit exactly on the world origin reads as "no first hit yet", and the next
    // hit takes its place; the origin is what the press resets firstHit to.
    if (firstHit == MPoint::origin)
        firstHit = hit;
}

MPointArray tqSarnContext::addStrokeSample(const MPoint& hit, const MEvent& event)
{
    const MPoint sample = tq::isGlueOn() ? glueHit : hit;
    if (firstHit != MPoint::origin) {
        switch (figureMode) {
        case 0:
            currentStroke.append(sample);
            lazySmoothTail();
            break;
        case 1: {
            MPointArray ends;
            ends.append(firstHit);
            ends.append(sample);
            currentStroke = tq::sampleSegmentByDensity(ends, kLineDensity);
            break;
        }
        case 2:
        case 3: {
            // The figure is drawn anew from the first hit on each event.
            MPointArray figure;
            if (figureMode == 2)
                figureRectangle(figure, sample);
            else
                figureCircle(figure, sample);
            currentStroke = figure;
            break;
        }
        default:
            break;
        }
        projectStrokeToSource(currentStroke);
    }

    MPointArray preview;
    if (tq::hasPlayerVertices()) {
        if (event.isModifierShift())
            reverseFigure = true;
        if (!isClosedFigure()) {
            preview = currentStroke;
        } else if (anchorVertices.length()) {
            // The anchor chain's vertices, walked from its first anchor.
            preview = matchFigureToRow(currentStroke,
                                       tq::edgesToVertices(tq::getActiveMeshPath(), anchorPath, anchorVertices[0]));
        }
    }
    return preview;
}

void tqSarnContext::projectStrokeToSource(MPointArray& points)
{
    MStatus status;
    MDagPath source = tq::getSourceMeshPath(status);
    if (!status || !source.isValid() || !source.hasFn(MFn::kMesh)) {
        points.clear();
        return;
    }
    const MFloatPoint eye = tq::cameraEyePoint();
    MFnMesh mesh(source);
    MPointArray result;
    result.setSizeIncrement(points.length() ? points.length() : 1);
    MFloatPointArray hits;
    for (const MPoint& p : points) {
        const MFloatPoint start = narrowed(p);
        // Unnormalised on purpose: the reach of 100 is in lengths of the eye distance.
        const MFloatVector towardsEye = eye - start;
        const bool found = mesh.allIntersections(start, towardsEye, nullptr, nullptr, false, MSpace::kWorld,
                                                 kProjectionReach, true, &accelParams, true, hits, nullptr, nullptr,
                                                 nullptr, nullptr, nullptr, kProjectionTolerance);
        // The crossing farthest towards the eye: the point itself when it is on the surface, the
        // surface in front of it when smoothing pulled it inside.
        if (found && hits.length())
            result.append(widened(hits[hits.length() - 1]));
    }
    points = result;
}

void tqSarnContext::lazySmoothTail()
{
    if (!tq::optionVarBoolOr(tq::optionVar::kLazyActive, tq::optionVarDefault::kLazyActive) ||
        currentStroke.length() < 3)
        return;
    const unsigned int tailLength =
        unsigned(tq::optionVarIntOr(tq::optionVar::kLazyDistance, tq::optionVarDefault::kLazyDistance)) *
        kLazyTailStep;
    // The passes run at every drag event: a count no UI gives is held to 100, not a hang.
    const int strength =
        std::min(tq::optionVarIntOr(tq::optionVar::kLazyStrength, tq::optionVarDefault::kLazyStrength), 100);
    const unsigned int length = currentStroke.length();
    for (int pass = 0; pass < strength; ++pass) {
        // Deliberate: unsigned, so a tail longer than the stroke wraps and the pass does
        // nothing; smoothing starts once the stroke is as long as the tail.
        const unsigned int start = length - tailLength;
        for (unsigned int j = start; j < length - 2; ++j) {
            const MPoint& a = currentStroke[j];
            const MPoint& b = currentStroke[j + 1];
            const MPoint& c = currentStroke[j + 2];
            currentStroke[j + 1] = MPoint(0.25 * a.x + 0.5 * b.x + 0.25 * c.x, 0.25 * a.y + 0.5 * b.y + 0.25 * c.y,
                                          0.25 * a.z + 0.5 * b.z + 0.25 * c.z);
        }
    }
}

void tqSarnContext::updateHoverHit(const MEvent& event, const MHWRender::MFrameContext&, bool storeHit)
{
    event.getPosition(curX, curY);
    MStatus status;
    const bool glue = tq::isGlueOn();
    MDagPath mesh = glue ? tq::getSourceMeshPath(status) : tq::getActiveMeshPath();
    if (!mesh.isValid() || !mesh.hasFn(MFn::kMesh))
        return;
    MFloatPointArray hits;
    MIntArray faces;
    MVector normal;
    if (!tq::rayHitAtPixel(mesh, hits, normal, view, &accelParams, curX, curY, faces, false) || hits.length() == 0)
        return;
    const MPoint point = widened(hits[0]);
    if (storeHit) {
        MObject store = tq::findStoreNode();
        if (!store.isNull())
            logged(tq::writeTripleAttr(point, tq::storeAttr::kInterPoint, store), __LINE__);
    }
    if (glue && faces.length())
        glueHit = nearestFaceVertex(faces[0], point);
}

MPoint tqSarnContext::nearestFaceVertex(int faceId, const MPoint& point)
{
    MStatus status;
    MDagPath source = tq::getSourceMeshPath(status);
    if (!status || !source.isValid())
        return point;
    MFnSingleIndexedComponent component;
    MObject face = component.create(MFn::kMeshPolygonComponent, &status);
    if (!status)
        return point;
    component.addElement(faceId);
    MItMeshPolygon it(source, face, &status);
    if (!status || it.count() == 0)
        return point;
    // Deliberate: the zero point when no vertex is nearer than 9999 pixels; it reads as "no
    // glue target" wherever glueHit is tested.
    MPoint nearest(0.0, 0.0, 0.0, 1.0);
    double best = kNoGlueDistance;
    const unsigned int corners = it.polygonVertexCount();
    for (unsigned int i = 0; i < corners; ++i) {
        const MPoint corner = it.point(int(i), MSpace::kWorld);
        const double distance = tq::pixelDistance(corner, point);
        if (distance < best) {
            best = distance;
            nearest = corner;
        }
    }
    return nearest;
}
