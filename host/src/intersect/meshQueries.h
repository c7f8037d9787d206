#pragma once
// The exact ray and closest-point queries over a MeshGeometry, in its object space. Each query
// runs the same triangle tests with or without an accelerator: the accelerator only decides
// which triangles are worth testing, so both give the same answer, bit for bit.
//
// Polygons are fan-triangulated from their first corner (see meshAccelerator.h). Ties are
// broken by the lowest face, then the lowest triangle of the face, so answers never depend on
// the order in which triangles were visited.

#include "intersect/meshAccelerator.h"
#include "mesh/meshGeometry.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace host {

// The ray origin + t * direction, t in the direction's units.
struct RayQuery {
    double origin[3] = {0, 0, 0};
    double direction[3] = {0, 0, 0};
    double maxParam = std::numeric_limits<double>::infinity(); // bounds |t|
    bool bothDirections = false;                               // else only t >= 0
    double tolerance = 1.0e-6; // barycentric slack around each triangle; below zero counts as zero

    // Finite origin and direction, a direction that is not zero, maxParam not NaN.
    bool valid() const;
};

struct RayHit {
    int face = -1;
    int triangle = -1; // fan triangle within the face
    double t = 0;
    // Weights of the triangle's first and second corner; the third has 1 - baryA - baryB.
    double baryA = 0, baryB = 0;
};

// The faces, or (face, triangle) pairs, a ray query may report.
class FaceFilter {
public:
    // `triangles` is null or holds one face-relative triangle per entry of `faces`. Fails (with
    // the reason) on a face or triangle out of range or on lengths that differ.
    bool set(const MeshGeometry& mesh, const int* faces, unsigned faceCount, const int* triangles,
             unsigned triangleCount, std::string* why = nullptr);

    // Sorted, unique (face, triangle) entries; triangle -1 stands for all of the face's.
    const std::vector<std::pair<int, int>>& entries() const { return fEntries; }
    // How many triangles the entries name (a whole face counting all of its own).
    long long triangleCount() const { return fTriangleCount; }
    bool allows(int face, int triangle) const;

private:
    std::vector<std::pair<int, int>> fEntries;
    long long fTriangleCount = 0;
};

// Every polygon the ray meets, one hit each (the one nearest the source, |t|, among its
// triangles). Ordered by t when sortByParam, else by face.
void intersectAll(const MeshGeometry& mesh, const RayQuery& ray, const FaceFilter* filter,
                  const MeshAccelerator* accel, bool sortByParam, std::vector<RayHit>& hits);
// The hit nearest the source (smallest |t|); false when the ray meets nothing.
bool intersectClosest(const MeshGeometry& mesh, const RayQuery& ray, const FaceFilter* filter,
                      const MeshAccelerator* accel, RayHit& hit);

struct SurfacePoint {
    double point[3] = {0, 0, 0};
    double distanceSquared = 0;
    int face = -1;
    int triangle = -1; // fan triangle within the face
    // Weights of the triangle's first and second corner; the third has 1 - baryA - baryB.
    double baryA = 0, baryB = 0;
};

// The point of the mesh nearest to `point` no farther than maxDistance (which may be
// infinite); false when there is none. Without an accelerator every triangle is tested; an
// accelerator built over a subset of the faces limits the search to those.
bool closestPoint(const MeshGeometry& mesh, const double point[3], double maxDistance, const MeshAccelerator* accel,
                  SurfacePoint& result);

// The nearest point of the triangle abc to p, with the weights of a and b.
void closestPointOnTriangle(const double p[3], const double a[3], const double b[3], const double c[3],
                            double out[3], double& weightA, double& weightB);

} // namespace host
