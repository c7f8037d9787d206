#include "kernel/meshQueries.h"

#include "kernel/components.h"
#include "store/logModules.h"
#include "store/storeLookup.h"

#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MFn.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;
constexpr float kMaxParam = 10000.0f;
constexpr float kHitTolerance = 0.001f;

} // namespace

bool rayHitAtPixel(const MDagPath& meshPath, MFloatPointArray& hitPoints, MVector& normal, const M3dView& view,
                   MMeshIsectAccelParams* accelParams, short x, short y, MIntArray& hitFaces, bool wantNormal)
{
    if (x <= 0 || y <= 0 || !meshPath.isValid())
        return false;

    MPoint source;
    MVector direction;
    MStatus status = view.viewToWorld(x, y, source, direction);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "rayHitAtPixel");
        return false;
    }
    MFnMesh mesh(meshPath, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "rayHitAtPixel");
        return false;
    }
    const MFloatPoint raySource(float(source.x), float(source.y), float(source.z));
    const MFloatVector rayDirection(float(direction.x), float(direction.y), float(direction.z));
    const bool hit = mesh.allIntersections(raySource, rayDirection, nullptr, nullptr, true, MSpace::kWorld, kMaxParam,
                                           false, accelParams, true, hitPoints, nullptr, &hitFaces, nullptr, nullptr,
                                           nullptr, kHitTolerance, &status);
    if (!hit || !status)
        return false;
    if (wantNormal && hitFaces.length() != 0) {
        status = mesh.getPolygonNormal(hitFaces[0], normal, MSpace::kWorld);
        if (!status)
            status.pAPIerror(kModule, __LINE__, "rayHitAtPixel");
    }
    return true;
}

MPointArray vertexPositions(const MIntArray& indices, const MDagPath& meshPath, MStatus& status)
{
    status = MStatus::kSuccess;
    MPointArray result;
    const MDagPath path = meshPath.isValid() ? meshPath : getActiveMeshPath();
    MObject wholeMesh;
    MItMeshVertex it(path, wholeMesh, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "vertexPositions");
        return result;
    }
    const int count = it.count();
    for (const int index : indices) {
        if (!(count > index - 1)) {
            status = MStatus::kFailure;
            return MPointArray();
        }
        int previous = 0;
        status = it.setIndex(index, previous);
        if (!status) {
            status.pAPIerror(kModule, __LINE__, "vertexPositions");
            return MPointArray();
        }
        MStatus positionStatus;
        const MPoint position = it.position(MSpace::kWorld, &positionStatus);
        if (!positionStatus)
            positionStatus.pAPIerror(kModule, __LINE__, "vertexPositions");
        result.append(position);
    }
    return result;
}

MPointArray allVertexPositions(MStatus& status)
{
    MPointArray positions;
    MItGeometry it(getActiveMeshPath(), &status);
    if (status)
        status = it.allPositions(positions, MSpace::kWorld);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "allVertexPositions");
    return positions;
}

int vertexCount(const MDagPath& meshPath)
{
    if (!meshPath.isValid())
        return 0;
    MStatus status;
    MFnMesh mesh(meshPath, &status);
    if (!status)
        return 0;
    const int count = mesh.numVertices(&status);
    return status ? count : 0;
}

bool hasInteriorVertex(const MDagPath& meshPath, const MIntArray& indices)
{
    MObject component = componentFromIndices(indices, MFn::kMeshVertComponent);
    MStatus status;
    MItMeshVertex it(meshPath, component, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "hasInteriorVertex");
        return false;
    }
    for (; !it.isDone(); it.next()) {
        if (!it.onBoundary())
            return true;
    }
    return false;
}

} // namespace tq
