#include "fuzzTargets.h"

#include <host/commands.h>
#include <host/harness.h>
#include <host/log.h>
#include <host/meshArrays.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <mutex>
#include <sstream>
#include <thread>
#include <vector>

namespace fuzz {
namespace {

namespace fs = std::filesystem;

template <typename T>
const T& pick(std::mt19937_64& random, const std::vector<T>& from)
{
    return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(random)];
}

std::size_t below(std::mt19937_64& random, std::size_t n)
{
    return n == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
}

bool chance(std::mt19937_64& random, double p) { return std::uniform_real_distribution<double>(0.0, 1.0)(random) < p; }

std::string repeat(const std::string& text, std::size_t times)
{
    std::string out;
    out.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        out += text;
    return out;
}

// ---- the scene the command targets start from ------------------------------------------

void startScene()
{
    host::newScene();
    host::runCommand("createNode transform -n t1; createNode transform -n t2; createNode transform -n t3 -p t2;"
                     "createNode objectSet -n set1; select -cl",
                     false);
    host::addMesh(host::gridPlane(2.0f, 2.0f, 2, 2), "grid");
    host::flushUndoQueue();
    host::clearLog();
    host::clearJournal();
}

std::string number(double v)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.6g", v);
    return text;
}

// What a user sees of the scene: nodes with their types and paths, transform values, mesh
// points (with tweaks), connections and the selection. Sorted, so creation order is not part
// of it (undo brings a deleted node back where it was in the DAG, not in creation order).
std::string snapshot()
{
    std::vector<std::string> lines;
    for (MItDependencyNodes it; !it.isDone(); it.next()) {
        MObject node = it.thisNode();
        MFnDependencyNode fn(node);
        std::string line = std::string(fn.name().asChar()) + " " + fn.typeName().asChar();
        if (node.hasFn(MFn::kDagNode))
            line += " " + std::string(MFnDagNode(node).fullPathName().asChar());
        for (const char* attr : {"translate", "rotate", "scale", "visibility"}) {
            MStatus st;
            MPlug plug = fn.findPlug(attr, false, &st);
            if (!st)
                continue;
            line += std::string(" ") + attr;
            if (plug.numChildren() == 0)
                line += " " + number(plug.asDouble());
            for (unsigned c = 0; c < plug.numChildren(); ++c)
                line += " " + number(plug.child(c).asDouble());
        }
        if (node.hasFn(MFn::kMesh)) {
            MFnMesh mesh(node);
            MPointArray points;
            mesh.getPoints(points);
            line += " faces " + std::to_string(mesh.numPolygons()) + " points";
            for (unsigned i = 0; i < points.length(); ++i)
                line += " " + number(points[i].x) + "," + number(points[i].y) + "," + number(points[i].z);
        }
        lines.push_back(line);
        MPlugArray plugs;
        fn.getConnections(plugs);
        for (unsigned i = 0; i < plugs.length(); ++i) {
            MPlugArray sources;
            plugs[i].connectedTo(sources, true, false);
            for (unsigned k = 0; k < sources.length(); ++k)
                lines.push_back(std::string(sources[k].name().asChar()) + " -> " + plugs[i].name().asChar());
        }
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    std::string out;
    for (const std::string& line : lines)
        out += line + "\n";
    out += "selection:";
    for (const std::string& item : host::selection())
        out += " " + item;
    return out + "\n";
}

// The first line where two snapshots differ, for the report.
std::string difference(const std::string& before, const std::string& after)
{
    std::istringstream a(before), b(after);
    std::string la, lb;
    while (true) {
        const bool ga = bool(std::getline(a, la)), gb = bool(std::getline(b, lb));
        if (!ga && !gb)
            return "(same)";
        if (!ga || !gb || la != lb)
            return "was '" + (ga ? la : std::string("<nothing>")) + "', is '" + (gb ? lb : std::string("<nothing>")) +
                   "'";
    }
}

bool loggedSomething()
{
    for (const host::LogEntry& e : host::logEntries())
        if (e.level == host::LogLevel::kError || e.level == host::LogLevel::kWarning)
            return true;
    return false;
}

void undoAll()
{
    // Bounded: every undo takes an entry off, and a failed one stops the walk.
    for (unsigned n = host::undoQueueLength(); n > 0 && host::undoQueueLength() > 0; --n)
        if (!host::undo())
            break;
}

void redoAll()
{
    for (unsigned n = host::redoQueueLength(); n > 0 && host::redoQueueLength() > 0; --n)
        if (!host::redo())
            break;
}

// ---- command text -----------------------------------------------------------------------

const std::vector<std::string> kNodes = {"t1", "t2", "t3", "|t2|t3", "grid", "gridShape", "set1", "n1", "n2",
                                         "missing", "t*", "*", "?1", "|t1", "initialShadingGroup"};
const std::vector<std::string> kNewNames = {"n1", "n2", "n3", "t1", "a|b", "a.b", "x[0]", "grid", "n9"};
const std::vector<std::string> kAttrs = {"translate", "translateX", "rotateY", "scale", "visibility", "message",
                                         "tx", "nope"};
const std::vector<std::string> kNumbers = {"0",          "1",          "-1",         "0.5",
                                           "3",          "1e6",        "2147483647", "2147483648",
                                           "-2147483649", "4294967295", "4294967296", "9223372036854775807",
                                           "1e308",      "1e309",      "-0",         "4611686018427387904"};
const std::vector<std::string> kIndices = {"0",          "1",          "8",          "9",          "2147483647",
                                           "2147483648", "4294967295", "-1",         "0:8",        "3:1",
                                           "0:4294967295", "*",        "2147483640:2147483647"};

std::string node(std::mt19937_64& r) { return pick(r, kNodes); }
std::string plugName(std::mt19937_64& r)
{
    if (chance(r, 0.15))
        return "gridShape.pnts[" + pick(r, kIndices) + "]";
    return node(r) + "." + pick(r, kAttrs);
}
std::string value(std::mt19937_64& r) { return pick(r, kNumbers); }
std::string component(std::mt19937_64& r)
{
    static const std::vector<std::string> kinds = {"vtx", "e", "f"};
    return pick(r, std::vector<std::string>{"grid", "gridShape", "t1", "|grid|gridShape"}) + "." + pick(r, kinds) + "[" +
           pick(r, kIndices) + "]";
}
std::string item(std::mt19937_64& r) { return chance(r, 0.35) ? component(r) : node(r); }
std::string items(std::mt19937_64& r)
{
    std::string out;
    for (std::size_t n = 1 + below(r, 3); n > 0; --n)
        out += " " + item(r);
    return out;
}

std::string statement(std::mt19937_64& r, int depth = 0)
{
    switch (below(r, depth < 2 ? 20 : 18)) {
    case 0: return "createNode transform -n " + pick(r, kNewNames) + (chance(r, 0.3) ? " -p " + node(r) : "") +
                   (chance(r, 0.3) ? " -ss" : "");
    case 1: return "delete" + (chance(r, 0.2) ? std::string(" -ch") : std::string()) + items(r);
    case 2: return "rename " + node(r) + " " + pick(r, kNewNames);
    case 3: return chance(r, 0.3) ? "parent -w" + items(r) : "parent" + items(r) + " " + node(r);
    case 4: {
        static const std::vector<std::string> modes = {"", " -r", " -add", " -d", " -tgl", " -af", " -cl"};
        return "select" + pick(r, modes) + items(r);
    }
    case 5: return "ls" + std::string(chance(r, 0.3) ? " -sl" : "") + (chance(r, 0.3) ? " -l" : "") +
                   (chance(r, 0.2) ? " -type transform" : "") + " " + node(r);
    case 6: return "setAttr " + plugName(r) + " " + value(r);
    case 7: return "setAttr " + node(r) + ".translate " + value(r) + " " + value(r) + " " + value(r);
    case 8: return "setAttr gridShape.pnts[" + pick(r, kIndices) + "] " + value(r) + " " + value(r) + " " + value(r);
    case 9: return "getAttr " + plugName(r);
    case 10: return "connectAttr" + std::string(chance(r, 0.3) ? " -f" : "") + (chance(r, 0.2) ? " -na" : "") + " " +
                    plugName(r) + " " + plugName(r);
    case 11: return "disconnectAttr " + plugName(r) + " " + plugName(r);
    case 12: {
        static const std::vector<std::string> flags = {"", " -r", " -a", " -ws", " -os", " -r -os"};
        return "move" + pick(r, flags) + " " + value(r) + " " + value(r) + " " + value(r) + items(r);
    }
    case 13: return std::string("sets -e ") + (chance(r, 0.5) ? "-fe" : "-rm") + " set1" + items(r);
    case 14: return "objExists " + item(r);
    case 15: return "listHistory" + std::string(chance(r, 0.4) ? " -f" : "") + (chance(r, 0.3) ? " -pdo" : "") +
                    (chance(r, 0.2) ? " -lv " + value(r) : "") + " " + node(r);
    case 16: return chance(r, 0.5) ? "undo" : "redo";
    case 17: return "ls " + repeat("*a", 1 + below(r, 40)) + (chance(r, 0.5) ? "b" : "");
    case 18: return "if (`objExists " + node(r) + "`) " + statement(r, depth + 1) + "; else " + statement(r, depth + 1);
    default: return "{ " + statement(r, depth + 1) + "; " + statement(r, depth + 1) + " }";
    }
}

std::string mutate(std::mt19937_64& r, std::string text)
{
    static const std::string specials = "{}()\"`;-*?[]:|.$!&=<>\\ \n0123456789";
    for (std::size_t n = below(r, 4); n > 0; --n) {
        const std::size_t at = below(r, text.size() + 1);
        switch (below(r, 8)) {
        case 0: text.insert(at, 1, specials[below(r, specials.size())]); break;
        case 1: text.erase(at, below(r, 8)); break;
        case 2: text.insert(at, text.substr(below(r, text.size() + 1), below(r, 16))); break;
        case 3: {
            const std::size_t digit = text.find_first_of("0123456789", at);
            if (digit != std::string::npos)
                text.replace(digit, text.find_first_not_of("0123456789", digit) - digit, value(r));
            break;
        }
        case 4: {
            static const std::vector<std::size_t> depths = {10, 200, 300, 20000};
            const std::size_t depth = pick(r, depths);
            switch (below(r, 4)) {
            case 0: text = repeat("{", depth) + text + repeat("}", depth); break;
            case 1: text = repeat("if (1) ", depth) + text; break;
            case 2: text = "if (" + repeat("(", depth) + "1" + repeat(")", depth) + ") " + text; break;
            default: text = "if (" + repeat("!", depth) + "0) " + text; break;
            }
            break;
        }
        case 5: text.insert(at, 1, char(below(r, 256))); break;
        case 6: text += "; select -r " + repeat("*t", 1 + below(r, 60)) + "x"; break;
        default: text.insert(at, " -" + std::string(1, char('a' + below(r, 26)))); break;
        }
    }
    return text;
}

std::string escapeLine(const std::string& call)
{
    std::string out;
    for (char c : call) {
        if (c == '\\')
            out += "\\\\";
        else if (c == '\n')
            out += "\\n";
        else if (c == '\r')
            out += "\\r";
        else
            out += c;
    }
    return out;
}

std::vector<std::string> sequenceCalls(const std::string& data)
{
    std::vector<std::string> calls;
    std::string call;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const char c = data[i];
        if (c == '\n') {
            calls.push_back(call);
            call.clear();
        } else if (c == '\\' && i + 1 < data.size()) {
            const char e = data[++i];
            call += e == 'n' ? '\n' : e == 'r' ? '\r' : e;
        } else {
            call += c;
        }
    }
    if (!call.empty())
        calls.push_back(call);
    return calls;
}

