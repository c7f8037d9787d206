#include <maya/MPxCommand.h>

#include "command/commandAccess.h"
#include "command/interpreter.h"
#include "dg/barrier.h"

#include "host/log.h"

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

using host::CommandValue;
using Kind = host::CommandValue::Kind;

namespace {

CommandValue& result() { return host::currentResult(); }

void append(Kind scalar, Kind array, const CommandValue& item)
{
    CommandValue& r = result();
    if (r.kind == scalar)
        r.kind = array;
    if (r.kind == Kind::kIntArray && array == Kind::kDoubleArray) {
        // Appending a double to integers makes every element a double.
        r.doubles.assign(r.ints.begin(), r.ints.end());
        r.ints.clear();
        r.kind = array;
    }
    if (r.kind != array)
        r = CommandValue{array, {}, {}, {}};
    r.ints.insert(r.ints.end(), item.ints.begin(), item.ints.end());
    r.doubles.insert(r.doubles.end(), item.doubles.begin(), item.doubles.end());
    r.strings.insert(r.strings.end(), item.strings.begin(), item.strings.end());
}

} // namespace

MPxCommand::MPxCommand() = default;
MPxCommand::~MPxCommand() = default;

MStatus MPxCommand::doIt(const MArgList&) { return MStatus::kFailure; }
MStatus MPxCommand::undoIt() { return MStatus::kFailure; }
MStatus MPxCommand::redoIt() { return MStatus::kFailure; }
bool MPxCommand::isUndoable() const { return false; }
bool MPxCommand::hasSyntax() const { return true; }

MSyntax MPxCommand::syntax() const
{
    if (!fSyntaxFunction)
        return MSyntax();
    return host::guarded(std::string(fCommandName.asChar()) + " syntax function", MSyntax(),
                         [&] { return fSyntaxFunction(); });
}

bool MPxCommand::isHistoryOn() const { return fHistoryOn; }
MString MPxCommand::commandString() const { return fCommandName; }

MStatus MPxCommand::setHistoryOn(bool state)
{
    fHistoryOn = state;
    return MStatus::kSuccess;
}

MStatus MPxCommand::setCommandString(const MString& command)
{
    fCommandName = command;
    return MStatus::kSuccess;
}

MStatus MPxCommand::setUndoable(bool) { return MStatus::kSuccess; }

void MPxCommand::displayInfo(const MString& theInfo) { host::writeLog(host::LogLevel::kInfo, theInfo.asChar()); }

void MPxCommand::displayWarning(const MString& theWarning, bool)
{
    host::writeLog(host::LogLevel::kWarning, theWarning.asChar());
}

void MPxCommand::displayError(const MString& theError, bool)
{
    host::writeLog(host::LogLevel::kError, theError.asChar());
}

void MPxCommand::clearResult() { result() = CommandValue(); }
void MPxCommand::setResult(unsigned int val) { result() = CommandValue::ofInt(static_cast<int>(val)); }
void MPxCommand::setResult(int val) { result() = CommandValue::ofInt(val); }
void MPxCommand::setResult(double val) { result() = CommandValue::ofDouble(val); }
void MPxCommand::setResult(bool val) { result() = CommandValue::ofInt(val ? 1 : 0); }
void MPxCommand::setResult(const char* val) { result() = CommandValue::ofString(val ? val : ""); }
void MPxCommand::setResult(const MString& val) { result() = CommandValue::ofString(val.asChar()); }

void MPxCommand::setResult(const MIntArray& val)
{
    std::vector<int> v;
    for (unsigned int i = 0; i < val.length(); ++i)
        v.push_back(val[i]);
    result() = CommandValue::ofInts(std::move(v));
}

void MPxCommand::setResult(const MDoubleArray& val)
{
    std::vector<double> v;
    for (unsigned int i = 0; i < val.length(); ++i)
        v.push_back(val[i]);
    result() = CommandValue::ofDoubles(std::move(v));
}

