// The stroke-set encoding through the store: appending and popping strokes, the decoder on
// sizes that do not match the points, the shadow's write forms, the guide rows, and the
// predicates with their two closure tolerances.

#include "storeTest.h"

#include "store/storeAttributes.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

namespace {

using namespace storetest;

class StrokeSets : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        store = makeStore();
    }
    Ints intsOf(const char* name)
    {
        MIntArray out;
        tq::readIntArrayAttr(name, out, store);
        return ints(out);
    }
    MPointArray pointsOf(const char* name)
    {
        MPointArray out;
        tq::readPointArrayAttr(name, out, store);
        return out;
    }
    MObject store;
};

// n points along x from `start`.
MPointArray line(int n, double start = 0.0)
{
    MPointArray out;
    for (int i = 0; i < n; ++i)
        out.append(MPoint(start + i, 0.0, 0.0));
    return out;
}

TEST_F(StrokeSets, AppendAndPopKeepPointsAndSizesTogether)
{
    EXPECT_EQ(tq::appendStroke(MPointArray()), MStatus::kInvalidParameter);
    ASSERT_TRUE(tq::appendStroke(line(3)) && tq::appendStroke(line(2, 10.0)));
    MStatus status;
    tq::RowList rows = tq::readStrokeRows(status);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_TRUE(samePoints(rows[1], line(2, 10.0)));

    EXPECT_TRUE(tq::popLastStroke());
    EXPECT_EQ(intsOf("sizes"), (Ints{3}));
    EXPECT_TRUE(samePoints(pointsOf("strokes"), line(3)));
    EXPECT_TRUE(tq::popLastStroke()); // the last one leaves both empty
    EXPECT_FALSE(tq::hasStrokePoints() || tq::strokeCount() > 0 || tq::popLastStroke());

    // A last size beyond the points takes them all, and no more.
    ASSERT_TRUE(tq::writePointArrayAttr(line(3), "strokes", store));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({2, 7}), "sizes", store));
    EXPECT_TRUE(tq::popLastStroke());
    EXPECT_EQ(pointsOf("strokes").length(), 0u);
    EXPECT_FALSE(loggedError());
}

TEST_F(StrokeSets, DecoderWalksBySizesWhateverThePoints)
{
    struct Case {
        const char* what;
        int pointCount;
        Ints sizes;
        std::vector<unsigned int> lengths;
        std::vector<double> starts; // x of each non-empty row's first point
    };
    const Case cases[] = {
        {"empty middle row", 5, {3, 0, 2}, {3, 0, 2}, {0, 3}},
        {"sizes short of the points", 6, {2, 1}, {2, 1}, {0, 2}},
        {"last row past the end", 4, {2, 5}, {2, 2}, {0, 2}},
        {"rows wholly past the end", 2, {2, 3, 1}, {2, 0, 0}, {0}},
        {"negative size", 3, {2, -4, 1}, {2, 0, 1}, {0, 2}},
    };
    for (const Case& c : cases) {
        std::vector<unsigned int> lengths;
        std::vector<double> starts;
        for (const MPointArray& row : tq::decodeStrokeSet(line(c.pointCount), intArray(c.sizes))) {
            lengths.push_back(row.length());
            if (row.length() > 0)
                starts.push_back(row[0].x);
        }
        EXPECT_EQ(lengths, c.lengths) << c.what;
        EXPECT_EQ(starts, c.starts) << c.what;
    }
}

TEST_F(StrokeSets, ShadowIsEitherTwoRowsOrTheThirdAndStandsInForGuides)
{
    const MPointArray row1 = line(4), row2 = line(3, 10.0), row3 = line(2, 20.0);
    MStatus status;
    ASSERT_TRUE(tq::writeShadowStrokes(row1, row2, MPointArray()));
    tq::RowList rows = tq::readShadowRows(status);
    EXPECT_TRUE(rows.size() == 2 && samePoints(rows[0], row1) && samePoints(rows[1], row2));
    rows = tq::readGuideRows(status); // none kept yet: the shadow stands in
    EXPECT_TRUE(rows.size() == 2 && samePoints(rows[1], row2));
    ASSERT_TRUE(tq::writeShadowStrokes(row1, MPointArray(), MPointArray()));
    EXPECT_EQ(intsOf("sizesShadow"), (Ints{4, 0})); // an empty second row still counts
    ASSERT_TRUE(tq::writeShadowStrokes(row1, row2, row3)); // the third replaces both
    EXPECT_EQ(intsOf("sizesShadow"), (Ints{2}));
    EXPECT_TRUE(samePoints(pointsOf("strokesShadow"), row3));

    // Index rows rewrite the sizes from the non-empty rows only: {2, 1} for three rows.
    ASSERT_TRUE(tq::writeShadowIndices(intArray({1, 2}), MIntArray(), intArray({5})));
    EXPECT_EQ(intsOf("sizesShadow"), (Ints{2, 1}));
    EXPECT_TRUE(tq::boundaryEditMode());
    ASSERT_TRUE(tq::writeShadowIndices(intArray({1, 2}), intArray({3, 4}), intArray({5})));
    EXPECT_FALSE(tq::boundaryEditMode());

    // Guide rows kept from the last patch take over from the shadow.
    ASSERT_TRUE(tq::writeShadowStrokes(row1, row2, MPointArray()));
    ASSERT_TRUE(tq::writeNondestructRows({line(3), line(4, 10.0)}));
    rows = tq::readGuideRows(status);
    EXPECT_TRUE(rows.size() == 2 && samePoints(rows[1], line(4, 10.0)));

    // clearFuseData takes the sizes and leaves the points: no shadow, though points remain.
    EXPECT_TRUE(tq::clearFuseData());
    EXPECT_FALSE(tq::hasShadow());
    EXPECT_EQ(pointsOf("strokesShadow").length(), 7u);
    EXPECT_FALSE(loggedError());
}

TEST_F(StrokeSets, ClosureToleranceIsLooserForStrokesThanForRows)
{
    // A loop whose ends lie `gap` apart.
    auto loop = [](double gap) { return points({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {gap, 0, 0}}); };
    ASSERT_TRUE(tq::appendStroke(loop(0.0005)));
    EXPECT_TRUE(tq::firstStrokeClosed(0));
    ASSERT_TRUE(tq::writeShadowStrokes(loop(0.0005), line(3), MPointArray()));
    EXPECT_FALSE(tq::anyShadowRowClosed());
    EXPECT_TRUE(tq::shadowIsClosed());
    ASSERT_TRUE(tq::writeShadowStrokes(line(3), loop(0.00005), MPointArray()));
    EXPECT_TRUE(tq::anyShadowRowClosed()); // any row, not only the first

    // Both comparisons are strict.
    ASSERT_TRUE(tq::clearStrokes() && tq::appendStroke(loop(0.001)));
    EXPECT_FALSE(tq::firstStrokeClosed(0));
    ASSERT_TRUE(tq::writeShadowStrokes(loop(0.0001), MPointArray(), MPointArray()));
    EXPECT_FALSE(tq::anyShadowRowClosed());

    // shadowIsClosed: the first shadow row, or else working stroke 0.
    ASSERT_TRUE(tq::writeShadowStrokes(line(3), MPointArray(), MPointArray()));
    EXPECT_FALSE(tq::shadowIsClosed());
    ASSERT_TRUE(tq::clearStrokes() && tq::appendStroke(loop(0.0)));
    EXPECT_TRUE(tq::shadowIsClosed());
}

} // namespace
