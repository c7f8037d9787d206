// Built-in commands on plugs and the graph: setAttr, getAttr, connectAttr, disconnectAttr,
// dgdirty, listHistory.

#include "command/builtinArgs.h"

#include "dg/access.h"
#include "dg/attributeBody.h"
#include "dg/evaluation.h"
#include "dg/plugNames.h"
#include "dg/scene.h"

#include "host/log.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MVectorArray.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <set>

namespace host {
namespace {

bool plugNamed(const CommandCall& call, const std::string& name, MPlug& plug, MStatus& st)
{
    std::string error;
    if (parsePlug(name, plug, &error))
        return true;
    st = commandError(call, error);
    return false;
}

bool integerType(const AttributeBody* a)
{
    if (a->kind == AttrKind::kEnum)
        return true;
    switch (a->numericType) {
    case MFnNumericData::kBoolean:
    case MFnNumericData::kByte:
    case MFnNumericData::kChar:
    case MFnNumericData::kShort:
    case MFnNumericData::k2Short:
    case MFnNumericData::k3Short:
    case MFnNumericData::kLong:
    case MFnNumericData::k2Long:
    case MFnNumericData::k3Long:
    case MFnNumericData::kInt64: return !a->isUnitAttribute;
    default: return false;
    }
}

// One numeric value as setAttr reads it: a number, a boolean word, or an enum field name.
bool numericText(const AttributeBody* a, const std::string& text, double& out)
{
    if (parseNumber(text, out))
        return true;
    bool b = false;
    if (parseBool(text, b)) {
        out = b ? 1.0 : 0.0;
        return true;
    }
    for (const auto& field : a->enumFields) {
        if (field.first == text) {
            out = field.second;
            return true;
        }
    }
    return false;
}

MStatus setNumeric(MPlug& plug, const AttributeBody* a, double v)
{
    if (a->numericType == MFnNumericData::kBoolean)
        return plug.setBool(v != 0.0);
    if (integerType(a))
        return !(v >= INT_MIN && v <= INT_MAX) ? MStatus(MStatus::kInvalidParameter) : plug.setInt(static_cast<int>(v));
    return plug.setDouble(v);
}

MObject arrayData(const CommandCall& call, const std::string& type, const std::vector<std::string>& values,
                  MStatus& st)
{
    // Array types give their element count first: "-type doubleArray 3 1 2 3".
    long long count = 0;
    if (values.empty() || !parseInteger(values.front(), count) || count < 0) {
        st = commandError(call, "-type " + type + " needs the element count first");
        return MObject();
    }
    const std::size_t width = type == "pointArray" ? 4 : (type == "vectorArray" ? 3 : 1);
    // The count is compared by division, so that no count can wrap the product to a size
    // that happens to fit.
    const std::size_t given = values.size() - 1;
    if (static_cast<unsigned long long>(count) > given / width || given % width != 0 ||
        given / width != static_cast<unsigned long long>(count)) {
        const bool representable = static_cast<unsigned long long>(count) <= ULLONG_MAX / width;
        st = commandError(call, "-type " + type + " " + std::to_string(count) + " needs " +
                                    (representable ? std::to_string(static_cast<unsigned long long>(count) * width)
                                                   : "more than " + std::to_string(ULLONG_MAX)) +
                                    " value(s), got " + std::to_string(given));
        return MObject();
    }
    std::vector<double> numbers;
    if (type != "stringArray") {
        for (std::size_t i = 1; i < values.size(); ++i) {
            double d = 0.0;
            if (!parseNumber(values[i], d)) {
                st = commandError(call, "'" + values[i] + "' is not a number");
                return MObject();
            }
            numbers.push_back(d);
        }
    }
    if (type == "doubleArray") {
        MFnDoubleArrayData fn;
        return fn.create(MDoubleArray(numbers.data(), unsigned(numbers.size())));
    }
    if (type == "Int32Array") {
        MIntArray ints;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const double d = numbers[i];
            if (!(d >= INT_MIN && d <= INT_MAX) || d != std::floor(d)) {
                st = commandError(call, "-type Int32Array: '" + values[i + 1] + "' is not a 32-bit integer");
                return MObject();
            }
            ints.append(static_cast<int>(d));
        }
        MFnIntArrayData fn;
        return fn.create(ints);
    }
    if (type == "pointArray") {
        MPointArray points;
        for (std::size_t i = 0; i < numbers.size(); i += 4)
            points.append(MPoint(numbers[i], numbers[i + 1], numbers[i + 2], numbers[i + 3]));
        MFnPointArrayData fn;
        return fn.create(points);
    }
    if (type == "vectorArray") {
        MVectorArray vectors;
        for (std::size_t i = 0; i < numbers.size(); i += 3)
            vectors.append(MVector(numbers[i], numbers[i + 1], numbers[i + 2]));
        MFnVectorArrayData fn;
        return fn.create(vectors);
    }
    MStringArray strings;
    for (std::size_t i = 1; i < values.size(); ++i)
        strings.append(MString(values[i].c_str()));
    MFnStringArrayData fn;
    return fn.create(strings);
}

// The numeric plugs that take setAttr's values in order: the plug itself, or its children.
std::vector<MPlug> numericTargets(const MPlug& plug, const AttributeBody* a)
{
    std::vector<MPlug> out;
    if (a->kind == AttrKind::kNumeric && !a->isNumericCompound) {
        out.push_back(plug);
    } else if (a->kind == AttrKind::kEnum) {
        out.push_back(plug);
    } else if (a->kind == AttrKind::kCompound || a->isNumericCompound) {
        for (unsigned i = 0; i < plug.numChildren(); ++i) {
            MPlug child = plug.child(i);
            const AttributeBody* c = Access::plugKey(child).attr;
            if (!c || c->flags.array || (c->kind != AttrKind::kNumeric && c->kind != AttrKind::kEnum) ||
                c->isNumericCompound)
                return {};
            out.push_back(child);
        }
    }
    return out;
}

MStatus applyValues(const CommandCall& call, MPlug& plug, const AttributeBody* a, const std::string& type,
                    const std::vector<std::string>& values)
{
    if (type == "string" || (type.empty() && a->kind == AttrKind::kTyped && a->dataType == MFnData::kString)) {
        if (values.size() != 1)
            return commandError(call, "a string attribute takes one value");
        return plug.setString(MString(values.front().c_str()));
    }
    if (type == "doubleArray" || type == "Int32Array" || type == "pointArray" || type == "vectorArray" ||
        type == "stringArray") {
        MStatus st;
        MObject data = arrayData(call, type, values, st);
        return data.isNull() ? (st ? MStatus(MStatus::kFailure) : st) : plug.setMObject(data);
    }
    if (type == "matrix") {
        if (values.size() != 16)
            return commandError(call, "-type matrix needs 16 values");
        double m[4][4];
        for (int i = 0; i < 16; ++i)
            if (!parseNumber(values[std::size_t(i)], m[i / 4][i % 4]))
                return commandError(call, "'" + values[std::size_t(i)] + "' is not a number");
        if (a->kind == AttrKind::kMatrix)
            return writeValue(Access::plugNode(plug), Access::plugKey(plug), Value::ofMatrix(MMatrix(m)));
        MFnMatrixData fn;
        return plug.setMObject(fn.create(MMatrix(m)));
    }
    static const char* const numericTypes[] = {"double2", "double3", "float2", "float3", "long2",
                                               "long3",   "short2",  "short3", "double4"};
    if (!type.empty() && std::find(std::begin(numericTypes), std::end(numericTypes), type) == std::end(numericTypes))
        return commandError(call, "-type '" + type + "' is not supported");
    std::vector<MPlug> targets = numericTargets(plug, a);
    if (targets.empty())
        return commandError(call, "cannot set the attribute '" + std::string(plug.name().asChar()) +
                                      "' from values");
    if (targets.size() != values.size())
        return commandError(call, "'" + std::string(plug.name().asChar()) + "' takes " +
                                      std::to_string(targets.size()) + " value(s), got " +
                                      std::to_string(values.size()));
    // All values are read before any is set, so a bad one changes nothing.
    std::vector<double> numbers;
    for (std::size_t i = 0; i < values.size(); ++i) {
        double d = 0.0;
        const AttributeBody* target = Access::plugKey(targets[i]).attr;
        if (!numericText(target, values[i], d))
            return commandError(call, "'" + values[i] + "' is not a value for '" +
                                          std::string(targets[i].name().asChar()) + "'");
        if (integerType(target) && target->numericType != MFnNumericData::kBoolean && !(d >= INT_MIN && d <= INT_MAX))
            return commandError(call, "'" + values[i] + "' is outside the range of '" +
                                          std::string(targets[i].name().asChar()) + "'");
        numbers.push_back(d);
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        MStatus st = setNumeric(targets[i], Access::plugKey(targets[i]).attr, numbers[i]);
        if (!st)
            return commandError(call, "cannot set '" + std::string(targets[i].name().asChar()) + "'",
                                st.statusCode());
    }
    return MStatus::kSuccess;
}

MStatus setAttrCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"typ", "type", 1}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> operands = a.operandTexts();
    if (operands.empty())
        return commandError(call, "needs an attribute and its value");
    MPlug plug;
    MStatus st;
    if (!plugNamed(call, operands.front(), plug, st))
        return st;
    std::vector<std::string> values(operands.begin() + 1, operands.end());
    if (values.empty())
        return commandError(call, "no value given for '" + operands.front() + "'");
    if (plug.isArray())
        return commandError(call, "'" + operands.front() + "' is an array; set its elements");
    if (plug.isDestination())
        return commandError(call, "The attribute '" + operands.front() +
                                      "' is locked or connected and cannot be modified.",
                            MStatus::kFailure);
    NodeBody* node = Access::plugNode(plug);
    PlugKey key = Access::plugKey(plug);
    if (!node || !key.attr)
        return commandError(call, "no attribute '" + operands.front() + "'");
    if (!key.attr->flags.writable)
        return commandError(call, "The attribute '" + operands.front() + "' is not writable.", MStatus::kFailure);
    Value before = readValue(node, key);
    st = applyValues(call, plug, key.attr, a.text("type"), values);
    if (!st) {
        // A compound's children are set one by one: a later one failing takes back the first.
        const Value now = readValue(node, key);
        if (now.kind == Value::Kind::kNumeric && before.kind == now.kind &&
            !std::equal(std::begin(now.num), std::end(now.num), std::begin(before.num)))
            writeValue(node, key, before);
        return st;
    }
    Value after = readValue(node, key);
    NodePtr keep = Scene::current().shared(node);
    recordUndo([keep, key, before] { writeValue(keep.get(), key, before); },
               [keep, key, after] { writeValue(keep.get(), key, after); });
    return MStatus::kSuccess;
}

