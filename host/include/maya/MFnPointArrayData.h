#pragma once
// MFnPointArrayData: creates and edits MPointArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MPointArray.h>

class MFnPointArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnPointArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MPoint operator[](unsigned int index) const;
    MPoint& operator[](unsigned int index);
    MStatus set(const MPoint& element, unsigned int index);
    MStatus copyTo(MPointArray& dest) const;
    MStatus set(const MPointArray& newArray);
    MPointArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MPointArray& in, MStatus* ReturnStatus = nullptr);
};
