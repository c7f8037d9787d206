#pragma once
// The built-in node types and the registration of new ones. Every type inherits the
// attributes of its base: dependNode (message, caching, nodeState, ...), dagNode
// (visibility, intermediateObject, ...), transform (translate, rotate, scale), shape,
// locator (localPosition, worldPosition, localScale).

#include "dg/nodeType.h"

#include <maya/MPxNode.h>
#include <maya/MStatus.h>

#include <functional>
#include <string>

namespace host {

// Makes the built-in types once; safe to call any number of times.
void ensureBuiltinTypes();

// The abstract base type a plug-in type of this kind derives from, and the kind's MFn type.
const NodeType* baseTypeFor(MPxNode::Type kind);
MFn::Type apiTypeFor(MPxNode::Type kind);

// Registers a type: copies the base's attributes, runs `initialize` with the type current
// for addAttribute/attributeAffects, and adds it to the registry. Failures are logged.
MStatus registerNodeType(const std::string& name, const MTypeId& id, std::function<MPxNode*()> creator,
                         std::function<MStatus()> initialize, MPxNode::Type kind, MFn::Type apiType,
                         const NodeType* base, const std::string& classification, const std::string& pluginName,
                         NodeType** made = nullptr);

// Registers a built-in type whose nodes `creator` makes (a host-side MPxNode subclass
// when the type computes something).
const NodeType* registerBuiltinType(const std::string& name, MFn::Type api, const NodeType* base,
                                    std::function<MStatus()> init, std::function<MPxNode*()> creator, bool dag,
                                    bool shape, bool transform);

// Adds an attribute (and its children) to the type being initialized.
MStatus addAttributeToType(NodeType* type, const MObject& attribute);

} // namespace host
