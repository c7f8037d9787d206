// pluginMain: the plug-in's two entry points. initializePlugin registers the node types,
// the draw override and the commands in a fixed order and prints the banner;
// uninitializePlugin takes them away again. The type ids are part of the saved-scene
// format and must never change.
//
// Registration order: store node, its draw override, the tool's context command, the
// tweak constraint node, the attach command, the patch node. Unloading has its own order
// (below).

#include "command/tqSarnToolCmd.h"
#include "display/tqSarnDrawOverride.h"
#include "nodes/tqSarnContextCmd.h"
#include "nodes/tqTweakNode.h"
#include "patchnode/tqPatchCmd.h"
#include "patchnode/tqPatchNode.h"
#include "plugin/banner.h"
#include "store/tqSarn.h"

#include <maya/MDrawRegistry.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MStatus.h>

// A failed step is logged and returned at once; nothing registered before it is taken
// back, and the host reports the failed load with this status.
#define TQ_CHECK_STEP(STATUS)                              \
    do {                                                   \
        if (!(STATUS)) {                                   \
            (STATUS).pAPIerror("pluginMain", __LINE__);    \
            return (STATUS);                               \
        }                                                  \
    } while (0)

MStatus initializePlugin(MObject obj)
{
    MFnPlugin plugin(obj, "Halvane", "0.97", "Any");
    MStatus status;

    status = plugin.registerNode(tqSarn::typeName, tqSarn::id, tqSarn::creator, tqSarn::initialize,
                                 MPxNode::kLocatorNode, &tqSarn::drawDbClassification);
    TQ_CHECK_STEP(status);

    status = MHWRender::MDrawRegistry::registerDrawOverrideCreator(tqSarn::drawDbClassification,
                                                                   tqSarnDrawOverride::registrantId,
                                                                   tqSarnDrawOverride::creator);
    TQ_CHECK_STEP(status);

    status = plugin.registerContextCommand(tqSarnContextCmd::commandName, tqSarnContextCmd::creator,
                                           tqSarnToolCmd::commandName, tqSarnToolCmd::creator,
                                           tqSarnToolCmd::newSyntax);
    TQ_CHECK_STEP(status);

    // A constraint by its class, but registered as a plain dependency node: it drives no
    // transform, it writes into the low mesh from compute.
    status = plugin.registerNode(tqTweakNode::typeName, tqTweakNode::id, tqTweakNode::creator,
                                 tqTweakNode::initialize, MPxNode::kDependNode);
    TQ_CHECK_STEP(status);

    status = plugin.registerCommand(tqPatchCmd::commandName, tqPatchCmd::creator, tqPatchCmd::newSyntax);
    TQ_CHECK_STEP(status);

    status = plugin.registerNode(tqPatchNode::typeName, tqPatchNode::id, tqPatchNode::creator,
                                 tqPatchNode::initialize, MPxNode::kDependNode);
    TQ_CHECK_STEP(status);

    MGlobal::displayInfo(tq::bannerText());
    return MStatus::kSuccess;
}

MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj, "Unknown", "Unknown", "Any");
    // Deliberate: not the reverse of registration. The store goes before its own draw
    // override, and the tweak node goes last though it was registered fourth; a failing step
    // (live nodes of a type) leaves every later one registered.
    MStatus status;

    status = plugin.deregisterNode(tqSarn::id);
    TQ_CHECK_STEP(status);

    status = MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(tqSarn::drawDbClassification,
                                                                     tqSarnDrawOverride::registrantId);
    TQ_CHECK_STEP(status);

    status = plugin.deregisterContextCommand(tqSarnContextCmd::commandName, tqSarnToolCmd::commandName);
    TQ_CHECK_STEP(status);

    status = plugin.deregisterCommand(tqPatchCmd::commandName);
    TQ_CHECK_STEP(status);

    status = plugin.deregisterNode(tqPatchNode::id);
    TQ_CHECK_STEP(status);

    status = plugin.deregisterNode(tqTweakNode::id);
    TQ_CHECK_STEP(status);

    return MStatus::kSuccess;
}
