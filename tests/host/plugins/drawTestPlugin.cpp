// The draw test plug-in: the drawTestLocator node and its draw override.

#include "drawTestLocator.h"

#include <maya/MDrawRegistry.h>
#include <maya/MFnPlugin.h>
#include <maya/MString.h>

PLUGIN_EXPORT MStatus initializePlugin(MObject obj)
{
    MStatus status;
    MFnPlugin plugin(obj, "tqSarn tests", "1.0", "Any", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    const MString classification(DrawTestLocator::drawClassification);
    status = plugin.registerNode(DrawTestLocator::typeName, DrawTestLocator::id, DrawTestLocator::creator,
                                 DrawTestLocator::initialize, MPxNode::kLocatorNode, &classification);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = MHWRender::MDrawRegistry::registerDrawOverrideCreator(DrawTestLocator::drawClassification,
                                                                   DrawTestLocator::drawRegistrant,
                                                                   createDrawTestOverride);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    return MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj);
    MStatus status = MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(DrawTestLocator::drawClassification,
                                                                             DrawTestLocator::drawRegistrant);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = plugin.deregisterNode(DrawTestLocator::id);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    return MS::kSuccess;
}
