#include "player.h"

#include "scanInfo.h"
#include "session.h"

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshFiles.h>
#include <host/sceneFiles.h>
#include <host/tools.h>
#include <host/viewport.h>

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

#ifndef TQSARN_PLUGIN_PATH
#define TQSARN_PLUGIN_PATH ""
#endif
#ifndef TQSARN_SCAN_DIR
#define TQSARN_SCAN_DIR ""
#endif

namespace tqsarn {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Thrown inside play for bad input found while playing; caught there and turned into the
// message and the exit code.
struct PlayError {
    int code;
    std::string message;
};

std::string pointText(const MPoint& p)
{
    std::ostringstream out;
    out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
    return out.str();
}

json logSince(std::size_t first)
{
    json lines = json::array();
    const auto& entries = host::logEntries();
    for (std::size_t i = first; i < entries.size(); ++i) {
        const char* level = entries[i].level == host::LogLevel::kError     ? "error"
                            : entries[i].level == host::LogLevel::kWarning ? "warning"
                                                                           : "info";
        lines.push_back({{"level", level}, {"text", entries[i].text}});
    }
    return lines;
}

json optionVarText(const char* name)
{
    bool exists = false;
    const MString value = MGlobal::optionVarStringValue(name, &exists);
    return exists ? json(value.asChar()) : json(nullptr);
}

// The lines the overlay's panel draws for an info line: a comma starts a new line, and empty
// pieces make none. An unset line has none.
json panelLines(const char* name)
{
    bool exists = false;
    const MString value = MGlobal::optionVarStringValue(name, &exists);
    MStringArray lines;
    if (exists)
        value.split(',', lines);
    json out = json::array();
    for (unsigned int i = 0; i < lines.length(); ++i)
        out.push_back(lines[i].asChar());
    return out;
}

// A file named by a session: absolute, next to the session, or in the scans folder.
std::string resolveFile(const std::string& name, const std::string& sessionPath, std::vector<std::string>* tried)
{
    std::vector<fs::path> candidates;
    const fs::path given(name);
    if (given.is_absolute()) {
        candidates.push_back(given);
    } else {
        candidates.push_back(fs::path(sessionPath).parent_path() / given);
        if (const char* dir = std::getenv("TQSARN_SCAN_DIR"); dir && *dir)
            candidates.push_back(fs::path(dir) / given);
        if (*TQSARN_SCAN_DIR)
            candidates.push_back(fs::path(TQSARN_SCAN_DIR) / given);
    }
    for (const fs::path& c : candidates) {
        if (tried)
            tried->push_back(c.string());
        std::error_code ec;
        if (fs::is_regular_file(c, ec))
            return c.string();
    }
    return std::string();
}

// Reads a scan and refuses one a retopology cannot stand on.
host::MeshArrays readScan(const std::string& path, ScanInfo* infoOut)
{
    std::error_code ec;
    if (!fs::exists(path, ec))
        throw PlayError{kExitBadScan, "the scan " + path + " does not exist"};
    std::vector<host::MeshArrays> meshes;
    std::string error;
    if (!host::readMeshFile(path, meshes, &error))
        throw PlayError{kExitBadScan, "cannot read the scan " + path + ": " + error};
    host::MeshArrays mesh = joinMeshes(meshes);
    std::string why;
    if (mesh.numPolygons() == 0)
        throw PlayError{kExitBadScan, "the scan " + path + " has no polygons"};
    if (!host::validate(mesh, &why))
        throw PlayError{kExitBadScan, "the scan " + path + " is not a valid mesh: " + why};
    const ScanInfo info = scanInfo(mesh);
    if (info.nonManifoldEdges > 0)
        throw PlayError{kExitBadScan, "the scan " + path + " is not manifold: " +
                                          std::to_string(info.nonManifoldEdges) +
                                          (info.nonManifoldEdges == 1 ? " edge is" : " edges are") +
                                          " shared by three or more polygons (see `tqsarn info`)"};
    if (infoOut)
        *infoOut = info;
    return mesh;
}

// Strings, numbers and integers as the optionVar command's -sv, -fv and -iv; booleans as 0 or 1.
bool setOptionVar(const std::string& name, const json& value)
{
    if (value.is_string())
        return MGlobal::setOptionVarValue(name.c_str(), MString(value.get<std::string>().c_str()));
    if (value.is_number_float())
        return MGlobal::setOptionVarValue(name.c_str(), value.get<double>());
    return MGlobal::setOptionVarValue(name.c_str(), value.is_boolean() ? int(value.get<bool>()) : value.get<int>());
}

MDagPath shapeOf(const MObject& transform)
{
    MDagPath path;
    MDagPath::getAPathTo(transform, path);
    path.extendToShape();
    return path;
}

class Player {
public:
    Player(const PlayOptions& options, const Session& session, std::ostream& out, std::ostream& err)
        : fOptions(options), fSession(session), fOut(out), fErr(err)
    {
    }

