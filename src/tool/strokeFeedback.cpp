// The tool's own drawing while the left button is held: the stroke, a spinning marker under
// the pointer and a dot at the stroke's start, and with an anchor row (or a redraw) a preview
// of the band the release would make. It all goes to the draw manager of the event at hand,
// which lives for that call only: nothing drawn here is kept. The overlay of finished data
// is the draw override's.

#include "tool/tqSarnContext.h"

#include "kernel/distances.h"
#include "kernel/meshQueries.h"
#include "kernel/ringMarker.h"
#include "kernel/screen.h"
#include "kernel/shadowRows.h"
#include "store/optionVars.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

namespace {

using MHWRender::MUIDrawManager;

// Deliberate: colours stored with channels above 1, as the tool has always passed them.
const MColor kPreviewGold(1.6941694f, 1.6941694f, 0.2640264f, 2.2002201f);
const MColor kPreviewBlue(0.4620462f, 0.5500550f, 1.9801980f, 2.2002201f);
const MColor kPreviewRed(1.6941694f, 0.4400440f, 0.4400440f, 2.2002201f);
const MColor kTextGold(0.8800880f, 0.8800880f, 0.2200220f, 2.2002201f);
const MColor kSliceViolet(0.75f, 0.25f, 0.75f, 1.0f);
const MColor kPreviewOutline(0.75f, 0.25f, 0.25f, 1.0f);
const MColor kGlueMarker(0.9f, 0.9f, 0.9f, 1.0f);

constexpr double kMarkerSpin = 0.12;
constexpr double kGlueDot = 3.0;

// The band between `row` and `preview` as triangles, two per step, walking both at the same
// pace: the longer one takes a point at every step, the shorter one follows in proportion.
// A picture only; the patch itself is built by the tool command.
MPointArray previewQuads(const MPointArray& row, const MPointArray& preview)
{
    MPointArray triangles;
    const unsigned int r = row.length();
    const unsigned int p = preview.length();
    const unsigned int steps = std::max(r, p) - 1;
    auto at = [steps](unsigned int step, unsigned int count) {
        return static_cast<unsigned int>(std::lround(double(step) * (count - 1) / steps));
    };
    for (unsigned int s = 0; s < steps; ++s) {
        const MPoint& a = row[at(s, r)];
        const MPoint& b = row[at(s + 1, r)];
        const MPoint& c = preview[at(s + 1, p)];
        const MPoint& d = preview[at(s, p)];
        triangles.append(a);
        triangles.append(b);
        triangles.append(c);
        triangles.append(a);
        triangles.append(c);
        triangles.append(d);
    }
    return triangles;
}

} // namespace

MStatus tqSarnContext::drawPatchPreview(MUIDrawManager& drawMgr, const MHWRender::MFrameContext&,
                                        const MPointArray& strokePreview)
{
    MStatus status;
    MPointArray preview(strokePreview);
    MPointArray row;
    const MIntArray anchors = tq::readPlayerVertices(status);
    if (anchors.length() > 0)
        row = tq::vertexPositions(anchors, MDagPath(), status);
    if (!tq::hasPlayerVertices() && redrawStroke) {
        preview = currentStroke;
        row.clear();
        MIntArray sizes;
        tq::lastShadowRow(sizes, row);
    }
    // The normal outcome of a drag with no anchors.
    if (preview.length() < 2 || row.length() < 2)
        return MStatus::kUnknownParameter;

    drawMgr.setFontSize(8);
    drawMgr.beginDrawable(MUIDrawManager::kNonSelectable, 0);
    drawMgr.setColor(kPreviewGold);
    drawMgr.setLineWidth(2.0f);
    const unsigned int lastPreview = preview.length() - 1;
    if (isClosedFigure()) {
        drawMgr.setLineWidth(3.0f);
        drawMgr.setLineStyle(MUIDrawManager::kSolid);
        drawMgr.lineStrip(preview, false);
        drawMgr.setLineWidth(1.5f);
        drawMgr.setColor(kPreviewGold);
        drawMgr.setLineStyle(1, 0xFF00);
        drawMgr.line(preview[0], row[0]);
        drawMgr.line(preview[lastPreview], row[row.length() - 1]);
        // The fifth argument is the marker's thin form: the start filled, the ends open.
        tq::drawRingMarker(drawMgr, firstHit, kPreviewBlue, 4.0, true);
        tq::drawRingMarker(drawMgr, preview[0], kPreviewGold, 7.0, false);
        tq::drawRingMarker(drawMgr, preview[lastPreview], kPreviewGold, 7.0, false);
    }
    if (!reverseFigure && isClosedFigure())
        drawMgr.text2d(MPoint(curX, curY + 10), "Hold SHIFT to reverse");

    const MPointArray triangles = previewQuads(row, preview);
    // The band brightens and thickens as the stroke outgrows the row it starts from.
    double ratio = 1.0;
    const double a = tq::planarDistance(row[0], row[row.length() - 1]);
    const double b = tq::planarDistance(preview[0], preview[lastPreview]);
    if (a > 0.0)
        ratio = b / a;
    const float brightness = static_cast<float>(std::min(ratio + 1.0, 1.8));
    const float alpha = static_cast<float>(std::min(ratio, 0.7));
    if (redrawStroke)
        drawMgr.setColor(MColor(kPreviewRed.r * brightness, kPreviewRed.g * brightness * 0.5f,
                                kPreviewRed.b * brightness * 0.5f, alpha));
    else
        drawMgr.setColor(MColor(kPreviewBlue.r * brightness * 0.5f, kPreviewBlue.g * brightness * 0.5f,
                                kPreviewBlue.b * brightness, alpha));
    if (!tq::boundaryEditMode())
        drawMgr.mesh(MUIDrawManager::kTriangles, triangles);
    drawMgr.endDrawable();
    return MStatus::kSuccess;
}

