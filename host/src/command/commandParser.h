#pragma once
// The parser of the command language: text to a list of statements. The language is the
// part of MEL that commands and the tool's scripts are written in: commands with flags and
// arguments, procedures (global and local, typed parameters and return values), typed
// variables and arrays, expressions, if/else, for, for-in, while, do-while, break, continue,
// return, back-quoted command substitution, double-quoted strings with backslash escapes,
// and comments ("// to the end of the line" and "/* ... */").
//
// A dash followed by blanks and then a name is read as that flag: "- am" is "-am". A dash
// followed by a digit starts a number, so "-1.5" is a value, never a flag.

#include <memory>
#include <string>
#include <vector>

namespace host {

// How deeply blocks, statements, parenthesised expressions and unary operators may nest in
// one text; deeper text does not parse.
constexpr int kMaxScriptNesting = 256;

struct ScriptExpr;

struct ScriptArg {
    enum class Kind { kWord, kString, kNumber, kFlag, kSubstitution, kExpression };
    Kind kind = Kind::kWord;
    // A word or number as written, a string without its quotes and escapes, a flag with its
    // dash ("-am"), or the command text between back quotes.
    std::string text;
    // kExpression: a variable or a parenthesised expression among command arguments.
    std::shared_ptr<ScriptExpr> expr;
};

struct ScriptExpr {
    enum class Op {
        kValue,     // value: a literal or a back-quoted substitution
        kVariable,  // name
        kIndex,     // left[right]
        kCall,      // name(items)
        kArray,     // {items}
        kNot, kNegate,
        kAnd, kOr, kEqual, kNotEqual, kLess, kGreater, kLessEqual, kGreaterEqual,
        kAdd, kSubtract, kMultiply, kDivide, kModulo,
        kAssign,    // left = right; name holds "=", "+=", "-=", "*=", "/="
        kIncrement, // left++ / left-- (name "++" or "--"), the value before
        kConditional, // left ? items[0] : right
    };
    Op op = Op::kValue;
    ScriptArg value;
    std::string name;
    std::unique_ptr<ScriptExpr> left, right; // kNot and kNegate use left only
    std::vector<std::unique_ptr<ScriptExpr>> items;
    int line = 1;
    int depth = 1; // of the tree below, which evaluation walks recursively
};

struct ScriptStatement;
using ScriptBody = std::vector<ScriptStatement>;

struct ScriptParam {
    std::string type; // int, float or string
    bool array = false;
    std::string name;
};

struct ScriptProc {
    std::string name;
    bool global = false;
    std::string returnType; // empty for none
    bool returnsArray = false;
    std::vector<ScriptParam> params;
    std::shared_ptr<ScriptBody> body;
    std::string file; // the script it was defined in, empty for command text
    int line = 1;
};

struct ScriptDeclarator {
    std::string name;
    bool array = false;
    std::unique_ptr<ScriptExpr> init;
};

struct ScriptStatement {
    enum class Kind {
        kCommand, kIf, kBlock, kExpression, kDeclare, kFor, kForIn, kWhile, kDoWhile,
        kReturn, kBreak, kContinue, kProc
    };
    Kind kind = Kind::kCommand;
    int line = 1;
    std::string command;
    std::vector<ScriptArg> args;
    std::string text; // the statement as written, for messages
    // if/while/for: the condition; kExpression: the expression; kReturn: the value (may be
    // null); kForIn: the array.
    std::unique_ptr<ScriptExpr> condition;
    std::unique_ptr<ScriptExpr> init, step; // for (init; condition; step)
    std::vector<ScriptStatement> body;      // a block's statements, a loop's or the if branch
    std::vector<ScriptStatement> elseBody;  // the else branch
    // kDeclare
    std::string type;
    bool global = false;
    std::vector<ScriptDeclarator> declarators;
    // kForIn: the loop variable
    std::string variable;
    // kProc
    std::shared_ptr<ScriptProc> proc;
};

struct ParsedScript {
    std::vector<ScriptStatement> statements;
    std::string error; // "line L, column C: ..." when the text does not parse
};

ParsedScript parseScript(const std::string& text);

} // namespace host
