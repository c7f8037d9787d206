#pragma once
// Paints draw records over a rendered frame with Qt's painter: 3-D records projected
// through the camera and hidden where the depth buffer holds something nearer (x-ray ones
// never are), then 2-D records in pixels (origin bottom left). Colours are clamped to
// [0, 1] for display; the records keep them as given.

#include "draw/meshRaster.h"
#include "view/viewProjection.h"

#include "host/viewport.h"

#include <QImage>

#include <vector>

namespace host {

// `view` may be null (no camera): then only 2-D records are painted. Returns how many
// records were painted.
std::size_t paintRecords(QImage& image, const RasterTarget& depth, const ViewProjection* view,
                         const std::vector<DrawRecord>& records);

} // namespace host
