#include "dgTestNodes.h"

#include <maya/MArrayDataBuilder.h>
#include <maya/MArrayDataHandle.h>
#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFnCompoundAttribute.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnGenericAttribute.h>
#include <maya/MFnMatrixAttribute.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include <stdexcept>

// Type ids from the range Autodesk leaves to in-house plug-ins (0 to 0x7ffff).
const MTypeId DgAttrKindsNode::id(0x7F101);
const MTypeId DgAffectsNode::id(0x7F102);
const MTypeId DgRefuseNode::id(0x7F103);
const MTypeId DgForgetfulNode::id(0x7F104);
const MTypeId DgArraySumNode::id(0x7F105);
const MTypeId DgConnRecorderNode::id(0x7F106);
const MTypeId DgThrowerNode::id(0x7F107);
const MTypeId DgHooksNode::id(0x7F108);
const MTypeId DgLocatorNode::id(0x7F109);

const char* const DgAttrKindsNode::typeName = "dgAttrKinds";
const char* const DgAffectsNode::typeName = "dgAffects";
const char* const DgRefuseNode::typeName = "dgRefuse";
const char* const DgForgetfulNode::typeName = "dgForgetful";
const char* const DgArraySumNode::typeName = "dgArraySum";
const char* const DgConnRecorderNode::typeName = "dgConnRecorder";
const char* const DgThrowerNode::typeName = "dgThrower";
const char* const DgHooksNode::typeName = "dgHooks";
const char* const DgLocatorNode::typeName = "dgLocator";
const char* const DgLocatorNode::drawClassification = "drawdb/geometry/dgTest";

// Returns from initialize when a step fails, logging where.
#define DG_CHECK(expr) CHECK_MSTATUS_AND_RETURN_IT(expr)

// ---- DgAttrKindsNode ----------------------------------------------------------------

MObject DgAttrKindsNode::intAttr;
MObject DgAttrKindsNode::doubleAttr;
MObject DgAttrKindsNode::boolAttr;
MObject DgAttrKindsNode::floatAttr;
MObject DgAttrKindsNode::vectorAttr;
MObject DgAttrKindsNode::pointAttr;
MObject DgAttrKindsNode::offsetX;
MObject DgAttrKindsNode::offsetY;
MObject DgAttrKindsNode::offsetZ;
MObject DgAttrKindsNode::offset;
MObject DgAttrKindsNode::pointsAttr;
MObject DgAttrKindsNode::intsAttr;
MObject DgAttrKindsNode::vectorsAttr;
MObject DgAttrKindsNode::doublesAttr;
MObject DgAttrKindsNode::stringAttr;
MObject DgAttrKindsNode::meshAttr;
MObject DgAttrKindsNode::childDouble;
MObject DgAttrKindsNode::childInt;
MObject DgAttrKindsNode::compoundAttr;
MObject DgAttrKindsNode::modeAttr;
MObject DgAttrKindsNode::matrixAttr;
MObject DgAttrKindsNode::linkAttr;
MObject DgAttrKindsNode::flagsOn;
MObject DgAttrKindsNode::flagsOff;
MObject DgAttrKindsNode::plain;
MObject DgAttrKindsNode::pointCount;

void* DgAttrKindsNode::creator() { return new DgAttrKindsNode; }

