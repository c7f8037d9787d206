// The keys of the tool: Enter completes the operation pending on the store (a new sarn from
// two strokes, a bridge or a merge, or the end of a loop), Backspace takes back the last stroke or steps back in
// the anchor chain, Esc drops the session and leaves every made quad in place.

#include "tool/tqSarnContext.h"

#include "tool/fusePreview.h"
#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "kernel/entryBarrier.h"
#include "kernel/patchPlumbing.h"
#include "kernel/shadowRows.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeWrites.h"

#include <maya/MGlobal.h>

using tq::tool::logged;

void tqSarnContext::completeAction()
{
    tq::guardEntryPoint(tq::logModule::kTool, "completeAction", [&]() -> MStatus {
        tq::setInfo1(tq::infoText::kActivation);
        if (bridgeTargetEdges.length() && anchorPath.length()) { // a bridge or a merge
            tq::setInfo1(completeBridgeOrMerge());
            return MStatus::kSuccess;
        }
        if (redrawStroke) {
            logged(tq::clearStrokes(), __LINE__);
            if (tq::hasPlayerVertices())
                logged(clearAnchors(), __LINE__);
            logged(resetSession(), __LINE__);
        } else if (!bridgeStroke) {
            if (!tq::hasPlayerVertices())
                createSarnPatch();
            else
                logged(finishSarnLoop(), __LINE__);
        }
        tq::setInfo1(tq::infoText::kActivation);
        tq::setInfo2(tq::infoText::kMainHelp);
        return MStatus::kSuccess;
    });
}

MStatus tqSarnContext::createSarnPatch()
{
    // Two strokes at least make a new sarn; fewer is no error the user is shown.
    if (tq::strokeCount() < 2)
        return MStatus::kFailure;
    tqSarnToolCmd* command = makeToolCommand();
    if (!command)
        return tq::tool::failWith("no tool command");
    MStatus status = command->saveNondestructStrokes(sliceStroke ? 1 : 0);
    logged(status, __LINE__);
    const MString patchName = tq::uniqueName("tqPatch");
    command->setPatchName(patchName);

    MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid()) {
        mesh = tq::createMeshShape(status);
        logged(status, __LINE__);
        command->setMode(tqSarnToolCmd::kScratchNewMesh);
    } else {
        command->setMode(tqSarnToolCmd::kScratchOrphan);
    }
    if (!mesh.isValid())
        return MStatus::kFailure;
    command->setMeshPath(mesh);

    MString attach("tqPatchCmd -m \"");
    attach += mesh.fullPathName();
    attach += "\" -o \"";
    attach += patchName;
    attach += "\";";
    logged(MGlobal::executeCommand(attach, false, false), __LINE__);

    status = command->scratchPatch(mesh, accelParams, isClosedFigure());
    if (!status) {
        // Nothing was made: the node attached for it goes again, and the strokes stay for
        // another try.
        logged(status, __LINE__);
        tq::detachPatchNode(patchName);
        return status;
    }
    if (tq::anyShadowRowClosed()) {
        MPointArray outerPoints;
        MIntArray outerIndices;
        logged(tq::stackSlices(outerPoints, outerIndices), __LINE__);
    }
    logged(tq::clearStrokes(), __LINE__);
    tq::setInfo1(tq::infoText::kSarnCreated);
    tq::setInfo2(tq::infoText::kMainHelp);
    logged(command->finalize(), __LINE__);
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::finishSarnLoop()
{
    // Deliberate: the repeated resets are kept; each also rewrites the info lines.
    logged(resetSession(), __LINE__);
    logged(clearAnchors(), __LINE__);
    logged(resetSession(), __LINE__);
    logged(tq::clearNewFaces(), __LINE__);
    logged(resetSession(), __LINE__);
    logged(tq::clearStrokes(), __LINE__);
    logged(resetSession(), __LINE__);
    tq::setInfo1(tq::infoText::kSarnCreated);
    tq::setInfo2(tq::infoText::kMainHelp);
    return MStatus::kSuccess;
}

void tqSarnContext::deleteAction()
{
    tq::guardEntryPoint(tq::logModule::kTool, "deleteAction", [&]() -> MStatus {
        const bool removed = tq::popLastStroke();
        // Deliberate: Backspace costs the shadow even when a stroke was there to remove.
        logged(tq::clearShadow(), __LINE__);
        if (removed) {
            view.refresh(true, false);
            return MStatus::kSuccess;
        }
        if (bridgeTargetVertices.length() == 0) {
            logged(anchorStepBack(), __LINE__);
            tq::clearPlayersLine();
        } else {
            logged(tq::clearFuseData(), __LINE__);
        }
        bridgeTargetVertices.clear();
        mergeTargetVertices.clear();
        bridgeTargetEdges.clear();
        if (magnetVertices.length()) {
            magnetVertices.clear();
            logged(tq::clearMagnetPoints(), __LINE__);
        }
        tq::overlayChanged();
        return MStatus::kSuccess;
    });
}

MStatus tqSarnContext::anchorStepBack()
{
    if (anchorVertices.length() >= 2) {
        anchorVertices.setLength(1);
        anchorPath.clear();
        logged(tq::writePlayersFromVertices(anchorVertices), __LINE__);
        logged(tq::writePlayerVertices(MIntArray()), __LINE__);
    } else if (anchorVertices.length() == 1) {
        anchorVertices.clear();
        logged(tq::writePlayersFromVertices(anchorVertices), __LINE__);
    } else {
        tq::setInfo1("");
        tq::setInfo2("");
        return MStatus::kSuccess;
    }
    view.refresh(false, false);
    return MStatus::kSuccess;
}

void tqSarnContext::abortAction()
{
    tq::guardEntryPoint(tq::logModule::kTool, "abortAction", [&]() -> MStatus {
        MStatus status = resetSession();
        tq::setInfo1(tq::infoText::kOperationCancelled);
        return status;
    });
}
