#include <maya/MArrayDataHandle.h>

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"

#include <algorithm>

using host::Access;
using host::PlugKey;

namespace host {

MArrayDataHandle Access::arrayHandle(NodeBody* node, const PlugKey& arrayKey)
{
    MArrayDataHandle h;
    h.fNode = node;
    h.fAttr = arrayKey.attr;
    h.fIndices = arrayKey.indices;
    h.refresh();
    return h;
}

MArrayDataBuilder Access::builder(NodeBody* node, const PlugKey& arrayKey)
{
    MArrayDataBuilder b;
    b.fNode = node;
    b.fAttr = arrayKey.attr;
    b.fIndices = arrayKey.indices;
    return b;
}

} // namespace host

MArrayDataHandle::MArrayDataHandle() = default;

MArrayDataHandle::MArrayDataHandle(const MDataHandle& in, MStatus* ReturnStatus)
{
    // An array handle from a plain handle reaches the same array plug.
    const host::AttributeBody* a = Access::handleAttribute(in);
    PlugKey key{a, Access::handleIndices(in)};
    if (!Access::handleNode(in) || !a || !key.isArrayPlug()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return;
    }
    fNode = Access::handleNode(in);
    fAttr = a;
    fIndices = key.indices;
    refresh();
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
}

MArrayDataHandle::MArrayDataHandle(const MArrayDataHandle& other) = default;
MArrayDataHandle& MArrayDataHandle::operator=(const MArrayDataHandle& other) = default;
MArrayDataHandle::~MArrayDataHandle() = default;

void MArrayDataHandle::refresh()
{
    fElements.clear();
    if (!fNode || !fAttr)
        return;
    if (const host::PlugSlot* s = fNode->findSlot(PlugKey{fAttr, fIndices}))
        fElements.assign(s->elements.begin(), s->elements.end());
    if (fPosition > fElements.size())
        fPosition = static_cast<unsigned int>(fElements.size());
}

MDataHandle MArrayDataHandle::elementHandle(bool input, MStatus* ReturnStatus)
{
    if (!fNode || fPosition >= fElements.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MDataHandle();
    }
    PlugKey key{fAttr, fIndices};
    key.indices.push_back(fElements[fPosition]);
    host::Storage s = input ? host::pull(fNode, key) : host::storageFor(fNode, key);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return Access::handle(fNode, key, s.value, s.component);
}

MDataHandle MArrayDataHandle::inputValue(MStatus* ReturnStatus) { return elementHandle(true, ReturnStatus); }
MDataHandle MArrayDataHandle::outputValue(MStatus* ReturnStatus) { return elementHandle(false, ReturnStatus); }

MArrayDataHandle MArrayDataHandle::inputArrayValue(MStatus* ReturnStatus)
{
    // Arrays of arrays are not built by anything in this host.
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kNotImplemented);
    return MArrayDataHandle();
}

MArrayDataHandle MArrayDataHandle::outputArrayValue(MStatus* ReturnStatus) { return inputArrayValue(ReturnStatus); }

MStatus MArrayDataHandle::next()
{
    if (fPosition >= fElements.size())
        return MStatus::kFailure;
    ++fPosition;
    return fPosition < fElements.size() ? MStatus::kSuccess : MStatus::kFailure;
}

unsigned int MArrayDataHandle::elementCount(MStatus* ReturnStatus)
{
    TQHOST_SET_STATUS(ReturnStatus, fNode ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return static_cast<unsigned int>(fElements.size());
}

unsigned int MArrayDataHandle::elementIndex(MStatus* ReturnStatus)
{
    if (fPosition >= fElements.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return 0;
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fElements[fPosition];
}

MStatus MArrayDataHandle::jumpToElement(unsigned int index)
{
    auto it = std::find(fElements.begin(), fElements.end(), index);
    if (it == fElements.end())
        return MStatus::kInvalidParameter;
    fPosition = static_cast<unsigned int>(it - fElements.begin());
    return MStatus::kSuccess;
}

MStatus MArrayDataHandle::jumpToArrayElement(unsigned int position)
{
    if (position >= fElements.size())
        return MStatus::kInvalidParameter;
    fPosition = position;
    return MStatus::kSuccess;
}

MStatus MArrayDataHandle::setClean()
{
    if (!fNode)
        return MStatus::kInvalidParameter;
    host::setClean(fNode, PlugKey{fAttr, fIndices});
    return MStatus::kSuccess;
}

MStatus MArrayDataHandle::setAllClean()
{
    if (!fNode)
        return MStatus::kInvalidParameter;
    host::setClean(fNode, PlugKey{fAttr, fIndices});
    for (unsigned int e : fElements) {
        PlugKey k{fAttr, fIndices};
        k.indices.push_back(e);
        host::setClean(fNode, k);
    }
    return MStatus::kSuccess;
}

MArrayDataBuilder MArrayDataHandle::builder(MStatus* ReturnStatus)
{
    TQHOST_SET_STATUS(ReturnStatus, fNode ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return Access::builder(fNode, PlugKey{fAttr, fIndices});
}

MStatus MArrayDataHandle::set(MArrayDataBuilder&)
{
    refresh();
    return fNode ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

// ---- MArrayDataBuilder --------------------------------------------------------------------

MArrayDataBuilder::MArrayDataBuilder() = default;
MArrayDataBuilder::MArrayDataBuilder(const MArrayDataBuilder& other) = default;
MArrayDataBuilder& MArrayDataBuilder::operator=(const MArrayDataBuilder& other) = default;
MArrayDataBuilder::~MArrayDataBuilder() = default;

MDataHandle MArrayDataBuilder::addElement(unsigned int index, MStatus* ReturnStatus)
{
    if (!fNode || !fAttr) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MDataHandle();
    }
    PlugKey key{fAttr, fIndices};
    key.indices.push_back(index);
    host::Storage s = host::storageFor(fNode, key);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return Access::handle(fNode, key, s.value, s.component);
}

MDataHandle MArrayDataBuilder::addLast(MStatus* ReturnStatus)
{
    unsigned int next = 0;
    if (fNode)
        if (const host::PlugSlot* s = fNode->findSlot(PlugKey{fAttr, fIndices}))
            if (!s->elements.empty())
                next = *s->elements.rbegin() + 1;
    return addElement(next, ReturnStatus);
}

MStatus MArrayDataBuilder::removeElement(unsigned int index)
{
    if (!fNode)
        return MStatus::kInvalidParameter;
    host::PlugSlot* arr = fNode->findSlot(PlugKey{fAttr, fIndices});
    PlugKey key{fAttr, fIndices};
    key.indices.push_back(index);
    host::PlugSlot* element = fNode->findSlot(key);
    if (!arr || !element || arr->elements.count(index) == 0)
        return MStatus::kInvalidParameter;
    if (element->hasSource || !element->destinations.empty())
        return MStatus::kFailure; // connected elements stay
    arr->elements.erase(index);
    fNode->slots.erase(key);
    return MStatus::kSuccess;
}

unsigned int MArrayDataBuilder::elementCount(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fNode ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (!fNode)
        return 0;
    const host::PlugSlot* s = fNode->findSlot(PlugKey{fAttr, fIndices});
    return s ? static_cast<unsigned int>(s->elements.size()) : 0u;
}

MStatus MArrayDataBuilder::growArray(unsigned int) { return MStatus::kSuccess; }
MStatus MArrayDataBuilder::setGrowSize(unsigned int) { return MStatus::kSuccess; }
