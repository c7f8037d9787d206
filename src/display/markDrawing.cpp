#include "display/markDrawing.h"

#include "display/overlayColors.h"
#include "kernel/ringMarker.h"
#include "kernel/screen.h"
#include "store/optionVars.h"

#include <maya/M3dView.h>
#include <maya/MColor.h>
#include <maya/MFnCamera.h>
#include <maya/MUintArray.h>

#include <algorithm>

namespace tq {

namespace {

using MHWRender::MUIDrawManager;

constexpr unsigned int kBrushPriority = 999;
constexpr unsigned int kTweakPriority = 9999;
constexpr double kRelaxScale = 0.05;
constexpr double kMoveScale = 0.03;

MColor opaque(MColor colour, float alpha = 1.0f)
{
    colour.a = alpha;
    return colour;
}

MVector viewDirection()
{
    MDagPath camera;
    if (!M3dView::active3dView().getCamera(camera))
        return MVector(0.0, 0.0, -1.0);
    return MFnCamera(camera).viewDirection(MSpace::kWorld);
}

unsigned int priorityAbove(double extra) { return static_cast<unsigned int>(depthOffset() + extra); }

void drawDots(MUIDrawManager& dm, const MPointArray& points, const MColor& colour, double radius)
{
    dm.beginDrawInXray();
    dm.setDepthPriority(priorityAbove(5.0));
    dm.setLineStyle(MUIDrawManager::kSolid);
    dm.setLineWidth(2.0f);
    for (const MPoint& point : points) {
        const MPoint pixel = worldToViewPoint(point);
        dm.setColor(colour);
        dm.circle2d(pixel, radius, true);
        dm.setColor(MColor::kOpaqueBlack);
        dm.circle2d(pixel, radius, false);
    }
    dm.endDrawInXray();
}

} // namespace

void drawBrushFeedback(MUIDrawManager& dm, const OverlayData& data)
{
    dm.beginDrawable(MUIDrawManager::kAutomatic, 0);
    dm.setFontName("Arial");
    dm.setFontSize(10);
    const MVector normal = viewDirection();
    MColor colour(0.0f, 0.0f, 0.0f);
    double radius = 0.0;
    switch (data.displayInfo) {
    case 2: // relax radius (b)
        colour = overlay::kLime;
        radius = data.radiusRelaxInteractive * kRelaxScale;
        break;
    case 3: // relax intensity (n)
        colour = overlay::kSlate;
        radius = data.intensityRelaxInteractive * kRelaxScale;
        break;
    case 4: // move radius (m)
        colour = overlay::kDeepRed;
        radius = data.radiusMoveInteractive * kMoveScale;
        break;
    default:
        break;
    }
    dm.setLineWidth(2.0f);
    dm.setDepthPriority(kBrushPriority);
    dm.setColor(opaque(colour));
    dm.circle(data.interPoint, normal, radius, false);
    dm.setColor(MColor(0.4f, 0.4f, 0.4f, 0.8f));
    dm.circle(data.interPoint, normal, radius * 0.8, true);
    dm.endDrawable();
}

void drawTweakCircle(MUIDrawManager& dm, const OverlayData& data)
{
    const int radius = optionVarIntOr(optionVar::kMoveRadius, optionVarDefault::kMoveRadius);
    dm.beginDrawable(MUIDrawManager::kAutomatic, 0);
    dm.setLineWidth(2.0f);
    dm.setColor(MColor(0.703f, 0.05f, 0.0625f, 1.0f));
    dm.setDepthPriority(kTweakPriority);
    dm.circle(data.interPoint, data.interNormal, radius * kMoveScale, false);
    dm.endDrawable();
}

void drawFreeBorder(MUIDrawManager& dm, const OverlayData& data)
{
    drawDots(dm, data.freepoints, MColor(0.1f, 0.1f, 0.8f, 1.0f), 4.5);
}

void drawMedianDots(MUIDrawManager& dm, const OverlayData& data)
{
    drawDots(dm, data.freezeMedian, opaque(overlay::kSlate), 5.0);
}

void drawMagnet(MUIDrawManager& dm, const OverlayData& data)
{
    dm.beginDrawInXray();
    dm.setDepthPriority(priorityAbove(0.0));
    dm.setColor(overlay::kMagenta);
    dm.setLineWidth(1.5f);
    drawRingMarker(dm, data.magnetPt[0], overlay::kMagenta, 7.0, true);
    if (data.magnetPt.length() > 1) {
        drawRingMarker(dm, data.magnetPt[1], overlay::kMagenta, 7.0, true);
        dm.setLineWidth(3.5f);
        dm.setLineStyle(MUIDrawManager::kShortDotted);
        dm.line2d(data.magnetPt[0], data.magnetPt[1]);
    }
    dm.endDrawInXray();
}

void drawFusePreview(MUIDrawManager& dm, const OverlayData& data)
{
    const MColor modeColour = data.mode == 1    ? overlay::kCobalt
                              : data.mode == -1 ? overlay::kCrimson
                                                : MColor(0.3f, 0.9f, 0.3f, 1.0f);
    dm.beginDrawInXray();
    dm.setColor(modeColour);
    dm.setLineWidth(1.7f);
    dm.setDepthPriority(priorityAbove(0.0));
    dm.lineStrip(data.fusept, false);
    if (data.fusemesh.length() == 0) {
        dm.endDrawInXray();
        return;
    }
    MUintArray indices;
    for (const int i : data.fuseindices)
        indices.append(static_cast<unsigned int>(i));
    dm.setLineWidth(1.5f);
    const MColor black(0.0f, 0.0f, 0.0f, 1.0f);
    drawRingMarker(dm, data.fusept[0], black, 7.0, false);
    drawRingMarker(dm, data.fusept[data.fusept.length() - 1], black, 7.0, false);
    dm.setLineStyle(MUIDrawManager::kDashed);
    dm.line(data.playersLine[0], data.fusept[0]);
    dm.line(data.playersLine[data.playersLine.length() - 1], data.fusept[data.fusept.length() - 1]);
    dm.setColor(opaque(modeColour, 0.3f));
    dm.mesh(MUIDrawManager::kTriangles, data.fusemesh, nullptr, nullptr, &indices);
    // Held below the int limit, so the group count cannot overflow.
    const int groups = std::min(optionVarIntOr(optionVar::kBridgeDivisions, 0), 1 << 20) + 1;
    if (groups > 0 && data.sublines.length() && data.mode != 0) {
        dm.setLineStyle(MUIDrawManager::kSolid);
        dm.setLineWidth(1.0f);
        dm.setColor(overlay::kSilver);
        const unsigned int per = data.sublines.length() / static_cast<unsigned int>(groups);
        for (int g = 0; g < groups && per; ++g) {
            MPointArray group;
            for (unsigned int k = 0; k < per; ++k)
                group.append(data.sublines[static_cast<unsigned int>(g) * per + k]);
            dm.lineStrip(group, false);
        }
    }
    dm.endDrawInXray();
}

} // namespace tq
