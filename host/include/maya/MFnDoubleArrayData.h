#pragma once
// MFnDoubleArrayData: creates and edits MDoubleArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MDoubleArray.h>

class MFnDoubleArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnDoubleArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    double operator[](unsigned int index) const;
    double& operator[](unsigned int index);
    MStatus set(double element, unsigned int index);
    MStatus copyTo(MDoubleArray& dest) const;
    MStatus set(const MDoubleArray& newArray);
    MDoubleArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MDoubleArray& in, MStatus* ReturnStatus = nullptr);
};
