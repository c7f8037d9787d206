#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

const MEulerRotation::RotationOrder kOrders[] = {MEulerRotation::kXYZ, MEulerRotation::kYZX, MEulerRotation::kZXY,
                                                 MEulerRotation::kXZY, MEulerRotation::kYXZ, MEulerRotation::kZYX};

MMatrix about(const MVector& axis, double angle) { return MQuaternion(angle, axis).asMatrix(); }

// The axis each order turns about second (the one whose quarter turn locks the gimbal).
unsigned int middleAxis(MEulerRotation::RotationOrder order)
{
    switch (order) {
    case MEulerRotation::kXYZ:
    case MEulerRotation::kZYX: return 1;
    case MEulerRotation::kYZX:
    case MEulerRotation::kXZY: return 2;
    default: return 0;
    }
}

TEST(RotationTest, eulerOrderNamesTheSequenceOfAxisRotations)
{
    const MEulerRotation e(0.3, -0.7, 1.1, MEulerRotation::kXYZ);
    const MMatrix expected = about(MVector::xAxis, 0.3) * about(MVector::yAxis, -0.7) * about(MVector::zAxis, 1.1);
    EXPECT_TRUE(e.asMatrix().isEquivalent(expected, 1e-12));

    const MEulerRotation zyx(0.3, -0.7, 1.1, MEulerRotation::kZYX);
    const MMatrix expectedZyx = about(MVector::zAxis, 1.1) * about(MVector::yAxis, -0.7) * about(MVector::xAxis, 0.3);
    EXPECT_TRUE(zyx.asMatrix().isEquivalent(expectedZyx, 1e-12));

    // A quarter turn about z takes x to y (right-handed, row vectors).
    EXPECT_TRUE((MVector::xAxis * MEulerRotation(0, 0, kPi / 2).asMatrix()).isEquivalent(MVector::yAxis, 1e-12));
}

TEST(RotationTest, decomposeRecoversAnglesInEveryOrder)
{
    for (const auto order : kOrders) {
        // Middle angle within (-pi/2, pi/2), where the decomposition is unique.
        const MEulerRotation e(0.4, -0.9, 1.3, order);
        const MEulerRotation back = MEulerRotation::decompose(e.asMatrix(), order);
        EXPECT_TRUE(back.isEquivalent(e, 1e-9)) << "order " << order << ": " << back;
    }
}

TEST(RotationTest, decomposeSurvivesGimbalLockAndScale)
{
    for (const auto order : kOrders) {
        MEulerRotation e(0.5, -0.2, 0.7, order);
        e[middleAxis(order)] = kPi / 2;
        const MEulerRotation back = MEulerRotation::decompose(e.asMatrix(), order);
        EXPECT_TRUE(back.asMatrix().isEquivalent(e.asMatrix(), 1e-9)) << "order " << order;
    }
    MMatrix scaled = MEulerRotation(0.1, 0.2, 0.3).asMatrix();
    for (int c = 0; c < 3; ++c)
        scaled[0][c] *= 5.0;
    EXPECT_TRUE(MEulerRotation::decompose(scaled, MEulerRotation::kXYZ).isEquivalent(MEulerRotation(0.1, 0.2, 0.3), 1e-9));
}

TEST(RotationTest, quaternionProductAppliesTheLeftRotationFirst)
{
    const MQuaternion a(0.7, MVector(1, 2, 3));
    const MQuaternion b(-1.3, MVector(0, 1, -1));
    EXPECT_TRUE((a * b).asMatrix().isEquivalent(a.asMatrix() * b.asMatrix(), 1e-12));
    EXPECT_FALSE((a * b).asMatrix().isEquivalent(b.asMatrix() * a.asMatrix(), 1e-6));

    MQuaternion c = a;
    c *= b;
    EXPECT_TRUE(c.isEquivalent(a * b));
    EXPECT_TRUE((a * a.inverse()).isEquivalent(MQuaternion::identity, 1e-12));
}

TEST(RotationTest, quaternionAxisAngleRotatesVectors)
{
    const MQuaternion quarter(kPi / 2, MVector::zAxis);
    EXPECT_TRUE(MVector::xAxis.rotateBy(quarter).isEquivalent(MVector::yAxis, 1e-12));
    MVector axis;
    double angle = 0.0;
    EXPECT_TRUE(quarter.getAxisAngle(axis, angle));
    EXPECT_TRUE(axis.isEquivalent(MVector::zAxis, 1e-12));
    EXPECT_NEAR(angle, kPi / 2, 1e-12);

    EXPECT_EQ(MQuaternion(1.0, MVector::zero), MQuaternion::identity);
    EXPECT_FALSE(MQuaternion(0, 0, 0, 0).getAxisAngle(axis, angle));
}

TEST(RotationTest, quaternionBetweenVectorsIncludingOpposite)
{
    const MVector a(1, 2, 3);
    const MVector b(-2, 0.5, 1);
    EXPECT_TRUE(a.rotateBy(MQuaternion(a, b)).normal().isEquivalent(b.normal(), 1e-12));
    EXPECT_TRUE(a.rotateBy(a.rotateTo(b)).normal().isEquivalent(b.normal(), 1e-12));
    EXPECT_TRUE(a.rotateBy(MQuaternion(a, -a)).isEquivalent(-a, 1e-12));
    const MVector half = a.rotateBy(MQuaternion(a, b, 0.5));
    EXPECT_NEAR(half.angle(a), a.angle(b) / 2, 1e-12);
}

