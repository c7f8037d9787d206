#include <maya/MFnMessageAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

TQHOST_DEFINE_MFN(MFnMessageAttribute, MFn::kMessageAttribute)

MObject MFnMessageAttribute::create(const MString& fullName, const MString& briefName, MStatus* ReturnStatus)
{
    MObject object = host::makeAttribute(host::AttrKind::kMessage, fullName, briefName);
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}
