#pragma once
// MFnGenericAttribute: attributes that accept any of a list of data and numeric kinds.

#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MTypeId.h>

class MFnGenericAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnGenericAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus = nullptr);
    MStatus addNumericDataAccept(MFnNumericData::Type numericType);
    MStatus addDataAccept(MFnData::Type dataType);
    MStatus addDataAccept(const MTypeId& id);
    MStatus removeNumericDataAccept(MFnNumericData::Type numericType);
    MStatus removeDataAccept(MFnData::Type dataType);
};
