#include "command/undoQueue.h"

#include "dg/messages.h"

#include "host/log.h"

#include <maya/MEventMessage.h>

namespace host {
namespace {

std::vector<UndoRecording*>& recordingStack()
{
    static std::vector<UndoRecording*> stack;
    return stack;
}

void flushOnNewScene(void*) { UndoQueue::instance().flush(); }

} // namespace

MStatus FunctionStep::undo()
{
    if (fUndo)
        fUndo();
    return MStatus::kSuccess;
}

MStatus FunctionStep::redo()
{
    if (fRedo)
        fRedo();
    return MStatus::kSuccess;
}

MStatus UndoRecording::undo()
{
    MStatus result;
    for (auto it = fSteps.rbegin(); it != fSteps.rend(); ++it) {
        MStatus st = (*it)->undo();
        if (!st && result)
            result = st;
    }
    return result;
}

MStatus UndoRecording::redo()
{
    MStatus result;
    for (auto& step : fSteps) {
        MStatus st = step->redo();
        if (!st && result)
            result = st;
    }
    return result;
}

RecordingScope::RecordingScope(UndoRecording* recording) { recordingStack().push_back(recording); }
RecordingScope::~RecordingScope() { recordingStack().pop_back(); }

void recordUndoStep(std::unique_ptr<UndoStep> step)
{
    if (!recordingStack().empty() && recordingStack().back())
        recordingStack().back()->add(std::move(step));
}

void recordUndo(std::function<void()> undo, std::function<void()> redo)
{
    recordUndoStep(std::make_unique<FunctionStep>(std::move(undo), std::move(redo)));
}

UndoQueue& UndoQueue::instance()
{
    // Lives for the process: entries own plug-in commands whose code may run at exit.
    static UndoQueue* queue = new UndoQueue();
    return *queue;
}

UndoQueue::UndoQueue() { MEventMessage::addEventCallback("NewSceneOpened", flushOnNewScene, nullptr); }

void UndoQueue::push(const std::string& label, std::unique_ptr<UndoStep> step)
{
    if (!step)
        return;
    // Undone entries cannot come back once something new is done.
    std::vector<Entry> dropped;
    for (std::size_t i = fCursor; i < fEntries.size(); ++i)
        dropped.push_back(std::move(fEntries[i]));
    fEntries.resize(fCursor);
    fEntries.push_back(Entry{label, std::move(step)});
    fCursor = fEntries.size();
}

MStatus UndoQueue::undo()
{
    if (fBusy) {
        writeLog(LogLevel::kError, "undo: cannot undo while an undo or redo is running");
        return MStatus::kFailure;
    }
    if (fCursor == 0) {
        writeLog(LogLevel::kWarning, "There are no more commands to undo.");
        return MStatus::kFailure;
    }
    Entry& entry = fEntries[--fCursor];
    std::string label = entry.label;
    fBusy = true;
    MStatus st = entry.step->undo();
    fBusy = false;
    finishPendingFlush();
    writeJournal("undo: " + label);
    if (!st)
        writeLog(LogLevel::kError, "Undo of '" + label + "' failed: " + st.errorString().asChar());
    sendEvent("Undo");
    return st;
}

MStatus UndoQueue::redo()
{
    if (fBusy) {
        writeLog(LogLevel::kError, "redo: cannot redo while an undo or redo is running");
        return MStatus::kFailure;
    }
    if (fCursor == fEntries.size()) {
        writeLog(LogLevel::kWarning, "There are no more commands to redo.");
        return MStatus::kFailure;
    }
    Entry& entry = fEntries[fCursor++];
    std::string label = entry.label;
    fBusy = true;
    MStatus st = entry.step->redo();
    fBusy = false;
    finishPendingFlush();
    writeJournal("redo: " + label);
    if (!st)
        writeLog(LogLevel::kError, "Redo of '" + label + "' failed: " + st.errorString().asChar());
    sendEvent("Redo");
    return st;
}

void UndoQueue::flush()
{
    // The entry being undone or redone is in use: it goes when it returns.
    if (fBusy) {
        fFlushPending = true;
        return;
    }
    // Entries may run plug-in destructors that reach the queue again: empty it first.
    std::vector<Entry> old;
    old.swap(fEntries);
    fCursor = 0;
}

void UndoQueue::finishPendingFlush()
{
    if (fFlushPending) {
        fFlushPending = false;
        flush();
    }
}

std::vector<std::string> UndoQueue::labels() const
{
    std::vector<std::string> out;
    for (std::size_t i = 0; i < fCursor; ++i)
        out.push_back(fEntries[i].label);
    return out;
}

std::vector<std::string>& journalStore()
{
    static std::vector<std::string> lines;
    return lines;
}

void writeJournal(const std::string& line) { journalStore().push_back(line); }

} // namespace host
