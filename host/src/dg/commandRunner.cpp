#include "dg/commandRunner.h"

#include "host/log.h"

namespace host {
namespace {

CommandRunner& runner()
{
    static CommandRunner r;
    return r;
}

} // namespace

void setCommandRunner(CommandRunner r) { runner() = std::move(r); }

CommandOutcome runCommandText(const std::string& text, bool undoable)
{
    if (!runner()) {
        writeLog(LogLevel::kError, "Cannot run command text (no command interpreter in this host): " + text);
        return CommandOutcome{};
    }
    return runner()(text, undoable);
}

} // namespace host
