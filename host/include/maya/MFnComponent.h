#pragma once
// MFnComponent: the base of the component function sets. A component names elements of a
// shape by kind (mesh vertices, edges, polygons) and index; a complete component names
// every element the shape has, however many that is.

#include <maya/MFnBase.h>

class MFnComponent : public MFnBase {
    TQHOST_DECLARE_MFN(MFnComponent, MFnBase)

    // The number of elements listed (repeats included); a complete component reports the
    // count given to setCompleteData, 0 when none was given.
    int elementCount(MStatus* ReturnStatus = nullptr) const;
    MFn::Type componentType(MStatus* ReturnStatus = nullptr) const;
    // True when the component names nothing: not complete and no elements.
    bool isEmpty(MStatus* ReturnStatus = nullptr) const;
    // Same kind and the same set of elements, order and repeats aside.
    bool isEqual(MObject& other, MStatus* ReturnStatus = nullptr) const;
    bool isComplete(MStatus* ReturnStatus = nullptr) const;
    MStatus setComplete(bool complete);
};
