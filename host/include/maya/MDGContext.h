#pragma once
// MDGContext: the context an evaluation runs in. The host evaluates in the normal context
// only (no time or other contexts).

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MDGContext {
public:
    MDGContext();
    MDGContext(const MDGContext& other);
    virtual ~MDGContext();
    MDGContext& operator=(const MDGContext& other);

    bool isNormal(MStatus* ReturnStatus = nullptr) const;
    bool isCurrent() const;
    static const MDGContext& current();

    static MDGContext fsNormal;

private:
    bool fNormal = true;
};
