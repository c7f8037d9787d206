#pragma once
// MArrayDataHandle: walks the elements of an array attribute in a data block, in logical
// index order.

#include <maya/MArrayDataBuilder.h>
#include <maya/MDataHandle.h>
#include <maya/MStatus.h>

#include <vector>

class MArrayDataHandle {
public:
    MArrayDataHandle(const MDataHandle& in, MStatus* ReturnStatus = nullptr);
    MArrayDataHandle(const MArrayDataHandle& other);
    MArrayDataHandle& operator=(const MArrayDataHandle& other);
    ~MArrayDataHandle();

    MDataHandle inputValue(MStatus* ReturnStatus = nullptr);
    MDataHandle outputValue(MStatus* ReturnStatus = nullptr);
    MArrayDataHandle inputArrayValue(MStatus* ReturnStatus = nullptr);
    MArrayDataHandle outputArrayValue(MStatus* ReturnStatus = nullptr);
    MStatus next();
    unsigned int elementCount(MStatus* ReturnStatus = nullptr);
    unsigned int elementIndex(MStatus* ReturnStatus = nullptr);
    MStatus jumpToElement(unsigned int index);
    MStatus jumpToArrayElement(unsigned int position);
    MStatus setClean();
    MStatus setAllClean();
    MArrayDataBuilder builder(MStatus* ReturnStatus = nullptr);
    MStatus set(MArrayDataBuilder& builder);

private:
    friend class host::Access;
    MArrayDataHandle();
    void refresh();
    MDataHandle elementHandle(bool input, MStatus* ReturnStatus);

    host::NodeBody* fNode = nullptr;
    const host::AttributeBody* fAttr = nullptr;
    std::vector<unsigned int> fIndices; // the array plug's own indices
    std::vector<unsigned int> fElements;
    unsigned int fPosition = 0;
};