void MPxCommand::setResult(const MStringArray& val)
{
    std::vector<std::string> v;
    for (unsigned int i = 0; i < val.length(); ++i)
        v.push_back(val[i].asChar());
    result() = CommandValue::ofStrings(std::move(v));
}

void MPxCommand::appendToResult(int val) { append(Kind::kInt, Kind::kIntArray, CommandValue::ofInt(val)); }
void MPxCommand::appendToResult(double val)
{
    append(Kind::kDouble, Kind::kDoubleArray, CommandValue::ofDouble(val));
}
void MPxCommand::appendToResult(bool val) { appendToResult(val ? 1 : 0); }
void MPxCommand::appendToResult(const char* val)
{
    append(Kind::kString, Kind::kStringArray, CommandValue::ofString(val ? val : ""));
}
void MPxCommand::appendToResult(const MString& val) { appendToResult(val.asChar()); }

void MPxCommand::appendToResult(const MStringArray& val)
{
    for (unsigned int i = 0; i < val.length(); ++i)
        appendToResult(val[i]);
}

bool MPxCommand::isCurrentResultArray() { return result().isArray(); }

MPxCommand::MResultType MPxCommand::currentResultType()
{
    switch (result().kind) {
    case Kind::kInt:
    case Kind::kIntArray: return kLong;
    case Kind::kDouble:
    case Kind::kDoubleArray: return kDouble;
    case Kind::kString:
    case Kind::kStringArray: return kString;
    default: return kNoArg;
    }
}

MStatus MPxCommand::getCurrentResult(int& val)
{
    const CommandValue& r = result();
    if (r.kind == Kind::kInt)
        val = r.ints.front();
    else if (r.kind == Kind::kDouble)
        val = static_cast<int>(r.doubles.front());
    else
        return MStatus::kInvalidParameter;
    return MStatus::kSuccess;
}

MStatus MPxCommand::getCurrentResult(double& val)
{
    const CommandValue& r = result();
    if (r.kind == Kind::kInt)
        val = r.ints.front();
    else if (r.kind == Kind::kDouble)
        val = r.doubles.front();
    else
        return MStatus::kInvalidParameter;
    return MStatus::kSuccess;
}

MStatus MPxCommand::getCurrentResult(MString& val)
{
    const CommandValue& r = result();
    if (r.kind != Kind::kString)
        return MStatus::kInvalidParameter;
    val = MString(r.strings.front().c_str());
    return MStatus::kSuccess;
}

MStatus MPxCommand::getCurrentResult(MIntArray& val)
{
    const CommandValue& r = result();
    if (r.kind != Kind::kInt && r.kind != Kind::kIntArray)
        return MStatus::kInvalidParameter;
    val.clear();
    for (int v : r.ints)
        val.append(v);
    return MStatus::kSuccess;
}

MStatus MPxCommand::getCurrentResult(MDoubleArray& val)
{
    const CommandValue& r = result();
    if (r.kind != Kind::kDouble && r.kind != Kind::kDoubleArray && r.kind != Kind::kInt &&
        r.kind != Kind::kIntArray)
        return MStatus::kInvalidParameter;
    val.clear();
    for (int v : r.ints)
        val.append(v);
    for (double v : r.doubles)
        val.append(v);
    return MStatus::kSuccess;
}

MStatus MPxCommand::getCurrentResult(MStringArray& val)
{
    const CommandValue& r = result();
    if (r.kind != Kind::kString && r.kind != Kind::kStringArray)
        return MStatus::kInvalidParameter;
    val.clear();
    for (const std::string& v : r.strings)
        val.append(MString(v.c_str()));
    return MStatus::kSuccess;
}

int MPxCommand::currentIntResult(MStatus* ReturnStatus)
{
    int v = 0;
    MStatus st = getCurrentResult(v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

double MPxCommand::currentDoubleResult(MStatus* ReturnStatus)
{
    double v = 0.0;
    MStatus st = getCurrentResult(v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

MString MPxCommand::currentStringResult(MStatus* ReturnStatus)
{
    MString v;
    MStatus st = getCurrentResult(v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

const char* MPxCommand::className() { return "MPxCommand"; }
