#include "intersect/meshQueries.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

// A filter naming at most this many triangles is tested directly; a larger one rides the
// accelerator and is looked up per candidate.
constexpr long long kDirectFilterTriangles = 64;

inline double dot(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline void sub(const double* a, const double* b, double* out)
{
    out[0] = a[0] - b[0];
    out[1] = a[1] - b[1];
    out[2] = a[2] - b[2];
}
inline void cross(const double* a, const double* b, double* out)
{
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

// The corners of fan triangle i of face f, as the mesh holds them.
struct Corners {
    const float *a, *b, *c;
};

inline Corners cornersOf(const MeshGeometry& mesh, int face, int i)
{
    const int* ids = mesh.polygonVertices(face);
    const float* p = mesh.rawPoints();
    return {p + 3 * ids[0], p + 3 * ids[i + 1], p + 3 * ids[i + 2]};
}

inline Corners cornersOf(const TriangleRecord& t) { return {t.a, t.b, t.c}; }

// The corners in double precision; false when one is not finite.
inline bool widen(const Corners& corners, double a[3], double b[3], double c[3])
{
    bool finite = true;
    for (int k = 0; k < 3; ++k) {
        a[k] = corners.a[k];
        b[k] = corners.b[k];
        c[k] = corners.c[k];
        finite = finite && std::isfinite(a[k]) && std::isfinite(b[k]) && std::isfinite(c[k]);
    }
    return finite;
}

// The ray as the triangle test wants it.
struct PreparedRay {
    double origin[3], direction[3];
    double tMin, tMax, tolerance;

    explicit PreparedRay(const RayQuery& ray)
    {
        for (int k = 0; k < 3; ++k) {
            origin[k] = ray.origin[k];
            direction[k] = ray.direction[k];
        }
        tMax = ray.maxParam;
        tMin = ray.bothDirections ? -ray.maxParam : 0.0;
        tolerance = std::max(ray.tolerance, 0.0);
    }
};

// The exact test: Moller-Trumbore in double precision with barycentric slack, and the hit
// point held to the triangle's widened box so that no rounding accident can report a hit
// outside the region the accelerator covers.
bool hitTriangle(const Corners& corners, const PreparedRay& ray, int face, int i, RayHit& hit)
{
    double a[3], b[3], c[3];
    if (!widen(corners, a, b, c))
        return false;
    double e1[3], e2[3], p[3], s[3], q[3];
    sub(b, a, e1);
    sub(c, a, e2);
    cross(ray.direction, e2, p);
    const double det = dot(e1, p);
    if (!(std::fabs(det) > 0.0)) // edge-on, or NaN
        return false;
    const double inverse = 1.0 / det;
    sub(ray.origin, a, s);
    const double u = dot(s, p) * inverse;
    cross(s, e1, q);
    const double v = dot(ray.direction, q) * inverse;
    const double tol = ray.tolerance;
    if (!(u >= -tol && v >= -tol && u + v <= 1.0 + tol))
        return false;
    const double t = dot(e2, q) * inverse;
    if (!(t >= ray.tMin && t <= ray.tMax))
        return false;
    double lo[3], hi[3];
    widenedTriangleBox(a, b, c, tol, lo, hi);
    for (int k = 0; k < 3; ++k) {
        const double x = ray.origin[k] + t * ray.direction[k];
        if (!(x >= lo[k] && x <= hi[k]))
            return false;
    }
    hit.face = face;
    hit.triangle = i;
    hit.t = t;
    hit.baryA = 1.0 - u - v;
    hit.baryB = u;
    return true;
}

// Nearer the source first; ties to the lower face, then the lower triangle.
inline bool nearer(const RayHit& x, const RayHit& y)
{
    const double ax = std::fabs(x.t), ay = std::fabs(y.t);
    if (ax != ay)
        return ax < ay;
    if (x.face != y.face)
        return x.face < y.face;
    return x.triangle < y.triangle;
}

// Calls test(face, triangle) for every candidate the filter (or the whole mesh) names, in
// face order; used when there is no accelerator or the filter is small.
template <class Test>
void forEachListed(const MeshGeometry& mesh, const FaceFilter* filter, Test&& test)
{
    if (filter) {
        for (const auto& [face, triangle] : filter->entries()) {
            if (triangle >= 0) {
                test(face, triangle);
                continue;
            }
            for (int i = 0, n = mesh.polygonSize(face) - 2; i < n; ++i)
                test(face, i);
        }
        return;
    }
    for (int face = 0, faces = mesh.numPolygons(); face < faces; ++face)
        for (int i = 0, n = mesh.polygonSize(face) - 2; i < n; ++i)
            test(face, i);
}

bool useAccelerator(const MeshAccelerator* accel, const FaceFilter* filter, const PreparedRay& ray)
{
    return accel && accel->usable() && !accel->partial() && ray.tolerance <= kMaxAcceleratedTolerance &&
           (!filter || filter->triangleCount() > kDirectFilterTriangles);
}

class CollectSink : public RayCandidateSink {
public:
    CollectSink(const PreparedRay& ray, const FaceFilter* filter, std::vector<RayHit>& hits)
        : fRay(ray), fFilter(filter), fHits(hits)
    {
    }
    void candidates(const TriangleRecord* triangles, int count, double&) override
    {
        for (const TriangleRecord* t = triangles; t != triangles + count; ++t) {
            if (fFilter && !fFilter->allows(t->face, t->index))
                continue;
            RayHit hit;
            if (hitTriangle(cornersOf(*t), fRay, t->face, t->index, hit))
                fHits.push_back(hit);
        }
    }

private:
    const PreparedRay& fRay;
    const FaceFilter* fFilter;
    std::vector<RayHit>& fHits;
};

class NearestSink : public RayCandidateSink {
public:
    NearestSink(const PreparedRay& ray, const FaceFilter* filter) : fRay(ray), fFilter(filter) {}
    void candidates(const TriangleRecord* triangles, int count, double& tMax) override
    {
        for (const TriangleRecord* t = triangles; t != triangles + count; ++t) {
            if (fFilter && !fFilter->allows(t->face, t->index))
                continue;
            RayHit hit;
            if (!hitTriangle(cornersOf(*t), fRay, t->face, t->index, hit))
                continue;
            if (!found || nearer(hit, best)) {
                best = hit;
                found = true;
            }
        }
        // Traces run away from the source, so nothing past |t| of the best can beat it.
        if (found)
            tMax = std::min(tMax, std::fabs(best.t));
    }

    RayHit best;
    bool found = false;

private:
    const PreparedRay& fRay;
    const FaceFilter* fFilter;
};

class ClosestPointSink : public PointCandidateSink {
public:
    ClosestPointSink(const double* point, double maxSquared) : fPoint(point), fMaxSquared(maxSquared) {}
    void candidates(const TriangleRecord* triangles, int count, double& radius) override;

    SurfacePoint best;
    bool found = false;

private:
    const double* fPoint;
    double fMaxSquared;
};

// Tests triangle i of face f against the best so far; true when it became the best.
bool improveClosest(const Corners& corners, const double* point, double maxSquared, int face, int i,
                    SurfacePoint& best, bool& found)
{
    double a[3], b[3], c[3], q[3], wa, wb;
    if (!widen(corners, a, b, c))
        return false;
    closestPointOnTriangle(point, a, b, c, q, wa, wb);
    double d[3];
    sub(point, q, d);
    const double d2 = dot(d, d);
    if (!(d2 <= maxSquared))
        return false;
    if (found && !(d2 < best.distanceSquared ||
                   (d2 == best.distanceSquared && (face < best.face || (face == best.face && i < best.triangle)))))
        return false;
    for (int k = 0; k < 3; ++k)
        best.point[k] = q[k];
    best.distanceSquared = d2;
    best.face = face;
    best.triangle = i;
    best.baryA = wa;
    best.baryB = wb;
    found = true;
    return true;
}

void ClosestPointSink::candidates(const TriangleRecord* triangles, int count, double& radius)
{
    for (const TriangleRecord* t = triangles; t != triangles + count; ++t)
        if (improveClosest(cornersOf(*t), fPoint, fMaxSquared, t->face, t->index, best, found))
            radius = std::min(radius, std::sqrt(best.distanceSquared));
}

// The nearest point of segment ab to p, as the weight of b.
double segmentWeight(const double* p, const double* a, const double* b)
{
    double ab[3], ap[3];
    sub(b, a, ab);
    sub(p, a, ap);
    const double len2 = dot(ab, ab);
    if (!(len2 > 0))
        return 0.0;
    return std::clamp(dot(ap, ab) / len2, 0.0, 1.0);
}

} // namespace

bool RayQuery::valid() const
{
    for (int k = 0; k < 3; ++k)
        if (!std::isfinite(origin[k]) || !std::isfinite(direction[k]))
            return false;
    return (direction[0] != 0 || direction[1] != 0 || direction[2] != 0) && !std::isnan(maxParam) &&
           !std::isnan(tolerance);
}

bool FaceFilter::set(const MeshGeometry& mesh, const int* faces, unsigned faceCount, const int* triangles,
                     unsigned triangleCount, std::string* why)
{
    fEntries.clear();
    fTriangleCount = 0;
    if (triangles && triangleCount != faceCount) {
        if (why)
            *why = "the triangle ids (" + std::to_string(triangleCount) + ") do not pair with the face ids (" +
                   std::to_string(faceCount) + ")";
        return false;
    }
    fEntries.reserve(faceCount);
    for (unsigned k = 0; k < faceCount; ++k) {
        const int face = faces[k];
        if (!mesh.validPolygon(face)) {
            if (why)
                *why = "face id " + std::to_string(face) + " is out of range";
            fEntries.clear();
            return false;
        }
        const int triangle = triangles ? triangles[k] : -1;
        if (triangles && (triangle < 0 || triangle >= mesh.polygonSize(face) - 2)) {
            if (why)
                *why = "face " + std::to_string(face) + " has no triangle " + std::to_string(triangle);
            fEntries.clear();
            return false;
        }
        fEntries.emplace_back(face, triangle);
    }
    // Callers may promise sorted ids; checking is cheaper than trusting a broken promise.
    if (!std::is_sorted(fEntries.begin(), fEntries.end()))
        std::sort(fEntries.begin(), fEntries.end());
    fEntries.erase(std::unique(fEntries.begin(), fEntries.end()), fEntries.end());
    for (const auto& [face, triangle] : fEntries)
        fTriangleCount += triangle >= 0 ? 1 : mesh.polygonSize(face) - 2;
    return true;
}

bool FaceFilter::allows(int face, int triangle) const
{
    // (face, -1) sorts before every (face, i >= 0).
    auto it = std::lower_bound(fEntries.begin(), fEntries.end(), std::make_pair(face, -1));
    if (it == fEntries.end() || it->first != face)
        return false;
    if (it->second == -1)
        return true;
    return std::binary_search(it, fEntries.end(), std::make_pair(face, triangle));
}

void intersectAll(const MeshGeometry& mesh, const RayQuery& query, const FaceFilter* filter,
                  const MeshAccelerator* accel, bool sortByParam, std::vector<RayHit>& hits)
{
    hits.clear();
    if (!query.valid())
        return;
    const PreparedRay ray(query);
    if (useAccelerator(accel, filter, ray)) {
        CollectSink sink(ray, filter, hits);
        accel->traceRay(ray.origin, ray.direction, ray.tMin, ray.tMax, false, sink);
    } else {
        forEachListed(mesh, filter, [&](int face, int i) {
            RayHit hit;
            if (hitTriangle(cornersOf(mesh, face, i), ray, face, i, hit))
                hits.push_back(hit);
        });
    }
    // One hit per polygon: its hit nearest the source.
    std::sort(hits.begin(), hits.end(), [](const RayHit& x, const RayHit& y) {
        return x.face != y.face ? x.face < y.face : nearer(x, y);
    });
    hits.erase(std::unique(hits.begin(), hits.end(), [](const RayHit& x, const RayHit& y) { return x.face == y.face; }),
               hits.end());
    if (sortByParam)
        std::sort(hits.begin(), hits.end(),
                  [](const RayHit& x, const RayHit& y) { return x.t != y.t ? x.t < y.t : x.face < y.face; });
}

bool intersectClosest(const MeshGeometry& mesh, const RayQuery& query, const FaceFilter* filter,
                      const MeshAccelerator* accel, RayHit& hit)
{
    if (!query.valid())
        return false;
    const PreparedRay ray(query);
    if (useAccelerator(accel, filter, ray)) {
        NearestSink sink(ray, filter);
        accel->traceRay(ray.origin, ray.direction, 0.0, ray.tMax, true, sink);
        if (query.bothDirections) {
            // Behind the source: the same line walked the other way, so |t| grows along it.
            const double back[3] = {-ray.direction[0], -ray.direction[1], -ray.direction[2]};
            const double limit = sink.found ? std::fabs(sink.best.t) : ray.tMax;
            accel->traceRay(ray.origin, back, 0.0, limit, true, sink);
        }
        if (sink.found)
            hit = sink.best;
        return sink.found;
    }
    bool found = false;
    forEachListed(mesh, filter, [&](int face, int i) {
        RayHit candidate;
        if (hitTriangle(cornersOf(mesh, face, i), ray, face, i, candidate) && (!found || nearer(candidate, hit))) {
            hit = candidate;
            found = true;
        }
    });
    return found;
}

bool closestPoint(const MeshGeometry& mesh, const double point[3], double maxDistance, const MeshAccelerator* accel,
                  SurfacePoint& result)
{
    if (!std::isfinite(point[0]) || !std::isfinite(point[1]) || !std::isfinite(point[2]) || std::isnan(maxDistance) ||
        maxDistance < 0)
        return false;
    const double maxSquared = maxDistance == kInf ? kInf : maxDistance * maxDistance;
    if (accel && accel->usable()) {
        ClosestPointSink sink(point, maxSquared);
        accel->searchPoint(point, maxDistance, sink);
        if (sink.found)
            result = sink.best;
        return sink.found;
    }
    bool found = false;
    auto testFace = [&](int face) {
        for (int i = 0, n = mesh.polygonSize(face) - 2; i < n; ++i)
            improveClosest(cornersOf(mesh, face, i), point, maxSquared, face, i, result, found);
    };
    if (accel && accel->partial()) {
        for (int face : accel->faces())
            testFace(face);
    } else {
        for (int face = 0, n = mesh.numPolygons(); face < n; ++face)
            testFace(face);
    }
    return found;
}

void closestPointOnTriangle(const double p[3], const double a[3], const double b[3], const double c[3], double out[3],
                            double& weightA, double& weightB)
{
    // Voronoi regions of the triangle (Ericson, Real-Time Collision Detection, 5.1.5), with
    // the divisions guarded so that degenerate triangles fall through to their edges.
    double ab[3], ac[3], ap[3], bp[3], cp[3];
    sub(b, a, ab);
    sub(c, a, ac);
    sub(p, a, ap);
    double wa = 0, wb = 0, wc = 0;
    bool done = false;
    const double d1 = dot(ab, ap), d2 = dot(ac, ap);
    sub(p, b, bp);
    const double d3 = dot(ab, bp), d4 = dot(ac, bp);
    sub(p, c, cp);
    const double d5 = dot(ab, cp), d6 = dot(ac, cp);
    const double vc = d1 * d4 - d3 * d2;
    const double vb = d5 * d2 - d1 * d6;
    const double va = d3 * d6 - d5 * d4;
    if (d1 <= 0 && d2 <= 0) {
        wa = 1;
        done = true;
    } else if (d3 >= 0 && d4 <= d3) {
        wb = 1;
        done = true;
    } else if (vc <= 0 && d1 >= 0 && d3 <= 0 && d1 - d3 > 0) {
        wb = d1 / (d1 - d3);
        wa = 1 - wb;
        done = true;
    } else if (d6 >= 0 && d5 <= d6) {
        wc = 1;
        done = true;
    } else if (vb <= 0 && d2 >= 0 && d6 <= 0 && d2 - d6 > 0) {
        wc = d2 / (d2 - d6);
        wa = 1 - wc;
        done = true;
    } else if (va <= 0 && d4 - d3 >= 0 && d5 - d6 >= 0 && (d4 - d3) + (d5 - d6) > 0) {
        wc = (d4 - d3) / ((d4 - d3) + (d5 - d6));
        wb = 1 - wc;
        done = true;
    } else {
        const double sum = va + vb + vc;
        if (sum > 0 && std::isfinite(sum)) {
            wb = vb / sum;
            wc = vc / sum;
            wa = 1 - wb - wc;
            done = true;
        }
    }
    if (!done) {
        // Degenerate: the nearest of the three edges.
        const double* corners[3] = {a, b, c};
        double bestD2 = kInf;
        for (int e = 0; e < 3; ++e) {
            const double* s = corners[e];
            const double* t = corners[(e + 1) % 3];
            const double w = segmentWeight(p, s, t);
            double q[3], d[3];
            for (int k = 0; k < 3; ++k)
                q[k] = s[k] + w * (t[k] - s[k]);
            sub(p, q, d);
            const double d2e = dot(d, d);
            if (e == 0 || d2e < bestD2) {
                bestD2 = d2e;
                double weights[3] = {0, 0, 0};
                weights[e] = 1 - w;
                weights[(e + 1) % 3] = w;
                wa = weights[0];
                wb = weights[1];
                wc = weights[2];
            }
        }
    }
    for (int k = 0; k < 3; ++k)
        out[k] = wa * a[k] + wb * b[k] + wc * c[k];
    weightA = wa;
    weightB = wb;
}

} // namespace host
