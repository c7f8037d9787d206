// Bridges and merges: with an anchor row selected, a middle-button press on a vertex of
// another border finds the row facing the anchors there (as long as theirs) and stores a
// preview for the overlay: Ctrl for a bridge, Shift (with no shadow) for a merge. The mesh
// does not change until Enter, which sends polyBridgeEdge, or moves and polyMergeVertex, to
// the host as one line of command text with undo on: the host's undo queue owns the change.
// With no anchors, a middle-Ctrl drag from one border vertex to another merges the two (the
// magnet, completed at release in eventDispatch.cpp).

#include "tool/tqSarnContext.h"

#include "tool/boundaryWalk.h"
#include "tool/fusePreview.h"
#include "tool/toolLog.h"

#include "kernel/commandTexts.h"
#include "kernel/components.h"
#include "kernel/debugDump.h"
#include "kernel/distances.h"
#include "kernel/indexArrays.h"
#include "kernel/meshQueries.h"
#include "kernel/screen.h"
#include "store/hostWidgets.h"
#include "store/infoTexts.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MGlobal.h>

#include <algorithm>

using tq::tool::logged;

namespace {

constexpr double kBridgePickPixels = 9.0;
constexpr double kMagnetPickPixels = 11.0;
constexpr int kPixelsPerDivision = 50;
constexpr int kMostDivisions = 50;
// `tq_bdiv` as the preview reads it when unset, and as the bridge at Enter reads it.
constexpr int kPreviewDivisions = 0;
constexpr int kBridgeDivisions = 1;

// The kinds of preview, as the store's `mode` holds them.
constexpr int kMergeMode = 0;
constexpr int kBridgeMode = 1;
constexpr int kBadBridgeMode = -1;

} // namespace


MStatus tqSarnContext::bridgePreview(int vertex)
{
    if (vertex == -1)
        vertex = pickBoundaryVertex(kBridgePickPixels, false);
    if (vertex == -1)
        return MStatus::kSuccess;
    if (anchorVertices.length() != 2)
        return MStatus::kSuccess;
    bridgeTargetVertices = oppositeRow(vertex);
    mergeTargetVertices.clear();
    tq::dumpIndices(bridgeTargetVertices, "fusevtx");
    return updateFusePreview(kBridgeMode);
}

MStatus tqSarnContext::mergePreview()
{
    const int vertex = pickBoundaryVertex(kBridgePickPixels, false);
    if (vertex == -1 || anchorVertices.length() != 2)
        return MStatus::kSuccess;
    bridgeTargetVertices = oppositeRow(vertex);
    mergeTargetVertices = bridgeTargetVertices;
    return updateFusePreview(kMergeMode);
}

MStatus tqSarnContext::magnetPreview()
{
    const int vertex = pickBoundaryVertex(kMagnetPickPixels, false);
    if (vertex == -1 || anchorVertices.length())
        return MStatus::kSuccess;
    magnetVertices.clear();
    magnetVertices.append(vertex);
    return writeMagnetPoints();
}

MStatus tqSarnContext::writeMagnetPoints()
{
    if (magnetVertices.length() == 0)
        return MStatus::kInvalidParameter;
    MIntArray firstTwo;
    for (unsigned int i = 0; i < magnetVertices.length() && i < 2; ++i)
        firstTwo.append(magnetVertices[i]);
    MStatus status;
    const MPointArray world = tq::vertexPositions(firstTwo, MDagPath(), status);
    if (!status)
        return logged(status, __LINE__);
    // Deliberate: the magnet's points are stored as view pixels, not world points; the
    // overlay draws them in 2D as they stand.
    MPointArray pixels;
    for (const MPoint& p : world)
        pixels.append(tq::worldToViewPoint(p));
    status = tq::writePointArrayAttr(pixels, tq::storeAttr::kMagnetPoints, tq::findStoreNode());
    tq::overlayChanged();
    return logged(status, __LINE__);
}

int tqSarnContext::rowDirectionEdge(const MDagPath& meshPath, int edgeA, int edgeB)
{
    if (anchorVertices.length() == 0)
        return 0;
    const MIntArray row = tq::edgesToVertices(meshPath, anchorPath, anchorVertices[0]);
    if (row.length() < 2)
        return 0;
    MStatus status;
    MIntArray firstTwo;
    firstTwo.append(row[0]);
    firstTwo.append(row[1]);
    const MPointArray along = tq::vertexPositions(firstTwo, meshPath, status);
    int a0, a1, b0, b1;
    if (!status || along.length() != 2 || !tq::edgeEnds(meshPath, edgeA, a0, a1) ||
        !tq::edgeEnds(meshPath, edgeB, b0, b1))
        return edgeB;
    const MVector direction = along[1] - along[0];
    const int shared = (a0 == b0 || a0 == b1) ? a0 : ((a1 == b1 || a1 == b0) ? a1 : -1);
    if (shared < 0)
        return edgeB;
    MIntArray ends;
    ends.append(shared);
    ends.append(a0 == shared ? a1 : a0);
    ends.append(b0 == shared ? b1 : b0);
    const MPointArray p = tq::vertexPositions(ends, meshPath, status);
    if (!status || p.length() != 3)
        return edgeB;
    // A tie goes to edgeB.
    return tq::scalarProjection(p[1] - p[0], direction) > tq::scalarProjection(p[2] - p[0], direction) ? edgeA
                                                                                                     : edgeB;
}

