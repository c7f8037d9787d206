#include "meshiter/meshIteration.h"

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/evaluation.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include <memory>

namespace host {

MFn::Type componentKindOf(MeshElement kind)
{
    switch (kind) {
    case MeshElement::kVertex:
        return MFn::kMeshVertComponent;
    case MeshElement::kEdge:
        return MFn::kMeshEdgeComponent;
    case MeshElement::kPolygon:
        break;
    }
    return MFn::kMeshPolygonComponent;
}

int elementTotal(const MeshGeometry& mesh, MeshElement kind)
{
    switch (kind) {
    case MeshElement::kVertex:
        return mesh.numVertices();
    case MeshElement::kEdge:
        return mesh.numEdges();
    case MeshElement::kPolygon:
        break;
    }
    return mesh.numPolygons();
}

MObject singleElementComponent(MeshElement kind, int element)
{
    auto body = std::make_shared<ComponentBody>(componentKindOf(kind));
    body->elements.push_back(element);
    return Access::object(body);
}

int cornerOf(const MeshGeometry& mesh, int polygon, int vertex)
{
    const int* ids = mesh.polygonVertices(polygon);
    for (int i = 0; i < mesh.polygonSize(polygon); ++i)
        if (ids[i] == vertex)
            return i;
    return -1;
}

MVector faceVertexNormal(const MeshGeometry& mesh, int polygon, int corner)
{
    const int n = mesh.polygonSize(polygon);
    const int start = mesh.polygonStart(polygon);
    const int incoming = mesh.faceVertexEdge(start + (corner + n - 1) % n);
    const int outgoing = mesh.faceVertexEdge(start + corner);
    if (mesh.edgeSmooth(incoming) && mesh.edgeSmooth(outgoing))
        return mesh.vertexNormal(mesh.polygonVertices(polygon)[corner], true);
    return mesh.polygonNormal(polygon);
}

MVector faceVertexNormal(const MeshGeometry& mesh, int polygon, int corner, const std::vector<MVector>& vertexNormals)
{
    const int n = mesh.polygonSize(polygon);
    const int start = mesh.polygonStart(polygon);
    const int incoming = mesh.faceVertexEdge(start + (corner + n - 1) % n);
    const int outgoing = mesh.faceVertexEdge(start + corner);
    if (mesh.edgeSmooth(incoming) && mesh.edgeSmooth(outgoing))
        return vertexNormals[static_cast<std::size_t>(mesh.polygonVertices(polygon)[corner])];
    return mesh.polygonNormal(polygon);
}

const std::vector<MVector>* MeshIteration::wholeWalkVertexNormals(const MeshGeometry& mesh) const
{
    if (!fWhole)
        return nullptr;
    if (fNormalsMesh != &mesh || fNormalsVersion != mesh.version() ||
        fVertexNormals.size() != static_cast<std::size_t>(mesh.numVertices())) {
        mesh.vertexNormals(true, fVertexNormals);
        fNormalsMesh = &mesh;
        fNormalsVersion = mesh.version();
    }
    return &fVertexNormals;
}

// ---- SpaceMap

MPoint SpaceMap::out(const MFloatPoint& p) const { return out(MPoint(p.x, p.y, p.z)); }

MPoint SpaceMap::out(const MPoint& p) const { return fWorld ? p * fMatrix : p; }

MVector SpaceMap::outNormal(const MVector& n) const
{
    if (!fWorld)
        return n;
    // MVector::transformAsNormal with the inverse made once for the map, not once per normal.
    const auto& a = fInverse.matrix;
    MVector result(n.x * a[0][0] + n.y * a[0][1] + n.z * a[0][2], n.x * a[1][0] + n.y * a[1][1] + n.z * a[1][2],
                   n.x * a[2][0] + n.y * a[2][1] + n.z * a[2][2]);
    result.normalize();
    return result;
}

MPoint SpaceMap::in(const MPoint& p) const
{
    MPoint q = p;
    if (q.w != 1.0 && q.w != 0.0)
        q.cartesianize();
    q.w = 1.0;
    return fWorld ? q * fInverse : q;
}

// ---- MeshIteration

MStatus MeshIteration::attach(const MObject& object, const MDagPath& path, const MObject& component)
{
    detach();
    MObject target = object;
    MDagPath shapePath;
    if (path.isValid()) {
        shapePath = path;
        if (!shapePath.hasFn(MFn::kMesh) && !shapePath.extendToShape())
            return MStatus::kInvalidParameter;
        target = shapePath.node();
    }
    MStatus status = resolveMeshTarget(target, shapePath, fTarget);
    if (!status) {
        fTarget = MeshTarget();
        return status;
    }
    if (!component.isNull()) {
        auto body = Access::as<ComponentBody>(component);
        if (!body || body->apiType() != componentKindOf(fKind)) {
            fTarget = MeshTarget();
            return MStatus::kInvalidParameter;
        }
        if (!body->complete) {
            fWhole = false;
            fElements = body->elements; // a copy: the component may be edited while we walk
        }
    }
    return restart();
}

void MeshIteration::detach()
{
    fTarget = MeshTarget();
    fResolvedData = MObject();
    fResolvedMesh = nullptr;
    fWorldMapKept = false;
    fWhole = true;
    fElements.clear();
    fPos = 0;
    fCurrent = -1;
    fCountTotal = -1;
    fCount = 0;
}

MStatus MeshIteration::restart()
{
    if (!attached())
        return MStatus::kFailure;
    fPos = 0;
    settle();
    return MStatus::kSuccess;
}

void MeshIteration::settle()
{
    fCurrent = -1;
    const MeshGeometry* g = mesh(nullptr);
    if (!g)
        return;
    const int total = elementTotal(*g, fKind);
    if (fWhole) {
        if (fPos < static_cast<std::size_t>(total))
            fCurrent = static_cast<int>(fPos);
        return;
    }
    for (; fPos < fElements.size(); ++fPos) {
        const int e = fElements[fPos];
        if (e >= 0 && e < total) {
            fCurrent = e;
            return;
        }
    }
}

MStatus MeshIteration::next()
{
    if (!attached() || done())
        return MStatus::kFailure;
    ++fPos;
    settle();
    return MStatus::kSuccess;
}

int MeshIteration::count(MStatus* status)
{
    const MeshGeometry* g = mesh(status);
    if (!g)
        return 0;
    const int total = elementTotal(*g, fKind);
    if (fWhole)
        return total;
    if (fCountTotal != total) {
        fCount = 0;
        for (int e : fElements)
            fCount += e >= 0 && e < total ? 1 : 0;
        fCountTotal = total;
    }
    return fCount;
}

MStatus MeshIteration::jump(int index, int& previous)
{
    MStatus status;
    const MeshGeometry* g = mesh(&status);
    if (!g)
        return status;
    if (index < 0 || index >= elementTotal(*g, fKind))
        return MStatus::kInvalidParameter;
    previous = fCurrent;
    fCurrent = index;
    if (fWhole)
        fPos = static_cast<std::size_t>(index);
    return MStatus::kSuccess;
}

const MeshGeometry* MeshIteration::mesh(MStatus* status) const
{
    if (!attached()) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return nullptr;
    }
    if (fResolvedMesh && fMeshStamp == sceneStamp()) {
        if (status)
            *status = MStatus::kSuccess;
        return fResolvedMesh;
    }
    fResolvedMesh = nullptr;
    if (!fTarget.shape)
        return readMesh(fTarget, status);
    fResolvedData = shapeOutput(fTarget.shape, status);
    const MeshGeometry* g = fResolvedData.isNull() ? nullptr : meshOf(fResolvedData);
    // Stamped after the read: pulling the output may itself have computed and written.
    if (g) {
        fResolvedMesh = g;
        fMeshStamp = sceneStamp();
    }
    return g;
}

