#include "mesh/topologyRebuild.h"

#include <cstdint>
#include <unordered_map>

namespace host {

bool finishTopology(const MeshGeometry& old, const TopologyResult& result, MeshGeometry& out, std::string* why)
{
    MeshGeometry made(old); // keeps the UV sets' names and coordinates
    if (!made.build(result.points, result.counts, result.connects, why))
        return false;
    // Cleaning never applies to the faces the operations make; should it have changed the
    // corners, the old UV ids could no longer be matched up and are left off.
    if (made.numFaceVertices() == static_cast<int>(result.oldFaceVertex.size())) {
        std::vector<UVSetData>& sets = made.editUVSets();
        const std::vector<UVSetData>& oldSets = old.uvSets();
        for (std::size_t s = 0; s < sets.size() && s < oldSets.size(); ++s) {
            if (oldSets[s].ids.empty())
                continue;
            std::vector<int> ids(result.oldFaceVertex.size(), -1);
            bool any = false;
            for (std::size_t fv = 0; fv < ids.size(); ++fv) {
                const int from = result.oldFaceVertex[fv];
                if (from >= 0 && from < static_cast<int>(oldSets[s].ids.size())) {
                    ids[fv] = oldSets[s].ids[static_cast<std::size_t>(from)];
                    any = any || ids[fv] >= 0;
                }
            }
            sets[s].ids = any ? std::move(ids) : std::vector<int>();
        }
    }
    for (int e = 0; e < made.numEdges(); ++e) {
        const int a = made.edgeStart(e), b = made.edgeEnd(e);
        if (a >= static_cast<int>(result.oldVertex.size()) || b >= static_cast<int>(result.oldVertex.size()))
            continue;
        const int oa = result.oldVertex[static_cast<std::size_t>(a)];
        const int ob = result.oldVertex[static_cast<std::size_t>(b)];
        if (oa < 0 || ob < 0)
            continue;
        const int oldEdge = old.findEdge(oa, ob);
        if (oldEdge >= 0 && !old.edgeSmooth(oldEdge))
            made.setEdgeSmooth(e, false);
    }
    out = std::move(made);
    return true;
}

bool manifoldFaces(const std::vector<int>& counts, const std::vector<int>& connects,
                   const std::vector<char>& watched, std::string* why)
{
    auto isWatched = [&](int v) {
        return watched.empty() || (v >= 0 && static_cast<std::size_t>(v) < watched.size() && watched[std::size_t(v)]);
    };
    // Per undirected edge: how many faces use it, and in which direction the first one did.
    struct Use {
        int count = 0;
        int firstFrom = -1;
    };
    std::unordered_map<std::uint64_t, Use> uses;
    std::size_t at = 0;
    for (std::size_t f = 0; f < counts.size(); ++f) {
        const int n = counts[f];
        const int* c = connects.data() + at;
        at += static_cast<std::size_t>(n);
        for (int i = 0; i < n; ++i) {
            if (!isWatched(c[i]))
                continue;
            for (int j = i + 1; j < n; ++j)
                if (c[j] == c[i]) {
                    if (why)
                        *why = "face " + std::to_string(f) + " would use vertex " + std::to_string(c[i]) + " twice";
                    return false;
                }
        }
        for (int i = 0; i < n; ++i) {
            const int a = c[i], b = c[(i + 1) % n];
            if (!isWatched(a) && !isWatched(b))
                continue;
            const std::uint64_t key = (std::uint64_t(std::uint32_t(std::min(a, b))) << 32) | std::uint32_t(std::max(a, b));
            Use& u = uses[key];
            ++u.count;
            if (u.count == 1) {
                u.firstFrom = a;
                continue;
            }
            if (u.count > 2 || u.firstFrom == a) {
                if (why)
                    *why = "the edge between vertices " + std::to_string(a) + " and " + std::to_string(b) +
                           (u.count > 2 ? " would join more than two faces" : " would join two faces of opposite winding");
                return false;
            }
        }
    }
    return true;
}

} // namespace host
