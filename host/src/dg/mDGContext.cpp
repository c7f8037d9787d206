#include <maya/MDGContext.h>

MDGContext MDGContext::fsNormal;

MDGContext::MDGContext() = default;
MDGContext::MDGContext(const MDGContext& other) = default;
MDGContext::~MDGContext() = default;
MDGContext& MDGContext::operator=(const MDGContext& other) = default;

bool MDGContext::isNormal(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return fNormal;
}
bool MDGContext::isCurrent() const { return true; }
const MDGContext& MDGContext::current() { return fsNormal; }
