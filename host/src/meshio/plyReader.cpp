// PLY, read here rather than by Assimp, whose binary PLY reader runs off its buffers on a
// damaged header. A header of elements and their typed properties, then the body as text
// or as little- or big-endian binary. The "vertex" element gives x, y, z (and a UV from s, t
// or u, v or texture_u, texture_v); the "face" element's vertex_indices (or vertex_index)
// list gives the polygons; everything else is read past.

#include "meshio/meshFormats.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <string_view>

namespace host {
namespace {

enum class Encoding { kAscii, kLittleEndian, kBigEndian };

struct Property {
    std::string name;
    bool isList = false;
    int countSize = 0; // bytes of a list's count
    bool countSigned = false;
    int size = 0; // bytes of the value, or of each list item
    bool isSigned = false;
    bool isFloat = false;
};

struct Element {
    std::string name;
    long long count = 0;
    std::vector<Property> properties;
};

bool fail(std::string* why, const std::string& text)
{
    if (why)
        *why = text;
    return false;
}

// Sets size, sign and kind from a PLY type name; false for an unknown name.
bool typeOf(const std::string& name, int& size, bool& isSigned, bool& isFloat)
{
    struct Type {
        const char* names[2];
        int size;
        bool isSigned, isFloat;
    };
    static const Type types[] = {{{"char", "int8"}, 1, true, false},     {{"uchar", "uint8"}, 1, false, false},
                                 {{"short", "int16"}, 2, true, false},   {{"ushort", "uint16"}, 2, false, false},
                                 {{"int", "int32"}, 4, true, false},     {{"uint", "uint32"}, 4, false, false},
                                 {{"float", "float32"}, 4, true, true}, {{"double", "float64"}, 8, true, true}};
    for (const Type& type : types)
        if (name == type.names[0] || name == type.names[1]) {
            size = type.size;
            isSigned = type.isSigned;
            isFloat = type.isFloat;
            return true;
        }
    return false;
}

bool readHeader(std::istringstream& header, Encoding& encoding, std::vector<Element>& elements, std::string* why)
{
    std::string line;
    const bool isPly = std::getline(header, line) && line.substr(0, 3) == "ply" &&
                       line.find_first_not_of(" \t\r", 3) == std::string::npos;
    if (!isPly)
        return fail(why, "it does not start with 'ply'");
    bool haveFormat = false;
    while (std::getline(header, line)) {
        std::istringstream words(line);
        std::string keyword;
        words >> keyword;
        if (keyword.empty() || keyword == "comment" || keyword == "obj_info")
            continue;
        if (keyword == "format") {
            std::string format;
            words >> format;
            if (format == "ascii")
                encoding = Encoding::kAscii;
            else if (format == "binary_little_endian")
                encoding = Encoding::kLittleEndian;
            else if (format == "binary_big_endian")
                encoding = Encoding::kBigEndian;
            else
                return fail(why, "the PLY format '" + format + "' is unknown");
            haveFormat = true;
        } else if (keyword == "element") {
            // The count must be a whole decimal number to its last character: "1e9" is no
            // count (a stream would read it as 1).
            Element element;
            std::string count, extra;
            if (!(words >> element.name >> count) || (words >> extra))
                return fail(why, "the header line '" + line + "' is not an element name and count");
            const auto parsed = std::from_chars(count.data(), count.data() + count.size(), element.count);
            if (parsed.ec != std::errc() || parsed.ptr != count.data() + count.size() || element.count < 0)
                return fail(why, "the count '" + count + "' of the element '" + element.name +
                                     "' is not a whole number of 0 or more");
            elements.push_back(element);
        } else if (keyword == "property") {
            if (elements.empty())
                return fail(why, "a property comes before any element");
            Property property;
            std::string type;
            words >> type;
            bool countFloat = false;
            if (type == "list") {
                std::string countType;
                words >> countType >> type;
                property.isList = true;
                if (!typeOf(countType, property.countSize, property.countSigned, countFloat) || countFloat)
                    return fail(why, "the list count type '" + countType + "' is not an integer type");
            }
            if (!typeOf(type, property.size, property.isSigned, property.isFloat) || !(words >> property.name))
                return fail(why, "the header line '" + line + "' is not a property type and name");
            elements.back().properties.push_back(property);
        } else {
            return fail(why, "the header line '" + line + "' is not PLY");
        }
    }
    return haveFormat ? true : fail(why, "the header gives no format");
}

// The body as a stream of numbers, whatever its encoding.
class Body {
public:
    Body(std::string_view data, Encoding encoding)
        : fData(data)
        , fEncoding(encoding)
    {
    }

