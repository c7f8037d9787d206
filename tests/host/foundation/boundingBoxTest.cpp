#include <maya/MBoundingBox.h>
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>

#include <gtest/gtest.h>

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST(BoundingBoxTest, emptyBoxContainsAndIntersectsNothing)
{
    const MBoundingBox empty;
    EXPECT_FALSE(empty.contains(MPoint::origin));
    EXPECT_FALSE(empty.intersects(MBoundingBox(MPoint(-1, -1, -1), MPoint(1, 1, 1)), 10.0));
    EXPECT_EQ(empty.width(), 0.0);
    EXPECT_EQ(empty.min(), MPoint::origin);
    EXPECT_EQ(empty.center(), MPoint::origin);
}

TEST(BoundingBoxTest, firstExpandTakesThePointExactly)
{
    MBoundingBox box;
    box.expand(MPoint(5, 6, 7));
    EXPECT_EQ(box.min(), MPoint(5, 6, 7));
    EXPECT_EQ(box.max(), MPoint(5, 6, 7));
    EXPECT_TRUE(box.contains(MPoint(5, 6, 7)));
    box.expand(MPoint(-1, 10, 7, 1));
    EXPECT_EQ(box.min(), MPoint(-1, 6, 7));
    EXPECT_EQ(box.max(), MPoint(5, 10, 7));
    EXPECT_EQ(box.width(), 6.0);
    EXPECT_EQ(box.height(), 4.0);
    EXPECT_EQ(box.depth(), 0.0);
    EXPECT_EQ(box.center(), MPoint(2, 8, 7));

    box.clear();
    box.expand(MPoint(4, 4, 4, 2));  // homogeneous point counts at (2, 2, 2)
    EXPECT_EQ(box.max(), MPoint(2, 2, 2));
}

TEST(BoundingBoxTest, cornersMayComeInAnyOrder)
{
    const MBoundingBox box(MPoint(1, -2, 3), MPoint(-1, 2, -3));
    EXPECT_EQ(box.min(), MPoint(-1, -2, -3));
    EXPECT_EQ(box.max(), MPoint(1, 2, 3));
    EXPECT_TRUE(box.contains(MPoint(1, 2, 3)));
    EXPECT_FALSE(box.contains(MPoint(1.0001, 0, 0)));
}

TEST(BoundingBoxTest, expandByBoxIgnoresEmptyBoxes)
{
    MBoundingBox box(MPoint(0, 0, 0), MPoint(1, 1, 1));
    box.expand(MBoundingBox());
    EXPECT_EQ(box.max(), MPoint(1, 1, 1));
    MBoundingBox empty;
    empty.expand(box);
    EXPECT_EQ(empty.min(), MPoint(0, 0, 0));
    empty.expand(MBoundingBox(MPoint(2, 2, 2), MPoint(3, 3, 3)));
    EXPECT_EQ(empty.max(), MPoint(3, 3, 3));
}

TEST(BoundingBoxTest, intersectionCountsTouchingAndTolerance)
{
    const MBoundingBox a(MPoint(0, 0, 0), MPoint(1, 1, 1));
    EXPECT_TRUE(a.intersects(MBoundingBox(MPoint(1, 1, 1), MPoint(2, 2, 2))));
    const MBoundingBox apart(MPoint(1.5, 0, 0), MPoint(2, 1, 1));
    EXPECT_FALSE(a.intersects(apart));
    EXPECT_TRUE(a.intersects(apart, 0.6));
}

TEST(BoundingBoxTest, transformUsingBoundsTheMovedCorners)
{
    MBoundingBox box(MPoint(0, 0, 0), MPoint(2, 1, 1));
    MMatrix m = MEulerRotation(0, 0, kPi / 2).asMatrix();
    m[3][0] = 10.0;
    box.transformUsing(m);
    EXPECT_TRUE(box.min().isEquivalent(MPoint(9, 0, 0), 1e-12));
    EXPECT_TRUE(box.max().isEquivalent(MPoint(10, 2, 1), 1e-12));

    MBoundingBox empty;
    empty.transformUsing(m);
    EXPECT_FALSE(empty.contains(MPoint(10, 0, 0)));
}

} // namespace
