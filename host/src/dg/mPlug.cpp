#include <maya/MPlug.h>

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"

#include <maya/MDataHandle.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <cmath>

using host::Access;
using host::AttrKind;
using host::AttributeBody;
using host::NodeBody;
using host::PlugKey;
using host::Value;

namespace {

struct Resolved {
    NodeBody* node = nullptr;
    PlugKey key;
    explicit operator bool() const { return node && key.attr; }
};

Resolved resolve(const MPlug& plug, MStatus* status)
{
    Resolved r{Access::plugNode(plug), Access::plugKey(plug)};
    TQHOST_SET_STATUS(status, r ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return r;
}

double numberOf(const Value& v) { return v.kind == Value::Kind::kNumeric ? v.num[0] : 0.0; }

bool isNumericLike(const AttributeBody* a)
{
    return a->kind == AttrKind::kNumeric || a->kind == AttrKind::kEnum ||
           (a->kind == AttrKind::kGeneric && !a->acceptedNumeric.empty());
}

MStatus writeNumber(const MPlug& plug, double value)
{
    Resolved r = resolve(plug, nullptr);
    if (!r)
        return MStatus::kInvalidParameter;
    if (!isNumericLike(r.key.attr) || r.key.attr->isNumericCompound || r.key.isArrayPlug())
        return MStatus::kInvalidParameter;
    return host::writeValue(r.node, r.key, Value::numeric(value));
}

// Data objects a typed or generic attribute accepts.
bool accepts(const AttributeBody* a, const MObject& data)
{
    auto body = Access::as<host::DataBody>(data);
    if (!body)
        return data.isNull() && a->kind == AttrKind::kTyped;
    MFnData::Type t = body->dataType();
    if (a->kind == AttrKind::kTyped)
        return a->dataType == t || a->dataType == MFnData::kAny;
    if (a->kind == AttrKind::kGeneric) {
        if (t == MFnData::kNumeric)
            return !a->acceptedNumeric.empty();
        return std::find(a->acceptedData.begin(), a->acceptedData.end(), t) != a->acceptedData.end() ||
               std::find(a->acceptedData.begin(), a->acceptedData.end(), MFnData::kAny) != a->acceptedData.end();
    }
    return false;
}

// A point array written to an array of numeric compounds (a float3 array such as a mesh's
// pnts) replaces its elements: element i holds point i; unconnected elements past the end go.
// Non-finite coordinates refuse the whole write.
MStatus writePointArray(NodeBody* node, const PlugKey& arrayKey, const MPointArray& points)
{
    for (const MPoint& p : points)
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return MStatus::kInvalidParameter;
    host::PlugSlot& array = node->slot(arrayKey);
    auto connected = [node](const PlugKey& k) {
        const host::PlugSlot* s = node->findSlot(k);
        return s && (s->hasSource || !s->destinations.empty());
    };
    std::vector<unsigned int> past;
    for (unsigned int e : array.elements)
        if (e >= points.length())
            past.push_back(e);
    for (unsigned int e : past) {
        PlugKey element = arrayKey;
        element.indices.push_back(e);
        std::vector<PlugKey> keys{element};
        for (const auto& child : arrayKey.attr->children)
            keys.push_back(PlugKey{child.get(), element.indices});
        if (std::any_of(keys.begin(), keys.end(), connected))
            continue;
        for (const PlugKey& k : keys)
            node->slots.erase(k);
        array.elements.erase(e);
    }
    for (unsigned int i = 0; i < points.length(); ++i) {
        PlugKey element = arrayKey;
        element.indices.push_back(i);
        host::PlugSlot& s = node->slot(element);
        s.value = Value::numeric(points[i].x, points[i].y, points[i].z);
        s.hasValue = true;
        s.dirty = false;
    }
    host::valueChangedInPlace(node, arrayKey);
    return MStatus::kSuccess;
}

} // namespace

MPlug::MPlug() = default;
MPlug::MPlug(const MPlug& other) = default;
MPlug::MPlug(const MObject& node, const MObject& attribute)
{
    if (Access::node(node) && Access::attribute(attribute)) {
        fNode = node;
        fAttr = attribute;
    }
}
MPlug::~MPlug() = default;
MPlug& MPlug::operator=(const MPlug& other) = default;

MObject MPlug::attribute(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fAttr.isNull() ? MStatus::kInvalidParameter : MStatus::kSuccess);
    return fAttr;
}

