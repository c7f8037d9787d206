#pragma once
// A small software rasterizer for the rendered frame's meshes: flat-shaded triangles with a
// headlight and a depth buffer, written straight into 32-bit pixels, so that a sculpt of a
// million triangles renders in a fraction of a second. Polygons are fanned from their first
// corner; triangles reaching behind a perspective camera's near plane are skipped.

#include "mesh/meshGeometry.h"
#include "view/viewProjection.h"

#include <maya/MColor.h>
#include <maya/MMatrix.h>

#include <cstdint>
#include <vector>

namespace host {

// Pixels are 0xAARRGGBB, rows top to bottom; pixel (col, row) samples the view at
// u = col, v = height - 1 - row. The depth buffer holds the distance along the view
// direction of what each pixel shows (infinity where nothing is).
struct RasterTarget {
    int width = 0;
    int height = 0;
    std::uint32_t* pixels = nullptr;
    int stride = 0; // pixels per row
    std::vector<float> depth;

    RasterTarget(int w, int h, std::uint32_t* p, int pixelsPerRow);
    std::uint32_t& pixel(int col, int row) { return pixels[std::size_t(row) * stride + col]; }
    float depthAt(int col, int row) const { return depth[std::size_t(row) * width + col]; }
};

// True when something at `distance` at that pixel is not behind what the buffer holds,
// within a relative tolerance (surfaces drawn over a surface must not flicker into it).
bool depthVisible(const RasterTarget& target, int col, int row, double distance, double tolerance);

// Shaded, opaque, writing depth. Returns the number of triangles sent.
long long rasterShaded(RasterTarget& target, const ViewProjection& view, const MeshGeometry& mesh,
                       const MMatrix& world, const MColor& base);

// Translucent faces and opaque edges over what is there, tested against the depth buffer but
// not writing it, as a retopology mesh is shown over its source.
long long rasterWireframe(RasterTarget& target, const ViewProjection& view, const MeshGeometry& mesh,
                          const MMatrix& world, const MColor& face, const MColor& edge);

} // namespace host
