#include <maya/MDataHandle.h>

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/evaluation.h"

#include <maya/MPlug.h>

using host::Access;
using host::Value;

// Views of the value in the types a caller asks for. Writes through these references are
// not stored back; the set methods are the way to write.
struct MDataHandle::Scratch {
    bool b = false;
    char c = 0;
    unsigned char uc = 0;
    short s = 0;
    int i = 0;
    float f = 0.0f;
    double d = 0.0;
    double3 d3 = {0, 0, 0};
    double2 d2 = {0, 0};
    float2 f2 = {0, 0};
    float3 f3 = {0, 0, 0};
    int2 i2 = {0, 0};
    int3 i3 = {0, 0, 0};
    short2 s2 = {0, 0};
    short3 s3 = {0, 0, 0};
    MVector vector;
    MFloatVector floatVector;
    MMatrix matrix;
    MFloatMatrix floatMatrix;
    MString string;
};

MDataHandle::MDataHandle() = default;
MDataHandle::MDataHandle(const MDataHandle& other) = default;
MDataHandle& MDataHandle::operator=(const MDataHandle& other) = default;
MDataHandle::~MDataHandle() = default;

MDataHandle::Scratch& MDataHandle::scratch() const
{
    if (!fScratch)
        fScratch = std::make_shared<Scratch>();
    return *fScratch;
}

Value* MDataHandle::value() const { return fOwned ? fOwned.get() : fValue; }

double& MDataHandle::component(int i) const
{
    Value* v = value();
    if (!v) {
        scratch().d = 0.0;
        return scratch().d;
    }
    if (v->kind == Value::Kind::kNone)
        v->kind = Value::Kind::kNumeric;
    int c = fComponent >= 0 ? fComponent : i;
    return v->num[c < 0 || c > 3 ? 0 : c];
}

void MDataHandle::written()
{
    if (Value* v = value())
        if (v->kind == Value::Kind::kNone)
            v->kind = Value::Kind::kNumeric;
}

bool MDataHandle::isNumeric() const
{
    if (fAttr)
        return fAttr->kind == host::AttrKind::kNumeric || fAttr->kind == host::AttrKind::kEnum ||
               fAttr->isNumericComponent();
    Value* v = value();
    return v && v->kind == Value::Kind::kNumeric;
}

bool MDataHandle::isGeneric(bool& isNumericOut, bool& isNull) const
{
    Value* v = value();
    isNumericOut = v && v->kind == Value::Kind::kNumeric;
    isNull = !v || (v->kind == Value::Kind::kData && v->data.isNull()) || v->kind == Value::Kind::kNone;
    return fAttr && fAttr->kind == host::AttrKind::kGeneric;
}

MFnNumericData::Type MDataHandle::numericType() const
{
    // A component handle carries its child attribute, so this is the component's type.
    return fAttr ? fAttr->numericType : MFnNumericData::kInvalid;
}

MFnData::Type MDataHandle::type() const
{
    Value* v = value();
    if (!v)
        return MFnData::kInvalid;
    switch (v->kind) {
    case Value::Kind::kNumeric: return MFnData::kNumeric;
    case Value::Kind::kMatrix: return MFnData::kMatrix;
    case Value::Kind::kData:
        if (auto body = Access::as<host::DataBody>(v->data))
            return body->dataType();
        return fAttr && fAttr->kind == host::AttrKind::kTyped ? fAttr->dataType : MFnData::kInvalid;
    default: return fAttr && fAttr->kind == host::AttrKind::kTyped ? fAttr->dataType : MFnData::kInvalid;
    }
}

MObject MDataHandle::attribute()
{
    if (!fAttr)
        return MObject();
    return Access::object(std::const_pointer_cast<host::AttributeBody>(fAttr->shared_from_this()));
}

double& MDataHandle::asDouble() const { return component(0); }

