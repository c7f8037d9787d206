#include <maya/MEulerRotation.h>
#include <maya/MFloatMatrix.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

MMatrix sample()
{
    const double values[4][4] = {{2, 0.5, 0, 0}, {0.25, 3, 1, 0}, {0, -1, 1.5, 0}, {5, -7, 11, 1}};
    return MMatrix(values);
}

TEST(MatrixTest, defaultIsIdentity)
{
    EXPECT_EQ(MMatrix(), MMatrix::identity);
    EXPECT_EQ(MMatrix::identity(2, 2), 1.0);
    EXPECT_EQ(MMatrix::identity(2, 3), 0.0);
    EXPECT_EQ(MMatrix(static_cast<const double(*)[4]>(nullptr)), MMatrix::identity);
}

TEST(MatrixTest, inverseRoundTrips)
{
    const MMatrix m = sample();
    const MMatrix inv = m.inverse();
    EXPECT_TRUE((m * inv).isEquivalent(MMatrix::identity, 1e-12));
    EXPECT_TRUE((inv * m).isEquivalent(MMatrix::identity, 1e-12));
    const MPoint p(1, 2, 3);
    EXPECT_TRUE((p * m * inv).isEquivalent(p, 1e-12));
    EXPECT_FALSE(m.isSingular());

    MMatrix projective = m;
    projective[0][3] = 0.5;
    projective[2][3] = -0.25;
    EXPECT_TRUE((projective * projective.inverse()).isEquivalent(MMatrix::identity, 1e-12));
}

TEST(MatrixTest, singularMatricesInvertToIdentity)
{
    MMatrix flat;
    flat[2][2] = 0.0;
    EXPECT_TRUE(flat.isSingular());
    EXPECT_EQ(flat.inverse(), MMatrix::identity);

    MMatrix dependent = sample();
    for (int c = 0; c < 4; ++c)
        dependent[1][c] = 3.0 * dependent[0][c];
    EXPECT_TRUE(dependent.isSingular());
    dependent[3][3] = 2.0;  // no longer a transform matrix: the general elimination decides
    EXPECT_TRUE(dependent.isSingular());

    MMatrix broken;
    broken[0][0] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(broken.isSingular());
    EXPECT_EQ(broken.inverse(), MMatrix::identity);
}

TEST(MatrixTest, singularityIsJudgedRelativeToScale)
{
    MMatrix tiny;
    tiny *= 1e-6;
    tiny[3][3] = 1e-6;
    EXPECT_FALSE(tiny.isSingular());
    EXPECT_TRUE((tiny * tiny.inverse()).isEquivalent(MMatrix::identity, 1e-9));

    MMatrix farAway;
    farAway[3][0] = 1e13;
    farAway[3][1] = -1e13;
    EXPECT_FALSE(farAway.isSingular());
    EXPECT_TRUE((MPoint(1, 2, 3) * farAway * farAway.inverse()).isEquivalent(MPoint(1, 2, 3), 1e-2));
}

TEST(MatrixTest, determinantsTransposeAndAdjoint)
{
    const MMatrix m = sample();
    EXPECT_NEAR(m.det3x3(), 2 * (3 * 1.5 + 1) - 0.5 * (0.25 * 1.5), 1e-12);
    EXPECT_NEAR(m.det4x4(), m.det3x3(), 1e-12);  // affine: the translation row does not count
    EXPECT_EQ(m.transpose().transpose(), m);
    EXPECT_EQ(m.transpose()(0, 3), 5.0);
    EXPECT_TRUE((m.adjoint() * m).isEquivalent(MMatrix::identity * m.det4x4(), 1e-10));

    MMatrix doubled = MMatrix::identity * 2.0;
    EXPECT_NEAR(doubled.det4x4(), 16.0, 1e-12);
    EXPECT_TRUE(doubled.homogenize().isEquivalent(MMatrix::identity));
}

TEST(MatrixTest, arithmeticIsElementWise)
{
    const MMatrix m = sample();
    EXPECT_EQ(m + m, 2.0 * m);
    EXPECT_EQ((m - m)(3, 0), 0.0);
    MMatrix product;
    product.setToProduct(m, m);
    EXPECT_EQ(product, m * m);
    MMatrix aliased = m;
    aliased *= aliased;
    EXPECT_EQ(aliased, m * m);
}

TEST(MatrixTest, subscriptsClampToTheLastRowAndColumn)
{
    MMatrix m = sample();
    EXPECT_EQ(m(9, 9), m(3, 3));
    EXPECT_EQ(m[17][0], m[3][0]);
    m(5, 0) = 42.0;
    EXPECT_EQ(m.matrix[3][0], 42.0);
}

TEST(MatrixTest, getCopiesIntoRawArrays)
{
    const MMatrix m = sample();
    double d[4][4] = {};
    float f[4][4] = {};
    EXPECT_EQ(m.get(d), MS::kSuccess);
    EXPECT_EQ(m.get(f), MS::kSuccess);
    EXPECT_EQ(d[3][2], 11.0);
    EXPECT_EQ(f[1][0], 0.25f);
    EXPECT_EQ(m.get(static_cast<double(*)[4]>(nullptr)), MS::kFailure);
}

TEST(MatrixTest, floatMatrixMatchesTheDoubleOne)
{
    const MMatrix m = sample();
    const MFloatMatrix f(m.matrix);
    EXPECT_TRUE((f * f.inverse()).isEquivalent(MFloatMatrix(), 1e-5f));
    EXPECT_NEAR(f.det4x4(), m.det4x4(), 1e-4);
    EXPECT_EQ(f.transpose()(0, 3), 5.0f);
    EXPECT_EQ(f(12, 12), f(3, 3));
}

} // namespace
