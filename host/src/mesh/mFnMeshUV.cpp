// MFnMesh: edges and their smoothing, UV sets, UVs and their assignment to face-vertices.

#include <maya/MFnMesh.h>

#include "dg/fnMacros.h"
#include "mesh/mFnMeshInternal.h"

#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <vector>

using host::MeshGeometry;
using host::UVSetData;

// ---- edges

MStatus MFnMesh::getEdgeVertices(int edgeId, int2& vertexList) const
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    if (!g->validEdge(edgeId))
        return MStatus::kInvalidParameter;
    vertexList[0] = g->edgeStart(edgeId);
    vertexList[1] = g->edgeEnd(edgeId);
    return MStatus::kSuccess;
}

bool MFnMesh::isEdgeSmooth(int edgeId, MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    if (!g)
        return false;
    if (!g->validEdge(edgeId)) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return false;
    }
    return g->edgeSmooth(edgeId);
}

MStatus MFnMesh::setEdgeSmoothing(int edgeId, bool smooth)
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    if (!g->validEdge(edgeId))
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    edit.mesh()->setEdgeSmooth(edgeId, smooth);
    return MStatus::kSuccess;
}

// All or nothing: one bad id leaves every edge as it was.
MStatus MFnMesh::setEdgeSmoothings(const MIntArray& edgeIds, const MIntArray& smooths, MDGModifier*)
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    if (edgeIds.length() != smooths.length())
        return MStatus::kInvalidParameter;
    for (int e : edgeIds)
        if (!g->validEdge(e))
            return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    for (unsigned int i = 0; i < edgeIds.length(); ++i)
        edit.mesh()->setEdgeSmooth(edgeIds[i], smooths[i] != 0);
    return MStatus::kSuccess;
}

// Smoothing flags take effect as they are set; nothing is left to clean up.
MStatus MFnMesh::cleanupEdgeSmoothing()
{
    MStatus st;
    host::readAttached(fObject, fPath, &st);
    return st;
}

// ---- UV sets

int MFnMesh::numUVSets(MStatus* ReturnStatus) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    return g ? static_cast<int>(g->uvSets().size()) : 0;
}

namespace {

bool uvSetNameTaken(const MeshGeometry& g, const std::string& name)
{
    return std::any_of(g.uvSets().begin(), g.uvSets().end(), [&](const UVSetData& s) { return s.name == name; });
}

// A free set name: the name itself, or its stem with the smallest free number ("uvSet1").
std::string freeUVSetName(const MeshGeometry& g, const std::string& requested)
{
    if (!requested.empty() && !uvSetNameTaken(g, requested))
        return requested;
    std::string stem, digits;
    host::splitTrailingDigits(requested.empty() ? std::string("uvSet") : requested, stem, digits);
    if (stem.empty())
        stem = "uvSet";
    for (unsigned long n = 1;; ++n) {
        std::string candidate = stem + std::to_string(n);
        if (!uvSetNameTaken(g, candidate))
            return candidate;
    }
}

} // namespace

MString MFnMesh::createUVSetWithName(const MString& uvSetName, MDGModifier*, MStatus* ReturnStatus,
                                     const MUintArray*)
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g) {
        TQHOST_SET_STATUS(ReturnStatus, st);
        return MString();
    }
    const std::string name = freeUVSetName(*g, uvSetName.asChar());
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh()) {
        TQHOST_SET_STATUS(ReturnStatus, edit.status());
        return MString();
    }
    edit.mesh()->editUVSets().push_back(UVSetData{name, {}, {}, {}});
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return MString(name.c_str());
}

MStatus MFnMesh::setCurrentUVSetName(const MString& setName, MDGModifier*, MSelectionList*)
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    const int index = setName.length() == 0 ? -1 : g->findUVSet(setName.asChar());
    if (index < 0)
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    edit.mesh()->editUVSets(); // a new version: the current set is part of the data
    edit.mesh()->setCurrentUVSet(index);
    return MStatus::kSuccess;
}

MString MFnMesh::currentUVSetName(MStatus* ReturnStatus, int) const
{
    const MeshGeometry* g = host::readAttached(fObject, fPath, ReturnStatus);
    if (!g)
        return MString();
    const int index = g->findUVSet(std::string());
    if (index < 0) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MString();
    }
    return MString(g->uvSets()[std::size_t(index)].name.c_str());
}

