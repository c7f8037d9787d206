#include "mesh/meshAccess.h"

#include "dg/access.h"
#include "mesh/meshData.h"
#include "mesh/meshNode.h"

namespace host {

MMatrix MeshTarget::worldMatrix() const
{
    if (path.isValid())
        return path.inclusiveMatrix();
    if (shape)
        return Access::pathTo(shape).inclusiveMatrix();
    return MMatrix();
}

MStatus resolveMeshTarget(const MObject& object, const MDagPath& path, MeshTarget& target)
{
    target = MeshTarget();
    if (NodeBody* node = Access::node(object)) {
        if (!isMeshShape(node))
            return MStatus::kInvalidParameter;
        target.shape = node;
        if (path.isValid())
            target.path = path;
        return MStatus::kSuccess;
    }
    if (meshOf(object)) {
        target.data = object;
        return MStatus::kSuccess;
    }
    return MStatus::kInvalidParameter;
}

const MeshGeometry* readMesh(const MeshTarget& target, MStatus* status)
{
    if (target.shape)
        return shapeGeometry(target.shape, status);
    const MeshGeometry* g = meshOf(target.data);
    if (status)
        *status = g ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return g;
}

MeshGeometry* beginEdit(const MeshTarget& target, MStatus* status)
{
    if (target.shape)
        return beginShapeEdit(target.shape, status);
    MeshGeometry* g = editMeshOf(target.data);
    if (status)
        *status = g ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return g;
}

void endEdit(const MeshTarget& target)
{
    if (target.shape)
        endShapeEdit(target.shape);
}

} // namespace host
