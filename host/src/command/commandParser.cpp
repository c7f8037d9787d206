#include "command/commandParser.h"

#include "command/commandValue.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>

namespace host {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }
bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool isNameStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool isNameChar(char c) { return isNameStart(c) || isDigit(c); }
// Characters that end a bare word.
bool endsWord(char c)
{
    return isBlank(c) || c == ';' || c == '{' || c == '}' || c == '"' || c == '`' || c == '(' || c == ')';
}

// Counts one level of nesting while it lives; the parser and the evaluator both recurse
// once per level, so the bound keeps hostile text from overflowing the stack.
class DepthGuard {
public:
    explicit DepthGuard(int& depth) : fDepth(depth) { ++fDepth; }
    ~DepthGuard() { --fDepth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& fDepth;
};

bool isTypeWord(const std::string& w) { return w == "int" || w == "float" || w == "string"; }
bool isUnsupportedType(const std::string& w) { return w == "vector" || w == "matrix"; }

class Parser {
public:
    explicit Parser(const std::string& text) : fText(text) {}

    ParsedScript run()
    {
        ParsedScript out;
        while (!failed()) {
            skipBlanks();
            if (atEnd())
                break;
            if (peek() == '}') {
                fail("'}' without a matching '{'");
                break;
            }
            ScriptStatement st;
            bool made = false;
            if (!statement(st, false, made, true))
                break;
            if (made)
                out.statements.push_back(std::move(st));
        }
        out.error = fError;
        if (!fError.empty())
            out.statements.clear();
        return out;
    }

private:
    const std::string& fText;
    std::size_t fPos = 0;
    std::string fError;
    int fDepth = 0;
    // Lines are counted incrementally: fLineAt is the line of fLinePos.
    std::size_t fLinePos = 0;
    int fLineAt = 1;

    int line()
    {
        if (fPos < fLinePos) {
            fLinePos = 0;
            fLineAt = 1;
        }
        for (; fLinePos < fPos && fLinePos < fText.size(); ++fLinePos)
            if (fText[fLinePos] == '\n')
                ++fLineAt;
        return fLineAt;
    }

    bool tooDeep()
    {
        if (fDepth <= kMaxScriptNesting)
            return false;
        fail("the text nests deeper than " + std::to_string(kMaxScriptNesting) + " levels");
        return true;
    }

    bool failed() const { return !fError.empty(); }
    bool atEnd() const { return fPos >= fText.size(); }
    char peek(std::size_t ahead = 0) const { return fPos + ahead < fText.size() ? fText[fPos + ahead] : '\0'; }

    bool fail(const std::string& why)
    {
        if (fError.empty()) {
            int ln = 1, column = 1;
            for (std::size_t i = 0; i < fPos && i < fText.size(); ++i) {
                if (fText[i] == '\n') {
                    ++ln;
                    column = 1;
                } else {
                    ++column;
                }
            }
            fError = "line " + std::to_string(ln) + ", column " + std::to_string(column) + ": " + why;
        }
        return false;
    }

    void skipBlanks()
    {
        while (!atEnd()) {
            if (isBlank(peek())) {
                ++fPos;
            } else if (peek() == '/' && peek(1) == '/') {
                while (!atEnd() && peek() != '\n')
                    ++fPos;
            } else if (peek() == '/' && peek(1) == '*') {
                std::size_t close = fText.find("*/", fPos + 2);
                fPos = close == std::string::npos ? fText.size() : close + 2;
            } else {
                break;
            }
        }
    }

    std::string name()
    {
        std::size_t start = fPos;
        while (!atEnd() && isNameChar(peek()))
            ++fPos;
        return fText.substr(start, fPos - start);
    }

    // The word at the current place, without taking it.
    std::string peekName() const
    {
        std::size_t end = fPos;
        while (end < fText.size() && isNameChar(fText[end]))
            ++end;
        return fText.substr(fPos, end - fPos);
    }

    bool keyword(const char* word)
    {
        skipBlanks();
        std::size_t n = std::char_traits<char>::length(word);
        if (fText.compare(fPos, n, word) != 0 || isNameChar(peek(n)))
            return false;
        fPos += n;
        return true;
    }

