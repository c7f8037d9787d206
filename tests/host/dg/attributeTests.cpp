// Attributes as a plug-in defines them and reads them back through the MFnAttribute
// function sets, and the plug values they start with.

#include "dgTest.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnCompoundAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnGenericAttribute.h>
#include <maya/MFnMatrixAttribute.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MPxNode.h>

#include <string>

namespace {

using hosttest::attributeOf;
using hosttest::str;

class DgAttributes : public DgTest {
protected:
    void SetUp() override
    {
        DgTest::SetUp();
        if (HasFatalFailure())
            return;
        node = create("dgAttrKinds", "kinds");
        ASSERT_FALSE(node.isNull());
        ASSERT_EQ(host::nodeName(node), "kinds");
    }

    MObject attr(const char* name)
    {
        MObject a = attributeOf(node, name);
        EXPECT_FALSE(a.isNull()) << "dgAttrKinds has no attribute '" << name << "'";
        return a;
    }

    MObject node;
};

TEST_F(DgAttributes, EachKindAttachesToItsFunctionSetAndKeepsItsNames)
{
    struct Expected {
        const char* longName;
        const char* shortName;
        MFn::Type kind;
    };
    const Expected expected[] = {
        {"intAttr", "ia", MFn::kNumericAttribute},      {"doubleAttr", "da", MFn::kNumericAttribute},
        {"boolAttr", "ba", MFn::kNumericAttribute},     {"floatAttr", "fa", MFn::kNumericAttribute},
        {"vectorAttr", "va", MFn::kNumericAttribute},   {"pointAttr", "pa", MFn::kNumericAttribute},
        {"offset", "of", MFn::kNumericAttribute},       {"pointsAttr", "pts", MFn::kTypedAttribute},
        {"intsAttr", "ints", MFn::kTypedAttribute},     {"vectorsAttr", "vecs", MFn::kTypedAttribute},
        {"doublesAttr", "dbls", MFn::kTypedAttribute},  {"stringAttr", "str", MFn::kTypedAttribute},
        {"meshAttr", "msh", MFn::kGenericAttribute},    {"compoundAttr", "cmp", MFn::kCompoundAttribute},
        {"modeAttr", "mode", MFn::kEnumAttribute},      {"matrixAttr", "mtx", MFn::kMatrixAttribute},
        {"linkAttr", "lnk", MFn::kMessageAttribute},
    };
    for (const Expected& e : expected) {
        MObject byLong = attr(e.longName);
        MObject byShort = attributeOf(node, e.shortName);
        EXPECT_TRUE(byLong.hasFn(MFn::kAttribute)) << e.longName;
        EXPECT_TRUE(byLong.hasFn(e.kind)) << e.longName << " is " << byLong.apiTypeStr();
        EXPECT_TRUE(byLong == byShort) << e.longName << " and " << e.shortName << " differ";
        MStatus status;
        MFnAttribute fn(byLong, &status);
        EXPECT_TRUE(status) << e.longName;
        EXPECT_EQ(str(fn.name()), e.longName);
        EXPECT_EQ(str(fn.shortName()), e.shortName);
        EXPECT_FALSE(fn.isDynamic()) << e.longName << " was added by initialize, not at run time";
    }

    // Function sets of another kind refuse to attach.
    MStatus status;
    MFnTypedAttribute typedOnNumeric(attr("intAttr"), &status);
    EXPECT_FALSE(status) << "MFnTypedAttribute attached to a numeric attribute";
    MFnNumericAttribute numericOnTyped(attr("pointsAttr"), &status);
    EXPECT_FALSE(status) << "MFnNumericAttribute attached to a typed attribute";
    MFnCompoundAttribute compoundOnNumeric(attr("doubleAttr"), &status);
    EXPECT_FALSE(status) << "MFnCompoundAttribute attached to a plain double attribute";
    MFnMessageAttribute messageOnEnum(attr("modeAttr"), &status);
    EXPECT_FALSE(status) << "MFnMessageAttribute attached to an enum attribute";
}

TEST_F(DgAttributes, FlagsReadBackAsTheyWereSet)
{
    struct Flags {
        bool readable, writable, connectable, storable, cached, array, keyable, hidden, channelBox;
    };
    auto check = [](const MObject& attribute, const char* name, const Flags& want) {
        MFnAttribute fn(attribute);
        EXPECT_EQ(fn.isReadable(), want.readable) << name << " readable";
        EXPECT_EQ(fn.isWritable(), want.writable) << name << " writable";
        EXPECT_EQ(fn.isConnectable(), want.connectable) << name << " connectable";
        EXPECT_EQ(fn.isStorable(), want.storable) << name << " storable";
        EXPECT_EQ(fn.isCached(), want.cached) << name << " cached";
        EXPECT_EQ(fn.isArray(), want.array) << name << " array";
        EXPECT_EQ(fn.isKeyable(), want.keyable) << name << " keyable";
        EXPECT_EQ(fn.isHidden(), want.hidden) << name << " hidden";
        EXPECT_EQ(fn.isChannelBoxFlagSet(), want.channelBox) << name << " channelBox";
    };
    //                               read   write  conn   store  cache  array  key    hide   cbox
    check(attr("plain"), "plain", {true, true, true, true, true, false, false, false, false});
    check(attr("flagsOn"), "flagsOn", {true, false, false, false, false, true, true, true, true});
    check(attr("flagsOff"), "flagsOff", {false, true, true, true, true, false, false, false, false});

    MFnAttribute flagsOn(attr("flagsOn"));
    EXPECT_FALSE(flagsOn.indexMatters());
    EXPECT_TRUE(flagsOn.usesArrayDataBuilder());

    // The plug of a keyable attribute says so too.
    EXPECT_TRUE(host::findPlug("kinds.intAttr").isKeyable());
    EXPECT_FALSE(host::findPlug("kinds.plain").isKeyable());
}

TEST_F(DgAttributes, FlagsGovernWhatMayBeConnected)
{
    create("dgAttrKinds", "other");
    // flagsOn is neither writable nor connectable: nothing may drive it.
    EXPECT_FALSE(host::connect("other.plain", "kinds.flagsOn[0]"));
    // flagsOff is not readable: it cannot be a source.
    EXPECT_FALSE(host::connect("kinds.flagsOff", "other.plain"));
    EXPECT_FALSE(host::findPlug("other.plain").isConnected());
    // An ordinary pair connects.
    EXPECT_TRUE(host::connect("kinds.plain", "other.plain")) << host::logText();
    EXPECT_TRUE(host::findPlug("other.plain").isDestination());
    EXPECT_TRUE(host::findPlug("kinds.plain").isSource());
}

TEST_F(DgAttributes, NumericDefaultsAndLimitsReadBack)
{
    {
        MFnNumericAttribute fn(attr("intAttr"));
        EXPECT_EQ(fn.unitType(), MFnNumericData::kInt);
        int value = -1;
        EXPECT_TRUE(fn.getDefault(value));
        EXPECT_EQ(value, 7);
        EXPECT_TRUE(fn.hasMin());
        EXPECT_TRUE(fn.hasMax());
        int lo = -1, hi = -1;
        EXPECT_TRUE(fn.getMin(lo));
        EXPECT_TRUE(fn.getMax(hi));
        EXPECT_EQ(lo, 0);
        EXPECT_EQ(hi, 10);
        EXPECT_FALSE(fn.hasSoftMin());
    }
    {
        MFnNumericAttribute fn(attr("doubleAttr"));
        EXPECT_EQ(fn.unitType(), MFnNumericData::kDouble);
        double value = 0.0;
        EXPECT_TRUE(fn.getDefault(value));
        EXPECT_EQ(value, 2.5);
        double lo = 0.0, hi = 0.0;
        EXPECT_TRUE(fn.getMin(lo));
        EXPECT_TRUE(fn.getMax(hi));
        // setMin(0.1f): the float is widened to double, so the limit is not 0.1.
        EXPECT_EQ(lo, 0.10000000149011612);
        EXPECT_EQ(lo, static_cast<double>(0.1f));
        EXPECT_NE(lo, 0.1);
        EXPECT_EQ(hi, 100.0);
        EXPECT_TRUE(fn.hasSoftMin());
        EXPECT_TRUE(fn.hasSoftMax());
        double softLo = 0.0, softHi = 0.0;
        EXPECT_TRUE(fn.getSoftMin(softLo));
        EXPECT_TRUE(fn.getSoftMax(softHi));
        EXPECT_EQ(softLo, 1.0);
        EXPECT_EQ(softHi, 50.0);
    }
    {
        MFnNumericAttribute fn(attr("boolAttr"));
        EXPECT_EQ(fn.unitType(), MFnNumericData::kBoolean);
        bool value = false;
        EXPECT_TRUE(fn.getDefault(value));
        EXPECT_TRUE(value);
        EXPECT_FALSE(fn.hasMin());
        EXPECT_FALSE(fn.hasMax());
    }
    {
        MFnNumericAttribute fn(attr("floatAttr"));
        EXPECT_EQ(fn.unitType(), MFnNumericData::kFloat);
        float value = 0.0f;
        EXPECT_TRUE(fn.getDefault(value));
        EXPECT_EQ(value, 0.25f);
    }
    {
        MFnNumericAttribute fn(attr("vectorAttr"));
        EXPECT_EQ(fn.unitType(), MFnNumericData::k3Double);
        double x = 0, y = 0, z = 0;
        EXPECT_TRUE(fn.getDefault(x, y, z));
        EXPECT_EQ(x, 1.0);
        EXPECT_EQ(y, 2.0);
        EXPECT_EQ(z, 3.0);
    }

    // A new node starts at the defaults, readable by long and short plug names.
    EXPECT_EQ(host::getInt("kinds.intAttr"), 7);
    EXPECT_EQ(host::getInt("kinds.ia"), 7);
    EXPECT_EQ(host::getDouble("kinds.doubleAttr"), 2.5);
    EXPECT_EQ(host::getDouble("kinds.da"), 2.5);
    EXPECT_TRUE(host::getBool("kinds.boolAttr"));
    EXPECT_EQ(host::getDouble("kinds.floatAttr"), 0.25);
    EXPECT_EQ(host::getInt("kinds.modeAttr"), 1);

    MPlug vector = host::findPlug("kinds.vectorAttr");
    ASSERT_FALSE(vector.isNull());
    EXPECT_TRUE(vector.isCompound());
    ASSERT_EQ(vector.numChildren(), 3u);
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(vector.child(i).asDouble(), double(i + 1)) << "vectorAttr component " << i;

    // Values set on one node leave the defaults and other nodes alone.
    ASSERT_TRUE(host::setDouble("kinds.doubleAttr", 7.25));
    create("dgAttrKinds", "fresh");
    EXPECT_EQ(host::getDouble("kinds.doubleAttr"), 7.25);
    EXPECT_EQ(host::getDouble("fresh.doubleAttr"), 2.5);
}

TEST_F(DgAttributes, NumericCompoundsExposeTheirChildren)
{
    // Built from three numeric children.
    MFnNumericAttribute offset(attr("offset"));
    EXPECT_EQ(str(MFnAttribute(offset.child(0)).name()), "offsetX");
    EXPECT_EQ(str(MFnAttribute(offset.child(2)).name()), "offsetZ");
    EXPECT_TRUE(MFnAttribute(attr("offsetY")).parent() == attr("offset"));
    EXPECT_EQ(host::getDouble("kinds.offsetX"), -1.0);
    EXPECT_EQ(host::getDouble("kinds.of.ofy"), -2.0);
    EXPECT_EQ(host::getDouble("kinds.offset.offsetZ"), -3.0);
    ASSERT_TRUE(host::setDouble("kinds.ofy", 12.5));
    EXPECT_EQ(host::getDouble("kinds.offsetY"), 12.5);
    EXPECT_EQ(host::findPlug("kinds.offset").child(1).asDouble(), 12.5);
    EXPECT_EQ(host::getDouble("kinds.offsetX"), -1.0) << "setting one component moved another";

    // createPoint: three components named after the attribute.
    MPlug point = host::findPlug("kinds.pointAttr");
    ASSERT_FALSE(point.isNull());
    ASSERT_EQ(point.numChildren(), 3u);
    const char* axes[] = {"pointAttrX", "pointAttrY", "pointAttrZ"};
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(str(MFnAttribute(point.child(i).attribute()).name()), axes[i]);
        EXPECT_EQ(point.child(i).asDouble(), 0.0) << axes[i];
    }
    ASSERT_TRUE(host::setDouble("kinds.pointAttrY", 4.0));
    EXPECT_EQ(point.child(1).asDouble(), 4.0);
}

