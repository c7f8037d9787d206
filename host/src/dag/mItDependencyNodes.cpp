#include <maya/MItDependencyNodes.h>

#include "dg/access.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* ReturnStatus)
{
    reset(filter);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
}

MItDependencyNodes::~MItDependencyNodes() = default;

MStatus MItDependencyNodes::reset(MFn::Type filter)
{
    fItems.clear();
    fPos = 0;
    // A snapshot in creation order, filtered through hasFn so derived kinds match.
    for (const host::NodePtr& n : host::Scene::current().nodes()) {
        MObject o = host::Access::object(n);
        if (filter == MFn::kInvalid || o.hasFn(filter))
            fItems.push_back(o);
    }
    return MStatus::kSuccess;
}

MStatus MItDependencyNodes::next()
{
    if (fPos >= fItems.size())
        return MStatus::kFailure;
    ++fPos;
    return MStatus::kSuccess;
}

bool MItDependencyNodes::isDone(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fPos >= fItems.size();
}

MObject MItDependencyNodes::item(MStatus* ReturnStatus) const
{
    if (fPos >= fItems.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fItems[fPos];
}

MObject MItDependencyNodes::thisNode(MStatus* ReturnStatus) const { return item(ReturnStatus); }