// Appends the plug's value to `out` as getAttr shows it; false when it has no such form.
bool plugValue(const MPlug& plug, CommandValue& out, std::string& why)
{
    const AttributeBody* a = Access::plugKey(plug).attr;
    auto addNumber = [&](double v, bool integer) {
        if (integer && out.kind == CommandValue::Kind::kNone) {
            out = CommandValue::ofInt(static_cast<int>(v));
            return;
        }
        if (out.kind == CommandValue::Kind::kInt) {
            out = CommandValue::ofDoubles({double(out.ints.front())});
        } else if (out.kind == CommandValue::Kind::kNone) {
            out = CommandValue::ofDouble(v);
            return;
        } else if (out.kind == CommandValue::Kind::kDouble) {
            out.kind = CommandValue::Kind::kDoubleArray;
        }
        out.doubles.push_back(v);
    };
    if (!a) {
        why = "no attribute";
        return false;
    }
    if (plug.isArray()) {
        for (unsigned i = 0; i < plug.numElements(); ++i) {
            CommandValue element;
            if (!plugValue(plug.elementByPhysicalIndex(i), element, why))
                return false;
            double d = 0.0;
            std::vector<std::string> items = element.items();
            for (const std::string& item : items)
                if (parseNumber(item, d))
                    addNumber(d, false);
        }
        if (out.kind == CommandValue::Kind::kNone)
            out = CommandValue::ofDoubles({});
        else if (out.kind == CommandValue::Kind::kDouble)
            out.kind = CommandValue::Kind::kDoubleArray;
        return true;
    }
    switch (a->kind) {
    case AttrKind::kNumeric:
    case AttrKind::kEnum:
    case AttrKind::kCompound: {
        std::vector<MPlug> targets = numericTargets(plug, a);
        if (targets.empty()) {
            why = "the attribute has no value of its own";
            return false;
        }
        if (targets.size() == 1 && !a->isNumericCompound && a->kind != AttrKind::kCompound) {
            addNumber(plug.asDouble(), integerType(a));
            return true;
        }
        std::vector<double> values;
        for (const MPlug& t : targets)
            values.push_back(t.asDouble());
        out = CommandValue::ofDoubles(values);
        return true;
    }
    case AttrKind::kMatrix: {
        Value v = readValue(Access::plugNode(plug), Access::plugKey(plug));
        std::vector<double> values;
        for (unsigned r = 0; r < 4; ++r)
            for (unsigned c = 0; c < 4; ++c)
                values.push_back(v.matrix(r, c));
        out = CommandValue::ofDoubles(values);
        return true;
    }
    case AttrKind::kTyped:
    case AttrKind::kGeneric: {
        MObject data = plug.asMObject();
        switch (data.apiType()) {
        case MFn::kStringData: out = CommandValue::ofString(MFnStringData(data).string().asChar()); return true;
        case MFn::kStringArrayData: {
            MStringArray s = MFnStringArrayData(data).array();
            std::vector<std::string> v;
            for (unsigned i = 0; i < s.length(); ++i)
                v.push_back(s[i].asChar());
            out = CommandValue::ofStrings(v);
            return true;
        }
        case MFn::kDoubleArrayData: {
            MDoubleArray d = MFnDoubleArrayData(data).array();
            std::vector<double> v;
            for (unsigned i = 0; i < d.length(); ++i)
                v.push_back(d[i]);
            out = CommandValue::ofDoubles(v);
            return true;
        }
        case MFn::kIntArrayData: {
            MIntArray d = MFnIntArrayData(data).array();
            std::vector<int> v;
            for (unsigned i = 0; i < d.length(); ++i)
                v.push_back(d[i]);
            out = CommandValue::ofInts(v);
            return true;
        }
        case MFn::kPointArrayData: {
            MPointArray p = MFnPointArrayData(data).array();
            std::vector<double> v;
            for (unsigned i = 0; i < p.length(); ++i)
                v.insert(v.end(), {p[i].x, p[i].y, p[i].z, p[i].w});
            out = CommandValue::ofDoubles(v);
            return true;
        }
        case MFn::kVectorArrayData: {
            MVectorArray p = MFnVectorArrayData(data).array();
            std::vector<double> v;
            for (unsigned i = 0; i < p.length(); ++i)
                v.insert(v.end(), {p[i].x, p[i].y, p[i].z});
            out = CommandValue::ofDoubles(v);
            return true;
        }
        case MFn::kMatrixData: {
            const MMatrix& m = MFnMatrixData(data).matrix();
            std::vector<double> v;
            for (unsigned r = 0; r < 4; ++r)
                for (unsigned c = 0; c < 4; ++c)
                    v.push_back(m(r, c));
            out = CommandValue::ofDoubles(v);
            return true;
        }
        default:
            why = data.isNull() ? "the attribute holds no data" : "the data of the attribute cannot be shown";
            return false;
        }
    }
    default: why = "message attributes have no value"; return false;
    }
}

