#include <host/meshGenerators.h>

#include "host/log.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace host {

namespace {

// One level of the split: each triangle (a, b, c) becomes four around its edge midpoints.
void splitOnce(std::vector<float>& points, std::vector<int>& triangles)
{
    std::unordered_map<std::uint64_t, int> midpoints;
    midpoints.reserve(triangles.size());
    auto midpoint = [&](int a, int b) {
        const std::uint64_t key = a < b ? (std::uint64_t(unsigned(a)) << 32) | unsigned(b)
                                        : (std::uint64_t(unsigned(b)) << 32) | unsigned(a);
        auto [it, added] = midpoints.emplace(key, int(points.size() / 3));
        if (added) {
            for (int k = 0; k < 3; ++k)
                points.push_back(0.5f * (points[size_t(a) * 3 + k] + points[size_t(b) * 3 + k]));
        }
        return it->second;
    };
    std::vector<int> split;
    split.reserve(triangles.size() * 4);
    for (size_t t = 0; t < triangles.size(); t += 3) {
        const int a = triangles[t], b = triangles[t + 1], c = triangles[t + 2];
        const int ab = midpoint(a, b), bc = midpoint(b, c), ca = midpoint(c, a);
        split.insert(split.end(), {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca});
    }
    triangles.swap(split);
}

} // namespace

namespace {

// The scan's polygons fanned into triangles, three ids each; empty with a log line when the
// scan is invalid.
std::vector<int> fannedTriangles(const MeshArrays& mesh)
{
    std::string why;
    if (!validate(mesh, &why)) {
        writeLog(LogLevel::kError, "densify: " + why);
        return {};
    }
    std::vector<int> triangles;
    size_t corner = 0;
    for (int count : mesh.counts) {
        for (int i = 1; i + 1 < count; ++i)
            triangles.insert(triangles.end(), {mesh.connects[corner], mesh.connects[corner + size_t(i)],
                                               mesh.connects[corner + size_t(i) + 1]});
        corner += size_t(count);
    }
    return triangles;
}

MeshArrays triangleMesh(const MeshArrays& mesh, std::vector<float> points, std::vector<int> triangles)
{
    MeshArrays out;
    out.name = mesh.name;
    out.points = std::move(points);
    out.counts.assign(triangles.size() / 3, 3);
    out.connects = std::move(triangles);
    return out;
}

} // namespace

MeshArrays densify(const MeshArrays& mesh, int triangleTarget)
{
    std::vector<int> triangles = fannedTriangles(mesh);
    if (triangles.empty())
        return MeshArrays();
    std::vector<float> points = mesh.points;
    while (triangles.size() / 3 < size_t(triangleTarget))
        splitOnce(points, triangles);
    return triangleMesh(mesh, std::move(points), std::move(triangles));
}

MeshArrays densifyExactly(const MeshArrays& mesh, int triangleTarget)
{
    std::vector<int> triangles = fannedTriangles(mesh);
    if (triangles.empty())
        return MeshArrays();
    std::vector<float> points = mesh.points;
    const size_t target = size_t(std::max(triangleTarget, 0));
    while (triangles.size() / 3 * 4 <= target)
        splitOnce(points, triangles);
    // A pass splits each triangle at most once, so a target more than three times the count
    // takes a second pass.
    for (size_t count = triangles.size() / 3; count < target && target - count >= 2;
         count = triangles.size() / 3) {
        const size_t splits = std::min(count, (target - count) / 2);
        triangles.reserve(3 * (count + 2 * splits));
        points.reserve(points.size() + 3 * splits);
        // Triangle t is split when the running share t * splits / count steps up.
        for (size_t t = 0; t < count; ++t) {
            if ((t + 1) * splits / count == t * splits / count)
                continue;
            const int a = triangles[3 * t], b = triangles[3 * t + 1], c = triangles[3 * t + 2];
            const int centre = int(points.size() / 3);
            for (int k = 0; k < 3; ++k)
                points.push_back(
                    (points[size_t(a) * 3 + k] + points[size_t(b) * 3 + k] + points[size_t(c) * 3 + k]) / 3.0f);
            triangles[3 * t + 2] = centre;
            triangles.insert(triangles.end(), {b, c, centre, c, a, centre});
        }
    }
    return triangleMesh(mesh, std::move(points), std::move(triangles));
}

} // namespace host