MStatus DgAttrKindsNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    MFnTypedAttribute tAttr;

    intAttr = nAttr.create("intAttr", "ia", MFnNumericData::kInt, 7, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setMin(0));
    DG_CHECK(nAttr.setMax(10));
    DG_CHECK(nAttr.setKeyable(true));

    doubleAttr = nAttr.create("doubleAttr", "da", MFnNumericData::kDouble, 2.5, &status);
    DG_CHECK(status);
    // A float minimum on a double attribute: it is widened, not rounded to 0.1.
    DG_CHECK(nAttr.setMin(0.1f));
    DG_CHECK(nAttr.setMax(100.0));
    DG_CHECK(nAttr.setSoftMin(1.0));
    DG_CHECK(nAttr.setSoftMax(50.0));

    boolAttr = nAttr.create("boolAttr", "ba", MFnNumericData::kBoolean, 1, &status);
    DG_CHECK(status);

    floatAttr = nAttr.create("floatAttr", "fa", MFnNumericData::kFloat, 0.25, &status);
    DG_CHECK(status);

    vectorAttr = nAttr.create("vectorAttr", "va", MFnNumericData::k3Double, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setDefault(1.0, 2.0, 3.0));

    pointAttr = nAttr.createPoint("pointAttr", "pa", &status);
    DG_CHECK(status);

    offsetX = nAttr.create("offsetX", "ofx", MFnNumericData::kDouble, -1.0, &status);
    DG_CHECK(status);
    offsetY = nAttr.create("offsetY", "ofy", MFnNumericData::kDouble, -2.0, &status);
    DG_CHECK(status);
    offsetZ = nAttr.create("offsetZ", "ofz", MFnNumericData::kDouble, -3.0, &status);
    DG_CHECK(status);
    offset = nAttr.create("offset", "of", offsetX, offsetY, offsetZ, &status);
    DG_CHECK(status);

    // Typed attributes without a default hold null data until something is set.
    pointsAttr = tAttr.create("pointsAttr", "pts", MFnData::kPointArray, MObject::kNullObj, &status);
    DG_CHECK(status);
    intsAttr = tAttr.create("intsAttr", "ints", MFnData::kIntArray, MObject::kNullObj, &status);
    DG_CHECK(status);
    vectorsAttr = tAttr.create("vectorsAttr", "vecs", MFnData::kVectorArray, MObject::kNullObj, &status);
    DG_CHECK(status);
    doublesAttr = tAttr.create("doublesAttr", "dbls", MFnData::kDoubleArray, MObject::kNullObj, &status);
    DG_CHECK(status);
    stringAttr = tAttr.create("stringAttr", "str", MFnData::kString, MObject::kNullObj, &status);
    DG_CHECK(status);

    MFnGenericAttribute gAttr;
    meshAttr = gAttr.create("meshAttr", "msh", &status);
    DG_CHECK(status);
    DG_CHECK(gAttr.addDataAccept(MFnData::kMesh));

    childDouble = nAttr.create("childDouble", "cd", MFnNumericData::kDouble, 4.5, &status);
    DG_CHECK(status);
    childInt = nAttr.create("childInt", "ci", MFnNumericData::kInt, 3, &status);
    DG_CHECK(status);
    MFnCompoundAttribute cAttr;
    compoundAttr = cAttr.create("compoundAttr", "cmp", &status);
    DG_CHECK(status);
    DG_CHECK(cAttr.addChild(childDouble));
    DG_CHECK(cAttr.addChild(childInt));

    MFnEnumAttribute eAttr;
    modeAttr = eAttr.create("modeAttr", "mode", 1, &status);
    DG_CHECK(status);
    DG_CHECK(eAttr.addField("off", 0));
    DG_CHECK(eAttr.addField("on", 1));
    DG_CHECK(eAttr.addField("auto", 5));

    MFnMatrixAttribute mAttr;
    matrixAttr = mAttr.create("matrixAttr", "mtx", MFnMatrixAttribute::kDouble, &status);
    DG_CHECK(status);

    MFnMessageAttribute msgAttr;
    linkAttr = msgAttr.create("linkAttr", "lnk", &status);
    DG_CHECK(status);

    // Every flag away from its default.
    flagsOn = nAttr.create("flagsOn", "fon", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setKeyable(true));
    DG_CHECK(nAttr.setHidden(true));
    DG_CHECK(nAttr.setWritable(false));
    DG_CHECK(nAttr.setReadable(true));
    DG_CHECK(nAttr.setCached(false));
    DG_CHECK(nAttr.setArray(true));
    DG_CHECK(nAttr.setConnectable(false));
    DG_CHECK(nAttr.setChannelBox(true));
    DG_CHECK(nAttr.setIndexMatters(false));
    DG_CHECK(nAttr.setUsesArrayDataBuilder(true));

    // Every flag moved away and back, except readable, which ends off.
    flagsOff = nAttr.create("flagsOff", "fof", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setKeyable(true));
    DG_CHECK(nAttr.setHidden(true));
    DG_CHECK(nAttr.setWritable(false));
    DG_CHECK(nAttr.setCached(false));
    DG_CHECK(nAttr.setArray(true));
    DG_CHECK(nAttr.setConnectable(false));
    DG_CHECK(nAttr.setChannelBox(true));
    DG_CHECK(nAttr.setStorable(true));
    DG_CHECK(nAttr.setKeyable(false));
    DG_CHECK(nAttr.setHidden(false));
    DG_CHECK(nAttr.setWritable(true));
    DG_CHECK(nAttr.setReadable(false));
    DG_CHECK(nAttr.setCached(true));
    DG_CHECK(nAttr.setArray(false));
    DG_CHECK(nAttr.setConnectable(true));
    DG_CHECK(nAttr.setChannelBox(false));

    plain = nAttr.create("plain", "pln", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);

    pointCount = nAttr.create("pointCount", "pc", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setWritable(false));

    for (MObject* attr : {&intAttr, &doubleAttr, &boolAttr, &floatAttr, &vectorAttr, &pointAttr, &offset,
                          &pointsAttr, &intsAttr, &vectorsAttr, &doublesAttr, &stringAttr, &meshAttr,
                          &compoundAttr, &modeAttr, &matrixAttr, &linkAttr, &flagsOn, &flagsOff, &plain,
                          &pointCount})
        DG_CHECK(addAttribute(*attr));
    DG_CHECK(attributeAffects(pointsAttr, pointCount));
    return MS::kSuccess;
}

