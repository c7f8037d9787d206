#pragma once
// MFnCompoundAttribute: an attribute made of child attributes, each with its own value.

#include <maya/MFnAttribute.h>

class MFnCompoundAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnCompoundAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus = nullptr);
    MStatus addChild(const MObject& child);
    MStatus removeChild(const MObject& child);
    unsigned int numChildren(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
};
