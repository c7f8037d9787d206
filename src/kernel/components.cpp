#include "kernel/components.h"

#include "kernel/debugDump.h"
#include "kernel/indexArrays.h"
#include "kernel/indicesToPoints.h"
#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItMeshPolygon.h>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

} // namespace

MObject componentFromIndices(const MIntArray& indices, MFn::Type kind)
{
    if (indices.length() == 0)
        return MObject::kNullObj;
    MFnSingleIndexedComponent fn;
    MStatus status;
    MObject component = fn.create(kind, &status);
    MIntArray elements(indices); // the host takes a modifiable array
    if (status)
        status = fn.addElements(elements);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "componentFromIndices");
        return MObject::kNullObj;
    }
    return component;
}

MObject newFacesVertexComponent(const MDagPath& meshPath, const MIntArray& faces)
{
    MIntArray faceList(faces);
    readIntArrayAttr(storeAttr::kNewFaces, faceList, findStoreNode());
    if (faceList.length() == 0)
        return MObject::kNullObj;

    MObject faceComponent = componentFromIndices(faceList, MFn::kMeshPolygonComponent);
    MStatus status;
    MItMeshPolygon it(meshPath, faceComponent, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "newFacesVertexComponent");
        return MObject::kNullObj;
    }
    MIntArray vertices;
    for (; !it.isDone(); it.next()) {
        MIntArray faceVertices;
        it.getVertices(faceVertices);
        for (const int v : faceVertices) {
            if (!arrayContains(v, vertices))
                vertices.append(v);
        }
    }
    return componentFromIndices(vertices, MFn::kMeshVertComponent);
}

MObject deltaVertices(int firstCount, int lastCount)
{
    MIntArray vertices;
    for (int v = lastCount - 1; v >= firstCount; --v)
        vertices.append(v);
    dumpIndices(vertices, "deltaVertices");
    return componentFromIndices(vertices, MFn::kMeshVertComponent);
}

MObject rangeDifferenceComponent(int firstCount, int lastCount)
{
    // The set difference of 1..lastCount less 1..firstCount.
    MIntArray vertices;
    for (int v = (firstCount > 0 ? firstCount : 0) + 1; v <= lastCount; ++v)
        vertices.append(v);
    return componentFromIndices(vertices, MFn::kMeshVertComponent);
}

MObject strip_vertices(int firstCount, int lastCount, MStatus& status, const MDagPath& meshPath)
{
    const RowList rows = readShadowRows(status);
    if (rows.size() < 2) {
        status = MStatus::kFailure;
        return MObject::kNullObj;
    }
    status = MStatus::kSuccess;
    const MDagPath path = meshPath.isValid() ? meshPath : getActiveMeshPath();
    MStatus ignored;
    MIntArray onRows = indicesToPoints(path, rows[0], ignored);
    const MIntArray second = indicesToPoints(path, rows[1], ignored);
    for (const int v : second)
        onRows.append(v);

    MIntArray vertices;
    for (int v = lastCount - 1; v >= firstCount; --v) {
        if (!arrayContains(v, onRows))
            vertices.append(v);
    }
    dumpIndices(vertices, "strip_vertices");
    return componentFromIndices(vertices, MFn::kMeshVertComponent);
}

} // namespace tq