MStatus DgAttrKindsNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != pointCount)
        return MS::kUnknownParameter;
    MStatus status;
    MDataHandle in = block.inputValue(pointsAttr, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MObject data = in.data();
    int count = -1; // null data
    if (!data.isNull()) {
        MFnPointArrayData fn(data, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        count = static_cast<int>(fn.length());
    }
    MDataHandle out = block.outputValue(pointCount);
    out.setInt(count);
    out.setClean();
    return MS::kSuccess;
}

// ---- DgAffectsNode --------------------------------------------------------------------

MObject DgAffectsNode::a;
MObject DgAffectsNode::b;
MObject DgAffectsNode::c;

void* DgAffectsNode::creator() { return new DgAffectsNode; }

MStatus DgAffectsNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    a = nAttr.create("a", "a", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    b = nAttr.create("b", "b", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    c = nAttr.create("c", "c", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(a));
    DG_CHECK(addAttribute(b));
    DG_CHECK(addAttribute(c));
    DG_CHECK(attributeAffects(a, b));
    DG_CHECK(attributeAffects(b, c));
    DG_CHECK(attributeAffects(c, b));
    return MS::kSuccess;
}

MStatus DgAffectsNode::compute(const MPlug& plug, MDataBlock& block)
{
    // Both outputs read only a, so evaluating one never re-enters the other.
    if (plug != b && plug != c)
        return MS::kUnknownParameter;
    const double in = block.inputValue(a).asDouble();
    MDataHandle out = block.outputValue(plug);
    out.setDouble(plug == b ? in * 2.0 : in * 3.0);
    out.setClean();
    return MS::kSuccess;
}

// ---- DgRefuseNode ---------------------------------------------------------------------

MObject DgRefuseNode::input;
MObject DgRefuseNode::refused;
MObject DgRefuseNode::computed;

void* DgRefuseNode::creator() { return new DgRefuseNode; }

MStatus DgRefuseNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    refused = nAttr.create("refused", "rf", MFnNumericData::kDouble, 42.0, &status);
    DG_CHECK(status);
    computed = nAttr.create("computed", "cpd", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(input));
    DG_CHECK(addAttribute(refused));
    DG_CHECK(addAttribute(computed));
    DG_CHECK(attributeAffects(input, refused));
    DG_CHECK(attributeAffects(input, computed));
    return MS::kSuccess;
}

MStatus DgRefuseNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != computed)
        return MS::kUnknownParameter;
    MDataHandle out = block.outputValue(computed);
    out.setDouble(block.inputValue(input).asDouble() * 10.0);
    out.setClean();
    return MS::kSuccess;
}

