#pragma once
// The undo queue and the journal.
//
// An entry is one step that can be undone and redone: the recording of one command call
// made with undo enabled (everything the built-in commands and undoable plug-in commands of
// that call changed), or one finalized tool command. Entries before the queue's cursor are
// done, those after it undone; a new entry drops the undone ones. Undo and redo send the
// "Undo" and "Redo" events. Starting a new scene or unloading a plug-in empties the queue.
//
// The journal is what the script editor echoes: the text of each call run with display
// enabled, each finalized tool command's argument list, and "undo: ..." / "redo: ..." for
// each undo and redo, with the label of the entry.

#include <maya/MStatus.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class UndoStep {
public:
    virtual ~UndoStep() = default;
    virtual MStatus undo() = 0;
    virtual MStatus redo() = 0;
};

// A step made of two functions.
class FunctionStep : public UndoStep {
public:
    FunctionStep(std::function<void()> undo, std::function<void()> redo)
        : fUndo(std::move(undo)), fRedo(std::move(redo))
    {
    }
    MStatus undo() override;
    MStatus redo() override;

private:
    std::function<void()> fUndo, fRedo;
};

// Steps in the order they were done: undone backwards, redone forwards.
class UndoRecording : public UndoStep {
public:
    void add(std::unique_ptr<UndoStep> step) { fSteps.push_back(std::move(step)); }
    bool empty() const { return fSteps.empty(); }
    MStatus undo() override;
    MStatus redo() override;

private:
    std::vector<std::unique_ptr<UndoStep>> fSteps;
};

// While a scope lives, recordUndoStep adds to its recording; scopes nest.
class RecordingScope {
public:
    explicit RecordingScope(UndoRecording* recording);
    ~RecordingScope();
    RecordingScope(const RecordingScope&) = delete;
    RecordingScope& operator=(const RecordingScope&) = delete;
};

// What built-in commands call after each change. Outside any command call the step is
// dropped (nothing can undo it).
void recordUndoStep(std::unique_ptr<UndoStep> step);
void recordUndo(std::function<void()> undo, std::function<void()> redo);

class UndoQueue {
public:
    static UndoQueue& instance();

    void push(const std::string& label, std::unique_ptr<UndoStep> step);
    // Fail with a warning in the log when there is nothing to undo or redo.
    MStatus undo();
    MStatus redo();
    void flush();

    unsigned undoCount() const { return unsigned(fCursor); }
    unsigned redoCount() const { return unsigned(fEntries.size() - fCursor); }
    // True while an entry is being undone or redone: the commands its callbacks run make no
    // entries of their own.
    bool busy() const { return fBusy; }
    // Labels of the entries that can be undone, oldest first.
    std::vector<std::string> labels() const;

private:
    UndoQueue();
    void finishPendingFlush();
    struct Entry {
        std::string label;
        std::unique_ptr<UndoStep> step;
    };
    std::vector<Entry> fEntries;
    std::size_t fCursor = 0;
    bool fBusy = false;
    bool fFlushPending = false;
};

void writeJournal(const std::string& line);
std::vector<std::string>& journalStore();

} // namespace host
