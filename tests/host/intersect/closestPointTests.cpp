// Closest points: MMeshIntersector (matrix, maxDistance, snapshot, faces of interest) and
// MFnMesh's getClosestPoint / getClosestNormal / getClosestPointAndNormal.

#include "intersectTest.h"

#include <host/meshGenerators.h>

#include <maya/MMatrix.h>
#include <maya/MMeshIntersector.h>
#include <maya/MVector.h>

#include <cmath>
#include <limits>
#include <thread>
#include <utility>
#include <vector>

using namespace intersecttest;

namespace {

class ClosestPointTest : public hosttest::SceneTest {};

// Scale by 2, then move up 5 along Z (row vectors: p * M).
MMatrix scaleThenLift()
{
    MMatrix m;
    m[0][0] = m[1][1] = m[2][2] = 2.0;
    m[3][2] = 5.0;
    return m;
}

TEST_F(ClosestPointTest, IntersectorTakesPointsInTheMatrixSpaceAndAnswersInObjectSpace)
{
    MObject data = makeMeshData(stackedSquares({0}));
    MMeshIntersector intersector;
    EXPECT_FALSE(intersector.isCreated());
    ASSERT_TRUE(intersector.create(data, scaleThenLift()));
    EXPECT_TRUE(intersector.isCreated());

    // (1, 0.5, 8) is (0.5, 0.25, 1.5) in object space, 3 units above the square where asked.
    MPointOnMesh onMesh;
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(1, 0.5, 8), onMesh));
    EXPECT_FLOAT_EQ(onMesh.getPoint().x, 0.5f);
    EXPECT_FLOAT_EQ(onMesh.getPoint().y, 0.25f);
    EXPECT_FLOAT_EQ(onMesh.getPoint().z, 0.0f);
    EXPECT_FLOAT_EQ(onMesh.getNormal().z, 1.0f);
    EXPECT_EQ(onMesh.faceIndex(), 0);
    EXPECT_EQ(onMesh.triangleIndex(), 0);
    // u * a + v * b + (1 - u - v) * c over the triangle (0,0), (1,0), (1,1).
    float u = -1, v = -1;
    onMesh.getBarycentricCoords(u, v);
    EXPECT_NEAR(u, 0.5f, 1e-6);
    EXPECT_NEAR(v, 0.25f, 1e-6);

    // maxDistance is measured where the point was given: 3 there, 1.5 in object space.
    MPointOnMesh limited;
    EXPECT_EQ(intersector.getClosestPoint(MPoint(1, 0.5, 8), limited, 2.9).statusCode(), MStatus::kFailure);
    EXPECT_TRUE(intersector.getClosestPoint(MPoint(1, 0.5, 8), limited, 3.1));
    EXPECT_FLOAT_EQ(limited.getPoint().x, 0.5f);

    // Off the side: the nearest edge point, in the second fan triangle's corner region.
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(-3, 1, 5), onMesh));
    EXPECT_FLOAT_EQ(onMesh.getPoint().x, 0.0f);
    EXPECT_FLOAT_EQ(onMesh.getPoint().y, 0.5f);
    EXPECT_EQ(onMesh.triangleIndex(), 1);
}

TEST_F(ClosestPointTest, IntersectorKeepsTheMeshAsItWasWhenCreated)
{
    MObject data = makeMeshData(stackedSquares({0}));
    MMeshIntersector before;
    ASSERT_TRUE(before.create(data));

    MFnMesh fn(data);
    for (int v = 0; v < 4; ++v) {
        MPoint p;
        ASSERT_TRUE(fn.getPoint(v, p));
        ASSERT_TRUE(fn.setPoint(v, p + MVector(0, 0, 1)));
    }
    MPointOnMesh onMesh;
    ASSERT_TRUE(before.getClosestPoint(MPoint(0.5, 0.5, 3), onMesh));
    EXPECT_FLOAT_EQ(onMesh.getPoint().z, 0.0f);

    MMeshIntersector after;
    ASSERT_TRUE(after.create(data));
    ASSERT_TRUE(after.getClosestPoint(MPoint(0.5, 0.5, 3), onMesh));
    EXPECT_FLOAT_EQ(onMesh.getPoint().z, 1.0f);
}

