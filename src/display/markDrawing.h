#pragma once
// The overlay's drawing of the brushes, the bridge and merge previews and the freeze marks:
// what the tool is about to do, as opposed to what the user has laid down (rowDrawing.h).

#include "display/overlayData.h"

#include <maya/MUIDrawManager.h>

namespace tq {

// While a brush key is held (displayInfo 2, 3, 4): the brush's size around the last hit, an
// outline in the brush's colour over a grey disc.
void drawBrushFeedback(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// During a move stroke: the brush's circle on the mesh at the hit.
void drawTweakCircle(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// Frozen border vertices (blue dots) and frozen median vertices (slate dots), through everything.
void drawFreeBorder(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
void drawMedianDots(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// The magnet's pick (pixels): a ring, and a line to the second pick.
void drawMagnet(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// A pending bridge or merge: its target row, and with a preview mesh the faces it will make
// and the division lines of a bridge.
void drawFusePreview(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);

} // namespace tq
