// Reads a Maya ASCII file into a new scene in two passes. The first reads every statement
// and resolves it against the registered node types without touching the scene: node types,
// parents, attribute paths, values, mesh records and connections are all checked, and the
// first fault ends the read with its line. Only a file that passed is made: a new scene, the
// nodes in file order, their values, the meshes' geometry and the connections.

#include "file/maTokens.h"
#include "file/maTypes.h"

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/evaluation.h"
#include "dg/nodeType.h"
#include "dg/scene.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include "host/harness.h"
#include "host/log.h"
#include "host/sceneFiles.h"

#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnVectorArrayData.h>

#include <charconv>
#include <climits>
#include <cmath>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <unordered_map>

namespace host {
namespace {

// Files larger than this are refused unread: the reader holds the whole text.
constexpr std::uintmax_t kMaxFileBytes = std::uintmax_t(2) << 30;

struct Fault {
    int line;
    std::string why;
};

[[noreturn]] void fault(int line, std::string why) { throw Fault{line, std::move(why)}; }

std::string quote(std::string_view text) { return "'" + std::string(text) + "'"; }

bool readInt(std::string_view text, long long& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && !text.empty();
}

// A mesh shape's own geometry as its records give it, put together once the file is read.
struct MeshRecords {
    std::vector<float> points;  // xyz per vertex
    std::vector<int> edges;     // start, end, smooth per edge
    std::vector<int> counts;    // per face
    std::vector<int> faceEdges; // per face corner: edge id, or -(id + 1) walked backwards
    std::vector<std::pair<int, int>> faceLines; // (first face, line) per fc statement
    struct UVSet {
        std::string name;
        std::vector<float> u, v;
    };
    std::map<long long, UVSet> uvSets;
    std::vector<int> muFace, muSet, muStart, muIds; // per mu record: face, set, start in muIds
    std::string currentUVSet;
    int line = 0;

    int lineOfFace(int face) const
    {
        int at = line;
        for (const auto& [first, l] : faceLines)
            if (first <= face)
                at = l;
        return at;
    }
};

struct PlannedNode {
    std::string name;
    const NodeType* type = nullptr;
    bool isDefault = false; // one of the new scene's own sets
    int parent = -1;
    int line = 0;
    std::unique_ptr<MeshRecords> mesh;
    std::shared_ptr<MeshGeometry> geometry;
    NodeBody* made = nullptr;
};

struct PlannedValue {
    int node;
    PlugKey key;
    Value value;
    int component; // a child of a compound of numbers: its component; else -1
};

struct PlannedConnection {
    int source, destination;
    PlugKey sourceKey, destinationKey;
    int line;
};

// What a plug path names: the key, and for `name[a:b]` the range of its last index.
struct PlugTarget {
    PlugKey key;
    bool range = false;
    unsigned first = 0, last = 0;
    bool arrayPlug = false; // the path ends at an array without an index
};

class Planner {
public:
    void statement(const MaStatement& s)
    {
        const std::string_view command = s.tokens[0].text;
        if (command == "requires") {
            // requires [-nodeType type]... plugin version: which plug-in makes which types.
            std::vector<std::string> types, operands;
            for (std::size_t i = 1; i < s.tokens.size(); ++i) {
                if (!s.tokens[i].isFlag())
                    operands.emplace_back(s.tokens[i].text);
                else if (i + 1 < s.tokens.size() && s.tokens[i++].text == "-nodeType")
                    types.emplace_back(s.tokens[i].text);
            }
            if (!operands.empty() && operands[0] != "maya")
                for (const std::string& type : types)
                    fPluginOf[type] = operands[0];
            return;
        }
        if (command == "currentUnit" || command == "fileInfo" || command == "select" || command == "rename" ||
            command == "lockNode" || command == "setNodeState")
            return; // nothing of the host's scene depends on them
        if (command == "createNode")
            return createNode(s);
        if (command == "setAttr")
            return setAttr(s);
        if (command == "connectAttr")
            return connectAttr(s);
        fault(s.line, "the command " + quote(command) + " is not part of the scene files the host reads");
    }

    void finish()
    {
        for (PlannedNode& n : fNodes)
            if (n.mesh)
                n.geometry = buildMesh(*n.mesh);
    }

