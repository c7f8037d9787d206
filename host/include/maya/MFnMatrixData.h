#pragma once
// MFnMatrixData: matrix data objects.

#include <maya/MFnData.h>
#include <maya/MMatrix.h>

class MFnMatrixData : public MFnData {
    TQHOST_DECLARE_MFN(MFnMatrixData, MFnData)

    const MMatrix& matrix(MStatus* ReturnStatus = nullptr) const;
    MStatus set(const MMatrix& matrix);
    MObject create(const MMatrix& in, MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
};