    int run();

private:
    void setUp();
    void playStep(const Step& step, json& record);
    MStatus toPixel(const Step& step, const json& point, const std::string& pointer, short& x, short& y);
    MDagPath retopoMesh() const;
    json meshCounts() const;
    json quality(const MDagPath& retopo) const;
    void writeOutputs(json& report);
    void progress(std::size_t index, const Step& step);

    const PlayOptions& fOptions;
    const Session& fSession;
    std::ostream& fOut;
    std::ostream& fErr;
    Clock::time_point fStart = Clock::now();
    std::string fScanPath;
    ScanInfo fScanInfo;
    MDagPath fScan;
    host::ViewId fView = 0;
    int fCameras = 0;
    std::string fContext; // the active tool's context, empty when there is none
    bool fProgressShown = false;
    json fSetup = json::object();
    std::vector<std::string> fOutputs;
};

// The tool's launch script: on the script path (MAYA_SCRIPT_PATH), beside the plug-in as
// the module installs it (plug-ins/ and scripts/ side by side), or in the source tree.
std::string launchScript(const std::string& pluginPath)
{
    std::vector<fs::path> candidates;
    if (std::string found = host::findScript("tqSarnLaunch.mel"); !found.empty())
        candidates.emplace_back(found);
    candidates.push_back(fs::path(pluginPath).parent_path().parent_path() / "scripts" / "tqSarnLaunch.mel");
    candidates.push_back(fs::path(TQSARN_SCRIPT_DIR) / "tqSarnLaunch.mel");
    for (const fs::path& c : candidates) {
        std::error_code ec;
        if (fs::is_regular_file(c, ec))
            return fs::absolute(c).lexically_normal().string();
    }
    return {};
}

void Player::setUp()
{
    const std::size_t logStart = host::logEntries().size();
    // The scan, before anything else: a bad one is the user's to fix, not the host's. An
    // empty scene has none (a --scan still gives one).
    const bool emptyScene = fOptions.scanPath.empty() && fSession.document.value("emptyScene", false);
    std::string scanName = fOptions.scanPath;
    if (scanName.empty() && !emptyScene) {
        if (!fSession.document.contains("scan"))
            throw PlayError{kExitBadScan, "no scan: give --scan FILE or \"scan\" in the session"};
        const std::string named = fSession.document["scan"].get<std::string>();
        std::vector<std::string> tried;
        scanName = resolveFile(named, fSession.path, &tried);
        if (scanName.empty()) {
            std::string list;
            for (const std::string& t : tried)
                list += "\n  " + t;
            throw PlayError{kExitBadScan, fSession.describe("/scan", "the scan " + named + " does not exist; looked for:" + list)};
        }
    }
    fScanPath = scanName;
    host::MeshArrays scan;
    if (emptyScene) {
        for (int axis = 0; axis < 3; ++axis) {
            fScanInfo.min[axis] = -1.0;
            fScanInfo.max[axis] = 1.0;
        }
    } else {
        scan = readScan(fScanPath, &fScanInfo);
    }

    host::setToolTo("selectSuperContext");
    host::newScene();
    host::flushUndoQueue();
    const std::string pluginPath = !fOptions.pluginPath.empty()                  ? fOptions.pluginPath
                                   : std::getenv("TQSARN_PLUGIN") && *std::getenv("TQSARN_PLUGIN") ? std::getenv("TQSARN_PLUGIN")
                                                                                 : TQSARN_PLUGIN_PATH;
    std::vector<std::string> plugins{pluginPath};
    plugins.insert(plugins.end(), fOptions.extraPlugins.begin(), fOptions.extraPlugins.end());
    for (const std::string& plugin : plugins) {
        if (host::isPluginLoaded(fs::path(plugin).stem().string()))
            continue;
        if (!host::loadPlugin(plugin))
            throw PlayError{kExitHostFailure, "cannot load the plug-in " + plugin + ":\n" + host::logText()};
    }

    MStatus status;
    MObject scanTransform;
    if (!emptyScene) {
        scanTransform = host::addMesh(scan, "scan", &status);
        if (!status)
            throw PlayError{kExitHostFailure, "cannot add the scan to the scene:\n" + host::logText()};
        fScan = shapeOf(scanTransform);
    }

    // The retopo mesh, the option variables and the view; then the tool's launch script (or,
    // without it, the same steps in C++): the store, its link to the scan, the tool.
    std::vector<std::string> selection;
    if (fSession.document.contains("retopo")) {
        const std::string named = fSession.document["retopo"].get<std::string>();
        const std::string path = resolveFile(named, fSession.path, nullptr);
        if (path.empty())
            throw PlayError{kExitBadSession, fSession.describe("/retopo", "the mesh " + named + " does not exist")};
        std::string error;
        const MObject retopo = host::importMesh(path, &status, &error);
        if (!status)
            throw PlayError{kExitBadSession, fSession.describe("/retopo", "cannot read " + path + ": " + error)};
        selection.push_back(host::nodeName(retopo));
    }
    host::select(selection);
    if (fSession.document.contains("optionVars"))
        for (auto& [name, value] : fSession.document["optionVars"].items())
            if (!setOptionVar(name, value))
                throw PlayError{kExitBadSession, fSession.describe("/optionVars", "\"" + name + "\" cannot be set as an option variable")};

    // The first view looks at the scan from the front right, above.
    const double diagonal = std::max(fScanInfo.diagonal(), 1e-6);
    const MPoint centre((fScanInfo.min[0] + fScanInfo.max[0]) / 2, (fScanInfo.min[1] + fScanInfo.max[1]) / 2,
                        (fScanInfo.min[2] + fScanInfo.max[2]) / 2);
    const MObject camera = host::makeCamera(centre + MVector(0.5, 0.4, 1.0).normal() * diagonal * 1.4, centre, 40.0,
                                            "sessionCamera", &status);
    int width = 960, height = 540;
    if (fSession.document.contains("view")) {
        width = fSession.document["view"].value("width", width);
        height = fSession.document["view"].value("height", height);
    }
    if (status)
        fView = host::makeView(width, height, camera, &status);
    if (status)
        status = host::setActiveView(fView);
    if (!status)
        throw PlayError{kExitHostFailure, "cannot make the view:\n" + host::logText()};

    bool hasContext = false;
    for (const std::string& plugin : host::loadedPlugins()) {
        const auto commands = host::pluginRegistrations(plugin).contextCommands;
        hasContext = hasContext || std::count(commands.begin(), commands.end(), fOptions.contextCommand) > 0;
    }
    const std::string launch =
        hasContext && !emptyScene && fOptions.contextCommand == "tqSarnContext" ? launchScript(pluginPath) : "";
    if (!launch.empty()) {
        // As a Maya user starts it: the scan selected first, then the retopo mesh if any.
        host::addScriptDirectory(fs::path(launch).parent_path().string());
        std::vector<std::string> picked{host::nodeName(scanTransform)};
        picked.insert(picked.end(), selection.begin(), selection.end());
        host::select(picked);
        // Each play is a Maya session of its own: a context an earlier play in this process
        // made (kept in the script's global) keeps the intersector of that play's scan.
        const host::CommandOutput made = host::runCommand(
            "source \"" + launch + "\"; global string $gTqSarnContext; $gTqSarnContext = \"\"; tqSarnLaunch", false);
        if (!made.status)
            throw PlayError{kExitHostFailure, "the launch script " + launch + " failed:\n" + host::logText()};
        fContext = made.text;
    } else if (emptyScene && hasContext) {
        const host::CommandOutput made = host::runCommand(fOptions.contextCommand, false);
        if (!made.status || !host::setToolTo(made.text))
            throw PlayError{kExitHostFailure, "cannot activate the tool " + fOptions.contextCommand + ":\n" + host::logText()};
        fContext = made.text;
    } else {
        const MObject store = host::createNode("tqSarn", "tqSarn", "", &status);
        if (!status || !host::connect(fScan.fullPathName().asChar() + std::string(".worldMesh"),
                                      host::nodeName(store) + ".tqSarnMesh"))
            throw PlayError{kExitHostFailure, "cannot make the tqSarn store node:\n" + host::logText()};
        if (hasContext) {
            const host::CommandOutput made = host::runCommand(fOptions.contextCommand, false);
            if (!made.status || !host::setToolTo(made.text))
                throw PlayError{kExitHostFailure, "cannot activate the tool " + fOptions.contextCommand + ":\n" + host::logText()};
            fContext = made.text;
        } else {
            fErr << "tqsarn: the plug-in registers no " << fOptions.contextCommand
                 << " command: the steps that need the tool (press, drag, release, key) are skipped\n";
        }
    }
    host::flushUndoQueue();
    fSetup = {{"scan", emptyScene ? json(nullptr) : json(fScanPath)},
              {"plugin", pluginPath},
              {"context", fContext.empty() ? json(nullptr) : json(fContext)},
              {"launch", launch.empty() ? json(nullptr) : json(launch)},
              {"view", {{"width", width}, {"height", height}}},
              {"log", logSince(logStart)}};
}

MStatus Player::toPixel(const Step& step, const json& point, const std::string& pointer, short& x, short& y)
{
    if (point.contains("pixel")) {
        x = static_cast<short>(point["pixel"][0].get<int>());
        y = static_cast<short>(point["pixel"][1].get<int>());
        return MS::kSuccess;
    }
    const json& w = point["world"];
    const MPoint p(w[0].get<double>(), w[1].get<double>(), w[2].get<double>());
    const std::string where = "/steps/" + std::to_string(step.number - 1) + pointer;
    M3dView view = M3dView::active3dView();
    if (!view.worldToView(p, x, y))
        throw PlayError{kExitMissedPoint, fSession.describe(where, "the world point " + pointText(p) +
                                                                      " is outside the view of the current camera")};
    // The pixel must show that point: the ray through it hits the scan there, not in front.
    MPoint nearPoint, nearNext;
    MVector direction, directionNext;
    view.viewToWorld(x, y, nearPoint, direction);
    view.viewToWorld(static_cast<short>(x + 1), y, nearNext, directionNext);
    const MPoint onRay = nearPoint + direction * ((p - nearPoint) * direction);
    const MPoint onNext = nearNext + directionNext * ((p - nearNext) * directionNext);
    const double tolerance = std::max(0.005 * fScanInfo.diagonal(), 2.0 * onRay.distanceTo(onNext));
    MFnMesh scan(fScan);
    MMeshIsectAccelParams accel = MFnMesh::autoUniformGridParams();
    MFloatPoint hit;
    float param = 0.0f, bary1 = 0.0f, bary2 = 0.0f;
    int face = -1, triangle = -1;
    const bool found = scan.closestIntersection(MFloatPoint(float(nearPoint.x), float(nearPoint.y), float(nearPoint.z)),
                                                MFloatVector(float(direction.x), float(direction.y), float(direction.z)),
                                                nullptr, nullptr, false, MSpace::kWorld, 1.0e7f, false, &accel, hit,
                                                &param, &face, &triangle, &bary1, &bary2);
    if (!found)
        throw PlayError{kExitMissedPoint, fSession.describe(where, "the world point " + pointText(p) +
                                                                      " misses the scan: the ray through pixel (" +
                                                                      std::to_string(x) + ", " + std::to_string(y) +
                                                                      ") hits nothing")};
    const double off = MPoint(hit.x, hit.y, hit.z).distanceTo(p);
    if (off > tolerance) {
        std::ostringstream why;
        why << "the world point " << pointText(p) << " misses the scan: the ray through pixel (" << x << ", " << y
            << ") hits it " << off << " away (tolerance " << tolerance << "); is the point hidden or off the surface?";
        throw PlayError{kExitMissedPoint, fSession.describe(where, why.str())};
    }
    return MS::kSuccess;
}

MDagPath Player::retopoMesh() const
{
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    for (unsigned int i = 0; i < selection.length(); ++i) {
        MDagPath path;
        if (selection.getDagPath(i, path) && path.extendToShape() && path.hasFn(MFn::kMesh) && !(path == fScan))
            return path;
    }
    // Nothing selected: the newest mesh that is not the scan.
    MDagPath last;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (!(path == fScan) && !MFnDagNode(path).isIntermediateObject())
            last = path;
    }
    return last;
}

