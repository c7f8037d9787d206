#include <maya/MArgParser.h>

#include "command/commandAccess.h"
#include "command/syntaxData.h"

#include "host/log.h"

#include <maya/MArgList.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

#include <climits>

using host::ArgValue;
using host::CommandAccess;
using host::FlagDefinition;
using host::ParsedArgs;

namespace {

bool fitsType(const ArgValue& a, MSyntax::MArgType type)
{
    if (a.isArray() || a.isFlag())
        return false;
    bool b = false;
    long long i = 0;
    double d = 0.0;
    switch (type) {
    case MSyntax::kBoolean: return host::parseBool(a.text, b);
    case MSyntax::kLong: return host::parseInteger(a.text, i);
    case MSyntax::kUnsigned: return host::parseInteger(a.text, i) && i >= 0;
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime: return host::parseNumber(a.text, d);
    default: return true;
    }
}

const char* typeName(MSyntax::MArgType type)
{
    switch (type) {
    case MSyntax::kBoolean: return "a boolean";
    case MSyntax::kLong: return "an integer";
    case MSyntax::kUnsigned: return "an unsigned integer";
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime: return "a number";
    case MSyntax::kSelectionItem: return "an object name";
    default: return "a string";
    }
}

bool isMode(const std::string& name, const char* shortName, const char* longName)
{
    return name == shortName || name == longName;
}

} // namespace

namespace host {

const ParsedArgs::FlagUse* ParsedArgs::use(const std::string& flag, unsigned index) const
{
    const FlagDefinition* def = syntax ? syntax->find(flag) : nullptr;
    if (!def)
        return nullptr;
    for (const FlagUse& u : uses)
        if (u.flag == def && index-- == 0)
            return &u;
    return nullptr;
}

unsigned ParsedArgs::useCount(const std::string& flag) const
{
    const FlagDefinition* def = syntax ? syntax->find(flag) : nullptr;
    unsigned n = 0;
    for (const FlagUse& u : uses)
        n += u.flag == def ? 1 : 0;
    return def ? n : 0;
}

std::shared_ptr<const ParsedArgs> parseArguments(const std::shared_ptr<const SyntaxData>& syntax,
                                                 const MArgList& list, const std::string& commandName,
                                                 MStatus* status)
{
    auto fail = [&](const std::string& why) -> std::shared_ptr<const ParsedArgs> {
        writeLog(LogLevel::kError, (commandName.empty() ? std::string() : commandName + ": ") + why);
        if (status)
            *status = MStatus::kInvalidParameter;
        return nullptr;
    };
    if (!syntax)
        return fail("no syntax to read the arguments with");
    const std::vector<ArgValue>& items = CommandAccess::items(list);
    auto parsed = std::make_shared<ParsedArgs>();
    parsed->syntax = syntax;

    // The mode decides how many arguments the other flags take, wherever it is written.
    for (const ArgValue& a : items) {
        if (!a.isFlag() || syntax->find(a.flagName()))
            continue;
        if (isMode(a.flagName(), "q", "query") && syntax->canQuery)
            parsed->query = true;
        if (isMode(a.flagName(), "e", "edit") && syntax->canEdit)
            parsed->edit = true;
    }
    if (parsed->query && parsed->edit)
        return fail("the edit and query flags cannot be used together");

    std::vector<ArgValue> operands;
    for (unsigned i = 0; i < items.size(); ++i) {
        const ArgValue& a = items[i];
        if (!a.isFlag()) {
            operands.push_back(a);
            continue;
        }
        std::string name = a.flagName();
        const FlagDefinition* def = syntax->find(name);
        if (!def) {
            if ((isMode(name, "q", "query") && syntax->canQuery) || (isMode(name, "e", "edit") && syntax->canEdit))
                continue;
            if (isMode(name, "q", "query"))
                return fail("the command has no query mode (flag '-" + name + "')");
            if (isMode(name, "e", "edit"))
                return fail("the command has no edit mode (flag '-" + name + "')");
            return fail("Invalid flag '-" + name + "'");
        }
        if (!def->multiUse && parsed->useCount(name) > 0)
            return fail("the flag '-" + name + "' can be used only once");
        unsigned wanted = unsigned(def->types.size());
        if (parsed->query && !def->queryWithArgs)
            wanted = 0;
        ParsedArgs::FlagUse use;
        use.flag = def;
        use.position = i;
        std::vector<ArgValue> values;
        for (unsigned k = 0; k < wanted; ++k) {
            unsigned j = i + 1 + k;
            if (j >= items.size() || items[j].isFlag()) {
                if (parsed->query && def->queryArgsOptional)
                    break;
                return fail("the flag '-" + name + "' needs " + std::to_string(wanted) + " argument(s)");
            }
            if (!fitsType(items[j], def->types[k]))
                return fail("the flag '-" + name + "' expects " + typeName(def->types[k]) + ", got '" +
                            items[j].display() + "'");
            values.push_back(items[j]);
        }
        i += unsigned(values.size());
        use.args = CommandAccess::makeList(std::move(values));
        parsed->uses.push_back(std::move(use));
    }

    bool takesObjects = syntax->objectFormat == MSyntax::kStringObjects ||
                        syntax->objectFormat == MSyntax::kSelectionList;
    if (!syntax->commandArgs.empty()) {
        if (takesObjects)
            return fail("the syntax has both command arguments and objects");
        if (operands.size() < syntax->commandArgs.size())
            return fail("needs " + std::to_string(syntax->commandArgs.size()) + " argument(s), got " +
                        std::to_string(operands.size()));
        if (operands.size() > syntax->commandArgs.size())
            return fail("too many arguments, from '" + operands[syntax->commandArgs.size()].display() + "'");
        for (std::size_t k = 0; k < operands.size(); ++k)
            if (!fitsType(operands[k], syntax->commandArgs[k]))
                return fail(std::string("argument ") + std::to_string(k + 1) + " expects " +
                            typeName(syntax->commandArgs[k]) + ", got '" + operands[k].display() + "'");
        parsed->commandArgs = CommandAccess::makeList(std::move(operands));
    } else if (takesObjects) {
        for (const ArgValue& a : operands) {
            if (a.isArray())
                parsed->objects.insert(parsed->objects.end(), a.items.begin(), a.items.end());
            else
                parsed->objects.push_back(a.text);
        }
        if (parsed->objects.empty() && syntax->useSelection) {
            MSelectionList active;
            MStringArray names;
            MGlobal::getActiveSelectionList(active);
            active.getSelectionStrings(names);
            for (unsigned k = 0; k < names.length(); ++k)
                parsed->objects.push_back(names[k].asChar());
        }
        if (parsed->objects.size() < syntax->minObjects)
            return fail("needs at least " + std::to_string(syntax->minObjects) + " object(s)");
        if (parsed->objects.size() > syntax->maxObjects)
            return fail("takes at most " + std::to_string(syntax->maxObjects) + " object(s), got " +
                        std::to_string(parsed->objects.size()));
    } else if (!operands.empty()) {
        return fail("unexpected argument '" + operands.front().display() + "'");
    }
    if (status)
        *status = MStatus::kSuccess;
    return parsed;
}

} // namespace host

