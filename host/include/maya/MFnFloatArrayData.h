#pragma once
// MFnFloatArrayData: creates and edits MFloatArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MFloatArray.h>

class MFnFloatArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnFloatArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    float operator[](unsigned int index) const;
    float& operator[](unsigned int index);
    MStatus set(float element, unsigned int index);
    MStatus copyTo(MFloatArray& dest) const;
    MStatus set(const MFloatArray& newArray);
    MFloatArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MFloatArray& in, MStatus* ReturnStatus = nullptr);
};
