#pragma once
// MFnMessageAttribute: a value-less attribute that only carries connections.

#include <maya/MFnAttribute.h>

class MFnMessageAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnMessageAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus = nullptr);
};
