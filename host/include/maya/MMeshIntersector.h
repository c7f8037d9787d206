#pragma once
// MMeshIntersector: closest points on a mesh, many times over. create() takes a snapshot of
// the mesh (later edits of the mesh do not reach it) and a matrix that places the mesh in
// some space; getClosestPoint takes points in that space and answers in the mesh's object
// space. Queries on one intersector may run on several threads at once.
//
// MPointOnMesh: what getClosestPoint answers: the point, the normal of its polygon, the face,
// the triangle of the face (fanned from the face's first corner) and the barycentric
// coordinates within that triangle.

#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>

#include <cfloat>
#include <memory>

class MIntArray;
class MObject;
class MPointOnMesh;

namespace host {
class IntersectorSnapshot;
} // namespace host

class MMeshIntersector {
public:
    MMeshIntersector();
    virtual ~MMeshIntersector();

    // meshObject is a mesh shape (kMesh) or mesh data (kMeshData); facesOfInterest, when
    // given, limits the search to those faces.
    MStatus create(MObject& meshObject, const MMatrix& matrix = MMatrix::identity,
                   const MIntArray* facesOfInterest = nullptr);
    bool isCreated() const;
    // Fails (kFailure) when no point of the mesh lies within maxDistance of the point,
    // the distance measured in the point's space.
    MStatus getClosestPoint(const MPoint& point, MPointOnMesh& meshPoint, double maxDistance = DBL_MAX) const;

    static const char* className();

private:
    MMeshIntersector(const MMeshIntersector&) = delete;
    MMeshIntersector& operator=(const MMeshIntersector&) = delete;

    std::shared_ptr<const host::IntersectorSnapshot> fSnapshot;
};

class MPointOnMesh {
public:
    MPointOnMesh();

    MFloatPoint& getPoint();
    MFloatVector& getNormal();
    // The point is u * a + v * b + (1 - u - v) * c for the triangle's corners a, b, c.
    void getBarycentricCoords(float& u, float& v) const;
    int faceIndex() const;
    int triangleIndex() const;

private:
    friend class MMeshIntersector;

    MFloatPoint fPoint;
    MFloatVector fNormal;
    int fFace = -1;
    int fTriangle = -1;
    float fBaryU = 0.0f;
    float fBaryV = 0.0f;
};
