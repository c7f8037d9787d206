// The redraw family of the tool command: the last patch is generated again, along a new
// stroke or from its rows as they stand, without a new step in the mesh's history. Its patch
// node is switched to pass-through, which shows the mesh as it was before the patch; the faces
// are built again on that, the node is fed the result and switched on again. The vertices of
// the patch keep their numbers when the spans stay, so positions can undo a redraw.

#include "command/appendRows.h"
#include "command/buildPatchFaces.h"
#include "command/projectVertices.h"
#include "command/tqSarnToolCmd.h"
#include "kernel/components.h"
#include "kernel/debugDump.h"
#include "kernel/indicesToPoints.h"
#include "kernel/meshQueries.h"
#include "kernel/nodeLookup.h"
#include "kernel/patchPlumbing.h"
#include "kernel/resample.h"
#include "kernel/shadowRows.h"
#include "kernel/stackShadow.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>

#include <ctime>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kToolCommand;
constexpr int kFewestClosedSpans = 3;

MStatus reported(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

MStatus failWith(const char* /*message*/) { return MStatus::kInvalidParameter; }

MDagPath pathOf(MFnMesh& fnMesh)
{
    MDagPath path;
    fnMesh.getPath(path);
    if (!path.isValid()) {
        MStatus ignored;
        path = findMeshByName(fnMesh.name(), ignored);
    }
    return path;
}

MPointArray allWorldPositions(const MDagPath& meshPath, MStatus& status)
{
    MPointArray positions;
    MItGeometry it(meshPath, &status);
    if (status)
        status = it.allPositions(positions, MSpace::kWorld);
    return positions;
}

} // namespace

