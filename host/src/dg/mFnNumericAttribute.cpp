#include <maya/MFnNumericAttribute.h>

#include "dg/attributeFns.h"
#include "dg/dataTypes.h"
#include "dg/fnMacros.h"

using host::AttrKind;
using host::AttributeBody;
using host::Value;

TQHOST_DEFINE_MFN(MFnNumericAttribute, MFn::kNumericAttribute)

namespace host {

int componentCount(MFnNumericData::Type type)
{
    switch (type) {
    case MFnNumericData::k2Short:
    case MFnNumericData::k2Int:
    case MFnNumericData::k2Float:
    case MFnNumericData::k2Double: return 2;
    case MFnNumericData::k3Short:
    case MFnNumericData::k3Int:
    case MFnNumericData::k3Float:
    case MFnNumericData::k3Double: return 3;
    case MFnNumericData::k4Double: return 4;
    default: return 1;
    }
}

} // namespace host

namespace {

MFnNumericData::Type singleOf(MFnNumericData::Type type)
{
    switch (type) {
    case MFnNumericData::k2Short:
    case MFnNumericData::k3Short: return MFnNumericData::kShort;
    case MFnNumericData::k2Int:
    case MFnNumericData::k3Int: return MFnNumericData::kInt;
    case MFnNumericData::k2Float:
    case MFnNumericData::k3Float: return MFnNumericData::kFloat;
    case MFnNumericData::k2Double:
    case MFnNumericData::k3Double:
    case MFnNumericData::k4Double: return MFnNumericData::kDouble;
    default: return type;
    }
}

MFnNumericData::Type tupleOf(MFnNumericData::Type single, int count)
{
    switch (single) {
    case MFnNumericData::kShort: return count == 2 ? MFnNumericData::k2Short : MFnNumericData::k3Short;
    case MFnNumericData::kInt: return count == 2 ? MFnNumericData::k2Int : MFnNumericData::k3Int;
    case MFnNumericData::kFloat: return count == 2 ? MFnNumericData::k2Float : MFnNumericData::k3Float;
    default: return count == 2 ? MFnNumericData::k2Double : MFnNumericData::k3Double;
    }
}

// Float limits and defaults are stored as the float's exact value widened to double.
double widen(float v) { return static_cast<double>(v); }

void adopt(AttributeBody* parent, const std::shared_ptr<AttributeBody>& child, int index)
{
    child->parent = parent;
    child->childIndex = index;
    parent->children.push_back(child);
}

MObject makeCompound(const MString& fullName, const MString& briefName, MFnNumericData::Type type,
                     const char* const suffixes[], double def)
{
    std::shared_ptr<AttributeBody> parent;
    MObject object = host::makeAttribute(AttrKind::kNumeric, fullName, briefName, &parent);
    parent->numericType = type;
    parent->components = host::componentCount(type);
    parent->isNumericCompound = true;
    parent->defaultValue = Value::numeric(def, def, def, def);
    for (int i = 0; i < parent->components; ++i) {
        std::shared_ptr<AttributeBody> child;
        host::makeAttribute(AttrKind::kNumeric, fullName + suffixes[i], briefName + suffixes[i], &child);
        child->numericType = singleOf(type);
        child->defaultValue = Value::numeric(def);
        adopt(parent.get(), child, i);
    }
    return object;
}

} // namespace