TEST_F(DgAttributes, CompoundChildrenHoldTheirOwnValues)
{
    MFnCompoundAttribute fn(attr("compoundAttr"));
    ASSERT_EQ(fn.numChildren(), 2u);
    EXPECT_TRUE(fn.child(0) == attr("childDouble"));
    EXPECT_TRUE(fn.child(1) == attr("childInt"));
    EXPECT_TRUE(MFnAttribute(attr("childInt")).parent() == attr("compoundAttr"));

    EXPECT_EQ(host::getDouble("kinds.compoundAttr.childDouble"), 4.5);
    EXPECT_EQ(host::getInt("kinds.cmp.ci"), 3);
    ASSERT_TRUE(host::setInt("kinds.compoundAttr.childInt", 11));
    ASSERT_TRUE(host::setDouble("kinds.cd", -0.5));
    EXPECT_EQ(host::getInt("kinds.childInt"), 11);
    EXPECT_EQ(host::getDouble("kinds.compoundAttr.childDouble"), -0.5);

    MPlug compound = host::findPlug("kinds.compoundAttr");
    EXPECT_TRUE(compound.isCompound());
    EXPECT_EQ(compound.numChildren(), 2u);
    MPlug child = compound.child(attr("childInt"));
    EXPECT_TRUE(child.isChild());
    EXPECT_EQ(child.asInt(), 11);
    EXPECT_TRUE(child.parent() == compound);
}

