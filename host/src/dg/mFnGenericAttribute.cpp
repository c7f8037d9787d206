#include <maya/MFnGenericAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

#include <algorithm>

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnGenericAttribute, MFn::kGenericAttribute)

MObject MFnGenericAttribute::create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus)
{
    std::shared_ptr<AttributeBody> body;
    MObject object = host::makeAttribute(host::AttrKind::kGeneric, fullName, briefName, &body);
    body->defaultValue = host::Value::ofData(MObject());
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MStatus MFnGenericAttribute::addNumericDataAccept(MFnNumericData::Type numericType)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->acceptedNumeric.push_back(numericType);
    return MStatus::kSuccess;
}

MStatus MFnGenericAttribute::addDataAccept(MFnData::Type dataType)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || dataType <= MFnData::kInvalid || dataType >= MFnData::kLast)
        return MStatus::kInvalidParameter;
    a->acceptedData.push_back(dataType);
    return MStatus::kSuccess;
}

MStatus MFnGenericAttribute::addDataAccept(const MTypeId&) { return addDataAccept(MFnData::kPlugin); }

MStatus MFnGenericAttribute::removeNumericDataAccept(MFnNumericData::Type numericType)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    auto& v = a->acceptedNumeric;
    v.erase(std::remove(v.begin(), v.end(), numericType), v.end());
    return MStatus::kSuccess;
}

MStatus MFnGenericAttribute::removeDataAccept(MFnData::Type dataType)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    auto& v = a->acceptedData;
    v.erase(std::remove(v.begin(), v.end(), dataType), v.end());
    return MStatus::kSuccess;
}