MStatus tqSarnContext::drawStrokeFeedback(MUIDrawManager& drawMgr, const MHWRender::MFrameContext&,
                                          const MPoint& hit, const MString& hint)
{
    if (currentStroke.length() == 0)
        return MStatus::kUnknownParameter;
    const bool glue = tq::isGlueOn();
    MPointArray stroke(currentStroke);
    if (glue)
        stroke[stroke.length() - 1] = hit;

    drawMgr.beginDrawable(MUIDrawManager::kNonSelectable, 0);
    drawMgr.setColor(kTextGold);
    drawMgr.text2d(MPoint(300.0, 5.0), hint);
    drawMgr.endDrawable();

    markerAngle += kMarkerSpin;
    // The stroke's colour brightens with its length.
    const double size = std::min(std::max(stroke.length() / 20.0, 0.25), 12.0) + 0.8;
    const float s = static_cast<float>(size);
    drawMgr.beginDrawable(MUIDrawManager::kNonSelectable, 0);
    MColor colour(s * 0.25f, s * 0.25f, s * s * 0.01f, 1.0f);
    if (redrawStroke)
        colour = MColor(s * s * 0.25f, s * s * 0.01f, s * s * 0.01f, 1.0f);
    if (sliceStroke)
        colour = kSliceViolet;
    drawMgr.setColor(colour);
    if (hit != MPoint::origin) {
        drawMgr.setLineWidth(1.0f);
        drawMgr.circle2d(tq::worldToViewPoint(stroke[0]), 3.0, true);
        // Three arcs that spin against each other around the pointer.
        const MPoint centre = tq::worldToViewPoint(hit);
        const MVector reference(1.0, 0.0, 0.0);
        drawMgr.arc2d(centre, reference, reference.rotateBy(MVector::kZaxis, -markerAngle), 16.0, false);
        drawMgr.arc2d(centre, reference, reference.rotateBy(MVector::kZaxis, markerAngle), 13.0, false);
        drawMgr.arc2d(centre, reference, reference.rotateBy(MVector::kZaxis, -markerAngle), 10.0, true);
    }
    drawMgr.setLineWidth(redrawStroke ? 3.0f : 2.5f);
    if (isClosedFigure()) {
        drawMgr.setColor(tq::hasPlayerVertices() ? kPreviewBlue : kPreviewGold);
        drawMgr.setLineWidth(2.0f);
    }
    if (glue)
        drawMgr.points(stroke, false);
    else if (stroke.length() > 1) // a strip of one point draws nothing
        drawMgr.lineStrip(stroke, false);
    drawMgr.endDrawable();

    drawMgr.beginDrawable(MUIDrawManager::kNonSelectable, 0);
    drawMgr.setLineWidth(1.0f);
    drawMgr.setColor(kPreviewOutline);
    if (previewPoints.length() > 0) {
        MPointArray outline(previewPoints);
        outline.append(previewPoints[0]);
        drawMgr.lineStrip(outline, false);
    }
    drawMgr.endDrawable();
    return MStatus::kSuccess;
}

void tqSarnContext::drawGlueMarker(MUIDrawManager& drawMgr)
{
    if (!tq::isGlueOn() || glueHit == MPoint::origin)
        return;
    const MPoint pixel = tq::worldToViewPoint(glueHit);
    drawMgr.setColor(kGlueMarker);
    drawMgr.circle2d(pixel, kGlueDot, true);
    drawMgr.setColor(MColor(0.0f, 0.0f, 0.0f, 1.0f));
    drawMgr.circle2d(pixel, kGlueDot, false);
}
