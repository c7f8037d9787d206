#include "host/meshGenerators.h"

#include "host/log.h"

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace host {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Far beyond any test or benchmark, and small enough that every id fits an int.
constexpr std::int64_t kMaxPolygons = 100000000;

bool argumentsOk(const char* generator, std::initializer_list<float> sizes, std::int64_t subdivA, int minA,
                 std::int64_t subdivB, int minB)
{
    std::string problem;
    for (float size : sizes)
        if (!(std::isfinite(size) && size > 0.0f))
            problem = "sizes must be positive and finite";
    if (subdivA < minA || subdivB < minB)
        problem = "subdivisions must be at least " + std::to_string(minA) + " and " + std::to_string(minB);
    else if (subdivA * subdivB > kMaxPolygons)
        problem = "more than " + std::to_string(kMaxPolygons) + " polygons asked for";
    if (problem.empty())
        return true;
    writeLog(LogLevel::kError, std::string(generator) + ": " + problem);
    return false;
}

void addPoint(MeshArrays& mesh, double x, double y, double z)
{
    mesh.points.push_back(static_cast<float>(x));
    mesh.points.push_back(static_cast<float>(y));
    mesh.points.push_back(static_cast<float>(z));
}

void addUV(MeshArrays& mesh, double u, double v)
{
    mesh.u.push_back(static_cast<float>(u));
    mesh.v.push_back(static_cast<float>(v));
}

void addQuad(MeshArrays& mesh, int a, int b, int c, int d, int ua, int ub, int uc, int ud)
{
    mesh.counts.push_back(4);
    mesh.connects.insert(mesh.connects.end(), {a, b, c, d});
    mesh.uvIds.insert(mesh.uvIds.end(), {ua, ub, uc, ud});
}

void addTriangle(MeshArrays& mesh, int a, int b, int c, int ua, int ub, int uc)
{
    mesh.counts.push_back(3);
    mesh.connects.insert(mesh.connects.end(), {a, b, c});
    mesh.uvIds.insert(mesh.uvIds.end(), {ua, ub, uc});
}

} // namespace

MeshArrays gridPlane(float width, float height, int subdivX, int subdivY)
{
    MeshArrays mesh;
    if (!argumentsOk("gridPlane", {width, height}, subdivX, 1, subdivY, 1))
        return mesh;
    mesh.name = "pPlane";
    // Rows run from +Z to -Z so that counter-clockwise seen from above is the vertex order.
    for (int j = 0; j <= subdivY; ++j)
        for (int i = 0; i <= subdivX; ++i) {
            const double s = double(i) / subdivX, t = double(j) / subdivY;
            addPoint(mesh, (s - 0.5) * width, 0.0, (0.5 - t) * height);
            addUV(mesh, s, t);
        }
    const int row = subdivX + 1;
    for (int j = 0; j < subdivY; ++j)
        for (int i = 0; i < subdivX; ++i) {
            const int a = j * row + i;
            addQuad(mesh, a, a + 1, a + row + 1, a + row, a, a + 1, a + row + 1, a + row);
        }
    return mesh;
}

MeshArrays uvSphere(float radius, int subdivAxis, int subdivHeight)
{
    MeshArrays mesh;
    if (!argumentsOk("uvSphere", {radius}, subdivAxis, 3, subdivHeight, 2))
        return mesh;
    mesh.name = "pSphere";
    const int sa = subdivAxis, sh = subdivHeight;
    // Rings of latitude from the bottom up, then the bottom and top poles.
    for (int r = 1; r < sh; ++r) {
        const double phi = -kPi / 2 + kPi * r / sh;
        for (int j = 0; j < sa; ++j) {
            const double theta = 2 * kPi * j / sa;
            addPoint(mesh, radius * std::cos(phi) * std::cos(theta), radius * std::sin(phi),
                     -radius * std::cos(phi) * std::sin(theta));
        }
    }
    const int bottom = (sh - 1) * sa, top = bottom + 1;
    addPoint(mesh, 0.0, -radius, 0.0);
    addPoint(mesh, 0.0, radius, 0.0);

    // The UV seam doubles a column; each pole triangle has a UV of its own at the pole.
    for (int r = 1; r < sh; ++r)
        for (int j = 0; j <= sa; ++j)
            addUV(mesh, double(j) / sa, double(r) / sh);
    const int bottomUVs = (sh - 1) * (sa + 1), topUVs = bottomUVs + sa;
    for (int pole = 0; pole < 2; ++pole)
        for (int j = 0; j < sa; ++j)
            addUV(mesh, (j + 0.5) / sa, pole);

    auto vertex = [sa](int r, int j) { return (r - 1) * sa + j % sa; };
    auto uv = [sa](int r, int j) { return (r - 1) * (sa + 1) + j; };
    for (int r = 1; r + 1 < sh; ++r)
        for (int j = 0; j < sa; ++j)
            addQuad(mesh, vertex(r, j), vertex(r, j + 1), vertex(r + 1, j + 1), vertex(r + 1, j), uv(r, j),
                    uv(r, j + 1), uv(r + 1, j + 1), uv(r + 1, j));
    for (int j = 0; j < sa; ++j)
        addTriangle(mesh, bottom, vertex(1, j + 1), vertex(1, j), bottomUVs + j, uv(1, j + 1), uv(1, j));
    for (int j = 0; j < sa; ++j)
        addTriangle(mesh, vertex(sh - 1, j), vertex(sh - 1, j + 1), top, uv(sh - 1, j), uv(sh - 1, j + 1),
                    topUVs + j);
    return mesh;
}

MeshArrays torus(float majorRadius, float minorRadius, int subdivAxis, int subdivHeight)
{
    MeshArrays mesh;
    if (!argumentsOk("torus", {majorRadius, minorRadius}, subdivAxis, 3, subdivHeight, 3))
        return mesh;
    mesh.name = "pTorus";
    const int sa = subdivAxis, sh = subdivHeight;
    // Ring k of the tube, vertex i around the Y axis.
    for (int k = 0; k < sh; ++k) {
        const double psi = 2 * kPi * k / sh;
        const double distance = majorRadius + minorRadius * std::cos(psi);
        for (int i = 0; i < sa; ++i) {
            const double theta = 2 * kPi * i / sa;
            addPoint(mesh, distance * std::cos(theta), minorRadius * std::sin(psi), -distance * std::sin(theta));
        }
    }
    for (int k = 0; k <= sh; ++k)
        for (int i = 0; i <= sa; ++i)
            addUV(mesh, double(i) / sa, double(k) / sh);

    auto vertex = [sa, sh](int k, int i) { return (k % sh) * sa + i % sa; };
    auto uv = [sa](int k, int i) { return k * (sa + 1) + i; };
    for (int k = 0; k < sh; ++k)
        for (int i = 0; i < sa; ++i)
            addQuad(mesh, vertex(k, i), vertex(k, i + 1), vertex(k + 1, i + 1), vertex(k + 1, i), uv(k, i),
                    uv(k, i + 1), uv(k + 1, i + 1), uv(k + 1, i));
    return mesh;
}

} // namespace host