    std::vector<PlannedNode> fNodes;
    std::vector<PlannedValue> fValues;
    std::vector<PlannedConnection> fConnections;

private:
    // ---- createNode type -n name [-p parent] [-s] [-ss]
    void createNode(const MaStatement& s)
    {
        std::string name, parent, type;
        for (std::size_t i = 1; i < s.tokens.size(); ++i) {
            const MaToken& t = s.tokens[i];
            if (t.isFlag()) {
                if (t.text == "-s" || t.text == "-shared" || t.text == "-ss" || t.text == "-skipSelect")
                    continue;
                if ((t.text == "-n" || t.text == "-name" || t.text == "-p" || t.text == "-parent") &&
                    i + 1 < s.tokens.size()) {
                    (t.text[1] == 'n' ? name : parent) = std::string(s.tokens[++i].text);
                    continue;
                }
                fault(t.line, "createNode: unknown flag " + quote(t.text));
            }
            if (!type.empty())
                fault(t.line, "createNode: one node type only, and " + quote(t.text) + " is a second");
            type = std::string(t.text);
        }
        if (type.empty())
            fault(s.line, "createNode: no node type");
        if (name.empty())
            fault(s.line, "createNode " + type + ": the node has no name (-n)");
        if (name.find_first_of("|.[]: \t") != std::string::npos)
            fault(s.line, "createNode " + type + ": " + quote(name) + " is not a valid node name");
        PlannedNode n;
        n.type = NodeTypeRegistry::instance().find(type);
        if (!n.type) {
            std::string why = "unknown node type " + quote(type);
            if (fPluginOf.count(type))
                why += ": the file requires it of the plug-in " + quote(fPluginOf[type]) + ", which is not loaded";
            fault(s.line, why);
        }
        if (!n.type->creator || type == "world" || type == "dependNode" || type == "dagNode" || type == "shape")
            fault(s.line, "the node type " + quote(type) + " is abstract; no node can be made of it");
        if (fByName.count(name))
            fault(s.line, "a node named " + quote(name) + " exists already (line " +
                              std::to_string(fNodes[std::size_t(fByName[name])].line) + ")");
        if (!parent.empty()) {
            n.parent = nodeNamed(parent, s.line);
            const PlannedNode& p = fNodes[std::size_t(n.parent)];
            if (!n.type->isDag || !p.type->isTransform)
                fault(s.line, "createNode " + type + ": " + quote(parent) + " cannot be its parent" +
                                  (n.type->isDag ? " (it is not a transform)" : " (the node is not a DAG node)"));
        }
        n.name = name;
        n.line = s.line;
        fByName[name] = int(fNodes.size());
        fNodes.push_back(std::move(n));
        fCurrent = int(fNodes.size()) - 1;
    }

    // The planned node a statement names: a file node, ":name" or a DAG path ("|t|shape").
    int nodeNamed(std::string_view text, int line)
    {
        std::string name(text);
        if (const std::size_t bar = name.rfind('|'); bar != std::string::npos)
            name = name.substr(bar + 1);
        const bool shared = !name.empty() && name[0] == ':';
        if (shared)
            name = name.substr(1);
        if (auto it = fByName.find(name); it != fByName.end())
            return it->second;
        if (name == "initialShadingGroup" || name == "defaultLightSet") {
            PlannedNode n;
            n.name = name;
            n.type = NodeTypeRegistry::instance().find("objectSet");
            n.isDefault = true;
            n.line = line;
            fByName[name] = int(fNodes.size());
            fNodes.push_back(std::move(n));
            return int(fNodes.size()) - 1;
        }
        fault(line, "no node named " + quote(text) + " was made before this line");
    }

    // Splits "node.attr..." (or ".attr..." for the node made last) into the node and the path.
    int plugNode(std::string_view text, int line, std::string_view& path)
    {
        const std::size_t dot = text.find('.');
        if (dot == std::string_view::npos || dot + 1 == text.size())
            fault(line, quote(text) + " names no attribute");
        path = text.substr(dot + 1);
        if (dot == 0) {
            if (fCurrent < 0)
                fault(line, quote(text) + " has no node: no createNode comes before it");
            return fCurrent;
        }
        return nodeNamed(text.substr(0, dot), line);
    }

    static const AttributeBody* childNamed(const AttributeBody* parent, std::string_view name)
    {
        for (const auto& c : parent->children)
            if (c->longName == name || c->shortName == name)
                return c.get();
        return nullptr;
    }

    PlugTarget resolve(const PlannedNode& node, std::string_view path, int line, std::string_view whole)
    {
        PlugTarget target;
        const AttributeBody* attr = nullptr;
        std::vector<const AttributeBody*> chain;
        std::size_t at = 0;
        while (at <= path.size()) {
            std::size_t end = path.find('.', at);
            // A dot inside brackets does not end the segment.
            if (const std::size_t bracket = path.find('[', at); bracket != std::string_view::npos && bracket < end)
                end = path.find('.', path.find(']', bracket));
            std::string_view segment = path.substr(at, end == std::string_view::npos ? std::string_view::npos : end - at);
            std::string_view index;
            if (const std::size_t open = segment.find('['); open != std::string_view::npos) {
                if (segment.back() != ']')
                    fault(line, quote(whole) + ": a bracket is not closed");
                index = segment.substr(open + 1, segment.size() - open - 2);
                segment = segment.substr(0, open);
            }
            const AttributeBody* next = attr ? childNamed(attr, segment)
                                             : node.type->findAttribute(std::string(segment));
            if (!next)
                fault(line, "the node type " + quote(node.type->name) + " has no attribute " + quote(segment) +
                                (attr ? " under " + quote(attr->longName) : std::string()) + " (in " + quote(whole) + ")");
            // Ancestors skipped by naming a child directly must not be arrays.
            for (const AttributeBody* a = next->parent; a && a != attr; a = a->parent)
                if (a->flags.array)
                    fault(line, quote(whole) + ": " + quote(segment) + " needs the index of " + quote(a->longName));
            attr = next;
            const bool last = end == std::string_view::npos;
            if (!index.empty() || attr->flags.array) {
                if (!attr->flags.array)
                    fault(line, quote(whole) + ": " + quote(attr->longName) + " is not an array");
                if (index.empty()) {
                    if (!last)
                        fault(line, quote(whole) + ": " + quote(attr->longName) + " needs an index");
                    target.arrayPlug = true;
                } else {
                    const std::size_t colon = index.find(':');
                    long long a = 0, b = 0;
                    const bool ok = colon == std::string_view::npos
                                        ? readInt(index, a) && (b = a, true)
                                        : readInt(index.substr(0, colon), a) && readInt(index.substr(colon + 1), b);
                    if (!ok || a < 0 || b < a || b > INT_MAX)
                        fault(line, quote(whole) + ": " + quote(index) + " is not an index or a range of indices");
                    if (colon != std::string_view::npos && !last)
                        fault(line, quote(whole) + ": only the last index can be a range");
                    target.key.indices.push_back(unsigned(a));
                    target.range = colon != std::string_view::npos;
                    target.first = unsigned(a);
                    target.last = unsigned(b);
                }
            }
            if (last)
                break;
            at = end + 1;
        }
        target.key.attr = attr;
        return target;
    }

