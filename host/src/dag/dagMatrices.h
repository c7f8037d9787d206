#pragma once
// Transform matrices of DAG nodes, read from their translate, rotate (radians, with
// rotateOrder) and scale plugs and composed in Maya's row-vector order: scale, then
// rotation, then translation.

#include "dg/nodeBody.h"

#include <maya/MBoundingBox.h>
#include <maya/MMatrix.h>

#include <functional>
#include <string>

namespace host {

// The local matrix of a transform; identity for any other node.
MMatrix localMatrix(NodeBody* node);
// The product of local matrices from the node up to the world.
MMatrix worldMatrix(NodeBody* node);

// Bounding boxes of shapes in object space, by node type; shape kinds register theirs.
using BoundsFunction = std::function<bool(NodeBody* shape, MBoundingBox& box)>;
void registerShapeBounds(const std::string& typeName, BoundsFunction bounds);
bool shapeBounds(NodeBody* shape, MBoundingBox& box);

} // namespace host
