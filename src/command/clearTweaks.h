#pragma once
// Vertex tweaks of the retopo mesh. The tool places vertices itself and keeps the whole
// patch in the history node, so no per-vertex offset may stay on the shape to be added on
// top of what the history delivers.

#include <maya/MStatus.h>

namespace tq {

// Empties the `pnts` array of the retopo mesh (the active selection's mesh shape): every
// vertex tweak element is removed. Vertices placed through the mesh function set carry no
// tweak and stay where they are; an offset still held in `pnts` is dropped with it.
//
// kInvalidParameter, with nothing written, when no mesh is selected; the failure of the
// write (logged by it) otherwise.
MStatus clearTweaks();

} // namespace tq
