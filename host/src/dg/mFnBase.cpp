#include <maya/MFnBase.h>

MFnBase::MFnBase() = default;
MFnBase::~MFnBase() = default;

MFn::Type MFnBase::type() const { return MFn::kBase; }

const char* MFnBase::className() const { return "MFnBase"; }

bool MFnBase::hasObj(MFn::Type fs) const { return fObject.hasFn(fs); }

bool MFnBase::hasObj(const MObject& obj) const { return obj.hasFn(type()); }

MObject MFnBase::object(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = fObject.isNull() ? MStatus::kInvalidParameter : MStatus::kSuccess;
    return fObject;
}

MStatus MFnBase::setObject(MObject& object) { return attach(object); }

MStatus MFnBase::setObject(const MObject& object) { return attach(object); }

MStatus MFnBase::attach(const MObject& object)
{
    if (object.isNull() || !object.hasFn(type())) {
        fObject = MObject::kNullObj;
        return MStatus::kInvalidParameter;
    }
    fObject = object;
    return MStatus::kSuccess;
}
