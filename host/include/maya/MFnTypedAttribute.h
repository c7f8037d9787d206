#pragma once
// MFnTypedAttribute: attributes that hold one kind of data object (arrays, strings,
// matrices, meshes). With no default they hold null data until set.

#include <maya/MFnAttribute.h>
#include <maya/MTypeId.h>

class MFnTypedAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnTypedAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, MFnData::Type attrType,
                   const MObject& defaultData = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, const MTypeId& id,
                   const MObject& defaultData = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MFnData::Type attrType(MStatus* ReturnStatus = nullptr) const;
    MStatus getDefault(MObject& defaultData);
    MStatus setDefault(const MObject& defaultData);
};
