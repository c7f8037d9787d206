#pragma once
// tqSarnDrawOverride: the tool's whole overlay, drawn for the `tqSarn` store locator. It draws
// nothing of its own state: at every update it copies the store's attributes (prepareForDraw)
// and replays them through the draw manager (addUIDrawables), and only in the active view. It
// is not always dirty: the store's preEvaluation and the "modelEditorChanged" event mark it
// for an update, which is how a write to the store reaches the screen.

#include "display/overlayData.h"

#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MString.h>

class tqSarn;

class tqSarnDrawOverride : public MHWRender::MPxDrawOverride {
public:
    static MHWRender::MPxDrawOverride* creator(const MObject& obj);
    static const MString registrantId;

    ~tqSarnDrawOverride() override;

    MHWRender::DrawAPI supportedDrawAPIs() const override;
    bool hasUIDrawables() const override;
    bool isBounded(const MDagPath& objPath, const MDagPath& cameraPath) const override;
    MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                              const MHWRender::MFrameContext& frameContext, MUserData* oldData) override;
    void addUIDrawables(const MDagPath& objPath, MHWRender::MUIDrawManager& drawManager,
                        const MHWRender::MFrameContext& frameContext, const MUserData* data) override;

private:
    explicit tqSarnDrawOverride(const MObject& obj);
    static void modelEditorChanged(void* clientData);

    tq::OverlayData data;
    tqSarn* locator = nullptr; // the store node this override draws; not owned
    MCallbackId modelEditorCallbackId = 0;
};
