#pragma once
// Parsing of the names users and scripts give: "node.attr", "node.arr[3].child",
// "|t|shape.vtx[2:5]", with long or short attribute names.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <string>

namespace host {

class NodeBody;

// The node a name or DAG path names ("|t|shape", "t|shape", "shape"); null when none.
NodeBody* findNodeByPath(const std::string& nameOrPath);
// A plug by name. On failure `error` says why.
bool parsePlug(const std::string& text, MPlug& plug, std::string* error = nullptr);
// A component string ("shape.vtx[3]", ".e[1:4]", ".f[2]", ".vtx[*]"); false when the text
// names no component.
bool parseComponent(const std::string& text, MDagPath& path, MObject& component, std::string* error = nullptr);

} // namespace host
