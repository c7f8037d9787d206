// A plug-in whose initializePlugin throws after registering one node type.

#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

#include <stdexcept>

namespace {

class ThrowFirstNode : public MPxNode {
public:
    static void* creator() { return new ThrowFirstNode; }
    static MStatus initialize()
    {
        MStatus status;
        MFnNumericAttribute nAttr;
        value = nAttr.create("value", "v", MFnNumericData::kDouble, 0.0, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        return addAttribute(value);
    }
    static MObject value;
};
MObject ThrowFirstNode::value;

const MTypeId kThrowFirstId(0x7F190);

} // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject obj)
{
    MFnPlugin plugin(obj, "tqSarn tests", "1.0", "Any");
    CHECK_MSTATUS_AND_RETURN_IT(
        plugin.registerNode("throwFirst", kThrowFirstId, ThrowFirstNode::creator, ThrowFirstNode::initialize));
    throw std::runtime_error("throwPlugin fails on purpose");
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj);
    if (MFnPlugin::isNodeRegistered("throwFirst"))
        CHECK_MSTATUS_AND_RETURN_IT(plugin.deregisterNode(kThrowFirstId));
    return MS::kSuccess;
}
