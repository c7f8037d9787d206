// The sculpt-like test surface: a cube's surface lattice projected onto a sphere (fairly even
// triangles, no poles), each vertex pushed along the sphere's normal by octaves of gradient
// noise. Every step is one pass over the vertices or the faces.

#include "host/meshGenerators.h"

#include "host/log.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace host {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMinTriangles = 12;
constexpr int kMaxTriangles = 100000000;

std::uint64_t splitMix(std::uint64_t& state)
{
    std::uint64_t z = (state += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

double unitRandom(std::uint64_t& state) { return double(splitMix(state) >> 11) * (1.0 / 9007199254740992.0); }

// Improved Perlin gradient noise over a seeded permutation, about -1..1, smooth everywhere.
class GradientNoise {
public:
    explicit GradientNoise(std::uint64_t& rng)
    {
        for (int i = 0; i < 256; ++i)
            fPerm[i] = static_cast<std::uint8_t>(i);
        for (int i = 255; i > 0; --i)
            std::swap(fPerm[i], fPerm[splitMix(rng) % static_cast<std::uint64_t>(i + 1)]);
        for (int i = 0; i < 256; ++i)
            fPerm[256 + i] = fPerm[i];
    }

    double operator()(double x, double y, double z) const
    {
        const double fx = std::floor(x), fy = std::floor(y), fz = std::floor(z);
        const int X = static_cast<int>(fx) & 255, Y = static_cast<int>(fy) & 255, Z = static_cast<int>(fz) & 255;
        x -= fx;
        y -= fy;
        z -= fz;
        const double u = fade(x), v = fade(y), w = fade(z);
        const int A = fPerm[X] + Y, AA = fPerm[A] + Z, AB = fPerm[A + 1] + Z;
        const int B = fPerm[X + 1] + Y, BA = fPerm[B] + Z, BB = fPerm[B + 1] + Z;
        return lerp(w,
                    lerp(v, lerp(u, grad(fPerm[AA], x, y, z), grad(fPerm[BA], x - 1, y, z)),
                         lerp(u, grad(fPerm[AB], x, y - 1, z), grad(fPerm[BB], x - 1, y - 1, z))),
                    lerp(v, lerp(u, grad(fPerm[AA + 1], x, y, z - 1), grad(fPerm[BA + 1], x - 1, y, z - 1)),
                         lerp(u, grad(fPerm[AB + 1], x, y - 1, z - 1), grad(fPerm[BB + 1], x - 1, y - 1, z - 1))));
    }

private:
    static double fade(double t) { return t * t * t * (t * (t * 6 - 15) + 10); }
    static double lerp(double t, double a, double b) { return a + t * (b - a); }
    static double grad(int hash, double x, double y, double z)
    {
        const int h = hash & 15;
        const double u = h < 8 ? x : y;
        const double v = h < 4 ? y : (h == 12 || h == 14 ? x : z);
        return ((h & 1) ? -u : u) + ((h & 2) ? -v : v);
    }

    std::uint8_t fPerm[512];
};

// Radial displacement of the unit sphere: broad lumps, then finer and weaker octaves down to
// a few triangles across, and a ridged layer for crease-like folds. Stays within +-0.5.
class Displacement {
public:
    Displacement(unsigned seed, int resolution)
        : fRng(0x5eed000000000000ull ^ seed)
        , fNoise(fRng)
    {
        const double finest = std::max(1.0, resolution / 4.0);
        fOctaves = std::clamp(1 + static_cast<int>(std::log2(finest / kBaseFrequency)), 1, kMaxOctaves);
        for (double* offset : fOffsets)
            for (int i = 0; i < 3; ++i)
                offset[i] = 256.0 * unitRandom(fRng);
    }

    double operator()(double x, double y, double z) const
    {
        double sum = 0.0, amplitude = 0.2, frequency = kBaseFrequency;
        for (int o = 0; o < fOctaves; ++o) {
            sum += amplitude * noiseAt(o, frequency, x, y, z);
            amplitude *= 0.5;
            frequency *= 2.0;
        }
        const double ridge = 1.0 - std::abs(noiseAt(kMaxOctaves, 2.5 * kBaseFrequency, x, y, z));
        return sum + 0.08 * (ridge * ridge - 0.5);
    }

private:
    static constexpr double kBaseFrequency = 1.3;
    static constexpr int kMaxOctaves = 8;

    double noiseAt(int layer, double frequency, double x, double y, double z) const
    {
        const double* offset = fOffsets[layer];
        return fNoise(x * frequency + offset[0], y * frequency + offset[1], z * frequency + offset[2]);
    }

    std::uint64_t fRng;
    GradientNoise fNoise;
    int fOctaves = 1;
    double fOffsets[kMaxOctaves + 1][3] = {};
};

// Lattice cells along each axis of the cube; its surface has 4 (nx ny + ny nz + nz nx)
// triangles.
struct CubeGrid {
    int n[3] = {1, 1, 1};
    std::int64_t triangles() const
    {
        return 4 * (std::int64_t(n[0]) * n[1] + std::int64_t(n[1]) * n[2] + std::int64_t(n[2]) * n[0]);
    }
};

// A grid close to the target, as even as can be: of the grids within 1% of the target (or
// the closest, when none is), the one whose longest side is the least longer than its
// shortest. Choosing two sides fixes the best third, so the search is quadratic in the side
// length: linear in the triangle count.
CubeGrid chooseGrid(std::int64_t target)
{
    const double side = std::sqrt(double(target) / 12.0);
    const int lo = std::max(1, static_cast<int>(std::floor(side * 0.7)));
    const int hi = std::max(lo + 1, static_cast<int>(std::ceil(side * 1.45)));
    auto forEachCandidate = [&](auto visit) {
        visit(CubeGrid());
        for (int a = lo; a <= hi; ++a)
            for (int b = a; b <= hi; ++b) {
                const double c = (double(target) / 4.0 - double(a) * b) / double(a + b);
                for (double nc : {std::floor(c), std::ceil(c)})
                    if (nc >= b && nc <= hi) {
                        CubeGrid grid;
                        grid.n[0] = a;
                        grid.n[1] = b;
                        grid.n[2] = static_cast<int>(nc);
                        visit(grid);
                    }
            }
    };
    auto error = [target](const CubeGrid& grid) -> std::int64_t { return std::llabs(grid.triangles() - target); };

    std::int64_t closest = error(CubeGrid());
    forEachCandidate([&](const CubeGrid& grid) { closest = std::min(closest, error(grid)); });
    const std::int64_t allowed = std::max(closest, target / 100);
    CubeGrid best;
    double bestRatio = 0.0;
    bool found = false;
    forEachCandidate([&](const CubeGrid& grid) {
        const double ratio = double(grid.n[2]) / grid.n[0];
        if (error(grid) <= allowed && (!found || ratio < bestRatio ||
                                       (ratio == bestRatio && error(grid) < error(best)))) {
            best = grid;
            bestRatio = ratio;
            found = true;
        }
    });
    return best;
}

// Ids of the lattice points on the cube's surface, layer by layer along z: the full bottom
// grid, the boundary ring of each inner layer, the full top grid.
class SurfaceLattice {
public:
    explicit SurfaceLattice(const CubeGrid& grid)
        : fNx(grid.n[0])
        , fNy(grid.n[1])
        , fNz(grid.n[2])
    {
    }

    int numPoints() const { return 2 * full() + (fNz - 1) * ring(); }

    int id(int i, int j, int k) const
    {
        if (k == 0)
            return i + j * (fNx + 1);
        if (k == fNz)
            return full() + (fNz - 1) * ring() + i + j * (fNx + 1);
        return full() + (k - 1) * ring() + ringIndex(i, j);
    }

    // Calls visit(i, j, k) for every surface point in id order.
    template <typename Visit>
    void forEachPoint(Visit visit) const
    {
        for (int k = 0; k <= fNz; ++k) {
            if (k == 0 || k == fNz) {
                for (int j = 0; j <= fNy; ++j)
                    for (int i = 0; i <= fNx; ++i)
                        visit(i, j, k);
                continue;
            }
            for (int i = 0; i < fNx; ++i)
                visit(i, 0, k);
            for (int j = 0; j < fNy; ++j)
                visit(fNx, j, k);
            for (int i = fNx; i > 0; --i)
                visit(i, fNy, k);
            for (int j = fNy; j > 0; --j)
                visit(0, j, k);
        }
    }

private:
    int full() const { return (fNx + 1) * (fNy + 1); }
    int ring() const { return 2 * (fNx + fNy); }
    int ringIndex(int i, int j) const
    {
        if (j == 0 && i < fNx)
            return i;
        if (i == fNx && j < fNy)
            return fNx + j;
        if (j == fNy && i > 0)
            return fNx + fNy + (fNx - i);
        return 2 * fNx + fNy + (fNy - j);
    }

    int fNx, fNy, fNz;
};

void addFaces(const CubeGrid& grid, const SurfaceLattice& lattice, MeshArrays& mesh)
{
    // For each cube face: the axis it is fixed on, and the two axes it spans, ordered so that
    // first x second points out of the cube.
    struct Side {
        int fixed, first, second;
        bool atMax;
    };
    const Side sides[6] = {{2, 0, 1, true}, {2, 1, 0, false}, {0, 1, 2, true},
                           {0, 2, 1, false}, {1, 2, 0, true}, {1, 0, 2, false}};
    for (const Side& side : sides) {
        int at[3];
        at[side.fixed] = side.atMax ? grid.n[side.fixed] : 0;
        auto corner = [&](int a, int b) {
            at[side.first] = a;
            at[side.second] = b;
            return lattice.id(at[0], at[1], at[2]);
        };
        for (int b = 0; b < grid.n[side.second]; ++b)
            for (int a = 0; a < grid.n[side.first]; ++a) {
                const int p00 = corner(a, b), p10 = corner(a + 1, b);
                const int p11 = corner(a + 1, b + 1), p01 = corner(a, b + 1);
                // Alternating diagonals keep the triangulation free of a preferred direction.
                if ((a + b) % 2 == 0)
                    mesh.connects.insert(mesh.connects.end(), {p00, p10, p11, p00, p11, p01});
                else
                    mesh.connects.insert(mesh.connects.end(), {p00, p10, p01, p10, p11, p01});
            }
    }
    mesh.counts.assign(mesh.connects.size() / 3, 3);
}

} // namespace

MeshArrays sculptSurface(int triangleCount, unsigned seed)
{
    MeshArrays mesh;
    if (triangleCount < kMinTriangles || triangleCount > kMaxTriangles) {
        writeLog(LogLevel::kError, "sculptSurface: the triangle count must be from " + std::to_string(kMinTriangles) +
                                       " to " + std::to_string(kMaxTriangles) + ", not " +
                                       std::to_string(triangleCount));
        return mesh;
    }
    mesh.name = "sculptSurface";
    const CubeGrid grid = chooseGrid(triangleCount);
    const SurfaceLattice lattice(grid);
    const Displacement displacement(seed, std::max({grid.n[0], grid.n[1], grid.n[2]}));

    mesh.points.reserve(3 * static_cast<std::size_t>(lattice.numPoints()));
    lattice.forEachPoint([&](int i, int j, int k) {
        // The tangent of the angle spreads the lattice evenly over the sphere.
        double p[3];
        const int at[3] = {i, j, k};
        for (int axis = 0; axis < 3; ++axis)
            p[axis] = std::tan((2.0 * at[axis] / grid.n[axis] - 1.0) * kPi / 4.0);
        const double length = std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
        for (double& c : p)
            c /= length;
        const double radius = 1.0 + displacement(p[0], p[1], p[2]);
        for (double c : p)
            mesh.points.push_back(static_cast<float>(radius * c));
    });
    mesh.connects.reserve(3 * static_cast<std::size_t>(grid.triangles()));
    addFaces(grid, lattice, mesh);
    return mesh;
}

} // namespace host
