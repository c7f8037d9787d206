// Writes the open scene as a Maya ASCII file: the DAG depth first (parents before their
// children), then the dependency nodes in creation order, each with the values of its
// storable plugs that differ from the defaults; mesh shapes without history get their own
// geometry as vt, ed, fc and uvst records; then every connection.

#include "file/maTypes.h"

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/evaluation.h"
#include "dg/scene.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include "host/harness.h"
#include "host/log.h"
#include "host/sceneFiles.h"

#include <maya/MFnMatrixData.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <unordered_map>

namespace host {
namespace {

// Values per line of a long setAttr, as Maya wraps them.
constexpr int kValuesPerLine = 12;

bool isDefaultNode(const NodeBody* node)
{
    return node->type->name == "objectSet" && (node->name == "initialShadingGroup" || node->name == "defaultLightSet");
}

// The name a statement uses for a node: default nodes are the scene's shared ones, ":name".
std::string fileName(const NodeBody* node) { return isDefaultNode(node) ? ":" + node->name : node->name; }

// A run of values, broken into lines.
class ValueLine {
public:
    explicit ValueLine(std::string& out) : fOut(out) {}
    std::string& next()
    {
        fOut += (fCount++ % kValuesPerLine == 0) ? "\n\t\t" : " ";
        return fOut;
    }

private:
    std::string& fOut;
    int fCount = 0;
};

bool isFloatType(MFnNumericData::Type t)
{
    return t == MFnNumericData::kFloat || t == MFnNumericData::k2Float || t == MFnNumericData::k3Float;
}
bool isIntegerType(MFnNumericData::Type t)
{
    return t != MFnNumericData::kInvalid && !isFloatType(t) && t != MFnNumericData::kDouble &&
           t != MFnNumericData::k2Double && t != MFnNumericData::k3Double && t != MFnNumericData::k4Double;
}

void appendScalar(std::string& out, MFnNumericData::Type type, double v)
{
    if (type == MFnNumericData::kBoolean)
        out += v != 0.0 ? "yes" : "no";
    else if (isFloatType(type))
        appendFloat(out, static_cast<float>(v));
    else
        appendNumber(out, v);
}

// The data value as setAttr's -type and values; false for data the files do not carry.
bool appendData(std::string& out, const MObject& data)
{
    const auto body = Access::as<DataBody>(data);
    if (!body)
        return false;
    const std::string typeName = dataTypeName(body->dataType());
    std::string values;
    ValueLine line(values);
    switch (body->dataType()) {
    case MFnData::kString:
        values += ' ';
        appendQuoted(values, std::static_pointer_cast<StringDataBody>(body)->read().asChar());
        break;
    case MFnData::kStringArray: {
        const MStringArray& a = std::static_pointer_cast<StringArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            appendQuoted(line.next(), a[i].asChar());
        break;
    }
    case MFnData::kIntArray: {
        const MIntArray& a = std::static_pointer_cast<IntArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            line.next() += std::to_string(a[i]);
        break;
    }
    case MFnData::kDoubleArray: {
        const MDoubleArray& a = std::static_pointer_cast<DoubleArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            appendNumber(line.next(), a[i]);
        break;
    }
    case MFnData::kFloatArray: {
        const MFloatArray& a = std::static_pointer_cast<FloatArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            appendFloat(line.next(), a[i]);
        break;
    }
    case MFnData::kPointArray: {
        const MPointArray& a = std::static_pointer_cast<PointArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            for (double c : {a[i].x, a[i].y, a[i].z, a[i].w})
                appendNumber(line.next(), c);
        break;
    }
    case MFnData::kVectorArray: {
        const MVectorArray& a = std::static_pointer_cast<VectorArrayDataBody>(body)->read();
        values += ' ' + std::to_string(a.length());
        for (unsigned i = 0; i < a.length(); ++i)
            for (double c : {a[i].x, a[i].y, a[i].z})
                appendNumber(line.next(), c);
        break;
    }
    case MFnData::kMatrix: {
        const MMatrix& m = std::static_pointer_cast<MatrixDataBody>(body)->read();
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                appendNumber(line.next(), m(r, c));
        break;
    }
    case MFnData::kNumeric: {
        const NumericPayload& p = std::static_pointer_cast<NumericDataBody>(body)->read();
        const std::string name = numericTypeName(p.type);
        if (name.empty())
            return false;
        out += " -type \"" + name + "\"";
        for (int i = 0; i < componentCount(p.type); ++i)
            appendScalar(line.next(), p.type, p.v[i]);
        out += values;
        return true;
    }
    default: return false;
    }
    if (typeName.empty())
        return false;
    out += " -type \"" + typeName + "\"" + values;
    return true;
}

bool equalsDefault(const AttributeBody* a, const Value& v)
{
    if (v.kind == Value::Kind::kNumeric) {
        const Value& d = a->defaultValue;
        const int n = std::max(1, a->components);
        for (int i = 0; i < n && i < 4; ++i)
            if (v.num[i] != (d.kind == Value::Kind::kNumeric ? d.num[i] : 0.0))
                return false;
        return true;
    }
    if (v.kind == Value::Kind::kMatrix)
        return v.matrix == (a->defaultValue.kind == Value::Kind::kMatrix ? a->defaultValue.matrix : MMatrix());
    return v.kind == Value::Kind::kNone || (v.kind == Value::Kind::kData && v.data.isNull());
}

// Every attribute of the type, parents before children, in the order they were added.
void attributeOrder(const AttributeBody* a, std::unordered_map<const AttributeBody*, int>& order)
{
    order.emplace(a, static_cast<int>(order.size()));
    for (const auto& child : a->children)
        attributeOrder(child.get(), order);
}

// "float3", "double3", ... for a compound of numbers, from its children when it was built
// from them.
std::string compoundTypeName(const AttributeBody* a)
{
    std::string name = numericTypeName(a->numericType);
    if (!name.empty() || a->children.empty())
        return name.empty() ? "double" + std::to_string(a->components) : name;
    const MFnNumericData::Type t = a->children.front()->numericType;
    const std::string stem = isFloatType(t) ? "float" : t == MFnNumericData::kShort ? "short"
                             : isIntegerType(t)                                   ? "long"
                                                                                  : "double";
    return stem + std::to_string(a->children.size());
}

// The plug's name relative to its node, with short names: ".pt[3]", ".uvst[0].uvsn".
std::string relativeName(const PlugKey& key)
{
    const std::string full = plugName(nullptr, key, false);
    return full;
}

class Writer {
public:
    explicit Writer(std::string& out) : fOut(out) {}