TEST_F(DgAttributes, EnumFieldsAndDefault)
{
    MFnEnumAttribute fn(attr("modeAttr"));
    EXPECT_EQ(str(fn.fieldName(0)), "off");
    EXPECT_EQ(str(fn.fieldName(1)), "on");
    EXPECT_EQ(str(fn.fieldName(5)), "auto");
    EXPECT_EQ(fn.fieldIndex("auto"), 5);
    EXPECT_EQ(fn.fieldIndex("on"), 1);
    MStatus status;
    fn.fieldName(3, &status);
    EXPECT_FALSE(status) << "field 3 was never added";
    EXPECT_EQ(str(fn.defaultValue()), "on") << "the default's field name";
    short lo = -1, hi = -1;
    EXPECT_TRUE(fn.getMin(lo));
    EXPECT_TRUE(fn.getMax(hi));
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 5);
    ASSERT_TRUE(host::setInt("kinds.mode", 5));
    EXPECT_EQ(host::getInt("kinds.modeAttr"), 5);
}

TEST_F(DgAttributes, TypedAttributesHoldNullDataUntilSet)
{
    const char* typed[] = {"pointsAttr", "intsAttr", "vectorsAttr", "doublesAttr", "stringAttr"};
    for (const char* name : typed) {
        MFnTypedAttribute fn(attr(name));
        MObject defaultData;
        fn.getDefault(defaultData);
        EXPECT_TRUE(defaultData.isNull()) << name << " has a default though none was given";
        MStatus status;
        MObject data = host::getData(std::string("kinds.") + name, &status);
        EXPECT_TRUE(data.isNull()) << name << " holds " << data.apiTypeStr() << " before anything was set";
    }
    EXPECT_EQ(MFnTypedAttribute(attr("pointsAttr")).attrType(), MFnData::kPointArray);
    EXPECT_EQ(MFnTypedAttribute(attr("intsAttr")).attrType(), MFnData::kIntArray);
    EXPECT_EQ(MFnTypedAttribute(attr("vectorsAttr")).attrType(), MFnData::kVectorArray);
    EXPECT_EQ(MFnTypedAttribute(attr("doublesAttr")).attrType(), MFnData::kDoubleArray);
    EXPECT_EQ(MFnTypedAttribute(attr("stringAttr")).attrType(), MFnData::kString);

    MPointArray points;
    points.append(MPoint(1.0, 2.0, 3.0));
    points.append(MPoint(4.0, 5.0, 6.0));
    points.append(MPoint(7.0, 8.0, 9.0));
    MFnPointArrayData pointData;
    MObject pointObject = pointData.create(points);
    ASSERT_FALSE(pointObject.isNull());
    ASSERT_TRUE(host::setData("kinds.pointsAttr", pointObject)) << host::logText();
    EXPECT_TRUE(host::isDirty("kinds.pointCount"));
    EXPECT_EQ(host::getInt("kinds.pointCount"), 3);

    MObject stored = host::getData("kinds.pts");
    ASSERT_FALSE(stored.isNull());
    EXPECT_TRUE(stored.hasFn(MFn::kPointArrayData));
    MFnPointArrayData readBack(stored);
    ASSERT_EQ(readBack.length(), 3u);
    EXPECT_EQ(readBack[2].y, 8.0);

    // A plug hands out the value, not the node's storage: editing the copy read back
    // leaves the plug as it was.
    readBack.set(MPoint(0.0, 0.0, 0.0), 2);
    MFnPointArrayData again(host::getData("kinds.pointsAttr"));
    EXPECT_EQ(again[2].y, 8.0);

    ASSERT_TRUE(host::setString("kinds.stringAttr", "hello"));
    EXPECT_EQ(host::getString("kinds.str"), "hello");
    MObject stringData = host::getData("kinds.stringAttr");
    ASSERT_FALSE(stringData.isNull());
    EXPECT_EQ(str(MFnStringData(stringData).string()), "hello");
}

