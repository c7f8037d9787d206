#include <maya/MItMeshEdge.h>

#include "dg/fnMacros.h"
#include "meshiter/meshIteration.h"

using host::MeshElement;
using host::MeshGeometry;
using host::MeshIteration;

MItMeshEdge::MItMeshEdge(MObject& polyObject, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kEdge))
{
    MStatus s = reset(polyObject);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshEdge::MItMeshEdge(MObject& polyObject, MObject& component, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kEdge))
{
    MStatus s = reset(polyObject, component);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshEdge::MItMeshEdge(const MDagPath& polyObject, MObject& component, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kEdge))
{
    MStatus s = reset(polyObject, component);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItMeshEdge::~MItMeshEdge() = default;

const char* MItMeshEdge::className() { return "MItMeshEdge"; }

bool MItMeshEdge::isDone(MStatus* ReturnStatus)
{
    TQHOST_SET_STATUS(ReturnStatus, fIt->attached() ? MStatus::kSuccess : MStatus::kFailure);
    return fIt->done();
}

MStatus MItMeshEdge::next() { return fIt->next(); }

MStatus MItMeshEdge::reset() { return fIt->restart(); }

MStatus MItMeshEdge::reset(MObject& polyObject, MObject& component)
{
    return fIt->attach(polyObject, MDagPath(), component);
}

MStatus MItMeshEdge::reset(const MDagPath& polyObject, MObject& component)
{
    if (!polyObject.isValid()) {
        fIt->detach();
        return MStatus::kInvalidParameter;
    }
    return fIt->attach(MObject(), polyObject, component);
}

int MItMeshEdge::count(MStatus* ReturnStatus) { return fIt->count(ReturnStatus); }

MPoint MItMeshEdge::center(MSpace::Space space, MStatus* ReturnStatus)
{
    MStatus s;
    MPoint a = point(0, space, &s);
    MPoint c;
    if (s) {
        const MPoint b = point(1, space, &s);
        c = MPoint((a.x + b.x) * 0.5, (a.y + b.y) * 0.5, (a.z + b.z) * 0.5);
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return c;
}

MPoint MItMeshEdge::point(int index, MSpace::Space space, MStatus* ReturnStatus)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    MPoint p;
    if (s) {
        if (const MeshGeometry* g = fIt->currentMesh(&s)) {
            if (index == 0 || index == 1) {
                const int e = fIt->current();
                p = map.out(g->point(index == 0 ? g->edgeStart(e) : g->edgeEnd(e)));
            } else {
                s = MStatus::kInvalidParameter;
            }
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return p;
}

MStatus MItMeshEdge::setPoint(const MPoint& point, unsigned int index, MSpace::Space space)
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    if (index > 1)
        return MStatus::kInvalidParameter;
    const int e = fIt->current();
    return fIt->setVertex(index == 0 ? g->edgeStart(e) : g->edgeEnd(e), map.in(point));
}

bool MItMeshEdge::isSmooth(MStatus* ReturnStatus) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return g && g->edgeSmooth(fIt->current());
}

MStatus MItMeshEdge::setSmoothing(bool smooth)
{
    MStatus s;
    if (!fIt->currentMesh(&s))
        return s;
    MeshGeometry* g = fIt->beginEdit(&s);
    if (!g)
        return s;
    if (g->validEdge(fIt->current()))
        g->setEdgeSmooth(fIt->current(), smooth);
    else
        s = MStatus::kFailure;
    fIt->endEdit();
    return s;
}

// Smoothing is stored per edge and needs no tidying.
MStatus MItMeshEdge::cleanupSmoothing() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }

MStatus MItMeshEdge::getLength(double& length, MSpace::Space space)
{
    MStatus s;
    const MPoint a = point(0, space, &s);
    if (!s)
        return s;
    const MPoint b = point(1, space, &s);
    if (!s)
        return s;
    length = a.distanceTo(b);
    return MStatus::kSuccess;
}

int MItMeshEdge::index(int index, MStatus* ReturnStatus)
{
    MStatus s;
    int v = -1;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (index == 0 || index == 1)
            v = index == 0 ? g->edgeStart(fIt->current()) : g->edgeEnd(fIt->current());
        else
            s = MStatus::kInvalidParameter;
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return v;
}