    bool read(int size, bool isSigned, bool isFloat, double& value)
    {
        if (fEncoding == Encoding::kAscii) {
            while (fPos < fData.size() && std::isspace(static_cast<unsigned char>(fData[fPos])))
                ++fPos;
            const char* begin = fData.data() + fPos;
            const auto result = std::from_chars(begin, fData.data() + fData.size(), value);
            if (result.ec != std::errc() || result.ptr == begin)
                return false;
            fPos += static_cast<std::size_t>(result.ptr - begin);
            return true;
        }
        if (fData.size() - fPos < static_cast<std::size_t>(size))
            return false;
        unsigned char bytes[8];
        std::memcpy(bytes, fData.data() + fPos, static_cast<std::size_t>(size));
        fPos += static_cast<std::size_t>(size);
        if (fEncoding == Encoding::kBigEndian)
            std::reverse(bytes, bytes + size);
        value = decode(bytes, size, isSigned, isFloat);
        return true;
    }

    std::size_t remaining() const { return fData.size() - fPos; }

private:
    static double decode(const unsigned char* bytes, int size, bool isSigned, bool isFloat)
    {
        if (isFloat) {
            if (size == 4) {
                float f;
                std::memcpy(&f, bytes, 4);
                return f;
            }
            double d;
            std::memcpy(&d, bytes, 8);
            return d;
        }
        std::uint64_t bits = 0;
        for (int i = size - 1; i >= 0; --i)
            bits = (bits << 8) | bytes[i];
        if (isSigned && (bits >> (8 * size - 1)) & 1u)
            return double(std::int64_t(bits) - (std::int64_t(1) << (8 * size)));
        return double(bits);
    }

