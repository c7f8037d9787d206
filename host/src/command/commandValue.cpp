#include "command/commandValue.h"

#include <maya/MString.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace host {

bool parseBool(const std::string& text, bool& out)
{
    if (text == "true" || text == "on" || text == "yes") {
        out = true;
        return true;
    }
    if (text == "false" || text == "off" || text == "no") {
        out = false;
        return true;
    }
    double number = 0.0;
    if (!parseNumber(text, number))
        return false;
    out = number != 0.0;
    return true;
}

bool parseNumber(const std::string& text, double& out)
{
    if (text.empty())
        return false;
    const char* begin = text.c_str();
    char* end = nullptr;
    errno = 0;
    double v = std::strtod(begin, &end);
    // strtod also reads "inf", "nan" and hexadecimal; the language has none of them.
    for (char c : text)
        if (!((c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E'))
            return false;
    if (end != begin + text.size() || errno == ERANGE || !std::isfinite(v))
        return false;
    out = v;
    return true;
}

bool parseInteger(const std::string& text, long long& out)
{
    double v = 0.0;
    if (!parseNumber(text, v)) {
        bool b = false;
        if (!parseBool(text, b))
            return false;
        out = b ? 1 : 0;
        return true;
    }
    // A number given where an integer is expected is cut to its whole part, as the
    // language converts it.
    if (v > 9.2e18 || v < -9.2e18)
        return false;
    out = static_cast<long long>(v);
    return true;
}

std::string formatNumber(double value)
{
    MString s;
    s += value;
    return s.asChar();
}

std::string ArgValue::display() const
{
    auto quoted = [](const std::string& s) {
        std::string out = "\"";
        for (char c : s) {
            if (c == '"' || c == '\\')
                out += '\\';
            out += c;
        }
        return out + "\"";
    };
    switch (kind) {
    case Kind::kString: return quoted(text);
    case Kind::kIntArray:
    case Kind::kDoubleArray:
    case Kind::kStringArray: {
        std::string out;
        for (const std::string& item : items)
            out += (out.empty() ? "" : " ") + (kind == Kind::kStringArray ? quoted(item) : item);
        return out;
    }
    default: return text;
    }
}

CommandValue CommandValue::ofInt(int v)
{
    CommandValue r;
    r.kind = Kind::kInt;
    r.ints = {v};
    return r;
}

CommandValue CommandValue::ofDouble(double v)
{
    CommandValue r;
    r.kind = Kind::kDouble;
    r.doubles = {v};
    return r;
}

CommandValue CommandValue::ofString(std::string v)
{
    CommandValue r;
    r.kind = Kind::kString;
    r.strings = {std::move(v)};
    return r;
}

CommandValue CommandValue::ofInts(std::vector<int> v)
{
    CommandValue r;
    r.kind = Kind::kIntArray;
    r.ints = std::move(v);
    return r;
}

CommandValue CommandValue::ofDoubles(std::vector<double> v)
{
    CommandValue r;
    r.kind = Kind::kDoubleArray;
    r.doubles = std::move(v);
    return r;
}

CommandValue CommandValue::ofStrings(std::vector<std::string> v)
{
    CommandValue r;
    r.kind = Kind::kStringArray;
    r.strings = std::move(v);
    return r;
}

unsigned CommandValue::size() const
{
    switch (kind) {
    case Kind::kNone: return 0;
    case Kind::kInt:
    case Kind::kIntArray: return unsigned(ints.size());
    case Kind::kDouble:
    case Kind::kDoubleArray: return unsigned(doubles.size());
    default: return unsigned(strings.size());
    }
}

std::vector<std::string> CommandValue::items() const
{
    std::vector<std::string> out;
    switch (kind) {
    case Kind::kNone: break;
    case Kind::kInt:
    case Kind::kIntArray:
        for (int v : ints)
            out.push_back(std::to_string(v));
        break;
    case Kind::kDouble:
    case Kind::kDoubleArray:
        for (double v : doubles)
            out.push_back(formatNumber(v));
        break;
    default: out = strings; break;
    }
    return out;
}

std::string CommandValue::text() const
{
    std::string out;
    for (const std::string& item : items())
        out += (out.empty() ? "" : " ") + item;
    return out;
}

ArgValue CommandValue::asArgument() const
{
    ArgValue a;
    std::vector<std::string> all = items();
    switch (kind) {
    case Kind::kNone: a.kind = ArgValue::Kind::kString; break;
    case Kind::kInt:
    case Kind::kDouble:
        a.kind = ArgValue::Kind::kNumber;
        a.text = all.front();
        break;
    case Kind::kString:
        a.kind = ArgValue::Kind::kString;
        a.text = all.front();
        break;
    case Kind::kIntArray: a.kind = ArgValue::Kind::kIntArray; break;
    case Kind::kDoubleArray: a.kind = ArgValue::Kind::kDoubleArray; break;
    case Kind::kStringArray: a.kind = ArgValue::Kind::kStringArray; break;
    }
    if (a.isArray())
        a.items = std::move(all);
    return a;
}

bool CommandValue::asNumber(double& out) const
{
    switch (kind) {
    case Kind::kInt:
    case Kind::kIntArray:
        if (ints.empty())
            return false;
        out = ints.front();
        return true;
    case Kind::kDouble:
    case Kind::kDoubleArray:
        if (doubles.empty())
            return false;
        out = doubles.front();
        return true;
    case Kind::kString:
    case Kind::kStringArray:
        return !strings.empty() && parseNumber(strings.front(), out);
    default: return false;
    }
}

} // namespace host
