#include <maya/MFloatMatrix.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

constexpr double kPi = 3.14159265358979323846;

MMatrix translation(double x, double y, double z)
{
    MMatrix m;
    m[3][0] = x;
    m[3][1] = y;
    m[3][2] = z;
    return m;
}

TEST(PointVectorTest, pointsTranslateAndVectorsDoNot)
{
    const MMatrix move = translation(10, 20, 30);
    EXPECT_EQ(MPoint(1, 2, 3) * move, MPoint(11, 22, 33));
    EXPECT_EQ(MVector(1, 2, 3) * move, MVector(1, 2, 3));

    MPoint p(1, 0, 0);
    p *= move;
    EXPECT_EQ(p, MPoint(11, 20, 30));

    // The column-vector forms read the transposed layout: M * p uses the fourth column.
    EXPECT_EQ(move * MPoint(1, 2, 3), MPoint(1, 2, 3, 10 + 40 + 90 + 1));
}

TEST(PointVectorTest, rowVectorConventionAppliesTheLeftMatrixFirst)
{
    MMatrix scale;
    scale[0][0] = 2.0;
    const MMatrix move = translation(1, 0, 0);
    // Scale first, then move: (1 * 2) + 1.
    EXPECT_EQ(MPoint(1, 0, 0) * (scale * move), MPoint(3, 0, 0));
    EXPECT_EQ(MPoint(1, 0, 0) * (move * scale), MPoint(4, 0, 0));
}

TEST(PointVectorTest, pointMatrixProductKeepsHomogeneousW)
{
    MMatrix projective;
    projective[0][3] = 1.0;
    const MPoint p = MPoint(2, 0, 0) * projective;
    EXPECT_EQ(p.w, 3.0);
    MPoint c = p;
    c.cartesianize();
    EXPECT_TRUE(c.isEquivalent(MPoint(2.0 / 3.0, 0, 0)));
}

TEST(PointVectorTest, homogeneousFormsConvert)
{
    MPoint p(2, 4, 6, 2);
    MPoint r = p;
    r.rationalize();
    EXPECT_EQ(r, MPoint(1, 2, 3, 2));
    r.homogenize();
    EXPECT_EQ(r, p);
    p.cartesianize();
    EXPECT_EQ(p, MPoint(1, 2, 3, 1));

    MPoint atInfinity(1, 2, 3, 0);
    atInfinity.cartesianize();
    EXPECT_EQ(atInfinity, MPoint(1, 2, 3, 0));

    // Differences and sums see the cartesian position.
    EXPECT_EQ(MPoint(2, 2, 2, 2) - MPoint(0, 0, 0), MVector(1, 1, 1));
    EXPECT_EQ(MPoint(2, 2, 2, 2) + MVector(1, 0, 0), MPoint(2, 1, 1));
    EXPECT_DOUBLE_EQ(MPoint(0, 0, 0).distanceTo(MPoint(3, 4, 0)), 5.0);
}

TEST(PointVectorTest, crossDotAndLength)
{
    EXPECT_EQ(MVector::xAxis ^ MVector::yAxis, MVector::zAxis);
    EXPECT_EQ(MVector::yAxis ^ MVector::xAxis, MVector::zNegAxis);
    EXPECT_EQ(MVector(1, 2, 3) * MVector(4, 5, 6), 32.0);
    EXPECT_DOUBLE_EQ(MVector(3, 4, 12).length(), 13.0);
    EXPECT_EQ(2 * MVector(1, 2, 3), MVector(2, 4, 6));
    EXPECT_EQ(MVector(1, 2, 3) / 2.0, MVector(0.5, 1, 1.5));
    EXPECT_EQ(-MVector(1, -2, 3), MVector(-1, 2, -3));
    EXPECT_EQ(2.0f * MPoint(1, 1, 1, 5), MPoint(2, 2, 2, 5));
}

TEST(PointVectorTest, normalizingAZeroVectorLeavesItAlone)
{
    MVector v;
    EXPECT_EQ(v.normalize(), MS::kSuccess);
    EXPECT_EQ(v, MVector::zero);
    EXPECT_TRUE(MVector(0, 3, 4).normal().isEquivalent(MVector(0, 0.6, 0.8)));
}

