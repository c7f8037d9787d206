#include <maya/MPxContext.h>

#include "tool/toolAccess.h"
#include "tool/toolRegistry.h"

#include "host/log.h"

#include <maya/MCursor.h>

MPxContext::MPxContext() : fCursorName("defaultCursor") {}
MPxContext::~MPxContext() = default;

void MPxContext::toolOnSetup(MEvent&) {}
void MPxContext::toolOffCleanup() {}

// The Viewport 2.0 handlers fall back on the plain ones, so a context written for those
// still works in the host's only viewport.
MStatus MPxContext::doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doPress(event);
}

MStatus MPxContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doRelease(event);
}

MStatus MPxContext::doDrag(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doDrag(event);
}

MStatus MPxContext::doHold(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doHold(event);
}

MStatus MPxContext::doPtrMoved(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doPtrMoved(event);
}

MStatus MPxContext::drawFeedback(MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doPress(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doRelease(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doDrag(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doHold(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doPtrMoved(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doEnterRegion(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::doExitRegion(MEvent&) { return MStatus::kSuccess; }
MStatus MPxContext::helpStateHasChanged(MEvent&) { return MStatus::kSuccess; }

void MPxContext::deleteAction() {}
void MPxContext::completeAction() {}
void MPxContext::abortAction() {}

MStatus MPxContext::addManipulator(const MObject&)
{
    host::writeLog(host::LogLevel::kError, "MPxContext::addManipulator: this host has no manipulators");
    return MStatus::kNotImplemented;
}

MStatus MPxContext::deleteManipulators() { return MStatus::kSuccess; }

MStatus MPxContext::setImage(const MString& image, ImageIndex index)
{
    if (index < kImage1 || index > kImage3)
        return MStatus::kInvalidParameter;
    fImages[index] = image;
    return MStatus::kSuccess;
}

MString MPxContext::image(ImageIndex index, MStatus* ReturnStatus) const
{
    MString out;
    MStatus st = getImage(out, index);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

MStatus MPxContext::getImage(MString& image, ImageIndex index) const
{
    if (index < kImage1 || index > kImage3)
        return MStatus::kInvalidParameter;
    image = fImages[index];
    return MStatus::kSuccess;
}

bool MPxContext::processNumericalInput(const MDoubleArray&, const MIntArray&, bool) { return false; }
bool MPxContext::feedbackNumericalInput() const { return false; }
MSyntax::MArgType MPxContext::argTypeNumericalInput(unsigned int) const { return MSyntax::kNoArg; }
MString MPxContext::stringClassName() const { return MString(className()); }
void MPxContext::getClassName(MString& name) const { name = stringClassName(); }

MStatus MPxContext::setHelpString(const MString& str)
{
    fHelp = str;
    return MStatus::kSuccess;
}

MStatus MPxContext::setTitleString(const MString& str)
{
    fTitle = str;
    return MStatus::kSuccess;
}

MStatus MPxContext::setCursor(const MCursor& cursor)
{
    fCursorName = host::ToolAccess::cursorName(cursor);
    return MStatus::kSuccess;
}

MPxToolCommand* MPxContext::newToolCommand() { return host::ToolRegistry::instance().newToolCommand(fEntry); }

const char* MPxContext::className() { return "MPxContext"; }
