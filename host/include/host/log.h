#pragma once
// The host log: what Maya's script editor would show. Everything the API writes
// (MGlobal::displayInfo/Warning/Error, MStatus::perror/pAPIerror, MPxCommand::displayError,
// the exception barrier, failed command text) lands here, in order, and tests read it back.

#include <string>
#include <vector>

namespace host {

enum class LogLevel { kInfo, kWarning, kError };

struct LogEntry {
    LogLevel level;
    std::string text;
};

// Appends one entry. With TQHOST_ECHO_LOG set in the environment it is echoed to stderr too.
void writeLog(LogLevel level, const std::string& text);

const std::vector<LogEntry>& logEntries();
void clearLog();

// True when some entry of the given level (any level when omitted) contains the text.
bool logContains(const std::string& text);
bool logContains(LogLevel level, const std::string& text);

// The whole log as "Info: ...", "Warning: ...", "Error: ..." lines, for failure messages.
std::string logText();

} // namespace host
