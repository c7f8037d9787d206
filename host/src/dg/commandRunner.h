#pragma once
// The seam between the graph and the command language: MDGModifier::commandToExecute and
// MGlobal::executeCommand send text here. The command interpreter installs itself as the
// runner; until it does, command text fails with a clear error.

#include <maya/MStatus.h>

#include <functional>
#include <string>

namespace host {

struct CommandOutcome {
    MStatus status = MStatus::kFailure;
    std::string result;                // the command's result as text
    std::function<void()> undo;        // takes the command back, when it changed anything
    std::function<void()> redo;
};

using CommandRunner = std::function<CommandOutcome(const std::string& text, bool undoable)>;

void setCommandRunner(CommandRunner runner);
CommandOutcome runCommandText(const std::string& text, bool undoable);

} // namespace host
