#pragma once
// MItGeometry: walks the points of geometry; for a mesh, its vertices, all of them in index
// order or those of a vertex component in the component's order. Made from a data handle
// (inside a compute), it reads and edits that handle's mesh data in place. The host has
// no component groups in mesh data, so a group id selects every vertex.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>

class MDataHandle;

namespace host {
class MeshIteration;
} // namespace host

class MItGeometry {
public:
    MItGeometry(const MDagPath& dagPath, MStatus* ReturnStatus = nullptr);
    MItGeometry(const MDagPath& dagPath, MObject& component, MStatus* ReturnStatus = nullptr);
    MItGeometry(MObject& dagObject, MStatus* ReturnStatus = nullptr);
    MItGeometry(MDataHandle& dataHandle, unsigned int groupId, bool readOnly = true, MStatus* ReturnStatus = nullptr);
    MItGeometry(MDataHandle& dataHandle, bool readOnly = true, MStatus* ReturnStatus = nullptr);
    MItGeometry(MDataHandle& dataHandle, MObject& component, bool readOnly = true,
                MStatus* ReturnStatus = nullptr);
    virtual ~MItGeometry();

    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MStatus next();
    MStatus reset();

    MPoint position(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MVector normal(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MStatus setPosition(const MPoint& point, MSpace::Space space = MSpace::kObject);
    int index(MStatus* ReturnStatus = nullptr) const;
    int positionIndex(MStatus* ReturnStatus = nullptr) const;
    MObject component(MStatus* ReturnStatus = nullptr) const;
    MObject currentItem(MStatus* ReturnStatus = nullptr) const;
    int count(MStatus* ReturnStatus = nullptr) const;
    int exactCount(MStatus* ReturnStatus = nullptr);

    // The positions of every point the walk visits, in its order; setAllPositions takes
    // exactly that many.
    MStatus allPositions(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
    MStatus setAllPositions(const MPointArray& points, MSpace::Space space = MSpace::kObject);

    static const char* className();

private:
    MItGeometry(const MItGeometry&) = delete;
    MItGeometry& operator=(const MItGeometry&) = delete;
    MStatus attachHandle(MDataHandle& dataHandle, const MObject& component, bool readOnly);

    std::unique_ptr<host::MeshIteration> fIt;
    bool fReadOnly = false;
};
