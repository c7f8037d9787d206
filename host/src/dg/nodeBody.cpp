#include "dg/nodeBody.h"

#include <maya/MPxNode.h>

namespace host {
namespace {

// The deepest attribute on the way to the root (the attribute itself included) that is an
// array: its element index is the last of a full key's indices.
const AttributeBody* deepestArray(const AttributeBody* attr)
{
    for (const AttributeBody* a = attr; a; a = a->parent)
        if (a->flags.array)
            return a;
    return nullptr;
}

} // namespace

NodeBody::NodeBody(const NodeType* nodeType, std::string nodeName)
    : type(nodeType), name(std::move(nodeName))
{
    uuid.generate();
}

NodeBody::~NodeBody() = default;

PlugSlot& NodeBody::slot(const PlugKey& key)
{
    auto it = slots.find(key);
    if (it != slots.end())
        return it->second;
    slots[key];
    const AttributeBody* arrayAttr = deepestArray(key.attr);
    if (arrayAttr && !key.indices.empty() && int(key.indices.size()) == key.attr->arrayDepth()) {
        PlugKey arrayKey{arrayAttr, std::vector<unsigned int>(key.indices.begin(), key.indices.end() - 1)};
        slot(arrayKey).elements.insert(key.indices.back());
    }
    return slots[key];
}

PlugSlot* NodeBody::findSlot(const PlugKey& key)
{
    auto it = slots.find(key);
    return it == slots.end() ? nullptr : &it->second;
}

const PlugSlot* NodeBody::findSlot(const PlugKey& key) const
{
    auto it = slots.find(key);
    return it == slots.end() ? nullptr : &it->second;
}

} // namespace host
