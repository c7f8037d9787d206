#pragma once
// The overlay's text panels and its two aids for symmetric models: the tool's messages on
// screen, spikes along the normals of the last patch's vertices, and the symmetry plane
// through the source mesh.

#include "display/overlayData.h"

#include <maya/MStringArray.h>
#include <maya/MUIDrawManager.h>

namespace tq {

// The lines of one message: a comma starts a new line, and empty pieces are dropped (a
// trailing comma adds no line). An empty message has no lines.
MStringArray infoTextLines(const MString& message);

// The two info lines, through everything: line 2 at the top of a view `height` pixels high,
// growing down; line 1 at the bottom, growing up. Both read empty while the store's
// `displayInfo` is 0; the panels are drawn all the same.
void drawInfoText(MHWRender::MUIDrawManager& drawManager, int height);
// Spikes `displaySize` long both ways along the world normal of each vertex of the last
// patch's faces, each tip dotted.
void drawDisplaySpikes(MHWRender::MUIDrawManager& drawManager, const OverlayData& data);
// A translucent sheet and two guide lines at the centre of the source mesh's box.
void drawSymmetryPlane(MHWRender::MUIDrawManager& drawManager);

} // namespace tq
