#pragma once
// DrawAccess: the host's door into the private parts of the drawing classes (the draw
// manager's recorder, the frame context's view, an override's settings), and the recorder
// a draw manager writes into.

#include "host/viewport.h"

#include <maya/MFrameContext.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MUIDrawManager.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

// What one draw manager has recorded, and the state the next call will be recorded with.
struct DrawRecorder {
    DrawState state;
    std::vector<DrawRecord> records;
    int brackets = 0;          // drawables begun so far
    bool warnedOutside = false; // a call outside any bracket has been reported
    bool warnedNesting = false;
    std::string owner; // who draws into it, for log lines: "feedback" or the node's path

    void clear()
    {
        state = DrawState();
        records.clear();
        brackets = 0;
        warnedOutside = warnedNesting = false;
    }
};

struct DrawManagerDeleter {
    void operator()(MHWRender::MUIDrawManager* manager) const;
};
using DrawManagerPtr = std::unique_ptr<MHWRender::MUIDrawManager, DrawManagerDeleter>;

// A frame context the host can make: the base class keeps its constructor for subclasses.
class HostFrameContext : public MHWRender::MDrawContext {
public:
    explicit HostFrameContext(unsigned int viewId = 0);
    ~HostFrameContext() override;
};

class DrawAccess {
public:
    static DrawManagerPtr makeManager(const std::string& owner);
    static void destroy(MHWRender::MUIDrawManager* manager) { delete manager; }
    static DrawRecorder& recorder(MHWRender::MUIDrawManager& manager) { return *manager.fRecorder; }
    static const DrawRecorder& recorder(const MHWRender::MUIDrawManager& manager) { return *manager.fRecorder; }

    static void setView(MHWRender::MFrameContext& context, unsigned int viewId) { context.fViewId = viewId; }
    static unsigned int view(const MHWRender::MFrameContext& context) { return context.fViewId; }

    static bool alwaysDirty(const MHWRender::MPxDrawOverride& o) { return o.fAlwaysDirty; }
};

} // namespace host
