#include "command/pluginCommands.h"

#include "command/commandAccess.h"
#include "command/syntaxData.h"
#include "dg/barrier.h"

#include "host/log.h"

#include <maya/MArgList.h>
#include <maya/MSyntax.h>

namespace host {
namespace {

class CommandStep : public UndoStep {
public:
    explicit CommandStep(std::unique_ptr<MPxCommand> command)
        : fCommand(std::move(command)), fName(CommandAccess::name(fCommand.get()))
    {
        CommandAccess::setOwner(fCommand.get(), CommandOwner::kUndoQueue);
    }
    MStatus undo() override
    {
        return guardedStatus(fName + ".undoIt", [&] { return fCommand->undoIt(); });
    }
    MStatus redo() override
    {
        return guardedStatus(fName + ".redoIt", [&] { return fCommand->redoIt(); });
    }

private:
    std::unique_ptr<MPxCommand> fCommand;
    std::string fName;
};

} // namespace

MPxCommand* createPluginCommand(const CommandRecord& record)
{
    if (!record.creator) {
        writeLog(LogLevel::kError, record.name + ": the command has no creator");
        return nullptr;
    }
    void* made = guarded<void*>(record.name + " creator", nullptr, [&] { return record.creator(); });
    if (!made) {
        writeLog(LogLevel::kError, record.name + ": the creator made no command");
        return nullptr;
    }
    // Creators hand out their class as void*; MPxCommand is its first and only base.
    auto* command = static_cast<MPxCommand*>(made);
    CommandAccess::bind(command, record.name, record.syntax);
    return command;
}

std::unique_ptr<UndoStep> commandStep(std::unique_ptr<MPxCommand> command)
{
    return std::make_unique<CommandStep>(std::move(command));
}

MStatus runPluginCommand(const CommandRecord& record, const CommandCall& call, CommandValue& result)
{
    std::unique_ptr<MPxCommand> command(createPluginCommand(record));
    if (!command)
        return MStatus::kFailure;
    CommandAccess::setOwner(command.get(), CommandOwner::kCall);
    MArgList args = CommandAccess::makeList(call.args);

    bool checked = guarded(record.name + ".hasSyntax", true, [&] { return command->hasSyntax(); });
    if (record.syntax && checked) {
        MSyntax syntax = guarded(record.name + " syntax function", MSyntax(), [&] { return record.syntax(); });
        MStatus st;
        parseArguments(CommandAccess::data(syntax), args, record.name, &st);
        if (!st)
            return st;
    }

    CommandValue value;
    MStatus st;
    {
        ResultScope scope(value);
        st = guardedStatus(record.name + ".doIt", [&] { return command->doIt(args); });
    }
    result = value;
    if (!st) {
        writeLog(LogLevel::kError, record.name + ": the command failed (" + st.errorString().asChar() + ")");
        return st;
    }
    if (guarded(record.name + ".isUndoable", false, [&] { return command->isUndoable(); }))
        recordUndoStep(commandStep(std::move(command)));
    return st;
}

} // namespace host
