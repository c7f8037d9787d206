// The append operations of the tool command: the retopo mesh grows from the player row,
// along one stroke or between the strokes, as one step with its own patch node.

#include "command/appendRows.h"
#include "command/buildPatchFaces.h"
#include "command/projectVertices.h"
#include "command/tqSarnToolCmd.h"
#include "kernel/components.h"
#include "kernel/indicesToPoints.h"
#include "kernel/meshQueries.h"
#include "kernel/patchPlumbing.h"
#include "kernel/resample.h"
#include "kernel/rowArrays.h"
#include "kernel/shadowRows.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MFnMesh.h>

#include <ctime>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kToolCommand;

MStatus reported(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

// The patch node attached for this operation, or a null node when it is not there.
MObject patchNodeNamed(const MString& name)
{
    MObject node;
    findPatchNodeByName(name, node);
    return node;
}

} // namespace

MStatus tqSarnToolCmd::feedPatchNode(MFnMesh& fnMesh, bool flip, const MObject& patchNode, const MIntArray& newFaces)
{
    PatchFeed feed;
    MStatus status = readPatchFeed(fnMesh, feed);
    if (!status)
        return reported(status, __LINE__);
    if (flip) {
        MIntArray& corners = feed.polygonConnects;
        const long long start = static_cast<long long>(corners.length()) - 4LL * newFaces.length();
        for (long long i = start < 0 ? 0 : start; i + 3 < static_cast<long long>(corners.length()); i += 4) {
            const unsigned int at = static_cast<unsigned int>(i);
            std::swap(corners[at], corners[at + 3]);
            std::swap(corners[at + 1], corners[at + 2]);
        }
    }
    afterFeed = feed;
    return writeAfterFeed(patchNode);
}

MStatus tqSarnToolCmd::appendPatchAlongStroke(const MPointArray& playerPoints, MMeshIsectAccelParams& accelParams)
{
    const std::clock_t started = std::clock(); // a timing note nothing reads
    (void)started;
    fMode = kAppendPatch;
    const MDagPath mesh = getActiveMeshPath();
    patchName = uniqueName("tqPatch");
    clearAfterFeed();
    redoIt(); // attaches the new patch node; the refused store restore is expected here

    const int n = static_cast<int>(playerPoints.length());
    const int vSpans = getVSpans();
    setUSpans(n - 1);

    MStatus status;
    RowList rows = readStrokeRows(status);
    if (!status)
        return reported(status, __LINE__);
    if (rows.size() != 1) {
        finishPatchEdit(MObject::kNullObj);
        return MStatus::kSuccess;
    }
    anchorStrokeToPlayerMidpoint(rows);
    const MPointArray guide = resampleRow(rows[0], vSpans);
    const RowList bandRows = rowsAlongStroke(playerPoints, guide);
    const int oldCount = vertexCount(mesh);

    MFnMesh fnMesh(mesh);
    bool ok = false;
    MObject lastOwner;
    const MIntArray newFaces = buildPatchFaces(fnMesh, bandRows, static_cast<unsigned int>(n > 1 ? n - 1 : 0), 1,
                                               false, ok, lastOwner);
    MObject added = deltaVertices(oldCount, fnMesh.numVertices());
    MStatus ignored;
    const MIntArray guideIndices = indicesToPoints(mesh, guide, ignored);
    const bool flip = projectVertices(mesh, added, accelParams, status);
    if (!(status = feedPatchNode(fnMesh, flip, patchNodeNamed(patchName), newFaces)))
        return status;

    const MIntArray first = readPlayerVertices(status);
    MIntArray dropped1, dropped2, dropped3;
    readShadowIndices(dropped1, dropped2, dropped3);
    writeShadowIndices(first, MIntArray(), guideIndices);
    repositionShadow(first, MIntArray(), guideIndices);

    // This append leaves no player row.
    const MObject store = findStoreNode();
    writePointArrayAttr(MPointArray(), storeAttr::kPlayerPoints, store);
    writePointArrayAttr(MPointArray(), storeAttr::kPlayersLine, store);
    writeIntArrayAttr(MIntArray(), storeAttr::kPlayerVertices, store);
    writeNondestructRows(rows);
    writeNewFaces(newFaces);
    clearStrokes();
    clearTweaks();
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::appendPatchBetweenStrokes(const MPointArray& playerPoints,
                                                 MMeshIsectAccelParams& accelParams, bool closedFlag)
{
    const std::clock_t started = std::clock(); // a timing note nothing reads
    (void)started;
    MStatus status = saveStoreState("undo");
    if (!status)
        return reported(status, __LINE__);
    fMode = kAppendPatch;
    patchName = uniqueName("tqPatch");
    const int spans = static_cast<int>(playerPoints.length()) - 1;

    insertPlayerStroke(playerPoints);
    const RowList rows = readStrokeRows(status);
    if (!status)
        return reported(status, __LINE__);
    clearAfterFeed();
    redoIt(); // attaches the new patch node

    const MDagPath mesh = getActiveMeshPath();
    const int oldCount = vertexCount(mesh);
    const int vSpans = getVSpans();
    MFnMesh fnMesh(mesh);
    bool ok = false;
    MObject lastOwner;
    const MIntArray newFaces = buildPatchFaces(fnMesh, rows, static_cast<unsigned int>(spans > 0 ? spans : 0),
                                               static_cast<unsigned int>(vSpans), closedFlag, ok, lastOwner);
    if (newFaces.length() == 0) {
        finishPatchEdit(MObject::kNullObj);
        return MStatus::kSuccess;
    }
    MObject added = strip_vertices(oldCount, fnMesh.numVertices(), status, mesh);
    const bool flip = projectVertices(mesh, added, accelParams, status);
    if (!(status = feedPatchNode(fnMesh, flip, patchNodeNamed(patchName), newFaces)))
        return status;

    MIntArray last = calculateLAST(spans, vSpans, oldCount);
    MStatus ignored;
    MIntArray first = indicesToPoints(mesh, playerPoints, ignored);
    if (anyShadowRowClosed())
        closeIndexRows(first, last);
    writeShadowIndices(first, last, MIntArray());
    refreshShadowRows();
    writeNewFaces(newFaces);
    writePlayersFromVertices(last);
    writePlayerVertices(last);
    clearStrokes();
    clearTweaks();
    return reported(saveStoreState("redo"), __LINE__);
}
