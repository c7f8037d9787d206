#pragma once
// MeshIteration: the walk every mesh iterator shares. It holds what the iterator works on
// (a mesh shape reached by object or path, or a mesh data object), the kind of element it
// visits, and the order: a component's elements as given (repeats kept), or every element
// in index order. Elements are checked against the mesh as they are reached, so indices the
// mesh does not have (negative, or past the last) are skipped, and a mesh that shrinks under
// the iterator ends the walk instead of being read past its end.
//
// The geometry is looked up again at every call instead of being kept: an edit elsewhere
// may replace the payload (copy-on-write), and a kept pointer would outlive it.

#include "mesh/meshAccess.h"
#include "mesh/meshGeometry.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

enum class MeshElement { kVertex, kEdge, kPolygon };

// The component kind that lists elements of this kind.
MFn::Type componentKindOf(MeshElement kind);
// How many elements of the kind the mesh has.
int elementTotal(const MeshGeometry& mesh, MeshElement kind);
// A new component of the kind holding the one element.
MObject singleElementComponent(MeshElement kind, int element);

// The normal of a polygon's corner (face-relative index): the angle-weighted vertex normal
// when both of the polygon's edges at that corner are smooth, otherwise the polygon normal.
MVector faceVertexNormal(const MeshGeometry& mesh, int polygon, int corner);
// The same with the mesh's angle-weighted vertex normals given, as MeshGeometry::vertexNormals
// makes them (equal to vertexNormal's bit for bit: the faces are summed in the same order).
MVector faceVertexNormal(const MeshGeometry& mesh, int polygon, int corner, const std::vector<MVector>& vertexNormals);
// The corner of the polygon at the vertex, or -1 when the polygon does not use it.
int cornerOf(const MeshGeometry& mesh, int polygon, int vertex);

// Object space to a requested space and back. World space needs the path the iterator was
// made with; without one every space is object space.
class SpaceMap {
public:
    bool identity() const { return !fWorld; }
    MPoint out(const MFloatPoint& p) const;
    MPoint out(const MPoint& p) const;
    MVector outNormal(const MVector& n) const;
    // A point given in the space, back to object space (w divided out).
    MPoint in(const MPoint& p) const;

private:
    friend class MeshIteration;
    bool fWorld = false;
    MMatrix fMatrix;
    MMatrix fInverse;
};

class MeshIteration {
public:
    explicit MeshIteration(MeshElement kind) : fKind(kind) {}

    // Attaches to a mesh: a shape by object, a path to a shape (or to a transform with one
    // shape below it), or mesh data. A null component means every element; otherwise it must
    // be a component of this iteration's kind. On failure the iteration is detached and done.
    MStatus attach(const MObject& object, const MDagPath& path, const MObject& component);
    void detach();
    bool attached() const { return fTarget.valid(); }

    // Back to the first element.
    MStatus restart();
    bool done() const { return fCurrent < 0; }
    MStatus next();
    int current() const { return fCurrent; }
    // How many elements a walk from the start visits.
    int count(MStatus* status);
    // Makes the element current (any element of the mesh); `previous` gets the one before.
    // A walk over every element continues after it; a component walk continues where it was.
    MStatus jump(int index, int& previous);

    // The mesh to read; null with a failed status when detached or the shape is gone.
    const MeshGeometry* mesh(MStatus* status) const;
    // The mesh, when the current element exists in it; null with kFailure otherwise.
    const MeshGeometry* currentMesh(MStatus* status) const;
    // In-place edits, each beginEdit closed by endEdit.
    MeshGeometry* beginEdit(MStatus* status) const;
    void endEdit() const;
    // Moves one vertex to a point in object space, as one edit.
    MStatus setVertex(int vertex, const MPoint& point) const;

    MStatus space(MSpace::Space space, SpaceMap& map) const;
    // The same map, kept by the iteration rather than copied: for per-element calls on dense
    // meshes. Null, with the status set, for a bad space.
    const SpaceMap* spaceMap(MSpace::Space space, MStatus& status) const;

    // The elements of a walk from the start, in order.
    std::vector<int> visited(const MeshGeometry& mesh) const;

    // The angle-weighted normal of every vertex, for a walk over every element: made once per
    // version of the mesh and kept with the iteration, so a walk that asks each polygon for its
    // corner normals costs one pass over the mesh instead of one per corner. Null for a
    // component walk, which goes vertex by vertex.
    const std::vector<MVector>* wholeWalkVertexNormals(const MeshGeometry& mesh) const;

private:
    void settle(); // moves to the first existing element at or after fPos

    MeshElement fKind;
    MeshTarget fTarget;
    bool fWhole = true;
    std::vector<int> fElements;
    std::size_t fPos = 0;
    int fCurrent = -1;
    int fCountTotal = -1; // the element total the cached count was made for
    int fCount = 0;
    // What `mesh` and `space` resolved, kept while the scene stamp stands still: a walk that
    // asks each element for its data resolves the shape's output and its world matrix once,
    // not once per call. The data object is held, so a kept geometry cannot be freed under it.
    mutable MObject fResolvedData;
    mutable const MeshGeometry* fResolvedMesh = nullptr;
    mutable std::uint64_t fMeshStamp = 0;
    mutable SpaceMap fWorldMap;
    mutable bool fWorldMapKept = false;
    mutable std::uint64_t fWorldStamp = 0;
    mutable std::vector<MVector> fVertexNormals;
    mutable std::uint64_t fNormalsVersion = 0;
    mutable const MeshGeometry* fNormalsMesh = nullptr;
};

} // namespace host
