#pragma once
// MItDag: walks the DAG below the world (or a given root), depth or breadth first, children
// in creation order, optionally only nodes of one kind.

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>

#include <vector>

class MItDag {
public:
    enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };

    MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid, MStatus* ReturnStatus = nullptr);
    ~MItDag();

    MStatus reset();
    MStatus reset(const MObject& object, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
    MStatus reset(const MDagPath& path, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
    MStatus next();
    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MObject currentItem(MStatus* ReturnStatus = nullptr);
    MObject item(MStatus* ReturnStatus = nullptr);
    MStatus getPath(MDagPath& path) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;
    unsigned int depth(MStatus* ReturnStatus = nullptr) const;
    MStatus prune();
    TraversalType getType(MStatus* ReturnStatus = nullptr) const;

private:
    void build(const MDagPath* root);
    std::vector<MDagPath> fItems;
    std::size_t fPos = 0;
    TraversalType fType = kDepthFirst;
    MFn::Type fFilter = MFn::kInvalid;
};
