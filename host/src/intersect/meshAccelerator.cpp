#include "intersect/meshAccelerator.h"

#include <host/log.h>

#include <embree3/rtcore_builder.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <mutex>
#include <new>
#include <type_traits>

#if defined(__unix__)
#include <sys/mman.h>
#endif
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace host {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr float kInfF = std::numeric_limits<float>::infinity();

// Beyond this the pad, a fraction of the largest coordinate, would swamp the triangles; such
// meshes are served without a tree.
constexpr double kLargestCoordinate = 1.0e15;

// Tree shape. Eight children per node keep the walk shallow; Embree's Morton builder
// (RTC_BUILD_QUALITY_LOW) builds a million triangles in a fifth of a second on one core,
// where its SAH builder takes most of a second for walks about a quarter faster. Leaves of
// up to four triangles rather than two take the tree from about 110 to 70 bytes a triangle
// for walks within the noise of the benchmarks; a 25M triangle scan must fit in memory.
constexpr unsigned kBranching = 8;
constexpr unsigned kMinLeafSize = 4;
constexpr unsigned kMaxLeafSize = 8;
constexpr unsigned kMaxDepth = 40; // the builder fails past this; the mesh is then walked without a tree
constexpr int kStackSize = (kMaxDepth + 2) * kBranching;

void onEmbreeError(void*, RTCError code, const char* text)
{
    writeLog(LogLevel::kError, "Embree error " + std::to_string(int(code)) + ": " + (text ? text : ""));
}

float roundDown(double x) { return std::nextafter(toFloat(x), -kInfF); }
float roundUp(double x) { return std::nextafter(toFloat(x), kInfF); }

bool finite3(const float* p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

// A node: up to W children with their boxes side by side, so that SIMD steps test four at a
// time. An unused slot has a null child and the box [+inf, +inf], which no ray enters and
// which is infinitely far from every point. The builder makes two thirds of its nodes with
// four children or fewer: those are narrow nodes, half the size of the wide ones.
template <unsigned W>
struct alignas(64) BvhNodeOf {
    static constexpr unsigned kWidth = W;
    const void* child[W]; // leaves and narrow nodes are tagged (see below)
    float lo[3][W];
    float hi[3][W];
};
using BvhNode = BvhNodeOf<kBranching>;
using NarrowNode = BvhNodeOf<4>;
static_assert(kBranching % 4 == 0, "the node tests work on four children at a time");
static_assert(sizeof(NarrowNode) % 64 == 0 && sizeof(BvhNode) % sizeof(NarrowNode) == 0,
              "nodes are whole cache lines");

// A leaf: its triangle count, then the triangles themselves.
struct alignas(16) BvhLeaf {
    int count;
};
constexpr std::size_t kLeafHeader = 16;

// Children point at wide nodes or, with the lowest bit set, at leaves, or with the next bit
// set at narrow nodes (all aligned).
inline bool isLeaf(const void* p) { return (reinterpret_cast<std::uintptr_t>(p) & 1u) != 0; }
inline bool isNarrow(const void* p) { return (reinterpret_cast<std::uintptr_t>(p) & 2u) != 0; }
inline void* untagged(void* p)
{
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(p) & ~std::uintptr_t(3));
}
// Calls visit with the node's own type, narrow or wide.
template <class Visit>
inline void visitNode(const void* p, Visit&& visit)
{
    if (isNarrow(p))
        visit(reinterpret_cast<const NarrowNode*>(reinterpret_cast<std::uintptr_t>(p) & ~std::uintptr_t(3)));
    else
        visit(static_cast<const BvhNode*>(p));
}
inline const BvhLeaf* asLeaf(const void* p)
{
    return reinterpret_cast<const BvhLeaf*>(reinterpret_cast<std::uintptr_t>(p) & ~std::uintptr_t(1));
}
inline const TriangleRecord* leafTriangles(const BvhLeaf* leaf)
{
    return reinterpret_cast<const TriangleRecord*>(reinterpret_cast<const char*>(leaf) + kLeafHeader);
}

struct StackEntry {
    const void* item;
    float key; // entry distance along the ray, or squared distance to the point
};

// Starts loading what will be visited soon: a walk is a chain of cache misses otherwise.
inline void prefetch(const void* item)
{
#if defined(__GNUC__)
    const char* p = reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(item) & ~std::uintptr_t(1));
    __builtin_prefetch(p);
    __builtin_prefetch(p + 64);
#else
    (void)item;
#endif
}

