// The mouse side of the tool: what each button and modifier does at press, drag and release.
// There is no gesture table: each handler is a straight run of independent tests on the
// event's button and modifiers, in a fixed order, and more than one test may act on one event.
// The modifiers are those of the event at hand, so a key let go before the button changes the
// branch taken at release.
//
// The Ctrl-left redraw of the last sarn and the middle-Shift change of its spans and pinch
// (interactiveSpans.cpp), the brushes (brushes.cpp), the anchors (anchors.cpp), the bridge,
// merge and magnet previews (bridges.cpp), the slicing stroke (shapedStrokes.cpp) and the
// drag's own feedback drawing (strokeFeedback.cpp) are wired here.

#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "kernel/commandTexts.h"
#include "kernel/debugDump.h"
#include "kernel/entryBarrier.h"
#include "kernel/meshQueries.h"
#include "kernel/shadowRows.h"
#include "store/hostWidgets.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/optionVars.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFrameContext.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>

using tq::tool::failWith;
using tq::tool::logged;

namespace {

struct Buttons {
    bool left = false;
    bool middle = false;
    bool shift = false;
    bool control = false;

    explicit Buttons(const MEvent& event)
    {
        const MEvent::MouseButtonType button = event.mouseButton();
        left = button == MEvent::kLeftMouse;
        middle = button == MEvent::kMiddleMouse;
        shift = event.isModifierShift();
        control = event.isModifierControl();
    }

    // The button with exactly these modifiers held ("-" in the gesture tables: up).
    bool leftWith(bool s, bool c) const { return left && shift == s && control == c; }
    bool middleWith(bool s, bool c) const { return middle && shift == s && control == c; }
};

} // namespace

MStatus tqSarnContext::doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "doPress", [&]() { return press(event); });
}

MStatus tqSarnContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                              const MHWRender::MFrameContext& context)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "doDrag", [&]() { return drag(event, drawMgr, context); });
}

MStatus tqSarnContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext& context)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "doRelease", [&]() { return release(event, context); });
}

