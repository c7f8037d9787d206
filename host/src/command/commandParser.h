#pragma once
// The parser of the command language: text to a list of statements. The language is the
// part of MEL that commands are sent in: commands with flags and arguments, separated by
// ";", blocks in braces, "if (condition) statement" with "else", back-quoted command
// substitution, double-quoted strings with backslash escapes, numbers, and comments
// ("// to the end of the line" and "/* ... */"). There are no variables or procedures.
//
// A dash followed by blanks and then a name is read as that flag: "- am" is "-am". A dash
// followed by a digit starts a number, so "-1.5" is a value, never a flag.

#include <memory>
#include <string>
#include <vector>

namespace host {

// How deeply blocks, if statements, parenthesised conditions and '!' may nest in one text;
// deeper text does not parse.
constexpr int kMaxScriptNesting = 256;

struct ScriptArg {
    enum class Kind { kWord, kString, kNumber, kFlag, kSubstitution };
    Kind kind = Kind::kWord;
    // A word or number as written, a string without its quotes and escapes, a flag with its
    // dash ("-am"), or the command text between back quotes.
    std::string text;
};

struct ScriptExpr {
    enum class Op { kValue, kNot, kAnd, kOr, kEqual, kNotEqual, kLess, kGreater, kLessEqual, kGreaterEqual };
    Op op = Op::kValue;
    ScriptArg value;
    std::unique_ptr<ScriptExpr> left, right; // kNot uses left only
};

struct ScriptStatement {
    enum class Kind { kCommand, kIf, kBlock };
    Kind kind = Kind::kCommand;
    std::string command;
    std::vector<ScriptArg> args;
    std::string text; // the statement as written, for messages
    std::unique_ptr<ScriptExpr> condition;
    std::vector<ScriptStatement> body;     // a block's statements, or the if branch
    std::vector<ScriptStatement> elseBody; // the else branch
};

struct ParsedScript {
    std::vector<ScriptStatement> statements;
    std::string error; // "line L, column C: ..." when the text does not parse
};

ParsedScript parseScript(const std::string& text);

} // namespace host