json Player::meshCounts() const
{
    const MDagPath retopo = retopoMesh();
    if (!retopo.isValid())
        return {{"faces", 0}, {"vertices", 0}};
    MFnMesh mesh(retopo);
    return {{"mesh", retopo.partialPathName().asChar()}, {"faces", mesh.numPolygons()}, {"vertices", mesh.numVertices()}};
}

json Player::quality(const MDagPath& retopo) const
{
    MFnMesh mesh(retopo);
    MPointArray points;
    mesh.getPoints(points, MSpace::kWorld);
    MIntArray counts, connects;
    mesh.getVertices(counts, connects);
    long long quads = 0;
    std::vector<double> areas;
    unsigned int at = 0;
    for (int count : counts) {
        quads += count == 4;
        double area = 0.0;
        for (int i = 1; i + 1 < count && at + i + 1 < connects.length(); ++i) {
            const MPoint& a = points[connects[at]];
            area += 0.5 * ((points[connects[at + i]] - a) ^ (points[connects[at + i + 1]] - a)).length();
        }
        areas.push_back(area);
        at += unsigned(std::max(count, 0));
    }
    // Distances of the vertices to the scan surface.
    MMeshIntersector intersector;
    MObject scanShape = fScan.node();
    const MMatrix toWorld = fScan.inclusiveMatrix();
    double maxDistance = 0.0, sumDistance = 0.0;
    if (intersector.create(scanShape, toWorld))
        for (const MPoint& p : points) {
            MPointOnMesh closest;
            if (!intersector.getClosestPoint(p, closest))
                continue;
            const double d = (MPoint(closest.getPoint()) * toWorld).distanceTo(p);
            maxDistance = std::max(maxDistance, d);
            sumDistance += d;
        }
    json histogram = {{"bins", 10}, {"min", 0.0}, {"max", 0.0}, {"counts", json::array()}};
    if (!areas.empty()) {
        const auto [lo, hi] = std::minmax_element(areas.begin(), areas.end());
        std::vector<long long> bins(10, 0);
        for (double a : areas) {
            const int bin = *hi > *lo ? std::min(9, int((a - *lo) / (*hi - *lo) * 10.0)) : 0;
            ++bins[std::size_t(bin)];
        }
        histogram = {{"bins", 10}, {"min", *lo}, {"max", *hi}, {"counts", bins}};
    }
    return {{"mesh", retopo.partialPathName().asChar()},
            {"faces", counts.length()},
            {"vertices", points.length()},
            {"quads", quads},
            {"quadRatio", counts.length() ? double(quads) / counts.length() : 0.0},
            {"maxDistance", maxDistance},
            {"meanDistance", points.length() ? sumDistance / points.length() : 0.0},
            {"faceAreas", histogram}};
}

