#pragma once
// NodeType: one registered node type, built in or from a plug-in. It owns the type's
// attribute list in the order of addAttribute (inherited ones first), the name index
// and the attributeAffects net.

#include "dg/attributeBody.h"

#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace host {

struct NodeType {
    std::string name;
    MTypeId id;
    MFn::Type apiType = MFn::kDependencyNode;
    MPxNode::Type pxType = MPxNode::kDependNode;
    std::function<MPxNode*()> creator;
    std::string classification;
    std::string pluginName; // empty for built-in types
    const NodeType* base = nullptr;

    bool isDag = false;
    bool isShape = false;
    bool isTransform = false;

    std::vector<MObject> attributes; // inherited first, then this type's in addAttribute order
    std::unordered_map<std::string, AttributeBody*> byName; // long and short names, children too
    std::unordered_map<const AttributeBody*, std::vector<const AttributeBody*>> affects;

    int liveNodes = 0;

    AttributeBody* findAttribute(const std::string& name) const;
    bool isA(const std::string& typeName) const;
};

// The registry of node types, keyed by name and by id.
class NodeTypeRegistry {
public:
    static NodeTypeRegistry& instance();

    NodeType* find(const std::string& name) const;
    NodeType* find(const MTypeId& id) const;
    // Takes ownership; fails when the name or the id is taken.
    bool add(std::unique_ptr<NodeType> type);
    void remove(const NodeType* type);
    std::vector<NodeType*> all() const;

    // The type whose initialize is running: addAttribute and attributeAffects go to it.
    NodeType* initializing = nullptr;

private:
    std::vector<std::unique_ptr<NodeType>> fTypes;
    std::vector<std::unique_ptr<NodeType>> fRetired;
    std::unordered_map<std::string, NodeType*> fByName;
    std::unordered_map<unsigned int, NodeType*> fById;
};

} // namespace host