// Runs one call; a failure without a log line is a finding.
std::string runCall(const std::string& text)
{
    host::clearLog();
    const host::CommandOutput out = host::runCommand(text);
    if (!out.status && !loggedSomething())
        return "the call failed without a log line: " + text.substr(0, 200);
    return std::string();
}

class CommandTextTarget : public Target {
public:
    const char* name() const override { return "commands"; }
    Input generate(std::mt19937_64& r) override
    {
        std::string text = statement(r);
        for (std::size_t n = below(r, 3); n > 0; --n)
            text += "; " + statement(r);
        return Input{"mel", mutate(r, text)};
    }
    std::string run(const Input& input, std::uint64_t& steps) override
    {
        startScene();
        const std::string before = snapshot();
        ++steps;
        std::string problem = runCall(input.data);
        undoAll();
        const std::string after = snapshot();
        if (problem.empty() && after != before)
            problem = "undo did not restore the scene: " + difference(before, after);
        return problem;
    }
};

class SequenceTarget : public Target {
public:
    const char* name() const override { return "sequences"; }
    Input generate(std::mt19937_64& r) override
    {
        std::string data;
        for (std::size_t n = 20 + below(r, 41); n > 0; --n) {
            std::string call = statement(r);
            if (chance(r, 0.3))
                call += "; " + statement(r);
            if (chance(r, 0.1))
                call = mutate(r, call);
            data += escapeLine(call) + "\n";
        }
        return Input{"seq", data};
    }
    std::string run(const Input& input, std::uint64_t& steps) override
    {
        startScene();
        const std::string start = snapshot();
        for (const std::string& call : sequenceCalls(input.data)) {
            ++steps;
            const std::string problem = runCall(call);
            if (!problem.empty())
                return problem;
        }
        undoAll();
        std::string now = snapshot();
        if (now != start)
            return "undo-all did not restore the scene: " + difference(start, now);
        redoAll();
        undoAll();
        now = snapshot();
        if (now != start)
            return "undo-all after redo-all did not restore the scene: " + difference(start, now);
        return std::string();
    }
};

