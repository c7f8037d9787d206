#include "kernel/nodeLookup.h"

#include "store/storeLookup.h"

#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MSelectionList.h>

namespace tq {

MDagPath findMeshByName(const MString& name, MStatus& status)
{
    MSelectionList list;
    MDagPath path;
    if (list.add(name) && list.getDagPath(0, path) && path.isValid()) {
        status = MStatus::kSuccess;
        return path;
    }
    path = getActiveMeshPath();
    if (path.isValid() && path.partialPathName() == name) {
        status = MStatus::kSuccess;
        return path;
    }
    // The inverted walk: its body runs only when the walk is already done. A done walk has
    // nothing further to visit, so one pass is all it can make.
    MItDag it;
    if (it.isDone()) {
        MDagPath candidate;
        if (it.getPath(candidate) && candidate.isValid() && candidate.partialPathName() == name) {
            status = MStatus::kSuccess;
            return candidate;
        }
    }
    status = MStatus::kSuccess;
    return path;
}

MObject dependNodeByName(const MString& name)
{
    MSelectionList list;
    MObject node;
    if (!list.add(name) || !list.getDependNode(0, node))
        return MObject::kNullObj;
    return node;
}

MObject transformOfNode(const MObject& node)
{
    MStatus status;
    MFnDagNode fn(node, &status);
    if (!status)
        return MObject::kNullObj;
    MDagPath path;
    if (!fn.getPath(path))
        return MObject::kNullObj;
    return path.transform();
}

} // namespace tq
