#include "sceneChecks.h"

#include <host/harness.h>
#include <host/log.h>

#include <maya/MFloatPointArray.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace tqcheck {
namespace {

bool isScan(const MDagPath& path, const MDagPath& scan) { return scan.isValid() && path == scan; }

// The store's display state: what the viewport shows of the tool at this moment (the brush
// circles, the pinch and radii of the held keys, previews), written outside the undo queue
// as in any tool. Deliberate: left out of the before-and-after comparison; a new attribute
// of that kind is one more name here.
// The working strokes are the same kind of state: a stroke is stored at release outside the
// undo queue, and Backspace, Esc and Enter take strokes back, not undo.
const char* const kDisplayState[] = {"pinch", "tweakRadius", "displaySize", "radiusMoveInteractive",
                                     "radiusRelaxInteractive", "intensityRelaxInteractive", "magnetPt",
                                     "pointsDebug", "strokes", "sizes"};

bool isDisplayState(const MString& name)
{
    for (const char* d : kDisplayState)
        if (name == d)
            return true;
    return false;
}

// FNV-1a over bytes, for the digests of large arrays.
struct Digest {
    std::uint64_t value = 1469598103934665603ull;
    void add(const void* bytes, std::size_t n)
    {
        for (std::size_t i = 0; i < n; ++i)
            value = (value ^ static_cast<const unsigned char*>(bytes)[i]) * 1099511628211ull;
    }
};

// Arrays longer than this are compared by a digest: the scan's normals would otherwise be
// most of the text.
constexpr unsigned int kLongArray = 256;

// A mesh's faces and points must make sense; `vertices` and `faces` take its counts.
std::string checkMesh(const MDagPath& path, int& vertices, int& faces)
{
    MFnMesh mesh(path);
    MFloatPointArray points;
    mesh.getPoints(points);
    MIntArray counts, connects;
    mesh.getVertices(counts, connects);
    vertices = int(points.length());
    faces = int(counts.length());
    const std::string name = path.partialPathName().asChar();
    for (unsigned int i = 0; i < points.length(); ++i)
        if (!std::isfinite(points[i].x) || !std::isfinite(points[i].y) || !std::isfinite(points[i].z))
            return name + ": vertex " + std::to_string(i) + " is not finite";
    long long total = 0;
    for (unsigned int f = 0; f < counts.length(); ++f) {
        if (counts[f] < 3)
            return name + ": face " + std::to_string(f) + " has " + std::to_string(counts[f]) + " corners";
        total += counts[f];
    }
    if (total != connects.length())
        return name + ": the face counts add to " + std::to_string(total) + " corners, the list holds " +
               std::to_string(connects.length());
    for (unsigned int i = 0; i < connects.length(); ++i)
        if (connects[i] < 0 || connects[i] >= vertices)
            return name + ": corner " + std::to_string(i) + " names vertex " + std::to_string(connects[i]) + " of " +
                   std::to_string(vertices);
    return {};
}

MIntArray intArray(const MObject& node, const char* attribute)
{
    MStatus status;
    MPlug plug = MFnDependencyNode(node).findPlug(attribute, true, &status);
    if (!status)
        return MIntArray();
    MObject data = plug.asMObject(&status);
    if (!status || data.isNull() || !data.hasFn(MFn::kIntArrayData))
        return MIntArray();
    return MFnIntArrayData(data).array();
}

std::string number(double v)
{
    std::ostringstream out;
    out.precision(17);
    out << v;
    return out.str();
}

// A stored value of a store node as text; empty for what is not stored data (the mesh link,
// compounds and arrays of plugs).
std::string valueText(const MPlug& plug, const MObject& attribute)
{
    std::ostringstream out;
    if (attribute.hasFn(MFn::kTypedAttribute)) {
        const MFnData::Type type = MFnTypedAttribute(attribute).attrType();
        if (type != MFnData::kIntArray && type != MFnData::kPointArray && type != MFnData::kVectorArray &&
            type != MFnData::kDoubleArray && type != MFnData::kFloatArray)
            return {};
        MObject data = plug.asMObject();
        if (data.isNull())
            return "null";
        if (data.hasFn(MFn::kVectorArrayData) && MFnVectorArrayData(data).length() > kLongArray) {
            Digest digest;
            for (const MVector& v : MFnVectorArrayData(data).array())
                digest.add(&v, sizeof v);
            return std::to_string(MFnVectorArrayData(data).length()) + " vectors, digest " + std::to_string(digest.value);
        }
        if (data.hasFn(MFn::kPointArrayData) && MFnPointArrayData(data).length() > kLongArray) {
            Digest digest;
            for (const MPoint& p : MFnPointArrayData(data).array())
                digest.add(&p, sizeof p);
            return std::to_string(MFnPointArrayData(data).length()) + " points, digest " + std::to_string(digest.value);
        }
        if (data.hasFn(MFn::kIntArrayData))
            for (int v : MFnIntArrayData(data).array())
                out << v << " ";
        else if (data.hasFn(MFn::kPointArrayData))
            for (const MPoint& p : MFnPointArrayData(data).array())
                out << number(p.x) << "," << number(p.y) << "," << number(p.z) << "," << number(p.w) << " ";
        else if (data.hasFn(MFn::kVectorArrayData))
            for (const MVector& v : MFnVectorArrayData(data).array())
                out << number(v.x) << "," << number(v.y) << "," << number(v.z) << " ";
        else if (data.hasFn(MFn::kDoubleArrayData))
            for (double v : MFnDoubleArrayData(data).array())
                out << number(v) << " ";
        else if (data.hasFn(MFn::kFloatArrayData))
            for (float v : MFnFloatArrayData(data).array())
                out << number(v) << " ";
        return "[" + out.str() + "]";
    }
    if (attribute.hasFn(MFn::kNumericAttribute)) {
        const MFnNumericData::Type type = MFnNumericAttribute(attribute).unitType();
        if (type == MFnNumericData::k3Double || type == MFnNumericData::k3Float) {
            MObject data = plug.asMObject();
            double x = 0, y = 0, z = 0;
            if (data.isNull() || !MFnNumericData(data).getData(x, y, z))
                return "null";
            return number(x) + "," + number(y) + "," + number(z);
        }
        return number(plug.asDouble());
    }
    if (attribute.hasFn(MFn::kEnumAttribute))
        return std::to_string(plug.asInt());
    return {};
}

} // namespace

