// Entry points of the tool test plug-in.

#include "toolTestPlugin.h"

#include <maya/MFnPlugin.h>

PLUGIN_EXPORT MStatus initializePlugin(MObject obj)
{
    MStatus status;
    MFnPlugin plugin(obj, "tqSarn tests", "1.0", "Any", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = plugin.registerCommand("testSet", tooltest::TestSetCmd::creator, tooltest::TestSetCmd::newSyntax);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = plugin.registerCommand("testArgs", tooltest::TestArgsCmd::creator, tooltest::TestArgsCmd::newSyntax);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = plugin.registerContextCommand("testContext", tooltest::TestContextCmd::creator, "testToolCmd",
                                           tooltest::TestToolCmd::creator, tooltest::TestToolCmd::newSyntax);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    return MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj);
    MStatus status = plugin.deregisterContextCommand("testContext", "testToolCmd");
    CHECK_MSTATUS_AND_RETURN_IT(status);
    status = plugin.deregisterCommand("testArgs");
    CHECK_MSTATUS_AND_RETURN_IT(status);
    return plugin.deregisterCommand("testSet");
}
