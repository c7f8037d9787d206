#include "mesh/meshGeometry.h"

#include "mesh/meshHashes.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace host {
namespace {

std::uint64_t nextVersion()
{
    static std::atomic<std::uint64_t> counter{0};
    return ++counter;
}

void fail(std::string* why, const std::string& text)
{
    if (why)
        *why = text;
}

} // namespace

MeshGeometry::MeshGeometry() : fVersion(nextVersion())
{
    fUVSets.push_back(UVSetData{"map1", {}, {}, {}});
}

MeshGeometry::MeshGeometry(const MeshGeometry& other)
    : fPoints(other.fPoints),
      fCounts(other.fCounts),
      fOffsets(other.fOffsets),
      fConnects(other.fConnects),
      fFaceEdges(other.fFaceEdges),
      fEdges(other.fEdges),
      fSmooth(other.fSmooth),
      fUVSets(other.fUVSets),
      fCurrentUVSet(other.fCurrentUVSet),
      fVersion(other.fVersion)
{
    std::lock_guard<std::mutex> lock(other.fCacheMutex);
    fAccel = other.fAccel;
    fAdjacency = other.fAdjacency;
}

MeshGeometry& MeshGeometry::operator=(const MeshGeometry& other)
{
    if (this == &other)
        return *this;
    MeshGeometry copy(other);
    fPoints = std::move(copy.fPoints);
    fCounts = std::move(copy.fCounts);
    fOffsets = std::move(copy.fOffsets);
    fConnects = std::move(copy.fConnects);
    fFaceEdges = std::move(copy.fFaceEdges);
    fEdges = std::move(copy.fEdges);
    fSmooth = std::move(copy.fSmooth);
    fUVSets = std::move(copy.fUVSets);
    fCurrentUVSet = copy.fCurrentUVSet;
    fVersion = copy.fVersion;
    std::lock_guard<std::mutex> lock(fCacheMutex);
    fAccel = std::move(copy.fAccel);
    fAdjacency = std::move(copy.fAdjacency);
    fEdgeMap.reset();
    fVertexHash.reset();
    return *this;
}

MeshGeometry::~MeshGeometry() = default;

void MeshGeometry::touch(bool topology)
{
    fVersion = nextVersion();
    std::lock_guard<std::mutex> lock(fCacheMutex);
    fAccel.reset();
    if (topology) {
        fAdjacency.reset();
    }
}

// ---- vertices

void MeshGeometry::setPoint(int v, float x, float y, float z)
{
    touch(false);
    float* p = fPoints.data() + 3 * v;
    if (fVertexHash)
        fVertexHash->remove(v, p);
    p[0] = x;
    p[1] = y;
    p[2] = z;
    if (fVertexHash)
        fVertexHash->add(v, p);
}

float* MeshGeometry::editPoints()
{
    touch(false);
    fVertexHash.reset();
    return fPoints.data();
}

int MeshGeometry::addVertex(float x, float y, float z)
{
    touch(true);
    const int v = numVertices();
    fPoints.insert(fPoints.end(), {x, y, z});
    if (fVertexHash)
        fVertexHash->add(v, fPoints.data() + 3 * v);
    return v;
}

void MeshGeometry::truncateVertices(int count)
{
    if (count < 0 || count >= numVertices())
        return;
    touch(true);
    fPoints.resize(static_cast<std::size_t>(count) * 3);
    fVertexHash.reset();
}

