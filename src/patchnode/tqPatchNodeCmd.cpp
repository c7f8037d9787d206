#include "patchnode/tqPatchNodeCmd.h"

#include "patchnode/patchDiagnostics.h"

#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericData.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

using tq::logIfFailed;

namespace {

// The three components of one `pnts` element; false for an element that holds no data.
bool readTweak(const MPlug& element, float& x, float& y, float& z)
{
    MObject data;
    if (!element.getValue(data) || data.isNull())
        return false;
    MStatus status;
    MFnNumericData numericFn(data, &status);
    if (!status)
        return false;
    return bool(numericFn.getData(x, y, z));
}

// True when an element of `pnts` moves a vertex. NaN compares unequal to 0, so it counts.
bool anyTweak(const MPlug& pnts)
{
    const unsigned int count = pnts.numElements();
    for (unsigned int i = 0; i < count; ++i) {
        float x = 0.0f, y = 0.0f, z = 0.0f;
        if (readTweak(pnts.elementByPhysicalIndex(i), x, y, z) && !(x == 0.0f && y == 0.0f && z == 0.0f))
            return true;
    }
    return false;
}

// Records the move of every connection on `from` to `to`: what it feeds, and its one source.
void moveConnections(const MPlug& from, const MPlug& to, MDGModifier& modifier)
{
    MPlugArray destinations;
    from.connectedTo(destinations, false, true);
    for (unsigned int i = 0; i < destinations.length(); ++i) {
        logIfFailed(modifier.disconnect(from, destinations[i]), __LINE__);
        logIfFailed(modifier.connect(to, destinations[i]), __LINE__);
    }
    MPlugArray sources;
    from.connectedTo(sources, true, false);
    if (sources.length() == 1) {
        logIfFailed(modifier.disconnect(sources[0], from), __LINE__);
        logIfFailed(modifier.connect(sources[0], to), __LINE__);
    }
}

} // namespace

tqPatchNodeCmd::tqPatchNodeCmd() = default;
tqPatchNodeCmd::~tqPatchNodeCmd() = default;

bool tqPatchNodeCmd::isUndoable() const { return false; }

MStatus tqPatchNodeCmd::insertModifier(const MDagPath& meshPath, const MString& nodeName, const MTypeId& typeId)
{
    meshNodeShape = meshPath;
    modifierNodeType = typeId;
    if (!meshNodeShape.isValid()) {
        displayError(MString("Invalid mesh shape path: ") + meshNodeShape.fullPathName());
        return MS::kFailure;
    }
    return surgery(meshPath, nodeName, typeId);
}

