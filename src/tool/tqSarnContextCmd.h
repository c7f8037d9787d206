#pragma once
// tqSarnContextCmd: the host command "tqSarnContext" that makes the tool. Each invocation
// makes one tqSarnContext (makeObj), which the host keeps and activates with setToolTo; the
// command instance stays with its context and answers the edit and query flags the panel's
// scripts send it.

#include <maya/MPxContextCommand.h>
#include <maya/MString.h>

class tqSarnContext;

class tqSarnContextCmd : public MPxContextCommand {
public:
    static void* creator();
    static const MString commandName;

    tqSarnContextCmd();
    ~tqSarnContextCmd() override;

    MPxContext* makeObj() override;

private:
    tqSarnContext* context = nullptr; // owned by the host
};
