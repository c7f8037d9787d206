#include "command/builtinArgs.h"

#include "dg/nodeBody.h"
#include "dg/scene.h"
#include "ui/selectionState.h"

#include "host/log.h"

#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

namespace host {

bool BuiltinArgs::parse(const CommandCall& call, const std::vector<FlagRule>& flags)
{
    fFlags = flags;
    fUses.clear();
    fOperands.clear();
    for (std::size_t i = 0; i < call.args.size(); ++i) {
        const ArgValue& a = call.args[i];
        if (!a.isFlag()) {
            if (a.isArray())
                for (const std::string& item : a.items)
                    fOperands.push_back(ArgValue::string(item));
            else
                fOperands.push_back(a);
            continue;
        }
        std::string name = a.flagName();
        const FlagRule* flag = nullptr;
        for (const FlagRule& f : fFlags)
            if (name == f.shortName || name == f.longName)
                flag = &f;
        if (!flag) {
            commandError(call, "Invalid flag '-" + name + "'");
            return false;
        }
        Use use{flag, {}};
        if (flag->argumentCount == kOptionalArgument) {
            // Only a boolean is the flag's: "listHistory -f shape" names the object.
            bool ignored = false;
            if (i + 1 < call.args.size() && !call.args[i + 1].isFlag() && !call.args[i + 1].isArray() &&
                parseBool(call.args[i + 1].text, ignored))
                use.values.push_back(call.args[++i]);
        } else {
            for (int k = 0; k < flag->argumentCount; ++k) {
                if (i + 1 >= call.args.size() || call.args[i + 1].isFlag()) {
                    commandError(call, "the flag '-" + name + "' needs " + std::to_string(flag->argumentCount) +
                                           " argument(s)");
                    return false;
                }
                use.values.push_back(call.args[++i]);
            }
        }
        fUses.push_back(std::move(use));
    }
    return true;
}

unsigned BuiltinArgs::uses(const char* longName) const
{
    unsigned n = 0;
    for (const Use& u : fUses)
        n += std::string(u.flag->longName) == longName ? 1 : 0;
    return n;
}

const ArgValue* BuiltinArgs::value(const char* longName, unsigned k, unsigned use) const
{
    for (const Use& u : fUses) {
        if (std::string(u.flag->longName) != longName)
            continue;
        if (use-- == 0)
            return k < u.values.size() ? &u.values[k] : nullptr;
    }
    return nullptr;
}

std::string BuiltinArgs::text(const char* longName, unsigned k, unsigned use) const
{
    const ArgValue* v = value(longName, k, use);
    return v ? v->text : std::string();
}

std::vector<std::string> BuiltinArgs::operandTexts() const
{
    std::vector<std::string> out;
    for (const ArgValue& a : fOperands)
        out.push_back(a.text);
    return out;
}

MStatus commandError(const CommandCall& call, const std::string& text, MStatus::MStatusCode code)
{
    writeLog(LogLevel::kError, call.name + ": " + text);
    return code;
}

std::string nodePathName(const NodeBody* node)
{
    if (!node)
        return std::string();
    if (!node->type->isDag)
        return node->name;
    std::string path;
    for (const NodeBody* n = node; n && n != Scene::current().world(); n = n->parent)
        path = "|" + n->name + path;
    return path;
}

void changeSelection(const MSelectionList& next)
{
    MSelectionList previous = activeSelection();
    setActiveSelection(next);
    recordUndo([previous] { setActiveSelection(previous); }, [next] { setActiveSelection(next); });
}

std::vector<std::string> selectionNames()
{
    MSelectionList active;
    MStringArray names;
    MGlobal::getActiveSelectionList(active); // without the items of nodes deleted since
    active.getSelectionStrings(names);
    std::vector<std::string> out;
    for (unsigned i = 0; i < names.length(); ++i)
        out.push_back(names[i].asChar());
    return out;
}

bool& constructionHistoryOn()
{
    static bool on = true;
    return on;
}

} // namespace host
