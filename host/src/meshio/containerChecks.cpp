#include "meshio/containerChecks.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

namespace host {
namespace {

using Json = nlohmann::json;
using u64 = unsigned long long;
using u128 = unsigned __int128;

bool fail(std::string* why, const std::string& text)
{
    if (why)
        *why = text;
    return false;
}

bool readAll(const std::string& path, std::string& out, std::string* why)
{
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open())
        return fail(why, std::strerror(errno));
    out.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return in.bad() ? fail(why, "reading failed") : true;
}

std::uint32_t u32At(std::string_view data, std::size_t at)
{
    std::uint32_t v = 0;
    for (int i = 3; i >= 0; --i)
        v = (v << 8) | static_cast<unsigned char>(data[at + std::size_t(i)]);
    return v;
}

u64 u64At(std::string_view data, std::size_t at)
{
    return u64(u32At(data, at)) | (u64(u32At(data, at + 4)) << 32);
}

// ---- glTF -------------------------------------------------------------------------------

// Brackets nest at most kMaxContainerNesting deep (Assimp's JSON reader recurses per level).
bool jsonNestingOk(std::string_view text, std::string* why)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > kMaxContainerNesting)
                return fail(why, "the JSON nests deeper than " + std::to_string(kMaxContainerNesting) +
                                     " levels (at byte " + std::to_string(i) + ")");
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return true;
}

// A whole number of 0 or more; `fallback` when the field is absent.
bool wholeField(const Json& object, const char* field, u64 fallback, u64& out, const std::string& where,
                std::string* why)
{
    auto it = object.find(field);
    if (it == object.end()) {
        out = fallback;
        return true;
    }
    if (it->is_number_unsigned()) {
        out = it->get<u64>();
        return true;
    }
    if (it->is_number_integer() && it->get<long long>() >= 0) {
        out = u64(it->get<long long>());
        return true;
    }
    return fail(why, where + "." + field + " is not a whole number of 0 or more");
}

// glTF 2 lists items in arrays and refers to them by index; glTF 1 keys them by id.
const Json* itemOf(const Json& root, const char* collection, const Json& ref)
{
    auto it = root.find(collection);
    if (it == root.end())
        return nullptr;
    if (it->is_array() && ref.is_number_unsigned() && ref.get<u64>() < it->size())
        return &(*it)[ref.get<std::size_t>()];
    if (it->is_object() && ref.is_string() && it->contains(ref.get<std::string>()))
        return &(*it)[ref.get<std::string>()];
    return nullptr;
}

template <typename F>
bool forEachItem(const Json& root, const char* collection, F&& visit)
{
    auto it = root.find(collection);
    if (it == root.end())
        return true;
    if (it->is_array()) {
        for (std::size_t i = 0; i < it->size(); ++i)
            if (!visit(std::string(collection) + "[" + std::to_string(i) + "]", (*it)[i]))
                return false;
    } else if (it->is_object()) {
        for (const auto& entry : it->items())
            if (!visit(std::string(collection) + "['" + entry.key() + "']", entry.value()))
                return false;
    }
    return true;
}

// Bytes that a data URI's base64 payload decodes to, at most.
u64 dataUriBytes(const std::string& uri)
{
    const std::size_t comma = uri.find(',');
    if (comma == std::string::npos)
        return 0;
    const u64 payload = uri.size() - comma - 1;
    const bool base64 = uri.substr(0, comma).find(";base64") != std::string::npos;
    return base64 ? payload / 4 * 3 + 3 : payload;
}

struct GltfSource {
    std::filesystem::path folder; // external buffers are found here
    u64 fileSize = 0;
    bool glb = false;
    u64 binBytes = 0; // the GLB's binary chunk (glTF 2) or body (glTF 1)
};

