// The topology commands: polySplitRing, polyBridgeEdge and polyMergeVertex. Each checks its
// operands and runs its operation on the mesh as it is shown before changing anything, so a
// refused command leaves the scene as it was. With history (the mesh has some, or
// construction history is on) it puts the operation's node into the mesh's history:
//
//     before:  source ──► shape.inMesh          (or no source: the shape's own geometry)
//     after:   source ──► [polyTweak] ──► node ──► shape.inMesh
//
// where a shape without history first gets an intermediate copy of its own geometry
// (<shape>Orig) as the source, and its pnts tweaks move into the polyTweak node, since the
// operation renumbers what they are indexed by. Without history it replaces the shape's
// geometry. Undo takes everything back; -q and -e read and change an existing node's flags.

#include "command/builtinArgs.h"

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/evaluation.h"
#include "dg/plugNames.h"
#include "dg/scene.h"
#include "mesh/meshData.h"
#include "mesh/meshHistory.h"
#include "mesh/meshNode.h"
#include "mesh/polyTopologyNodes.h"

#include <maya/MDagModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <cmath>
#include <limits>
#include <memory>

namespace host {
namespace {

bool readFlagValue(const TopologyFlag& flag, const std::string& text, double& value)
{
    if (flag.kind == TopologyFlag::Kind::kBool) {
        bool b = false;
        if (!parseBool(text, b))
            return false;
        value = b ? 1.0 : 0.0;
        return true;
    }
    if (!parseNumber(text, value) || !std::isfinite(value))
        return false;
    if (flag.kind == TopologyFlag::Kind::kDouble)
        return true;
    return value == std::floor(value) && std::fabs(value) <= double(std::numeric_limits<int>::max());
}

const char* kindName(MFn::Type kind) { return kind == MFn::kMeshVertComponent ? "vertex" : "edge"; }

// The operands' components: all of one mesh and of the operation's kind.
MStatus gatherComponents(const CommandCall& call, const TopologyOperation& op, std::vector<std::string> items,
                         NodeBody*& shape, std::vector<int>& elements)
{
    if (items.empty())
        items = selectionNames();
    if (items.empty())
        return commandError(call, std::string("no ") + kindName(op.componentKind) + " components given or selected");
    shape = nullptr;
    for (const std::string& item : items) {
        MDagPath path;
        MObject component;
        std::string error;
        if (!parseComponent(item, path, component, &error))
            return commandError(call, error.empty() ? "'" + item + "' is not a component" : error);
        auto body = Access::as<ComponentBody>(component);
        NodeBody* owner = Access::node(path.node());
        if (!body || body->apiType() != op.componentKind || !isMeshShape(owner))
            return commandError(call, "'" + item + "' is not a mesh " + kindName(op.componentKind) + " component");
        if (shape && owner != shape)
            return commandError(call, "the components belong to different meshes (" + shape->name + " and " +
                                          owner->name + ")");
        shape = owner;
        const MeshGeometry* g = shapeGeometry(shape);
        const int count = !g ? 0 : op.componentKind == MFn::kMeshVertComponent ? g->numVertices() : g->numEdges();
        if (body->complete)
            for (int i = 0; i < count; ++i)
                elements.push_back(i);
        for (int e : body->elements) {
            if (e >= count)
                return commandError(call, shape->name + "." + op.componentPrefix + "[" + std::to_string(e) +
                                              "] does not exist");
            elements.push_back(e);
        }
    }
    return MStatus::kSuccess;
}

MPlug plugOf(const MObject& node, const char* name) { return MFnDependencyNode(node).findPlug(name, true); }

// Puts a new node of the operation into the shape's history (see the top of the file).
MStatus insertNode(const CommandCall& call, const TopologyOperation& op, NodeBody* shape,
                   const std::vector<int>& elements, const TopologyValues& values, std::string& nodeName)
{
    auto mod = std::make_shared<MDagModifier>();
    MObject shapeObject = Access::object(Scene::current().shared(shape));
    MPlug inMesh = plugOf(shapeObject, "inMesh");
    MPlug source;
    if (hasHistory(shape)) {
        MPlugArray from;
        inMesh.connectedTo(from, true, false);
        source = from[0];
        mod->disconnect(source, inMesh);
    } else {
        MObject own = shapeOwnGeometry(shape);
        MObject orig = mod->createNode("mesh", MFnDagNode(shapeObject).parent(0));
        mod->renameNode(orig, MString((shape->name + "Orig").c_str()));
        mod->newPlugValue(plugOf(orig, "cachedInMesh"), own);
        mod->newPlugValueBool(plugOf(orig, "intermediateObject"), true);
        source = plugOf(orig, "outMesh");
    }
    const auto tweaks = shapeTweaks(shape);
    if (!tweaks.empty()) {
        MObject tweak = mod->createNode("polyTweak");
        MPlug tweakArray = plugOf(tweak, "tweak"), pnts = plugOf(shapeObject, "pnts");
        for (const auto& t : tweaks) {
            MPlug to = tweakArray.elementByLogicalIndex(unsigned(t.first));
            MPlug from = pnts.elementByLogicalIndex(unsigned(t.first));
            const float offset[3] = {t.second.x, t.second.y, t.second.z};
            for (unsigned k = 0; k < 3; ++k) {
                mod->newPlugValueFloat(to.child(k), offset[k]);
                mod->newPlugValueFloat(from.child(k), 0.0f);
            }
        }
        mod->connect(source, plugOf(tweak, "inputPolymesh"));
        source = plugOf(tweak, "output");
    }
    MObject node = mod->createNode(MString(op.nodeType.c_str()));
    if (node.isNull()) {
        mod->undoIt();
        return commandError(call, "could not make a " + op.nodeType + " node", MStatus::kFailure);
    }
    for (const TopologyFlag& flag : op.flags) {
        MPlug p = plugOf(node, flag.longName);
        const double v = values.at(flag.longName);
        if (flag.kind == TopologyFlag::Kind::kDouble)
            mod->newPlugValueDouble(p, v);
        else if (flag.kind == TopologyFlag::Kind::kInt)
            mod->newPlugValueInt(p, int(v));
        else
            mod->newPlugValueBool(p, v != 0.0);
    }
    MStringArray strings;
    for (const std::string& s : componentStrings(op, elements))
        strings.append(MString(s.c_str()));
    MObject list = MFnStringArrayData().create(strings);
    mod->newPlugValue(plugOf(node, "inputComponents"), list);
    mod->connect(source, plugOf(node, "inputPolymesh"));
    mod->connect(plugOf(node, "output"), inMesh);
    MStatus st = mod->doIt();
    if (!st) {
        mod->undoIt();
        return commandError(call, "could not put " + op.nodeType + " into the history of " + shape->name,
                            st.statusCode());
    }
    nodeName = MFnDependencyNode(node).name().asChar();
    // Deliberate: a broken connection leaves its destination's last value in place, so the
    // shape is told its input changed, or undo would go on showing the operation's result.
    NodePtr keep = Scene::current().shared(shape);
    const AttributeBody* inMeshAttr = Access::attribute(meshAttributes().inMesh);
    auto refresh = [keep, inMeshAttr] { markDirty(keep.get(), PlugKey{inMeshAttr, {}}); };
    recordUndo(
        [mod, refresh] {
            mod->undoIt();
            refresh();
        },
        [mod, refresh] {
            mod->doIt();
            refresh();
        });
    return MStatus::kSuccess;
}

// Without history: the result becomes the shape's own geometry and its tweaks go, being in it.
void replaceGeometry(NodeBody* shape, const MeshGeometry& result)
{
    NodePtr keep = Scene::current().shared(shape);
    MObject before = shapeOwnGeometry(shape);
    MObject after = makeMeshData(std::make_shared<MeshGeometry>(result));
    const auto tweaks = shapeTweaks(shape);
    const AttributeBody* pnts = Access::attribute(meshAttributes().pnts);
    auto apply = [keep, after, tweaks, pnts] {
        setShapeGeometry(keep.get(), after);
        for (const auto& t : tweaks)
            writeValue(keep.get(), PlugKey{pnts, {unsigned(t.first)}}, Value::numeric(0.0, 0.0, 0.0));
    };
    apply();
    recordUndo(
        [keep, before, tweaks, pnts] {
            setShapeGeometry(keep.get(), before);
            for (const auto& t : tweaks)
                writeValue(keep.get(), PlugKey{pnts, {unsigned(t.first)}},
                           Value::numeric(t.second.x, t.second.y, t.second.z));
        },
        apply);
}

// -q flag node: the flag's value; -e flags node: sets them, undoably.
MStatus queryOrEdit(const CommandCall& call, const TopologyOperation& op, const BuiltinArgs& a, bool query,
                    CommandValue& result)
{
    std::vector<std::string> operands = a.operandTexts();
    if (operands.size() != 1)
        return commandError(call, std::string(query ? "-query" : "-edit") + " needs the name of one " + op.nodeType +
                                      " node");
    NodeBody* node = findNodeByPath(operands[0]);
    if (!node || !node->type->isA(op.nodeType))
        return commandError(call, "'" + operands[0] + "' is not a " + op.nodeType + " node");
    std::vector<const TopologyFlag*> given;
    for (const TopologyFlag& flag : op.flags)
        if (a.has(flag.longName))
            given.push_back(&flag);
    if (query) {
        if (given.size() != 1)
            return commandError(call, "-query needs one flag to read");
        Value v = readValue(node, PlugKey{node->type->findAttribute(given[0]->longName), {}});
        result = given[0]->kind == TopologyFlag::Kind::kDouble ? CommandValue::ofDouble(v.num[0])
                                                               : CommandValue::ofInt(int(v.num[0]));
        return MStatus::kSuccess;
    }
    TopologyValues values;
    for (const TopologyFlag& flag : op.flags) {
        Value v = readValue(node, PlugKey{node->type->findAttribute(flag.longName), {}});
        values[flag.longName] = v.num[0];
    }
    struct Write {
        PlugKey key;
        Value before, after;
    };
    std::vector<Write> writes;
    for (const TopologyFlag* flag : given) {
        double v = 0.0;
        if (!readFlagValue(*flag, a.text(flag->longName), v))
            return commandError(call, "-" + std::string(flag->longName) + " does not take '" +
                                          a.text(flag->longName) + "'");
        values[flag->longName] = v;
        PlugKey key{node->type->findAttribute(flag->longName), {}};
        writes.push_back(Write{key, readValue(node, key), Value::numeric(v)});
    }
    if (std::string no = op.unsupported(values); !no.empty())
        return commandError(call, "the host does not do " + no, MStatus::kNotImplemented);
    NodePtr keep = Scene::current().shared(node);
    for (const Write& w : writes)
        writeValue(node, w.key, w.after);
    recordUndo(
        [keep, writes] {
            for (auto it = writes.rbegin(); it != writes.rend(); ++it)
                writeValue(keep.get(), it->key, it->before);
        },
        [keep, writes] {
            for (const Write& w : writes)
                writeValue(keep.get(), w.key, w.after);
        });
    result = CommandValue::ofString(node->name);
    return MStatus::kSuccess;
}

MStatus topologyCommand(const TopologyOperation& op, const CommandCall& call, CommandValue& result)
{
    bool query = false;
    for (const ArgValue& arg : call.args)
        query = query || (arg.isFlag() && (arg.flagName() == "q" || arg.flagName() == "query"));
    // In query mode flags name what to read and take no values.
    std::vector<FlagRule> rules{{"q", "query", 0}, {"e", "edit", 0}};
    for (const TopologyFlag& flag : op.flags)
        rules.push_back(FlagRule{flag.shortName, flag.longName, query ? 0 : 1});
    BuiltinArgs a;
    if (!a.parse(call, rules))
        return MStatus::kInvalidParameter;
    if (a.has("query") && a.has("edit"))
        return commandError(call, "use -query or -edit, not both");
    if (a.has("query") || a.has("edit"))
        return queryOrEdit(call, op, a, a.has("query"), result);

    TopologyValues values;
    for (const TopologyFlag& flag : op.flags) {
        values[flag.longName] = flag.defaultValue;
        if (!a.has(flag.longName))
            continue;
        if (!readFlagValue(flag, a.text(flag.longName), values[flag.longName]))
            return commandError(call, "-" + std::string(flag.longName) + " does not take '" + a.text(flag.longName) +
                                          "'");
    }
    if (std::string no = op.unsupported(values); !no.empty())
        return commandError(call, "the host does not do " + no, MStatus::kNotImplemented);
    NodeBody* shape = nullptr;
    std::vector<int> elements;
    MStatus st = gatherComponents(call, op, a.operandTexts(), shape, elements);
    if (!st)
        return st;
    MeshGeometry made;
    std::string why;
    const MeshGeometry* current = shapeGeometry(shape, &st);
    if (!current)
        return commandError(call, shape->name + " has no mesh", st.statusCode());
    if (!op.run(*current, elements, values, made, &why))
        return commandError(call, why + " (" + shape->name + ")");
    if (constructionHistoryOn() || hasHistory(shape)) {
        std::string nodeName;
        st = insertNode(call, op, shape, elements, values, nodeName);
        if (!st)
            return st;
        result = CommandValue::ofString(nodeName);
        return MStatus::kSuccess;
    }
    replaceGeometry(shape, made);
    result = CommandValue::ofString(shape->name);
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar()
    {
        for (const TopologyOperation& op : topologyOperations())
            registerBuiltinCommand(op.command, [&op](const CommandCall& call, CommandValue& result) {
                return topologyCommand(op, call, result);
            });
    }
} gRegistrar;

} // namespace
} // namespace host
