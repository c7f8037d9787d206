#include "mesh/polyTopologyNodes.h"

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/nodeTypes.h"
#include "mesh/bridgeEdges.h"
#include "mesh/meshData.h"
#include "mesh/mergeVertices.h"
#include "mesh/splitRing.h"

#include "host/log.h"

#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPlug.h>
#include <maya/MPxNode.h>
#include <maya/MStringArray.h>

#include <cstdlib>
#include <limits>
#include <memory>

namespace host {
namespace {

using Kind = TopologyFlag::Kind;

std::vector<TopologyOperation> makeOperations()
{
    std::vector<TopologyOperation> ops;
    ops.push_back(TopologyOperation{
        "polySplitRing",
        "polySplitRing",
        MFn::kPolySplitRing,
        MFn::kMeshEdgeComponent,
        "e",
        {{"wt", "weight", Kind::kDouble, 0.5},
         {"stp", "splitType", Kind::kInt, 1},
         {"sma", "smoothingAngle", Kind::kDouble, 30.0},
         {"fq", "fixQuads", Kind::kBool, 0},
         {"ief", "insertWithEdgeFlow", Kind::kBool, 0}},
        [](const TopologyValues& v) -> std::string {
            const double type = v.at("splitType");
            if (type != 0.0 && type != 1.0)
                return "-splitType " + std::to_string(int(type)) + " (only 0, absolute, and 1, relative, are done)";
            if (v.at("insertWithEdgeFlow") != 0.0)
                return "-insertWithEdgeFlow 1 (new points always lie on the straight edges)";
            return {};
        },
        [](const MeshGeometry& in, const std::vector<int>& edges, const TopologyValues& v, MeshGeometry& out,
           std::string* why) {
            return splitRing(in, edges, v.at("weight"), v.at("splitType") == 0.0, out, why);
        }});
    ops.push_back(TopologyOperation{
        "polyBridgeEdge",
        "polyBridgeEdge",
        MFn::kPolyBridgeEdge,
        MFn::kMeshEdgeComponent,
        "e",
        {{"dv", "divisions", Kind::kInt, 1}, {"d", "direction", Kind::kInt, 0}},
        [](const TopologyValues& v) -> std::string {
            if (v.at("direction") != 0.0)
                return "-direction " + std::to_string(int(v.at("direction"))) + " (edges are paired as given: 0)";
            return {};
        },
        [](const MeshGeometry& in, const std::vector<int>& edges, const TopologyValues& v, MeshGeometry& out,
           std::string* why) { return bridgeEdges(in, edges, int(v.at("divisions")), out, why); }});
    ops.push_back(TopologyOperation{
        "polyMergeVertex",
        "polyMergeVert",
        MFn::kPolyMergeVert,
        MFn::kMeshVertComponent,
        "vtx",
        {{"d", "distance", Kind::kDouble, 0.0}, {"am", "alwaysMergeTwoVertices", Kind::kBool, 0}},
        [](const TopologyValues&) { return std::string(); },
        [](const MeshGeometry& in, const std::vector<int>& vertices, const TopologyValues& v, MeshGeometry& out,
           std::string* why) {
            int merged = 0;
            return mergeVertices(in, vertices, v.at("distance"), v.at("alwaysMergeTwoVertices") != 0.0, out, &merged,
                                 why);
        }});
    return ops;
}

struct NodeAttributes {
    MObject inputPolymesh, output, inputComponents;
    std::vector<MObject> flags; // in the operation's flag order
};

std::vector<NodeAttributes>& nodeAttributes()
{
    static std::vector<NodeAttributes> list(topologyOperations().size());
    return list;
}

MObject meshAttribute(const char* longName, const char* shortName, bool input)
{
    MFnTypedAttribute fn;
    MObject a = fn.create(longName, shortName, MFnData::kMesh);
    fn.setWritable(input);
    fn.setStorable(false);
    fn.setHidden(true);
    return a;
}

MStatus initTopologyNode(std::size_t index)
{
    const TopologyOperation& op = topologyOperations()[index];
    NodeAttributes& a = nodeAttributes()[index];
    a.inputPolymesh = meshAttribute("inputPolymesh", "ip", true);
    a.output = meshAttribute("output", "out", false);
    MFnTypedAttribute typed;
    a.inputComponents = typed.create("inputComponents", "ics", MFnData::kStringArray);
    MPxNode::addAttribute(a.inputPolymesh);
    MPxNode::addAttribute(a.output);
    MPxNode::addAttribute(a.inputComponents);
    MPxNode::attributeAffects(a.inputPolymesh, a.output);
    MPxNode::attributeAffects(a.inputComponents, a.output);
    a.flags.clear();
    for (const TopologyFlag& flag : op.flags) {
        MFnNumericAttribute fn;
        const MFnNumericData::Type type = flag.kind == Kind::kDouble ? MFnNumericData::kDouble
                                          : flag.kind == Kind::kInt  ? MFnNumericData::kInt
                                                                     : MFnNumericData::kBoolean;
        MObject attr = fn.create(flag.longName, flag.shortName, type, flag.defaultValue);
        fn.setKeyable(true);
        MPxNode::addAttribute(attr);
        MPxNode::attributeAffects(attr, a.output);
        a.flags.push_back(attr);
    }
    return MStatus::kSuccess;
}

class TopologyNode : public MPxNode {
public:
    explicit TopologyNode(std::size_t index) : fIndex(index) {}

