#include <maya/MColorArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MInt64Array.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MUintArray.h>
#include <maya/MVectorArray.h>

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>
#include <vector>

namespace {

std::vector<int> contents(const MIntArray& a) { return std::vector<int>(a.begin(), a.end()); }

TEST(ArrayTest, insertRemoveAndAppendKeepOrder)
{
    MIntArray a;
    a.append(1);
    a.append(3);
    EXPECT_EQ(a.insert(2, 1), MS::kSuccess);
    EXPECT_EQ(a.insert(0, 0), MS::kSuccess);
    EXPECT_EQ(a.insert(4, 4), MS::kSuccess);  // at length(): appends
    EXPECT_EQ(contents(a), (std::vector<int>{0, 1, 2, 3, 4}));

    EXPECT_EQ(a.remove(0), MS::kSuccess);
    EXPECT_EQ(a.remove(3), MS::kSuccess);
    EXPECT_EQ(contents(a), (std::vector<int>{1, 2, 3}));
}

TEST(ArrayTest, badIndicesFailWithoutChangingTheArray)
{
    MIntArray a(3, 7);
    EXPECT_EQ(a.insert(9, 4), MS::kInvalidParameter);
    EXPECT_EQ(a.remove(3), MS::kInvalidParameter);
    EXPECT_EQ(a.set(9, 3), MS::kInvalidParameter);
    EXPECT_EQ(contents(a), (std::vector<int>{7, 7, 7}));
    EXPECT_EQ(a.set(9, 2), MS::kSuccess);
    EXPECT_EQ(a[2], 9);
}

TEST(ArrayTest, subscriptReturnsAReferenceIntoTheArray)
{
    MDoubleArray a(2);
    a[1] = 4.5;
    double& ref = a[0];
    ref = -1.0;
    EXPECT_EQ(a[0], -1.0);
    EXPECT_EQ(a[1], 4.5);

    MPointArray points(1);
    points[0].x = 3.0;
    EXPECT_EQ(points[0], MPoint(3.0, 0.0, 0.0));

    MStringArray names(1, "a");
    names[0] += "b";
    EXPECT_EQ(names[0], "ab");
}

TEST(ArrayTest, outOfRangeSubscriptNeverTouchesTheElements)
{
    MIntArray a(2, 5);
    EXPECT_DEBUG_DEATH(a[2] = 99, "out of range");
    EXPECT_EQ(contents(a), (std::vector<int>{5, 5}));
#ifdef NDEBUG
    // Release builds hand out a throw-away element reset to its default value.
    EXPECT_EQ(a[100], 0);
    const MPointArray points;
    EXPECT_EQ(points[3], MPoint::origin);
#endif
}

TEST(ArrayTest, setLengthPadsWithDefaultsAndTruncates)
{
    MVectorArray a(1, MVector(1, 2, 3));
    a.setLength(3);
    EXPECT_EQ(a[0], MVector(1, 2, 3));
    EXPECT_EQ(a[2], MVector::zero);
    a.setLength(1);
    EXPECT_EQ(a.length(), 1u);
    EXPECT_EQ(a.clear(), MS::kSuccess);
    EXPECT_EQ(a.length(), 0u);
    EXPECT_TRUE(a.begin() == a.end());
}

TEST(ArrayTest, copiesAreIndependent)
{
    MIntArray a(2, 1);
    MIntArray b(a);
    MIntArray c;
    c.copy(a);
    a[0] = 9;
    EXPECT_EQ(b[0], 1);
    EXPECT_EQ(c[0], 1);
    c = a;
    EXPECT_EQ(c[0], 9);
}

TEST(ArrayTest, rangeForVisitsEveryElementInOrder)
{
    MUintArray a;
    for (unsigned int i = 1; i <= 4; ++i)
        a.append(i);
    unsigned int sum = 0;
    for (unsigned int& v : a) {
        v *= 10;
        sum += v;
    }
    EXPECT_EQ(sum, 100u);
    const MUintArray& view = a;
    EXPECT_EQ(std::accumulate(view.cbegin(), view.cend(), 0u), 100u);
}

TEST(ArrayTest, constructFromRawArraysAndGetBack)
{
    const int ints[] = {4, 5, 6};
    MIntArray a(ints, 3);
    int out[3] = {};
    EXPECT_EQ(a.get(out), MS::kSuccess);
    EXPECT_EQ(out[2], 6);
    EXPECT_EQ(a.get(static_cast<int*>(nullptr)), MS::kInvalidParameter);
    EXPECT_EQ(MIntArray(static_cast<const int*>(nullptr), 5).length(), 0u);

    const float floats[] = {0.5f, 1.5f};
    MDoubleArray d(floats, 2);
    EXPECT_EQ(d[1], 1.5);
    float back[2] = {};
    d.get(back);
    EXPECT_EQ(back[0], 0.5f);

    MFloatArray f;
    f.append(1.0f);
    f.set(2.25, 0);
    EXPECT_EQ(f[0], 2.25f);

    const MInt64 big[] = {MInt64(1) << 40};
    EXPECT_EQ(MInt64Array(big, 1)[0], MInt64(1) << 40);
}

TEST(ArrayTest, pointArraysConvertRowsBothWays)
{
    const double rows[2][4] = {{1, 2, 3, 1}, {4, 5, 6, 2}};
    MPointArray points(rows, 2);
    EXPECT_EQ(points[1], MPoint(4, 5, 6, 2));
    points.append(7, 8);
    EXPECT_EQ(points[2], MPoint(7, 8, 0, 1));
    EXPECT_EQ(points.set(0, 9.0, 9.0), MS::kSuccess);
    EXPECT_EQ(points[0], MPoint(9, 9, 0, 1));
    float row[4] = {1, 1, 1, 1};
    EXPECT_EQ(points.set(row, 5), MS::kInvalidParameter);
    EXPECT_EQ(points.set(static_cast<double*>(nullptr), 0), MS::kInvalidParameter);

    float out[3][4] = {};
    EXPECT_EQ(points.get(out), MS::kSuccess);
    EXPECT_EQ(out[1][3], 2.0f);
    EXPECT_EQ(out[2][1], 8.0f);

    MFloatPointArray floatPoints(2);
    EXPECT_EQ(floatPoints[1], MFloatPoint::origin);
    floatPoints.set(1, 1.0f, 2.0f, 3.0f);
    double wide[2][4] = {};
    floatPoints.get(wide);
    EXPECT_EQ(wide[1][2], 3.0);
}

TEST(ArrayTest, vectorArraysConvertRowsBothWays)
{
    const float rows[1][3] = {{1, 2, 3}};
    MVectorArray vectors(rows, 1);
    double element[3] = {4, 5, 6};
    vectors.set(element, 0);
    EXPECT_EQ(vectors[0], MVector(4, 5, 6));

    MFloatVectorArray floats(2, MFloatVector::xAxis);
    double out[2][3] = {};
    floats.get(out);
    EXPECT_EQ(out[1][0], 1.0);
}

TEST(ArrayTest, colorArraySetReplacesTheWholeArray)
{
    MColorArray colors(3);
    EXPECT_EQ(colors[2], MColor::kOpaqueBlack);
    float rows[2][4] = {{1, 0, 0, 1}, {0, 1, 0, 0.5f}};
    EXPECT_EQ(colors.set(rows, 2), MS::kSuccess);
    EXPECT_EQ(colors.length(), 2u);
    EXPECT_EQ(colors[1], MColor(0, 1, 0, 0.5f));
    colors.append(0.1f, 0.2f, 0.3f);
    float out[3][4] = {};
    colors.get(out);
    EXPECT_EQ(out[2][3], 1.0f);
}

TEST(ArrayTest, stringArrayFindsAndExposesItsStrings)
{
    const char* source[] = {"a", "b", "a"};
    MStringArray names(source, 3);
    EXPECT_EQ(names.indexOf("a"), 0);
    EXPECT_EQ(names.indexOf("b"), 1);
    EXPECT_EQ(names.indexOf("c"), -1);

    char* raw[3] = {};
    EXPECT_EQ(names.get(raw), MS::kSuccess);
    EXPECT_STREQ(raw[1], "b");

    char replacement[] = "z";
    names.set(replacement, 2);
    EXPECT_EQ(names[2], "z");

    std::ostringstream out;
    out << names;
    EXPECT_EQ(out.str(), "[a, b, z]");
}

} // namespace
