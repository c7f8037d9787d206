// OFF: an "OFF" line, the vertex and face counts, one "x y z" line per vertex and one
// "n i0 i1 ..." line per polygon, '#' starting a comment. Assimp has no exporter for it, and
// its reader clamps bad vertex ids instead of refusing them, so both directions live here.
// The reader takes the ASCII variants with colours, normals or texture coordinates after
// the values it reads (COFF, NOFF, STOFF and their combinations) and ignores those extras.

#include "meshio/meshFormats.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string_view>

namespace host {
namespace {

// Walks the file's non-empty lines, comments removed, and the numbers on them.
class OffScanner {
public:
    explicit OffScanner(std::string_view text)
        : fText(text)
    {
    }

    bool nextLine()
    {
        while (fPos < fText.size()) {
            std::size_t end = fText.find('\n', fPos);
            if (end == std::string_view::npos)
                end = fText.size();
            fLine = fText.substr(fPos, end - fPos);
            fPos = end + 1;
            fLine = fLine.substr(0, fLine.find('#'));
            skipSpace();
            if (!fLine.empty())
                return true;
        }
        fLine = std::string_view();
        return false;
    }

    // The next whitespace-separated word of the current line, empty at its end.
    std::string_view word()
    {
        skipSpace();
        std::size_t end = 0;
        while (end < fLine.size() && !isSpace(fLine[end]))
            ++end;
        const std::string_view result = fLine.substr(0, end);
        fLine.remove_prefix(end);
        return result;
    }

    template <typename T>
    bool number(T& value)
    {
        const std::string_view text = word();
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
    }

    bool lineEmpty()
    {
        skipSpace();
        return fLine.empty();
    }

private:
    static bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }
    void skipSpace()
    {
        while (!fLine.empty() && isSpace(fLine.front()))
            fLine.remove_prefix(1);
    }

    std::string_view fText;
    std::size_t fPos = 0;
    std::string_view fLine;
};

bool fail(std::string* why, const std::string& text)
{
    if (why)
        *why = text;
    return false;
}

// The keyword line: [ST][C][N]OFF, optionally followed by the counts.
bool readKeyword(OffScanner& scan, std::string* why)
{
    const std::string_view keyword = scan.word();
    if (keyword.size() < 3 || keyword.substr(keyword.size() - 3) != "OFF")
        return fail(why, "it does not start with an OFF keyword");
    std::string_view prefix = keyword.substr(0, keyword.size() - 3);
    for (std::string_view allowed : {"ST", "C", "N"})
        if (prefix.substr(0, allowed.size()) == allowed)
            prefix.remove_prefix(allowed.size());
    if (!prefix.empty())
        return fail(why, "the OFF variant '" + std::string(keyword) + "' is not supported");
    return true;
}

} // namespace

bool readOff(const std::string& path, std::vector<MeshArrays>& meshes, std::string* why)
{
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open())
        return fail(why, std::strerror(errno));
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad())
        return fail(why, "reading failed");
    OffScanner scan(text);
    if (!scan.nextLine())
        return fail(why, "it holds nothing but comments");
    if (!readKeyword(scan, why))
        return false;
    if (scan.lineEmpty() && !scan.nextLine())
        return fail(why, "the vertex and face counts are missing");
    long long numVertices = -1, numFaces = -1;
    if (!scan.number(numVertices) || !scan.number(numFaces) || numVertices < 0 || numFaces < 0)
        return fail(why, "the vertex and face counts are not two non-negative numbers");
    // Every vertex line takes at least six bytes and every face line eight; counts beyond
    // that are damage, not a reason to reserve memory.
    if (numVertices > static_cast<long long>(text.size() / 6) || numFaces > static_cast<long long>(text.size() / 8) ||
        numVertices > std::numeric_limits<int>::max())
        return fail(why, "it is too short for the " + std::to_string(numVertices) + " vertices and " +
                             std::to_string(numFaces) + " faces its header gives");

    MeshArrays mesh;
    mesh.points.reserve(3 * static_cast<std::size_t>(numVertices));
    for (long long i = 0; i < numVertices; ++i) {
        float xyz[3];
        if (!scan.nextLine())
            return fail(why, "it ends after " + std::to_string(i) + " of its " + std::to_string(numVertices) +
                                 " vertices");
        if (!scan.number(xyz[0]) || !scan.number(xyz[1]) || !scan.number(xyz[2]))
            return fail(why, "vertex " + std::to_string(i) + " is not three numbers");
        mesh.points.insert(mesh.points.end(), xyz, xyz + 3);
    }
    mesh.counts.reserve(static_cast<std::size_t>(numFaces));
    for (long long f = 0; f < numFaces; ++f) {
        if (!scan.nextLine())
            return fail(why, "it ends after " + std::to_string(f) + " of its " + std::to_string(numFaces) + " faces");
        int count = 0;
        if (!scan.number(count) || count < 3)
            return fail(why, "face " + std::to_string(f) + " does not start with a vertex count of three or more");
        for (int k = 0; k < count; ++k) {
            long long id = -1;
            if (!scan.number(id))
                return fail(why, "face " + std::to_string(f) + " lists fewer than its " + std::to_string(count) +
                                     " vertex ids");
            if (id < 0 || id >= numVertices)
                return fail(why, "face " + std::to_string(f) + " refers to vertex " + std::to_string(id) + " of " +
                                     std::to_string(numVertices));
            mesh.connects.push_back(static_cast<int>(id));
        }
        mesh.counts.push_back(count);
    }
    if (mesh.counts.empty())
        return fail(why, "it holds no polygon mesh");
    std::string problem;
    if (!validate(mesh, &problem))
        return fail(why, problem);
    meshes.push_back(std::move(mesh));
    return true;
}

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

bool writeOff(const std::string& path, const std::vector<MeshArrays>& meshes, std::string* why)
{
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "w"));
    if (!file)
        return fail(why, std::strerror(errno));
    std::size_t numVertices = 0, numPolygons = 0;
    for (const MeshArrays& mesh : meshes) {
        numVertices += mesh.points.size() / 3;
        numPolygons += mesh.counts.size();
    }
    std::FILE* out = file.get();
    std::fprintf(out, "OFF\n%zu %zu 0\n", numVertices, numPolygons);
    // Nine significant digits bring every float back exactly.
    for (const MeshArrays& mesh : meshes)
        for (std::size_t i = 0; i + 2 < mesh.points.size(); i += 3)
            std::fprintf(out, "%.9g %.9g %.9g\n", mesh.points[i], mesh.points[i + 1], mesh.points[i + 2]);
    std::size_t offset = 0;
    for (const MeshArrays& mesh : meshes) {
        std::size_t next = 0;
        for (int count : mesh.counts) {
            std::fprintf(out, "%d", count);
            for (int k = 0; k < count; ++k)
                std::fprintf(out, " %zu", offset + static_cast<std::size_t>(mesh.connects[next++]));
            std::fputc('\n', out);
        }
        offset += mesh.points.size() / 3;
    }
    const bool failed = std::ferror(out) != 0;
    if (std::fclose(file.release()) != 0 || failed)
        return fail(why, "writing failed");
    return true;
}

} // namespace host
