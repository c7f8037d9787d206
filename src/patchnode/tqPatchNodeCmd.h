#pragma once
// tqPatchNodeCmd: the poly-modifier frame. It inserts a modifier node into a mesh's history,
// whatever the mesh has: history or none, vertex tweaks or none, construction history on or
// off. It does not know the node it inserts; a subclass names the type and sets the node up
// in initModifierNode. tqPatchCmd is the one subclass, for tqPatchNode.
//
// A mesh with history gets the node between its input and its inMesh:
//
//     before:  source.out ───────────────────────────────────────► mesh.inMesh
//     after:   source.out ──► (polyTweak) ──► modifier.inMesh   modifier.outMesh ──► mesh.inMesh
//
// A mesh without history holds its geometry itself. It is duplicated first; the copy's shape
// becomes an intermediate object "<copy>Orig" under the mesh's own transform and is the
// source of the chain (the copy's transform is deleted):
//
//     after:   meshOrig.outMesh ──► (polyTweak) ──► modifier ──► mesh.inMesh
//
// With construction history off as well, the chain is baked at once by deleting the mesh's
// history, so a mesh that had none keeps none.
//
// Tweaks (non-zero `pnts`) move into a polyTweak node's `tweak` array, with any connections
// on them, and the mesh's `pnts` read 0 afterwards; the polyTweak goes in front of the
// modifier. One is created every time, and stays unconnected when there were no tweaks.
//
// The work is recorded on three modifiers: createModifier makes the two nodes,
// connectModifier takes the old input off and moves the tweaks, finishModifier builds the
// intermediate shape and makes the final connections. undoIt takes them back in reverse.
// The command is not undoable: the host keeps no entry and never calls undoIt or redoIt; the
// tool removes a patch node and attaches a new one by its own means.

#include <maya/MDagModifier.h>
#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

class tqPatchNodeCmd : public MPxCommand {
public:
    tqPatchNodeCmd();
    ~tqPatchNodeCmd() override;

    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

    // Called once the modifier node exists, before any connection is made, with the
    // modifier whose doIt makes the connections; what it records there runs with them.
    virtual MStatus initModifierNode(MObject& modifierNode, MDagModifier& modifier) = 0;

    // The surgery on the mesh shape at `meshPath`: inserts a new node of type `typeId`,
    // renamed `nodeName` unless that is empty, and sets the command's result to the node's
    // name. An invalid path, or a node type without inMesh and outMesh, shows an error and
    // fails; in the second case the two new nodes stay in the scene.
    MStatus insertModifier(const MDagPath& meshPath, const MString& nodeName, const MTypeId& typeId);

    // Records on `modifier` the move of every `pnts` element of the mesh into the `tweak`
    // array of `tweakNode`, with the connections on the elements or on their children, and
    // the zeroing of `pnts`. Nothing changes before the modifier's doIt.
    MStatus moveTweaksToNode(const MDagPath& meshPath, MObject& tweakNode, MDagModifier& modifier);

protected:
    MDagPath meshNodeShape;
    MTypeId modifierNodeType;
    bool hasHistory = false;
    bool hasTweaks = false;
    bool hasRecordHistory = false;
    MDagModifier createModifier;
    MDagModifier connectModifier;
    MDagModifier finishModifier;
    // The transform a duplication made (no history); null otherwise.
    MObject duplicatedMesh;
    // The mesh's own geometry before the surgery (no history); for undo.
    MObject meshSnapshot;

private:
    MStatus surgery(const MDagPath& meshPath, const MString& nodeName, const MTypeId& typeId);
    MStatus undoSteps();
    MStatus redoSteps();
};
