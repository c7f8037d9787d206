// The move command: mesh vertices (through the shape's pnts tweaks) and transforms (through
// their translate), to a position or by an offset, in world or object space.

#include "command/builtinArgs.h"

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/evaluation.h"
#include "dg/plugNames.h"
#include "dg/scene.h"
#include "mesh/meshNode.h"

#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

#include <cmath>

namespace host {
namespace {

// One plug write that undo takes back.
struct Write {
    NodePtr node;
    PlugKey key;
    Value before;
    Value after;
};

Value point3(const MPoint& p) { return Value::numeric(p.x, p.y, p.z); }

MStatus moveVertices(const CommandCall& call, NodeBody* shape, const ComponentBody& component, const MVector& value,
                     bool relative, bool worldSpace, std::vector<Write>& writes)
{
    MStatus st;
    const MeshGeometry* geometry = shapeGeometry(shape, &st);
    if (!geometry)
        return commandError(call, shape->name + " has no mesh to move", st.statusCode());
    std::vector<int> vertices = component.elements;
    if (component.complete)
        for (int v = 0; v < geometry->numVertices(); ++v)
            vertices.push_back(v);
    const MMatrix toWorld = worldMatrix(shape);
    const MMatrix toObject = toWorld.inverse();
    const AttributeBody* pnts = Access::attribute(meshAttributes().pnts);
    // Targets are all computed from the mesh as it is, before any tweak changes it.
    std::vector<Write> mine;
    for (int v : vertices) {
        if (!geometry->validVertex(v))
            return commandError(call, shape->name + ".vtx[" + std::to_string(v) + "] does not exist");
        MPoint current(geometry->point(v));
        MPoint target;
        if (worldSpace)
            target = (relative ? current * toWorld + value : MPoint(value)) * toObject;
        else
            target = relative ? current + value : MPoint(value);
        PlugKey key{pnts, {unsigned(v)}};
        Value before = readValue(shape, key);
        MPoint tweak(before.num[0], before.num[1], before.num[2]);
        mine.push_back(Write{Scene::current().shared(shape), key, before, point3(tweak + (target - current))});
    }
    writes.insert(writes.end(), mine.begin(), mine.end());
    return MStatus::kSuccess;
}

MStatus moveTransform(NodeBody* node, const MVector& value, bool relative, bool worldSpace, std::vector<Write>& writes)
{
    const AttributeBody* translate = node->type->findAttribute("translate");
    PlugKey key{translate, {}};
    Value before = readValue(node, key);
    MVector local(before.num[0], before.num[1], before.num[2]);
    MVector next = value;
    if (worldSpace) {
        // The parent's matrix takes the world position (or offset) into the parent's space.
        MMatrix toParent = node->parent ? worldMatrix(node->parent).inverse() : MMatrix();
        next = relative ? value * toParent : MVector(MPoint(value) * toParent);
    }
    if (relative)
        next += local;
    writes.push_back(Write{Scene::current().shared(node), key, before, Value::numeric(next.x, next.y, next.z)});
    return MStatus::kSuccess;
}

MStatus moveCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"a", "absolute", 0}, {"r", "relative", 0}, {"ws", "worldSpace", 0}, {"os", "objectSpace", 0}}))
        return MStatus::kInvalidParameter;
    if (a.has("absolute") && a.has("relative"))
        return commandError(call, "use -absolute or -relative, not both");
    if (a.has("worldSpace") && a.has("objectSpace"))
        return commandError(call, "use -worldSpace or -objectSpace, not both");
    std::vector<std::string> operands = a.operandTexts();
    double xyz[3];
    if (operands.size() < 3)
        return commandError(call, "needs x, y and z");
    for (int i = 0; i < 3; ++i)
        if (!parseNumber(operands[std::size_t(i)], xyz[i]))
            return commandError(call, "'" + operands[std::size_t(i)] + "' is not a number");
    const MVector value(xyz[0], xyz[1], xyz[2]);
    const bool relative = a.has("relative");
    const bool worldSpace = !a.has("objectSpace");
    std::vector<std::string> items(operands.begin() + 3, operands.end());
    if (items.empty())
        items = selectionNames();
    if (items.empty())
        return commandError(call, "Not enough objects or values.");

    std::vector<Write> writes;
    for (const std::string& item : items) {
        MDagPath path;
        MObject component;
        std::string error;
        if (parseComponent(item, path, component, &error)) {
            auto body = Access::as<ComponentBody>(component);
            NodeBody* shape = Access::node(path.node());
            if (!body || body->apiType() != MFn::kMeshVertComponent || !isMeshShape(shape))
                return commandError(call, "only mesh vertices can be moved: " + item, MStatus::kNotImplemented);
            MStatus st = moveVertices(call, shape, *body, value, relative, worldSpace, writes);
            if (!st)
                return st;
            continue;
        }
        if (!error.empty())
            return commandError(call, error);
        NodeBody* node = findNodeByPath(item);
        if (!node)
            return commandError(call, "No object matches name: " + item);
        if (!node->type->isTransform)
            return commandError(call, "only transforms and mesh vertices can be moved: " + item,
                                MStatus::kNotImplemented);
        moveTransform(node, value, relative, worldSpace, writes);
    }
    for (std::size_t i = 0; i < writes.size(); ++i) {
        MStatus st = writeValue(writes[i].node.get(), writes[i].key, writes[i].after);
        if (!st) {
            // All or nothing: what was written before goes back.
            for (std::size_t k = i; k-- > 0;)
                writeValue(writes[k].node.get(), writes[k].key, writes[k].before);
            return commandError(call, "cannot move " + writes[i].node->name, st.statusCode());
        }
    }
    recordUndo(
        [writes] {
            for (auto it = writes.rbegin(); it != writes.rend(); ++it)
                writeValue(it->node.get(), it->key, it->before);
        },
        [writes] {
            for (const Write& w : writes)
                writeValue(w.node.get(), w.key, w.after);
        });
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar() { registerBuiltinCommand("move", moveCommand); }
} gRegistrar;

} // namespace
} // namespace host
