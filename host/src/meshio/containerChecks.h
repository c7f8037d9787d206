#pragma once
// Checks of the files handed to Assimp, made before Assimp sees them. Assimp trusts the
// counts and lengths a file gives: a damaged chunk length or array count makes it reserve
// gigabytes, and deep nesting runs its recursive parsers off the stack. Each check walks
// the file's structure once, without recursion, and compares every count and length with
// the bytes the file (or its buffer) really holds.
//
//   glb    the header's length, every chunk's length, then the JSON as for gltf;
//   gltf   nesting depth, buffers against their data (the BIN chunk, a data URI, or the
//          file next to it), buffer views inside their buffers, accessors inside their views;
//   fbx    binary: every record's end offset inside its parent, property lists inside their
//          records, array lengths against their stored (or deflated) bytes, nesting depth;
//          text: nesting depth, scopes closed, no NUL bytes, and every "*N" array count
//          against the file's size;
//   stl    binary: the triangle count against the file's size.
//
// Other formats pass unchecked. False means the file must not be read; *why then names the
// field and the reason (the caller names the file).

#include <string>

namespace host {

// How deeply objects, arrays or records may nest in a file handed to Assimp.
constexpr int kMaxContainerNesting = 64;

bool checkContainer(const std::string& path, const std::string& extension, std::string* why);

} // namespace host
