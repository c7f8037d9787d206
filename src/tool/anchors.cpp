// Anchors: the user picks border vertices of the retopo mesh with Ctrl-Shift-left clicks. The
// first click is the first anchor; the second (and every later one, which replaces it) makes
// the run of border edges between the two the anchor chain, stored as the row `playervtx`
// with its positions for the overlay. The same vertex twice asks for the whole border loop.
// From the chain, one stroke grows a patch (eventDispatch.cpp), and a Ctrl-left stroke
// redraws the chain or the patch grown from it (anchorDraw, anchorRedraw).

#include "tool/tqSarnContext.h"

#include "tool/boundaryWalk.h"
#include "tool/fusePreview.h"
#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include <maya/MItMeshVertex.h>

#include <climits>

using tq::tool::failWith;
using tq::tool::logged;

namespace {

constexpr double kAnchorPickPixels = 9.0;

} // namespace

int tqSarnContext::pickBoundaryVertex(double pixels, bool useCursor)
{
    const MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid())
        return -1;
    const double cx = useCursor ? curX : pressX;
    const double cy = useCursor ? curY : pressY;
    const double limit2 = pixels * pixels;
    MStatus status;
    for (MItMeshVertex it(mesh, MObject::kNullObj, &status); status && !it.isDone(); it.next()) {
        // A point behind the eye leaves the pixel as it was: this one never picks.
        short x = SHRT_MIN, y = SHRT_MIN;
        view.worldToView(it.position(MSpace::kWorld), x, y);
        const double dx = x - cx, dy = y - cy;
        if (!(dx * dx + dy * dy < limit2))
            continue;
        MVector normal;
        it.getNormal(normal, MSpace::kWorld);
        // Deliberate: the first vertex in index order within reach wins, not the nearest.
        if (isFacingCamera(normal) && it.onBoundary())
            return it.index();
    }
    return -1;
}

MStatus tqSarnContext::anchorPress()
{
    const int v = pickBoundaryVertex(kAnchorPickPixels, false);
    if (v != -1) {
        if (anchorVertices.length()) {
            // A second click, and every later one, replaces the second anchor.
            anchorVertices.setLength(2);
            anchorVertices[1] = v;
            logged(tq::clearShadow(), __LINE__);
            tq::setInfo2(tq::infoText::kAnchorRowHelp);
        } else {
            anchorVertices.append(v);
            tq::setInfo2(tq::infoText::kFirstAnchorHelp);
        }
        logged(tq::writePlayersFromVertices(anchorVertices), __LINE__);
        MString count;
        count += static_cast<int>(anchorVertices.length());
        tq::setInfo1(count + tq::infoText::kAnchorsSuffix);
    }
    if (anchorVertices.length() == 2) {
        const MDagPath mesh = tq::getActiveMeshPath();
        if (anchorVertices[0] == anchorVertices[1])
            anchorPath = tq::boundaryLoop(mesh, anchorVertices[0]);
        else if (anchorPath.length() == 0)
            anchorPath = tq::boundaryPath(mesh, anchorVertices[0], anchorVertices[1], tq::kBoundaryPathLimit);
        else
            anchorPath = tq::extendBoundaryPath(mesh, anchorPath, anchorVertices[0], anchorVertices[1]);
        const MIntArray row = tq::edgesToVertices(mesh, anchorPath, anchorVertices[0]);
        logged(tq::writePlayerVertices(row), __LINE__);
        logged(tq::writePlayersFromVertices(row), __LINE__);
    }
    // A pending bridge or merge follows the new row.
    if (mergeTargetVertices.length()) {
        bridgeTargetVertices = oppositeRow(mergeTargetVertices[0]);
        mergeTargetVertices = bridgeTargetVertices;
    } else if (bridgeTargetVertices.length()) {
        bridgeTargetVertices = oppositeRow(bridgeTargetVertices[0]);
    }
    tq::overlayChanged();
    return updateFusePreview(1);
}

MStatus tqSarnContext::anchorDraw()
{
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    // The closed figures are matched to the row by the shaped-stroke capture; the line and the
    // free stroke are taken as drawn.
    const MPointArray stroke = currentStroke;
    MStatus status = command->redrawBoundary(stroke, positionsBefore, redoRows, undoRows.playerVertices);
    if (!status)
        return logged(status, __LINE__);
    logged(tq::clearStrokes(), __LINE__);
    logged(tq::writePlayersFromVertices(tq::readPlayerVertices(status)), __LINE__);
    return logged(tq::clearNewFaces(), __LINE__);
}

MStatus tqSarnContext::anchorRedraw()
{
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    // As in anchorDraw, the closed figures are matched to the row by the shaped-stroke capture.
    const MPointArray stroke = currentStroke;
    const MStatus status = command->redrawPatch(stroke, positionsBefore, accelParams, isClosedFigure(), redoRows, undoRows);
    logged(snapshotRows("undo"), __LINE__);
    return status;
}
