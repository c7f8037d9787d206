#include "host/meshFiles.h"

#include "meshio/containerChecks.h"
#include "meshio/meshFormats.h"

#include "host/log.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace host {
namespace {

enum class Reader { kAssimp, kOff, kPly };

constexpr std::uintmax_t kMaxMeshFileBytes = std::uintmax_t(2) << 30;

struct Format {
    const char* extension;
    Reader reader;
    bool writeOff;        // written here rather than by Assimp
    const char* assimpId; // Assimp's exporter id
    AssimpExport what;
};

// PLY and OFF are read here: on damaged files Assimp's PLY reader runs off its buffers and
// its OFF reader clamps bad vertex ids. What each format can hold decides what is handed to
// its exporter: PLY keeps UVs only per vertex, so writing them would split every seam vertex
// in the file. FBX is written as text: Assimp cannot read back the binary FBX it writes.
const Format kFormats[] = {
    {"obj", Reader::kAssimp, false, "objnomtl", AssimpExport::kKeepUVs},
    {"ply", Reader::kPly, false, "plyb", AssimpExport::kPositionsOnly},
    {"off", Reader::kOff, true, nullptr, AssimpExport::kPositionsOnly},
    {"stl", Reader::kAssimp, false, "stlb", AssimpExport::kTriangles},
    {"gltf", Reader::kAssimp, false, "gltf2", AssimpExport::kKeepUVs},
    {"glb", Reader::kAssimp, false, "glb2", AssimpExport::kKeepUVs},
    {"fbx", Reader::kAssimp, false, "fbxa", AssimpExport::kKeepUVs},
};

const char* const kKnownExtensions = ".obj, .ply, .off, .stl, .gltf, .glb, .fbx";

std::string extensionOf(const std::string& path)
{
    std::string ext = std::filesystem::path(path).extension().string();
    if (!ext.empty())
        ext.erase(0, 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

const Format* formatOf(const std::string& path, std::string* why)
{
    const std::string ext = extensionOf(path);
    for (const Format& format : kFormats)
        if (ext == format.extension)
            return &format;
    *why = (ext.empty() ? std::string("the file name has no extension") : "unknown format '." + ext + "'") +
           " (known: " + kKnownExtensions + ")";
    return nullptr;
}

MStatus failure(MStatus::MStatusCode code, const std::string& text, std::string* error)
{
    writeLog(LogLevel::kError, text);
    if (error)
        *error = text;
    return code;
}

MStatus readFile(const std::string& path, std::vector<MeshArrays>& meshes, std::string* why)
{
    const Format* format = formatOf(path, why);
    if (!format)
        return MStatus::kInvalidParameter;
    std::error_code ec;
    const std::filesystem::file_status status = std::filesystem::status(path, ec);
    if (!std::filesystem::exists(status)) {
        *why = "no such file";
        return MStatus::kNotFound;
    }
    if (!std::filesystem::is_regular_file(status)) {
        *why = "not a regular file";
        return MStatus::kInvalidParameter;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    if (size == 0 && !ec) {
        *why = "the file is empty";
        return MStatus::kFailure;
    }
    // Readers hold the whole file in memory; past this a file is refused, not read.
    if (!ec && size > kMaxMeshFileBytes) {
        *why = "the file's " + std::to_string(size) + " bytes are more than the " +
               std::to_string(kMaxMeshFileBytes) + " a mesh file may have";
        return MStatus::kFailure;
    }
    const std::string fileName = std::filesystem::path(path).filename().string();
    bool read = false;
    switch (format->reader) {
    case Reader::kAssimp:
        read = checkContainer(path, format->extension, why) && importWithAssimp(path, fileName, meshes, why);
        break;
    case Reader::kOff: read = readOff(path, meshes, why); break;
    case Reader::kPly: read = readPly(path, meshes, why); break;
    }
    return read ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus writeFile(const std::string& path, const std::vector<MeshArrays>& meshes, std::string* why)
{
    const Format* format = formatOf(path, why);
    if (!format)
        return MStatus::kInvalidParameter;
    if (meshes.empty()) {
        *why = "there is no mesh to write";
        return MStatus::kInvalidParameter;
    }
    for (std::size_t i = 0; i < meshes.size(); ++i) {
        std::string problem;
        if (meshes[i].counts.empty())
            problem = "it has no polygons";
        else if (!validate(meshes[i], &problem))
            problem = "it is not a valid mesh: " + problem;
        if (!problem.empty()) {
            *why = "mesh " + std::to_string(i) + " ('" + meshes[i].name + "'): " + problem;
            return MStatus::kInvalidParameter;
        }
    }
    const bool written = format->writeOff ? writeOff(path, meshes, why)
                                        : exportWithAssimp(path, format->assimpId, format->what, meshes, why);
    return written ? MStatus::kSuccess : MStatus::kFailure;
}

} // namespace

MStatus readMeshFile(const std::string& path, std::vector<MeshArrays>& meshes, std::string* error)
{
    meshes.clear();
    std::string why;
    const MStatus status = readFile(path, meshes, &why);
    if (status)
        return status;
    meshes.clear();
    return failure(status.statusCode(), "Cannot read mesh file '" + path + "': " + why, error);
}

MStatus writeMeshFile(const std::string& path, const std::vector<MeshArrays>& meshes, std::string* error)
{
    std::string why;
    const MStatus status = writeFile(path, meshes, &why);
    if (status)
        return status;
    return failure(status.statusCode(), "Cannot write mesh file '" + path + "': " + why, error);
}

} // namespace host
