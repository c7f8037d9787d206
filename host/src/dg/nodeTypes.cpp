#include "dg/nodeTypes.h"

#include "dg/access.h"
#include "dg/barrier.h"
#include "mesh/meshNode.h"
#include "view/cameraNode.h"

#include "host/log.h"

#include <maya/MFnEnumAttribute.h>
#include <maya/MFnMatrixAttribute.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPxConstraint.h>
#include <maya/MPxLocatorNode.h>

#include <cstdio>

namespace host {
namespace {

const NodeType* gDependNode = nullptr;
const NodeType* gDagNode = nullptr;
const NodeType* gShape = nullptr;
const NodeType* gLocator = nullptr;
const NodeType* gTransform = nullptr;
const NodeType* gConstraint = nullptr;

MPxNode* makePlainNode() { return new MPxNode(); }

std::string hexId(const MTypeId& id)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "0x%x", id.id());
    return buf;
}

MObject numeric(const char* longName, const char* shortName, MFnNumericData::Type t, double def,
                bool keyable = false, bool hidden = false)
{
    MFnNumericAttribute fn;
    MObject a = fn.create(longName, shortName, t, def);
    fn.setKeyable(keyable);
    fn.setHidden(hidden);
    return a;
}

MObject triple(const char* longName, const char* shortName, const char* x, const char* y, const char* z,
               const char* sx, const char* sy, const char* sz, double def, bool keyable)
{
    MFnNumericAttribute fn;
    MObject cx = numeric(x, sx, MFnNumericData::kDouble, def, keyable);
    MObject cy = numeric(y, sy, MFnNumericData::kDouble, def, keyable);
    MObject cz = numeric(z, sz, MFnNumericData::kDouble, def, keyable);
    MObject parent = fn.create(longName, shortName, cx, cy, cz);
    fn.setKeyable(keyable);
    return parent;
}

MStatus initDependNode()
{
    MFnMessageAttribute msg;
    MPxNode::message = msg.create("message", "msg");
    msg.setHidden(true);
    msg.setStorable(false);
    MPxNode::caching = numeric("caching", "cch", MFnNumericData::kBoolean, 0, false, true);
    MPxNode::frozen = numeric("frozen", "fzn", MFnNumericData::kBoolean, 0, false, true);
    MPxNode::isHistoricallyInteresting = numeric("isHistoricallyInteresting", "ihi", MFnNumericData::kByte, 2,
                                                 false, true);
    MFnEnumAttribute en;
    MPxNode::state = en.create("nodeState", "st", 0);
    en.addField("Normal", 0);
    en.addField("HasNoEffect", 1);
    en.addField("Blocking", 2);
    en.addField("Waiting-Normal", 8);
    en.addField("Waiting-HasNoEffect", 9);
    en.addField("Waiting-Blocking", 10);
    en.setKeyable(true);
    for (const MObject* a : {&MPxNode::message, &MPxNode::caching, &MPxNode::frozen,
                             &MPxNode::isHistoricallyInteresting, &MPxNode::state})
        MPxNode::addAttribute(*a);
    return MStatus::kSuccess;
}

MStatus initDagNode()
{
    MPxNode::addAttribute(numeric("visibility", "v", MFnNumericData::kBoolean, 1, true));
    MPxNode::addAttribute(numeric("intermediateObject", "io", MFnNumericData::kBoolean, 0));
    MPxNode::addAttribute(numeric("template", "tmp", MFnNumericData::kBoolean, 0));
    MPxNode::addAttribute(numeric("lodVisibility", "lodv", MFnNumericData::kBoolean, 1));
    MFnMatrixAttribute m;
    MObject world = m.create("worldMatrix", "wm");
    m.setArray(true);
    m.setWritable(false);
    m.setStorable(false);
    MPxNode::addAttribute(world);
    return MStatus::kSuccess;
}

