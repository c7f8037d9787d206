// The procedural meshes: Maya's counts for Maya's subdivisions, closed and outward facing
// where they should be, the shapes their parameters describe, and a sculpt-like surface of
// the size asked for.

#include "meshTestSupport.h"

#include <host/meshGenerators.h>

#include <cmath>

namespace {

using meshtest::isClosed;
using meshtest::point;
using meshtest::signedVolume;

constexpr double kPi = 3.14159265358979323846;

class MeshGenerators : public ::testing::Test {
protected:
    void SetUp() override { host::clearLog(); }
};

::testing::AssertionResult valid(const host::MeshArrays& mesh)
{
    std::string why;
    if (host::validate(mesh, &why))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << why;
}

int polygonsOfSize(const host::MeshArrays& mesh, int size)
{
    return static_cast<int>(std::count(mesh.counts.begin(), mesh.counts.end(), size));
}

std::vector<double> radii(const host::MeshArrays& mesh)
{
    std::vector<double> out;
    for (int i = 0; i < mesh.numVertices(); ++i) {
        const auto p = point(mesh, i);
        out.push_back(std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]));
    }
    return out;
}

TEST_F(MeshGenerators, GridPlaneIsAQuadGridFacingUp)
{
    const host::MeshArrays plane = host::gridPlane(2.0f, 3.0f, 4, 5);
    ASSERT_TRUE(valid(plane));
    EXPECT_EQ(plane.numVertices(), 5 * 6);
    EXPECT_EQ(plane.numPolygons(), 4 * 5);
    EXPECT_EQ(polygonsOfSize(plane, 4), 20);

    // Width along X, height along Z, centred, flat.
    for (int i = 0; i < plane.numVertices(); ++i) {
        const auto p = point(plane, i);
        EXPECT_LE(std::fabs(p[0]), 1.0 + 1e-6);
        EXPECT_LE(std::fabs(p[2]), 1.5 + 1e-6);
        EXPECT_EQ(p[1], 0.0);
    }
    EXPECT_EQ(point(plane, 0)[0], -1.0f);
    EXPECT_EQ(point(plane, plane.numVertices() - 1)[0], 1.0f);
    EXPECT_EQ(std::fabs(point(plane, 0)[2]), 1.5f);

    // Every quad faces +Y and the UVs cover the unit square, u along X.
    for (int f = 0; f < plane.numPolygons(); ++f) {
        const auto a = point(plane, plane.connects[4 * f]), b = point(plane, plane.connects[4 * f + 1]);
        const auto c = point(plane, plane.connects[4 * f + 3]);
        const double ny = (b[2] - a[2]) * (c[0] - a[0]) - (b[0] - a[0]) * (c[2] - a[2]);
        EXPECT_GT(ny, 0.0) << "quad " << f;
    }
    ASSERT_TRUE(plane.hasUVs());
    for (std::size_t i = 0; i < plane.connects.size(); ++i) {
        const double x = point(plane, plane.connects[i])[0];
        EXPECT_NEAR(plane.u[plane.uvIds[i]], (x + 1.0) / 2.0, 1e-6);
    }

    // Open: the border edges belong to one quad, the inner ones to two.
    int border = 0;
    for (const auto& edge : meshtest::edgeUse(plane).uses)
        border += edge.second == 1;
    EXPECT_EQ(border, 2 * (4 + 5));
}

