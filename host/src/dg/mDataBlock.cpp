#include <maya/MDataBlock.h>

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"

#include <maya/MPlug.h>

using host::Access;
using host::PlugKey;

namespace {

// The key of an attribute given alone: the plug outside any array.
bool keyFor(host::NodeBody* node, const MObject& attribute, PlugKey& key)
{
    const host::AttributeBody* a = Access::attribute(attribute);
    if (!node || !a)
        return false;
    if (node->type->findAttribute(a->longName) != a)
        return false;
    int depth = a->arrayDepth();
    if (depth > 1 || (depth == 1 && !a->flags.array))
        return false; // needs indices: reach it through an array handle
    key = PlugKey{a, {}};
    return true;
}

bool keyFor(host::NodeBody* node, const MPlug& plug, PlugKey& key)
{
    if (!node || Access::plugNode(plug) != node)
        return false;
    key = Access::plugKey(plug);
    return key.attr != nullptr;
}

template <class Where>
MDataHandle input(host::NodeBody* node, const Where& where, MStatus* status)
{
    PlugKey key;
    if (!keyFor(node, where, key)) {
        TQHOST_SET_STATUS(status, MStatus::kInvalidParameter);
        return MDataHandle();
    }
    host::Storage s = host::pull(node, key, status);
    TQHOST_SET_STATUS(status, MStatus::kSuccess);
    return Access::handle(node, key, s.value, s.component);
}

template <class Where>
MDataHandle output(host::NodeBody* node, const Where& where, MStatus* status)
{
    PlugKey key;
    if (!keyFor(node, where, key)) {
        TQHOST_SET_STATUS(status, MStatus::kInvalidParameter);
        return MDataHandle();
    }
    TQHOST_SET_STATUS(status, MStatus::kSuccess);
    host::Storage s = host::storageFor(node, key);
    return Access::handle(node, key, s.value, s.component);
}

template <class Where>
MArrayDataHandle arrayHandle(host::NodeBody* node, const Where& where, bool input, MStatus* status)
{
    PlugKey key;
    if (!keyFor(node, where, key) || !key.isArrayPlug()) {
        TQHOST_SET_STATUS(status, MStatus::kInvalidParameter);
        return Access::arrayHandle(nullptr, PlugKey{});
    }
    TQHOST_SET_STATUS(status, MStatus::kSuccess);
    if (input) {
        host::pull(node, key);
        // Connected elements bring their values in now, as an input array read does.
        if (const host::PlugSlot* s = node->findSlot(key)) {
            std::vector<unsigned int> elements(s->elements.begin(), s->elements.end());
            for (unsigned int e : elements) {
                PlugKey ek = key;
                ek.indices.push_back(e);
                host::pull(node, ek);
            }
        }
    }
    return Access::arrayHandle(node, key);
}

} // namespace

MDataBlock::MDataBlock() = default;
MDataBlock::MDataBlock(const MDataBlock& other) = default;
MDataBlock& MDataBlock::operator=(const MDataBlock& other) = default;
MDataBlock::~MDataBlock() = default;

MDataHandle MDataBlock::inputValue(const MPlug& plug, MStatus* ReturnStatus) { return input(fNode, plug, ReturnStatus); }
MDataHandle MDataBlock::inputValue(const MObject& attribute, MStatus* ReturnStatus)
{
    return input(fNode, attribute, ReturnStatus);
}
MDataHandle MDataBlock::outputValue(const MPlug& plug, MStatus* ReturnStatus)
{
    return output(fNode, plug, ReturnStatus);
}
MDataHandle MDataBlock::outputValue(const MObject& attribute, MStatus* ReturnStatus)
{
    return output(fNode, attribute, ReturnStatus);
}
MArrayDataHandle MDataBlock::inputArrayValue(const MPlug& plug, MStatus* ReturnStatus)
{
    return arrayHandle(fNode, plug, true, ReturnStatus);
}
MArrayDataHandle MDataBlock::inputArrayValue(const MObject& attribute, MStatus* ReturnStatus)
{
    return arrayHandle(fNode, attribute, true, ReturnStatus);
}
MArrayDataHandle MDataBlock::outputArrayValue(const MPlug& plug, MStatus* ReturnStatus)
{
    return arrayHandle(fNode, plug, false, ReturnStatus);
}
MArrayDataHandle MDataBlock::outputArrayValue(const MObject& attribute, MStatus* ReturnStatus)
{
    return arrayHandle(fNode, attribute, false, ReturnStatus);
}

MStatus MDataBlock::setClean(const MPlug& plug)
{
    PlugKey key;
    if (!keyFor(fNode, plug, key))
        return MStatus::kInvalidParameter;
    host::setClean(fNode, key);
    return MStatus::kSuccess;
}

MStatus MDataBlock::setClean(const MObject& attribute)
{
    PlugKey key;
    if (!keyFor(fNode, attribute, key))
        return MStatus::kInvalidParameter;
    host::setClean(fNode, key);
    return MStatus::kSuccess;
}

bool MDataBlock::isClean(const MObject& attribute, MStatus* ReturnStatus)
{
    PlugKey key;
    if (!keyFor(fNode, attribute, key)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return false;
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return host::isClean(fNode, key);
}

bool MDataBlock::isClean(const MPlug& plug)
{
    PlugKey key;
    return keyFor(fNode, plug, key) && host::isClean(fNode, key);
}

MDGContext MDataBlock::context(MStatus* ReturnStatus)
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return MDGContext();
}
