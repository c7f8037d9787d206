#pragma once
// What the MFnMesh source files share: reading and editing the attached mesh with the
// failures every member reports the same way, and the space conversions.

#include "mesh/meshAccess.h"
#include "mesh/meshGeometry.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <cmath>
#include <string>

namespace host {

// The attached mesh for reading; null (with the status set) when the set is attached to
// nothing usable.
inline const MeshGeometry* readAttached(const MObject& object, const MDagPath& path, MStatus* status,
                                        MeshTarget* targetOut = nullptr)
{
    MeshTarget target;
    MStatus st = resolveMeshTarget(object, path, target);
    const MeshGeometry* g = st ? readMesh(target, &st) : nullptr;
    if (!g && st)
        st = MStatus::kFailure;
    if (status)
        *status = st;
    if (targetOut)
        *targetOut = target;
    return g;
}

// One in-place edit of the attached mesh: begun on construction, reported to the graph on
// destruction. Callers validate first, so a refused call never touches the mesh.
class MeshEditScope {
public:
    MeshEditScope(const MObject& object, const MDagPath& path)
    {
        fStatus = resolveMeshTarget(object, path, fTarget);
        if (fStatus)
            fMesh = beginEdit(fTarget, &fStatus);
        if (!fMesh && fStatus)
            fStatus = MStatus::kFailure;
    }
    ~MeshEditScope()
    {
        if (fMesh)
            endEdit(fTarget);
    }
    MeshEditScope(const MeshEditScope&) = delete;
    MeshEditScope& operator=(const MeshEditScope&) = delete;

    MeshGeometry* mesh() const { return fMesh; }
    MStatus status() const { return fStatus; }
    const MeshTarget& target() const { return fTarget; }

private:
    MeshTarget fTarget;
    MeshGeometry* fMesh = nullptr;
    MStatus fStatus;
};

inline bool finite3(double x, double y, double z) { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }

// The matrix taking object space to the requested space (identity unless kWorld).
inline MMatrix spaceMatrix(const MeshTarget& target, MSpace::Space space)
{
    return space == MSpace::kWorld ? target.worldMatrix() : MMatrix();
}

// Takes normals from object space to the requested space: by the inverse transpose of the
// object-to-world matrix, renormalised. The inverse is computed once per call, not per normal.
class NormalSpace {
public:
    NormalSpace(const MeshTarget& target, MSpace::Space space) : fWorld(space == MSpace::kWorld)
    {
        if (fWorld)
            fInverse = target.worldMatrix().inverse();
    }
    MVector operator()(const MVector& n) const
    {
        if (!fWorld)
            return n;
        const auto& a = fInverse.matrix;
        MVector out(n.x * a[0][0] + n.y * a[0][1] + n.z * a[0][2], n.x * a[1][0] + n.y * a[1][1] + n.z * a[1][2],
                    n.x * a[2][0] + n.y * a[2][1] + n.z * a[2][2]);
        const double len = out.length();
        return len > 0.0 ? out / len : out;
    }

private:
    bool fWorld;
    MMatrix fInverse;
};

// The vertex of a polygon corner, or -1 when either index is out of range.
inline int cornerVertex(const MeshGeometry& g, int polygonId, int corner)
{
    if (!g.validPolygon(polygonId) || corner < 0 || corner >= g.polygonSize(polygonId))
        return -1;
    return g.polygonVertices(polygonId)[corner];
}

// The UV set a call names (null: the current set); -1 when there is none of that name.
inline int uvSetIndex(const MeshGeometry& g, const MString* uvSet)
{
    return g.findUVSet(uvSet ? std::string(uvSet->asChar()) : std::string());
}

// A name's stem and trailing digits, for the names of new nodes ("polySurface12" ->
// "polySurface", "12").
inline void splitTrailingDigits(const std::string& name, std::string& stem, std::string& digits)
{
    std::size_t end = name.size();
    while (end > 0 && name[end - 1] >= '0' && name[end - 1] <= '9')
        --end;
    stem = name.substr(0, end);
    digits = name.substr(end);
}

} // namespace host
