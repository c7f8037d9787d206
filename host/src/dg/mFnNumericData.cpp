#include <maya/MFnNumericData.h>

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/fnMacros.h"

TQHOST_DEFINE_MFN(MFnNumericData, MFn::kNumericData)

namespace {

host::NumericDataBody* bodyOf(const MObject& o) { return dynamic_cast<host::NumericDataBody*>(host::Access::body(o).get()); }

template <class T>
MStatus get(const MObject& o, int count, T* out[])
{
    host::NumericDataBody* b = bodyOf(o);
    if (!b || host::componentCount(b->read().type) != count)
        return MStatus::kInvalidParameter;
    for (int i = 0; i < count; ++i)
        *out[i] = static_cast<T>(b->read().v[i]);
    return MStatus::kSuccess;
}

MStatus put(const MObject& o, int count, std::initializer_list<double> values)
{
    host::NumericDataBody* b = bodyOf(o);
    if (!b || host::componentCount(b->read().type) != count)
        return MStatus::kInvalidParameter;
    int i = 0;
    for (double v : values)
        b->write().v[i++] = v;
    return MStatus::kSuccess;
}

} // namespace

MObject MFnNumericData::create(Type dataType, MStatus* ReturnStatus)
{
    if (host::componentCount(dataType) < 2) {
        // Single numbers travel as plain numbers, never as data objects.
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    auto b = std::make_shared<host::NumericDataBody>();
    b->write().type = dataType;
    MObject o = host::Access::object(b);
    attach(o);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return o;
}

MFnNumericData::Type MFnNumericData::numericType(MStatus* ReturnStatus)
{
    host::NumericDataBody* b = bodyOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, b ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return b ? b->read().type : kInvalid;
}

MStatus MFnNumericData::getData2Short(short& a, short& b)
{
    short* o[] = {&a, &b};
    return get(fObject, 2, o);
}
MStatus MFnNumericData::getData2Int(int& a, int& b)
{
    int* o[] = {&a, &b};
    return get(fObject, 2, o);
}
MStatus MFnNumericData::getData2Float(float& a, float& b)
{
    float* o[] = {&a, &b};
    return get(fObject, 2, o);
}
MStatus MFnNumericData::getData2Double(double& a, double& b)
{
    double* o[] = {&a, &b};
    return get(fObject, 2, o);
}
MStatus MFnNumericData::getData3Short(short& a, short& b, short& c)
{
    short* o[] = {&a, &b, &c};
    return get(fObject, 3, o);
}
MStatus MFnNumericData::getData3Int(int& a, int& b, int& c)
{
    int* o[] = {&a, &b, &c};
    return get(fObject, 3, o);
}
MStatus MFnNumericData::getData3Float(float& a, float& b, float& c)
{
    float* o[] = {&a, &b, &c};
    return get(fObject, 3, o);
}
MStatus MFnNumericData::getData3Double(double& a, double& b, double& c)
{
    double* o[] = {&a, &b, &c};
    return get(fObject, 3, o);
}
MStatus MFnNumericData::getData4Double(double& a, double& b, double& c, double& d)
{
    double* o[] = {&a, &b, &c, &d};
    return get(fObject, 4, o);
}
MStatus MFnNumericData::setData2Short(short a, short b) { return put(fObject, 2, {double(a), double(b)}); }
MStatus MFnNumericData::setData2Int(int a, int b) { return put(fObject, 2, {double(a), double(b)}); }
MStatus MFnNumericData::setData2Float(float a, float b) { return put(fObject, 2, {double(a), double(b)}); }
MStatus MFnNumericData::setData2Double(double a, double b) { return put(fObject, 2, {a, b}); }
MStatus MFnNumericData::setData3Short(short a, short b, short c)
{
    return put(fObject, 3, {double(a), double(b), double(c)});
}
MStatus MFnNumericData::setData3Int(int a, int b, int c) { return put(fObject, 3, {double(a), double(b), double(c)}); }
MStatus MFnNumericData::setData3Float(float a, float b, float c)
{
    return put(fObject, 3, {double(a), double(b), double(c)});
}
MStatus MFnNumericData::setData3Double(double a, double b, double c) { return put(fObject, 3, {a, b, c}); }
MStatus MFnNumericData::setData4Double(double a, double b, double c, double d)
{
    return put(fObject, 4, {a, b, c, d});
}
MStatus MFnNumericData::getData(int& a, int& b, int& c) { return getData3Int(a, b, c); }
MStatus MFnNumericData::getData(float& a, float& b, float& c) { return getData3Float(a, b, c); }
MStatus MFnNumericData::getData(double& a, double& b, double& c) { return getData3Double(a, b, c); }
MStatus MFnNumericData::setData(int a, int b, int c) { return setData3Int(a, b, c); }
MStatus MFnNumericData::setData(float a, float b, float c) { return setData3Float(a, b, c); }
MStatus MFnNumericData::setData(double a, double b, double c) { return setData3Double(a, b, c); }
