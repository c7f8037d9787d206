#pragma once
// The format back ends behind readMeshFile and writeMeshFile. Each returns false with the
// reason in *why (never naming the file: the caller does that).

#include "host/meshArrays.h"

#include <string>
#include <vector>

namespace host {

// Reads through Assimp. fileName is the file's name without directory; importers name their
// synthetic root node after it, which is not a mesh name.
bool importWithAssimp(const std::string& path, const std::string& fileName, std::vector<MeshArrays>& meshes,
                      std::string* why);

enum class AssimpExport { kKeepUVs, kPositionsOnly, kTriangles };

// Writes through Assimp's exporter of the given format id ("objnomtl", "gltf2", "stlb", ...).
bool exportWithAssimp(const std::string& path, const char* formatId, AssimpExport what,
                      const std::vector<MeshArrays>& meshes, std::string* why);

// Reads a PLY file, text or binary, as written: its vertices, in order, per-vertex UVs when
// it has them, and its polygons.
bool readPly(const std::string& path, std::vector<MeshArrays>& meshes, std::string* why);

// Reads an ASCII OFF file as written: its vertices, in order, and its polygons.
bool readOff(const std::string& path, std::vector<MeshArrays>& meshes, std::string* why);

// Writes an OFF file: positions and polygons, all meshes joined into one.
bool writeOff(const std::string& path, const std::vector<MeshArrays>& meshes, std::string* why);

} // namespace host
