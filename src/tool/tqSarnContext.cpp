#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "kernel/commandTexts.h"
#include "kernel/entryBarrier.h"
#include "store/hostWidgets.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MCursor.h>
#include <maya/MEventMessage.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MSelectionList.h>
#include <maya/MVectorArray.h>

using tq::tool::logged;

namespace {

constexpr const char* kHelpAddress = "https://halvane.example/tqsarn/help";

// Stops a reset at the first failing clear; the failure is logged where it happens.
#define TQ_RESET_STEP(EXPR)                          \
    do {                                             \
        MStatus stepStatus = (EXPR);                 \
        if (!stepStatus)                             \
            return logged(stepStatus, __LINE__);     \
    } while (0)

} // namespace

// The tool command's own way to a new tool: defined here so that command/ includes nothing of
// tool/.
tqSarnContext* tqSarnToolCmd::newContext() { return new tqSarnContext(); }

tqSarnContext::tqSarnContext() { setTitleString("tqSarn"); }

tqSarnContext::~tqSarnContext()
{
    // A context deleted while active (plug-in unload) still gives its callbacks back.
    if (undoCallbackId)
        MMessage::removeCallback(undoCallbackId);
    if (toolChangedCallbackId)
        MMessage::removeCallback(toolChangedCallbackId);
}

void tqSarnContext::onUndo(void*) {}

void tqSarnContext::onToolChanged(void* clientData)
{
    tq::guardEntryPoint(tq::logModule::kTool, "ToolChanged callback", [&]() -> MStatus {
        auto* self = static_cast<tqSarnContext*>(clientData);
        MStatus status = self->resetSession();
        tq::setInfo1("");
        tq::setInfo2("");
        return status;
    });
}

void tqSarnContext::toolOnSetup(MEvent&)
{
    tq::guardEntryPoint(tq::logModule::kTool, "toolOnSetup", [&]() -> MStatus {
        MStatus status = setCursor(MCursor::doubleCrossHairCursor);
        logged(status, __LINE__);
        view = M3dView::active3dView(&status);
        logged(status, __LINE__);
        glueHit = MPoint::origin;
        moveBrushHover = relaxBrushOn = moveBrushOn = redrawStroke = bridgeStroke = false;
        freezeBorder = freezeMedian = twistActive = moveBrushActive = sliceStroke = false;
        reverseFigure = reverseBridge = false;
        figureMode = 0;

        // Deliberate: the undo callback does nothing; the host only needs it registered.
        undoCallbackId = MEventMessage::addEventCallback("Undo", onUndo, this, &status);
        logged(status, __LINE__);
        toolChangedCallbackId = MEventMessage::addEventCallback("ToolChanged", onToolChanged, this, &status);
        logged(status, __LINE__);

        status = MGlobal::executeCommand(tq::hostCommand::kObjectSelectMode, false, false);
        logged(status, __LINE__);
        MDagPath active = tq::getActiveMeshPath();
        if (active.isValid()) {
            // The retopo mesh alone: components and other objects leave the selection.
            MSelectionList only;
            only.add(active);
            status = MGlobal::setActiveSelectionList(only, MGlobal::kReplaceList);
            logged(status, __LINE__);
        }
        setHelpString(kHelpAddress);
        tq::setInfo1(tq::infoText::kActivation);
        checkSourceMesh();
        if (!intersector.isCreated())
            logged(buildIntersector(), __LINE__);
        tq::setButtonChecked(tq::widget::kLaunchButton, true);
        logged(showActivationInfo(), __LINE__);
        // The snap of shaped strokes to the source would run here with no points: it only
        // builds the intersector, which the step above has already done.
        return MStatus::kSuccess;
    });
}

void tqSarnContext::toolOffCleanup()
{
    tq::guardEntryPoint(tq::logModule::kTool, "toolOffCleanup", [&]() -> MStatus {
        logged(resetSession(), __LINE__);
        tq::setInfo1("");
        MStatus status = MMessage::removeCallback(undoCallbackId);
        logged(status, __LINE__);
        undoCallbackId = 0;
        status = MMessage::removeCallback(toolChangedCallbackId);
        logged(status, __LINE__);
        toolChangedCallbackId = 0;
        tq::setButtonChecked(tq::widget::kLaunchButton, false);
        tq::setButtonChecked(tq::widget::kFreezeButton, false);
        MObject store = tq::findStoreNode();
        if (!store.isNull())
            logged(tq::writeDoubleAttr(0.0, tq::storeAttr::kDisplaySize, store), __LINE__);
        tq::setInfo1("");
        tq::setInfo2("");
        return MStatus::kSuccess;
    });
}

