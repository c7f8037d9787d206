// The tool command on a retopo mesh of 10,000 quads (a 100 x 100 grid):
//
//   append do      attach a patch node, feed it the whole mesh, finalize: what every new
//                  sarn costs beside generating its quads
//   append undo    detach the node (the mesh reads its former input again) and put the
//   + redo         store back; then attach a node of the same name and feed it again
//   tweak undo     write every vertex's position back, and again forward, with the anchor
//   + redo         row and shadow following
//
// TQSARN_BENCH_GRID overrides the grid's side.

#include "command/tqSarnToolCmd.h"
#include "kernel/patchPlumbing.h"
#include "store/storeLookup.h"
#include "store/storeWrites.h"

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPlugin.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

int gridSide()
{
    const char* text = std::getenv("TQSARN_BENCH_GRID");
    const int n = text ? std::atoi(text) : 0;
    return n > 0 ? n : 100;
}

// A new scene with a store and a selected retopo grid; returns the grid's shape.
MDagPath newRetopoScene()
{
    if (!host::isPluginLoaded("tqSarn") && !host::loadLinkedPlugin("tqSarn", initializePlugin, uninitializePlugin)) {
        std::fprintf(stderr, "could not load the plug-in:\n%s", host::logText().c_str());
        std::exit(1);
    }
    host::newScene();
    host::flushUndoQueue();
    host::createNode("tqSarn", "store");
    const int side = gridSide();
    MDagPath mesh;
    MFnDagNode(host::addMesh(host::gridPlane(float(side), float(side), side, side), "retopo")).getPath(mesh);
    mesh.extendToShape();
    host::select({"retopo"});
    tq::clearShadowIndices();
    tq::writePlayerVertices(MIntArray(1, 1));
    return mesh;
}

// One append step, finalized, as the context makes it.
void appendStep(const MDagPath& mesh, const MString& name)
{
    auto* cmd = new tqSarnToolCmd();
    cmd->saveStoreState("undo");
    MObject node;
    tq::attachPatchNode(name, mesh, node);
    MFnMesh fn(mesh);
    tq::PatchFeed feed;
    tq::readPatchFeed(fn, feed);
    cmd->setAfterFeed(feed);
    cmd->setMode(tqSarnToolCmd::kAppendPatch);
    cmd->setPatchName(name);
    cmd->writeAfterFeed(node);
    cmd->saveStoreState("redo");
    cmd->finalize();
}

void BM_AppendDo(benchmark::State& state)
{
    const MDagPath mesh = newRetopoScene();
    for (auto _ : state) {
        appendStep(mesh, "tqPatch1");
        state.PauseTiming();
        host::undo();
        host::flushUndoQueue();
        state.ResumeTiming();
    }
    state.counters["quads"] = gridSide() * gridSide();
}
BENCHMARK(BM_AppendDo)->Unit(benchmark::kMillisecond);

void BM_AppendUndoRedo(benchmark::State& state)
{
    const MDagPath mesh = newRetopoScene();
    appendStep(mesh, "tqPatch1");
    // Each side is read back, as the viewport does after an undo or a redo.
    for (auto _ : state) {
        host::undo();
        benchmark::DoNotOptimize(MFnMesh(mesh).numPolygons());
        host::redo();
        benchmark::DoNotOptimize(MFnMesh(mesh).numPolygons());
    }
    state.counters["quads"] = gridSide() * gridSide();
}
BENCHMARK(BM_AppendUndoRedo)->Unit(benchmark::kMillisecond);

void BM_TweakUndoRedo(benchmark::State& state)
{
    const MDagPath mesh = newRetopoScene();
    MPointArray before, after;
    MItGeometry(mesh).allPositions(before, MSpace::kWorld);
    for (const MPoint& p : before)
        after.append(p + MVector(0, 0.1, 0));
    auto* cmd = new tqSarnToolCmd();
    cmd->applyPositions(mesh, after);
    cmd->setTweakPositions(before, after);
    cmd->finalize();
    // Each side is read back, as the viewport does after an undo or a redo.
    for (auto _ : state) {
        host::undo();
        benchmark::DoNotOptimize(MFnMesh(mesh).numPolygons());
        host::redo();
        benchmark::DoNotOptimize(MFnMesh(mesh).numPolygons());
    }
    state.counters["quads"] = gridSide() * gridSide();
}
BENCHMARK(BM_TweakUndoRedo)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
