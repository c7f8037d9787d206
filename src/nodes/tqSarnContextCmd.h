#pragma once
// tqSarnContextCmd: the host command "tqSarnContext", the tool's whole interface to the
// panel's scripts. Each invocation without -e or -q makes one tqSarnContext (makeObj), which
// the host keeps and activates with setToolTo; the command instance stays with its context
// and answers the edit and query flags that buttons, spin boxes and held keys send it.
//
// Edit flags act in a fixed order, several in one call; each shows its message on the first
// info line. Query flags answer in a fixed order too, and of several the last one's answer
// stands. The keys n, b and m of the help text are caught by the scripts, which send -iri,
// -rri and -rmi while the key is held: the tool never sees them.

#include <maya/MPxContextCommand.h>
#include <maya/MString.h>

class tqSarnContext;

class tqSarnContextCmd : public MPxContextCommand {
public:
    static void* creator();
    static const MString commandName;

    tqSarnContextCmd();
    ~tqSarnContextCmd() override;

    MStatus doEditFlags() override;
    MStatus doQueryFlags() override;
    MPxContext* makeObj() override;
    MStatus appendSyntax() override;

    // The pinch a panel may ask for: beyond the limit it becomes the limit as single
    // precision rounds it (0.9499999881), with the matching sign.
    static double clampPinch(double value);

private:
    MStatus editFlags();
    MStatus queryFlags();

    tqSarnContext* context = nullptr; // owned by the host
};