MIntArray tqSarnContext::oppositeRow(int vertex)
{
    const MDagPath mesh = tq::getActiveMeshPath();
    int edge1 = -1, edge2 = -1;
    tq::boundaryEdgesAt(mesh, tq::edgesAroundVertex(mesh, vertex), edge1, edge2);
    if (anchorVertices.length() == 0)
        return MIntArray();
    const MIntArray row = tq::edgesToVertices(mesh, anchorPath, anchorVertices[0]);
    const int rowLength = static_cast<int>(row.length());
    int start = rowDirectionEdge(mesh, edge1, edge2);
    int other = start == edge1 ? edge2 : edge1;
    if (reverseBridge)
        std::swap(start, other);
    // One edge more than the anchor row has: the walk makes L edges where the row has L - 1.
    MIntArray edges = tq::walkBoundarySteps(mesh, start, other, rowLength - 1);
    if (anchorVertices[0] == anchorVertices[anchorVertices.length() - 1])
        edges.append(other); // a closed anchor loop gets a closed facing row
    bridgeTargetEdges = edges;
    const MIntArray vertices = tq::edgesToVertices(mesh, edges, vertex);
    if (row.length() > vertices.length())
        return vertices;
    MIntArray facing;
    for (unsigned int i = 0; i < row.length(); ++i)
        facing.append(vertices[i]);
    return facing;
}

MStatus tqSarnContext::updateFusePreview(int mode)
{
    if (bridgeTargetEdges.length() == 0)
        return MStatus::kSuccess;
    const MDagPath mesh = tq::getActiveMeshPath();
    if (tq::componentFromIndices(bridgeTargetVertices, MFn::kMeshVertComponent).isNull())
        return MStatus::kUnknownParameter;
    MStatus status;
    const MPointArray facing = tq::vertexPositions(bridgeTargetVertices, mesh, status);
    if (!status)
        return MStatus::kSuccess; // a facing row the mesh no longer has is not shown
    const MIntArray playerRow = tq::readPlayerVertices(status);
    MPointArray preview = tq::vertexPositions(playerRow, mesh, status);
    for (const MPoint& p : facing)
        preview.append(p);
    const MIntArray triangles = tq::stripTriangles(static_cast<int>(preview.length() / 2));
    if (mode == kBridgeMode && tq::arraysShareValue(bridgeTargetVertices, playerRow))
        mode = kBadBridgeMode; // shown in red; Enter still sends it
    const MObject store = tq::findStoreNode();
    if (!(status = tq::writePointArrayAttr(facing, tq::storeAttr::kFusePoints, store)) ||
        !(status = tq::writePointArrayAttr(preview, tq::storeAttr::kFuseMesh, store)) ||
        !(status = tq::writeIntAttr(mode, tq::storeAttr::kMode, store)) ||
        !(status = tq::writeIntArrayAttr(triangles, tq::storeAttr::kFuseIndices, store)))
        return logged(status, __LINE__);
    status = tq::refreshSublines();
    tq::overlayChanged();
    return logged(status, __LINE__);
}

MStatus tqSarnContext::adjustBridgeSpin()
{
    if (mergeTargetVertices.length())
        return MStatus::kSuccess;
    MPointArray preview;
    tq::readPointArrayAttr(tq::storeAttr::kFuseMesh, preview, tq::findStoreNode());
    if (preview.length() == 0)
        return MStatus::kSuccess;
    if (bridgeDivBase == 0)
        bridgeDivBase = static_cast<short>(tq::optionVarIntOr(tq::optionVar::kBridgeDivisions, kPreviewDivisions));
    // Integer division toward zero: 49 pixels either way change nothing, 50 change one.
    const int value = std::clamp(bridgeDivBase + (curX - pressX) / kPixelsPerDivision, 0, kMostDivisions);
    tq::setSpinValue(tq::widget::kBridgeSpin, value);
    const MStatus status = tq::refreshSublines();
    tq::overlayChanged();
    return logged(status, __LINE__);
}

MStatus tqSarnContext::reverseBridgeDirection()
{
    // Deliberate: with no preview the flag keeps its value, though the panel still reports
    // the reversal.
    if (bridgeTargetVertices.length() == 0)
        return MStatus::kSuccess;
    reverseBridge = !reverseBridge;
    return bridgePreview(bridgeTargetVertices[0]);
}

MString tqSarnContext::completeBridgeOrMerge()
{
    const MDagPath mesh = tq::getActiveMeshPath();
    MStatus status;
    MString outcome;
    if (mergeTargetVertices.length()) {
        const MIntArray row = tq::readPlayerVertices(status);
        const MPointArray midpoints = tq::mergeMidpoints(mesh, row, mergeTargetVertices);
        const MString text = tq::moveAndMergeCommand(mesh, row, mergeTargetVertices, midpoints);
        logged(MGlobal::executeCommand(text, true, true), __LINE__);
        logged(tq::clearNewFaces(), __LINE__);
        logged(tq::clearShadowIndices(), __LINE__);
        outcome = tq::infoText::kBoundaryMerged;
    } else {
        const MIntArray row = tq::readPlayerVertices(status);
        if (tq::hasPlayerVertices() && row.length())
            anchorPath = tq::boundaryPath(mesh, row[0], row[row.length() - 1], tq::kBoundaryPathLimit);
        const int divisions = tq::optionVarIntOr(tq::optionVar::kBridgeDivisions, kBridgeDivisions);
        const MString text = tq::bridgeEdgesCommand(mesh, anchorPath, bridgeTargetEdges, divisions);
        logged(MGlobal::executeCommand(text, true, true), __LINE__);
        outcome = tq::infoText::kBridgeByEnter;
    }
    logged(tq::clearStrokes(), __LINE__);
    logged(tq::clearShadow(), __LINE__);
    logged(clearAnchors(), __LINE__);
    logged(resetSession(), __LINE__);
    return outcome;
}
