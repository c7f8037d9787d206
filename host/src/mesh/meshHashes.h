#pragma once
// The two hashes behind mesh numbering: the edge map (vertex pair -> edge id), an open
// addressing table because dense scans have millions of edges and a node-based map would
// spend most of a mesh build allocating; and the vertex hash that finds merge candidates
// for addPolygon without scanning the mesh.

#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace host {

inline std::uint64_t mixBits(std::uint64_t x)
{
    x += 0x9e3779b97f4a7c15ull;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ull;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebull;
    return x ^ (x >> 31);
}

class FlatEdgeMap {
public:
    explicit FlatEdgeMap(std::size_t expected = 16) { rehash(expected); }

    static std::uint64_t key(int a, int b)
    {
        if (a > b)
            std::swap(a, b);
        return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32) | static_cast<std::uint32_t>(b);
    }

    int find(std::uint64_t k) const
    {
        std::size_t i = mixBits(k) & fMask;
        while (fKeys[i] != kEmpty) {
            if (fKeys[i] == k)
                return fValues[i];
            i = (i + 1) & fMask;
        }
        return -1;
    }

    // Inserts when absent; returns the stored value either way.
    int insert(std::uint64_t k, int value)
    {
        if ((fSize + 1) * 2 > fKeys.size())
            rehash(fKeys.size());
        std::size_t i = mixBits(k) & fMask;
        while (fKeys[i] != kEmpty) {
            if (fKeys[i] == k)
                return fValues[i];
            i = (i + 1) & fMask;
        }
        fKeys[i] = k;
        fValues[i] = value;
        ++fSize;
        return value;
    }

private:
    static constexpr std::uint64_t kEmpty = ~0ull;

    void rehash(std::size_t atLeast)
    {
        std::size_t cap = 16;
        while (cap < atLeast * 2)
            cap *= 2;
        std::vector<std::uint64_t> keys(cap, kEmpty);
        std::vector<int> values(cap, -1);
        std::swap(keys, fKeys);
        std::swap(values, fValues);
        fMask = cap - 1;
        fSize = 0;
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (keys[i] != kEmpty)
                insert(keys[i], values[i]);
    }

    std::vector<std::uint64_t> fKeys;
    std::vector<int> fValues;
    std::size_t fMask = 0;
    std::size_t fSize = 0;
};

// Vertices bucketed in cubic cells no smaller than the merge tolerance, so every vertex
// within tolerance of a point lies in the 27 cells around the point's cell.
class VertexHash {
public:
    VertexHash(double tolerance, const float* points, int count)
        : fTolerance(tolerance), fCell(tolerance > 1e-6 ? tolerance : 1e-6)
    {
        fCells.reserve(static_cast<std::size_t>(count));
        for (int v = 0; v < count; ++v)
            add(v, points + 3 * v);
    }

    double tolerance() const { return fTolerance; }

    void add(int v, const float* p) { fCells[cellKey(p)].push_back(v); }

    void remove(int v, const float* p)
    {
        auto it = fCells.find(cellKey(p));
        if (it == fCells.end())
            return;
        std::vector<int>& ids = it->second;
        for (std::size_t i = 0; i < ids.size(); ++i)
            if (ids[i] == v) {
                ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(i));
                break;
            }
    }

    int nearest(const float* p, const float* points) const
    {
        const std::int64_t cx = coord(p[0]), cy = coord(p[1]), cz = coord(p[2]);
        int best = -1;
        double bestD2 = fTolerance * fTolerance;
        for (std::int64_t dx = -1; dx <= 1; ++dx)
            for (std::int64_t dy = -1; dy <= 1; ++dy)
                for (std::int64_t dz = -1; dz <= 1; ++dz) {
                    auto it = fCells.find(pack(cx + dx, cy + dy, cz + dz));
                    if (it == fCells.end())
                        continue;
                    for (int v : it->second) {
                        const float* q = points + 3 * v;
                        const double ex = double(q[0]) - p[0], ey = double(q[1]) - p[1], ez = double(q[2]) - p[2];
                        const double d2 = ex * ex + ey * ey + ez * ez;
                        if (d2 < bestD2 || (d2 == bestD2 && (best < 0 || v < best))) {
                            bestD2 = d2;
                            best = v;
                        }
                    }
                }
        return best;
    }

private:
    // Clamped so that a non-finite or huge coordinate cannot overflow the conversion.
    std::int64_t coord(float x) const
    {
        const double c = std::floor(double(x) / fCell);
        if (!(c > -4.0e18))
            return c < 0.0 ? -4000000000000000000ll : 0;
        return c < 4.0e18 ? static_cast<std::int64_t>(c) : 4000000000000000000ll;
    }
    static std::uint64_t pack(std::int64_t x, std::int64_t y, std::int64_t z)
    {
        return mixBits(static_cast<std::uint64_t>(x) ^ mixBits(static_cast<std::uint64_t>(y) ^
                                                               mixBits(static_cast<std::uint64_t>(z))));
    }
    std::uint64_t cellKey(const float* p) const { return pack(coord(p[0]), coord(p[1]), coord(p[2])); }

    double fTolerance;
    double fCell;
    // Keyed by a hash of the cell coordinates: two cells sharing a key only cost a few
    // extra distance checks, never a wrong answer.
    std::unordered_map<std::uint64_t, std::vector<int>> fCells;
};

} // namespace host
