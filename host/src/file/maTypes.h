#pragma once
// What the .ma writer and reader agree on: the names `setAttr -type` gives the host's
// numeric compounds and data kinds, how numbers are written so that they read back exactly,
// and the mesh records that stand for a shape's own geometry.

#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>

#include <string>
#include <string_view>

namespace host {

// "double3", "float2", "long3", ... for numeric compounds; empty for single numbers.
std::string numericTypeName(MFnNumericData::Type type);
// The numeric type of such a name; kInvalid when it is none.
MFnNumericData::Type numericTypeOf(std::string_view name);

// "Int32Array", "doubleArray", "floatArray", "pointArray", "vectorArray", "stringArray",
// "string", "matrix"; empty for kinds the files do not carry.
std::string dataTypeName(MFnData::Type type);
MFnData::Type dataTypeOf(std::string_view name);

// The shortest text that reads back as the same value.
void appendNumber(std::string& out, double value);
void appendFloat(std::string& out, float value);
// A quoted MEL string with ", \ and control characters escaped.
void appendQuoted(std::string& out, std::string_view text);

// Numbers as setAttr takes them: decimal numbers and, for booleans, yes/no, on/off,
// true/false.
bool readNumber(std::string_view text, double& value);

// True for the mesh attributes the files use for a shape's own geometry (vt, ed, fc, uvst,
// cuvs and their long names); the host's mesh keeps that geometry as one data object.
bool isMeshGeometryAttribute(std::string_view name);

} // namespace host
