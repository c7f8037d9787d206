#include "command/commandParser.h"

#include "command/commandValue.h"

#include <cctype>

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
            if (!statement(st, false, made))
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

    // False, with the error, once blocks, if branches, parentheses and '!' nest deeper than
    // the language allows.
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
            int line = 1, column = 1;
            for (std::size_t i = 0; i < fPos && i < fText.size(); ++i) {
                if (fText[i] == '\n') {
                    ++line;
                    column = 1;
                } else {
                    ++column;
                }
            }
            fError = "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + why;
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

    // One statement; `made` is false for an empty one (a lone ";").
    bool statement(ScriptStatement& out, bool inBlock, bool& made)
    {
        made = false;
        DepthGuard level(fDepth);
        if (tooDeep())
            return false;
        skipBlanks();
        std::size_t start = fPos;
        char c = peek();
        if (atEnd())
            return fail("a statement is missing");
        if (c == ';') {
            ++fPos;
            return true;
        }
        if (c == '{') {
            ++fPos;
            out.kind = ScriptStatement::Kind::kBlock;
            if (!block(out.body))
                return false;
            out.text = fText.substr(start, fPos - start);
            made = true;
            return true;
        }
        if (c == '$')
            return fail("variables ($name) are not supported");
        if (!isNameStart(c))
            return fail(std::string("unexpected '") + c + "'");
        std::string word = name();
        if (word == "else")
            return fail("'else' without 'if'");
        if (word == "if") {
            out.kind = ScriptStatement::Kind::kIf;
            if (!ifStatement(out, inBlock))
                return false;
            out.text = fText.substr(start, fPos - start);
            made = true;
            return true;
        }
        if (!atEnd() && !endsWord(peek()))
            return fail("unexpected '" + std::string(1, peek()) + "' after the command name '" + word + "'");
        if (peek() == '(')
            return fail("the form '" + word + "(...)' is not supported; write the command with its arguments");
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
        made = true;
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

    // After "if": the condition, the statement and an optional else branch.
    bool ifStatement(ScriptStatement& out, bool inBlock)
    {
        skipBlanks();
        if (peek() != '(')
            return fail("'if' needs its condition in parentheses");
        ++fPos;
        out.condition = orExpression();
        if (!out.condition)
            return false;
        skipBlanks();
        if (peek() != ')')
            return fail("')' expected after the condition");
        ++fPos;
        ScriptStatement body;
        bool made = false;
        if (!statement(body, inBlock, made))
            return false;
        if (made)
            out.body.push_back(std::move(body));
        std::size_t before = fPos;
        skipBlanks();
        if (fText.compare(fPos, 4, "else") == 0 && !isNameChar(peek(4))) {
            fPos += 4;
            ScriptStatement other;
            if (!statement(other, inBlock, made))
                return false;
            if (made)
                out.elseBody.push_back(std::move(other));
        } else {
            fPos = before;
        }
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
        if (c == '$')
            return fail("variables ($name) are not supported");
        if (c == '{' || c == '(' || c == ')')
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

    // ---- conditions ------------------------------------------------------------------

    std::unique_ptr<ScriptExpr> binary(ScriptExpr::Op op, std::unique_ptr<ScriptExpr> l, std::unique_ptr<ScriptExpr> r)
    {
        auto e = std::make_unique<ScriptExpr>();
        e->op = op;
        e->left = std::move(l);
        e->right = std::move(r);
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

    std::unique_ptr<ScriptExpr> orExpression()
    {
        auto left = andExpression();
        while (left && match("||")) {
            auto right = andExpression();
            if (!right)
                return nullptr;
            left = binary(ScriptExpr::Op::kOr, std::move(left), std::move(right));
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> andExpression()
    {
        auto left = comparison();
        while (left && match("&&")) {
            auto right = comparison();
            if (!right)
                return nullptr;
            left = binary(ScriptExpr::Op::kAnd, std::move(left), std::move(right));
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> comparison()
    {
        auto left = unary();
        if (!left)
            return nullptr;
        static const std::pair<const char*, ScriptExpr::Op> ops[] = {
            {"==", ScriptExpr::Op::kEqual},     {"!=", ScriptExpr::Op::kNotEqual},
            {"<=", ScriptExpr::Op::kLessEqual}, {">=", ScriptExpr::Op::kGreaterEqual},
            {"<", ScriptExpr::Op::kLess},       {">", ScriptExpr::Op::kGreater}};
        for (const auto& op : ops) {
            if (match(op.first)) {
                auto right = unary();
                if (!right)
                    return nullptr;
                return binary(op.second, std::move(left), std::move(right));
            }
        }
        return left;
    }

    std::unique_ptr<ScriptExpr> unary()
    {
        DepthGuard level(fDepth);
        if (tooDeep())
            return nullptr;
        skipBlanks();
        if (peek() == '!' && peek(1) != '=') {
            ++fPos;
            auto inner = unary();
            if (!inner)
                return nullptr;
            auto e = std::make_unique<ScriptExpr>();
            e->op = ScriptExpr::Op::kNot;
            e->left = std::move(inner);
            return e;
        }
        return primary();
    }

    std::unique_ptr<ScriptExpr> primary()
    {
        skipBlanks();
        auto e = std::make_unique<ScriptExpr>();
        char c = peek();
        if (c == '(') {
            ++fPos;
            auto inner = orExpression();
            if (!inner)
                return nullptr;
            if (!match(")")) {
                fail("')' expected in the condition");
                return nullptr;
            }
            return inner;
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
        if (c == '$') {
            fail("variables ($name) are not supported");
            return nullptr;
        }
        if (isNameStart(c)) {
            std::string w = name();
            bool ignored = false;
            if (parseBool(w, ignored)) {
                e->value.kind = ScriptArg::Kind::kWord;
                e->value.text = w;
                return e;
            }
            fail("unexpected '" + w + "' in the condition (commands go between back quotes)");
            return nullptr;
        }
        fail(atEnd() ? std::string("the condition is not finished")
                     : "unexpected '" + std::string(1, c) + "' in the condition");
        return nullptr;
    }
};

} // namespace

ParsedScript parseScript(const std::string& text) { return Parser(text).run(); }

} // namespace host
