// tqsarn-demo: drives the headless host the way a user would drive Maya, and shows what its
// viewport sees. It sculpts a dense surface, lays a coarse retopology cage over it, draws a
// tool-style overlay, renders the frame through a camera to a PNG, and writes the scene's
// DAG with world positions as JSON beside it.

#include "host/harness.h"
#include "host/log.h"
#include "host/meshFiles.h"
#include "host/meshGenerators.h"
#include "host/viewport.h"

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MItDag.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MUIDrawManager.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

int usage()
{
    std::cerr << "usage: tqsarn-demo [--out DIR] [--triangles N] [--size WIDTHxHEIGHT]\n";
    return 2;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// What a retopology tool's feedback looks like: a stroke across the surface, its ends
// marked, and a line of help text in the corner.
void drawOverlay(int height)
{
    using MHWRender::MUIDrawManager;
    MUIDrawManager& dm = host::feedbackDrawManager();
    MPointArray stroke;
    for (int i = 0; i <= 40; ++i) {
        const double a = -0.9 + 1.8 * i / 40.0;
        stroke.append(MPoint(std::sin(a) * 1.15, 0.35 * std::sin(3.0 * a), std::cos(a) * 1.15));
    }
    dm.beginDrawInXray();
    dm.setColor(MColor(1.0f, 0.85f, 0.2f));
    dm.setLineWidth(3.0f);
    dm.lineStrip(stroke, false);
    dm.circle(stroke[0], MVector(0.0, 0.0, 1.0), 0.06, true);
    dm.circle(stroke[stroke.length() - 1], MVector(0.0, 0.0, 1.0), 0.06, true);
    dm.endDrawInXray();
    dm.beginDrawable();
    dm.setColor(MColor(0.9f, 0.9f, 0.9f));
    dm.setFontSize(16);
    dm.text2d(MPoint(16.0, height - 28.0), "tqSarn headless viewport: sculpt, retopology cage, stroke");
    dm.endDrawable();
}

} // namespace

int main(int argc, char** argv)
{
    std::filesystem::path out = "out";
    int triangles = 1000000;
    int width = 1280, height = 720;
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--out" && i + 1 < argc)
            out = argv[++i];
        else if (arg == "--triangles" && i + 1 < argc)
            triangles = std::atoi(argv[++i]);
        else if (arg == "--size" && i + 1 < argc) {
            if (std::sscanf(argv[++i], "%dx%d", &width, &height) != 2)
                return usage();
        } else
            return usage();
    }
    if (triangles < 12 || width <= 0 || height <= 0)
        return usage();
    std::error_code ec;
    std::filesystem::create_directories(out, ec);
    if (ec) {
        std::cerr << "tqsarn-demo: cannot create " << out << ": " << ec.message() << "\n";
        return 1;
    }

    host::newScene();
    auto start = std::chrono::steady_clock::now();
    const host::MeshArrays sculpt = host::sculptSurface(triangles);
    const double sculptSeconds = secondsSince(start);
    start = std::chrono::steady_clock::now();
    MStatus status;
    host::addMesh(sculpt, "sculpt", &status);
    if (!status) {
        std::cerr << "tqsarn-demo: cannot add the sculpt:\n" << host::logText();
        return 1;
    }
    host::addMesh(host::uvSphere(1.0f, 16, 10), "cage", &status);
    const double sceneSeconds = secondsSince(start);

    MObject camera = host::makeCamera(MPoint(2.6, 1.7, 4.2), MPoint(0.0, 0.0, 0.0), 40.0, "demoCam", &status);
    if (status)
        host::makeView(width, height, camera, &status);
    if (!status) {
        std::cerr << "tqsarn-demo: cannot make the view:\n" << host::logText();
        return 1;
    }
    drawOverlay(height);

    const std::filesystem::path png = out / "frame.png";
    host::RenderOptions options;
    options.wireframeMeshes = {"cage"};
    host::RenderStats stats;
    if (!host::renderFrame(png.string(), options, &stats)) {
        std::cerr << "tqsarn-demo: rendering failed:\n" << host::logText();
        return 1;
    }

    nlohmann::json scene;
    scene["nodes"] = nlohmann::json::array();
    for (MItDag it; !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        const MPoint origin = MPoint::origin * path.inclusiveMatrix();
        scene["nodes"].push_back({{"path", path.fullPathName().asChar()},
                                  {"depth", it.depth()},
                                  {"worldOrigin", {origin.x, origin.y, origin.z}}});
    }
    scene["frame"] = {{"png", png.string()},
                      {"width", stats.width},
                      {"height", stats.height},
                      {"triangles", stats.triangles},
                      {"records", stats.records},
                      {"renderMilliseconds", stats.renderMilliseconds}};
    const std::filesystem::path json = out / "scene.json";
    std::ofstream(json) << scene.dump(2) << "\n";

    std::cout << "Sculpted a surface of " << sculpt.numPolygons() << " triangles (" << sculpt.numVertices()
              << " vertices) in " << sculptSeconds << " s and added it with a retopology cage in " << sceneSeconds
              << " s.\n"
              << "Rendered " << stats.width << " x " << stats.height << ": " << stats.triangles << " triangles and "
              << stats.records << " draw records in " << stats.renderMilliseconds << " ms.\n"
              << "Frame: " << std::filesystem::absolute(png).string() << "\n"
              << "Scene: " << std::filesystem::absolute(json).string() << "\n";
    return host::logContains(host::LogLevel::kError, "") ? 1 : 0;
}