MStatus tqSarnContext::press(MEvent& event)
{
    MStatus status;
    view = M3dView::active3dView(&status);
    logged(status, __LINE__);
    event.getPosition(pressX, pressY);
    // The press goes on whatever the source is; the drag refuses by the flags.
    checkSourceMesh();

    bridgeDivBase = 0;
    spanBase = 0;
    lastX = pressX;
    lastY = pressY;
    redrawStroke = bridgeStroke = false;
    moveBrushActive = sliceStroke = false;
    firstHit = MPoint::origin;
    moveHit = -1;
    magnetVertices.clear();
    markerAngle = 0.0;
    previewPoints.clear();
    currentStroke.clear();
    sliceBack.clear();
    sliceFront.clear();
    // Every press of any button drops the stored pinch.
    logged(tq::setPinch(0.0), __LINE__);

    const Buttons b(event);
    if (b.middleWith(true, false)) // P1: the mesh before a change of spans
        logged(snapshotMesh("redo"), __LINE__);
    if (b.middleWith(true, true)) { // P2: arms the relax brush from the panel's values
        armRelaxBrushFromOptions();
        logged(snapshotRows("redo"), __LINE__);
    }
    if (relaxBrushOn) { // P3: an armed relax brush takes the press, whatever the button
        logged(capturePositions(), __LINE__);
        logged(refreshFreezeBorder(), __LINE__);
        logged(snapshotRows("redo"), __LINE__);
        return MStatus::kSuccess;
    }
    if (b.middleWith(false, false) || moveBrushOn) { // P4: the move brush begins
        logged(capturePositions(), __LINE__);
        logged(snapshotRows("redo"), __LINE__);
        logged(moveBrushBegin(), __LINE__);
    }
    if (b.leftWith(true, true)) { // P5: anchor picking
        logged(anchorPress(), __LINE__);
        logged(snapshotRows("redo"), __LINE__);
    }
    if (b.middleWith(false, true)) { // P6: the bridge preview, or the magnet's first vertex
        logged(bridgePreview(-1), __LINE__);
        logged(magnetPreview(), __LINE__);
    }
    if (b.middleWith(true, false) && !tq::hasShadow()) // P7: the merge preview
        logged(mergePreview(), __LINE__);
    if (b.leftWith(false, true)) { // P8: a redraw stroke keeps the positions it starts from
        logged(capturePositions(), __LINE__);
        logged(snapshotRows("redo"), __LINE__);
    }

    view.refresh(true, true);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::drag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                            const MHWRender::MFrameContext& frameContext)
{
    event.getPosition(curX, curY);
    reverseFigure = false;
    if (!sourceIsMesh)
        return failWith("is not Mesh, node connection invalid?");
    if (!sourceIsValid)
        return failWith("is not valid");

    const Buttons b(event);
    if (b.middleWith(false, false) || moveBrushOn) // the move brush's drag
        return moveBrushDrag();
    if (relaxBrushOn) // the relax brush's drag
        return relaxBrushDrag(drawMgr);
    if (b.left) {
        if (b.shift && !b.control && !tq::hasPlayerVertices()) {
            // A through-surface slice: its capture is its own, and refreshes the view itself.
            sliceStroke = true;
            return sliceStrokeDrag(drawMgr, frameContext);
        }
        updateHoverHit(event, frameContext, false);
        bool hitFound = false;
        const MPoint hit = castStrokeRay(hitFound, curX, curY);
        MPointArray preview;
        if (hitFound) {
            recordFirstHit(hit);
            preview = addStrokeSample(hit, event);
            previewPoints = preview;
        }
        if (!b.shift && b.control)
            redrawStroke = true;
        if (b.shift && !b.control)
            bridgeStroke = true;
        // Both refuse quietly when they have nothing to draw.
        drawPatchPreview(drawMgr, frameContext, preview);
        drawStrokeFeedback(drawMgr, frameContext, hit, MString());
    }
    if (b.middleWith(false, true)) { // the magnet's second vertex follows the pointer
        const int pick = pickBoundaryVertex(11.0, true);
        if (magnetVertices.length() == 1 && pick != -1 && pick != magnetVertices[0]) {
            magnetVertices.append(pick);
            logged(writeMagnetPoints(), __LINE__);
        }
    }
    if (b.middleWith(true, false)) { // the spans and pinch follow the pointer, and the divisions
        logged(changeSpansInteractive(false), __LINE__);
        logged(adjustBridgeSpin(), __LINE__);
    }
    if (b.middleWith(false, true) && tq::playerLoopClosed() && tq::hasShadow()) {
        const MStatus status = twistDrag();
        if (!status)
            return status;
    }
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::release(MEvent& event, const MHWRender::MFrameContext& frameContext)
{
    tqSarnToolCmd* command = makeToolCommand();
    const Buttons b(event);

    if (b.middleWith(true, false)) // R1: the end of a change of spans, one undo step
        return finishSpanChange(command);
    if (b.middleWith(false, false) || moveBrushOn) { // R2: the end of the move brush
        logged(moveBrushEnd(), __LINE__);
        logged(snapshotRows("undo"), __LINE__);
        if (command)
            handRowsTo(command);
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    if (b.leftWith(true, false) && !tq::hasPlayerVertices()) { // R3: a slice is stored
        // The front and back rows become one closed loop; a slice that never crossed the
        // model leaves no stroke, and sending it stores nothing.
        closeSliceStroke();
        logged(sendStrokeToCommand(), __LINE__);
        relaxBrushOn = false;
        logged(snapshotRows("undo"), __LINE__);
        if (command)
            handRowsTo(command);
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    if (relaxBrushOn) { // R4: the end of a relax stroke
        // An armed brush from the panel stays armed; one armed by the gesture ends with it.
        if (b.middleWith(true, true))
            relaxBrushOn = false;
        logged(snapshotRows("undo"), __LINE__);
        if (command)
            handRowsTo(command);
        logged(relaxBrushFinish(), __LINE__);
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    if (magnetVertices.length() > 1) // R5
        logged(mergeMagnetVertices(), __LINE__);
    if (b.left && !b.control) // R6
        logged(storeStroke(event, frameContext), __LINE__);
    if (redrawStroke) // R7
        return redrawFromStroke(command);
    if (bridgeStroke && tq::hasPlayerVertices() && !isClosedFigure() && lastX == pressX) { // R8
        tq::setInfo1(tq::infoText::kBridgeCreated);
        tq::setInfo2(tq::infoText::kBridgeReleaseHelp);
        logged(continueSarn(command), __LINE__);
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    if (!redrawStroke && tq::hasPlayerVertices() && tq::hasStrokePoints()) { // R9
        tq::setInfo1(tq::infoText::kSarnPatchCreated);
        tq::setInfo2(tq::infoText::kPatchHelp);
        logged(appendPatchFromStroke(), __LINE__);
        return MStatus::kSuccess;
    }
    // R10: the end of a twist. A middle-Ctrl click that only previewed a bridge or picked a
    // magnet vertex twisted nothing: it makes no step, so the mesh snapshot of an earlier
    // gesture never becomes an undo target.
    if (b.middleWith(false, true) && twistActive) {
        // Deliberate: mode 15 is written first and the feed setters then write 5 over it, so
        // the twist is queued, journalled and undone as a change of spans.
        if (command)
            command->setMode(tqSarnToolCmd::kTwist);
        logged(finishSpanChange(command), __LINE__);
        twistActive = false;
    }
    view.refresh(false, false); // R11
    return MStatus::kSuccess;
}

MStatus tqSarnContext::storeStroke(MEvent& event, const MHWRender::MFrameContext& frameContext)
{
    if (tq::isGlueOn() && glueHit != MPoint::origin && currentStroke.length()) {
        updateHoverHit(event, frameContext, true);
        currentStroke[currentStroke.length() - 1] = glueHit;
    }
    if (isClosedFigure() && currentStroke.length())
        currentStroke[currentStroke.length() - 1] = currentStroke[0];
    // Deliberate: not finalized; storing a stroke is no step of the undo queue.
    MStatus status = sendStrokeToCommand();
    tq::setInfo1(tq::strokeCountText(tq::strokeCount()));
    return status;
}

MStatus tqSarnContext::sendStrokeToCommand()
{
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    // A click with no drag has at most one point and stores nothing.
    if (!sourceIsMesh || !sourceIsValid || currentStroke.length() < 2)
        return MStatus::kSuccess;
    return command->appendStroke(currentStroke);
}

MStatus tqSarnContext::finishSpanChange(tqSarnToolCmd* command)
{
    logged(snapshotMesh("undo"), __LINE__);
    tq::dumpIndices(undoRows.playerVertices, "player undo");
    tq::dumpIndices(redoRows.playerVertices, "player redo");
    if (!command)
        return failWith("no tool command");
    // A snapshot that could not be taken would undo to an empty patch: no step is made then.
    if (redoSnapshot.polygonTotal == 0 || undoSnapshot.polygonTotal == 0)
        return failWith("no mesh to change the spans of");
    command->setBeforeFeed(redoSnapshot);
    command->setAfterFeed(undoSnapshot);
    handRowsTo(command);
    const MStatus status = logged(command->finalize(), __LINE__);
    if (status)
        view.refresh(false, false);
    return status;
}

MStatus tqSarnContext::twistDrag()
{
    // Deliberate: 16-bit pixel arithmetic, and a step only on multiples of 4 pixels, so the
    // first drag event with no movement already starts a twist.
    const short dx = static_cast<short>(curX - lastX);
    if (dx % 4 != 0)
        return MStatus::kSuccess;
    if (!twistActive)
        logged(snapshotMesh("redo"), __LINE__);
    twistActive = true;
    MStatus status = tq::twistRows(dx);
    if (!status)
        return status;
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    // Not finalized: the release makes the gesture's one undo step.
    logged(command->rebuildPatchFromShadow(tq::getActiveMeshPath(), accelParams, false), __LINE__);
    tq::finition();
    lastX = curX;
    return MStatus::kSuccess;
}

void tqSarnContext::handRowsTo(tqSarnToolCmd* command)
{
    command->setSpanIndices(redoRows.playerVertices, redoRows.shadowIndices1, redoRows.shadowIndices2,
                            redoRows.shadowIndices3, undoRows.playerVertices, undoRows.shadowIndices1,
                            undoRows.shadowIndices2, undoRows.shadowIndices3);
}

MStatus tqSarnContext::redrawFromStroke(tqSarnToolCmd* command)
{
    if (!command)
        return failWith("no tool command");
    const MDagPath mesh = tq::getActiveMeshPath();
    MStatus status;
    if (tq::boundaryEditMode()) {
        // A patch made along one stroke is swept again along this one.
        logged(tq::writeNondestructRows(tq::RowList{currentStroke}), __LINE__);
        logged(command->redrawAlongStroke(mesh, accelParams), __LINE__);
        logged(snapshotRows("undo"), __LINE__);
        if (command)
            handRowsTo(command);
    }
    if (tq::shadowCount() < 2 && !tq::hasPlayerVertices())
        return failWith("need at least 2 strokes to edit the second");
    if (!tq::hasPlayerVertices()) {
        tq::RowList rows = tq::readGuideRows(status);
        if (rows.empty())
            return MStatus::kSuccess;
        // The new stroke takes the place of the sarn's second guide stroke.
        if (rows.size() > 1)
            rows[1] = currentStroke;
        logged(tq::writeNondestructRows(rows), __LINE__);
        logged(command->redrawPatchFromStrokes(mesh, accelParams, isClosedFigure()), __LINE__);
        MPointArray after;
        MItGeometry it(tq::getActiveMeshPath(), &status);
        if (status)
            status = it.allPositions(after, MSpace::kWorld);
        logged(status, __LINE__);
        command->setRedrawScratchPositions(positionsBefore, after);
        logged(snapshotRows("undo"), __LINE__);
        if (command)
            handRowsTo(command);
        logged(command->finalize(), __LINE__);
        logged(tq::clearStrokes(), __LINE__);
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    // With an anchor chain: the patch grown from it follows the stroke, or with no patch
    // the chain itself does.
    logged(tq::hasShadow() ? anchorRedraw() : anchorDraw(), __LINE__);
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::continueSarn(tqSarnToolCmd* command)
{
    if (!command)
        return failWith("no tool command");
    if (anchorVertices.length() && tq::playerLoopClosed())
        return MStatus::kSuccess; // a closed anchor loop continues through the bridge anchors
    MStatus status;
    const MPointArray anchorPoints = tq::vertexPositions(tq::readPlayerVertices(status), MDagPath(), status);
    if (!status)
        return logged(status, __LINE__);
    status = command->appendPatchAlongStroke(anchorPoints, accelParams);
    if (!status)
        return logged(status, __LINE__);
    logged(command->finalize(), __LINE__);
    anchorPath.clear();
    anchorVertices.clear();
    tq::setInfo1(tq::infoText::kBridgePatchCreated);
    tq::setInfo2(tq::infoText::kBridgeHelp);
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::appendPatchFromStroke()
{
    if (sliceStroke) {
        view.refresh(false, false);
        return MStatus::kSuccess;
    }
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return failWith("no tool command");
    MStatus status;
    if (tq::playerLoopClosed()) {
        logged(tq::clearStrokes(), __LINE__);
        logged(sendStrokeToCommand(), __LINE__);
        status = command->closeStrokes();
        if (!status)
            return logged(status, __LINE__);
    }
    if (isClosedFigure()) {
        // The figure is laid on the anchor row: the row's count of points from the cursor.
        const MIntArray row = tq::readPlayerVertices(status);
        logged(status, __LINE__);
        currentStroke = matchFigureToRow(currentStroke, row);
        logged(tq::clearStrokes(), __LINE__);
        logged(sendStrokeToCommand(), __LINE__);
    }
    const bool loopClosed = tq::playerLoopClosed();
    const MPointArray anchorPoints = tq::vertexPositions(tq::readPlayerVertices(status), MDagPath(), status);
    if (!status)
        return logged(status, __LINE__);
    status = command->appendPatchBetweenStrokes(anchorPoints, accelParams, isClosedFigure());
    if (!status)
        return logged(status, __LINE__);
    logged(command->finalize(), __LINE__);
    if (loopClosed)
        tq::finition();
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::mergeMagnetVertices()
{
    const MDagPath mesh = tq::getActiveMeshPath();
    const MString text = tq::mergePairCommand(magnetVertices, mesh);
    logged(MGlobal::executeCommand(text, true, true), __LINE__);
    magnetVertices.clear();
    logged(resetSession(), __LINE__);
    if (!mesh.isValid())
        return MStatus::kSuccess;
    return logged(MGlobal::selectByName(mesh.fullPathName(), MGlobal::kReplaceList), __LINE__);
}

MStatus tqSarnContext::doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                                  const MHWRender::MFrameContext& context)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "doPtrMoved", [&]() -> MStatus {
        if (moveBrushOn)
            event.getPosition(curX, curY);
        if (moveBrushHover)
            drawMoveCircle(drawMgr);
        // The move brush's circle and the glue marker are drawn around this hit.
        updateHoverHit(event, context, true);
        drawGlueMarker(drawMgr);
        return MStatus::kSuccess;
    });
}

MStatus tqSarnContext::drawFeedback(MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "drawFeedback", [&]() -> MStatus {
        if (!sourceIsMesh || !sourceIsValid)
            return MStatus::kInvalidParameter;
        // The frozen lists and marks follow the mesh and the camera: rebuilt at every frame.
        if (freezeBorder)
            logged(refreshFreezeBorder(), __LINE__);
        else
            tq::setButtonChecked(tq::widget::kFreezeButton, false);
        if (freezeMedian)
            logged(refreshFreezeMedian(), __LINE__);
        if (MHWRender::MFrameContext::userChangingViewContext()) {
            MObject store = tq::findStoreNode();
            if (!store.isNull()) {
                MString text = tq::hostCommand::kDgDirty;
                text += MFnDependencyNode(store).name();
                logged(MGlobal::executeCommand(text, false, false), __LINE__);
            }
        }
        return MStatus::kSuccess;
    });
}