// Pushes the children that passed, farthest first, so that the nearest is popped next.
inline void pushNearestLast(StackEntry* stack, int& top, StackEntry* found, int count)
{
    for (int i = 1; i < count; ++i)
        for (int j = i; j > 0 && found[j - 1].key < found[j].key; --j)
            std::swap(found[j - 1], found[j]);
    for (int i = 0; i < count; ++i) {
        prefetch(found[i].item);
        stack[top++] = found[i];
    }
}

// The children whose boxes the ray org + s / inv meets for s in [0, far], with the entry
// distances; returns a bit per child.
template <class Node>
inline int raySlabs(const Node* node, const float org[3], const float inv[3], float far, float* near)
{
    constexpr unsigned kWidth = Node::kWidth;
#if defined(__SSE2__)
    int mask = 0;
    for (unsigned g = 0; g < kWidth; g += 4) {
        __m128 enter = _mm_setzero_ps();
        __m128 leave = _mm_set1_ps(far);
        for (int k = 0; k < 3; ++k) {
            const __m128 o = _mm_set1_ps(org[k]), i = _mm_set1_ps(inv[k]);
            const __m128 t0 = _mm_mul_ps(_mm_sub_ps(_mm_load_ps(node->lo[k] + g), o), i);
            const __m128 t1 = _mm_mul_ps(_mm_sub_ps(_mm_load_ps(node->hi[k] + g), o), i);
            enter = _mm_max_ps(enter, _mm_min_ps(t0, t1));
            leave = _mm_min_ps(leave, _mm_max_ps(t0, t1));
        }
        _mm_storeu_ps(near + g, enter);
        mask |= _mm_movemask_ps(_mm_cmple_ps(enter, leave)) << g;
    }
    return mask;
#else
    int mask = 0;
    for (unsigned c = 0; c < kWidth; ++c) {
        float enter = 0.0f, leave = far;
        for (int k = 0; k < 3; ++k) {
            const float t0 = (node->lo[k][c] - org[k]) * inv[k], t1 = (node->hi[k][c] - org[k]) * inv[k];
            enter = std::max(enter, std::min(t0, t1));
            leave = std::min(leave, std::max(t0, t1));
        }
        near[c] = enter;
        mask |= enter <= leave ? 1 << c : 0;
    }
    return mask;
#endif
}

// The children whose boxes lie within squared distance `limit` of the point, with those squared
// distances; returns a bit per child.
template <class Node>
inline int pointDistances(const Node* node, const float p[3], float limit, float* d2)
{
    constexpr unsigned kWidth = Node::kWidth;
#if defined(__SSE2__)
    int mask = 0;
    for (unsigned g = 0; g < kWidth; g += 4) {
        __m128 sum = _mm_setzero_ps();
        for (int k = 0; k < 3; ++k) {
            const __m128 x = _mm_set1_ps(p[k]);
            const __m128 below = _mm_sub_ps(_mm_load_ps(node->lo[k] + g), x);
            const __m128 above = _mm_sub_ps(x, _mm_load_ps(node->hi[k] + g));
            const __m128 d = _mm_max_ps(_mm_max_ps(below, above), _mm_setzero_ps());
            sum = _mm_add_ps(sum, _mm_mul_ps(d, d));
        }
        _mm_storeu_ps(d2 + g, sum);
        mask |= _mm_movemask_ps(_mm_cmple_ps(sum, _mm_set1_ps(limit))) << g;
    }
    return mask;
#else
    int mask = 0;
    for (unsigned c = 0; c < kWidth; ++c) {
        float sum = 0.0f;
        for (int k = 0; k < 3; ++k) {
            const float d = std::max(std::max(node->lo[k][c] - p[k], p[k] - node->hi[k][c]), 0.0f);
            sum += d * d;
        }
        d2[c] = sum;
        mask |= sum <= limit ? 1 << c : 0;
    }
    return mask;
#endif
}

} // namespace

