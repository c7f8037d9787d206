#include "draw/meshRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host {
namespace {

constexpr double kWireTolerance = 0.01;

// A vertex in camera space (x right, y up, d forward) and on the image.
struct Projected {
    float x, y, d;   // camera space
    float col, row;  // image position
    float w;         // what is interpolated linearly on the image: 1/d in perspective, d in orthographic
    bool ok;
};

std::vector<Projected> projectAll(const ViewProjection& view, const MeshGeometry& mesh, const MMatrix& world)
{
    const int n = mesh.numVertices();
    std::vector<Projected> out(static_cast<std::size_t>(n));
    const float* p = mesh.rawPoints();
    // World to camera folded into the object's matrix: one affine map per vertex.
    double a[4][3];
    const MVector axes[3] = {view.right, view.up, view.forward};
    for (int r = 0; r < 4; ++r) {
        const MVector row(world(r, 0), world(r, 1), world(r, 2));
        for (int k = 0; k < 3; ++k)
            a[r][k] = row * axes[k];
    }
    for (int k = 0; k < 3; ++k)
        a[3][k] -= MVector(view.eye) * axes[k];
    const double halfW = 0.5 * view.width;
    const double halfH = 0.5 * view.height;
    for (int i = 0; i < n; ++i) {
        const double px = p[3 * i], py = p[3 * i + 1], pz = p[3 * i + 2];
        Projected& q = out[std::size_t(i)];
        const double x = px * a[0][0] + py * a[1][0] + pz * a[2][0] + a[3][0];
        const double y = px * a[0][1] + py * a[1][1] + pz * a[2][1] + a[3][1];
        const double d = px * a[0][2] + py * a[1][2] + pz * a[2][2] + a[3][2];
        q.x = float(x);
        q.y = float(y);
        q.d = float(d);
        double u, v;
        if (view.orthographic) {
            u = halfW * (1.0 + x / view.halfWidth);
            v = halfH * (1.0 + y / view.halfHeight);
            q.w = float(d);
            q.ok = true;
        } else {
            q.ok = d >= view.nearClip;
            const double inv = q.ok ? 1.0 / d : 0.0;
            u = halfW * (1.0 + x * inv / view.tanHalfWidth);
            v = halfH * (1.0 + y * inv / view.tanHalfHeight);
            q.w = float(inv);
        }
        q.col = float(u);
        q.row = float(view.height - 1 - v);
        q.ok = q.ok && std::isfinite(q.col) && std::isfinite(q.row) && std::isfinite(q.d);
    }
    return out;
}

std::uint32_t pack(double r, double g, double b)
{
    auto c = [](double v) { return std::uint32_t(std::clamp(v, 0.0, 1.0) * 255.0 + 0.5); };
    return 0xFF000000u | (c(r) << 16) | (c(g) << 8) | c(b);
}

std::uint32_t blend(std::uint32_t under, const MColor& over)
{
    const double a = std::clamp(double(over.a), 0.0, 1.0);
    const double r = ((under >> 16) & 0xFF) / 255.0, g = ((under >> 8) & 0xFF) / 255.0, b = (under & 0xFF) / 255.0;
    return pack(r + (over.r - r) * a, g + (over.g - g) * a, b + (over.b - b) * a);
}

// Lambert with a light at the eye, both sides lit.
double headlight(const ViewProjection& view, const Projected& a, const Projected& b, const Projected& c)
{
    const double ux = b.x - a.x, uy = b.y - a.y, ud = b.d - a.d;
    const double vx = c.x - a.x, vy = c.y - a.y, vd = c.d - a.d;
    const double nx = uy * vd - ud * vy, ny = ud * vx - ux * vd, nd = ux * vy - uy * vx;
    const double nl = std::sqrt(nx * nx + ny * ny + nd * nd);
    if (!(nl > 0.0))
        return 0.0;
    double lx = 0.0, ly = 0.0, ld = 1.0;
    if (!view.orthographic) {
        lx = a.x + b.x + c.x;
        ly = a.y + b.y + c.y;
        ld = a.d + b.d + c.d;
        const double ll = std::sqrt(lx * lx + ly * ly + ld * ld);
        if (ll > 0.0) {
            lx /= ll;
            ly /= ll;
            ld /= ll;
        }
    }
    return std::fabs(nx * lx + ny * ly + nd * ld) / nl;
}

// Calls plot(col, row, distance) for every pixel centre the triangle covers.
template <class Plot>
void scanTriangle(const RasterTarget& t, bool orthographic, const Projected& a, const Projected& b,
                  const Projected& c, Plot&& plot)
{
    const float area = (b.col - a.col) * (c.row - a.row) - (b.row - a.row) * (c.col - a.col);
    if (!(std::fabs(area) > 1e-12f))
        return;
    const int c0 = std::max(0, int(std::ceil(std::min({a.col, b.col, c.col}))));
    const int c1 = std::min(t.width - 1, int(std::floor(std::max({a.col, b.col, c.col}))));
    const int r0 = std::max(0, int(std::ceil(std::min({a.row, b.row, c.row}))));
    const int r1 = std::min(t.height - 1, int(std::floor(std::max({a.row, b.row, c.row}))));
    if (c0 > c1 || r0 > r1)
        return;
    const float inv = 1.0f / area;
    for (int row = r0; row <= r1; ++row) {
        const float py = float(row);
        for (int col = c0; col <= c1; ++col) {
            const float px = float(col);
            const float l0 = ((c.col - b.col) * (py - b.row) - (c.row - b.row) * (px - b.col)) * inv;
            const float l1 = ((a.col - c.col) * (py - c.row) - (a.row - c.row) * (px - c.col)) * inv;
            const float l2 = 1.0f - l0 - l1;
            if (l0 < 0.0f || l1 < 0.0f || l2 < 0.0f)
                continue;
            const float w = l0 * a.w + l1 * b.w + l2 * c.w;
            const float distance = orthographic ? w : 1.0f / w;
            plot(col, row, distance);
        }
    }
}

template <class Triangle>
long long forEachTriangle(const MeshGeometry& mesh, const std::vector<Projected>& pts, Triangle&& triangle)
{
    long long count = 0;
    const int faces = mesh.numPolygons();
    for (int f = 0; f < faces; ++f) {
        const int* ids = mesh.polygonVertices(f);
        const int corners = mesh.polygonSize(f);
        for (int k = 1; k + 1 < corners; ++k) {
            ++count;
            const Projected& a = pts[std::size_t(ids[0])];
            const Projected& b = pts[std::size_t(ids[k])];
            const Projected& c = pts[std::size_t(ids[k + 1])];
            if (a.ok && b.ok && c.ok)
                triangle(a, b, c);
        }
    }
    return count;
}

} // namespace