    bool expect(char c, const std::string& why)
    {
        skipBlanks();
        if (peek() != c)
            return fail(why);
        ++fPos;
        return true;
    }

    // ";" or the end of a block or of the text ends a simple statement.
    bool endOfStatement(bool inBlock)
    {
        skipBlanks();
        if (atEnd())
            return true;
        if (peek() == ';') {
            ++fPos;
            return true;
        }
        if (peek() == '}') {
            if (!inBlock)
                return fail("'}' without a matching '{'");
            return true;
        }
        return fail("';' expected");
    }

    // One statement; `made` is false for an empty one (a lone ";").
    bool statement(ScriptStatement& out, bool inBlock, bool& made, bool topLevel = false)
    {
        made = false;
        DepthGuard level(fDepth);
        if (tooDeep())
            return false;
        skipBlanks();
        std::size_t start = fPos;
        out.line = line();
        char c = peek();
        if (atEnd())
            return fail("a statement is missing");
        if (c == ';') {
            ++fPos;
            return true;
        }
        made = true;
        if (c == '{') {
            ++fPos;
            out.kind = ScriptStatement::Kind::kBlock;
            if (!block(out.body))
                return false;
            out.text = fText.substr(start, fPos - start);
            return true;
        }
        if (c == '$' || c == '(' || ((c == '+' || c == '-') && peek(1) == c)) {
            out.kind = ScriptStatement::Kind::kExpression;
            out.condition = expression();
            if (!out.condition)
                return false;
            out.text = fText.substr(start, fPos - start);
            return endOfStatement(inBlock);
        }
        if (!isNameStart(c))
            return fail(std::string("unexpected '") + c + "'");
        std::string word = peekName();
        if (word == "else")
            return fail("'else' without 'if'");
        if (word == "if") {
            fPos += 2;
            out.kind = ScriptStatement::Kind::kIf;
            if (!ifStatement(out, inBlock))
                return false;
            out.text = fText.substr(start, fPos - start);
            return true;
        }
        if (word == "while" || word == "for" || word == "do") {
            fPos += word.size();
            if (!loop(word, out))
                return false;
            out.text = fText.substr(start, fPos - start);
            return word == "do" ? endOfStatement(inBlock) : true;
        }
        if (word == "break" || word == "continue") {
            fPos += word.size();
            out.kind = word == "break" ? ScriptStatement::Kind::kBreak : ScriptStatement::Kind::kContinue;
            out.text = word;
            return endOfStatement(inBlock);
        }
        if (word == "return") {
            fPos += word.size();
            out.kind = ScriptStatement::Kind::kReturn;
            skipBlanks();
            if (!atEnd() && peek() != ';' && peek() != '}') {
                out.condition = expression();
                if (!out.condition)
                    return false;
            }
            out.text = fText.substr(start, fPos - start);
            return endOfStatement(inBlock);
        }
        if (word == "switch" || isUnsupportedType(word))
            return fail("'" + word + "' is not supported by this host");
        if (word == "global" || word == "proc") {
            std::size_t before = fPos;
            bool global = keyword("global");
            if (keyword("proc")) {
                if (!topLevel)
                    return fail("procedures are defined at the top of a script, not inside a block");
                out.kind = ScriptStatement::Kind::kProc;
                if (!procedure(out, global))
                    return false;
                out.text = fText.substr(start, fPos - start);
                return true;
            }
            if (global) {
                skipBlanks();
                std::string type = peekName();
                if (!isTypeWord(type))
                    return fail(isUnsupportedType(type) ? "'" + type + "' is not supported by this host"
                                                        : "'global' must be followed by a type or 'proc'");
                fPos += type.size();
                out.global = true;
                out.type = type;
                out.kind = ScriptStatement::Kind::kDeclare;
                if (!declarators(out))
                    return false;
                out.text = fText.substr(start, fPos - start);
                return endOfStatement(inBlock);
            }
            fPos = before;
        }
        if (isTypeWord(word)) {
            std::size_t before = fPos;
            fPos += word.size();
            skipBlanks();
            if (peek() == '$') {
                out.kind = ScriptStatement::Kind::kDeclare;
                out.type = word;
                if (!declarators(out))
                    return false;
                out.text = fText.substr(start, fPos - start);
                return endOfStatement(inBlock);
            }
            fPos = before;
        }
        // A call in function form: name(arguments), perhaps part of an expression.
        if (peek(word.size()) == '(') {
            out.kind = ScriptStatement::Kind::kExpression;
            out.condition = expression();
            if (!out.condition)
                return false;
            out.text = fText.substr(start, fPos - start);
            return endOfStatement(inBlock);
        }
        fPos += word.size();
        if (!atEnd() && !endsWord(peek()))
            return fail("unexpected '" + std::string(1, peek()) + "' after the command name '" + word + "'");
        out.kind = ScriptStatement::Kind::kCommand;
        out.command = word;
        std::size_t end = fPos;
        while (true) {
            skipBlanks();
            if (atEnd())
                break;
            if (peek() == ';') {
                ++fPos;
                break;
            }
            if (peek() == '}') {
                if (!inBlock)
                    return fail("'}' without a matching '{'");
                break;
            }
            ScriptArg arg;
            if (!argument(arg))
                return false;
            out.args.push_back(std::move(arg));
            end = fPos;
        }
        out.text = fText.substr(start, end - start);
        return true;
    }

