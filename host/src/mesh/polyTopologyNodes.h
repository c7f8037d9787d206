#pragma once
// The topology operations as the host's poly modifier nodes (polySplitRing, polyBridgeEdge,
// polyMergeVert) and the table their commands share with them: one description per
// operation (its command, node type, component kind, flags and the function that does the
// work), so the command that checks and applies an operation and the node that recomputes
// it from its input run the same code with the same values.
//
// Each node has inputPolymesh (ip) and output (out) meshes, inputComponents (ics), a string
// array of the components it works on ("e[3]", "vtx[7]"), one element each in the order
// given, and one attribute per flag, named as the flag. Its output is the operation applied
// to its input; when the operation cannot apply to the input it is given (the upstream mesh
// changed under it), the input passes through unchanged and the log says why.

#include "dg/nodeBody.h"
#include "mesh/meshGeometry.h"

#include <maya/MFn.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace host {

struct TopologyFlag {
    enum class Kind { kDouble, kInt, kBool };
    const char* shortName;
    const char* longName;
    Kind kind;
    double defaultValue;
};

// Flag values by long name.
using TopologyValues = std::map<std::string, double>;

struct TopologyOperation {
    std::string command;
    std::string nodeType;
    MFn::Type nodeKind;          // the node's apiType
    MFn::Type componentKind;     // the components it takes
    std::string componentPrefix; // how inputComponents writes them: "e", "vtx"
    std::vector<TopologyFlag> flags;
    // Empty when the host does these values; else what it cannot do.
    std::function<std::string(const TopologyValues&)> unsupported;
    // The operation itself: false with `why` when it does not apply.
    std::function<bool(const MeshGeometry& in, const std::vector<int>& elements, const TopologyValues& values,
                       MeshGeometry& out, std::string* why)>
        run;
};

const std::vector<TopologyOperation>& topologyOperations();

// Called once by the built-in type registration.
void registerTopologyNodeTypes(const NodeType* dependBase);

// The component strings a node's inputComponents holds for these elements, and back.
std::vector<std::string> componentStrings(const TopologyOperation& op, const std::vector<int>& elements);
bool componentElements(const TopologyOperation& op, const std::vector<std::string>& strings,
                       std::vector<int>& elements);

} // namespace host
