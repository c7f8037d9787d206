#include "store/storeAttributes.h"

#include "store/logModules.h"
#include <maya/MDataHandle.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MPlug.h>

#include <utility>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

// The plug of `name` on `node`; a null node or a plug not found is kInvalidParameter.
MPlug plugOf(const MString& name, const MObject& node, MStatus& status, int line)
{
    if (node.isNull()) {
        status = MStatus::kInvalidParameter;
        return MPlug();
    }
    MFnDependencyNode fn(node);
    MPlug plug = fn.findPlug(name, false, &status);
    if (!status || plug.isNull()) {
        status = MStatus::kInvalidParameter;
        status.pAPIerror(kModule, line, name.asChar());
        return MPlug();
    }
    return plug;
}

// The data object the plug holds; null for a typed attribute that was never written.
MObject dataOf(const MPlug& plug, MStatus& status)
{
    MDataHandle handle = plug.asMDataHandle(&status);
    MObject data = handle.data();
    plug.destructHandle(handle);
    return data;
}

template <class DataFn, class Array>
MStatus readArray(const MString& name, Array& out, const MObject& node, bool nullDataFails, int line)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, line);
    if (!status)
        return status;
    MObject data = dataOf(plug, status);
    if (!status) {
        status.pAPIerror(kModule, line, name.asChar());
        return status;
    }
    if (data.isNull()) {
        if (nullDataFails)
            return MStatus::kInvalidParameter;
        out = Array();
        return MStatus::kSuccess;
    }
    DataFn fn(data, &status);
    if (status) {
        Array read = fn.array(&status);
        // Moved, not copied: the scan's normals run to millions of vectors.
        if (status)
            out = std::move(read);
    }
    if (!status)
        status.pAPIerror(kModule, line, name.asChar());
    return status;
}

template <class DataFn, class Array>
MStatus writeArray(const Array& array, const MString& name, const MObject& node, int line)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, line);
    if (!status)
        return status;
    DataFn fn;
    MObject data = fn.create(array, &status);
    if (!status) {
        status.pAPIerror(kModule, line, name.asChar());
        return status;
    }
    if (data.isNull())
        return MStatus::kFailure;
    status = plug.setMObject(data);
    if (!status)
        status.pAPIerror(kModule, line, name.asChar());
    return status;
}

MStatus readTriple(const MString& name, double& x, double& y, double& z, const MObject& node, int line)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, line);
    if (!status)
        return status;
    MObject data = plug.asMObject(&status);
    if (status) {
        MFnNumericData fn(data, &status);
        if (status)
            status = fn.getData3Double(x, y, z);
    }
    if (!status)
        status.pAPIerror(kModule, line, name.asChar());
    return status;
}

} // namespace

int readIntAttr(const MString& name, const MObject& node, MStatus& status)
{
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return -1;
    MDataHandle handle = plug.asMDataHandle(&status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, name.asChar());
        plug.destructHandle(handle);
        return -1;
    }
    const int value = handle.asInt();
    plug.destructHandle(handle);
    return value;
}

MStatus readDoubleAttr(const MString& name, double& out, const MObject& node)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return status;
    const double value = plug.asDouble(&status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, name.asChar());
        return status;
    }
    out = value;
    return status;
}

MStatus readPointAttr(const MString& name, MPoint& out, const MObject& node)
{
    double x = 0.0, y = 0.0, z = 0.0;
    MStatus status = readTriple(name, x, y, z, node, __LINE__);
    if (status)
        out = MPoint(x, y, z, 1.0);
    return status;
}

MStatus readVectorAttr(const MString& name, MVector& out, const MObject& node)
{
    double x = 0.0, y = 0.0, z = 0.0;
    MStatus status = readTriple(name, x, y, z, node, __LINE__);
    if (status)
        out = MVector(x, y, z);
    return status;
}

MStatus readIntArrayAttr(const MString& name, MIntArray& out, const MObject& node)
{
    return readArray<MFnIntArrayData>(name, out, node, true, __LINE__);
}

MStatus readPointArrayAttr(const MString& name, MPointArray& out, const MObject& node)
{
    return readArray<MFnPointArrayData>(name, out, node, true, __LINE__);
}

MStatus readVectorArrayAttr(const MString& name, MVectorArray& out, const MObject& node)
{
    // Deliberate: no null-data test, unlike the other array reads. The draw override reads
    // the face normals through here and takes a never-written attribute as no normals.
    return readArray<MFnVectorArrayData>(name, out, node, false, __LINE__);
}

MObject readArrayData(const MString& name, const MObject& node, MStatus& status)
{
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return MObject();
    MObject data = dataOf(plug, status);
    if (!status)
        status.pAPIerror(kModule, __LINE__, name.asChar());
    return data;
}

MStatus writeIntAttr(int value, const MString& name, const MObject& node)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return status;
    status = plug.setInt(value);
    if (!status)
        status.pAPIerror(kModule, __LINE__, name.asChar());
    return status;
}

MStatus writeDoubleAttr(double value, const MString& name, const MObject& node)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return status;
    status = plug.setDouble(value);
    if (!status)
        status.pAPIerror(kModule, __LINE__, name.asChar());
    return status;
}

MStatus writeTripleAttr(const MPoint& point, const MString& name, const MObject& node)
{
    MStatus status;
    MPlug plug = plugOf(name, node, status, __LINE__);
    if (!status)
        return status;
    MFnNumericData fn;
    MObject data = fn.create(MFnNumericData::k3Double, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, name.asChar());
        return status;
    }
    status = fn.setData(point.x, point.y, point.z);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, name.asChar());
        return status;
    }
    status = plug.setMObject(data);
    if (!status)
        status.pAPIerror(kModule, __LINE__, name.asChar());
    return status;
}

MStatus writeIntArrayAttr(const MIntArray& array, const MString& name, const MObject& node)
{
    return writeArray<MFnIntArrayData>(array, name, node, __LINE__);
}

MStatus writePointArrayAttr(const MPointArray& array, const MString& name, const MObject& node)
{
    return writeArray<MFnPointArrayData>(array, name, node, __LINE__);
}

MStatus writeVectorArrayAttr(const MVectorArray& array, const MString& name, const MObject& node)
{
    return writeArray<MFnVectorArrayData>(array, name, node, __LINE__);
}

MStatus writeFloatArrayAttr(const MFloatArray& array, const MString& name, const MObject& node)
{
    return writeArray<MFnFloatArrayData>(array, name, node, __LINE__);
}

} // namespace tq
