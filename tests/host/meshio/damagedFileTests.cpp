// Damaged mesh files whose counts and lengths promise more than the file holds: each is
// refused at once, naming the file, the field and the reason, before any reader reserves
// what the damage asks for.

#include "meshTestSupport.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

class DamagedFiles : public meshtest::MeshFileTest {
protected:
    void expectRefused(const std::string& file, const std::string& reason)
    {
        std::vector<host::MeshArrays> meshes;
        std::string error;
        EXPECT_FALSE(host::readMeshFile(file, meshes, &error)) << file;
        EXPECT_TRUE(meshes.empty());
        EXPECT_NE(error.find(file), std::string::npos) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
    }
    // A good file of the format, written by the host, as bytes.
    std::string goodFile(const std::string& name)
    {
        EXPECT_TRUE(host::writeMeshFile(path(name), {host::gridPlane(1.0f, 1.0f, 2, 2)})) << host::logText();
        std::ifstream in(path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    static void putU32(std::string& bytes, std::size_t at, std::uint32_t value)
    {
        for (int i = 0; i < 4; ++i)
            bytes[at + std::size_t(i)] = char((value >> (8 * i)) & 0xffu);
    }
    static std::string u32(std::uint32_t value)
    {
        std::string out(4, '\0');
        putU32(out, 0, value);
        return out;
    }
};

const char* const kPlyBody = "0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";

TEST_F(DamagedFiles, PlyHeaderCounts)
{
    const std::string head = "ply\nformat ascii 1.0\n";
    const std::string vertex = "element vertex 3\nproperty float x\nproperty float y\nproperty float z\n";
    const std::string face = "element face 1\nproperty list uchar int vertex_indices\n";
    // An element with no properties takes no bytes: a huge count is read past, not walked.
    std::vector<host::MeshArrays> meshes;
    EXPECT_TRUE(host::readMeshFile(
        writeText("empty.ply", head + "element junk 9000000000000000000\n" + vertex + face + "end_header\n" + kPlyBody),
        meshes))
        << host::logText();
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_EQ(meshes[0].numVertices(), 3);
    // "1e9" is no count; neither is a count with words after it.
    expectRefused(writeText("exp.ply", head + "element vertex 1e9\nproperty float x\nproperty float y\n"
                                              "property float z\n" + face + "end_header\n" + kPlyBody),
                  "the count '1e9' of the element 'vertex'");
    expectRefused(writeText("extra.ply", head + "element vertex 3 4\n" + face + "end_header\n"), "element name and count");
    // A list count beyond the bytes left.
    expectRefused(writeText("list.ply", head + vertex + face + "end_header\n0 0 0\n1 0 0\n0 1 0\n4294967295 0 1 2\n"),
                  "the list count 4294967295 in face 0");
}

TEST_F(DamagedFiles, GlbChunkAndHeaderLengths)
{
    const std::string good = goodFile("good.glb");
    ASSERT_GT(good.size(), 28u);
    std::string bytes = good;
    putU32(bytes, 12, 0x7ffffff0u); // the JSON chunk's length
    std::ofstream(path("json.glb"), std::ios::binary) << bytes;
    expectRefused(path("json.glb"), "chunk 0 length 2147483632 runs past the file's");

    bytes = good;
    const std::size_t bin = 20 + std::size_t(static_cast<unsigned char>(good[12])) +
                            (std::size_t(static_cast<unsigned char>(good[13])) << 8);
    putU32(bytes, bin, 0xfffffff0u);
    std::ofstream(path("bin.glb"), std::ios::binary) << bytes;
    expectRefused(path("bin.glb"), "chunk 1 length 4294967280");

    bytes = good;
    putU32(bytes, 8, std::uint32_t(good.size() + 1));
    std::ofstream(path("header.glb"), std::ios::binary) << bytes;
    expectRefused(path("header.glb"), "the GLB header's length");
}

TEST_F(DamagedFiles, GltfBuffersViewsAndAccessors)
{
    const std::string good = goodFile("good.gltf");
    auto damaged = [&](const std::string& name, const std::string& from, const std::string& to) {
        std::string text = good;
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from << " in " << text;
        if (at != std::string::npos)
            text.replace(at, from.size(), to);
        return writeText(name, text);
    };
    expectRefused(damaged("count.gltf", "\"count\":", "\"count\":1000000000000,\"x\":"), ".count 1000000000000");
    expectRefused(damaged("view.gltf", "\"byteLength\":", "\"byteLength\":99999999999,\"x\":"), "byteLength");
    expectRefused(damaged("type.gltf", "\"componentType\":", "\"componentType\":7,\"x\":"), "componentType 7");
    expectRefused(writeText("deep.gltf", "{\"asset\":" + std::string(100000, '[') + std::string(100000, ']') + "}"),
                  "nests deeper than 64 levels");
}

TEST_F(DamagedFiles, FbxArrayCountsRecordsAndNesting)
{
    // Text: the "*N" before an array is what the reader reserves.
    std::string text = goodFile("good.fbx");
    const std::size_t star = text.find('*');
    ASSERT_NE(star, std::string::npos);
    std::size_t digits = star + 1;
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9')
        ++digits;
    text.replace(star, digits - star, "*99999999999999");
    expectRefused(writeText("count.fbx", text), "array count at byte");
    expectRefused(writeText("deep.fbx", "; FBX 7.4.0 project file\n" + std::string(10000, '{')), "nest deeper than 64");
    // Cut short, or with a NUL inside: the reader would give up part-way (and leak).
    const std::string good = goodFile("good.fbx");
    expectRefused(writeText("cut.fbx", good.substr(0, good.size() / 2)), "scope(s) are not closed");
    std::string nul = good;
    nul[nul.size() / 2] = '\0';
    expectRefused(writeText("nul.fbx", nul), "is a NUL");

    // Binary: a record holding one deflated array of doubles.
    auto binary = [&](const std::string& name, std::uint32_t endOffset, std::uint32_t length, std::uint32_t stored) {
        std::string bytes("Kaydara FBX Binary  \0\x1a\0", 23);
        bytes += u32(7400);
        const std::string record = "Vertices";
        const std::uint32_t start = std::uint32_t(bytes.size());
        const std::uint32_t properties = 1 + 12 + 10;
        bytes += u32(endOffset ? endOffset : start + 13 + std::uint32_t(record.size()) + properties);
        bytes += u32(1) + u32(properties) + std::string(1, char(record.size())) + record;
        bytes += "d" + u32(length) + u32(1) + u32(stored) + std::string(10, 'x');
        bytes += std::string(13, '\0');
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    };
    expectRefused(binary("array.fbx", 0, 0x10000000u, 10), "record 'Vertices' property 0 array length 268435456");
    expectRefused(binary("stored.fbx", 0, 1, 0xffffff00u), "runs past its property list");
    expectRefused(binary("end.fbx", 0x7fffffffu, 1, 10), "ends at 2147483647, outside its parent");
}

TEST_F(DamagedFiles, StlTriangleCount)
{
    std::string bytes = goodFile("good.stl");
    putU32(bytes, 80, 0xffffffffu);
    std::ofstream(path("count.stl"), std::ios::binary) << bytes;
    expectRefused(path("count.stl"), "the triangle count 4294967295");
}

} // namespace