TEST_F(MeshGenerators, UvSphereHasMayasCountsAndPoles)
{
    const host::MeshArrays sphere = host::uvSphere(2.0f, 8, 6);
    ASSERT_TRUE(valid(sphere));
    EXPECT_EQ(sphere.numVertices(), 8 * 5 + 2);
    EXPECT_EQ(polygonsOfSize(sphere, 4), 8 * 4);
    EXPECT_EQ(polygonsOfSize(sphere, 3), 2 * 8);
    EXPECT_EQ(sphere.numUVs(), 9 * 5 + 2 * 8);
    EXPECT_TRUE(isClosed(sphere));
    for (double r : radii(sphere))
        EXPECT_NEAR(r, 2.0, 1e-5);
    const double volume = signedVolume(sphere);
    EXPECT_GT(volume, 0.0) << "faces point inwards";
    EXPECT_LT(volume, 4.0 / 3.0 * kPi * 8.0);
    EXPECT_GT(volume, 0.6 * 4.0 / 3.0 * kPi * 8.0);

    // Maya's default sphere: 20 by 20.
    const host::MeshArrays standard = host::uvSphere(1.0f, 20, 20);
    EXPECT_EQ(standard.numVertices(), 382);
    EXPECT_EQ(standard.numPolygons(), 400);
    EXPECT_TRUE(isClosed(standard));

    // The coarsest sphere is two fans meeting at the equator.
    const host::MeshArrays coarse = host::uvSphere(1.0f, 3, 2);
    EXPECT_EQ(coarse.numVertices(), 5);
    EXPECT_EQ(polygonsOfSize(coarse, 3), 6);
    EXPECT_TRUE(isClosed(coarse));
    EXPECT_GT(signedVolume(coarse), 0.0);
}

TEST_F(MeshGenerators, TorusIsAClosedRingOfQuads)
{
    const host::MeshArrays ring = host::torus(3.0f, 1.0f, 12, 8);
    ASSERT_TRUE(valid(ring));
    EXPECT_EQ(ring.numVertices(), 96);
    EXPECT_EQ(polygonsOfSize(ring, 4), 96);
    EXPECT_EQ(ring.numUVs(), 13 * 9);
    EXPECT_TRUE(isClosed(ring));
    EXPECT_GT(signedVolume(ring), 0.0) << "faces point inwards";
    // Every vertex lies on the tube: one minor radius from the circle of the major radius.
    for (int i = 0; i < ring.numVertices(); ++i) {
        const auto p = point(ring, i);
        const double fromAxis = std::sqrt(p[0] * p[0] + p[2] * p[2]);
        EXPECT_NEAR(std::hypot(fromAxis - 3.0, p[1]), 1.0, 1e-5);
    }
}

TEST_F(MeshGenerators, ArgumentsOutOfRangeGiveAnEmptyMeshAndAnError)
{
    const float nan = std::nanf("");
    const host::MeshArrays bad[] = {host::gridPlane(0.0f, 1.0f, 1, 1),  host::gridPlane(1.0f, 1.0f, 0, 3),
                                    host::gridPlane(1.0f, 1.0f, 1 << 20, 1 << 20),
                                    host::uvSphere(1.0f, 2, 4),          host::uvSphere(-1.0f, 8, 8),
                                    host::uvSphere(1.0f, 8, 1),          host::torus(nan, 1.0f, 8, 8),
                                    host::torus(2.0f, 1.0f, 8, 2),       host::sculptSurface(11),
                                    host::sculptSurface(-5)};
    for (const host::MeshArrays& mesh : bad) {
        EXPECT_EQ(mesh.numVertices(), 0);
        EXPECT_EQ(mesh.numPolygons(), 0);
    }
    int errors = 0;
    for (const host::LogEntry& entry : host::logEntries())
        errors += entry.level == host::LogLevel::kError;
    EXPECT_EQ(errors, 10) << host::logText();
    EXPECT_TRUE(host::logContains("sculptSurface"));
}

TEST_F(MeshGenerators, SculptSurfaceHasAboutTheTrianglesAskedFor)
{
    for (int asked : {100, 999, 1000, 5000, 77777, 300000}) {
        const host::MeshArrays surface = host::sculptSurface(asked);
        EXPECT_EQ(polygonsOfSize(surface, 3), surface.numPolygons());
        EXPECT_NEAR(surface.numPolygons(), asked, asked * (asked < 1000 ? 0.08 : 0.01)) << asked;
        // A closed triangle surface of genus zero: V - E + F = 2 with E = 3F / 2.
        EXPECT_EQ(surface.numVertices(), surface.numPolygons() / 2 + 2) << asked;
    }
    EXPECT_EQ(host::sculptSurface(12).numPolygons(), 12);
}

