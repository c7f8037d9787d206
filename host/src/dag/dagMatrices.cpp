#include "dag/dagMatrices.h"

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/scene.h"

#include <maya/MEulerRotation.h>
#include <maya/MPxLocatorNode.h>

#include <unordered_map>

namespace host {
namespace {

// Leaves `out` as it is when the node has no such attribute.
void triple(NodeBody* node, const char* name, double out[3])
{
    const AttributeBody* a = node->type->findAttribute(name);
    if (!a)
        return;
    Value v = readValue(node, PlugKey{a, {}});
    for (int i = 0; i < 3; ++i)
        out[i] = v.num[i];
}

std::unordered_map<std::string, BoundsFunction>& boundsTable()
{
    static std::unordered_map<std::string, BoundsFunction> table;
    return table;
}

} // namespace

MMatrix localMatrix(NodeBody* node)
{
    if (!node || !node->type->isTransform)
        return MMatrix();
    double t[3] = {0, 0, 0}, r[3] = {0, 0, 0}, s[3] = {1, 1, 1};
    triple(node, "translate", t);
    triple(node, "rotate", r);
    triple(node, "scale", s);
    int order = 0;
    if (const AttributeBody* ro = node->type->findAttribute("rotateOrder"))
        order = static_cast<int>(readValue(node, PlugKey{ro, {}}).num[0]);
    MMatrix scale;
    scale.matrix[0][0] = s[0];
    scale.matrix[1][1] = s[1];
    scale.matrix[2][2] = s[2];
    MEulerRotation rotation(r[0], r[1], r[2], static_cast<MEulerRotation::RotationOrder>(order));
    MMatrix translate;
    translate.matrix[3][0] = t[0];
    translate.matrix[3][1] = t[1];
    translate.matrix[3][2] = t[2];
    return scale * rotation.asMatrix() * translate;
}

MMatrix worldMatrix(NodeBody* node)
{
    MMatrix m;
    for (NodeBody* n = node; n && n != Scene::current().world(); n = n->parent)
        m = m * localMatrix(n);
    return m;
}

void registerShapeBounds(const std::string& typeName, BoundsFunction bounds)
{
    boundsTable()[typeName] = std::move(bounds);
}

bool shapeBounds(NodeBody* shape, MBoundingBox& box)
{
    if (!shape)
        return false;
    auto it = boundsTable().find(shape->type->name);
    if (it != boundsTable().end())
        return it->second(shape, box);
    if (auto* locator = dynamic_cast<MPxLocatorNode*>(shape->px.get()))
        if (locator->isBounded()) {
            box = locator->boundingBox();
            return true;
        }
    return false;
}

} // namespace host
