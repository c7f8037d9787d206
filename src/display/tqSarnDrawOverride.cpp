#include "display/tqSarnDrawOverride.h"

#include "display/infoDrawing.h"
#include "display/markDrawing.h"
#include "display/rowDrawing.h"
#include "kernel/entryBarrier.h"
#include "store/logModules.h"
#include "store/tqSarn.h"

#include <maya/M3dView.h>
#include <maya/MEventMessage.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MViewport2Renderer.h>

namespace {

constexpr const char* kModule = tq::logModule::kTool;

// Runs a draw step that returns nothing inside the entry barrier.
template <class Body>
void guarded(const char* entryPoint, Body&& body) noexcept
{
    tq::guardEntryPoint(kModule, entryPoint, [&]() -> MStatus {
        body();
        return MStatus::kSuccess;
    });
}

} // namespace

const MString tqSarnDrawOverride::registrantId("tqSarn");

MHWRender::MPxDrawOverride* tqSarnDrawOverride::creator(const MObject& obj) { return new tqSarnDrawOverride(obj); }

tqSarnDrawOverride::tqSarnDrawOverride(const MObject& obj) : MHWRender::MPxDrawOverride(obj, nullptr, false)
{
    MStatus status;
    MFnDependencyNode node(obj, &status);
    if (status)
        locator = dynamic_cast<tqSarn*>(node.userNode());
    modelEditorCallbackId = MEventMessage::addEventCallback("modelEditorChanged", modelEditorChanged, this, &status);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "modelEditorChanged callback");
}

tqSarnDrawOverride::~tqSarnDrawOverride()
{
    locator = nullptr;
    if (modelEditorCallbackId != 0)
        MMessage::removeCallback(modelEditorCallbackId);
}

void tqSarnDrawOverride::modelEditorChanged(void* clientData)
{
    guarded("modelEditorChanged callback", [&] {
        auto* self = static_cast<tqSarnDrawOverride*>(clientData);
        if (self && self->locator)
            MHWRender::MRenderer::setGeometryDrawDirty(self->locator->thisMObject(), true);
    });
}

MHWRender::DrawAPI tqSarnDrawOverride::supportedDrawAPIs() const { return MHWRender::kAllDevices; }

bool tqSarnDrawOverride::hasUIDrawables() const { return true; }

bool tqSarnDrawOverride::isBounded(const MDagPath&, const MDagPath&) const { return false; }

MUserData* tqSarnDrawOverride::prepareForDraw(const MDagPath& objPath, const MDagPath&,
                                              const MHWRender::MFrameContext&, MUserData* oldData)
{
    guarded("tqSarnDrawOverride::prepareForDraw", [&] { data.read(objPath.node()); });
    return oldData;
}

void tqSarnDrawOverride::addUIDrawables(const MDagPath&, MHWRender::MUIDrawManager& dm,
                                        const MHWRender::MFrameContext& frameContext, const MUserData*)
{
    guarded("tqSarnDrawOverride::addUIDrawables", [&] {
        // The overlay shows in the active view only.
        MDagPath activeCamera;
        M3dView::active3dView().getCamera(activeCamera);
        if (!(activeCamera == frameContext.getCurrentCameraPath()))
            return;
        int originX = 0, originY = 0, width = 0, height = 0;
        frameContext.getViewportDimensions(originX, originY, width, height);
        if (data.displayInfo > 1)
            tq::drawBrushFeedback(dm, data);
        if (data.playerpts.length() != 0)
            tq::drawAnchorRow(dm, data);
        if (data.strokes.length() != 0 && data.sizes.length() != 0)
            tq::drawStrokes(dm, data);
        if (data.magnetPt.length() != 0)
            tq::drawMagnet(dm, data);
        if (data.fusept.length() != 0 && data.fuseindices.length() != 0 && data.playersLine.length() != 0)
            tq::drawFusePreview(dm, data);
        if (data.strokesShadow.length() != 0 && data.sizesShadow.length() != 0)
            tq::drawShadows(dm, data);
        if (data.freepoints.length() != 0)
            tq::drawFreeBorder(dm, data);
        if (data.tweakRadius.length() != 0)
            tq::drawTweakCircle(dm, data);
        if (data.displaySize > 0.01)
            tq::drawDisplaySpikes(dm, data);
        if (data.freezeMedian.length() != 0)
            tq::drawMedianDots(dm, data);
        if (data.symmetry != 0)
            tq::drawSymmetryPlane(dm);
        if (data.playersLine.length() != 0)
            tq::drawPlayerLine(dm, data);
        tq::drawInfoText(dm, height);
    });
}
