#pragma once
// MFnMatrixAttribute: attributes holding a 4x4 matrix, double or float.

#include <maya/MFloatMatrix.h>
#include <maya/MFnAttribute.h>
#include <maya/MMatrix.h>

class MFnMatrixAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnMatrixAttribute, MFnAttribute)

    enum Type { kFloat, kDouble };

    MObject create(const MString& fullName, const MString& briefName, Type matrixType = kDouble,
                   MStatus* ReturnStatus = nullptr);
    MStatus getDefault(MMatrix& defaultValue);
    MStatus getDefault(MFloatMatrix& defaultValue);
    MStatus setDefault(const MMatrix& defaultValue);
    MStatus setDefault(const MFloatMatrix& defaultValue);
};
