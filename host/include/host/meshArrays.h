#pragma once
// A polygon mesh as plain arrays, in the layout MFnMesh::create takes: what mesh files are
// read into and written from, and what the procedural meshes are made as.

#include <cstddef>
#include <string>
#include <vector>

namespace host {

struct MeshArrays {
    std::vector<float> points; // xyz packed, object space
    std::vector<int> counts;   // vertices per polygon
    std::vector<int> connects; // vertex ids, polygons in order
    std::vector<float> u, v;   // the map1 UV set, may be empty
    std::vector<int> uvIds;    // per face-vertex into u/v, same length as connects, or empty
    std::string name;          // the mesh's name from the file, may be empty

    int numVertices() const { return static_cast<int>(points.size() / 3); }
    int numPolygons() const { return static_cast<int>(counts.size()); }
    int numFaceVertices() const { return static_cast<int>(connects.size()); }
    int numUVs() const { return static_cast<int>(u.size()); }
    bool hasUVs() const { return !uvIds.empty(); }
};

// True when the arrays describe a mesh MFnMesh::create would take: points a multiple of three
// and finite, every polygon at least three vertices, counts summing to the connects, vertex and
// UV ids in range, u and v of one length, uvIds empty or one per face-vertex. Otherwise false,
// with the first problem found in *why.
bool validate(const MeshArrays& mesh, std::string* why = nullptr);

} // namespace host