    // ---- setAttr [flags] plug values
    void setAttr(const MaStatement& s)
    {
        std::string_view plugText, type;
        std::vector<MaToken> values;
        for (std::size_t i = 1; i < s.tokens.size(); ++i) {
            const MaToken& t = s.tokens[i];
            if (t.isFlag() && values.empty()) {
                static const char* const withValue[] = {"-s", "-size", "-k", "-keyable", "-l", "-lock", "-cb",
                                                        "-channelBox", "-ch", "-capacityHint", "-c", "-caching"};
                if (t.text == "-type" || t.text == "-typ") {
                    if (i + 1 >= s.tokens.size())
                        fault(t.line, "setAttr: -type needs a type name");
                    type = s.tokens[++i].text;
                } else if (std::find(std::begin(withValue), std::end(withValue), t.text) != std::end(withValue)) {
                    if (i + 1 >= s.tokens.size())
                        fault(t.line, "setAttr: " + std::string(t.text) + " needs a value");
                    ++i;
                } else if (t.text != "-av" && t.text != "-alteredValue" && t.text != "-clamp") {
                    fault(t.line, "setAttr: unknown flag " + quote(t.text));
                }
            } else if (plugText.empty()) {
                plugText = t.text;
            } else {
                values.push_back(t);
            }
        }
        if (plugText.empty())
            fault(s.line, "setAttr: no attribute");
        std::string_view path;
        const int node = plugNode(plugText, s.line, path);
        PlannedNode& n = fNodes[std::size_t(node)];
        if (values.empty())
            return; // flags only (-k, -l, -s): nothing the host keeps
        const std::string_view first = path.substr(0, path.find_first_of(".["));
        if (n.type->isA("mesh") && isMeshGeometryAttribute(first))
            return meshRecord(n, path, type, values, s.line, plugText);
        const PlugTarget target = resolve(n, path, s.line, plugText);
        const AttributeBody* a = target.key.attr;
        if (target.arrayPlug)
            fault(s.line, quote(plugText) + " is an array: set its elements");
        if (!a->flags.writable)
            fault(s.line, quote(plugText) + " is not writable");
        if (a->kind == AttrKind::kMessage)
            fault(s.line, quote(plugText) + " is a message attribute and holds no value");
        const unsigned count = target.last - target.first + 1;
        if (target.range && (a->kind == AttrKind::kTyped || a->kind == AttrKind::kGeneric || a->kind == AttrKind::kMatrix))
            fault(s.line, quote(plugText) + ": a range of elements takes numbers only");
        // A generic attribute holding a plain number is written without a -type.
        if (a->kind == AttrKind::kGeneric && type.empty() && values.size() == 1 && !a->acceptedNumeric.empty()) {
            fValues.push_back({node, target.key, Value::numeric(number(values[0])), -1});
            return;
        }
        if (a->kind == AttrKind::kTyped || a->kind == AttrKind::kGeneric)
            return dataValue(node, target.key, type, values, s.line, plugText);
        if (a->kind == AttrKind::kMatrix) {
            if (type != "matrix" || values.size() != 16)
                fault(s.line, quote(plugText) + " takes -type \"matrix\" and 16 numbers");
            double m[4][4];
            for (int i = 0; i < 16; ++i)
                m[i / 4][i % 4] = number(values[std::size_t(i)]);
            fValues.push_back({node, target.key, Value::ofMatrix(MMatrix(m)), -1});
            return;
        }
        // Numbers: the plug's own (one, or a compound's components), or a compound's children.
        std::vector<const AttributeBody*> children;
        int width = 1;
        if (a->isNumericCompound) {
            width = a->components;
        } else if (a->kind == AttrKind::kCompound) {
            for (const auto& c : a->children) {
                if (c->flags.array || (c->kind != AttrKind::kNumeric && c->kind != AttrKind::kEnum) || c->isNumericCompound)
                    fault(s.line, quote(plugText) + " is a compound whose children are not all single numbers");
                children.push_back(c.get());
            }
            width = int(children.size());
        }
        if (!type.empty() && !(a->isNumericCompound && numericTypeOf(type) != MFnNumericData::kInvalid))
            fault(s.line, quote(plugText) + " does not take -type " + quote(type));
        if (values.size() != std::size_t(width) * count)
            fault(s.line, quote(plugText) + " takes " + std::to_string(std::size_t(width) * count) + " value(s), got " +
                              std::to_string(values.size()));
        std::size_t v = 0;
        for (unsigned e = 0; e < count; ++e) {
            PlugKey key = target.key;
            if (!key.indices.empty() && target.range)
                key.indices.back() = target.first + e;
            if (!children.empty()) {
                for (const AttributeBody* c : children) {
                    PlugKey childKey{c, key.indices};
                    fValues.push_back({node, childKey, Value::numeric(scalar(c, values[v++], plugText)), -1});
                }
                continue;
            }
            Value value = Value::numeric(0.0);
            for (int c = 0; c < width && c < 4; ++c)
                value.num[c] = scalar(a, values[v++], plugText);
            fValues.push_back({node, key, value, a->isNumericComponent() ? a->childIndex : -1});
        }
    }