TEST_F(MeshGenerators, SculptSurfaceIsAClosedBumpyBlob)
{
    const host::MeshArrays surface = host::sculptSurface(50000, 3);
    ASSERT_TRUE(valid(surface)) << "including no NaN";
    EXPECT_TRUE(isClosed(surface));
    EXPECT_GT(signedVolume(surface), 0.0) << "faces point inwards";
    EXPECT_FALSE(surface.hasUVs());

    // Bumpy: the radius varies a good deal around a mean near one, but never collapses.
    const std::vector<double> r = radii(surface);
    double mean = 0.0, lo = 1e9, hi = 0.0;
    for (double x : r) {
        mean += x / r.size();
        lo = std::min(lo, x);
        hi = std::max(hi, x);
    }
    double variance = 0.0;
    for (double x : r)
        variance += (x - mean) * (x - mean) / r.size();
    EXPECT_NEAR(mean, 1.0, 0.2);
    EXPECT_GT(std::sqrt(variance), 0.03);
    EXPECT_GT(hi - lo, 0.2);
    EXPECT_GT(lo, 0.4);

    // At many scales: neighbours differ in radius (fine detail), far less than the surface
    // as a whole does (broad lumps).
    double edgeStep = 0.0;
    for (std::size_t i = 0; i < surface.connects.size(); i += 3)
        edgeStep += std::fabs(r[surface.connects[i]] - r[surface.connects[i + 1]]) / surface.numPolygons();
    EXPECT_GT(edgeStep, 1e-4) << "no fine detail";
    EXPECT_LT(edgeStep * 20, hi - lo) << "no broad lumps";

    // No triangle is degenerate.
    for (int f = 0; f < surface.numPolygons(); ++f) {
        const auto a = point(surface, surface.connects[3 * f]), b = point(surface, surface.connects[3 * f + 1]);
        const auto c = point(surface, surface.connects[3 * f + 2]);
        const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]}, v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
        const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        ASSERT_GT(std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]), 1e-8) << "triangle " << f;
    }
}

TEST_F(MeshGenerators, SculptSurfaceDependsOnlyOnItsSeed)
{
    const host::MeshArrays a = host::sculptSurface(5000, 11);
    const host::MeshArrays b = host::sculptSurface(5000, 11);
    const host::MeshArrays c = host::sculptSurface(5000, 12);
    EXPECT_EQ(a.points, b.points);
    EXPECT_EQ(a.connects, b.connects);
    EXPECT_EQ(a.connects, c.connects) << "the seed moves vertices, not the triangulation";
    ASSERT_EQ(a.points.size(), c.points.size());
    int moved = 0;
    for (std::size_t i = 0; i < a.points.size(); ++i)
        moved += std::fabs(a.points[i] - c.points[i]) > 1e-3f;
    EXPECT_GT(moved, int(a.points.size() / 2));
}

} // namespace

// A closed surface stays closed, keeps its volume, and lands where asked.
TEST_F(MeshGenerators, DensifyKeepsAClosedSurfaceAndExactlyLandsOnItsTarget)
{
    const host::MeshArrays blob = host::sculptSurface(2000, 5);
    const int base = blob.numPolygons();
    const host::MeshArrays four = host::densify(blob, base + 1);
    const host::MeshArrays exact = host::densifyExactly(blob, 9 * base + 1);
    const host::MeshArrays twice = host::densifyExactly(blob, 15 * base);
    EXPECT_EQ(four.numPolygons(), 4 * base);
    EXPECT_EQ(exact.numPolygons(), 9 * base) << "one below: each centroid split adds two";
    EXPECT_EQ(twice.numPolygons(), 15 * base) << "past three times: a second pass";
    for (const host::MeshArrays* dense : {&four, &exact, &twice}) {
        ASSERT_TRUE(valid(*dense));
        EXPECT_TRUE(isClosed(*dense));
        EXPECT_NEAR(signedVolume(*dense), signedVolume(blob), 1e-6 * std::fabs(signedVolume(blob))) << "float midpoints";
    }
    EXPECT_EQ(host::densifyExactly(blob, base / 2).numPolygons(), base) << "never fewer than the scan";
}
