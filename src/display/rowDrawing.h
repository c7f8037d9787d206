#pragma once
// The overlay's drawing of what the user has laid down: the working strokes, the shadow rows
// of the last patch, the anchor row and its line.

#include "display/overlayData.h"

#include <maya/MUIDrawManager.h>

namespace tq {

// Each working stroke as a dashed list (every second segment blank: the strokes' look), its
// number beside its start, dots at both ends, and "o"/"x" on a closed stroke's ends.
void drawStrokes(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// Each shadow row through everything (x-ray): red then blue, green when it is the only row,
// with its points numbered.
void drawShadows(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// The anchor row's ends marked "1" and "2", its point count, and "Closed" with a direction
// arrow when it is a loop.
void drawAnchorRow(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// The anchor row's line, through everything.
void drawPlayerLine(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);

} // namespace tq
