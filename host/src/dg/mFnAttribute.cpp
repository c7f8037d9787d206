#include <maya/MFnAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

#include <algorithm>

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnAttribute, MFn::kAttribute)

namespace host {

MObject makeAttribute(AttrKind kind, const MString& fullName, const MString& briefName,
                      std::shared_ptr<AttributeBody>* made)
{
    auto body = std::make_shared<AttributeBody>();
    body->kind = kind;
    body->longName = fullName.asChar();
    body->shortName = briefName.length() ? briefName.asChar() : fullName.asChar();
    if (made)
        *made = body;
    return Access::object(body);
}

} // namespace host

namespace {

template <class Get>
bool flag(const MObject& object, MStatus* status, Get get)
{
    AttributeBody* a = host::attributeOf(object);
    TQHOST_SET_STATUS(status, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? get(a->flags) : false;
}

template <class Set>
MStatus setFlag(const MObject& object, Set set)
{
    AttributeBody* a = host::attributeOf(object);
    if (!a)
        return MStatus::kInvalidParameter;
    set(a->flags);
    return MStatus::kSuccess;
}

} // namespace

#define TQHOST_FLAG(GETTER, SETTER, FIELD)                                                       \
    bool MFnAttribute::GETTER(MStatus* ReturnStatus) const                                       \
    {                                                                                            \
        return flag(fObject, ReturnStatus, [](const host::AttrFlags& f) { return f.FIELD; });    \
    }                                                                                            \
    MStatus MFnAttribute::SETTER(bool state)                                                     \
    {                                                                                            \
        return setFlag(fObject, [state](host::AttrFlags& f) { f.FIELD = state; });               \
    }

TQHOST_FLAG(isReadable, setReadable, readable)
TQHOST_FLAG(isWritable, setWritable, writable)
TQHOST_FLAG(isConnectable, setConnectable, connectable)
TQHOST_FLAG(isStorable, setStorable, storable)
TQHOST_FLAG(isCached, setCached, cached)
TQHOST_FLAG(isArray, setArray, array)
TQHOST_FLAG(indexMatters, setIndexMatters, indexMatters)
TQHOST_FLAG(isKeyable, setKeyable, keyable)
TQHOST_FLAG(isChannelBoxFlagSet, setChannelBox, channelBox)
TQHOST_FLAG(isHidden, setHidden, hidden)
TQHOST_FLAG(isUsedAsColor, setUsedAsColor, usedAsColor)
TQHOST_FLAG(isIndeterminant, setIndeterminant, indeterminant)
TQHOST_FLAG(isRenderSource, setRenderSource, renderSource)
TQHOST_FLAG(isWorldSpace, setWorldSpace, worldSpace)
TQHOST_FLAG(isAffectsWorldSpace, setAffectsWorldSpace, affectsWorldSpace)
TQHOST_FLAG(isUsedAsFilename, setUsedAsFilename, usedAsFilename)
TQHOST_FLAG(affectsAppearance, setAffectsAppearance, affectsAppearance)
TQHOST_FLAG(usesArrayDataBuilder, setUsesArrayDataBuilder, usesArrayDataBuilder)
TQHOST_FLAG(internal, setInternal, internal)

#undef TQHOST_FLAG

bool MFnAttribute::isDynamic(MStatus* ReturnStatus) const
{
    return flag(fObject, ReturnStatus, [](const host::AttrFlags& f) { return f.dynamic; });
}

MFnAttribute::DisconnectBehavior MFnAttribute::disconnectBehavior(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? DisconnectBehavior(a->flags.disconnectBehavior) : kNothing;
}

MStatus MFnAttribute::setDisconnectBehavior(DisconnectBehavior behavior)
{
    return setFlag(fObject, [behavior](host::AttrFlags& f) { f.disconnectBehavior = short(behavior); });
}

MStatus MFnAttribute::setNiceNameOverride(const MString& localizedName)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->niceName = localizedName.asChar();
    return MStatus::kSuccess;
}

bool MFnAttribute::accepts(MFnData::Type type, MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (!a)
        return false;
    if (a->kind == host::AttrKind::kTyped)
        return a->dataType == type || a->dataType == MFnData::kAny;
    if (a->kind == host::AttrKind::kGeneric)
        return std::find(a->acceptedData.begin(), a->acceptedData.end(), type) != a->acceptedData.end() ||
               (type == MFnData::kNumeric && !a->acceptedNumeric.empty());
    if (a->kind == host::AttrKind::kNumeric)
        return type == MFnData::kNumeric;
    if (a->kind == host::AttrKind::kMatrix)
        return type == MFnData::kMatrix;
    return false;
}

MString MFnAttribute::name(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? MString(a->longName.c_str()) : MString();
}

MString MFnAttribute::shortName(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? MString(a->shortName.c_str()) : MString();
}

MObject MFnAttribute::parent(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || !a->parent) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return host::Access::object(a->parent->shared_from_this());
}
