#pragma once
// MRichSelection: a selection with weights and symmetry. The host has no soft selection or
// symmetry: a rich selection holds the plain selection it was made from.

#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

class MRichSelection {
public:
    MRichSelection();
    MRichSelection(const MRichSelection& other);
    ~MRichSelection();
    MRichSelection& operator=(const MRichSelection& other);

    MStatus clear();
    MStatus getSelection(MSelectionList& selection) const;
    MStatus getSymmetry(MSelectionList& symmetry) const;
    MStatus setSelection(const MSelectionList& selection);

private:
    MSelectionList fSelection;
};
