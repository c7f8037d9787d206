#include "nodes/tqTweakNode.h"

#include "kernel/entryBarrier.h"
#include "store/logModules.h"
#include "store/storeLookup.h"
#include "store/tqSarn.h"

#include <maya/MDataHandle.h>
#include <maya/MFnData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnGenericAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MNodeMessage.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MRichSelection.h>
#include <maya/MSelectionList.h>

#include <vector>

namespace {

constexpr const char* kModule = tq::logModule::kTweakNode;
// The reach of each snap. Deliberate: fixed, not the `threshold` attribute, which the node
// never carries; a vertex farther from the scan than this fails the query and ends the pass.
constexpr double kSnapReach = 99.0;

// Logs `status` with the module and `line` when it failed; returns whether it succeeded.
bool ok(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return bool(status);
}

// Deliberate: a callback that does nothing. Its registration is part of the node's life
// (added at construction, removed at destruction) and nothing listens through it.
void attributeChanged(MNodeMessage::AttributeMessage, MPlug&, MPlug&, void*) {}

MString nameOf(const MObject& node)
{
    return node.isNull() ? MString() : MFnDependencyNode(node).name();
}

} // namespace

const MTypeId tqTweakNode::id(0x80032);
const MString tqTweakNode::typeName("tqTweakNode");

MObject tqTweakNode::scanMesh;
MObject tqTweakNode::lowMesh;
MObject tqTweakNode::tqTweakEval;
MObject tqTweakNode::threshold;
MObject tqTweakNode::selectionAttr;

tqTweakNode::tqTweakNode() = default;

tqTweakNode::~tqTweakNode()
{
    if (attributeCallbackId != 0)
        MMessage::removeCallback(attributeCallbackId);
}

void* tqTweakNode::creator() { return new tqTweakNode(); }

MStatus tqTweakNode::initialize()
{
    MFnGenericAttribute gAttr;
    MFnNumericAttribute nAttr;
    MFnTypedAttribute tAttr;
    MStatus status;

    scanMesh = gAttr.create("scanMesh", "scn", &status);
    ok(status, __LINE__);
    ok(gAttr.addDataAccept(MFnData::kMesh), __LINE__);
    gAttr.setHidden(true);

    lowMesh = gAttr.create("lowMesh", "low", &status);
    ok(status, __LINE__);
    ok(gAttr.addDataAccept(MFnData::kMesh), __LINE__);
    gAttr.setHidden(true);

    tqTweakEval = nAttr.create("tqTweakEval", "tt", MFnNumericData::kDouble, 5.0, &status);
    ok(status, __LINE__);
    nAttr.setStorable(false);
    nAttr.setHidden(true);

    // Deliberate: made and never added; the snap's reach is the fixed kSnapReach, and
    // getAttr of `threshold` fails on the node.
    threshold = nAttr.create("threshold", "th", MFnNumericData::kDouble, 100.0, &status);
    ok(status, __LINE__);
    nAttr.setStorable(true);

    selectionAttr = tAttr.create("selectionAttr", "sl", MFnData::kPointArray, MObject::kNullObj, &status);
    ok(status, __LINE__);
    tAttr.setStorable(false);
    tAttr.setKeyable(true);
    tAttr.setHidden(false);
    tAttr.setCached(true);

    for (const MObject* attribute : {&lowMesh, &scanMesh, &tqTweakEval, &selectionAttr}) {
        status = addAttribute(*attribute);
        if (!ok(status, __LINE__))
            return status;
    }
    for (const MObject* input : {&lowMesh, &scanMesh, &selectionAttr}) {
        status = attributeAffects(*input, tqTweakEval);
        if (!ok(status, __LINE__))
            return status;
    }
    return MS::kSuccess;
}

void tqTweakNode::postConstructor()
{
    tq::guardEntryPoint(kModule, "tqTweakNode::postConstructor", [&] {
        MObject self = thisMObject();
        MStatus status;
        attributeCallbackId = MNodeMessage::addAttributeChangedCallback(self, attributeChanged, nullptr, &status);
        ok(status, __LINE__);
        return status;
    });
}

MStatus tqTweakNode::connectionMade(const MPlug& plug, const MPlug& otherPlug, bool)
{
    return tq::guardEntryPoint(kModule, "tqTweakNode::connectionMade", [&] {
        // Deliberate: the intersector is built at the first scan connection only; connecting
        // another scan later keeps the first, and the store guard in compute is what stops a
        // pass on the wrong scan.
        if (!(plug == scanMesh) || intersector.isCreated())
            return MStatus(MS::kSuccess);
        return buildIntersector(otherPlug);
    });
}

MStatus tqTweakNode::buildIntersector(const MPlug& otherPlug)
{
    MObject node = otherPlug.node();
    MDagPath path;
    MStatus status = MDagPath::getAPathTo(node, path);
    if (!ok(status, __LINE__))
        return status;
    // Taken once: a scan moved after the connection is not followed.
    scanMatrix = path.inclusiveMatrix(&status);
    if (!ok(status, __LINE__))
        return status;
    status = intersector.create(node, scanMatrix);
    ok(status, __LINE__);
    return status;
}

