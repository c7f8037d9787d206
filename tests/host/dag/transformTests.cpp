// Transforms: their translate/rotate/scale attributes and the matrices of paths through
// them (row vectors, scale then rotate (xyz) then translate, rotation in radians).

#include "dagTest.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>

#include <cmath>
#include <string>

namespace {

constexpr double kHalfPi = 1.5707963267948966;

::testing::AssertionResult near(const MPoint& got, double x, double y, double z)
{
    const double tolerance = 1e-9;
    if (std::fabs(got.x - x) < tolerance && std::fabs(got.y - y) < tolerance && std::fabs(got.z - z) < tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got (" << got.x << ", " << got.y << ", " << got.z << "), want (" << x
                                         << ", " << y << ", " << z << ")";
}

void setTransform(const std::string& node, double t[3], double r[3], double s[3])
{
    const char* axes = "XYZ";
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(host::setDouble(node + ".translate" + axes[i], t[i]));
        ASSERT_TRUE(host::setDouble(node + ".rotate" + axes[i], r[i]));
        ASSERT_TRUE(host::setDouble(node + ".scale" + axes[i], s[i]));
    }
}

using DagTransforms = DagTest;

TEST_F(DagTransforms, TransformAttributesHaveLongAndShortNames)
{
    create("transform", "xf");
    MFnDependencyNode fn(host::findNode("xf"));
    const char* names[][2] = {{"translate", "t"},  {"translateX", "tx"}, {"translateY", "ty"},
                              {"translateZ", "tz"}, {"rotate", "r"},      {"rotateX", "rx"},
                              {"rotateY", "ry"},    {"rotateZ", "rz"},    {"scale", "s"},
                              {"scaleX", "sx"},     {"scaleY", "sy"},     {"scaleZ", "sz"}};
    for (const auto& pair : names) {
        EXPECT_TRUE(fn.hasAttribute(pair[0])) << pair[0];
        EXPECT_TRUE(fn.attribute(pair[0]) == fn.attribute(pair[1])) << pair[0] << " vs " << pair[1];
    }
    EXPECT_EQ(host::getDouble("xf.tx"), 0.0);
    EXPECT_EQ(host::getDouble("xf.rotateY"), 0.0);
    EXPECT_EQ(host::getDouble("xf.sz"), 1.0);

    ASSERT_TRUE(host::setDouble("xf.tx", 5.0));
    ASSERT_TRUE(host::setDouble("xf.rotateZ", 0.25));
    EXPECT_EQ(host::getDouble("xf.translateX"), 5.0);
    EXPECT_EQ(host::getDouble("xf.t.tx"), 5.0);
    EXPECT_EQ(host::getDouble("xf.rz"), 0.25) << "rotation is stored in radians as given";
    MPlug translate = host::findPlug("xf.translate");
    ASSERT_EQ(translate.numChildren(), 3u);
    EXPECT_EQ(translate.child(0).asDouble(), 5.0);
    EXPECT_EQ(translate.child(1).asDouble(), 0.0);
}

TEST_F(DagTransforms, InclusiveMatrixComposesScaleRotateTranslateDownThePath)
{
    create("transform", "outer");
    create("transform", "innerXf", "outer");
    create("dgLocator", "innerShape", "innerXf");
    double t[3] = {1.0, 2.0, 3.0}, r[3] = {0.0, 0.0, kHalfPi}, s[3] = {2.0, 2.0, 2.0};
    setTransform("outer", t, r, s);
    ASSERT_TRUE(host::setDouble("innerXf.tx", 1.0));

    MDagPath shapePath = pathTo("innerShape");
    const MMatrix inclusive = shapePath.inclusiveMatrix();
    // The inner transform moves the origin to (1,0,0); outer scales it to (2,0,0), turns
    // it a quarter about z to (0,2,0) and moves it by (1,2,3).
    EXPECT_TRUE(near(MPoint(0.0, 0.0, 0.0) * inclusive, 1.0, 4.0, 3.0));
    EXPECT_TRUE(near(MPoint(1.0, 0.0, 0.0) * inclusive, 1.0, 6.0, 3.0));
    EXPECT_TRUE(near(MPoint(0.0, 0.0, 1.0) * inclusive, 1.0, 4.0, 5.0));
    // A shape adds nothing of its own.
    EXPECT_TRUE(shapePath.exclusiveMatrix().isEquivalent(inclusive));
    EXPECT_TRUE((inclusive * shapePath.inclusiveMatrixInverse()).isEquivalent(MMatrix::identity, 1e-9));

    MDagPath innerPath = pathTo("innerXf");
    EXPECT_TRUE(near(MPoint(0.0, 0.0, 0.0) * innerPath.exclusiveMatrix(), 1.0, 2.0, 3.0));
    EXPECT_TRUE(innerPath.inclusiveMatrix().isEquivalent(inclusive));
    EXPECT_TRUE((innerPath.exclusiveMatrix() * innerPath.exclusiveMatrixInverse())
                    .isEquivalent(MMatrix::identity, 1e-9));

    // The local matrix of one transform.
    const MMatrix local = MFnDagNode(host::findNode("innerXf")).transformationMatrix();
    EXPECT_TRUE(near(MPoint(0.0, 0.0, 0.0) * local, 1.0, 0.0, 0.0));

    // Matrices follow later edits.
    ASSERT_TRUE(host::setDouble("outer.tz", -3.0));
    EXPECT_TRUE(near(MPoint(0.0, 0.0, 0.0) * pathTo("innerShape").inclusiveMatrix(), 1.0, 4.0, -3.0));
}

TEST_F(DagTransforms, RotationOrderIsXyzAndScaleComesBeforeRotation)
{
    create("transform", "turned");
    ASSERT_TRUE(host::setDouble("turned.rx", kHalfPi));
    ASSERT_TRUE(host::setDouble("turned.ry", kHalfPi));
    const MMatrix m = pathTo("turned").inclusiveMatrix();
    // x first takes +y to +z, then y takes +z to +x (a zyx order would give +z).
    EXPECT_TRUE(near(MPoint(0.0, 1.0, 0.0) * m, 1.0, 0.0, 0.0));
    EXPECT_TRUE(near(MPoint(1.0, 0.0, 0.0) * m, 0.0, 0.0, -1.0));

    create("transform", "stretched");
    ASSERT_TRUE(host::setDouble("stretched.sx", 2.0));
    ASSERT_TRUE(host::setDouble("stretched.rz", kHalfPi));
    const MMatrix n = pathTo("stretched").inclusiveMatrix();
    // Scaled along x before the turn: (1,0,0) -> (2,0,0) -> (0,2,0).
    EXPECT_TRUE(near(MPoint(1.0, 0.0, 0.0) * n, 0.0, 2.0, 0.0));
    EXPECT_TRUE(near(MPoint(0.0, 1.0, 0.0) * n, -1.0, 0.0, 0.0));
}

} // namespace
