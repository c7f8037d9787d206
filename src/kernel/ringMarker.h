#pragma once
// The ring marker the viewport drawers share: an outline circle with a filled core, in view
// pixels, and, when not thin, two near-black rings either side of the outline so the marker
// reads on any background.

#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MUIDrawManager.h>

namespace tq {

// Draws on `drawManager` around `center`, `radius` pixels. A `center` with z other than 0 is
// a world point and is projected through the active view; one with z exactly 0 is taken as a
// pixel position as it stands. Deliberate: a world point on the plane z = 0 is therefore read
// as pixels, and the overlay's pixel positions (stored with z = 0) rely on that. Opaque black
// as `color` keeps the colour already set on the manager.
void drawRingMarker(MHWRender::MUIDrawManager& drawManager, const MPoint& center, const MColor& color, double radius,
                    bool thin);

} // namespace tq