TEST_F(DgAttributes, GenericAttributeAcceptsOnlyWhatWasAdded)
{
    MFnAttribute fn(attr("meshAttr"));
    EXPECT_TRUE(fn.accepts(MFnData::kMesh));
    EXPECT_FALSE(fn.accepts(MFnData::kPointArray));
    EXPECT_FALSE(fn.accepts(MFnData::kString));
    EXPECT_TRUE(MFnAttribute(attr("pointsAttr")).accepts(MFnData::kPointArray));
    EXPECT_FALSE(MFnAttribute(attr("pointsAttr")).accepts(MFnData::kMesh));

    EXPECT_TRUE(host::getData("kinds.meshAttr").isNull());
    MPointArray points;
    points.append(MPoint(1.0, 1.0, 1.0));
    MFnPointArrayData pointData;
    EXPECT_FALSE(host::setData("kinds.meshAttr", pointData.create(points)))
        << "a point array went into an attribute that accepts only meshes";
    EXPECT_TRUE(host::getData("kinds.meshAttr").isNull());
}

TEST_F(DgAttributes, MatrixAttributeStartsAtIdentityAndStoresWhatIsSet)
{
    MObject initial = host::getData("kinds.matrixAttr");
    ASSERT_FALSE(initial.isNull());
    EXPECT_TRUE(MFnMatrixData(initial).matrix() == MMatrix::identity);

    MMatrix m;
    m(3, 0) = 4.0;
    m(3, 1) = -5.0;
    m(0, 1) = 0.5;
    MFnMatrixData matrixData;
    ASSERT_TRUE(host::setData("kinds.mtx", matrixData.create(m))) << host::logText();
    MObject stored = host::getData("kinds.matrixAttr");
    ASSERT_FALSE(stored.isNull());
    const MMatrix& back = MFnMatrixData(stored).matrix();
    EXPECT_EQ(back(3, 0), 4.0);
    EXPECT_EQ(back(3, 1), -5.0);
    EXPECT_EQ(back(0, 1), 0.5);
    EXPECT_EQ(back(1, 1), 1.0);
}