namespace {

void setStatus(MStatus* status, MStatus::MStatusCode code)
{
    if (status)
        *status = code;
}

template <class T>
MStatus flagValue(const std::shared_ptr<const ParsedArgs>& parsed, const char* flag, unsigned int index, T& out)
{
    const ParsedArgs::FlagUse* use = parsed ? parsed->use(host::flagKey(flag)) : nullptr;
    if (!use)
        return MStatus::kFailure;
    return use->args.get(index, out);
}

} // namespace

MArgParser::MArgParser() = default;

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus)
{
    fParsed = host::parseArguments(CommandAccess::data(syntax), argList, std::string(), ReturnStatus);
}

MArgParser::~MArgParser() = default;

bool MArgParser::isFlagSet(const char* flag, MStatus* ReturnStatus) const
{
    if (!fParsed) {
        setStatus(ReturnStatus, MStatus::kFailure);
        return false;
    }
    bool known = fParsed->syntax->find(host::flagKey(flag)) != nullptr;
    setStatus(ReturnStatus, known ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return known && fParsed->useCount(host::flagKey(flag)) > 0;
}

bool MArgParser::isEdit(MStatus* ReturnStatus) const
{
    setStatus(ReturnStatus, fParsed ? MStatus::kSuccess : MStatus::kFailure);
    return fParsed && fParsed->edit;
}

bool MArgParser::isQuery(MStatus* ReturnStatus) const
{
    setStatus(ReturnStatus, fParsed ? MStatus::kSuccess : MStatus::kFailure);
    return fParsed && fParsed->query;
}

unsigned int MArgParser::numberOfFlagsUsed() const { return fParsed ? unsigned(fParsed->uses.size()) : 0; }

unsigned int MArgParser::numberOfFlagUses(const char* flag) const
{
    return fParsed ? fParsed->useCount(host::flagKey(flag)) : 0;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, bool& result) const
{
    return flagValue(fParsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, int& result) const
{
    return flagValue(fParsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, double& result) const
{
    return flagValue(fParsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MString& result) const
{
    return flagValue(fParsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const
{
    MString text;
    MStatus st = flagValue(fParsed, flag, index, text);
    if (!st)
        return st;
    long long v = 0;
    if (!host::parseInteger(text.asChar(), v) || v < 0 || v > UINT_MAX)
        return MStatus::kInvalidParameter;
    result = static_cast<unsigned int>(v);
    return MStatus::kSuccess;
}

bool MArgParser::flagArgumentBool(const char* flag, unsigned int index, MStatus* ReturnStatus) const
{
    bool v = false;
    MStatus st = getFlagArgument(flag, index, v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

int MArgParser::flagArgumentInt(const char* flag, unsigned int index, MStatus* ReturnStatus) const
{
    int v = 0;
    MStatus st = getFlagArgument(flag, index, v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

double MArgParser::flagArgumentDouble(const char* flag, unsigned int index, MStatus* ReturnStatus) const
{
    double v = 0.0;
    MStatus st = getFlagArgument(flag, index, v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

MString MArgParser::flagArgumentString(const char* flag, unsigned int index, MStatus* ReturnStatus) const
{
    MString v;
    MStatus st = getFlagArgument(flag, index, v);
    if (ReturnStatus)
        *ReturnStatus = st;
    return v;
}

MStatus MArgParser::getFlagArgumentPosition(const char* flag, unsigned int i, unsigned int& position) const
{
    const ParsedArgs::FlagUse* use = fParsed ? fParsed->use(host::flagKey(flag), i) : nullptr;
    if (!use)
        return MStatus::kFailure;
    position = use->position;
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgumentList(const char* flag, unsigned int i, MArgList& args) const
{
    const ParsedArgs::FlagUse* use = fParsed ? fParsed->use(host::flagKey(flag), i) : nullptr;
    if (!use)
        return MStatus::kFailure;
    args = use->args;
    return MStatus::kSuccess;
}

MStatus MArgParser::getCommandArgument(unsigned int index, bool& result) const
{
    return fParsed ? fParsed->commandArgs.get(index, result) : MStatus(MStatus::kFailure);
}

MStatus MArgParser::getCommandArgument(unsigned int index, int& result) const
{
    return fParsed ? fParsed->commandArgs.get(index, result) : MStatus(MStatus::kFailure);
}

MStatus MArgParser::getCommandArgument(unsigned int index, double& result) const
{
    return fParsed ? fParsed->commandArgs.get(index, result) : MStatus(MStatus::kFailure);
}

MStatus MArgParser::getCommandArgument(unsigned int index, MString& result) const
{
    return fParsed ? fParsed->commandArgs.get(index, result) : MStatus(MStatus::kFailure);
}

bool MArgParser::commandArgumentBool(unsigned int index, MStatus* ReturnStatus) const
{
    if (fParsed)
        return fParsed->commandArgs.asBool(index, ReturnStatus);
    if (ReturnStatus)
        *ReturnStatus = MStatus::kFailure;
    return false;
}

int MArgParser::commandArgumentInt(unsigned int index, MStatus* ReturnStatus) const
{
    if (fParsed)
        return fParsed->commandArgs.asInt(index, ReturnStatus);
    if (ReturnStatus)
        *ReturnStatus = MStatus::kFailure;
    return 0;
}

double MArgParser::commandArgumentDouble(unsigned int index, MStatus* ReturnStatus) const
{
    if (fParsed)
        return fParsed->commandArgs.asDouble(index, ReturnStatus);
    if (ReturnStatus)
        *ReturnStatus = MStatus::kFailure;
    return 0.0;
}

MString MArgParser::commandArgumentString(unsigned int index, MStatus* ReturnStatus) const
{
    if (fParsed)
        return fParsed->commandArgs.asString(index, ReturnStatus);
    if (ReturnStatus)
        *ReturnStatus = MStatus::kFailure;
    return MString();
}

MStatus MArgParser::getObjects(MStringArray& result) const
{
    if (!fParsed)
        return MStatus::kFailure;
    result.clear();
    for (const std::string& o : fParsed->objects)
        result.append(MString(o.c_str()));
    return MStatus::kSuccess;
}

const char* MArgParser::className() { return "MArgParser"; }