void Player::playStep(const Step& step, json& record)
{
    const json& d = step.data;
    MStatus status;
    const bool needsTool = step.kind == "press" || step.kind == "drag" || step.kind == "move" || step.kind == "release" ||
                           step.kind == "key";
    host::Modifiers held = host::heldModifiers();
    if (d.contains("shift"))
        held.shift = d["shift"].get<bool>();
    if (d.contains("ctrl"))
        held.control = d["ctrl"].get<bool>();

    // Points are checked against the scan even when the tool is missing, so a session's
    // faults show before the tool exists.
    std::vector<std::pair<short, short>> pixels;
    const char* const single = step.kind == "press" || step.kind == "release" ? "at" : nullptr;
    if (single || step.kind == "drag" || step.kind == "move") {
        json list = json::array();
        const std::size_t n = single ? 1 : d["points"].size();
        for (std::size_t i = 0; i < n; ++i) {
            short x = 0, y = 0;
            if (single)
                toPixel(step, d[single], std::string("/") + single, x, y);
            else
                toPixel(step, d["points"][i], "/points/" + std::to_string(i), x, y);
            pixels.emplace_back(x, y);
            list.push_back({x, y});
        }
        record["pixels"] = list;
    }
    if (needsTool && fContext.empty()) {
        record["status"] = "skipped";
        record["note"] = "no tool: the plug-in registers no " + fOptions.contextCommand + " command";
        return;
    }

    if (step.kind == "camera") {
        const MPoint position(d["position"][0].get<double>(), d["position"][1].get<double>(), d["position"][2].get<double>());
        const MPoint target(d["target"][0].get<double>(), d["target"][1].get<double>(), d["target"][2].get<double>());
        const std::string name = "sessionCamera" + std::to_string(++fCameras);
        const MObject camera = d.contains("orthographicWidth")
                                   ? host::makeOrthoCamera(position, target, d["orthographicWidth"].get<double>(), name, &status)
                                   : host::makeCamera(position, target, d.value("fov", 40.0), name, &status);
        if (status)
            status = host::setViewCamera(fView, camera);
    } else if (step.kind == "optionVars") {
        for (auto& [name, value] : d["values"].items())
            if (!setOptionVar(name, value))
                status = MS::kFailure;
    } else if (step.kind == "command") {
        // "$context" names the active tool's context, as the launch script's variable does in Maya.
        std::string text = d["text"].get<std::string>();
        for (std::size_t at = text.find("$context"); at != std::string::npos && !fContext.empty();
             at = text.find("$context", at + fContext.size()))
            text.replace(at, 8, fContext);
        record["text"] = text;
        const host::CommandOutput output = host::runCommand(text, true);
        status = output.status;
        record["result"] = output.text;
    } else if (step.kind == "press") {
        // A press starts from the modifiers it names; drags and releases keep what is held.
        held.shift = d.value("shift", false);
        held.control = d.value("ctrl", false);
        status = host::mousePress(pixels[0].first, pixels[0].second,
                                  d["button"] == "middle"  ? host::MouseButton::kMiddle
                                  : d["button"] == "right" ? host::MouseButton::kRight
                                                           : host::MouseButton::kLeft,
                                  held);
    } else if (step.kind == "drag") {
        for (const auto& [x, y] : pixels)
            if (!(status = host::mouseDrag(x, y, held)))
                break;
    } else if (step.kind == "move") {
        for (const auto& [x, y] : pixels)
            if (!(status = host::pointerMove(x, y, held)))
                break;
    } else if (step.kind == "release") {
        status = host::mouseRelease(pixels[0].first, pixels[0].second, held);
    } else if (step.kind == "key") {
        const std::string key = d["key"].get<std::string>();
        status = host::pressKey(key == "enter"       ? host::Key::kEnter
                                : key == "backspace" ? host::Key::kBackspace
                                : key == "delete"    ? host::Key::kDelete
                                                     : host::Key::kEscape);
    } else if (step.kind == "undo" || step.kind == "redo") {
        const int count = d.value("count", 1);
        for (int i = 0; i < count && status; ++i)
            status = step.kind == "undo" ? host::undo() : host::redo();
    } else if (step.kind == "frame") {
        char number[16];
        std::snprintf(number, sizeof number, "%03d", step.number);
        const std::string file = "frame-" + std::string(number) + (d.contains("name") ? "-" + d["name"].get<std::string>() : "") + ".png";
        host::RenderOptions options;
        options.view = fView;
        const MDagPath retopo = retopoMesh();
        if (retopo.isValid())
            options.wireframeMeshes.push_back(retopo.fullPathName().asChar());
        host::RenderStats stats;
        status = host::renderFrame((fs::path(fOptions.outDir) / file).string(), options, &stats);
        if (status) {
            record["png"] = file;
            record["drawRecords"] = stats.records;
            record["feedbackRecords"] = stats.frame.feedback.size();
            fOutputs.push_back(file);
        }
    }
    record["status"] = status ? "ok" : "failed";
    if (!status)
        record["error"] = status.errorString().asChar();
}