    // After "{": statements up to the matching "}".
    bool block(std::vector<ScriptStatement>& out)
    {
        while (true) {
            skipBlanks();
            if (atEnd())
                return fail("'{' without a matching '}'");
            if (peek() == '}') {
                ++fPos;
                return true;
            }
            ScriptStatement st;
            bool made = false;
            if (!statement(st, true, made))
                return false;
            if (made)
                out.push_back(std::move(st));
        }
    }

    bool body(std::vector<ScriptStatement>& out)
    {
        ScriptStatement st;
        bool made = false;
        if (!statement(st, true, made))
            return false;
        if (made)
            out.push_back(std::move(st));
        return true;
    }

    // After "if": the condition, the statement and an optional else branch.
    bool ifStatement(ScriptStatement& out, bool inBlock)
    {
        skipBlanks();
        if (peek() != '(')
            return fail("'if' needs its condition in parentheses");
        ++fPos;
        out.condition = expression();
        if (!out.condition)
            return false;
        if (!expect(')', "')' expected after the condition"))
            return false;
        (void)inBlock;
        if (!body(out.body))
            return false;
        std::size_t before = fPos;
        if (keyword("else"))
            return body(out.elseBody);
        fPos = before;
        return true;
    }

    bool loop(const std::string& word, ScriptStatement& out)
    {
        if (word == "do") {
            out.kind = ScriptStatement::Kind::kDoWhile;
            if (!body(out.body))
                return false;
            if (!keyword("while"))
                return fail("'do' needs 'while (condition)' after its statement");
            if (!expect('(', "'while' needs its condition in parentheses"))
                return false;
            out.condition = expression();
            return out.condition && expect(')', "')' expected after the condition");
        }
        if (!expect('(', "'" + word + "' needs parentheses"))
            return false;
        if (word == "while") {
            out.kind = ScriptStatement::Kind::kWhile;
            out.condition = expression();
            if (!out.condition || !expect(')', "')' expected after the condition"))
                return false;
            return body(out.body);
        }
        // for ($x in $array) or for (init; condition; step)
        skipBlanks();
        std::size_t before = fPos;
        if (peek() == '$') {
            ++fPos;
            std::string var = name();
            if (keyword("in")) {
                out.kind = ScriptStatement::Kind::kForIn;
                out.variable = var;
                out.condition = expression();
                if (!out.condition || !expect(')', "')' expected after the array"))
                    return false;
                return body(out.body);
            }
            fPos = before;
        }
        out.kind = ScriptStatement::Kind::kFor;
        skipBlanks();
        if (peek() != ';' && !(out.init = expression()))
            return false;
        if (!expect(';', "'for' needs (initial; condition; step)"))
            return false;
        skipBlanks();
        if (peek() != ';' && !(out.condition = expression()))
            return false;
        if (!expect(';', "'for' needs (initial; condition; step)"))
            return false;
        skipBlanks();
        if (peek() != ')' && !(out.step = expression()))
            return false;
        if (!expect(')', "')' expected after the step of 'for'"))
            return false;
        return body(out.body);
    }

