// The DG test plug-in: registers the node types of dgTestNodes.h and testMeshModifier.h, in the
// order below, and a draw override for the locator's classification.

#include "dgTestNodes.h"
#include "testMeshModifier.h"

#include <maya/MDrawRegistry.h>
#include <maya/MFnPlugin.h>
#include <maya/MString.h>

#include <iterator>

namespace {

struct NodeEntry {
    const char* name;
    const MTypeId* id;
    MCreatorFunction creator;
    MInitializeFunction initialize;
    MPxNode::Type type;
    const char* classification;
};

const NodeEntry kNodes[] = {
    {DgAttrKindsNode::typeName, &DgAttrKindsNode::id, DgAttrKindsNode::creator, DgAttrKindsNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgAffectsNode::typeName, &DgAffectsNode::id, DgAffectsNode::creator, DgAffectsNode::initialize,
     MPxNode::kDependNode, nullptr},
    {TestMeshModifierNode::typeName, &TestMeshModifierNode::id, TestMeshModifierNode::creator,
     TestMeshModifierNode::initialize, MPxNode::kDependNode, nullptr},
    {DgRefuseNode::typeName, &DgRefuseNode::id, DgRefuseNode::creator, DgRefuseNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgForgetfulNode::typeName, &DgForgetfulNode::id, DgForgetfulNode::creator, DgForgetfulNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgArraySumNode::typeName, &DgArraySumNode::id, DgArraySumNode::creator, DgArraySumNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgConnRecorderNode::typeName, &DgConnRecorderNode::id, DgConnRecorderNode::creator,
     DgConnRecorderNode::initialize, MPxNode::kDependNode, nullptr},
    {DgThrowerNode::typeName, &DgThrowerNode::id, DgThrowerNode::creator, DgThrowerNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgHooksNode::typeName, &DgHooksNode::id, DgHooksNode::creator, DgHooksNode::initialize,
     MPxNode::kDependNode, nullptr},
    {DgLocatorNode::typeName, &DgLocatorNode::id, DgLocatorNode::creator, DgLocatorNode::initialize,
     MPxNode::kLocatorNode, DgLocatorNode::drawClassification},
};

const char* const kOverrideRegistrant = "dgTestPluginOverride";
bool overrideRegistered = false;

// Nothing here draws; the registration itself is what the tests look at.
MHWRender::MPxDrawOverride* createLocatorOverride(const MObject&) { return nullptr; }

} // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject obj)
{
    MStatus status;
    MFnPlugin plugin(obj, "tqSarn tests", "2.5", "Any", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    for (const NodeEntry& node : kNodes) {
        MString classification(node.classification ? node.classification : "");
        status = plugin.registerNode(node.name, *node.id, node.creator, node.initialize, node.type,
                                     node.classification ? &classification : nullptr);
        CHECK_MSTATUS_AND_RETURN_IT(status);
    }
    status = MHWRender::MDrawRegistry::registerDrawOverrideCreator(DgLocatorNode::drawClassification,
                                                                   kOverrideRegistrant, createLocatorOverride);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    overrideRegistered = true;
    return MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj);
    // In reverse; a type already gone from an earlier, refused unload is skipped, so a
    // later unload can finish the job.
    for (auto it = std::rbegin(kNodes); it != std::rend(kNodes); ++it) {
        if (!MFnPlugin::isNodeRegistered(it->name))
            continue;
        MStatus status = plugin.deregisterNode(*it->id);
        if (!status)
            return status;
    }
    if (overrideRegistered) {
        MStatus status = MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(DgLocatorNode::drawClassification,
                                                                                 kOverrideRegistrant);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        overrideRegistered = false;
    }
    return MS::kSuccess;
}