void Player::progress(std::size_t index, const Step& step)
{
    if (!fOptions.progress || millisecondsSince(fStart) < 1000.0)
        return;
    fErr << "\rtqsarn: step " << index + 1 << "/" << fSession.steps.size() << " (" << step.kind << ")\033[K" << std::flush;
    fProgressShown = true;
}

void Player::writeOutputs(json& report)
{
    const MDagPath retopo = retopoMesh();
    if (!retopo.isValid()) {
        report["retopo"] = nullptr;
        return;
    }
    report["retopo"] = quality(retopo);
    for (const char* name : {"retopo.obj", "retopo.gltf"}) {
        std::string error;
        if (host::exportMesh(retopo.node(), (fs::path(fOptions.outDir) / name).string(), &error))
            fOutputs.push_back(name);
        else
            fErr << "tqsarn: cannot write " << name << ": " << error << "\n";
    }
}

int Player::run()
{
    std::error_code ec;
    fs::create_directories(fOptions.outDir, ec);
    if (ec) {
        fErr << "tqsarn: cannot create the output folder " << fOptions.outDir << ": " << ec.message() << "\n";
        return kExitUsage;
    }
    json report = {{"session", fSession.path}, {"steps", json::array()}};
    int code = kExitOk;
    std::string abort;
    int failed = 0, skipped = 0;
    try {
        setUp();
        report["setup"] = fSetup;
        for (std::size_t i = 0; i < fSession.steps.size(); ++i) {
            const Step& step = fSession.steps[i];
            progress(i, step);
            const std::size_t logStart = host::logEntries().size();
            const Clock::time_point start = Clock::now();
            json record = {{"step", step.number}, {"kind", step.kind}, {"line", step.line}};
            try {
                playStep(step, record);
            } catch (const PlayError&) {
                record["status"] = "aborted";
                record["log"] = logSince(logStart);
                report["steps"].push_back(record);
                throw;
            }
            record["milliseconds"] = millisecondsSince(start);
            record["retopo"] = meshCounts();
            record["info1"] = optionVarText("tqSarn_info1");
            record["info2"] = optionVarText("tqSarn_info2");
            record["infoPanels"] = {{"top", panelLines("tqSarn_info2")}, {"bottom", panelLines("tqSarn_info1")}};
            record["log"] = logSince(logStart);
            if (record["status"] == "failed") {
                ++failed;
                fErr << "tqsarn: " << fSession.path << ":" << step.line << ": step " << step.number << " ("
                     << step.kind << ") failed: " << record["error"].get<std::string>() << "\n";
                // The warnings too: a refused undo or redo says why only in one.
                for (const json& line : record["log"])
                    if (line["level"] != "info")
                        fErr << "  " << line["text"].get<std::string>() << "\n";
            }
            skipped += record["status"] == "skipped";
            report["steps"].push_back(record);
        }
        if (failed)
            code = kExitStepFailed;
    } catch (const PlayError& e) {
        code = e.code;
        abort = e.message;
        report["aborted"] = e.message;
    } catch (const std::exception& e) {
        code = kExitHostFailure;
        abort = std::string("unexpected failure: ") + e.what();
        report["aborted"] = abort;
    }
    if (fProgressShown)
        fErr << "\r\033[K" << std::flush;
    if (fScan.isValid())
        writeOutputs(report);
    // The scene as the session left it, for Maya or a later session to open.
    std::string saveError;
    if (fScan.isValid() && !fOptions.scenePath.empty()) {
        if (host::saveScene(fOptions.scenePath, &saveError))
            report["scene"] = fOptions.scenePath;
        else if (abort.empty())
            code = kExitUsage;
    }
    report["milliseconds"] = millisecondsSince(fStart);
    const fs::path reportPath = fs::path(fOptions.outDir) / "report.json";
    std::ofstream(reportPath) << report.dump(2) << "\n";
    if (!saveError.empty())
        fErr << "tqsarn: " << saveError << "\n";
    if (!abort.empty()) {
        fErr << "tqsarn: " << abort << "\n";
        return code;
    }

    // Two lines of summary, then where the outputs are.
    std::ostringstream summary;
    summary << std::fixed << std::setprecision(2) << "Played " << fSession.steps.size() << " steps of "
            << fSession.path << " on " << (fScanPath.empty() ? std::string("an empty scene") : fScanPath) << " in " << millisecondsSince(fStart) / 1000.0
            << " s: " << failed << " failed, " << skipped << " skipped.\n";
    if (report["retopo"].is_null()) {
        summary << "No retopo mesh.\n";
    } else {
        const json& q = report["retopo"];
        const double maxDistance = q["maxDistance"].get<double>();
        summary << "Retopo mesh " << q["mesh"].get<std::string>() << ": " << q["faces"] << " faces ("
                << q["quads"] << " quads), " << q["vertices"] << " vertices, at most "
                << std::defaultfloat << std::setprecision(3) << maxDistance << " from the scan ("
                << std::fixed << std::setprecision(2) << 100.0 * maxDistance / std::max(fScanInfo.diagonal(), 1e-12)
                << "% of its diagonal).\n";
    }
    fOut << summary.str();
    fOut << "Outputs in " << fs::absolute(fOptions.outDir).string() << ": report.json";
    for (const std::string& file : fOutputs)
        fOut << ", " << file;
    fOut << "\n";
    if (report.contains("scene"))
        fOut << "Scene saved to " << fOptions.scenePath << ".\n";
    return code;
}

