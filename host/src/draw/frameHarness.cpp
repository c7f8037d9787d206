// The harness's frames and draw records (host/viewport.h).

#include "host/viewport.h"

#include "draw/drawAccess.h"
#include "draw/drawOverrides.h"
#include "draw/frameState.h"
#include "view/cameraNode.h"
#include "view/views.h"

#include "host/log.h"

#include <map>

namespace host {

struct RecordingDrawManager::Holder {
    DrawManagerPtr manager = DrawAccess::makeManager("a test's draw manager");
};

RecordingDrawManager::RecordingDrawManager()
    : fHolder(std::make_unique<Holder>())
{
}

RecordingDrawManager::~RecordingDrawManager() = default;

MHWRender::MUIDrawManager& RecordingDrawManager::manager() { return *fHolder->manager; }

const std::vector<DrawRecord>& RecordingDrawManager::records() const
{
    return DrawAccess::recorder(*fHolder->manager).records;
}

void RecordingDrawManager::clear() { DrawAccess::recorder(*fHolder->manager).clear(); }

const MHWRender::MFrameContext& frameContext(ViewId view)
{
    if (!view)
        return currentFrameContext();
    // One context per view, kept for the process so that references stay valid.
    static auto* contexts = new std::map<ViewId, HostFrameContext>();
    return contexts->try_emplace(view, view).first->second;
}

const OverrideRecords* FrameRecords::find(const std::string& nodeNameOrPath) const
{
    for (const OverrideRecords& o : overrides) {
        if (o.node == nodeNameOrPath)
            return &o;
        const std::size_t bar = o.node.find_last_of('|');
        if (o.node.compare(bar == std::string::npos ? 0 : bar + 1, std::string::npos, nodeNameOrPath) == 0)
            return &o;
    }
    return nullptr;
}

std::vector<DrawRecord> FrameRecords::all() const
{
    std::vector<DrawRecord> out;
    for (const OverrideRecords& o : overrides)
        out.insert(out.end(), o.records.begin(), o.records.end());
    out.insert(out.end(), feedback.begin(), feedback.end());
    return out;
}

FrameRecords drawFrame(ViewId view)
{
    ensureCameraType();
    const View* v = viewOrActive(view);
    if (view && !v)
        writeLog(LogLevel::kError, "drawFrame: there is no view " + std::to_string(view));
    return drawFrameOf(v ? v->id : 0);
}

} // namespace host
