#include <maya/MPxToolCommand.h>

#include "command/commandAccess.h"
#include "command/pluginCommands.h"
#include "command/undoQueue.h"
#include "tool/toolRegistry.h"

#include "host/log.h"

#include <maya/MArgList.h>

#include <string>
#include <vector>

MPxToolCommand::MPxToolCommand() = default;
MPxToolCommand::~MPxToolCommand() = default;

MStatus MPxToolCommand::cancel() { return MStatus::kSuccess; }

MStatus MPxToolCommand::finalize()
{
    MArgList command;
    command.addArg(commandString());
    return doFinalize(command);
}

MStatus MPxToolCommand::doFinalize(MArgList& command)
{
    using host::CommandAccess;
    using host::CommandOwner;
    // The journal shows the arguments as they would be typed, without quotes.
    std::string line;
    for (const host::ArgValue& a : CommandAccess::items(command)) {
        std::vector<std::string> parts = a.isArray() ? a.items : std::vector<std::string>{a.text};
        for (const std::string& part : parts)
            line += (line.empty() ? "" : " ") + part;
    }
    if (line.empty())
        line = commandString().asChar();
    CommandOwner owner = CommandAccess::owner(this);
    if (owner == CommandOwner::kUndoQueue) {
        host::writeLog(host::LogLevel::kError, "doFinalize: " + line + " was finalized already");
        return MStatus::kFailure;
    }
    if (host::UndoQueue::instance().busy()) {
        host::writeLog(host::LogLevel::kError, "doFinalize: " + line + " cannot join the undo queue during an undo");
        return MStatus::kFailure;
    }
    host::writeJournal(line);
    // Run as command text, the command belongs to its call, which puts it on the queue
    // when it is undoable.
    if (owner == CommandOwner::kCall)
        return MStatus::kSuccess;
    std::unique_ptr<MPxToolCommand> owned = host::ToolRegistry::instance().takePending(this);
    if (!owned)
        owned.reset(this); // made by the plug-in itself: the queue takes it over
    host::UndoQueue::instance().push(line, host::commandStep(std::move(owned)));
    return MStatus::kSuccess;
}

const char* MPxToolCommand::className() { return "MPxToolCommand"; }