bool& MDataHandle::asBool() const
{
    scratch().b = component(0) != 0.0;
    return scratch().b;
}
char& MDataHandle::asChar() const
{
    scratch().c = static_cast<char>(component(0));
    return scratch().c;
}
unsigned char& MDataHandle::asUChar() const
{
    scratch().uc = static_cast<unsigned char>(component(0));
    return scratch().uc;
}
short& MDataHandle::asShort() const
{
    scratch().s = static_cast<short>(component(0));
    return scratch().s;
}
int& MDataHandle::asInt() const
{
    double d = component(0);
    scratch().i = (d > 2147483647.0 || d < -2147483648.0 || d != d) ? 0 : static_cast<int>(d);
    return scratch().i;
}
float& MDataHandle::asFloat() const
{
    scratch().f = static_cast<float>(component(0));
    return scratch().f;
}
double2& MDataHandle::asDouble2() const
{
    for (int k = 0; k < 2; ++k)
        scratch().d2[k] = component(k);
    return scratch().d2;
}
double3& MDataHandle::asDouble3() const
{
    for (int k = 0; k < 3; ++k)
        scratch().d3[k] = component(k);
    return scratch().d3;
}
float2& MDataHandle::asFloat2() const
{
    for (int k = 0; k < 2; ++k)
        scratch().f2[k] = static_cast<float>(component(k));
    return scratch().f2;
}
float3& MDataHandle::asFloat3() const
{
    for (int k = 0; k < 3; ++k)
        scratch().f3[k] = static_cast<float>(component(k));
    return scratch().f3;
}
int2& MDataHandle::asInt2() const
{
    for (int k = 0; k < 2; ++k)
        scratch().i2[k] = static_cast<int>(component(k));
    return scratch().i2;
}
int3& MDataHandle::asInt3() const
{
    for (int k = 0; k < 3; ++k)
        scratch().i3[k] = static_cast<int>(component(k));
    return scratch().i3;
}
short2& MDataHandle::asShort2() const
{
    for (int k = 0; k < 2; ++k)
        scratch().s2[k] = static_cast<short>(component(k));
    return scratch().s2;
}
short3& MDataHandle::asShort3() const
{
    for (int k = 0; k < 3; ++k)
        scratch().s3[k] = static_cast<short>(component(k));
    return scratch().s3;
}
MVector& MDataHandle::asVector() const
{
    scratch().vector = MVector(component(0), component(1), component(2));
    return scratch().vector;
}
MFloatVector& MDataHandle::asFloatVector() const
{
    scratch().floatVector = MFloatVector(static_cast<float>(component(0)), static_cast<float>(component(1)),
                                         static_cast<float>(component(2)));
    return scratch().floatVector;
}
MMatrix& MDataHandle::asMatrix() const
{
    Value* v = value();
    if (!v) {
        scratch().matrix = MMatrix();
        return scratch().matrix;
    }
    if (v->kind == Value::Kind::kData)
        if (auto m = Access::as<host::MatrixDataBody>(v->data))
            return m->write();
    return v->matrix;
}
MFloatMatrix& MDataHandle::asFloatMatrix() const
{
    const MMatrix& m = asMatrix();
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            scratch().floatMatrix.matrix[r][c] = static_cast<float>(m.matrix[r][c]);
    return scratch().floatMatrix;
}
MString& MDataHandle::asString() const
{
    Value* v = value();
    if (v && v->kind == Value::Kind::kData)
        if (auto s = Access::as<host::StringDataBody>(v->data))
            return s->write();
    scratch().string = MString();
    return scratch().string;
}

MObject MDataHandle::data()
{
    Value* v = value();
    return v && v->kind == Value::Kind::kData ? v->data : MObject();
}

MObject MDataHandle::asMesh() const
{
    Value* v = value();
    return v && v->kind == Value::Kind::kData && v->data.hasFn(MFn::kMeshData) ? v->data : MObject();
}

MObject MDataHandle::asMeshTransformed() const { return asMesh(); }

const MMatrix& MDataHandle::geometryTransformMatrix() const
{
    static const MMatrix identity;
    return identity;
}

void MDataHandle::set(bool val) { setDouble(val ? 1.0 : 0.0); }
void MDataHandle::set(char val) { setDouble(val); }
void MDataHandle::set(short val) { setDouble(val); }
void MDataHandle::set(int val) { setDouble(val); }
void MDataHandle::set(float val) { setDouble(val); }
void MDataHandle::set(double val) { setDouble(val); }
void MDataHandle::set(const MMatrix& val) { setMMatrix(val); }
void MDataHandle::set(const MFloatMatrix& val) { setMFloatMatrix(val); }
void MDataHandle::set(const MVector& val) { set3Double(val.x, val.y, val.z); }
void MDataHandle::set(const MFloatVector& val) { set3Float(val.x, val.y, val.z); }
void MDataHandle::set(const MString& val) { setString(val); }
void MDataHandle::set(double val1, double val2) { set2Double(val1, val2); }
void MDataHandle::set(double val1, double val2, double val3) { set3Double(val1, val2, val3); }
void MDataHandle::set(float val1, float val2, float val3) { set3Float(val1, val2, val3); }
void MDataHandle::set(int val1, int val2, int val3) { set3Int(val1, val2, val3); }
MStatus MDataHandle::set(const MObject& val) { return setMObject(val); }

