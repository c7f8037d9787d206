// MMeshIntersector and MPointOnMesh.

#include <maya/MMeshIntersector.h>

#include "dg/access.h"
#include "intersect/meshQueries.h"
#include "intersect/spaceTransforms.h"
#include "mesh/meshAccess.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include <maya/MIntArray.h>
#include <maya/MObject.h>

#include <cmath>
#include <limits>
#include <vector>

namespace host {

// What create() captured: a share of the mesh payload (so later edits of the mesh detach
// from it instead of changing it), its accelerator and the matrices.
class IntersectorSnapshot {
public:
    std::shared_ptr<MeshDataBody> data;
    std::shared_ptr<MeshAccelerator> accel;
    SpaceTransform space;

    const MeshGeometry& mesh() const { return data->read(); }
};

} // namespace host

MMeshIntersector::MMeshIntersector() = default;
MMeshIntersector::~MMeshIntersector() = default;

const char* MMeshIntersector::className() { return "MMeshIntersector"; }

MStatus MMeshIntersector::create(MObject& meshObject, const MMatrix& matrix, const MIntArray* facesOfInterest)
{
    fSnapshot.reset();
    host::MeshTarget target;
    MStatus status = host::resolveMeshTarget(meshObject, MDagPath(), target);
    if (!status)
        return status;
    MObject data = target.shape ? host::shapeOutput(target.shape, &status) : target.data;
    auto body = host::Access::as<host::MeshDataBody>(data);
    if (!status || !body)
        return MStatus::kFailure;

    auto snapshot = std::make_shared<host::IntersectorSnapshot>();
    if (!snapshot->space.set(matrix))
        return MStatus::kInvalidParameter;
    snapshot->data = std::static_pointer_cast<host::MeshDataBody>(body->share());
    const host::MeshGeometry& mesh = snapshot->mesh();
    if (facesOfInterest) {
        std::vector<int> faces;
        faces.reserve(facesOfInterest->length());
        for (unsigned k = 0; k < facesOfInterest->length(); ++k) {
            const int face = (*facesOfInterest)[k];
            if (!mesh.validPolygon(face))
                return MStatus::kInvalidParameter;
            faces.push_back(face);
        }
        snapshot->accel = std::make_shared<host::MeshAccelerator>(mesh, &faces);
    } else {
        snapshot->accel = host::acceleratorFor(mesh);
    }
    fSnapshot = std::move(snapshot);
    return MStatus::kSuccess;
}

bool MMeshIntersector::isCreated() const { return fSnapshot != nullptr; }

MStatus MMeshIntersector::getClosestPoint(const MPoint& point, MPointOnMesh& meshPoint, double maxDistance) const
{
    if (!fSnapshot)
        return MStatus::kFailure;
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z) || std::isnan(maxDistance))
        return MStatus::kInvalidParameter;
    if (maxDistance < 0)
        return MStatus::kFailure;
    const host::SpaceTransform& space = fSnapshot->space;
    const double given[3] = {point.x, point.y, point.z};
    double local[3];
    space.pointToObject(given, local);

    // Search object space far enough to reach every point within maxDistance in the point's
    // space, then hold the answer to maxDistance where it was asked.
    const bool unbounded = maxDistance >= DBL_MAX;
    const double radius = unbounded ? std::numeric_limits<double>::infinity() : maxDistance * space.objectReach();
    host::SurfacePoint found;
    if (!host::closestPoint(fSnapshot->mesh(), local, radius, fSnapshot->accel.get(), found))
        return MStatus::kFailure;
    if (!unbounded) {
        double placed[3];
        space.pointFromObject(found.point, placed);
        double d2 = 0;
        for (int k = 0; k < 3; ++k)
            d2 += (placed[k] - given[k]) * (placed[k] - given[k]);
        if (!(d2 <= maxDistance * maxDistance))
            return MStatus::kFailure;
    }
    const MVector normal = fSnapshot->mesh().polygonNormal(found.face);
    meshPoint.fPoint = MFloatPoint(host::toFloat(found.point[0]), host::toFloat(found.point[1]),
                                   host::toFloat(found.point[2]));
    meshPoint.fNormal = MFloatVector(host::toFloat(normal.x), host::toFloat(normal.y),
                                     host::toFloat(normal.z));
    meshPoint.fFace = found.face;
    meshPoint.fTriangle = found.triangle;
    meshPoint.fBaryU = host::toFloat(found.baryA);
    meshPoint.fBaryV = host::toFloat(found.baryB);
    return MStatus::kSuccess;
}

MPointOnMesh::MPointOnMesh() = default;

MFloatPoint& MPointOnMesh::getPoint() { return fPoint; }
MFloatVector& MPointOnMesh::getNormal() { return fNormal; }

void MPointOnMesh::getBarycentricCoords(float& u, float& v) const
{
    u = fBaryU;
    v = fBaryV;
}

int MPointOnMesh::faceIndex() const { return fFace; }
int MPointOnMesh::triangleIndex() const { return fTriangle; }
