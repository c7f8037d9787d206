#include "mesh/meshHistory.h"

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/scene.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include "host/log.h"

#include <algorithm>
#include <deque>
#include <unordered_set>
#include <vector>

namespace host {
namespace {

PlugKey inMeshKey() { return PlugKey{Access::attribute(meshAttributes().inMesh), {}}; }

// History is made of dependency nodes and hidden shapes; a visible DAG node upstream is an
// object of its own and ends the walk.
bool canBeHistory(NodeBody* n)
{
    return n && n->isAlive && n != Scene::current().world() &&
           (!n->type->isDag || isIntermediateShape(n));
}

// The nodes upstream of the shape's inMesh that feed nothing but the shape and each other,
// nearest first.
std::vector<NodeBody*> historyOnlyFeeding(NodeBody* shape, NodeBody* first)
{
    std::vector<NodeBody*> order;
    std::unordered_set<NodeBody*> found;
    std::deque<NodeBody*> queue{first};
    while (!queue.empty()) {
        NodeBody* n = queue.front();
        queue.pop_front();
        if (n == shape || found.count(n) || !canBeHistory(n))
            continue;
        found.insert(n);
        order.push_back(n);
        for (const auto& c : connectionsOf(n))
            if (c.second.node == n && c.first.node)
                queue.push_back(c.first.node);
    }
    // A node feeding anything outside the set is kept, which may free its own inputs: repeat.
    for (bool changed = true; changed;) {
        changed = false;
        for (NodeBody* n : order) {
            if (!found.count(n))
                continue;
            for (const auto& c : connectionsOf(n)) {
                NodeBody* to = c.second.node;
                if (c.first.node == n && to != shape && to != n && !found.count(to)) {
                    found.erase(n);
                    changed = true;
                    break;
                }
            }
        }
    }
    order.erase(std::remove_if(order.begin(), order.end(), [&](NodeBody* n) { return !found.count(n); }),
                order.end());
    return order;
}

} // namespace

MObject shapeOwnGeometry(NodeBody* shape, MStatus* status)
{
    MObject output = shapeOutput(shape, status);
    if (output.isNull())
        return MObject();
    MObject own = shareData(output);
    const auto tweaks = shapeTweaks(shape);
    if (!tweaks.empty()) {
        MeshGeometry& g = *editMeshOf(own);
        float* p = g.editPoints();
        const int n = g.numVertices();
        for (const auto& t : tweaks) {
            if (t.first >= n)
                break;
            p[3 * t.first] -= t.second.x;
            p[3 * t.first + 1] -= t.second.y;
            p[3 * t.first + 2] -= t.second.z;
        }
    }
    return own;
}

void copyShapeGeometry(NodeBody* source, NodeBody* copy)
{
    if (!isMeshShape(source) || !isMeshShape(copy))
        return;
    MObject own = shapeOwnGeometry(source);
    if (!own.isNull())
        setShapeGeometry(copy, own);
}

bool isIntermediateShape(NodeBody* n)
{
    if (!n->type->isShape)
        return false;
    const AttributeBody* a = n->type->findAttribute("intermediateObject");
    return a && readValue(n, PlugKey{a, {}}).num[0] != 0.0;
}

std::vector<NodeBody*> historyFeedingOnly(NodeBody* shape)
{
    if (!isMeshShape(shape) || !hasHistory(shape))
        return {};
    const PlugSlot* in = shape->findSlot(inMeshKey());
    return in && in->source.node ? historyOnlyFeeding(shape, in->source.node) : std::vector<NodeBody*>();
}

MStatus deleteConstructionHistory(NodeBody* shape)
{
    if (!isMeshShape(shape))
        return MStatus::kInvalidParameter;
    if (!hasHistory(shape)) {
        bakeShapeEdits(shape);
        writeLog(LogLevel::kInfo, "Construction history of " + shape->name + ": none to delete");
        return MStatus::kSuccess;
    }
    MStatus st;
    MObject own = shapeOwnGeometry(shape, &st);
    if (own.isNull())
        return st ? MStatus(MStatus::kFailure) : st;

    const PlugSlot* in = shape->findSlot(inMeshKey());
    const PlugRef source = in->source;
    const std::vector<NodeBody*> history = historyOnlyFeeding(shape, source.node);

    st = disconnectPlugs(source, PlugRef{shape, inMeshKey()});
    if (!st)
        return st;
    st = setShapeGeometry(shape, own);
    if (!st)
        return st;

    std::string deleted;
    Scene& scene = Scene::current();
    for (NodeBody* n : history) {
        if (!n->isAlive)
            continue;
        NodeBody* parent = n->parent;
        deleted += (deleted.empty() ? "" : ", ") + n->name;
        scene.deleteNode(n);
        // A transform that only held an intermediate shape goes with it.
        if (parent && parent != scene.world() && parent->isAlive && parent->type->isTransform &&
            parent->children.empty()) {
            deleted += ", " + parent->name;
            scene.deleteNode(parent);
        }
    }
    writeLog(LogLevel::kInfo, "Deleted the construction history of " + shape->name +
                                  (deleted.empty() ? std::string(" (its input is kept: it feeds other objects)")
                                                   : ": " + deleted));
    return MStatus::kSuccess;
}

} // namespace host
