#include "draw/dagVisibility.h"

#include "dg/evaluation.h"
#include "dg/scene.h"

namespace host {
namespace {

bool boolPlug(NodeBody* node, const char* name, bool fallback)
{
    const AttributeBody* a = node->type->findAttribute(name);
    if (!a)
        return fallback;
    Value v = readValue(node, PlugKey{a, {}});
    return v.kind == Value::Kind::kNumeric ? v.num[0] != 0.0 : fallback;
}

} // namespace

bool shownInViewport(NodeBody* node)
{
    if (!node || !node->isAlive || !node->type->isDag || node->type->isTransform)
        return false;
    if (boolPlug(node, "intermediateObject", false))
        return false;
    for (NodeBody* n = node; n && n != Scene::current().world(); n = n->parent)
        if (!boolPlug(n, "visibility", true))
            return false;
    return true;
}

} // namespace host
