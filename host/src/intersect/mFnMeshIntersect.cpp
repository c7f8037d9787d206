// MFnMesh: ray intersections, closest points and the intersection accelerator.

#include <maya/MFnMesh.h>

#include "dg/fnMacros.h"
#include "intersect/meshQueries.h"
#include "intersect/spaceTransforms.h"
#include "mesh/mFnMeshInternal.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MIntArray.h>

#include <cmath>
#include <cstdio>
#include <vector>

namespace {

// The attached mesh and the map between its object space and the space a call asks in.
struct QuerySpace {
    const host::MeshGeometry* mesh = nullptr;
    host::SpaceTransform space;
};

MStatus resolveQuery(const MObject& object, const MDagPath& path, MSpace::Space space, QuerySpace& out)
{
    host::MeshTarget target;
    MStatus status;
    out.mesh = host::readAttached(object, path, &status, &target);
    if (!out.mesh)
        return status;
    if (!out.space.set(host::spaceMatrix(target, space)))
        return MStatus::kFailure;
    return MStatus::kSuccess;
}

// Everything a ray call checks before it looks at a triangle: the mesh, the ray (taken into
// object space) and the id filter.
struct RaySetup {
    QuerySpace query;
    host::RayQuery ray;
    host::FaceFilter filter;
    bool filtered = false;
    std::shared_ptr<host::MeshAccelerator> accel;

    MStatus prepare(const MObject& object, const MDagPath& path, const MFloatPoint& source,
                    const MFloatVector& direction, const MIntArray* faceIds, const MIntArray* triIds,
                    MSpace::Space space, float maxParam, bool testBothDirections,
                    MMeshIsectAccelParams* accelParams, float tolerance)
    {
        MStatus status = resolveQuery(object, path, space, query);
        if (!status)
            return status;
        const double s[3] = {source.x, source.y, source.z};
        const double d[3] = {direction.x, direction.y, direction.z};
        host::RayQuery given;
        for (int k = 0; k < 3; ++k) {
            given.origin[k] = s[k];
            given.direction[k] = d[k];
        }
        if (!given.valid() || std::isnan(maxParam) || std::isnan(tolerance))
            return MStatus::kInvalidParameter;
        query.space.pointToObject(s, ray.origin);
        query.space.vectorToObject(d, ray.direction);
        ray.maxParam = maxParam;
        ray.bothDirections = testBothDirections;
        ray.tolerance = tolerance;
        if (!ray.valid())
            return MStatus::kInvalidParameter;
        if (triIds && !faceIds)
            return MStatus::kInvalidParameter;
        if (faceIds) {
            std::vector<int> faces(faceIds->length()), triangles(triIds ? triIds->length() : 0);
            for (unsigned k = 0; k < faces.size(); ++k)
                faces[k] = (*faceIds)[k];
            for (unsigned k = 0; k < triangles.size(); ++k)
                triangles[k] = (*triIds)[k];
            if (!filter.set(*query.mesh, faces.data(), static_cast<unsigned>(faces.size()),
                            triIds ? triangles.data() : nullptr, static_cast<unsigned>(triangles.size())))
                return MStatus::kInvalidParameter;
            filtered = true;
        }
        if (accelParams)
            accel = host::acceleratorFor(*query.mesh);
        return MStatus::kSuccess;
    }

    const host::FaceFilter* filterOrNull() const { return filtered ? &filter : nullptr; }
};

// The hit point in the caller's space, straight from the caller's ray.
MFloatPoint pointOnRay(const MFloatPoint& source, const MFloatVector& direction, double t)
{
    return MFloatPoint(host::toFloat(double(source.x) + t * direction.x),
                       host::toFloat(double(source.y) + t * direction.y),
                       host::toFloat(double(source.z) + t * direction.z));
}

bool nearestHit(const MObject& object, const MDagPath& path, const MFloatPoint& raySource,
                const MFloatVector& rayDirection, const MIntArray* faceIds, const MIntArray* triIds,
                MSpace::Space space, float maxParam, bool testBothDirections, MMeshIsectAccelParams* accelParams,
                MFloatPoint& hitPoint, float* hitRayParam, int* hitFace, int* hitTriangle, float* hitBary1,
                float* hitBary2, float tolerance, MStatus* ReturnStatus)
{
    RaySetup setup;
    MStatus status = setup.prepare(object, path, raySource, rayDirection, faceIds, triIds, space, maxParam,
                                   testBothDirections, accelParams, tolerance);
    TQHOST_SET_STATUS(ReturnStatus, status);
    if (!status)
        return false;
    host::RayHit hit;
    if (!host::intersectClosest(*setup.query.mesh, setup.ray, setup.filterOrNull(), setup.accel.get(), hit))
        return false;
    hitPoint = pointOnRay(raySource, rayDirection, hit.t);
    if (hitRayParam)
        *hitRayParam = host::toFloat(hit.t);
    if (hitFace)
        *hitFace = hit.face;
    if (hitTriangle)
        *hitTriangle = hit.triangle;
    if (hitBary1)
        *hitBary1 = host::toFloat(hit.baryA);
    if (hitBary2)
        *hitBary2 = host::toFloat(hit.baryB);
    return true;
}

} // namespace