    double number(const MaToken& t) const
    {
        double d = 0.0;
        if (t.quoted || !readNumber(t.text, d))
            fault(t.line, quote(t.text) + " is not a number");
        return d;
    }

    // One value of a numeric or enum attribute: a number, a boolean word or an enum field.
    double scalar(const AttributeBody* a, const MaToken& t, std::string_view plugText) const
    {
        double d = 0.0;
        if (!t.quoted && readNumber(t.text, d)) {
            const bool integer = a->kind == AttrKind::kEnum ||
                                 (a->numericType != MFnNumericData::kFloat && a->numericType != MFnNumericData::kDouble &&
                                  a->numericType != MFnNumericData::k2Float && a->numericType != MFnNumericData::k3Float &&
                                  a->numericType != MFnNumericData::k2Double && a->numericType != MFnNumericData::k3Double &&
                                  a->numericType != MFnNumericData::k4Double && !a->isUnitAttribute &&
                                  a->numericType != MFnNumericData::kInvalid);
            if (integer && !(d >= INT_MIN && d <= INT_MAX))
                fault(t.line, quote(t.text) + " is outside the range of " + quote(plugText));
            return integer ? std::trunc(d) : d;
        }
        for (const auto& field : a->enumFields)
            if (field.first == t.text)
                return field.second;
        fault(t.line, quote(t.text) + " is not a value for " + quote(plugText));
    }

    // The count of an array -type, checked against the values that follow it.
    std::size_t arrayCount(const std::vector<MaToken>& values, std::size_t width, int line, std::string_view type) const
    {
        long long count = 0;
        if (values.empty() || values[0].quoted || !readInt(values[0].text, count) || count < 0)
            fault(line, "-type " + std::string(type) + " needs the element count first");
        const std::size_t given = values.size() - 1;
        if (given % width != 0 || static_cast<unsigned long long>(count) != given / width)
            fault(line, "-type " + std::string(type) + " " + std::to_string(count) + " needs " +
                            (static_cast<unsigned long long>(count) <= ULLONG_MAX / width
                                 ? std::to_string(static_cast<unsigned long long>(count) * width)
                                 : "more than " + std::to_string(ULLONG_MAX)) +
                            " value(s), got " + std::to_string(given));
        return std::size_t(count);
    }

    void dataValue(int node, const PlugKey& key, std::string_view type, const std::vector<MaToken>& values, int line,
                   std::string_view plugText)
    {
        const AttributeBody* a = key.attr;
        if (type.empty())
            fault(line, quote(plugText) + " holds data: give its -type");
        const MFnNumericData::Type numeric = numericTypeOf(type);
        const MFnData::Type kind = numeric != MFnNumericData::kInvalid ? MFnData::kNumeric : dataTypeOf(type);
        bool accepted = a->dataType == kind;
        for (MFnData::Type t : a->acceptedData)
            accepted = accepted || t == kind;
        for (MFnNumericData::Type t : a->acceptedNumeric)
            accepted = accepted || (kind == MFnData::kNumeric && t == numeric);
        if (kind == MFnData::kInvalid || !accepted)
            fault(line, quote(plugText) + " does not take -type " + quote(type));
        MObject data;
        MStatus st;
        switch (kind) {
        case MFnData::kString:
            if (values.size() != 1)
                fault(line, quote(plugText) + " takes one string");
            data = MFnStringData().create(MString(std::string(values[0].text).c_str()), &st);
            break;
        case MFnData::kStringArray: {
            MStringArray strings;
            arrayCount(values, 1, line, type);
            for (std::size_t i = 1; i < values.size(); ++i)
                strings.append(MString(std::string(values[i].text).c_str()));
            data = MFnStringArrayData().create(strings, &st);
            break;
        }
        case MFnData::kIntArray: {
            MIntArray ints;
            const std::size_t n = arrayCount(values, 1, line, type);
            ints.setLength(unsigned(n));
            for (std::size_t i = 0; i < n; ++i) {
                const double d = number(values[i + 1]);
                if (!(d >= INT_MIN && d <= INT_MAX) || d != std::floor(d))
                    fault(values[i + 1].line, quote(values[i + 1].text) + " is not a 32-bit integer");
                ints[unsigned(i)] = int(d);
            }
            data = MFnIntArrayData().create(ints, &st);
            break;
        }
        case MFnData::kDoubleArray: {
            MDoubleArray doubles;
            const std::size_t n = arrayCount(values, 1, line, type);
            doubles.setLength(unsigned(n));
            for (std::size_t i = 0; i < n; ++i)
                doubles[unsigned(i)] = number(values[i + 1]);
            data = MFnDoubleArrayData().create(doubles, &st);
            break;
        }
        case MFnData::kFloatArray: {
            MFloatArray floats;
            const std::size_t n = arrayCount(values, 1, line, type);
            floats.setLength(unsigned(n));
            for (std::size_t i = 0; i < n; ++i)
                floats[unsigned(i)] = float(number(values[i + 1]));
            data = MFnFloatArrayData().create(floats, &st);
            break;
        }
        case MFnData::kPointArray: {
            MPointArray points;
            const std::size_t n = arrayCount(values, 4, line, type);
            points.setLength(unsigned(n));
            for (std::size_t i = 0; i < n; ++i)
                points[unsigned(i)] = MPoint(number(values[4 * i + 1]), number(values[4 * i + 2]),
                                             number(values[4 * i + 3]), number(values[4 * i + 4]));
            data = MFnPointArrayData().create(points, &st);
            break;
        }
        case MFnData::kVectorArray: {
            MVectorArray vectors;
            const std::size_t n = arrayCount(values, 3, line, type);
            vectors.setLength(unsigned(n));
            for (std::size_t i = 0; i < n; ++i)
                vectors[unsigned(i)] =
                    MVector(number(values[3 * i + 1]), number(values[3 * i + 2]), number(values[3 * i + 3]));
            data = MFnVectorArrayData().create(vectors, &st);
            break;
        }
        case MFnData::kMatrix: {
            if (values.size() != 16)
                fault(line, quote(plugText) + " takes -type \"matrix\" and 16 numbers");
            double m[4][4];
            for (int i = 0; i < 16; ++i)
                m[i / 4][i % 4] = number(values[std::size_t(i)]);
            data = MFnMatrixData().create(MMatrix(m), &st);
            break;
        }
        case MFnData::kNumeric: {
            const int n = componentCount(numeric);
            if (values.size() != std::size_t(n))
                fault(line, quote(plugText) + " takes " + std::to_string(n) + " value(s) with -type " + quote(type));
            auto body = std::make_shared<NumericDataBody>();
            body->write().type = numeric;
            for (int i = 0; i < n; ++i)
                body->write().v[i] = number(values[std::size_t(i)]);
            data = Access::object(body);
            break;
        }
        default: break;
        }
        if (!st || data.isNull())
            fault(line, quote(plugText) + ": the value cannot be made");
        fValues.push_back({node, key, Value::ofData(data), -1});
    }