    void header(const std::string& path, const std::vector<NodeBody*>& nodes)
    {
        fOut += "//Maya ASCII 2025 scene\n//Name: " + std::filesystem::path(path).filename().string() +
                "\n//Codeset: UTF-8\nrequires maya \"2025\";\n";
        // Each plug-in with the node types of it that the file uses.
        std::map<std::string, std::set<std::string>> plugins;
        for (const NodeBody* n : nodes)
            if (!n->type->pluginName.empty())
                plugins[n->type->pluginName].insert(n->type->name);
        for (const auto& [plugin, types] : plugins) {
            fOut += "requires";
            for (const std::string& t : types) {
                fOut += " -nodeType ";
                appendQuoted(fOut, t);
            }
            fOut += ' ';
            appendQuoted(fOut, plugin);
            fOut += ' ';
            appendQuoted(fOut, pluginRegistrations(plugin).version);
            fOut += ";\n";
        }
        fOut += "currentUnit -l centimeter -a radian -t film;\n";
    }

    void node(NodeBody* n)
    {
        fOut += "createNode " + n->type->name + " -n ";
        appendQuoted(fOut, n->name);
        if (n->parent && n->parent != Scene::current().world()) {
            fOut += " -p ";
            appendQuoted(fOut, n->parent->name);
        }
        fOut += ";\n";
        std::unordered_map<const AttributeBody*, int> order;
        for (const MObject& a : n->type->attributes)
            attributeOrder(Access::attribute(a), order);
        std::vector<const std::pair<const PlugKey, PlugSlot>*> slots;
        for (const auto& entry : n->slots)
            if (order.count(entry.first.attr))
                slots.push_back(&entry);
        std::sort(slots.begin(), slots.end(), [&](const auto* a, const auto* b) {
            const int oa = order.at(a->first.attr), ob = order.at(b->first.attr);
            return oa != ob ? oa < ob : a->first.indices < b->first.indices;
        });
        const bool mesh = isMeshShape(n);
        if (mesh)
            bakeShapeEdits(n);
        for (std::size_t i = 0; i < slots.size(); ++i) {
            const PlugKey& key = slots[i]->first;
            const PlugSlot& slot = slots[i]->second;
            const AttributeBody* a = key.attr;
            if (!slot.hasValue || slot.hasSource || !a->flags.storable || !a->flags.writable ||
                key.isArrayPlug() || a->isNumericComponent() || a->kind == AttrKind::kMessage || equalsDefault(a, slot.value))
                continue;
            if (mesh && a == Access::attribute(meshAttributes().cachedInMesh)) {
                if (!hasHistory(n))
                    geometry(meshOf(slot.value.data));
                continue;
            }
            // A run of elements of one numeric array: one statement, as Maya writes tweaks.
            std::size_t end = i + 1;
            if (key.isElement() && slot.value.kind == Value::Kind::kNumeric)
                while (end < slots.size() && slots[end]->first.attr == a &&
                       slots[end]->first.indices.size() == key.indices.size() &&
                       std::equal(key.indices.begin(), key.indices.end() - 1, slots[end]->first.indices.begin()) &&
                       slots[end]->first.indices.back() == key.indices.back() + (end - i) &&
                       slots[end]->second.hasValue && !slots[end]->second.hasSource &&
                       slots[end]->second.value.kind == Value::Kind::kNumeric)
                    ++end;
            value(n, slots, i, end);
            i = end - 1;
        }
    }

