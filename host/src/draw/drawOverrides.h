#pragma once
// The draw overrides of the scene's nodes and the drawing of a frame. An override is made
// once per node (by the first matching registration, in registration order) when a frame
// first needs it, and destroyed when its node is gone (at the next frame) or its creator is
// deregistered (at once, while the plug-in's code is still loaded).

#include "dg/nodeBody.h"

#include "host/viewport.h"

#include <string>

namespace host {

// Draws a frame of the view with that id (0: no view; the frame has no camera then).
FrameRecords drawFrameOf(unsigned int viewId);

// MRenderer::setGeometryDrawDirty: the node's override updates at the next frame.
void markDrawDirty(NodeBody* node);

// Destroys the overrides made by a registration that is being removed.
void releaseDrawOverrides(const std::string& classification, const std::string& registrantId);

} // namespace host
