#pragma once
// Conversions between world space and the pixels of the active view. Every routine asks the
// host for the active view anew; none takes a view. A view position is held in a point as
// (x, y, 0, 1), x and y whole pixels from the bottom left. With no active view, positions
// come out as (0, 0, 0, 1), so distances in pixels are 0 and world points are the origin.

#include <maya/MFloatPoint.h>
#include <maya/MPoint.h>

namespace tq {

// The pixel position of world point `p` in the active view, as (x, y, 0, 1).
MPoint worldToViewPoint(const MPoint& p);

// The near-plane point under pixel (trunc p.x, trunc p.y) of the active view; the far point
// is dropped. Pixels beyond 16 bits are clamped, a not-a-number pixel reads as 0.
MPoint viewToWorldPoint(const MPoint& p);

// The distance in pixels between world points `a` and `b` as the active view shows them,
// truncated, with only its low 16 bits kept. Deliberate: a distance beyond 32767 pixels wraps
// to a negative number, which callers dividing it by a step read as "no samples".
short pixelDistance(const MPoint& a, const MPoint& b);

// The eye of the active view's camera in world space; the origin with no view.
MFloatPoint cameraEyePoint();

} // namespace tq
