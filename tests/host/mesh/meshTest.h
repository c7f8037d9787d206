#pragma once
// The fixture of the mesh suites: the DG suite's, plus building meshes from literal arrays
// and reading them back as plain vectors for readable comparisons.

#include "dgPluginTest.h"

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>

#include <array>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace meshtest {

using P3 = std::array<float, 3>;

inline std::vector<int> ints(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

inline MPointArray pointArray(const std::vector<P3>& points)
{
    MPointArray out;
    for (const P3& p : points)
        out.append(MPoint(p[0], p[1], p[2]));
    return out;
}

// The mesh's points, in the given space.
inline std::vector<P3> pointsOf(const MFnMesh& fn, MSpace::Space space = MSpace::kObject)
{
    MFloatPointArray a;
    EXPECT_TRUE(fn.getPoints(a, space));
    std::vector<P3> out;
    for (const MFloatPoint& p : a)
        out.push_back({p.x, p.y, p.z});
    return out;
}

// One point in object space; NaNs (never equal to anything) when the mesh has no such vertex.
inline P3 pointOf(const MFnMesh& fn, int vertex)
{
    MPoint p;
    if (!fn.getPoint(vertex, p))
        return {std::nanf(""), std::nanf(""), std::nanf("")};
    return {float(p.x), float(p.y), float(p.z)};
}

inline std::vector<std::array<int, 2>> edgesOf(const MFnMesh& fn)
{
    std::vector<std::array<int, 2>> out;
    for (int e = 0; e < fn.numEdges(); ++e) {
        int2 v;
        EXPECT_TRUE(fn.getEdgeVertices(e, v));
        out.push_back({v[0], v[1]});
    }
    return out;
}

inline ::testing::AssertionResult near(const MVector& got, double x, double y, double z, double tolerance = 1e-6)
{
    if (std::fabs(got.x - x) < tolerance && std::fabs(got.y - y) < tolerance && std::fabs(got.z - z) < tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got (" << got.x << ", " << got.y << ", " << got.z << "), want (" << x
                                         << ", " << y << ", " << z << ")";
}

// A row of three unit quads in the XY plane: bottom vertices 0-3 at y = 0, top 4-7 at y = 1.
// Faces [0,1,5,4], [1,2,6,5], [2,3,7,6]; edges by first appearance:
// 0:(0,1) 1:(1,5) 2:(5,4) 3:(4,0) 4:(1,2) 5:(2,6) 6:(6,5) 7:(2,3) 8:(3,7) 9:(7,6).
inline const std::vector<P3>& stripPoints()
{
    static const std::vector<P3> points = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0},
                                           {0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}};
    return points;
}

// Adds a polygon through the set, failing with the status when the call fails.
inline ::testing::AssertionResult added(MFnMesh& fn, const std::vector<P3>& corners, bool merge = true,
                                        double tolerance = kMFnMeshPointTolerance, int* faceIndex = nullptr)
{
    int face = -1;
    MStatus status;
    fn.addPolygon(pointArray(corners), face, merge, tolerance, MObject::kNullObj, &status);
    if (faceIndex)
        *faceIndex = face;
    if (!status)
        return ::testing::AssertionFailure() << "addPolygon failed: " << status.errorString().asChar();
    return ::testing::AssertionSuccess();
}

class MeshTest : public hosttest::DgPluginTest {
protected:
    // Builds a mesh with MFnMesh::create under a new transform; `fn` is left attached to it.
    MObject createMesh(MFnMesh& fn, const std::vector<P3>& points, const std::vector<int>& counts,
                       const std::vector<int>& connects, const MObject& parent = MObject::kNullObj)
    {
        MFloatPointArray p;
        for (const P3& q : points)
            p.append(q[0], q[1], q[2]);
        MStatus status;
        const MIntArray countArray(counts.data(), unsigned(counts.size()));
        const MIntArray connectArray(connects.data(), unsigned(connects.size()));
        MObject made = fn.create(int(points.size()), int(counts.size()), p, countArray, connectArray, parent, &status);
        EXPECT_TRUE(status) << host::logText();
        return made;
    }

    MObject createStrip(MFnMesh& fn)
    {
        return createMesh(fn, stripPoints(), {4, 4, 4}, {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6});
    }
};

} // namespace meshtest
