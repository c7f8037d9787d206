#pragma once
// The command interpreter: runs command text (see commandParser.h for the language) and
// dispatches each command to a built-in command, a plug-in command, or a plug-in context
// command. It installs itself as the host's command runner when the library loads, so
// MGlobal::executeCommand and MDGModifier::commandToExecute reach it.
//
// Undo: every call records what its commands change. A call made with undo enabled turns
// its recording into one entry of the undo queue, or, when it runs inside another call made
// with undo enabled, into a step of that call's recording. A call made with undo disabled
// makes no entry; its recording goes back to the caller only (MDGModifier uses it to undo
// its command text).

#include "command/commandValue.h"
#include "command/undoQueue.h"

#include <maya/MStatus.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

// One command statement, its arguments evaluated.
struct CommandCall {
    std::string name;
    std::vector<ArgValue> args;
    std::string text; // the statement as written
};

using BuiltinCommand = std::function<MStatus(const CommandCall& call, CommandValue& result)>;
// Registers a command of the host itself; a plug-in cannot register a command of that name.
void registerBuiltinCommand(const std::string& name, BuiltinCommand command);

// Context commands are run by the tool module, which sets this at start.
using ContextCommandRunner =
    std::function<MStatus(const std::string& commandName, const CommandCall& call, CommandValue& result)>;
void setContextCommandRunner(ContextCommandRunner runner);

struct CommandRun {
    MStatus status = MStatus::kFailure;
    CommandValue result;
    std::shared_ptr<UndoRecording> changes; // null when the call changed nothing undoable
};

// How many calls of command text may run inside one another (a plug-in command that runs
// command text, a modifier's commandToExecute, ...); a deeper call fails without running.
constexpr std::size_t kMaxCallNesting = 64;

// Runs command text; the result is that of the last command run. The first failing
// statement ends the run, with a log line that names what failed.
CommandRun interpret(const std::string& text, bool undoEnabled, bool displayEnabled);

// True while a call of command text that is running has recorded changes that are not yet
// an entry of the undo queue. Deliberate: undo and redo refuse to run then, because taking
// an entry back under a half-recorded call would put the call's entry after it and break
// the queue's order (undo-all would no longer restore the scene).
bool callHasPendingChanges();

// Before a plug-in's library closes, the objects of its code that the host keeps must go:
// the undo queue is emptied (as Maya flushes it when a plug-in unloads) and the release
// hooks run (the tool module drops the plug-in's contexts and tool commands).
void releasePluginObjects(const std::string& pluginName);
void addPluginReleaseHook(std::function<void(const std::string& pluginName)> hook);

// The result slot of the plug-in command that is running: MPxCommand's static result
// functions and MPxContextCommand::setResult write to it. Outside any command a scratch
// slot takes the writes.
CommandValue& currentResult();

class ResultScope {
public:
    explicit ResultScope(CommandValue& slot);
    ~ResultScope();
    ResultScope(const ResultScope&) = delete;
    ResultScope& operator=(const ResultScope&) = delete;
};

} // namespace host
