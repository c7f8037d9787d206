#include "patchnode/tqPatchCmd.h"

#include "patchnode/patchDiagnostics.h"
#include "patchnode/tqPatchNode.h"

#include "kernel/patchPlumbing.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

using tq::logIfFailed;

namespace {

constexpr const char* kMeshFlag = "-m";
constexpr const char* kMeshFlagLong = "-mesh";
constexpr const char* kOutputFlag = "-o";
constexpr const char* kOutputFlagLong = "-outname";
constexpr const char* kDefaultNodeName = "tqPatch";

} // namespace

const MString tqPatchCmd::commandName(tq::kPatchCommandName);

tqPatchCmd::tqPatchCmd() = default;
tqPatchCmd::~tqPatchCmd() = default;

void* tqPatchCmd::creator() { return new tqPatchCmd(); }

MSyntax tqPatchCmd::newSyntax()
{
    MSyntax syntax;
    syntax.addFlag(kMeshFlag, kMeshFlagLong, MSyntax::kString);
    syntax.addFlag(kOutputFlag, kOutputFlagLong, MSyntax::kString);
    return syntax;
}

MStatus tqPatchCmd::doIt(const MArgList& args)
{
    return tq::guardEntryPoint("tqPatchCmd::doIt", [&] { return attach(args); });
}

MStatus tqPatchCmd::attach(const MArgList& args)
{
    MStatus status;
    MArgDatabase argData(syntax(), args, &status);
    logIfFailed(status, __LINE__);
    outputName = kDefaultNodeName;
    if (argData.isFlagSet(kMeshFlag) || argData.isFlagSet(kMeshFlagLong))
        logIfFailed(argData.getFlagArgument(kMeshFlag, 0, meshName), __LINE__);
    if (argData.isFlagSet(kOutputFlag))
        logIfFailed(argData.getFlagArgument(kOutputFlag, 0, outputName), __LINE__);

    // An empty or unknown name leaves the path invalid; insertModifier says so.
    MSelectionList list;
    logIfFailed(list.add(meshName), __LINE__);
    logIfFailed(list.getDagPath(0, meshPath), __LINE__);
    meshObject = meshPath.node();
    logIfFailed(meshPath.extendToShape(), __LINE__);

    insertModifier(meshPath, outputName, tqPatchNode::id);
    // Deliberate: success whatever the surgery said; its failure has shown its own error,
    // and the tool's command text goes on to its next statement.
    return MS::kSuccess;
}

MStatus tqPatchCmd::initModifierNode(MObject& modifierNode, MDagModifier& /*modifier*/)
{
    MStatus status;
    MFnDependencyNode nodeFn(modifierNode, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    nodeFn.name(&status);
    return status;
}