// ---- mesh files -------------------------------------------------------------------------

std::string readBytes(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeBytes(const fs::path& file, const std::string& data)
{
    std::ofstream(file, std::ios::binary | std::ios::trunc) << data;
}

class MeshFileTarget : public Target {
public:
    explicit MeshFileTarget(const fs::path& work)
        : fWork(work)
    {
        fs::create_directories(fWork);
        const std::vector<host::MeshArrays> meshes = {host::gridPlane(2.0f, 2.0f, 3, 2)};
        for (const char* ext : {"obj", "ply", "off", "stl", "gltf", "glb", "fbx"}) {
            const fs::path file = fWork / (std::string("seed.") + ext);
            if (host::writeMeshFile(file.string(), meshes))
                fSeeds.push_back(Input{ext, readBytes(file)});
        }
        fSeeds.push_back(Input{"ply", "ply\nformat ascii 1.0\ncomment text\nelement vertex 4\nproperty float x\n"
                                      "property float y\nproperty float z\nproperty float s\nproperty float t\n"
                                      "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
                                      "0 0 0 0 0\n1 0 0 1 0\n1 1 0 1 1\n0 1 0 0 1\n4 0 1 2 3\n"});
        // A binary FBX, as the scans users download come: converted by Assimp's own writer.
        Assimp::Importer importer;
        if (const aiScene* scene = importer.ReadFile((fWork / "seed.fbx").string(), 0)) {
            const fs::path binary = fWork / "binary.fbx";
            if (Assimp::Exporter().Export(scene, "fbx", binary.string()) == AI_SUCCESS)
                fSeeds.push_back(Input{"fbx", readBytes(binary)});
        }
    }
    const char* name() const override { return "meshfiles"; }
    Input generate(std::mt19937_64& r) override
    {
        Input input = pick(r, fSeeds);
        std::string& d = input.data;
        static const std::vector<std::uint32_t> extremes = {0u,          1u,          3u,          0x7fffffffu,
                                                            0x80000000u, 0xffffffffu, 0xfffffff0u, 0x10000000u};
        static const std::vector<std::string> numbers = {"0", "-1", "1e9", "4294967295", "99999999999999999999",
                                                         "2147483648", "nan", "inf", "3.5"};
        for (std::size_t n = 1 + below(r, 4); n > 0 && !d.empty(); --n) {
            const std::size_t at = chance(r, 0.5) ? below(r, std::min<std::size_t>(d.size(), 512)) : below(r, d.size());
            switch (below(r, 6)) {
            case 0: d[at] = char(d[at] ^ (1 << below(r, 8))); break;
            case 1: {
                std::uint32_t v = chance(r, 0.2) ? std::uint32_t(d.size() + below(r, 3)) : pick(r, extremes);
                if (chance(r, 0.2))
                    v = std::uint32_t(r());
                const std::size_t aligned = at & ~std::size_t(3);
                for (std::size_t i = 0; i < 4 && aligned + i < d.size(); ++i)
                    d[aligned + i] = char((v >> (8 * i)) & 0xffu);
                break;
            }
            case 2: d.resize(at); break;
            case 3: d.insert(below(r, d.size() + 1), d.substr(at, below(r, 64))); break;
            case 4: {
                const std::size_t digit = d.find_first_of("0123456789", at);
                if (digit != std::string::npos)
                    d.replace(digit, d.find_first_not_of("0123456789.", digit) - digit, pick(r, numbers));
                break;
            }
            default: d.erase(at, below(r, 32)); break;
            }
        }
        return input;
    }
    std::string run(const Input& input, std::uint64_t& steps) override
    {
        ++steps;
        const fs::path file = fWork / ("current." + input.extension);
        writeBytes(file, input.data);
        host::clearLog();
        std::vector<host::MeshArrays> meshes;
        std::string error;
        if (!host::readMeshFile(file.string(), meshes, &error)) {
            if (error.find(file.string()) == std::string::npos)
                return "a refusal does not name the file: " + error;
            return std::string();
        }
        host::newScene();
        for (std::size_t i = 0; i < meshes.size() && i < 4; ++i) {
            std::string why;
            if (!host::validate(meshes[i], &why))
                return "mesh " + std::to_string(i) + " read is not valid: " + why;
            MStatus status;
            host::addMesh(meshes[i], "", &status);
            if (!status && !loggedSomething())
                return "a mesh read could not be added, without a log line";
        }
        return std::string();
    }

private:
    fs::path fWork;
    std::vector<Input> fSeeds;
};

// Stops the process when one input runs past the hang limit; the input is on disk already.
class Watchdog {
public:
    explicit Watchdog(double seconds)
        : fSeconds(seconds)
        , fThread([this] { watch(); })
    {
    }
    ~Watchdog()
    {
        {
            std::lock_guard<std::mutex> lock(fMutex);
            fStop = true;
        }
        fWake.notify_all();
        fThread.join();
    }
    void arm(const std::string& what)
    {
        std::lock_guard<std::mutex> lock(fMutex);
        fWhat = what;
        fDeadline = std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                                           std::chrono::duration<double>(fSeconds));
        fArmed = true;
        fWake.notify_all();
    }
    void disarm()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        fArmed = false;
    }