MObject MFnNumericAttribute::create(const MString& fullName, const MString& briefName,
                                    MFnNumericData::Type unitType, double defaultValue, MStatus* ReturnStatus)
{
    if (unitType == MFnNumericData::kInvalid || unitType >= MFnNumericData::kLast) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    MObject object;
    if (host::componentCount(unitType) > 1) {
        static const char* const digits[] = {"0", "1", "2", "3"};
        object = makeCompound(fullName, briefName, unitType, digits, defaultValue);
    } else {
        std::shared_ptr<AttributeBody> body;
        object = host::makeAttribute(AttrKind::kNumeric, fullName, briefName, &body);
        body->numericType = unitType;
        body->defaultValue = Value::numeric(unitType == MFnNumericData::kFloat
                                                ? widen(static_cast<float>(defaultValue))
                                                : defaultValue);
    }
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MObject MFnNumericAttribute::create(const MString& fullName, const MString& briefName, const MObject& child1,
                                    const MObject& child2, const MObject& child3, MStatus* ReturnStatus)
{
    std::vector<std::shared_ptr<AttributeBody>> kids;
    for (const MObject* c : {&child1, &child2, &child3}) {
        if (c->isNull())
            continue;
        auto body = host::Access::as<AttributeBody>(*c);
        if (!body || body->kind != AttrKind::kNumeric || body->isNumericCompound || body->parent) {
            TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
            return MObject();
        }
        kids.push_back(body);
    }
    if (kids.size() < 2) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    std::shared_ptr<AttributeBody> parent;
    MObject object = host::makeAttribute(AttrKind::kNumeric, fullName, briefName, &parent);
    parent->numericType = tupleOf(kids[0]->numericType, int(kids.size()));
    parent->components = int(kids.size());
    parent->isNumericCompound = true;
    parent->defaultValue = Value::numeric(0);
    for (std::size_t i = 0; i < kids.size(); ++i) {
        parent->defaultValue.num[i] = kids[i]->defaultValue.num[0];
        adopt(parent.get(), kids[i], int(i));
    }
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MObject MFnNumericAttribute::createColor(const MString& fullName, const MString& briefName, MStatus* ReturnStatus)
{
    static const char* const rgb[] = {"R", "G", "B"};
    MObject object = makeCompound(fullName, briefName, MFnNumericData::k3Float, rgb, 0.0);
    host::attributeOf(object)->flags.usedAsColor = true;
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MObject MFnNumericAttribute::createPoint(const MString& fullName, const MString& briefName, MStatus* ReturnStatus)
{
    static const char* const xyz[] = {"X", "Y", "Z"};
    MObject object = makeCompound(fullName, briefName, MFnNumericData::k3Double, xyz, 0.0);
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MFnNumericData::Type MFnNumericAttribute::unitType(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? a->numericType : MFnNumericData::kInvalid;
}

MObject MFnNumericAttribute::child(unsigned int index, MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || index >= a->children.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return host::Access::object(a->children[index]);
}

namespace {

template <class F>
bool query(const MObject& o, MStatus* status, F f)
{
    AttributeBody* a = host::attributeOf(o);
    TQHOST_SET_STATUS(status, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? f(*a) : false;
}

MStatus setLimit(const MObject& o, bool max, std::initializer_list<double> values)
{
    AttributeBody* a = host::attributeOf(o);
    if (!a || a->kind != AttrKind::kNumeric)
        return MStatus::kInvalidParameter;
    int i = 0;
    for (double v : values)
        (max ? a->maxValue : a->minValue)[i++] = v;
    (max ? a->hasMax : a->hasMin) = true;
    return MStatus::kSuccess;
}

MStatus getLimit(const MObject& o, bool max, double* out, int count)
{
    AttributeBody* a = host::attributeOf(o);
    if (!a || !(max ? a->hasMax : a->hasMin))
        return MStatus::kFailure;
    for (int i = 0; i < count; ++i)
        out[i] = (max ? a->maxValue : a->minValue)[i];
    return MStatus::kSuccess;
}

template <class T>
MStatus getLimitAs(const MObject& o, bool max, T& out)
{
    double v = 0;
    MStatus s = getLimit(o, max, &v, 1);
    out = static_cast<T>(v);
    return s;
}

MStatus setDefaults(const MObject& o, std::initializer_list<double> values)
{
    AttributeBody* a = host::attributeOf(o);
    if (!a || a->kind != AttrKind::kNumeric)
        return MStatus::kInvalidParameter;
    int i = 0;
    a->defaultValue.kind = Value::Kind::kNumeric;
    for (double v : values) {
        if (i >= 4)
            break;
        a->defaultValue.num[i] = v;
        if (i < int(a->children.size()))
            a->children[i]->defaultValue = Value::numeric(v);
        ++i;
    }
    return MStatus::kSuccess;
}

MStatus getDefaults(const MObject& o, double* out, int count)
{
    AttributeBody* a = host::attributeOf(o);
    if (!a || a->kind != AttrKind::kNumeric)
        return MStatus::kInvalidParameter;
    for (int i = 0; i < count; ++i)
        out[i] = a->defaultValue.num[i];
    return MStatus::kSuccess;
}

template <class T>
MStatus getDefaultAs(const MObject& o, T& out)
{
    double v = 0;
    MStatus s = getDefaults(o, &v, 1);
    out = static_cast<T>(v);
    return s;
}

} // namespace

bool MFnNumericAttribute::hasMin(MStatus* s) const { return query(fObject, s, [](auto& a) { return a.hasMin; }); }
bool MFnNumericAttribute::hasMax(MStatus* s) const { return query(fObject, s, [](auto& a) { return a.hasMax; }); }
bool MFnNumericAttribute::hasSoftMin(MStatus* s) const
{
    return query(fObject, s, [](auto& a) { return a.hasSoftMin; });
}
bool MFnNumericAttribute::hasSoftMax(MStatus* s) const
{
    return query(fObject, s, [](auto& a) { return a.hasSoftMax; });
}

MStatus MFnNumericAttribute::getMin(int& min1) const { return getLimitAs(fObject, false, min1); }
MStatus MFnNumericAttribute::getMin(float& min1) const { return getLimitAs(fObject, false, min1); }
MStatus MFnNumericAttribute::getMin(double& min1) const { return getLimit(fObject, false, &min1, 1); }
MStatus MFnNumericAttribute::getMin(double& min1, double& min2, double& min3) const
{
    double v[3] = {0.0, 0.0, 0.0};
    MStatus s = getLimit(fObject, false, v, 3);
    min1 = v[0], min2 = v[1], min3 = v[2];
    return s;
}
MStatus MFnNumericAttribute::getMax(int& max1) const { return getLimitAs(fObject, true, max1); }
MStatus MFnNumericAttribute::getMax(float& max1) const { return getLimitAs(fObject, true, max1); }
MStatus MFnNumericAttribute::getMax(double& max1) const { return getLimit(fObject, true, &max1, 1); }
MStatus MFnNumericAttribute::getMax(double& max1, double& max2, double& max3) const
{
    double v[3] = {0.0, 0.0, 0.0};
    MStatus s = getLimit(fObject, true, v, 3);
    max1 = v[0], max2 = v[1], max3 = v[2];
    return s;
}
MStatus MFnNumericAttribute::getSoftMin(double& min1) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || !a->hasSoftMin)
        return MStatus::kFailure;
    min1 = a->softMin;
    return MStatus::kSuccess;
}
MStatus MFnNumericAttribute::getSoftMax(double& max1) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || !a->hasSoftMax)
        return MStatus::kFailure;
    max1 = a->softMax;
    return MStatus::kSuccess;
}

MStatus MFnNumericAttribute::setMin(int a) { return setLimit(fObject, false, {double(a)}); }
MStatus MFnNumericAttribute::setMin(int a, int b) { return setLimit(fObject, false, {double(a), double(b)}); }
MStatus MFnNumericAttribute::setMin(int a, int b, int c)
{
    return setLimit(fObject, false, {double(a), double(b), double(c)});
}
MStatus MFnNumericAttribute::setMin(float a) { return setLimit(fObject, false, {widen(a)}); }
MStatus MFnNumericAttribute::setMin(float a, float b) { return setLimit(fObject, false, {widen(a), widen(b)}); }
MStatus MFnNumericAttribute::setMin(float a, float b, float c)
{
    return setLimit(fObject, false, {widen(a), widen(b), widen(c)});
}
MStatus MFnNumericAttribute::setMin(double a) { return setLimit(fObject, false, {a}); }
MStatus MFnNumericAttribute::setMin(double a, double b) { return setLimit(fObject, false, {a, b}); }
MStatus MFnNumericAttribute::setMin(double a, double b, double c) { return setLimit(fObject, false, {a, b, c}); }
MStatus MFnNumericAttribute::setMin(double a, double b, double c, double d)
{
    return setLimit(fObject, false, {a, b, c, d});
}
MStatus MFnNumericAttribute::setMax(int a) { return setLimit(fObject, true, {double(a)}); }
MStatus MFnNumericAttribute::setMax(int a, int b) { return setLimit(fObject, true, {double(a), double(b)}); }
MStatus MFnNumericAttribute::setMax(int a, int b, int c)
{
    return setLimit(fObject, true, {double(a), double(b), double(c)});
}
MStatus MFnNumericAttribute::setMax(float a) { return setLimit(fObject, true, {widen(a)}); }
MStatus MFnNumericAttribute::setMax(float a, float b) { return setLimit(fObject, true, {widen(a), widen(b)}); }
MStatus MFnNumericAttribute::setMax(float a, float b, float c)
{
    return setLimit(fObject, true, {widen(a), widen(b), widen(c)});
}
MStatus MFnNumericAttribute::setMax(double a) { return setLimit(fObject, true, {a}); }
MStatus MFnNumericAttribute::setMax(double a, double b) { return setLimit(fObject, true, {a, b}); }
MStatus MFnNumericAttribute::setMax(double a, double b, double c) { return setLimit(fObject, true, {a, b, c}); }
MStatus MFnNumericAttribute::setMax(double a, double b, double c, double d)
{
    return setLimit(fObject, true, {a, b, c, d});
}
MStatus MFnNumericAttribute::setSoftMin(double min1)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->softMin = min1;
    a->hasSoftMin = true;
    return MStatus::kSuccess;
}
MStatus MFnNumericAttribute::setSoftMax(double max1)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->softMax = max1;
    a->hasSoftMax = true;
    return MStatus::kSuccess;
}

