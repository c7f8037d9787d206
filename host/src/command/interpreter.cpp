#include "command/interpreter.h"

#include "command/commandParser.h"
#include "command/pluginCommands.h"
#include "dg/commandRunner.h"
#include "plugin/pluginRegistry.h"

#include "host/log.h"

#include <exception>
#include <map>

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

MStatus executeList(const std::vector<ScriptStatement>& statements, CommandValue& result);

// Command substitution runs in the call that contains it: its changes are that call's.
MStatus substitute(const std::string& text, CommandValue& result)
{
    ParsedScript parsed = parseScript(text);
    if (!parsed.error.empty()) {
        writeLog(LogLevel::kError, "Syntax error in `" + text + "`, " + parsed.error);
        return MStatus::kInvalidParameter;
    }
    return executeList(parsed.statements, result);
}

MStatus evaluateArg(const ScriptArg& arg, ArgValue& out)
{
    switch (arg.kind) {
    case ScriptArg::Kind::kFlag: out = ArgValue::flag(arg.text); break;
    case ScriptArg::Kind::kString: out = ArgValue::string(arg.text); break;
    case ScriptArg::Kind::kNumber: out = ArgValue::number(arg.text); break;
    case ScriptArg::Kind::kWord: out = ArgValue::word(arg.text); break;
    case ScriptArg::Kind::kSubstitution: {
        CommandValue value;
        MStatus st = substitute(arg.text, value);
        if (!st)
            return st;
        out = value.asArgument();
        break;
    }
    }
    return MStatus::kSuccess;
}

MStatus evaluateExpr(const ScriptExpr& e, CommandValue& out);

bool truth(const CommandValue& v)
{
    if (v.isArray())
        return v.size() > 0;
    double number = 0.0;
    if (v.asNumber(number))
        return number != 0.0;
    return v.kind == CommandValue::Kind::kString && !v.strings.front().empty();
}

MStatus evaluateExpr(const ScriptExpr& e, CommandValue& out)
{
    using Op = ScriptExpr::Op;
    if (e.op == Op::kValue) {
        switch (e.value.kind) {
        case ScriptArg::Kind::kSubstitution: return substitute(e.value.text, out);
        case ScriptArg::Kind::kString: out = CommandValue::ofString(e.value.text); break;
        case ScriptArg::Kind::kWord: {
            bool b = false;
            parseBool(e.value.text, b);
            out = CommandValue::ofInt(b ? 1 : 0);
            break;
        }
        default: {
            double d = 0.0;
            parseNumber(e.value.text, d);
            out = CommandValue::ofDouble(d);
            break;
        }
        }
        return MStatus::kSuccess;
    }
    CommandValue l, r;
    MStatus st = evaluateExpr(*e.left, l);
    if (!st)
        return st;
    if (e.op == Op::kNot) {
        out = CommandValue::ofInt(truth(l) ? 0 : 1);
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
    st = evaluateExpr(*e.right, r);
    if (!st)
        return st;
    if (e.op == Op::kAnd || e.op == Op::kOr) {
        out = CommandValue::ofInt(truth(r) ? 1 : 0);
        return st;
    }
    double a = 0.0, b = 0.0;
    int cmp = 0;
    if (l.asNumber(a) && r.asNumber(b))
        cmp = a < b ? -1 : (a > b ? 1 : 0);
    else
        cmp = l.text().compare(r.text()) < 0 ? -1 : (l.text() == r.text() ? 0 : 1);
    bool value = false;
    switch (e.op) {
    case Op::kEqual: value = cmp == 0; break;
    case Op::kNotEqual: value = cmp != 0; break;
    case Op::kLess: value = cmp < 0; break;
    case Op::kGreater: value = cmp > 0; break;
    case Op::kLessEqual: value = cmp <= 0; break;
    default: value = cmp >= 0; break;
    }
    out = CommandValue::ofInt(value ? 1 : 0);
    return st;
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

MStatus execute(const ScriptStatement& statement, CommandValue& result)
{
    switch (statement.kind) {
    case ScriptStatement::Kind::kBlock: return executeList(statement.body, result);
    case ScriptStatement::Kind::kIf: {
        CommandValue condition;
        MStatus st = evaluateExpr(*statement.condition, condition);
        if (!st)
            return st;
        result = CommandValue();
        return executeList(truth(condition) ? statement.body : statement.elseBody, result);
    }
    case ScriptStatement::Kind::kCommand: break;
    }
    CommandCall call;
    call.name = statement.command;
    call.text = statement.text;
    for (const ScriptArg& arg : statement.args) {
        ArgValue value;
        MStatus st = evaluateArg(arg, value);
        if (!st)
            return st;
        call.args.push_back(std::move(value));
    }
    result = CommandValue();
    return dispatch(call, result);
}

MStatus executeList(const std::vector<ScriptStatement>& statements, CommandValue& result)
{
    for (const ScriptStatement& s : statements) {
        MStatus st = execute(s, result);
        if (!st)
            return st;
    }
    return MStatus::kSuccess;
}

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
    try {
        RecordingScope scope(recording.get());
        run.status = executeList(parsed.statements, run.result);
    } catch (const std::exception& e) {
        writeLog(LogLevel::kError, std::string("Command text failed (") + e.what() + "): " + trimmed(text));
        run.status = MStatus::kFailure;
    } catch (...) {
        writeLog(LogLevel::kError, "Command text failed: " + trimmed(text));
        run.status = MStatus::kFailure;
    }
    calls().pop_back();
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
