#pragma once
// The callback registry behind MEventMessage and MNodeMessage. Callbacks run synchronously,
// through the exception barrier, in the order they were added.

#include "dg/plugKey.h"

#include <maya/MNodeMessage.h>

#include <string>

namespace host {

class NodeBody;

void sendEvent(const std::string& eventName);
void notifyAttributeChanged(NodeBody* node, MNodeMessage::AttributeMessage message, const PlugKey& plug,
                            NodeBody* otherNode, const PlugKey* otherPlug);
void notifyDirtyPlug(NodeBody* node, const PlugKey& plug);
void notifyNameChanged(NodeBody* node, const std::string& previousName);
// Drops every node callback of a node that is gone for good.
void forgetNodeCallbacks(const NodeBody* node);

} // namespace host
