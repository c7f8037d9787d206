#include <maya/MItMeshPolygon.h>

#include "dg/fnMacros.h"
#include "meshiter/meshIteration.h"

#include <algorithm>
#include <vector>

using host::MeshElement;
using host::MeshGeometry;
using host::MeshIteration;

namespace {

constexpr unsigned int kNoIndex = static_cast<unsigned int>(-1);

// Drops repeats, keeping each value where it first appears; sorting keeps it n log n even
// for a polygon with thousands of corners.
void keepFirst(std::vector<int>& list)
{
    std::vector<std::pair<int, std::size_t>> order(list.size());
    for (std::size_t i = 0; i < list.size(); ++i)
        order[i] = {list[i], i};
    std::sort(order.begin(), order.end());
    std::vector<char> keep(list.size(), 0);
    for (std::size_t i = 0; i < order.size(); ++i)
        keep[order[i].second] = i == 0 || order[i].first != order[i - 1].first;
    std::size_t out = 0;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (keep[i])
            list[out++] = list[i];
    list.resize(out);
}

MIntArray toArray(const std::vector<int>& list)
{
    MIntArray out;
    out.setLength(static_cast<unsigned int>(list.size()));
    for (std::size_t i = 0; i < list.size(); ++i)
        out[static_cast<unsigned int>(i)] = list[i];
    return out;
}

// Through the adjacency, so the cost is the vertex's or edge's valence, not the polygon's size.
bool inPolygon(const MeshGeometry& g, int f, int v)
{
    const host::MeshAdjacency& adj = g.adjacency();
    for (int k = adj.vertexFaceStart[v]; k < adj.vertexFaceStart[v + 1]; ++k)
        if (adj.vertexFaces[k] == f)
            return true;
    return false;
}

bool isPolygonEdge(const MeshGeometry& g, int f, int e)
{
    const host::MeshAdjacency& adj = g.adjacency();
    for (int k = adj.edgeFaceStart[e]; k < adj.edgeFaceStart[e + 1]; ++k)
        if (adj.edgeFaces[k] == f)
            return true;
    return false;
}

// Faces sharing an edge with f, in the order of f's edges.
std::vector<int> neighbourFaces(const MeshGeometry& g, int f)
{
    const host::MeshAdjacency& adj = g.adjacency();
    std::vector<int> out;
    const int start = g.polygonStart(f);
    for (int i = 0; i < g.polygonSize(f); ++i) {
        const int e = g.faceVertexEdge(start + i);
        for (int k = adj.edgeFaceStart[e]; k < adj.edgeFaceStart[e + 1]; ++k)
            if (adj.edgeFaces[k] != f)
                out.push_back(adj.edgeFaces[k]);
    }
    keepFirst(out);
    return out;
}

// Edges at f's vertices that are not f's own, in the order of f's corners.
std::vector<int> neighbourEdges(const MeshGeometry& g, int f)
{
    const host::MeshAdjacency& adj = g.adjacency();
    std::vector<int> out;
    const int* ids = g.polygonVertices(f);
    for (int i = 0; i < g.polygonSize(f); ++i)
        for (int k = adj.vertexEdgeStart[ids[i]]; k < adj.vertexEdgeStart[ids[i] + 1]; ++k)
            if (!isPolygonEdge(g, f, adj.vertexEdges[k]))
                out.push_back(adj.vertexEdges[k]);
    keepFirst(out);
    return out;
}

} // namespace

MItMeshPolygon::MItMeshPolygon(const MObject& polyObject, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kPolygon))
{
    MStatus s = reset(polyObject);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshPolygon::MItMeshPolygon(const MDagPath& polyObject, MObject& component, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kPolygon))
{
    MStatus s = reset(polyObject, component);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshPolygon::~MItMeshPolygon() = default;

const char* MItMeshPolygon::className() { return "MItMeshPolygon"; }

bool MItMeshPolygon::isDone(MStatus* ReturnStatus)
{
    TQHOST_SET_STATUS(ReturnStatus, fIt->attached() ? MStatus::kSuccess : MStatus::kFailure);
    return fIt->done();
}

MStatus MItMeshPolygon::next() { return fIt->next(); }

MStatus MItMeshPolygon::reset() { return fIt->restart(); }

MStatus MItMeshPolygon::reset(const MObject& polyObject) { return fIt->attach(polyObject, MDagPath(), MObject()); }

MStatus MItMeshPolygon::reset(const MDagPath& polyObject, MObject& component)
{
    if (!polyObject.isValid()) {
        fIt->detach();
        return MStatus::kInvalidParameter;
    }
    return fIt->attach(MObject(), polyObject, component);
}

unsigned int MItMeshPolygon::count(MStatus* ReturnStatus) { return static_cast<unsigned int>(fIt->count(ReturnStatus)); }

unsigned int MItMeshPolygon::polygonVertexCount(MStatus* ReturnStatus)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return g ? static_cast<unsigned int>(g->polygonSize(fIt->current())) : 0u;
}

