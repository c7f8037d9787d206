#pragma once
// Putting a patch mesh into the scene and wiring its history node. A patch mesh is an
// ordinary mesh with a `tqPatchNode` directly upstream of its `inMesh`:
//
//     (former input) ──► tqPatchNode.inMesh   tqPatchNode.outMesh ──► mesh.inMesh
//
// The node is attached by running the `tqPatchCmd` command as text, and detached by
// connecting its input straight to its output's destination and deleting it. These
// commands run outside the undo queue (no display, no undo): undo belongs to the tool
// command, which detaches what it attached and attaches again on redo.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace tq {

// The node type and the attach command, as the scene and the command language know them;
// the node and command classes register under these.
constexpr const char* kPatchNodeTypeName = "tqPatchNode";
constexpr const char* kPatchCommandName = "tqPatchCmd";

// A new empty mesh shape named from uniqueName("tqMeshShape"), in the default shading group.
// Returns the path of its transform, which becomes the active selection. Host failures are
// logged and the steps go on; `status` holds the last failure.
MDagPath createMeshShape(MStatus& status);

// `base` followed by the first number whose name no `tqPatchNode` has. Only patch nodes'
// names count, whatever the base. Deliberate: the number is the counter narrowed to a signed
// 8-bit value (the 128th try appends -128, the 256th 0), and past 999998 tries the base alone
// is returned; the host then numbers a taken name itself. Names in saved scenes follow this.
MString uniqueName(const MString& base);

// The first `tqPatchNode` called `name`, into `node`; false when there is none.
bool findPatchNodeByName(const MString& name, MObject& node);

// True when the retopo mesh's `inMesh` is fed directly by a `tqPatchNode`, which goes to
// `node`. A patch node farther up the history is not found. When the direct source is another
// node, `node` holds it and the result is false with kFailure.
bool patchNodeOfActiveMesh(MObject& node, MStatus& status);

// Runs `tqPatchCmd` to insert a patch node called `name` above the mesh, then finds it. The
// command's failure is returned as it stands; kInvalidParameter when the node is not found.
MStatus attachPatchNode(const MString& name, const MDagPath& meshPath, MObject& node);

// Takes the patch node `name` out of the history and deletes it. An unknown name, or a node
// whose connections cannot be traced, is kInvalidParameter with the scene untouched.
MStatus detachPatchNode(const MString& name);

// addPolygon on a shape with no geometry builds a mesh object of its own (`owner`), whose
// faces reach the retopo mesh only through the patch node's feed: that object goes again,
// with the transform above it. Nothing for the retopo mesh itself or a null owner.
MStatus deleteThrowAwayMesh(const MObject& owner, const MDagPath& meshPath);

// The name of the plug feeding `node`.`inAttr` into `sourceName`, and of the last plug fed by
// `node`.`outAttr` into `destinationName`. False when a plug is missing or the output feeds
// nothing.
bool traceConnection(MString& sourceName, const MObject& node, MString& destinationName, const MString& inAttr,
                     const MString& outAttr);

// Connects what feeds the node's `inMesh` straight to what its `outMesh` feeds, which takes
// the node out of the history. False, with nothing connected, when that cannot be traced.
bool reconnectAround(const MObject& node);

// The node's `nodeState`: 1 (has no effect: the node passes its input through, with its
// stored positions) while the tool edits the mesh, 0 (normal: the stored mesh) after.
MStatus suspendPatchNode(const MObject& node);
MStatus resumePatchNode(const MObject& node);

} // namespace tq