std::string typeNameOf(const MPlug& plug)
{
    const AttributeBody* a = Access::plugKey(plug).attr;
    if (plug.isArray())
        return "TdataCompound";
    switch (a->kind) {
    case AttrKind::kEnum: return "enum";
    case AttrKind::kMatrix: return "matrix";
    case AttrKind::kMessage: return "message";
    case AttrKind::kCompound: return "TdataCompound";
    case AttrKind::kTyped:
    case AttrKind::kGeneric: {
        switch (plug.asMObject().apiType()) {
        case MFn::kStringData: return "string";
        case MFn::kStringArrayData: return "stringArray";
        case MFn::kDoubleArrayData: return "doubleArray";
        case MFn::kIntArrayData: return "Int32Array";
        case MFn::kPointArrayData: return "pointArray";
        case MFn::kVectorArrayData: return "vectorArray";
        case MFn::kMatrixData: return "matrix";
        case MFn::kMeshData: return "mesh";
        default: return "data";
        }
    }
    default: break;
    }
    switch (a->numericType) {
    case MFnNumericData::kBoolean: return "bool";
    case MFnNumericData::kByte:
    case MFnNumericData::kChar: return "byte";
    case MFnNumericData::kShort: return "short";
    case MFnNumericData::k2Short: return "short2";
    case MFnNumericData::k3Short: return "short3";
    case MFnNumericData::kLong: return "long";
    case MFnNumericData::k2Long: return "long2";
    case MFnNumericData::k3Long: return "long3";
    case MFnNumericData::kInt64: return "int64";
    case MFnNumericData::kFloat: return "float";
    case MFnNumericData::k2Float: return "float2";
    case MFnNumericData::k3Float: return "float3";
    case MFnNumericData::k2Double: return "double2";
    case MFnNumericData::k3Double: return "double3";
    case MFnNumericData::k4Double: return "double4";
    default: return a->isUnitAttribute ? "doubleLinear" : "double";
    }
}