bool checkGltfJson(std::string_view text, const GltfSource& source, std::string* why)
{
    if (!jsonNestingOk(text, why))
        return false;
    const Json root = Json::parse(text.begin(), text.end(), nullptr, false);
    if (root.is_discarded() || !root.is_object())
        return fail(why, "its JSON does not parse as an object");

    // The bytes each buffer really has, and that its byteLength is no more than that.
    auto bufferBytes = [&](const std::string& where, const Json& buffer, const std::string& key, u64& bytes) {
        if (!buffer.is_object())
            return fail(why, where + " is not an object");
        if (!wholeField(buffer, "byteLength", 0, bytes, where, why))
            return false;
        u64 available = bytes;
        auto uri = buffer.find("uri");
        if (uri != buffer.end() && uri->is_string() && uri->get<std::string>().rfind("data:", 0) == 0) {
            available = dataUriBytes(uri->get<std::string>());
        } else if (uri != buffer.end() && uri->is_string()) {
            std::error_code ec;
            const u64 size = std::filesystem::file_size(source.folder / uri->get<std::string>(), ec);
            if (!ec)
                available = size; // a missing file is Assimp's to report
        } else if (source.glb && (key == "0" || key == "binary_glTF")) {
            available = source.binBytes;
        }
        if (bytes > available)
            return fail(why, where + ".byteLength " + std::to_string(bytes) + " is more than the " +
                                 std::to_string(available) + " bytes of its data");
        return true;
    };
    auto viewBytes = [&](const std::string& where, const Json& view, u64& bytes, u64& stride) {
        if (!view.is_object() || !view.contains("buffer"))
            return fail(why, where + " names no buffer");
        const Json* buffer = itemOf(root, "buffers", view["buffer"]);
        if (!buffer)
            return fail(why, where + ".buffer names no buffer of the file");
        const std::string key = view["buffer"].is_string() ? view["buffer"].get<std::string>()
                                                           : view["buffer"].dump();
        u64 total = 0, offset = 0;
        if (!bufferBytes(where + " (its buffer)", *buffer, key, total) ||
            !wholeField(view, "byteOffset", 0, offset, where, why) || !wholeField(view, "byteLength", 0, bytes, where, why) ||
            !wholeField(view, "byteStride", 0, stride, where, why))
            return false;
        if (offset > total || bytes > total - offset)
            return fail(why, where + ": bytes " + std::to_string(offset) + " + " + std::to_string(bytes) +
                                 " run past the " + std::to_string(total) + " bytes of its buffer");
        return true;
    };
    // `count` elements of `element` bytes, `stride` apart, from `offset` in the view.
    auto fits = [&](const std::string& where, const Json& viewRef, u64 offset, u64 count, u64 element,
                    u64 accessorStride) {
        const Json* view = itemOf(root, "bufferViews", viewRef);
        if (!view)
            return fail(why, where + ".bufferView names no buffer view of the file");
        u64 bytes = 0, stride = 0;
        if (!viewBytes(where + " (its buffer view)", *view, bytes, stride))
            return false;
        if (accessorStride)
            stride = accessorStride;
        if (stride == 0)
            stride = element;
        if (count == 0)
            return true;
        const u128 end = u128(offset) + u128(count - 1) * stride + element;
        if (end > bytes)
            return fail(why, where + ".count " + std::to_string(count) + " needs more than the " +
                                 std::to_string(bytes) + " bytes of its buffer view");
        return true;
    };
    auto componentBytes = [](u64 type) -> u64 {
        switch (type) {
        case 5120:
        case 5121: return 1;
        case 5122:
        case 5123: return 2;
        case 5125:
        case 5126: return 4;
        default: return 0;
        }
    };

    if (!forEachItem(root, "buffers", [&](const std::string& where, const Json& buffer) {
            u64 bytes = 0;
            const std::string key = where.substr(where.find('[') + 1, where.size() - where.find('[') - 2);
            return bufferBytes(where, buffer, key == "'binary_glTF'" ? "binary_glTF" : key, bytes);
        }))
        return false;
    if (!forEachItem(root, "bufferViews", [&](const std::string& where, const Json& view) {
            u64 bytes = 0, stride = 0;
            return viewBytes(where, view, bytes, stride);
        }))
        return false;
    return forEachItem(root, "accessors", [&](const std::string& where, const Json& accessor) {
        if (!accessor.is_object())
            return fail(why, where + " is not an object");
        u64 count = 0, offset = 0, type = 0, stride = 0;
        if (!wholeField(accessor, "count", 0, count, where, why) ||
            !wholeField(accessor, "byteOffset", 0, offset, where, why) ||
            !wholeField(accessor, "componentType", 0, type, where, why) ||
            !wholeField(accessor, "byteStride", 0, stride, where, why))
            return false;
        const u64 size = componentBytes(type);
        if (size == 0)
            return fail(why, where + ".componentType " + std::to_string(type) + " is not a glTF component type");
        static const std::pair<const char*, u64> kinds[] = {{"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4},
                                                            {"MAT2", 4},   {"MAT3", 9}, {"MAT4", 16}};
        u64 components = 0;
        auto kind = accessor.find("type");
        for (const auto& k : kinds)
            if (kind != accessor.end() && kind->is_string() && kind->get<std::string>() == k.first)
                components = k.second;
        if (components == 0)
            return fail(why, where + ".type is not a glTF accessor type");
        const u64 element = size * components;
        if (accessor.contains("bufferView")) {
            if (!fits(where, accessor["bufferView"], offset, count, element, stride))
                return false;
        } else if (u128(count) * element > source.fileSize) {
            // Deliberate: an accessor without a view is all zeros, so nothing in the file bounds
            // it; more zeros than the file has bytes is taken for damage.
            return fail(why, where + ".count " + std::to_string(count) + " has no buffer view and is more than the " +
                                 std::to_string(source.fileSize) + " bytes of the file");
        }
        auto sparse = accessor.find("sparse");
        if (sparse == accessor.end())
            return true;
        u64 sparseCount = 0, indexOffset = 0, indexType = 0, valueOffset = 0;
        const std::string sparseWhere = where + ".sparse";
        if (!sparse->is_object() || !sparse->contains("indices") || !sparse->contains("values") ||
            !(*sparse)["indices"].is_object() || !(*sparse)["values"].is_object())
            return fail(why, sparseWhere + " lacks its indices or values");
        const Json& indices = (*sparse)["indices"];
        const Json& values = (*sparse)["values"];
        if (!wholeField(*sparse, "count", 0, sparseCount, sparseWhere, why) ||
            !wholeField(indices, "byteOffset", 0, indexOffset, sparseWhere + ".indices", why) ||
            !wholeField(indices, "componentType", 0, indexType, sparseWhere + ".indices", why) ||
            !wholeField(values, "byteOffset", 0, valueOffset, sparseWhere + ".values", why))
            return false;
        if (sparseCount > count)
            return fail(why, sparseWhere + ".count " + std::to_string(sparseCount) + " is more than the accessor's " +
                                 std::to_string(count) + " elements");
        if (componentBytes(indexType) == 0 || !indices.contains("bufferView") || !values.contains("bufferView"))
            return fail(why, sparseWhere + " has no valid index type or buffer views");
        return fits(sparseWhere + ".indices", indices["bufferView"], indexOffset, sparseCount,
                    componentBytes(indexType), 0) &&
               fits(sparseWhere + ".values", values["bufferView"], valueOffset, sparseCount, element, 0);
    });
}

bool checkGlb(std::string_view data, GltfSource source, std::string* why)
{
    if (data.size() < 12 || data.substr(0, 4) != "glTF")
        return fail(why, "the GLB header is missing (no 'glTF' magic)");
    const std::uint32_t version = u32At(data, 4);
    const u64 length = u32At(data, 8);
    if (length > data.size() || length < 12)
        return fail(why, "the GLB header's length " + std::to_string(length) + " does not fit the file's " +
                             std::to_string(data.size()) + " bytes");
    source.glb = true;
    if (version == 1) {
        if (length < 20)
            return fail(why, "the GLB 1 header is cut short");
        const u64 content = u32At(data, 12);
        if (content > length - 20)
            return fail(why, "the GLB 1 content length " + std::to_string(content) + " runs past the file's " +
                                 std::to_string(length) + " bytes");
        source.binBytes = length - 20 - content;
        return checkGltfJson(data.substr(20, content), source, why);
    }
    if (version != 2)
        return fail(why, "the GLB version " + std::to_string(version) + " is not 1 or 2");
    std::string_view json;
    for (u64 at = 12, index = 0; at < length; ++index) {
        if (length - at < 8)
            return fail(why, "chunk " + std::to_string(index) + " at byte " + std::to_string(at) +
                                 " has no room for its header");
        const u64 chunkLength = u32At(data, std::size_t(at));
        const std::uint32_t type = u32At(data, std::size_t(at) + 4);
        if (chunkLength > length - at - 8)
            return fail(why, "chunk " + std::to_string(index) + " length " + std::to_string(chunkLength) +
                                 " runs past the file's " + std::to_string(length) + " bytes");
        if (index == 0 && type != 0x4E4F534Au)
            return fail(why, "the first chunk is not JSON");
        if (index == 0)
            json = data.substr(std::size_t(at) + 8, std::size_t(chunkLength));
        else if (type == 0x004E4942u && source.binBytes == 0)
            source.binBytes = chunkLength;
        at += 8 + chunkLength;
    }
    if (json.empty())
        return fail(why, "it has no JSON chunk");
    return checkGltfJson(json, source, why);
}

// ---- FBX --------------------------------------------------------------------------------

constexpr std::string_view kFbxMagic("Kaydara FBX Binary  \0", 21);

// Deflate cannot shrink data by more than about 1032 to 1; an array that claims to inflate
// to more than that is damaged (and would make the reader reserve its claimed size).
constexpr u64 kMaxDeflateRatio = 1032;

bool checkFbxProperties(std::string_view data, u64 at, u64 end, u64 count, const std::string& record,
                        std::string* why)
{
    for (u64 p = 0; p < count; ++p) {
        const std::string where = "record '" + record + "' property " + std::to_string(p);
        if (at >= end)
            return fail(why, where + " lies past its property list");
        const char type = data[std::size_t(at++)];
        u64 size = 0;
        switch (type) {
        case 'C': size = 1; break;
        case 'Y': size = 2; break;
        case 'I':
        case 'F': size = 4; break;
        case 'D':
        case 'L': size = 8; break;
        case 'S':
        case 'R':
            if (end - at < 4)
                return fail(why, where + " has no room for its length");
            size = 4 + u64(u32At(data, std::size_t(at)));
            break;
        case 'f':
        case 'i':
        case 'd':
        case 'l':
        case 'b': {
            if (end - at < 12)
                return fail(why, where + " has no room for its array header");
            const u64 length = u32At(data, std::size_t(at));
            const u64 encoding = u32At(data, std::size_t(at) + 4);
            const u64 stored = u32At(data, std::size_t(at) + 8);
            const u64 element = type == 'b' ? 1 : (type == 'd' || type == 'l') ? 8 : 4;
            if (encoding > 1)
                return fail(why, where + " has the unknown array encoding " + std::to_string(encoding));
            const u64 limit = encoding == 0 ? stored : stored * kMaxDeflateRatio + 64;
            if (length * element > limit)
                return fail(why, where + " array length " + std::to_string(length) + " needs more than its " +
                                     std::to_string(stored) + (encoding ? " deflated" : "") + " bytes");
            size = 12 + stored;
            break;
        }
        default: return fail(why, where + " has the unknown type '" + std::string(1, type) + "'");
        }
        if (size > end - at)
            return fail(why, where + " runs past its property list (" + std::to_string(size) + " bytes)");
        at += size;
    }
    return true;
}

bool checkBinaryFbx(std::string_view data, std::string* why)
{
    if (data.size() < 27)
        return fail(why, "the FBX header is cut short");
    const std::uint32_t version = u32At(data, 23);
    const bool wide = version >= 7500;
    const u64 header = wide ? 25 : 13;
    // Each open list: where it ends (a parent's end offset, or the file for the top level).
    struct List {
        u64 end;
        bool top;
    };
    std::vector<List> lists{{u64(data.size()), true}};
    u64 at = 27;
    while (!lists.empty()) {
        const List list = lists.back();
        if (at >= list.end || list.end - at < header) {
            // A list without its closing record ends at its parent's end offset.
            if (!list.top && at != list.end)
                return fail(why, "the record list ending at byte " + std::to_string(list.end) +
                                     " has stray bytes at " + std::to_string(at));
            // The top level may end without its closing record: the footer follows it.
            lists.pop_back();
            at = list.end;
            continue;
        }
        const u64 endOffset = wide ? u64At(data, std::size_t(at)) : u32At(data, std::size_t(at));
        const u64 numProperties = wide ? u64At(data, std::size_t(at) + 8) : u32At(data, std::size_t(at) + 4);
        const u64 propertyBytes = wide ? u64At(data, std::size_t(at) + 16) : u32At(data, std::size_t(at) + 8);
        const u64 nameLength = static_cast<unsigned char>(data[std::size_t(at + header - 1)]);
        if (endOffset == 0 && numProperties == 0 && propertyBytes == 0 && nameLength == 0) {
            // The closing record of this list.
            lists.pop_back();
            if (list.top)
                break; // what follows is the footer
            at += header;
            if (at != list.end)
                return fail(why, "a record list closes at byte " + std::to_string(at) + ", not at its end " +
                                     std::to_string(list.end));
            continue;
        }
        const u64 start = at;
        if (endOffset <= start || endOffset > list.end)
            return fail(why, "the record at byte " + std::to_string(start) + " ends at " + std::to_string(endOffset) +
                                 ", outside its parent (bytes up to " + std::to_string(list.end) + ")");
        if (nameLength > endOffset - start - header)
            return fail(why, "the record at byte " + std::to_string(start) + " has a name longer than itself");
        const std::string name(data.substr(std::size_t(start + header), std::size_t(nameLength)));
        const u64 propertiesAt = start + header + nameLength;
        if (propertyBytes > endOffset - propertiesAt)
            return fail(why, "record '" + name + "' property list length " + std::to_string(propertyBytes) +
                                 " runs past the record's end");
        if (!checkFbxProperties(data, propertiesAt, propertiesAt + propertyBytes, numProperties, name, why))
            return false;
        at = propertiesAt + propertyBytes;
        if (at < endOffset) {
            if (lists.size() > std::size_t(kMaxContainerNesting))
                return fail(why, "records nest deeper than " + std::to_string(kMaxContainerNesting) + " levels");
            // The children; after them the walk goes on at the record's end in this list.
            lists.push_back(List{endOffset, false});
        }
    }
    return true;
}

bool checkTextFbx(std::string_view data, std::string* why)
{
    // Assimp's text reader takes a NUL for the end of the file and leaks what it had read
    // when it then gives up.
    const std::size_t nul = data.find('\0');
    if (nul != std::string_view::npos)
        return fail(why, "byte " + std::to_string(nul) + " is a NUL, which text FBX cannot hold");
    int depth = 0;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const char c = data[i];
        if (c == '"') {
            const std::size_t close = data.find('"', i + 1);
            i = close == std::string_view::npos ? data.size() : close;
        } else if (c == ';') {
            const std::size_t eol = data.find('\n', i);
            i = eol == std::string_view::npos ? data.size() : eol;
        } else if (c == '{') {
            if (++depth > kMaxContainerNesting)
                return fail(why, "its scopes nest deeper than " + std::to_string(kMaxContainerNesting) +
                                     " levels (at byte " + std::to_string(i) + ")");
        } else if (c == '}') {
            if (--depth < 0)
                return fail(why, "the '}' at byte " + std::to_string(i) + " closes no scope");
        } else if (c == '*') {
            // "*N": the count of the array that follows; the reader reserves it up front.
            u64 count = 0;
            std::size_t k = i + 1;
            for (; k < data.size() && data[k] >= '0' && data[k] <= '9'; ++k) {
                if (count > data.size())
                    break;
                count = count * 10 + u64(data[k] - '0');
            }
            if (count > data.size())
                return fail(why, "the array count at byte " + std::to_string(i) + " (" +
                                     std::string(data.substr(i, std::min<std::size_t>(k - i, 24))) +
                                     ") is more than the file's " + std::to_string(data.size()) + " bytes");
            i = k - 1;
        }
    }
    // Assimp's text reader leaks what it had read when a scope is left open.
    if (depth != 0)
        return fail(why, std::to_string(depth) + " scope(s) are not closed at the end of the file");
    return true;
}

