#pragma once
// The process's one QApplication, made on first use so that hosts without a display and
// programs that never touch the UI pay nothing for it.

class QApplication;

namespace host {

// The running QApplication, made first if there is none. Without a display (no DISPLAY,
// no WAYLAND_DISPLAY) and no QT_QPA_PLATFORM chosen, it uses Qt's offscreen platform.
// An application made elsewhere is used as it is; one made here is ended at exit.
QApplication& ensureApplication();

} // namespace host
