// Mesh intersection benchmarks on a sculpt-like surface of a million triangles: the host's
// accelerator against CGAL's AABB tree and against bare Embree, which sets the floor.
//
//   build          host accelerator | CGAL AABB tree (with and without its distance
//                  search tree) | Embree native triangles
//   stroke rays    MFnMesh::allIntersections (sorted, both directions) | CGAL
//                  all_intersections + sort | Embree rtcIntersect1 first hit (the floor) |
//                  Embree rtcIntersect1 with a filter that keeps going (all hits, unsorted)
//   closest point  MMeshIntersector::getClosestPoint | CGAL closest_point_and_primitive, on points
//                  near the surface and on points loosely around it
//
// Each query benchmark runs one query per iteration, cycling through fixed rays or points,
// so its time per iteration is the time per query. A summary with the ratios follows the
// usual report. TQSARN_BENCH_TRIANGLES overrides the triangle count.

#include <host/harness.h>
#include <host/meshArrays.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPoint.h>

#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/AABB_triangle_primitive.h>
#include <CGAL/Simple_cartesian.h>

#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using Kernel = CGAL::Simple_cartesian<double>;
using CgalTriangles = std::vector<Kernel::Triangle_3>;
using CgalPrimitive = CGAL::AABB_triangle_primitive<Kernel, CgalTriangles::const_iterator>;
using CgalTree = CGAL::AABB_tree<CGAL::AABB_traits<Kernel, CgalPrimitive>>;

constexpr int kRayCount = 4096;
constexpr int kPointCount = 4096;

int triangleTarget()
{
    const char* text = std::getenv("TQSARN_BENCH_TRIANGLES");
    const int n = text ? std::atoi(text) : 0;
    return n > 0 ? n : 1000000;
}

struct StrokeRay {
    MFloatPoint source;
    MFloatVector direction;
};

// Everything the benchmarks share, made on first use.
struct Fixture {
    host::MeshArrays mesh;
    MFnMesh fn;
    std::vector<StrokeRay> rays;
    std::vector<MPoint> near, loose; // closest-point queries
    CgalTriangles triangles;
    std::unique_ptr<CgalTree> cgal; // with its distance search tree
    RTCDevice device = nullptr;
    RTCScene embree = nullptr;
    RTCScene embreeFiltered = nullptr; // the same, taking the context's filter
    MMeshIntersector intersector;
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();

