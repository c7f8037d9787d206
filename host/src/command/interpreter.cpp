#include "command/interpreter.h"

#include "command/builtinArgs.h"
#include "command/commandParser.h"
#include "command/pluginCommands.h"
#include "dg/commandRunner.h"
#include "plugin/pluginRegistry.h"

#include "host/log.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace host {
namespace {

std::map<std::string, BuiltinCommand>& builtins()
{
    static std::map<std::string, BuiltinCommand> table;
    return table;
}

std::vector<std::function<void(const std::string&)>>& releaseHooks()
{
    static std::vector<std::function<void(const std::string&)>> hooks;
    return hooks;
}

ContextCommandRunner& contextRunner()
{
    static ContextCommandRunner runner;
    return runner;
}

std::vector<CommandValue*>& resultStack()
{
    static std::vector<CommandValue*> stack;
    return stack;
}

struct CallFrame {
    bool undoEnabled = false;
    UndoRecording* recording = nullptr;
};

std::vector<CallFrame>& calls()
{
    static std::vector<CallFrame> stack;
    return stack;
}

// A recording shared between the caller's outcome and the undo queue.
class SharedStep : public UndoStep {
public:
    explicit SharedStep(std::shared_ptr<UndoRecording> r) : fRecording(std::move(r)) {}
    MStatus undo() override { return fRecording->undo(); }
    MStatus redo() override { return fRecording->redo(); }

private:
    std::shared_ptr<UndoRecording> fRecording;
};

std::string trimmed(const std::string& text)
{
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    std::size_t b = 0, e = text.size();
    while (b < e && blank(text[b]))
        ++b;
    while (e > b && blank(text[e - 1]))
        --e;
    return text.substr(b, e - b);
}

// ---- the script runtime: variables, procedures, control flow --------------------------

struct Variable {
    std::string type; // int, float or string
    bool array = false;
    CommandValue value;
};
using VariablePtr = std::shared_ptr<Variable>;

// One running procedure, sourced script or call of command text. Blocks open scopes.
struct Frame {
    std::string file; // empty for command text
    std::vector<std::map<std::string, VariablePtr>> scopes;
};

enum class Flow { kNormal, kBreak, kContinue, kReturn };

struct Runtime {
    std::vector<Frame> frames;
    std::map<std::string, VariablePtr> globals;
    std::map<std::string, std::shared_ptr<ScriptProc>> globalProcs;
    std::map<std::pair<std::string, std::string>, std::shared_ptr<ScriptProc>> localProcs; // (file, name)
    std::vector<std::string> scriptDirectories;
    Flow flow = Flow::kNormal;
    CommandValue returned;
    // Set once the innermost failing statement of a script has said where it failed, so
    // the statements around it do not repeat it.
    bool failureReported = false;
    int line = 0;    // the line of the statement running, for messages
    int running = 0; // statements running inside one another
};

Runtime& runtime()
{
    static Runtime r;
    return r;
}

// How deeply procedures (and sourced scripts) may call one another.
constexpr std::size_t kMaxProcNesting = 100;

class FrameScope {
public:
    explicit FrameScope(std::string file)
    {
        Frame f;
        f.file = std::move(file);
        f.scopes.emplace_back();
        runtime().frames.push_back(std::move(f));
    }
    ~FrameScope() { runtime().frames.pop_back(); }
    FrameScope(const FrameScope&) = delete;
    FrameScope& operator=(const FrameScope&) = delete;
};

class BlockScope {
public:
    BlockScope() { runtime().frames.back().scopes.emplace_back(); }
    ~BlockScope() { runtime().frames.back().scopes.pop_back(); }
    BlockScope(const BlockScope&) = delete;
    BlockScope& operator=(const BlockScope&) = delete;
};

std::string currentFile() { return runtime().frames.empty() ? std::string() : runtime().frames.back().file; }

// "file line L: " inside a script, "line L: " in command text of several lines.
std::string place(int line)
{
    std::string file = currentFile();
    if (!file.empty())
        return file + " line " + std::to_string(line) + ": ";
    return line > 1 ? "line " + std::to_string(line) + ": " : std::string();
}

MStatus scriptError(int line, const std::string& text, MStatus::MStatusCode code = MStatus::kInvalidParameter)
{
    writeLog(LogLevel::kError, place(line) + text);
    runtime().failureReported = true;
    return code;
}

VariablePtr findVariable(const std::string& name)
{
    Runtime& r = runtime();
    if (r.frames.empty())
        return nullptr;
    auto& scopes = r.frames.back().scopes;
    for (auto it = scopes.rbegin(); it != scopes.rend(); ++it) {
        auto found = it->find(name);
        if (found != it->end())
            return found->second;
    }
    return nullptr;
}

bool isIntegerText(const std::string& text)
{
    return text.find_first_of(".eE") == std::string::npos;
}

CommandValue literal(const ScriptArg& value)
{
    switch (value.kind) {
    case ScriptArg::Kind::kString: return CommandValue::ofString(value.text);
    case ScriptArg::Kind::kWord: {
        bool b = false;
        parseBool(value.text, b);
        return CommandValue::ofInt(b ? 1 : 0);
    }
    default: {
        double d = 0.0;
        parseNumber(value.text, d);
        if (isIntegerText(value.text) && d >= -2147483648.0 && d <= 2147483647.0)
            return CommandValue::ofInt(int(d));
        return CommandValue::ofDouble(d);
    }
    }
}

bool isStringValue(const CommandValue& v)
{
    return v.kind == CommandValue::Kind::kString || v.kind == CommandValue::Kind::kStringArray;
}
bool isIntValue(const CommandValue& v)
{
    return v.kind == CommandValue::Kind::kInt || v.kind == CommandValue::Kind::kIntArray;
}

double numberOf(const CommandValue& v)
{
    double d = 0.0;
    return v.asNumber(d) ? d : 0.0;
}

int toInt(double d)
{
    if (!(d == d))
        return 0;
    if (d >= 2147483647.0)
        return 2147483647;
    if (d <= -2147483648.0)
        return -2147483647 - 1;
    return int(d);
}

CommandValue emptyOf(const std::string& type, bool array)
{
    if (type == "int")
        return array ? CommandValue::ofInts({}) : CommandValue::ofInt(0);
    if (type == "float")
        return array ? CommandValue::ofDoubles({}) : CommandValue::ofDouble(0.0);
    return array ? CommandValue::ofStrings({}) : CommandValue::ofString("");
}

// A value as a variable of that type holds it. Deliberate: a scalar given where an array
// is expected becomes an array of one, since host commands return a single name where
// Maya's return an array of one (createNode's result kept in a string array).
bool convert(const CommandValue& v, const std::string& type, bool array, CommandValue& out, std::string& why)
{
    if (!array && v.isArray()) {
        why = "an array cannot be assigned to the " + type + " scalar";
        return false;
    }
    std::vector<std::string> texts = v.items();
    if (!array) {
        if (type == "string") {
            out = CommandValue::ofString(v.kind == CommandValue::Kind::kNone ? std::string() : v.text());
        } else if (type == "int") {
            out = CommandValue::ofInt(toInt(numberOf(v)));
        } else {
            out = CommandValue::ofDouble(numberOf(v));
        }
        return true;
    }
    out = emptyOf(type, true);
    for (const std::string& t : texts) {
        double d = 0.0;
        if (type == "string")
            out.strings.push_back(t);
        else if (type == "int")
            out.ints.push_back(toInt(parseNumber(t, d) ? d : 0.0));
        else
            out.doubles.push_back(parseNumber(t, d) ? d : 0.0);
    }
    return true;
}

std::string typeOfValue(const CommandValue& v)
{
    if (isIntValue(v))
        return "int";
    if (isStringValue(v) || v.kind == CommandValue::Kind::kNone)
        return "string";
    return "float";
}

CommandValue element(const Variable& var, std::size_t i)
{
    const CommandValue& v = var.value;
    if (var.type == "int")
        return CommandValue::ofInt(i < v.ints.size() ? v.ints[i] : 0);
    if (var.type == "float")
        return CommandValue::ofDouble(i < v.doubles.size() ? v.doubles[i] : 0.0);
    return CommandValue::ofString(i < v.strings.size() ? v.strings[i] : std::string());
}

// Arrays grow to the index written; this bounds how far one write may grow one.
constexpr std::size_t kMaxArrayIndex = 10000000;

void setElement(Variable& var, std::size_t i, const CommandValue& scalar)
{
    CommandValue& v = var.value;
    if (var.type == "int") {
        if (v.ints.size() <= i)
            v.ints.resize(i + 1, 0);
        v.ints[i] = toInt(numberOf(scalar));
    } else if (var.type == "float") {
        if (v.doubles.size() <= i)
            v.doubles.resize(i + 1, 0.0);
        v.doubles[i] = numberOf(scalar);
    } else {
        if (v.strings.size() <= i)
            v.strings.resize(i + 1);
        v.strings[i] = scalar.text();
    }
}

bool truth(const CommandValue& v)
{
    if (v.isArray())
        return v.size() > 0;
    double number = 0.0;
    if (v.asNumber(number))
        return number != 0.0;
    return v.kind == CommandValue::Kind::kString && !v.strings.front().empty();
}

MStatus executeList(const std::vector<ScriptStatement>& statements, CommandValue& result);
MStatus evaluateExpr(const ScriptExpr& e, CommandValue& out);
MStatus arithmetic(ScriptExpr::Op op, const CommandValue& l, const CommandValue& r, int line, CommandValue& out);
MStatus callName(const std::string& name, std::vector<ArgValue> args, const std::string& text, int line,
                 bool functionForm, CommandValue& result);

// Command substitution runs in the call that contains it: its changes are that call's, and
// it sees the variables of the code around it.
MStatus substitute(const std::string& text, int line, CommandValue& result)
{
    ParsedScript parsed = parseScript(text);
    if (!parsed.error.empty())
        return scriptError(line, "Syntax error in `" + text + "`, " + parsed.error);
    Runtime& r = runtime();
    BlockScope scope;
    MStatus st = executeList(parsed.statements, result);
    if (r.flow != Flow::kReturn)
        r.flow = Flow::kNormal;
    return st;
}

MStatus evaluateArg(const ScriptArg& arg, int line, ArgValue& out)
{
    switch (arg.kind) {
    case ScriptArg::Kind::kFlag: out = ArgValue::flag(arg.text); break;
    case ScriptArg::Kind::kString: out = ArgValue::string(arg.text); break;
    case ScriptArg::Kind::kNumber: out = ArgValue::number(arg.text); break;
    case ScriptArg::Kind::kWord: out = ArgValue::word(arg.text); break;
    case ScriptArg::Kind::kSubstitution: {
        CommandValue value;
        MStatus st = substitute(arg.text, line, value);
        if (!st)
            return st;
        out = value.asArgument();
        break;
    }
    case ScriptArg::Kind::kExpression: {
        CommandValue value;
        MStatus st = evaluateExpr(*arg.expr, value);
        if (!st)
            return st;
        out = value.asArgument();
        break;
    }
    }
    return MStatus::kSuccess;
}

// Writes `value` (combined with the present value for "+=" and the others) to a variable
// or an array element.
MStatus assignTo(const ScriptExpr& target, const std::string& how, CommandValue value, int line, CommandValue& out)
{
    const std::string& name = target.op == ScriptExpr::Op::kVariable ? target.name : target.left->name;
    MStatus st;
    VariablePtr var = findVariable(name);
    if (!var) {
        if (target.op != ScriptExpr::Op::kVariable || how != "=")
            return scriptError(line, "$" + name + " is an undeclared variable");
        // Assigning to an undeclared variable declares it with the value's type.
        var = std::make_shared<Variable>();
        var->type = typeOfValue(value);
        var->array = value.isArray();
        var->value = emptyOf(var->type, var->array);
        runtime().frames.back().scopes.back()[name] = var;
    }
    std::size_t index = 0;
    bool indexed = target.op == ScriptExpr::Op::kIndex;
    if (indexed) {
        if (!var->array)
            return scriptError(line, "$" + name + " is not an array");
        CommandValue at;
        st = evaluateExpr(*target.right, at);
        if (!st)
            return st;
        double d = numberOf(at);
        if (d < 0 || d > double(kMaxArrayIndex))
            return scriptError(line, "the index " + formatNumber(d) + " of $" + name + " is out of range");
        index = std::size_t(d);
    }
    if (how != "=") {
        CommandValue current = indexed ? element(*var, index) : var->value;
        if (current.isArray())
            return scriptError(line, "'" + how + "' does not apply to the array $" + name);
        ScriptExpr::Op op = how == "+=" ? ScriptExpr::Op::kAdd
                            : how == "-=" ? ScriptExpr::Op::kSubtract
                            : how == "*=" ? ScriptExpr::Op::kMultiply
                                          : ScriptExpr::Op::kDivide;
        CommandValue combined;
        st = arithmetic(op, current, value, line, combined);
        if (!st)
            return st;
        value = combined;
    }
    std::string why;
    if (indexed) {
        if (value.isArray())
            return scriptError(line, "an array cannot be assigned to an element of $" + name);
        setElement(*var, index, value);
        out = element(*var, index);
        return MStatus::kSuccess;
    }
    CommandValue converted;
    if (!convert(value, var->type, var->array, converted, why))
        return scriptError(line, why + " $" + name);
    var->value = converted;
    out = converted;
    return MStatus::kSuccess;
}

MStatus assign(const ScriptExpr& e, CommandValue& out)
{
    CommandValue value;
    MStatus st = evaluateExpr(*e.right, value);
    if (!st)
        return st;
    return assignTo(*e.left, e.name, std::move(value), e.line, out);
}

MStatus evaluateExpr(const ScriptExpr& e, CommandValue& out)
{
    using Op = ScriptExpr::Op;
    switch (e.op) {
    case Op::kValue:
        if (e.value.kind == ScriptArg::Kind::kSubstitution)
            return substitute(e.value.text, e.line, out);
        out = literal(e.value);
        return MStatus::kSuccess;
    case Op::kVariable: {
        VariablePtr var = findVariable(e.name);
        if (!var)
            return scriptError(e.line, "$" + e.name + " is an undeclared variable");
        out = var->value;
        return MStatus::kSuccess;
    }
    case Op::kIndex: {
        CommandValue array, at;
        if (e.left->op != Op::kVariable)
            return scriptError(e.line, "only array variables can be indexed");
        VariablePtr var = findVariable(e.left->name);
        if (!var)
            return scriptError(e.line, "$" + e.left->name + " is an undeclared variable");
        if (!var->array)
            return scriptError(e.line, "$" + e.left->name + " is not an array");
        MStatus st = evaluateExpr(*e.right, at);
        if (!st)
            return st;
        double d = numberOf(at);
        // Reading past the end gives the type's empty value, as MEL does.
        out = element(*var, d < 0 || d > double(kMaxArrayIndex) ? std::size_t(-1) : std::size_t(d));
        return MStatus::kSuccess;
    }
    case Op::kArray: {
        std::vector<CommandValue> items;
        std::string type = "int";
        for (const auto& item : e.items) {
            CommandValue v;
            MStatus st = evaluateExpr(*item, v);
            if (!st)
                return st;
            if (v.isArray())
                return scriptError(e.line, "an array cannot be an element of an array");
            if (isStringValue(v) || v.kind == CommandValue::Kind::kNone)
                type = "string";
            else if (v.kind == CommandValue::Kind::kDouble && type == "int")
                type = "float";
            items.push_back(std::move(v));
        }
        out = emptyOf(type, true);
        for (const CommandValue& v : items) {
            if (type == "string")
                out.strings.push_back(v.text());
            else if (type == "int")
                out.ints.push_back(toInt(numberOf(v)));
            else
                out.doubles.push_back(numberOf(v));
        }
        return MStatus::kSuccess;
    }
    case Op::kCall: {
        if ((e.name == "catch" || e.name == "catchQuiet") && e.items.size() == 1) {
            // catch(expression): 1 when the expression fails, 0 when it runs; its error lines
            // stay in the log, as Maya prints them.
            Runtime& r = runtime();
            const bool reported = r.failureReported;
            CommandValue ignored;
            MStatus st = evaluateExpr(*e.items[0], ignored);
            r.failureReported = reported;
            out = CommandValue::ofInt(st ? 0 : 1);
            return MStatus::kSuccess;
        }
        std::vector<ArgValue> args;
        for (const auto& item : e.items) {
            CommandValue v;
            MStatus st = evaluateExpr(*item, v);
            if (!st)
                return st;
            args.push_back(v.asArgument());
        }
        return callName(e.name, std::move(args), e.name + "(...)", e.line, true, out);
    }
    case Op::kAssign: return assign(e, out);
    case Op::kConditional: {
        CommandValue condition;
        MStatus st = evaluateExpr(*e.left, condition);
        if (!st)
            return st;
        return evaluateExpr(truth(condition) ? *e.items[0] : *e.right, out);
    }
    case Op::kIncrement: {
        CommandValue before;
        MStatus st = evaluateExpr(*e.left, before);
        if (!st)
            return st;
        CommandValue after;
        st = assignTo(*e.left, e.name == "++" ? "+=" : "-=", CommandValue::ofInt(1), e.line, after);
        out = before;
        return st;
    }
    default: break;
    }
    CommandValue l, rv;
    MStatus st = evaluateExpr(*e.left, l);
    if (!st)
        return st;
    if (e.op == Op::kNot) {
        out = CommandValue::ofInt(truth(l) ? 0 : 1);
        return st;
    }
    if (e.op == Op::kNegate) {
        if (l.isArray() || isStringValue(l))
            return scriptError(e.line, "'-' applies to numbers only");
        out = isIntValue(l) ? CommandValue::ofInt(-l.ints.front()) : CommandValue::ofDouble(-numberOf(l));
        return st;
    }
    // && and || stop as soon as the answer is known, so a substitution on the right may not run.
    if (e.op == Op::kAnd && !truth(l)) {
        out = CommandValue::ofInt(0);
        return st;
    }
    if (e.op == Op::kOr && truth(l)) {
        out = CommandValue::ofInt(1);
        return st;
    }
    st = evaluateExpr(*e.right, rv);
    if (!st)
        return st;
    if (e.op == Op::kAnd || e.op == Op::kOr) {
        out = CommandValue::ofInt(truth(rv) ? 1 : 0);
        return st;
    }
    return arithmetic(e.op, l, rv, e.line, out);
}

// Binary operators on two values: + joins text when either side is a string; integers
// stay integers (division truncates); comparisons compare numbers when both read as
// numbers, otherwise text.
MStatus arithmetic(ScriptExpr::Op op, const CommandValue& l, const CommandValue& r, int line, CommandValue& out)
{
    using Op = ScriptExpr::Op;
    double a = 0.0, b = 0.0;
    if (op == Op::kEqual || op == Op::kNotEqual || op == Op::kLess || op == Op::kGreater || op == Op::kLessEqual ||
        op == Op::kGreaterEqual) {
        int cmp = 0;
        if (l.asNumber(a) && r.asNumber(b))
            cmp = a < b ? -1 : (a > b ? 1 : 0);
        else
            cmp = l.text().compare(r.text()) < 0 ? -1 : (l.text() == r.text() ? 0 : 1);
        bool value = false;
        switch (op) {
        case Op::kEqual: value = cmp == 0; break;
        case Op::kNotEqual: value = cmp != 0; break;
        case Op::kLess: value = cmp < 0; break;
        case Op::kGreater: value = cmp > 0; break;
        case Op::kLessEqual: value = cmp <= 0; break;
        default: value = cmp >= 0; break;
        }
        out = CommandValue::ofInt(value ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (l.isArray() || r.isArray())
        return scriptError(line, "arithmetic does not apply to arrays");
    if (op == Op::kAdd && (isStringValue(l) || isStringValue(r))) {
        out = CommandValue::ofString(l.text() + r.text());
        return MStatus::kSuccess;
    }
    if (isStringValue(l) || isStringValue(r))
        return scriptError(line, "arithmetic other than '+' does not apply to strings");
    a = numberOf(l);
    b = numberOf(r);
    const bool integers = isIntValue(l) && isIntValue(r);
    if ((op == Op::kDivide || op == Op::kModulo) && b == 0.0)
        return scriptError(line, "division by zero", MStatus::kFailure);
    if (integers) {
        long long x = l.ints.front(), y = r.ints.front(), v = 0;
        switch (op) {
        case Op::kAdd: v = x + y; break;
        case Op::kSubtract: v = x - y; break;
        case Op::kMultiply: v = x * y; break;
        case Op::kDivide: v = (x == -2147483648LL && y == -1) ? 2147483647LL : x / y; break;
        default: v = (y == -1) ? 0 : x % y; break;
        }
        out = CommandValue::ofInt(toInt(double(v)));
        return MStatus::kSuccess;
    }
    double v = 0.0;
    switch (op) {
    case Op::kAdd: v = a + b; break;
    case Op::kSubtract: v = a - b; break;
    case Op::kMultiply: v = a * b; break;
    case Op::kDivide: v = a / b; break;
    default: v = std::fmod(a, b); break;
    }
    out = CommandValue::ofDouble(v);
    return MStatus::kSuccess;
}

// A built-in command applies wholly or not at all: what it changed before it failed (or
// threw) is taken back, so a bad later argument never leaves the earlier ones done with
// nothing to undo them.
MStatus runBuiltin(const BuiltinCommand& command, const CommandCall& call, CommandValue& result)
{
    auto own = std::make_unique<UndoRecording>();
    MStatus st;
    try {
        RecordingScope scope(own.get());
        st = command(call, result);
    } catch (...) {
        own->undo();
        throw;
    }
    if (!st) {
        own->undo();
        return st;
    }
    if (!own->empty())
        recordUndoStep(std::move(own));
    return st;
}

MStatus dispatch(const CommandCall& call, CommandValue& result)
{
    auto builtin = builtins().find(call.name);
    if (builtin != builtins().end())
        return runBuiltin(builtin->second, call, result);
    auto& commands = PluginRegistry::instance().commands;
    auto registered = commands.find(call.name);
    if (registered != commands.end()) {
        // A copy: the command may unload its own plug-in.
        CommandRecord record = registered->second;
        if (record.kind == CommandKind::kContextCommand) {
            if (!contextRunner()) {
                writeLog(LogLevel::kError, call.name + ": context commands are not available in this host");
                return MStatus::kFailure;
            }
            return contextRunner()(call.name, call, result);
        }
        return runPluginCommand(record, call, result);
    }
    writeLog(LogLevel::kError, "Unknown command '" + call.name + "' in: " + call.text);
    return MStatus::kNotFound;
}

// ---- procedures, scripts and the script path ------------------------------------------

std::shared_ptr<ScriptProc> findProc(const std::string& name)
{
    Runtime& r = runtime();
    // A local procedure is seen by the script that defines it, and hides a global one there.
    auto local = r.localProcs.find({currentFile(), name});
    if (local != r.localProcs.end())
        return local->second;
    auto global = r.globalProcs.find(name);
    return global == r.globalProcs.end() ? nullptr : global->second;
}

std::vector<std::string> scriptDirectoryList()
{
    std::vector<std::string> dirs = runtime().scriptDirectories;
    if (const char* env = std::getenv("MAYA_SCRIPT_PATH")) {
        std::string all = env;
        std::size_t start = 0;
        while (start <= all.size()) {
            std::size_t end = all.find(':', start);
            if (end == std::string::npos)
                end = all.size();
            if (end > start)
                dirs.push_back(all.substr(start, end - start));
            start = end + 1;
        }
    }
    return dirs;
}

bool isFile(const std::filesystem::path& p)
{
    std::error_code ec;
    return std::filesystem::is_regular_file(p, ec);
}

// The script a name stands for: a path as given, else the first directory of the script
// path that holds it; "name" also finds "name.mel".
std::string findScriptFile(const std::string& name)
{
    if (name.empty())
        return {};
    std::vector<std::string> candidates{name};
    if (std::filesystem::path(name).extension() != ".mel")
        candidates.push_back(name + ".mel");
    for (const std::string& c : candidates) {
        std::filesystem::path p(c);
        if (p.is_absolute() || c.find('/') != std::string::npos) {
            if (isFile(p))
                return p.lexically_normal().string();
            continue;
        }
        for (const std::string& dir : scriptDirectoryList())
            if (isFile(std::filesystem::path(dir) / p))
                return (std::filesystem::path(dir) / p).lexically_normal().string();
    }
    return {};
}

// Scripts larger than this are refused rather than read whole.
constexpr std::uintmax_t kMaxScriptBytes = 16u << 20;

MStatus runScriptFile(const std::string& path, int line, CommandValue& result)
{
    Runtime& r = runtime();
    if (r.frames.size() >= kMaxProcNesting)
        return scriptError(line, "scripts and procedures nest more than " + std::to_string(kMaxProcNesting) +
                                     " calls deep; not sourced: " + path, MStatus::kFailure);
    std::error_code ec;
    const std::uintmax_t bytes = std::filesystem::file_size(path, ec);
    std::ifstream in(path, std::ios::binary);
    if (ec || !in || bytes > kMaxScriptBytes)
        return scriptError(line, "cannot read the script " + path, MStatus::kFailure);
    std::ostringstream text;
    text << in.rdbuf();
    ParsedScript parsed = parseScript(text.str());
    if (!parsed.error.empty()) {
        writeLog(LogLevel::kError, "Syntax error in " + path + ", " + parsed.error);
        r.failureReported = true;
        return MStatus::kInvalidParameter;
    }
    FrameScope frame(path);
    MStatus st = executeList(parsed.statements, result);
    r.flow = Flow::kNormal;
    return st;
}

// Arguments of a procedure call, converted to its parameters' types.
MStatus bindParameters(const ScriptProc& proc, const std::vector<ArgValue>& args, int line,
                       std::map<std::string, VariablePtr>& scope)
{
    if (args.size() != proc.params.size())
        return scriptError(line, "the procedure " + proc.name + " takes " + std::to_string(proc.params.size()) +
                                     " argument(s), " + std::to_string(args.size()) + " given");
    for (std::size_t i = 0; i < args.size(); ++i) {
        const ScriptParam& p = proc.params[i];
        const ArgValue& a = args[i];
        CommandValue given;
        switch (a.kind) {
        case ArgValue::Kind::kIntArray:
        case ArgValue::Kind::kDoubleArray:
        case ArgValue::Kind::kStringArray: given = CommandValue::ofStrings(a.items); break;
        default: given = CommandValue::ofString(a.text); break;
        }
        if (a.isArray() != p.array)
            return scriptError(line, "the argument $" + p.name + " of " + proc.name + " must be " +
                                         (p.array ? "an array" : "a scalar"));
        auto var = std::make_shared<Variable>();
        var->type = p.type;
        var->array = p.array;
        std::string why;
        if (!convert(given, p.type, p.array, var->value, why))
            return scriptError(line, why + " $" + p.name);
        scope[p.name] = var;
    }
    return MStatus::kSuccess;
}

MStatus runProc(const ScriptProc& proc, const std::vector<ArgValue>& args, int line, CommandValue& result)
{
    Runtime& r = runtime();
    if (r.frames.size() >= kMaxProcNesting)
        return scriptError(line, "procedures nest more than " + std::to_string(kMaxProcNesting) +
                                     " calls deep; " + proc.name + " not run", MStatus::kFailure);
    std::map<std::string, VariablePtr> params;
    MStatus st = bindParameters(proc, args, line, params);
    if (!st)
        return st;
    // Keep the body alive even if the procedure redefines itself while it runs.
    std::shared_ptr<ScriptBody> body = proc.body;
    FrameScope frame(proc.file);
    r.frames.back().scopes.back() = std::move(params);
    CommandValue ignored;
    r.returned = CommandValue();
    st = executeList(*body, ignored);
    CommandValue returned = std::move(r.returned);
    r.returned = CommandValue();
    r.flow = Flow::kNormal;
    if (!st)
        return st;
    if (proc.returnType.empty()) {
        result = CommandValue();
        return st;
    }
    std::string why;
    if (!convert(returned, proc.returnType, proc.returnsArray, result, why))
        return scriptError(line, proc.name + " returns " + why);
    return st;
}

// A name called as a command or a function: a procedure, a built-in command, a plug-in's
// command; failing those, a script of that name on the script path is sourced and the name
// looked up again.
MStatus callName(const std::string& name, std::vector<ArgValue> args, const std::string& text, int line,
                 bool functionForm, CommandValue& result)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (std::shared_ptr<ScriptProc> proc = findProc(name))
            return runProc(*proc, args, line, result);
        if (builtins().count(name) || PluginRegistry::instance().commands.count(name)) {
            CommandCall call;
            call.name = name;
            call.text = text;
            for (ArgValue& a : args) {
                // In the function form flags are strings: ls("-sl").
                if (functionForm && a.kind == ArgValue::Kind::kString && a.text.size() > 1 && a.text[0] == '-' &&
                    std::isalpha(static_cast<unsigned char>(a.text[1])))
                    a.kind = ArgValue::Kind::kFlag;
                call.args.push_back(std::move(a));
            }
            result = CommandValue();
            return dispatch(call, result);
        }
        if (attempt == 0) {
            std::string script = findScriptFile(name + ".mel");
            if (script.empty())
                break;
            CommandValue ignored;
            MStatus st = runScriptFile(script, line, ignored);
            if (!st)
                return st;
        }
    }
    writeLog(LogLevel::kError, place(line) + "Unknown command '" + name + "' in: " + text);
    runtime().failureReported = true;
    return MStatus::kNotFound;
}

MStatus declare(const ScriptStatement& s, CommandValue& result)
{
    Runtime& r = runtime();
    auto& scope = r.frames.back().scopes.back();
    for (const ScriptDeclarator& d : s.declarators) {
        VariablePtr var;
        if (s.global) {
            auto& slot = r.globals[d.name];
            if (slot && (slot->type != s.type || slot->array != d.array))
                return scriptError(s.line, "the global $" + d.name + " is declared already as another type");
            if (!slot) {
                slot = std::make_shared<Variable>();
                slot->type = s.type;
                slot->array = d.array;
                slot->value = emptyOf(s.type, d.array);
            }
            var = slot;
        } else {
            var = std::make_shared<Variable>();
            var->type = s.type;
            var->array = d.array;
            var->value = emptyOf(s.type, d.array);
        }
        scope[d.name] = var;
        if (d.init) {
            CommandValue value;
            MStatus st = evaluateExpr(*d.init, value);
            if (!st)
                return st;
            std::string why;
            CommandValue converted;
            if (!convert(value, var->type, var->array, converted, why))
                return scriptError(s.line, why + " $" + d.name);
            var->value = converted;
        }
    }
    result = CommandValue();
    return MStatus::kSuccess;
}

MStatus executeStatement(const ScriptStatement& statement, CommandValue& result);

// How deeply statements may run inside one another, blocks and procedure calls together: a
// script within the limits of each can still multiply them.
constexpr int kMaxRunNesting = 1500;

MStatus execute(const ScriptStatement& statement, CommandValue& result)
{
    Runtime& r = runtime();
    r.line = statement.line;
    if (r.running >= kMaxRunNesting)
        return scriptError(statement.line, "statements nest more than " + std::to_string(kMaxRunNesting) +
                                               " levels deep (blocks and procedure calls); not run",
                           MStatus::kFailure);
    ++r.running;
    MStatus st;
    try {
        st = executeStatement(statement, result);
    } catch (...) {
        --r.running;
        throw;
    }
    --r.running;
    // The innermost statement that fails inside a script says where.
    if (!st && !r.failureReported && !currentFile().empty()) {
        writeLog(LogLevel::kError, place(statement.line) + "failed: " + statement.text.substr(0, 200));
        r.failureReported = true;
    }
    return st;
}

// Runs a loop body; false when the loop must end (break, return or failure).
bool loopBody(const std::vector<ScriptStatement>& body, CommandValue& result, MStatus& st)
{
    Runtime& r = runtime();
    BlockScope scope;
    st = executeList(body, result);
    if (!st || r.flow == Flow::kReturn)
        return false;
    if (r.flow == Flow::kBreak) {
        r.flow = Flow::kNormal;
        return false;
    }
    r.flow = Flow::kNormal;
    return true;
}

MStatus executeStatement(const ScriptStatement& statement, CommandValue& result)
{
    using Kind = ScriptStatement::Kind;
    Runtime& r = runtime();
    MStatus st;
    switch (statement.kind) {
    case Kind::kBlock: {
        BlockScope scope;
        return executeList(statement.body, result);
    }
    case Kind::kIf: {
        CommandValue condition;
        st = evaluateExpr(*statement.condition, condition);
        if (!st)
            return st;
        result = CommandValue();
        BlockScope scope;
        return executeList(truth(condition) ? statement.body : statement.elseBody, result);
    }
    case Kind::kWhile:
    case Kind::kDoWhile: {
        result = CommandValue();
        bool first = statement.kind == Kind::kDoWhile;
        while (true) {
            if (!first) {
                CommandValue condition;
                st = evaluateExpr(*statement.condition, condition);
                if (!st || !truth(condition))
                    return st;
            }
            first = false;
            if (!loopBody(statement.body, result, st))
                return st;
        }
    }
    case Kind::kFor: {
        result = CommandValue();
        BlockScope scope;
        CommandValue scratch;
        if (statement.init && !(st = evaluateExpr(*statement.init, scratch)))
            return st;
        while (true) {
            if (statement.condition) {
                CommandValue condition;
                st = evaluateExpr(*statement.condition, condition);
                if (!st || !truth(condition))
                    return st;
            }
            if (!loopBody(statement.body, result, st))
                return st;
            if (statement.step && !(st = evaluateExpr(*statement.step, scratch)))
                return st;
        }
    }
    case Kind::kForIn: {
        result = CommandValue();
        CommandValue array;
        st = evaluateExpr(*statement.condition, array);
        if (!st)
            return st;
        if (!array.isArray())
            return scriptError(statement.line, "'for ... in' needs an array");
        VariablePtr var = findVariable(statement.variable);
        if (!var) {
            var = std::make_shared<Variable>();
            var->type = typeOfValue(array);
            r.frames.back().scopes.back()[statement.variable] = var;
        }
        if (var->array)
            return scriptError(statement.line, "the loop variable $" + statement.variable + " must be a scalar");
        // The loop walks a copy: the body may change the array.
        for (const std::string& item : array.items()) {
            std::string why;
            convert(CommandValue::ofString(item), var->type, false, var->value, why);
            if (!loopBody(statement.body, result, st))
                return st;
        }
        return st;
    }
    case Kind::kBreak:
    case Kind::kContinue:
        r.flow = statement.kind == Kind::kBreak ? Flow::kBreak : Flow::kContinue;
        return MStatus::kSuccess;
    case Kind::kReturn: {
        r.returned = CommandValue();
        if (statement.condition && !(st = evaluateExpr(*statement.condition, r.returned)))
            return st;
        r.flow = Flow::kReturn;
        return MStatus::kSuccess;
    }
    case Kind::kProc: {
        auto proc = std::make_shared<ScriptProc>(*statement.proc);
        proc->file = currentFile();
        if (proc->global)
            r.globalProcs[proc->name] = proc;
        else
            r.localProcs[{proc->file, proc->name}] = proc;
        return MStatus::kSuccess;
    }
    case Kind::kDeclare: return declare(statement, result);
    case Kind::kExpression: return evaluateExpr(*statement.condition, result);
    case Kind::kCommand: break;
    }
    std::vector<ArgValue> args;
    for (const ScriptArg& arg : statement.args) {
        ArgValue value;
        st = evaluateArg(arg, statement.line, value);
        if (!st)
            return st;
        args.push_back(std::move(value));
    }
    result = CommandValue();
    return callName(statement.command, std::move(args), statement.text, statement.line, false, result);
}

MStatus executeList(const std::vector<ScriptStatement>& statements, CommandValue& result)
{
    Runtime& r = runtime();
    for (const ScriptStatement& s : statements) {
        MStatus st = execute(s, result);
        if (!st)
            return st;
        if (r.flow != Flow::kNormal)
            break;
    }
    return MStatus::kSuccess;
}

// ---- the commands of the language itself -----------------------------------------------

MStatus sourceCommand(const CommandCall& call, CommandValue& result)
{
    if (call.args.size() != 1 || call.args[0].isArray() || call.args[0].isFlag())
        return commandError(call, "give one script file");
    const std::string path = findScriptFile(call.args[0].text);
    if (path.empty())
        return commandError(call, "cannot find the script " + call.args[0].text + " on the script path",
                            MStatus::kNotFound);
    return runScriptFile(path, runtime().line, result);
}

MStatus existsCommand(const CommandCall& call, CommandValue& result)
{
    if (call.args.size() != 1 || call.args[0].isArray() || call.args[0].isFlag())
        return commandError(call, "give one name");
    const std::string& name = call.args[0].text;
    bool found = findProc(name) || builtins().count(name) || PluginRegistry::instance().commands.count(name) ||
                 !findScriptFile(name + ".mel").empty();
    result = CommandValue::ofInt(found ? 1 : 0);
    return MStatus::kSuccess;
}

MStatus evalCommand(const CommandCall& call, CommandValue& result)
{
    std::string text;
    for (const ArgValue& a : call.args)
        text += (text.empty() ? "" : " ") + (a.isArray() ? a.display() : a.text);
    ParsedScript parsed = parseScript(text);
    if (!parsed.error.empty())
        return commandError(call, "Syntax error, " + parsed.error);
    FrameScope frame("");
    MStatus st = executeList(parsed.statements, result);
    runtime().flow = Flow::kNormal;
    return st;
}

std::string joined(const CommandCall& call)
{
    std::string text;
    for (const ArgValue& a : call.args) {
        if (a.isArray()) {
            for (const std::string& item : a.items)
                text += item + "\n";
        } else {
            text += a.text;
        }
    }
    return text;
}

MStatus printCommand(const CommandCall& call, CommandValue&)
{
    writeLog(LogLevel::kInfo, joined(call));
    return MStatus::kSuccess;
}

MStatus warningCommand(const CommandCall& call, CommandValue&)
{
    writeLog(LogLevel::kWarning, joined(call));
    return MStatus::kSuccess;
}

MStatus errorCommand(const CommandCall& call, CommandValue&)
{
    writeLog(LogLevel::kError, place(runtime().line) + joined(call));
    runtime().failureReported = true;
    return MStatus::kFailure;
}

MStatus sizeCommand(const CommandCall& call, CommandValue& result)
{
    if (call.args.size() != 1)
        return commandError(call, "give one array or string");
    const ArgValue& a = call.args[0];
    result = CommandValue::ofInt(int(a.isArray() ? a.items.size() : a.text.size()));
    return MStatus::kSuccess;
}

struct LanguageCommands {
    LanguageCommands()
    {
        registerBuiltinCommand("source", sourceCommand);
        registerBuiltinCommand("exists", existsCommand);
        registerBuiltinCommand("eval", evalCommand);
        registerBuiltinCommand("print", printCommand);
        registerBuiltinCommand("warning", warningCommand);
        registerBuiltinCommand("error", errorCommand);
        registerBuiltinCommand("size", sizeCommand);
    }
} gLanguageCommands;

CommandOutcome runForSeam(const std::string& text, bool undoable)
{
    CommandRun run = interpret(text, undoable, false);
    CommandOutcome outcome;
    outcome.status = run.status;
    outcome.result = run.result.text();
    // With undo enabled the queue owns the changes; the caller must not undo them twice.
    if (run.changes && !undoable) {
        std::shared_ptr<UndoRecording> changes = run.changes;
        outcome.undo = [changes] { changes->undo(); };
        outcome.redo = [changes] { changes->redo(); };
    }
    return outcome;
}

const bool kInstalled = (setCommandRunner(runForSeam), true);

} // namespace

