// Vertex numbers found by position: the downward scan that skips vertex 0, ties and the
// early stop among near and coincident vertices, world space, and the selected mesh.

#include "kernel/indicesToPoints.h"

#include "kernelTest.h"

#include <cmath>

namespace {

using namespace kerneltest;
using Ints = std::vector<int>;

class IndicesToPoints : public kerneltest::SceneTest {
protected:
    // Two unit quads side by side, not sharing their middle edge: vertices 1 and 4 lie on
    // (1, 0, 0), vertices 2 and 7 on (1, 1, 0).
    static MDagPath makeSplitStrip(const std::string& name)
    {
        return makeMesh(name, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}},
                        {4, 4}, {0, 1, 2, 3, 4, 5, 6, 7});
    }

    static Ints found(const MDagPath& mesh, const MPointArray& probes)
    {
        MStatus status(MStatus::kFailure);
        const MIntArray result = tq::indicesToPoints(mesh, probes, status);
        EXPECT_TRUE(status);
        return ints(result);
    }
};

TEST_F(IndicesToPoints, ScanFromTheTopWithoutVertexZero)
{
    const MDagPath strip = makeSplitStrip("split");
    // On vertex 0: of 1, 3 and 4, all 1.0 away, the highest. Coincident vertices give the
    // higher number; far and not-a-number points get -1 and the others are still found.
    EXPECT_EQ(found(strip, points({{0, 0, 0}, {0, 0.2, 0}, {1, 0, 0}, {1.0005, 1, 0}, {1.9, 0.1, 0}, {20000, 0, 0},
                                   {NAN, 0, 0}})),
              (Ints{4, 3, 4, 7, 5, -1, -1}));

    // Vertex 1 is exactly under the point, but vertex 2, 0.0008 away, is met first.
    for (const auto& [gap, expected] : {std::pair{0.0008, 2}, std::pair{0.002, 1}}) {
        const std::vector<P3> near = {{5, 5, 5}, {0, 0, 0}, {gap, 0, 0}, {1, 1, 0}};
        const MDagPath mesh = makeMesh("near" + std::to_string(expected), near, {3, 3}, {0, 1, 3, 0, 2, 3});
        EXPECT_EQ(found(mesh, points({{0, 0, 0}})), (Ints{expected})) << gap;
    }
}

TEST_F(IndicesToPoints, WorldSpaceAndTheSelectedMesh)
{
    const MDagPath moved = makeSplitStrip("moved");
    ASSERT_TRUE(host::setDouble("moved.translateX", 10.0));
    ASSERT_TRUE(host::setDouble("moved.translateY", -1.0));
    EXPECT_EQ(found(moved, points({{12, 0, 0}, {2, 0, 0}})), (Ints{6, 3}));

    const MDagPath other = makeMesh("other", {{0, 0, 0}, {0, 0, 1}, {5, 0, 0}, {9, 0, 9}}, {4}, {0, 1, 2, 3});
    const MPointArray probe = points({{5, 0, 0}, {11, -1, 0}});
    ASSERT_TRUE(host::select({"moved"}));
    EXPECT_EQ(found(MDagPath(), probe), (Ints{3, 4}));
    EXPECT_EQ(found(other, probe), (Ints{2, 2})) << "a valid path wins over the selection";
    ASSERT_TRUE(host::select({}));
    EXPECT_TRUE(found(MDagPath(), probe).empty());
}

TEST_F(IndicesToPoints, TooLittleToSearch)
{
    MStatus status;
    EXPECT_EQ(tq::indicesToPoints(makeSplitStrip("split"), MPointArray(), status).length(), 0u);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    // Two loose vertices: an empty result, shorter than the input.
    EXPECT_TRUE(found(makeMesh("pair", {{0, 0, 0}, {1, 0, 0}}, {}, {}), points({{1, 0, 0}, {0, 0, 0}})).empty());
}

} // namespace