// The tree's memory: one block, nodes in its first part and leaves in the rest, each part
// handed out by an atomic bump pointer (the builder calls from several threads). It is
// reserved for the worst case so that it never runs out; only the pages touched cost memory.
// It asks for huge pages, as a walk touches a new page at nearly every step. Nodes are whole
// cache lines; leaves are packed at 16 bytes, as rounding each to a cache line would cost a
// tenth of the tree.
class TreeArena {
public:
    // Room for the tree over n triangles: at most n leaves, and fewer nodes.
    explicit TreeArena(std::size_t n)
        : fNodeBytes(roundUp(n * sizeof(BvhNode), kHugePage)),
          fSize(fNodeBytes + roundUp(n * (kLeafHeader + sizeof(TriangleRecord) + kLeafAlign), kHugePage))
    {
#if defined(__unix__)
        void* p = mmap(nullptr, fSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (p == MAP_FAILED)
            return;
#if defined(MADV_HUGEPAGE)
        madvise(p, fSize, MADV_HUGEPAGE);
#endif
        fBase = static_cast<char*>(p);
#else
        fBase = static_cast<char*>(::operator new(fSize, std::align_val_t(64), std::nothrow));
#endif
    }
    ~TreeArena()
    {
        if (!fBase)
            return;
#if defined(__unix__)
        munmap(fBase, fSize);
#else
        ::operator delete(fBase, std::align_val_t(64));
#endif
    }
    TreeArena(const TreeArena&) = delete;
    TreeArena& operator=(const TreeArena&) = delete;

    bool valid() const { return fBase != nullptr; }

    // Neither fails within the room made at construction.
    void* allocateNode(std::size_t bytes) { return fBase + fNodesUsed.fetch_add(bytes, std::memory_order_relaxed); }
    void* allocateLeaf(std::size_t bytes)
    {
        return fBase + fNodeBytes + fLeavesUsed.fetch_add(roundUp(bytes, kLeafAlign), std::memory_order_relaxed);
    }

private:
    static constexpr std::size_t kHugePage = std::size_t(2) << 20;
    static constexpr std::size_t kLeafAlign = 16;
    static std::size_t roundUp(std::size_t bytes, std::size_t unit) { return (bytes + unit - 1) / unit * unit; }

    char* fBase = nullptr;
    std::size_t fNodeBytes;
    std::size_t fSize;
    std::atomic<std::size_t> fNodesUsed{0};
    std::atomic<std::size_t> fLeavesUsed{0};
};

void widenedTriangleBox(const double* a, const double* b, const double* c, double tolerance, double lo[3],
                        double hi[3])
{
    double extent[3], largestExtent = 0, largestCoordinate = 0;
    for (int k = 0; k < 3; ++k) {
        lo[k] = std::min(a[k], std::min(b[k], c[k]));
        hi[k] = std::max(a[k], std::max(b[k], c[k]));
        extent[k] = hi[k] - lo[k];
        largestExtent = std::max(largestExtent, extent[k]);
        largestCoordinate = std::max(largestCoordinate, std::max(std::fabs(lo[k]), std::fabs(hi[k])));
    }
    const double widen = 3.0 * std::max(tolerance, 0.0);
    const double slack = 1.0e-6 * largestExtent + 1.0e-7 * largestCoordinate;
    for (int k = 0; k < 3; ++k) {
        const double margin = widen * extent[k] + slack;
        lo[k] -= margin;
        hi[k] += margin;
    }
}

RTCDevice embreeDevice()
{
    static RTCDevice device = [] {
        RTCDevice d = rtcNewDevice(nullptr);
        if (!d)
            writeLog(LogLevel::kError, "Embree could not make a device; intersections run without an accelerator");
        else
            rtcSetDeviceErrorFunction(d, onEmbreeError, nullptr);
        return d;
    }();
    return device;
}

// The callbacks of Embree's builder, allocating from the accelerator's arena.
struct BvhBuild {
    template <class Node>
    static void* makeNode(void* memory)
    {
        auto* node = new (memory) Node;
        for (unsigned c = 0; c < Node::kWidth; ++c) {
            for (int k = 0; k < 3; ++k) {
                node->lo[k][c] = kInfF;
                node->hi[k][c] = kInfF;
            }
            node->child[c] = nullptr;
        }
        return node;
    }

