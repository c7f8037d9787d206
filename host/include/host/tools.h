#pragma once
// The harness for tools: activate a tool context and drive it the way a user does in the
// active view, with mouse buttons, modifier keys and the Enter, Backspace, Delete and Esc
// keys.
//
// Modifier keys are a state of their own, like keys held on a keyboard: every event carries
// the modifiers held when it happens, so letting go of Ctrl before the button is seen by the
// release. The overloads that take Modifiers set the held keys first.
//
// Before each event the tool's feedback layer is cleared; the event goes to the active
// context's Viewport 2.0 handler; when the handler asked the view to refresh, the context's
// drawFeedback runs and a frame of the active view is drawn.

#include <maya/MStatus.h>

#include <string>

namespace host {

enum class MouseButton { kLeft, kMiddle, kRight };
enum class Key { kEnter, kBackspace, kDelete, kEscape };

struct Modifiers {
    bool shift = false;
    bool control = false;
};

// As the setToolTo command: the old tool's toolOffCleanup, the new one's toolOnSetup, then
// the "ToolChanged" event. "selectSuperContext" is the host's own tool.
MStatus setToolTo(const std::string& contextName);
// The active context's name, as currentCtx gives it.
std::string currentTool();
// What the active context set with setTitleString, setHelpString and setCursor (the
// cursor's name, such as "doubleCrossHairCursor", or "custom" for a bitmap).
std::string toolTitle();
std::string toolHelp();
std::string toolCursor();

void holdModifiers(Modifiers held);
Modifiers heldModifiers();

// The handlers' status comes back. A drag or release with no button down, a press while one
// is down, or a pointer move while one is down fails with a log line. The right button
// belongs to the view's marking menu: its gestures do not reach the context.
MStatus mousePress(int x, int y, MouseButton button = MouseButton::kLeft);
MStatus mousePress(int x, int y, MouseButton button, Modifiers held);
MStatus mouseDrag(int x, int y);
MStatus mouseDrag(int x, int y, Modifiers held);
MStatus mouseRelease(int x, int y);
MStatus mouseRelease(int x, int y, Modifiers held);
MStatus pointerMove(int x, int y);
MStatus pointerMove(int x, int y, Modifiers held);
// Enter: completeAction; Backspace and Delete: deleteAction; Esc: abortAction.
MStatus pressKey(Key key);

// How many frames the event dispatch drew because a handler asked for a refresh.
unsigned toolFramesDrawn();

} // namespace host
