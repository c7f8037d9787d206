#pragma once
// Shared pieces of the mesh iterator suites: grids and small meshes made through MFnMesh,
// and comparisons with readable failure messages.

#include "hostTestSupport.h"

#include <maya/MDagPath.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <algorithm>
#include <string>
#include <vector>

namespace meshitertest {

inline std::vector<int> ints(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

inline std::vector<int> sorted(std::vector<int> v)
{
    std::sort(v.begin(), v.end());
    return v;
}

inline ::testing::AssertionResult near(const MPoint& a, const MPoint& b, double tol = 1e-5)
{
    if (a.distanceTo(b) <= tol)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") vs (" << b.x << ", "
                                         << b.y << ", " << b.z << ")";
}

inline ::testing::AssertionResult near(const MVector& a, const MVector& b, double tol = 1e-5)
{
    return near(MPoint(a), MPoint(b), tol);
}

// Makes a mesh under `parent` (a transform or mesh data; null: a new transform) and returns
// what MFnMesh::create returns.
inline MObject makeMesh(const std::vector<MFloatPoint>& points, const std::vector<std::vector<int>>& faces,
                        const MObject& parent = MObject())
{
    MFloatPointArray pts;
    for (const MFloatPoint& p : points)
        pts.append(p);
    MIntArray counts, connects;
    for (const auto& f : faces) {
        counts.append(static_cast<int>(f.size()));
        for (int v : f)
            connects.append(v);
    }
    MFnMesh fn;
    MStatus status;
    MObject made = fn.create(static_cast<int>(points.size()), static_cast<int>(faces.size()), pts, counts, connects,
                             parent, &status);
    EXPECT_TRUE(status) << host::logText();
    return made;
}

// An n x n grid of quads facing +Z: vertex r * (n + 1) + c sits at (c, r, tilt * c), faces
// go row by row.
inline MObject makeGrid(int n, const MObject& parent = MObject(), float tilt = 0.0f)
{
    std::vector<MFloatPoint> points;
    for (int r = 0; r <= n; ++r)
        for (int c = 0; c <= n; ++c)
            points.emplace_back(float(c), float(r), tilt * float(c));
    std::vector<std::vector<int>> faces;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            const int v = r * (n + 1) + c;
            faces.push_back({v, v + 1, v + n + 2, v + n + 1});
        }
    return makeMesh(points, faces, parent);
}

inline MObject component(MFn::Type kind, const std::vector<int>& elements)
{
    MFnSingleIndexedComponent fn;
    MObject c = fn.create(kind);
    for (int e : elements)
        EXPECT_TRUE(fn.addElement(e));
    return c;
}

// The DAG path of a node (its first), extended to the shape when it is a transform.
inline MDagPath shapePath(const MObject& node)
{
    MDagPath path;
    EXPECT_TRUE(MDagPath::getAPathTo(node, path));
    if (!path.hasFn(MFn::kMesh)) {
        EXPECT_TRUE(path.extendToShape());
    }
    return path;
}

class MeshIterTest : public hosttest::SceneTest {
protected:
    // A 3 x 3 grid under the transform "rig"; its shape is "rigShape".
    void makeRigGrid(float tilt = 0.0f)
    {
        rig = host::createNode("transform", "rig");
        ASSERT_FALSE(rig.isNull());
        shape = makeGrid(3, rig, tilt);
        ASSERT_FALSE(shape.isNull());
        path = shapePath(shape);
        ASSERT_EQ(std::string(path.partialPathName().asChar()), "rigShape");
    }

    MObject rig, shape;
    MDagPath path;
};

} // namespace meshitertest
