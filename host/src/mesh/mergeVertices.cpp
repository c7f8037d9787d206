#include "mesh/mergeVertices.h"

#include "mesh/topologyRebuild.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <unordered_map>

namespace host {
namespace {

int findRoot(std::vector<int>& parent, int i)
{
    while (parent[std::size_t(i)] != i) {
        parent[std::size_t(i)] = parent[std::size_t(parent[std::size_t(i)])];
        i = parent[std::size_t(i)];
    }
    return i;
}

// Groups the candidates (positions in `ids`) that lie within `distance` of each other,
// through a grid of cells `distance` wide, so only neighbouring cells are compared.
void groupClose(const MeshGeometry& mesh, const std::vector<int>& ids, double distance, std::vector<int>& parent)
{
    const double d2 = distance * distance;
    auto close = [&](int i, int j) {
        const MFloatPoint a = mesh.point(ids[std::size_t(i)]), b = mesh.point(ids[std::size_t(j)]);
        const double x = double(a.x) - b.x, y = double(a.y) - b.y, z = double(a.z) - b.z;
        return x * x + y * y + z * z <= d2;
    };
    auto join = [&](int i, int j) { parent[std::size_t(findRoot(parent, i))] = findRoot(parent, j); };
    const double cell = distance > 0.0 ? distance : 1e-6;
    struct Key {
        std::int64_t x, y, z;
        bool operator==(const Key& o) const { return x == o.x && y == o.y && z == o.z; }
    };
    struct Hash {
        std::size_t operator()(const Key& k) const
        {
            return std::size_t(std::uint64_t(k.x) * 73856093u) ^ std::size_t(std::uint64_t(k.y) * 19349663u) ^
                   std::size_t(std::uint64_t(k.z) * 83492791u);
        }
    };
    // Cells past +-1e18 share one index per side, which only costs comparisons.
    auto cellOf = [&](float c) { return std::int64_t(std::clamp(std::floor(double(c) / cell), -1e18, 1e18)); };
    auto keyOf = [&](int i) {
        const MFloatPoint p = mesh.point(ids[std::size_t(i)]);
        return Key{cellOf(p.x), cellOf(p.y), cellOf(p.z)};
    };
    // Everything within reach of everything: one group, with no pairwise work.
    MFloatPoint lo = mesh.point(ids[0]), hi = lo;
    for (int id : ids) {
        const MFloatPoint p = mesh.point(id);
        lo = MFloatPoint(std::min(lo.x, p.x), std::min(lo.y, p.y), std::min(lo.z, p.z));
        hi = MFloatPoint(std::max(hi.x, p.x), std::max(hi.y, p.y), std::max(hi.z, p.z));
    }
    const double dx = double(hi.x) - lo.x, dy = double(hi.y) - lo.y, dz = double(hi.z) - lo.z;
    if (dx * dx + dy * dy + dz * dz <= d2) {
        for (std::size_t i = 1; i < ids.size(); ++i)
            join(int(i), 0);
        return;
    }
    std::unordered_map<Key, std::vector<int>, Hash> grid;
    for (std::size_t i = 0; i < ids.size(); ++i)
        grid[keyOf(int(i))].push_back(int(i));
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const Key k = keyOf(int(i));
        for (std::int64_t x = -1; x <= 1; ++x)
            for (std::int64_t y = -1; y <= 1; ++y)
                for (std::int64_t z = -1; z <= 1; ++z) {
                    auto it = grid.find(Key{k.x + x, k.y + y, k.z + z});
                    if (it == grid.end())
                        continue;
                    for (int j : it->second)
                        if (j > int(i) && close(int(i), j))
                            join(int(i), j);
                }
    }
}

} // namespace

