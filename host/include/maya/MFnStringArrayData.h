#pragma once
// MFnStringArrayData: creates and edits MStringArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MStringArray.h>

class MFnStringArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnStringArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MString operator[](unsigned int index) const;
    MString& operator[](unsigned int index);
    MStatus set(const MString& element, unsigned int index);
    MStatus copyTo(MStringArray& dest) const;
    MStatus set(const MStringArray& newArray);
    MStringArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MStringArray& in, MStatus* ReturnStatus = nullptr);
};
