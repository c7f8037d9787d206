// The tool as a user drives it on a real scan densified to 1M, 5M and 25M triangles, each
// beside the host queries or the bare Embree work it is bound by:
//   - activation (toolOnSetup: the intersector, the ray accelerator and the per-polygon
//     normals, from a cold mesh each time), with the resident bytes per triangle that the scan
//     costs once the tool is up, beside bare Embree building its own scene;
//   - one drag event on a stroke of 300 points (a new sample, then every point re-cast onto
//     the surface), beside 300 host allIntersections with the re-cast's settings;
//   - Enter on two strokes making a 20 x 10 sarn, beside one host allIntersections per new
//     vertex with the projection's settings;
//   - one drag event of a circle drawn as a slicing stroke (Shift, figure 3): every point of the
//     figure shot through the scan, each hit's face tested against the camera;
//   - one drag event of the middle-Shift gesture (the last sarn generated again with other
//     spans), of the relax brush and of the move brush on a retopo mesh of 10k quads: four
//     sarns of 50 x 50.
// The argument is the triangle target in thousands.

#include "kernel/screen.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"

#include <host/commands.h>
#include <host/harness.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>
#include <host/tools.h>
#include <host/viewport.h>

#include <maya/M3dView.h>
#include <maya/MBoundingBox.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MGlobal.h>

#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <malloc.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

MStatus initializePlugin(MObject obj);
MStatus uninitializePlugin(MObject obj);

namespace {

// A view of 1280 x 960 pixels; the strokes run across the scan's body.
constexpr int kStrokeY = 260;
constexpr int kStrokeX0 = 440;
constexpr int kStrokeX1 = 800;

struct Scene {
    MDagPath scan;
    int triangles = 0;
    bool ok = false;
    double bytesBefore = 0; // resident before the scan was made
};

// Resident bytes of the process, after handing freed heap back to the system.
double residentBytes()
{
    malloc_trim(0);
    long pages = 0, resident = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(f);
    }
    return double(resident) * double(sysconf(_SC_PAGESIZE));
}

host::MeshArrays& elephant()
{
    static host::MeshArrays mesh = [] {
        std::vector<host::MeshArrays> meshes;
        std::string error;
        const std::string path = std::string(TQSARN_SCAN_DIR) + "/refined_elephant.off";
        if (!host::readMeshFile(path, meshes, &error) || meshes.empty())
            std::fprintf(stderr, "toolBench: %s: %s\n", path.c_str(), error.c_str());
        return meshes.empty() ? host::MeshArrays() : meshes[0];
    }();
    return mesh;
}

// One scene per size, made when a benchmark of that size first runs; a new size replaces it.
Scene& sceneOf(int thousands)
{
    static std::unique_ptr<Scene> scene;
    static int madeFor = -1;
    if (madeFor == thousands)
        return *scene;
    scene = std::make_unique<Scene>();
    madeFor = thousands;
    if (!host::isPluginLoaded("tqSarn") && !host::loadLinkedPlugin("tqSarn", initializePlugin, uninitializePlugin))
        return *scene;
    host::setToolTo("selectSuperContext");
    host::newScene();
    if (elephant().counts.empty())
        return *scene;
    scene->bytesBefore = residentBytes();
    const host::MeshArrays dense = host::densifyExactly(elephant(), thousands * 1000);
    scene->triangles = int(dense.counts.size());
    MFnDagNode(host::addMesh(dense, "scan")).getPath(scene->scan);
    scene->scan.extendToShape();
    host::createNode("tqSarn", "store");
    host::connect(scene->scan.partialPathName().asChar() + std::string(".outMesh"), "store.tqSarnMesh");
    const MBoundingBox box = MFnDagNode(scene->scan).boundingBox();
    MStatus status;
    MObject camera =
        host::makeCamera(box.center() + MVector(0.0, 0.0, 1.6 * box.width()), box.center(), 54.43, "", &status);
    host::setActiveView(host::makeView(1280, 960, camera, &status));
    MGlobal::setOptionVarValue("tq_uspan", 20);
    MGlobal::setOptionVarValue("tq_vspan", 10);
    scene->ok = status;
    return *scene;
}

// The scene of the benchmark's size; null, with the benchmark skipped, when there is no scan.
Scene* sceneFor(benchmark::State& state)
{
    Scene& s = sceneOf(int(state.range(0)));
    if (s.ok)
        return &s;
    state.SkipWithError("no scan");
    return nullptr;
}

std::string activeTool(bool fresh)
{
    static std::string name;
    if (fresh || name.empty())
        name = host::runCommand("tqSarnContext").text;
    return name;
}

int pixelOf(int i, int count) { return kStrokeX0 + (kStrokeX1 - kStrokeX0) * i / (count - 1); }

