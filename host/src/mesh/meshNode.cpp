#include "mesh/meshNode.h"

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/nodeTypes.h"
#include "mesh/meshData.h"
#include "mesh/polyTopologyNodes.h"

#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MPxNode.h>

#include <cmath>

namespace host {
namespace {

MeshAttributes gMesh;
PolyTweakAttributes gTweak;
const NodeType* gMeshType = nullptr;

using Tweaks = std::vector<std::pair<int, MFloatVector>>;

// The float3 elements of an array plug, in index order.
Tweaks readOffsets(NodeBody* node, const MObject& arrayAttr)
{
    Tweaks out;
    const AttributeBody* attr = Access::attribute(arrayAttr);
    const PlugSlot* array = node->findSlot(PlugKey{attr, {}});
    if (!array)
        return out;
    const std::set<unsigned int> elements = array->elements; // a pull may add slots
    for (unsigned int i : elements) {
        Storage s = pull(node, PlugKey{attr, {i}});
        if (!s.value || s.value->kind != Value::Kind::kNumeric)
            continue;
        const MFloatVector d(float(s.value->num[0]), float(s.value->num[1]), float(s.value->num[2]));
        if (d.x != 0.0f || d.y != 0.0f || d.z != 0.0f)
            out.emplace_back(static_cast<int>(i), d);
    }
    return out;
}

// Adds (sign 1) or removes (sign -1) offsets; offsets past the last vertex do nothing.
void applyOffsets(MeshGeometry& g, const Tweaks& offsets, float sign)
{
    if (offsets.empty())
        return;
    float* p = g.editPoints();
    const int n = g.numVertices();
    for (const auto& t : offsets) {
        if (t.first >= n)
            break;
        p[3 * t.first] += sign * t.second.x;
        p[3 * t.first + 1] += sign * t.second.y;
        p[3 * t.first + 2] += sign * t.second.z;
    }
}

// A share of a mesh data object, or a new empty mesh when the value holds none.
MObject meshShareOf(const Value* value)
{
    if (value && value->kind == Value::Kind::kData && meshOf(value->data))
        return shareData(value->data);
    return makeMeshData();
}

PlugKey keyOf(const MObject& attr) { return PlugKey{Access::attribute(attr), {}}; }

class MeshShapeNode : public MPxNode {
public:
    MStatus compute(const MPlug& plug, MDataBlock& block) override
    {
        NodeBody* node = Access::nodeOf(this);
        const MObject attr = plug.attribute();
        if (attr == gMesh.outMesh) {
            const bool history = hasHistory(node);
            if (!history)
                bakeShapeEdits(node);
            const MObject& source = history ? gMesh.inMesh : gMesh.cachedInMesh;
            Storage in = pull(node, keyOf(source));
            MObject out = meshShareOf(in.value);
            Tweaks tweaks = readOffsets(node, gMesh.pnts);
            if (!tweaks.empty())
                applyOffsets(*editMeshOf(out), tweaks, 1.0f);
            MDataHandle h = block.outputValue(gMesh.outMesh);
            h.set(out);
            block.setClean(plug);
            applied = std::move(tweaks);
            editsPending = false;
            return MStatus::kSuccess;
        }
        if (attr == gMesh.worldMesh) {
            // Recomputed at every read (never set clean): a parent transform moving does
            // not reach the shape's plugs, so a cached world copy could go stale.
            Storage local = pull(node, keyOf(gMesh.outMesh));
            MObject world = meshShareOf(local.value);
            const MMatrix m = worldMatrix(node);
            if (!m.isEquivalent(MMatrix::identity, 0.0)) {
                MeshGeometry& g = *editMeshOf(world);
                float* p = g.editPoints();
                for (int v = 0; v < g.numVertices(); ++v) {
                    const MPoint q = MPoint(p[3 * v], p[3 * v + 1], p[3 * v + 2]) * m;
                    p[3 * v] = float(q.x);
                    p[3 * v + 1] = float(q.y);
                    p[3 * v + 2] = float(q.z);
                }
            }
            PlugSlot& element = node->slot(PlugKey{Access::attribute(gMesh.worldMesh), {0}});
            element.value = Value::ofData(world);
            element.hasValue = true;
            return MStatus::kSuccess;
        }
        return MStatus::kUnknownParameter;
    }

