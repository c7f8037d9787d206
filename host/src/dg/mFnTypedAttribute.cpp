#include <maya/MFnTypedAttribute.h>

#include "dg/attributeFns.h"
#include "dg/dataBody.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnTypedAttribute, MFn::kTypedAttribute)

MObject MFnTypedAttribute::create(const MString& fullName, const MString& briefName, MFnData::Type attrType,
                                  const MObject& defaultData, MStatus* ReturnStatus)
{
    if (attrType <= MFnData::kInvalid || attrType >= MFnData::kLast) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    std::shared_ptr<AttributeBody> body;
    MObject object = host::makeAttribute(host::AttrKind::kTyped, fullName, briefName, &body);
    body->dataType = attrType;
    // With no default, the attribute holds null data until something is stored.
    body->defaultValue = host::Value::ofData(host::shareData(defaultData));
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MObject MFnTypedAttribute::create(const MString& fullName, const MString& briefName, const MTypeId&,
                                  const MObject& defaultData, MStatus* ReturnStatus)
{
    return create(fullName, briefName, MFnData::kPlugin, defaultData, ReturnStatus);
}

MFnData::Type MFnTypedAttribute::attrType(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? a->dataType : MFnData::kInvalid;
}

MStatus MFnTypedAttribute::getDefault(MObject& defaultData)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    defaultData = host::shareData(a->defaultValue.data);
    return MStatus::kSuccess;
}

MStatus MFnTypedAttribute::setDefault(const MObject& defaultData)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    auto body = host::Access::as<host::DataBody>(defaultData);
    if (!defaultData.isNull() && (!body || (body->dataType() != a->dataType && a->dataType != MFnData::kAny)))
        return MStatus::kInvalidParameter;
    a->defaultValue = host::Value::ofData(host::shareData(defaultData));
    return MStatus::kSuccess;
}
