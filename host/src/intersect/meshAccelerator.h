#pragma once
// MeshAccelerator: a bounding volume hierarchy over the fan triangles of one version of a
// MeshGeometry, built by Embree's BVH builder (rtcBuildBVH) and walked by the host. It only
// finds candidates: every triangle a query could accept is handed to the query's sink, which
// runs the exact test (meshQueries.h). So a query with and without the accelerator gives the
// same answer; the accelerator only skips triangles that cannot matter.
//
// The host walks the tree itself, rather than handing Embree a scene of user primitives and
// calling rtcIntersect1 / rtcPointQuery, because its leaves can then hold the triangles
// themselves (a candidate costs no callback and no trip through the mesh's arrays) and an
// all-hits walk can go breadth first, so that prefetches have time to land: rays measured
// 1.5 to 2 times faster that way (bench/intersectBench.cpp).
//
// Polygons are fanned from their first corner: triangle i of a face has the face's corners
// (0, i + 1, i + 2). The leaves keep copies of each triangle's corners, the mesh's own floats,
// so the exact tests see the same values through either path.
//
// The boxes hold each triangle widened for any ray tolerance up to kMaxAcceleratedTolerance
// plus a pad far larger than the rounding of rays, points and boxes to single precision, so
// the single precision walk never loses a candidate. Queries asking for more tolerance than
// that run without the accelerator.

#include "mesh/meshGeometry.h"

#include <maya/internal/BlockAllocator.h>

#include <embree3/rtcore.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace host {

// The largest barycentric tolerance the accelerator's boxes cover. Callers pass tolerances
// as floats: 0.01f must itself be covered. Plug-ins re-cast whole strokes at 0.01 on every
// drag event; left to the triangle-by-triangle path, one event on a million triangles took
// seconds, while the wider boxes cost the tighter queries little (bench/intersectBench.cpp).
constexpr double kMaxAcceleratedTolerance = static_cast<double>(1.0e-2f);

// How far past its own bounding box a triangle may be met by a ray with the given tolerance:
// the widened triangle is the triangle scaled about its centroid by 1 + 3 * tolerance, and
// some slack for double rounding is added on top. lo/hi are the triangle's box.
void widenedTriangleBox(const double* a, const double* b, const double* c, double tolerance, double lo[3],
                        double hi[3]);

// A double as a float, out-of-range values going to the infinities (a plain conversion of
// them is undefined).
inline float toFloat(double x)
{
    constexpr double kLargest = 3.4028234663852886e38; // FLT_MAX
    return x > kLargest ? HUGE_VALF : x < -kLargest ? -HUGE_VALF : static_cast<float>(x);
}

// The one Embree device of the process, made on first use; null when Embree refuses.
RTCDevice embreeDevice();

// One fan triangle: its corners in order and where it comes from.
struct TriangleRecord {
    float a[3], b[3], c[3];
    int face;
    int index; // within the face
};

// Receives candidate triangles of a ray traversal, a leaf at a time. `tMax` is the current end
// of the ray in the query's t; lowering it (for a closest-hit search) prunes what is left.
class RayCandidateSink {
public:
    virtual ~RayCandidateSink() = default;
    virtual void candidates(const TriangleRecord* triangles, int count, double& tMax) = 0;
};

// Receives candidate triangles of a point traversal, a leaf at a time. `radius` is the current
// search radius; lowering it prunes what is left.
class PointCandidateSink {
public:
    virtual ~PointCandidateSink() = default;
    virtual void candidates(const TriangleRecord* triangles, int count, double& radius) = 0;
};

class TreeArena;

class MeshAccelerator {
public:
    // Builds over every triangle of the mesh, or only over those of `faces` (valid ids).
    explicit MeshAccelerator(const MeshGeometry& mesh, const std::vector<int>* faces = nullptr);
    ~MeshAccelerator();
    MeshAccelerator(const MeshAccelerator&) = delete;
    MeshAccelerator& operator=(const MeshAccelerator&) = delete;

    // The version of the mesh it was built over.
    std::uint64_t version() const { return fVersion; }
    // False when no hierarchy could be built (no Embree device, coordinates beyond single
    // precision's comfort); queries then test every triangle.
    bool usable() const { return fUsable; }
    // True when built over a subset of the faces.
    bool partial() const { return fPartial; }
    const std::vector<int>& faces() const { return fFaces; }

    // The triangles it holds (all of the mesh's, or those of the faces it was built over).
    int numTriangles() const { return fTriangleCount; }

    // Every triangle whose widened box the ray origin + t * direction meets for t in
    // [tMin, tMax] goes to the sink (others may too). The ray is in the mesh's object space.
    // With nearestFirst, leaves are visited front to back along the ray and the sink may
    // shorten it; otherwise in any order, and the whole ray is walked.
    void traceRay(const double origin[3], const double direction[3], double tMin, double tMax, bool nearestFirst,
                  RayCandidateSink& sink) const;
    // Every triangle with a point within `radius` of the point goes to the sink (others may too).
    // Leaves are visited nearest first.
    void searchPoint(const double point[3], double radius, PointCandidateSink& sink) const;

    // Seconds the last hierarchy build took (for the benchmarks).
    double buildSeconds() const { return fBuildSeconds; }

private:
    friend struct BvhBuild;

    void build();

    std::uint64_t fVersion = 0;
    bool fPartial = false;
    std::vector<int> fFaces;                // sorted, unique; only when partial
    // The build's input; kept only when there is no tree.
    std::vector<TriangleRecord, internal::BlockAllocator<TriangleRecord>> fTriangles;
    int fTriangleCount = 0;
    double fLo[3] = {0, 0, 0}, fHi[3] = {0, 0, 0};
    double fPad = 0; // what the boxes hold beyond the widened triangles
    bool fUsable = false;
    std::unique_ptr<TreeArena> fArena; // holds the tree
    const void* fRoot = nullptr;       // a tagged node or leaf, null when no triangle can be met
    double fBuildSeconds = 0;
};

// The mesh's accelerator: the cached one when it describes this version, else a new one,
// cached on the mesh (so on every copy that shares the data) until the mesh changes.
std::shared_ptr<MeshAccelerator> acceleratorFor(const MeshGeometry& mesh);

} // namespace host
