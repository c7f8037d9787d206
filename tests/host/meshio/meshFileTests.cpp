// Reading and writing mesh files: every format round-trips what it can hold, and files
// written by hand (as other programs write them) read as their text says.

#include "meshTestSupport.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <cstring>

namespace {

using meshtest::samePolygons;

host::MeshArrays translated(host::MeshArrays mesh, float dx)
{
    for (std::size_t i = 0; i < mesh.points.size(); i += 3)
        mesh.points[i] += dx;
    return mesh;
}

host::MeshArrays named(host::MeshArrays mesh, const std::string& name)
{
    mesh.name = name;
    return mesh;
}

// The meshes as one, positions and polygons only, as single-mesh formats store them.
host::MeshArrays joined(const std::vector<host::MeshArrays>& meshes)
{
    host::MeshArrays all;
    for (const host::MeshArrays& mesh : meshes) {
        const int offset = all.numVertices();
        all.points.insert(all.points.end(), mesh.points.begin(), mesh.points.end());
        all.counts.insert(all.counts.end(), mesh.counts.begin(), mesh.counts.end());
        for (int id : mesh.connects)
            all.connects.push_back(id + offset);
    }
    return all;
}

const host::MeshArrays* meshNamed(const std::vector<host::MeshArrays>& meshes, const std::string& name)
{
    for (const host::MeshArrays& mesh : meshes)
        if (mesh.name == name)
            return &mesh;
    return nullptr;
}

struct FormatCase {
    const char* extension;
    bool separateMeshes; // one mesh per entry, named; otherwise all joined into one
    bool keepsUVs;
    bool trianglesOnly; // polygons come back split into triangles
};

void PrintTo(const FormatCase& format, std::ostream* os) { *os << format.extension; }

class MeshFileRoundTrip : public meshtest::MeshFileTest, public ::testing::WithParamInterface<FormatCase> {
protected:
    std::vector<host::MeshArrays> roundTrip(const std::vector<host::MeshArrays>& meshes)
    {
        const std::string file = path(std::string("roundTrip.") + GetParam().extension);
        std::string error;
        EXPECT_TRUE(host::writeMeshFile(file, meshes, &error)) << error;
        std::vector<host::MeshArrays> back;
        EXPECT_TRUE(host::readMeshFile(file, back, &error)) << error;
        for (const host::MeshArrays& mesh : back) {
            std::string why;
            EXPECT_TRUE(host::validate(mesh, &why)) << why;
        }
        return back;
    }