RasterTarget::RasterTarget(int w, int h, std::uint32_t* p, int pixelsPerRow)
    : width(w), height(h), pixels(p), stride(pixelsPerRow),
      depth(std::size_t(w) * std::size_t(h), std::numeric_limits<float>::infinity())
{
}

bool depthVisible(const RasterTarget& target, int col, int row, double distance, double tolerance)
{
    if (col < 0 || row < 0 || col >= target.width || row >= target.height)
        return true;
    const double held = target.depthAt(col, row);
    return distance <= held + std::fabs(held) * tolerance + 1e-6;
}

long long rasterShaded(RasterTarget& target, const ViewProjection& view, const MeshGeometry& mesh,
                       const MMatrix& world, const MColor& base)
{
    const std::vector<Projected> pts = projectAll(view, mesh, world);
    return forEachTriangle(mesh, pts, [&](const Projected& a, const Projected& b, const Projected& c) {
        const double shade = 0.18 + 0.82 * headlight(view, a, b, c);
        const std::uint32_t colour = pack(base.r * shade, base.g * shade, base.b * shade);
        scanTriangle(target, view.orthographic, a, b, c, [&](int col, int row, float distance) {
            float& held = target.depth[std::size_t(row) * target.width + col];
            if (distance < held) {
                held = distance;
                target.pixel(col, row) = colour;
            }
        });
    });
}

long long rasterWireframe(RasterTarget& target, const ViewProjection& view, const MeshGeometry& mesh,
                          const MMatrix& world, const MColor& face, const MColor& edge)
{
    const std::vector<Projected> pts = projectAll(view, mesh, world);
    const long long count =
        forEachTriangle(mesh, pts, [&](const Projected& a, const Projected& b, const Projected& c) {
            scanTriangle(target, view.orthographic, a, b, c, [&](int col, int row, float distance) {
                if (depthVisible(target, col, row, distance, kWireTolerance))
                    target.pixel(col, row) = blend(target.pixel(col, row), face);
            });
        });
    for (int e = 0; e < mesh.numEdges(); ++e) {
        const Projected& a = pts[std::size_t(mesh.edgeStart(e))];
        const Projected& b = pts[std::size_t(mesh.edgeEnd(e))];
        if (!a.ok || !b.ok)
            continue;
        const float span = std::max(std::fabs(b.col - a.col), std::fabs(b.row - a.row));
        if (span > 4.0f * float(target.width + target.height))
            continue; // an edge this long on screen grazes the eye; not worth the loop
        const int steps = std::max(1, int(std::ceil(span)));
        for (int i = 0; i <= steps; ++i) {
            const float s = float(i) / float(steps);
            const int col = int(std::lround(a.col + (b.col - a.col) * s));
            const int row = int(std::lround(a.row + (b.row - a.row) * s));
            if (col < 0 || row < 0 || col >= target.width || row >= target.height)
                continue;
            const float w = a.w + (b.w - a.w) * s;
            const float distance = view.orthographic ? w : 1.0f / w;
            if (depthVisible(target, col, row, distance, kWireTolerance))
                target.pixel(col, row) = blend(target.pixel(col, row), edge);
        }
    }
    return count;
}

} // namespace host
