#include "display/rowDrawing.h"

#include "display/overlayColors.h"
#include "kernel/ringMarker.h"
#include "kernel/screen.h"

#include <maya/MColor.h>
#include <maya/MString.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

namespace tq {

namespace {

using MHWRender::MUIDrawManager;

constexpr unsigned int kTopPriority = 990;
// A hand-drawn loop whose ends met on screen.
constexpr double kStrokeClosure = 0.001;

MPoint pixelOffset(const MPoint& worldPoint, double dx, double dy)
{
    const MPoint pixel = worldToViewPoint(worldPoint);
    return MPoint(pixel.x + dx, pixel.y + dy, 0.0);
}

MString number(int value)
{
    MString text;
    text += value;
    return text;
}

// The rows of `points` cut by `sizes`; a size past the points keeps the points there are.
template <class Visit>
void forEachRow(const MPointArray& points, const MIntArray& sizes, Visit visit)
{
    unsigned int offset = 0;
    for (unsigned int k = 0; k < sizes.length(); ++k) {
        MPointArray row;
        const unsigned int n = static_cast<unsigned int>(std::max(sizes[k], 0));
        for (unsigned int j = offset; j < offset + n && j < points.length(); ++j)
            row.append(points[j]);
        offset += n;
        visit(k, row);
    }
}

} // namespace

void drawStrokes(MUIDrawManager& dm, const OverlayData& data)
{
    dm.setFontSize(36);
    forEachRow(data.strokes, data.sizes, [&](unsigned int i, const MPointArray& stroke) {
        if (stroke.length() == 0)
            return;
        dm.beginDrawable(MUIDrawManager::kAutomatic, 0);
        dm.setLineWidth(2.0f);
        dm.setDepthPriority(kTopPriority);
        MPointArray copy(stroke);
        const unsigned int n = stroke.length();
        MPoint start = stroke[0];
        if (stroke[0].distanceTo(stroke[n - 1]) < kStrokeClosure) {
            MPoint end = stroke[n - 1];
            if (n % 2 == 1 && n > 1)
                start = stroke[n - 2];
            dm.text(start, "o");
            dm.text(end, "x");
            dm.setLineStyle(MUIDrawManager::kShortDashed);
            dm.line(start, end);
        }
        // A list takes the points in pairs: an odd stroke's last point is doubled so its last
        // segment ends on it.
        if (n % 2 == 1)
            copy.append(stroke[n - 1]);
        dm.setLineStyle(MUIDrawManager::kSolid);
        dm.setColor(overlay::kGoldenYellow);
        dm.text2d(pixelOffset(start, 10, 5), number(static_cast<int>(i) + 1));
        dm.lineList(copy, false);
        const MPoint first = worldToViewPoint(stroke[0]);
        const MPoint last = worldToViewPoint(stroke[n - 1]);
        dm.circle2d(first, 5.0, true);
        dm.circle2d(last, 5.0, true);
        dm.setLineWidth(1.0f);
        dm.setColor(overlay::kNearBlack);
        dm.circle2d(first, 6.0, false);
        dm.circle2d(last, 6.0, false);
        dm.endDrawable();
    });
}

void drawShadows(MUIDrawManager& dm, const OverlayData& data)
{
    dm.beginDrawInXray();
    dm.setLineStyle(MUIDrawManager::kDashed);
    dm.setLineWidth(3.0f);
    dm.setFontSize(11);
    const bool single = data.sizesShadow.length() == 1;
    forEachRow(data.strokesShadow, data.sizesShadow, [&](unsigned int k, const MPointArray& row) {
        if (row.length() == 0)
            return;
        for (unsigned int j = 0; j < row.length(); ++j) {
            dm.setDepthPriority(kTopPriority);
            dm.setColor(MColor(0.7f, 0.7f, 0.7f, 0.5f));
            dm.text2d(pixelOffset(row[j], 10, 10), number(static_cast<int>(j) + 1));
        }
        if (single)
            dm.setColor(MColor(0.1f, 0.9f, 0.1f, 1.0f));
        else if (k == 0)
            dm.setColor(MColor(0.9f, 0.1f, 0.1f, 1.0f));
        else
            dm.setColor(MColor(0.1f, 0.1f, 0.9f, 1.0f));
        dm.circle2d(worldToViewPoint(row[0]), 4.5, true);
        dm.circle2d(worldToViewPoint(row[row.length() - 1]), 4.5, true);
        dm.setDepthPriority(static_cast<unsigned int>(depthOffset()));
        dm.lineStrip(row, false);
    });
    dm.endDrawInXray();
}

void drawAnchorRow(MUIDrawManager& dm, const OverlayData& data)
{
    const MPointArray& row = data.playerpts;
    dm.beginDrawable(MUIDrawManager::kAutomatic, 0);
    dm.setDepthPriority(kTopPriority);
    dm.setLineWidth(2.2f);
    dm.setFontName("Arial");
    dm.setFontSize(16);
    const unsigned int n = row.length();
    if (n > 1 && row[0] == row[n - 1]) {
        dm.setColor(overlay::kGoldenYellow);
        dm.text(row[0] + MVector(0.05, -0.05, -0.5), "Closed");
        // The loop's direction: an arrow from its first point toward its second, in pixels.
        const MPoint a = worldToViewPoint(row[1]);
        const MPoint b = worldToViewPoint(row[0]);
        const MVector u = (a - b).normal();
        const MVector v = u.rotateBy(MVector::kZaxis, 1.5708);
        MPointArray arrow;
        arrow.append(b + u * 60.0);
        arrow.append(b + v * 10.0);
        arrow.append(b - v * 10.0);
        dm.mesh2d(MUIDrawManager::kTriStrip, arrow);
        dm.setLineWidth(1.0f);
        dm.setColor(overlay::kNearBlack);
        dm.line2d(arrow[0], arrow[1]);
        dm.line2d(arrow[1], arrow[2]);
        dm.line2d(arrow[2], arrow[0]);
    }
    for (unsigned int i = 0; i < n; ++i) {
        dm.setFontSize(16);
        dm.setColor(overlay::kGoldenYellow);
        if (i == 0) {
            drawRingMarker(dm, row[i], overlay::kGoldenYellow, 7.0, false);
            dm.text2d(pixelOffset(row[i], 10, 10), "1");
        } else if (i == n - 1) {
            drawRingMarker(dm, row[i], overlay::kGoldenYellow, 7.0, false);
            dm.text2d(pixelOffset(row[i], 10, 10), "2");
            dm.setColor(MColor(0.7f, 0.7f, 0.6f, 1.0f));
            dm.setFontSize(15);
            MString count = number(static_cast<int>(n));
            count += "\"";
            dm.text(row[i] + MVector(0.3, -0.3, -0.3), count);
        }
    }
    dm.endDrawable();
}

void drawPlayerLine(MUIDrawManager& dm, const OverlayData& data)
{
    dm.beginDrawInXray();
    dm.setColor(overlay::kGoldenYellow);
    dm.setLineWidth(2.2f);
    dm.setDepthPriority(static_cast<unsigned int>(depthOffset() + 10.0));
    dm.lineStrip(data.playersLine, false);
    dm.endDrawInXray();
}

} // namespace tq
