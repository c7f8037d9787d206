#pragma once
// What stands behind MArgList, MSyntax and MArgParser: the argument elements, a syntax's
// flag table, and the result of reading a list against a syntax.

#include "command/commandValue.h"

#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace host {

struct ArgListData {
    std::vector<ArgValue> items;
};

struct FlagDefinition {
    std::string shortName; // without the dash
    std::string longName;
    std::vector<MSyntax::MArgType> types; // kNoArg dropped
    bool multiUse = false;
    bool queryWithArgs = false;
    bool queryArgsOptional = false;
};

struct SyntaxData {
    std::vector<FlagDefinition> flags;
    std::vector<MSyntax::MArgType> commandArgs;
    MSyntax::MObjectFormat objectFormat = MSyntax::kNone;
    unsigned minObjects = 0;
    unsigned maxObjects = UINT_MAX;
    bool useSelection = false;
    bool canQuery = false;
    bool canEdit = false;

    // By short or long name, with or without the dash.
    const FlagDefinition* find(const std::string& name) const;
};

struct ParsedArgs {
    struct FlagUse {
        const FlagDefinition* flag = nullptr;
        MArgList args;
        unsigned position = 0; // index of the flag in the original list
    };
    std::shared_ptr<const SyntaxData> syntax; // keeps `flag` pointers valid
    std::vector<FlagUse> uses;
    bool query = false;
    bool edit = false;
    MArgList commandArgs;
    std::vector<std::string> objects;

    const FlagUse* use(const std::string& flag, unsigned index = 0) const;
    unsigned useCount(const std::string& flag) const;
};

// Reads `list` against `syntax`. On failure the reason goes to the log, prefixed by
// `commandName` when one is given, and null comes back.
std::shared_ptr<const ParsedArgs> parseArguments(const std::shared_ptr<const SyntaxData>& syntax,
                                                 const MArgList& list, const std::string& commandName,
                                                 MStatus* status);

// "-name" or "name" to "name".
std::string flagKey(const char* flag);

} // namespace host
