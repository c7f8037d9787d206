#pragma once
// What must hold of the scene after anything a user does with the tool, and a text of the
// scene for exact before-and-after comparisons. Used by the gesture fuzz target and the
// fault tests.

#include <maya/MDagPath.h>

#include <string>

namespace tqcheck {

// Empty when all is well, else what is wrong: a mesh other than the scan with a bad face
// count, a vertex index out of range or a position that is not finite; with `store`, a
// store's vertex numbers (anchor chain, shadow rows) or face numbers (last patch) outside
// every retopo mesh (the largest mesh but the scan, or the scan when it is selected: the
// tool then works on it); an exception that reached the host's barrier (the plug-in's own
// barrier missed it). The scan's own faces are not walked: it is large.
std::string checkScene(const MDagPath& scan, bool store = true);

// Every node with its type and incoming connections, every mesh's points and faces (the
// scan's by a digest) and, with `store`, every stored value of every tqSarn store node but
// the display state that no undo covers.
std::string sceneText(const MDagPath& scan, bool store = true);

// The first line where the two texts differ, from each.
std::string firstDifference(const std::string& before, const std::string& after);

} // namespace tqcheck
