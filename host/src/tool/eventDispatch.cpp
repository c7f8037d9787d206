// The harness's tool events (host/tools.h): the state of the mouse and the modifier keys,
// and the delivery of each event to the active context.

#include "host/tools.h"

#include "dg/barrier.h"
#include "draw/frameState.h"
#include "tool/toolAccess.h"
#include "tool/toolRegistry.h"

#include "host/log.h"
#include "host/viewport.h"

#include <climits>

namespace host {
namespace {

struct PointerState {
    Modifiers held;
    bool buttonDown = false;
    MouseButton button = MouseButton::kLeft;
    unsigned framesDrawn = 0;
};

PointerState& pointer()
{
    static PointerState state;
    return state;
}

int buttonBits(MouseButton b)
{
    switch (b) {
    case MouseButton::kLeft: return MEvent::kLeftMouse;
    case MouseButton::kMiddle: return MEvent::kMiddleMouse;
    default: return 0;
    }
}

int modifierBits(Modifiers m) { return (m.shift ? MEvent::shiftKey : 0) | (m.control ? MEvent::controlKey : 0); }

MStatus refuse(const std::string& text)
{
    writeLog(LogLevel::kError, text);
    return MStatus::kFailure;
}

bool pixel(const char* what, int x, int y, MEvent& event, int button)
{
    if (x < SHRT_MIN || x > SHRT_MAX || y < SHRT_MIN || y > SHRT_MAX) {
        refuse(std::string(what) + ": the pixel (" + std::to_string(x) + ", " + std::to_string(y) +
               ") is out of range");
        return false;
    }
    event = ToolAccess::event(short(x), short(y), button, modifierBits(pointer().held));
    return true;
}

// Runs one handler of the active context with a fresh feedback layer, and draws a frame
// when the handler asked the view to refresh.
template <class Handler>
MStatus deliver(const char* handlerName, Handler&& handler)
{
    ContextEntry* active = ToolRegistry::instance().active();
    if (!active)
        return MStatus::kSuccess;
    MPxContext* context = active->context.get();
    clearFeedback();
    unsigned before = refreshCount(0);
    MStatus st = guardedStatus(active->name + "." + handlerName, [&] { return handler(*context); });
    if (refreshCount(0) != before) {
        drawToolFeedback(feedbackDrawManager(), currentFrameContext());
        drawFrame();
        ++pointer().framesDrawn;
    }
    return st;
}

} // namespace

MStatus setToolTo(const std::string& contextName)
{
    MStatus st = ToolRegistry::instance().setToolTo(contextName);
    if (!st)
        writeLog(LogLevel::kError, "setToolTo: no tool context named '" + contextName + "'");
    return st;
}

std::string currentTool()
{
    ContextEntry* active = ToolRegistry::instance().active();
    return active ? active->name : std::string();
}

std::string toolTitle()
{
    ContextEntry* active = ToolRegistry::instance().active();
    return active ? ToolAccess::title(active->context.get()) : std::string();
}

std::string toolHelp()
{
    ContextEntry* active = ToolRegistry::instance().active();
    return active ? ToolAccess::help(active->context.get()) : std::string();
}

std::string toolCursor()
{
    ContextEntry* active = ToolRegistry::instance().active();
    return active ? ToolAccess::cursor(active->context.get()) : std::string();
}

void holdModifiers(Modifiers held) { pointer().held = held; }
Modifiers heldModifiers() { return pointer().held; }

MStatus mousePress(int x, int y, MouseButton button)
{
    PointerState& p = pointer();
    if (p.buttonDown)
        return refuse("mousePress: a mouse button is down already; release it first");
    MEvent event;
    if (!pixel("mousePress", x, y, event, buttonBits(button)))
        return MStatus::kInvalidParameter;
    p.buttonDown = true;
    p.button = button;
    if (button == MouseButton::kRight)
        return MStatus::kSuccess;
    // A new gesture: tool commands made and not finalized by the last one go.
    ToolRegistry::instance().dropPending(ToolRegistry::instance().active());
    return deliver("doPress",
                   [&](MPxContext& c) { return c.doPress(event, feedbackDrawManager(), currentFrameContext()); });
}

MStatus mousePress(int x, int y, MouseButton button, Modifiers held)
{
    holdModifiers(held);
    return mousePress(x, y, button);
}

MStatus mouseDrag(int x, int y)
{
    PointerState& p = pointer();
    if (!p.buttonDown)
        return refuse("mouseDrag: no mouse button is down");
    MEvent event;
    if (!pixel("mouseDrag", x, y, event, buttonBits(p.button)))
        return MStatus::kInvalidParameter;
    if (p.button == MouseButton::kRight)
        return MStatus::kSuccess;
    return deliver("doDrag",
                   [&](MPxContext& c) { return c.doDrag(event, feedbackDrawManager(), currentFrameContext()); });
}

MStatus mouseDrag(int x, int y, Modifiers held)
{
    holdModifiers(held);
    return mouseDrag(x, y);
}

MStatus mouseRelease(int x, int y)
{
    PointerState& p = pointer();
    if (!p.buttonDown)
        return refuse("mouseRelease: no mouse button is down");
    MEvent event;
    if (!pixel("mouseRelease", x, y, event, buttonBits(p.button)))
        return MStatus::kInvalidParameter;
    p.buttonDown = false;
    if (p.button == MouseButton::kRight)
        return MStatus::kSuccess;
    return deliver("doRelease",
                   [&](MPxContext& c) { return c.doRelease(event, feedbackDrawManager(), currentFrameContext()); });
}

MStatus mouseRelease(int x, int y, Modifiers held)
{
    holdModifiers(held);
    return mouseRelease(x, y);
}

MStatus pointerMove(int x, int y)
{
    if (pointer().buttonDown)
        return refuse("pointerMove: a mouse button is down; moves with a button down are drags");
    MEvent event;
    if (!pixel("pointerMove", x, y, event, 0))
        return MStatus::kInvalidParameter;
    return deliver("doPtrMoved",
                   [&](MPxContext& c) { return c.doPtrMoved(event, feedbackDrawManager(), currentFrameContext()); });
}

MStatus pointerMove(int x, int y, Modifiers held)
{
    holdModifiers(held);
    return pointerMove(x, y);
}

MStatus pressKey(Key key)
{
    switch (key) {
    case Key::kEnter:
        return deliver("completeAction", [](MPxContext& c) {
            c.completeAction();
            return MStatus(MStatus::kSuccess);
        });
    case Key::kEscape:
        return deliver("abortAction", [](MPxContext& c) {
            c.abortAction();
            return MStatus(MStatus::kSuccess);
        });
    default:
        return deliver("deleteAction", [](MPxContext& c) {
            c.deleteAction();
            return MStatus(MStatus::kSuccess);
        });
    }
}

unsigned toolFramesDrawn() { return pointer().framesDrawn; }

} // namespace host
