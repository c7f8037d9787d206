#include <maya/MFnStringData.h>

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/fnMacros.h"

TQHOST_DEFINE_MFN(MFnStringData, MFn::kStringData)

MString MFnStringData::string(MStatus* ReturnStatus) const
{
    auto b = host::Access::as<host::StringDataBody>(fObject);
    TQHOST_SET_STATUS(ReturnStatus, b ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return b ? b->read() : MString();
}

MStatus MFnStringData::set(const MString& newString)
{
    auto b = host::Access::as<host::StringDataBody>(fObject);
    if (!b)
        return MStatus::kInvalidParameter;
    b->write() = newString;
    return MStatus::kSuccess;
}

MObject MFnStringData::create(const MString& str, MStatus* ReturnStatus)
{
    auto b = std::make_shared<host::StringDataBody>();
    b->write() = str;
    MObject o = host::Access::object(b);
    attach(o);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return o;
}

MObject MFnStringData::create(MStatus* ReturnStatus) { return create(MString(), ReturnStatus); }