    // ---- mesh records: .vt, .ed, .fc, .uvst[i].uvsn, .uvst[i].uvsp, .cuvs
    void meshRecord(PlannedNode& n, std::string_view path, std::string_view type, const std::vector<MaToken>& values,
                    int line, std::string_view plugText)
    {
        if (!n.mesh) {
            n.mesh = std::make_unique<MeshRecords>();
            n.mesh->line = line;
        }
        MeshRecords& m = *n.mesh;
        // The name, and the index or range in the brackets after it.
        auto split = [&](std::string_view text, std::string_view& name, long long& a, long long& b, bool& indexed) {
            const std::size_t open = text.find('[');
            name = text.substr(0, open);
            indexed = open != std::string_view::npos;
            if (!indexed)
                return;
            const std::size_t close = text.find(']', open);
            if (close == std::string_view::npos)
                fault(line, quote(plugText) + ": a bracket is not closed");
            const std::string_view index = text.substr(open + 1, close - open - 1);
            const std::size_t colon = index.find(':');
            const bool ok = colon == std::string_view::npos
                                ? readInt(index, a) && (b = a, true)
                                : readInt(index.substr(0, colon), a) && readInt(index.substr(colon + 1), b);
            if (!ok || a < 0 || b < a || b > INT_MAX)
                fault(line, quote(plugText) + ": " + quote(index) + " is not an index or a range of indices");
        };
        std::string_view head = path.substr(0, path.find('.')), name;
        long long a = 0, b = 0;
        bool indexed = false;
        split(head, name, a, b, indexed);
        const std::size_t count = std::size_t(b - a + 1);
        auto needIndex = [&](std::size_t have, const char* what) {
            if (!indexed)
                fault(line, quote(plugText) + " needs the index or range of its " + what);
            // Records follow each other: a range may start before the end (rewriting) but
            // not past it, so a file cannot make room for what it does not give.
            if (std::size_t(a) > have)
                fault(line, quote(plugText) + ": the " + std::string(what) + " before " + std::to_string(a) +
                                " were never given");
        };
        auto floats = [&](std::size_t width) {
            if (values.size() != count * width)
                fault(line, quote(plugText) + " takes " + std::to_string(count * width) + " value(s), got " +
                                std::to_string(values.size()));
        };
        if (name == "vt" || name == "vrts") {
            needIndex(m.points.size() / 3, "vertices");
            floats(3);
            if (m.points.size() < 3 * std::size_t(b + 1))
                m.points.resize(3 * std::size_t(b + 1), 0.0f);
            for (std::size_t i = 0; i < values.size(); ++i) {
                const double d = number(values[i]);
                if (!std::isfinite(float(d)))
                    fault(values[i].line, quote(values[i].text) + " is not a finite coordinate");
                m.points[3 * std::size_t(a) + i] = float(d);
            }
        } else if (name == "ed" || name == "edge") {
            needIndex(m.edges.size() / 3, "edges");
            floats(3);
            if (m.edges.size() < 3 * std::size_t(b + 1))
                m.edges.resize(3 * std::size_t(b + 1), 0);
            for (std::size_t i = 0; i < values.size(); ++i) {
                long long v = 0;
                if (values[i].quoted || !readInt(values[i].text, v) || v < 0 || v > INT_MAX)
                    fault(values[i].line, quote(values[i].text) + " is not a vertex index or smoothing flag");
                m.edges[3 * std::size_t(a) + i] = int(v);
            }
        } else if (name == "fc" || name == "face") {
            needIndex(m.counts.size(), "faces");
            if (std::size_t(a) != m.counts.size())
                fault(line, quote(plugText) + ": faces are given in order, and face " + std::to_string(m.counts.size()) +
                                " comes next");
            if (type != "polyFaces")
                fault(line, quote(plugText) + " takes -type \"polyFaces\"");
            faces(m, values, count, line, plugText);
        } else if (name == "cuvs" || name == "currentUVSet") {
            if (type != "string" || values.size() != 1)
                fault(line, quote(plugText) + " takes -type \"string\" and a name");
            m.currentUVSet = std::string(values[0].text);
        } else { // uvst[i].uvsn, uvst[i].uvsp[a:b]
            if (!indexed || count != 1)
                fault(line, quote(plugText) + " needs the index of one UV set");
            MeshRecords::UVSet& set = m.uvSets[a];
            const std::string_view rest = path.find('.') == std::string_view::npos ? std::string_view()
                                                                                  : path.substr(path.find('.') + 1);
            std::string_view child;
            long long ca = 0, cb = 0;
            bool childIndexed = false;
            split(rest, child, ca, cb, childIndexed);
            if (child == "uvsn" || child == "uvSetName") {
                if (type != "string" || values.size() != 1)
                    fault(line, quote(plugText) + " takes -type \"string\" and a name");
                set.name = std::string(values[0].text);
            } else if (child == "uvsp" || child == "uvSetPoints") {
                a = ca;
                b = cb;
                indexed = childIndexed;
                needIndex(set.u.size(), "UVs");
                if (!type.empty() && type != "float2")
                    fault(line, quote(plugText) + " does not take -type " + quote(type));
                const std::size_t uvs = std::size_t(cb - ca + 1);
                if (values.size() != 2 * uvs)
                    fault(line, quote(plugText) + " takes " + std::to_string(2 * uvs) + " value(s), got " +
                                    std::to_string(values.size()));
                if (set.u.size() < std::size_t(cb + 1)) {
                    set.u.resize(std::size_t(cb + 1), 0.0f);
                    set.v.resize(std::size_t(cb + 1), 0.0f);
                }
                for (std::size_t i = 0; i < uvs; ++i) {
                    set.u[std::size_t(ca) + i] = float(number(values[2 * i]));
                    set.v[std::size_t(ca) + i] = float(number(values[2 * i + 1]));
                }
            } else {
                fault(line, "the host's meshes keep no " + quote(plugText));
            }
        }
    }

