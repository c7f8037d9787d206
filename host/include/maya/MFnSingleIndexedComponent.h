#pragma once
// MFnSingleIndexedComponent: components whose elements are one index each. Makes and reads
// mesh vertex, edge and polygon components. Elements keep the order they were added in,
// repeats included; iterators over the component visit them in that order.

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

class MFnSingleIndexedComponent : public MFnComponent {
    TQHOST_DECLARE_MFN(MFnSingleIndexedComponent, MFnComponent)

    // A new, empty component of kMeshVertComponent, kMeshEdgeComponent or
    // kMeshPolygonComponent; the function set attaches to it.
    MObject create(MFn::Type compType, MStatus* ReturnStatus = nullptr);

    MStatus addElement(int element);
    // Adds all the elements, or none when any is negative.
    MStatus addElements(MIntArray& elements);

    // The largest element index, -1 when there is none.
    int elementMax(MStatus* ReturnStatus = nullptr) const;
    // The element at a position of the list (of 0 .. count-1 for a complete component).
    int element(int index, MStatus* ReturnStatus = nullptr) const;
    MStatus getElements(MIntArray& elements) const;

    // Makes the component complete over numElements elements.
    MStatus setCompleteData(int numElements);
    // numElements of a complete component; 0 for one that is not complete.
    MStatus getCompleteData(int& numElements) const;
};