MStatus getAttrCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"s", "size", 0}, {"typ", "type", 0}}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 1)
        return commandError(call, "needs exactly one attribute");
    MPlug plug;
    MStatus st;
    if (!plugNamed(call, a.operands().front().text, plug, st))
        return st;
    if (a.has("size")) {
        result = CommandValue::ofInt(plug.isArray() ? int(plug.numElements()) : 1);
        return MStatus::kSuccess;
    }
    if (a.has("type")) {
        result = CommandValue::ofString(typeNameOf(plug));
        return MStatus::kSuccess;
    }
    std::string why;
    if (!plugValue(plug, result, why))
        return commandError(call, "'" + a.operands().front().text + "': " + why);
    return MStatus::kSuccess;
}

MStatus connectAttrCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"f", "force", 0}, {"na", "nextAvailable", 0}}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 2)
        return commandError(call, "needs a source and a destination attribute");
    MPlug src, dst;
    MStatus st;
    if (!plugNamed(call, a.operands()[0].text, src, st) || !plugNamed(call, a.operands()[1].text, dst, st))
        return st;
    if (a.has("nextAvailable") && dst.isArray()) {
        MIntArray used;
        dst.getExistingArrayAttributeIndices(used);
        long long next = 0;
        for (unsigned i = 0; i < used.length(); ++i)
            next = std::max(next, static_cast<long long>(static_cast<unsigned>(used[i])) + 1);
        if (next > INT_MAX)
            return commandError(call, "-nextAvailable: '" + a.operands()[1].text +
                                          "' has no free index after " + std::to_string(next - 1));
        dst = dst.elementByLogicalIndex(unsigned(next));
    }
    PlugRef s = Access::plugRef(src), d = Access::plugRef(dst);
    PlugSlot* slot = d.node ? d.node->findSlot(d.key) : nullptr;
    bool hadSource = slot && slot->hasSource;
    PlugRef oldSource = hadSource ? slot->source : PlugRef();
    std::string text = "Connected " + std::string(src.name().asChar()) + " to " + dst.name().asChar() + ".";
    if (hadSource && oldSource == s) {
        writeLog(LogLevel::kWarning, "'" + std::string(src.name().asChar()) + "' is already connected to '" +
                                         dst.name().asChar() + "'.");
        result = CommandValue::ofString(text);
        return MStatus::kSuccess;
    }
    // Disconnecting keeps the last value that came through; undo gives back the value the
    // destination had before, so that undoing the connection leaves nothing of it.
    const Value before = hadSource || !d.node ? Value() : readValue(d.node, d.key);
    std::string error;
    st = connectPlugs(s, d, a.has("force"), &error);
    if (!st)
        return commandError(call, error.empty() ? "cannot connect" : error, st.statusCode());
    // The closures keep the nodes alive; plug references hold them only by address.
    NodePtr keepS = Scene::current().shared(s.node), keepD = Scene::current().shared(d.node);
    NodePtr keepOld = hadSource ? Scene::current().shared(oldSource.node) : nullptr;
    recordUndo(
        [s, d, hadSource, oldSource, keepS, keepD, keepOld, before] {
            disconnectPlugs(s, d, nullptr);
            if (hadSource && oldSource.node->isAlive)
                connectPlugs(oldSource, d, true, nullptr);
            else if (!hadSource)
                writeValue(d.node, d.key, before);
        },
        [s, d, keepS, keepD] { connectPlugs(s, d, true, nullptr); });
    result = CommandValue::ofString(text);
    return MStatus::kSuccess;
}

