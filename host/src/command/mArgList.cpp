#include <maya/MArgList.h>

#include "command/commandAccess.h"
#include "command/syntaxData.h"

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

#include <cctype>
#include <climits>
#include <ostream>

using host::ArgValue;

namespace {

void setStatus(MStatus* status, MStatus::MStatusCode code)
{
    if (status)
        *status = code;
}

const ArgValue* scalarAt(const std::vector<ArgValue>& items, unsigned int index)
{
    if (index >= items.size() || items[index].isArray())
        return nullptr;
    return &items[index];
}

bool numberAt(const std::vector<ArgValue>& items, unsigned int index, double& out)
{
    const ArgValue* a = scalarAt(items, index);
    if (!a)
        return false;
    if (host::parseNumber(a->text, out))
        return true;
    bool b = false;
    if (!host::parseBool(a->text, b))
        return false;
    out = b ? 1.0 : 0.0;
    return true;
}

bool numbersAt(const std::vector<ArgValue>& items, unsigned int index, unsigned int count, double* out)
{
    for (unsigned int k = 0; k < count; ++k)
        if (!numberAt(items, index + k, out[k]))
            return false;
    return true;
}

bool looksLikeFlag(const std::string& s)
{
    return s.size() > 1 && s[0] == '-' && (std::isalpha(static_cast<unsigned char>(s[1])) || s[1] == '_');
}

} // namespace

const unsigned int MArgList::kInvalidArgIndex = UINT_MAX;

MArgList::MArgList() : fData(std::make_unique<host::ArgListData>()) {}
MArgList::MArgList(const MArgList& other) : fData(std::make_unique<host::ArgListData>(*other.fData)) {}
MArgList::~MArgList() = default;

MArgList& MArgList::operator=(const MArgList& other)
{
    if (this != &other)
        *fData = *other.fData;
    return *this;
}

unsigned int MArgList::length(MStatus* ReturnStatus) const
{
    setStatus(ReturnStatus, MStatus::kSuccess);
    return static_cast<unsigned int>(fData->items.size());
}

bool MArgList::asBool(unsigned int index, MStatus* ret) const
{
    bool out = false;
    MStatus st = get(index, out);
    if (ret)
        *ret = st;
    return out;
}

int MArgList::asInt(unsigned int index, MStatus* ret) const
{
    int out = 0;
    MStatus st = get(index, out);
    if (ret)
        *ret = st;
    return out;
}

double MArgList::asDouble(unsigned int index, MStatus* ret) const
{
    double out = 0.0;
    MStatus st = get(index, out);
    if (ret)
        *ret = st;
    return out;
}

MString MArgList::asString(unsigned int index, MStatus* ret) const
{
    MString out;
    MStatus st = get(index, out);
    if (ret)
        *ret = st;
    return out;
}

