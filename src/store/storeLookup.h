#pragma once
// Finding the nodes the tool works on. Nothing is cached: every call walks the scene anew,
// so a store or mesh made, deleted or reselected since is always seen as it is now.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace tq {

// The scene store: the first plug-in node that has a `tqSarnMesh` attribute, or a null
// object when the scene has none. One store per scene; any later ones are ignored.
MObject findStoreNode();

// The source mesh: the mesh connected to the store's `tqSarnMesh`. With no store, or no
// connection, the path is invalid and `status` stays kSuccess; a failing host call leaves
// its status there (and in the log).
MDagPath getSourceMeshPath(MStatus& status);

// The retopo mesh: the first item of the active selection, extended to its shape, when that
// shape is a mesh. An empty selection or a first item that is no mesh gives an invalid path.
// The selection alone makes a mesh the retopo mesh; it is stored nowhere.
MDagPath getActiveMeshPath();

} // namespace tq
