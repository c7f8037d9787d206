#pragma once
// Mesh data objects (kMeshData): what flows through mesh plugs, a copy-on-write body over
// a MeshGeometry.

#include "dg/dataBody.h"
#include "mesh/meshGeometry.h"

#include <maya/MObject.h>

namespace host {

using MeshDataBody = TypedDataBody<MeshGeometry, MFn::kMeshData, MFnData::kMesh>;

// A new, empty mesh data object.
MObject makeMeshData();
// A new mesh data object over a copy of the geometry (shared until either side is written).
MObject makeMeshData(std::shared_ptr<MeshGeometry> geometry);
// The geometry of a mesh data object, or null when the object is not mesh data.
const MeshGeometry* meshOf(const MObject& data);
// The geometry to write, detached from every other holder first; null when not mesh data.
MeshGeometry* editMeshOf(const MObject& data);

} // namespace host