int MItMeshEdge::index(MStatus* ReturnStatus) const
{
    MStatus s;
    const int e = fIt->currentMesh(&s) ? fIt->current() : -1;
    TQHOST_SET_STATUS(ReturnStatus, s);
    return e;
}

MStatus MItMeshEdge::setIndex(int index, int& prevIndex) { return fIt->jump(index, prevIndex); }

MObject MItMeshEdge::edge(MStatus* ReturnStatus) { return currentItem(ReturnStatus); }

MObject MItMeshEdge::currentItem(MStatus* ReturnStatus)
{
    MStatus s;
    MObject item;
    if (fIt->currentMesh(&s))
        item = host::singleElementComponent(MeshElement::kEdge, fIt->current());
    TQHOST_SET_STATUS(ReturnStatus, s);
    return item;
}

int MItMeshEdge::getConnectedFaces(MIntArray& faceList, MStatus* ReturnStatus) const
{
    MStatus s;
    faceList.clear();
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        const host::MeshAdjacency& adj = g->adjacency();
        const int e = fIt->current();
        for (int k = adj.edgeFaceStart[e]; k < adj.edgeFaceStart[e + 1]; ++k)
            faceList.append(adj.edgeFaces[k]);
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return static_cast<int>(faceList.length());
}

int MItMeshEdge::getConnectedEdges(MIntArray& edgeList, MStatus* ReturnStatus) const
{
    MStatus s;
    edgeList.clear();
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        const host::MeshAdjacency& adj = g->adjacency();
        const int e = fIt->current();
        // The edges at the start vertex, then those at the end vertex; only this edge joins
        // both, so leaving it out leaves no repeats.
        for (int v : {g->edgeStart(e), g->edgeEnd(e)})
            for (int k = adj.vertexEdgeStart[v]; k < adj.vertexEdgeStart[v + 1]; ++k)
                if (adj.vertexEdges[k] != e)
                    edgeList.append(adj.vertexEdges[k]);
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return static_cast<int>(edgeList.length());
}

MStatus MItMeshEdge::numConnectedFaces(int& faceCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const host::MeshAdjacency& adj = g->adjacency();
    faceCount = adj.edgeFaceStart[fIt->current() + 1] - adj.edgeFaceStart[fIt->current()];
    return MStatus::kSuccess;
}

MStatus MItMeshEdge::numConnectedEdges(int& edgeCount) const
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    if (!g)
        return s;
    const host::MeshAdjacency& adj = g->adjacency();
    const int e = fIt->current();
    edgeCount = 0;
    for (int v : {g->edgeStart(e), g->edgeEnd(e)})
        edgeCount += adj.vertexEdgeStart[v + 1] - adj.vertexEdgeStart[v] - 1;
    return MStatus::kSuccess;
}

bool MItMeshEdge::connectedToFace(int index, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        if (g->validPolygon(index)) {
            const host::MeshAdjacency& adj = g->adjacency();
            const int e = fIt->current();
            for (int k = adj.edgeFaceStart[e]; k < adj.edgeFaceStart[e + 1] && !connected; ++k)
                connected = adj.edgeFaces[k] == index;
        } else {
            s = MStatus::kInvalidParameter;
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

bool MItMeshEdge::connectedToEdge(int index, MStatus* ReturnStatus)
{
    MStatus s;
    bool connected = false;
    if (const MeshGeometry* g = fIt->currentMesh(&s)) {
        const int e = fIt->current();
        if (g->validEdge(index)) {
            const int a = g->edgeStart(e), b = g->edgeEnd(e);
            connected = index != e && (g->edgeStart(index) == a || g->edgeStart(index) == b ||
                                       g->edgeEnd(index) == a || g->edgeEnd(index) == b);
        } else {
            s = MStatus::kInvalidParameter;
        }
    }
    TQHOST_SET_STATUS(ReturnStatus, s);
    return connected;
}

bool MItMeshEdge::onBoundary(MStatus* ReturnStatus)
{
    MStatus s;
    const MeshGeometry* g = fIt->currentMesh(&s);
    TQHOST_SET_STATUS(ReturnStatus, s);
    return g && g->onBoundaryEdge(fIt->current());
}

// Edits reach the mesh as they are made and every query reads the current geometry, so
// there is nothing to flush or refresh.
MStatus MItMeshEdge::updateSurface() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }

MStatus MItMeshEdge::geomChanged() { return fIt->attached() ? MStatus::kSuccess : MStatus::kFailure; }
