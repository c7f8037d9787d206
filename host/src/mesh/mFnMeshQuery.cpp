// MFnMesh: counts, vertex positions, polygons and normals.

#include <maya/MFnMesh.h>

#include "dg/fnMacros.h"
#include "mesh/mFnMeshInternal.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <algorithm>
#include <type_traits>
#include <vector>

using host::MeshGeometry;

// ---- counts

int MFnMesh::numVertices(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? g->numVertices() : 0;
}

int MFnMesh::numEdges(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? g->numEdges() : 0;
}

int MFnMesh::numPolygons(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? g->numPolygons() : 0;
}

int MFnMesh::numFaceVertices(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? g->numFaceVertices() : 0;
}

int MFnMesh::polygonVertexCount(int polygonId, MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    if (!g)
        return 0;
    if (!g->validPolygon(polygonId)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return 0;
    }
    return g->polygonSize(polygonId);
}

// ---- vertex positions

const float* MFnMesh::getRawPoints(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? g->rawPoints() : nullptr;
}

namespace {

template <class PointArray>
MStatus readPoints(const MObject& object, const MDagPath& path, PointArray& out, MSpace::Space space)
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(object, path, &st, &target);
    if (!g)
        return st;
    const MMatrix m = host::spaceMatrix(target, space);
    const bool world = space == MSpace::kWorld;
    const int n = g->numVertices();
    const float* p = g->rawPoints();
    out.setLength(unsigned(n));
    for (int v = 0; v < n; ++v) {
        MPoint q(p[3 * v], p[3 * v + 1], p[3 * v + 2]);
        if (world)
            q = q * m;
        out[unsigned(v)] = typename std::decay<decltype(out[0u])>::type(q.x, q.y, q.z);
    }
    return MStatus::kSuccess;
}

template <class PointArray>
MStatus writePoints(const MObject& object, const MDagPath& path, const PointArray& in, MSpace::Space space)
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(object, path, &st, &target);
    if (!g)
        return st;
    const int n = g->numVertices();
    if (in.length() != unsigned(n))
        return MStatus::kInvalidParameter;
    const bool world = space == MSpace::kWorld;
    const MMatrix toObject = world ? target.worldMatrix().inverse() : MMatrix();
    std::vector<float> points(static_cast<std::size_t>(n) * 3);
    for (int v = 0; v < n; ++v) {
        MPoint q(in[unsigned(v)].x, in[unsigned(v)].y, in[unsigned(v)].z);
        if (world)
            q = q * toObject;
        const float x = float(q.x), y = float(q.y), z = float(q.z);
        if (!host::finite3(x, y, z))
            return MStatus::kInvalidParameter;
        points[3 * v] = x;
        points[3 * v + 1] = y;
        points[3 * v + 2] = z;
    }
    host::MeshEditScope edit(object, path);
    if (!edit.mesh())
        return edit.status();
    if (edit.mesh()->numVertices() != n)
        return MStatus::kFailure;
    float* out = edit.mesh()->editPoints();
    std::copy(points.begin(), points.end(), out);
    return MStatus::kSuccess;
}

} // namespace

MStatus MFnMesh::getPoints(MFloatPointArray& vertexArray, MSpace::Space space) const
{
    return readPoints(fObject, fPath, vertexArray, space);
}

MStatus MFnMesh::getPoints(MPointArray& vertexArray, MSpace::Space space) const
{
    return readPoints(fObject, fPath, vertexArray, space);
}

MStatus MFnMesh::setPoints(MFloatPointArray& vertexArray, MSpace::Space space)
{
    return writePoints(fObject, fPath, vertexArray, space);
}

MStatus MFnMesh::setPoints(MPointArray& vertexArray, MSpace::Space space)
{
    return writePoints(fObject, fPath, vertexArray, space);
}

MStatus MFnMesh::getPoint(int vertexId, MPoint& pos, MSpace::Space space) const
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st, &target);
    if (!g)
        return st;
    if (!g->validVertex(vertexId))
        return MStatus::kInvalidParameter;
    const MFloatPoint p = g->point(vertexId);
    pos = MPoint(p.x, p.y, p.z);
    if (space == MSpace::kWorld)
        pos = pos * target.worldMatrix();
    return MStatus::kSuccess;
}

MStatus MFnMesh::setPoint(int vertexId, const MPoint& pos, MSpace::Space space)
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st, &target);
    if (!g)
        return st;
    if (!g->validVertex(vertexId))
        return MStatus::kInvalidParameter;
    MPoint q(pos.x, pos.y, pos.z);
    if (space == MSpace::kWorld)
        q = q * target.worldMatrix().inverse();
    const float x = float(q.x), y = float(q.y), z = float(q.z);
    if (!host::finite3(x, y, z))
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    if (!edit.mesh()->validVertex(vertexId))
        return MStatus::kFailure;
    edit.mesh()->setPoint(vertexId, x, y, z);
    return MStatus::kSuccess;
}

// ---- polygons

MStatus MFnMesh::getVertices(MIntArray& vertexCount, MIntArray& vertexList) const
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    vertexCount = MIntArray(g->counts().data(), unsigned(g->counts().size()));
    vertexList = MIntArray(g->connects().data(), unsigned(g->connects().size()));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonVertices(int polygonId, MIntArray& vertexList) const
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    if (!g->validPolygon(polygonId))
        return MStatus::kInvalidParameter;
    vertexList = MIntArray(g->polygonVertices(polygonId), unsigned(g->polygonSize(polygonId)));
    return MStatus::kSuccess;
}

bool MFnMesh::onBoundary(int polygonId, MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    if (!g)
        return false;
    if (!g->validPolygon(polygonId)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return false;
    }
    const int start = g->polygonStart(polygonId);
    for (int i = 0; i < g->polygonSize(polygonId); ++i)
        if (g->onBoundaryEdge(g->faceVertexEdge(start + i)))
            return true;
    return false;
}

// ---- normals

MStatus MFnMesh::getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space) const
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st, &target);
    if (!g)
        return st;
    if (!g->validPolygon(polygonId))
        return MStatus::kInvalidParameter;
    normal = host::NormalSpace(target, space)(g->polygonNormal(polygonId));
    return MStatus::kSuccess;
}

// Without the choice, vertex normals are area-weighted.
MStatus MFnMesh::getVertexNormal(int vertexId, MVector& normal, MSpace::Space space) const
{
    return getVertexNormal(vertexId, false, normal, space);
}

MStatus MFnMesh::getVertexNormal(int vertexId, bool angleWeighted, MVector& normal, MSpace::Space space) const
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st, &target);
    if (!g)
        return st;
    if (!g->validVertex(vertexId))
        return MStatus::kInvalidParameter;
    normal = host::NormalSpace(target, space)(g->vertexNormal(vertexId, angleWeighted));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getVertexNormals(bool angleWeighted, MFloatVectorArray& normals, MSpace::Space space) const
{
    MStatus st;
    host::MeshTarget target;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st, &target);
    if (!g)
        return st;
    std::vector<MVector> all;
    g->vertexNormals(angleWeighted, all);
    const host::NormalSpace toSpace(target, space);
    normals.setLength(unsigned(all.size()));
    for (std::size_t v = 0; v < all.size(); ++v)
        normals[unsigned(v)] = MFloatVector(toSpace(all[v]));
    return MStatus::kSuccess;
}