    static void* createNode(RTCThreadLocalAllocator, unsigned count, void* user)
    {
        TreeArena& arena = *static_cast<MeshAccelerator*>(user)->fArena;
        if (count > NarrowNode::kWidth)
            return makeNode<BvhNode>(arena.allocateNode(sizeof(BvhNode)));
        void* node = makeNode<NarrowNode>(arena.allocateNode(sizeof(NarrowNode)));
        return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(node) | 2u);
    }

    template <class Node>
    static void fill(Node* n, void** children, const RTCBounds** bounds, unsigned count)
    {
        for (unsigned c = 0; c < count && c < Node::kWidth; ++c) {
            if (children)
                n->child[c] = children[c];
            if (bounds) {
                n->lo[0][c] = bounds[c]->lower_x;
                n->lo[1][c] = bounds[c]->lower_y;
                n->lo[2][c] = bounds[c]->lower_z;
                n->hi[0][c] = bounds[c]->upper_x;
                n->hi[1][c] = bounds[c]->upper_y;
                n->hi[2][c] = bounds[c]->upper_z;
            }
        }
    }

    static void set(void* node, void** children, const RTCBounds** bounds, unsigned count)
    {
        if (isNarrow(node))
            fill(static_cast<NarrowNode*>(untagged(node)), children, bounds, count);
        else
            fill(static_cast<BvhNode*>(node), children, bounds, count);
    }

    static void setChildren(void* node, void** children, unsigned count, void*)
    {
        set(node, children, nullptr, count);
    }

    static void setBounds(void* node, const RTCBounds** bounds, unsigned count, void*)
    {
        set(node, nullptr, bounds, count);
    }

    static void* createLeaf(RTCThreadLocalAllocator, const RTCBuildPrimitive* primitives, size_t count, void* user)
    {
        const auto* accel = static_cast<const MeshAccelerator*>(user);
        void* memory = accel->fArena->allocateLeaf(kLeafHeader + count * sizeof(TriangleRecord));
        auto* leaf = new (memory) BvhLeaf;
        leaf->count = static_cast<int>(count);
        auto* triangles = reinterpret_cast<TriangleRecord*>(static_cast<char*>(memory) + kLeafHeader);
        for (size_t i = 0; i < count; ++i)
            new (triangles + i) TriangleRecord(accel->fTriangles[primitives[i].primID]);
        return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(memory) | 1u);
    }
};