TEST(PointVectorTest, anglesAndParallelism)
{
    EXPECT_NEAR(MVector::xAxis.angle(MVector::yAxis), kPi / 2, 1e-12);
    EXPECT_NEAR(MVector(1, 1, 0).angle(MVector(-1, -1, 0)), kPi, 1e-12);
    EXPECT_EQ(MVector::zero.angle(MVector::xAxis), 0.0);
    EXPECT_TRUE(MVector(1, 2, 3).isParallel(MVector(-2, -4, -6)));
    EXPECT_FALSE(MVector(1, 2, 3).isParallel(MVector(1, 2, 3.1)));
    EXPECT_TRUE(MVector(1, 0, 0).isEquivalent(MVector(1 + 1e-12, 0, 0)));
    EXPECT_FALSE(MVector(1, 0, 0).isEquivalent(MVector(1.001, 0, 0)));
}

TEST(PointVectorTest, rotateAboutAxesIsRightHanded)
{
    EXPECT_TRUE(MVector::xAxis.rotateBy(MVector::kZaxis, kPi / 2).isEquivalent(MVector::yAxis, 1e-12));
    EXPECT_TRUE(MVector::yAxis.rotateBy(MVector::kXaxis, kPi / 2).isEquivalent(MVector::zAxis, 1e-12));
    EXPECT_TRUE(MVector::zAxis.rotateBy(MVector::kYaxis, kPi / 2).isEquivalent(MVector::xAxis, 1e-12));
    EXPECT_EQ(MVector(1, 2, 3).rotateBy(MVector::kWaxis, 1.0), MVector(1, 2, 3));
}

TEST(PointVectorTest, normalsUseTheInverseTranspose)
{
    MMatrix squash;
    squash[0][0] = 2.0;  // stretch x
    // The plane x + y = 0 stretched along x keeps a normal tilted away from x.
    const MVector n = MVector(1, 1, 0).transformAsNormal(squash);
    EXPECT_TRUE(n.isEquivalent(MVector(0.5, 1, 0).normal(), 1e-12));
    const MVector tangent = MVector(1, -1, 0) * squash;
    EXPECT_NEAR(n * tangent, 0.0, 1e-12);
}

TEST(PointVectorTest, subscriptsFallBackToTheLastComponent)
{
    MVector v(1, 2, 3);
    EXPECT_EQ(v[7], 3.0);
    v(9) = 5.0;
    EXPECT_EQ(v.z, 5.0);
    MPoint p(1, 2, 3, 4);
    EXPECT_EQ(p[3], 4.0);
    EXPECT_EQ(p[8], 1.0);  // as in the devkit, a point falls back to x
}

TEST(PointVectorTest, floatAndDoubleTypesConvert)
{
    const MPoint p(1.5, 2.5, 3.5, 1);
    const MFloatPoint fp(p);
    EXPECT_EQ(fp, MFloatPoint(1.5f, 2.5f, 3.5f));
    EXPECT_EQ(MPoint(fp), p);
    const MFloatVector fv = MVector(1, 2, 3);
    EXPECT_EQ(MVector(fv), MVector(1, 2, 3));
    EXPECT_EQ(MPoint(MVector(1, 2, 3)).w, 1.0);

    MFloatPoint cast;
    EXPECT_EQ(cast.setCast(static_cast<const double*>(nullptr)), MS::kFailure);
    const double d[4] = {1, 2, 3, 4};
    cast.setCast(d);
    EXPECT_EQ(cast, MFloatPoint(1, 2, 3, 4));

    MFloatMatrix move;
    move[3][0] = 1.0f;
    EXPECT_EQ(MFloatPoint(1, 1, 1) * move, MFloatPoint(2, 1, 1));
    EXPECT_EQ(MFloatVector(1, 1, 1) * move, MFloatVector(1, 1, 1));
    EXPECT_EQ(MFloatVector::xAxis ^ MFloatVector::yAxis, MFloatVector::zAxis);
}

TEST(PointVectorTest, nullSourcesGiveDefaults)
{
    EXPECT_EQ(MPoint(static_cast<const double*>(nullptr)), MPoint::origin);
    EXPECT_EQ(MVector(static_cast<const float*>(nullptr)), MVector::zero);
    EXPECT_EQ(MVector(1, 2, 3).get(nullptr), MS::kFailure);
    double out[4] = {};
    EXPECT_EQ(MPoint(1, 2, 3).get(out), MS::kSuccess);
    EXPECT_EQ(out[3], 1.0);
}

TEST(PointVectorTest, streamsPrintComponents)
{
    std::ostringstream out;
    out << MPoint(1, 2, 3) << ' ' << MVector(4, 5, 6);
    EXPECT_EQ(out.str(), "[1, 2, 3, 1] [4, 5, 6]");
}

} // namespace
