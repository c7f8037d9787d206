#include "ui/application.h"

#include <QtCore/QtGlobal>
#include <QtWidgets/QApplication>

#include <cstdlib>

namespace host {

namespace {

QApplication* made = nullptr;

void endApplication()
{
    // Only the one made here, and only if nobody ended it already.
    if (made && QCoreApplication::instance() == made)
        delete made;
    made = nullptr;
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QApplication* makeApplication()
{
    if (!hasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    // QApplication keeps references to argc and argv for its whole life.
    static int argc = 1;
    static char programName[] = "tqhost";
    static char* argv[] = {programName, nullptr};
    made = new QApplication(argc, argv);
    // Ended at exit so that Qt hands back what it holds (fonts, the platform plugin).
    // Registered after the application exists, so the Qt globals it made on the way are
    // still alive when it goes.
    static const bool endsAtExit = std::atexit(endApplication) == 0;
    (void)endsAtExit;
    return made;
}

} // namespace

QApplication& ensureApplication()
{
    QCoreApplication* existing = QCoreApplication::instance();
    if (!existing)
        return *makeApplication();
    auto* application = qobject_cast<QApplication*>(existing);
    if (!application)
        qFatal("tqhost: the process has a QCoreApplication without widgets; the UI needs a QApplication");
    return *application;
}

} // namespace host