MStatus tqPatchNodeCmd::surgery(const MDagPath& meshPath, const MString& nodeName, const MTypeId& typeId)
{
    MStatus status;
    MObject meshNode = meshPath.node();
    MFnDependencyNode meshFn(meshNode, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MPlug meshInMesh = meshFn.findPlug("inMesh", true, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);

    hasHistory = meshInMesh.isConnected();
    hasTweaks = anyTweak(meshFn.findPlug("pnts", true));
    int recordHistory = 0;
    logIfFailed(MGlobal::executeCommand("constructionHistory -query -toggle", recordHistory), __LINE__);
    hasRecordHistory = recordHistory != 0;

    if (!hasHistory) {
        MPlug ownGeometry = meshFn.findPlug(hasTweaks ? "cachedInMesh" : "outMesh", true, &status);
        if (logIfFailed(status, __LINE__))
            logIfFailed(ownGeometry.getValue(meshSnapshot), __LINE__);
    }

    // The modifier's DG form: the DAG form is for DAG nodes, and neither node is one.
    MDGModifier& nodeCreator = createModifier;
    MObject modifierNode = nodeCreator.createNode(typeId, &status);
    logIfFailed(status, __LINE__);
    // Deliberate: made every time, though connected only when there are tweaks; the scene
    // gains an idle polyTweak per attach, which scripts counting polyTweak nodes see.
    MObject tweakNode = nodeCreator.createNode("polyTweak", &status);
    logIfFailed(status, __LINE__);
    logIfFailed(createModifier.doIt(), __LINE__);

    MFnDependencyNode modifierFn(modifierNode, &status);
    if (!status || !modifierFn.hasAttribute("inMesh") || !modifierFn.hasAttribute("outMesh")) {
        displayError("Invalid modifier node. It doesn't have inMesh and/or outMesh attributes");
        return MS::kFailure;
    }
    logIfFailed(initModifierNode(modifierNode, connectModifier), __LINE__);

    const MPlug modifierInMesh = modifierFn.findPlug("inMesh", true);
    const MPlug modifierOutMesh = modifierFn.findPlug("outMesh", true);
    MPlug targetPlug = modifierInMesh;
    MPlug upstream;
    MPlugArray sources;
    if (meshInMesh.connectedTo(sources, true, false) && sources.length() > 0) {
        upstream = sources[0];
        logIfFailed(connectModifier.disconnect(upstream, meshInMesh), __LINE__);
    }
    if (hasTweaks) {
        logIfFailed(moveTweaksToNode(meshPath, tweakNode, connectModifier), __LINE__);
        MFnDependencyNode tweakFn(tweakNode);
        targetPlug = tweakFn.findPlug("inputPolymesh", true);
        logIfFailed(connectModifier.connect(tweakFn.findPlug("output", true), modifierInMesh), __LINE__);
    }
    logIfFailed(connectModifier.doIt(), __LINE__);

    duplicatedMesh = MObject::kNullObj;
    if (!hasHistory) {
        // The mesh's own geometry becomes the source of the chain: a copy of the shape, made
        // an intermediate object under the mesh's own transform.
        MFnDagNode meshDagFn(meshPath, &status);
        duplicatedMesh = meshDagFn.duplicate(false, false, &status);
        logIfFailed(status, __LINE__);
        MFnDagNode duplicateFn(duplicatedMesh);
        MObject duplicateShape = duplicateFn.child(0, &status);
        logIfFailed(status, __LINE__);
        MFnDagNode shapeFn(duplicateShape);
        const MString makeIntermediate = MString("setAttr ") + shapeFn.fullPathName() + ".intermediateObject true";
        logIfFailed(finishModifier.commandToExecute(makeIntermediate), __LINE__);
        upstream = shapeFn.findPlug("outMesh", true);
        logIfFailed(finishModifier.renameNode(duplicateShape, shapeFn.name() + "Orig"), __LINE__);
        logIfFailed(finishModifier.reparentNode(duplicateShape, meshPath.transform()), __LINE__);
        const MString deleteCopy = MString("delete \"") + duplicateFn.fullPathName() + "\"";
        logIfFailed(finishModifier.commandToExecute(deleteCopy), __LINE__);
    }
    if (!upstream.isNull())
        logIfFailed(finishModifier.connect(upstream, targetPlug), __LINE__);
    logIfFailed(finishModifier.connect(modifierOutMesh, meshInMesh), __LINE__);
    if (!hasHistory && !hasRecordHistory) {
        // With history off, a mesh that had none keeps none: the chain is baked at once.
        const MString bake = MString("delete -constructionHistory ") + meshPath.fullPathName();
        logIfFailed(finishModifier.commandToExecute(bake), __LINE__);
    }
    logIfFailed(finishModifier.doIt(), __LINE__);

    // Deliberate: renamed outside the modifiers, so no undo takes the name back. Once the
    // history was baked the node is gone: the rename fails and the result is empty.
    if (nodeName.length() > 0) {
        modifierFn.setName(nodeName, false, &status);
        logIfFailed(status, __LINE__);
    }
    setResult(modifierFn.name());
    return MS::kSuccess;
}

MStatus tqPatchNodeCmd::moveTweaksToNode(const MDagPath& meshPath, MObject& tweakNode, MDagModifier& modifier)
{
    MStatus status;
    MObject meshNode = meshPath.node();
    MFnDependencyNode meshFn(meshNode, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MFnDependencyNode tweakFn(tweakNode, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    const MPlug pnts = meshFn.findPlug("pnts", true, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    const MPlug tweaks = tweakFn.findPlug("tweak", true, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);

    const unsigned int count = pnts.numElements();
    for (unsigned int i = 0; i < count; ++i) {
        const MPlug element = pnts.elementByPhysicalIndex(i);
        float x = 0.0f, y = 0.0f, z = 0.0f;
        if (element.isNull() || !readTweak(element, x, y, z))
            continue;
        const int logical = int(element.logicalIndex());

        MString setTweak = MString("setAttr ") + tweakFn.name() + ".tweak[";
        setTweak += logical;
        setTweak += "] ";
        setTweak += double(x);
        setTweak += " ";
        setTweak += double(y);
        setTweak += " ";
        setTweak += double(z);
        logIfFailed(modifier.commandToExecute(setTweak), __LINE__);

        const MPlug tweakElement = tweaks.elementByLogicalIndex(unsigned(logical));
        if (element.isConnected()) {
            moveConnections(element, tweakElement, modifier);
        } else {
            // Connections that end on a single component of the offset.
            for (unsigned int c = 0; c < element.numChildren(); ++c)
                moveConnections(element.child(c), tweakElement.child(c), modifier);
        }

        MString clearTweak = MString("setAttr ") + meshPath.fullPathName() + ".pnts[";
        clearTweak += logical;
        clearTweak += "] 0 0 0";
        logIfFailed(modifier.commandToExecute(clearTweak), __LINE__);
    }
    return MS::kSuccess;
}

MStatus tqPatchNodeCmd::undoIt()
{
    return tq::guardEntryPoint("tqPatchNodeCmd::undoIt", [&] { return undoSteps(); });
}

MStatus tqPatchNodeCmd::undoSteps()
{
    logIfFailed(finishModifier.undoIt(), __LINE__);
    if (!duplicatedMesh.isNull())
        logIfFailed(MGlobal::deleteNode(duplicatedMesh), __LINE__);

    // Deliberate: each test below is the wrong way round: a successful undo ends the undo
    // here, so the modifier and polyTweak nodes stay in the scene, unconnected, and the
    // snapshot is written back only after two failed undos. The tool never reaches this (the
    // command is not undoable); it removes patch nodes itself.
    if (connectModifier.undoIt())
        return MS::kSuccess;
    if (createModifier.undoIt())
        return MS::kSuccess;

    if (!hasHistory && !meshSnapshot.isNull()) {
        MStatus status;
        MObject meshNode = meshNodeShape.node();
        MFnDependencyNode meshFn(meshNode, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        MPlug ownGeometry = meshFn.findPlug(hasTweaks ? "cachedInMesh" : "outMesh", true, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        return logIfFailed(ownGeometry.setValue(meshSnapshot), __LINE__);
    }
    return MS::kSuccess;
}

MStatus tqPatchNodeCmd::redoIt()
{
    tq::guardEntryPoint("tqPatchNodeCmd::redoIt", [&] { return redoSteps(); });
    // Deliberate: a redo reports success even when a host call threw (the barrier has logged
    // it); callers of redoIt test nothing.
    return MS::kSuccess;
}

MStatus tqPatchNodeCmd::redoSteps()
{
    logIfFailed(createModifier.doIt(), __LINE__);
    logIfFailed(connectModifier.doIt(), __LINE__);
    if (!hasHistory && meshNodeShape.isValid()) {
        MStatus status;
        MFnDagNode meshDagFn(meshNodeShape, &status);
        duplicatedMesh = meshDagFn.duplicate(false, false, &status);
        logIfFailed(status, __LINE__);
    }
    // Deliberate: the final connections are made again only when a duplicate was made, so a
    // redo on a mesh that had history leaves the modifier unconnected. Nothing redoes this
    // command (it is not undoable).
    if (!duplicatedMesh.isNull())
        logIfFailed(finishModifier.doIt(), __LINE__);
    return MS::kSuccess;
}