// ---- STL --------------------------------------------------------------------------------

bool checkStl(std::string_view data, std::string* why)
{
    std::size_t first = 0;
    while (first < data.size() && (data[first] == ' ' || data[first] == '\t' || data[first] == '\r' || data[first] == '\n'))
        ++first;
    if (data.size() < 84)
        return data.substr(first, 5) == "solid" ? true : fail(why, "the binary STL header is cut short");
    const u64 triangles = u32At(data, 80);
    const bool binarySized = u64(data.size()) >= 84 && triangles <= (u64(data.size()) - 84) / 50;
    // Text STL starts with "solid"; so do some binary ones, which the size then tells apart.
    if (data.substr(first, 5) == "solid")
        return true;
    if (!binarySized)
        return fail(why, "the triangle count " + std::to_string(triangles) + " needs more than the file's " +
                             std::to_string(data.size()) + " bytes");
    return true;
}

} // namespace

bool checkContainer(const std::string& path, const std::string& extension, std::string* why)
{
    if (extension != "glb" && extension != "gltf" && extension != "fbx" && extension != "stl")
        return true;
    std::string data;
    if (!readAll(path, data, why))
        return false;
    if (extension == "stl")
        return checkStl(data, why);
    if (extension == "fbx")
        return std::string_view(data).substr(0, kFbxMagic.size()) == kFbxMagic ? checkBinaryFbx(data, why)
                                                                               : checkTextFbx(data, why);
    GltfSource source;
    source.folder = std::filesystem::path(path).parent_path();
    source.fileSize = data.size();
    // A .gltf may hold GLB bytes and a .glb JSON: the content decides, as for the importer.
    if (std::string_view(data).substr(0, 4) == "glTF")
        return checkGlb(data, source, why);
    return checkGltfJson(data, source, why);
}

} // namespace host