int usage(std::ostream& err)
{
    err << "usage: tqsarn play SESSION.json [--scan FILE] [--out DIR] [--plugin FILE]... [--context COMMAND]\n"
           "                   [--save SCENE.ma]\n"
           "       tqsarn info SCAN\n";
    return kExitUsage;
}

} // namespace

int play(const PlayOptions& options, std::ostream& out, std::ostream& err)
{
    try {
        Session session;
        std::string error;
        if (!loadSession(options.sessionPath, session, &error)) {
            err << "tqsarn: " << error << "\n";
            return kExitBadSession;
        }
        Player player(options, session, out, err);
        return player.run();
    } catch (const std::exception& e) {
        err << "tqsarn: unexpected failure: " << e.what() << "\n";
        return kExitHostFailure;
    }
}

int info(const std::string& scanPath, std::ostream& out, std::ostream& err)
{
    try {
        std::error_code ec;
        if (!fs::exists(scanPath, ec)) {
            err << "tqsarn: the scan " << scanPath << " does not exist\n";
            return kExitBadScan;
        }
        std::vector<host::MeshArrays> meshes;
        std::string error;
        if (!host::readMeshFile(scanPath, meshes, &error)) {
            err << "tqsarn: cannot read the scan " << scanPath << ": " << error << "\n";
            return kExitBadScan;
        }
        const host::MeshArrays mesh = joinMeshes(meshes);
        std::string why;
        if (mesh.numPolygons() > 0 && !host::validate(mesh, &why)) {
            err << "tqsarn: the scan " << scanPath << " is not a valid mesh: " << why << "\n";
            return kExitBadScan;
        }
        out << scanInfoText(scanPath, scanInfo(mesh));
        return kExitOk;
    } catch (const std::exception& e) {
        err << "tqsarn: unexpected failure: " << e.what() << "\n";
        return kExitHostFailure;
    }
}

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, bool terminal)
{
    if (args.empty())
        return usage(err);
    if (args[0] == "-h" || args[0] == "--help") {
        usage(out);
        return kExitOk;
    }
    if (args[0] == "info") {
        if (args.size() != 2)
            return usage(err);
        return info(args[1], out, err);
    }
    if (args[0] != "play")
        return usage(err);
    PlayOptions options;
    options.progress = terminal;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == "--scan" && hasValue)
            options.scanPath = args[++i];
        else if (arg == "--out" && hasValue)
            options.outDir = args[++i];
        else if (arg == "--plugin" && hasValue)
            options.extraPlugins.push_back(args[++i]);
        else if (arg == "--context" && hasValue)
            options.contextCommand = args[++i];
        else if (arg == "--save" && hasValue)
            options.scenePath = args[++i];
        else if (!arg.empty() && arg[0] != '-' && options.sessionPath.empty())
            options.sessionPath = arg;
        else
            return usage(err);
    }
    if (options.sessionPath.empty())
        return usage(err);
    return play(options, out, err);
}

} // namespace tqsarn
