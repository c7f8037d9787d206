#pragma once
// MArgList: the arguments of one command invocation, in the order they were written. Flags
// are elements too ("-u" followed by its values); MArgParser and MArgDatabase read a list
// against a syntax. Plug-ins also build lists themselves, for MPxToolCommand::doFinalize.

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <memory>

class MVector;
class MPoint;
class MMatrix;
class MIntArray;
class MDoubleArray;
class MStringArray;

namespace host {
struct ArgListData;
class CommandAccess;
}

class MArgList {
public:
    static const unsigned int kInvalidArgIndex;

    MArgList();
    MArgList(const MArgList& other);
    ~MArgList();
    MArgList& operator=(const MArgList& other);

    unsigned int length(MStatus* ReturnStatus = nullptr) const;

    bool asBool(unsigned int index, MStatus* ret = nullptr) const;
    int asInt(unsigned int index, MStatus* ret = nullptr) const;
    double asDouble(unsigned int index, MStatus* ret = nullptr) const;
    MString asString(unsigned int index, MStatus* ret = nullptr) const;
    MVector asVector(unsigned int& index, unsigned int numElements = 3, MStatus* ReturnStatus = nullptr) const;
    MPoint asPoint(unsigned int& index, unsigned int numElements = 3, MStatus* ReturnStatus = nullptr) const;
    MMatrix asMatrix(unsigned int& index, MStatus* ret = nullptr) const;
    MIntArray asIntArray(unsigned int& index, MStatus* ReturnStatus = nullptr) const;
    MDoubleArray asDoubleArray(unsigned int& index, MStatus* ReturnStatus = nullptr) const;
    const MStringArray asStringArray(unsigned int& index, MStatus* ReturnStatus = nullptr) const;

    // The index of the first element that is the flag, by either name ("-u" or "u"), or
    // kInvalidArgIndex.
    unsigned int flagIndex(const char* shortFlag, const char* longFlag = nullptr) const;

    MStatus addArg(bool arg);
    MStatus addArg(int arg);
    MStatus addArg(double arg);
    MStatus addArg(const MString& arg);
    MStatus addArg(const MVector& arg);
    MStatus addArg(const MPoint& arg);

    MStatus get(unsigned int index, bool& ret) const;
    MStatus get(unsigned int index, int& ret) const;
    MStatus get(unsigned int index, double& ret) const;
    MStatus get(unsigned int index, MString& ret) const;
    MStatus get(unsigned int& index, MVector& ret, unsigned int numElements = 3) const;
    MStatus get(unsigned int& index, MPoint& ret, unsigned int numElements = 3) const;
    MStatus get(unsigned int& index, MMatrix& ret) const;
    MStatus get(unsigned int& index, MIntArray& ret) const;
    MStatus get(unsigned int& index, MDoubleArray& ret) const;
    MStatus get(unsigned int& index, MStringArray& ret) const;

    friend std::ostream& operator<<(std::ostream& os, const MArgList& args);

    static const char* className();

private:
    friend class host::CommandAccess;
    std::unique_ptr<host::ArgListData> fData;
};