TEST(RotationTest, matrixQuaternionAndEulerAgree)
{
    const MEulerRotation e(0.2, 1.0, -2.5);
    MQuaternion q;
    q = e.asMatrix();
    EXPECT_TRUE(q.asMatrix().isEquivalent(e.asMatrix(), 1e-12));
    EXPECT_TRUE(e.asQuaternion().asEulerRotation().isEquivalent(e, 1e-9));

    // Rotations by half a turn stress the non-trace branches of the conversion.
    for (const MVector& axis : {MVector::xAxis, MVector::yAxis, MVector::zAxis, MVector(1, 1, 0)}) {
        MQuaternion r;
        r = about(axis, kPi);
        EXPECT_TRUE(r.asMatrix().isEquivalent(about(axis, kPi), 1e-12));
    }
}

TEST(RotationTest, slerpFollowsTheShorterArc)
{
    const MQuaternion p;
    const MQuaternion q(kPi / 2, MVector::zAxis);
    const MQuaternion mid = slerp(p, q, 0.5);
    EXPECT_TRUE(mid.isEquivalent(MQuaternion(kPi / 4, MVector::zAxis), 1e-12));
    // -q is the same rotation; slerp must not take the long way round.
    EXPECT_TRUE(slerp(p, -q, 0.5).asMatrix().isEquivalent(mid.asMatrix(), 1e-12));
    EXPECT_TRUE(slerp(p, q, 1.0).asMatrix().isEquivalent(q.asMatrix(), 1e-12));
    EXPECT_TRUE(slerp(q, q, 0.3).isEquivalent(q, 1e-12));
}

TEST(RotationTest, eulerInverseUndoesTheRotation)
{
    for (const auto order : kOrders) {
        const MEulerRotation e(0.3, 0.8, -1.2, order);
        EXPECT_TRUE((e.asMatrix() * e.inverse().asMatrix()).isEquivalent(MMatrix::identity, 1e-12)) << order;
    }
}

TEST(RotationTest, alternateSolutionsDescribeTheSameRotation)
{
    for (const auto order : kOrders) {
        const MEulerRotation e(0.3, 0.8, -1.2, order);
        const MEulerRotation alt = e.alternateSolution();
        EXPECT_FALSE(alt.isEquivalent(e, 1e-3));
        EXPECT_TRUE(alt.asMatrix().isEquivalent(e.asMatrix(), 1e-12)) << order;
    }
}

TEST(RotationTest, closestCutAndSolutionStayNearTheTarget)
{
    const MEulerRotation e(0.1, 0.2, 0.3);
    const MEulerRotation target(2 * kPi + 0.1, -2 * kPi, 4 * kPi);
    const MEulerRotation cut = e.closestCut(target);
    EXPECT_TRUE(cut.isEquivalent(MEulerRotation(2 * kPi + 0.1, -2 * kPi + 0.2, 4 * kPi + 0.3), 1e-12));
    EXPECT_TRUE(cut.asMatrix().isEquivalent(e.asMatrix(), 1e-12));

    // Near the other triple of the same rotation, that triple is the closer solution.
    const MEulerRotation alternate = e.alternateSolution();
    const MEulerRotation nearAlternate(alternate.x + 0.01, alternate.y - 0.01, alternate.z + 0.01);
    EXPECT_TRUE(e.closestSolution(nearAlternate).isEquivalent(alternate, 1e-12));
    EXPECT_TRUE(e.closestSolution(MEulerRotation(0.11, 0.19, 0.31)).isEquivalent(e, 1e-12));

    EXPECT_TRUE(MEulerRotation(2 * kPi + 0.5, -2 * kPi - 0.25, 5.0)
                    .bound()
                    .isEquivalent(MEulerRotation(0.5, -0.25, 5.0 - 2 * kPi), 1e-12));
}

TEST(RotationTest, reorderKeepsTheRotation)
{
    const MEulerRotation e(0.3, -0.4, 0.9, MEulerRotation::kXYZ);
    for (const auto order : kOrders) {
        const MEulerRotation r = e.reorder(order);
        EXPECT_EQ(r.order, order);
        EXPECT_TRUE(r.asMatrix().isEquivalent(e.asMatrix(), 1e-12));
    }
    const MEulerRotation sum = e + MEulerRotation(0.1, 0, 0, MEulerRotation::kXYZ);
    EXPECT_TRUE(sum.isEquivalent(MEulerRotation(0.4, -0.4, 0.9), 1e-12));
}

TEST(RotationTest, eulerProductAndIncrementalRotation)
{
    const MEulerRotation a(0.2, 0.0, 0.0);
    const MEulerRotation b(0.0, 0.5, 0.0);
    EXPECT_TRUE((a * b).asMatrix().isEquivalent(a.asMatrix() * b.asMatrix(), 1e-12));

    MEulerRotation spin(0.0, 0.0, 3.0);
    spin.incrementalRotateBy(MVector::zAxis, 0.5);
    // Continues past pi instead of jumping to -2.78.
    EXPECT_TRUE(spin.isEquivalent(MEulerRotation(0.0, 0.0, 3.5), 1e-9)) << spin;
}

} // namespace
