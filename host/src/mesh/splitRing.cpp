#include "mesh/splitRing.h"

#include "mesh/topologyRebuild.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace host {
namespace {

// Where a ring edge is cut: the point lies at `t` of the way from `from` to the edge's other end.
struct Cut {
    int from = -1;
    double t = 0.0;
};

double edgeLength(const MeshGeometry& mesh, int e)
{
    const MFloatPoint a = mesh.point(mesh.edgeStart(e)), b = mesh.point(mesh.edgeEnd(e));
    return std::sqrt(double(a.x - b.x) * (a.x - b.x) + double(a.y - b.y) * (a.y - b.y) +
                     double(a.z - b.z) * (a.z - b.z));
}

double fractionOf(const MeshGeometry& mesh, int e, double weight, bool absolute)
{
    if (!absolute)
        return weight;
    const double length = edgeLength(mesh, e);
    return length > 0.0 ? std::min(1.0, weight / length) : 0.0;
}

} // namespace

bool splitRing(const MeshGeometry& mesh, const std::vector<int>& edges, double weight, bool absolute,
               MeshGeometry& out, std::string* why)
{
    auto fail = [&](const std::string& text) {
        if (why)
            *why = text;
        return false;
    };
    if (!std::isfinite(weight) || weight < 0.0 || (!absolute && weight > 1.0))
        return fail(absolute ? "the weight must be a distance of 0 or more"
                             : "the weight must lie between 0 and 1");
    for (int e : edges)
        if (!mesh.validEdge(e))
            return fail("edge " + std::to_string(e) + " does not exist");

    const MeshAdjacency& adj = mesh.adjacency();
    std::vector<Cut> cuts(static_cast<std::size_t>(mesh.numEdges()));
    // Per face: which pair of opposite edges the ring crosses (corner 0 or 1 starts it), or -1.
    std::vector<int> crossing(static_cast<std::size_t>(mesh.numPolygons()), -1);
    std::deque<int> queue;
    for (int root : edges) {
        if (cuts[std::size_t(root)].from >= 0)
            continue;
        cuts[std::size_t(root)] = Cut{mesh.edgeStart(root), fractionOf(mesh, root, weight, absolute)};
        queue.push_back(root);
        while (!queue.empty()) {
            const int e = queue.front();
            queue.pop_front();
            const Cut cut = cuts[std::size_t(e)];
            for (int k = adj.edgeFaceStart[std::size_t(e)]; k < adj.edgeFaceStart[std::size_t(e) + 1]; ++k) {
                const int f = adj.edgeFaces[std::size_t(k)];
                if (mesh.polygonSize(f) != 4)
                    continue; // the ring stops here; the face gains the new vertex
                const int start = mesh.polygonStart(f);
                const int* c = mesh.polygonVertices(f);
                int local = -1;
                for (int i = 0; i < 4 && local < 0; ++i)
                    if (mesh.faceVertexEdge(start + i) == e)
                        local = i;
                if (local < 0)
                    continue;
                const int pair = local % 2;
                if (crossing[std::size_t(f)] >= 0 && crossing[std::size_t(f)] != pair)
                    return fail("the rings of the given edges cross in face " + std::to_string(f));
                crossing[std::size_t(f)] = pair;
                const int opposite = mesh.faceVertexEdge(start + (local + 2) % 4);
                if (cuts[std::size_t(opposite)].from >= 0)
                    continue;
                // Corner local faces corner local + 3 across the quad, local + 1 faces local + 2.
                const int from = cut.from == c[local] ? c[(local + 3) % 4] : c[(local + 2) % 4];
                cuts[std::size_t(opposite)] = Cut{from, fractionOf(mesh, opposite, weight, absolute)};
                queue.push_back(opposite);
            }
        }
    }

    TopologyResult r;
    const int oldCount = mesh.numVertices();
    r.points.assign(mesh.rawPoints(), mesh.rawPoints() + 3 * oldCount);
    r.oldVertex.resize(std::size_t(oldCount));
    for (int v = 0; v < oldCount; ++v)
        r.oldVertex[std::size_t(v)] = v;
    std::vector<int> made(cuts.size(), -1); // the new vertex of each split edge
    for (int e = 0; e < mesh.numEdges(); ++e) {
        const Cut& cut = cuts[std::size_t(e)];
        if (cut.from < 0)
            continue;
        const int to = cut.from == mesh.edgeStart(e) ? mesh.edgeEnd(e) : mesh.edgeStart(e);
        const MFloatPoint a = mesh.point(cut.from), b = mesh.point(to);
        made[std::size_t(e)] = static_cast<int>(r.oldVertex.size());
        r.oldVertex.push_back(-1);
        r.points.push_back(float(a.x + (b.x - a.x) * cut.t));
        r.points.push_back(float(a.y + (b.y - a.y) * cut.t));
        r.points.push_back(float(a.z + (b.z - a.z) * cut.t));
    }

    std::vector<int> secondCounts, secondConnects, secondOld;
    for (int f = 0; f < mesh.numPolygons(); ++f) {
        const int n = mesh.polygonSize(f);
        const int start = mesh.polygonStart(f);
        const int* c = mesh.polygonVertices(f);
        const int pair = crossing[std::size_t(f)];
        if (pair >= 0) {
            const int m0 = made[std::size_t(mesh.faceVertexEdge(start + pair))];
            const int m2 = made[std::size_t(mesh.faceVertexEdge(start + pair + 2))];
            // Halves c[p] m0 m2 c[p+3] and m0 c[p+1] c[p+2] m2; the first, from corner 0.
            if (pair == 0) {
                r.connects.insert(r.connects.end(), {c[0], m0, m2, c[3]});
                r.oldFaceVertex.insert(r.oldFaceVertex.end(), {start, -1, -1, start + 3});
            } else {
                r.connects.insert(r.connects.end(), {c[0], c[1], m0, m2});
                r.oldFaceVertex.insert(r.oldFaceVertex.end(), {start, start + 1, -1, -1});
            }
            r.counts.push_back(4);
            secondCounts.push_back(4);
            secondConnects.insert(secondConnects.end(), {m0, c[pair + 1], c[pair + 2], m2});
            secondOld.insert(secondOld.end(), {-1, start + pair + 1, start + pair + 2, -1});
            continue;
        }
        int corners = 0;
        for (int i = 0; i < n; ++i) {
            r.connects.push_back(c[i]);
            r.oldFaceVertex.push_back(start + i);
            ++corners;
            const int m = made[std::size_t(mesh.faceVertexEdge(start + i))];
            if (m >= 0) {
                r.connects.push_back(m);
                r.oldFaceVertex.push_back(-1);
                ++corners;
            }
        }
        r.counts.push_back(corners);
    }
    r.counts.insert(r.counts.end(), secondCounts.begin(), secondCounts.end());
    r.connects.insert(r.connects.end(), secondConnects.begin(), secondConnects.end());
    r.oldFaceVertex.insert(r.oldFaceVertex.end(), secondOld.begin(), secondOld.end());
    return finishTopology(mesh, r, out, why);
}

} // namespace host
