#include "kernel/patchPlumbing.h"

#include "kernel/commandTexts.h"

#include "store/logModules.h"
#include "store/storeLookup.h"

#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include <cstdint>
#include <set>
#include <string>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;
constexpr int kLastTry = 999999;

// Calls `visit(node, fn)` for each patch node in creation order until it answers true.
template <class Visit>
bool forEachPatchNode(Visit visit)
{
    MItDependencyNodes it(MFn::kPluginDependNode);
    for (; !it.isDone(); it.next()) {
        MObject node = it.thisNode();
        MFnDependencyNode fn(node);
        if (fn.typeName() == kPatchNodeTypeName && visit(node, fn))
            return true;
    }
    return false;
}

void logIfFailed(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
}

MStatus writeNodeState(const MObject& node, int state)
{
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return status;
    MPlug plug = fn.findPlug("nodeState", false, &status);
    if (!status)
        return status;
    return plug.setInt(state);
}

} // namespace

MDagPath createMeshShape(MStatus& status)
{
    status = MStatus::kSuccess;
    const MString name = uniqueName("tqMeshShape");
    MString command = "createNode \"mesh\" -n \"";
    command += name;
    command += "\";";
    MStatus step;
    const MString given = MGlobal::executeCommandStringResult(command, false, false, &step);
    logIfFailed(step, __LINE__);

    MSelectionList list;
    MDagPath shapePath;
    step = list.add(given);
    if (step)
        step = list.getDagPath(0, shapePath);
    logIfFailed(step, __LINE__);
    if (!step)
        status = step;

    MString join = "sets -e -forceElement \"initialShadingGroup\" ";
    join += shapePath.fullPathName();
    step = MGlobal::executeCommand(join);
    logIfFailed(step, __LINE__);
    // Deliberate: replacing the selection makes the new mesh the retopo mesh that the
    // generators find through the active selection.
    step = MGlobal::selectByName(shapePath.fullPathName(), MGlobal::kReplaceList);
    logIfFailed(step, __LINE__);

    MDagPath transformPath;
    MFnDagNode shapeFn(shapePath, &step);
    if (step) {
        MObject parent = shapeFn.parent(0, &step);
        if (step)
            step = MDagPath::getAPathTo(parent, transformPath);
    }
    logIfFailed(step, __LINE__);
    if (!step)
        status = step;
    step = MGlobal::selectByName(transformPath.fullPathName(), MGlobal::kReplaceList);
    logIfFailed(step, __LINE__);
    return transformPath;
}

MString uniqueName(const MString& base)
{
    std::set<std::string> taken;
    forEachPatchNode([&taken](const MObject&, MFnDependencyNode& fn) {
        taken.insert(fn.name().asChar());
        return false;
    });
    for (int i = 1; i < kLastTry; ++i) {
        MString candidate = base;
        candidate += static_cast<double>(static_cast<std::int8_t>(i));
        if (taken.count(candidate.asChar()) == 0)
            return candidate;
    }
    return base;
}

bool findPatchNodeByName(const MString& name, MObject& node)
{
    return forEachPatchNode([&](const MObject& candidate, MFnDependencyNode& fn) {
        if (fn.name() != name)
            return false;
        node = candidate;
        return true;
    });
}

bool patchNodeOfActiveMesh(MObject& node, MStatus& status)
{
    const MDagPath meshPath = getActiveMeshPath();
    if (!meshPath.isValid()) {
        status = MStatus::kFailure;
        return false;
    }
    MFnDependencyNode meshFn(meshPath.node(), &status);
    if (!status)
        return false;
    MPlug inMesh = meshFn.findPlug("inMesh", false, &status);
    if (!status)
        return false;
    node = inMesh.source().node();
    if (node.isNull()) {
        status = MStatus::kFailure;
        return false;
    }
    if (MFnDependencyNode(node).typeName() != kPatchNodeTypeName) {
        status = MStatus::kFailure;
        return false;
    }
    status = MStatus::kSuccess;
    return true;
}

MStatus attachPatchNode(const MString& name, const MDagPath& meshPath, MObject& node)
{
    MString command = kPatchCommandName;
    command += " -m \"";
    command += meshPath.fullPathName();
    command += "\" -o ";
    command += "\"";
    command += name;
    command += "\";";
    MStatus status = MGlobal::executeCommand(command);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "attachPatchNode");
        return status;
    }
    return findPatchNodeByName(name, node) ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

bool traceConnection(MString& sourceName, const MObject& node, MString& destinationName, const MString& inAttr,
                     const MString& outAttr)
{
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return false;
    MPlug input = fn.findPlug(inAttr, false, &status);
    if (!status || input.isNull())
        return false;
    sourceName = input.source().name();
    MPlug output = fn.findPlug(outAttr, false, &status);
    if (!status || output.isNull())
        return false;
    MPlugArray destinations;
    if (!output.destinations(destinations, &status))
        return false;
    for (unsigned int i = 0; i < destinations.length(); ++i)
        destinationName = destinations[i].name();
    return true;
}

bool reconnectAround(const MObject& node)
{
    MString source;
    MString destination;
    if (!traceConnection(source, node, destination, "inMesh", "outMesh"))
        return false;
    MString command = "connectAttr ";
    command += source;
    command += " ";
    command += destination;
    command += " -f;";
    const MStatus status = MGlobal::executeCommand(command);
    logIfFailed(status, __LINE__);
    return true;
}

MStatus detachPatchNode(const MString& name)
{
    MObject node;
    if (!findPatchNodeByName(name, node))
        return MStatus::kInvalidParameter;
    if (!reconnectAround(node))
        return MStatus::kInvalidParameter;
    MString command = "delete \"";
    command += name;
    command += "\";";
    return MGlobal::executeCommand(command);
}

MStatus suspendPatchNode(const MObject& node) { return writeNodeState(node, 1); }

MStatus resumePatchNode(const MObject& node) { return writeNodeState(node, 0); }

MStatus deleteThrowAwayMesh(const MObject& owner, const MDagPath& meshPath)
{
    if (owner.isNull() || owner == meshPath.node() || owner == meshPath.transform())
        return MStatus::kSuccess;
    MFnDagNode ownerFn(owner);
    MObject above = owner.hasFn(MFn::kTransform) ? owner : ownerFn.parent(0);
    const MString name = above.hasFn(MFn::kTransform) ? MFnDagNode(above).fullPathName() : ownerFn.fullPathName();
    return MGlobal::executeCommand(deleteIfExistsCommand(name));
}

} // namespace tq