    // Triangulated, the polygons must cover the same surface: same vertices, one triangle
    // per polygon corner beyond the second, still closed, the same enclosed volume, and each
    // corner's UV one the vertex had in the polygons written.
    void expectTriangulated(const host::MeshArrays& expected, const host::MeshArrays& got, bool compareUVs)
    {
        ASSERT_EQ(got.numVertices(), expected.numVertices());
        int triangles = 0;
        for (int count : expected.counts)
            triangles += count - 2;
        EXPECT_EQ(got.numPolygons(), triangles);
        for (int count : got.counts)
            ASSERT_EQ(count, 3);
        const std::vector<int> match = meshtest::matchVertices(got, expected, 1e-5);
        ASSERT_EQ(std::count(match.begin(), match.end(), -1), 0) << "vertices moved";
        EXPECT_TRUE(meshtest::isClosed(got));
        EXPECT_NEAR(meshtest::signedVolume(got), meshtest::signedVolume(expected), 1e-4);
        if (!compareUVs)
            return;
        ASSERT_TRUE(got.hasUVs());
        std::vector<std::vector<std::pair<float, float>>> uvsAt(expected.numVertices());
        for (std::size_t i = 0; i < expected.connects.size(); ++i)
            uvsAt[expected.connects[i]].emplace_back(expected.u[expected.uvIds[i]], expected.v[expected.uvIds[i]]);
        for (std::size_t i = 0; i < got.connects.size(); ++i) {
            const float u = got.u[got.uvIds[i]], v = got.v[got.uvIds[i]];
            const auto& candidates = uvsAt[match[got.connects[i]]];
            EXPECT_TRUE(std::any_of(candidates.begin(), candidates.end(), [&](const std::pair<float, float>& uv) {
                return std::fabs(uv.first - u) < 1e-5f && std::fabs(uv.second - v) < 1e-5f;
            })) << "UV (" << u << ", " << v << ") at face-vertex " << i << " was not written there";
        }
    }
};

TEST_P(MeshFileRoundTrip, KeepsPolygonsPositionsNamesAndUVs)
{
    const FormatCase format = GetParam();
    // Quads and triangle fans with seamed UVs, and a second mesh elsewhere.
    const std::vector<host::MeshArrays> written = {named(host::uvSphere(1.0f, 8, 6), "ball"),
                                                   named(translated(host::torus(1.5f, 0.5f, 10, 6), 4.0f), "ring")};
    const std::vector<host::MeshArrays> back = roundTrip(written);

    if (!format.separateMeshes) {
        ASSERT_EQ(back.size(), 1u);
        if (format.trianglesOnly) {
            expectTriangulated(joined(written), back[0], false);
        } else {
            EXPECT_TRUE(samePolygons(joined(written), back[0], false));
        }
        EXPECT_FALSE(back[0].hasUVs());
        return;
    }
    ASSERT_EQ(back.size(), written.size());
    for (const host::MeshArrays& mesh : written) {
        SCOPED_TRACE(mesh.name);
        const host::MeshArrays* got = meshNamed(back, mesh.name);
        ASSERT_TRUE(got) << "no mesh named '" << mesh.name << "' read back";
        if (format.trianglesOnly) {
            expectTriangulated(mesh, *got, format.keepsUVs);
        } else {
            EXPECT_TRUE(samePolygons(mesh, *got, format.keepsUVs));
            EXPECT_EQ(got->numUVs(), mesh.numUVs()) << "UVs shared in the file are one UV";
        }
    }
}

TEST_P(MeshFileRoundTrip, KeepsADenseSurfaceWhole)
{
    const host::MeshArrays surface = host::sculptSurface(6000, 7);
    const std::vector<host::MeshArrays> back = roundTrip({surface});
    ASSERT_EQ(back.size(), 1u);
    EXPECT_TRUE(meshtest::isClosed(back[0])) << "vertices shared in the file must stay shared";
    EXPECT_TRUE(samePolygons(surface, back[0], false));
}

INSTANTIATE_TEST_SUITE_P(Formats, MeshFileRoundTrip,
                         ::testing::Values(FormatCase{"obj", true, true, false}, FormatCase{"gltf", true, true, true},
                                           FormatCase{"glb", true, true, true}, FormatCase{"fbx", true, true, false},
                                           FormatCase{"ply", false, false, false},
                                           FormatCase{"off", false, false, false},
                                           FormatCase{"stl", false, false, true}),
                         [](const ::testing::TestParamInfo<FormatCase>& info) { return info.param.extension; });

// ---- Files written by hand ------------------------------------------------------------------

// A unit quad and a triangle on its right edge, as every hand-written file below describes.
host::MeshArrays quadAndTriangle()
{
    host::MeshArrays mesh;
    mesh.points = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0.5f, 0};
    mesh.counts = {4, 3};
    mesh.connects = {0, 1, 2, 3, 1, 4, 2};
    return mesh;
}

using HandWrittenFiles = meshtest::MeshFileTest;

TEST_F(HandWrittenFiles, ObjWithAQuadAndATriangle)
{
    const std::string file = writeText("quadTri.obj", "# two polygons sharing an edge\n"
                                                      "o panel\n"
                                                      "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 2 0.5 0\n"
                                                      "vt 0 0\nvt 0.5 0\nvt 0.5 1\nvt 0 1\n"
                                                      "vt 0.6 0\nvt 1 0.5\nvt 0.6 1\n"
                                                      "f 1/1 2/2 3/3 4/4\n"
                                                      "f 2/5 5/6 3/7\n");
    std::vector<host::MeshArrays> meshes;
    std::string error;
    ASSERT_TRUE(host::readMeshFile(file, meshes, &error)) << error;
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_EQ(meshes[0].name, "panel");

    // The shared edge is one edge even though its ends carry different UVs on each side.
    host::MeshArrays expected = quadAndTriangle();
    expected.u = {0, 0.5f, 0.5f, 0, 0.6f, 1, 0.6f};
    expected.v = {0, 0, 1, 1, 0, 0.5f, 1};
    expected.uvIds = {0, 1, 2, 3, 4, 5, 6};
    EXPECT_TRUE(samePolygons(expected, meshes[0], true));
    EXPECT_EQ(meshes[0].numUVs(), 7);
}

