#pragma once
// MItMeshEdge: walks the edges of a mesh (a shape by object or path, or mesh data), all of
// them in index order or those of an edge component in the component's order. An edge's
// vertex 0 and 1 are its start and end as the mesh numbers them.

#include <maya/MDagPath.h>
#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>

namespace host {
class MeshIteration;
} // namespace host

class MItMeshEdge {
public:
    MItMeshEdge(MObject& polyObject, MStatus* ReturnStatus = nullptr);
    MItMeshEdge(MObject& polyObject, MObject& component, MStatus* ReturnStatus = nullptr);
    MItMeshEdge(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                MStatus* ReturnStatus = nullptr);
    virtual ~MItMeshEdge();

    bool isDone(MStatus* ReturnStatus = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(MObject& polyObject, MObject& component = MObject::kNullObj);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    int count(MStatus* ReturnStatus = nullptr);

    MPoint center(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    MPoint point(int index, MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    MStatus setPoint(const MPoint& point, unsigned int index, MSpace::Space space = MSpace::kObject);
    bool isSmooth(MStatus* ReturnStatus = nullptr) const;
    MStatus setSmoothing(bool smooth = true);
    MStatus cleanupSmoothing();
    MStatus getLength(double& length, MSpace::Space space = MSpace::kObject);

    // The vertex at end 0 or 1 of the current edge.
    int index(int index, MStatus* ReturnStatus = nullptr);
    // The current edge.
    int index(MStatus* ReturnStatus = nullptr) const;
    MStatus setIndex(int index, int& prevIndex);
    MObject edge(MStatus* ReturnStatus = nullptr);
    MObject currentItem(MStatus* ReturnStatus = nullptr);

    int getConnectedFaces(MIntArray& faceList, MStatus* ReturnStatus = nullptr) const;
    int getConnectedEdges(MIntArray& edgeList, MStatus* ReturnStatus = nullptr) const;
    MStatus numConnectedFaces(int& faceCount) const;
    MStatus numConnectedEdges(int& edgeCount) const;
    bool connectedToFace(int index, MStatus* ReturnStatus = nullptr);
    bool connectedToEdge(int index, MStatus* ReturnStatus = nullptr);
    bool onBoundary(MStatus* ReturnStatus = nullptr);

    MStatus updateSurface();
    MStatus geomChanged();

    static const char* className();

private:
    MItMeshEdge(const MItMeshEdge&) = delete;
    MItMeshEdge& operator=(const MItMeshEdge&) = delete;

    std::unique_ptr<host::MeshIteration> fIt;
};
