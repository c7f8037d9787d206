#include "dg/barrier.h"

#include "host/log.h"

namespace host {

void reportCallbackException(const std::string& callback, const char* what)
{
    std::string text = "Exception in plug-in callback " + callback;
    if (what)
        text += std::string(": ") + what;
    writeLog(LogLevel::kError, text);
}

} // namespace host