MStatus tqSarnContext::checkSourceMesh()
{
    MStatus status;
    MDagPath path = tq::getSourceMeshPath(status);
    if (!status)
        return logged(status, __LINE__);
    if (!path.isValid())
        return MStatus::kInvalidParameter;
    MDagPath shape(path);
    shape.extendToShape();
    sourceIsMesh = shape.hasFn(MFn::kMesh);
    sourceIsValid = shape.isValid();
    return sourceIsMesh ? MStatus::kSuccess : MStatus::kUnknownParameter;
}

MStatus tqSarnContext::buildIntersector()
{
    MStatus status;
    MDagPath path = tq::getSourceMeshPath(status);
    if (!status)
        return logged(status, __LINE__);
    if (!path.isValid() || !path.hasFn(MFn::kMesh))
        return MStatus::kInvalidParameter;
    sourceMatrix = path.inclusiveMatrix();
    MObject shape = path.node();
    status = intersector.create(shape, sourceMatrix);
    if (!status)
        return logged(status, __LINE__);
    accelParams = MFnMesh::autoUniformGridParams();

    MFnMesh mesh(path);
    if (mesh.numPolygons() == 0)
        return MStatus::kUnknownParameter;
    // One normal per polygon: the mean of its vertex normals, left unnormalised.
    // Sized once: on a dense source, growing the array by appends costs more than the walk.
    MVectorArray normals;
    normals.setLength(unsigned(mesh.numPolygons()));
    unsigned int filled = 0;
    MVectorArray faceNormals;
    for (MItMeshPolygon it(path); !it.isDone() && filled < normals.length(); it.next()) {
        it.getNormals(faceNormals, MSpace::kWorld);
        MVector sum;
        for (const MVector& n : faceNormals)
            sum += n;
        normals[filled++] = faceNormals.length() ? sum / double(faceNormals.length()) : sum;
    }
    normals.setLength(filled);
    if (normals.length() == 0)
        return MStatus::kUnknownParameter;
    MObject store = tq::findStoreNode();
    return logged(tq::writeVectorArrayAttr(normals, tq::storeAttr::kInputNormals, store), __LINE__);
}

MStatus tqSarnContext::capturePositions()
{
    MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kInvalidParameter;
    MStatus status;
    MItGeometry it(mesh, &status);
    if (!status)
        return logged(status, __LINE__);
    return logged(it.allPositions(positionsBefore, MSpace::kWorld), __LINE__);
}

MStatus tqSarnContext::clearAnchors()
{
    anchorVertices.clear();
    mergeTargetVertices.clear();
    bridgeTargetEdges.clear();
    bridgeTargetVertices.clear();
    anchorPath.clear();
    MStatus status = tq::writePlayersFromVertices(anchorVertices);
    if (!status)
        return logged(status, __LINE__);
    status = tq::writePlayerVertices(anchorVertices);
    if (!status)
        return logged(status, __LINE__);
    return logged(tq::clearFuseData(), __LINE__);
}

MStatus tqSarnContext::resetSession()
{
    MObject store = tq::findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    TQ_RESET_STEP(tq::writeIntArrayAttr(MIntArray(), tq::storeAttr::kSizesNondestruct, store));
    TQ_RESET_STEP(tq::writePointArrayAttr(MPointArray(), tq::storeAttr::kStrokesNondestruct, store));
    TQ_RESET_STEP(clearAnchors());
    TQ_RESET_STEP(tq::clearStrokes());
    TQ_RESET_STEP(tq::clearShadow());
    logged(tq::clearPlayersLine(), __LINE__);
    TQ_RESET_STEP(tq::writePlayersFromVertices(anchorVertices));
    logged(tq::clearFuseData(), __LINE__);
    logged(tq::clearMagnetPoints(), __LINE__);
    TQ_RESET_STEP(tq::clearNewFaces());
    TQ_RESET_STEP(tq::clearFreePoints());
    TQ_RESET_STEP(tq::clearFreezeMedian());
    TQ_RESET_STEP(tq::clearPlayerVertices());
    TQ_RESET_STEP(tq::clearShadowIndices());
    tq::setInfo1(tq::infoText::kActivation);
    logged(showActivationInfo(), __LINE__);
    view.refresh(false, false);
    return MStatus::kSuccess;
}

MStatus tqSarnContext::showActivationInfo()
{
    MString text = tq::infoText::kActivation;
    if (tq::historyLength() > 100)
        text += tq::infoText::kDeleteHistory;
    tq::setInfo1(text);
    tq::setInfo2(tq::infoText::kMainHelp);
    return MStatus::kSuccess;
}

void tqSarnContext::setMoveBrush(bool on)
{
    moveBrushOn = on;
    moveBrushHover = on;
    tq::setButtonChecked(tq::widget::kFreezeButton, false);
}

tqSarnToolCmd* tqSarnContext::makeToolCommand()
{
    // The host keeps every command it makes here; one never finalized dies with the gesture.
    return dynamic_cast<tqSarnToolCmd*>(newToolCommand());
}

MStatus tqSarnContext::refreshView(bool all, bool force) { return view.refresh(all, force); }
