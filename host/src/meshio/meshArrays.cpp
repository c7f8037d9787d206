#include "host/meshArrays.h"

#include <cmath>
#include <cstdint>

namespace host {
namespace {

bool fail(std::string* why, const std::string& text)
{
    if (why)
        *why = text;
    return false;
}

bool allFinite(const std::vector<float>& values)
{
    for (float x : values)
        if (!std::isfinite(x))
            return false;
    return true;
}

} // namespace

bool validate(const MeshArrays& mesh, std::string* why)
{
    if (mesh.points.size() % 3 != 0)
        return fail(why, "the point array holds " + std::to_string(mesh.points.size()) +
                             " floats, not a multiple of three");
    if (!allFinite(mesh.points))
        return fail(why, "a point coordinate is not finite");

    std::int64_t faceVertices = 0;
    for (std::size_t f = 0; f < mesh.counts.size(); ++f) {
        if (mesh.counts[f] < 3)
            return fail(why, "polygon " + std::to_string(f) + " has " + std::to_string(mesh.counts[f]) +
                                 " vertices; a polygon needs at least three");
        faceVertices += mesh.counts[f];
    }
    if (faceVertices != static_cast<std::int64_t>(mesh.connects.size()))
        return fail(why, "the polygon counts add up to " + std::to_string(faceVertices) + " face-vertices but " +
                             std::to_string(mesh.connects.size()) + " vertex ids are given");

    const int numVertices = mesh.numVertices();
    for (std::size_t i = 0; i < mesh.connects.size(); ++i)
        if (mesh.connects[i] < 0 || mesh.connects[i] >= numVertices)
            return fail(why, "vertex id " + std::to_string(mesh.connects[i]) + " at face-vertex " +
                                 std::to_string(i) + " is out of range (" + std::to_string(numVertices) +
                                 " vertices)");

    if (mesh.u.size() != mesh.v.size())
        return fail(why, "the UV set has " + std::to_string(mesh.u.size()) + " u values but " +
                             std::to_string(mesh.v.size()) + " v values");
    if (!allFinite(mesh.u) || !allFinite(mesh.v))
        return fail(why, "a UV coordinate is not finite");
    if (mesh.uvIds.empty())
        return true;
    if (mesh.uvIds.size() != mesh.connects.size())
        return fail(why, "there are " + std::to_string(mesh.uvIds.size()) + " UV ids for " +
                             std::to_string(mesh.connects.size()) + " face-vertices");
    const int numUVs = mesh.numUVs();
    for (std::size_t i = 0; i < mesh.uvIds.size(); ++i)
        if (mesh.uvIds[i] < 0 || mesh.uvIds[i] >= numUVs)
            return fail(why, "UV id " + std::to_string(mesh.uvIds[i]) + " at face-vertex " + std::to_string(i) +
                                 " is out of range (" + std::to_string(numUVs) + " UVs)");
    return true;
}

} // namespace host