int MeshGeometry::findMergeVertex(float x, float y, float z, double tolerance) const
{
    if (!(tolerance >= 0.0) || !std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
        return -1;
    if (!fVertexHash || fVertexHash->tolerance() != tolerance)
        fVertexHash = std::make_unique<VertexHash>(tolerance, fPoints.data(), numVertices());
    const float p[3] = {x, y, z};
    return fVertexHash->nearest(p, fPoints.data());
}

// ---- edges

FlatEdgeMap& MeshGeometry::edgeMap() const
{
    if (!fEdgeMap) {
        fEdgeMap = std::make_unique<FlatEdgeMap>(fEdges.size() / 2 + 16);
        for (int e = 0; e < numEdges(); ++e)
            fEdgeMap->insert(FlatEdgeMap::key(fEdges[2 * e], fEdges[2 * e + 1]), e);
    }
    return *fEdgeMap;
}

int MeshGeometry::findEdge(int a, int b) const
{
    if (!validVertex(a) || !validVertex(b) || a == b)
        return -1;
    return edgeMap().find(FlatEdgeMap::key(a, b));
}

void MeshGeometry::setEdgeSmooth(int e, bool smooth)
{
    fSmooth[e] = smooth ? 1 : 0;
    fVersion = nextVersion();
}

// Numbers the edges of the faces from `firstFace` on, continuing the existing numbering.
void MeshGeometry::deriveEdgesFrom(int firstFace)
{
    FlatEdgeMap& map = edgeMap();
    fFaceEdges.resize(fConnects.size());
    for (int f = firstFace; f < numPolygons(); ++f) {
        const int start = fOffsets[f], n = fCounts[f];
        for (int i = 0; i < n; ++i) {
            const int a = fConnects[start + i], b = fConnects[start + (i + 1) % n];
            const int next = numEdges();
            const int e = map.insert(FlatEdgeMap::key(a, b), next);
            if (e == next) {
                fEdges.push_back(a);
                fEdges.push_back(b);
                fSmooth.push_back(1);
            }
            fFaceEdges[start + i] = e;
        }
    }
}

// ---- building

bool MeshGeometry::cleanFace(std::vector<int>& ids, const float* points, int vertexCount,
                             std::vector<float>& copies, std::string* why) const
{
    for (int id : ids)
        if (id < 0 || id >= vertexCount) {
            fail(why, "vertex id " + std::to_string(id) + " is out of range (the mesh has " +
                          std::to_string(vertexCount) + " vertices)");
            return false;
        }
    // A corner equal to the one before it (cyclically) makes no edge: drop it.
    std::vector<int> kept;
    kept.reserve(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (kept.empty() || kept.back() != ids[i])
            kept.push_back(ids[i]);
    while (kept.size() > 1 && kept.front() == kept.back())
        kept.pop_back();
    if (kept.size() < 3) {
        fail(why, "a polygon needs at least 3 distinct corners");
        return false;
    }
    // A vertex met again in the same face gets a copy at the same place.
    for (std::size_t i = 0; i < kept.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (kept[j] == kept[i]) {
                const int source = kept[i];
                kept[i] = vertexCount + static_cast<int>(copies.size() / 3);
                copies.insert(copies.end(), points + 3 * source, points + 3 * source + 3);
                break;
            }
    ids.swap(kept);
    return true;
}

bool MeshGeometry::build(std::vector<float> points, const std::vector<int>& counts,
                         const std::vector<int>& connects, std::string* why)
{
    if (points.size() % 3 != 0) {
        fail(why, "the point array does not hold whole xyz triples");
        return false;
    }
    for (float c : points)
        if (!std::isfinite(c)) {
            fail(why, "a vertex position is not a finite number");
            return false;
        }
    std::size_t total = 0;
    for (int c : counts) {
        if (c < 3) {
            fail(why, "a polygon count of " + std::to_string(c) + " (a polygon needs at least 3 corners)");
            return false;
        }
        total += static_cast<std::size_t>(c);
    }
    if (total != connects.size()) {
        fail(why, "the polygon counts add up to " + std::to_string(total) + " corners but " +
                      std::to_string(connects.size()) + " vertex ids were given");
        return false;
    }
    const int vertexCount = static_cast<int>(points.size() / 3);
    MeshArray<int> newCounts, newConnects;
    newCounts.reserve(counts.size());
    newConnects.reserve(connects.size());
    std::vector<int> face;
    std::vector<float> copies; // vertices made for corners that repeat a vertex of their face
    std::size_t at = 0;
    for (int c : counts) {
        face.assign(connects.begin() + static_cast<std::ptrdiff_t>(at),
                    connects.begin() + static_cast<std::ptrdiff_t>(at + static_cast<std::size_t>(c)));
        at += static_cast<std::size_t>(c);
        bool plain = true; // the common case needs no cleaning
        for (int i = 0; i < c && plain; ++i)
            plain = face[i] >= 0 && face[i] < vertexCount && face[i] != face[(i + 1) % c];
        if (plain && c > 3) {
            for (int i = 0; i < c && plain; ++i)
                for (int j = 0; j < i && plain; ++j)
                    plain = face[i] != face[j];
        }
        if (!plain && !cleanFace(face, points.data(), vertexCount, copies, why))
            return false;
        newCounts.push_back(static_cast<int>(face.size()));
        newConnects.insert(newConnects.end(), face.begin(), face.end());
    }

    touch(true);
    points.insert(points.end(), copies.begin(), copies.end());
    fPoints.assign(points.begin(), points.end());
    std::vector<float>().swap(points);
    fCounts = std::move(newCounts);
    fConnects = std::move(newConnects);
    fOffsets.resize(fCounts.size());
    int offset = 0;
    for (std::size_t f = 0; f < fCounts.size(); ++f) {
        fOffsets[f] = offset;
        offset += fCounts[f];
    }
    fEdges.clear();
    fSmooth.clear();
    fFaceEdges.clear();
    fEdgeMap = std::make_unique<FlatEdgeMap>(fConnects.size() / 2 + 16);
    fVertexHash.reset();
    for (UVSetData& set : fUVSets)
        set.ids.clear();
    deriveEdgesFrom(0);
    // Dense source meshes rarely gain faces: the map is rebuilt on demand instead of kept.
    fEdgeMap.reset();
    return true;
}

int MeshGeometry::appendPolygon(const std::vector<int>& ids, std::string* why)
{
    std::vector<int> face = ids;
    std::vector<float> copies; // new vertices after the existing ones
    if (!cleanFace(face, fPoints.data(), numVertices(), copies, why))
        return -1;
    touch(true);
    for (std::size_t i = 0; i < copies.size(); i += 3)
        addVertex(copies[i], copies[i + 1], copies[i + 2]);
    const int f = numPolygons();
    fOffsets.push_back(static_cast<int>(fConnects.size()));
    fCounts.push_back(static_cast<int>(face.size()));
    fConnects.insert(fConnects.end(), face.begin(), face.end());
    for (UVSetData& set : fUVSets)
        if (!set.ids.empty())
            set.ids.resize(fConnects.size(), -1);
    deriveEdgesFrom(f);
    return f;
}

void MeshGeometry::clear()
{
    touch(true);
    fPoints.clear();
    fCounts.clear();
    fOffsets.clear();
    fConnects.clear();
    fFaceEdges.clear();
    fEdges.clear();
    fSmooth.clear();
    for (UVSetData& set : fUVSets) {
        set.u.clear();
        set.v.clear();
        set.ids.clear();
    }
    fEdgeMap.reset();
    fVertexHash.reset();
}

// ---- deletion

void MeshGeometry::keepOnly(const std::vector<char>& keepFace, const std::vector<char>& deletedVertex)
{
    const int nv = numVertices();
    // A vertex goes when deleted, or when deleted faces used it and no kept face does.
    std::vector<char> usedByKept(static_cast<std::size_t>(nv), 0), usedByGone(static_cast<std::size_t>(nv), 0);
    std::vector<char> keepEdge(static_cast<std::size_t>(numEdges()), 0);
    for (int f = 0; f < numPolygons(); ++f)
        for (int i = 0; i < fCounts[f]; ++i) {
            const int v = fConnects[fOffsets[f] + i];
            if (keepFace[f]) {
                usedByKept[v] = 1;
                keepEdge[fFaceEdges[fOffsets[f] + i]] = 1;
            } else {
                usedByGone[v] = 1;
            }
        }
    std::vector<int> vertexMap(static_cast<std::size_t>(nv), -1);
    MeshArray<float> points;
    points.reserve(fPoints.size());
    for (int v = 0; v < nv; ++v) {
        const bool keep = !deletedVertex[v] && (usedByKept[v] || !usedByGone[v]);
        if (!keep)
            continue;
        vertexMap[v] = static_cast<int>(points.size() / 3);
        points.insert(points.end(), fPoints.begin() + 3 * v, fPoints.begin() + 3 * v + 3);
    }
    std::vector<int> edgeMap(keepEdge.size(), -1);
    MeshArray<int> edges;
    MeshArray<unsigned char> smooth;
    for (std::size_t e = 0; e < keepEdge.size(); ++e) {
        if (!keepEdge[e])
            continue;
        edgeMap[e] = static_cast<int>(smooth.size());
        edges.push_back(vertexMap[fEdges[2 * e]]);
        edges.push_back(vertexMap[fEdges[2 * e + 1]]);
        smooth.push_back(fSmooth[e]);
    }
    MeshArray<int> counts, offsets, connects, faceEdges;
    std::vector<std::vector<int>> uvIds(fUVSets.size());
    for (int f = 0; f < numPolygons(); ++f) {
        if (!keepFace[f])
            continue;
        offsets.push_back(static_cast<int>(connects.size()));
        counts.push_back(fCounts[f]);
        for (int i = 0; i < fCounts[f]; ++i) {
            const int fv = fOffsets[f] + i;
            connects.push_back(vertexMap[fConnects[fv]]);
            faceEdges.push_back(edgeMap[fFaceEdges[fv]]);
            for (std::size_t s = 0; s < fUVSets.size(); ++s)
                if (!fUVSets[s].ids.empty())
                    uvIds[s].push_back(fUVSets[s].ids[fv]);
        }
    }
    touch(true);
    fPoints = std::move(points);
    fCounts = std::move(counts);
    fOffsets = std::move(offsets);
    fConnects = std::move(connects);
    fFaceEdges = std::move(faceEdges);
    fEdges = std::move(edges);
    fSmooth = std::move(smooth);
    for (std::size_t s = 0; s < fUVSets.size(); ++s)
        fUVSets[s].ids = std::move(uvIds[s]);
    fEdgeMap.reset();
    fVertexHash.reset();
}

bool MeshGeometry::deleteFaces(const std::vector<int>& faces)
{
    std::vector<char> keep(static_cast<std::size_t>(numPolygons()), 1);
    for (int f : faces) {
        if (!validPolygon(f))
            return false;
        keep[f] = 0;
    }
    keepOnly(keep, std::vector<char>(static_cast<std::size_t>(numVertices()), 0));
    return true;
}

bool MeshGeometry::deleteVertices(const std::vector<int>& vertices)
{
    std::vector<char> gone(static_cast<std::size_t>(numVertices()), 0);
    for (int v : vertices) {
        if (!validVertex(v))
            return false;
        gone[v] = 1;
    }
    std::vector<char> keep(static_cast<std::size_t>(numPolygons()), 1);
    for (int f = 0; f < numPolygons(); ++f)
        for (int i = 0; i < fCounts[f]; ++i)
            if (gone[fConnects[fOffsets[f] + i]])
                keep[f] = 0;
    keepOnly(keep, gone);
    return true;
}

bool MeshGeometry::deleteEdges(const std::vector<int>& edges)
{
    std::vector<char> gone(static_cast<std::size_t>(numEdges()), 0);
    for (int e : edges) {
        if (!validEdge(e))
            return false;
        gone[e] = 1;
    }
    std::vector<char> keep(static_cast<std::size_t>(numPolygons()), 1);
    for (int f = 0; f < numPolygons(); ++f)
        for (int i = 0; i < fCounts[f]; ++i)
            if (gone[fFaceEdges[fOffsets[f] + i]])
                keep[f] = 0;
    keepOnly(keep, std::vector<char>(static_cast<std::size_t>(numVertices()), 0));
    return true;
}

// ---- UV sets

int MeshGeometry::findUVSet(const std::string& name) const
{
    if (name.empty())
        return fCurrentUVSet < static_cast<int>(fUVSets.size()) ? fCurrentUVSet : -1;
    for (std::size_t i = 0; i < fUVSets.size(); ++i)
        if (fUVSets[i].name == name)
            return static_cast<int>(i);
    return -1;
}

// ---- derived data

const MeshAdjacency& MeshGeometry::adjacency() const
{
    std::lock_guard<std::mutex> lock(fCacheMutex);
    if (fAdjacency)
        return *fAdjacency;
    auto adj = std::make_shared<MeshAdjacency>();
    const int nv = numVertices(), ne = numEdges(), nf = numPolygons();
    // Stable counting sorts: pairs go in index order, so each list comes out in index order.
    auto bucket = [](int keys, const std::vector<std::pair<int, int>>& pairs, std::vector<int>& start,
                     std::vector<int>& items) {
        start.assign(static_cast<std::size_t>(keys) + 1, 0);
        for (const auto& p : pairs)
            ++start[p.first + 1];
        for (int k = 0; k < keys; ++k)
            start[k + 1] += start[k];
        items.assign(pairs.size(), 0);
        std::vector<int> at(start.begin(), start.end() - 1);
        for (const auto& p : pairs)
            items[at[p.first]++] = p.second;
    };
    std::vector<std::pair<int, int>> pairs;
    pairs.reserve(fConnects.size());
    for (int f = 0; f < nf; ++f)
        for (int i = 0; i < fCounts[f]; ++i) {
            const int v = fConnects[fOffsets[f] + i];
            // A face lists a vertex once (cleaning guarantees it).
            pairs.emplace_back(v, f);
        }
    bucket(nv, pairs, adj->vertexFaceStart, adj->vertexFaces);
    pairs.clear();
    for (int e = 0; e < ne; ++e) {
        pairs.emplace_back(fEdges[2 * e], e);
        pairs.emplace_back(fEdges[2 * e + 1], e);
    }
    bucket(nv, pairs, adj->vertexEdgeStart, adj->vertexEdges);
    pairs.clear();
    for (int f = 0; f < nf; ++f)
        for (int i = 0; i < fCounts[f]; ++i)
            pairs.emplace_back(fFaceEdges[fOffsets[f] + i], f);
    bucket(ne, pairs, adj->edgeFaceStart, adj->edgeFaces);
    fAdjacency = adj;
    return *fAdjacency;
}

MVector MeshGeometry::newellVector(int f) const
{
    MVector n(0.0, 0.0, 0.0);
    const int* ids = polygonVertices(f);
    const int count = fCounts[f];
    for (int i = 0; i < count; ++i) {
        const float* a = fPoints.data() + 3 * ids[i];
        const float* b = fPoints.data() + 3 * ids[(i + 1) % count];
        n.x += (double(a[1]) - b[1]) * (double(a[2]) + b[2]);
        n.y += (double(a[2]) - b[2]) * (double(a[0]) + b[0]);
        n.z += (double(a[0]) - b[0]) * (double(a[1]) + b[1]);
    }
    return n;
}

MVector MeshGeometry::polygonNormal(int f) const
{
    MVector n = newellVector(f);
    const double len = n.length();
    return len > 0.0 ? n / len : n;
}

MVector MeshGeometry::vertexNormal(int v, bool angleWeighted) const
{
    const MeshAdjacency& adj = adjacency();
    MVector sum(0.0, 0.0, 0.0);
    for (int k = adj.vertexFaceStart[v]; k < adj.vertexFaceStart[v + 1]; ++k) {
        const int f = adj.vertexFaces[k];
        if (!angleWeighted) {
            sum += newellVector(f);
            continue;
        }
        const int* ids = polygonVertices(f);
        const int count = fCounts[f];
        int corner = 0;
        while (corner < count && ids[corner] != v)
            ++corner;
        const MFloatPoint p = point(v);
        const MFloatPoint prev = point(ids[(corner + count - 1) % count]);
        const MFloatPoint next = point(ids[(corner + 1) % count]);
        const MVector a(double(prev.x) - p.x, double(prev.y) - p.y, double(prev.z) - p.z);
        const MVector b(double(next.x) - p.x, double(next.y) - p.y, double(next.z) - p.z);
        sum += polygonNormal(f) * a.angle(b);
    }
    const double len = sum.length();
    return len > 0.0 ? sum / len : sum;
}

void MeshGeometry::vertexNormals(bool angleWeighted, std::vector<MVector>& normals) const
{
    normals.assign(static_cast<std::size_t>(numVertices()), MVector(0.0, 0.0, 0.0));
    for (int f = 0; f < numPolygons(); ++f) {
        const int* ids = polygonVertices(f);
        const int count = fCounts[f];
        if (!angleWeighted) {
            const MVector n = newellVector(f);
            for (int i = 0; i < count; ++i)
                normals[ids[i]] += n;
            continue;
        }
        const MVector n = polygonNormal(f);
        for (int i = 0; i < count; ++i) {
            const MFloatPoint p = point(ids[i]);
            const MFloatPoint prev = point(ids[(i + count - 1) % count]);
            const MFloatPoint next = point(ids[(i + 1) % count]);
            const MVector a(double(prev.x) - p.x, double(prev.y) - p.y, double(prev.z) - p.z);
            const MVector b(double(next.x) - p.x, double(next.y) - p.y, double(next.z) - p.z);
            normals[ids[i]] += n * a.angle(b);
        }
    }
    for (MVector& n : normals) {
        const double len = n.length();
        if (len > 0.0)
            n /= len;
    }
}

bool MeshGeometry::onBoundaryEdge(int e) const
{
    const MeshAdjacency& adj = adjacency();
    return adj.edgeFaceStart[e + 1] - adj.edgeFaceStart[e] < 2;
}

bool MeshGeometry::onBoundaryVertex(int v) const
{
    const MeshAdjacency& adj = adjacency();
    for (int k = adj.vertexEdgeStart[v]; k < adj.vertexEdgeStart[v + 1]; ++k)
        if (onBoundaryEdge(adj.vertexEdges[k]))
            return true;
    return false;
}

// ---- caches

std::shared_ptr<MeshAccelerator> MeshGeometry::cachedAccelerator() const
{
    std::lock_guard<std::mutex> lock(fCacheMutex);
    return fAccel;
}

void MeshGeometry::setCachedAccelerator(std::shared_ptr<MeshAccelerator> accel) const
{
    std::lock_guard<std::mutex> lock(fCacheMutex);
    fAccel = std::move(accel);
}

void MeshGeometry::dropAccelerator() const
{
    std::lock_guard<std::mutex> lock(fCacheMutex);
    fAccel.reset();
}

bool MeshGeometry::hasCachedAccelerator() const
{
    std::lock_guard<std::mutex> lock(fCacheMutex);
    return fAccel != nullptr;
}

} // namespace host
