#pragma once
// MPxToolCommand: a command that a context runs interactively. MPxContext::newToolCommand
// makes instances of the context's registered tool command; doFinalize writes the given
// argument list to the journal and gives the instance to the undo queue, which owns it from
// then on. The command also runs as text under its registered name, like any MPxCommand.

#include <maya/MPxCommand.h>
#include <maya/MStatus.h>

class MArgList;

class MPxToolCommand : public MPxCommand {
public:
    MPxToolCommand();
    ~MPxToolCommand() override;

    MStatus doIt(const MArgList& args) override = 0;

    virtual MStatus cancel();
    virtual MStatus finalize();

    MStatus _doFinalize(MArgList& command) { return doFinalize(command); }

    static const char* className();

protected:
    MStatus doFinalize(MArgList& command);
};
