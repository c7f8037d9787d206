// Rows to quads on a real mesh: how many quads, which vertex gets which number, how bands
// and patches share their rows, where the pinched loops stand, and what unusable rows leave.

#include "command/buildPatchFaces.h"

#include "store/storeReads.h"
#include "store/storeWrites.h"

#include "patchTest.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using namespace patchtest;
using plugintest::pointArray;
using plugintest::samePoints;
using Ints = std::vector<int>;

// Rows along X, one unit apart in Y: 4 points from x = 0 to 3 at height y.
MPointArray rowAt(double y) { return straightRow({0, y, 0}, {1, 0, 0}, 4); }

class BuildPatchFaces : public PatchTest {
protected:
    MIntArray build(MFnMesh& fn, const tq::RowList& rows, unsigned rowSpans, unsigned bandSpans,
                    bool tolerateUneven = false)
    {
        ok = !ok; // so that a call that leaves it alone is seen
        return tq::buildPatchFaces(fn, rows, rowSpans, bandSpans, tolerateUneven, ok, owner);
    }

    // The distinct values of one coordinate over the mesh's vertices, rising, to 1e-5.
    static std::vector<double> levels(MFnMesh& fn, double MPoint::*axis)
    {
        std::vector<double> out;
        for (const MPoint& p : meshPoints(fn))
            out.push_back(std::round(p.*axis * 1e5) / 1e5);
        std::sort(out.begin(), out.end());
        out.erase(std::unique(out.begin(), out.end()), out.end());
        return out;
    }

    Ints shadowSizes()
    {
        MIntArray sizes;
        EXPECT_TRUE(tq::readShadowSizes(store, sizes));
        return ints(sizes);
    }

    bool ok = false;
    MObject owner;
};

TEST_F(BuildPatchFaces, NewCornersAreNumberedInCreationOrder)
{
    // An unattached function set: the first quad makes the mesh.
    MFnMesh fn;
    const MIntArray faces = build(fn, {rowAt(0), rowAt(2)}, 3, 2);
    EXPECT_TRUE(ok);
    EXPECT_FALSE(owner.isNull());
    EXPECT_EQ(host::nodeNames("mesh").size(), 1u);
    EXPECT_EQ(ints(faces), (Ints{0, 1, 2, 3, 4, 5}));
    // Column by column, across the band, corners a0, a1, then back on the far loop.
    EXPECT_EQ(faceVertices(fn, faces),
              (Faces{{0, 1, 2, 3}, {3, 2, 4, 5}, {1, 6, 7, 2}, {2, 7, 8, 4}, {6, 9, 10, 7}, {7, 10, 11, 8}}));
    EXPECT_TRUE(samePoints(meshPoints(fn), pointArray({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 2, 0},
                                                       {0, 2, 0}, {2, 0, 0}, {2, 1, 0}, {2, 2, 0}, {3, 0, 0},
                                                       {3, 1, 0}, {3, 2, 0}})));
}