MVector MArgList::asVector(unsigned int& index, unsigned int numElements, MStatus* ReturnStatus) const
{
    MVector out;
    MStatus st = get(index, out, numElements);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

MPoint MArgList::asPoint(unsigned int& index, unsigned int numElements, MStatus* ReturnStatus) const
{
    MPoint out;
    MStatus st = get(index, out, numElements);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

MMatrix MArgList::asMatrix(unsigned int& index, MStatus* ret) const
{
    MMatrix out;
    MStatus st = get(index, out);
    if (ret)
        *ret = st;
    return out;
}

MIntArray MArgList::asIntArray(unsigned int& index, MStatus* ReturnStatus) const
{
    MIntArray out;
    MStatus st = get(index, out);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

MDoubleArray MArgList::asDoubleArray(unsigned int& index, MStatus* ReturnStatus) const
{
    MDoubleArray out;
    MStatus st = get(index, out);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

const MStringArray MArgList::asStringArray(unsigned int& index, MStatus* ReturnStatus) const
{
    MStringArray out;
    MStatus st = get(index, out);
    if (ReturnStatus)
        *ReturnStatus = st;
    return out;
}

unsigned int MArgList::flagIndex(const char* shortFlag, const char* longFlag) const
{
    std::string s = shortFlag ? host::flagKey(shortFlag) : std::string();
    std::string l = longFlag ? host::flagKey(longFlag) : std::string();
    for (unsigned int i = 0; i < fData->items.size(); ++i) {
        const ArgValue& a = fData->items[i];
        if (!a.isFlag())
            continue;
        std::string name = a.flagName();
        if ((!s.empty() && name == s) || (!l.empty() && name == l))
            return i;
    }
    return kInvalidArgIndex;
}

MStatus MArgList::addArg(bool arg)
{
    fData->items.push_back(ArgValue{ArgValue::Kind::kBool, arg ? "true" : "false", {}});
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(int arg)
{
    fData->items.push_back(ArgValue::number(std::to_string(arg)));
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(double arg)
{
    fData->items.push_back(ArgValue::number(host::formatNumber(arg)));
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MString& arg)
{
    // A plug-in builds flags as strings; they must read back as flags.
    std::string text = arg.asChar();
    fData->items.push_back(looksLikeFlag(text) ? ArgValue::flag(text) : ArgValue::string(text));
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MVector& arg)
{
    for (double v : {arg.x, arg.y, arg.z})
        addArg(v);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MPoint& arg)
{
    for (double v : {arg.x, arg.y, arg.z})
        addArg(v);
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, bool& ret) const
{
    const ArgValue* a = scalarAt(fData->items, index);
    bool v = false;
    if (!a || !host::parseBool(a->text, v))
        return MStatus::kInvalidParameter;
    ret = v;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, int& ret) const
{
    const ArgValue* a = scalarAt(fData->items, index);
    long long v = 0;
    if (!a || !host::parseInteger(a->text, v) || v < INT_MIN || v > INT_MAX)
        return MStatus::kInvalidParameter;
    ret = static_cast<int>(v);
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, double& ret) const
{
    double v = 0.0;
    if (!numberAt(fData->items, index, v))
        return MStatus::kInvalidParameter;
    ret = v;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, MString& ret) const
{
    const ArgValue* a = scalarAt(fData->items, index);
    if (!a)
        return MStatus::kInvalidParameter;
    ret = MString(a->text.c_str());
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MVector& ret, unsigned int numElements) const
{
    double v[3] = {0.0, 0.0, 0.0};
    if (numElements < 1 || numElements > 3 || !numbersAt(fData->items, index, numElements, v))
        return MStatus::kInvalidParameter;
    ret = MVector(v[0], v[1], v[2]);
    index += numElements;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MPoint& ret, unsigned int numElements) const
{
    double v[4] = {0.0, 0.0, 0.0, 1.0};
    if (numElements < 1 || numElements > 4 || !numbersAt(fData->items, index, numElements, v))
        return MStatus::kInvalidParameter;
    ret = MPoint(v[0], v[1], v[2], v[3]);
    index += numElements;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MMatrix& ret) const
{
    double v[16];
    if (!numbersAt(fData->items, index, 16, v))
        return MStatus::kInvalidParameter;
    double rows[4][4];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            rows[r][c] = v[r * 4 + c];
    ret = MMatrix(rows);
    index += 16;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MIntArray& ret) const
{
    if (index >= fData->items.size() || !fData->items[index].isArray())
        return MStatus::kInvalidParameter;
    MIntArray out;
    for (const std::string& item : fData->items[index].items) {
        long long v = 0;
        if (!host::parseInteger(item, v) || v < INT_MIN || v > INT_MAX)
            return MStatus::kInvalidParameter;
        out.append(static_cast<int>(v));
    }
    ret = out;
    ++index;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MDoubleArray& ret) const
{
    if (index >= fData->items.size() || !fData->items[index].isArray())
        return MStatus::kInvalidParameter;
    MDoubleArray out;
    for (const std::string& item : fData->items[index].items) {
        double v = 0.0;
        if (!host::parseNumber(item, v))
            return MStatus::kInvalidParameter;
        out.append(v);
    }
    ret = out;
    ++index;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int& index, MStringArray& ret) const
{
    if (index >= fData->items.size() || !fData->items[index].isArray())
        return MStatus::kInvalidParameter;
    MStringArray out;
    for (const std::string& item : fData->items[index].items)
        out.append(MString(item.c_str()));
    ret = out;
    ++index;
    return MStatus::kSuccess;
}

std::ostream& operator<<(std::ostream& os, const MArgList& args)
{
    bool first = true;
    for (const ArgValue& a : host::CommandAccess::items(args)) {
        os << (first ? "" : " ") << a.display();
        first = false;
    }
    return os;
}

const char* MArgList::className() { return "MArgList"; }