TEST_F(HandWrittenFiles, OffWithAQuadAndATriangle)
{
    const std::string file = writeText("quadTri.off", "OFF\n"
                                                      "# vertices faces edges\n"
                                                      "5 2 0\n"
                                                      "0 0 0\n1 0 0\n1 1 0\n0 1 0\n2 0.5 0\n"
                                                      "4 0 1 2 3\n"
                                                      "3 1 4 2\n");
    std::vector<host::MeshArrays> meshes;
    std::string error;
    ASSERT_TRUE(host::readMeshFile(file, meshes, &error)) << error;
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_TRUE(samePolygons(quadAndTriangle(), meshes[0], false));
    EXPECT_FALSE(meshes[0].hasUVs());
}

// Colours, flags and elements of no interest around the ones that matter are read past.
TEST_F(HandWrittenFiles, AsciiPlyWithAQuadAndATriangle)
{
    const std::string file = writeText("quadTri.ply", "ply\n"
                                                      "format ascii 1.0\n"
                                                      "comment written by hand\n"
                                                      "element vertex 5\n"
                                                      "property float x\nproperty float y\nproperty float z\n"
                                                      "property uchar red\nproperty float s\nproperty float t\n"
                                                      "element face 2\n"
                                                      "property list uchar int vertex_indices\n"
                                                      "property uchar flags\n"
                                                      "element edge 1\n"
                                                      "property list uchar int corners\n"
                                                      "end_header\n"
                                                      "0 0 0 255 0 0\n1 0 0 255 0.5 0\n1 1 0 0 0.5 1\n"
                                                      "0 1 0 0 0 1\n2 0.5 0 9 1 0.5\n"
                                                      "4 0 1 2 3 7\n"
                                                      "3 1 4 2 7\n"
                                                      "2 0 4\n");
    std::vector<host::MeshArrays> meshes;
    std::string error;
    ASSERT_TRUE(host::readMeshFile(file, meshes, &error)) << error;
    ASSERT_EQ(meshes.size(), 1u);
    host::MeshArrays expected = quadAndTriangle();
    expected.u = {0, 0.5f, 0.5f, 0, 1};
    expected.v = {0, 0, 1, 1, 0.5f};
    expected.uvIds = expected.connects;
    EXPECT_TRUE(samePolygons(expected, meshes[0], true));
}

// As a big-endian machine writes it: doubles for positions, unsigned ids, a short count.
TEST_F(HandWrittenFiles, BigEndianBinaryPly)
{
    std::string bytes = "ply\nformat binary_big_endian 1.0\n"
                        "element vertex 5\nproperty double x\nproperty double y\nproperty double z\n"
                        "element face 2\nproperty list ushort uint vertex_indices\nend_header\n";
    auto put = [&bytes](const void* value, std::size_t size) {
        const char* p = static_cast<const char*>(value);
        for (std::size_t i = size; i-- > 0;) // most significant byte first on little-endian hosts
            bytes += p[i];
    };
    const host::MeshArrays mesh = quadAndTriangle();
    for (float c : mesh.points) {
        const double d = c;
        put(&d, sizeof d);
    }
    std::size_t next = 0;
    for (int count : mesh.counts) {
        const unsigned short n = static_cast<unsigned short>(count);
        put(&n, sizeof n);
        for (int k = 0; k < count; ++k) {
            const unsigned id = static_cast<unsigned>(mesh.connects[next++]);
            put(&id, sizeof id);
        }
    }
    std::vector<host::MeshArrays> meshes;
    std::string error;
    ASSERT_TRUE(host::readMeshFile(writeText("bigEndian.ply", bytes), meshes, &error)) << error;
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_TRUE(samePolygons(mesh, meshes[0], false));
}

std::string base64(const std::vector<unsigned char>& bytes)
{
    static const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned n = bytes[i] << 16;
        if (i + 1 < bytes.size())
            n |= bytes[i + 1] << 8;
        if (i + 2 < bytes.size())
            n |= bytes[i + 2];
        out += digits[(n >> 18) & 63];
        out += digits[(n >> 12) & 63];
        out += i + 1 < bytes.size() ? digits[(n >> 6) & 63] : '=';
        out += i + 2 < bytes.size() ? digits[n & 63] : '=';
    }
    return out;
}