TEST_F(BuildPatchFaces, BandsAndPatchesShareTheRowsTheyMeetOn)
{
    MFnMesh fn(makeRetopo());
    // Three rows, two bands: the middle row is made once. Faces and vertices follow the
    // retopo mesh's own quad and its four vertices.
    EXPECT_EQ(ints(build(fn, {rowAt(0), rowAt(1), rowAt(2)}, 3, 1)), (Ints{1, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(fn.numVertices(), 4 + 12);

    // A second patch on the last row reuses its vertices: (0, 2) and (1, 2) are 13 and 12.
    const MIntArray faces = build(fn, {rowAt(2), rowAt(3)}, 3, 1);
    EXPECT_EQ(ints(faces), (Ints{7, 8, 9}));
    EXPECT_EQ(fn.numVertices(), 16 + 4);
    EXPECT_EQ(faceVertices(fn, faces)[0], (Ints{13, 12, 16, 17}));

    // Within the merge distance (0.001 unless tq_mergThreshold says otherwise) a row still meets.
    const auto nearly = [](MPointArray points) {
        for (MPoint& p : points)
            p.z += 0.0005;
        return points;
    };
    build(fn, {nearly(rowAt(3)), rowAt(4)}, 3, 1);
    EXPECT_EQ(fn.numVertices(), 20 + 4);
    MGlobal::setOptionVarValue("tq_mergThreshold", 0.0001);
    build(fn, {nearly(rowAt(4)), rowAt(5)}, 3, 1);
    EXPECT_EQ(fn.numVertices(), 24 + 8) << "a tighter merge distance keeps the rows apart";
}

TEST_F(BuildPatchFaces, TheLastPairOfRowsBecomesTheShadow)
{
    MFnMesh fn(makeRetopo());
    build(fn, {rowAt(0), rowAt(1), rowAt(2)}, 3, 1);
    ASSERT_TRUE(ok);
    EXPECT_EQ(shadowSizes(), (Ints{4, 4}));
    MPointArray shadow;
    ASSERT_TRUE(tq::readShadowStrokes(shadow));
    EXPECT_TRUE(samePoints(shadow, pointArray({{0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}, {0, 2, 0}, {1, 2, 0},
                                               {2, 2, 0}, {3, 2, 0}})));
    MIntArray idx1, idx2, idx3;
    tq::readShadowIndices(idx1, idx2, idx3);
    EXPECT_EQ(ints(idx1), (Ints{7, 6, 9, 11}));
    EXPECT_EQ(ints(idx2), (Ints{13, 12, 14, 15}));

    // One row is no band: nothing is made, and the pair it never had is the shadow.
    const int vertices = fn.numVertices();
    EXPECT_EQ(build(fn, {rowAt(5)}, 3, 1).length(), 0u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(fn.numVertices(), vertices);
    EXPECT_EQ(shadowSizes(), (Ints{0, 0}));

    // The shadow holds the rows as they were built, resampled, not as they were given.
    build(fn, {straightRow({0, 6, 0}, {0.5, 0, 0}, 7), straightRow({0, 7, 0}, {3, 0, 0}, 2)}, 3, 1);
    ASSERT_TRUE(tq::readShadowStrokes(shadow));
    EXPECT_EQ(shadowSizes(), (Ints{3, 3}));
    EXPECT_TRUE(samePoints(shadow, pointArray({{0, 6, 0}, {1.5, 6, 0}, {3, 6, 0}, {0, 7, 0}, {1.5, 7, 0}, {3, 7, 0}})));
}

TEST_F(BuildPatchFaces, PinchMovesTheSecondLoopFromEachEnd)
{
    const struct {
        double pinch;
        int spans;
        std::vector<double> heights;
    } cases[] = {{0.25, 4, {0, 0.75, 2, 3.25, 4}}, {0.25, 5, {0, 0.75, 2, 3, 4.25, 5}},
                 {0.25, 3, {0, 1, 2, 3}} /* never pinched */, {-0.2, 4, {0, 1.2, 2, 2.8, 4}}};
    for (const auto& c : cases) {
        ASSERT_TRUE(tq::setPinch(c.pinch));
        MFnMesh fn;
        build(fn, {straightRow({0, 0, 0}, {1, 0, 0}, 2), straightRow({0, double(c.spans), 0}, {1, 0, 0}, 2)}, 1,
              c.spans);
        EXPECT_EQ(levels(fn, &MPoint::y), c.heights) << c.pinch << ", " << c.spans << " spans";
        EXPECT_EQ(fn.numVertices(), 2 * (c.spans + 1)) << "the quads on both sides of a pinched loop meet";
    }
}

TEST_F(BuildPatchFaces, RowLengthsDecideTheQuadsAlongABand)
{
    // rowSpans 5 is U spans + 1 for U = 4: a raw stroke of 6 points keeps them, 5 quads.
    MFnMesh raw;
    EXPECT_EQ(build(raw, {straightRow({0, 0, 0}, {1, 0, 0}, 6), straightRow({0, 1, 0}, {1, 0, 0}, 6)}, 5, 1).length(),
              5u);
    // Any other length is resampled to rowSpans points: 4 quads, the far row's points evenly
    // spread whatever its own length.
    MFnMesh resampled;
    EXPECT_EQ(
        build(resampled, {straightRow({0, 0, 0}, {0.5, 0, 0}, 9), straightRow({0, 1, 0}, {2, 0, 0}, 3)}, 5, 1).length(),
        4u);
    EXPECT_EQ(levels(resampled, &MPoint::x), (std::vector<double>{0, 1, 2, 3, 4}));

    // A first row that ends exactly on its start goes round with 3 spans at least.
    MPointArray loop = row({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}}), upper = loop;
    for (MPoint& p : upper)
        p.z = 1;
    MFnMesh closed;
    EXPECT_EQ(build(closed, {loop, upper}, 2, 1).length(), 3u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(closed.numVertices(), 6) << "the loop closes on its first vertices";
    loop[3].x = 1e-9;
    MFnMesh open;
    EXPECT_LT(build(open, {loop, upper}, 2, 1).length(), 3u) << "closure is exact";
}

TEST_F(BuildPatchFaces, UnusableRowsFailAndKeepWhatWasMade)
{
    MFnMesh fn(makeRetopo());
    ASSERT_TRUE(tq::writeShadowStrokes(MPointArray(), MPointArray(), rowAt(9)));
    for (const tq::RowList& rows : {tq::RowList{}, tq::RowList{MPointArray(), rowAt(1)}}) {
        EXPECT_EQ(build(fn, rows, 3, 1).length(), 0u);
        EXPECT_FALSE(ok);
        EXPECT_EQ(fn.numPolygons(), 1);
    }
    // A one-point row in the second pair: the first band stays on the mesh, the list is empty,
    // whether uneven rows are tolerated or not.
    for (bool tolerate : {false, true}) {
        const int before = fn.numPolygons();
        const double y = tolerate ? 10 : 0;
        EXPECT_EQ(build(fn, {rowAt(y), rowAt(y + 1), row({{0, 3, 0}})}, 3, 1, tolerate).length(), 0u) << tolerate;
        EXPECT_FALSE(ok) << tolerate;
        EXPECT_EQ(fn.numPolygons(), before + 3) << tolerate;
    }
    EXPECT_EQ(shadowSizes(), (Ints{4})) << "a failed call writes no shadow";

    // A quad the mesh refuses is logged and skipped; the others are made.
    host::clearLog();
    MPointArray broken = rowAt(5);
    broken[1].y = std::numeric_limits<double>::quiet_NaN();
    const int before = fn.numPolygons();
    EXPECT_EQ(build(fn, {broken, rowAt(6)}, 3, 1).length(), 1u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(fn.numPolygons(), before + 1);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "addPolygon")) << host::logText();
}

} // namespace
