#include "tool/boundaryWalk.h"

#include "kernel/indexArrays.h"

#include <maya/MItMeshEdge.h>
#include <maya/MItMeshVertex.h>

namespace tq {

namespace {

// One edge iterator over the mesh, moved to whichever edge is asked about. An edge number the
// mesh does not have answers as no border edge with no ends and no neighbours.
class Edges {
public:
    explicit Edges(const MDagPath& meshPath) : it(meshPath, MObject::kNullObj, &status) {}

    bool valid() const { return status == MStatus::kSuccess; }

    bool onBoundary(int edge)
    {
        if (!standOn(edge))
            return false;
        return it.onBoundary();
    }

    void connected(int edge, MIntArray& out)
    {
        out.clear();
        if (standOn(edge))
            it.getConnectedEdges(out);
    }

    bool ends(int edge, int& v0, int& v1)
    {
        v0 = v1 = -1;
        if (!standOn(edge))
            return false;
        v0 = it.index(0);
        v1 = it.index(1);
        return true;
    }

    bool hasEnd(int edge, int v)
    {
        int v0, v1;
        return ends(edge, v0, v1) && (v0 == v || v1 == v);
    }

    bool joins(int edge, int a, int b)
    {
        int v0, v1;
        return ends(edge, v0, v1) && ((v0 == a && v1 == b) || (v0 == b && v1 == a));
    }

private:
    bool standOn(int edge)
    {
        if (!valid() || edge < 0)
            return false;
        int previous = 0;
        return it.setIndex(edge, previous) == MStatus::kSuccess;
    }

    MStatus status;
    MItMeshEdge it;
};

MIntArray edgesAround(const MDagPath& meshPath, int v)
{
    MIntArray edges;
    MStatus status;
    MItMeshVertex it(meshPath, MObject::kNullObj, &status);
    int previous = 0;
    if (status && v >= 0 && it.setIndex(v, previous))
        it.getConnectedEdges(edges);
    return edges;
}

void firstAndLastOnBoundary(Edges& edges, const MIntArray& around, int& first, int& second)
{
    first = second = -1;
    for (const int e : around) {
        if (!edges.onBoundary(e))
            continue;
        if (first < 0)
            first = e;
        else
            second = e;
    }
}

} // namespace

void boundaryEdgesAt(const MDagPath& meshPath, const MIntArray& around, int& first, int& second)
{
    Edges edges(meshPath);
    firstAndLastOnBoundary(edges, around, first, second);
}

MIntArray walkBoundary(const MDagPath& meshPath, int target, int startEdge, int avoidEdge, bool& found)
{
    found = false;
    MIntArray list;
    list.append(startEdge);
    Edges edges(meshPath);
    int current = startEdge;
    MIntArray next;
    for (int step = 0; step < kBoundaryStepLimit; ++step) {
        edges.connected(current, next);
        // The scan of this step's neighbours goes on after an edge is taken.
        for (const int e : next) {
            if (e == avoidEdge || !edges.onBoundary(e) || arrayContains(e, list))
                continue;
            list.append(e);
            current = e;
            if (edges.hasEnd(e, target)) {
                found = true;
                return list;
            }
        }
    }
    return list;
}

MIntArray boundaryPath(const MDagPath& meshPath, int a, int b, int limit)
{
    if (!meshPath.isValid()) {
        MIntArray zeros;
        for (int i = 0; i < 5; ++i)
            zeros.append(0);
        return zeros;
    }
    Edges edges(meshPath);
    int first = -1, second = -1;
    firstAndLastOnBoundary(edges, edgesAround(meshPath, a), first, second);
    MIntArray one;
    if (first < 0)
        return one;
    if (edges.joins(first, a, b) || (second >= 0 && edges.joins(second, a, b))) {
        one.append(edges.joins(first, a, b) ? first : second);
        return one;
    }
    bool foundA = false, foundB = false;
    const MIntArray runA = walkBoundary(meshPath, b, first, second, foundA);
    const MIntArray runB = second >= 0 ? walkBoundary(meshPath, b, second, first, foundB) : MIntArray();
    const auto usable = [limit](bool found, const MIntArray& run) {
        return found && run.length() > 0 && static_cast<int>(run.length()) < limit;
    };
    const bool takeA = usable(foundA, runA);
    const bool takeB = usable(foundB, runB);
    if (takeA && (!takeB || runA.length() <= runB.length()))
        return runA;
    if (takeB)
        return runB;
    return MIntArray();
}

MIntArray boundaryLoop(const MDagPath& meshPath, int v)
{
    Edges edges(meshPath);
    int first = -1, second = -1;
    firstAndLastOnBoundary(edges, edgesAround(meshPath, v), first, second);
    if (first < 0)
        return MIntArray();
    MIntArray list;
    list.append(first);
    // The loop leaves v along `first`; `second`, the other border edge at v, counts as the
    // edge before it, so the walk goes away from v and comes back to it by `second`.
    int before = second;
    int current = first;
    MIntArray next;
    for (int step = 0; step < kBoundaryStepLimit; ++step) {
        edges.connected(current, next);
        for (const int e : next) {
            if (!edges.onBoundary(e))
                continue;
            if (list.length() > 3 && edges.hasEnd(e, v)) {
                list.append(e);
                return list;
            }
            if (e != before && e != current) {
                list.append(e);
                before = current;
                current = e;
                break;
            }
        }
    }
    return MIntArray();
}

MIntArray extendBoundaryPath(const MDagPath& meshPath, const MIntArray& path, int a, int b)
{
    if (path.length() < 2)
        return boundaryPath(meshPath, a, b, kBoundaryPathLimit);
    Edges edges(meshPath);
    MIntArray list;
    list.append(path[0]);
    MIntArray next;
    edges.connected(path[0], next);
    int backEdge = -1;
    for (const int e : next)
        if (e != path[1] && edges.onBoundary(e))
            backEdge = e;
    if (edges.hasEnd(path[0], b))
        return list;
    int current = path[0];
    for (int step = 0; step < kBoundaryStepLimit; ++step) {
        edges.connected(current, next);
        for (const int e : next) {
            if (!edges.onBoundary(e) || arrayContains(e, list) || (step == 0 && e == backEdge))
                continue;
            list.append(e);
            if (edges.hasEnd(e, b))
                return list;
            current = e;
            break;
        }
    }
    return MIntArray();
}

MIntArray walkBoundarySteps(const MDagPath& meshPath, int startEdge, int avoidEdge, int steps)
{
    Edges edges(meshPath);
    MIntArray list;
    list.append(startEdge);
    int current = startEdge;
    MIntArray next;
    for (int step = 0; step < steps && step < kBoundaryStepLimit; ++step) {
        edges.connected(current, next);
        for (const int e : next) {
            if (e == avoidEdge || !edges.onBoundary(e) || arrayContains(e, list))
                continue;
            list.append(e);
            current = e;
        }
    }
    return list;
}

MIntArray edgesAroundVertex(const MDagPath& meshPath, int v) { return edgesAround(meshPath, v); }

bool edgeEnds(const MDagPath& meshPath, int e, int& v0, int& v1)
{
    Edges edges(meshPath);
    return edges.ends(e, v0, v1);
}

MIntArray edgesToVertices(const MDagPath& meshPath, const MIntArray& runEdges, int start)
{
    Edges edges(meshPath);
    MIntArray vertices;
    vertices.append(start);
    int last = start;
    for (const int e : runEdges) {
        int v0, v1;
        if (!edges.ends(e, v0, v1))
            continue;
        last = v0 != last ? v0 : v1;
        vertices.append(last);
    }
    return vertices;
}

} // namespace tq