MStatus disconnectAttrCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 2)
        return commandError(call, "needs a source and a destination attribute");
    MPlug src, dst;
    MStatus st;
    if (!plugNamed(call, a.operands()[0].text, src, st) || !plugNamed(call, a.operands()[1].text, dst, st))
        return st;
    PlugRef s = Access::plugRef(src), d = Access::plugRef(dst);
    std::string error;
    st = disconnectPlugs(s, d, &error);
    if (!st)
        return commandError(call, error.empty() ? "the attributes are not connected" : error, st.statusCode());
    NodePtr keepS = Scene::current().shared(s.node), keepD = Scene::current().shared(d.node);
    recordUndo([s, d, keepS, keepD] { connectPlugs(s, d, true, nullptr); },
               [s, d, keepS, keepD] { disconnectPlugs(s, d, nullptr); });
    return MStatus::kSuccess;
}

void dirtyNode(NodeBody* node)
{
    for (const MObject& attr : node->type->attributes) {
        const AttributeBody* body = Access::attribute(attr);
        if (body && !body->parent)
            markDirty(node, PlugKey{body, {}});
    }
}

MStatus dgdirtyCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"a", "allPlugs", 0}}))
        return MStatus::kInvalidParameter;
    std::vector<std::string> names = a.operandTexts();
    if (names.empty()) {
        if (!a.has("allPlugs"))
            return commandError(call, "needs nodes or plugs, or -allPlugs");
        for (const NodePtr& n : std::vector<NodePtr>(Scene::current().nodes()))
            dirtyNode(n.get());
        return MStatus::kSuccess;
    }
    // Names are checked first: a bad one dirties nothing.
    std::vector<NodeBody*> nodes;
    std::vector<MPlug> plugs;
    for (const std::string& name : names) {
        if (name.find('.') == std::string::npos) {
            NodeBody* n = findNodeByPath(name);
            if (!n)
                return commandError(call, "No object matches name: " + name);
            nodes.push_back(n);
        } else {
            MPlug p;
            MStatus st;
            if (!plugNamed(call, name, p, st))
                return st;
            plugs.push_back(p);
        }
    }
    for (NodeBody* n : nodes)
        dirtyNode(n);
    for (const MPlug& p : plugs)
        markDirty(Access::plugNode(p), Access::plugKey(p));
    return MStatus::kSuccess;
}