// One triangle (0,0,0) (1,0,0) (0,1,0) facing +Z, placed twice: moved by a node, and inside a
// moved parent under a node that mirrors X. Its texture coordinates put the image's top-left
// corner (glTF's UV origin) at the third vertex.
std::string placedTriangleGltf()
{
    const float positions[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    const unsigned short indices[] = {0, 1, 2, 0};
    const float uvs[] = {0, 1, 1, 1, 0, 0};
    std::vector<unsigned char> buffer(sizeof positions + sizeof indices + sizeof uvs);
    std::memcpy(buffer.data(), positions, sizeof positions);
    std::memcpy(buffer.data() + sizeof positions, indices, sizeof indices);
    std::memcpy(buffer.data() + sizeof positions + sizeof indices, uvs, sizeof uvs);
    return R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0, 1]}],
  "nodes": [{"name": "moved", "mesh": 0, "translation": [10, 0, 0]},
            {"name": "parent", "translation": [0, 5, 0], "children": [2]},
            {"name": "mirrored", "mesh": 0, "scale": [-1, 1, 1]}],
  "meshes": [{"name": "tri", "primitives": [{"attributes": {"POSITION": 0, "TEXCOORD_0": 2}, "indices": 1}]}],
  "buffers": [{"byteLength": 68, "uri": "data:application/octet-stream;base64,)" +
           base64(buffer) + R"("}],
  "bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 36},
                  {"buffer": 0, "byteOffset": 36, "byteLength": 6},
                  {"buffer": 0, "byteOffset": 44, "byteLength": 24}],
  "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3",
                 "min": [0, 0, 0], "max": [1, 1, 0]},
                {"bufferView": 1, "componentType": 5123, "count": 3, "type": "SCALAR"},
                {"bufferView": 2, "componentType": 5126, "count": 3, "type": "VEC2"}]})";
}

double normalZ(const host::MeshArrays& triangle)
{
    const auto a = meshtest::point(triangle, triangle.connects[0]);
    const auto b = meshtest::point(triangle, triangle.connects[1]);
    const auto c = meshtest::point(triangle, triangle.connects[2]);
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

TEST_F(HandWrittenFiles, GltfNodesPlaceAndNameTheirMeshes)
{
    const std::string file = writeText("placed.gltf", placedTriangleGltf());
    std::vector<host::MeshArrays> meshes;
    std::string error;
    ASSERT_TRUE(host::readMeshFile(file, meshes, &error)) << error;
    ASSERT_EQ(meshes.size(), 2u);

    const host::MeshArrays* moved = meshNamed(meshes, "moved");
    ASSERT_TRUE(moved);
    // UVs have their origin at the bottom left, as in Maya.
    host::MeshArrays expected;
    expected.points = {10, 0, 0, 11, 0, 0, 10, 1, 0};
    expected.counts = {3};
    expected.connects = {0, 1, 2};
    expected.u = {0, 1, 0};
    expected.v = {0, 0, 1};
    expected.uvIds = {0, 1, 2};
    EXPECT_TRUE(samePolygons(expected, *moved, true));

    const host::MeshArrays* mirrored = meshNamed(meshes, "mirrored");
    ASSERT_TRUE(mirrored);
    host::MeshArrays placed;
    placed.points = {0, 5, 0, -1, 5, 0, 0, 6, 0};
    const std::vector<int> match = meshtest::matchVertices(placed, *mirrored, 1e-6);
    EXPECT_EQ(std::count(match.begin(), match.end(), -1), 0) << "the parent's move and the mirror both apply";
    // Mirrored geometry keeps facing the way it faced: the winding turns with it.
    EXPECT_GT(normalZ(*mirrored), 0.0);
    EXPECT_GT(normalZ(*moved), 0.0);
}

TEST_F(HandWrittenFiles, LinesBesidePolygonsAreLeftOutWithAWarning)
{
    const std::string file = writeText("wire.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 5 5 5\n"
                                                   "f 1 2 3\n"
                                                   "l 3 4\n");
    std::vector<host::MeshArrays> meshes;
    ASSERT_TRUE(host::readMeshFile(file, meshes));
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_EQ(meshes[0].counts, std::vector<int>{3});
    EXPECT_EQ(meshes[0].numVertices(), 3) << "a vertex only a line uses is not a mesh vertex";
    EXPECT_TRUE(host::logContains(host::LogLevel::kWarning, "wire.obj"));
}

} // namespace