MPoint MItMeshPolygon::center(MSpace::Space space, MStatus* ReturnStatus)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    MPoint c;
    if (s) {
        if (const MeshGeometry* g = fIt->currentMesh(&s)) {
            // The mean of the corners, as the polygon's centre is everywhere in the API.
            const int f = fIt->current();
            const int* ids = g->polygonVertices(f);
            const int n = g->polygonSize(f);
            double x = 0.0, y = 0.0, z = 0.0;
            for (int i = 0; i < n; ++i) {
                const MFloatPoint p = g->point(ids[i]);
                x += p.x;
                y += p.y;
                z += p.z;
            }
            c = map.out(MPoint(x / n, y / n, z / n));
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return c;
}

MObject MItMeshPolygon::polygon(MStatus* ReturnStatus) { return currentItem(ReturnStatus); }

MObject MItMeshPolygon::currentItem(MStatus* ReturnStatus)
{
    MStatus s;
    MObject item;
    if (fIt->currentMesh(&s))
        item = host::singleElementComponent(MeshElement::kPolygon, fIt->current());
    TQHOST_SET_STATUS(ReturnStatus, s);
    return item;
}

unsigned int MItMeshPolygon::index(MStatus* ReturnStatus)
{
    MStatus s;
    const unsigned int f = fIt->currentMesh(&s) ? static_cast<unsigned int>(fIt->current()) : kNoIndex;
    TQHOST_SET_STATUS(ReturnStatus, s);
    return f;
}

MStatus MItMeshPolygon::setIndex(int index, int& prevIndex) { return fIt->jump(index, prevIndex); }

unsigned int MItMeshPolygon::vertexIndex(int index, MStatus* ReturnStatus)
{
    MStatus s;
    unsigned int v = kNoIndex;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        const int f = fIt->current();
        if (index >= 0 && index < g->polygonSize(f))
            v = static_cast<unsigned int>(g->polygonVertices(f)[index]);
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return v;
}

MStatus MItMeshPolygon::getVertices(MIntArray& vertices)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    vertices = MIntArray(g->polygonVertices(f), static_cast<unsigned int>(g->polygonSize(f)));
    return MStatus::kSuccess;
}