    std::string_view fData;
    Encoding fEncoding;
    std::size_t fPos = 0;
};

bool isWhole(double value) { return std::isfinite(value) && value == std::floor(value); }

std::string numberText(double value)
{
    if (isWhole(value) && std::fabs(value) < 1e18)
        return std::to_string(static_cast<long long>(value));
    std::ostringstream text;
    text << value;
    return text.str();
}

} // namespace

bool readPly(const std::string& path, std::vector<MeshArrays>& meshes, std::string* why)
{
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open())
        return fail(why, std::strerror(errno));
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad())
        return fail(why, "reading failed");

    std::size_t headerEnd = text.find("end_header");
    const std::size_t bodyStart = headerEnd == std::string::npos ? headerEnd : text.find('\n', headerEnd);
    if (bodyStart == std::string::npos)
        return fail(why, "its header has no end_header line");
    std::istringstream header(text.substr(0, headerEnd));
    Encoding encoding = Encoding::kAscii;
    std::vector<Element> elements;
    if (!readHeader(header, encoding, elements, why))
        return false;
    Body body(std::string_view(text).substr(bodyStart + 1), encoding);

    // Every element takes at least a byte per property in either encoding; counts beyond
    // what the file holds are damage, not a reason to reserve memory.
    for (const Element& element : elements)
        if (!element.properties.empty() &&
            static_cast<unsigned long long>(element.count) > body.remaining() / element.properties.size())
            return fail(why, "it is too short for the " + std::to_string(element.count) + " " + element.name +
                                 " elements its header gives");
    long long numVertices = 0;
    for (const Element& element : elements)
        if (element.name == "vertex")
            numVertices = element.count;
    if (numVertices > std::numeric_limits<int>::max())
        return fail(why, "it has too many vertices");

    MeshArrays mesh;
    bool haveFaces = false;
    for (const Element& element : elements) {
        const bool isVertex = element.name == "vertex", isFace = element.name == "face";
        // Which property feeds which output: 0..2 position, 3..4 UV, 5 the polygon list.
        std::vector<int> roles(element.properties.size(), -1);
        static const char* const names[][3] = {{"x", "x", "x"}, {"y", "y", "y"}, {"z", "z", "z"},
                                               {"s", "u", "texture_u"}, {"t", "v", "texture_v"}};
        for (std::size_t p = 0; p < element.properties.size(); ++p) {
            const Property& property = element.properties[p];
            for (int role = 0; isVertex && !property.isList && role < 5; ++role)
                for (const char* name : names[role])
                    if (property.name == name)
                        roles[p] = role;
            if (isFace && property.isList && (property.name == "vertex_indices" || property.name == "vertex_index"))
                roles[p] = 5;
        }
        int found[6] = {};
        for (int role : roles)
            if (role >= 0)
                ++found[role];
        if (isVertex && (found[0] != 1 || found[1] != 1 || found[2] != 1))
            return fail(why, "its vertices do not have one x, y and z each");
        const bool withUVs = isVertex && found[3] == 1 && found[4] == 1;
        if (isFace && found[5] != 1)
            return fail(why, "its faces have no vertex_indices list");
        haveFaces = haveFaces || (isFace && element.count > 0);
        // An element without properties takes no bytes: there is nothing to walk, whatever
        // its count.
        if (element.properties.empty())
            continue;

        for (long long item = 0; item < element.count; ++item) {
            double values[5] = {};
            for (std::size_t p = 0; p < element.properties.size(); ++p) {
                const Property& property = element.properties[p];
                double value = 0.0;
                if (!property.isList) {
                    if (!body.read(property.size, property.isSigned, property.isFloat, value))
                        return fail(why, "it ends inside " + element.name + " " + std::to_string(item));
                    if (roles[p] >= 0 && roles[p] < 5)
                        values[roles[p]] = value;
                    continue;
                }
                double count = 0.0;
                if (!body.read(property.countSize, property.countSigned, false, count) || !isWhole(count) ||
                    count < 0)
                    return fail(why, "a list in " + element.name + " " + std::to_string(item) + " has no count");
                if (roles[p] == 5 && count < 3)
                    return fail(why, "face " + std::to_string(item) + " has fewer than three vertices");
                // Every item takes at least a byte (a digit and a blank in text).
                if (count > double(body.remaining()))
                    return fail(why, "the list count " + numberText(count) + " in " + element.name + " " +
                                         std::to_string(item) + " is more than the " +
                                         std::to_string(body.remaining()) + " bytes left in the file");
                for (double k = 0; k < count; ++k) {
                    if (!body.read(property.size, property.isSigned, property.isFloat, value))
                        return fail(why, "it ends inside " + element.name + " " + std::to_string(item));
                    if (roles[p] != 5)
                        continue;
                    if (!isWhole(value) || value < 0 || value >= double(numVertices))
                        return fail(why, "face " + std::to_string(item) + " refers to vertex " + numberText(value) +
                                             " of " + std::to_string(numVertices));
                    mesh.connects.push_back(static_cast<int>(value));
                }
                if (roles[p] == 5)
                    mesh.counts.push_back(static_cast<int>(count));
            }
            if (isVertex) {
                mesh.points.insert(mesh.points.end(), {float(values[0]), float(values[1]), float(values[2])});
                if (withUVs) {
                    mesh.u.push_back(float(values[3]));
                    mesh.v.push_back(float(values[4]));
                }
            }
        }
    }
    if (!haveFaces)
        return fail(why, "it holds no polygon mesh");
    if (!mesh.u.empty())
        mesh.uvIds = mesh.connects;
    std::string problem;
    if (!validate(mesh, &problem))
        return fail(why, problem);
    meshes.push_back(std::move(mesh));
    return true;
}

} // namespace host