    // "$a", "$a[]", "$a = value", separated by commas.
    bool declarators(ScriptStatement& out)
    {
        do {
            skipBlanks();
            if (peek() != '$')
                return fail("a variable name ($name) is expected");
            ++fPos;
            ScriptDeclarator d;
            if (!isNameStart(peek()))
                return fail("a variable name ($name) is expected");
            d.name = name();
            skipBlanks();
            if (peek() == '[') {
                ++fPos;
                skipBlanks();
                // A size in the brackets is allowed and means nothing: arrays grow.
                while (!atEnd() && isDigit(peek()))
                    ++fPos;
                if (!expect(']', "']' expected"))
                    return false;
                d.array = true;
            }
            skipBlanks();
            if (peek() == '=' && peek(1) != '=') {
                ++fPos;
                d.init = assignment();
                if (!d.init)
                    return false;
            }
            out.declarators.push_back(std::move(d));
            skipBlanks();
        } while (peek() == ',' && ++fPos);
        return true;
    }

    // After "proc": [type[]] name(type $p, ...) { body }
    bool procedure(ScriptStatement& out, bool global)
    {
        auto proc = std::make_shared<ScriptProc>();
        proc->global = global;
        proc->line = out.line;
        skipBlanks();
        std::string first = name();
        if (first.empty())
            return fail("a procedure name is expected");
        skipBlanks();
        if (isUnsupportedType(first))
            return fail("'" + first + "' is not supported by this host");
        if (isTypeWord(first) && peek() != '(') {
            proc->returnType = first;
            if (peek() == '[') {
                ++fPos;
                if (!expect(']', "']' expected"))
                    return false;
                proc->returnsArray = true;
            }
            skipBlanks();
            first = name();
            if (first.empty())
                return fail("a procedure name is expected");
        }
        proc->name = first;
        if (!expect('(', "'(' expected after the procedure name"))
            return false;
        skipBlanks();
        if (peek() != ')') {
            do {
                skipBlanks();
                ScriptParam p;
                p.type = name();
                if (!isTypeWord(p.type))
                    return fail(isUnsupportedType(p.type) ? "'" + p.type + "' is not supported by this host"
                                                          : "a parameter type (int, float or string) is expected");
                skipBlanks();
                if (peek() != '$')
                    return fail("a parameter name ($name) is expected");
                ++fPos;
                p.name = name();
                if (p.name.empty())
                    return fail("a parameter name ($name) is expected");
                skipBlanks();
                if (peek() == '[') {
                    ++fPos;
                    if (!expect(']', "']' expected"))
                        return false;
                    p.array = true;
                }
                proc->params.push_back(p);
                skipBlanks();
            } while (peek() == ',' && ++fPos);
        }
        if (!expect(')', "')' expected after the parameters"))
            return false;
        if (!expect('{', "'{' expected: the body of a procedure is a block"))
            return false;
        proc->body = std::make_shared<ScriptBody>();
        if (!block(*proc->body))
            return false;
        out.proc = std::move(proc);
        return true;
    }

    bool argument(ScriptArg& out)
    {
        char c = peek();
        if (c == '"') {
            out.kind = ScriptArg::Kind::kString;
            return quoted(out.text);
        }
        if (c == '`') {
            out.kind = ScriptArg::Kind::kSubstitution;
            return backQuoted(out.text);
        }
        if (c == '$' || c == '(') {
            out.kind = ScriptArg::Kind::kExpression;
            std::unique_ptr<ScriptExpr> e = c == '$' ? postfix() : primary();
            if (!e)
                return false;
            out.expr = std::shared_ptr<ScriptExpr>(std::move(e));
            if (!atEnd() && !endsWord(peek()) && peek() != ',')
                return fail("unexpected '" + std::string(1, peek()) + "' after an argument");
            return true;
        }
        if (c == '-') {
            char next = peek(1);
            if (isDigit(next) || (next == '.' && isDigit(peek(2))))
                return word(out);
            if (isNameStart(next) || isBlank(next)) {
                // Deliberate: a stray blank after the dash ("- am") still names the flag, as
                // the command texts of the tool are written that way.
                ++fPos;
                while (!atEnd() && (peek() == ' ' || peek() == '\t'))
                    ++fPos;
                if (!isNameStart(peek()))
                    return fail("'-' must be followed by a flag name or a number");
                out.kind = ScriptArg::Kind::kFlag;
                out.text = "-" + name();
                if (!atEnd() && !endsWord(peek()))
                    return fail("unexpected '" + std::string(1, peek()) + "' in the flag '" + out.text + "'");
                return true;
            }
            return fail("'-' must be followed by a flag name or a number");
        }
        if (c == '{' || c == ')')
            return fail(std::string("unexpected '") + c + "' in the arguments");
        return word(out);
    }

