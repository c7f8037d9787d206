#pragma once
// Generic access to one attribute of a node, by long name. Each call goes through a plug
// and moves a whole value or a whole array; there is no cache. Host failures are logged
// with the module name "functions" and a line. A null node gives kInvalidParameter.
//
// Typed attributes start as null data. The array reads report that as kInvalidParameter
// and leave `out` as it was: a caller that starts from an empty array reads an empty one.
// Writes always make a fresh data object, so an empty array is stored as empty data, never
// by removing the value.

#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

namespace tq {

// The value of an int attribute; -1 and kInvalidParameter for a null node or no such plug.
int readIntAttr(const MString& name, const MObject& node, MStatus& status);
MStatus readDoubleAttr(const MString& name, double& out, const MObject& node);
// A k3Double attribute as a point with w = 1, or as a vector.
MStatus readPointAttr(const MString& name, MPoint& out, const MObject& node);
MStatus readVectorAttr(const MString& name, MVector& out, const MObject& node);
MStatus readIntArrayAttr(const MString& name, MIntArray& out, const MObject& node);
MStatus readPointArrayAttr(const MString& name, MPointArray& out, const MObject& node);
// Null data is not told apart here: it reads as an empty array with success.
MStatus readVectorArrayAttr(const MString& name, MVectorArray& out, const MObject& node);
// The data object an array attribute holds, for reading a few elements through its function
// set without moving the whole array (the source's face normals, read per ray hit). A
// never-written attribute gives a null object and kSuccess.
MObject readArrayData(const MString& name, const MObject& node, MStatus& status);

// Writes through the plug, so what the attribute affects becomes dirty. An int written to a
// double attribute is converted by the host.
MStatus writeIntAttr(int value, const MString& name, const MObject& node);
MStatus writeDoubleAttr(double value, const MString& name, const MObject& node);
MStatus writeTripleAttr(const MPoint& point, const MString& name, const MObject& node);
MStatus writeIntArrayAttr(const MIntArray& array, const MString& name, const MObject& node);
MStatus writePointArrayAttr(const MPointArray& array, const MString& name, const MObject& node);
MStatus writeVectorArrayAttr(const MVectorArray& array, const MString& name, const MObject& node);
MStatus writeFloatArrayAttr(const MFloatArray& array, const MString& name, const MObject& node);

} // namespace tq