MStatus tqSarnToolCmd::redrawAlongStroke(const MDagPath& mesh, MMeshIsectAccelParams& accelParams)
{
    const std::clock_t started = std::clock(); // a timing note nothing reads
    (void)started;
    MPointArray stroke;
    readPointArrayAttr(storeAttr::kStrokesNondestruct, stroke, findStoreNode());
    MIntArray shadow1, shadow2, shadow3;
    readShadowIndices(shadow1, shadow2, shadow3);
    MStatus status;
    const MPointArray firstRow = vertexPositions(shadow1, mesh, status);
    const int n = static_cast<int>(shadow1.length());
    const int vSpans = getVSpans();
    if (stroke.length() < 2)
        return MStatus::kSuccess;
    MObject node;
    if (!patchNodeOfActiveMesh(node, status))
        return failWith("cannot find previous patch");

    const MPointArray guide = resampleRow(stroke, vSpans);
    const RowList rows = rowsAlongStroke(firstRow, guide);
    setUSpans(static_cast<int>(firstRow.length()) - 1);
    if (!(status = suspendPatchNode(node)))
        return reported(status, __LINE__);

    MFnMesh fnMesh(mesh);
    const int oldCount = fnMesh.numVertices();
    clearTweaks();
    bool ok = false;
    MObject owner;
    const MIntArray newFaces =
        buildPatchFaces(fnMesh, rows, static_cast<unsigned int>(n > 1 ? n - 1 : 0), 1, false, ok, owner);
    MObject added = deltaVertices(oldCount, fnMesh.numVertices());
    MStatus ignored;
    const MIntArray guideIndices = indicesToPoints(mesh, guide, ignored);
    const bool flip = projectVertices(pathOf(fnMesh), added, accelParams, status);
    if (!(status = feedPatchNode(fnMesh, flip, node, newFaces)))
        return status;
    if (!(status = resumePatchNode(node)))
        return reported(status, __LINE__);

    writeShadowIndices(shadow1, MIntArray(), guideIndices);
    repositionShadow(shadow1, MIntArray(), guideIndices);
    writeNewFaces(newFaces);
    clearStrokes();
    clearTweaks();
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::rebuildPatchFromShadow(const MDagPath& mesh, MMeshIsectAccelParams& accelParams,
                                              bool closedFlag)
{
    const std::clock_t started = std::clock(); // a timing note nothing reads
    (void)started;
    MStatus status;
    const RowList rows = readShadowRows(status);
    MObject node;
    if (rows.size() < 2 || !patchNodeOfActiveMesh(node, status))
        return MStatus::kFailure;
    MIntArray shadow1, shadow2, shadow3;
    readShadowIndices(shadow1, shadow2, shadow3);
    setUSpans(static_cast<int>(rows[0].length()) - 1);
    if (!(status = suspendPatchNode(node)))
        return reported(status, __LINE__);

    MFnMesh fnMesh(mesh);
    const int oldCount = fnMesh.numVertices();
    const int vSpans = getVSpans();
    const int uSpans = getUSpans();
    bool ok = false;
    MObject owner;
    const MIntArray newFaces = buildPatchFaces(fnMesh, rows, static_cast<unsigned int>(uSpans),
                                               static_cast<unsigned int>(vSpans), closedFlag, ok, owner);
    if (newFaces.length() == 0) {
        resumePatchNode(node);
        finishPatchEdit(node);
        return status;
    }
    // Deliberate: the numbers oldCount + 1 to the vertex count, not oldCount to count - 1: the
    // first new vertex stays where it was built, and the last number lies past the end (the
    // host's walk skips it). Moving the first vertex would move the seam that stitches the
    // patch to its neighbour.
    MObject added = rangeDifferenceComponent(oldCount, fnMesh.numVertices());
    const bool flip = projectVertices(pathOf(fnMesh), added, accelParams, status);
    if (!(status = feedPatchNode(fnMesh, flip, node, newFaces)))
        return status;
    resumePatchNode(node);

    MIntArray last = calculateLAST(uSpans, vSpans, oldCount);
    if (playerLoopClosed()) {
        MPointArray outerPoints;
        MIntArray outerIndices;
        reported(stackSlices(outerPoints, outerIndices), __LINE__);
        MIntArray first, third;
        readShadowIndices(first, last, third);
    } else {
        writeShadowIndices(shadow1, last, MIntArray());
        refreshShadowRows();
    }
    writePlayerVertices(last);
    writePlayersFromVertices(last);
    writeNewFaces(newFaces);
    clearTweaks();
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::redrawPatchFromStrokes(const MDagPath& mesh, MMeshIsectAccelParams& accelParams,
                                              bool closedFlag)
{
    MStatus status;
    const RowList rows = readGuideRows(status);
    MObject node;
    MStatus lookup;
    if (rows.size() < 2 || !patchNodeOfActiveMesh(node, lookup))
        return MStatus::kSuccess;
    reported(saveStoreState("undo"), __LINE__);

    const int countBefore = vertexCount(mesh);
    if (!(status = suspendPatchNode(node)))
        return reported(status, __LINE__);
    const int countNow = vertexCount(mesh);
    // Deliberate: with the counts equal the function set stays unattached, and addPolygon
    // builds a throw-away mesh that is deleted below once its faces are fed to the node.
    MFnMesh fnMesh;
    if (countBefore != countNow)
        fnMesh.setObject(mesh);

    const int vSpans = getVSpans();
    int uSpans = getUSpans();
    if (closedFlag && uSpans < kFewestClosedSpans)
        uSpans = kFewestClosedSpans; // for this call only
    clearTweaks();
    bool ok = false;
    MObject owner;
    const MIntArray newFaces = buildPatchFaces(fnMesh, rows, static_cast<unsigned int>(uSpans + 1),
                                               static_cast<unsigned int>(vSpans), closedFlag, ok, owner);
    const MDagPath built = pathOf(fnMesh);
    // Deliberate: every vertex is projected again but vertex 0, whose number starts the range
    // one too late, and the last number lies past the end; the neighbours of the patch are on
    // the surface already and stay there.
    MObject added = rangeDifferenceComponent(0, fnMesh.numVertices());
    const bool flip = projectVertices(built, added, accelParams, status);
    if (!(status = feedPatchNode(fnMesh, flip, node, newFaces)))
        return status;
    reported(deleteThrowAwayMesh(owner, mesh), __LINE__);

    resumePatchNode(node);
    stackShadow();
    clearTweaks();
    refreshShadowRows();
    writeNewFaces(newFaces);
    return reported(saveStoreState("redo"), __LINE__);
}

MStatus tqSarnToolCmd::placeVerticesOnStroke(const MPointArray& stroke, const MIntArray& vertices,
                                             const MDagPath& meshPath, MPointArray& positions)
{
    if (vertices.length() == 0)
        return MStatus::kInvalidParameter;
    const MPointArray samples = resampleRow(stroke, static_cast<int>(vertices.length()));
    if (samples.length() != vertices.length())
        return MStatus::kInvalidParameter;
    MStatus status;
    MPointArray all = allWorldPositions(meshPath, status);
    if (!status)
        return reported(status, __LINE__);
    for (unsigned int i = 0; i < vertices.length(); ++i) {
        if (vertices[i] < 0 || static_cast<unsigned int>(vertices[i]) >= all.length())
            return failWith("vertex of the player row is not on the mesh");
    }
    for (unsigned int i = 0; i < vertices.length(); ++i)
        all[static_cast<unsigned int>(vertices[i])] = samples[i];
    positions = all;
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::redrawPatch(const MPointArray& stroke, const MPointArray& positionsBefore,
                                   MMeshIsectAccelParams& accelParams, bool closedFlag,
                                   const SpanIndices& beforeRows, const SpanIndices& afterRows)
{
    MStatus status = saveStoreState("undo");
    const RowList rows = readShadowRows(status);
    if (rows.size() < 2)
        return MStatus::kUnknownParameter;
    const MPointArray third = rows.size() > 2 ? rows[2] : MPointArray();
    writeShadowStrokes(rows[0], stroke, third);
    setUSpans(static_cast<int>(rows[0].length()) - 1);

    const MDagPath mesh = getActiveMeshPath();
    if (!(status = rebuildPatchFromShadow(mesh, accelParams, closedFlag)))
        return reported(status, __LINE__);
    const MPointArray after = allWorldPositions(mesh, status);
    if (!status)
        return reported(status, __LINE__);
    setRedrawPatchPositions(positionsBefore, after);
    saveStoreState("redo");
    setSpanIndices(beforeRows.playerVertices, beforeRows.shadowIndices1, beforeRows.shadowIndices2,
                   beforeRows.shadowIndices3, afterRows.playerVertices, afterRows.shadowIndices1,
                   afterRows.shadowIndices2, afterRows.shadowIndices3);
    reported(applyPositions(mesh, afterPositions), __LINE__);
    return finalize();
}

MStatus tqSarnToolCmd::redrawBoundary(const MPointArray& stroke, const MPointArray& positionsBefore,
                                      const SpanIndices& beforeRows, const MIntArray& afterPlayerVertices)
{
    MStatus status;
    const MDagPath mesh = getActiveMeshPath();
    const MIntArray player = readPlayerVertices(status);
    MPointArray positions;
    if (!(status = placeVerticesOnStroke(stroke, player, mesh, positions)))
        return status;
    setRedrawBoundaryPositions(positionsBefore, positions);
    setSpanIndices(beforeRows.playerVertices, beforeRows.shadowIndices1, beforeRows.shadowIndices2,
                   beforeRows.shadowIndices3, afterPlayerVertices, MIntArray(), MIntArray(), MIntArray());
    if (!(status = redoIt()))
        return status;
    reported(finalize(), __LINE__);
    clearStrokes();
    writePlayersFromVertices(readPlayerVertices(status));
    return writeNewFaces(MIntArray());
}
