// The store node's schema as saved scenes and scripts see it, and what the node does when
// evaluated or drawn.

#include "storeTest.h"

#include "store/storeAttributes.h"
#include "store/tqSarn.h"

#include <host/viewport.h>

#include <maya/MDrawRegistry.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPxDrawOverride.h>

#include <algorithm>
#include <map>

namespace {

using namespace storetest;

// Every attribute, in the order saved scenes list them: names, kind ('p' point array, 'i' int
// array, 'v' vector array, 'I' int, 'D' double, '3' three doubles, 'g' generic) and the two
// flags that vary. newFaces and interNormal are visible: flag calls meant for their
// neighbours' set-up reached newFaces, and missed interNormal.
struct AttributeRow {
    const char* longName;
    const char* shortName;
    char kind;
    bool hidden;
    bool keyable;
};
const AttributeRow kSchema[] = {
    {"pointsDebug", "pdb", 'p', true, true},         {"intensityRelaxInteractive", "iri", 'D', false, false},
    {"radiusRelaxInteractive", "rri", 'D', false, false}, {"radiusMoveInteractive", "rmi", 'D', false, false},
    {"interPoint", "ip", '3', true, false},          {"interNormal", "in", '3', false, false},
    {"symmetry", "sym", 'I', true, false},           {"sublines", "sbl", 'p', true, true},
    {"mode", "mo", 'I', true, false},                {"pinch", "pch", 'D', true, false},
    {"sizes", "sz", 'i', true, false},               {"newFaces", "nf", 'i', false, false},
    {"tweakRadius", "twr", 'i', true, false},        {"fusept", "fpt", 'p', true, false},
    {"strokes", "stk", 'p', true, true},             {"playerpts", "ppt", 'p', true, true},
    {"magnetPt", "mgn", 'p', true, false},           {"fusemesh", "fmh", 'p', true, true},
    {"playervtx", "pvt", 'i', true, true},           {"tqSarnMesh", "tm", 'g', false, true},
    {"verticestweak", "tkv", 'p', true, false},      {"shadowIndices1", "shio", 'i', true, false},
    {"shadowIndices2", "shis", 'i', true, false},    {"shadowIndices3", "shit", 'i', true, false},
    {"playersLine", "pla", 'p', true, true},         {"fuseindices", "fid", 'i', true, false},
    {"displayInfo", "di", 'I', false, false},        {"inputNormals", "ino", 'v', true, false},
    {"freezeMedian", "frm", 'p', true, true},        {"sizesShadow", "shz", 'i', true, true},
    {"freepoints", "frt", 'p', true, true},          {"strokesShadow", "shtk", 'p', true, true},
    {"displaySize", "dsz", 'D', false, false},       {"sizesNondestruct", "snd", 'i', true, true},
    {"strokesNondestruct", "stnd", 'p', true, true},
};

class StoreSchema : public StoreTest {};

TEST_F(StoreSchema, AttributesAsDeclaredAndInTheirFileOrder)
{
    MObject store = makeStore();
    MFnDependencyNode node(store);
    const std::map<char, MFnData::Type> typed = {
        {'p', MFnData::kPointArray}, {'i', MFnData::kIntArray}, {'v', MFnData::kVectorArray}};
    const std::map<char, MFnNumericData::Type> numeric = {
        {'I', MFnNumericData::kInt}, {'D', MFnNumericData::kDouble}, {'3', MFnNumericData::k3Double}};
    std::vector<std::string> expectedOrder, order;
    for (const AttributeRow& row : kSchema) {
        SCOPED_TRACE(row.longName);
        expectedOrder.push_back(row.longName);
        MObject attr = node.attribute(row.longName);
        ASSERT_FALSE(attr.isNull());
        MFnAttribute fn(attr);
        EXPECT_EQ(std::string(fn.shortName().asChar()), row.shortName);
        EXPECT_EQ(fn.isHidden(), row.hidden);
        EXPECT_EQ(fn.isKeyable(), row.keyable);
        EXPECT_TRUE(fn.isStorable() && fn.isWritable());
        if (typed.count(row.kind))
            EXPECT_EQ(MFnTypedAttribute(attr).attrType(), typed.at(row.kind));
        else if (numeric.count(row.kind))
            EXPECT_EQ(MFnNumericAttribute(attr).unitType(), numeric.at(row.kind));
        else
            EXPECT_TRUE(fn.accepts(MFnData::kMesh));
    }
    for (unsigned int i = 0; i < node.attributeCount(); ++i) {
        const std::string name = MFnAttribute(node.attribute(i)).name().asChar();
        if (std::find(expectedOrder.begin(), expectedOrder.end(), name) != expectedOrder.end())
            order.push_back(name);
    }
    EXPECT_EQ(order, expectedOrder);

    // Defaults: displayInfo on, typed attributes without data, and the radii at 0, below their
    // own minimum of the float 0.1 widened.
    EXPECT_EQ(host::getInt("store.displayInfo"), 1);
    EXPECT_TRUE(host::getData("store.strokes").isNull());
    for (const char* name : {"radiusMoveInteractive", "radiusRelaxInteractive", "intensityRelaxInteractive"}) {
        double value = -1.0, minimum = 0.0;
        EXPECT_TRUE(tq::readDoubleAttr(name, value, store));
        EXPECT_TRUE(MFnNumericAttribute(node.attribute(name)).getMin(minimum)) << name;
        EXPECT_EQ(value, 0.0) << name;
        EXPECT_EQ(minimum, 0.10000000149011612) << name;
    }
}

// The net only dirties: it redraws the overlay for sizes alone, and its cycles and the
// strokes it dirties keep what was stored.
TEST_F(StoreSchema, DirtyingRedrawsOnlyForSizesAndLosesNothing)
{
    MObject store = makeStore();
    auto redrawn = [] {
        const host::FrameRecords frame = host::drawFrame();
        const host::OverrideRecords* records = frame.find("store");
        return records && records->updated;
    };
    EXPECT_TRUE(redrawn()); // the first frame always draws
    EXPECT_FALSE(redrawn());
    ASSERT_TRUE(tq::writeDoubleAttr(0.4, "pinch", store));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({3, 0, 2}), "sizesShadow", store));
    ASSERT_TRUE(tq::writeIntArrayAttr(intArray({7, 8}), "newFaces", store)); // round the cycle
    EXPECT_FALSE(redrawn());
    EXPECT_TRUE(host::isDirty("store.sizesShadow"));
    MIntArray sizes;
    EXPECT_TRUE(tq::readIntArrayAttr("sizesShadow", sizes, store));
    EXPECT_EQ(ints(sizes), (Ints{3, 0, 2}));

    const MPointArray stroke = points({{0, 0, 0}, {1, 0, 0}, {2, 1, 0}});
    ASSERT_TRUE(tq::writePointArrayAttr(stroke, "strokes", store));
    EXPECT_TRUE(redrawn()) << "strokes dirty sizes";
    ASSERT_TRUE(host::setInt("store.displayInfo", 0)); // dirties strokes, whose compute keeps them
    ASSERT_TRUE(host::isDirty("store.strokes"));
    MPointArray read;
    EXPECT_TRUE(tq::readPointArrayAttr("strokes", read, store));
    EXPECT_TRUE(samePoints(read, stroke));
    EXPECT_TRUE(tq::writeIntArrayAttr(intArray({2}), "sizes", store));
    EXPECT_TRUE(redrawn());
    EXPECT_FALSE(redrawn());
    EXPECT_FALSE(loggedError());
}

} // namespace
