#include <maya/MObject.h>

#include "dg/objectBody.h"
#include "foundation/fnHierarchy.h"

#include <string>

MObject MObject::kNullObj;

MObject::MObject() = default;
MObject::MObject(const MObject& other) = default;
MObject::MObject(MObject&& other) noexcept = default;
MObject::~MObject() = default;
MObject& MObject::operator=(const MObject& other) = default;
MObject& MObject::operator=(MObject&& other) noexcept = default;

bool MObject::hasFn(MFn::Type fs) const { return fBody && host::fnIsA(fBody->apiType(), fs); }

bool MObject::isNull() const { return !fBody; }

MFn::Type MObject::apiType() const { return fBody ? fBody->apiType() : MFn::kInvalid; }

const char* MObject::apiTypeStr() const
{
    // The enumerator's number; the host keeps no table of names.
    thread_local std::string text;
    text = "MFn::Type(" + std::to_string(static_cast<int>(apiType())) + ")";
    return text.c_str();
}

bool MObject::operator==(const MObject& other) const { return fBody == other.fBody; }

bool MObject::operator!=(const MObject& other) const { return fBody != other.fBody; }
