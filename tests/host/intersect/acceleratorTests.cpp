// The intersection accelerator: cached per mesh version, dropped on request, and never
// changing an answer: accelerated and plain queries agree exactly on random rays and points.

#include "intersectTest.h"

#include <host/meshGenerators.h>

#include <maya/MMeshIntersector.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace intersecttest;

namespace {

class AcceleratorTest : public hosttest::SceneTest {};

TEST_F(AcceleratorTest, CachedUntilTheMeshChangesOrIsFreed)
{
    MFnMesh fn;
    makeMesh(fn, grid(4));
    const Ray ray{MFloatPoint(1.5f, 1.5f, 3), MFloatVector(0, 0, -1)};
    EXPECT_EQ(fn.cachedIntersectionAcceleratorInfo(), MString());

    // Plain queries build nothing.
    EXPECT_TRUE(closestHit(fn, ray, false).found);
    EXPECT_EQ(fn.cachedIntersectionAcceleratorInfo(), MString());

    EXPECT_TRUE(closestHit(fn, ray, true).found);
    const MString built = fn.cachedIntersectionAcceleratorInfo();
    EXPECT_NE(built, MString());
    // Later queries reuse it (the build time it reports would differ after a rebuild).
    for (int k = 0; k < 3; ++k)
        EXPECT_TRUE(closestHit(fn, ray, true).found);
    EXPECT_EQ(fn.cachedIntersectionAcceleratorInfo(), built);

    // An edit drops it; the next accelerated query sees the edited mesh.
    MPoint corner;
    ASSERT_TRUE(fn.getPoint(6, corner));
    ASSERT_TRUE(fn.setPoint(6, corner + MVector(0, 0, 1)));
    EXPECT_EQ(fn.cachedIntersectionAcceleratorInfo(), MString());
    OneHit moved = closestHit(fn, ray, true);
    ASSERT_TRUE(moved.found);
    EXPECT_GT(moved.point.z, 0.1f);
    EXPECT_EQ(moved.param, closestHit(fn, ray, false).param);
    EXPECT_NE(fn.cachedIntersectionAcceleratorInfo(), MString());

    EXPECT_TRUE(fn.freeCachedIntersectionAccelerator());
    EXPECT_EQ(fn.cachedIntersectionAcceleratorInfo(), MString());
    EXPECT_TRUE(closestHit(fn, ray, true).found);
    EXPECT_NE(fn.cachedIntersectionAcceleratorInfo(), MString());
}

// ---- agreement on random queries

struct Box {
    std::array<double, 3> lo{}, hi{};
};

Box boundsOf(const host::MeshArrays& mesh)
{
    Box box;
    for (int k = 0; k < 3; ++k) {
        box.lo[k] = 1e30;
        box.hi[k] = -1e30;
    }
    for (int v = 0; v < mesh.numVertices(); ++v)
        for (int k = 0; k < 3; ++k) {
            box.lo[k] = std::min(box.lo[k], double(mesh.points[3 * v + k]));
            box.hi[k] = std::max(box.hi[k], double(mesh.points[3 * v + k]));
        }
    return box;
}

// A grid with every face twice over the same vertices, and a third copy over vertices of
// its own at the same places: coplanar polygons that every ray meets together. Then
// triangles with no area (three points on a line) and slivers, standing up out of the grid.
host::MeshArrays coplanarDuplicates()
{
    host::MeshArrays mesh = grid(6);
    const int vertices = mesh.numVertices();
    const std::vector<int> counts = mesh.counts, connects = mesh.connects;
    const std::vector<float> points = mesh.points;
    mesh.counts.insert(mesh.counts.end(), counts.begin(), counts.end());
    mesh.connects.insert(mesh.connects.end(), connects.begin(), connects.end());
    mesh.points.insert(mesh.points.end(), points.begin(), points.end());
    mesh.counts.insert(mesh.counts.end(), counts.begin(), counts.end());
    for (int c : connects)
        mesh.connects.push_back(c + vertices);
    for (int k = 0; k < 6; ++k) {
        const float x = 0.5f + k, lift = k % 2 ? 1.0e-6f : 0.0f;
        const int base = mesh.numVertices();
        mesh.points.insert(mesh.points.end(), {x, 1.5f, 0.0f, x, 3.0f, lift, x, 4.5f, 0.0f});
        mesh.counts.push_back(3);
        mesh.connects.insert(mesh.connects.end(), {base, base + 1, base + 2});
    }
    return mesh;
}

class Agreement {
public:
    Agreement(const host::MeshArrays& mesh, unsigned seed) : fMesh(mesh), fBox(boundsOf(mesh)), fRandom(seed)
    {
        makeMesh(fFn, mesh);
    }

