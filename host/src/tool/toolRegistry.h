#pragma once
// The tools of the session: every context made by a context command (with the command
// instance that made it and answers its edits and queries), the host's own select tool,
// and which one is active.
//
// setToolTo runs the old tool's toolOffCleanup, then the new tool's toolOnSetup, then sends
// "ToolChanged". Tool commands a context makes with newToolCommand are kept with the context
// until doFinalize hands them to the undo queue; the ones never finalized are deleted at the
// next button press in the view and when the tool is left.

#include "command/commandValue.h"
#include "command/interpreter.h"

#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxToolCommand.h>
#include <maya/MStatus.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace MHWRender {
class MUIDrawManager;
class MFrameContext;
} // namespace MHWRender

namespace host {

struct ContextEntry {
    std::string name;        // "fooContext1"
    std::string commandName; // the context command that made it; empty for the host's tools
    std::string plugin;
    std::unique_ptr<MPxContextCommand> command;
    std::unique_ptr<MPxContext> context;
    std::vector<std::unique_ptr<MPxToolCommand>> pendingToolCommands;
};

class ToolRegistry {
public:
    static ToolRegistry& instance();

    // The host's own tool, active when no other is.
    static const char* const kSelectTool;

    ContextEntry* find(const std::string& name);
    ContextEntry* active() { return fActive; }

    MStatus setToolTo(const std::string& name);
    MStatus runContextCommand(const std::string& commandName, const CommandCall& call, CommandValue& result);

    MPxToolCommand* newToolCommand(ContextEntry* entry);
    // Hands a pending tool command over (to the undo queue); null when the context does not
    // hold it.
    std::unique_ptr<MPxToolCommand> takePending(MPxToolCommand* command);
    void dropPending(ContextEntry* entry);

    // As deleteUI -toolContext: the context and its command go; an active one is left for the
    // select tool first. The select tool itself cannot go.
    MStatus deleteContext(const std::string& name);

    // Before the plug-in's library closes: its contexts go, the active one after its
    // toolOffCleanup.
    void releasePlugin(const std::string& pluginName);

private:
    ToolRegistry();
    MStatus createContext(const std::string& commandName, const CommandCall& call, CommandValue& result);
    MStatus editOrQuery(ContextEntry* entry, const CommandCall& call, CommandValue& result);

    std::vector<std::unique_ptr<ContextEntry>> fEntries;
    ContextEntry* fActive = nullptr;
    std::map<std::string, unsigned> fCounters;
};

// The active context's drawFeedback into the given manager, through the exception barrier;
// the frame drawing calls it so that the tool's feedback follows every redraw.
MStatus drawToolFeedback(MHWRender::MUIDrawManager& drawManager, const MHWRender::MFrameContext& frameContext);

} // namespace host