MObject MPlug::node(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fNode.isNull() ? MStatus::kInvalidParameter : MStatus::kSuccess);
    return fNode;
}

MString MPlug::name(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r ? MString(host::plugName(r.node, r.key, true).c_str()) : MString();
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool, bool useFullAttributePath, bool useLongNames,
                           MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r)
        return MString();
    std::string full = host::plugName(r.node, r.key, useLongNames);
    if (!useFullAttributePath && r.key.attr->arrayDepth() == 0)
        full = r.node->name + "." + (useLongNames ? r.key.attr->longName : r.key.attr->shortName);
    if (!includeNodeName)
        full = full.substr(r.node->name.size() + 1);
    return MString(full.c_str());
}

MString MPlug::info(MStatus* ReturnStatus) const { return name(ReturnStatus); }

bool MPlug::isNull(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fAttr.isNull() || !Access::plugNode(*this);
}

bool MPlug::isArray(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && r.key.isArrayPlug();
}

bool MPlug::isElement(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && r.key.isElement();
}

bool MPlug::isCompound(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && !r.key.isArrayPlug() && !r.key.attr->children.empty();
}

bool MPlug::isChild(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && r.key.attr->parent && !r.key.isArrayPlug();
}

bool MPlug::isConnected(MStatus* ReturnStatus) const
{
    return isSource(ReturnStatus) || isDestination(ReturnStatus);
}

bool MPlug::isSource(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r ? r.node->findSlot(r.key) : nullptr;
    return s && !s->destinations.empty();
}

bool MPlug::isDestination(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r ? r.node->findSlot(r.key) : nullptr;
    return s && s->hasSource;
}

bool MPlug::isNetworked(MStatus* ReturnStatus) const { return isConnected(ReturnStatus); }

bool MPlug::isKeyable(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && r.key.attr->flags.keyable;
}

bool MPlug::isDynamic(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r && r.key.attr->flags.dynamic;
}

unsigned int MPlug::logicalIndex(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r || !r.key.isElement()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return 0;
    }
    return r.key.indices.back();
}

MPlug MPlug::elementByLogicalIndex(unsigned int logicalIndex, MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r || !r.key.isArrayPlug()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MPlug();
    }
    PlugKey k = r.key;
    k.indices.push_back(logicalIndex);
    return Access::plug(r.node, k);
}

MPlug MPlug::elementByPhysicalIndex(unsigned int physicalIndex, MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r && r.key.isArrayPlug() ? r.node->findSlot(r.key) : nullptr;
    if (!s || physicalIndex >= s->elements.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MPlug();
    }
    auto it = s->elements.begin();
    std::advance(it, physicalIndex);
    PlugKey k = r.key;
    k.indices.push_back(*it);
    return Access::plug(r.node, k);
}

unsigned int MPlug::numElements(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r || !r.key.isArrayPlug()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return 0;
    }
    const host::PlugSlot* s = r.node->findSlot(r.key);
    return s ? static_cast<unsigned int>(s->elements.size()) : 0u;
}

unsigned int MPlug::evaluateNumElements(MStatus* ReturnStatus)
{
    Resolved r = resolve(*this, ReturnStatus);
    if (r && r.key.isArrayPlug())
        host::pull(r.node, r.key);
    return numElements(ReturnStatus);
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* ReturnStatus)
{
    indices.clear();
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r && r.key.isArrayPlug() ? r.node->findSlot(r.key) : nullptr;
    if (s)
        for (unsigned int i : s->elements)
            indices.append(static_cast<int>(i));
    return indices.length();
}

MPlug MPlug::array(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r || !r.key.isElement()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MPlug();
    }
    PlugKey k = r.key;
    k.indices.pop_back();
    return Access::plug(r.node, k);
}

unsigned int MPlug::numChildren(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    return r ? static_cast<unsigned int>(r.key.attr->children.size()) : 0u;
}

MPlug MPlug::child(const MObject& attr, MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    AttributeBody* c = Access::attribute(attr);
    if (!r || !c || c->parent != r.key.attr || r.key.isArrayPlug()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MPlug();
    }
    return Access::plug(r.node, PlugKey{c, r.key.indices});
}

