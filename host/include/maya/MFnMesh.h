#pragma once
// MFnMesh: polygon meshes. Attaches to a mesh shape (kMesh, by object or by path; a path
// gives world space) or to mesh data (kMeshData, the value of a mesh plug). Reads see the
// shape's evaluated output; edits change the current geometry in place (see host/README.md
// for how long they last on a shape with history).

#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

class MDGModifier;
class MDoubleArray;
class MFloatArray;
class MFloatPoint;
class MFloatPointArray;
class MFloatVector;
class MFloatVectorArray;
class MIntArray;
class MMeshIsectAccelParams;
class MPointArray;
class MSelectionList;
class MUintArray;
class MVectorArray;

#define kMFnMeshTolerance 1.0e-3
#define kMFnMeshPointTolerance 1.0e-10
#define kMFnMeshInstanceUnspecified -1

class MFnMesh : public MFnDagNode {
    TQHOST_DECLARE_MFN(MFnMesh, MFnDagNode)

    MFnMesh(const MDagPath& object, MStatus* ReturnStatus = nullptr);
    MStatus setObject(const MDagPath& path);
    MStatus setObject(MObject& object) override;
    MStatus setObject(const MObject& object) override;

    // ---- creation
    MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                   const MIntArray& polygonCounts, const MIntArray& polygonConnects,
                   MObject parentOrOwner = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject create(int numVertices, int numPolygons, const MPointArray& vertexArray, const MIntArray& polygonCounts,
                   const MIntArray& polygonConnects, MObject parentOrOwner = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                   const MIntArray& polygonCounts, const MIntArray& polygonConnects, const MFloatArray& uArray,
                   const MFloatArray& vArray, MObject parentOrOwner = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(int numVertices, int numPolygons, const MPointArray& vertexArray, const MIntArray& polygonCounts,
                   const MIntArray& polygonConnects, const MFloatArray& uArray, const MFloatArray& vArray,
                   MObject parentOrOwner = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* ReturnStatus = nullptr);

    MObject addPolygon(const MPointArray& vertexArray, bool mergeVertices = true,
                       double pointTolerance = kMFnMeshPointTolerance, MObject parentOrOwner = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);
    MObject addPolygon(const MPointArray& vertexArray, int& faceIndex, bool mergeVertices = true,
                       double pointTolerance = kMFnMeshPointTolerance, MObject parentOrOwner = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);

    MStatus deleteFace(int index, MDGModifier* modifier = nullptr);
    MStatus deleteEdge(int index, MDGModifier* modifier = nullptr);
    MStatus deleteVertex(int index, MDGModifier* modifier = nullptr);

    // ---- counts
    int numVertices(MStatus* ReturnStatus = nullptr) const;
    int numEdges(MStatus* ReturnStatus = nullptr) const;
    int numPolygons(MStatus* ReturnStatus = nullptr) const;
    int numFaceVertices(MStatus* ReturnStatus = nullptr) const;
    int polygonVertexCount(int polygonId, MStatus* ReturnStatus = nullptr) const;
    int numUVs(MStatus* ReturnStatus = nullptr) const;
    int numUVs(const MString& uvSet, MStatus* ReturnStatus = nullptr) const;

    // ---- intersections and closest points
    static MMeshIsectAccelParams uniformGridParams(int xDiv, int yDiv, int zDiv);
    static MMeshIsectAccelParams autoUniformGridParams();

    bool closestIntersection(const MFloatPoint& raySource, const MFloatVector& rayDirection, const MIntArray* faceIds,
                             const MIntArray* triIds, bool idsSorted, MSpace::Space space, float maxParam,
                             bool testBothDirections, MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint,
                             float* hitRayParam, int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2,
                             float tolerance = 1e-6, MStatus* ReturnStatus = nullptr);
    bool anyIntersection(const MFloatPoint& raySource, const MFloatVector& rayDirection, const MIntArray* faceIds,
                         const MIntArray* triIds, bool idsSorted, MSpace::Space space, float maxParam,
                         bool testBothDirections, MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint,
                         float* hitRayParam, int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2,
                         float tolerance = 1e-6, MStatus* ReturnStatus = nullptr);
    bool allIntersections(const MFloatPoint& raySource, const MFloatVector& rayDirection, const MIntArray* faceIds,
                          const MIntArray* triIds, bool idsSorted, MSpace::Space space, float maxParam,
                          bool testBothDirections, MMeshIsectAccelParams* accelParams, bool sortHits,
                          MFloatPointArray& hitPoints, MFloatArray* hitRayParams, MIntArray* hitFaces,
                          MIntArray* hitTriangles, MFloatArray* hitBary1s, MFloatArray* hitBary2s,
                          float tolerance = 1e-6, MStatus* ReturnStatus = nullptr);
    MStatus freeCachedIntersectionAccelerator();
    MString cachedIntersectionAcceleratorInfo(MStatus* ReturnStatus = nullptr);

    MStatus getClosestPointAndNormal(const MPoint& toThisPoint, MPoint& theClosestPoint, MVector& theNormal,
                                     MSpace::Space space = MSpace::kObject, int* closestPolygon = nullptr,
                                     MMeshIsectAccelParams* accelParams = nullptr) const;
    MStatus getClosestPoint(const MPoint& toThisPoint, MPoint& theClosestPoint, MSpace::Space space = MSpace::kObject,
                            int* closestPolygon = nullptr, MMeshIsectAccelParams* accelParams = nullptr) const;
    MStatus getClosestNormal(const MPoint& toThisPoint, MVector& theNormal, MSpace::Space space = MSpace::kObject,
                             int* closestPolygon = nullptr, MMeshIsectAccelParams* accelParams = nullptr) const;

    // ---- surface updates
    MStatus updateSurface();
    MStatus syncObject();

    // ---- vertices and faces
    const float* getRawPoints(MStatus* ReturnStatus) const;
    MStatus getPoints(MFloatPointArray& vertexArray, MSpace::Space space = MSpace::kObject) const;
    MStatus getPoints(MPointArray& vertexArray, MSpace::Space space = MSpace::kObject) const;
    MStatus setPoints(MFloatPointArray& vertexArray, MSpace::Space space = MSpace::kObject);
    MStatus setPoints(MPointArray& vertexArray, MSpace::Space space = MSpace::kObject);
    MStatus getPoint(int vertexId, MPoint& pos, MSpace::Space space = MSpace::kObject) const;
    MStatus setPoint(int vertexId, const MPoint& pos, MSpace::Space space = MSpace::kObject);
    MStatus getVertices(MIntArray& vertexCount, MIntArray& vertexList) const;
    MStatus getPolygonVertices(int polygonId, MIntArray& vertexList) const;
    bool onBoundary(int polygonId, MStatus* ReturnStatus = nullptr) const;

    // ---- normals
    MStatus getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space = MSpace::kObject) const;
    MStatus getVertexNormal(int vertexId, MVector& normal, MSpace::Space space = MSpace::kObject) const;
    MStatus getVertexNormal(int vertexId, bool angleWeighted, MVector& normal,
                            MSpace::Space space = MSpace::kObject) const;
    MStatus getVertexNormals(bool angleWeighted, MFloatVectorArray& normals,
                             MSpace::Space space = MSpace::kObject) const;

