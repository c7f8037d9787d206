// Reading mesh files through Assimp. Assimp is asked only to join identical vertices; the
// rest (placing by node transforms, welding across UV seams, gathering a node's sub-meshes
// into one mesh) happens here so that polygons reach the caller as the file has them.

#include "meshio/meshFormats.h"

#include "host/log.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <unordered_map>
#include <utility>

namespace host {
namespace {

std::uint32_t bitsOf(float x)
{
    if (x == 0.0f) // -0 and +0 are one position
        x = 0.0f;
    std::uint32_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

// Gives equal float tuples one id, numbered in the order first seen; isNew tells the caller
// to store the tuple.
template <int N>
class TupleIds {
public:
    int idOf(const float (&values)[N], bool* isNew)
    {
        Key key;
        for (int i = 0; i < N; ++i)
            key.bits[i] = bitsOf(values[i]);
        auto found = fIds.emplace(key, static_cast<int>(fIds.size()));
        *isNew = found.second;
        return found.first->second;
    }

private:
    struct Key {
        std::uint32_t bits[N];
        bool operator==(const Key& other) const { return std::memcmp(bits, other.bits, sizeof bits) == 0; }
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const
        {
            std::uint64_t h = 0x9e3779b97f4a7c15ull;
            for (int i = 0; i < N; ++i)
                h = (h ^ key.bits[i]) * 0xff51afd7ed558ccdull;
            return static_cast<std::size_t>(h ^ (h >> 32));
        }
    };
    std::unordered_map<Key, int, KeyHash> fIds;
};

// One output mesh under construction: every sub-mesh of a node lands in it.
class MeshBuilder {
public:
    explicit MeshBuilder(MeshArrays& out)
        : fOut(out)
    {
    }

    // Appends the polygons of one Assimp mesh, placed by the node's world matrix. Faces of
    // fewer than three vertices (points, lines) are not polygons and are counted in *skipped.
    bool append(const aiMesh& mesh, const aiMatrix4x4& world, bool mirrored, std::size_t* skipped, std::string* why)
    {
        if (!mesh.mVertices || !mesh.mFaces)
            return true;
        const aiVector3D* uvs = mesh.HasTextureCoords(0) ? mesh.mTextureCoords[0] : nullptr;
        std::vector<int> ids(mesh.mNumVertices, -1);
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            if (face.mNumIndices < 3 || !face.mIndices) {
                ++*skipped;
                continue;
            }
            fOut.counts.push_back(static_cast<int>(face.mNumIndices));
            for (unsigned k = 0; k < face.mNumIndices; ++k) {
                const unsigned index = face.mIndices[mirrored ? face.mNumIndices - 1 - k : k];
                if (index >= mesh.mNumVertices) {
                    if (why)
                        *why = "a face refers to vertex " + std::to_string(index) + " of a mesh with " +
                               std::to_string(mesh.mNumVertices) + " vertices";
                    return false;
                }
                if (ids[index] < 0) {
                    const aiVector3D p = world * mesh.mVertices[index];
                    const float xyz[3] = {p.x, p.y, p.z};
                    bool isNew = false;
                    ids[index] = fPointIds.idOf(xyz, &isNew);
                    if (isNew)
                        fOut.points.insert(fOut.points.end(), xyz, xyz + 3);
                }
                fOut.connects.push_back(ids[index]);
                fCornerUVs.push_back(uvs ? uvs[index].x : 0.0f);
                fCornerUVs.push_back(uvs ? uvs[index].y : 0.0f);
            }
            fAnyUVs = fAnyUVs || uvs;
        }
        return true;
    }

    // Gives the UV set one entry per distinct UV once every sub-mesh is in.
    void finish()
    {
        if (fAnyUVs) {
            TupleIds<2> uvIds;
            fOut.uvIds.reserve(fCornerUVs.size() / 2);
            for (std::size_t i = 0; i < fCornerUVs.size(); i += 2) {
                const float uv[2] = {fCornerUVs[i], fCornerUVs[i + 1]};
                bool isNew = false;
                fOut.uvIds.push_back(uvIds.idOf(uv, &isNew));
                if (isNew) {
                    fOut.u.push_back(uv[0]);
                    fOut.v.push_back(uv[1]);
                }
            }
        }
        fCornerUVs = std::vector<float>();
    }

private:
    MeshArrays& fOut;
    TupleIds<3> fPointIds;
    std::vector<float> fCornerUVs;
    bool fAnyUVs = false;
};

// Importers name the nodes they make up ("<OFFRoot>", "defaultobject", the file's name,
// FBX pivot helpers); those are not names the user gave the mesh.
bool isOwnName(const aiString& name, const std::string& fileName)
{
    const std::string text(name.C_Str());
    return !text.empty() && text[0] != '<' && text != "defaultobject" && text != fileName &&
           text.find("$AssimpFbx$") == std::string::npos;
}

std::string meshName(const aiScene& scene, const aiNode& node, const std::string& fileName)
{
    if (isOwnName(node.mName, fileName))
        return node.mName.C_Str();
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const aiMesh* mesh = scene.mMeshes[node.mMeshes[i]];
        if (isOwnName(mesh->mName, fileName))
            return mesh->mName.C_Str();
    }
    return std::string();
}

bool convertScene(const aiScene& scene, const std::string& fileName, std::vector<MeshArrays>& meshes,
                  std::size_t* skipped, std::string* why)
{
    if (!scene.mRootNode)
        return true;
    // Depth first in file order, without recursion: a hostile file may nest deeply.
    std::vector<std::pair<const aiNode*, aiMatrix4x4>> stack{{scene.mRootNode, scene.mRootNode->mTransformation}};
    while (!stack.empty()) {
        const aiNode* node = stack.back().first;
        const aiMatrix4x4 world = stack.back().second;
        stack.pop_back();
        for (unsigned i = node->mNumChildren; i-- > 0;)
            if (node->mChildren && node->mChildren[i])
                stack.emplace_back(node->mChildren[i], world * node->mChildren[i]->mTransformation);

        if (node->mNumMeshes == 0 || !node->mMeshes)
            continue;
        for (unsigned i = 0; i < node->mNumMeshes; ++i)
            if (node->mMeshes[i] >= scene.mNumMeshes || !scene.mMeshes[node->mMeshes[i]]) {
                if (why)
                    *why = "a node refers to a mesh the file does not hold";
                return false;
            }
        MeshArrays mesh;
        MeshBuilder builder(mesh);
        // A mirroring transform turns polygons inside out unless their winding turns too.
        const bool mirrored = world.Determinant() < 0.0f;
        for (unsigned i = 0; i < node->mNumMeshes; ++i)
            if (!builder.append(*scene.mMeshes[node->mMeshes[i]], world, mirrored, skipped, why))
                return false;
        builder.finish();
        if (mesh.counts.empty())
            continue;
        mesh.name = meshName(scene, *node, fileName);
        std::string problem;
        if (!validate(mesh, &problem)) {
            if (why)
                *why = "mesh '" + mesh.name + "': " + problem;
            return false;
        }
        meshes.push_back(std::move(mesh));
    }
    return true;
}

} // namespace

