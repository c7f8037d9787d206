#pragma once
// MeshGeometry: the payload of mesh data. Positions are single precision and in object
// space; faces are a vertex count per polygon and a flat vertex list; edges are derived,
// numbered by first appearance (faces in order, each face's corners in order, the pair
// (corner i, corner i+1) reusing the existing edge between those vertices or appending one).
//
// Every edit bumps the version and drops the caches that depend on what changed (the
// intersection accelerator, adjacency, the merge hash), so a cache can never describe
// another version of the mesh. Copies share the immutable caches until one side is edited.

#include <maya/MFloatPoint.h>
#include <maya/MVector.h>
#include <maya/internal/BlockAllocator.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace host {

// The arrays of a mesh: a dense scan's are hundreds of megabytes, read at random by walks.
template <class T>
using MeshArray = std::vector<T, internal::BlockAllocator<T>>;

class MeshAccelerator; // built and owned by the intersection code
class FlatEdgeMap;
class VertexHash;

// One UV set: coordinates and, per face-vertex, the id of its UV (-1: none).
struct UVSetData {
    std::string name;
    std::vector<float> u, v;
    std::vector<int> ids; // empty means no face-vertex has a UV
};

// Who touches whom, in index order: vertex -> faces, vertex -> edges, edge -> faces.
struct MeshAdjacency {
    std::vector<int> vertexFaceStart, vertexFaces;
    std::vector<int> vertexEdgeStart, vertexEdges;
    std::vector<int> edgeFaceStart, edgeFaces;
};

class MeshGeometry {
public:
    MeshGeometry();
    MeshGeometry(const MeshGeometry& other);
    MeshGeometry& operator=(const MeshGeometry& other);
    ~MeshGeometry();

    // ---- vertices
    int numVertices() const { return static_cast<int>(fPoints.size() / 3); }
    const float* rawPoints() const { return fPoints.data(); }
    MFloatPoint point(int v) const { return MFloatPoint(fPoints[3 * v], fPoints[3 * v + 1], fPoints[3 * v + 2]); }
    bool validVertex(int v) const { return v >= 0 && v < numVertices(); }
    void setPoint(int v, float x, float y, float z);
    // Bulk write access to the packed xyz array; call when about to change many points.
    float* editPoints();
    int addVertex(float x, float y, float z);

    // ---- faces
    int numPolygons() const { return static_cast<int>(fCounts.size()); }
    int numFaceVertices() const { return static_cast<int>(fConnects.size()); }
    bool validPolygon(int f) const { return f >= 0 && f < numPolygons(); }
    int polygonSize(int f) const { return fCounts[f]; }
    int polygonStart(int f) const { return fOffsets[f]; }
    const int* polygonVertices(int f) const { return fConnects.data() + fOffsets[f]; }
    const MeshArray<int>& counts() const { return fCounts; }
    const MeshArray<int>& connects() const { return fConnects; }
    // The edge from face-vertex i (a flat index into connects) to the next corner of its face.
    int faceVertexEdge(int faceVertex) const { return fFaceEdges[faceVertex]; }

    // ---- edges
    int numEdges() const { return static_cast<int>(fEdges.size() / 2); }
    bool validEdge(int e) const { return e >= 0 && e < numEdges(); }
    int edgeStart(int e) const { return fEdges[2 * e]; }
    int edgeEnd(int e) const { return fEdges[2 * e + 1]; }
    // The edge between two vertices in either direction, or -1.
    int findEdge(int a, int b) const;
    bool edgeSmooth(int e) const { return fSmooth[e] != 0; }
    void setEdgeSmooth(int e, bool smooth);

    // ---- building
    // Replaces everything. Faces are cleaned the documented way: a corner equal to the one
    // before it is dropped, and a vertex met again in the same face is replaced by a new copy
    // of it. Fails (leaving the mesh as it was) on ids out of range or faces under 3 corners.
    bool build(std::vector<float> points, const std::vector<int>& counts, const std::vector<int>& connects,
               std::string* why = nullptr);
    // Appends one face over existing vertices, cleaned as in build; returns its index or -1.
    int appendPolygon(const std::vector<int>& ids, std::string* why = nullptr);
    // The nearest vertex within `tolerance` of the point (ties: lowest index), or -1.
    // A spatial hash, kept in step with added and moved vertices.
    int findMergeVertex(float x, float y, float z, double tolerance) const;
    // Drops vertices from index `count` on (used to roll back a failed addition).
    void truncateVertices(int count);
    void clear();

    // ---- deletion; indices are renumbered compactly keeping their relative order.
    // Removing a face also removes the edges and vertices that only it used.
    bool deleteFaces(const std::vector<int>& faces);
    // Removes the vertices and every face that uses them.
    bool deleteVertices(const std::vector<int>& vertices);
    // Removes the edges' faces (and what only they used).
    bool deleteEdges(const std::vector<int>& edges);

    // ---- UV sets (there is always at least one; the first is "map1")
    std::vector<UVSetData>& editUVSets()
    {
        touch(false);
        return fUVSets;
    }
    const std::vector<UVSetData>& uvSets() const { return fUVSets; }
    // The set's index, or -1; an empty name means the current set.
    int findUVSet(const std::string& name) const;
    int currentUVSet() const { return fCurrentUVSet; }
    void setCurrentUVSet(int index) { fCurrentUVSet = index; }

    // ---- derived data
    const MeshAdjacency& adjacency() const;
    // Newell's normal, normalised; the raw Newell vector has twice the polygon's area as length.
    MVector polygonNormal(int f) const;
    MVector newellVector(int f) const;
    // Angle-weighted: face normals weighted by the corner angle; otherwise by face area.
    MVector vertexNormal(int v, bool angleWeighted) const;
    void vertexNormals(bool angleWeighted, std::vector<MVector>& normals) const;
    bool onBoundaryEdge(int e) const;
    bool onBoundaryVertex(int v) const;

    // ---- versions and caches
    // Changes with every edit; two meshes with the same version hold the same data.
    std::uint64_t version() const { return fVersion; }
    std::shared_ptr<MeshAccelerator> cachedAccelerator() const;
    void setCachedAccelerator(std::shared_ptr<MeshAccelerator> accel) const;
    void dropAccelerator() const;
    bool hasCachedAccelerator() const;

private:
    void touch(bool topology);
    void deriveEdgesFrom(int firstFace);
    bool cleanFace(std::vector<int>& ids, const float* points, int vertexCount,
                   std::vector<float>& copies, std::string* why) const;
    void keepOnly(const std::vector<char>& keepFace, const std::vector<char>& deletedVertex);
    FlatEdgeMap& edgeMap() const;

    MeshArray<float> fPoints;
    MeshArray<int> fCounts, fOffsets, fConnects, fFaceEdges;
    MeshArray<int> fEdges; // start, end per edge
    MeshArray<unsigned char> fSmooth;
    std::vector<UVSetData> fUVSets;
    int fCurrentUVSet = 0;
    std::uint64_t fVersion = 0;

    mutable std::mutex fCacheMutex;
    mutable std::shared_ptr<MeshAccelerator> fAccel;
    mutable std::shared_ptr<const MeshAdjacency> fAdjacency;
    mutable std::unique_ptr<FlatEdgeMap> fEdgeMap;
    mutable std::unique_ptr<VertexHash> fVertexHash;
};

} // namespace host