void BM_Activation(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    MFnMesh mesh(s.scan);
    double bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        // A new context has no intersector yet; the one before goes with what it holds.
        host::setToolTo("selectSuperContext");
        const std::string previous = activeTool(false);
        const std::string tool = activeTool(true);
        host::runCommand("deleteUI -toolContext " + previous);
        mesh.freeCachedIntersectionAccelerator();
        state.ResumeTiming();
        host::setToolTo(tool);
        state.PauseTiming();
        // What the scan costs the host once the tool is up: the mesh, its accelerator, its
        // normals on the store.
        bytes = residentBytes() - s.bytesBefore;
        state.ResumeTiming();
    }
    host::setToolTo("selectSuperContext");
    state.counters["triangles"] = s.triangles;
    state.counters["bytes/triangle"] = bytes / s.triangles;
}

void BM_DragEventOn300PointStroke(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    host::setToolTo(activeTool(false));
    constexpr int kPoints = 300;
    double strokePoints = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        host::mousePress(kStrokeX0, kStrokeY);
        for (int i = 0; i < kPoints - 1; ++i)
            host::mouseDrag(pixelOf(i, kPoints), kStrokeY);
        state.ResumeTiming();
        host::mouseDrag(kStrokeX1, kStrokeY);
        state.PauseTiming();
        host::mouseRelease(kStrokeX1, kStrokeY);
        MIntArray sizes;
        tq::readSizes(tq::findStoreNode(), sizes);
        strokePoints = sizes.length() ? sizes[sizes.length() - 1] : 0;
        host::pressKey(host::Key::kBackspace);
        state.ResumeTiming();
    }
    host::setToolTo("selectSuperContext");
    state.counters["triangles"] = s.triangles;
    state.counters["strokePoints"] = strokePoints;
}

// A circle of 150 pixels drawn as a slicing stroke: each drag event builds the figure anew and
// shoots its 26 points through the scan.
void BM_SliceCircleDragEvent(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    const std::string tool = activeTool(false);
    host::setToolTo(tool);
    host::runCommand("tqSarnContext -e -figure 3 " + tool);
    const host::Modifiers shift{true, false};
    const int centreX = (kStrokeX0 + kStrokeX1) / 2;
    host::mousePress(centreX, kStrokeY, host::MouseButton::kLeft, shift);
    host::mouseDrag(centreX, kStrokeY, shift);
    int x = 0;
    for (auto _ : state)
        host::mouseDrag(centreX + 150 + (x++ % 2), kStrokeY, shift);
    host::mouseRelease(centreX + 150, kStrokeY, shift);
    host::pressKey(host::Key::kBackspace);
    host::runCommand("tqSarnContext -e -figure 0 " + tool);
    host::setToolTo("selectSuperContext");
    state.counters["triangles"] = s.triangles;
}

// The floor of activation: bare Embree building its own scene over the same triangles, with
// its default settings (the host's accelerator is the tool's share of activation).
void BM_FloorEmbreeSceneBuild(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    MFnMesh mesh(scene->scan);
    MIntArray counts, connects;
    mesh.getVertices(counts, connects);
    const float* points = mesh.getRawPoints(nullptr);
    RTCDevice device = rtcNewDevice(nullptr);
    for (auto _ : state) {
        RTCScene embree = rtcNewScene(device);
        RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, points, 0,
                                   3 * sizeof(float), unsigned(mesh.numVertices()));
        auto* index = static_cast<unsigned*>(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0,
                                                                     RTC_FORMAT_UINT3, 3 * sizeof(unsigned),
                                                                     counts.length()));
        for (unsigned i = 0; i < connects.length(); ++i)
            index[i] = unsigned(connects[i]);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(embree, geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(embree);
        state.PauseTiming();
        rtcReleaseScene(embree);
        state.ResumeTiming();
    }
    rtcReleaseDevice(device);
    state.counters["triangles"] = scene->triangles;
}

// The floor of a drag event: the re-cast of 300 surface points towards the eye, one host
// allIntersections each, with the same settings.
void BM_Floor300StrokeRecasts(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    const M3dView view = M3dView::active3dView();
    MFnMesh mesh(s.scan);
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
    MFloatPointArray points;
    MFloatPointArray hits;
    for (int i = 0; i < 300; ++i) {
        MPoint source;
        MVector direction;
        view.viewToWorld(short(pixelOf(i, 300)), short(kStrokeY), source, direction);
        if (mesh.allIntersections(MFloatPoint(float(source.x), float(source.y), float(source.z)),
                                  MFloatVector(float(direction.x), float(direction.y), float(direction.z)), nullptr,
                                  nullptr, true, MSpace::kWorld, 10000.0f, true, &accel, true, hits, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, 0.0001f))
            points.append(hits[0]);
    }
    const MFloatPoint eye = tq::cameraEyePoint();
    for (auto _ : state) {
        for (const MFloatPoint& p : points)
            benchmark::DoNotOptimize(mesh.allIntersections(p, eye - p, nullptr, nullptr, false, MSpace::kWorld, 100.0f,
                                                           true, &accel, true, hits, nullptr, nullptr, nullptr,
                                                           nullptr, nullptr, 0.01f));
    }
    state.counters["triangles"] = s.triangles;
    state.counters["points"] = points.length();
}

