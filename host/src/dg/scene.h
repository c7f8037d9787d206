#pragma once
// Scene: the one open scene. It owns every node in creation order, the name index (names
// are unique in the scene) and the DAG's world root.

#include "dg/nodeBody.h"

#include <maya/MStatus.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace host {

class Scene {
public:
    static Scene& current();

    // Deletes every node and makes the default nodes of a new scene.
    void reset();

    // Makes a node of the type. A DAG node goes under `parent`, or under the world when
    // null; a shape with no parent gets a new transform first (returned in `madeParent`).
    NodePtr createNode(const NodeType* type, const std::string& requestedName, NodeBody* parent,
                       MStatus* status, NodePtr* madeParent = nullptr);
    // Deletes the node (and its DAG children): connections are broken, the node is dead
    // but its body lives on for handles and undo.
    MStatus deleteNode(NodeBody* node);
    // Brings a node deleted by deleteNode back, with the links recorded in `undo`.
    struct DeletedNode {
        NodePtr node;
        NodeBody* parent = nullptr;
        std::size_t childPosition = 0;
        std::vector<std::pair<PlugRef, PlugRef>> connections; // source, destination
    };
    std::vector<DeletedNode> deleteNodeForUndo(NodeBody* node, MStatus* status);
    void restoreDeleted(const std::vector<DeletedNode>& deleted);

    NodeBody* findByName(const std::string& name) const;
    NodePtr shared(const NodeBody* node) const;
    std::string uniqueName(const std::string& requested, const NodeBody* self = nullptr) const;
    MStatus rename(NodeBody* node, const std::string& requested);
    MStatus reparent(NodeBody* node, NodeBody* newParent);

    const std::vector<NodePtr>& nodes() const { return fNodes; }
    NodeBody* world() const { return fWorld.get(); }

    // Unloading a plug-in: dead nodes of its types give up their implementation now,
    // while its code is still mapped.
    void dropDeadImplementations(const std::string& pluginName);

private:
    Scene();
    void insertName(NodeBody* node);
    void eraseName(NodeBody* node);
    void detachFromDag(NodeBody* node, std::size_t* position);

    std::vector<NodePtr> fNodes;
    std::vector<std::weak_ptr<NodeBody>> fDead; // deleted nodes, while handles or undo hold them
    std::unordered_map<std::string, NodeBody*> fByName;
    NodePtr fWorld;
    std::uint64_t fNextSerial = 1;
};

} // namespace host
