#include <maya/MItGeometry.h>

#include "dg/fnMacros.h"
#include "meshiter/meshIteration.h"

#include <maya/MDataHandle.h>

using host::MeshElement;
using host::MeshGeometry;
using host::MeshIteration;

MItGeometry::MItGeometry(const MDagPath& dagPath, MStatus* ReturnStatus)
    : MItGeometry(dagPath, MObject::kNullObj, ReturnStatus)
{
}

MItGeometry::MItGeometry(const MDagPath& dagPath, MObject& component, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = dagPath.isValid() ? fIt->attach(MObject(), dagPath, component) : MStatus(MStatus::kInvalidParameter);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItGeometry::MItGeometry(MObject& dagObject, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = fIt->attach(dagObject, MDagPath(), MObject());
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItGeometry::MItGeometry(MDataHandle& dataHandle, unsigned int /*groupId*/, bool readOnly, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = attachHandle(dataHandle, MObject(), readOnly);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItGeometry::MItGeometry(MDataHandle& dataHandle, bool readOnly, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = attachHandle(dataHandle, MObject(), readOnly);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItGeometry::MItGeometry(MDataHandle& dataHandle, MObject& component, bool readOnly, MStatus* ReturnStatus)
    : fIt(std::make_unique<MeshIteration>(MeshElement::kVertex))
{
    MStatus s = attachHandle(dataHandle, component, readOnly);
    TQHOST_SET_STATUS(ReturnStatus, s);
}

MItGeometry::~MItGeometry() = default;

MStatus MItGeometry::attachHandle(MDataHandle& dataHandle, const MObject& component, bool readOnly)
{
    fReadOnly = readOnly;
    // The handle's own data object: edits through it stay in the data block.
    const MObject data = dataHandle.asMesh();
    if (data.isNull())
        return MStatus::kInvalidParameter;
    return fIt->attach(data, MDagPath(), component);
}

const char* MItGeometry::className() { return "MItGeometry"; }

bool MItGeometry::isDone(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fIt->attached() ? MStatus::kSuccess : MStatus::kFailure);
    return fIt->done();
}

MStatus MItGeometry::next() { return fIt->next(); }

MStatus MItGeometry::reset() { return fIt->restart(); }

MPoint MItGeometry::position(MSpace::Space space, MStatus* ReturnStatus) const
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

MVector MItGeometry::normal(MSpace::Space space, MStatus* ReturnStatus) const
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    MVector n;
    if (s)
        if (const MeshGeometry* g = fIt->currentMesh(&s))
            n = map.outNormal(g->vertexNormal(fIt->current(), true));
    TQHOST_SET_STATUS(ReturnStatus, s);
    return n;
}

MStatus MItGeometry::setPosition(const MPoint& point, MSpace::Space space)
{
    if (fReadOnly)
        return MStatus::kFailure;
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s || !fIt->currentMesh(&s))
        return s;
    return fIt->setVertex(fIt->current(), map.in(point));
}

int MItGeometry::index(MStatus* ReturnStatus) const
{
    MStatus s;
    const int v = fIt->currentMesh(&s) ? fIt->current() : -1;
    TQHOST_SET_STATUS(ReturnStatus, s);
    return v;
}

int MItGeometry::positionIndex(MStatus* ReturnStatus) const { return index(ReturnStatus); }

MObject MItGeometry::component(MStatus* ReturnStatus) const { return currentItem(ReturnStatus); }

MObject MItGeometry::currentItem(MStatus* ReturnStatus) const
{
    MStatus s;
    MObject item;
    if (fIt->currentMesh(&s))
        item = host::singleElementComponent(MeshElement::kVertex, fIt->current());
    TQHOST_SET_STATUS(ReturnStatus, s);
    return item;
}

int MItGeometry::count(MStatus* ReturnStatus) const { return fIt->count(ReturnStatus); }

int MItGeometry::exactCount(MStatus* ReturnStatus) { return fIt->count(ReturnStatus); }

MStatus MItGeometry::allPositions(MPointArray& points, MSpace::Space space) const
{
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->mesh(&s);
    if (!g)
        return s;
    const std::vector<int> ids = fIt->visited(*g);
    points.setLength(static_cast<unsigned int>(ids.size()));
    for (std::size_t i = 0; i < ids.size(); ++i)
        points[static_cast<unsigned int>(i)] = map.out(g->point(ids[i]));
    return MStatus::kSuccess;
}

MStatus MItGeometry::setAllPositions(const MPointArray& points, MSpace::Space space)
{
    if (fReadOnly)
        return MStatus::kFailure;
    host::SpaceMap map;
    MStatus s = fIt->space(space, map);
    if (!s)
        return s;
    const MeshGeometry* g = fIt->mesh(&s);
    if (!g)
        return s;
    const std::vector<int> ids = fIt->visited(*g);
    if (points.length() != ids.size())
        return MStatus::kInvalidParameter;
    MeshGeometry* edit = fIt->beginEdit(&s);
    if (!edit)
        return s;
    const int total = edit->numVertices();
    if (ids.size() * 4 >= static_cast<std::size_t>(total)) {
        // Most of the mesh: one bulk write instead of per-point upkeep of the mesh's caches.
        float* p = edit->editPoints();
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (ids[i] >= total)
                continue;
            const MPoint q = map.in(points[static_cast<unsigned int>(i)]);
            const std::size_t v = static_cast<std::size_t>(ids[i]);
            p[3 * v] = static_cast<float>(q.x);
            p[3 * v + 1] = static_cast<float>(q.y);
            p[3 * v + 2] = static_cast<float>(q.z);
        }
    } else {
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (ids[i] >= total)
                continue;
            const MPoint q = map.in(points[static_cast<unsigned int>(i)]);
            edit->setPoint(ids[i], static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z));
        }
    }
    fIt->endEdit();
    return MStatus::kSuccess;
}