    Fixture()
    {
        host::newScene();
        mesh = host::sculptSurface(triangleTarget(), 3);
        MFloatPointArray points3;
        for (int v = 0; v < mesh.numVertices(); ++v)
            points3.append(mesh.points[3 * v], mesh.points[3 * v + 1], mesh.points[3 * v + 2]);
        MIntArray counts, connects;
        for (int c : mesh.counts)
            counts.append(c);
        for (int c : mesh.connects)
            connects.append(c);
        MStatus status;
        fn.create(mesh.numVertices(), mesh.numPolygons(), points3, counts, connects, MObject::kNullObj, &status);
        if (!status) {
            std::fprintf(stderr, "could not make the benchmark mesh\n");
            std::exit(1);
        }

        // Stroke rays: from a camera three units out, at points spread over the surface.
        std::mt19937 random(7);
        std::uniform_real_distribution<double> unit(-1.0, 1.0);
        const MPoint eye(0.4, 0.8, 3.0);
        for (int k = 0; k < kRayCount; ++k) {
            MPoint aim(0.8 * unit(random), 0.8 * unit(random), 0.3 * unit(random));
            MVector d = aim - eye;
            rays.push_back({MFloatPoint(float(eye.x), float(eye.y), float(eye.z)),
                            MFloatVector(float(d.x), float(d.y), float(d.z))});
        }
        // Closest-point queries near the surface, as when snapping the vertices of a new
        // topology onto a sculpt: random points of random triangles, lifted or sunk by up to
        // 1% of the size along the triangle's normal. And loose ones, anywhere in a shell
        // 0.3 either side of the surface, where many triangles are nearly as close.
        std::vector<int> firstCorner(mesh.numPolygons());
        for (int f = 0, start = 0; f < mesh.numPolygons(); start += mesh.counts[f++])
            firstCorner[f] = start;
        std::uniform_int_distribution<int> anyFace(0, mesh.numPolygons() - 1);
        for (int k = 0; k < kPointCount; ++k) {
            const int f = anyFace(random);
            const int* ids = &mesh.connects[firstCorner[f]];
            MPoint a = corner(ids[0]), b = corner(ids[1]), c = corner(ids[2]);
            double u = (unit(random) + 1) / 2, v = (unit(random) + 1) / 2;
            if (u + v > 1) {
                u = 1 - u;
                v = 1 - v;
            }
            MVector normal = (b - a) ^ (c - a);
            normal.normalize();
            near.push_back(a + u * (b - a) + v * (c - a) + 0.01 * unit(random) * normal);
        }
        for (int k = 0; k < kPointCount; ++k) {
            MVector dir(unit(random), unit(random), unit(random));
            if (dir.length() < 1e-3)
                dir = MVector(1, 0, 0);
            dir.normalize();
            loose.push_back(MPoint(dir * (0.7 + 0.6 * (unit(random) + 1.0) / 2.0)));
        }

        int start = 0;
        for (int f = 0; f < mesh.numPolygons(); ++f) {
            const int n = mesh.counts[f];
            for (int i = 0; i + 2 < n; ++i)
                triangles.emplace_back(cgalPoint(mesh.connects[start]), cgalPoint(mesh.connects[start + i + 1]),
                                       cgalPoint(mesh.connects[start + i + 2]));
            start += n;
        }
        cgal = std::make_unique<CgalTree>(triangles.begin(), triangles.end());
        cgal->build();
        cgal->accelerate_distance_queries();

        device = rtcNewDevice(nullptr);
        embree = buildEmbree(false);
        embreeFiltered = buildEmbree(true);

        MObject shape = fn.object();
        intersector.create(shape);
        // Warm the host accelerator so the query benchmarks measure queries only.
        MFloatPoint hit;
        fn.closestIntersection(rays[0].source, rays[0].direction, nullptr, nullptr, false, MSpace::kObject, 1e30f,
                               false, &accel, hit, nullptr, nullptr, nullptr, nullptr, nullptr);
    }

    MPoint corner(int v) const { return MPoint(mesh.points[3 * v], mesh.points[3 * v + 1], mesh.points[3 * v + 2]); }

    Kernel::Point_3 cgalPoint(int v) const
    {
        return Kernel::Point_3(mesh.points[3 * v], mesh.points[3 * v + 1], mesh.points[3 * v + 2]);
    }

    RTCScene buildEmbree(bool filtered) const
    {
        RTCScene scene = rtcNewScene(device);
        if (filtered)
            rtcSetSceneFlags(scene, RTC_SCENE_FLAG_CONTEXT_FILTER_FUNCTION);
        RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, mesh.points.data(), 0,
                                   3 * sizeof(float), mesh.points.size() / 3);
        unsigned* index = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(unsigned), triangles.size()));
        int start = 0;
        for (int f = 0; f < mesh.numPolygons(); ++f) {
            const int n = mesh.counts[f];
            for (int i = 0; i + 2 < n; ++i) {
                *index++ = unsigned(mesh.connects[start]);
                *index++ = unsigned(mesh.connects[start + i + 1]);
                *index++ = unsigned(mesh.connects[start + i + 2]);
            }
            start += n;
        }
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene, geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(scene);
        return scene;
    }
};

// Made once and never destroyed: the host's own statics may be gone by the time a static
// fixture would be torn down.
Fixture& fixture()
{
    static Fixture* f = new Fixture;
    return *f;
}