bool mergeVertices(const MeshGeometry& mesh, const std::vector<int>& vertices, double distance, bool alwaysMergeTwo,
                   MeshGeometry& out, int* merged, std::string* why)
{
    auto fail = [&](const std::string& text) {
        if (why)
            *why = text;
        return false;
    };
    if (!std::isfinite(distance) || distance < 0.0)
        return fail("the merge distance must be a number of 0 or more");
    for (int v : vertices)
        if (!mesh.validVertex(v))
            return fail("vertex " + std::to_string(v) + " does not exist");
    std::vector<int> ids = vertices;
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());

    // Each vertex's survivor (itself unless it merges into a lower one).
    const int count = mesh.numVertices();
    std::vector<int> survivor(static_cast<std::size_t>(count));
    std::iota(survivor.begin(), survivor.end(), 0);
    std::vector<int> parent(ids.size());
    std::iota(parent.begin(), parent.end(), 0);
    if (ids.size() == 2 && alwaysMergeTwo)
        parent[1] = 0;
    else if (ids.size() > 1)
        groupClose(mesh, ids, distance, parent);
    std::unordered_map<int, std::vector<int>> members; // root position -> vertices, ascending
    for (std::size_t i = 0; i < ids.size(); ++i)
        members[findRoot(parent, int(i))].push_back(ids[i]);

    TopologyResult r;
    std::vector<double> sum(3 * static_cast<std::size_t>(count), 0.0);
    std::vector<int> groupSize(static_cast<std::size_t>(count), 1);
    for (const auto& group : members) {
        const std::vector<int>& vs = group.second;
        if (vs.size() < 2)
            continue;
        double mean[3] = {0.0, 0.0, 0.0};
        for (int v : vs) {
            survivor[std::size_t(v)] = vs.front();
            const MFloatPoint p = mesh.point(v);
            mean[0] += p.x;
            mean[1] += p.y;
            mean[2] += p.z;
        }
        for (int k = 0; k < 3; ++k)
            sum[3 * std::size_t(vs.front()) + std::size_t(k)] = mean[k];
        groupSize[std::size_t(vs.front())] = int(vs.size());
    }
    std::vector<int> newIndex(static_cast<std::size_t>(count), -1);
    std::vector<char> watched;
    int gone = 0;
    for (int v = 0; v < count; ++v) {
        if (survivor[std::size_t(v)] != v) {
            ++gone;
            continue;
        }
        newIndex[std::size_t(v)] = static_cast<int>(r.oldVertex.size());
        r.oldVertex.push_back(v);
        const int n = groupSize[std::size_t(v)];
        watched.push_back(n > 1 ? 1 : 0);
        for (int k = 0; k < 3; ++k)
            r.points.push_back(n > 1 ? float(sum[3 * std::size_t(v) + std::size_t(k)] / n)
                                     : mesh.rawPoints()[3 * v + k]);
    }
    for (int f = 0; f < mesh.numPolygons(); ++f) {
        const int n = mesh.polygonSize(f), start = mesh.polygonStart(f);
        const int* c = mesh.polygonVertices(f);
        std::vector<int> corners, from;
        for (int i = 0; i < n; ++i) {
            const int v = newIndex[std::size_t(survivor[std::size_t(c[i])])];
            if (!corners.empty() && corners.back() == v)
                continue;
            corners.push_back(v);
            from.push_back(start + i);
        }
        while (corners.size() > 1 && corners.back() == corners.front()) {
            corners.pop_back();
            from.pop_back();
        }
        if (corners.size() < 3)
            continue;
        r.counts.push_back(static_cast<int>(corners.size()));
        r.connects.insert(r.connects.end(), corners.begin(), corners.end());
        r.oldFaceVertex.insert(r.oldFaceVertex.end(), from.begin(), from.end());
    }
    if (gone > 0 && !manifoldFaces(r.counts, r.connects, watched, why))
        return false;
    if (merged)
        *merged = gone;
    if (gone == 0) {
        out = mesh;
        return true;
    }
    return finishTopology(mesh, r, out, why);
}

} // namespace host