MStatus MFnMesh::getUVSetNames(MStringArray& setNames) const
{
    MStatus st;
    const MeshGeometry* g = host::readAttached(fObject, fPath, &st);
    if (!g)
        return st;
    setNames.clear();
    for (const UVSetData& s : g->uvSets())
        setNames.append(MString(s.name.c_str()));
    return MStatus::kSuccess;
}

// ---- UVs

namespace {

// The attached mesh and the set a UV call names, or the failure to report.
struct UVRead {
    const MeshGeometry* mesh = nullptr;
    int set = -1;
    MStatus status;
    const UVSetData& data() const { return mesh->uvSets()[std::size_t(set)]; }
};

UVRead readUVSet(const MObject& object, const MDagPath& path, const MString* uvSet)
{
    UVRead r;
    r.mesh = host::readAttached(object, path, &r.status);
    if (!r.mesh)
        return r;
    r.set = host::uvSetIndex(*r.mesh, uvSet);
    if (r.set < 0) {
        r.status = MStatus::kInvalidParameter;
        r.mesh = nullptr;
    }
    return r;
}

int uvIdAt(const UVSetData& s, int faceVertex)
{
    return std::size_t(faceVertex) < s.ids.size() ? s.ids[std::size_t(faceVertex)] : -1;
}

} // namespace

int MFnMesh::numUVs(MStatus* ReturnStatus) const { return numUVs(MString(), ReturnStatus); }

int MFnMesh::numUVs(const MString& uvSet, MStatus* ReturnStatus) const
{
    UVRead r = readUVSet(fObject, fPath, uvSet.length() ? &uvSet : nullptr);
    TQHOST_SET_STATUS(ReturnStatus, r.status);
    return r.mesh ? static_cast<int>(r.data().u.size()) : 0;
}

// Replaces the set's UVs; face-vertices whose UV no longer exists lose their assignment.
MStatus MFnMesh::setUVs(const MFloatArray& uArray, const MFloatArray& vArray, const MString* uvSet)
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    if (uArray.length() != vArray.length())
        return MStatus::kInvalidParameter;
    for (unsigned int i = 0; i < uArray.length(); ++i)
        if (!std::isfinite(uArray[i]) || !std::isfinite(vArray[i]))
            return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    UVSetData& s = edit.mesh()->editUVSets()[std::size_t(r.set)];
    s.u.assign(uArray.begin(), uArray.end());
    s.v.assign(vArray.begin(), vArray.end());
    const int count = static_cast<int>(s.u.size());
    for (int& id : s.ids)
        if (id >= count)
            id = -1;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet) const
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    uArray = MFloatArray(r.data().u.data(), unsigned(r.data().u.size()));
    vArray = MFloatArray(r.data().v.data(), unsigned(r.data().v.size()));
    return MStatus::kSuccess;
}

// An id at the end appends; an id past it grows the list with (0, 0) entries, up to one UV
// per face-vertex (no mesh needs more).
MStatus MFnMesh::setUV(int uvId, float u, float v, const MString* uvSet)
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    const int count = static_cast<int>(r.data().u.size());
    if (uvId < 0 || (uvId >= count && uvId >= std::max(count + 1, r.mesh->numFaceVertices())) || !std::isfinite(u) ||
        !std::isfinite(v))
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    UVSetData& s = edit.mesh()->editUVSets()[std::size_t(r.set)];
    if (uvId >= static_cast<int>(s.u.size())) {
        s.u.resize(std::size_t(uvId) + 1, 0.0f);
        s.v.resize(std::size_t(uvId) + 1, 0.0f);
    }
    s.u[std::size_t(uvId)] = u;
    s.v[std::size_t(uvId)] = v;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getUV(int uvId, float& u, float& v, const MString* uvSet) const
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    if (uvId < 0 || uvId >= static_cast<int>(r.data().u.size()))
        return MStatus::kInvalidParameter;
    u = r.data().u[std::size_t(uvId)];
    v = r.data().v[std::size_t(uvId)];
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet) const
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    if (host::cornerVertex(*r.mesh, polygonId, vertexIndex) < 0)
        return MStatus::kInvalidParameter;
    const int id = uvIdAt(r.data(), r.mesh->polygonStart(polygonId) + vertexIndex);
    if (id < 0)
        return MStatus::kFailure; // that corner has no UV
    uvId = id;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonUV(int polygonId, int vertexIndex, float& u, float& v, const MString* uvSet) const
{
    int id = -1;
    MStatus st = getPolygonUVid(polygonId, vertexIndex, id, uvSet);
    if (!st)
        return st;
    return getUV(id, u, v, uvSet);
}

