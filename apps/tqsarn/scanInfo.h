#pragma once
// What a user wants to know about a scan before retopologizing it: size, bounds, and the
// faults that break ray casts and closest points (non-manifold edges, holes).

#include <host/meshArrays.h>

#include <string>
#include <vector>

namespace tqsarn {

struct ScanInfo {
    long long polygons = 0;
    long long triangles = 0; // after fanning every polygon
    long long vertices = 0;
    double min[3] = {0.0, 0.0, 0.0};
    double max[3] = {0.0, 0.0, 0.0};
    long long edges = 0;
    long long nonManifoldEdges = 0; // edges of three or more polygons
    long long boundaryEdges = 0;    // edges of one polygon
    long long holes = 0;            // loops of boundary edges
    std::string heavyWarning;       // what line 1 of the tool would carry; empty on a light scan

    double diagonal() const;
};

// All meshes of a file as one, ids offset in file order.
host::MeshArrays joinMeshes(const std::vector<host::MeshArrays>& meshes);

// Linear in the size of the mesh.
ScanInfo scanInfo(const host::MeshArrays& mesh);

// The info as lines of "name: value" text.
std::string scanInfoText(const std::string& path, const ScanInfo& info);

} // namespace tqsarn
