// Built-in commands on the session: optionVar, constructionHistory, undo, redo, loadPlugin,
// unloadPlugin.

#include "command/builtinArgs.h"
#include "dg/messages.h"

#include "ui/selectionState.h"

#include "host/harness.h"

#include <cstdint>
#include <variant>

namespace host {
namespace {

MStatus optionVarCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"iv", "intValue", 2},
                        {"fv", "floatValue", 2},
                        {"sv", "stringValue", 2},
                        {"q", "query", 1},
                        {"ex", "exists", 1},
                        {"rm", "remove", 1},
                        {"iva", "intValueAppend", 2},
                        {"fva", "floatValueAppend", 2},
                        {"sva", "stringValueAppend", 2}}))
        return MStatus::kInvalidParameter;
    for (const char* arrays : {"intValueAppend", "floatValueAppend", "stringValueAppend"})
        if (a.has(arrays))
            return commandError(call, std::string("-") + arrays + ": array option variables are not supported",
                                MStatus::kNotImplemented);
    if (!a.operands().empty())
        return commandError(call, "unexpected argument '" + a.operands().front().text + "'");
    auto& vars = optionVariables();
    // Values are all checked before any is stored.
    std::vector<std::pair<std::string, OptionValue>> sets;
    for (unsigned u = 0; u < a.uses("intValue"); ++u) {
        long long v = 0;
        if (!parseInteger(a.text("intValue", 1, u), v) || v < INT32_MIN || v > INT32_MAX)
            return commandError(call, "-intValue needs a whole number, got '" + a.text("intValue", 1, u) + "'");
        sets.push_back({a.text("intValue", 0, u), OptionValue(int(v))});
    }
    for (unsigned u = 0; u < a.uses("floatValue"); ++u) {
        double v = 0.0;
        if (!parseNumber(a.text("floatValue", 1, u), v))
            return commandError(call, "-floatValue needs a number, got '" + a.text("floatValue", 1, u) + "'");
        sets.push_back({a.text("floatValue", 0, u), OptionValue(v)});
    }
    for (unsigned u = 0; u < a.uses("stringValue"); ++u)
        sets.push_back({a.text("stringValue", 0, u), OptionValue(a.text("stringValue", 1, u))});
    for (const auto& s : sets)
        if (s.first.empty())
            return commandError(call, "an option variable needs a name");
    for (unsigned u = 0; u < a.uses("remove"); ++u)
        vars.erase(a.text("remove", 0, u));
    for (auto& s : sets)
        vars[s.first] = s.second;
    if (a.has("exists"))
        result = CommandValue::ofInt(vars.count(a.text("exists")) ? 1 : 0);
    if (a.has("query")) {
        auto it = vars.find(a.text("query"));
        if (it == vars.end())
            result = CommandValue::ofInt(0);
        else if (auto* i = std::get_if<int>(&it->second))
            result = CommandValue::ofInt(*i);
        else if (auto* d = std::get_if<double>(&it->second))
            result = CommandValue::ofDouble(*d);
        else
            result = CommandValue::ofString(std::get<std::string>(it->second));
    }
    if (sets.empty() && !a.has("remove") && !a.has("exists") && !a.has("query"))
        return commandError(call, "needs -intValue, -floatValue, -stringValue, -query, -exists or -remove");
    return MStatus::kSuccess;
}

MStatus constructionHistoryCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"tgl", "toggle", kOptionalArgument}, {"q", "query", 0}}))
        return MStatus::kInvalidParameter;
    if (!a.has("toggle"))
        return commandError(call, "needs -toggle");
    if (a.has("query")) {
        result = CommandValue::ofInt(constructionHistoryOn() ? 1 : 0);
        return MStatus::kSuccess;
    }
    bool on = false;
    if (!a.value("toggle") || !parseBool(a.text("toggle"), on))
        return commandError(call, "-toggle needs true or false");
    if (constructionHistoryOn() != on) {
        constructionHistoryOn() = on;
        sendEvent("constructionHistoryChanged");
    }
    return MStatus::kSuccess;
}

MStatus undoCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (!a.operands().empty())
        return commandError(call, "takes no arguments");
    if (callHasPendingChanges())
        return commandError(call, "the call that runs it has changed the scene already; run undo as a call of its own",
                            MStatus::kFailure);
    return UndoQueue::instance().undo();
}

MStatus redoCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (!a.operands().empty())
        return commandError(call, "takes no arguments");
    if (callHasPendingChanges())
        return commandError(call, "the call that runs it has changed the scene already; run redo as a call of its own",
                            MStatus::kFailure);
    return UndoQueue::instance().redo();
}

std::string pluginStem(const std::string& path)
{
    std::string file = path.substr(path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/') + 1);
    return file.substr(0, file.find('.'));
}

MStatus loadPluginCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"qt", "quiet", 0}}))
        return MStatus::kInvalidParameter;
    if (a.operands().empty())
        return commandError(call, "needs the path of a plug-in");
    std::vector<std::string> names;
    for (const std::string& path : a.operandTexts()) {
        std::string name = pluginStem(path);
        // Loading a loaded plug-in again is no error: it is there.
        if (!isPluginLoaded(name)) {
            MStatus st = loadPlugin(path, &name);
            if (!st)
                return commandError(call, "cannot load the plug-in " + path, st.statusCode());
        }
        names.push_back(name);
    }
    result = CommandValue::ofStrings(names);
    return MStatus::kSuccess;
}

MStatus unloadPluginCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"f", "force", 0}}))
        return MStatus::kInvalidParameter;
    if (a.operands().empty())
        return commandError(call, "needs the name of a plug-in");
    for (const std::string& name : a.operandTexts()) {
        if (!isPluginLoaded(name))
            return commandError(call, "the plug-in '" + name + "' is not loaded");
        MStatus st = unloadPlugin(name);
        if (!st)
            return commandError(call, "cannot unload the plug-in " + name, st.statusCode());
    }
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("optionVar", optionVarCommand);
        registerBuiltinCommand("constructionHistory", constructionHistoryCommand);
        registerBuiltinCommand("undo", undoCommand);
        registerBuiltinCommand("redo", redoCommand);
        registerBuiltinCommand("loadPlugin", loadPluginCommand);
        registerBuiltinCommand("unloadPlugin", unloadPluginCommand);
    }
} gRegistrar;

} // namespace
} // namespace host