MStatus tqTweakNode::compute(const MPlug& plug, MDataBlock& dataBlock)
{
    return tq::guardEntryPoint(kModule, "tqTweakNode::compute", [&] { return snapSelected(plug, dataBlock); });
}

MStatus tqTweakNode::snapSelected(const MPlug& plug, MDataBlock& dataBlock)
{
    MStatus status;
    if (plug == lowMesh) {
        status = dataBlock.setClean(lowMesh);
        if (!ok(status, __LINE__))
            return status;
    }
    if (!(plug == tqTweakEval))
        return MS::kUnknownParameter;

    // Both inputs are pulled, so an upstream change is evaluated before the snap; the scan's
    // data itself is not used: the intersector took its copy at the connection.
    MDataHandle lowHandle = dataBlock.inputValue(lowMesh, &status);
    if (!ok(status, __LINE__))
        return status;
    lowHandle.asMeshTransformed();
    MDataHandle scanHandle = dataBlock.inputValue(scanMesh, &status);
    if (!ok(status, __LINE__))
        return status;
    scanHandle.asMeshTransformed();

    // The rich selection is only a way to the active list: the soft selection's weights are
    // not read.
    MRichSelection rich;
    status = MGlobal::getRichSelection(rich, true);
    if (!ok(status, __LINE__))
        return status;
    MSelectionList list;
    status = rich.getSelection(list);
    if (!ok(status, __LINE__))
        return status;
    MDagPath selectedPath;
    MObject component;
    status = list.getDagPath(0, selectedPath, component);
    if (!ok(status, __LINE__))
        return status;
    MIntArray ids;
    if (!component.isNull()) {
        MFnSingleIndexedComponent componentFn(component, &status);
        if (!ok(status, __LINE__))
            return status;
        status = componentFn.getElements(ids);
        if (!ok(status, __LINE__))
            return status;
    }

    // The node works only on the scan the tool uses, and on the mesh that is selected. A
    // refusal leaves the output dirty, so the next read tries again.
    if (sourceDiffersFromScan())
        return MS::kUnknownParameter;
    if (!lowIsSelected(selectedPath))
        return MS::kUnknownParameter;

    MItGeometry lowPoints(lowHandle, true, &status);
    if (!ok(status, __LINE__))
        return status;
    MPointArray positions;
    status = lowPoints.allPositions(positions, MSpace::kWorld);
    if (!ok(status, __LINE__))
        return status;
    MPointArray result(positions);
    if (component.isNull())
        return MS::kUnknownParameter;

    // Membership by a mask rather than a search of the id list per vertex: the same vertices
    // are snapped, in vertex order, at a cost linear in the mesh.
    std::vector<bool> selected(positions.length(), false);
    for (unsigned int k = 0; k < ids.length(); ++k)
        if (ids[k] >= 0 && static_cast<unsigned int>(ids[k]) < positions.length())
            selected[static_cast<unsigned int>(ids[k])] = true;
    for (unsigned int i = 0; i < positions.length(); ++i) {
        if (!selected[i])
            continue;
        MPointOnMesh nearest;
        status = intersector.getClosestPoint(positions[i], nearest, kSnapReach);
        if (!ok(status, __LINE__))
            return status;
        result[i] = MPoint(nearest.getPoint()) * scanMatrix;
    }

    // The write goes to the mesh upstream, not to an output of this node.
    MPlug lowPlug(thisMObject(), lowMesh);
    MPlugArray sources;
    lowPlug.connectedTo(sources, true, false, &status);
    if (!ok(status, __LINE__))
        return status;
    if (sources.length() > 0) {
        MDagPath lowPath;
        status = MDagPath::getAPathTo(sources[0].node(), lowPath);
        if (!ok(status, __LINE__))
            return status;
        MItGeometry target(lowPath, &status);
        if (!ok(status, __LINE__))
            return status;
        status = target.setAllPositions(result, MSpace::kWorld);
        if (!ok(status, __LINE__))
            return status;
    }
    status = dataBlock.setClean(plug);
    ok(status, __LINE__);
    return status;
}

bool tqTweakNode::sourceOf(const MObject& node, const MString& attributeName, MObject& source)
{
    MStatus status;
    MFnDependencyNode nodeFn(node, &status);
    if (!status)
        return false;
    MPlug plug = nodeFn.findPlug(attributeName, false, &status);
    if (!status || !plug.isConnected())
        return false;
    MPlug from = plug.source(&status);
    if (!status || from.isNull())
        return false;
    source = from.node();
    return true;
}

bool tqTweakNode::sourceDiffersFromScan() const
{
    MObject storeSource;
    const MObject store = tq::findStoreNode();
    if (!store.isNull())
        sourceOf(store, tq::storeAttr::kSarnMesh, storeSource);
    MObject scanSource;
    sourceOf(thisMObject(), "scanMesh", scanSource);
    return nameOf(storeSource) != nameOf(scanSource);
}

bool tqTweakNode::lowIsSelected(const MDagPath& path) const
{
    MObject low;
    if (!path.isValid() || !sourceOf(thisMObject(), "lowMesh", low))
        return false;
    MStatus status;
    const MUuid lowId = MFnDependencyNode(low).uuid(&status);
    if (!status)
        return false;
    const MUuid selectedId = MFnDependencyNode(path.node()).uuid(&status);
    return status && lowId == selectedId;
}
