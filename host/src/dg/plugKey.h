#pragma once
// PlugKey: which plug of a node: the attribute and the logical indices of the array levels
// on its path (outermost first). An array attribute with one index fewer than its depth
// names the array plug itself.

#include "dg/attributeBody.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace host {

struct PlugKey {
    const AttributeBody* attr = nullptr;
    std::vector<unsigned int> indices;

    bool operator==(const PlugKey& o) const { return attr == o.attr && indices == o.indices; }
    bool operator!=(const PlugKey& o) const { return !(*this == o); }

    bool isArrayPlug() const
    {
        return attr && attr->flags.array && int(indices.size()) == attr->arrayDepth() - 1;
    }
    bool isElement() const
    {
        return attr && attr->flags.array && int(indices.size()) == attr->arrayDepth();
    }
};

struct PlugKeyHash {
    std::size_t operator()(const PlugKey& k) const
    {
        std::size_t h = std::hash<const void*>()(k.attr);
        for (unsigned int i : k.indices)
            h = h * 1000003u ^ std::hash<unsigned int>()(i);
        return h;
    }
};

} // namespace host