    bool word(ScriptArg& out)
    {
        std::size_t start = fPos;
        while (!atEnd() && !endsWord(peek()))
            ++fPos;
        out.text = fText.substr(start, fPos - start);
        double ignored = 0.0;
        out.kind = parseNumber(out.text, ignored) ? ScriptArg::Kind::kNumber : ScriptArg::Kind::kWord;
        return true;
    }

    bool quoted(std::string& out)
    {
        ++fPos; // opening quote
        out.clear();
        while (!atEnd()) {
            char c = peek();
            ++fPos;
            if (c == '"')
                return true;
            if (c == '\\' && !atEnd()) {
                char e = peek();
                ++fPos;
                switch (e) {
                case 'n': out += '\n'; break;
                case 't': out += '\t'; break;
                case 'r': out += '\r'; break;
                default: out += e; break;
                }
                continue;
            }
            out += c;
        }
        return fail("a string is not closed with '\"'");
    }

    bool backQuoted(std::string& out)
    {
        std::size_t start = ++fPos;
        bool inString = false;
        while (!atEnd()) {
            char c = peek();
            if (inString && c == '\\') {
                fPos += 2;
                continue;
            }
            if (c == '"')
                inString = !inString;
            if (c == '`' && !inString) {
                out = fText.substr(start, fPos - start);
                ++fPos;
                return true;
            }
            ++fPos;
        }
        return fail("a command substitution is not closed with '`'");
    }

    // ---- expressions -----------------------------------------------------------------

    using Op = ScriptExpr::Op;

    std::unique_ptr<ScriptExpr> node(Op op, int ln)
    {
        auto e = std::make_unique<ScriptExpr>();
        e->op = op;
        e->line = ln;
        return e;
    }

    // Operator chains ("a + b + c ...") nest to the left; evaluating and freeing the tree
    // recurse once per level, so a chain is as bounded as any other nesting.
    std::unique_ptr<ScriptExpr> binary(Op op, std::unique_ptr<ScriptExpr> l, std::unique_ptr<ScriptExpr> r)
    {
        auto e = node(op, l->line);
        e->depth = 1 + std::max(l->depth, r ? r->depth : 0);
        e->left = std::move(l);
        e->right = std::move(r);
        if (e->depth > 4 * kMaxScriptNesting) {
            fail("the expression nests deeper than " + std::to_string(4 * kMaxScriptNesting) + " operators");
            return nullptr;
        }
        return e;
    }

    bool match(const char* token)
    {
        skipBlanks();
        std::size_t n = std::char_traits<char>::length(token);
        if (fText.compare(fPos, n, token) != 0)
            return false;
        fPos += n;
        return true;
    }

    std::unique_ptr<ScriptExpr> expression()
    {
        DepthGuard level(fDepth);
        if (tooDeep())
            return nullptr;
        return assignment();
    }

    static bool assignable(const ScriptExpr& e)
    {
        return e.op == Op::kVariable || (e.op == Op::kIndex && e.left && e.left->op == Op::kVariable);
    }

    std::unique_ptr<ScriptExpr> conditional()
    {
        auto condition = orExpression();
        if (!condition)
            return nullptr;
        skipBlanks();
        if (peek() != '?')
            return condition;
        ++fPos;
        DepthGuard level(fDepth);
        if (tooDeep())
            return nullptr;
        auto then = assignment();
        if (!then || !expect(':', "':' expected in 'condition ? value : value'"))
            return nullptr;
        auto otherwise = assignment();
        if (!otherwise)
            return nullptr;
        auto e = binary(Op::kConditional, std::move(condition), std::move(otherwise));
        if (e)
            e->items.push_back(std::move(then));
        return e;
    }