private:
    void watch()
    {
        std::unique_lock<std::mutex> lock(fMutex);
        while (!fStop) {
            if (!fArmed) {
                fWake.wait(lock);
                continue;
            }
            if (fWake.wait_until(lock, fDeadline) == std::cv_status::timeout && fArmed && !fStop &&
                std::chrono::steady_clock::now() >= fDeadline) {
                std::fprintf(stderr, "HANG: an input ran past %.0f s; it is kept in %s\n", fSeconds, fWhat.c_str());
                std::fflush(stderr);
                std::_Exit(3);
            }
        }
    }
    double fSeconds;
    std::mutex fMutex;
    std::condition_variable fWake;
    bool fStop = false, fArmed = false;
    std::string fWhat;
    std::chrono::steady_clock::time_point fDeadline;
    std::thread fThread;
};

} // namespace

namespace {

struct AddedTarget {
    std::string name, extension;
    TargetMaker make;
};

std::vector<AddedTarget>& addedTargets()
{
    static std::vector<AddedTarget> targets;
    return targets;
}

} // namespace

void addTarget(const std::string& name, const std::string& extension, TargetMaker make)
{
    for (AddedTarget& t : addedTargets())
        if (t.name == name) {
            t = {name, extension, make};
            return;
        }
    addedTargets().push_back({name, extension, make});
}

