#include "mesh/bridgeEdges.h"

#include "mesh/topologyRebuild.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace host {
namespace {

// Union-find over the vertices the given edges touch.
struct Groups {
    std::unordered_map<int, int> parent;
    int find(int v)
    {
        auto it = parent.find(v);
        if (it == parent.end()) {
            parent[v] = v;
            return v;
        }
        int root = v;
        while (parent[root] != root)
            root = parent[root];
        while (parent[v] != root) {
            const int next = parent[v];
            parent[v] = root;
            v = next;
        }
        return root;
    }
    void join(int a, int b) { parent[find(a)] = find(b); }
};

// A chain's edges in walk order and its vertices in that order (one more than the edges for
// an open chain).
struct Walk {
    std::vector<int> edges, vertices;
    bool closed = false;
};

// Walks the chain made of `chain` (edges in the order given). False when it is not one path
// or loop.
bool walkChain(const MeshGeometry& mesh, const std::vector<int>& chain, Walk& walk)
{
    std::unordered_map<int, std::vector<int>> at; // vertex -> positions in `chain` of its edges
    for (std::size_t i = 0; i < chain.size(); ++i) {
        at[mesh.edgeStart(chain[i])].push_back(int(i));
        at[mesh.edgeEnd(chain[i])].push_back(int(i));
    }
    int startVertex = -1, firstEnd = int(chain.size());
    for (const auto& entry : at) {
        if (entry.second.size() > 2)
            return false;
        if (entry.second.size() != 1)
            continue;
        const int position = entry.second[0];
        // Of the two ends, the one on the earliest given edge; on one edge, its start.
        if (position < firstEnd ||
            (position == firstEnd && entry.first == mesh.edgeStart(chain[std::size_t(position)]))) {
            firstEnd = position;
            startVertex = entry.first;
        }
    }
    walk.closed = startVertex < 0;
    if (walk.closed)
        startVertex = mesh.edgeStart(chain[0]);
    std::vector<char> used(chain.size(), 0);
    int v = startVertex;
    walk.vertices.push_back(v);
    for (std::size_t step = 0; step < chain.size(); ++step) {
        int next = -1;
        for (int i : at[v])
            if (!used[std::size_t(i)] && (next < 0 || (walk.closed && step == 0 && i == 0)))
                next = i;
        if (next < 0)
            return false;
        used[std::size_t(next)] = 1;
        const int e = chain[std::size_t(next)];
        v = mesh.edgeStart(e) == v ? mesh.edgeEnd(e) : mesh.edgeStart(e);
        walk.edges.push_back(e);
        if (step + 1 < chain.size() || !walk.closed)
            walk.vertices.push_back(v);
    }
    return !walk.closed || v == startVertex;
}

double distance2(const MFloatPoint& a, const MFloatPoint& b)
{
    const double x = a.x - b.x, y = a.y - b.y, z = a.z - b.z;
    return x * x + y * y + z * z;
}

} // namespace