// ---- DgForgetfulNode ------------------------------------------------------------------

MObject DgForgetfulNode::input;
MObject DgForgetfulNode::output;
MObject DgForgetfulNode::calls;

void* DgForgetfulNode::creator() { return new DgForgetfulNode; }

MStatus DgForgetfulNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    output = nAttr.create("output", "out", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    calls = nAttr.create("calls", "cl", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(input));
    DG_CHECK(addAttribute(output));
    DG_CHECK(addAttribute(calls));
    DG_CHECK(attributeAffects(input, output));
    return MS::kSuccess;
}

MStatus DgForgetfulNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != output)
        return MS::kUnknownParameter;
    ++fCalls;
    block.outputValue(calls).setInt(fCalls);
    // Deliberately no setClean: the plug stays dirty and every read computes again.
    block.outputValue(output).setDouble(block.inputValue(input).asDouble() + 1.0);
    return MS::kSuccess;
}

// ---- DgArraySumNode -------------------------------------------------------------------

MObject DgArraySumNode::inputs;
MObject DgArraySumNode::sum;
MObject DgArraySumNode::count;
MObject DgArraySumNode::doubled;

void* DgArraySumNode::creator() { return new DgArraySumNode; }

MStatus DgArraySumNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    inputs = nAttr.create("inputs", "i", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setArray(true));
    sum = nAttr.create("sum", "s", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setWritable(false));
    count = nAttr.create("count", "n", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setWritable(false));
    doubled = nAttr.create("doubled", "dbl", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setArray(true));
    DG_CHECK(nAttr.setUsesArrayDataBuilder(true));
    DG_CHECK(nAttr.setStorable(false));
    DG_CHECK(nAttr.setWritable(false));
    DG_CHECK(addAttribute(inputs));
    DG_CHECK(addAttribute(sum));
    DG_CHECK(addAttribute(count));
    DG_CHECK(addAttribute(doubled));
    DG_CHECK(attributeAffects(inputs, sum));
    DG_CHECK(attributeAffects(inputs, count));
    DG_CHECK(attributeAffects(inputs, doubled));
    return MS::kSuccess;
}