MPlug MPlug::child(unsigned int index, MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r || index >= r.key.attr->children.size() || r.key.isArrayPlug()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MPlug();
    }
    return Access::plug(r.node, PlugKey{r.key.attr->children[index].get(), r.key.indices});
}

MPlug MPlug::parent(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    PlugKey p;
    if (!r || !r.key.attr->parent || r.key.isElement() || !host::parentKey(r.key, p)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MPlug();
    }
    return Access::plug(r.node, p);
}

bool MPlug::connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* ReturnStatus) const
{
    array.clear();
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r ? r.node->findSlot(r.key) : nullptr;
    if (!s)
        return false;
    if (asDst && s->hasSource)
        array.append(Access::plug(s->source.node, s->source.key));
    if (asSrc)
        for (const host::PlugRef& d : s->destinations)
            array.append(Access::plug(d.node, d.key));
    return array.length() > 0;
}

MPlug MPlug::source(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    const host::PlugSlot* s = r ? r.node->findSlot(r.key) : nullptr;
    if (!s || !s->hasSource)
        return MPlug();
    return Access::plug(s->source.node, s->source.key);
}

MPlug MPlug::sourceWithConversion(MStatus* ReturnStatus) const { return source(ReturnStatus); }

bool MPlug::destinations(MPlugArray& theDestinations, MStatus* ReturnStatus) const
{
    return connectedTo(theDestinations, false, true, ReturnStatus);
}

bool MPlug::destinationsWithConversions(MPlugArray& theDestinations, MStatus* ReturnStatus) const
{
    return destinations(theDestinations, ReturnStatus);
}

// ---- Values ------------------------------------------------------------------------------

MObject MPlug::asMObject(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r)
        return MObject();
    Value v = host::readValue(r.node, r.key, ReturnStatus);
    switch (v.kind) {
    case Value::Kind::kData: return v.data;
    case Value::Kind::kMatrix: {
        auto body = std::make_shared<host::MatrixDataBody>();
        body->write() = v.matrix;
        return Access::object(body);
    }
    case Value::Kind::kNumeric:
        if (r.key.attr->isNumericCompound) {
            auto body = std::make_shared<host::NumericDataBody>();
            body->write().type = r.key.attr->numericType;
            std::copy(v.num, v.num + 4, body->write().v);
            return Access::object(body);
        }
        break;
    default: break;
    }
    return MObject();
}

MString MPlug::asString(MStatus* ReturnStatus) const
{
    MObject data = asMObject(ReturnStatus);
    if (auto s = Access::as<host::StringDataBody>(data))
        return s->read();
    return MString();
}

double MPlug::asDouble(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r)
        return 0.0;
    if (!isNumericLike(r.key.attr)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return 0.0;
    }
    return numberOf(host::readValue(r.node, r.key, ReturnStatus));
}

namespace {

template <class T, class Read>
MStatus readInto(T& val, Read read)
{
    MStatus s;
    val = read(&s);
    return s;
}

} // namespace

bool MPlug::asBool(MStatus* ReturnStatus) const { return asDouble(ReturnStatus) != 0.0; }
char MPlug::asChar(MStatus* ReturnStatus) const { return static_cast<char>(asInt(ReturnStatus)); }
short MPlug::asShort(MStatus* ReturnStatus) const { return static_cast<short>(asInt(ReturnStatus)); }
float MPlug::asFloat(MStatus* ReturnStatus) const { return static_cast<float>(asDouble(ReturnStatus)); }

int MPlug::asInt(MStatus* ReturnStatus) const
{
    double d = asDouble(ReturnStatus);
    if (!std::isfinite(d) || d > 2147483647.0 || d < -2147483648.0)
        return 0;
    return static_cast<int>(std::lround(d));
}

MDataHandle MPlug::asMDataHandle(MStatus* ReturnStatus) const
{
    Resolved r = resolve(*this, ReturnStatus);
    if (!r)
        return MDataHandle();
    return Access::ownedHandle(r.key.attr, host::readValue(r.node, r.key, ReturnStatus));
}

void MPlug::destructHandle(MDataHandle&) const {}