MStatus initTransform()
{
    MPxNode::addAttribute(triple("translate", "t", "translateX", "translateY", "translateZ", "tx", "ty", "tz",
                                 0.0, true));
    MPxNode::addAttribute(triple("rotate", "r", "rotateX", "rotateY", "rotateZ", "rx", "ry", "rz", 0.0, true));
    MPxNode::addAttribute(triple("scale", "s", "scaleX", "scaleY", "scaleZ", "sx", "sy", "sz", 1.0, true));
    MFnEnumAttribute en;
    MObject order = en.create("rotateOrder", "ro", 0);
    const char* orders[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    for (short i = 0; i < 6; ++i)
        en.addField(orders[i], i);
    MPxNode::addAttribute(order);
    return MStatus::kSuccess;
}

MStatus initLocator()
{
    MPxLocatorNode::localPosition = triple("localPosition", "lp", "localPositionX", "localPositionY",
                                           "localPositionZ", "lpx", "lpy", "lpz", 0.0, false);
    MPxLocatorNode::localScale = triple("localScale", "los", "localScaleX", "localScaleY", "localScaleZ", "lsx",
                                        "lsy", "lsz", 1.0, false);
    MPxLocatorNode::worldPosition = triple("worldPosition", "wp", "worldPositionX", "worldPositionY",
                                           "worldPositionZ", "wpx", "wpy", "wpz", 0.0, false);
    MFnNumericAttribute fn(MPxLocatorNode::worldPosition);
    fn.setArray(true);
    fn.setWritable(false);
    fn.setStorable(false);
    MPxLocatorNode::underWorldObject = numeric("underWorldObject", "uwo", MFnNumericData::kBoolean, 0, false,
                                               true);
    for (const MObject* a : {&MPxLocatorNode::underWorldObject, &MPxLocatorNode::localPosition,
                             &MPxLocatorNode::worldPosition, &MPxLocatorNode::localScale})
        MPxNode::addAttribute(*a);
    MFnNumericAttribute lp(MPxLocatorNode::localPosition), ls(MPxLocatorNode::localScale);
    MPxLocatorNode::localPositionX = lp.child(0);
    MPxLocatorNode::localPositionY = lp.child(1);
    MPxLocatorNode::localPositionZ = lp.child(2);
    MPxLocatorNode::localScaleX = ls.child(0);
    MPxLocatorNode::localScaleY = ls.child(1);
    MPxLocatorNode::localScaleZ = ls.child(2);
    MFnNumericAttribute wp(MPxLocatorNode::worldPosition);
    MPxLocatorNode::worldPositionX = wp.child(0);
    MPxLocatorNode::worldPositionY = wp.child(1);
    MPxLocatorNode::worldPositionZ = wp.child(2);
    return MStatus::kSuccess;
}

MStatus initObjectSet()
{
    MFnMessageAttribute msg;
    MObject members = msg.create("dagSetMembers", "dsm");
    msg.setArray(true);
    MPxNode::addAttribute(members);
    return MStatus::kSuccess;
}

MStatus initConstraint()
{
    MPxConstraint::enableRestPosition = numeric("enableRestPosition", "erp", MFnNumericData::kBoolean, 0, true,
                                                true);
    MPxConstraint::lockOutput = numeric("lockOutput", "lo", MFnNumericData::kBoolean, 0, true, true);
    MPxNode::addAttribute(MPxConstraint::enableRestPosition);
    MPxNode::addAttribute(MPxConstraint::lockOutput);
    return MStatus::kSuccess;
}

const NodeType* builtin(const std::string& name, MFn::Type api, const NodeType* base,
                        std::function<MStatus()> init, bool dag, bool shape, bool transform)
{
    return registerBuiltinType(name, api, base, std::move(init), makePlainNode, dag, shape, transform);
}

} // namespace

const NodeType* registerBuiltinType(const std::string& name, MFn::Type api, const NodeType* base,
                                    std::function<MStatus()> init, std::function<MPxNode*()> creator, bool dag,
                                    bool shape, bool transform)
{
    NodeType* made = nullptr;
    registerNodeType(name, MTypeId(0), std::move(creator), std::move(init), MPxNode::kDependNode, api, base, "",
                     "", &made);
    if (made) {
        made->isDag = dag;
        made->isShape = shape;
        made->isTransform = transform;
    }
    return made;
}

void ensureBuiltinTypes()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    gDependNode = builtin("dependNode", MFn::kDependencyNode, nullptr, initDependNode, false, false, false);
    gDagNode = builtin("dagNode", MFn::kDagNode, gDependNode, initDagNode, true, false, false);
    gTransform = builtin("transform", MFn::kTransform, gDagNode, initTransform, true, false, true);
    gShape = builtin("shape", MFn::kShape, gDagNode, {}, true, true, false);
    gLocator = builtin("locator", MFn::kLocator, gShape, initLocator, true, true, false);
    gConstraint = builtin("constraint", MFn::kConstraint, gTransform, initConstraint, true, false, true);
    builtin("objectSet", MFn::kSet, gDependNode, initObjectSet, false, false, false);
    builtin("world", MFn::kWorld, gDagNode, {}, true, false, false);
    registerMeshTypes(gShape, gDependNode);
    ensureCameraType();
}

