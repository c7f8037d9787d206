// Mesh files into and out of the scene, through the API a plug-in would use: MFnMesh builds
// the shapes and reads them back.

#include "host/meshFiles.h"

#include "host/harness.h"
#include "host/log.h"

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>

#include <cctype>
#include <filesystem>

namespace host {
namespace {

void setStatus(MStatus* status, MStatus value)
{
    if (status)
        *status = value;
}

MStatus failure(MStatus::MStatusCode code, const std::string& text, std::string* error)
{
    writeLog(LogLevel::kError, text);
    if (error)
        *error = text;
    return code;
}

// Node names are letters, digits and underscores and do not start with a digit; file names
// ("Cube.001", "left arm") often are not.
std::string nodeNameFor(const std::string& wanted)
{
    std::string name = wanted.empty() ? std::string("mesh") : wanted;
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
            c = '_';
    if (std::isdigit(static_cast<unsigned char>(name[0])))
        name.insert(0, "_");
    return name;
}

MIntArray intArray(const std::vector<int>& values)
{
    return MIntArray(values.data(), static_cast<unsigned>(values.size()));
}

MFloatArray floatArray(const std::vector<float>& values)
{
    return MFloatArray(values.data(), static_cast<unsigned>(values.size()));
}

// The mesh shape to export: the object itself, or the first mesh directly under it.
bool meshPath(const MObject& object, MDagPath& path)
{
    if (object.isNull() || !MDagPath::getAPathTo(object, path))
        return false;
    if (object.hasFn(MFn::kMesh))
        return true;
    MFnDagNode dag(path);
    for (unsigned i = 0; i < dag.childCount(); ++i)
        if (dag.child(i).hasFn(MFn::kMesh))
            return path.extendToShapeDirectlyBelow(i);
    return false;
}

MStatus meshFromScene(const MDagPath& path, MeshArrays& mesh)
{
    MStatus st;
    MFnMesh fn(path, &st);
    if (!st)
        return st;
    MFloatPointArray points;
    MIntArray counts, connects, uvCounts, uvIds;
    MFloatArray u, v;
    if (!(st = fn.getPoints(points, MSpace::kWorld)) || !(st = fn.getVertices(counts, connects)) ||
        !(st = fn.getUVs(u, v)) || !(st = fn.getAssignedUVs(uvCounts, uvIds)))
        return st;

    mesh.points.reserve(3 * std::size_t(points.length()));
    for (const MFloatPoint& p : points)
        mesh.points.insert(mesh.points.end(), {p.x, p.y, p.z});
    mesh.counts.assign(counts.begin(), counts.end());
    mesh.connects.assign(connects.begin(), connects.end());
    if (uvIds.length() == 0)
        return MStatus::kSuccess;
    mesh.u.assign(u.begin(), u.end());
    mesh.v.assign(v.begin(), v.end());
    // Every corner needs a UV in MeshArrays; unmapped polygons share one at the origin.
    mesh.uvIds.reserve(mesh.connects.size());
    unsigned next = 0;
    int origin = -1;
    for (unsigned f = 0; f < counts.length(); ++f) {
        for (int k = 0; k < counts[f]; ++k) {
            if (uvCounts[f] != 0) {
                mesh.uvIds.push_back(uvIds[next++]);
                continue;
            }
            if (origin < 0) {
                origin = mesh.numUVs();
                mesh.u.push_back(0.0f);
                mesh.v.push_back(0.0f);
            }
            mesh.uvIds.push_back(origin);
        }
    }
    return MStatus::kSuccess;
}

} // namespace

MObject addMesh(const MeshArrays& mesh, const std::string& name, MStatus* status)
{
    const std::string nodeName = nodeNameFor(name.empty() ? mesh.name : name);
    std::string why;
    if (mesh.counts.empty())
        why = "it has no polygons";
    else if (!validate(mesh, &why))
        why = "it is not a valid mesh: " + why;
    if (!why.empty()) {
        setStatus(status, failure(MStatus::kInvalidParameter, "Cannot add mesh '" + nodeName + "': " + why, nullptr));
        return MObject();
    }

    MStatus st;
    MObject transform = createNode("transform", nodeName, "", &st);
    if (!st) {
        setStatus(status, st);
        return MObject();
    }
    MFloatPointArray points;
    points.setLength(static_cast<unsigned>(mesh.numVertices()));
    for (unsigned i = 0; i < points.length(); ++i)
        points.set(i, mesh.points[3 * i], mesh.points[3 * i + 1], mesh.points[3 * i + 2]);
    const MIntArray counts = intArray(mesh.counts), connects = intArray(mesh.connects);
    MFnMesh fn;
    if (mesh.hasUVs()) {
        fn.create(mesh.numVertices(), mesh.numPolygons(), points, counts, connects, floatArray(mesh.u),
                  floatArray(mesh.v), transform, &st);
        if (st)
            st = fn.assignUVs(counts, intArray(mesh.uvIds));
    } else {
        fn.create(mesh.numVertices(), mesh.numPolygons(), points, counts, connects, transform, &st);
    }
    if (!st) {
        const std::string made = host::nodeName(transform);
        deleteNode(made);
        failure(st.statusCode(), "Cannot add mesh '" + made + "': MFnMesh refused its arrays", nullptr);
        setStatus(status, st);
        return MObject();
    }
    setStatus(status, MStatus::kSuccess);
    return transform;
}

MStatus importMesh(const std::string& path, MObjectArray& transforms, std::string* error)
{
    transforms.clear();
    std::vector<MeshArrays> meshes;
    MStatus st = readMeshFile(path, meshes, error);
    if (!st)
        return st;
    const std::string stem = std::filesystem::path(path).stem().string();
    std::vector<std::string> made;
    for (const MeshArrays& mesh : meshes) {
        const std::string name = mesh.name.empty() ? stem : mesh.name;
        const MObject transform = addMesh(mesh, name, &st);
        if (!st) {
            for (const std::string& node : made)
                deleteNode(node);
            transforms.clear();
            return failure(st.statusCode(),
                           "Cannot import mesh file '" + path + "': mesh '" + name + "' could not be added", error);
        }
        made.push_back(nodeName(transform));
        transforms.append(transform);
    }
    return MStatus::kSuccess;
}

MObject importMesh(const std::string& path, MStatus* status, std::string* error)
{
    MObjectArray transforms;
    const MStatus st = importMesh(path, transforms, error);
    setStatus(status, st);
    return st ? transforms[0] : MObject();
}

MStatus exportMesh(const MObject& shapeOrTransform, const std::string& path, std::string* error)
{
    const std::string what =
        shapeOrTransform.isNull() ? std::string("a null object") : "'" + nodeName(shapeOrTransform) + "'";
    MDagPath shape;
    if (!meshPath(shapeOrTransform, shape))
        return failure(MStatus::kInvalidParameter,
                       "Cannot export " + what + " to '" + path + "': it is not a mesh and has no mesh shape", error);
    MeshArrays mesh;
    const MStatus st = meshFromScene(shape, mesh);
    if (!st)
        return failure(st.statusCode(), "Cannot export " + what + " to '" + path + "': its mesh cannot be read",
                       error);
    MDagPath transform = shape;
    transform.pop();
    mesh.name = nodeName(transform.node());
    return writeMeshFile(path, {mesh}, error);
}

} // namespace host
