#include "host/log.h"

#include <cstdlib>
#include <iostream>

namespace host {
namespace {

std::vector<LogEntry>& entries()
{
    static std::vector<LogEntry> log;
    return log;
}

const char* levelName(LogLevel level)
{
    switch (level) {
    case LogLevel::kInfo: return "Info";
    case LogLevel::kWarning: return "Warning";
    case LogLevel::kError: return "Error";
    }
    return "Info";
}

} // namespace

void writeLog(LogLevel level, const std::string& text)
{
    entries().push_back({level, text});
    static const bool echo = std::getenv("TQHOST_ECHO_LOG") != nullptr;
    if (echo)
        std::cerr << "// " << levelName(level) << ": " << text << '\n';
}

const std::vector<LogEntry>& logEntries() { return entries(); }

void clearLog() { entries().clear(); }

bool logContains(const std::string& text)
{
    for (const LogEntry& e : entries())
        if (e.text.find(text) != std::string::npos)
            return true;
    return false;
}

bool logContains(LogLevel level, const std::string& text)
{
    for (const LogEntry& e : entries())
        if (e.level == level && e.text.find(text) != std::string::npos)
            return true;
    return false;
}

std::string logText()
{
    std::string out;
    for (const LogEntry& e : entries()) {
        out += levelName(e.level);
        out += ": ";
        out += e.text;
        out += '\n';
    }
    return out;
}

} // namespace host
