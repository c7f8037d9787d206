#include "file/maTypes.h"

#include <charconv>
#include <cstdio>

namespace host {

namespace {

struct NumericName {
    MFnNumericData::Type type;
    const char* name;
};
constexpr NumericName kNumericNames[] = {
    {MFnNumericData::k2Short, "short2"},   {MFnNumericData::k3Short, "short3"},
    {MFnNumericData::k2Long, "long2"},     {MFnNumericData::k3Long, "long3"},
    {MFnNumericData::k2Float, "float2"},   {MFnNumericData::k3Float, "float3"},
    {MFnNumericData::k2Double, "double2"}, {MFnNumericData::k3Double, "double3"},
    {MFnNumericData::k4Double, "double4"},
};

struct DataName {
    MFnData::Type type;
    const char* name;
};
constexpr DataName kDataNames[] = {
    {MFnData::kIntArray, "Int32Array"},      {MFnData::kDoubleArray, "doubleArray"},
    {MFnData::kFloatArray, "floatArray"},    {MFnData::kPointArray, "pointArray"},
    {MFnData::kVectorArray, "vectorArray"},  {MFnData::kStringArray, "stringArray"},
    {MFnData::kString, "string"},            {MFnData::kMatrix, "matrix"},
};

} // namespace

std::string numericTypeName(MFnNumericData::Type type)
{
    for (const NumericName& n : kNumericNames)
        if (n.type == type)
            return n.name;
    return {};
}

MFnNumericData::Type numericTypeOf(std::string_view name)
{
    for (const NumericName& n : kNumericNames)
        if (name == n.name)
            return n.type;
    return MFnNumericData::kInvalid;
}

std::string dataTypeName(MFnData::Type type)
{
    for (const DataName& n : kDataNames)
        if (n.type == type)
            return n.name;
    return {};
}

MFnData::Type dataTypeOf(std::string_view name)
{
    for (const DataName& n : kDataNames)
        if (name == n.name)
            return n.type;
    return MFnData::kInvalid;
}

void appendNumber(std::string& out, double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void appendFloat(std::string& out, float value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void appendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    for (char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\t': out += "\\t"; break;
        case '\r': out += "\\r"; break;
        default: out += c;
        }
    }
    out += '"';
}

bool readNumber(std::string_view text, double& value)
{
    if (text == "yes" || text == "on" || text == "true") {
        value = 1.0;
        return true;
    }
    if (text == "no" || text == "off" || text == "false") {
        value = 0.0;
        return true;
    }
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && !text.empty();
}

bool isMeshGeometryAttribute(std::string_view name)
{
    for (const char* n : {"vt", "vrts", "ed", "edge", "fc", "face", "uvst", "uvSet", "cuvs", "currentUVSet"})
        if (name == n)
            return true;
    return false;
}

} // namespace host
