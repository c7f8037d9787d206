#pragma once
// MItSelectionList: walks the items of a selection list, optionally only those whose node
// (or, for a DAG item, the one shape below it) is of a given function-set type. The list is
// copied when the iterator is made, so later edits of the original do not reach the walk.

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>

#include <vector>

class MItSelectionList {
public:
    enum selItemType { kUnknownItem = -1, kDagSelectionItem, kAnimSelectionItem, kDNselectionItem, kPlugSelectionItem };

    MItSelectionList(const MSelectionList& list, MFn::Type = MFn::kInvalid, MStatus* ReturnStatus = nullptr);
    virtual ~MItSelectionList();

    bool isDone(MStatus* ReturnStatus = nullptr);
    MStatus next();
    MStatus reset();
    MStatus getDependNode(MObject& depNode);
    MStatus getDagPath(MDagPath& dagPath, MObject& component);
    MStatus getDagPath(MDagPath& dagPath);
    MStatus getPlug(MPlug& plug);
    MStatus getStrings(MStringArray& array);
    selItemType itemType(MStatus* ReturnStatus = nullptr);
    MStatus setFilter(MFn::Type filter);
    bool hasComponents(MStatus* ReturnStatus = nullptr) const;

    static const char* className();

private:
    struct Entry {
        unsigned int index = 0;
        MDagPath path;  // the item's path, or the shape below it that passed the filter
        bool isDag = false;
    };
    void rebuild();

    MSelectionList fList;
    MFn::Type fFilter;
    std::vector<Entry> fEntries;
    std::size_t fPos = 0;
};
