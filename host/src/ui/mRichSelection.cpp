#include <maya/MRichSelection.h>

MRichSelection::MRichSelection() = default;
MRichSelection::MRichSelection(const MRichSelection& other) = default;
MRichSelection::~MRichSelection() = default;
MRichSelection& MRichSelection::operator=(const MRichSelection& other) = default;

MStatus MRichSelection::clear() { return fSelection.clear(); }

MStatus MRichSelection::getSelection(MSelectionList& selection) const
{
    selection = fSelection;
    return MStatus::kSuccess;
}

MStatus MRichSelection::getSymmetry(MSelectionList& symmetry) const
{
    symmetry.clear();
    return MStatus::kSuccess;
}

MStatus MRichSelection::setSelection(const MSelectionList& selection)
{
    fSelection = selection;
    return MStatus::kSuccess;
}