MeshAccelerator::MeshAccelerator(const MeshGeometry& mesh, const std::vector<int>* faces)
    : fVersion(mesh.version())
{
    // The triangles are copied out of the mesh in one pass in face order, and the leaves copy
    // them from this list. Reading each leaf's corners from the mesh instead, in the builder's
    // spatial order, costs several cache and TLB misses a triangle: on 25M triangles that took
    // longer than the rest of the build.
    const float* points = mesh.rawPoints();
    auto addFace = [&](int f) {
        const int* ids = mesh.polygonVertices(f);
        for (int i = 0, n = mesh.polygonSize(f) - 2; i < n; ++i) {
            TriangleRecord t;
            for (int k = 0; k < 3; ++k) {
                t.a[k] = points[3 * ids[0] + k];
                t.b[k] = points[3 * ids[i + 1] + k];
                t.c[k] = points[3 * ids[i + 2] + k];
            }
            t.face = f;
            t.index = i;
            fTriangles.push_back(t);
        }
    };
    if (faces) {
        fPartial = true;
        fFaces = *faces;
        std::sort(fFaces.begin(), fFaces.end());
        fFaces.erase(std::unique(fFaces.begin(), fFaces.end()), fFaces.end());
        for (int f : fFaces)
            addFace(f);
    } else {
        fTriangles.reserve(static_cast<std::size_t>(mesh.numFaceVertices() - 2 * mesh.numPolygons()));
        for (int f = 0, n = mesh.numPolygons(); f < n; ++f)
            addFace(f);
    }
    fTriangleCount = static_cast<int>(fTriangles.size());

    // The scene's box over the finite vertices, and the pad that covers single precision.
    const float* p = mesh.rawPoints();
    double largestCoordinate = 0;
    bool any = false;
    for (int v = 0; v < mesh.numVertices(); ++v) {
        if (!finite3(p + 3 * v))
            continue;
        for (int k = 0; k < 3; ++k) {
            const double x = p[3 * v + k];
            fLo[k] = any ? std::min(fLo[k], x) : x;
            fHi[k] = any ? std::max(fHi[k], x) : x;
            largestCoordinate = std::max(largestCoordinate, std::fabs(x));
        }
        any = true;
    }
    double diagonal = 0, largestExtent = 0;
    for (int k = 0; k < 3; ++k) {
        diagonal += (fHi[k] - fLo[k]) * (fHi[k] - fLo[k]);
        largestExtent = std::max(largestExtent, fHi[k] - fLo[k]);
    }
    diagonal = std::sqrt(diagonal);
    fPad = 1.0e-5 * (largestCoordinate + diagonal) + 1.0e-30;
    const double reach = 3.0 * kMaxAcceleratedTolerance * largestExtent + 1.0e-6 * largestExtent +
                         1.0e-7 * largestCoordinate + 3.0 * fPad;
    for (int k = 0; k < 3; ++k) {
        fLo[k] -= reach;
        fHi[k] += reach;
    }
    if (largestCoordinate <= kLargestCoordinate && embreeDevice())
        build();
    // With a tree the leaves hold the triangles; without one, queries test every triangle
    // of the list.
    if (fUsable)
        decltype(fTriangles)().swap(fTriangles);
}