TEST_F(ClosestPointTest, IntersectorOnAShapeWithItsWorldMatrix)
{
    MFnMesh fn;
    makeMesh(fn, grid(2));
    const std::string xform = host::nodeName(fn.dagPath().transform());
    ASSERT_TRUE(host::setDouble(xform + ".tx", 10));
    ASSERT_TRUE(host::setDouble(xform + ".rz", 1.5707963267948966)); // x -> y
    MObject shape = fn.object();
    MMeshIntersector intersector;
    ASSERT_TRUE(intersector.create(shape, fn.dagPath().inclusiveMatrix()));

    // World (9.5, 1.5, 2) is object (1.5, 0.5, 2): above face 1.
    MPointOnMesh onMesh;
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(9.5, 1.5, 2), onMesh, 2.5));
    EXPECT_NEAR(onMesh.getPoint().x, 1.5f, 1e-5);
    EXPECT_NEAR(onMesh.getPoint().y, 0.5f, 1e-5);
    EXPECT_EQ(onMesh.faceIndex(), 1);
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(9.5, 1.5, 2), onMesh, 1.5));
}

TEST_F(ClosestPointTest, FacesOfInterestLimitTheSearch)
{
    MObject data = makeMeshData(grid(3));
    MIntArray faces = intArray({0});
    MMeshIntersector intersector;
    ASSERT_TRUE(intersector.create(data, MMatrix::identity, &faces));
    MPointOnMesh onMesh;
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(2.5, 2.5, 0.1), onMesh));
    EXPECT_EQ(onMesh.faceIndex(), 0);
    EXPECT_FLOAT_EQ(onMesh.getPoint().x, 1.0f);
    EXPECT_FLOAT_EQ(onMesh.getPoint().y, 1.0f);

    MIntArray none;
    ASSERT_TRUE(intersector.create(data, MMatrix::identity, &none));
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(2.5, 2.5, 0.1), onMesh));

    MIntArray bad = intArray({0, 9});
    EXPECT_EQ(intersector.create(data, MMatrix::identity, &bad).statusCode(), MStatus::kInvalidParameter);
    EXPECT_FALSE(intersector.isCreated());
}

TEST_F(ClosestPointTest, IntersectorAnswersTheSameFromSeveralThreads)
{
    host::MeshArrays sphere = host::uvSphere(1.0f, 32, 24);
    MObject data = makeMeshData(sphere);
    MMeshIntersector intersector;
    ASSERT_TRUE(intersector.create(data));
    std::vector<MPoint> points;
    for (int k = 0; k < 400; ++k)
        points.emplace_back(std::sin(k * 0.37) * 1.5, std::cos(k * 0.91) * 1.2, std::sin(k * 1.3) * 0.8);
    auto answers = [&] {
        std::vector<std::pair<int, MFloatPoint>> out;
        for (const MPoint& p : points) {
            MPointOnMesh onMesh;
            EXPECT_TRUE(intersector.getClosestPoint(p, onMesh));
            out.emplace_back(onMesh.faceIndex(), onMesh.getPoint());
        }
        return out;
    };
    const auto expected = answers();
    std::vector<std::vector<std::pair<int, MFloatPoint>>> results(4);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&result, &answers] { result = answers(); });
    for (std::thread& t : threads)
        t.join();
    for (const auto& result : results)
        EXPECT_TRUE(result == expected);
}

TEST_F(ClosestPointTest, IntersectorRefusesWhatIsNotAMesh)
{
    MMeshIntersector intersector;
    MObject null;
    EXPECT_FALSE(intersector.create(null));
    EXPECT_FALSE(intersector.isCreated());
    MObject xform = host::createNode("transform", "notAMesh");
    EXPECT_FALSE(intersector.create(xform));
    MPointOnMesh onMesh;
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(0, 0, 0), onMesh));

    MObject data = makeMeshData(stackedSquares({0}));
    MMatrix flat;
    flat[2][2] = 0.0; // no inverse
    EXPECT_FALSE(intersector.create(data, flat));

    ASSERT_TRUE(intersector.create(data));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(intersector.getClosestPoint(MPoint(nan, 0, 0), onMesh).statusCode(), MStatus::kInvalidParameter);
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(0, 0, 1), onMesh, -1.0));

    MFnMeshData dataFn;
    MObject empty = dataFn.create();
    ASSERT_TRUE(intersector.create(empty));
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(0, 0, 0), onMesh));
}

