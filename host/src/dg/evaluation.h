#pragma once
// Evaluation: the pull-based, lazy dependency graph. Reading a plug pulls its source or
// runs the node's compute while it is dirty; writing a plug or changing a connection marks
// everything downstream dirty, through attributeAffects, setDependentsDirty and
// connections. Each propagation visits a plug once, so cycles are harmless.

#include "dg/nodeBody.h"

#include <maya/MStatus.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace host {

// Where a plug's value lives: a slot's value, or one component of a numeric compound.
struct Storage {
    Value* value = nullptr;
    int component = -1;
};

// The plug's storage, made and filled with the default when new; nothing is evaluated.
Storage storageFor(NodeBody* node, const PlugKey& key);
// Evaluates the plug as a read does and returns its storage.
Storage pull(NodeBody* node, const PlugKey& key, MStatus* status = nullptr);
// A copy of the plug's evaluated value; data objects come back as new shares.
Value readValue(NodeBody* node, const PlugKey& key, MStatus* status = nullptr);

// Stores a value (a share of data objects), cleans the plug and dirties what it affects.
MStatus writeValue(NodeBody* node, const PlugKey& key, const Value& value);
// Writes one component of a numeric compound plug, or the single value of a numeric plug.
MStatus writeComponent(NodeBody* node, const PlugKey& key, int component, double value);
// After a data block handle changed a stored value in place: clean and propagate.
void valueChangedInPlace(NodeBody* node, const PlugKey& key);

// A count that moves on at every change that can alter what a plug reads or where a node
// sits: values written, plugs dirtied, connections made or broken, nodes made, deleted or
// reparented, mesh data edited in place. Readers that keep what they resolved (an iterator's
// mesh and matrix) compare it to know that nothing has moved since.
std::uint64_t sceneStamp();
void bumpSceneStamp();

// Marks the plug dirty and everything it affects.
void markDirty(NodeBody* node, const PlugKey& key);
void setClean(NodeBody* node, const PlugKey& key);
bool isClean(NodeBody* node, const PlugKey& key);

MStatus connectPlugs(const PlugRef& source, const PlugRef& destination, bool force, std::string* error = nullptr);
MStatus disconnectPlugs(const PlugRef& source, const PlugRef& destination, std::string* error = nullptr);
// Every connection with the node at either end, as (source, destination).
std::vector<std::pair<PlugRef, PlugRef>> connectionsOf(NodeBody* node);

// The key of the parent plug (compound parent, or the array plug of an element).
bool parentKey(const PlugKey& key, PlugKey& parent);
// A data object's share: a new handle over the same payload.
MObject shareData(const MObject& data);
// The name of a plug as Maya prints it: node.attr[2].child, long names.
std::string plugName(const NodeBody* node, const PlugKey& key, bool longNames = true);

} // namespace host
