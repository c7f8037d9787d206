#include "draw/frameState.h"

#include "draw/drawAccess.h"
#include "view/views.h"

namespace host {
namespace {

struct FrameState {
    DrawManagerPtr feedback = DrawAccess::makeManager("the tool context");
    HostFrameContext activeContext;
};

FrameState& state()
{
    static FrameState* s = new FrameState(); // lives for the process, like the views
    return *s;
}

} // namespace

MHWRender::MUIDrawManager& feedbackDrawManager() { return *state().feedback; }

void clearFeedback() { DrawAccess::recorder(*state().feedback).clear(); }

const std::vector<DrawRecord>& feedbackRecords() { return DrawAccess::recorder(*state().feedback).records; }

const MHWRender::MFrameContext& currentFrameContext()
{
    const View* v = activeViewState();
    DrawAccess::setView(state().activeContext, v ? v->id : 0);
    return state().activeContext;
}

} // namespace host
