#pragma once
// CommandAccess: the command module's door into the private parts of the command API
// classes (argument lists, syntaxes, parsers, results and plug-in command instances).

#include "command/commandValue.h"
#include "command/syntaxData.h"

#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MCommandResult.h>
#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

enum class CommandOwner { kPlugin = 0, kCall = 1, kContext = 2, kUndoQueue = 3 };

class CommandAccess {
public:
    static std::vector<ArgValue>& items(MArgList& list) { return list.fData->items; }
    static const std::vector<ArgValue>& items(const MArgList& list) { return list.fData->items; }
    static MArgList makeList(std::vector<ArgValue> values)
    {
        MArgList list;
        list.fData->items = std::move(values);
        return list;
    }

    static const std::shared_ptr<SyntaxData>& data(const MSyntax& syntax) { return syntax.fData; }

    static const std::shared_ptr<const ParsedArgs>& parsed(const MArgParser& parser) { return parser.fParsed; }
    static void setParsed(MArgParser& parser, std::shared_ptr<const ParsedArgs> parsed)
    {
        parser.fParsed = std::move(parsed);
    }

    static void setValue(MCommandResult& result, const CommandValue& value) { *result.fValue = value; }

    static void bind(MPxCommand* command, const std::string& name, MCreateSyntaxFunction syntax)
    {
        command->fCommandName = MString(name.c_str());
        command->fSyntaxFunction = syntax;
    }
    static CommandOwner owner(const MPxCommand* command) { return CommandOwner(command->fHostOwner); }
    static void setOwner(MPxCommand* command, CommandOwner owner) { command->fHostOwner = int(owner); }
    static std::string name(const MPxCommand* command) { return command->fCommandName.asChar(); }
};

} // namespace host
