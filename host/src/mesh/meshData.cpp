#include "mesh/meshData.h"

#include "dg/access.h"
#include "dg/evaluation.h"

namespace host {

MObject makeMeshData() { return Access::object(std::make_shared<MeshDataBody>()); }

MObject makeMeshData(std::shared_ptr<MeshGeometry> geometry)
{
    return Access::object(std::make_shared<MeshDataBody>(std::move(geometry)));
}

const MeshGeometry* meshOf(const MObject& data)
{
    auto body = Access::as<MeshDataBody>(data);
    return body ? &body->read() : nullptr;
}

MeshGeometry* editMeshOf(const MObject& data)
{
    bumpSceneStamp(); // a copy-on-write edit may give the data a new geometry
    auto body = Access::as<MeshDataBody>(data);
    return body ? &body->write() : nullptr;
}

} // namespace host
