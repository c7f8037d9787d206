#pragma once
// MItMeshVertex: walks the vertices of a mesh (a shape by object or path, or mesh data),
// all of them in index order or those of a vertex component in the component's order.
// World space needs a path; an iterator made from an object answers in object space.

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
#include <maya/MVectorArray.h>

#include <memory>

namespace host {
class MeshIteration;
} // namespace host

class MItMeshVertex {
public:
    MItMeshVertex(MObject& polyObject, MStatus* ReturnStatus = nullptr);
    MItMeshVertex(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                  MStatus* ReturnStatus = nullptr);
    virtual ~MItMeshVertex();

    bool isDone(MStatus* ReturnStatus = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(MObject& polyObject);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    int count(MStatus* ReturnStatus = nullptr);

    int index(MStatus* ReturnStatus = nullptr);
    MStatus setIndex(int index, int& prevIndex);
    MObject vertex(MStatus* ReturnStatus = nullptr);
    MObject currentItem(MStatus* ReturnStatus = nullptr);

    MPoint position(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    MStatus setPosition(const MPoint& point, MSpace::Space space = MSpace::kObject);
    MStatus translateBy(const MVector& vector, MSpace::Space space = MSpace::kObject);

    MStatus getNormal(MVector& vector, MSpace::Space space = MSpace::kObject);
    MStatus getNormal(MVector& vector, int faceIndex, MSpace::Space space = MSpace::kObject);
    MStatus getNormals(MVectorArray& vectorArray, MSpace::Space space = MSpace::kObject);

    MStatus getConnectedFaces(MIntArray& faceList);
    MStatus getConnectedEdges(MIntArray& edgeList);
    MStatus getConnectedVertices(MIntArray& vertexList);
    MStatus numConnectedFaces(int& faceCount) const;
    MStatus numConnectedEdges(int& edgeCount) const;
    bool connectedToFace(int faceIndex, MStatus* ReturnStatus = nullptr);
    bool connectedToEdge(int edgeIndex, MStatus* ReturnStatus = nullptr);
    MStatus getOppositeVertex(int& vertexId, int edgeId);
    bool onBoundary(MStatus* ReturnStatus = nullptr);

    MStatus updateSurface();
    MStatus geomChanged();

    static const char* className();

private:
    MItMeshVertex(const MItMeshVertex&) = delete;
    MItMeshVertex& operator=(const MItMeshVertex&) = delete;

    std::unique_ptr<host::MeshIteration> fIt;
};