void BM_EnterMakesA20x10Sarn(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    host::setToolTo(activeTool(false));
    MGlobal::clearSelectionList();
    for (auto _ : state) {
        state.PauseTiming();
        for (int y : {kStrokeY, kStrokeY - 80}) {
            host::mousePress(kStrokeX0, y);
            for (int i = 0; i < 40; ++i)
                host::mouseDrag(pixelOf(i, 40), y);
            host::mouseRelease(kStrokeX1, y);
        }
        state.ResumeTiming();
        host::pressKey(host::Key::kEnter);
        state.PauseTiming();
        host::undo();
        host::flushUndoQueue();
        MGlobal::clearSelectionList();
        state.ResumeTiming();
    }
    host::setToolTo("selectSuperContext");
    state.counters["triangles"] = s.triangles;
}

// The floor of Enter: one host allIntersections along a normal for each of the 21 x 11 new
// vertices, with the projection's settings.
void BM_FloorSarnVertexProjections(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    const M3dView view = M3dView::active3dView();
    MFnMesh mesh(s.scan);
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
    std::vector<std::pair<MFloatPoint, MFloatVector>> rays;
    MFloatPointArray hits;
    MFloatArray params;
    MIntArray faces;
    for (int row = 0; row < 11; ++row) {
        for (int i = 0; i < 21; ++i) {
            MPoint source;
            MVector direction;
            view.viewToWorld(short(pixelOf(i, 21)), short(kStrokeY - 8 * row), source, direction);
            const MFloatPoint from(float(source.x), float(source.y), float(source.z));
            const MFloatVector along(float(direction.x), float(direction.y), float(direction.z));
            if (mesh.allIntersections(from, along, nullptr, nullptr, true, MSpace::kWorld, 10000.0f, false, &accel,
                                      true, hits, nullptr, nullptr, nullptr, nullptr, nullptr, 0.0001f))
                rays.emplace_back(hits[0] - along * 0.01f, along);
        }
    }
    for (auto _ : state) {
        for (const auto& ray : rays)
            benchmark::DoNotOptimize(mesh.allIntersections(ray.first, ray.second, nullptr, nullptr, false,
                                                           MSpace::kWorld, 100.0f, true, &accel, false, hits, &params,
                                                           &faces, nullptr, nullptr, nullptr));
    }
    state.counters["triangles"] = s.triangles;
    state.counters["rays"] = double(rays.size());
}

// Four sarns of 50 x 50 quads, side by side across the body, on one retopo mesh: 10k quads,
// the last sarn the one a middle-Shift drag changes. Made once per scene; false when the
// strokes did not give the quads.
bool tenThousandQuads(const Scene& s, MDagPath& retopo)
{
    static const Scene* madeOn = nullptr;
    static MDagPath made;
    if (madeOn != &s) {
        madeOn = &s;
        MGlobal::clearSelectionList();
        // Quads of a few pixels: vertices merge only where they meet exactly.
        MGlobal::setOptionVarValue("tq_mergThreshold", 1e-6);
        MGlobal::setOptionVarValue("tq_uspan", 50);
        MGlobal::setOptionVarValue("tq_vspan", 50);
        for (int band = 0; band < 4; ++band) {
            for (int y : {kStrokeY - 45 * band, kStrokeY - 45 * band - 35}) {
                host::mousePress(kStrokeX0, y);
                for (int i = 0; i < 40; ++i)
                    host::mouseDrag(pixelOf(i, 40), y);
                host::mouseRelease(kStrokeX1, y);
            }
            host::pressKey(host::Key::kEnter);
        }
        host::flushUndoQueue();
        made = tq::getActiveMeshPath();
    }
    retopo = made;
    return retopo.isValid() && MFnMesh(retopo).numPolygons() == 4 * 50 * 50;
}

