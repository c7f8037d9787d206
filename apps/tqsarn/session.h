#pragma once
// A session file: read, checked against the session schema (built into the program from
// session.schema.json), and kept with the line of every value so that messages can point
// into the file.

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <vector>

namespace tqsarn {

struct Step {
    int number = 0; // from 1, as messages and the report count
    int line = 0;
    std::string kind;
    nlohmann::json data;
};

struct Session {
    std::string path;
    nlohmann::json document;
    std::map<std::string, int> lines; // JSON pointer -> line of the value, from 1
    std::vector<Step> steps;

    // The line of the value at the pointer, or of its nearest enclosing value in the file.
    int lineOf(const std::string& pointer) const;
    // "FILE:LINE: step N (kind), field F: message"; a pointer outside the steps names the
    // field alone.
    std::string describe(const std::string& pointer, const std::string& message) const;
};

// The text of session.schema.json.
const char* sessionSchemaText();

// Reads and checks the file. On failure returns false with a message that names the file,
// the line and, inside a step, the step and the field.
bool loadSession(const std::string& path, Session& session, std::string* error);
// The same for text already in memory; `path` only names it in messages.
bool parseSession(const std::string& text, const std::string& path, Session& session, std::string* error);

// Every value's line, by JSON pointer. The text must be valid JSON.
std::map<std::string, int> jsonLines(const std::string& text);

} // namespace tqsarn
