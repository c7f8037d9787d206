#include <maya/MSyntax.h>

#include "command/syntaxData.h"

#include "host/log.h"

namespace {

bool validType(MSyntax::MArgType t) { return t > MSyntax::kInvalidArgType && t < MSyntax::kLastArgType; }

MStatus refuse(const std::string& text, MStatus::MStatusCode code = MStatus::kInvalidParameter)
{
    host::writeLog(host::LogLevel::kError, "MSyntax: " + text);
    return code;
}

} // namespace

namespace host {

std::string flagKey(const char* flag)
{
    if (!flag)
        return std::string();
    std::string s = flag;
    return !s.empty() && s[0] == '-' ? s.substr(1) : s;
}

const FlagDefinition* SyntaxData::find(const std::string& name) const
{
    std::string key = !name.empty() && name[0] == '-' ? name.substr(1) : name;
    if (key.empty())
        return nullptr;
    for (const FlagDefinition& f : flags)
        if (f.shortName == key || f.longName == key)
            return &f;
    return nullptr;
}

} // namespace host

MSyntax::MSyntax() : fData(std::make_shared<host::SyntaxData>()) {}
MSyntax::MSyntax(const MSyntax& other) = default;
MSyntax::~MSyntax() = default;
MSyntax& MSyntax::operator=(const MSyntax& rhs) = default;

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType argType1, MArgType argType2,
                         MArgType argType3, MArgType argType4, MArgType argType5, MArgType argType6)
{
    std::string s = host::flagKey(shortName);
    std::string l = host::flagKey(longName);
    if (s.empty() || l.empty())
        return refuse("addFlag needs a short and a long flag name");
    for (const std::string& name : {s, l})
        if (fData->find(name))
            return refuse("addFlag: the flag name '-" + name + "' is already in the syntax", MStatus::kFailure);
    host::FlagDefinition f;
    f.shortName = s;
    f.longName = l;
    for (MArgType t : {argType1, argType2, argType3, argType4, argType5, argType6}) {
        if (t == kNoArg)
            continue;
        if (!validType(t))
            return refuse("addFlag: invalid argument type for flag '-" + l + "'");
        f.types.push_back(t);
    }
    fData->flags.push_back(f);
    return MStatus::kSuccess;
}

MStatus MSyntax::makeFlagMultiUse(const char* flag)
{
    for (host::FlagDefinition& f : fData->flags) {
        if (f.shortName == host::flagKey(flag) || f.longName == host::flagKey(flag)) {
            f.multiUse = true;
            return MStatus::kSuccess;
        }
    }
    return refuse(std::string("makeFlagMultiUse: no flag '") + (flag ? flag : "") + "' in the syntax");
}

MStatus MSyntax::makeFlagQueryWithFullArgs(const char* flag, bool queryArgsAreOptional)
{
    for (host::FlagDefinition& f : fData->flags) {
        if (f.shortName == host::flagKey(flag) || f.longName == host::flagKey(flag)) {
            f.queryWithArgs = true;
            f.queryArgsOptional = queryArgsAreOptional;
            return MStatus::kSuccess;
        }
    }
    return refuse(std::string("makeFlagQueryWithFullArgs: no flag '") + (flag ? flag : "") + "' in the syntax");
}

MStatus MSyntax::addArg(MArgType arg)
{
    if (arg == kNoArg || !validType(arg))
        return refuse("addArg: invalid argument type");
    fData->commandArgs.push_back(arg);
    return MStatus::kSuccess;
}

void MSyntax::useSelectionAsDefault(bool useSelectionList) { fData->useSelection = useSelectionList; }

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects)
{
    if (objectFormat <= kInvalidObjectFormat || objectFormat >= kLastObjectFormat)
        return refuse("setObjectType: invalid object format");
    fData->objectFormat = objectFormat;
    fData->minObjects = minimumObjects;
    return MStatus::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects,
                               unsigned int maximumObjects)
{
    if (maximumObjects < minimumObjects)
        return refuse("setObjectType: the maximum object count is below the minimum");
    MStatus st = setObjectType(objectFormat, minimumObjects);
    if (st)
        fData->maxObjects = maximumObjects;
    return st;
}

void MSyntax::setMinObjects(unsigned int minimumObjectCount) { fData->minObjects = minimumObjectCount; }
void MSyntax::setMaxObjects(unsigned int maximumObjectCount) { fData->maxObjects = maximumObjectCount; }
void MSyntax::enableQuery(bool supportsQuery) { fData->canQuery = supportsQuery; }
void MSyntax::enableEdit(bool supportsEdit) { fData->canEdit = supportsEdit; }
unsigned int MSyntax::minObjects() const { return fData->minObjects; }
unsigned int MSyntax::maxObjects() const { return fData->maxObjects; }
bool MSyntax::canQuery() const { return fData->canQuery; }
bool MSyntax::canEdit() const { return fData->canEdit; }
const char* MSyntax::className() { return "MSyntax"; }
