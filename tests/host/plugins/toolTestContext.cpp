// The context of the tool test plug-in and its context command.

#include "toolTestPlugin.h"

#include <maya/M3dView.h>
#include <maya/MArgParser.h>
#include <maya/MCursor.h>
#include <maya/MEvent.h>
#include <maya/MPoint.h>
#include <maya/MUIDrawManager.h>

#include <stdexcept>

namespace tooltest {
namespace {

MString describe(const MEvent& event)
{
    short x = 0, y = 0;
    event.getPosition(x, y);
    MString s = "button=";
    s += static_cast<int>(event.mouseButton());
    s += event.isModifierShift() ? " shift=1" : " shift=0";
    s += event.isModifierControl() ? " ctrl=1" : " ctrl=0";
    s += " at ";
    s += static_cast<int>(x);
    s += ",";
    s += static_cast<int>(y);
    return s;
}

} // namespace

void TestContext::toolOnSetup(MEvent&)
{
    setCursor(MCursor::doubleCrossHairCursor);
    setTitleString(title);
    setHelpString("Drag to set testTool.value");
    log("testContext.toolOnSetup " + title);
}

void TestContext::toolOffCleanup() { log("testContext.toolOffCleanup " + title); }

void TestContext::askRefresh()
{
    if (refresh)
        M3dView::active3dView().refresh(false, false);
}

MStatus TestContext::doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    fDragged = false;
    log("testContext.doPress " + describe(event));
    if (level == 13)
        throw std::runtime_error("testContext throws on purpose");
    askRefresh();
    return MS::kSuccess;
}

MStatus TestContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext&)
{
    fDragged = true;
    log("testContext.doDrag " + describe(event));
    short x = 0, y = 0;
    event.getPosition(x, y);
    drawMgr.beginDrawable();
    drawMgr.line2d(MPoint(0.0, 0.0), MPoint(x, y));
    drawMgr.endDrawable();
    askRefresh();
    return MS::kSuccess;
}

MStatus TestContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    log("testContext.doRelease " + describe(event));
    if (fDragged) {
        // One undoable step per drag: the value is the release's x pixel.
        short x = 0, y = 0;
        event.getPosition(x, y);
        auto* command = static_cast<TestToolCmd*>(newToolCommand());
        if (!command)
            return MS::kFailure;
        command->setValue(x);
        command->redoIt();
        MStatus status = command->finalize();
        CHECK_MSTATUS_AND_RETURN_IT(status);
        // A command made and never finalized: the host deletes it at the next press.
        auto* spare = static_cast<TestToolCmd*>(newToolCommand());
        if (spare)
            spare->setValue(-x);
    }
    askRefresh();
    return MS::kSuccess;
}

MStatus TestContext::doPtrMoved(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    log("testContext.doPtrMoved " + describe(event));
    askRefresh();
    return MS::kSuccess;
}

MStatus TestContext::drawFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext&)
{
    log("testContext.drawFeedback");
    drawMgr.beginDrawable();
    drawMgr.point(MPoint(0.0, 0.0, 0.0));
    drawMgr.endDrawable();
    return MS::kSuccess;
}

void TestContext::completeAction() { log("testContext.completeAction"); }
void TestContext::deleteAction() { log("testContext.deleteAction"); }
void TestContext::abortAction() { log("testContext.abortAction"); }

// ---- testContext, the command --------------------------------------------------------------

void* TestContextCmd::creator() { return new TestContextCmd; }

MStatus TestContextCmd::appendSyntax()
{
    MSyntax s = syntax();
    MStatus status = s.addFlag("-rf", "-refresh", MSyntax::kBoolean);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = s.addFlag("-lv", "-level", MSyntax::kLong);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = s.addFlag("-t", "-title", MSyntax::kString);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    return s.addFlag("-cmp", "-complete", MSyntax::kBoolean);
}

MPxContext* TestContextCmd::makeObj()
{
    fContext = new TestContext;
    return fContext;
}

MStatus TestContextCmd::doEditFlags()
{
    MStatus status;
    MArgParser args = parser(&status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    log("testContextCmd.doEditFlags");
    if (args.isFlagSet("-rf"))
        args.getFlagArgument("-rf", 0, fContext->refresh);
    if (args.isFlagSet("-level"))
        args.getFlagArgument("-level", 0, fContext->level);
    if (args.isFlagSet("-t"))
        args.getFlagArgument("-t", 0, fContext->title);
    if (args.isFlagSet("-cmp"))
        fContext->completeAction();
    return MS::kSuccess;
}

MStatus TestContextCmd::doQueryFlags()
{
    MStatus status;
    MArgParser args = parser(&status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    log("testContextCmd.doQueryFlags");
    if (args.isFlagSet("-lv"))
        setResult(fContext->level);
    if (args.isFlagSet("-t"))
        setResult(fContext->title);
    if (args.isFlagSet("-rf"))
        setResult(fContext->refresh);
    return MS::kSuccess;
}

} // namespace tooltest
