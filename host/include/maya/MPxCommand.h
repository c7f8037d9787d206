#pragma once
// MPxCommand: the base of plug-in commands. For each invocation the host makes an instance
// with the registered creator, checks the arguments against the registered syntax and calls
// doIt. An undoable instance run with undo enabled goes to the undo queue, which owns it and
// calls undoIt and redoIt; any other instance is deleted once doIt returns.
//
// The result functions are static: they set the result of the command that is running.

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

class MArgList;
class MIntArray;
class MDoubleArray;
class MStringArray;
class MSyntax;

namespace host {
class CommandAccess;
}

class MPxCommand {
public:
    enum MResultType { kLong, kDouble, kString, kNoArg };

    MPxCommand();
    virtual ~MPxCommand();

    virtual MStatus doIt(const MArgList& args);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    MSyntax syntax() const;
    bool isHistoryOn() const;
    MString commandString() const;
    MStatus setHistoryOn(bool state);
    MStatus setCommandString(const MString& command);

    static void displayInfo(const MString& theInfo);
    static void displayWarning(const MString& theWarning, bool showLineNumber = false);
    static void displayError(const MString& theError, bool showLineNumber = false);

    static void clearResult();
    static void setResult(unsigned int val);
    static void setResult(int val);
    static void setResult(double val);
    static void setResult(bool val);
    static void setResult(const char* val);
    static void setResult(const MString& val);
    static void setResult(const MIntArray& val);
    static void setResult(const MDoubleArray& val);
    static void setResult(const MStringArray& val);

    static void appendToResult(int val);
    static void appendToResult(double val);
    static void appendToResult(bool val);
    static void appendToResult(const char* val);
    static void appendToResult(const MString& val);
    static void appendToResult(const MStringArray& val);

    static bool isCurrentResultArray();
    static MResultType currentResultType();
    static MStatus getCurrentResult(int& val);
    static MStatus getCurrentResult(double& val);
    static MStatus getCurrentResult(MString& val);
    static MStatus getCurrentResult(MIntArray& val);
    static MStatus getCurrentResult(MDoubleArray& val);
    static MStatus getCurrentResult(MStringArray& val);
    static int currentIntResult(MStatus* ReturnStatus = nullptr);
    static double currentDoubleResult(MStatus* ReturnStatus = nullptr);
    static MString currentStringResult(MStatus* ReturnStatus = nullptr);

    static const char* className();

    // Obsolete: isUndoable decides.
    MStatus setUndoable(bool state);

private:
    friend class host::CommandAccess;
    MString fCommandName;
    MCreateSyntaxFunction fSyntaxFunction = nullptr;
    bool fHistoryOn = false;
    // Who deletes the instance: 0 the plug-in, 1 a running command call, 2 the context that
    // made it, 3 the undo queue.
    int fHostOwner = 0;
};
