#pragma once
// What a mesh function set or iterator works on: a mesh shape (reached by object or by
// path) or a mesh data object, and the matrix that takes its object space to world space.
//
// World space: through the path when there is one; a shape reached by object uses its
// first path; mesh data has no place in the world, so its world space is its object space.

#include "dg/nodeBody.h"
#include "mesh/meshGeometry.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace host {

struct MeshTarget {
    NodeBody* shape = nullptr; // set for a shape
    MObject data;              // set for mesh data
    MDagPath path;             // the path the target was reached by, when any

    bool valid() const { return shape || !data.isNull(); }
    // Object space to world space.
    MMatrix worldMatrix() const;
};

// Resolves an attached object (kMesh shape or kMeshData) and an optional path; fails with
// kInvalidParameter for anything else.
MStatus resolveMeshTarget(const MObject& object, const MDagPath& path, MeshTarget& target);

// The geometry to read: the shape's evaluated output, or the data's payload.
const MeshGeometry* readMesh(const MeshTarget& target, MStatus* status = nullptr);
// Starts an in-place edit (see beginShapeEdit); every beginEdit needs its endEdit.
MeshGeometry* beginEdit(const MeshTarget& target, MStatus* status = nullptr);
void endEdit(const MeshTarget& target);

} // namespace host
