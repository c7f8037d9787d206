#include <maya/MFnEnumAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

#include <algorithm>

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnEnumAttribute, MFn::kEnumAttribute)

MObject MFnEnumAttribute::create(const MString& fullName, const MString& briefName, short defaultValue,
                                 MStatus* ReturnStatus)
{
    std::shared_ptr<AttributeBody> body;
    MObject object = host::makeAttribute(host::AttrKind::kEnum, fullName, briefName, &body);
    body->numericType = MFnNumericData::kShort;
    body->defaultValue = host::Value::numeric(defaultValue);
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MStatus MFnEnumAttribute::addField(const MString& fieldString, short index)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || fieldString.length() == 0)
        return MStatus::kInvalidParameter;
    for (const auto& f : a->enumFields)
        if (f.first == fieldString.asChar() || f.second == index)
            return MStatus::kInvalidParameter;
    a->enumFields.emplace_back(fieldString.asChar(), index);
    return MStatus::kSuccess;
}

MString MFnEnumAttribute::fieldName(short index, MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (a)
        for (const auto& f : a->enumFields)
            if (f.second == index) {
                TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
                return MString(f.first.c_str());
            }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
    return MString();
}

short MFnEnumAttribute::fieldIndex(const MString& fieldString, MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (a)
        for (const auto& f : a->enumFields)
            if (f.first == fieldString.asChar()) {
                TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
                return f.second;
            }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
    return 0;
}

MStatus MFnEnumAttribute::getMin(short& minValue) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || a->enumFields.empty())
        return MStatus::kFailure;
    minValue = std::min_element(a->enumFields.begin(), a->enumFields.end(),
                                [](const auto& x, const auto& y) { return x.second < y.second; })
                   ->second;
    return MStatus::kSuccess;
}

MStatus MFnEnumAttribute::getMax(short& maxValue) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || a->enumFields.empty())
        return MStatus::kFailure;
    maxValue = std::max_element(a->enumFields.begin(), a->enumFields.end(),
                                [](const auto& x, const auto& y) { return x.second < y.second; })
                   ->second;
    return MStatus::kSuccess;
}

MStatus MFnEnumAttribute::setDefault(short index)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->defaultValue = host::Value::numeric(index);
    return MStatus::kSuccess;
}

MStatus MFnEnumAttribute::setDefault(const MString& fieldString)
{
    MStatus s;
    short index = fieldIndex(fieldString, &s);
    return s ? setDefault(index) : s;
}

MStatus MFnEnumAttribute::getDefault(short& index) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    index = static_cast<short>(a->defaultValue.num[0]);
    return MStatus::kSuccess;
}

MString MFnEnumAttribute::defaultValue(MStatus* ReturnStatus) const
{
    short index = 0;
    MStatus s = getDefault(index);
    MString field = s ? fieldName(index, &s) : MString();
    TQHOST_SET_STATUS(ReturnStatus, s);
    return field;
}
