// The pixel query of the tool on a real scan densified to a million triangles and more:
// rayHitAtPixel (the tool's every hover and stroke sample) beside the host query it is
// bound by, MFnMesh::allIntersections on the same rays with the same settings.
//
// Each benchmark runs one query per iteration, cycling through the pixels of a grid over the
// view, so its time per iteration is the time per pixel. TQSARN_BENCH_TRIANGLES sets the
// triangle target (default 1,000,000).

#include "kernel/meshQueries.h"

#include <host/harness.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>
#include <host/viewport.h>

#include <maya/M3dView.h>
#include <maya/MBoundingBox.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <utility>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

int triangleTarget()
{
    const char* text = std::getenv("TQSARN_BENCH_TRIANGLES");
    const int n = text ? std::atoi(text) : 0;
    return n > 0 ? n : 1000000;
}

struct Pixel {
    short x, y;
};

struct Fixture {
    MDagPath scan;
    std::vector<Pixel> pixels;
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
    int triangles = 0;
    bool ok = false;

    Fixture()
    {
        host::newScene();
        std::vector<host::MeshArrays> meshes;
        std::string error;
        const std::string path = std::string(TQSARN_SCAN_DIR) + "/refined_elephant.off";
        if (!host::readMeshFile(path, meshes, &error) || meshes.empty()) {
            std::fprintf(stderr, "meshQueryBench: %s: %s\n", path.c_str(), error.c_str());
            return;
        }
        const host::MeshArrays dense = host::densify(meshes[0], triangleTarget());
        triangles = int(dense.counts.size());
        MFnDagNode(host::addMesh(dense, "scan")).getPath(scan);
        scan.extendToShape();
        const MBoundingBox box = MFnDagNode(scan).boundingBox();
        MStatus status;
        MObject camera = host::makeCamera(box.center() + MVector(0.3, 0.4, 1.2) * box.width(), box.center(), 54.43,
                                          "", &status);
        host::setActiveView(host::makeView(1280, 960, camera, &status));
        for (short x = 8; x < 1280; x += 16)
            for (short y = 8; y < 960; y += 16)
                pixels.push_back({x, y});
        // Visited in a scattered order, so that a short run still samples the whole view.
        for (size_t i = 0; i < pixels.size(); ++i)
            std::swap(pixels[i], pixels[(i * 7919u) % pixels.size()]);
        // The accelerator is built once per activation of the tool, not per query.
        MFloatPointArray hits;
        MIntArray faces;
        MVector normal;
        tq::rayHitAtPixel(scan, hits, normal, M3dView::active3dView(), &accel, 640, 480, faces, true);
        ok = true;
    }
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

void BM_RayHitAtPixel(benchmark::State& state)
{
    Fixture& f = fixture();
    if (!f.ok) {
        state.SkipWithError("no scan");
        return;
    }
    const M3dView view = M3dView::active3dView();
    MFloatPointArray hits;
    MIntArray faces;
    MVector normal;
    size_t i = 0;
    int met = 0;
    for (auto _ : state) {
        const Pixel& p = f.pixels[i++ % f.pixels.size()];
        met += tq::rayHitAtPixel(f.scan, hits, normal, view, &f.accel, p.x, p.y, faces, true) ? 1 : 0;
    }
    state.counters["triangles"] = f.triangles;
    state.counters["hitRate"] = benchmark::Counter(double(met) / double(state.iterations()));
}
BENCHMARK(BM_RayHitAtPixel);

// The floor: the same forward, sorted, all-hits query straight on the host, rays precomputed.
void BM_HostAllIntersectionsFloor(benchmark::State& state)
{
    Fixture& f = fixture();
    if (!f.ok) {
        state.SkipWithError("no scan");
        return;
    }
    const M3dView view = M3dView::active3dView();
    std::vector<std::pair<MFloatPoint, MFloatVector>> rays;
    for (const Pixel& p : f.pixels) {
        MPoint source;
        MVector direction;
        view.viewToWorld(p.x, p.y, source, direction);
        rays.emplace_back(MFloatPoint(float(source.x), float(source.y), float(source.z)),
                          MFloatVector(float(direction.x), float(direction.y), float(direction.z)));
    }
    MFnMesh mesh(f.scan);
    MFloatPointArray hits;
    MIntArray faces;
    size_t i = 0;
    for (auto _ : state) {
        const auto& ray = rays[i++ % rays.size()];
        benchmark::DoNotOptimize(mesh.allIntersections(ray.first, ray.second, nullptr, nullptr, true, MSpace::kWorld,
                                                       10000.0f, false, &f.accel, true, hits, nullptr, &faces,
                                                       nullptr, nullptr, nullptr, 0.001f));
    }
    state.counters["triangles"] = f.triangles;
}
BENCHMARK(BM_HostAllIntersectionsFloor);

} // namespace

BENCHMARK_MAIN();
