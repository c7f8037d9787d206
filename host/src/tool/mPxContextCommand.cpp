#include <maya/MPxContextCommand.h>

#include "command/commandAccess.h"
#include "command/interpreter.h"

MPxContextCommand::MPxContextCommand() = default;
MPxContextCommand::~MPxContextCommand() = default;

MStatus MPxContextCommand::doEditFlags() { return MStatus::kSuccess; }
MStatus MPxContextCommand::doQueryFlags() { return MStatus::kSuccess; }
MPxContext* MPxContextCommand::makeObj() { return nullptr; }
MStatus MPxContextCommand::appendSyntax() { return MStatus::kSuccess; }

MStatus MPxContextCommand::setResult(bool result)
{
    host::currentResult() = host::CommandValue::ofInt(result ? 1 : 0);
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(int result)
{
    host::currentResult() = host::CommandValue::ofInt(result);
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(double result)
{
    host::currentResult() = host::CommandValue::ofDouble(result);
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(const MString& result)
{
    host::currentResult() = host::CommandValue::ofString(result.asChar());
    return MStatus::kSuccess;
}

MSyntax MPxContextCommand::syntax(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return fSyntax;
}

MArgParser MPxContextCommand::parser(MStatus* ReturnStatus) const
{
    // Only an invocation in progress has arguments to read.
    if (ReturnStatus)
        *ReturnStatus = host::CommandAccess::parsed(fParser) ? MStatus::kSuccess : MStatus::kFailure;
    return fParser;
}

const char* MPxContextCommand::className() { return "MPxContextCommand"; }
