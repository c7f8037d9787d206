#include "scanInfo.h"

#include "store/infoLines.h"
#include "store/infoTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <sstream>
#include <unordered_map>

namespace tqsarn {
namespace {

int findRoot(std::vector<int>& parent, int v)
{
    while (parent[v] != v) {
        parent[v] = parent[parent[v]];
        v = parent[v];
    }
    return v;
}

} // namespace

double ScanInfo::diagonal() const
{
    const double dx = max[0] - min[0], dy = max[1] - min[1], dz = max[2] - min[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

host::MeshArrays joinMeshes(const std::vector<host::MeshArrays>& meshes)
{
    if (meshes.size() == 1)
        return meshes.front();
    host::MeshArrays out;
    for (const host::MeshArrays& m : meshes) {
        const int offset = out.numVertices();
        out.points.insert(out.points.end(), m.points.begin(), m.points.end());
        out.counts.insert(out.counts.end(), m.counts.begin(), m.counts.end());
        for (int v : m.connects)
            out.connects.push_back(v + offset);
        if (out.name.empty())
            out.name = m.name;
    }
    return out;
}

ScanInfo scanInfo(const host::MeshArrays& mesh)
{
    ScanInfo info;
    info.polygons = mesh.numPolygons();
    info.vertices = mesh.numVertices();
    for (int c : mesh.counts)
        info.triangles += std::max(0, c - 2);
    for (int axis = 0; axis < 3; ++axis) {
        info.min[axis] = mesh.numVertices() ? HUGE_VAL : 0.0;
        info.max[axis] = mesh.numVertices() ? -HUGE_VAL : 0.0;
    }
    for (int v = 0; v < mesh.numVertices(); ++v)
        for (int axis = 0; axis < 3; ++axis) {
            info.min[axis] = std::min(info.min[axis], double(mesh.points[3 * v + axis]));
            info.max[axis] = std::max(info.max[axis], double(mesh.points[3 * v + axis]));
        }

    // Polygons per undirected edge.
    std::unordered_map<std::uint64_t, int> edgeFaces;
    edgeFaces.reserve(mesh.connects.size());
    std::size_t start = 0;
    for (int count : mesh.counts) {
        if (count < 0 || start + std::size_t(count) > mesh.connects.size())
            break;
        for (int i = 0; i < count; ++i) {
            const std::uint32_t a = std::uint32_t(mesh.connects[start + i]);
            const std::uint32_t b = std::uint32_t(mesh.connects[start + (i + 1) % count]);
            if (a == b)
                continue;
            ++edgeFaces[(std::uint64_t(std::min(a, b)) << 32) | std::max(a, b)];
        }
        start += std::size_t(count);
    }
    info.edges = static_cast<long long>(edgeFaces.size());
    std::vector<int> parent(std::size_t(mesh.numVertices()));
    std::iota(parent.begin(), parent.end(), 0);
    std::vector<char> onBoundary(parent.size(), 0);
    for (const auto& [key, faces] : edgeFaces) {
        if (faces > 2)
            ++info.nonManifoldEdges;
        if (faces != 1)
            continue;
        ++info.boundaryEdges;
        const int a = int(key >> 32), b = int(key & 0xffffffffu);
        if (a < 0 || b < 0 || a >= mesh.numVertices() || b >= mesh.numVertices())
            continue;
        onBoundary[a] = onBoundary[b] = 1;
        parent[findRoot(parent, a)] = findRoot(parent, b);
    }
    for (std::size_t v = 0; v < parent.size(); ++v)
        if (onBoundary[v] && findRoot(parent, int(v)) == int(v))
            ++info.holes;

    if (info.polygons > tq::kHeavySourcePolygons) {
        MString warning = tq::infoText::kHeavySourceHead;
        warning += static_cast<int>(info.polygons);
        warning += tq::infoText::kHeavySourceTail;
        // The leading comma is a line break of the overlay.
        info.heavyWarning = warning.asChar() + 1;
    }
    return info;
}

std::string scanInfoText(const std::string& path, const ScanInfo& info)
{
    std::ostringstream out;
    out << "scan: " << path << "\n"
        << "polygons: " << info.polygons << "\n"
        << "triangles: " << info.triangles << "\n"
        << "vertices: " << info.vertices << "\n"
        << "bounds: min " << info.min[0] << " " << info.min[1] << " " << info.min[2] << ", max " << info.max[0] << " "
        << info.max[1] << " " << info.max[2] << "\n"
        << "non-manifold edges: " << info.nonManifoldEdges << "\n"
        << "holes: " << info.holes << " (" << info.boundaryEdges << " boundary edges)\n"
        << "heavy-source warning: "
        << (info.heavyWarning.empty() ? "none (" + std::to_string(info.polygons) + " polygons, the warning starts above " +
                                            std::to_string(tq::kHeavySourcePolygons) + ")"
                                      : info.heavyWarning)
        << "\n";
    return out.str();
}

} // namespace tqsarn
