#pragma once
// MFnEnumAttribute: a short-valued attribute with named fields.

#include <maya/MFnAttribute.h>

class MFnEnumAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnEnumAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, short defaultValue = 0,
                   MStatus* ReturnStatus = nullptr);
    MStatus addField(const MString& fieldString, short index);
    MString fieldName(short index, MStatus* ReturnStatus = nullptr) const;
    short fieldIndex(const MString& fieldString, MStatus* ReturnStatus = nullptr) const;
    MStatus getMin(short& minValue) const;
    MStatus getMax(short& maxValue) const;
    MStatus setDefault(short index);
    MStatus setDefault(const MString& fieldString);
    MStatus getDefault(short& index) const;
    MString defaultValue(MStatus* ReturnStatus = nullptr) const;
};