bool importWithAssimp(const std::string& path, const std::string& fileName, std::vector<MeshArrays>& meshes,
                      std::string* why)
{
    try {
        Assimp::Importer importer;
        // Attributes Assimp would otherwise split vertices by; only positions and UV channel 0
        // are read.
        unsigned removed = aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS | aiComponent_COLORS |
                      aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS | aiComponent_LIGHTS | aiComponent_CAMERAS |
                      aiComponent_TEXTURES;
        // The flag word has bits for UV channels up to 6 only.
        for (unsigned channel = 1; channel <= 6; ++channel)
            removed |= aiComponent_TEXCOORDSn(channel);
        importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS, static_cast<int>(removed));
        importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
        // Validation runs before the other steps, which trust the importer's indices: a
        // damaged file must be refused, not joined out of bounds.
        const aiScene* scene = importer.ReadFile(
            path, aiProcess_ValidateDataStructure | aiProcess_JoinIdenticalVertices | aiProcess_RemoveComponent);
        if (!scene) {
            const char* message = importer.GetErrorString();
            if (why)
                *why = message && *message ? message : "Assimp could not read it";
            return false;
        }
        std::size_t skipped = 0;
        if (!convertScene(*scene, fileName, meshes, &skipped, why))
            return false;
        if (meshes.empty()) {
            if (why)
                *why = skipped ? "it holds only points and lines, no polygon mesh" : "it holds no polygon mesh";
            return false;
        }
        if (skipped)
            writeLog(LogLevel::kWarning, "Skipped " + std::to_string(skipped) + " point and line primitives in '" +
                                             fileName + "'");
        return true;
    } catch (const std::exception& e) {
        if (why)
            *why = e.what();
        return false;
    }
}

} // namespace host
