#pragma once
// tqPatchCmd: the registered command that attaches a tqPatchNode to a mesh, through the
// poly-modifier frame of tqPatchNodeCmd. The tool sends it as text:
//
//     tqPatchCmd -m "<mesh>" -o "<node name>";
//
// -m/-mesh names the mesh (a transform stands for its shape); -o/-outname names the new node,
// "tqPatch" when omitted, numbered by the host when taken. The result is the node's name.
// A bad mesh name shows "Invalid mesh shape path: " and changes nothing; the command still
// reports success, so a script sending it goes on.

#include "patchnode/tqPatchNodeCmd.h"

#include <maya/MArgList.h>
#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class tqPatchCmd : public tqPatchNodeCmd {
public:
    static void* creator();
    static MSyntax newSyntax();

    static const MString commandName;

    tqPatchCmd();
    ~tqPatchCmd() override;

    MStatus doIt(const MArgList& args) override;
    // A tqPatchNode needs no setup: only its name is read.
    MStatus initModifierNode(MObject& modifierNode, MDagModifier& modifier) override;

private:
    MStatus attach(const MArgList& args);

    MDagPath meshPath;
    MObject meshObject;
    MString meshName;
    MString outputName;
};
