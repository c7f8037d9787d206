#include <maya/MArgDatabase.h>

#include "command/commandAccess.h"
#include "command/syntaxData.h"

#include "host/log.h"

#include <maya/MArgList.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

namespace {

// Names that match nothing fail with the name in the log, as a selection does.
MStatus addNamed(MSelectionList& list, const MString& name)
{
    MStatus st = list.add(name);
    if (!st)
        host::writeLog(host::LogLevel::kError, std::string("No object matches name: ") + name.asChar());
    return st;
}

} // namespace

MArgDatabase::MArgDatabase() = default;

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus)
    : MArgParser(syntax, argList, ReturnStatus)
{
}

MArgDatabase::~MArgDatabase() = default;

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const
{
    MString name;
    MStatus st = MArgParser::getFlagArgument(flag, index, name);
    return st ? addNamed(result, name) : st;
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MSelectionList& result) const
{
    MString name;
    MStatus st = MArgParser::getCommandArgument(index, name);
    return st ? addNamed(result, name) : st;
}

MStatus MArgDatabase::getObjects(MSelectionList& result) const
{
    MStringArray names;
    MStatus st = MArgParser::getObjects(names);
    if (!st)
        return st;
    for (unsigned int i = 0; i < names.length(); ++i) {
        st = addNamed(result, names[i]);
        if (!st)
            return st;
    }
    return MStatus::kSuccess;
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, bool& result) const
{
    return MArgParser::getFlagArgument(flag, index, result);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, int& result) const
{
    return MArgParser::getFlagArgument(flag, index, result);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, double& result) const
{
    return MArgParser::getFlagArgument(flag, index, result);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, MString& result) const
{
    return MArgParser::getFlagArgument(flag, index, result);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const
{
    return MArgParser::getFlagArgument(flag, index, result);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, bool& result) const
{
    return MArgParser::getCommandArgument(index, result);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, int& result) const
{
    return MArgParser::getCommandArgument(index, result);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, double& result) const
{
    return MArgParser::getCommandArgument(index, result);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MString& result) const
{
    return MArgParser::getCommandArgument(index, result);
}

MStatus MArgDatabase::getObjects(MStringArray& result) const { return MArgParser::getObjects(result); }

const char* MArgDatabase::className() { return "MArgDatabase"; }