MMeshIsectAccelParams MFnMesh::uniformGridParams(int xDiv, int yDiv, int zDiv)
{
    MMeshIsectAccelParams params;
    params.fType = 1;
    params.fXDiv = xDiv;
    params.fYDiv = yDiv;
    params.fZDiv = zDiv;
    return params;
}

MMeshIsectAccelParams MFnMesh::autoUniformGridParams()
{
    MMeshIsectAccelParams params;
    params.fType = 2;
    return params;
}

bool MFnMesh::closestIntersection(const MFloatPoint& raySource, const MFloatVector& rayDirection,
                                  const MIntArray* faceIds, const MIntArray* triIds, bool /*idsSorted*/,
                                  MSpace::Space space, float maxParam, bool testBothDirections,
                                  MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint, float* hitRayParam,
                                  int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2, float tolerance,
                                  MStatus* ReturnStatus)
{
    return nearestHit(fObject, fPath, raySource, rayDirection, faceIds, triIds, space, maxParam, testBothDirections,
                      accelParams, hitPoint, hitRayParam, hitFace, hitTriangle, hitBary1, hitBary2, tolerance,
                      ReturnStatus);
}

bool MFnMesh::anyIntersection(const MFloatPoint& raySource, const MFloatVector& rayDirection,
                              const MIntArray* faceIds, const MIntArray* triIds, bool /*idsSorted*/,
                              MSpace::Space space, float maxParam, bool testBothDirections,
                              MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint, float* hitRayParam,
                              int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2, float tolerance,
                              MStatus* ReturnStatus)
{
    // Any hit may be reported; the nearest is, so that the answer never depends on the
    // accelerator's traversal order.
    return nearestHit(fObject, fPath, raySource, rayDirection, faceIds, triIds, space, maxParam, testBothDirections,
                      accelParams, hitPoint, hitRayParam, hitFace, hitTriangle, hitBary1, hitBary2, tolerance,
                      ReturnStatus);
}

bool MFnMesh::allIntersections(const MFloatPoint& raySource, const MFloatVector& rayDirection,
                               const MIntArray* faceIds, const MIntArray* triIds, bool /*idsSorted*/,
                               MSpace::Space space, float maxParam, bool testBothDirections,
                               MMeshIsectAccelParams* accelParams, bool sortHits, MFloatPointArray& hitPoints,
                               MFloatArray* hitRayParams, MIntArray* hitFaces, MIntArray* hitTriangles,
                               MFloatArray* hitBary1s, MFloatArray* hitBary2s, float tolerance,
                               MStatus* ReturnStatus)
{
    hitPoints.clear();
    for (MFloatArray* a : {hitRayParams, hitBary1s, hitBary2s})
        if (a)
            a->clear();
    for (MIntArray* a : {hitFaces, hitTriangles})
        if (a)
            a->clear();

    RaySetup setup;
    MStatus status = setup.prepare(fObject, fPath, raySource, rayDirection, faceIds, triIds, space, maxParam,
                                   testBothDirections, accelParams, tolerance);
    TQHOST_SET_STATUS(ReturnStatus, status);
    if (!status)
        return false;
    // Reused per thread: a stroke asks thousands of these.
    thread_local std::vector<host::RayHit> hits;
    host::intersectAll(*setup.query.mesh, setup.ray, setup.filterOrNull(), setup.accel.get(), sortHits, hits);
    const unsigned n = static_cast<unsigned>(hits.size());
    hitPoints.setLength(n);
    for (MFloatArray* a : {hitRayParams, hitBary1s, hitBary2s})
        if (a)
            a->setLength(n);
    for (MIntArray* a : {hitFaces, hitTriangles})
        if (a)
            a->setLength(n);
    for (unsigned k = 0; k < n; ++k) {
        const host::RayHit& hit = hits[k];
        hitPoints[k] = pointOnRay(raySource, rayDirection, hit.t);
        if (hitRayParams)
            (*hitRayParams)[k] = host::toFloat(hit.t);
        if (hitFaces)
            (*hitFaces)[k] = hit.face;
        if (hitTriangles)
            (*hitTriangles)[k] = hit.triangle;
        if (hitBary1s)
            (*hitBary1s)[k] = host::toFloat(hit.baryA);
        if (hitBary2s)
            (*hitBary2s)[k] = host::toFloat(hit.baryB);
    }
    return n > 0;
}