    double uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(fRandom); }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(fRandom); }

    MFloatPoint randomPointNear(double grow)
    {
        float p[3];
        for (int k = 0; k < 3; ++k) {
            const double mid = 0.5 * (fBox.lo[k] + fBox.hi[k]), half = 0.5 * (fBox.hi[k] - fBox.lo[k]) + 1e-3;
            p[k] = static_cast<float>(uniform(mid - grow * half, mid + grow * half));
        }
        return MFloatPoint(p[0], p[1], p[2]);
    }

    // Aimed into the box, at a vertex, or at an edge's midpoint, the last two often nudged by
    // about the ray tolerances: edges and corners are where hits are won or lost.
    MFloatPoint randomTarget()
    {
        MFloatPoint p = exactTarget();
        if (below(2) == 0) {
            const double size = fBox.hi[0] - fBox.lo[0] + fBox.hi[1] - fBox.lo[1] + fBox.hi[2] - fBox.lo[2];
            const double nudge = size * std::pow(10.0, -uniform(3.0, 7.0));
            p.x += static_cast<float>(uniform(-nudge, nudge));
            p.y += static_cast<float>(uniform(-nudge, nudge));
            p.z += static_cast<float>(uniform(-nudge, nudge));
        }
        return p;
    }

    MFloatPoint exactTarget()
    {
        const int kind = below(5);
        if (kind == 0) {
            const int v = below(fMesh.numVertices());
            return MFloatPoint(fMesh.points[3 * v], fMesh.points[3 * v + 1], fMesh.points[3 * v + 2]);
        }
        if (kind == 1) {
            const int i = below(fMesh.numFaceVertices());
            const int a = fMesh.connects[i];
            // The next corner of the same face, or the face's first one.
            int start = 0, face = 0;
            while (start + fMesh.counts[face] <= i)
                start += fMesh.counts[face++];
            const int b = fMesh.connects[i + 1 < start + fMesh.counts[face] ? i + 1 : start];
            return MFloatPoint(0.5f * (fMesh.points[3 * a] + fMesh.points[3 * b]),
                               0.5f * (fMesh.points[3 * a + 1] + fMesh.points[3 * b + 1]),
                               0.5f * (fMesh.points[3 * a + 2] + fMesh.points[3 * b + 2]));
        }
        return randomPointNear(1.0);
    }

    Ray randomRay()
    {
        Ray ray;
        // Inside the box, around it, or so far out that single precision cannot place the ray.
        const int where = below(20);
        ray.source = where < 4 ? randomPointNear(1.0) : randomPointNear(where == 19 ? 1.0e9 : 3.0);
        const MFloatPoint target = randomTarget();
        const float scales[] = {0.01f, 1.0f, 100.0f};
        const float scale = scales[below(3)];
        ray.direction = MFloatVector((target.x - ray.source.x) * scale, (target.y - ray.source.y) * scale,
                                     (target.z - ray.source.z) * scale);
        ray.bothDirections = below(2) == 0;
        ray.maxParam = below(3) == 0 ? static_cast<float>(uniform(0.3, 1.5) / scale) : 1.0e30f;
        const float tolerances[] = {0.0f, 1.0e-6f, 1.0e-4f, 1.0e-3f, 1.0e-2f};
        ray.tolerance = tolerances[below(5)];
        return ray;
    }

    // Some rays get a face filter: a few faces (tested directly) or half of them (looked up).
    void randomFilter(MIntArray& faces, MIntArray& triangles, bool& useFaces, bool& useTriangles)
    {
        faces.clear();
        triangles.clear();
        const int kind = below(10);
        useFaces = kind < 2;
        useTriangles = kind == 0;
        if (!useFaces)
            return;
        const int count = below(2) == 0 ? 5 : fMesh.numPolygons() / 2;
        for (int k = 0; k < count; ++k) {
            const int face = below(fMesh.numPolygons());
            faces.append(face);
            triangles.append(below(fMesh.counts[face] - 2));
        }
    }

    void compareRays(int rays)
    {
        int withHits = 0, multiple = 0;
        for (int r = 0; r < rays; ++r) {
            const Ray ray = randomRay();
            MIntArray faces, triangles;
            bool useFaces = false, useTriangles = false;
            randomFilter(faces, triangles, useFaces, useTriangles);
            const MIntArray* faceIds = useFaces ? &faces : nullptr;
            const MIntArray* triIds = useTriangles ? &triangles : nullptr;
            SCOPED_TRACE("ray " + std::to_string(r));

            for (bool sort : {true, false}) {
                const AllHits plain = allHits(fFn, ray, sort, false, MSpace::kObject, faceIds, triIds);
                const AllHits fast = allHits(fFn, ray, sort, true, MSpace::kObject, faceIds, triIds);
                ASSERT_TRUE(plain.status && fast.status);
                ASSERT_EQ(plain.faces, fast.faces);
                ASSERT_EQ(plain.params, fast.params);
                ASSERT_EQ(plain.triangles, fast.triangles);
                ASSERT_EQ(plain.bary1, fast.bary1);
                ASSERT_EQ(plain.bary2, fast.bary2);
                ASSERT_EQ(plain.points.size(), fast.points.size());
                for (std::size_t k = 0; k < plain.points.size(); ++k)
                    ASSERT_TRUE(plain.points[k] == fast.points[k]);
                if (sort) {
                    ASSERT_TRUE(std::is_sorted(plain.params.begin(), plain.params.end()));
                    withHits += plain.found;
                    multiple += plain.faces.size() > 1;
                }
            }
            const OneHit plain = closestHit(fFn, ray, false, MSpace::kObject, faceIds, triIds);
            const OneHit fast = closestHit(fFn, ray, true, MSpace::kObject, faceIds, triIds);
            ASSERT_EQ(plain.found, fast.found);
            ASSERT_EQ(plain.face, fast.face);
            ASSERT_EQ(plain.triangle, fast.triangle);
            ASSERT_EQ(plain.param, fast.param);
            ASSERT_EQ(plain.bary1, fast.bary1);
            ASSERT_EQ(plain.bary2, fast.bary2);
            ASSERT_TRUE(plain.point == fast.point);
        }
        // The rays did reach the surface, often through several polygons.
        EXPECT_GT(withHits, rays / 4);
        EXPECT_GT(multiple, rays / 10);
    }

    void comparePoints(int points)
    {
        MObject shape = fFn.object();
        MMeshIntersector intersector;
        ASSERT_TRUE(intersector.create(shape));
        MMeshIsectAccelParams params = MFnMesh::autoUniformGridParams();
        for (int q = 0; q < points; ++q) {
            SCOPED_TRACE("point " + std::to_string(q));
            // Mostly near the surface; now and then so far out that single precision fails.
            MFloatPoint p = below(3) == 0 ? randomTarget() : randomPointNear(below(4) == 0 ? 6.0 : 1.2);
            if (below(20) == 0)
                p = randomPointNear(1.0e20);
            const MPoint query(p.x + uniform(-1e-3, 1e-3), p.y + uniform(-1e-3, 1e-3), p.z + uniform(-1e-3, 1e-3));
            MPoint plain, fast;
            MVector plainNormal, fastNormal;
            int plainFace = -1, fastFace = -1;
            ASSERT_TRUE(fFn.getClosestPointAndNormal(query, plain, plainNormal, MSpace::kObject, &plainFace));
            ASSERT_TRUE(fFn.getClosestPointAndNormal(query, fast, fastNormal, MSpace::kObject, &fastFace, &params));
            ASSERT_EQ(plainFace, fastFace);
            ASSERT_TRUE(plain == fast);
            ASSERT_TRUE(plainNormal == fastNormal);

            MPointOnMesh onMesh;
            ASSERT_TRUE(intersector.getClosestPoint(query, onMesh));
            ASSERT_EQ(onMesh.faceIndex(), plainFace);
            ASSERT_TRUE(onMesh.getPoint() == MFloatPoint(float(plain.x), float(plain.y), float(plain.z)));
        }
    }

private:
    host::MeshArrays fMesh;
    Box fBox;
    std::mt19937 fRandom;
    MFnMesh fFn;
};

TEST_F(AcceleratorTest, AgreesExactlyOnASphere)
{
    Agreement agreement(host::uvSphere(1.0f, 24, 16), 11);
    agreement.compareRays(1500);
    agreement.comparePoints(400);
}

TEST_F(AcceleratorTest, AgreesExactlyOnATorus)
{
    Agreement agreement(host::torus(1.0f, 0.3f, 32, 16), 12);
    agreement.compareRays(1500);
    agreement.comparePoints(400);
}

TEST_F(AcceleratorTest, AgreesExactlyOnASculptedSurface)
{
    Agreement agreement(host::sculptSurface(6000, 5), 13);
    agreement.compareRays(1500);
    agreement.comparePoints(400);
}

TEST_F(AcceleratorTest, AgreesExactlyOnCoplanarDuplicatedPolygons)
{
    Agreement agreement(coplanarDuplicates(), 14);
    agreement.compareRays(1500);
    agreement.comparePoints(400);
}

} // namespace
