// MFnMesh: attaching, creating meshes (create, copy, addPolygon) and deleting components.
// Queries live in mFnMeshQuery.cpp, UVs and edge smoothing in mFnMeshUV.cpp.

#include <maya/MFnMesh.h>

#include "dg/access.h"
#include "dg/fnMacros.h"
#include "dg/nodeTypes.h"
#include "dg/scene.h"
#include "mesh/mFnMeshInternal.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <memory>
#include <vector>

using host::Access;
using host::MeshGeometry;
using host::NodeBody;

namespace {

// The arrays of a create call checked and built into `g`. The call's counts say how much of
// each array is used; arrays shorter than that are refused.
template <class PointArray>
MStatus buildFrom(MeshGeometry& g, int numVertices, int numPolygons, const PointArray& vertexArray,
                  const MIntArray& polygonCounts, const MIntArray& polygonConnects)
{
    if (numVertices < 0 || numPolygons < 0 || unsigned(numVertices) > vertexArray.length() ||
        unsigned(numPolygons) > polygonCounts.length())
        return MStatus::kInvalidParameter;
    std::vector<float> points(static_cast<std::size_t>(numVertices) * 3);
    for (int v = 0; v < numVertices; ++v) {
        const auto& p = vertexArray[unsigned(v)];
        points[3 * v] = static_cast<float>(p.x);
        points[3 * v + 1] = static_cast<float>(p.y);
        points[3 * v + 2] = static_cast<float>(p.z);
    }
    std::vector<int> counts(polygonCounts.begin(), polygonCounts.begin() + numPolygons);
    std::size_t corners = 0;
    for (int c : counts) {
        if (c < 3)
            return MStatus::kInvalidParameter;
        corners += static_cast<std::size_t>(c);
    }
    if (corners > polygonConnects.length())
        return MStatus::kInvalidParameter;
    std::vector<int> connects(polygonConnects.begin(), polygonConnects.begin() + corners);
    return g.build(std::move(points), counts, connects) ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

MStatus setDefaultUVs(MeshGeometry& g, const MFloatArray& uArray, const MFloatArray& vArray)
{
    if (uArray.length() != vArray.length())
        return MStatus::kInvalidParameter;
    for (unsigned int i = 0; i < uArray.length(); ++i)
        if (!std::isfinite(uArray[i]) || !std::isfinite(vArray[i]))
            return MStatus::kInvalidParameter;
    host::UVSetData& set = g.editUVSets()[0];
    set.u.assign(uArray.begin(), uArray.end());
    set.v.assign(vArray.begin(), vArray.end());
    return MStatus::kSuccess;
}

// Adds one polygon through the merge rule; on failure the vertices it added are dropped.
MStatus appendPolygonTo(MeshGeometry& g, const std::vector<float>& corners, bool mergeVertices,
                        double pointTolerance, int& faceIndex)
{
    const int before = g.numVertices();
    std::vector<int> ids;
    ids.reserve(corners.size() / 3);
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const float x = corners[i], y = corners[i + 1], z = corners[i + 2];
        int v = mergeVertices ? g.findMergeVertex(x, y, z, pointTolerance) : -1;
        if (v < 0)
            v = g.addVertex(x, y, z);
        ids.push_back(v);
    }
    const int f = g.appendPolygon(ids);
    if (f < 0) {
        g.truncateVertices(before);
        return MStatus::kFailure;
    }
    faceIndex = f;
    return MStatus::kSuccess;
}

bool isTransformNode(NodeBody* n) { return n && n->type->isTransform && n != host::Scene::current().world(); }

// A new mesh shape under `parent` (a new polySurface transform when null), holding `g`.
// The shape is named after its transform, as Maya does: polySurface3 -> polySurfaceShape3.
NodeBody* makeMeshShape(NodeBody* parent, std::shared_ptr<MeshGeometry> g, NodeBody** madeTransform, MStatus& st)
{
    host::Scene& scene = host::Scene::current();
    host::NodePtr transform;
    if (!parent) {
        transform = scene.createNode(host::NodeTypeRegistry::instance().find("transform"), "polySurface1", nullptr,
                                     &st);
        if (!transform)
            return nullptr;
        parent = transform.get();
    }
    std::string stem, digits;
    host::splitTrailingDigits(parent->name, stem, digits);
    host::NodePtr shape =
        scene.createNode(host::NodeTypeRegistry::instance().find("mesh"), stem + "Shape" + digits, parent, &st);
    if (!shape) {
        if (transform)
            scene.deleteNode(transform.get());
        return nullptr;
    }
    st = host::setShapeGeometry(shape.get(), host::makeMeshData(std::move(g)));
    if (madeTransform)
        *madeTransform = transform.get();
    return shape.get();
}

} // namespace

// ---- attaching

MFnMesh::MFnMesh() = default;

