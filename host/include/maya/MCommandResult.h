#pragma once
// MCommandResult: the typed result of MGlobal::executeCommand. A getter of another type than
// the result's fails with kInvalidParameter, except that an int and a double read as each
// other and a scalar reads as an array of one.

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MIntArray;
class MInt64Array;
class MDoubleArray;
class MStringArray;
class MVector;
class MVectorArray;

namespace host {
struct CommandValue;
class CommandAccess;
}

class MCommandResult {
public:
    enum Type {
        kInvalid = 0,
        kInt,
        kInt64,
        kIntArray,
        kInt64Array,
        kDouble,
        kDoubleArray,
        kString,
        kStringArray,
        kVector,
        kVectorArray,
        kMatrix,
        kMatrixArray
    };

    MCommandResult(MStatus* ReturnStatus = nullptr);
    MCommandResult(const MCommandResult& other);
    MCommandResult& operator=(const MCommandResult& other);
    virtual ~MCommandResult();

    Type resultType(MStatus* ReturnStatus = nullptr) const;
    MStatus getResult(int& result) const;
    MStatus getResult(MInt64& result) const;
    MStatus getResult(MIntArray& result) const;
    MStatus getResult(MInt64Array& result) const;
    MStatus getResult(double& result) const;
    MStatus getResult(MDoubleArray& result) const;
    MString stringResult(MStatus* ReturnResult = nullptr) const;
    MStatus getResult(MString& result) const;
    MStatus getResult(MStringArray& result) const;
    MStatus getResult(MVector& result) const;
    MStatus getResult(MVectorArray& result) const;
    MStatus getResult(MDoubleArray& result, int& numRows, int& numColumns) const;

    static const char* className();

private:
    friend class host::CommandAccess;
    std::unique_ptr<host::CommandValue> fValue;
};