TEST_F(DgAttributes, MessageAttributeCarriesConnectionsOnly)
{
    create("dgAttrKinds", "target");
    ASSERT_TRUE(host::connect("kinds.message", "target.linkAttr")) << host::logText();
    MPlug link = host::findPlug("target.lnk");
    EXPECT_TRUE(link.isConnected());
    EXPECT_TRUE(link.isDestination());
    MPlug source = link.source();
    EXPECT_FALSE(source.isNull());
    EXPECT_EQ(hosttest::nameOf(source.node()), "kinds");
    EXPECT_TRUE(source.attribute() == MPxNode::message);
    ASSERT_TRUE(host::disconnect("kinds.message", "target.linkAttr"));
    EXPECT_FALSE(link.isConnected());
}

TEST_F(DgAttributes, EveryNodeHasTheStandardAttributes)
{
    create("transform", "xform");
    MObject shape = create("dgLocator", "locShape", "xform");
    const std::string plugInNode = "kinds";
    const std::string names[] = {plugInNode, "xform", hosttest::nameOf(shape), "initialShadingGroup"};
    for (const std::string& name : names) {
        MObject n = host::findNode(name);
        ASSERT_FALSE(n.isNull()) << name;
        MFnDependencyNode fn(n);
        for (const char* a : {"message", "caching", "isHistoricallyInteresting", "nodeState", "st", "frozen"})
            EXPECT_TRUE(fn.hasAttribute(a)) << name << " has no '" << a << "'";
        EXPECT_EQ(host::getInt(name + ".st"), 0) << name << " is not in the normal state";
        MFnEnumAttribute state(fn.attribute("nodeState"));
        short hi = 0;
        state.getMax(hi);
        EXPECT_GE(hi, 2) << name << ": nodeState has no blocking value";
    }
    for (const std::string& name : {std::string("xform"), hosttest::nameOf(shape)}) {
        MFnDependencyNode fn(host::findNode(name));
        EXPECT_TRUE(fn.hasAttribute("visibility")) << name;
        EXPECT_TRUE(fn.hasAttribute("intermediateObject")) << name;
        EXPECT_TRUE(fn.hasAttribute("io")) << name;
        EXPECT_TRUE(host::getBool(name + ".visibility")) << name << " starts hidden";
        EXPECT_FALSE(host::getBool(name + ".io")) << name << " starts intermediate";
    }
    EXPECT_FALSE(MFnDependencyNode(node).hasAttribute("visibility")) << "a DG node has a DAG attribute";
    // Plug-in nodes reach the standard attributes through MPxNode's statics.
    for (const MObject& n : {node, shape}) {
        MFnDependencyNode fn(n);
        EXPECT_TRUE(fn.attribute("nodeState") == MPxNode::state) << hosttest::nameOf(n);
        EXPECT_TRUE(fn.attribute("message") == MPxNode::message) << hosttest::nameOf(n);
        EXPECT_TRUE(fn.attribute("frozen") == MPxNode::frozen) << hosttest::nameOf(n);
        EXPECT_TRUE(fn.findPlug(MPxNode::state).attribute() == MPxNode::state) << hosttest::nameOf(n);
    }
    // The locator brings the attributes of MPxLocatorNode besides its own.
    MFnDependencyNode locator(shape);
    EXPECT_TRUE(locator.hasAttribute("size"));
    EXPECT_TRUE(locator.hasAttribute("localPosition"));
    EXPECT_TRUE(locator.hasAttribute("worldPosition"));

    ASSERT_TRUE(host::setInt("kinds.nodeState", 2));
    EXPECT_EQ(host::getInt("kinds.st"), 2);
}

} // namespace