void addScriptDirectory(const std::string& directory)
{
    auto& dirs = runtime().scriptDirectories;
    if (std::find(dirs.begin(), dirs.end(), directory) == dirs.end())
        dirs.push_back(directory);
}

std::vector<std::string> scriptDirectories() { return scriptDirectoryList(); }

std::string findScript(const std::string& name) { return findScriptFile(name); }

bool procedureExists(const std::string& name) { return runtime().globalProcs.count(name) > 0; }

void registerBuiltinCommand(const std::string& name, BuiltinCommand command)
{
    builtins()[name] = std::move(command);
}

void setContextCommandRunner(ContextCommandRunner runner) { contextRunner() = std::move(runner); }

CommandRun interpret(const std::string& text, bool undoEnabled, bool displayEnabled)
{
    (void)kInstalled;
    CommandRun run;
    if (displayEnabled)
        writeJournal(trimmed(text));
    // A command that runs command text that runs it again would otherwise recurse until
    // the stack runs out.
    if (calls().size() >= kMaxCallNesting) {
        writeLog(LogLevel::kError, "Command text nests more than " + std::to_string(kMaxCallNesting) +
                                       " calls deep; not run: " + trimmed(text));
        run.status = MStatus::kFailure;
        return run;
    }
    ParsedScript parsed = parseScript(text);
    if (!parsed.error.empty()) {
        writeLog(LogLevel::kError, "Syntax error, " + parsed.error + ", in: " + trimmed(text));
        run.status = MStatus::kInvalidParameter;
        return run;
    }
    auto recording = std::make_shared<UndoRecording>();
    calls().push_back(CallFrame{undoEnabled, recording.get()});
    // A call runs in its own frame with its own failure report and flow, and leaves those of
    // the script around it (a plug-in command that runs command text) as they were.
    Runtime& r = runtime();
    const bool reported = r.failureReported;
    const Flow flow = r.flow;
    const int line = r.line;
    r.failureReported = false;
    r.flow = Flow::kNormal;
    try {
        RecordingScope scope(recording.get());
        FrameScope frame("");
        run.status = executeList(parsed.statements, run.result);
    } catch (const std::exception& e) {
        writeLog(LogLevel::kError, std::string("Command text failed (") + e.what() + "): " + trimmed(text));
        run.status = MStatus::kFailure;
    } catch (...) {
        writeLog(LogLevel::kError, "Command text failed: " + trimmed(text));
        run.status = MStatus::kFailure;
    }
    calls().pop_back();
    r.failureReported = reported;
    r.flow = flow;
    r.line = line;
    if (recording->empty())
        return run;
    run.changes = recording;
    // What changed stays undoable even when a later statement failed.
    if (undoEnabled && !UndoQueue::instance().busy()) {
        UndoRecording* outer = nullptr;
        for (auto it = calls().rbegin(); it != calls().rend() && !outer; ++it)
            if (it->undoEnabled)
                outer = it->recording;
        if (outer)
            outer->add(std::make_unique<SharedStep>(recording));
        else
            UndoQueue::instance().push(trimmed(text), std::make_unique<SharedStep>(recording));
    }
    return run;
}

bool callHasPendingChanges()
{
    for (const CallFrame& frame : calls())
        if (frame.undoEnabled && frame.recording && !frame.recording->empty())
            return true;
    return false;
}

void releasePluginObjects(const std::string& pluginName)
{
    UndoQueue::instance().flush();
    for (const auto& hook : releaseHooks())
        hook(pluginName);
}

void addPluginReleaseHook(std::function<void(const std::string& pluginName)> hook)
{
    releaseHooks().push_back(std::move(hook));
}

CommandValue& currentResult()
{
    static CommandValue scratch;
    return resultStack().empty() ? scratch : *resultStack().back();
}

ResultScope::ResultScope(CommandValue& slot) { resultStack().push_back(&slot); }
ResultScope::~ResultScope() { resultStack().pop_back(); }

} // namespace host
