#pragma once
// The harness for commands: run command text as a script or the script editor would, read
// its result, undo and redo, and read the undo queue and the journal.

#include <maya/MCommandResult.h>
#include <maya/MStatus.h>

#include <string>
#include <vector>

namespace host {

struct CommandOutput {
    MStatus status;
    MCommandResult result;
    std::string text;               // the result as text, array elements separated by blanks
    std::vector<std::string> items; // each element of the result as text; a scalar is one
};

// Runs command text, as MGlobal::executeCommand(text, displayEnabled, undoEnabled) does.
CommandOutput runCommand(const std::string& text, bool undoEnabled = true, bool displayEnabled = false);

// The undo and redo of the Edit menu; each fails with a warning when there is nothing to do.
MStatus undo();
MStatus redo();
// Entries that undo (redo) can take back (do again).
unsigned undoQueueLength();
unsigned redoQueueLength();
// Labels of the entries undo can take back, oldest first: the command text of a call, or the
// journal line of a finalized tool command.
std::vector<std::string> undoQueueLabels();
void flushUndoQueue();

// The script path: the directories added here, in order, then those of MAYA_SCRIPT_PATH
// (colon-separated, read at each lookup). `source` and the sourcing of a script named like an
// unknown command look there.
void addScriptDirectory(const std::string& directory);
std::vector<std::string> scriptDirectories();
// The script a name stands for ("tqSarnLaunch", "tqSarnLaunch.mel" or a path); empty when
// there is none.
std::string findScript(const std::string& name);
// Whether a global procedure of that name has been defined.
bool procedureExists(const std::string& name);

// What the script editor would echo, oldest first.
std::vector<std::string> journalLines();
void clearJournal();

} // namespace host