    MStatus compute(const MPlug& plug, MDataBlock& block) override
    {
        const NodeAttributes& a = nodeAttributes()[fIndex];
        if (plug.attribute() != a.output)
            return MStatus::kUnknownParameter;
        const TopologyOperation& op = topologyOperations()[fIndex];
        NodeBody* node = Access::nodeOf(this);
        Storage in = pull(node, PlugKey{Access::attribute(a.inputPolymesh), {}});
        MObject input = in.value && in.value->kind == Value::Kind::kData && meshOf(in.value->data)
                            ? shareData(in.value->data)
                            : makeMeshData();
        TopologyValues values;
        for (std::size_t i = 0; i < op.flags.size(); ++i) {
            MDataHandle h = block.inputValue(a.flags[i]);
            values[op.flags[i].longName] = op.flags[i].kind == Kind::kDouble ? h.asDouble()
                                           : op.flags[i].kind == Kind::kInt  ? double(h.asInt())
                                                                             : (h.asBool() ? 1.0 : 0.0);
        }
        std::vector<std::string> strings;
        MObject list = block.inputValue(a.inputComponents).data();
        if (!list.isNull()) {
            MStringArray array = MFnStringArrayData(list).array();
            for (unsigned i = 0; i < array.length(); ++i)
                strings.push_back(array[i].asChar());
        }
        std::vector<int> elements;
        std::string why;
        MObject result;
        if (!componentElements(op, strings, elements))
            why = "its inputComponents cannot be read";
        else if (std::string no = op.unsupported(values); !no.empty())
            why = "the host does not do " + no;
        else {
            auto made = std::make_shared<MeshGeometry>();
            if (op.run(*meshOf(input), elements, values, *made, &why))
                result = makeMeshData(made);
        }
        if (result.isNull()) {
            writeLog(LogLevel::kWarning, node->name + ": " + why + "; the input passes through unchanged");
            result = input;
        }
        MDataHandle out = block.outputValue(a.output);
        out.set(result);
        block.setClean(plug);
        return MStatus::kSuccess;
    }

private:
    std::size_t fIndex;
};

} // namespace

const std::vector<TopologyOperation>& topologyOperations()
{
    static const std::vector<TopologyOperation> ops = makeOperations();
    return ops;
}

void registerTopologyNodeTypes(const NodeType* dependBase)
{
    const std::vector<TopologyOperation>& ops = topologyOperations();
    for (std::size_t i = 0; i < ops.size(); ++i)
        registerBuiltinType(ops[i].nodeType, ops[i].nodeKind, dependBase, [i] { return initTopologyNode(i); },
                            [i] { return new TopologyNode(i); }, false, false, false);
}

std::vector<std::string> componentStrings(const TopologyOperation& op, const std::vector<int>& elements)
{
    std::vector<std::string> out;
    out.reserve(elements.size());
    for (int e : elements)
        out.push_back(op.componentPrefix + "[" + std::to_string(e) + "]");
    return out;
}

bool componentElements(const TopologyOperation& op, const std::vector<std::string>& strings,
                       std::vector<int>& elements)
{
    elements.clear();
    const std::string open = op.componentPrefix + "[";
    for (const std::string& s : strings) {
        if (s.compare(0, open.size(), open) != 0 || s.back() != ']')
            return false;
        const std::string inside = s.substr(open.size(), s.size() - open.size() - 1);
        const std::size_t colon = inside.find(':');
        char* end = nullptr;
        const long first = std::strtol(inside.c_str(), &end, 10);
        long last = first;
        if (colon != std::string::npos)
            last = std::strtol(inside.c_str() + colon + 1, &end, 10);
        if (end == inside.c_str() || *end != '\0' || first < 0 || last < first || last - first > 1000000 ||
            last > std::numeric_limits<int>::max())
            return false;
        for (long e = first; e <= last; ++e)
            elements.push_back(int(e));
    }
    return true;
}

} // namespace host