MStatus DgArraySumNode::compute(const MPlug& plug, MDataBlock& block)
{
    MStatus status;
    if (plug == sum || plug == count) {
        MArrayDataHandle in = block.inputArrayValue(inputs, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        const unsigned int n = in.elementCount();
        double total = 0.0;
        for (unsigned int i = 0; i < n; ++i) {
            total += in.inputValue().asDouble();
            in.next();
        }
        MDataHandle sumHandle = block.outputValue(sum);
        sumHandle.setDouble(total);
        sumHandle.setClean();
        MDataHandle countHandle = block.outputValue(count);
        countHandle.setInt(static_cast<int>(n));
        countHandle.setClean();
        return MS::kSuccess;
    }
    if (plug == doubled) {
        MArrayDataHandle in = block.inputArrayValue(inputs, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        MArrayDataHandle out = block.outputArrayValue(doubled, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        MArrayDataBuilder builder = out.builder(&status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        const unsigned int n = in.elementCount();
        for (unsigned int i = 0; i < n; ++i) {
            const unsigned int index = in.elementIndex();
            builder.addElement(index).setDouble(in.inputValue().asDouble() * 2.0);
            in.next();
        }
        CHECK_MSTATUS_AND_RETURN_IT(out.set(builder));
        CHECK_MSTATUS_AND_RETURN_IT(out.setAllClean());
        return MS::kSuccess;
    }
    return MS::kUnknownParameter;
}

// ---- DgConnRecorderNode ---------------------------------------------------------------

MObject DgConnRecorderNode::input;
MObject DgConnRecorderNode::output;
MObject DgConnRecorderNode::made;
MObject DgConnRecorderNode::madeAsSource;
MObject DgConnRecorderNode::broken;

void* DgConnRecorderNode::creator() { return new DgConnRecorderNode; }

MStatus DgConnRecorderNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    output = nAttr.create("output", "out", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setWritable(false));
    DG_CHECK(nAttr.setStorable(false));
    made = nAttr.create("made", "md", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    madeAsSource = nAttr.create("madeAsSource", "mas", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    broken = nAttr.create("broken", "bk", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    for (MObject* attr : {&input, &output, &made, &madeAsSource, &broken})
        DG_CHECK(addAttribute(*attr));
    DG_CHECK(attributeAffects(input, output));
    return MS::kSuccess;
}

MStatus DgConnRecorderNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != output)
        return MS::kUnknownParameter;
    MDataHandle out = block.outputValue(output);
    out.setDouble(block.inputValue(input).asDouble() * 2.0);
    out.setClean();
    return MS::kSuccess;
}

namespace {
void increment(const MObject& node, const MObject& attribute)
{
    MPlug counter(node, attribute);
    counter.setInt(counter.asInt() + 1);
}
} // namespace

MStatus DgConnRecorderNode::connectionMade(const MPlug& plug, const MPlug& otherPlug, bool asSrc)
{
    increment(thisMObject(), made);
    if (asSrc)
        increment(thisMObject(), madeAsSource);
    return MPxNode::connectionMade(plug, otherPlug, asSrc);
}

MStatus DgConnRecorderNode::connectionBroken(const MPlug& plug, const MPlug& otherPlug, bool asSrc)
{
    increment(thisMObject(), broken);
    return MPxNode::connectionBroken(plug, otherPlug, asSrc);
}

// ---- DgThrowerNode --------------------------------------------------------------------

MObject DgThrowerNode::input;
MObject DgThrowerNode::output;

void* DgThrowerNode::creator() { return new DgThrowerNode; }

MStatus DgThrowerNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    output = nAttr.create("output", "out", MFnNumericData::kDouble, 5.0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(input));
    DG_CHECK(addAttribute(output));
    DG_CHECK(attributeAffects(input, output));
    return MS::kSuccess;
}

MStatus DgThrowerNode::compute(const MPlug& plug, MDataBlock&)
{
    if (plug != output)
        return MS::kUnknownParameter;
    throw std::runtime_error("dgThrower fails on purpose");
}

// ---- DgHooksNode ----------------------------------------------------------------------

MObject DgHooksNode::input;
MObject DgHooksNode::extra;
MObject DgHooksNode::tag;

void* DgHooksNode::creator() { return new DgHooksNode; }

MStatus DgHooksNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    input = nAttr.create("input", "in", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    extra = nAttr.create("extra", "ex", MFnNumericData::kDouble, 0.0, &status);
    DG_CHECK(status);
    DG_CHECK(nAttr.setStorable(false));
    tag = nAttr.create("tag", "tg", MFnNumericData::kInt, 0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(input));
    DG_CHECK(addAttribute(extra));
    DG_CHECK(addAttribute(tag));
    // No attributeAffects: input reaches extra only through setDependentsDirty.
    return MS::kSuccess;
}

void DgHooksNode::postConstructor()
{
    MPlug(thisMObject(), tag).setInt(99);
}

MStatus DgHooksNode::setDependentsDirty(const MPlug& plug, MPlugArray& plugArray)
{
    if (plug == input)
        plugArray.append(MPlug(thisMObject(), extra));
    return MS::kSuccess;
}

MStatus DgHooksNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != extra)
        return MS::kUnknownParameter;
    MDataHandle out = block.outputValue(extra);
    out.setDouble(block.inputValue(input).asDouble() * 5.0);
    out.setClean();
    return MS::kSuccess;
}

// ---- DgLocatorNode --------------------------------------------------------------------

MObject DgLocatorNode::size;

void* DgLocatorNode::creator() { return new DgLocatorNode; }

MStatus DgLocatorNode::initialize()
{
    MStatus status;
    MFnNumericAttribute nAttr;
    size = nAttr.create("size", "sz", MFnNumericData::kDouble, 1.0, &status);
    DG_CHECK(status);
    DG_CHECK(addAttribute(size));
    return MS::kSuccess;
}
