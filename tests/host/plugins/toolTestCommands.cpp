// The commands of the tool test plug-in: testSet, testArgs and the tool command testToolCmd.

#include "toolTestPlugin.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <stdexcept>

namespace tooltest {

void log(const MString& text) { MGlobal::displayInfo("toolTest: " + text); }

namespace {

MString number(double v)
{
    MString s;
    s += v;
    return s;
}

const char* const kToolValue = "testTool.value";

} // namespace

// ---- testSet ------------------------------------------------------------------------------

void* TestSetCmd::creator() { return new TestSetCmd; }

MSyntax TestSetCmd::newSyntax()
{
    MSyntax s;
    s.addFlag("-n", "-name", MSyntax::kString);
    s.addFlag("-v", "-value", MSyntax::kDouble);
    s.addFlag("-t", "-throw");
    s.addFlag("-f", "-fail");
    s.addFlag("-nu", "-notUndoable");
    s.enableQuery();
    // "-q -n name" names what to query.
    s.makeFlagQueryWithFullArgs("-n", false);
    return s;
}

TestSetCmd::~TestSetCmd() { log("testSet.destroyed " + fName); }

MStatus TestSetCmd::doIt(const MArgList& args)
{
    MStatus status;
    MArgDatabase db(syntax(), args, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    fName = "testSet.value";
    if (db.isFlagSet("-name"))
        db.getFlagArgument("-name", 0, fName);
    log("testSet.doIt " + fName);
    if (db.isFlagSet("-throw"))
        throw std::runtime_error("testSet throws on purpose");
    if (db.isFlagSet("-fail")) {
        displayError("testSet fails on purpose");
        return MS::kFailure;
    }
    if (db.isQuery()) {
        fUndoable = false;
        setResult(MGlobal::optionVarDoubleValue(fName));
        return MS::kSuccess;
    }
    fUndoable = !db.isFlagSet("-nu");
    status = db.getFlagArgument("-v", 0, fValue);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    fPrevious = MGlobal::optionVarDoubleValue(fName, &fExisted);
    apply(fValue, true);
    setResult(fPrevious);
    return MS::kSuccess;
}

MStatus TestSetCmd::undoIt()
{
    log("testSet.undoIt " + fName);
    apply(fPrevious, fExisted);
    return MS::kSuccess;
}

MStatus TestSetCmd::redoIt()
{
    log("testSet.redoIt " + fName);
    apply(fValue, true);
    return MS::kSuccess;
}

bool TestSetCmd::isUndoable() const { return fUndoable; }

void TestSetCmd::apply(double value, bool exists)
{
    if (exists)
        MGlobal::setOptionVarValue(fName, value);
    else
        MGlobal::removeOptionVar(fName);
}

// ---- testArgs -----------------------------------------------------------------------------

void* TestArgsCmd::creator() { return new TestArgsCmd; }

MSyntax TestArgsCmd::newSyntax()
{
    MSyntax s;
    s.addFlag("-am", "-mergeAll", MSyntax::kLong);
    s.addFlag("-d", "-distance", MSyntax::kDouble);
    s.addFlag("-s", "-string", MSyntax::kString);
    s.addFlag("-b", "-bool", MSyntax::kBoolean);
    s.addFlag("-u", "-unsigned", MSyntax::kUnsigned);
    s.addFlag("-p", "-point", MSyntax::kDouble, MSyntax::kDouble, MSyntax::kDouble);
    s.addFlag("-m", "-multi", MSyntax::kString);
    s.makeFlagMultiUse("-m");
    s.addFlag("-sel", "-selectionItem", MSyntax::kSelectionItem);
    s.setObjectType(MSyntax::kStringObjects, 0, 3);
    s.useSelectionAsDefault(true);
    s.enableQuery();
    s.enableEdit();
    return s;
}

MStatus TestArgsCmd::doIt(const MArgList& args)
{
    MStatus status;
    MArgDatabase db(syntax(), args, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MStringArray out;
    if (db.isFlagSet("am")) {
        int v = 0;
        db.getFlagArgument("am", 0, v);
        out.append(MString("am=") + number(v));
    }
    if (db.isFlagSet("-distance"))
        out.append("d=" + number(db.flagArgumentDouble("-d", 0)));
    if (db.isFlagSet("-s"))
        out.append("s=" + db.flagArgumentString("-string", 0));
    if (db.isFlagSet("-b")) {
        bool v = false;
        db.getFlagArgument("-b", 0, v);
        out.append(v ? "b=true" : "b=false");
    }
    if (db.isFlagSet("-u")) {
        unsigned int v = 0;
        db.getFlagArgument("-u", 0, v);
        out.append(MString("u=") + number(v));
    }
    if (db.isFlagSet("-p")) {
        double x = 0, y = 0, z = 0;
        db.getFlagArgument("-p", 0, x);
        db.getFlagArgument("-p", 1, y);
        db.getFlagArgument("-p", 2, z);
        out.append("p=" + number(x) + "," + number(y) + "," + number(z));
    }
    unsigned int uses = db.numberOfFlagUses("-m");
    if (uses > 0) {
        MString all = "m=";
        for (unsigned int i = 0; i < uses; ++i) {
            MArgList use;
            db.getFlagArgumentList("-m", i, use);
            all += (i ? "|" : "") + use.asString(0);
        }
        out.append(all);
    }
    if (db.isFlagSet("-sel")) {
        MSelectionList list;
        status = db.getFlagArgument("-sel", 0, list);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        MStringArray names;
        list.getSelectionStrings(names);
        out.append("sel=" + (names.length() ? names[0] : MString()));
    }
    if (db.isQuery())
        out.append("q");
    if (db.isEdit())
        out.append("e");
    MStringArray objects;
    db.getObjects(objects);
    for (unsigned int i = 0; i < objects.length(); ++i)
        out.append("obj=" + objects[i]);
    setResult(out);
    return MS::kSuccess;
}

// ---- testToolCmd --------------------------------------------------------------------------

void* TestToolCmd::creator() { return new TestToolCmd; }

MSyntax TestToolCmd::newSyntax()
{
    MSyntax s;
    s.addFlag("-v", "-value", MSyntax::kDouble);
    return s;
}

TestToolCmd::~TestToolCmd() { log("testToolCmd.destroyed " + number(fValue)); }

MStatus TestToolCmd::doIt(const MArgList& args)
{
    MStatus status;
    MArgDatabase db(syntax(), args, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = db.getFlagArgument("-v", 0, fValue);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    log("testToolCmd.doIt " + number(fValue));
    fPrevious = MGlobal::optionVarDoubleValue(kToolValue, &fExisted);
    MGlobal::setOptionVarValue(kToolValue, fValue);
    return MS::kSuccess;
}

MStatus TestToolCmd::undoIt()
{
    log("testToolCmd.undoIt " + number(fValue));
    if (fExisted)
        MGlobal::setOptionVarValue(kToolValue, fPrevious);
    else
        MGlobal::removeOptionVar(kToolValue);
    return MS::kSuccess;
}

MStatus TestToolCmd::redoIt()
{
    log("testToolCmd.redoIt " + number(fValue));
    fPrevious = MGlobal::optionVarDoubleValue(kToolValue, &fExisted);
    MGlobal::setOptionVarValue(kToolValue, fValue);
    return MS::kSuccess;
}

bool TestToolCmd::isUndoable() const { return true; }

MStatus TestToolCmd::finalize()
{
    MArgList command;
    command.addArg(commandString());
    command.addArg(MString("-v"));
    command.addArg(fValue);
    return doFinalize(command);
}

} // namespace tooltest