void BM_SpanDragEventOn10kQuads(benchmark::State& state)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    host::setToolTo(activeTool(false));
    MDagPath retopo;
    if (!tenThousandQuads(s, retopo)) {
        state.SkipWithError("the four sarns were not made");
        return;
    }
    const host::Modifiers shift{true, false};
    constexpr int kX = 640, kY = 480;
    int spans = 0;
    for (auto _ : state) {
        state.PauseTiming();
        host::mousePress(kX, kY, host::MouseButton::kMiddle, shift);
        state.ResumeTiming();
        host::mouseDrag(kX - 25, kY, shift); // one span fewer
        state.PauseTiming();
        spans = MGlobal::optionVarIntValue("tq_vspan");
        host::mouseRelease(kX - 25, kY, shift);
        host::undo();
        host::flushUndoQueue();
        MGlobal::setOptionVarValue("tq_uspan", 50);
        MGlobal::setOptionVarValue("tq_vspan", 50);
        state.ResumeTiming();
    }
    host::setToolTo("selectSuperContext");
    MGlobal::removeOptionVar("tq_mergThreshold");
    state.counters["triangles"] = s.triangles;
    state.counters["quads"] = MFnMesh(retopo).numPolygons();
    state.counters["spans"] = spans;
}

// The world radius that catches about 200 vertices of the 10k quads: the disc whose area
// holds 200 vertices at the mesh's mean density.
double brushRadiusFor200(const MDagPath& retopo)
{
    double area = 0.0;
    for (MItMeshPolygon it(retopo); !it.isDone(); it.next()) {
        double a = 0.0;
        it.getArea(a, MSpace::kWorld);
        area += a;
    }
    const int vertices = MFnMesh(retopo).numVertices();
    return vertices ? std::sqrt(200.0 * area / (M_PI * vertices)) : 0.0;
}

// One drag event of a brush on the 10k quads, the press and release untimed, then undone.
void brushDragEvent(benchmark::State& state, host::Modifiers held)
{
    Scene* scene = sceneFor(state);
    if (!scene)
        return;
    Scene& s = *scene;
    host::setToolTo(activeTool(false));
    MDagPath retopo;
    if (!tenThousandQuads(s, retopo)) {
        state.SkipWithError("the four sarns were not made");
        return;
    }
    const double radius = brushRadiusFor200(retopo);
    MGlobal::setOptionVarValue("tq_sarnRadius", radius / 0.05);
    MGlobal::setOptionVarValue("tq_sarnTweakR", int(radius / 0.03 + 0.5));
    constexpr int kX = 620, kY = kStrokeY - 62; // inside the second band
    double moved = 0;
    for (auto _ : state) {
        state.PauseTiming();
        MPointArray before;
        MFnMesh(retopo).getPoints(before, MSpace::kWorld);
        host::mousePress(kX, kY, host::MouseButton::kMiddle, held);
        state.ResumeTiming();
        host::mouseDrag(kX + 3, kY, held);
        state.PauseTiming();
        MPointArray after;
        MFnMesh(retopo).getPoints(after, MSpace::kWorld);
        moved = 0;
        for (unsigned v = 0; v < after.length() && v < before.length(); ++v)
            moved += after[v].isEquivalent(before[v], 0.0) ? 0 : 1;
        host::mouseRelease(kX + 3, kY, held);
        host::undo();
        host::flushUndoQueue();
        state.ResumeTiming();
    }
    // The keys are let go: the next benchmark's strokes would otherwise be brush strokes.
    host::holdModifiers({});
    host::setToolTo("selectSuperContext");
    state.counters["quads"] = MFnMesh(retopo).numPolygons();
    state.counters["vertices moved"] = moved;
}

void BM_RelaxDragEventOn10kQuads(benchmark::State& state) { brushDragEvent(state, {true, true}); }
void BM_MoveDragEventOn10kQuads(benchmark::State& state) { brushDragEvent(state, {}); }

// Sizes in thousands of triangles; each size's benchmarks run together on one scene.
BENCHMARK(BM_Activation)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FloorEmbreeSceneBuild)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_DragEventOn300PointStroke)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Floor300StrokeRecasts)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EnterMakesA20x10Sarn)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_FloorSarnVertexProjections)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SliceCircleDragEvent)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_SpanDragEventOn10kQuads)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_RelaxDragEventOn10kQuads)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_MoveDragEventOn10kQuads)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Activation)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_FloorEmbreeSceneBuild)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_DragEventOn300PointStroke)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Floor300StrokeRecasts)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EnterMakesA20x10Sarn)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FloorSarnVertexProjections)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK(BM_RelaxDragEventOn10kQuads)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Activation)->Arg(25000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_FloorEmbreeSceneBuild)->Arg(25000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_DragEventOn300PointStroke)->Arg(25000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Floor300StrokeRecasts)->Arg(25000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EnterMakesA20x10Sarn)->Arg(25000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FloorSarnVertexProjections)->Arg(25000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RelaxDragEventOn10kQuads)->Arg(25000)->Unit(benchmark::kMillisecond)->Iterations(10);

BENCHMARK_MAIN();