    // polyFaces: per face "f n e0 .. en-1", then for each UV set "mu set n uv0 .. uvn-1".
    void faces(MeshRecords& m, const std::vector<MaToken>& values, std::size_t count, int line, std::string_view plugText)
    {
        m.faceLines.emplace_back(int(m.counts.size()), line);
        const std::size_t firstFace = m.counts.size();
        std::size_t i = 0;
        auto integer = [&](const char* what) {
            long long v = 0;
            if (i >= values.size())
                fault(values.empty() ? line : values.back().line, quote(plugText) + ": the face records end inside a record (" + what + " missing)");
            if (values[i].quoted || !readInt(values[i].text, v) || v < INT_MIN || v > INT_MAX)
                fault(values[i].line, quote(values[i].text) + " is not a whole number (" + what + ")");
            ++i;
            return int(v);
        };
        while (i < values.size()) {
            const MaToken& record = values[i++];
            if (record.text == "f") {
                const int n = integer("the corner count");
                if (n < 3 || std::size_t(n) > values.size() - i)
                    fault(record.line, "a face of " + std::to_string(n) + " corners (" + quote(plugText) + ")");
                m.counts.push_back(n);
                for (int c = 0; c < n; ++c)
                    m.faceEdges.push_back(integer("an edge"));
            } else if (record.text == "mu") {
                if (m.counts.size() == firstFace)
                    fault(record.line, "a UV record comes before its face");
                const int set = integer("the UV set");
                const int n = integer("the UV count");
                if (n != m.counts.back())
                    fault(record.line, "the face has " + std::to_string(m.counts.back()) + " corners and " +
                                           std::to_string(n) + " UVs");
                m.muFace.push_back(int(m.counts.size()) - 1);
                m.muSet.push_back(set);
                m.muStart.push_back(int(m.muIds.size()));
                for (int c = 0; c < n; ++c)
                    m.muIds.push_back(integer("a UV"));
            } else {
                fault(record.line, "the face record " + quote(record.text) +
                                       " is not one the host reads (faces \"f\" and UVs \"mu\" only)");
            }
        }
        if (m.counts.size() - firstFace != count)
            fault(line, quote(plugText) + " names " + std::to_string(count) + " face(s) and gives " +
                            std::to_string(m.counts.size() - firstFace));
    }

