#include "host/commands.h"

#include "command/commandAccess.h"
#include "command/interpreter.h"
#include "command/undoQueue.h"

namespace host {

CommandOutput runCommand(const std::string& text, bool undoEnabled, bool displayEnabled)
{
    CommandRun run = interpret(text, undoEnabled, displayEnabled);
    CommandOutput out;
    out.status = run.status;
    CommandAccess::setValue(out.result, run.result);
    out.text = run.result.text();
    out.items = run.result.items();
    return out;
}

MStatus undo() { return UndoQueue::instance().undo(); }
MStatus redo() { return UndoQueue::instance().redo(); }
unsigned undoQueueLength() { return UndoQueue::instance().undoCount(); }
unsigned redoQueueLength() { return UndoQueue::instance().redoCount(); }
std::vector<std::string> undoQueueLabels() { return UndoQueue::instance().labels(); }
void flushUndoQueue() { UndoQueue::instance().flush(); }
std::vector<std::string> journalLines() { return journalStore(); }
void clearJournal() { journalStore().clear(); }

} // namespace host
