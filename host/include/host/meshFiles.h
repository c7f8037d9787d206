#pragma once
// Mesh files for tests, tools and benchmarks: OBJ, PLY, OFF, STL, glTF (.gltf, .glb) and FBX,
// chosen by the file's extension.

#include <host/meshArrays.h>

#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MStatus.h>

#include <string>
#include <vector>

namespace host {

// Reads every polygon mesh of the file, one MeshArrays each, placed where the file's node
// transforms put it and named after its node (or the mesh when the node has no name of its
// own). Polygons stay as the file has them. Vertices at the same position are one vertex,
// except in OFF and PLY, which are read exactly as written. UV channel 0 (in PLY, per-vertex
// s, t) becomes the UV set. On failure the status is failed and *error (and the host
// log) says which file and why; meshes is left empty.
MStatus readMeshFile(const std::string& path, std::vector<MeshArrays>& meshes, std::string* error = nullptr);

// Writes the meshes to one file, replacing it. What each format keeps:
//   obj, fbx (text):  one mesh per entry with its name, polygons and UVs;
//   gltf, glb:        the same, but polygons come back as triangles (glTF stores triangles);
//   ply (binary), off: positions and polygons, all entries joined into one mesh;
//   stl (binary):     positions and triangles, all entries joined into one mesh.
// A .gltf file writes its buffer next to it as <stem>.bin.
MStatus writeMeshFile(const std::string& path, const std::vector<MeshArrays>& meshes, std::string* error = nullptr);

// ---- Meshes in the scene ----------------------------------------------------------------

// Makes a transform named after the mesh with a mesh shape under it (through MFnMesh::create
// and assignUVs) and returns the transform. The name is made a valid, unique node name;
// empty, it is the mesh's own name. An invalid or empty mesh fails and leaves no node.
MObject addMesh(const MeshArrays& mesh, const std::string& name, MStatus* status = nullptr);

// Reads the file and adds each of its meshes, named after the mesh or, when the file gives
// none, after the file's stem. Returns the first transform; the overload returns them all.
// A failure leaves the scene as it was.
MObject importMesh(const std::string& path, MStatus* status = nullptr, std::string* error = nullptr);
MStatus importMesh(const std::string& path, MObjectArray& transforms, std::string* error = nullptr);

// Writes a mesh shape, or the first mesh shape under a transform, to the file, read back
// through MFnMesh: world-space points, polygons, the current UV set, named after the
// transform. Polygons with no UVs get UV (0, 0) when others have UVs.
MStatus exportMesh(const MObject& shapeOrTransform, const std::string& path, std::string* error = nullptr);

} // namespace host