    std::shared_ptr<MeshGeometry> buildMesh(const MeshRecords& m)
    {
        const int numEdges = int(m.edges.size() / 3);
        const int numVertices = int(m.points.size() / 3);
        for (int e = 0; e < numEdges; ++e)
            for (int k = 0; k < 2; ++k)
                if (m.edges[std::size_t(3 * e + k)] >= numVertices)
                    fault(m.line, "edge " + std::to_string(e) + " names vertex " +
                                      std::to_string(m.edges[std::size_t(3 * e + k)]) + " of " +
                                      std::to_string(numVertices));
        std::vector<int> connects(m.faceEdges.size());
        std::size_t at = 0;
        for (int f = 0; f < int(m.counts.size()); ++f) {
            const int n = m.counts[std::size_t(f)];
            for (int c = 0; c < n; ++c) {
                const int ref = m.faceEdges[at + std::size_t(c)];
                const long long e = ref >= 0 ? ref : -(static_cast<long long>(ref) + 1);
                if (e >= numEdges)
                    fault(m.lineOfFace(f), "face " + std::to_string(f) + " names edge " + std::to_string(e) + " of " +
                                               std::to_string(numEdges));
                connects[at + std::size_t(c)] = m.edges[std::size_t(3 * e + (ref >= 0 ? 0 : 1))];
            }
            for (int c = 0; c < n; ++c) {
                const int ref = m.faceEdges[at + std::size_t(c)];
                const long long e = ref >= 0 ? ref : -(static_cast<long long>(ref) + 1);
                const int to = m.edges[std::size_t(3 * e + (ref >= 0 ? 1 : 0))];
                if (to != connects[at + std::size_t((c + 1) % n)])
                    fault(m.lineOfFace(f), "the edges of face " + std::to_string(f) + " do not form a loop");
            }
            at += std::size_t(n);
        }
        auto g = std::make_shared<MeshGeometry>();
        std::string why;
        if (!g->build(m.points, m.counts, connects, &why))
            fault(m.line, "the mesh cannot be made: " + why);
        if (std::size_t(g->numFaceVertices()) != connects.size())
            fault(m.line, "a face of the mesh repeats a corner");
        for (int e = 0; e < numEdges; ++e) {
            const int id = g->findEdge(m.edges[std::size_t(3 * e)], m.edges[std::size_t(3 * e + 1)]);
            if (id >= 0)
                g->setEdgeSmooth(id, m.edges[std::size_t(3 * e + 2)] != 0);
        }
        // UV sets in the order of their indices; "mu" records name them by that index.
        std::map<long long, int> position;
        std::vector<UVSetData>& sets = g->editUVSets();
        for (const auto& [index, set] : m.uvSets) {
            if (set.name.empty())
                fault(m.line, "UV set " + std::to_string(index) + " has no name (uvsn)");
            position[index] = int(position.size());
            if (sets.size() < position.size())
                sets.emplace_back();
            UVSetData& out = sets[position.size() - 1];
            out.name = set.name;
            out.u = set.u;
            out.v = set.v;
            out.ids.clear();
        }
        std::vector<int> faceStart(m.counts.size(), 0);
        for (std::size_t f = 1; f < m.counts.size(); ++f)
            faceStart[f] = faceStart[f - 1] + m.counts[f - 1];
        for (std::size_t r = 0; r < m.muFace.size(); ++r) {
            const int face = m.muFace[r];
            const auto it = position.find(m.muSet[r]);
            if (it == position.end())
                fault(m.lineOfFace(face), "face " + std::to_string(face) + " names UV set " +
                                              std::to_string(m.muSet[r]) + ", which the mesh does not have");
            UVSetData& set = sets[std::size_t(it->second)];
            if (set.ids.empty())
                set.ids.assign(connects.size(), -1);
            for (int c = 0; c < m.counts[std::size_t(face)]; ++c) {
                const int id = m.muIds[std::size_t(m.muStart[r] + c)];
                if (id < 0 || std::size_t(id) >= set.u.size())
                    fault(m.lineOfFace(face), "face " + std::to_string(face) + " names UV " + std::to_string(id) +
                                                  " of " + std::to_string(set.u.size()));
                set.ids[std::size_t(faceStart[std::size_t(face)] + c)] = id;
            }
        }
        if (!m.currentUVSet.empty()) {
            const int current = g->findUVSet(m.currentUVSet);
            if (current < 0)
                fault(m.line, "the current UV set " + quote(m.currentUVSet) + " is not one of the mesh's");
            g->setCurrentUVSet(current);
        }
        return g;
    }