TEST_F(ClosestPointTest, MeshClosestPointAndNormalInWorldSpace)
{
    // A tilted triangle beside a square, under a uniform scale, a turn and a move.
    MFnMesh fn;
    makeMesh(fn, arrays({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {3, 0, 0}, {4, 0, 1}, {3, 1, 0}},
                        {{0, 1, 2, 3}, {4, 5, 6}}));
    const std::string xform = host::nodeName(fn.dagPath().transform());
    for (const auto& [attr, value] : std::vector<std::pair<std::string, double>>{
             {"sx", 2}, {"sy", 2}, {"sz", 2}, {"ry", 0.7}, {"tx", -1}, {"tz", 4}})
        ASSERT_TRUE(host::setDouble(xform + "." + attr, value));
    const MMatrix toWorld = fn.dagPath().inclusiveMatrix();

    MVector squareNormal;
    ASSERT_TRUE(fn.getPolygonNormal(0, squareNormal, MSpace::kWorld));
    const MPoint onSquare = MPoint(0.25, 0.5, 0) * toWorld;
    const MPoint above = onSquare + 0.8 * squareNormal;
    for (bool accelerate : {false, true}) {
        MMeshIsectAccelParams params = MFnMesh::autoUniformGridParams();
        MMeshIsectAccelParams* accel = accelerate ? &params : nullptr;
        MPoint closest;
        int polygon = -1;
        ASSERT_TRUE(fn.getClosestPoint(above, closest, MSpace::kWorld, &polygon, accel));
        EXPECT_EQ(polygon, 0);
        EXPECT_NEAR(closest.distanceTo(onSquare), 0.0, 1e-6);

        MVector normal;
        ASSERT_TRUE(fn.getClosestNormal(above, normal, MSpace::kWorld, &polygon, accel));
        EXPECT_NEAR((normal - squareNormal).length(), 0.0, 1e-9);

        // Near the tilted triangle: its own polygon normal, unit length, in world space.
        MVector triangleNormal;
        ASSERT_TRUE(fn.getPolygonNormal(1, triangleNormal, MSpace::kWorld));
        const MPoint nearTriangle = MPoint(3.3, 0.3, 0.5) * toWorld;
        MPoint point;
        ASSERT_TRUE(fn.getClosestPointAndNormal(nearTriangle, point, normal, MSpace::kWorld, &polygon, accel));
        EXPECT_EQ(polygon, 1);
        EXPECT_NEAR(normal.length(), 1.0, 1e-9);
        EXPECT_NEAR((normal - triangleNormal).length(), 0.0, 1e-9);
        // The answer lies in the triangle's plane.
        MPoint corner;
        ASSERT_TRUE(fn.getPoint(4, corner, MSpace::kWorld));
        EXPECT_NEAR((point - corner) * triangleNormal, 0.0, 1e-6);

        // In object space the same query answers in object coordinates.
        ASSERT_TRUE(fn.getClosestPoint(MPoint(0.25, 0.5, 0.4), closest, MSpace::kObject, &polygon, accel));
        EXPECT_NEAR(closest.distanceTo(MPoint(0.25, 0.5, 0)), 0.0, 1e-7);
    }

    MPoint closest;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(fn.getClosestPoint(MPoint(nan, 0, 0), closest));
    MFnMesh unattached;
    EXPECT_FALSE(unattached.getClosestPoint(MPoint(0, 0, 0), closest));
    MFnMeshData dataFn;
    MObject empty = dataFn.create();
    MFnMesh emptyFn(empty);
    EXPECT_FALSE(emptyFn.getClosestPoint(MPoint(0, 0, 0), closest));
}

} // namespace