void MeshAccelerator::build()
{
    const auto start = std::chrono::steady_clock::now();
    std::vector<RTCBuildPrimitive, internal::BlockAllocator<RTCBuildPrimitive>> primitives;
    primitives.reserve(fTriangles.size());
    for (unsigned int id = 0; id < fTriangles.size(); ++id) {
        const TriangleRecord& t = fTriangles[id];
        // No ray meets, and no point is nearest to, a triangle with a corner at infinity or NaN.
        if (!finite3(t.a) || !finite3(t.b) || !finite3(t.c))
            continue;
        double a[3], b[3], c[3], lo[3], hi[3];
        for (int k = 0; k < 3; ++k) {
            a[k] = t.a[k];
            b[k] = t.b[k];
            c[k] = t.c[k];
        }
        widenedTriangleBox(a, b, c, kMaxAcceleratedTolerance, lo, hi);
        RTCBuildPrimitive prim;
        prim.lower_x = roundDown(lo[0] - fPad);
        prim.lower_y = roundDown(lo[1] - fPad);
        prim.lower_z = roundDown(lo[2] - fPad);
        prim.upper_x = roundUp(hi[0] + fPad);
        prim.upper_y = roundUp(hi[1] + fPad);
        prim.upper_z = roundUp(hi[2] + fPad);
        prim.geomID = 0;
        prim.primID = id;
        primitives.push_back(prim);
    }
    auto finish = [&] {
        fBuildSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    if (!primitives.empty()) {
        fArena = std::make_unique<TreeArena>(primitives.size());
        if (!fArena->valid()) {
            fArena.reset();
            return finish();
        }
        RTCDevice device = embreeDevice();
        RTCBVH bvh = rtcNewBVH(device);
        RTCBuildArguments args = rtcDefaultBuildArguments();
        args.buildQuality = RTC_BUILD_QUALITY_LOW;
        args.maxBranchingFactor = kBranching;
        args.maxDepth = kMaxDepth;
        args.minLeafSize = kMinLeafSize;
        args.maxLeafSize = kMaxLeafSize;
        args.bvh = bvh;
        args.primitives = primitives.data();
        args.primitiveCount = primitives.size();
        args.primitiveArrayCapacity = primitives.size();
        args.createNode = BvhBuild::createNode;
        args.setNodeChildren = BvhBuild::setChildren;
        args.setNodeBounds = BvhBuild::setBounds;
        args.createLeaf = BvhBuild::createLeaf;
        args.userPtr = this;
        fRoot = rtcBuildBVH(&args);
        // The nodes live in the arena; the builder's own state is no longer needed.
        rtcReleaseBVH(bvh);
        if (!fRoot || rtcGetDeviceError(device) != RTC_ERROR_NONE) {
            fRoot = nullptr;
            fArena.reset();
            return finish();
        }
    }
    fUsable = true;
    finish();
}

MeshAccelerator::~MeshAccelerator() = default;

void MeshAccelerator::traceRay(const double origin[3], const double direction[3], double tMin, double tMax,
                               bool nearestFirst, RayCandidateSink& sink) const
{
    if (!(tMin <= tMax))
        return;
    if (!fUsable) {
        sink.candidates(fTriangles.data(), static_cast<int>(fTriangles.size()), tMax);
        return;
    }
    if (!fRoot)
        return;

    // Clip to the scene's box first, so that the single precision ray starts near the
    // triangles, where rounding is small against the pad.
    double enter = tMin, leave = tMax;
    for (int k = 0; k < 3; ++k) {
        if (direction[k] == 0.0) {
            if (origin[k] < fLo[k] || origin[k] > fHi[k])
                return;
            continue;
        }
        double t0 = (fLo[k] - origin[k]) / direction[k];
        double t1 = (fHi[k] - origin[k]) / direction[k];
        if (t0 > t1)
            std::swap(t0, t1);
        enter = std::max(enter, t0);
        leave = std::min(leave, t1);
    }
    if (!(enter <= leave))
        return;
    const double length = std::sqrt(direction[0] * direction[0] + direction[1] * direction[1] +
                                     direction[2] * direction[2]);
    double largest = 0;
    for (int k = 0; k < 3; ++k)
        largest = std::max(largest, std::fabs(origin[k]) + std::fabs(enter * direction[k]));
    // A source so far out that the entry point itself is not known to the pad: every leaf.
    const bool exact = length > 0 && std::isfinite(length) && 1.0e-15 * largest <= 1.0e-2 * fPad;
    float org[3] = {0, 0, 0}, inv[3] = {1, 1, 1};
    for (int k = 0; exact && k < 3; ++k) {
        org[k] = toFloat(origin[k] + enter * direction[k]);
        // A direction too small for a reciprocal is as good as a tiny one: it moves the ray
        // by far less than the pad over the scene.
        float d = toFloat(direction[k] / length);
        if (std::fabs(d) < 1.0e-18f)
            d = std::copysign(1.0e-18f, d);
        inv[k] = 1.0f / d;
    }

    float far = roundUp((leave - enter) * length + 2.0 * fPad);
    double current = tMax;
    if (!nearestFirst || !exact) {
        // Every box the ray meets is visited, so the order is free: breadth first, which gives
        // each prefetch a whole level's work to arrive in, where depth first would wait on the
        // child it has just asked for.
        thread_local std::vector<const void*> queue;
        queue.clear();
        queue.push_back(fRoot);
        for (std::size_t head = 0; head < queue.size(); ++head) {
            const void* item = queue[head];
            if (isLeaf(item)) {
                const BvhLeaf* leaf = asLeaf(item);
                sink.candidates(leafTriangles(leaf), leaf->count, current);
                continue;
            }
            visitNode(item, [&](const auto* node) {
                constexpr unsigned kWidth = std::remove_pointer_t<decltype(node)>::kWidth;
                float near[kWidth];
                const int mask = exact ? raySlabs(node, org, inv, far, near) : (1 << kWidth) - 1;
                for (unsigned c = 0; c < kWidth; ++c)
                    if ((mask & (1 << c)) && node->child[c]) {
                        prefetch(node->child[c]);
                        queue.push_back(node->child[c]);
                    }
            });
        }
        return;
    }

    StackEntry stack[kStackSize];
    int top = 0;
    stack[top++] = {fRoot, 0.0f};
    while (top > 0) {
        const StackEntry entry = stack[--top];
        if (entry.key > far)
            continue;
        if (isLeaf(entry.item)) {
            const BvhLeaf* leaf = asLeaf(entry.item);
            const double before = current;
            sink.candidates(leafTriangles(leaf), leaf->count, current);
            if (current < before)
                far = std::min(far, std::max(0.0f, roundUp((current - enter) * length + 2.0 * fPad)));
            continue;
        }
        visitNode(entry.item, [&](const auto* node) {
            constexpr unsigned kWidth = std::remove_pointer_t<decltype(node)>::kWidth;
            float near[kWidth];
            const int mask = raySlabs(node, org, inv, far, near);
            StackEntry found[kWidth];
            int count = 0;
            for (unsigned c = 0; c < kWidth; ++c)
                if (mask & (1 << c))
                    found[count++] = {node->child[c], near[c]};
            pushNearestLast(stack, top, found, count);
        });
    }
}

void MeshAccelerator::searchPoint(const double point[3], double radius, PointCandidateSink& sink) const
{
    if (!(radius >= 0))
        return;
    if (!fUsable) {
        sink.candidates(fTriangles.data(), static_cast<int>(fTriangles.size()), radius);
        return;
    }
    if (!fRoot)
        return;
    // Rounding the point to single precision moves it by up to a few units in the last place.
    const double largest = std::max({std::fabs(point[0]), std::fabs(point[1]), std::fabs(point[2])});
    const double pad = fPad + 1.0e-6 * largest;
    const float p[3] = {toFloat(point[0]), toFloat(point[1]), toFloat(point[2])};
    // Never infinite: unused slots are infinitely far and must not pass. A point too far out
    // for single precision squares prunes nothing.
    const bool exact = largest < 1.0e18;
    auto limitFor = [pad, exact](double r) {
        return exact ? std::min(roundUp((r + pad) * (r + pad)), std::numeric_limits<float>::max())
                     : std::numeric_limits<float>::max();
    };
    float limit = limitFor(radius);

    StackEntry stack[kStackSize];
    int top = 0;
    stack[top++] = {fRoot, 0.0f};
    while (top > 0) {
        const StackEntry entry = stack[--top];
        if (entry.key > limit)
            continue;
        if (isLeaf(entry.item)) {
            const BvhLeaf* leaf = asLeaf(entry.item);
            const double before = radius;
            sink.candidates(leafTriangles(leaf), leaf->count, radius);
            if (radius < before)
                limit = std::min(limit, limitFor(radius));
            continue;
        }
        visitNode(entry.item, [&](const auto* node) {
            constexpr unsigned kWidth = std::remove_pointer_t<decltype(node)>::kWidth;
            float d2[kWidth] = {};
            int mask = 0;
            if (exact)
                mask = pointDistances(node, p, limit, d2);
            else
                for (unsigned c = 0; c < kWidth; ++c)
                    mask |= node->child[c] ? 1 << c : 0;
            StackEntry found[kWidth];
            int count = 0;
            for (unsigned c = 0; c < kWidth; ++c)
                if (mask & (1 << c))
                    found[count++] = {node->child[c], d2[c]};
            pushNearestLast(stack, top, found, count);
        });
    }
}

std::shared_ptr<MeshAccelerator> acceleratorFor(const MeshGeometry& mesh)
{
    std::shared_ptr<MeshAccelerator> cached = mesh.cachedAccelerator();
    if (cached && cached->version() == mesh.version())
        return cached;
    // One build at a time: two threads asking for the same mesh get one hierarchy.
    static std::mutex buildMutex;
    std::lock_guard<std::mutex> lock(buildMutex);
    cached = mesh.cachedAccelerator();
    if (cached && cached->version() == mesh.version())
        return cached;
    auto built = std::make_shared<MeshAccelerator>(mesh);
    mesh.setCachedAccelerator(built);
    return built;
}

} // namespace host
