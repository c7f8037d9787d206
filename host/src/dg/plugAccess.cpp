#include "dg/access.h"

#include "dg/evaluation.h"
#include "dg/scene.h"

namespace host {

MPlug Access::plug(NodeBody* node, const PlugKey& key)
{
    MPlug p;
    if (!node || !key.attr)
        return p;
    p.fNode = object(node->shared_from_this());
    p.fAttr = object(std::const_pointer_cast<AttributeBody>(key.attr->shared_from_this()));
    p.fIndices = key.indices;
    return p;
}

PlugKey Access::plugKey(const MPlug& plug) { return PlugKey{attribute(plug.fAttr), plug.fIndices}; }

MDagPath Access::pathTo(NodeBody* node)
{
    MDagPath path;
    std::vector<MObject> chain;
    for (NodeBody* n = node; n && n != Scene::current().world(); n = n->parent)
        chain.push_back(object(n->shared_from_this()));
    path.fNodes.assign(chain.rbegin(), chain.rend());
    return path;
}

MEvaluationNode Access::evaluationNode(NodeBody* node, const std::vector<PlugKey>& dirty)
{
    MEvaluationNode e;
    e.fNode = object(node->shared_from_this());
    for (const PlugKey& k : dirty)
        e.fDirty.push_back(plug(node, k));
    return e;
}

} // namespace host
