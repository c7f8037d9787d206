#include "store/storeLookup.h"

#include "store/logModules.h"
#include "store/tqSarn.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

namespace tq {

namespace {
constexpr const char* kModule = logModule::kFunctions;
} // namespace

MObject findStoreNode()
{
    // Every plug-in node kind reports kPluginDependNode (459); the store is told apart by
    // its attribute rather than its type, the test the tweak node makes as well.
    MItDependencyNodes it(MFn::kPluginDependNode);
    for (; !it.isDone(); it.next()) {
        MObject node = it.thisNode();
        MFnDependencyNode fn(node);
        if (fn.hasAttribute(storeAttr::kSarnMesh))
            return node;
    }
    return MObject::kNullObj;
}

MDagPath getSourceMeshPath(MStatus& status)
{
    status = MStatus::kSuccess;
    MDagPath path;
    MObject store = findStoreNode();
    if (store.isNull())
        return path;
    MFnDependencyNode fn(store);
    MPlug plug = fn.findPlug(storeAttr::kSarnMesh, false, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__);
        return path;
    }
    MPlugArray connected;
    plug.connectedTo(connected, true, true, &status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__);
        return path;
    }
    if (connected.length() == 0)
        return path;
    MObject meshNode = connected[0].node();
    MFnMesh meshFn(meshNode, &status); // only a check that the source is a mesh
    if (!status) {
        status.pAPIerror(kModule, __LINE__);
        return path;
    }
    status = MDagPath::getAPathTo(meshNode, path);
    if (!status)
        status.pAPIerror(kModule, __LINE__);
    return path;
}

MDagPath getActiveMeshPath()
{
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    if (selection.length() == 0)
        return MDagPath();
    MDagPath path;
    if (!selection.getDagPath(0, path))
        return MDagPath();
    MDagPath shape(path);
    if (!shape.extendToShape() || !shape.hasFn(MFn::kMesh))
        return MDagPath();
    return shape;
}

} // namespace tq
