#pragma once
// Scene files: the open scene saved as, and replaced by, a Maya ASCII (.ma) file. The host
// writes and reads the subset of the format that its own nodes need (host/README.md,
// "Scene files"): createNode, setAttr (values, typed data, mesh geometry as vt, ed and fc
// records), connectAttr, and requires, currentUnit, fileInfo and select lines it skips.

#include <maya/MStatus.h>

#include <string>

namespace host {

// Writes every node of the scene (but the default sets), the values of their storable
// plugs that differ from the defaults, each mesh shape's own geometry and every
// connection, replacing the file. On failure *error says why and the file is left as it was.
MStatus saveScene(const std::string& path, std::string* error = nullptr);

// Replaces the open scene with the file's: the whole file is read and checked first, so a
// malformed file fails with "path:line: reason" (in *error and the log) and leaves the
// scene as it was. Node types of plug-ins must be loaded before.
MStatus openScene(const std::string& path, std::string* error = nullptr);

} // namespace host
