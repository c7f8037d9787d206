#include <maya/MFnSingleIndexedComponent.h>

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/fnMacros.h"

#include <algorithm>
#include <memory>

using host::Access;
using host::ComponentBody;

TQHOST_DEFINE_MFN(MFnSingleIndexedComponent, MFn::kSingleIndexedComponent)

namespace {

std::shared_ptr<ComponentBody> bodyOf(const MObject& object, MStatus* status)
{
    auto body = Access::as<ComponentBody>(object);
    TQHOST_SET_STATUS(status, body ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return body;
}

} // namespace

MObject MFnSingleIndexedComponent::create(MFn::Type compType, MStatus* ReturnStatus)
{
    // Only the mesh kinds: they are the components the host's shapes and selection know.
    if (compType != MFn::kMeshVertComponent && compType != MFn::kMeshEdgeComponent &&
        compType != MFn::kMeshPolygonComponent) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    MObject object = Access::object(std::make_shared<ComponentBody>(compType));
    MStatus s = attach(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return object;
}

MStatus MFnSingleIndexedComponent::addElement(int element)
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (!body)
        return s;
    if (element < 0)
        return MStatus::kInvalidParameter;
    body->elements.push_back(element);
    return MStatus::kSuccess;
}

MStatus MFnSingleIndexedComponent::addElements(MIntArray& elements)
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (!body)
        return s;
    if (std::any_of(elements.begin(), elements.end(), [](int e) { return e < 0; }))
        return MStatus::kInvalidParameter;
    body->elements.insert(body->elements.end(), elements.begin(), elements.end());
    return MStatus::kSuccess;
}

int MFnSingleIndexedComponent::elementMax(MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    if (!body)
        return -1;
    if (body->complete)
        return body->completeCount - 1;
    return body->elements.empty() ? -1 : *std::max_element(body->elements.begin(), body->elements.end());
}

int MFnSingleIndexedComponent::element(int index, MStatus* ReturnStatus) const
{
    auto body = bodyOf(fObject, ReturnStatus);
    if (!body)
        return -1;
    const int count = body->complete ? body->completeCount : static_cast<int>(body->elements.size());
    if (index < 0 || index >= count) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return -1;
    }
    return body->complete ? index : body->elements[static_cast<std::size_t>(index)];
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (!body)
        return s;
    if (body->complete) {
        elements.setLength(static_cast<unsigned int>(std::max(body->completeCount, 0)));
        for (unsigned int i = 0; i < elements.length(); ++i)
            elements[i] = static_cast<int>(i);
        return MStatus::kSuccess;
    }
    elements = MIntArray(body->elements.data(), static_cast<unsigned int>(body->elements.size()));
    return MStatus::kSuccess;
}

MStatus MFnSingleIndexedComponent::setCompleteData(int numElements)
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (!body)
        return s;
    if (numElements < 0)
        return MStatus::kInvalidParameter;
    body->complete = true;
    body->completeCount = numElements;
    return MStatus::kSuccess;
}

MStatus MFnSingleIndexedComponent::getCompleteData(int& numElements) const
{
    MStatus s;
    auto body = bodyOf(fObject, &s);
    if (!body)
        return s;
    numElements = body->complete ? body->completeCount : 0;
    return MStatus::kSuccess;
}
