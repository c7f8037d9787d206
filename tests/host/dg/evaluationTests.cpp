// Evaluation: dirty propagation through attributeAffects and connections, what the host
// does with computes that refuse, forget setClean or throw, array plugs, and the node
// callbacks around connections and dirtying.

#include "dgTest.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>

#include <string>
#include <vector>

namespace {

using host::getDouble;
using host::getInt;
using host::isDirty;
using host::LogLevel;
using hosttest::attributeOf;

bool containsAttribute(const MObjectArray& list, const MObject& attribute)
{
    for (unsigned int i = 0; i < list.length(); ++i)
        if (list[i] == attribute)
            return true;
    return false;
}

using DgEvaluation = DgTest;

TEST_F(DgEvaluation, AffectsChainWithCycleDirtiesEveryDependentAndTerminates)
{
    MObject node = create("dgAffects", "aff");
    EXPECT_EQ(getDouble("aff.b"), 0.0);
    EXPECT_EQ(getDouble("aff.c"), 0.0);
    EXPECT_FALSE(isDirty("aff.b"));
    EXPECT_FALSE(isDirty("aff.c"));

    ASSERT_TRUE(host::setDouble("aff.a", 2.0));
    EXPECT_FALSE(isDirty("aff.a")) << "the plug that was set is dirty";
    EXPECT_TRUE(isDirty("aff.b")) << "a affects b";
    EXPECT_TRUE(isDirty("aff.c")) << "a affects c through b";

    EXPECT_EQ(getDouble("aff.b"), 4.0);
    EXPECT_FALSE(isDirty("aff.b"));
    EXPECT_TRUE(isDirty("aff.c")) << "evaluating b cleaned c too";
    EXPECT_EQ(getDouble("aff.c"), 6.0);
    EXPECT_FALSE(isDirty("aff.c"));

    // Once clean, the cycle dirties again on the next change.
    ASSERT_TRUE(host::setDouble("aff.a", -1.0));
    EXPECT_TRUE(isDirty("aff.b"));
    EXPECT_TRUE(isDirty("aff.c"));
    EXPECT_EQ(getDouble("aff.c"), -3.0);
    EXPECT_EQ(getDouble("aff.b"), -2.0);

    // Setting a plug inside the cycle comes back, with its dependents dirty.
    EXPECT_TRUE(host::setDouble("aff.b", 1.0));
    EXPECT_TRUE(isDirty("aff.c"));
    EXPECT_EQ(getDouble("aff.c"), -3.0);

    // The relationships as the node type reports them.
    MFnDependencyNode fn(node);
    MObject a = attributeOf(node, "a"), b = attributeOf(node, "b"), c = attributeOf(node, "c");
    MObjectArray affected;
    ASSERT_TRUE(fn.getAffectedAttributes(a, affected));
    EXPECT_TRUE(containsAttribute(affected, b));
    affected.clear();
    ASSERT_TRUE(fn.getAffectedAttributes(c, affected));
    EXPECT_TRUE(containsAttribute(affected, b));
    EXPECT_FALSE(containsAttribute(affected, a));
    MObjectArray affecting;
    ASSERT_TRUE(fn.getAffectingAttributes(b, affecting));
    EXPECT_TRUE(containsAttribute(affecting, a));
    EXPECT_TRUE(containsAttribute(affecting, c));
}

TEST_F(DgEvaluation, NewNodeComputesItsOutputsOnFirstRead)
{
    // Outputs of a new node have never been computed: the first read computes them from
    // the defaults instead of handing out the attribute's default.
    create("dgForgetful", "fresh");
    EXPECT_EQ(getDouble("fresh.output"), 1.0) << "output = input + 1 with input at its default 0";
    EXPECT_EQ(getInt("fresh.calls"), 1);

    // The compute sees a typed input with no default as null data and reports -1.
    create("dgAttrKinds", "kinds");
    EXPECT_EQ(getInt("kinds.pointCount"), -1);
}

TEST_F(DgEvaluation, RefusedPlugKeepsItsStoredValueAndStaysDirty)
{
    create("dgRefuse", "ref");
    ASSERT_TRUE(host::setDouble("ref.in", 3.0));
    EXPECT_TRUE(isDirty("ref.refused"));
    EXPECT_TRUE(isDirty("ref.computed"));

    EXPECT_EQ(getDouble("ref.computed"), 30.0);
    EXPECT_FALSE(isDirty("ref.computed"));

    MStatus status;
    EXPECT_EQ(getDouble("ref.refused", &status), 42.0) << "the default is what is stored";
    EXPECT_TRUE(status) << "reading a plug whose compute declined is not an error";
    EXPECT_TRUE(isDirty("ref.refused")) << "kUnknownParameter left the plug clean";

    // A value set by hand is what a refused plug shows after the next change upstream.
    ASSERT_TRUE(host::setDouble("ref.rf", 5.0));
    EXPECT_EQ(getDouble("ref.refused"), 5.0);
    ASSERT_TRUE(host::setDouble("ref.in", 4.0));
    EXPECT_TRUE(isDirty("ref.refused"));
    EXPECT_EQ(getDouble("ref.refused"), 5.0);
    EXPECT_EQ(getDouble("ref.computed"), 40.0);

    EXPECT_FALSE(host::logContains(LogLevel::kError, "")) << "declining a plug is normal:\n" << host::logText();
}

TEST_F(DgEvaluation, ComputeThatForgetsSetCleanRunsOnEveryRead)
{
    create("dgForgetful", "fg");
    ASSERT_TRUE(host::setDouble("fg.in", 1.0));
    EXPECT_EQ(getDouble("fg.out"), 2.0);
    const int first = getInt("fg.calls");
    EXPECT_GE(first, 1);
    EXPECT_TRUE(isDirty("fg.out")) << "the plug was never marked clean";

    EXPECT_EQ(getDouble("fg.out"), 2.0);
    EXPECT_EQ(getDouble("fg.out"), 2.0);
    EXPECT_EQ(getInt("fg.calls"), first + 2) << "each read of a plug left dirty computes again";

    ASSERT_TRUE(host::setDouble("fg.in", 5.0));
    EXPECT_EQ(getDouble("fg.out"), 6.0);
    EXPECT_EQ(getInt("fg.calls"), first + 3);
}

TEST_F(DgEvaluation, ChangesPropagateThroughConnections)
{
    create("dgConnRecorder", "up");
    create("dgConnRecorder", "mid");
    create("dgConnRecorder", "down");
    ASSERT_TRUE(host::connect("up.output", "mid.input")) << host::logText();
    ASSERT_TRUE(host::connect("mid.out", "down.in")) << host::logText();
    EXPECT_EQ(getDouble("down.output"), 0.0);
    EXPECT_FALSE(isDirty("down.output"));

    ASSERT_TRUE(host::setDouble("up.input", 1.0));
    EXPECT_TRUE(isDirty("mid.input")) << "the destination of a dirty source";
    EXPECT_TRUE(isDirty("down.in"));
    EXPECT_TRUE(isDirty("down.output"));
    EXPECT_EQ(getDouble("down.output"), 8.0);
    EXPECT_FALSE(isDirty("down.output"));
    EXPECT_EQ(getDouble("mid.input"), 2.0);
    EXPECT_EQ(getDouble("down.input"), 4.0);

    MPlug midInput = host::findPlug("mid.input");
    EXPECT_TRUE(midInput.isDestination());
    EXPECT_EQ(hosttest::nameOf(midInput.source().node()), "up");

    // After a disconnect the destination keeps its last value and no longer follows.
    ASSERT_TRUE(host::disconnect("mid.output", "down.input"));
    EXPECT_EQ(getDouble("down.input"), 4.0);
    EXPECT_EQ(getDouble("down.output"), 8.0);
    ASSERT_TRUE(host::setDouble("up.input", 10.0));
    EXPECT_FALSE(isDirty("down.input"));
    EXPECT_FALSE(isDirty("down.output"));
    EXPECT_EQ(getDouble("down.output"), 8.0);
    EXPECT_EQ(getDouble("mid.output"), 40.0);
}

TEST_F(DgEvaluation, ArrayPlugsAreSparseAndComputeSeesEveryElement)
{
    create("dgArraySum", "arr");
    ASSERT_TRUE(host::setDouble("arr.inputs[0]", 1.0));
    ASSERT_TRUE(host::setDouble("arr.i[3]", 2.5));
    ASSERT_TRUE(host::setDouble("arr.inputs[10]", 4.0));

    MPlug inputs = host::findPlug("arr.inputs");
    ASSERT_FALSE(inputs.isNull());
    EXPECT_TRUE(inputs.isArray());
    EXPECT_FALSE(inputs.isElement());
    EXPECT_EQ(inputs.numElements(), 3u);
    MIntArray indices;
    inputs.getExistingArrayAttributeIndices(indices);
    ASSERT_EQ(indices.length(), 3u);
    EXPECT_EQ(indices[0], 0);
    EXPECT_EQ(indices[1], 3);
    EXPECT_EQ(indices[2], 10);
    EXPECT_EQ(inputs.elementByPhysicalIndex(1).logicalIndex(), 3u);
    MPlug tenth = inputs.elementByLogicalIndex(10);
    EXPECT_TRUE(tenth.isElement());
    EXPECT_EQ(tenth.asDouble(), 4.0);
    EXPECT_TRUE(tenth.array() == inputs);

    EXPECT_EQ(getDouble("arr.sum"), 7.5);
    EXPECT_EQ(getInt("arr.count"), 3);

    // The output array built with MArrayDataBuilder keeps the input's logical indices.
    // Reading one element of the dirty output array computes the array.
    EXPECT_TRUE(isDirty("arr.doubled"));
    EXPECT_TRUE(isDirty("arr.doubled[10]")) << "an element of a dirty array plug is dirty too";
    EXPECT_EQ(getDouble("arr.doubled[10]"), 8.0);
    MPlug doubled = host::findPlug("arr.doubled");
    EXPECT_EQ(doubled.evaluateNumElements(), 3u);
    MIntArray outIndices;
    doubled.getExistingArrayAttributeIndices(outIndices);
    ASSERT_EQ(outIndices.length(), 3u);
    EXPECT_EQ(outIndices[1], 3);
    EXPECT_EQ(doubled.elementByLogicalIndex(3).asDouble(), 5.0);

    // A new element, set or connected, dirties the outputs and joins the sum.
    ASSERT_TRUE(host::setDouble("arr.inputs[7]", 1.0));
    EXPECT_TRUE(isDirty("arr.sum"));
    EXPECT_EQ(getDouble("arr.sum"), 8.5);
    EXPECT_EQ(getInt("arr.count"), 4);

    create("dgConnRecorder", "feed");
    ASSERT_TRUE(host::setDouble("feed.input", 3.0));
    ASSERT_TRUE(host::connect("feed.output", "arr.inputs[5]")) << host::logText();
    EXPECT_EQ(getDouble("arr.sum"), 14.5);
    EXPECT_EQ(getInt("arr.count"), 5);
    EXPECT_EQ(inputs.numElements(), 5u);
    ASSERT_TRUE(host::setDouble("feed.input", 0.5));
    EXPECT_EQ(getDouble("arr.sum"), 9.5);
}

TEST_F(DgEvaluation, ConnectionMadeAndBrokenReachBothNodes)
{
    create("dgConnRecorder", "A");
    create("dgConnRecorder", "B");
    create("dgConnRecorder", "C");
    ASSERT_TRUE(host::connect("A.output", "B.input")) << host::logText();
    EXPECT_EQ(getInt("A.made"), 1);
    EXPECT_EQ(getInt("A.madeAsSource"), 1);
    EXPECT_EQ(getInt("B.made"), 1);
    EXPECT_EQ(getInt("B.madeAsSource"), 0);
    EXPECT_EQ(getInt("A.broken") + getInt("B.broken"), 0);

    ASSERT_TRUE(host::disconnect("A.output", "B.input"));
    EXPECT_EQ(getInt("A.broken"), 1);
    EXPECT_EQ(getInt("B.broken"), 1);

    // A second source is refused unless forced; forcing breaks the first connection.
    ASSERT_TRUE(host::connect("A.output", "B.input"));
    EXPECT_FALSE(host::connect("C.output", "B.input"));
    EXPECT_EQ(getInt("C.made"), 0);
    EXPECT_EQ(hosttest::nameOf(host::findPlug("B.input").source().node()), "A");
    ASSERT_TRUE(host::connect("C.output", "B.input", true)) << host::logText();
    EXPECT_EQ(hosttest::nameOf(host::findPlug("B.input").source().node()), "C");
    EXPECT_EQ(getInt("A.broken"), 2);
    EXPECT_EQ(getInt("B.broken"), 2);
    EXPECT_EQ(getInt("B.made"), 3);
    EXPECT_EQ(getInt("C.made"), 1);
    EXPECT_EQ(getInt("C.madeAsSource"), 1);
    EXPECT_FALSE(host::findPlug("A.output").isConnected());

    // Deleting a node breaks its connections, and the survivor hears of it.
    ASSERT_TRUE(host::deleteNode("C"));
    EXPECT_EQ(getInt("B.broken"), 3);
    EXPECT_FALSE(host::findPlug("B.input").isConnected());
}

TEST_F(DgEvaluation, ThrowingComputeIsLoggedAndSurvived)
{
    create("dgThrower", "boom");
    ASSERT_TRUE(host::setDouble("boom.input", 1.0));
    MStatus status;
    const double value = getDouble("boom.output", &status);
    EXPECT_FALSE(status) << "the read succeeded although compute threw";
    EXPECT_TRUE(host::logContains(LogLevel::kError, "compute")) << "the error does not name the callback:\n"
                                                                << host::logText();
    EXPECT_TRUE(host::logContains(LogLevel::kError, "dgThrower fails on purpose"))
        << "the error does not say what was thrown:\n"
        << host::logText();
    EXPECT_EQ(value, 5.0) << "a failed compute wrote nothing, so the stored value shows";

    // The host keeps working: the node can be read again, and other nodes evaluate.
    host::clearLog();
    getDouble("boom.output");
    EXPECT_TRUE(host::logContains(LogLevel::kError, "compute"));
    create("dgAffects", "calm");
    ASSERT_TRUE(host::setDouble("calm.a", 1.5));
    EXPECT_EQ(getDouble("calm.c"), 4.5);
    EXPECT_TRUE(host::deleteNode("boom"));
}

TEST_F(DgEvaluation, PostConstructorAndSetDependentsDirtyAreCalled)
{
    create("dgHooks", "hooks");
    EXPECT_EQ(getInt("hooks.tag"), 99) << "postConstructor did not run with the attributes in place";
    EXPECT_EQ(getDouble("hooks.extra"), 0.0);
    EXPECT_FALSE(isDirty("hooks.extra"));

    // No attributeAffects links input to extra; setDependentsDirty adds it.
    ASSERT_TRUE(host::setDouble("hooks.input", 2.0));
    EXPECT_TRUE(isDirty("hooks.extra"));
    EXPECT_EQ(getDouble("hooks.extra"), 10.0);

    // Also through a connection into input.
    create("dgConnRecorder", "driver");
    ASSERT_TRUE(host::connect("driver.output", "hooks.input")) << host::logText();
    ASSERT_TRUE(host::setDouble("driver.input", 3.0));
    EXPECT_TRUE(isDirty("hooks.extra"));
    EXPECT_EQ(getDouble("hooks.extra"), 30.0);
}

} // namespace
