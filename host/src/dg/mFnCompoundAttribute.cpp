#include <maya/MFnCompoundAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

#include <algorithm>

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnCompoundAttribute, MFn::kCompoundAttribute)

MObject MFnCompoundAttribute::create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus)
{
    MObject object = host::makeAttribute(host::AttrKind::kCompound, fullName, briefName);
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MStatus MFnCompoundAttribute::addChild(const MObject& child)
{
    AttributeBody* a = host::attributeOf(fObject);
    auto c = host::Access::as<AttributeBody>(child);
    if (!a || !c || c.get() == a || c->parent || c->owner)
        return MStatus::kInvalidParameter;
    c->parent = a;
    c->childIndex = int(a->children.size());
    a->children.push_back(c);
    return MStatus::kSuccess;
}

MStatus MFnCompoundAttribute::removeChild(const MObject& child)
{
    AttributeBody* a = host::attributeOf(fObject);
    auto c = host::Access::as<AttributeBody>(child);
    if (!a || !c || c->parent != a || a->owner)
        return MStatus::kInvalidParameter;
    a->children.erase(std::remove(a->children.begin(), a->children.end(), c), a->children.end());
    c->parent = nullptr;
    for (std::size_t i = 0; i < a->children.size(); ++i)
        a->children[i]->childIndex = int(i);
    return MStatus::kSuccess;
}

unsigned int MFnCompoundAttribute::numChildren(MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    TQHOST_SET_STATUS(ReturnStatus, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? unsigned(a->children.size()) : 0u;
}

MObject MFnCompoundAttribute::child(unsigned int index, MStatus* ReturnStatus) const
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a || index >= a->children.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return host::Access::object(a->children[index]);
}