std::vector<std::string> targetNames()
{
    std::vector<std::string> names{"commands", "sequences", "meshfiles"};
    for (const AddedTarget& t : addedTargets())
        names.push_back(t.name);
    return names;
}

std::unique_ptr<Target> makeTarget(const std::string& name, const fs::path& work)
{
    for (const AddedTarget& t : addedTargets())
        if (t.name == name)
            return t.make(work);
    if (name == "commands")
        return std::make_unique<CommandTextTarget>();
    if (name == "sequences")
        return std::make_unique<SequenceTarget>();
    if (name == "meshfiles")
        return std::make_unique<MeshFileTarget>(work / "meshfiles");
    return nullptr;
}

std::unique_ptr<Target> targetFor(const fs::path& file, const fs::path& work)
{
    const std::string ext = file.extension().string();
    if (ext == ".mel")
        return makeTarget("commands", work);
    if (ext == ".seq")
        return makeTarget("sequences", work);
    for (const char* mesh : {".obj", ".ply", ".off", ".stl", ".gltf", ".glb", ".fbx"})
        if (ext == mesh)
            return makeTarget("meshfiles", work);
    for (const AddedTarget& t : addedTargets())
        if (ext == "." + t.extension)
            return t.make(work);
    return nullptr;
}

Input readInput(const fs::path& file)
{
    std::string ext = file.extension().string();
    return Input{ext.empty() ? ext : ext.substr(1), readBytes(file)};
}