    std::unique_ptr<ScriptExpr> assignment()
    {
        auto left = conditional();
        if (!left)
            return nullptr;
        skipBlanks();
        static const char* ops[] = {"+=", "-=", "*=", "/=", "="};
        for (const char* op : ops) {
            std::size_t n = std::char_traits<char>::length(op);
            if (fText.compare(fPos, n, op) == 0 && !(n == 1 && peek(1) == '=')) {
                if (!assignable(*left)) {
                    fail("only a variable or an array element can be assigned to");
                    return nullptr;
                }
                fPos += n;
                DepthGuard level(fDepth);
                if (tooDeep())
                    return nullptr;
                auto right = assignment();
                if (!right)
                    return nullptr;
                auto e = binary(Op::kAssign, std::move(left), std::move(right));
                if (e)
                    e->name = op;
                return e;
            }
        }
        return left;
    }

    // One level of left-associative binary operators over the next tighter level: the
    // operators are tried in order, so a longer one must come before its prefix.
    using Level = std::unique_ptr<ScriptExpr> (Parser::*)();
    struct BinaryOp {
        const char* text;
        Op op;
    };
    std::unique_ptr<ScriptExpr> chain(Level next, std::initializer_list<BinaryOp> ops)
    {
        auto left = (this->*next)();
        while (left) {
            const BinaryOp* found = std::find_if(ops.begin(), ops.end(), [&](const BinaryOp& o) { return match(o.text); });
            if (found == ops.end())
                break;
            auto right = (this->*next)();
            if (!right)
                return nullptr;
            left = binary(found->op, std::move(left), std::move(right));
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> orExpression() { return chain(&Parser::andExpression, {{"||", Op::kOr}}); }
    std::unique_ptr<ScriptExpr> andExpression() { return chain(&Parser::equality, {{"&&", Op::kAnd}}); }
    std::unique_ptr<ScriptExpr> equality()
    {
        return chain(&Parser::relation, {{"==", Op::kEqual}, {"!=", Op::kNotEqual}});
    }
    std::unique_ptr<ScriptExpr> relation()
    {
        return chain(&Parser::additive,
                     {{"<=", Op::kLessEqual}, {">=", Op::kGreaterEqual}, {"<", Op::kLess}, {">", Op::kGreater}});
    }

    std::unique_ptr<ScriptExpr> additive()
    {
        auto left = multiplicative();
        while (left) {
            skipBlanks();
            char c = peek();
            if ((c != '+' && c != '-') || peek(1) == '=' || peek(1) == c)
                break;
            ++fPos;
            auto right = multiplicative();
            if (!right)
                return nullptr;
            left = binary(c == '+' ? Op::kAdd : Op::kSubtract, std::move(left), std::move(right));
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> multiplicative()
    {
        auto left = unary();
        while (left) {
            skipBlanks();
            char c = peek();
            if ((c != '*' && c != '/' && c != '%') || peek(1) == '=')
                break;
            ++fPos;
            auto right = unary();
            if (!right)
                return nullptr;
            left = binary(c == '*' ? Op::kMultiply : c == '/' ? Op::kDivide : Op::kModulo, std::move(left),
                          std::move(right));
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> unary()
    {
        DepthGuard level(fDepth);
        if (tooDeep())
            return nullptr;
        skipBlanks();
        int ln = line();
        if ((peek() == '!' && peek(1) != '=') || (peek() == '-' && !isDigit(peek(1)) && peek(1) != '.' && peek(1) != '-')) {
            char c = peek();
            ++fPos;
            auto inner = unary();
            if (!inner)
                return nullptr;
            auto e = node(c == '!' ? Op::kNot : Op::kNegate, ln);
            e->depth = inner->depth + 1;
            e->left = std::move(inner);
            return e;
        }
        if ((peek() == '+' || peek() == '-') && peek(1) == peek()) {
            // ++$x and --$x: the variable changes first, the value is the new one.
            std::string op(2, peek());
            fPos += 2;
            auto target = postfix();
            if (!target)
                return nullptr;
            if (!assignable(*target)) {
                fail("only a variable or an array element can be incremented");
                return nullptr;
            }
            auto one = node(Op::kValue, ln);
            one->value.kind = ScriptArg::Kind::kNumber;
            one->value.text = "1";
            auto e = binary(Op::kAssign, std::move(target), std::move(one));
            if (e)
                e->name = op == "++" ? "+=" : "-=";
            return e;
        }
        return postfix();
    }

    std::unique_ptr<ScriptExpr> postfix()
    {
        auto e = primary();
        while (e) {
            if (peek() == '[') {
                ++fPos;
                auto index = expression();
                if (!index || !expect(']', "']' expected after the index"))
                    return nullptr;
                e = binary(Op::kIndex, std::move(e), std::move(index));
                continue;
            }
            std::size_t before = fPos;
            skipBlanks();
            if ((peek() == '+' || peek() == '-') && peek(1) == peek()) {
                if (!assignable(*e)) {
                    fail("only a variable or an array element can be incremented");
                    return nullptr;
                }
                std::string op(2, peek());
                fPos += 2;
                auto inc = node(Op::kIncrement, e->line);
                inc->depth = e->depth + 1;
                inc->name = op;
                inc->left = std::move(e);
                return inc;
            }
            fPos = before;
            break;
        }
        return e;
    }

    std::unique_ptr<ScriptExpr> primary()
    {
        skipBlanks();
        int ln = line();
        auto e = node(Op::kValue, ln);
        char c = peek();
        if (c == '(') {
            ++fPos;
            auto inner = expression();
            if (!inner)
                return nullptr;
            if (!match(")")) {
                fail("')' expected in the expression");
                return nullptr;
            }
            return inner;
        }
        if (c == '{') {
            ++fPos;
            e->op = Op::kArray;
            skipBlanks();
            if (peek() != '}') {
                do {
                    auto item = expression();
                    if (!item)
                        return nullptr;
                    e->items.push_back(std::move(item));
                    skipBlanks();
                } while (peek() == ',' && ++fPos);
            }
            if (!match("}")) {
                fail("'}' expected at the end of the array");
                return nullptr;
            }
            return e;
        }
        if (c == '$') {
            ++fPos;
            if (!isNameStart(peek())) {
                fail("a variable name is expected after '$'");
                return nullptr;
            }
            e->op = Op::kVariable;
            e->name = name();
            return e;
        }
        if (c == '`') {
            e->value.kind = ScriptArg::Kind::kSubstitution;
            return backQuoted(e->value.text) ? std::move(e) : nullptr;
        }
        if (c == '"') {
            e->value.kind = ScriptArg::Kind::kString;
            return quoted(e->value.text) ? std::move(e) : nullptr;
        }
        if (isDigit(c) || c == '.' || c == '-' || c == '+') {
            std::size_t start = fPos;
            ++fPos;
            auto exponentSign = [&] {
                return (peek() == '-' || peek() == '+') && (fText[fPos - 1] == 'e' || fText[fPos - 1] == 'E');
            };
            while (!atEnd() && (isDigit(peek()) || peek() == '.' || peek() == 'e' || peek() == 'E' || exponentSign()))
                ++fPos;
            e->value.kind = ScriptArg::Kind::kNumber;
            e->value.text = fText.substr(start, fPos - start);
            double ignored = 0.0;
            if (!parseNumber(e->value.text, ignored)) {
                fail("'" + e->value.text + "' is not a number");
                return nullptr;
            }
            return e;
        }
        if (isNameStart(c)) {
            std::string w = name();
            if (peek() == '(') {
                ++fPos;
                e->op = Op::kCall;
                e->name = w;
                skipBlanks();
                if (peek() != ')') {
                    do {
                        auto item = expression();
                        if (!item)
                            return nullptr;
                        e->items.push_back(std::move(item));
                        skipBlanks();
                    } while (peek() == ',' && ++fPos);
                }
                if (!match(")")) {
                    fail("')' expected after the arguments of '" + w + "'");
                    return nullptr;
                }
                return e;
            }
            bool ignored = false;
            if (parseBool(w, ignored)) {
                e->value.kind = ScriptArg::Kind::kWord;
                e->value.text = w;
                return e;
            }
            fail("unexpected '" + w + "' in the expression (commands go between back quotes)");
            return nullptr;
        }
        fail(atEnd() ? std::string("the expression is not finished")
                     : "unexpected '" + std::string(1, c) + "' in the expression");
        return nullptr;
    }
};

} // namespace

ParsedScript parseScript(const std::string& text) { return Parser(text).run(); }

} // namespace host