std::string checkScene(const MDagPath& scan, bool store)
{
    for (const host::LogEntry& entry : host::logEntries())
        if (entry.text.rfind("Exception in plug-in callback", 0) == 0)
            return "an exception reached the host: " + entry.text;
    int maxVertices = 0, maxFaces = 0;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (isScan(path, scan))
            continue;
        int vertices = 0, faces = 0;
        if (std::string bad = checkMesh(path, vertices, faces); !bad.empty())
            return bad;
        if (!MFnDagNode(path).isIntermediateObject()) {
            maxVertices = std::max(maxVertices, vertices);
            maxFaces = std::max(maxFaces, faces);
        }
    }
    if (scan.isValid()) {
        MSelectionList selected;
        MGlobal::getActiveSelectionList(selected);
        if (selected.hasItem(scan) || selected.hasItem(MDagPath(scan).transform())) {
            MFnMesh mesh(scan);
            maxVertices = std::max(maxVertices, mesh.numVertices());
            maxFaces = std::max(maxFaces, mesh.numPolygons());
        }
    }
    for (const std::string& name : host::nodeNames(store ? "tqSarn" : "no store checks")) {
        const MObject store = host::findNode(name);
        for (const char* attribute : {"playervtx", "shadowIndices1", "shadowIndices2", "shadowIndices3", "newFaces"}) {
            const bool faces = std::strcmp(attribute, "newFaces") == 0;
            const int limit = faces ? maxFaces : maxVertices;
            const MIntArray ids = intArray(store, attribute);
            for (unsigned int i = 0; i < ids.length(); ++i)
                if (ids[i] < 0 || ids[i] >= limit)
                    return name + "." + attribute + "[" + std::to_string(i) + "] is " + std::to_string(ids[i]) +
                           ", outside the retopo mesh's " + std::to_string(limit) + (faces ? " faces" : " vertices");
        }
    }
    return {};
}