double seconds(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// ---- builds

void BM_BuildHostAccelerator(benchmark::State& state)
{
    Fixture& f = fixture();
    // A ray that leaves the mesh at once: the query costs nothing next to the build it triggers.
    const MFloatPoint away(10, 10, 10);
    const MFloatVector out(1, 1, 1);
    for (auto _ : state) {
        f.fn.freeCachedIntersectionAccelerator();
        MFloatPoint hit;
        const auto start = std::chrono::steady_clock::now();
        f.fn.closestIntersection(away, out, nullptr, nullptr, false, MSpace::kObject, 1e30f, false, &f.accel, hit,
                                 nullptr, nullptr, nullptr, nullptr, nullptr);
        state.SetIterationTime(seconds(start));
    }
    state.counters["triangles"] = double(f.triangles.size());
}

void BM_BuildCgalTree(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        CgalTree tree(f.triangles.begin(), f.triangles.end());
        tree.do_not_accelerate_distance_queries();
        tree.build();
        state.SetIterationTime(seconds(start));
    }
}

void BM_BuildCgalTreeWithDistanceSearch(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        CgalTree tree(f.triangles.begin(), f.triangles.end());
        tree.build();
        tree.accelerate_distance_queries();
        state.SetIterationTime(seconds(start));
    }
}

void BM_BuildEmbreeTriangles(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        RTCScene scene = f.buildEmbree(false);
        state.SetIterationTime(seconds(start));
        rtcReleaseScene(scene);
    }
}

// ---- stroke rays

void BM_RaysHostAllIntersections(benchmark::State& state)
{
    Fixture& f = fixture();
    MFloatPointArray points;
    MFloatArray params;
    MIntArray faces;
    std::size_t k = 0, hits = 0;
    for (auto _ : state) {
        const StrokeRay& ray = f.rays[k++ % f.rays.size()];
        f.fn.allIntersections(ray.source, ray.direction, nullptr, nullptr, false, MSpace::kObject, 1e30f, true,
                              &f.accel, true, points, &params, &faces, nullptr, nullptr, nullptr);
        hits += points.length();
    }
    state.counters["hits/ray"] = double(hits) / double(state.iterations());
}

void BM_RaysCgalAllIntersections(benchmark::State& state)
{
    Fixture& f = fixture();
    using Hit = CgalTree::Intersection_and_primitive_id<Kernel::Ray_3>::Type;
    std::vector<Hit> found;
    std::vector<std::pair<double, std::size_t>> order;
    std::size_t k = 0, hits = 0;
    for (auto _ : state) {
        const StrokeRay& ray = f.rays[k++ % f.rays.size()];
        const Kernel::Point_3 source(ray.source.x, ray.source.y, ray.source.z);
        const Kernel::Vector_3 direction(ray.direction.x, ray.direction.y, ray.direction.z);
        found.clear();
        f.cgal->all_intersections(Kernel::Ray_3(source, direction), std::back_inserter(found));
        order.clear();
        for (std::size_t i = 0; i < found.size(); ++i) {
            // Triangle hits are points; a ray in a triangle's plane gives a segment: its start.
            const Kernel::Point_3* p = boost::get<Kernel::Point_3>(&found[i].first);
            const Kernel::Point_3 at = p ? *p : boost::get<Kernel::Segment_3>(found[i].first).source();
            order.emplace_back((at - source) * direction, i);
        }
        std::sort(order.begin(), order.end());
        hits += order.size();
        benchmark::DoNotOptimize(order.data());
    }
    state.counters["hits/ray"] = double(hits) / double(state.iterations());
}

