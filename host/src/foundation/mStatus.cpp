#include <maya/MStatus.h>

#include <maya/MString.h>

#include "host/log.h"

#include <ostream>
#include <string>

namespace {

const char* codeName(MStatus::MStatusCode code)
{
    switch (code) {
    case MStatus::kSuccess: return "kSuccess";
    case MStatus::kFailure: return "kFailure";
    case MStatus::kInsufficientMemory: return "kInsufficientMemory";
    case MStatus::kInvalidParameter: return "kInvalidParameter";
    case MStatus::kLicenseFailure: return "kLicenseFailure";
    case MStatus::kUnknownParameter: return "kUnknownParameter";
    case MStatus::kNotImplemented: return "kNotImplemented";
    case MStatus::kNotFound: return "kNotFound";
    case MStatus::kEndOfFile: return "kEndOfFile";
    }
    return "kFailure";
}

const char* description(MStatus::MStatusCode code)
{
    switch (code) {
    case MStatus::kSuccess: return "No error";
    case MStatus::kFailure: return "Operation failed";
    case MStatus::kInsufficientMemory: return "Insufficient memory";
    case MStatus::kInvalidParameter: return "Invalid parameter";
    case MStatus::kLicenseFailure: return "Not licensed for this operation";
    case MStatus::kUnknownParameter: return "Unknown parameter";
    case MStatus::kNotImplemented: return "Not implemented";
    case MStatus::kNotFound: return "Not found";
    case MStatus::kEndOfFile: return "End of file";
    }
    return "Operation failed";
}

// "(kInvalidParameter): Invalid parameter"
std::string errorText(MStatus::MStatusCode code)
{
    return std::string("(") + codeName(code) + "): " + description(code);
}

void logWithMessage(const std::string& message, MStatus::MStatusCode code)
{
    host::writeLog(host::LogLevel::kError, message.empty() ? errorText(code) : message + ": " + errorText(code));
}

} // namespace

MString MStatus::errorString() const { return MString(errorText(fStatusCode).c_str()); }

void MStatus::perror(const char* message) const { logWithMessage(message != nullptr ? message : "", fStatusCode); }

void MStatus::perror(const MString& message) const
{
    int size = 0;
    const char* text = message.asChar(size);
    logWithMessage(std::string(text, static_cast<std::size_t>(size)), fStatusCode);
}

void MStatus::pAPIerror(const char* file, int line) const { pAPIerror(file, line, nullptr); }

void MStatus::pAPIerror(const char* file, int line, const char* message) const
{
    std::string text = "API error at ";
    text += file != nullptr && *file != '\0' ? file : "<unknown file>";
    text += ':';
    text += std::to_string(line);
    text += ": ";
    if (message != nullptr && *message != '\0') {
        text += message;
        text += ": ";
    }
    text += errorText(fStatusCode);
    host::writeLog(host::LogLevel::kError, text);
}

std::ostream& operator<<(std::ostream& os, MStatus& status) { return os << errorText(status.fStatusCode); }