std::string sceneText(const MDagPath& scan, bool store)
{
    std::ostringstream out;
    for (MItDependencyNodes it; !it.isDone(); it.next()) {
        MObject node = it.thisNode();
        MFnDependencyNode fn(node);
        MPlugArray plugs;
        fn.getConnections(plugs);
        // Deliberate: attaching a patch node makes a polyTweak every time, connected only when
        // the mesh has tweaks, and no undo takes the idle one away. An idle polyTweak is no
        // part of any mesh's history, so it is left out.
        if (fn.typeName() == "polyTweak" && plugs.length() == 0)
            continue;
        out << fn.name().asChar() << " : " << fn.typeName().asChar() << "\n";
        for (unsigned int i = 0; i < plugs.length(); ++i) {
            MPlug source = plugs[i].source();
            if (!source.isNull())
                out << "  " << source.name().asChar() << " -> " << plugs[i].name().asChar() << "\n";
        }
        MDagPath path;
        if (node.hasFn(MFn::kMesh) && MDagPath::getAPathTo(node, path)) {
            MFnMesh mesh(path);
            MFloatPointArray points;
            mesh.getPoints(points);
            MIntArray counts, connects;
            mesh.getVertices(counts, connects);
            if (isScan(path, scan)) {
                // The scan by a digest of its bits: it is large, and any change shows.
                Digest digest;
                for (const MFloatPoint& p : points)
                    digest.add(&p, sizeof(float) * 3);
                for (int c : counts)
                    digest.add(&c, sizeof c);
                for (int c : connects)
                    digest.add(&c, sizeof c);
                out << "  scan " << points.length() << " points, " << counts.length() << " faces, digest "
                    << digest.value << "\n";
            } else {
                out << "  points";
                for (const MFloatPoint& p : points)
                    out << " " << number(p.x) << "," << number(p.y) << "," << number(p.z);
                out << "\n  faces";
                for (int c : counts)
                    out << " " << c;
                out << " /";
                for (int v : connects)
                    out << " " << v;
                out << "\n";
            }
        }
        if (store && fn.typeName() == "tqSarn")
            for (unsigned int a = 0; a < fn.attributeCount(); ++a) {
                MObject attribute = fn.attribute(a);
                MFnAttribute at(attribute);
                if (at.isArray() || isDisplayState(at.name()))
                    continue;
                MPlug plug(node, attribute);
                if (plug.isCompound() || plug.isChild())
                    continue;
                const std::string value = valueText(plug, attribute);
                if (!value.empty())
                    out << "  ." << at.name().asChar() << " = " << value << "\n";
            }
    }
    return out.str();
}

std::string firstDifference(const std::string& before, const std::string& after)
{
    std::istringstream a(before), b(after);
    std::string la, lb;
    for (int line = 1;; ++line) {
        const bool ha = bool(std::getline(a, la)), hb = bool(std::getline(b, lb));
        if (!ha && !hb)
            return "no difference";
        if (!ha || !hb || la != lb) {
            auto cut = [](const std::string& s) { return s.size() > 300 ? s.substr(0, 300) + "..." : s; };
            return "line " + std::to_string(line) + ": before \"" + (ha ? cut(la) : "(end)") + "\", after \"" +
                   (hb ? cut(lb) : "(end)") + "\"";
        }
    }
}

} // namespace tqcheck