MStatus MFnMesh::assignUV(int polygonId, int vertexIndex, int uvId, const MString* uvSet)
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    if (host::cornerVertex(*r.mesh, polygonId, vertexIndex) < 0 || uvId < 0 ||
        uvId >= static_cast<int>(r.data().u.size()))
        return MStatus::kInvalidParameter;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    MeshGeometry& g = *edit.mesh();
    UVSetData& s = g.editUVSets()[std::size_t(r.set)];
    if (s.ids.size() != std::size_t(g.numFaceVertices()))
        s.ids.assign(std::size_t(g.numFaceVertices()), -1);
    s.ids[std::size_t(g.polygonStart(polygonId) + vertexIndex)] = uvId;
    return MStatus::kSuccess;
}

// uvCounts holds, per polygon, 0 (no UVs) or the polygon's corner count; uvIds lists the
// UVs of the counted corners in order. Checked whole before anything changes.
MStatus MFnMesh::assignUVs(const MIntArray& uvCounts, const MIntArray& uvIds, const MString* uvSet)
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    const MeshGeometry& g = *r.mesh;
    if (uvCounts.length() != unsigned(g.numPolygons()))
        return MStatus::kInvalidParameter;
    std::size_t listed = 0;
    for (int f = 0; f < g.numPolygons(); ++f) {
        const int c = uvCounts[unsigned(f)];
        if (c != 0 && c != g.polygonSize(f))
            return MStatus::kInvalidParameter;
        listed += std::size_t(c);
    }
    if (listed != uvIds.length())
        return MStatus::kInvalidParameter;
    const int count = static_cast<int>(r.data().u.size());
    for (int id : uvIds)
        if (id < 0 || id >= count)
            return MStatus::kInvalidParameter;
    std::vector<int> ids(std::size_t(g.numFaceVertices()), -1);
    unsigned int at = 0;
    for (int f = 0; f < g.numPolygons(); ++f) {
        if (uvCounts[unsigned(f)] == 0)
            continue;
        for (int i = 0; i < g.polygonSize(f); ++i)
            ids[std::size_t(g.polygonStart(f) + i)] = uvIds[at++];
    }
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    if (edit.mesh()->numFaceVertices() != static_cast<int>(ids.size()))
        return MStatus::kFailure;
    edit.mesh()->editUVSets()[std::size_t(r.set)].ids = std::move(ids);
    return MStatus::kSuccess;
}

MStatus MFnMesh::clearUVs(const MString* uvSet)
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    host::MeshEditScope edit(fObject, fPath);
    if (!edit.mesh())
        return edit.status();
    UVSetData& s = edit.mesh()->editUVSets()[std::size_t(r.set)];
    s.u.clear();
    s.v.clear();
    s.ids.clear();
    return MStatus::kSuccess;
}

// A polygon counts as mapped when every corner has a UV; partly mapped polygons report 0.
MStatus MFnMesh::getAssignedUVs(MIntArray& uvCounts, MIntArray& uvIds, const MString* uvSet) const
{
    UVRead r = readUVSet(fObject, fPath, uvSet);
    if (!r.mesh)
        return r.status;
    const MeshGeometry& g = *r.mesh;
    const UVSetData& s = r.data();
    std::vector<int> counts(std::size_t(g.numPolygons()), 0), ids;
    if (s.ids.size() == std::size_t(g.numFaceVertices())) {
        ids.reserve(std::size_t(g.numFaceVertices()));
        for (int f = 0; f < g.numPolygons(); ++f) {
            const int start = g.polygonStart(f), n = g.polygonSize(f);
            bool mapped = true;
            for (int i = 0; i < n && mapped; ++i)
                mapped = s.ids[std::size_t(start + i)] >= 0;
            if (!mapped)
                continue;
            counts[std::size_t(f)] = n;
            ids.insert(ids.end(), s.ids.begin() + start, s.ids.begin() + start + n);
        }
    }
    uvCounts = MIntArray(counts.data(), unsigned(counts.size()));
    uvIds = MIntArray(ids.data(), unsigned(ids.size()));
    return MStatus::kSuccess;
}
