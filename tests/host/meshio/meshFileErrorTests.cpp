// Mesh files that cannot be read or written: each fails with a message naming the file and
// saying why, in the returned error and in the host log, and nothing crashes.

#include "meshTestSupport.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <cstring>
#include <iterator>
#include <random>
#include <utility>

namespace {

const char* const kExtensions[] = {"obj", "ply", "off", "stl", "gltf", "glb", "fbx"};

class MeshFileErrors : public meshtest::MeshFileTest {
protected:
    // Reading fails, names the file and the reason, logs it, and leaves no meshes behind.
    void expectReadFails(const std::string& file, const std::string& reason)
    {
        std::vector<host::MeshArrays> meshes(1, host::gridPlane(1.0f, 1.0f, 1, 1));
        std::string error;
        const MStatus status = host::readMeshFile(file, meshes, &error);
        EXPECT_FALSE(status) << file;
        EXPECT_TRUE(meshes.empty()) << file;
        EXPECT_NE(error.find(file), std::string::npos) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, file)) << host::logText();
    }

    void expectWriteFails(const std::string& file, const std::vector<host::MeshArrays>& meshes,
                          const std::string& reason)
    {
        std::string error;
        EXPECT_FALSE(host::writeMeshFile(file, meshes, &error)) << file;
        EXPECT_NE(error.find(file), std::string::npos) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, file)) << host::logText();
    }
};

TEST_F(MeshFileErrors, AMissingFileOrADirectory)
{
    for (const char* ext : kExtensions)
        expectReadFails(path(std::string("absent.") + ext), "no such file");
    std::filesystem::create_directory(path("folder.obj"));
    expectReadFails(path("folder.obj"), "not a regular file");
}

TEST_F(MeshFileErrors, AnEmptyFile)
{
    for (const char* ext : kExtensions)
        expectReadFails(writeText(std::string("empty.") + ext, ""), "empty");
}

TEST_F(MeshFileErrors, AnUnknownExtension)
{
    const std::string file = writeText("model.xyz", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    expectReadFails(file, "unknown format '.xyz'");
    expectReadFails(writeText("model", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), "no extension");
    expectWriteFails(path("out.xyz"), {host::gridPlane(1.0f, 1.0f, 1, 1)}, "unknown format '.xyz'");
}

TEST_F(MeshFileErrors, GarbageBytes)
{
    std::mt19937 random(20240611u);
    for (int round = 0; round < 4; ++round)
        for (const char* ext : kExtensions) {
            std::string bytes(64 + round * 1000, '\0');
            for (char& c : bytes)
                c = static_cast<char>(random());
            expectReadFails(writeText("garbage" + std::to_string(round) + "." + ext, bytes), "");
        }
}

TEST_F(MeshFileErrors, TextWithNoPolygons)
{
    expectReadFails(writeText("points.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nl 1 2 3\n"), "no polygon mesh");
    expectReadFails(writeText("nothing.off", "OFF\n3 0 0\n0 0 0\n1 0 0\n0 1 0\n"), "");
}

TEST_F(MeshFileErrors, FacesReferringToMissingVertices)
{
    expectReadFails(writeText("outOfRange.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 7\n"), "");
    expectReadFails(writeText("outOfRange.ply", "ply\nformat ascii 1.0\nelement vertex 3\n"
                                                "property float x\nproperty float y\nproperty float z\n"
                                                "element face 1\nproperty list uchar int vertex_indices\n"
                                                "end_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 9\n"),
                    "");
}

// A file cut short anywhere, as a failed copy leaves it, is refused rather than half read or
// read past its end. FBX is left out: Assimp's FBX parser leaks what it built when it meets
// damage, which the leak checker of the sanitizer build would report.
TEST_F(MeshFileErrors, TruncatedFiles)
{
    const host::MeshArrays sphere = host::uvSphere(1.0f, 12, 8);
    for (const char* ext : {"ply", "stl", "glb", "obj", "off"}) {
        const std::string whole = path(std::string("whole.") + ext);
        ASSERT_TRUE(host::writeMeshFile(whole, {sphere}));
        const auto size = std::filesystem::file_size(whole);
        for (double fraction : {0.1, 0.5, 0.9}) {
            const std::string cut = path("cut" + std::to_string(int(fraction * 10)) + "." + ext);
            std::filesystem::copy_file(whole, cut);
            std::filesystem::resize_file(cut, static_cast<std::uintmax_t>(double(size) * fraction));
            std::vector<host::MeshArrays> meshes;
            std::string error;
            if (host::readMeshFile(cut, meshes, &error)) {
                // A format that tolerates a short tail may read what is there, but only
                // whole, valid polygons.
                for (const host::MeshArrays& mesh : meshes) {
                    std::string why;
                    EXPECT_TRUE(host::validate(mesh, &why)) << cut << ": " << why;
                    EXPECT_LT(mesh.numPolygons(), sphere.numPolygons()) << cut;
                }
            } else {
                EXPECT_NE(error.find(cut), std::string::npos) << error;
            }
        }
    }
}

// A PLY header damaged in any word is refused, whatever the body then holds.
TEST_F(MeshFileErrors, DamagedPlyHeaders)
{
    const std::string whole = path("whole.ply");
    ASSERT_TRUE(host::writeMeshFile(whole, {host::uvSphere(1.0f, 12, 8)}));
    std::ifstream in(whole, std::ios::binary);
    const std::string original((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::pair<const char*, const char*> damage[] = {{"uchar", "uehar"},
                                                          {"end_header", "end_heade1"},
                                                          {"element face 96", "element face 960000"},
                                                          {"element vertex 86", "element vertex 8"},
                                                          {"element vertex 86", "element vertex -86"},
                                                          {"binary_little_endian", "binary_middle_endian"},
                                                          {"property float x", "property float w"}};
    for (const auto& [from, to] : damage) {
        std::string text = original;
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        text.replace(at, std::strlen(from), to);
        expectReadFails(writeText(std::string("damaged-") + to + ".ply", text), "");
    }
}

TEST_F(MeshFileErrors, WritingNothingOrABadMesh)
{
    expectWriteFails(path("none.obj"), {}, "no mesh");
    expectWriteFails(path("empty.obj"), {host::MeshArrays()}, "no polygons");

    host::MeshArrays broken = host::gridPlane(1.0f, 1.0f, 2, 2);
    broken.name = "broken";
    broken.connects[3] = 99;
    for (const char* ext : kExtensions)
        expectWriteFails(path(std::string("broken.") + ext), {broken}, "vertex id 99");
    EXPECT_TRUE(host::logContains("broken"));
}

TEST_F(MeshFileErrors, WritingIntoAMissingDirectory)
{
    for (const char* ext : kExtensions)
        expectWriteFails(path(std::string("no/such/dir/mesh.") + ext), {host::gridPlane(1.0f, 1.0f, 1, 1)}, "");
}

} // namespace