void BM_RaysEmbreeFirstHit(benchmark::State& state)
{
    Fixture& f = fixture();
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    std::size_t k = 0, hits = 0;
    for (auto _ : state) {
        const StrokeRay& ray = f.rays[k++ % f.rays.size()];
        RTCRayHit rh;
        rh.ray.org_x = ray.source.x;
        rh.ray.org_y = ray.source.y;
        rh.ray.org_z = ray.source.z;
        rh.ray.dir_x = ray.direction.x;
        rh.ray.dir_y = ray.direction.y;
        rh.ray.dir_z = ray.direction.z;
        rh.ray.tnear = 0.0f;
        rh.ray.tfar = 1e30f;
        rh.ray.time = 0.0f;
        rh.ray.mask = 0xFFFFFFFFu;
        rh.ray.id = 0;
        rh.ray.flags = 0;
        rh.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rh.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(f.embree, &context, &rh);
        hits += rh.hit.geomID != RTC_INVALID_GEOMETRY_ID;
    }
    state.counters["hits/ray"] = double(hits) / double(state.iterations());
}

// All hits from bare Embree: a filter that records each hit and rejects it, so the walk goes on.
struct CountingContext {
    RTCIntersectContext context; // first: Embree hands the filter this pointer
    std::size_t hits;
};

void countAndContinue(const RTCFilterFunctionNArguments* args)
{
    reinterpret_cast<CountingContext*>(args->context)->hits += args->valid[0] != 0;
    args->valid[0] = 0;
}

void BM_RaysEmbreeAllHits(benchmark::State& state)
{
    Fixture& f = fixture();
    CountingContext counting;
    rtcInitIntersectContext(&counting.context);
    counting.context.filter = countAndContinue;
    counting.hits = 0;
    std::size_t k = 0;
    for (auto _ : state) {
        const StrokeRay& ray = f.rays[k++ % f.rays.size()];
        RTCRayHit rh;
        rh.ray.org_x = ray.source.x;
        rh.ray.org_y = ray.source.y;
        rh.ray.org_z = ray.source.z;
        rh.ray.dir_x = ray.direction.x;
        rh.ray.dir_y = ray.direction.y;
        rh.ray.dir_z = ray.direction.z;
        rh.ray.tnear = 0.0f;
        rh.ray.tfar = 1e30f;
        rh.ray.time = 0.0f;
        rh.ray.mask = 0xFFFFFFFFu;
        rh.ray.id = 0;
        rh.ray.flags = 0;
        rh.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rh.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(f.embreeFiltered, &counting.context, &rh);
    }
    state.counters["hits/ray"] = double(counting.hits) / double(state.iterations());
}

// ---- closest points

void closestHost(benchmark::State& state, const std::vector<MPoint>& points)
{
    Fixture& f = fixture();
    std::size_t k = 0;
    MPointOnMesh onMesh;
    for (auto _ : state) {
        f.intersector.getClosestPoint(points[k++ % points.size()], onMesh);
        benchmark::DoNotOptimize(onMesh.faceIndex());
    }
}

void closestCgal(benchmark::State& state, const std::vector<MPoint>& points)
{
    Fixture& f = fixture();
    std::size_t k = 0;
    for (auto _ : state) {
        const MPoint& p = points[k++ % points.size()];
        auto answer = f.cgal->closest_point_and_primitive(Kernel::Point_3(p.x, p.y, p.z));
        benchmark::DoNotOptimize(answer);
    }
}

void BM_ClosestHostIntersector(benchmark::State& state) { closestHost(state, fixture().near); }
void BM_ClosestCgal(benchmark::State& state) { closestCgal(state, fixture().near); }
void BM_ClosestHostIntersectorLoose(benchmark::State& state) { closestHost(state, fixture().loose); }
void BM_ClosestCgalLoose(benchmark::State& state) { closestCgal(state, fixture().loose); }

BENCHMARK(BM_BuildHostAccelerator)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildCgalTree)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildCgalTreeWithDistanceSearch)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildEmbreeTriangles)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RaysHostAllIntersections)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RaysCgalAllIntersections)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RaysEmbreeFirstHit)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RaysEmbreeAllHits)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClosestHostIntersector)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClosestCgal)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClosestHostIntersectorLoose)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClosestCgalLoose)->Unit(benchmark::kMicrosecond);

