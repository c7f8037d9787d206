#pragma once
// Checks on MeshArrays that do not depend on vertex order: geometric matching of two meshes
// polygon by polygon, edge manifoldness, enclosed volume.

#include <host/log.h>
#include <host/meshArrays.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <unordered_map>
#include <vector>

#include <unistd.h>

namespace meshtest {

inline std::array<double, 3> point(const host::MeshArrays& mesh, int id)
{
    const float* p = &mesh.points[3 * static_cast<std::size_t>(id)];
    return {p[0], p[1], p[2]};
}

// For each vertex of `from`, the vertex of `to` within tolerance of it, or -1.
inline std::vector<int> matchVertices(const host::MeshArrays& from, const host::MeshArrays& to, double tolerance)
{
    std::vector<int> byX(to.numVertices());
    for (int i = 0; i < to.numVertices(); ++i)
        byX[i] = i;
    std::sort(byX.begin(), byX.end(), [&](int a, int b) { return point(to, a)[0] < point(to, b)[0]; });
    std::vector<int> match(from.numVertices(), -1);
    for (int i = 0; i < from.numVertices(); ++i) {
        const auto p = point(from, i);
        auto first = std::lower_bound(byX.begin(), byX.end(), p[0] - tolerance,
                                      [&](int id, double x) { return point(to, id)[0] < x; });
        double best = tolerance;
        for (auto it = first; it != byX.end() && point(to, *it)[0] <= p[0] + tolerance; ++it) {
            const auto q = point(to, *it);
            const double d = std::max({std::fabs(p[0] - q[0]), std::fabs(p[1] - q[1]), std::fabs(p[2] - q[2])});
            if (d <= best) {
                best = d;
                match[i] = *it;
            }
        }
    }
    return match;
}

struct Corner {
    int vertex;
    float u, v;
};

// Polygons as corner lists in a common vertex numbering, each rotated to start at its
// smallest vertex (winding kept), sorted.
inline std::vector<std::vector<Corner>> polygons(const host::MeshArrays& mesh, const std::vector<int>& renumber)
{
    std::vector<std::vector<Corner>> out;
    std::size_t next = 0;
    for (int count : mesh.counts) {
        std::vector<Corner> poly;
        for (int k = 0; k < count; ++k, ++next) {
            const int id = mesh.connects[next];
            Corner corner{renumber.empty() ? id : renumber[id], 0.0f, 0.0f};
            if (mesh.hasUVs()) {
                corner.u = mesh.u[mesh.uvIds[next]];
                corner.v = mesh.v[mesh.uvIds[next]];
            }
            poly.push_back(corner);
        }
        std::rotate(poly.begin(),
                    std::min_element(poly.begin(), poly.end(),
                                     [](const Corner& a, const Corner& b) { return a.vertex < b.vertex; }),
                    poly.end());
        out.push_back(poly);
    }
    std::sort(out.begin(), out.end(), [](const std::vector<Corner>& a, const std::vector<Corner>& b) {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](const Corner& x, const Corner& y) { return x.vertex < y.vertex; });
    });
    return out;
}

// The same polygons, wound the same way, on vertices at the same places (and the same UVs at
// every corner when compareUVs), whatever order either mesh lists them in.
inline ::testing::AssertionResult samePolygons(const host::MeshArrays& expected, const host::MeshArrays& got,
                                               bool compareUVs, double tolerance = 1e-5)
{
    if (expected.numVertices() != got.numVertices() || expected.numPolygons() != got.numPolygons())
        return ::testing::AssertionFailure() << "expected " << expected.numVertices() << " vertices and "
                                             << expected.numPolygons() << " polygons, got " << got.numVertices()
                                             << " and " << got.numPolygons();
    const std::vector<int> match = matchVertices(expected, got, tolerance);
    for (std::size_t i = 0; i < match.size(); ++i)
        if (match[i] < 0) {
            const auto p = point(expected, static_cast<int>(i));
            return ::testing::AssertionFailure()
                   << "no vertex at (" << p[0] << ", " << p[1] << ", " << p[2] << ") in the mesh read back";
        }
    if (compareUVs && got.hasUVs() != expected.hasUVs())
        return ::testing::AssertionFailure() << "UVs " << (expected.hasUVs() ? "lost" : "appeared");
    const auto a = polygons(expected, match);
    const auto b = polygons(got, {});
    for (std::size_t f = 0; f < a.size(); ++f) {
        if (a[f].size() != b[f].size())
            return ::testing::AssertionFailure() << "polygon sizes differ";
        for (std::size_t k = 0; k < a[f].size(); ++k) {
            if (a[f][k].vertex != b[f][k].vertex)
                return ::testing::AssertionFailure() << "polygons differ (or are wound the other way)";
            if (compareUVs && (std::fabs(a[f][k].u - b[f][k].u) > tolerance ||
                               std::fabs(a[f][k].v - b[f][k].v) > tolerance))
                return ::testing::AssertionFailure() << "UV (" << b[f][k].u << ", " << b[f][k].v << ") where ("
                                                     << a[f][k].u << ", " << a[f][k].v << ") was written";
        }
    }
    return ::testing::AssertionSuccess();
}

