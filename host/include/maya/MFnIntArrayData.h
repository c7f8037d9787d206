#pragma once
// MFnIntArrayData: creates and edits MIntArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MIntArray.h>

class MFnIntArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnIntArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    int operator[](unsigned int index) const;
    int& operator[](unsigned int index);
    MStatus set(int element, unsigned int index);
    MStatus copyTo(MIntArray& dest) const;
    MStatus set(const MIntArray& newArray);
    MIntArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MIntArray& in, MStatus* ReturnStatus = nullptr);
};