MPoint MItMeshPolygon::point(int index, MSpace::Space space, MStatus* ReturnStatus)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    MPoint p;
    if (s) {
        if (const MeshGeometry* g = fIt->currentMesh(&s)) {
            const int f = fIt->current();
            if (index >= 0 && index < g->polygonSize(f))
                p = map.out(g->point(g->polygonVertices(f)[index]));
            else
                s = MStatus::kInvalidParameter;
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return p;
}

void MItMeshPolygon::getPoints(MPointArray& pointArray, MSpace::Space space, MStatus* ReturnStatus)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    pointArray.clear();
    if (s) {
        if (const MeshGeometry* g = fIt->currentMesh(&s)) {
            const int f = fIt->current();
            const int* ids = g->polygonVertices(f);
            for (int i = 0; i < g->polygonSize(f); ++i)
                pointArray.append(map.out(g->point(ids[i])));
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MStatus MItMeshPolygon::setPoint(const MPoint& point, unsigned int index, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    if (index >= static_cast<unsigned int>(g->polygonSize(f)))
        return MStatus::kInvalidParameter;
    return fIt->setVertex(g->polygonVertices(f)[index], map.in(point));
}

MStatus MItMeshPolygon::setPoints(MPointArray& pointArray, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    const int n = g->polygonSize(f);
    if (pointArray.length() != static_cast<unsigned int>(n))
        return MStatus::kInvalidParameter;
    const std::vector<int> ids(g->polygonVertices(f), g->polygonVertices(f) + n);
    MeshGeometry* edit = fIt->beginEdit(&s);
    if (!edit)
        return s;
    for (int i = 0; i < n; ++i) {
        const int v = ids[static_cast<std::size_t>(i)];
        if (!edit->validVertex(v))
            continue;
        const MPoint p = map.in(pointArray[static_cast<unsigned int>(i)]);
        edit->setPoint(v, float(p.x), float(p.y), float(p.z));
    }
    fIt->endEdit();
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getNormal(MVector& normal, MSpace::Space space) const
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    normal = map.outNormal(g->polygonNormal(fIt->current()));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getNormal(unsigned int vertexIndex, MVector& normal, MSpace::Space space) const
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    if (vertexIndex >= static_cast<unsigned int>(g->polygonSize(f)))
        return MStatus::kInvalidParameter;
    normal = map.outNormal(host::faceVertexNormal(*g, f, static_cast<int>(vertexIndex)));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getNormals(MVectorArray& vectorArray, MSpace::Space space) const
{
    MStatus s;
    const host::SpaceMap* map = fIt->spaceMap(space, s);
    if (!map)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    const int n = g->polygonSize(f);
    // Walks call this once a face: the array is sized in place rather than emptied and grown.
    s = vectorArray.setLength(static_cast<unsigned int>(n));
    if (!s)
        return s;
    const std::vector<MVector>* vertexNormals = fIt->wholeWalkVertexNormals(*g);
    for (int i = 0; i < n; ++i)
        vectorArray[static_cast<unsigned int>(i)] =
            map->outNormal(vertexNormals ? host::faceVertexNormal(*g, f, i, *vertexNormals)
                                         : host::faceVertexNormal(*g, f, i));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getEdges(MIntArray& edges)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    const int start = g->polygonStart(f);
    edges.clear();
    for (int i = 0; i < g->polygonSize(f); ++i)
        edges.append(g->faceVertexEdge(start + i));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedFaces(MIntArray& faces)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    faces = toArray(neighbourFaces(*g, fIt->current()));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedEdges(MIntArray& edges)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    edges = toArray(neighbourEdges(*g, fIt->current()));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedVertices(MIntArray& vertices)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int f = fIt->current();
    std::vector<int> out;
    for (int e : neighbourEdges(*g, f))
        for (int v : {g->edgeStart(e), g->edgeEnd(e)})
            if (!inPolygon(*g, f, v))
                out.push_back(v);
    keepFirst(out);
    vertices = toArray(out);
    return MStatus::kSuccess;
}

bool MItMeshPolygon::isConnectedToFace(int index, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validPolygon(index)) {
            const std::vector<int> faces = neighbourFaces(*g, fIt->current());
            connected = std::find(faces.begin(), faces.end(), index) != faces.end();
        } else {
            s = MStatus::kInvalidParameter;
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

bool MItMeshPolygon::isConnectedToEdge(int index, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validEdge(index))
            connected = inPolygon(*g, fIt->current(), g->edgeStart(index)) ||
                        inPolygon(*g, fIt->current(), g->edgeEnd(index));
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

bool MItMeshPolygon::isConnectedToVertex(int index, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validVertex(index))
            connected = inPolygon(*g, fIt->current(), index);
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

MStatus MItMeshPolygon::numConnectedFaces(int& faceCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    faceCount = static_cast<int>(neighbourFaces(*g, fIt->current()).size());
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::numConnectedEdges(int& edgeCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    edgeCount = static_cast<int>(neighbourEdges(*g, fIt->current()).size());
    return MStatus::kSuccess;
}

bool MItMeshPolygon::onBoundary(MStatus* ReturnStatus)
{
    MStatus s;
    bool boundary = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        const int f = fIt->current();
        const int start = g->polygonStart(f);
        for (int i = 0; i < g->polygonSize(f) && !boundary; ++i)
            boundary = g->onBoundaryEdge(g->faceVertexEdge(start + i));
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return boundary;
}

MStatus MItMeshPolygon::getArea(double& area, MSpace::Space space)
{
    MPointArray points;
    MStatus s;
    getPoints(points, space, &s);
    if (!s)
        return s;
    // Half the length of the Newell vector of the corners in the requested space.
    MVector n(0.0, 0.0, 0.0);
    const unsigned int count = points.length();
    for (unsigned int i = 0; i < count; ++i) {
        const MPoint& a = points[i];
        const MPoint& b = points[(i + 1) % count];
        n.x += (a.y - b.y) * (a.z + b.z);
        n.y += (a.z - b.z) * (a.x + b.x);
        n.z += (a.x - b.x) * (a.y + b.y);
    }
    area = 0.5 * n.length();
    return MStatus::kSuccess;
}

bool MItMeshPolygon::zeroArea(MStatus* ReturnStatus)
{
    double area = 0.0;
    MStatus s = getArea(area);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return s && area <= 1e-12;
}

// Edits reach the mesh as they are made and every query reads the current geometry, so
// there is nothing to flush or refresh.
MStatus MItMeshPolygon::updateSurface() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }

MStatus MItMeshPolygon::geomChanged() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }
