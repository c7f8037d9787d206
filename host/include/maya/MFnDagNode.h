#pragma once
// MFnDagNode: creates DAG nodes and reads and edits their place in the hierarchy.

#include <maya/MBoundingBox.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>

class MDagPathArray;

class MFnDagNode : public MFnDependencyNode {
    TQHOST_DECLARE_MFN(MFnDagNode, MFnDependencyNode)

    enum { kNextPos = 0xff };

    MFnDagNode(const MDagPath& object, MStatus* ReturnStatus = nullptr);
    MStatus setObject(const MDagPath& path);
    MStatus setObject(MObject& object) override;
    MStatus setObject(const MObject& object) override;

    MObject create(const MTypeId& typeId, MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MTypeId& typeId, const MString& name, MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, const MString& name, MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);

    unsigned int parentCount(MStatus* ReturnStatus = nullptr) const;
    MObject parent(unsigned int i, MStatus* ReturnStatus = nullptr) const;
    MStatus addChild(MObject& child, unsigned int index = kNextPos, bool keepExistingParents = false);
    MStatus removeChild(MObject& child);
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int i, MStatus* ReturnStatus = nullptr) const;
    bool hasParent(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool hasChild(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool isChildOf(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool isParentOf(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool isInstanced(bool indirect = true, MStatus* ReturnStatus = nullptr) const;
    unsigned int instanceCount(bool total, MStatus* ReturnStatus = nullptr) const;

    MObject duplicate(bool instance = false, bool instanceLeaf = false, MStatus* ReturnStatus = nullptr) const;

    MStatus getPath(MDagPath& path) const;
    MStatus getAllPaths(MDagPathArray& paths) const;
    MDagPath dagPath(MStatus* ReturnStatus = nullptr) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;
    MMatrix transformationMatrix(MStatus* ReturnStatus = nullptr) const;
    bool isIntermediateObject(MStatus* ReturnStatus = nullptr) const;
    MStatus setIntermediateObject(bool isIntermediate);
    MBoundingBox boundingBox(MStatus* ReturnStatus = nullptr) const;

protected:
    MDagPath fPath; // set when attached through a path
};
