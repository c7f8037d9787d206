#pragma once
// Running the commands plug-ins register (MPxCommand and MPxToolCommand instances): the
// instance is made with the creator, the arguments are checked against the registered
// syntax, doIt runs, and an undoable instance becomes a step of the call's undo recording.

#include "command/commandValue.h"
#include "command/interpreter.h"
#include "plugin/pluginRegistry.h"

#include <maya/MPxCommand.h>

#include <memory>

namespace host {

MStatus runPluginCommand(const CommandRecord& record, const CommandCall& call, CommandValue& result);

// A new instance of a registered command, bound to its name and syntax; null with a log
// line when the creator fails.
MPxCommand* createPluginCommand(const CommandRecord& record);

// An undo step that owns a command instance and calls its undoIt and redoIt.
std::unique_ptr<UndoStep> commandStep(std::unique_ptr<MPxCommand> command);

} // namespace host
