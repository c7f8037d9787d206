#pragma once
// The tool test plug-in: commands, a context, its context command and its tool command, built
// against the API headers only. Every callback writes one "toolTest: ..." info line to the
// log, so the tests see which callbacks ran, in which order and with what.
//
//   testSet      an undoable command that sets a double option variable (-name, -value);
//                -throw and -fail make doIt throw or fail, -notUndoable keeps it off the queue
//   testArgs     reports what MArgDatabase read, as a string array of "key=value" entries
//   testContext  the context command; edit and query flags -refresh, -level, -title,
//                -complete; its contexts log every event and finalize one testToolCmd per
//                drag; at level 13 doPress throws
//   testToolCmd  the tool command; sets the option variable "testTool.value"

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxToolCommand.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

namespace tooltest {

void log(const MString& text);

class TestSetCmd : public MPxCommand {
public:
    static void* creator();
    static MSyntax newSyntax();
    ~TestSetCmd() override;
    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    void apply(double value, bool exists);
    MString fName;
    double fValue = 0.0;
    double fPrevious = 0.0;
    bool fExisted = false;
    bool fUndoable = true;
};

class TestArgsCmd : public MPxCommand {
public:
    static void* creator();
    static MSyntax newSyntax();
    MStatus doIt(const MArgList& args) override;
};

class TestToolCmd : public MPxToolCommand {
public:
    static void* creator();
    static MSyntax newSyntax();
    ~TestToolCmd() override;
    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;
    MStatus finalize() override;
    void setValue(double value) { fValue = value; }

private:
    double fValue = 0.0;
    double fPrevious = 0.0;
    bool fExisted = false;
};

class TestContext : public MPxContext {
public:
    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                    const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                      const MHWRender::MFrameContext& context) override;
    MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                       const MHWRender::MFrameContext& context) override;
    MStatus drawFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& context) override;
    void completeAction() override;
    void deleteAction() override;
    void abortAction() override;

    bool refresh = false;
    int level = 0;
    MString title = "Test Tool";

private:
    void askRefresh();
    bool fDragged = false;
};

class TestContextCmd : public MPxContextCommand {
public:
    static void* creator();
    MStatus doEditFlags() override;
    MStatus doQueryFlags() override;
    MPxContext* makeObj() override;
    MStatus appendSyntax() override;

private:
    TestContext* fContext = nullptr;
};

} // namespace tooltest
