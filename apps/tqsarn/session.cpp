#include "session.h"

#include "jsonSchema.h"

#include <fstream>
#include <sstream>

namespace tqsarn {
namespace {

using nlohmann::json;

// Walks valid JSON text and notes the line each value starts on. It does not decode: keys
// are kept as written, which is what the schema's plain field names need.
class LineScanner {
public:
    LineScanner(const std::string& text, std::map<std::string, int>& lines) : fText(text), fLines(lines) {}

    void value(const std::string& pointer, int depth)
    {
        space();
        if (fAt >= fText.size() || depth > 512)
            return;
        fLines[pointer] = fLine;
        const char c = fText[fAt];
        if (c == '{') {
            ++fAt;
            space();
            if (peek('}'))
                return;
            while (fAt < fText.size()) {
                space();
                const std::string key = string();
                space();
                if (!peek(':'))
                    return;
                value(pointer + "/" + escape(key), depth + 1);
                space();
                if (peek(','))
                    continue;
                peek('}');
                return;
            }
        } else if (c == '[') {
            ++fAt;
            space();
            if (peek(']'))
                return;
            for (int index = 0; fAt < fText.size(); ++index) {
                value(pointer + "/" + std::to_string(index), depth + 1);
                space();
                if (peek(','))
                    continue;
                peek(']');
                return;
            }
        } else if (c == '"') {
            string();
        } else {
            while (fAt < fText.size() && std::string(",]} \t\r\n").find(fText[fAt]) == std::string::npos)
                ++fAt;
        }
    }

private:
    void space()
    {
        while (fAt < fText.size() && std::string(" \t\r\n").find(fText[fAt]) != std::string::npos) {
            if (fText[fAt] == '\n')
                ++fLine;
            ++fAt;
        }
    }
    bool peek(char c)
    {
        if (fAt < fText.size() && fText[fAt] == c) {
            ++fAt;
            return true;
        }
        return false;
    }
    std::string string()
    {
        std::string out;
        if (!peek('"'))
            return out;
        while (fAt < fText.size() && fText[fAt] != '"') {
            if (fText[fAt] == '\\' && fAt + 1 < fText.size())
                out += fText[fAt++];
            out += fText[fAt++];
        }
        ++fAt;
        return out;
    }
    static std::string escape(const std::string& key)
    {
        std::string out;
        for (char c : key)
            out += c == '~' ? std::string("~0") : c == '/' ? std::string("~1") : std::string(1, c);
        return out;
    }

    const std::string& fText;
    std::map<std::string, int>& fLines;
    std::size_t fAt = 0;
    int fLine = 1;
};

std::vector<std::string> tokens(const std::string& pointer)
{
    std::vector<std::string> out;
    std::size_t at = 1;
    while (at <= pointer.size() && !pointer.empty()) {
        const std::size_t next = pointer.find('/', at);
        std::string token = pointer.substr(at, next == std::string::npos ? std::string::npos : next - at);
        std::string decoded;
        for (std::size_t i = 0; i < token.size(); ++i) {
            if (token[i] == '~' && i + 1 < token.size()) {
                decoded += token[i + 1] == '1' ? '/' : '~';
                ++i;
            } else {
                decoded += token[i];
            }
        }
        out.push_back(decoded);
        if (next == std::string::npos)
            break;
        at = next + 1;
    }
    return out;
}

bool isIndex(const std::string& token)
{
    return !token.empty() && token.find_first_not_of("0123456789") == std::string::npos;
}

std::string fieldPath(const std::vector<std::string>& parts, std::size_t from)
{
    std::string out;
    for (std::size_t i = from; i < parts.size(); ++i)
        out += isIndex(parts[i]) ? "[" + parts[i] + "]" : (out.empty() ? "" : ".") + parts[i];
    return out;
}

const JsonSchema& sessionSchema()
{
    static const JsonSchema schema = [] {
        JsonSchema s;
        std::string error;
        // The schema is part of the program; a broken one is a build fault that the tests catch.
        if (!s.load(json::parse(sessionSchemaText()), &error))
            throw std::logic_error(error);
        return s;
    }();
    return schema;
}

} // namespace

std::map<std::string, int> jsonLines(const std::string& text)
{
    std::map<std::string, int> lines;
    LineScanner(text, lines).value("", 0);
    return lines;
}

int Session::lineOf(const std::string& pointer) const
{
    std::string at = pointer;
    while (true) {
        auto it = lines.find(at);
        if (it != lines.end())
            return it->second;
        if (at.empty())
            return 1;
        at = at.substr(0, at.rfind('/'));
    }
}

std::string Session::describe(const std::string& pointer, const std::string& message) const
{
    std::ostringstream out;
    out << path << ":" << lineOf(pointer) << ": ";
    const std::vector<std::string> parts = tokens(pointer);
    if (parts.size() >= 2 && parts[0] == "steps" && isIndex(parts[1])) {
        const std::size_t index = std::stoul(parts[1]);
        out << "step " << index + 1;
        const json& steps = document["steps"];
        if (index < steps.size() && steps[index].is_object() && steps[index].contains("kind") &&
            steps[index]["kind"].is_string())
            out << " (" << steps[index]["kind"].get<std::string>() << ")";
        if (parts.size() > 2)
            out << ", field " << fieldPath(parts, 2);
    } else if (!parts.empty()) {
        out << "field " << fieldPath(parts, 0);
    } else {
        out << "the session";
    }
    out << ": " << message;
    return out.str();
}

bool parseSession(const std::string& text, const std::string& path, Session& session, std::string* error)
{
    session = Session();
    session.path = path;
    try {
        session.document = json::parse(text);
    } catch (const json::parse_error& e) {
        int line = 1;
        for (std::size_t i = 0; i < text.size() && i + 1 < e.byte; ++i)
            line += text[i] == '\n';
        std::string what = e.what();
        const std::size_t colon = what.find(": ");
        if (what.rfind("[json.exception", 0) == 0 && colon != std::string::npos)
            what = what.substr(colon + 2);
        if (error)
            *error = path + ":" + std::to_string(line) + ": not valid JSON: " + what;
        return false;
    }
    session.lines = jsonLines(text);
    SchemaViolation violation;
    if (!sessionSchema().check(session.document, &violation)) {
        if (error)
            *error = session.describe(violation.pointer, violation.message);
        return false;
    }
    const json& steps = session.document["steps"];
    for (std::size_t i = 0; i < steps.size(); ++i) {
        Step step;
        step.number = static_cast<int>(i) + 1;
        step.line = session.lineOf("/steps/" + std::to_string(i));
        step.kind = steps[i]["kind"].get<std::string>();
        step.data = steps[i];
        session.steps.push_back(std::move(step));
    }
    return true;
}

bool loadSession(const std::string& path, Session& session, std::string* error)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        if (error)
            *error = path + ": cannot read the session file";
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return parseSession(text.str(), path, session, error);
}

} // namespace tqsarn