// How many polygons use each undirected edge, and whether some directed edge occurs twice
// (two neighbours wound against each other).
struct EdgeUse {
    std::unordered_map<std::uint64_t, int> uses;
    bool consistentWinding = true;
};

inline EdgeUse edgeUse(const host::MeshArrays& mesh)
{
    EdgeUse result;
    std::unordered_map<std::uint64_t, int> directed;
    std::size_t start = 0;
    for (int count : mesh.counts) {
        for (int k = 0; k < count; ++k) {
            const std::uint32_t a = static_cast<std::uint32_t>(mesh.connects[start + k]);
            const std::uint32_t b = static_cast<std::uint32_t>(mesh.connects[start + (k + 1) % count]);
            ++result.uses[(std::uint64_t(std::min(a, b)) << 32) | std::max(a, b)];
            if (++directed[(std::uint64_t(a) << 32) | b] > 1)
                result.consistentWinding = false;
        }
        start += count;
    }
    return result;
}

// Closed: every edge between exactly two polygons, wound consistently.
inline ::testing::AssertionResult isClosed(const host::MeshArrays& mesh)
{
    const EdgeUse use = edgeUse(mesh);
    for (const auto& edge : use.uses)
        if (edge.second != 2)
            return ::testing::AssertionFailure() << "edge " << (edge.first >> 32) << "-" << (edge.first & 0xffffffffu)
                                                 << " is used by " << edge.second << " polygons";
    if (!use.consistentWinding)
        return ::testing::AssertionFailure() << "neighbouring polygons are wound against each other";
    return ::testing::AssertionSuccess();
}

// The volume enclosed, positive when the polygons face outwards.
inline double signedVolume(const host::MeshArrays& mesh)
{
    double volume = 0.0;
    std::size_t start = 0;
    for (int count : mesh.counts) {
        const auto p0 = point(mesh, mesh.connects[start]);
        for (int k = 1; k + 1 < count; ++k) {
            const auto p1 = point(mesh, mesh.connects[start + k]);
            const auto p2 = point(mesh, mesh.connects[start + k + 1]);
            volume += p0[0] * (p1[1] * p2[2] - p1[2] * p2[1]) - p0[1] * (p1[0] * p2[2] - p1[2] * p2[0]) +
                      p0[2] * (p1[0] * p2[1] - p1[1] * p2[0]);
        }
        start += count;
    }
    return volume / 6.0;
}

// A fresh directory per test, removed afterwards; every test starts with an empty log.
class MeshFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::clearLog();
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "meshioTests-" + std::string(info->test_suite_name()) + "-" + info->name() + "-" +
                           std::to_string(::getpid());
        std::replace(name.begin(), name.end(), '/', '_'); // parameterized tests have '/' in their names
        fDir = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(fDir);
        std::filesystem::create_directories(fDir);
    }
    void TearDown() override
    {
        std::error_code ec;
        std::filesystem::remove_all(fDir, ec);
        if (HasFailure() && !host::logEntries().empty())
            std::cerr << "Host log of the failed test:\n" << host::logText();
    }

    std::string path(const std::string& name) const { return (fDir / name).string(); }

    std::string writeText(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

    std::filesystem::path fDir;
};

} // namespace meshtest