    bool editsPending = false; // the output holds edits the own geometry lacks
    Tweaks applied;            // the tweaks the current output includes
};

class PolyTweakNode : public MPxNode {
public:
    MStatus compute(const MPlug& plug, MDataBlock& block) override
    {
        if (plug.attribute() != gTweak.output)
            return MStatus::kUnknownParameter;
        NodeBody* node = Access::nodeOf(this);
        Storage in = pull(node, keyOf(gTweak.inputPolymesh));
        MObject out = meshShareOf(in.value);
        Tweaks tweaks = readOffsets(node, gTweak.tweak);
        if (!tweaks.empty())
            applyOffsets(*editMeshOf(out), tweaks, 1.0f);
        MDataHandle h = block.outputValue(gTweak.output);
        h.set(out);
        block.setClean(plug);
        return MStatus::kSuccess;
    }
};

MObject meshAttribute(const char* longName, const char* shortName, bool input, bool storable)
{
    MFnTypedAttribute fn;
    MObject a = fn.create(longName, shortName, MFnData::kMesh);
    fn.setWritable(input);
    fn.setStorable(storable);
    fn.setHidden(true);
    return a;
}

// An array of float3 offsets with x, y, z children.
MObject offsetArray(const char* longName, const char* shortName, const char* const names[6], MObject* children)
{
    MFnNumericAttribute fn;
    for (int i = 0; i < 3; ++i) {
        children[i] = fn.create(names[2 * i], names[2 * i + 1], MFnNumericData::kFloat, 0.0);
        fn.setKeyable(true);
    }
    MObject parent = fn.create(longName, shortName, children[0], children[1], children[2]);
    fn.setArray(true);
    fn.setKeyable(true);
    fn.setUsesArrayDataBuilder(true);
    return parent;
}

MStatus initMesh()
{
    gMesh.inMesh = meshAttribute("inMesh", "i", true, false);
    gMesh.outMesh = meshAttribute("outMesh", "o", false, false);
    gMesh.cachedInMesh = meshAttribute("cachedInMesh", "ci", true, true);
    gMesh.worldMesh = meshAttribute("worldMesh", "w", false, false);
    MFnTypedAttribute world(gMesh.worldMesh);
    world.setArray(true);
    world.setUsesArrayDataBuilder(true);
    const char* const names[6] = {"pntx", "px", "pnty", "py", "pntz", "pz"};
    MObject children[3];
    gMesh.pnts = offsetArray("pnts", "pt", names, children);
    gMesh.pntx = children[0];
    gMesh.pnty = children[1];
    gMesh.pntz = children[2];
    for (const MObject* a : {&gMesh.inMesh, &gMesh.outMesh, &gMesh.cachedInMesh, &gMesh.worldMesh, &gMesh.pnts})
        MPxNode::addAttribute(*a);
    for (const MObject* in : {&gMesh.inMesh, &gMesh.cachedInMesh, &gMesh.pnts}) {
        MPxNode::attributeAffects(*in, gMesh.outMesh);
        MPxNode::attributeAffects(*in, gMesh.worldMesh);
    }
    return MStatus::kSuccess;
}

MStatus initPolyTweak()
{
    gTweak.inputPolymesh = meshAttribute("inputPolymesh", "ip", true, false);
    gTweak.output = meshAttribute("output", "out", false, false);
    const char* const names[6] = {"tweakX", "tx", "tweakY", "ty", "tweakZ", "tz"};
    MObject children[3];
    gTweak.tweak = offsetArray("tweak", "tk", names, children);
    gTweak.tweakX = children[0];
    gTweak.tweakY = children[1];
    gTweak.tweakZ = children[2];
    MPxNode::addAttribute(gTweak.inputPolymesh);
    MPxNode::addAttribute(gTweak.output);
    MPxNode::addAttribute(gTweak.tweak);
    MPxNode::attributeAffects(gTweak.inputPolymesh, gTweak.output);
    MPxNode::attributeAffects(gTweak.tweak, gTweak.output);
    return MStatus::kSuccess;
}

MeshShapeNode* implOf(NodeBody* shape) { return dynamic_cast<MeshShapeNode*>(shape->px.get()); }

} // namespace

void registerMeshTypes(const NodeType* shapeBase, const NodeType* dependBase)
{
    const NodeType* surface = registerBuiltinType("surfaceShape", MFn::kSurface, shapeBase, {}, [] {
        return new MPxNode();
    }, true, true, false);
    gMeshType = registerBuiltinType("mesh", MFn::kMesh, surface, initMesh, [] { return new MeshShapeNode(); }, true,
                                    true, false);
    registerBuiltinType("polyTweak", MFn::kPolyTweak, dependBase, initPolyTweak, [] { return new PolyTweakNode(); },
                        false, false, false);
    registerTopologyNodeTypes(dependBase);
    registerShapeBounds("mesh", [](NodeBody* shape, MBoundingBox& box) {
        const MeshGeometry* g = shapeGeometry(shape);
        if (!g || g->numVertices() == 0)
            return false;
        const float* p = g->rawPoints();
        MPoint lo(p[0], p[1], p[2]), hi = lo;
        for (int v = 1; v < g->numVertices(); ++v)
            for (int k = 0; k < 3; ++k) {
                lo[k] = std::min(lo[k], double(p[3 * v + k]));
                hi[k] = std::max(hi[k], double(p[3 * v + k]));
            }
        box = MBoundingBox(lo, hi);
        return true;
    });
}

const MeshAttributes& meshAttributes() { return gMesh; }
const PolyTweakAttributes& polyTweakAttributes() { return gTweak; }

bool isMeshShape(const NodeBody* node) { return node && node->isAlive && gMeshType && node->type->isA("mesh"); }

bool hasHistory(NodeBody* shape)
{
    const PlugSlot* s = shape->findSlot(keyOf(gMesh.inMesh));
    return s && s->hasSource && s->source.node && s->source.node->isAlive;
}

MObject shapeOutput(NodeBody* shape, MStatus* status)
{
    if (!isMeshShape(shape)) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return MObject();
    }
    MStatus st;
    Storage s = pull(shape, keyOf(gMesh.outMesh), &st);
    if (!s.value || s.value->kind != Value::Kind::kData || !meshOf(s.value->data)) {
        // An output that never computed (or was set to something else) reads as empty.
        PlugSlot& slot = shape->slot(keyOf(gMesh.outMesh));
        slot.value = Value::ofData(makeMeshData());
        slot.hasValue = true;
        s = Storage{&slot.value, -1};
    }
    if (status)
        *status = MStatus::kSuccess;
    return s.value->data;
}

