#include <maya/MFnComponent.h>

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/fnMacros.h"

#include <algorithm>
#include <vector>

using host::Access;
using host::ComponentBody;

TQHOST_DEFINE_MFN(MFnComponent, MFn::kComponent)

namespace {

std::shared_ptr<ComponentBody> bodyOf(const MObject& object, MStatus* status)
{
    auto body = Access::as<ComponentBody>(object);
    TQHOST_SET_STATUS(status, body ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return body;
}

// The distinct elements a component names, sorted.
std::vector<int> elementSet(const ComponentBody& body)
{
    std::vector<int> out;
    if (body.complete) {
        out.resize(static_cast<std::size_t>(std::max(body.completeCount, 0)));
        for (std::size_t i = 0; i < out.size(); ++i)
            out[i] = static_cast<int>(i);
        return out;
    }
    out = body.elements;
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

} // namespace

int MFnComponent::elementCount(MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    if (!body)
        return 0;
    return body->complete ? body->completeCount : static_cast<int>(body->elements.size());
}

MFn::Type MFnComponent::componentType(MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    return body ? body->apiType() : MFn::kInvalid;
}

bool MFnComponent::isEmpty(MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    return !body || (!body->complete && body->elements.empty());
}

bool MFnComponent::isEqual(MObject& other, MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    if (!body)
        return false;
    auto that = bodyOf(other, ReturnStatus);
    if (!that)
        return false;
    if (body->apiType() != that->apiType())
        return false;
    // A complete component of unknown size names every element of its shape, so it equals
    // only another such component.
    const bool openA = body->complete && body->completeCount == 0;
    const bool openB = that->complete && that->completeCount == 0;
    if (openA || openB)
        return openA && openB;
    return elementSet(*body) == elementSet(*that);
}

bool MFnComponent::isComplete(MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    return body && body->complete;
}

MStatus MFnComponent::setComplete(bool complete)
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (body)
        body->complete = complete;
    return s;
}
