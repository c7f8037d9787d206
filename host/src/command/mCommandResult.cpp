#include <maya/MCommandResult.h>

#include "command/commandValue.h"

#include <maya/MDoubleArray.h>
#include <maya/MInt64Array.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>


using host::CommandValue;
using Kind = host::CommandValue::Kind;

namespace {

bool numeric(const CommandValue& v) { return v.kind == Kind::kInt || v.kind == Kind::kDouble; }
bool numericArray(const CommandValue& v)
{
    return numeric(v) || v.kind == Kind::kIntArray || v.kind == Kind::kDoubleArray;
}

std::vector<double> numbers(const CommandValue& v)
{
    std::vector<double> out(v.ints.begin(), v.ints.end());
    out.insert(out.end(), v.doubles.begin(), v.doubles.end());
    return out;
}

} // namespace

MCommandResult::MCommandResult(MStatus* ReturnStatus) : fValue(std::make_unique<CommandValue>())
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
}

MCommandResult::MCommandResult(const MCommandResult& other) : fValue(std::make_unique<CommandValue>(*other.fValue)) {}

MCommandResult& MCommandResult::operator=(const MCommandResult& other)
{
    if (this != &other)
        *fValue = *other.fValue;
    return *this;
}

MCommandResult::~MCommandResult() = default;

MCommandResult::Type MCommandResult::resultType(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    switch (fValue->kind) {
    case Kind::kInt: return kInt;
    case Kind::kIntArray: return kIntArray;
    case Kind::kDouble: return kDouble;
    case Kind::kDoubleArray: return kDoubleArray;
    case Kind::kString: return kString;
    case Kind::kStringArray: return kStringArray;
    default: return kInvalid;
    }
}

MStatus MCommandResult::getResult(int& result) const
{
    if (!numeric(*fValue))
        return MStatus::kInvalidParameter;
    result = fValue->kind == Kind::kInt ? fValue->ints.front() : static_cast<int>(fValue->doubles.front());
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MInt64& result) const
{
    if (!numeric(*fValue))
        return MStatus::kInvalidParameter;
    result = fValue->kind == Kind::kInt ? fValue->ints.front() : static_cast<MInt64>(fValue->doubles.front());
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MIntArray& result) const
{
    if (!numericArray(*fValue))
        return MStatus::kInvalidParameter;
    result.clear();
    for (double v : numbers(*fValue))
        result.append(static_cast<int>(v));
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MInt64Array& result) const
{
    if (!numericArray(*fValue))
        return MStatus::kInvalidParameter;
    result.clear();
    for (double v : numbers(*fValue))
        result.append(static_cast<MInt64>(v));
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(double& result) const
{
    if (!numeric(*fValue))
        return MStatus::kInvalidParameter;
    result = numbers(*fValue).front();
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MDoubleArray& result) const
{
    if (!numericArray(*fValue))
        return MStatus::kInvalidParameter;
    result.clear();
    for (double v : numbers(*fValue))
        result.append(v);
    return MStatus::kSuccess;
}

MString MCommandResult::stringResult(MStatus* ReturnResult) const
{
    MString out;
    MStatus st = getResult(out);
    if (ReturnResult)
        *ReturnResult = st;
    return out;
}

MStatus MCommandResult::getResult(MString& result) const
{
    if (fValue->kind != Kind::kString)
        return MStatus::kInvalidParameter;
    result = MString(fValue->strings.front().c_str());
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MStringArray& result) const
{
    if (fValue->kind != Kind::kString && fValue->kind != Kind::kStringArray)
        return MStatus::kInvalidParameter;
    result.clear();
    for (const std::string& s : fValue->strings)
        result.append(MString(s.c_str()));
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MVector& result) const
{
    std::vector<double> v = numbers(*fValue);
    if (fValue->kind != Kind::kDoubleArray || v.size() != 3)
        return MStatus::kInvalidParameter;
    result = MVector(v[0], v[1], v[2]);
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MVectorArray& result) const
{
    std::vector<double> v = numbers(*fValue);
    if (fValue->kind != Kind::kDoubleArray || v.size() % 3 != 0)
        return MStatus::kInvalidParameter;
    result.clear();
    for (std::size_t i = 0; i < v.size(); i += 3)
        result.append(MVector(v[i], v[i + 1], v[i + 2]));
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MDoubleArray& result, int& numRows, int& numColumns) const
{
    // The host's results have no matrix form: a numeric array reads as one row.
    MStatus st = getResult(result);
    if (!st)
        return st;
    numRows = result.length() > 0 ? 1 : 0;
    numColumns = static_cast<int>(result.length());
    return st;
}

const char* MCommandResult::className() { return "MCommandResult"; }
