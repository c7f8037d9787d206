#pragma once
// MArgParser: an argument list read against a syntax. A failed parse reports the reason in
// the log and leaves a parser on which every query fails. Flags are named as in the syntax,
// short or long, with or without the leading dash.

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MSyntax;
class MArgList;
class MStringArray;

namespace host {
struct ParsedArgs;
class CommandAccess;
}

class MArgParser {
public:
    MArgParser();
    MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus = nullptr);
    virtual ~MArgParser();

    bool isFlagSet(const char* flag, MStatus* ReturnStatus = nullptr) const;
    bool isEdit(MStatus* ReturnStatus = nullptr) const;
    bool isQuery(MStatus* ReturnStatus = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    unsigned int numberOfFlagUses(const char* flag) const;

    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const;

    bool flagArgumentBool(const char* flag, unsigned int index, MStatus* ReturnStatus = nullptr) const;
    int flagArgumentInt(const char* flag, unsigned int index, MStatus* ReturnStatus = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MString flagArgumentString(const char* flag, unsigned int index, MStatus* ReturnStatus = nullptr) const;

    MStatus getFlagArgumentPosition(const char* flag, unsigned int i, unsigned int& position) const;
    MStatus getFlagArgumentList(const char* flag, unsigned int i, MArgList& args) const;

    MStatus getCommandArgument(unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, int& result) const;
    MStatus getCommandArgument(unsigned int index, double& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;

    bool commandArgumentBool(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    int commandArgumentInt(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    double commandArgumentDouble(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MString commandArgumentString(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    MStatus getObjects(MStringArray& result) const;

    static const char* className();

protected:
    friend class host::CommandAccess;
    std::shared_ptr<const host::ParsedArgs> fParsed;
};
