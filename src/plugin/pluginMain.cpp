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
#include "kernel/entryBarrier.h"
#include "nodes/tqSarnContextCmd.h"
#include "nodes/tqTweakNode.h"
#include "patchnode/tqPatchCmd.h"
#include "patchnode/tqPatchNode.h"
#include "plugin/banner.h"
#include "store/logModules.h"
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

namespace {

constexpr const char* kModule = "pluginMain";

// What the host calls through the registrations below, each inside the entry barrier: a
// creator that throws makes nothing, an initialize or syntax function that throws fails.
void* storeCreator() { return tq::guardValue<void*>(tq::logModule::kTool, "tqSarn creator", nullptr, tqSarn::creator); }
MStatus storeInitialize() { return tq::guardEntryPoint(tq::logModule::kTool, "tqSarn initialize", tqSarn::initialize); }
MHWRender::MPxDrawOverride* drawOverrideCreator(const MObject& obj)
{
    return tq::guardValue<MHWRender::MPxDrawOverride*>(tq::logModule::kTool, "tqSarnDrawOverride creator", nullptr,
                                                       [&] { return tqSarnDrawOverride::creator(obj); });
}
void* contextCommandCreator()
{
    return tq::guardValue<void*>(tq::logModule::kTool, "tqSarnContext creator", nullptr, tqSarnContextCmd::creator);
}
void* toolCommandCreator()
{
    return tq::guardValue<void*>(tq::logModule::kToolCommand, "tqSarnCmd creator", nullptr, tqSarnToolCmd::creator);
}
MSyntax toolCommandSyntax()
{
    return tq::guardValue(tq::logModule::kToolCommand, "tqSarnCmd syntax", MSyntax(), tqSarnToolCmd::newSyntax);
}
void* patchCommandCreator()
{
    return tq::guardValue<void*>(tq::logModule::kPatchNode, "tqPatchCmd creator", nullptr, tqPatchCmd::creator);
}
MSyntax patchCommandSyntax()
{
    return tq::guardValue(tq::logModule::kPatchNode, "tqPatchCmd syntax", MSyntax(), tqPatchCmd::newSyntax);
}
void* patchNodeCreator()
{
    return tq::guardValue<void*>(tq::logModule::kPatchNode, "tqPatchNode creator", nullptr, tqPatchNode::creator);
}
MStatus patchNodeInitialize()
{
    return tq::guardEntryPoint(tq::logModule::kPatchNode, "tqPatchNode initialize", tqPatchNode::initialize);
}

MStatus registerAll(MObject obj)
{
    MFnPlugin plugin(obj, "Halvane", "0.97", "Any");
    MStatus status;

    status = plugin.registerNode(tqSarn::typeName, tqSarn::id, storeCreator, storeInitialize, MPxNode::kLocatorNode,
                                 &tqSarn::drawDbClassification);
    TQ_CHECK_STEP(status);

    status = MHWRender::MDrawRegistry::registerDrawOverrideCreator(tqSarn::drawDbClassification,
                                                                   tqSarnDrawOverride::registrantId,
                                                                   drawOverrideCreator);
    TQ_CHECK_STEP(status);

    status = plugin.registerContextCommand(tqSarnContextCmd::commandName, contextCommandCreator,
                                           tqSarnToolCmd::commandName, toolCommandCreator, toolCommandSyntax);
    TQ_CHECK_STEP(status);

    // A constraint by its class, but registered as a plain dependency node: it drives no
    // transform, it writes into the low mesh from compute.
    status = plugin.registerNode(tqTweakNode::typeName, tqTweakNode::id, tqTweakNode::creator,
                                 tqTweakNode::initialize, MPxNode::kDependNode);
    TQ_CHECK_STEP(status);

    status = plugin.registerCommand(tqPatchCmd::commandName, patchCommandCreator, patchCommandSyntax);
    TQ_CHECK_STEP(status);

    status = plugin.registerNode(tqPatchNode::typeName, tqPatchNode::id, patchNodeCreator, patchNodeInitialize,
                                 MPxNode::kDependNode);
    TQ_CHECK_STEP(status);

    MGlobal::displayInfo(tq::bannerText());
    return MStatus::kSuccess;
}

MStatus deregisterAll(MObject obj)
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

} // namespace

MStatus initializePlugin(MObject obj)
{
    return tq::guardEntryPoint(kModule, "initializePlugin", [&] { return registerAll(obj); });
}

MStatus uninitializePlugin(MObject obj)
{
    return tq::guardEntryPoint(kModule, "uninitializePlugin", [&] { return deregisterAll(obj); });
}