const NodeType* baseTypeFor(MPxNode::Type kind)
{
    ensureBuiltinTypes();
    switch (kind) {
    case MPxNode::kLocatorNode: return gLocator;
    case MPxNode::kSurfaceShape: return gShape;
    case MPxNode::kTransformNode: return gTransform;
    case MPxNode::kConstraintNode: return gConstraint;
    default: return gDependNode;
    }
}

MFn::Type apiTypeFor(MPxNode::Type kind)
{
    switch (kind) {
    case MPxNode::kLocatorNode: return MFn::kPluginLocatorNode;
    case MPxNode::kDeformerNode: return MFn::kPluginDeformerNode;
    case MPxNode::kSurfaceShape: return MFn::kPluginShape;
    case MPxNode::kTransformNode: return MFn::kPluginTransformNode;
    case MPxNode::kConstraintNode: return MFn::kPluginConstraintNode;
    case MPxNode::kManipContainer: return MFn::kPluginManipContainer;
    case MPxNode::kEmitterNode: return MFn::kPluginEmitterNode;
    case MPxNode::kFieldNode: return MFn::kPluginFieldNode;
    case MPxNode::kObjectSet: return MFn::kPluginObjectSet;
    case MPxNode::kHwShaderNode: return MFn::kPluginHwShaderNode;
    default: return MFn::kPluginDependNode;
    }
}

MStatus registerNodeType(const std::string& name, const MTypeId& id, std::function<MPxNode*()> creator,
                         std::function<MStatus()> initialize, MPxNode::Type kind, MFn::Type apiType,
                         const NodeType* base, const std::string& classification, const std::string& pluginName,
                         NodeType** made)
{
    NodeTypeRegistry& registry = NodeTypeRegistry::instance();
    if (registry.find(name)) {
        writeLog(LogLevel::kError, "Failed to register node type '" + name + "': the name is already in use");
        return MStatus::kFailure;
    }
    if (id.id() != 0 && registry.find(id)) {
        writeLog(LogLevel::kError, "Failed to register node type '" + name + "': the type id " + hexId(id) +
                                       " is already used by '" + registry.find(id)->name + "'");
        return MStatus::kFailure;
    }
    auto type = std::make_unique<NodeType>();
    type->name = name;
    type->id = id;
    type->apiType = apiType;
    type->pxType = kind;
    type->creator = std::move(creator);
    type->classification = classification;
    type->pluginName = pluginName;
    type->base = base;
    if (base) {
        type->attributes = base->attributes;
        type->byName = base->byName;
        type->affects = base->affects;
        type->isDag = base->isDag;
        type->isShape = base->isShape;
        type->isTransform = base->isTransform;
    }
    if (initialize) {
        NodeType* previous = registry.initializing;
        registry.initializing = type.get();
        MStatus st = guardedStatus(name + " initialize", initialize);
        registry.initializing = previous;
        if (!st) {
            writeLog(LogLevel::kError, "Failed to register node type '" + name + "': its initialize failed");
            return st;
        }
    }
    NodeType* raw = type.get();
    registry.add(std::move(type));
    if (made)
        *made = raw;
    return MStatus::kSuccess;
}

namespace {

void indexNames(NodeType* type, AttributeBody* attr)
{
    type->byName.emplace(attr->longName, attr);
    if (!attr->shortName.empty())
        type->byName.emplace(attr->shortName, attr);
    for (auto& child : attr->children)
        indexNames(type, child.get());
}

} // namespace

MStatus addAttributeToType(NodeType* type, const MObject& attribute)
{
    AttributeBody* attr = Access::attribute(attribute);
    if (!type || !attr)
        return MStatus::kInvalidParameter;
    if (attr->parent) // children come with their compound
        return MStatus::kInvalidParameter;
    for (const MObject& existing : type->attributes)
        if (Access::attribute(existing) == attr)
            return MStatus::kFailure;
    if (type->findAttribute(attr->longName) || (!attr->shortName.empty() && type->findAttribute(attr->shortName))) {
        writeLog(LogLevel::kError, "Node type '" + type->name + "' already has an attribute named '" +
                                       attr->longName + "'");
        return MStatus::kFailure;
    }
    if (!attr->owner)
        attr->owner = type;
    type->attributes.push_back(attribute);
    indexNames(type, attr);
    return MStatus::kSuccess;
}

} // namespace host
