#include <maya/MItDag.h>

#include "dg/access.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"

#include <deque>

using host::Access;
using host::NodeBody;

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* ReturnStatus) : fType(type), fFilter(filter)
{
    build(nullptr);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
}

MItDag::~MItDag() = default;

void MItDag::build(const MDagPath* root)
{
    fItems.clear();
    fPos = 0;
    std::vector<MDagPath> order;
    std::vector<NodeBody*> starts;
    if (root && root->isValid()) {
        order.push_back(*root);
        starts = Access::node(root->node())->children;
    } else {
        starts = host::Scene::current().world()->children;
    }
    if (fType == kBreadthFirst) {
        std::deque<NodeBody*> queue(starts.begin(), starts.end());
        while (!queue.empty()) {
            NodeBody* n = queue.front();
            queue.pop_front();
            order.push_back(Access::pathTo(n));
            queue.insert(queue.end(), n->children.begin(), n->children.end());
        }
    } else {
        std::vector<NodeBody*> stack(starts.rbegin(), starts.rend());
        while (!stack.empty()) {
            NodeBody* n = stack.back();
            stack.pop_back();
            order.push_back(Access::pathTo(n));
            stack.insert(stack.end(), n->children.rbegin(), n->children.rend());
        }
    }
    for (const MDagPath& path : order)
        if (fFilter == MFn::kInvalid || path.hasFn(fFilter))
            fItems.push_back(path);
}

MStatus MItDag::reset()
{
    build(nullptr);
    return MStatus::kSuccess;
}

MStatus MItDag::reset(const MObject& object, TraversalType type, MFn::Type filter)
{
    fType = type;
    fFilter = filter;
    MDagPath p;
    if (!MDagPath::getAPathTo(object, p))
        return MStatus::kInvalidParameter;
    build(&p);
    return MStatus::kSuccess;
}

MStatus MItDag::reset(const MDagPath& path, TraversalType type, MFn::Type filter)
{
    fType = type;
    fFilter = filter;
    build(&path);
    return MStatus::kSuccess;
}

MStatus MItDag::next()
{
    if (fPos >= fItems.size())
        return MStatus::kFailure;
    ++fPos;
    return MStatus::kSuccess;
}

bool MItDag::isDone(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fPos >= fItems.size();
}

MObject MItDag::currentItem(MStatus* ReturnStatus) { return item(ReturnStatus); }

MObject MItDag::item(MStatus* ReturnStatus)
{
    if (fPos >= fItems.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kFailure);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fItems[fPos].node();
}

MStatus MItDag::getPath(MDagPath& path) const
{
    if (fPos >= fItems.size())
        return MStatus::kFailure;
    path = fItems[fPos];
    return MStatus::kSuccess;
}

MString MItDag::fullPathName(MStatus* ReturnStatus) const
{
    MDagPath p;
    MStatus st = getPath(p);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return st ? p.fullPathName() : MString();
}

MString MItDag::partialPathName(MStatus* ReturnStatus) const
{
    MDagPath p;
    MStatus st = getPath(p);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return st ? p.partialPathName() : MString();
}

unsigned int MItDag::depth(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fPos < fItems.size() ? MStatus::kSuccess : MStatus::kFailure);
    return fPos < fItems.size() ? fItems[fPos].length() : 0u;
}

MStatus MItDag::prune()
{
    if (fPos >= fItems.size())
        return MStatus::kFailure;
    if (fType != kDepthFirst)
        return MStatus::kSuccess;
    // Skip everything below the current item: in depth-first order it follows directly.
    unsigned int depth = fItems[fPos].length();
    std::size_t end = fPos + 1;
    while (end < fItems.size() && fItems[end].length() > depth)
        ++end;
    fItems.erase(fItems.begin() + fPos + 1, fItems.begin() + end);
    return MStatus::kSuccess;
}

MItDag::TraversalType MItDag::getType(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return fType;
}