    void connections(const std::vector<NodeBody*>& nodes)
    {
        for (NodeBody* n : nodes) {
            std::vector<std::pair<PlugKey, PlugRef>> incoming;
            for (const auto& [key, slot] : n->slots)
                if (slot.hasSource && slot.source.node && slot.source.node->isAlive)
                    incoming.emplace_back(key, slot.source);
            std::sort(incoming.begin(), incoming.end(), [](const auto& a, const auto& b) {
                return plugName(nullptr, a.first, false) < plugName(nullptr, b.first, false);
            });
            for (const auto& [key, source] : incoming) {
                fOut += "connectAttr ";
                appendQuoted(fOut, fileName(source.node) + plugName(nullptr, source.key, false));
                fOut += ' ';
                appendQuoted(fOut, fileName(n) + plugName(nullptr, key, false));
                fOut += ";\n";
            }
        }
    }

private:
    void value(NodeBody* node, const std::vector<const std::pair<const PlugKey, PlugSlot>*>& slots, std::size_t first,
               std::size_t end)
    {
        const PlugKey& key = slots[first]->first;
        const AttributeBody* a = key.attr;
        const Value& v = slots[first]->second.value;
        std::string name = relativeName(key);
        std::string statement = "\tsetAttr";
        if (end - first > 1) {
            statement += " -s " + std::to_string(end - first);
            name = name.substr(0, name.rfind('[')) + "[" + std::to_string(key.indices.back()) + ":" +
                   std::to_string(slots[end - 1]->first.indices.back()) + "]";
        }
        statement += ' ';
        appendQuoted(statement, name);
        switch (v.kind) {
        case Value::Kind::kNumeric: {
            const int n = std::max(1, a->components);
            if (a->isNumericCompound)
                statement += " -type \"" + compoundTypeName(a) + "\"";
            // Children of a compound made of numbers take their type from the children.
            MFnNumericData::Type scalar = a->numericType;
            if (a->isNumericCompound && !a->children.empty())
                scalar = a->children.front()->numericType;
            else if (a->isNumericCompound)
                scalar = isFloatType(a->numericType) ? MFnNumericData::kFloat
                         : isIntegerType(a->numericType) ? MFnNumericData::kLong : MFnNumericData::kDouble;
            if (a->kind == AttrKind::kEnum)
                scalar = MFnNumericData::kShort;
            ValueLine line(statement);
            for (std::size_t e = first; e < end; ++e)
                for (int c = 0; c < n && c < 4; ++c) {
                    if (end - first > 1)
                        line.next();
                    else
                        statement += ' ';
                    appendScalar(statement, scalar, slots[e]->second.value.num[c]);
                }
            break;
        }
        case Value::Kind::kMatrix: {
            statement += " -type \"matrix\"";
            for (int r = 0; r < 4; ++r)
                for (int c = 0; c < 4; ++c) {
                    statement += ' ';
                    appendNumber(statement, v.matrix(r, c));
                }
            break;
        }
        case Value::Kind::kData:
            if (!appendData(statement, v.data)) {
                writeLog(LogLevel::kWarning, "saveScene: " + fileName(node) + name + + " holds data a scene file does not keep; it is not saved");
                return;
            }
            break;
        case Value::Kind::kNone: return;
        }
        fOut += statement + ";\n";
    }

