#pragma once
// The values that flow through the command language: ArgValue is one argument of a call (as
// MArgList holds it), CommandValue one command result (as MCommandResult and MPxCommand's
// result functions see it). Scalars in arguments keep the text they were written with, so a
// number reads back as the user typed it; conversions happen when a value is read.

#include <string>
#include <vector>

namespace host {

struct ArgValue {
    enum class Kind { kWord, kString, kNumber, kBool, kFlag, kIntArray, kDoubleArray, kStringArray };
    Kind kind = Kind::kWord;
    std::string text;               // scalars; a flag keeps its dash ("-u")
    std::vector<std::string> items; // arrays, each element as text

    static ArgValue word(std::string t) { return ArgValue{Kind::kWord, std::move(t), {}}; }
    static ArgValue string(std::string t) { return ArgValue{Kind::kString, std::move(t), {}}; }
    static ArgValue number(std::string t) { return ArgValue{Kind::kNumber, std::move(t), {}}; }
    static ArgValue flag(std::string t) { return ArgValue{Kind::kFlag, std::move(t), {}}; }

    bool isFlag() const { return kind == Kind::kFlag; }
    bool isArray() const
    {
        return kind == Kind::kIntArray || kind == Kind::kDoubleArray || kind == Kind::kStringArray;
    }
    // The flag's name without its dash.
    std::string flagName() const { return text.empty() ? text : text.substr(1); }
    // How the value prints in a journal line: strings quoted, arrays element by element.
    std::string display() const;
};

struct CommandValue {
    enum class Kind { kNone, kInt, kDouble, kString, kIntArray, kDoubleArray, kStringArray };
    Kind kind = Kind::kNone;
    std::vector<int> ints;
    std::vector<double> doubles;
    std::vector<std::string> strings;

    static CommandValue ofInt(int v);
    static CommandValue ofDouble(double v);
    static CommandValue ofString(std::string v);
    static CommandValue ofInts(std::vector<int> v);
    static CommandValue ofDoubles(std::vector<double> v);
    static CommandValue ofStrings(std::vector<std::string> v);

    bool isArray() const
    {
        return kind == Kind::kIntArray || kind == Kind::kDoubleArray || kind == Kind::kStringArray;
    }
    unsigned size() const;
    // Each element as text; a scalar is one element, no result none.
    std::vector<std::string> items() const;
    // Scalars as text, arrays with a blank between elements.
    std::string text() const;
    // The value as an argument of another command (command substitution).
    ArgValue asArgument() const;
    // A scalar (or an array's first element) as a number; false when it is none.
    bool asNumber(double& out) const;
};

// Text conversions shared by argument reading, flag checking and results. Each returns false
// when the text is not of that kind; booleans accept true/false, on/off, yes/no and numbers.
bool parseBool(const std::string& text, bool& out);
bool parseInteger(const std::string& text, long long& out);
bool parseNumber(const std::string& text, double& out);
// A double as the host's MString writes it: up to 14 significant digits, whole numbers
// without a fraction.
std::string formatNumber(double value);

} // namespace host