    // ---- edges
    MStatus getEdgeVertices(int edgeId, int2& vertexList) const;
    bool isEdgeSmooth(int edgeId, MStatus* ReturnStatus = nullptr) const;
    MStatus setEdgeSmoothing(int edgeId, bool smooth = true);
    MStatus setEdgeSmoothings(const MIntArray& edgeIds, const MIntArray& smooths, MDGModifier* modifier = nullptr);
    MStatus cleanupEdgeSmoothing();

    // ---- UVs
    int numUVSets(MStatus* ReturnStatus = nullptr) const;
    MString createUVSetWithName(const MString& uvSetName, MDGModifier* modifier = nullptr,
                                MStatus* ReturnStatus = nullptr, const MUintArray* instances = nullptr);
    MStatus setCurrentUVSetName(const MString& setName, MDGModifier* modifier = nullptr,
                                MSelectionList* currentSelection = nullptr);
    MString currentUVSetName(MStatus* ReturnStatus = nullptr, int instance = kMFnMeshInstanceUnspecified) const;
    MStatus getUVSetNames(MStringArray& setNames) const;
    MStatus setUVs(const MFloatArray& uArray, const MFloatArray& vArray, const MString* uvSet = nullptr);
    MStatus getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet = nullptr) const;
    MStatus setUV(int uvId, float u, float v, const MString* uvSet = nullptr);
    MStatus getUV(int uvId, float& u, float& v, const MString* uvSet = nullptr) const;
    MStatus getPolygonUV(int polygonId, int vertexIndex, float& u, float& v, const MString* uvSet = nullptr) const;
    MStatus getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet = nullptr) const;
    MStatus assignUV(int polygonId, int vertexIndex, int uvId, const MString* uvSet = nullptr);
    MStatus assignUVs(const MIntArray& uvCounts, const MIntArray& uvIds, const MString* uvSet = nullptr);
    MStatus clearUVs(const MString* uvSet = nullptr);
    MStatus getAssignedUVs(MIntArray& uvCounts, MIntArray& uvIds, const MString* uvSet = nullptr) const;

    void setCheckSamePointTwice(bool check = true);
    bool getCheckSamePointTwice();

private:
    bool fCheckSamePoint = true;
};

// Asks the intersection queries for an accelerator over the mesh. The host builds one
// bounding volume hierarchy per mesh version whatever the grid sizes say; the sizes are
// kept only so that the object reads back as it was made.
class MMeshIsectAccelParams {
public:
    MMeshIsectAccelParams() {}

private:
    friend class MFnMesh;
    int fType = 0;
    int fXDiv = 0;
    int fYDiv = 0;
    int fZDiv = 0;
};
