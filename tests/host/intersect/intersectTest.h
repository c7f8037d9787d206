#pragma once
// Shared pieces of the intersection suites: meshes made through MFnMesh (as shapes or as
// mesh data), rays as plain structs, and the answers of the queries gathered for comparison.

#include "hostTestSupport.h"

#include <host/meshArrays.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFnMesh.h>
#include <maya/MFnMeshData.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>

#include <algorithm>
#include <string>
#include <vector>

namespace intersecttest {

using Faces = std::vector<std::vector<int>>;

inline host::MeshArrays arrays(const std::vector<MFloatPoint>& points, const Faces& faces)
{
    host::MeshArrays mesh;
    for (const MFloatPoint& p : points)
        mesh.points.insert(mesh.points.end(), {p.x, p.y, p.z});
    for (const auto& face : faces) {
        mesh.counts.push_back(static_cast<int>(face.size()));
        mesh.connects.insert(mesh.connects.end(), face.begin(), face.end());
    }
    return mesh;
}

// Makes the mesh under `parent` (a transform, mesh data, or null for a new transform) and
// leaves `fn` attached to it (through its path when it is a shape).
inline void makeMesh(MFnMesh& fn, const host::MeshArrays& mesh, const MObject& parent = MObject())
{
    MFloatPointArray points;
    for (int v = 0; v < mesh.numVertices(); ++v)
        points.append(mesh.points[3 * v], mesh.points[3 * v + 1], mesh.points[3 * v + 2]);
    MIntArray counts, connects;
    for (int c : mesh.counts)
        counts.append(c);
    for (int c : mesh.connects)
        connects.append(c);
    MStatus status;
    fn.create(mesh.numVertices(), mesh.numPolygons(), points, counts, connects, parent, &status);
    ASSERT_TRUE(status) << host::logText();
}

// A mesh data object holding the mesh.
inline MObject makeMeshData(const host::MeshArrays& mesh)
{
    MFnMeshData dataFn;
    MObject data = dataFn.create();
    MFnMesh fn;
    makeMesh(fn, mesh, data);
    return data;
}

// Unit squares in planes z = height each (four corners, one quad), in the order given.
inline host::MeshArrays stackedSquares(const std::vector<float>& heights)
{
    std::vector<MFloatPoint> points;
    Faces faces;
    for (float z : heights) {
        const int base = static_cast<int>(points.size());
        points.insert(points.end(), {MFloatPoint(0, 0, z), MFloatPoint(1, 0, z), MFloatPoint(1, 1, z),
                                     MFloatPoint(0, 1, z)});
        faces.push_back({base, base + 1, base + 2, base + 3});
    }
    return arrays(points, faces);
}

// An n x n grid of unit quads in z = 0: vertex r * (n + 1) + c at (c, r, 0), faces row by row.
inline host::MeshArrays grid(int n)
{
    std::vector<MFloatPoint> points;
    for (int r = 0; r <= n; ++r)
        for (int c = 0; c <= n; ++c)
            points.emplace_back(float(c), float(r), 0.0f);
    Faces faces;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            const int v = r * (n + 1) + c;
            faces.push_back({v, v + 1, v + n + 2, v + n + 1});
        }
    return arrays(points, faces);
}

struct Ray {
    MFloatPoint source;
    MFloatVector direction;
    float maxParam = 1.0e30f;
    bool bothDirections = false;
    float tolerance = 1.0e-6f;
};

// Everything allIntersections reports, in its order.
struct AllHits {
    bool found = false;
    MStatus status;
    std::vector<MFloatPoint> points;
    std::vector<float> params, bary1, bary2;
    std::vector<int> faces, triangles;
};

inline AllHits allHits(MFnMesh& fn, const Ray& ray, bool sort, bool accelerate, MSpace::Space space = MSpace::kObject,
                       const MIntArray* faceIds = nullptr, const MIntArray* triIds = nullptr)
{
    AllHits out;
    MFloatPointArray points;
    MFloatArray params, bary1, bary2;
    MIntArray faces, triangles;
    MMeshIsectAccelParams params0 = MFnMesh::autoUniformGridParams();
    out.found = fn.allIntersections(ray.source, ray.direction, faceIds, triIds, false, space, ray.maxParam,
                                    ray.bothDirections, accelerate ? &params0 : nullptr, sort, points, &params, &faces,
                                    &triangles, &bary1, &bary2, ray.tolerance, &out.status);
    out.points.assign(points.begin(), points.end());
    out.params.assign(params.begin(), params.end());
    out.faces.assign(faces.begin(), faces.end());
    out.triangles.assign(triangles.begin(), triangles.end());
    out.bary1.assign(bary1.begin(), bary1.end());
    out.bary2.assign(bary2.begin(), bary2.end());
    return out;
}

struct OneHit {
    bool found = false;
    MStatus status;
    MFloatPoint point;
    float param = -1;
    int face = -1, triangle = -1;
    float bary1 = -1, bary2 = -1;
};

inline OneHit closestHit(MFnMesh& fn, const Ray& ray, bool accelerate, MSpace::Space space = MSpace::kObject,
                         const MIntArray* faceIds = nullptr, const MIntArray* triIds = nullptr)
{
    OneHit out;
    MMeshIsectAccelParams params = MFnMesh::autoUniformGridParams();
    out.found = fn.closestIntersection(ray.source, ray.direction, faceIds, triIds, false, space, ray.maxParam,
                                       ray.bothDirections, accelerate ? &params : nullptr, out.point, &out.param,
                                       &out.face, &out.triangle, &out.bary1, &out.bary2, ray.tolerance, &out.status);
    return out;
}

inline std::vector<int> sortedCopy(std::vector<int> values)
{
    std::sort(values.begin(), values.end());
    return values;
}

inline MIntArray intArray(const std::vector<int>& values)
{
    MIntArray out;
    for (int v : values)
        out.append(v);
    return out;
}

} // namespace intersecttest
