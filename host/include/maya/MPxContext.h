#pragma once
// MPxContext: the base of plug-in tools. Contexts are made by their context command and
// owned by the host; setToolTo makes one the active tool. The active context receives the
// view's mouse events through the Viewport 2.0 handlers (the draw manager given is the
// frame's feedback layer) and the keys: Enter calls completeAction, Backspace and Delete
// deleteAction, Esc abortAction. The Viewport 2.0 handlers call the plain ones by default.

#include <maya/MEvent.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class MCursor;
class MDoubleArray;
class MIntArray;
class MPxToolCommand;

namespace MHWRender {
class MUIDrawManager;
class MFrameContext;
} // namespace MHWRender

namespace host {
class ToolAccess;
struct ContextEntry;
}

class MPxContext {
public:
    enum ImageIndex { kImage1 = 0, kImage2, kImage3 };

    MPxContext();
    virtual ~MPxContext();

    virtual void toolOnSetup(MEvent& event);
    virtual void toolOffCleanup();

    virtual MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                            const MHWRender::MFrameContext& context);
    virtual MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                              const MHWRender::MFrameContext& context);
    virtual MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                               const MHWRender::MFrameContext& context);
    virtual MStatus drawFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& context);

    virtual MStatus doPress(MEvent& event);
    virtual MStatus doRelease(MEvent& event);
    virtual MStatus doDrag(MEvent& event);
    virtual MStatus doHold(MEvent& event);
    virtual MStatus doPtrMoved(MEvent& event);
    virtual MStatus doEnterRegion(MEvent& event);
    virtual MStatus doExitRegion(MEvent& event);
    virtual MStatus helpStateHasChanged(MEvent& event);

    virtual void deleteAction();
    virtual void completeAction();
    virtual void abortAction();

    virtual MStatus addManipulator(const MObject& manipulator);
    virtual MStatus deleteManipulators();

    MStatus setImage(const MString& image, ImageIndex index);
    MString image(ImageIndex index, MStatus* ReturnStatus = nullptr) const;
    MStatus getImage(MString& image, ImageIndex index) const;

    virtual bool processNumericalInput(const MDoubleArray& values, const MIntArray& flags, bool isAbsolute);
    virtual bool feedbackNumericalInput() const;
    virtual MSyntax::MArgType argTypeNumericalInput(unsigned int index) const;
    virtual MString stringClassName() const;
    virtual void getClassName(MString& name) const;

    MPxToolCommand* _newToolCommand() { return newToolCommand(); }

    static const char* className();

protected:
    MStatus setHelpString(const MString& str);
    MStatus setTitleString(const MString& str);
    MStatus setCursor(const MCursor& cursor);

    // A new instance of the tool command registered with this context's command. The host
    // keeps it until doFinalize hands it to the undo queue, or, when it is not finalized,
    // until the next button press in the view or the end of the tool.
    virtual MPxToolCommand* newToolCommand();

private:
    friend class host::ToolAccess;
    host::ContextEntry* fEntry = nullptr;
    MString fTitle;
    MString fHelp;
    MString fImages[3];
    const char* fCursorName;
};
