#pragma once
// MFnStringData: string data objects, as held by string attributes.

#include <maya/MFnData.h>
#include <maya/MString.h>

class MFnStringData : public MFnData {
    TQHOST_DECLARE_MFN(MFnStringData, MFnData)

    MString string(MStatus* ReturnStatus = nullptr) const;
    MStatus set(const MString& newString);
    MObject create(const MString& str, MStatus* ReturnStatus = nullptr);
    MObject create(MStatus* ReturnStatus = nullptr);
};