MStatus MPlug::getValue(MObject& val) const { return readInto(val, [this](MStatus* s) { return asMObject(s); }); }
MStatus MPlug::getValue(double& val) const { return readInto(val, [this](MStatus* s) { return asDouble(s); }); }
MStatus MPlug::getValue(float& val) const { return readInto(val, [this](MStatus* s) { return asFloat(s); }); }
MStatus MPlug::getValue(int& val) const { return readInto(val, [this](MStatus* s) { return asInt(s); }); }
MStatus MPlug::getValue(short& val) const { return readInto(val, [this](MStatus* s) { return asShort(s); }); }
MStatus MPlug::getValue(bool& val) const { return readInto(val, [this](MStatus* s) { return asBool(s); }); }
MStatus MPlug::getValue(MString& val) const { return readInto(val, [this](MStatus* s) { return asString(s); }); }

MStatus MPlug::setMObject(const MObject& value)
{
    Resolved r = resolve(*this, nullptr);
    if (!r)
        return MStatus::kInvalidParameter;
    const AttributeBody* a = r.key.attr;
    if (a->kind == AttrKind::kMatrix) {
        auto m = Access::as<host::MatrixDataBody>(value);
        if (!m)
            return MStatus::kInvalidParameter;
        return host::writeValue(r.node, r.key, Value::ofMatrix(m->read()));
    }
    if (a->kind == AttrKind::kNumeric && a->isNumericCompound && r.key.isArrayPlug())
        if (auto points = Access::as<host::PointArrayDataBody>(value))
            return writePointArray(r.node, r.key, points->read());
    if (a->kind == AttrKind::kNumeric && a->isNumericCompound) {
        auto n = Access::as<host::NumericDataBody>(value);
        if (!n)
            return MStatus::kInvalidParameter;
        const auto& p = n->read();
        return host::writeValue(r.node, r.key, Value::numeric(p.v[0], p.v[1], p.v[2], p.v[3]));
    }
    if ((a->kind == AttrKind::kTyped || a->kind == AttrKind::kGeneric) && accepts(a, value))
        return host::writeValue(r.node, r.key, Value::ofData(value));
    return MStatus::kInvalidParameter;
}

MStatus MPlug::setString(const MString& value)
{
    auto body = std::make_shared<host::StringDataBody>();
    body->write() = value;
    return setMObject(Access::object(body));
}

MStatus MPlug::setDouble(double value) { return writeNumber(*this, value); }
MStatus MPlug::setFloat(float value) { return writeNumber(*this, value); }
MStatus MPlug::setInt(int value) { return writeNumber(*this, value); }
MStatus MPlug::setShort(short value) { return writeNumber(*this, value); }
MStatus MPlug::setChar(char value) { return writeNumber(*this, value); }
MStatus MPlug::setBool(bool value) { return writeNumber(*this, value ? 1.0 : 0.0); }

MStatus MPlug::setMDataHandle(const MDataHandle& handle)
{
    Resolved r = resolve(*this, nullptr);
    host::Value* v = Access::handleValue(handle);
    if (!r || !v)
        return MStatus::kInvalidParameter;
    return host::writeValue(r.node, r.key, *v);
}

MStatus MPlug::setValue(const MObject& val) { return setMObject(val); }
MStatus MPlug::setValue(double val) { return setDouble(val); }
MStatus MPlug::setValue(float val) { return setFloat(val); }
MStatus MPlug::setValue(int val) { return setInt(val); }
MStatus MPlug::setValue(short val) { return setShort(val); }
MStatus MPlug::setValue(bool val) { return setBool(val); }
MStatus MPlug::setValue(const MString& val) { return setString(val); }
MStatus MPlug::setValue(const char* val) { return setString(MString(val ? val : "")); }
MStatus MPlug::setValue(MDataHandle& handle) { return setMDataHandle(handle); }

bool MPlug::operator==(const MPlug& other) const
{
    return fNode == other.fNode && fAttr == other.fAttr && fIndices == other.fIndices;
}
bool MPlug::operator==(const MObject& attribute) const { return fAttr == attribute; }
bool MPlug::operator!=(const MPlug& other) const { return !(*this == other); }
bool MPlug::operator!=(const MObject& attribute) const { return !(*this == attribute); }
MPlug MPlug::operator[](const MObject& attr) const { return child(attr); }
MPlug MPlug::operator[](unsigned int index) const { return elementByLogicalIndex(index); }
MPlug::operator MObject() const { return fAttr; }