MStatus listHistoryCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"ac", "allConnections", 0},
                        {"f", "future", kOptionalArgument},
                        {"pdo", "pruneDagObjects", kOptionalArgument},
                        {"lv", "levels", 1},
                        {"il", "interestLevel", 1}}))
        return MStatus::kInvalidParameter;
    auto flagOn = [&](const char* name) {
        bool on = a.has(name);
        if (const ArgValue* v = a.value(name))
            parseBool(v->text, on);
        return on;
    };
    bool future = flagOn("future");
    bool prune = flagOn("pruneDagObjects");
    long long levels = 0;
    if (a.has("levels") && (!parseInteger(a.text("levels"), levels) || levels < 0))
        return commandError(call, "-levels needs a whole number of 0 or more");
    std::vector<std::string> names = a.operandTexts();
    if (names.empty()) {
        MSelectionList active;
        MStringArray selected;
        MGlobal::getActiveSelectionList(active);
        active.getSelectionStrings(selected);
        for (unsigned i = 0; i < selected.length(); ++i)
            names.push_back(std::string(selected[i].asChar()).substr(0, std::string(selected[i].asChar()).find('.')));
    }
    std::vector<NodeBody*> order;
    std::set<NodeBody*> seen;
    for (const std::string& name : names) {
        NodeBody* n = findNodeByPath(name);
        if (!n)
            return commandError(call, "No object matches name: " + name);
        // A transform stands for the shapes under it.
        std::vector<NodeBody*> starts;
        if (n->type->isTransform) {
            for (NodeBody* child : n->children)
                if (child->type->isShape)
                    starts.push_back(child);
        } else {
            starts.push_back(n);
        }
        for (NodeBody* s : starts)
            if (seen.insert(s).second)
                order.push_back(s);
    }
    // Breadth first through the connections; neighbours in creation order, so the list is
    // the same on every run.
    std::vector<std::pair<NodeBody*, long long>> frontier;
    for (NodeBody* n : order)
        frontier.push_back({n, 0});
    for (std::size_t i = 0; i < frontier.size(); ++i) {
        NodeBody* node = frontier[i].first;
        long long depth = frontier[i].second;
        if (levels > 0 && depth >= levels)
            continue;
        if (prune && depth > 0 && node->type->isDag)
            continue;
        std::vector<NodeBody*> next;
        for (const auto& entry : node->slots) {
            const PlugSlot& slot = entry.second;
            if (!future && slot.hasSource && slot.source.node && slot.source.node->isAlive)
                next.push_back(slot.source.node);
            if (future)
                for (const PlugRef& d : slot.destinations)
                    if (d.node && d.node->isAlive)
                        next.push_back(d.node);
        }
        std::sort(next.begin(), next.end(), [](NodeBody* l, NodeBody* r) { return l->serial < r->serial; });
        for (NodeBody* n : next) {
            if (!seen.insert(n).second)
                continue;
            frontier.push_back({n, depth + 1});
            if (!(prune && n->type->isDag))
                order.push_back(n);
        }
    }
    std::vector<std::string> out;
    for (NodeBody* n : order)
        out.push_back(n->name);
    result = CommandValue::ofStrings(out);
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("setAttr", setAttrCommand);
        registerBuiltinCommand("getAttr", getAttrCommand);
        registerBuiltinCommand("connectAttr", connectAttrCommand);
        registerBuiltinCommand("disconnectAttr", disconnectAttrCommand);
        registerBuiltinCommand("dgdirty", dgdirtyCommand);
        registerBuiltinCommand("listHistory", listHistoryCommand);
    }
} gRegistrar;

} // namespace
} // namespace host
