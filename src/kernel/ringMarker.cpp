#include "kernel/ringMarker.h"

#include "kernel/screen.h"

namespace tq {

void drawRingMarker(MHWRender::MUIDrawManager& drawManager, const MPoint& center, const MColor& color, double radius,
                    bool thin)
{
    const MColor opaqueBlack(0.0f, 0.0f, 0.0f, 1.0f);
    if (color != opaqueBlack)
        drawManager.setColor(color);

    const MPoint centre = (center.z != 0.0) ? worldToViewPoint(center) : center;

    drawManager.setLineWidth(thin ? 1.5f : 2.0f);
    drawManager.circle2d(centre, radius, false);
    drawManager.circle2d(centre, radius - 3.5, true);
    if (thin)
        return;

    drawManager.setLineWidth(1.0f);
    drawManager.setColor(MColor(0.01f, 0.01f, 0.01f, 0.98f));
    drawManager.circle2d(centre, radius + 2.0, false);
    drawManager.circle2d(centre, radius - 1.0, false);
    drawManager.setColor(color);
}

} // namespace tq
