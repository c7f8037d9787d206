// Ray queries of MFnMesh: which polygons a ray reports, in which order, with which
// parameters, in object and world space, with id filters, and what bad input gives.

#include "intersectTest.h"

#include <maya/MMatrix.h>

#include <cmath>
#include <limits>

using namespace intersecttest;

namespace {

class RayTest : public hosttest::SceneTest {};

// (0.5, 0.25) lies in the first fan triangle (corners (0,0), (1,0), (1,1)) of a unit square.
const MFloatPoint kSource(0.5f, 0.25f, 0.0f);

TEST_F(RayTest, BothDirectionsSortBySignedParameterWithHitsBehindFirst)
{
    MFnMesh fn;
    makeMesh(fn, stackedSquares({3, -1, 1, -2})); // faces 0..3 at those heights
    Ray ray{kSource, MFloatVector(0, 0, 2)};     // t counts in units of this direction
    ray.bothDirections = true;

    for (bool accelerate : {false, true}) {
        SCOPED_TRACE(accelerate ? "accelerated" : "plain");
        AllHits sorted = allHits(fn, ray, true, accelerate);
        ASSERT_TRUE(sorted.found);
        EXPECT_EQ(sorted.faces, (std::vector<int>{3, 1, 2, 0}));
        EXPECT_EQ(sorted.params, (std::vector<float>{-1.0f, -0.5f, 0.5f, 1.5f}));
        // The last hit is the farthest along the direction.
        EXPECT_FLOAT_EQ(sorted.points.back().z, 3.0f);
        for (std::size_t k = 0; k < sorted.points.size(); ++k) {
            EXPECT_FLOAT_EQ(sorted.points[k].x, 0.5f);
            EXPECT_FLOAT_EQ(sorted.points[k].y, 0.25f);
            EXPECT_FLOAT_EQ(sorted.points[k].z, 2.0f * sorted.params[k]);
            EXPECT_EQ(sorted.triangles[k], 0);
            // Weights of the triangle's first and second corner: 0.5 * (0,0) + 0.25 * (1,0) + 0.25 * (1,1).
            EXPECT_NEAR(sorted.bary1[k], 0.5f, 1e-6);
            EXPECT_NEAR(sorted.bary2[k], 0.25f, 1e-6);
        }

        // Unsorted: the same hits, in the same order every time.
        AllHits unsorted = allHits(fn, ray, false, accelerate);
        EXPECT_EQ(sortedCopy(unsorted.faces), (std::vector<int>{0, 1, 2, 3}));
        EXPECT_EQ(allHits(fn, ray, false, accelerate).faces, unsorted.faces);

        // One direction only: the hits ahead of the source.
        ray.bothDirections = false;
        EXPECT_EQ(allHits(fn, ray, true, accelerate).faces, (std::vector<int>{2, 0}));
        ray.bothDirections = true;
    }
}

TEST_F(RayTest, ClosestHitIsNearestToTheSourceEitherWay)
{
    MFnMesh fn;
    makeMesh(fn, stackedSquares({3, -0.5f, 1, -2}));
    Ray ray{kSource, MFloatVector(0, 0, 1)};
    for (bool accelerate : {false, true}) {
        ray.bothDirections = false;
        OneHit ahead = closestHit(fn, ray, accelerate);
        ASSERT_TRUE(ahead.found);
        EXPECT_EQ(ahead.face, 2);
        EXPECT_FLOAT_EQ(ahead.param, 1.0f);
        EXPECT_FLOAT_EQ(ahead.point.z, 1.0f);

        ray.bothDirections = true;
        OneHit either = closestHit(fn, ray, accelerate);
        ASSERT_TRUE(either.found);
        EXPECT_EQ(either.face, 1);
        EXPECT_FLOAT_EQ(either.param, -0.5f);

        // anyIntersection reports a real hit of the ray.
        MFloatPoint point;
        float param = 0;
        int face = -1;
        MMeshIsectAccelParams params = MFnMesh::autoUniformGridParams();
        EXPECT_TRUE(fn.anyIntersection(ray.source, ray.direction, nullptr, nullptr, false, MSpace::kObject, 100,
                                       true, accelerate ? &params : nullptr, point, &param, &face, nullptr, nullptr,
                                       nullptr));
        EXPECT_FLOAT_EQ(point.z, param);
        EXPECT_TRUE(face >= 0 && face < 4);
    }
}

TEST_F(RayTest, MaxParamBoundsTheParameterBothWays)
{
    MFnMesh fn;
    makeMesh(fn, stackedSquares({-2, -1, 1, 3}));
    for (bool accelerate : {false, true}) {
        Ray ray{kSource, MFloatVector(0, 0, 1)};
        ray.bothDirections = true;
        ray.maxParam = 1.5f;
        EXPECT_EQ(allHits(fn, ray, true, accelerate).faces, (std::vector<int>{1, 2}));
        ray.maxParam = 1.0f; // the bound itself counts
        EXPECT_EQ(allHits(fn, ray, true, accelerate).faces, (std::vector<int>{1, 2}));
        ray.maxParam = 0.5f;
        AllHits none = allHits(fn, ray, true, accelerate);
        EXPECT_FALSE(none.found);
        EXPECT_TRUE(none.status);
        EXPECT_TRUE(none.faces.empty());
        EXPECT_FALSE(closestHit(fn, ray, accelerate).found);

        ray.bothDirections = false;
        ray.maxParam = 2.5f;
        EXPECT_EQ(allHits(fn, ray, true, accelerate).faces, (std::vector<int>{2}));
        // The bound is in the direction's units.
        ray.direction = MFloatVector(0, 0, 4);
        ray.maxParam = 0.8f;
        EXPECT_EQ(allHits(fn, ray, true, accelerate).faces, (std::vector<int>{2, 3}));
    }
}

TEST_F(RayTest, SharedEdgesAndVerticesReportEveryPolygon)
{
    MFnMesh fn;
    makeMesh(fn, grid(2));
    for (bool accelerate : {false, true}) {
        for (float tolerance : {0.0f, 1.0e-6f}) {
            Ray edge{MFloatPoint(1, 0.5f, 5), MFloatVector(0, 0, -1)};
            edge.tolerance = tolerance;
            AllHits both = allHits(fn, edge, true, accelerate);
            EXPECT_EQ(sortedCopy(both.faces), (std::vector<int>{0, 1}));
            for (const MFloatPoint& p : both.points)
                EXPECT_TRUE(p.x == 1.0f && p.y == 0.5f && p.z == 0.0f);

            Ray corner{MFloatPoint(1, 1, 5), MFloatVector(0, 0, -1)};
            corner.tolerance = tolerance;
            AllHits four = allHits(fn, corner, true, accelerate);
            EXPECT_EQ(sortedCopy(four.faces), (std::vector<int>{0, 1, 2, 3}));
            // The nearest of equally near hits is the lowest face.
            EXPECT_EQ(closestHit(fn, corner, accelerate).face, 0);
        }
    }
}

TEST_F(RayTest, APolygonIsReportedOnceHoweverManyOfItsTrianglesTheRayMeets)
{
    // A quad and a hexagon fanned from their first corner; then a quad folded along its fan
    // diagonal into a V that a level ray crosses twice.
    std::vector<MFloatPoint> points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    for (int k = 0; k < 6; ++k)
        points.emplace_back(3 + std::cos(k * 1.0471976f), std::sin(k * 1.0471976f), 0.0f);
    points.insert(points.end(), {{10, 0, 0}, {11, 0, 1}, {11, 1, 0}, {10, 1, 1}});
    MFnMesh fn;
    makeMesh(fn, arrays(points, {{0, 1, 2, 3}, {4, 5, 6, 7, 8, 9}, {10, 11, 12, 13}}));

    for (bool accelerate : {false, true}) {
        Ray diagonal{MFloatPoint(0.5f, 0.5f, 1), MFloatVector(0, 0, -1)};
        EXPECT_EQ(allHits(fn, diagonal, true, accelerate).faces, (std::vector<int>{0}));
        Ray fanCorner{MFloatPoint(4, 0, 1), MFloatVector(0, 0, -1)};
        EXPECT_EQ(allHits(fn, fanCorner, true, accelerate).faces, (std::vector<int>{1}));

        // Crosses the far wing at t = 0.25 and the near one at t = 0.75: reported once, nearest.
        Ray level{MFloatPoint(10, 1, 0.5f), MFloatVector(1, -1, 0)};
        AllHits folded = allHits(fn, level, true, accelerate);
        ASSERT_EQ(folded.faces, (std::vector<int>{2}));
        EXPECT_FLOAT_EQ(folded.params[0], 0.25f);
        EXPECT_EQ(folded.triangles[0], 1);
    }
}

TEST_F(RayTest, WorldSpaceRaysUnderAScaledRotatedTransform)
{
    MFnMesh fn;
    makeMesh(fn, grid(2));
    const std::string xform = host::nodeName(fn.dagPath().transform());
    const double values[] = {1, 2, 3, 0.3, 0.5, -0.2, 2, 3, 0.5};
    const char* attrs[] = {"tx", "ty", "tz", "rx", "ry", "rz", "sx", "sy", "sz"};
    for (int k = 0; k < 9; ++k)
        ASSERT_TRUE(host::setDouble(xform + "." + attrs[k], values[k]));
    const MMatrix toWorld = fn.dagPath().inclusiveMatrix();
    const MMatrix toObject = toWorld.inverse();

    const MPoint targetObject(1.3, 0.6, 0.0); // on face 1
    const MPoint targetWorld = targetObject * toWorld;
    const MVector directionWorld(0.3, -0.2, -1.1);
    const MPoint sourceWorld = targetWorld - 2.5 * directionWorld;

    for (bool accelerate : {false, true}) {
        Ray world{MFloatPoint(float(sourceWorld.x), float(sourceWorld.y), float(sourceWorld.z)),
                  MFloatVector(float(directionWorld.x), float(directionWorld.y), float(directionWorld.z))};
        world.maxParam = 2.6f;
        OneHit hit = closestHit(fn, world, accelerate, MSpace::kWorld);
        ASSERT_TRUE(hit.found) << hit.status;
        EXPECT_EQ(hit.face, 1);
        EXPECT_NEAR(hit.param, 2.5, 1e-5);
        EXPECT_NEAR(hit.point.x, targetWorld.x, 1e-5);
        EXPECT_NEAR(hit.point.y, targetWorld.y, 1e-5);
        EXPECT_NEAR(hit.point.z, targetWorld.z, 1e-5);
        // maxParam bounds t in the caller's units, whatever the transform scales.
        world.maxParam = 2.4f;
        EXPECT_FALSE(closestHit(fn, world, accelerate, MSpace::kWorld).found);

        // The same ray taken into object space meets the same point at the same t.
        const MPoint sourceObject = sourceWorld * toObject;
        const MVector directionObject = directionWorld * toObject;
        Ray object{MFloatPoint(float(sourceObject.x), float(sourceObject.y), float(sourceObject.z)),
                   MFloatVector(float(directionObject.x), float(directionObject.y), float(directionObject.z))};
        AllHits local = allHits(fn, object, true, accelerate, MSpace::kObject);
        ASSERT_EQ(local.faces, (std::vector<int>{1}));
        EXPECT_NEAR(local.params[0], 2.5, 1e-5);
        EXPECT_NEAR(local.points[0].x, 1.3, 1e-5);
        EXPECT_NEAR(local.points[0].y, 0.6, 1e-5);
        EXPECT_NEAR(local.points[0].z, 0.0, 1e-5);
    }
}

TEST_F(RayTest, FaceAndTriangleFiltersRestrictTheCandidates)
{
    MFnMesh fn;
    makeMesh(fn, grid(3));
    const Ray ray{MFloatPoint(1.7f, 1.2f, 2), MFloatVector(0, 0, -1)}; // face 4, triangle 0
    for (bool accelerate : {false, true}) {
        const MIntArray only4 = intArray({4});
        EXPECT_EQ(closestHit(fn, ray, accelerate, MSpace::kObject, &only4).face, 4);
        const MIntArray others = intArray({7, 0, 2, 0, 8});
        OneHit missed = closestHit(fn, ray, accelerate, MSpace::kObject, &others);
        EXPECT_FALSE(missed.found);
        EXPECT_TRUE(missed.status);

        // Claimed sorted but not: still answered right.
        MFloatPoint point;
        int face = -1;
        MMeshIsectAccelParams params = MFnMesh::autoUniformGridParams();
        const MIntArray unsorted = intArray({8, 4, 4, 1});
        EXPECT_TRUE(fn.closestIntersection(ray.source, ray.direction, &unsorted, nullptr, true, MSpace::kObject, 10,
                                           false, accelerate ? &params : nullptr, point, nullptr, &face, nullptr,
                                           nullptr, nullptr));
        EXPECT_EQ(face, 4);

        // Triangle ids pair with face ids.
        const MIntArray tri0 = intArray({0}), tri1 = intArray({1});
        OneHit first = closestHit(fn, ray, accelerate, MSpace::kObject, &only4, &tri0);
        EXPECT_TRUE(first.found);
        EXPECT_EQ(first.triangle, 0);
        EXPECT_FALSE(closestHit(fn, ray, accelerate, MSpace::kObject, &only4, &tri1).found);

        // Ids the mesh does not have are refused.
        const MIntArray badFace = intArray({9});
        const MIntArray badTriangle = intArray({2});
        const MIntArray twoFaces = intArray({4, 5});
        for (OneHit refused : {closestHit(fn, ray, accelerate, MSpace::kObject, &badFace),
                               closestHit(fn, ray, accelerate, MSpace::kObject, &only4, &badTriangle),
                               closestHit(fn, ray, accelerate, MSpace::kObject, nullptr, &tri0),
                               closestHit(fn, ray, accelerate, MSpace::kObject, &twoFaces, &tri0)}) {
            EXPECT_FALSE(refused.found);
            EXPECT_EQ(refused.status.statusCode(), MStatus::kInvalidParameter);
        }
    }
}

TEST_F(RayTest, BadRaysAndBadObjectsFailWithoutHits)
{
    MFnMesh fn;
    makeMesh(fn, grid(2));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const Ray good{MFloatPoint(0.5f, 0.5f, 1), MFloatVector(0, 0, -1)};
    std::vector<Ray> bad(6, good);
    bad[0].source.x = nan;
    bad[1].direction = MFloatVector(0, 0, 0);
    bad[2].direction.y = nan;
    bad[3].maxParam = nan;
    bad[4].tolerance = nan;
    bad[5].source.z = inf;
    for (bool accelerate : {false, true}) {
        for (const Ray& ray : bad) {
            AllHits all = allHits(fn, ray, true, accelerate);
            EXPECT_FALSE(all.found);
            EXPECT_FALSE(all.status);
            EXPECT_TRUE(all.faces.empty() && all.points.empty() && all.params.empty());
            OneHit one = closestHit(fn, ray, accelerate);
            EXPECT_FALSE(one.found);
            EXPECT_FALSE(one.status);
        }
    }

    // Outputs of an earlier call do not survive a failed one.
    MFloatPointArray points;
    MIntArray faces;
    ASSERT_TRUE(fn.allIntersections(good.source, good.direction, nullptr, nullptr, false, MSpace::kObject, 10, false,
                                    nullptr, true, points, nullptr, &faces, nullptr, nullptr, nullptr));
    EXPECT_FALSE(fn.allIntersections(bad[1].source, bad[1].direction, nullptr, nullptr, false, MSpace::kObject, 10,
                                     false, nullptr, true, points, nullptr, &faces, nullptr, nullptr, nullptr));
    EXPECT_EQ(points.length(), 0u);
    EXPECT_EQ(faces.length(), 0u);

    MFnMesh unattached;
    MStatus status;
    MFloatPoint hit;
    EXPECT_FALSE(unattached.closestIntersection(good.source, good.direction, nullptr, nullptr, false,
                                                MSpace::kObject, 10, false, nullptr, hit, nullptr, nullptr, nullptr,
                                                nullptr, nullptr, 1e-6f, &status));
    EXPECT_FALSE(status);
    EXPECT_FALSE(unattached.freeCachedIntersectionAccelerator());

    // An empty mesh has nothing to hit.
    MFnMeshData dataFn;
    MObject empty = dataFn.create();
    MFnMesh emptyFn(empty);
    for (bool accelerate : {false, true}) {
        AllHits none = allHits(emptyFn, good, true, accelerate);
        EXPECT_FALSE(none.found);
        EXPECT_TRUE(none.faces.empty());
        EXPECT_FALSE(closestHit(emptyFn, good, accelerate).found);
    }
}

} // namespace