// The console report, remembering each benchmark's time per iteration for the summary: the
// timed span of a build (it may use every core), the thread's CPU time of a query (one thread;
// unlike wall time, it does not count waits for a busy machine).
class SummaryReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            const double time = run.run_name.time_type == "manual_time" ? run.GetAdjustedRealTime()
                                                                         : run.GetAdjustedCPUTime();
            fSeconds[run.run_name.function_name] = time / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }

    void printSummary() const
    {
        if (fSeconds.empty())
            return;
        std::printf("\nSummary (%zu triangles, %u hardware threads; builds may use all of them, queries use one)\n",
                    fixture().triangles.size(), std::thread::hardware_concurrency());
        line("build", "host accelerator", "BM_BuildHostAccelerator", 1e3, "ms");
        line("", "CGAL AABB tree", "BM_BuildCgalTree", 1e3, "ms");
        line("", "CGAL AABB tree + distance search", "BM_BuildCgalTreeWithDistanceSearch", 1e3, "ms");
        line("", "Embree native triangles", "BM_BuildEmbreeTriangles", 1e3, "ms");
        ratio("host / CGAL tree", "BM_BuildHostAccelerator", "BM_BuildCgalTree");
        ratio("host / CGAL tree + distance search", "BM_BuildHostAccelerator", "BM_BuildCgalTreeWithDistanceSearch");
        ratio("host / Embree native", "BM_BuildHostAccelerator", "BM_BuildEmbreeTriangles");
        line("stroke ray", "host allIntersections (sorted, both ways)", "BM_RaysHostAllIntersections", 1e6, "us");
        line("", "CGAL all_intersections + sort", "BM_RaysCgalAllIntersections", 1e6, "us");
        line("", "Embree first hit (floor)", "BM_RaysEmbreeFirstHit", 1e6, "us");
        ratio("host / CGAL", "BM_RaysHostAllIntersections", "BM_RaysCgalAllIntersections");
        line("", "Embree all hits, unsorted (filter)", "BM_RaysEmbreeAllHits", 1e6, "us");
        ratio("host / Embree first hit", "BM_RaysHostAllIntersections", "BM_RaysEmbreeFirstHit");
        ratio("host / Embree all hits", "BM_RaysHostAllIntersections", "BM_RaysEmbreeAllHits");
        line("closest point", "host MMeshIntersector, near the surface", "BM_ClosestHostIntersector", 1e6, "us");
        line("", "CGAL closest_point_and_primitive, near", "BM_ClosestCgal", 1e6, "us");
        ratio("host / CGAL", "BM_ClosestHostIntersector", "BM_ClosestCgal");
        line("", "host MMeshIntersector, loose shell", "BM_ClosestHostIntersectorLoose", 1e6, "us");
        line("", "CGAL closest_point_and_primitive, loose", "BM_ClosestCgalLoose", 1e6, "us");
        ratio("host / CGAL", "BM_ClosestHostIntersectorLoose", "BM_ClosestCgalLoose");
    }

private:
    void line(const char* group, const char* what, const char* name, double scale, const char* unit) const
    {
        auto it = fSeconds.find(name);
        if (it == fSeconds.end())
            return;
        std::printf("  %-14s %-44s %10.3f %s\n", group, what, it->second * scale, unit);
    }
    void ratio(const char* what, const char* top, const char* bottom) const
    {
        auto a = fSeconds.find(top), b = fSeconds.find(bottom);
        if (a == fSeconds.end() || b == fSeconds.end() || b->second <= 0)
            return;
        std::printf("  %-14s %-44s %10.3f x\n", "", what, a->second / b->second);
    }

    std::map<std::string, double> fSeconds;
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printSummary();
    benchmark::Shutdown();
    return 0;
}