    void geometry(const MeshGeometry* g)
    {
        if (!g)
            return;
        // UV sets, then the current one's name.
        for (std::size_t s = 0; s < g->uvSets().size(); ++s) {
            const UVSetData& set = g->uvSets()[s];
            const std::string at = ".uvst[" + std::to_string(s) + "]";
            fOut += "\tsetAttr \"" + at + ".uvsn\" -type \"string\" ";
            appendQuoted(fOut, set.name);
            fOut += ";\n";
            if (!set.u.empty()) {
                fOut += "\tsetAttr -s " + std::to_string(set.u.size()) + " \"" + at + ".uvsp[0:" +
                        std::to_string(set.u.size() - 1) + "]\" -type \"float2\"";
                ValueLine line(fOut);
                for (std::size_t i = 0; i < set.u.size(); ++i) {
                    appendFloat(line.next(), set.u[i]);
                    fOut += ' ';
                    appendFloat(fOut, set.v[i]);
                }
                fOut += ";\n";
            }
        }
        fOut += "\tsetAttr \".cuvs\" -type \"string\" ";
        appendQuoted(fOut, g->uvSets()[std::size_t(g->currentUVSet())].name);
        fOut += ";\n";
        if (g->numVertices() > 0) {
            fOut += "\tsetAttr -s " + std::to_string(g->numVertices()) + " \".vt[0:" +
                    std::to_string(g->numVertices() - 1) + "]\"";
            ValueLine line(fOut);
            const float* p = g->rawPoints();
            for (int v = 0; v < g->numVertices(); ++v) {
                appendFloat(line.next(), p[3 * v]);
                for (int c = 1; c < 3; ++c) {
                    fOut += ' ';
                    appendFloat(fOut, p[3 * v + c]);
                }
            }
            fOut += ";\n";
        }
        if (g->numEdges() > 0) {
            fOut += "\tsetAttr -s " + std::to_string(g->numEdges()) + " \".ed[0:" + std::to_string(g->numEdges() - 1) +
                    "]\"";
            ValueLine line(fOut);
            for (int e = 0; e < g->numEdges(); ++e)
                line.next() += std::to_string(g->edgeStart(e)) + " " + std::to_string(g->edgeEnd(e)) + " " +
                               (g->edgeSmooth(e) ? "1" : "0");
            fOut += ";\n";
        }
        if (g->numPolygons() > 0) {
            fOut += "\tsetAttr -s " + std::to_string(g->numPolygons()) + " -ch " + std::to_string(g->numFaceVertices()) +
                    " \".fc[0:" + std::to_string(g->numPolygons() - 1) + "]\" -type \"polyFaces\"";
            for (int f = 0; f < g->numPolygons(); ++f) {
                const int n = g->polygonSize(f), start = g->polygonStart(f);
                const int* ids = g->polygonVertices(f);
                fOut += "\n\t\tf " + std::to_string(n);
                for (int i = 0; i < n; ++i) {
                    const int e = g->faceVertexEdge(start + i);
                    fOut += ' ' + std::to_string(g->edgeStart(e) == ids[i] ? e : -(e + 1));
                }
                for (std::size_t s = 0; s < g->uvSets().size(); ++s) {
                    const std::vector<int>& uv = g->uvSets()[s].ids;
                    if (uv.empty() || !std::all_of(uv.begin() + start, uv.begin() + start + n, [](int id) { return id >= 0; }))
                        continue;
                    fOut += "\n\t\tmu " + std::to_string(s) + " " + std::to_string(n);
                    for (int i = 0; i < n; ++i)
                        fOut += ' ' + std::to_string(uv[std::size_t(start + i)]);
                }
            }
            fOut += ";\n";
        }
    }

    std::string& fOut;
};

void dagOrder(NodeBody* node, std::vector<NodeBody*>& out)
{
    for (NodeBody* child : node->children)
        if (child->isAlive) {
            out.push_back(child);
            dagOrder(child, out);
        }
}

} // namespace

namespace {

MStatus writeScene(const std::string& path, std::string* error)
{
    auto fail = [&](const std::string& why) {
        const std::string message = "Cannot save the scene to " + path + ": " + why;
        writeLog(LogLevel::kError, message);
        if (error)
            *error = message;
        return MStatus(MStatus::kFailure);
    };
    Scene& scene = Scene::current();
    std::vector<NodeBody*> nodes;
    dagOrder(scene.world(), nodes);
    for (const NodePtr& n : scene.nodes())
        if (n->isAlive && n.get() != scene.world() && !n->type->isDag && !isDefaultNode(n.get()))
            nodes.push_back(n.get());
    std::string text;
    Writer writer(text);
    writer.header(path, nodes);
    for (NodeBody* n : nodes)
        writer.node(n);
    std::vector<NodeBody*> all = nodes;
    for (const NodePtr& n : scene.nodes())
        if (n->isAlive && isDefaultNode(n.get()))
            all.push_back(n.get());
    writer.connections(all);
    text += "// End of " + std::filesystem::path(path).filename().string() + "\n";

    // Written next to the file and renamed over it, so a failed write leaves the old file.
    const std::string temporary = path + ".saving";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out)
            return fail("the file cannot be written");
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.close();
        if (!out) {
            std::remove(temporary.c_str());
            return fail("writing the file failed");
        }
    }
    std::error_code ec;
    std::filesystem::rename(temporary, path, ec);
    if (ec) {
        std::filesystem::remove(temporary, ec);
        return fail(ec.message());
    }
    return MStatus::kSuccess;
}

} // namespace

MStatus saveScene(const std::string& path, std::string* error)
{
    try {
        return writeScene(path, error);
    } catch (const std::exception& e) {
        // A scene too large for memory: nothing was written over the file.
        const std::string message = "Cannot save the scene to " + path + ": " + e.what();
        writeLog(LogLevel::kError, message);
        if (error)
            *error = message;
        return MStatus::kFailure;
    }
}

} // namespace host
