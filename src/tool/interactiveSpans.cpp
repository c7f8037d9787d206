// The middle-Shift drag that changes the last sarn live: the horizontal distance from the
// press sets the spans, the vertical one the pinch, and each drag event generates the patch
// again under the pointer. The undo step is made at release from the mesh snapshots taken at
// press and release. Also the panel's pinch, refresh and bevel.

#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "kernel/commandTexts.h"
#include "kernel/debugDump.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/optionVars.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>

#include <algorithm>
#include <unordered_set>

using tq::tool::failWith;
using tq::tool::logged;

namespace {

constexpr short kPixelsPerSpan = 25;
constexpr float kPixelsPerPinch = 150.0f;
constexpr float kPinchLimit = 0.95f;
constexpr int kMostSpans = 50;
constexpr int kFewestSpans = 1;
constexpr int kFewestClosedSpans = 4;
constexpr double kBevelWeight = 0.1;

// Along `row`, at each vertex: an edge of one of `faces` at that vertex that does not run
// along the row, i.e. whose other end is not on the row. A vertex with no such face or edge
// adds nothing, so the two sides of a patch can come out of different lengths.
MIntArray ringEdgesOfRow(const MIntArray& row, const MIntArray& faces, const MDagPath& mesh)
{
    MIntArray edges;
    MStatus status;
    MFnMesh fnMesh(mesh, &status);
    if (!status || row.length() == 0)
        return edges;
    const std::unordered_set<int> faceSet(faces.begin(), faces.end());
    const std::unordered_set<int> rowSet(row.begin(), row.end());
    MItMeshVertex vertexIt(mesh, MObject::kNullObj, &status);
    MItMeshPolygon faceIt(mesh, MObject::kNullObj, &status);
    if (!status)
        return edges;
    const int vertexTotal = fnMesh.numVertices();
    const int faceTotal = fnMesh.numPolygons();
    for (const int vertex : row) {
        if (vertex < 0 || vertex >= vertexTotal)
            continue;
        int previous = 0;
        vertexIt.setIndex(vertex, previous);
        MIntArray connected;
        vertexIt.getConnectedFaces(connected);
        bool found = false;
        for (unsigned int f = 0; f < connected.length() && !found; ++f) {
            const int face = connected[f];
            if (!faceSet.count(face) || face >= faceTotal)
                continue;
            faceIt.setIndex(face, previous);
            MIntArray faceEdges;
            faceIt.getEdges(faceEdges);
            for (const int edge : faceEdges) {
                int2 ends;
                if (!fnMesh.getEdgeVertices(edge, ends))
                    continue;
                const int other = ends[0] == vertex ? ends[1] : (ends[1] == vertex ? ends[0] : -1);
                if (other < 0 || rowSet.count(other))
                    continue;
                edges.append(edge);
                found = true;
                break;
            }
        }
    }
    return edges;
}

} // namespace

MStatus tqSarnContext::changeSpansInteractive(bool keepPinch)
{
    // 16-bit pixels as the view gives them; each step counts from the press, so the result
    // depends only on where the pointer is.
    const short delta = static_cast<short>(static_cast<short>(curX - pressX) / kPixelsPerSpan);
    lastX = curX;
    if (!keepPinch) {
        float value = static_cast<float>(static_cast<short>(curY - pressY)) / kPixelsPerPinch;
        value = std::clamp(value, -kPinchLimit, kPinchLimit);
        logged(tq::setPinch(value), __LINE__);
        lastY = curY;
    }

    if (tq::playerLoopClosed() && tq::hasPlayerVertices()) {
        if (spanBase == 0)
            spanBase = static_cast<short>(tq::getVSpans());
        tq::setVSpans(std::clamp(spanBase + delta, kFewestSpans, kMostSpans));
    } else if (!tq::shadowIsClosed()) {
        if (spanBase == 0)
            spanBase = static_cast<short>(tq::getVSpans());
        // On an open sarn the two counts move together.
        const int value = std::clamp(spanBase + delta, kFewestSpans, kMostSpans);
        tq::setUSpans(value);
        tq::setVSpans(value);
    } else {
        if (spanBase == 0)
            spanBase = static_cast<short>(tq::getUSpans());
        tq::setUSpans(std::clamp(spanBase + delta, kFewestClosedSpans, kMostSpans));
    }

    MString line1 = tq::infoText::kChangingSpans;
    line1 += tq::infoText::kPinchValue;
    line1 += tq::getPinch();
    tq::setInfo1(line1);
    tq::setInfo2(tq::infoText::kSpanHelp);

    // Deliberate: no debouncing; every drag event generates the patch again, also when the
    // values did not change, so the patch always matches the pointer.
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    return command->changeSpans(accelParams, isClosedFigure());
}

MStatus tqSarnContext::rebuildWithPinch()
{
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    // Deliberate: not finalized; the panel's pinch is no step of the undo queue.
    return command->changeSpans(accelParams, isClosedFigure());
}

MStatus tqSarnContext::refreshFromPanel()
{
    logged(clearAnchors(), __LINE__);
    if (relaxBrushOn)
        logged(tq::clearShadow(), __LINE__);
    return view.refresh(false, false);
}

MStatus tqSarnContext::bevelRows()
{
    const MDagPath mesh = tq::getActiveMeshPath();
    MIntArray row1, row2, row3;
    tq::readShadowIndices(row1, row2, row3);
    const MIntArray newFaces = tq::readNewFaces();
    if (newFaces.length() == 0 && row1.length() == 0 && row2.length() == 0)
        return failWith("cannot find any faces and/or row");
    const MIntArray edges1 = ringEdgesOfRow(row1, newFaces, mesh);
    const MIntArray edges2 = ringEdgesOfRow(row2, newFaces, mesh);
    if (edges1.length() != edges2.length())
        return failWith("bevel edge have not same length");
    MString text = tq::splitRingCommand(mesh, edges1, kBevelWeight);
    text += tq::splitRingCommand(mesh, edges2, kBevelWeight);
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    command->setCommandText(text);
    // Deliberate: mode 10 runs its text nowhere, so the split is prepared and the mesh stays
    // as it is; what the routine gives is its preparation and its refusals.
    logged(command->redoIt(), __LINE__);
    return logged(command->finalize(), __LINE__);
}

MStatus tqSarnContext::snapshotRows(const MString& label)
{
    tq::SpanIndices* target = label == "undo" ? &undoRows : (label == "redo" ? &redoRows : nullptr);
    if (!target)
        return MStatus::kSuccess;
    MStatus status = tq::readSpanIndices(*target);
    if (!status)
        return logged(status, __LINE__);
    tq::dumpIndices(target->playerVertices, label == "undo" ? "save this one, undo" : "save this one, redo");
    tq::dumpIndices(target->shadowIndices1, "row1 shadow");
    tq::dumpIndices(target->shadowIndices2, "row2 shadow");
    return MStatus::kSuccess;
}

MStatus tqSarnContext::snapshotMesh(const MString& label)
{
    tq::PatchFeed* target = label == "undo" ? &undoSnapshot : (label == "redo" ? &redoSnapshot : nullptr);
    if (!target)
        return MStatus::kSuccess;
    // A snapshot that cannot be taken leaves none: the release then makes no undo step.
    target->clear();
    const MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kInvalidParameter;
    MStatus status;
    MFnMesh fnMesh(mesh, &status);
    if (!status)
        return logged(status, __LINE__);
    status = tq::readPatchFeed(fnMesh, *target);
    if (!status)
        return logged(status, __LINE__);
    return snapshotRows(label);
}
