#pragma once
// NodeBody: one node of the scene. It owns the node's implementation (a plug-in's MPxNode
// or a built-in one), its plug values, dirty flags and connections, and its DAG links.

#include "dg/nodeType.h"
#include "dg/plugKey.h"

#include <maya/MUuid.h>

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

class MPxNode;

namespace host {

class NodeBody;

struct PlugRef {
    NodeBody* node = nullptr;
    PlugKey key;
    bool operator==(const PlugRef& o) const { return node == o.node && key == o.key; }
};

struct PlugSlot {
    Value value;
    bool hasValue = false;
    bool dirty = false;
    bool hasSource = false;
    PlugRef source;
    std::vector<PlugRef> destinations;
    std::set<unsigned int> elements; // array plugs: the logical indices that exist
};

class NodeBody : public ObjectBody, public std::enable_shared_from_this<NodeBody> {
public:
    NodeBody(const NodeType* type, std::string name);
    ~NodeBody() override;

    MFn::Type apiType() const override { return type->apiType; }
    bool alive() const override { return isAlive; }

    // The slot of a plug, made on first use (array parents learn of the new element).
    PlugSlot& slot(const PlugKey& key);
    PlugSlot* findSlot(const PlugKey& key);
    const PlugSlot* findSlot(const PlugKey& key) const;

    const NodeType* type;
    std::string name;
    MUuid uuid;
    bool isAlive = true;
    std::uint64_t serial = 0; // creation order
    std::unique_ptr<MPxNode> px;

    std::unordered_map<PlugKey, PlugSlot, PlugKeyHash> slots;
    // Plugs dirtied since the last drawn frame, for preEvaluation.
    std::vector<PlugKey> pendingDirty;

    // DAG links. The scene owns the nodes; these are plain references.
    NodeBody* parent = nullptr;
    std::vector<NodeBody*> children;

    // Plug-in nodes whose compute is running, to stop re-entry on the same plug.
    std::vector<PlugKey> computing;
};

using NodePtr = std::shared_ptr<NodeBody>;

} // namespace host
