#pragma once
// MFnVectorArrayData: creates and edits MVectorArray data objects for typed attributes.

#include <maya/MFnData.h>
#include <maya/MVectorArray.h>

class MFnVectorArrayData : public MFnData {
    TQHOST_DECLARE_MFN(MFnVectorArrayData, MFnData)

    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MVector operator[](unsigned int index) const;
    MVector& operator[](unsigned int index);
    MStatus set(const MVector& element, unsigned int index);
    MStatus copyTo(MVectorArray& dest) const;
    MStatus set(const MVectorArray& newArray);
    MVectorArray array(MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MVectorArray& in, MStatus* ReturnStatus = nullptr);
};