MFnMesh::MFnMesh(MObject& object, MStatus* ReturnStatus)
{
    MStatus s = setObject(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MFnMesh::MFnMesh(const MObject& object, MStatus* ReturnStatus)
{
    MStatus s = setObject(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MFnMesh::MFnMesh(const MDagPath& object, MStatus* ReturnStatus)
{
    MStatus s = setObject(object);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MFnMesh::~MFnMesh() = default;

MFn::Type MFnMesh::type() const { return MFn::kMesh; }

const char* MFnMesh::className() const { return "MFnMesh"; }

MStatus MFnMesh::setObject(const MObject& object)
{
    fPath = MDagPath();
    host::MeshTarget target;
    if (!host::resolveMeshTarget(object, MDagPath(), target)) {
        fObject = MObject::kNullObj;
        return MStatus::kInvalidParameter;
    }
    fObject = object;
    return MStatus::kSuccess;
}

MStatus MFnMesh::setObject(MObject& object) { return setObject(static_cast<const MObject&>(object)); }

// A path to a transform reaches the one mesh shape below it.
MStatus MFnMesh::setObject(const MDagPath& path)
{
    MDagPath shapePath = path;
    auto atMesh = [&shapePath] { return host::isMeshShape(Access::node(shapePath.node())); };
    if (!atMesh() && !(shapePath.extendToShape() && atMesh())) {
        fObject = MObject::kNullObj;
        fPath = MDagPath();
        return MStatus::kInvalidParameter;
    }
    fObject = shapePath.node();
    fPath = shapePath;
    return MStatus::kSuccess;
}

// ---- creation

namespace {

// Where a new mesh goes: into mesh data, under a transform, or under a new transform. The
// set attaches to what holds the mesh; the result is what the caller gets back.
struct Placement {
    MObject attachTo;
    MDagPath path;
    MObject result;
};

MStatus place(std::shared_ptr<MeshGeometry> g, const MObject& parentOrOwner, bool returnParent, Placement& out)
{
    if (parentOrOwner.isNull()) {
        NodeBody* transform = nullptr;
        MStatus st;
        NodeBody* shape = makeMeshShape(nullptr, std::move(g), &transform, st);
        if (!shape)
            return st ? MStatus(MStatus::kFailure) : st;
        out.attachTo = Access::object(shape->shared_from_this());
        out.path = Access::pathTo(shape);
        out.result = Access::object(transform->shared_from_this());
        return st;
    }
    if (host::meshOf(parentOrOwner)) {
        *host::editMeshOf(parentOrOwner) = *g;
        out.attachTo = parentOrOwner;
        out.result = parentOrOwner;
        return MStatus::kSuccess;
    }
    NodeBody* parent = Access::node(parentOrOwner);
    if (!isTransformNode(parent))
        return MStatus::kInvalidParameter;
    MStatus st;
    NodeBody* shape = makeMeshShape(parent, std::move(g), nullptr, st);
    if (!shape)
        return st ? MStatus(MStatus::kFailure) : st;
    out.attachTo = Access::object(shape->shared_from_this());
    out.path = Access::pathTo(shape);
    out.result = returnParent ? parentOrOwner : out.attachTo;
    return st;
}

} // namespace

template <class PointArray>
static MObject createMesh(MFnMesh& fn, int numVertices, int numPolygons, const PointArray& vertexArray,
                          const MIntArray& polygonCounts, const MIntArray& polygonConnects, const MFloatArray* uArray,
                          const MFloatArray* vArray, const MObject& parentOrOwner, MStatus* ReturnStatus)
{
    auto g = std::make_shared<MeshGeometry>();
    MStatus st = buildFrom(*g, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects);
    if (st && uArray)
        st = setDefaultUVs(*g, *uArray, *vArray);
    Placement placed;
    if (st)
        st = place(std::move(g), parentOrOwner, false, placed);
    TQHOST_SET_STATUS(ReturnStatus, st);
    if (!st)
        return MObject();
    if (placed.path.isValid())
        fn.setObject(placed.path);
    else
        fn.setObject(placed.attachTo);
    return placed.result;
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, MObject parentOrOwner,
                        MStatus* ReturnStatus)
{
    return createMesh(*this, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects, nullptr, nullptr,
                      parentOrOwner, ReturnStatus);
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, MObject parentOrOwner,
                        MStatus* ReturnStatus)
{
    return createMesh(*this, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects, nullptr, nullptr,
                      parentOrOwner, ReturnStatus);
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, const MFloatArray& uArray,
                        const MFloatArray& vArray, MObject parentOrOwner, MStatus* ReturnStatus)
{
    return createMesh(*this, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects, &uArray, &vArray,
                      parentOrOwner, ReturnStatus);
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, const MFloatArray& uArray,
                        const MFloatArray& vArray, MObject parentOrOwner, MStatus* ReturnStatus)
{
    return createMesh(*this, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects, &uArray, &vArray,
                      parentOrOwner, ReturnStatus);
}

MObject MFnMesh::copy(const MObject& source, MObject parentOrOwner, MStatus* ReturnStatus)
{
    MStatus st;
    const MeshGeometry* from = host::readAttached(source, MDagPath(), &st);
    if (!from) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    Placement placed;
    st = place(std::make_shared<MeshGeometry>(*from), parentOrOwner, false, placed);
    TQHOST_SET_STATUS(ReturnStatus, st);
    if (!st)
        return MObject();
    if (placed.path.isValid())
        setObject(placed.path);
    else
        setObject(placed.attachTo);
    return placed.result;
}

// ---- addPolygon

MObject MFnMesh::addPolygon(const MPointArray& vertexArray, bool mergeVertices, double pointTolerance,
                            MObject parentOrOwner, MStatus* ReturnStatus)
{
    int faceIndex = -1;
    return addPolygon(vertexArray, faceIndex, mergeVertices, pointTolerance, parentOrOwner, ReturnStatus);
}

MObject MFnMesh::addPolygon(const MPointArray& vertexArray, int& faceIndex, bool mergeVertices, double pointTolerance,
                            MObject parentOrOwner, MStatus* ReturnStatus)
{
    auto fail = [&](MStatus st) {
        TQHOST_SET_STATUS(ReturnStatus, st);
        return MObject();
    };
    if (vertexArray.length() < 3 || (mergeVertices && !(pointTolerance >= 0.0 && std::isfinite(pointTolerance))))
        return fail(MStatus::kInvalidParameter);
    std::vector<float> corners;
    corners.reserve(std::size_t(vertexArray.length()) * 3);
    for (const MPoint& p : vertexArray) {
        const float x = float(p.x), y = float(p.y), z = float(p.z);
        if (!host::finite3(x, y, z))
            return fail(MStatus::kInvalidParameter);
        corners.insert(corners.end(), {x, y, z});
    }

    // An attached mesh with geometry (or attached mesh data, even empty) gains the polygon.
    host::MeshTarget target;
    bool addToAttached = false;
    if (host::resolveMeshTarget(fObject, fPath, target)) {
        const MeshGeometry* current = host::readMesh(target);
        const bool hasGeometry = current && (current->numVertices() > 0 || current->numPolygons() > 0);
        addToAttached = !target.data.isNull() || hasGeometry;
    }
    if (addToAttached) {
        host::MeshEditScope edit(fObject, fPath);
        if (!edit.mesh())
            return fail(edit.status());
        MStatus st = appendPolygonTo(*edit.mesh(), corners, mergeVertices, pointTolerance, faceIndex);
        TQHOST_SET_STATUS(ReturnStatus, st);
        return st ? fObject : MObject();
    }

    // Otherwise a new mesh: in the given mesh data, or in a new shape.
    if (host::meshOf(parentOrOwner)) {
        MeshGeometry* g = host::editMeshOf(parentOrOwner);
        MStatus st = appendPolygonTo(*g, corners, mergeVertices, pointTolerance, faceIndex);
        if (!st)
            return fail(st);
        setObject(parentOrOwner);
        TQHOST_SET_STATUS(ReturnStatus, st);
        return parentOrOwner;
    }
    if (!parentOrOwner.isNull() && !isTransformNode(Access::node(parentOrOwner)))
        return fail(MStatus::kInvalidParameter);
    auto g = std::make_shared<MeshGeometry>();
    MStatus st = appendPolygonTo(*g, corners, mergeVertices, pointTolerance, faceIndex);
    Placement placed;
    if (st)
        st = place(std::move(g), parentOrOwner, true, placed);
    if (!st)
        return fail(st);
    setObject(placed.path);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return placed.result;
}

// ---- deleting components; the modifier is not needed, the change is made at once

namespace {

template <class Valid, class Delete>
MStatus deleteComponent(const MObject& object, const MDagPath& path, int index, Valid valid, Delete remove)
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(object, path, &st);
    if (!g)
        return st;
    if (!valid(*g, index))
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(object, path);
    if (!edit.mesh())
        return edit.status();
    return remove(*edit.mesh(), std::vector<int>{index}) ? MStatus::kSuccess : MStatus::kFailure;
}

} // namespace

MStatus MFnMesh::deleteFace(int index, MDGModifier*)
{
    return deleteComponent(
        fObject, fPath, index, [](const MeshGeometry& g, int i) { return g.validPolygon(i); },
        [](MeshGeometry& g, const std::vector<int>& ids) { return g.deleteFaces(ids); });
}

MStatus MFnMesh::deleteEdge(int index, MDGModifier*)
{
    return deleteComponent(
        fObject, fPath, index, [](const MeshGeometry& g, int i) { return g.validEdge(i); },
        [](MeshGeometry& g, const std::vector<int>& ids) { return g.deleteEdges(ids); });
}

MStatus MFnMesh::deleteVertex(int index, MDGModifier*)
{
    return deleteComponent(
        fObject, fPath, index, [](const MeshGeometry& g, int i) { return g.validVertex(i); },
        [](MeshGeometry& g, const std::vector<int>& ids) { return g.deleteVertices(ids); });
}

// ---- surface updates: edits reach the graph as they are made, so these only check

MStatus MFnMesh::updateSurface()
{
    MStatus st;
    host::readAttached(fObject, fPath, &st);
    return st;
}

MStatus MFnMesh::syncObject() { return updateSurface(); }

void MFnMesh::setCheckSamePointTwice(bool check) { fCheckSamePoint = check; }

bool MFnMesh::getCheckSamePointTwice() { return fCheckSamePoint; }