MStatus MFnMesh::freeCachedIntersectionAccelerator()
{
    MStatus status;
    const host::MeshGeometry* mesh = host::readAttached(fObject, fPath, &status);
    if (mesh)
        mesh->dropAccelerator();
    return status;
}

MString MFnMesh::cachedIntersectionAcceleratorInfo(MStatus* ReturnStatus)
{
    MStatus status;
    const host::MeshGeometry* mesh = host::readAttached(fObject, fPath, &status);
    TQHOST_SET_STATUS(ReturnStatus, status);
    std::shared_ptr<host::MeshAccelerator> accel = mesh ? mesh->cachedAccelerator() : nullptr;
    if (!accel || accel->version() != mesh->version())
        return MString();
    char text[160];
    if (accel->usable())
        std::snprintf(text, sizeof text, "bounding volume hierarchy of %d triangles, (build time %.6fs)",
                      accel->numTriangles(), accel->buildSeconds());
    else
        std::snprintf(text, sizeof text, "no hierarchy, %d triangles tested one by one", accel->numTriangles());
    return MString(text);
}

namespace {

// The closest point in object space to a point given in `space`, or a failed status.
MStatus closestOnMesh(const MObject& object, const MDagPath& path, const MPoint& toThisPoint, MSpace::Space space,
                      MMeshIsectAccelParams* accelParams, QuerySpace& query, host::SurfacePoint& found)
{
    MStatus status = resolveQuery(object, path, space, query);
    if (!status)
        return status;
    if (!std::isfinite(toThisPoint.x) || !std::isfinite(toThisPoint.y) || !std::isfinite(toThisPoint.z))
        return MStatus::kInvalidParameter;
    const double given[3] = {toThisPoint.x, toThisPoint.y, toThisPoint.z};
    double local[3];
    query.space.pointToObject(given, local);
    std::shared_ptr<host::MeshAccelerator> accel = accelParams ? host::acceleratorFor(*query.mesh) : nullptr;
    if (!host::closestPoint(*query.mesh, local, std::numeric_limits<double>::infinity(), accel.get(), found))
        return MStatus::kFailure;
    return MStatus::kSuccess;
}

} // namespace

MStatus MFnMesh::getClosestPointAndNormal(const MPoint& toThisPoint, MPoint& theClosestPoint, MVector& theNormal,
                                          MSpace::Space space, int* closestPolygon,
                                          MMeshIsectAccelParams* accelParams) const
{
    QuerySpace query;
    host::SurfacePoint found;
    MStatus status = closestOnMesh(fObject, fPath, toThisPoint, space, accelParams, query, found);
    if (!status)
        return status;
    double placed[3];
    query.space.pointFromObject(found.point, placed);
    theClosestPoint = MPoint(placed[0], placed[1], placed[2]);
    theNormal = query.space.normalFromObject(query.mesh->polygonNormal(found.face));
    if (closestPolygon)
        *closestPolygon = found.face;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getClosestPoint(const MPoint& toThisPoint, MPoint& theClosestPoint, MSpace::Space space,
                                 int* closestPolygon, MMeshIsectAccelParams* accelParams) const
{
    QuerySpace query;
    host::SurfacePoint found;
    MStatus status = closestOnMesh(fObject, fPath, toThisPoint, space, accelParams, query, found);
    if (!status)
        return status;
    double placed[3];
    query.space.pointFromObject(found.point, placed);
    theClosestPoint = MPoint(placed[0], placed[1], placed[2]);
    if (closestPolygon)
        *closestPolygon = found.face;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getClosestNormal(const MPoint& toThisPoint, MVector& theNormal, MSpace::Space space,
                                  int* closestPolygon, MMeshIsectAccelParams* accelParams) const
{
    QuerySpace query;
    host::SurfacePoint found;
    MStatus status = closestOnMesh(fObject, fPath, toThisPoint, space, accelParams, query, found);
    if (!status)
        return status;
    theNormal = query.space.normalFromObject(query.mesh->polygonNormal(found.face));
    if (closestPolygon)
        *closestPolygon = found.face;
    return MStatus::kSuccess;
}
