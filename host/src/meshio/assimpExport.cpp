// Writing mesh files through Assimp's exporters: the meshes become a scene of one node per
// mesh under a root, sharing one plain material.

#include "meshio/meshFormats.h"

#include <assimp/Exporter.hpp>
#include <assimp/material.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <unordered_map>

namespace host {
namespace {

// Assimp keeps one UV per vertex, so a vertex on a UV seam becomes one Assimp vertex per
// distinct UV it carries; without UVs the vertices map one to one.
aiMesh* assimpMesh(const MeshArrays& source, bool withUVs)
{
    auto mesh = std::make_unique<aiMesh>();
    mesh->mName = aiString(source.name);
    mesh->mMaterialIndex = 0;

    std::vector<unsigned> corners(source.connects.size());
    std::vector<int> vertexOf; // Assimp vertex -> source vertex
    std::vector<int> uvOf;     // Assimp vertex -> source UV
    withUVs = withUVs && source.hasUVs();
    if (withUVs) {
        std::unordered_map<std::uint64_t, unsigned> ids;
        ids.reserve(source.connects.size());
        for (std::size_t i = 0; i < source.connects.size(); ++i) {
            const std::uint64_t key = (static_cast<std::uint64_t>(source.connects[i]) << 32) |
                                      static_cast<std::uint32_t>(source.uvIds[i]);
            auto found = ids.emplace(key, static_cast<unsigned>(vertexOf.size()));
            if (found.second) {
                vertexOf.push_back(source.connects[i]);
                uvOf.push_back(source.uvIds[i]);
            }
            corners[i] = found.first->second;
        }
    } else {
        vertexOf.resize(source.points.size() / 3);
        for (std::size_t i = 0; i < vertexOf.size(); ++i)
            vertexOf[i] = static_cast<int>(i);
        for (std::size_t i = 0; i < source.connects.size(); ++i)
            corners[i] = static_cast<unsigned>(source.connects[i]);
    }

    mesh->mNumVertices = static_cast<unsigned>(vertexOf.size());
    mesh->mVertices = new aiVector3D[vertexOf.size()];
    for (std::size_t i = 0; i < vertexOf.size(); ++i) {
        const float* p = &source.points[3 * static_cast<std::size_t>(vertexOf[i])];
        mesh->mVertices[i] = aiVector3D(p[0], p[1], p[2]);
    }
    if (withUVs) {
        mesh->mNumUVComponents[0] = 2;
        mesh->mTextureCoords[0] = new aiVector3D[uvOf.size()];
        for (std::size_t i = 0; i < uvOf.size(); ++i)
            mesh->mTextureCoords[0][i] = aiVector3D(source.u[uvOf[i]], source.v[uvOf[i]], 0.0f);
    }

    mesh->mNumFaces = static_cast<unsigned>(source.counts.size());
    mesh->mFaces = new aiFace[source.counts.size()];
    std::size_t next = 0;
    for (std::size_t f = 0; f < source.counts.size(); ++f) {
        aiFace& face = mesh->mFaces[f];
        face.mNumIndices = static_cast<unsigned>(source.counts[f]);
        face.mIndices = new unsigned[face.mNumIndices];
        for (unsigned k = 0; k < face.mNumIndices; ++k)
            face.mIndices[k] = corners[next++];
        mesh->mPrimitiveTypes |= face.mNumIndices == 3 ? aiPrimitiveType_TRIANGLE : aiPrimitiveType_POLYGON;
    }
    return mesh.release();
}

std::unique_ptr<aiScene> assimpScene(const std::vector<MeshArrays>& meshes, bool withUVs)
{
    auto scene = std::make_unique<aiScene>();
    // Vertices are shared between faces, but AI_SCENE_FLAGS_NON_VERBOSE_FORMAT must stay
    // clear: it makes the exporter unshare them first, which overruns its buffers on
    // polygons of more than three vertices. Every exporter used here takes shared vertices.

    scene->mNumMaterials = 1;
    scene->mMaterials = new aiMaterial*[1];
    scene->mMaterials[0] = new aiMaterial();
    const aiString materialName("default");
    scene->mMaterials[0]->AddProperty(&materialName, AI_MATKEY_NAME);

    scene->mNumMeshes = static_cast<unsigned>(meshes.size());
    scene->mMeshes = new aiMesh*[meshes.size()]();
    for (std::size_t i = 0; i < meshes.size(); ++i)
        scene->mMeshes[i] = assimpMesh(meshes[i], withUVs);

    scene->mRootNode = new aiNode("root");
    scene->mRootNode->mNumChildren = static_cast<unsigned>(meshes.size());
    scene->mRootNode->mChildren = new aiNode*[meshes.size()];
    for (std::size_t i = 0; i < meshes.size(); ++i) {
        aiNode* node = new aiNode(meshes[i].name);
        node->mParent = scene->mRootNode;
        node->mNumMeshes = 1;
        node->mMeshes = new unsigned[1]{static_cast<unsigned>(i)};
        scene->mRootNode->mChildren[i] = node;
    }
    return scene;
}

} // namespace

bool exportWithAssimp(const std::string& path, const char* formatId, AssimpExport what,
                      const std::vector<MeshArrays>& meshes, std::string* why)
{
    try {
        std::unique_ptr<aiScene> scene = assimpScene(meshes, what == AssimpExport::kKeepUVs);
        Assimp::Exporter exporter;
        const unsigned steps = what == AssimpExport::kTriangles ? aiProcess_Triangulate : 0u;
        if (exporter.Export(scene.get(), formatId, path, steps) == aiReturn_SUCCESS)
            return true;
        const char* message = exporter.GetErrorString();
        if (why)
            *why = message && *message ? message : "Assimp could not write it";
        return false;
    } catch (const std::exception& e) {
        if (why)
            *why = e.what();
        return false;
    }
}

} // namespace host