void MDataHandle::set2Double(double val1, double val2)
{
    component(0) = val1;
    component(1) = val2;
    written();
}
void MDataHandle::set3Double(double val1, double val2, double val3)
{
    if (fComponent >= 0) {
        component(0) = val1;
        return;
    }
    component(0) = val1;
    component(1) = val2;
    component(2) = val3;
    written();
}
void MDataHandle::set3Float(float val1, float val2, float val3) { set3Double(val1, val2, val3); }
void MDataHandle::set3Int(int val1, int val2, int val3) { set3Double(val1, val2, val3); }

void MDataHandle::setBool(bool val) { set(val); }
void MDataHandle::setChar(char val) { set(val); }
void MDataHandle::setShort(short val) { set(val); }
void MDataHandle::setInt(int val) { set(val); }
void MDataHandle::setFloat(float val) { set(val); }
void MDataHandle::setDouble(double val)
{
    component(0) = val;
    written();
}
void MDataHandle::setMMatrix(const MMatrix& val)
{
    if (Value* v = value()) {
        v->kind = Value::Kind::kMatrix;
        v->matrix = val;
    }
}
void MDataHandle::setMFloatMatrix(const MFloatMatrix& val)
{
    MMatrix m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m.matrix[r][c] = val.matrix[r][c];
    setMMatrix(m);
}
void MDataHandle::setMVector(const MVector& val) { set(val); }
void MDataHandle::setMFloatVector(const MFloatVector& val) { set(val); }
MStatus MDataHandle::setMObject(const MObject& val)
{
    Value* v = value();
    if (!v)
        return MStatus::kInvalidParameter;
    if (!val.isNull() && !Access::as<host::DataBody>(val))
        return MStatus::kInvalidParameter;
    v->kind = Value::Kind::kData;
    v->data = host::shareData(val);
    return MStatus::kSuccess;
}
void MDataHandle::setString(const MString& val)
{
    auto body = std::make_shared<host::StringDataBody>();
    body->write() = val;
    setMObject(Access::object(body));
}

void MDataHandle::setClean()
{
    if (fNode && fAttr)
        host::setClean(fNode, host::PlugKey{fAttr, fIndices});
}

MStatus MDataHandle::copy(const MDataHandle& src)
{
    Value* to = value();
    Value* from = src.value();
    if (!to || !from)
        return MStatus::kInvalidParameter;
    if (fComponent >= 0 || src.fComponent >= 0) {
        component(0) = src.component(0);
        return MStatus::kSuccess;
    }
    *to = *from;
    if (to->kind == Value::Kind::kData)
        to->data = host::shareData(from->data);
    return MStatus::kSuccess;
}

MStatus MDataHandle::copyWritable(const MDataHandle& src) { return copy(src); }

MDataHandle MDataHandle::child(const MPlug& plug) { return child(plug.attribute()); }

MDataHandle MDataHandle::child(const MObject& attribute)
{
    const host::AttributeBody* c = Access::attribute(attribute);
    if (!c || !fAttr || c->parent != fAttr)
        return MDataHandle();
    if (fAttr->isNumericCompound) {
        MDataHandle h(*this);
        h.fAttr = c;
        h.fComponent = c->childIndex;
        return h;
    }
    if (!fNode)
        return MDataHandle();
    host::PlugKey key{c, fIndices};
    host::Storage s = host::storageFor(fNode, key);
    return Access::handle(fNode, key, s.value, s.component);
}

namespace host {

MDataHandle Access::handle(NodeBody* node, const PlugKey& key, Value* value, int component)
{
    MDataHandle h;
    h.fNode = node;
    h.fAttr = key.attr;
    h.fIndices = key.indices;
    h.fValue = value;
    h.fComponent = component;
    return h;
}

MDataHandle Access::ownedHandle(const AttributeBody* attr, const Value& value)
{
    MDataHandle h;
    h.fAttr = attr;
    h.fOwned = std::make_shared<Value>(value);
    return h;
}

} // namespace host
