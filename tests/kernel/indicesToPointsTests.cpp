// Vertex numbers found by position: the downward scan that skips vertex 0, ties and the
// early stop among near and coincident vertices, world space, and the selected mesh.

#include "kernel/indicesToPoints.h"

#include "kernelTest.h"

#include <cmath>

namespace {

using kerneltest::ints;
using kerneltest::P3;
using kerneltest::points;

class IndicesToPoints : public kerneltest::SceneTest {
protected:
    // Two unit quads side by side, not sharing their middle edge: vertices 1 and 4 lie on
    // (1, 0, 0), vertices 2 and 7 on (1, 1, 0).
    static MDagPath makeSplitStrip(const std::string& name)
    {
        return makeMesh(name, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}},
                        {4, 4}, {0, 1, 2, 3, 4, 5, 6, 7});
    }

    std::vector<int> found(const MDagPath& mesh, const MPointArray& probes)
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
              (std::vector<int>{4, 3, 4, 7, 5, -1, -1}));

    // Vertex 1 is exactly under the point, but vertex 2, 0.0008 away, is met first.
    const std::vector<P3> near = {{5, 5, 5}, {0, 0, 0}, {0.0008, 0, 0}, {1, 1, 0}};
    EXPECT_EQ(found(makeMesh("near", near, {3, 3}, {0, 1, 3, 0, 2, 3}), points({{0, 0, 0}})), (std::vector<int>{2}));
    const std::vector<P3> apart = {{5, 5, 5}, {0, 0, 0}, {0.002, 0, 0}, {1, 1, 0}};
    EXPECT_EQ(found(makeMesh("apart", apart, {3, 3}, {0, 1, 3, 0, 2, 3}), points({{0, 0, 0}})), (std::vector<int>{1}));
}

TEST_F(IndicesToPoints, WorldSpaceAndTheSelectedMesh)
{
    const MDagPath moved = makeSplitStrip("moved");
    ASSERT_TRUE(host::setDouble("moved.translateX", 10.0));
    ASSERT_TRUE(host::setDouble("moved.translateY", -1.0));
    EXPECT_EQ(found(moved, points({{12, 0, 0}, {2, 0, 0}})), (std::vector<int>{6, 3}));

    const MDagPath other = makeMesh("other", {{0, 0, 0}, {0, 0, 1}, {5, 0, 0}, {9, 0, 9}}, {4}, {0, 1, 2, 3});
    const MPointArray probe = points({{5, 0, 0}, {11, -1, 0}});
    ASSERT_TRUE(host::select({"other"}));
    EXPECT_EQ(found(MDagPath(), probe), (std::vector<int>{2, 2}));
    ASSERT_TRUE(host::select({"moved"}));
    EXPECT_EQ(found(MDagPath(), probe), (std::vector<int>{3, 4}));
    EXPECT_EQ(found(other, probe), (std::vector<int>{2, 2})) << "a valid path wins over the selection";
    ASSERT_TRUE(host::select({}));
    EXPECT_TRUE(found(MDagPath(), probe).empty());
}

TEST_F(IndicesToPoints, TooLittleToSearch)
{
    MStatus status;
    EXPECT_EQ(tq::indicesToPoints(makeSplitStrip("split"), MPointArray(), status).length(), 0u);
    EXPECT_EQ(status, MStatus::kInvalidParameter);

    // An empty mesh, and two loose vertices: an empty result, shorter than the input.
    MDagPath empty;
    ASSERT_TRUE(MDagPath::getAPathTo(host::createNode("mesh", "emptyShape"), empty));
    EXPECT_TRUE(found(empty, points({{0, 0, 0}, {1, 0, 0}})).empty());
    MFloatPointArray two;
    two.append(0, 0, 0);
    two.append(1, 0, 0);
    MFnMesh fn;
    fn.create(2, 0, two, MIntArray(), MIntArray(), host::createNode("transform", "pair"), &status);
    ASSERT_TRUE(status && fn.numVertices() == 2) << host::logText();
    MDagPath pair;
    ASSERT_TRUE(fn.getPath(pair));
    EXPECT_TRUE(found(pair, points({{1, 0, 0}})).empty());
}

} // namespace
