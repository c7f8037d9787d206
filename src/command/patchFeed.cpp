#include "command/patchFeed.h"

#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"

#include <maya/MItMeshPolygon.h>
#include <maya/MString.h>
#include <maya/MVector.h>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kToolCommand;

// The per-corner walk: for each polygon, each of its corners in order.
MStatus readFaceVertexNormals(PatchFeed& feed)
{
    MStatus status;
    MObject wholeMesh;
    MItMeshPolygon it(getActiveMeshPath(), wholeMesh, &status);
    if (!status)
        return status;
    for (; !it.isDone(); it.next()) {
        const unsigned int corners = it.polygonVertexCount();
        for (unsigned int i = 0; i < corners; ++i) {
            MVector normal;
            status = it.getNormal(i, normal, MSpace::kObject);
            if (!status)
                return status;
            feed.faceList.append(static_cast<int>(it.index()));
            feed.vertexList.append(static_cast<int>(it.vertexIndex(static_cast<int>(i))));
            feed.normals.append(normal);
        }
    }
    return MStatus::kSuccess;
}

MStatus readInto(MFnMesh& fnMesh, PatchFeed& feed)
{
    MStatus status;
    feed.polygonTotal = fnMesh.numPolygons(&status);
    if (!status)
        return status;
    feed.vertexTotal = fnMesh.numVertices(&status);
    if (!status)
        return status;
    if (!(status = fnMesh.getPoints(feed.vertices, MSpace::kObject)))
        return status;
    if (!(status = fnMesh.getVertices(feed.polygonCounts, feed.polygonConnects)))
        return status;
    const MString uvSet = fnMesh.currentUVSetName(&status);
    if (!status)
        return status;
    if (!(status = fnMesh.getUVs(feed.uValues, feed.vValues, &uvSet)))
        return status;
    if (!(status = readFaceVertexNormals(feed)))
        return status;
    if (!(status = fnMesh.getAssignedUVs(feed.uvCounts, feed.uvIds, &uvSet)))
        return status;
    const int edges = fnMesh.numEdges(&status);
    if (!status)
        return status;
    for (int e = 0; e < edges; ++e) {
        const bool smooth = fnMesh.isEdgeSmooth(e, &status);
        if (!status)
            return status;
        feed.smoothFlags.append(smooth ? 1 : 0);
        feed.edgeIds.append(e);
    }
    return MStatus::kSuccess;
}

} // namespace

MStatus readPatchFeed(MFnMesh& fnMesh, PatchFeed& feed)
{
    PatchFeed read;
    const MStatus status = readInto(fnMesh, read);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "readPatchFeed");
        return status;
    }
    feed = read;
    return MStatus::kSuccess;
}

MStatus writePatchFeed(const PatchFeed& feed, const MObject& patchNode)
{
    MStatus status;
    if (!(status = writePointArrayAttr(feed.vertices, "vertexarray", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.polygonCounts, "polycount", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.polygonConnects, "polyconnect", patchNode)))
        return status;
    if (!(status = writeIntAttr(feed.polygonTotal, "numpolys", patchNode)))
        return status;
    if (!(status = writeIntAttr(feed.vertexTotal, "numverts", patchNode)))
        return status;
    if (!(status = writeFloatArrayAttr(feed.uValues, "uarray", patchNode)))
        return status;
    if (!(status = writeFloatArrayAttr(feed.vValues, "varray", patchNode)))
        return status;
    if (!(status = writeVectorArrayAttr(feed.normals, "normalsin", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.faceList, "facelist", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.vertexList, "vertexlist", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.smoothFlags, "hardenvalues", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.edgeIds, "edgesharden", patchNode)))
        return status;
    if (!(status = writeIntArrayAttr(feed.uvCounts, "polycountUV", patchNode)))
        return status;
    return writeIntArrayAttr(feed.uvIds, "polyconnUV", patchNode);
}

} // namespace tq
