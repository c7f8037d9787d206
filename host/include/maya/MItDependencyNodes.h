#pragma once
// MItDependencyNodes: walks every node of the scene in creation order, optionally only
// nodes of one kind (matched through hasFn).

#include <maya/MFn.h>
#include <maya/MObject.h>

#include <vector>

class MItDependencyNodes {
public:
    MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* ReturnStatus = nullptr);
    ~MItDependencyNodes();

    MStatus reset(MFn::Type filter = MFn::kInvalid);
    MStatus next();
    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MObject item(MStatus* ReturnStatus = nullptr) const;
    MObject thisNode(MStatus* ReturnStatus = nullptr) const;

private:
    std::vector<MObject> fItems;
    std::size_t fPos = 0;
};