const MeshGeometry* MeshIteration::currentMesh(MStatus* status) const
{
    const MeshGeometry* g = mesh(status);
    if (!g)
        return nullptr;
    if (fCurrent < 0 || fCurrent >= elementTotal(*g, fKind)) {
        if (status)
            *status = MStatus::kFailure;
        return nullptr;
    }
    return g;
}

MeshGeometry* MeshIteration::beginEdit(MStatus* status) const
{
    if (!attached()) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return nullptr;
    }
    return host::beginEdit(fTarget, status);
}

void MeshIteration::endEdit() const { host::endEdit(fTarget); }

MStatus MeshIteration::setVertex(int vertex, const MPoint& point) const
{
    MStatus status;
    MeshGeometry* g = beginEdit(&status);
    if (!g)
        return status;
    if (!g->validVertex(vertex)) {
        endEdit();
        return MStatus::kFailure;
    }
    g->setPoint(vertex, static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z));
    endEdit();
    return MStatus::kSuccess;
}

MStatus MeshIteration::space(MSpace::Space space, SpaceMap& map) const
{
    MStatus status;
    const SpaceMap* kept = spaceMap(space, status);
    if (kept)
        map = *kept;
    return status;
}

const SpaceMap* MeshIteration::spaceMap(MSpace::Space space, MStatus& status) const
{
    static const SpaceMap kObjectSpace;
    status = MStatus::kSuccess;
    if (space <= MSpace::kInvalid || space >= MSpace::kLast) {
        status = MStatus::kInvalidParameter;
        return nullptr;
    }
    if (space != MSpace::kWorld || !fTarget.path.isValid())
        return &kObjectSpace;
    if (!fWorldMapKept || fWorldStamp != sceneStamp()) {
        SpaceMap map;
        map.fMatrix = fTarget.path.inclusiveMatrix();
        map.fWorld = !map.fMatrix.isEquivalent(MMatrix::identity, 0.0);
        if (map.fWorld)
            map.fInverse = map.fMatrix.inverse();
        fWorldMap = map;
        fWorldMapKept = true;
        fWorldStamp = sceneStamp();
    }
    return &fWorldMap;
}

std::vector<int> MeshIteration::visited(const MeshGeometry& mesh) const
{
    const int total = elementTotal(mesh, fKind);
    std::vector<int> out;
    if (fWhole) {
        out.resize(static_cast<std::size_t>(total));
        for (int i = 0; i < total; ++i)
            out[static_cast<std::size_t>(i)] = i;
        return out;
    }
    out.reserve(fElements.size());
    for (int e : fElements)
        if (e >= 0 && e < total)
            out.push_back(e);
    return out;
}

} // namespace host