Stats runCampaign(Target& target, std::uint64_t seed, const Budget& budget, const fs::path& out, std::ostream& report)
{
    fs::create_directories(out);
    Stats stats;
    Watchdog watchdog(budget.hangSeconds);
    const auto start = std::chrono::steady_clock::now();
    auto elapsed = [](std::chrono::steady_clock::time_point since) {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
    };
    fs::path pending;
    for (std::uint64_t n = budget.first; n - budget.first < budget.maxInputs && elapsed(start) < budget.seconds; ++n) {
        // Every input has its own stream, so one is remade from the seed and its number.
        std::mt19937_64 random(seed * 0x9e3779b97f4a7c15ull + n);
        const Input input = target.generate(random);
        pending = out / ("pending-" + std::string(target.name()) + "." + input.extension);
        writeBytes(pending, input.data);
        watchdog.arm(pending.string());
        const auto began = std::chrono::steady_clock::now();
        std::string problem;
        try {
            problem = target.run(input, stats.steps);
        } catch (const std::exception& e) {
            problem = std::string("an exception escaped: ") + e.what();
        }
        const double took = elapsed(began);
        watchdog.disarm();
        if (problem.empty() && took > budget.slowSeconds)
            problem = "the input took " + std::to_string(took) + " s";
        ++stats.inputs;
        const fs::path saved = out / (std::string(target.name()) + "-" + std::to_string(seed) + "-" +
                                      std::to_string(n) + "." + input.extension);
        if (budget.keepInputs || !problem.empty())
            writeBytes(saved, input.data);
        if (!problem.empty()) {
            ++stats.findings;
            report << target.name() << ": finding " << stats.findings << " (input " << n << "): " << problem
                   << "\n  reproducer: " << saved.string() << "\n";
        }
    }
    if (!pending.empty())
        fs::remove(pending);
    return stats;
}

} // namespace fuzz
