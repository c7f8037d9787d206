// A plug-in whose third registration takes the name of a built-in node type: its
// initializePlugin fails at that step, after two registrations that succeeded.

#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

namespace {

class ClashNode : public MPxNode {
public:
    static void* creator() { return new ClashNode; }
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
MObject ClashNode::value;

const MTypeId kFirstId(0x7F180);
const MTypeId kSecondId(0x7F181);
const MTypeId kClashingId(0x7F182);

} // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject obj)
{
    MFnPlugin plugin(obj, "tqSarn tests", "1.0", "Any");
    CHECK_MSTATUS_AND_RETURN_IT(
        plugin.registerNode("clashFirst", kFirstId, ClashNode::creator, ClashNode::initialize));
    CHECK_MSTATUS_AND_RETURN_IT(
        plugin.registerNode("clashSecond", kSecondId, ClashNode::creator, ClashNode::initialize));
    CHECK_MSTATUS_AND_RETURN_IT(
        plugin.registerNode("transform", kClashingId, ClashNode::creator, ClashNode::initialize));
    return MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj)
{
    MFnPlugin plugin(obj);
    if (MFnPlugin::isNodeRegistered("clashSecond"))
        CHECK_MSTATUS_AND_RETURN_IT(plugin.deregisterNode(kSecondId));
    if (MFnPlugin::isNodeRegistered("clashFirst"))
        CHECK_MSTATUS_AND_RETURN_IT(plugin.deregisterNode(kFirstId));
    return MS::kSuccess;
}
