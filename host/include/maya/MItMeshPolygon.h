#pragma once
// MItMeshPolygon: walks the polygons of a mesh (a shape by object or path, or mesh data),
// all of them in index order or those of a polygon component in the component's order.
// Vertex arguments are face-relative (0 .. polygonVertexCount() - 1).

#include <maya/MDagPath.h>
#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

#include <memory>

namespace host {
class MeshIteration;
} // namespace host

class MItMeshPolygon {
public:
    MItMeshPolygon(const MObject& polyObject, MStatus* ReturnStatus = nullptr);
    MItMeshPolygon(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    virtual ~MItMeshPolygon();

    bool isDone(MStatus* ReturnStatus = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(const MObject& polyObject);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    unsigned int count(MStatus* ReturnStatus = nullptr);
    unsigned int polygonVertexCount(MStatus* ReturnStatus = nullptr);

    MPoint center(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    MObject polygon(MStatus* ReturnStatus = nullptr);
    MObject currentItem(MStatus* ReturnStatus = nullptr);
    unsigned int index(MStatus* ReturnStatus = nullptr);
    MStatus setIndex(int index, int& prevIndex);

    unsigned int vertexIndex(int index, MStatus* ReturnStatus = nullptr);
    MStatus getVertices(MIntArray& vertices);
    MPoint point(int index, MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    void getPoints(MPointArray& pointArray, MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr);
    MStatus setPoint(const MPoint& point, unsigned int index, MSpace::Space space = MSpace::kObject);
    MStatus setPoints(MPointArray& pointArray, MSpace::Space space = MSpace::kObject);

    MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const;
    MStatus getNormal(unsigned int vertexIndex, MVector& normal, MSpace::Space space = MSpace::kObject) const;
    MStatus getNormals(MVectorArray& vectorArray, MSpace::Space space = MSpace::kObject) const;

    MStatus getEdges(MIntArray& edges);
    MStatus getConnectedFaces(MIntArray& faces);
    MStatus getConnectedEdges(MIntArray& edges);
    MStatus getConnectedVertices(MIntArray& vertices);
    bool isConnectedToFace(int index, MStatus* ReturnStatus = nullptr);
    bool isConnectedToEdge(int index, MStatus* ReturnStatus = nullptr);
    bool isConnectedToVertex(int index, MStatus* ReturnStatus = nullptr);
    MStatus numConnectedFaces(int& faceCount) const;
    MStatus numConnectedEdges(int& edgeCount) const;
    bool onBoundary(MStatus* ReturnStatus = nullptr);
    MStatus getArea(double& area, MSpace::Space space = MSpace::kObject);
    bool zeroArea(MStatus* ReturnStatus = nullptr);

    MStatus updateSurface();
    MStatus geomChanged();

    static const char* className();

private:
    MItMeshPolygon(const MItMeshPolygon&) = delete;
    MItMeshPolygon& operator=(const MItMeshPolygon&) = delete;

    std::unique_ptr<host::MeshIteration> fIt;
};
