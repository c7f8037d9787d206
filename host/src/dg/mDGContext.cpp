#include <maya/MDGContext.h>

MDGContext MDGContext::fsNormal;

MDGContext::MDGContext() = default;
MDGContext::MDGContext(const MDGContext& other) = default;
MDGContext::~MDGContext() = default;
MDGContext& MDGContext::operator=(const MDGContext& other) = default;

bool MDGContext::isNormal() const { return fNormal; }
bool MDGContext::isCurrent() const { return true; }
const MDGContext& MDGContext::current() { return fsNormal; }
