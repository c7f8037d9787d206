#pragma once
// MPxContextCommand: the command that makes and drives a plug-in's contexts. Each context
// is made by its own instance of the command (makeObj), which the host keeps with the
// context: later invocations in edit or query mode on that context run doEditFlags or
// doQueryFlags on the same instance, with parser() holding the invocation's arguments.

#include <maya/MArgParser.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class MPxContext;

namespace host {
class ToolAccess;
}

class MPxContextCommand {
public:
    MPxContextCommand();
    virtual ~MPxContextCommand();

    virtual MStatus doEditFlags();
    virtual MStatus doQueryFlags();
    virtual MPxContext* makeObj();
    virtual MStatus appendSyntax();

    MStatus setResult(bool result);
    MStatus setResult(int result);
    MStatus setResult(double result);
    MStatus setResult(const MString& result);

    MSyntax _syntax(MStatus* ReturnStatus = nullptr) const { return syntax(ReturnStatus); }
    MArgParser _parser(MStatus* ReturnStatus = nullptr) const { return parser(ReturnStatus); }

    static const char* className();

protected:
    MSyntax syntax(MStatus* ReturnStatus = nullptr) const;
    MArgParser parser(MStatus* ReturnStatus = nullptr) const;

private:
    friend class host::ToolAccess;
    MSyntax fSyntax;
    MArgParser fParser;
};