    // ---- connectAttr [-f] [-na] [-l] source destination
    void connectAttr(const MaStatement& s)
    {
        std::vector<const MaToken*> plugs;
        bool nextAvailable = false;
        for (std::size_t i = 1; i < s.tokens.size(); ++i) {
            const MaToken& t = s.tokens[i];
            if (t.isFlag()) {
                if (t.text == "-na" || t.text == "-nextAvailable")
                    nextAvailable = true;
                else if (t.text == "-l" || t.text == "-lock")
                    ++i;
                else if (t.text != "-f" && t.text != "-force")
                    fault(t.line, "connectAttr: unknown flag " + quote(t.text));
                continue;
            }
            plugs.push_back(&t);
        }
        if (plugs.size() != 2)
            fault(s.line, "connectAttr takes a source and a destination plug");
        std::string_view sourcePath, destinationPath;
        PlannedConnection c{};
        c.line = s.line;
        c.source = plugNode(plugs[0]->text, s.line, sourcePath);
        c.destination = plugNode(plugs[1]->text, s.line, destinationPath);
        const PlugTarget source = resolve(fNodes[std::size_t(c.source)], sourcePath, s.line, plugs[0]->text);
        PlugTarget destination = resolve(fNodes[std::size_t(c.destination)], destinationPath, s.line, plugs[1]->text);
        if (source.range || destination.range)
            fault(s.line, "connectAttr: a connection joins single plugs, not ranges");
        if (destination.arrayPlug && nextAvailable) {
            unsigned& next = fNextIndex[{c.destination, destination.key.attr}];
            destination.key.indices.push_back(next++);
            destination.arrayPlug = false;
        }
        c.sourceKey = source.key;
        c.destinationKey = destination.key;
        const AttributeBody* sa = source.key.attr;
        const AttributeBody* da = destination.key.attr;
        const std::string both = quote(plugs[0]->text) + " to " + quote(plugs[1]->text);
        if (c.source == c.destination && source.key == destination.key)
            fault(s.line, "connectAttr: cannot connect " + quote(plugs[0]->text) + " to itself");
        if (!sa->flags.connectable || !sa->flags.readable)
            fault(s.line, "connectAttr: " + quote(plugs[0]->text) + " cannot be a connection source");
        if (!da->flags.connectable || !da->flags.writable)
            fault(s.line, "connectAttr: " + quote(plugs[1]->text) + " cannot be a connection destination");
        if (da->kind == AttrKind::kMessage && sa->kind != AttrKind::kMessage)
            fault(s.line, "connectAttr: only a message can connect to " + quote(plugs[1]->text));
        if (destination.arrayPlug && !source.arrayPlug)
            fault(s.line, "connectAttr: cannot connect " + both + ": the destination is a whole array");
        std::string key = std::to_string(c.destination) + plugName(nullptr, destination.key, true);
        if (auto it = fDestinations.find(key); it != fDestinations.end())
            fault(s.line, "connectAttr: " + quote(plugs[1]->text) + " is connected already (line " +
                              std::to_string(it->second) + ")");
        fDestinations.emplace(key, s.line);
        if (!destination.key.indices.empty()) {
            unsigned& next = fNextIndex[{c.destination, destination.key.attr}];
            next = std::max(next, destination.key.indices.back() + 1);
        }
        fConnections.push_back(c);
    }

    std::unordered_map<std::string, int> fByName;
    std::unordered_map<std::string, int> fDestinations;
    std::map<std::pair<int, const AttributeBody*>, unsigned> fNextIndex;
    std::unordered_map<std::string, std::string> fPluginOf; // node type -> plug-in, from requires
    int fCurrent = -1;
};

MStatus makeScene(Planner& plan, const std::string& path, std::string* error);

MStatus failed(const std::string& message, std::string* error)
{
    writeLog(LogLevel::kError, message);
    if (error)
        *error = message;
    return MStatus::kFailure;
}

} // namespace

MStatus openScene(const std::string& path, std::string* error)
{
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in)
        return failed("Cannot open the scene " + path + ": the file cannot be read", error);
    const std::streamoff size = in.tellg();
    if (size < 0 || std::uintmax_t(size) > kMaxFileBytes)
        return failed("Cannot open the scene " + path + ": the file is larger than 2 GiB", error);
    std::string text(std::size_t(size), '\0');
    in.seekg(0);
    in.read(text.data(), size);
    if (!in)
        return failed("Cannot open the scene " + path + ": the file cannot be read", error);

    Planner plan;
    try {
        MaReader reader(text);
        MaStatement statement;
        while (reader.next(statement))
            plan.statement(statement);
        if (!reader.error().empty())
            return failed(path + ":" + reader.error().substr(5), error);
        plan.finish();
    } catch (const Fault& f) {
        return failed(path + ":" + std::to_string(f.line) + ": " + f.why, error);
    } catch (const std::exception& e) {
        return failed("Cannot open the scene " + path + ": " + e.what(), error);
    }

    // The file is whole: make it.
    try {
        return makeScene(plan, path, error);
    } catch (const std::exception& e) {
        newScene();
        return failed("Cannot open the scene " + path + ": " + e.what() + "; the scene is left empty", error);
    }
}

namespace {

MStatus makeScene(Planner& plan, const std::string& path, std::string* error)
{
    newScene();
    Scene& scene = Scene::current();
    auto abandon = [&](int line, const std::string& why) {
        newScene();
        return failed(path + ":" + std::to_string(line) + ": " + why + "; the scene is left empty", error);
    };
    for (PlannedNode& n : plan.fNodes) {
        if (n.isDefault) {
            n.made = scene.findByName(n.name);
            if (!n.made)
                return abandon(n.line, "the scene has no " + quote(n.name));
            continue;
        }
        MStatus st;
        NodeBody* parent = n.parent >= 0 ? plan.fNodes[std::size_t(n.parent)].made : nullptr;
        NodePtr made = scene.createNode(n.type, n.name, parent, &st);
        if (!made || !st)
            return abandon(n.line, "the " + n.type->name + " node " + quote(n.name) + " cannot be made");
        n.made = made.get();
    }
    for (const PlannedValue& v : plan.fValues) {
        NodeBody* node = plan.fNodes[std::size_t(v.node)].made;
        if (v.component >= 0)
            writeComponent(node, v.key, v.component, v.value.num[0]);
        else
            writeValue(node, v.key, v.value);
    }
    for (const PlannedNode& n : plan.fNodes)
        if (n.geometry)
            setShapeGeometry(n.made, makeMeshData(n.geometry));
    for (const PlannedConnection& c : plan.fConnections) {
        std::string why;
        if (!connectPlugs({plan.fNodes[std::size_t(c.source)].made, c.sourceKey},
                          {plan.fNodes[std::size_t(c.destination)].made, c.destinationKey}, true, &why))
            return abandon(c.line, why);
    }
    return MStatus::kSuccess;
}

} // namespace
} // namespace host
