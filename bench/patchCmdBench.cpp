// Patch node benchmarks on a retopo mesh of 10,000 quads (a 100 x 100 grid):
//
//   attach    tqPatchCmd on a mesh without history (duplicate, Orig shape, connections),
//             and the same followed by the first evaluation of the mesh through the node
//   rebuild   tqPatchNode making the 10k-quad mesh from its stored arrays, read through the
//             mesh it feeds (the arrays stay; each iteration dirties the node and reads)
//
// TQSARN_BENCH_GRID overrides the grid's side.

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int gridSide()
{
    const char* text = std::getenv("TQSARN_BENCH_GRID");
    const int n = text ? std::atoi(text) : 0;
    return n > 0 ? n : 100;
}

void loadPlugin()
{
    if (host::isPluginLoaded("tqSarn"))
        return;
    if (!host::loadLinkedPlugin("tqSarn", initializePlugin, uninitializePlugin)) {
        std::fprintf(stderr, "could not load the plug-in:\n%s", host::logText().c_str());
        std::exit(1);
    }
}

MFnMesh meshFn(const std::string& name)
{
    MSelectionList list;
    MDagPath path;
    list.add(name.c_str());
    list.getDagPath(0, path);
    return MFnMesh(path);
}

// A new scene holding the grid "retopo" and nothing else.
void newGridScene()
{
    host::newScene();
    host::clearLog();
    host::addMesh(host::gridPlane(10.0f, 10.0f, gridSide(), gridSide()), "retopo");
}

void BM_PatchCmdAttach(benchmark::State& state)
{
    loadPlugin();
    const bool evaluate = state.range(0) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        newGridScene();
        state.ResumeTiming();
        host::CommandOutput out = host::runCommand("tqPatchCmd -m retopo -o tqPatch", false);
        if (evaluate)
            benchmark::DoNotOptimize(meshFn("retopo").numVertices());
        if (!out.status || out.text != "tqPatch")
            state.SkipWithError("tqPatchCmd failed");
    }
    state.SetLabel(evaluate ? "attach + first evaluation" : "attach");
}
BENCHMARK(BM_PatchCmdAttach)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_PatchNodeRebuild(benchmark::State& state)
{
    loadPlugin();
    newGridScene();
    host::runCommand("tqPatchCmd -m retopo -o tqPatch", false);
    MFnMesh fn = meshFn("retopo");
    MPointArray points;
    fn.getPoints(points);
    MIntArray counts, connects, uvCounts, uvIds, smooth, edges;
    fn.getVertices(counts, connects);
    MFloatArray u, v;
    fn.getUVs(u, v);
    fn.getAssignedUVs(uvCounts, uvIds);
    for (int e = 0; e < fn.numEdges(); ++e) {
        edges.append(e);
        smooth.append(1);
    }
    MFnIntArrayData ints;
    MFnFloatArrayData floats;
    MFnPointArrayData pointData;
    host::setInt("tqPatch.numpolys", fn.numPolygons());
    host::setInt("tqPatch.numverts", fn.numVertices());
    host::setData("tqPatch.vertexarray", pointData.create(points));
    host::setData("tqPatch.polycount", ints.create(counts));
    host::setData("tqPatch.polyconnect", ints.create(connects));
    host::setData("tqPatch.uarray", floats.create(u));
    host::setData("tqPatch.varray", floats.create(v));
    host::setData("tqPatch.hardenvalues", ints.create(smooth));
    host::setData("tqPatch.edgesharden", ints.create(edges));
    host::setData("tqPatch.polycountUV", ints.create(uvCounts));
    const MObject uvIdData = ints.create(uvIds);

    for (auto _ : state) {
        // The feed's last write; the arrays are shared, so the write itself costs nothing.
        host::setData("tqPatch.polyconnUV", uvIdData);
        benchmark::DoNotOptimize(meshFn("retopo").numPolygons());
    }
    if (meshFn("retopo").numPolygons() != int(counts.length()) || host::logContains(host::LogLevel::kError, ""))
        state.SkipWithError("the rebuilt mesh is not the stored one");
    state.SetItemsProcessed(state.iterations() * int64_t(counts.length()));
}
BENCHMARK(BM_PatchNodeRebuild)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