bool bridgeEdges(const MeshGeometry& mesh, const std::vector<int>& edges, int divisions, MeshGeometry& out,
                 std::string* why)
{
    auto fail = [&](const std::string& text) {
        if (why)
            *why = text;
        return false;
    };
    if (divisions < 0 || divisions > 10000)
        return fail("the number of divisions must lie between 0 and 10000");
    if (edges.empty())
        return fail("no edges to bridge");
    const MeshAdjacency& adj = mesh.adjacency();
    std::vector<int> sorted = edges;
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end())
        return fail("an edge is given twice");
    Groups groups;
    for (int e : edges) {
        if (!mesh.validEdge(e))
            return fail("edge " + std::to_string(e) + " does not exist");
        if (adj.edgeFaceStart[std::size_t(e) + 1] - adj.edgeFaceStart[std::size_t(e)] != 1)
            return fail("edge " + std::to_string(e) + " is not a border edge");
        groups.join(mesh.edgeStart(e), mesh.edgeEnd(e));
    }
    const int firstGroup = groups.find(mesh.edgeStart(edges[0]));
    std::vector<int> chainA, chainB;
    int otherGroup = -1;
    for (int e : edges) {
        const int g = groups.find(mesh.edgeStart(e));
        if (g == firstGroup) {
            chainA.push_back(e);
        } else if (otherGroup < 0 || g == otherGroup) {
            otherGroup = g;
            chainB.push_back(e);
        } else {
            return fail("the edges form more than two separate sets");
        }
    }
    if (chainB.empty())
        return fail("the edges form one connected set; a bridge needs two");
    if (chainA.size() != chainB.size())
        return fail("the two edge sets have " + std::to_string(chainA.size()) + " and " +
                    std::to_string(chainB.size()) + " edges; they must have as many");
    Walk a;
    if (!walkChain(mesh, chainA, a))
        return fail("the first edge set is not a single chain of edges");
    std::unordered_map<int, int> partner;
    for (std::size_t k = 0; k < chainA.size(); ++k)
        partner[chainA[k]] = chainB[k];

    // The other chain, visited through the partners of the first chain's edges.
    const std::size_t n = a.edges.size();
    std::vector<int> b(a.vertices.size(), -1);
    auto shared = [&](int e1, int e2) {
        for (int v : {mesh.edgeStart(e1), mesh.edgeEnd(e1)})
            if (v == mesh.edgeStart(e2) || v == mesh.edgeEnd(e2))
                return v;
        return -1;
    };
    auto otherEnd = [&](int e, int v) { return mesh.edgeStart(e) == v ? mesh.edgeEnd(e) : mesh.edgeStart(e); };
    if (n == 1) {
        const int e = partner[a.edges[0]];
        const int q0 = mesh.edgeStart(e), q1 = mesh.edgeEnd(e);
        const MFloatPoint p0 = mesh.point(a.vertices[0]), p1 = mesh.point(a.vertices[1]);
        const bool straight = distance2(p0, mesh.point(q0)) + distance2(p1, mesh.point(q1)) <=
                              distance2(p0, mesh.point(q1)) + distance2(p1, mesh.point(q0));
        b[0] = straight ? q0 : q1;
        b[1] = straight ? q1 : q0;
    } else {
        for (std::size_t s = 0; s + 1 < n; ++s) {
            const int v = shared(partner[a.edges[s]], partner[a.edges[s + 1]]);
            if (v < 0)
                return fail("the paired edges do not follow each other along both sets");
            b[s + 1] = v;
        }
        b[0] = otherEnd(partner[a.edges[0]], b[1]);
        if (!a.closed)
            b[n] = otherEnd(partner[a.edges[n - 1]], b[n - 1]);
        else if (shared(partner[a.edges[n - 1]], partner[a.edges[0]]) != b[0])
            return fail("the paired edges do not follow each other along both sets");
    }

    TopologyResult r;
    const int oldCount = mesh.numVertices();
    r.points.assign(mesh.rawPoints(), mesh.rawPoints() + 3 * oldCount);
    r.oldVertex.resize(std::size_t(oldCount));
    std::iota(r.oldVertex.begin(), r.oldVertex.end(), 0);
    r.connects.assign(mesh.connects().begin(), mesh.connects().end());
    r.counts.assign(mesh.counts().begin(), mesh.counts().end());
    r.oldFaceVertex.resize(r.connects.size());
    std::iota(r.oldFaceVertex.begin(), r.oldFaceVertex.end(), 0);

    const std::size_t width = a.vertices.size();
    std::vector<std::vector<int>> rows(std::size_t(divisions) + 2);
    rows.front() = a.vertices;
    rows.back() = b;
    for (int j = 1; j <= divisions; ++j) {
        const double t = double(j) / double(divisions + 1);
        for (std::size_t i = 0; i < width; ++i) {
            const MFloatPoint p = mesh.point(a.vertices[i]), q = mesh.point(b[i]);
            rows[std::size_t(j)].push_back(static_cast<int>(r.oldVertex.size()));
            r.oldVertex.push_back(-1);
            r.points.push_back(float(p.x + (q.x - p.x) * t));
            r.points.push_back(float(p.y + (q.y - p.y) * t));
            r.points.push_back(float(p.z + (q.z - p.z) * t));
        }
    }
    // The face along the first edge of the walk tells which way the first chain runs.
    const int firstFace = adj.edgeFaces[std::size_t(adj.edgeFaceStart[std::size_t(a.edges[0])])];
    bool forward = false;
    for (int i = 0, c = mesh.polygonSize(firstFace); i < c; ++i)
        if (mesh.polygonVertices(firstFace)[i] == a.vertices[0] &&
            mesh.polygonVertices(firstFace)[(i + 1) % c] == a.vertices[1])
            forward = true;
    for (std::size_t s = 0; s < n; ++s) {
        const std::size_t s1 = (s + 1) % width;
        for (std::size_t j = 0; j + 1 < rows.size(); ++j) {
            const std::vector<int>& lo = rows[j];
            const std::vector<int>& hi = rows[j + 1];
            if (forward)
                r.connects.insert(r.connects.end(), {lo[s1], lo[s], hi[s], hi[s1]});
            else
                r.connects.insert(r.connects.end(), {lo[s], lo[s1], hi[s1], hi[s]});
            r.counts.push_back(4);
            r.oldFaceVertex.insert(r.oldFaceVertex.end(), 4, -1);
        }
    }
    std::vector<char> watched(r.oldVertex.size(), 0);
    for (const std::vector<int>& row : rows)
        for (int v : row)
            watched[std::size_t(v)] = 1;
    if (!manifoldFaces(r.counts, r.connects, watched, why))
        return false;
    return finishTopology(mesh, r, out, why);
}

} // namespace host
