#include <maya/MItMeshVertex.h>

#include "dg/fnMacros.h"
#include "meshiter/meshIteration.h"

using host::MeshElement;
using host::MeshGeometry;
using host::MeshIteration;

MItMeshVertex::MItMeshVertex(MObject& polyObject, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = reset(polyObject);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshVertex::MItMeshVertex(const MDagPath& polyObject, MObject& component, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = reset(polyObject, component);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshVertex::~MItMeshVertex() = default;

const char* MItMeshVertex::className() { return "MItMeshVertex"; }

bool MItMeshVertex::isDone(MStatus* ReturnStatus)
{
    TQHOST_SET_STATUS(ReturnStatus, fIt->attached() ? MStatus::kSuccess : MStatus::kFailure);
    return fIt->done();
}

MStatus MItMeshVertex::next() { return fIt->next(); }

MStatus MItMeshVertex::reset() { return fIt->restart(); }

MStatus MItMeshVertex::reset(MObject& polyObject) { return fIt->attach(polyObject, MDagPath(), MObject()); }

MStatus MItMeshVertex::reset(const MDagPath& polyObject, MObject& component)
{
    if (!polyObject.isValid()) {
        fIt->detach();
        return MStatus::kInvalidParameter;
    }
    return fIt->attach(MObject(), polyObject, component);
}

int MItMeshVertex::count(MStatus* ReturnStatus) { return fIt->count(ReturnStatus); }

int MItMeshVertex::index(MStatus* ReturnStatus)
{
    MStatus s;
    const int v = fIt->currentMesh(&s) ? fIt->current() : -1;
    TQHOST_SET_STATUS(ReturnStatus, s);
    return v;
}

MStatus MItMeshVertex::setIndex(int index, int& prevIndex) { return fIt->jump(index, prevIndex); }

MObject MItMeshVertex::vertex(MStatus* ReturnStatus) { return currentItem(ReturnStatus); }

MObject MItMeshVertex::currentItem(MStatus* ReturnStatus)
{
    MStatus s;
    MObject item;
    if (fIt->currentMesh(&s))
        item = host::singleElementComponent(MeshElement::kVertex, fIt->current());
    TQHOST_SET_STATUS(ReturnStatus, s);
    return item;
}

MPoint MItMeshVertex::position(MSpace::Space space, MStatus* ReturnStatus)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    MPoint p;
    if (s)
        if (const MeshGeometry* g = fIt->currentMesh(&s))
            p = map.out(g->point(fIt->current()));
    TQHOST_SET_STATUS(ReturnStatus, s);
    return p;
}

MStatus MItMeshVertex::setPosition(const MPoint& point, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s || !fIt->currentMesh(&s))
        return s;
    return fIt->setVertex(fIt->current(), map.in(point));
}

MStatus MItMeshVertex::translateBy(const MVector& vector, MSpace::Space space)
{
    MStatus s;
    const MPoint p = position(space, &s);
    return s ? setPosition(p + vector, space) : s;
}

MStatus MItMeshVertex::getNormal(MVector& vector, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    vector = map.outNormal(g->vertexNormal(fIt->current(), true));
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getNormal(MVector& vector, int faceIndex, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    if (!g->validPolygon(faceIndex))
        return MStatus::kInvalidParameter;
    const int corner = host::cornerOf(*g, faceIndex, fIt->current());
    if (corner < 0)
        return MStatus::kInvalidParameter; // the face does not use this vertex
    vector = map.outNormal(host::faceVertexNormal(*g, faceIndex, corner));
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getNormals(MVectorArray& vectorArray, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int v = fIt->current();
    const host::MeshAdjacency& adj = g->adjacency();
    vectorArray.clear();
    for (int k = adj.vertexFaceStart[v]; k < adj.vertexFaceStart[v + 1]; ++k) {
        const int f = adj.vertexFaces[k];
        vectorArray.append(map.outNormal(host::faceVertexNormal(*g, f, host::cornerOf(*g, f, v))));
    }
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedFaces(MIntArray& faceList)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int v = fIt->current();
    const host::MeshAdjacency& adj = g->adjacency();
    faceList.clear();
    for (int k = adj.vertexFaceStart[v]; k < adj.vertexFaceStart[v + 1]; ++k)
        faceList.append(adj.vertexFaces[k]);
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedEdges(MIntArray& edgeList)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int v = fIt->current();
    const host::MeshAdjacency& adj = g->adjacency();
    edgeList.clear();
    for (int k = adj.vertexEdgeStart[v]; k < adj.vertexEdgeStart[v + 1]; ++k)
        edgeList.append(adj.vertexEdges[k]);
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedVertices(MIntArray& vertexList)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const int v = fIt->current();
    const host::MeshAdjacency& adj = g->adjacency();
    vertexList.clear();
    // In the order of the connecting edges; an edge joins two distinct vertices, so no repeats.
    for (int k = adj.vertexEdgeStart[v]; k < adj.vertexEdgeStart[v + 1]; ++k) {
        const int e = adj.vertexEdges[k];
        vertexList.append(g->edgeStart(e) == v ? g->edgeEnd(e) : g->edgeStart(e));
    }
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::numConnectedFaces(int& faceCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const host::MeshAdjacency& adj = g->adjacency();
    faceCount = adj.vertexFaceStart[fIt->current() + 1] - adj.vertexFaceStart[fIt->current()];
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::numConnectedEdges(int& edgeCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const host::MeshAdjacency& adj = g->adjacency();
    edgeCount = adj.vertexEdgeStart[fIt->current() + 1] - adj.vertexEdgeStart[fIt->current()];
    return MStatus::kSuccess;
}

bool MItMeshVertex::connectedToFace(int faceIndex, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validPolygon(faceIndex))
            connected = host::cornerOf(*g, faceIndex, fIt->current()) >= 0;
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

bool MItMeshVertex::connectedToEdge(int edgeIndex, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validEdge(edgeIndex))
            connected = g->edgeStart(edgeIndex) == fIt->current() || g->edgeEnd(edgeIndex) == fIt->current();
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

MStatus MItMeshVertex::getOppositeVertex(int& vertexId, int edgeId)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    if (!g->validEdge(edgeId))
        return MStatus::kInvalidParameter;
    const int v = fIt->current();
    if (g->edgeStart(edgeId) == v)
        vertexId = g->edgeEnd(edgeId);
    else if (g->edgeEnd(edgeId) == v)
        vertexId = g->edgeStart(edgeId);
    else
        return MStatus::kInvalidParameter; // the edge does not touch this vertex
    return MStatus::kSuccess;
}

bool MItMeshVertex::onBoundary(MStatus* ReturnStatus)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return g && g->onBoundaryVertex(fIt->current());
}

// Edits reach the mesh as they are made and every query reads the current geometry, so
// there is nothing to flush or refresh.
MStatus MItMeshVertex::updateSurface() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }

MStatus MItMeshVertex::geomChanged() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }
