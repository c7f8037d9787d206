#include <maya/MItSelectionList.h>

MItSelectionList::MItSelectionList(const MSelectionList& list, MFn::Type filter, MStatus* ReturnStatus)
    : fList(list)
    , fFilter(filter)
{
    rebuild();
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
}

MItSelectionList::~MItSelectionList() = default;

void MItSelectionList::rebuild()
{
    fEntries.clear();
    fPos = 0;
    for (unsigned int i = 0; i < fList.length(); ++i) {
        Entry e;
        e.index = i;
        MObject component;
        e.isDag = fList.getDagPath(i, e.path, component) && e.path.isValid();
        if (fFilter == MFn::kInvalid) {
            fEntries.push_back(e);
            continue;
        }
        MObject node;
        fList.getDependNode(i, node);
        if (!node.isNull() && node.hasFn(fFilter)) {
            fEntries.push_back(e);
            continue;
        }
        // A transform that does not match stands for the one shape below it that does.
        if (e.isDag) {
            MDagPath shape = e.path;
            if (shape.extendToShape() && shape.hasFn(fFilter)) {
                e.path = shape;
                fEntries.push_back(e);
            }
        }
    }
}

bool MItSelectionList::isDone(MStatus* ReturnStatus)
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return fPos >= fEntries.size();
}

MStatus MItSelectionList::next()
{
    if (fPos < fEntries.size())
        ++fPos;
    return MStatus::kSuccess;
}

MStatus MItSelectionList::reset()
{
    fPos = 0;
    return MStatus::kSuccess;
}

MStatus MItSelectionList::getDependNode(MObject& depNode)
{
    if (fPos >= fEntries.size())
        return MStatus::kFailure;
    const Entry& e = fEntries[fPos];
    if (e.isDag) {
        depNode = e.path.node();
        return MStatus::kSuccess;
    }
    return fList.getDependNode(e.index, depNode);
}

MStatus MItSelectionList::getDagPath(MDagPath& dagPath, MObject& component)
{
    if (fPos >= fEntries.size() || !fEntries[fPos].isDag)
        return MStatus::kFailure;
    MDagPath itemPath;
    MStatus st = fList.getDagPath(fEntries[fPos].index, itemPath, component);
    dagPath = fEntries[fPos].path;
    return st;
}

MStatus MItSelectionList::getDagPath(MDagPath& dagPath)
{
    MObject component;
    return getDagPath(dagPath, component);
}

MStatus MItSelectionList::getPlug(MPlug& plug)
{
    if (fPos >= fEntries.size())
        return MStatus::kFailure;
    return fList.getPlug(fEntries[fPos].index, plug);
}

MStatus MItSelectionList::getStrings(MStringArray& array)
{
    if (fPos >= fEntries.size())
        return MStatus::kFailure;
    return fList.getSelectionStrings(fEntries[fPos].index, array);
}

MItSelectionList::selItemType MItSelectionList::itemType(MStatus* ReturnStatus)
{
    if (fPos >= fEntries.size()) {
        if (ReturnStatus)
            *ReturnStatus = MStatus::kFailure;
        return kUnknownItem;
    }
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    MPlug plug;
    if (fList.getPlug(fEntries[fPos].index, plug) && !plug.isNull())
        return kPlugSelectionItem;
    return fEntries[fPos].isDag ? kDagSelectionItem : kDNselectionItem;
}

MStatus MItSelectionList::setFilter(MFn::Type filter)
{
    fFilter = filter;
    rebuild();
    return MStatus::kSuccess;
}

bool MItSelectionList::hasComponents(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = fPos < fEntries.size() ? MStatus::kSuccess : MStatus::kFailure;
    if (fPos >= fEntries.size() || !fEntries[fPos].isDag)
        return false;
    MDagPath path;
    MObject component;
    fList.getDagPath(fEntries[fPos].index, path, component);
    return !component.isNull();
}

const char* MItSelectionList::className() { return "MItSelectionList"; }