MStatus MFnNumericAttribute::getDefault(bool& def1) { return getDefaultAs(fObject, def1); }
MStatus MFnNumericAttribute::getDefault(int& def1) { return getDefaultAs(fObject, def1); }
MStatus MFnNumericAttribute::getDefault(float& def1) { return getDefaultAs(fObject, def1); }
MStatus MFnNumericAttribute::getDefault(double& def1) { return getDefaults(fObject, &def1, 1); }
MStatus MFnNumericAttribute::getDefault(double& def1, double& def2, double& def3)
{
    double v[3] = {0.0, 0.0, 0.0};
    MStatus s = getDefaults(fObject, v, 3);
    def1 = v[0], def2 = v[1], def3 = v[2];
    return s;
}
MStatus MFnNumericAttribute::getDefault(float& def1, float& def2, float& def3)
{
    double v[3] = {0.0, 0.0, 0.0};
    MStatus s = getDefaults(fObject, v, 3);
    def1 = float(v[0]), def2 = float(v[1]), def3 = float(v[2]);
    return s;
}
MStatus MFnNumericAttribute::setDefault(bool a) { return setDefaults(fObject, {a ? 1.0 : 0.0}); }
MStatus MFnNumericAttribute::setDefault(char a) { return setDefaults(fObject, {double(a)}); }
MStatus MFnNumericAttribute::setDefault(short a) { return setDefaults(fObject, {double(a)}); }
MStatus MFnNumericAttribute::setDefault(int a) { return setDefaults(fObject, {double(a)}); }
MStatus MFnNumericAttribute::setDefault(int a, int b) { return setDefaults(fObject, {double(a), double(b)}); }
MStatus MFnNumericAttribute::setDefault(int a, int b, int c)
{
    return setDefaults(fObject, {double(a), double(b), double(c)});
}
MStatus MFnNumericAttribute::setDefault(float a) { return setDefaults(fObject, {widen(a)}); }
MStatus MFnNumericAttribute::setDefault(float a, float b) { return setDefaults(fObject, {widen(a), widen(b)}); }
MStatus MFnNumericAttribute::setDefault(float a, float b, float c)
{
    return setDefaults(fObject, {widen(a), widen(b), widen(c)});
}
MStatus MFnNumericAttribute::setDefault(double a) { return setDefaults(fObject, {a}); }
MStatus MFnNumericAttribute::setDefault(double a, double b) { return setDefaults(fObject, {a, b}); }
MStatus MFnNumericAttribute::setDefault(double a, double b, double c) { return setDefaults(fObject, {a, b, c}); }
MStatus MFnNumericAttribute::setDefault(double a, double b, double c, double d)
{
    return setDefaults(fObject, {a, b, c, d});
}