const MeshGeometry* shapeGeometry(NodeBody* shape, MStatus* status)
{
    MObject data = shapeOutput(shape, status);
    return data.isNull() ? nullptr : meshOf(data);
}

MeshGeometry* beginShapeEdit(NodeBody* shape, MStatus* status)
{
    MObject data = shapeOutput(shape, status);
    return data.isNull() ? nullptr : editMeshOf(data);
}

void endShapeEdit(NodeBody* shape)
{
    if (!isMeshShape(shape))
        return;
    valueChangedInPlace(shape, keyOf(gMesh.outMesh));
    if (MeshShapeNode* impl = implOf(shape))
        impl->editsPending = impl->editsPending || !hasHistory(shape);
}

MStatus setShapeGeometry(NodeBody* shape, const MObject& meshData)
{
    if (!isMeshShape(shape) || !meshOf(meshData))
        return MStatus::kInvalidParameter;
    if (MeshShapeNode* impl = implOf(shape))
        impl->editsPending = false;
    return writeValue(shape, keyOf(gMesh.cachedInMesh), Value::ofData(meshData));
}

void bakeShapeEdits(NodeBody* shape)
{
    MeshShapeNode* impl = isMeshShape(shape) ? implOf(shape) : nullptr;
    if (!impl || !impl->editsPending)
        return;
    impl->editsPending = false;
    PlugSlot* out = shape->findSlot(keyOf(gMesh.outMesh));
    if (!out || out->value.kind != Value::Kind::kData || !meshOf(out->value.data))
        return;
    MObject own = shareData(out->value.data);
    applyOffsets(*editMeshOf(own), impl->applied, -1.0f);
    // Straight into the slot: the output already shows this geometry, so nothing downstream
    // needs to hear of it.
    PlugSlot& cached = shape->slot(keyOf(gMesh.cachedInMesh));
    cached.value = Value::ofData(own);
    cached.hasValue = true;
    cached.dirty = false;
}

std::vector<std::pair<int, MFloatVector>> shapeTweaks(NodeBody* shape)
{
    return isMeshShape(shape) ? readOffsets(shape, gMesh.pnts) : Tweaks{};
}

} // namespace host
