#include "command/projectVertices.h"

#include "command/tqSarnToolCmd.h"
#include "kernel/indexArrays.h"
#include "kernel/nodeLookup.h"
#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/tqSarn.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPointArray.h>
#include <maya/MVectorArray.h>

#include <utility>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kToolCommand;

// Whether the patch opposes the source, from the first vertex of shadow row 2.
bool opposesSource(MFnMesh& source, MStatus& status)
{
    MIntArray row1, row2, row3;
    readShadowIndices(row1, row2, row3);
    if (row2.length() == 0)
        return false;
    MObject wholeMesh;
    MItMeshVertex it(getActiveMeshPath(), wholeMesh, &status);
    if (!status)
        return false;
    int previous = 0;
    if (!(status = it.setIndex(row2[0], previous)))
        return false;
    MVector vertexNormal;
    it.getNormal(vertexNormal, MSpace::kWorld);
    MVector sourceNormal;
    status = source.getClosestNormal(it.position(MSpace::kWorld), sourceNormal, MSpace::kWorld);
    return vertexNormal * sourceNormal <= 0.0;
}

} // namespace

bool projectVertices(const MDagPath& meshPath, MObject& vertices, MMeshIsectAccelParams& accelParams,
                     MStatus& status)
{
    status = MStatus::kSuccess;
    MStatus sourceStatus;
    const MDagPath sourcePath = getSourceMeshPath(sourceStatus);
    MFnMesh source(sourcePath, &sourceStatus);
    if (!sourceStatus)
        sourceStatus.pAPIerror(kModule, __LINE__, "projectVertices: source mesh");

    if (vertices.isNull())
        return opposesSource(source, status);

    // The stored normals are one per source face (millions on a dense scan): only those of
    // the faces hit are read, through the attribute's data, instead of a copy of them all on
    // every projection (each drag event of a live change of spans projects).
    MStatus normalsStatus;
    const MObject normalsData = readArrayData(storeAttr::kInputNormals, findStoreNode(), normalsStatus);
    if (!normalsStatus)
        normalsStatus.pAPIerror(kModule, __LINE__, "projectVertices: inputNormals");
    MFnVectorArrayData faceNormals;
    unsigned int normalCount = 0;
    if (!normalsData.isNull() && faceNormals.setObject(normalsData))
        normalCount = faceNormals.length();

    MDagPath path = meshPath;
    if (!path.isValid())
        path = findMeshByName(getActiveMeshPath().fullPathName(), status);

    MItGeometry it(path, vertices, &status);
    if (!status)
        return false;
    MPointArray positions;
    it.allPositions(positions, MSpace::kWorld);

    // The vertex normals of the whole mesh in one call, looked up by the walk's index: a call
    // per vertex would find the mesh and its world matrix again each time.
    MFloatVectorArray vertexNormals;
    MFnMesh walked(path, &status);
    if (!status || !(status = walked.getVertexNormals(true, vertexNormals, MSpace::kWorld)))
        return false;

    int vote = 0;
    MFloatPointArray hitPoints;
    MFloatArray hitParams;
    MIntArray hitFaces;
    const float maxDistance = static_cast<float>(tqSarnToolCmd::distanceSnap());
    for (unsigned int i = 0; !it.isDone() && i < positions.length(); it.next(), ++i) {
        const int vertex = it.index();
        if (vertex < 0 || static_cast<unsigned int>(vertex) >= vertexNormals.length())
            continue;
        const MPoint position = positions[i];
        const MVector normal(vertexNormals[static_cast<unsigned int>(vertex)]);
        const MFloatPoint raySource(float(position.x), float(position.y), float(position.z));
        const MFloatVector rayDirection(float(-normal.x), float(-normal.y), float(-normal.z));
        const bool hit = source.allIntersections(raySource, rayDirection, nullptr, nullptr, false, MSpace::kWorld,
                                                 maxDistance, true, &accelParams, false, hitPoints, &hitParams,
                                                 &hitFaces, nullptr, nullptr, nullptr);
        if (!hit || hitPoints.length() == 0)
            continue;
        const unsigned int k = nearestToZeroIndex(hitParams);
        const int face = hitFaces[k];
        // A source face past the stored normals (a source edited since activation) votes
        // against, as an opposing normal would.
        const bool agrees = face >= 0 && static_cast<unsigned int>(face) < normalCount &&
                            std::as_const(faceNormals)[static_cast<unsigned int>(face)] * normal > 0.0;
        vote += agrees ? 1 : -1;
        positions[i] = MPoint(hitPoints[k]);
    }
    MStatus written = it.setAllPositions(positions, MSpace::kWorld);
    if (!written)
        written.pAPIerror(kModule, __LINE__, "projectVertices");
    return vote < 1;
}

} // namespace tq
