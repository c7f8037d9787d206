#pragma once
// MSelectionList: a list of nodes, DAG paths with optional components, and plugs. add()
// takes names, full and partial paths, "node.attr" plugs and component strings such as
// "|t|shape.vtx[3]" or "shape.f[2:5]"; "*" matches any run of characters in a name.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <vector>

class MSelectionList {
public:
    enum MergeStrategy { kMergeNormal = 0, kXORWithList, kRemoveFromList };

    MSelectionList();
    MSelectionList(const MSelectionList& src);
    ~MSelectionList();
    MSelectionList& operator=(const MSelectionList& other);

    MStatus clear();
    bool isEmpty(MStatus* ReturnStatus = nullptr) const;
    unsigned int length(MStatus* ReturnStatus = nullptr) const;

    MStatus getDependNode(unsigned int index, MObject& depNode) const;
    MStatus getDagPath(unsigned int index, MDagPath& dagPath, MObject& component) const;
    MStatus getDagPath(unsigned int index, MDagPath& dagPath) const;
    MStatus getPlug(unsigned int index, MPlug& plug) const;
    MStatus getSelectionStrings(MStringArray& array) const;
    MStatus getSelectionStrings(unsigned int index, MStringArray& array) const;

    MStatus add(const MString& matchString, bool searchChildNamespacesToo = false);
    MStatus add(const MObject& object, bool mergeWithExisting = false);
    MStatus add(const MDagPath& object, const MObject& component = MObject::kNullObj,
                bool mergeWithExisting = false);
    MStatus add(const MPlug& plug, bool mergeWithExisting = true);
    MStatus merge(const MSelectionList& other, MergeStrategy strategy = kMergeNormal);
    MStatus remove(unsigned int index);
    MStatus replace(unsigned int index, const MObject& item);
    MStatus toggle(const MDagPath& object, const MObject& component);
    bool hasItem(const MObject& item, MStatus* ReturnStatus = nullptr) const;
    bool hasItem(const MDagPath& item, const MObject& component = MObject::kNullObj,
                 MStatus* ReturnStatus = nullptr) const;

private:
    friend class host::Access;
    struct Item {
        MObject node;      // DG nodes
        MDagPath path;     // DAG nodes
        MObject component; // optional, with a path
        MPlug plug;        // plugs
        int kind = 0;      // 0 node, 1 path, 2 plug
    };
    std::vector<Item> fItems;
};
