#pragma once
// MArrayDataBuilder: adds and removes elements of an array attribute in a data block.

#include <maya/MDataHandle.h>
#include <maya/MStatus.h>

#include <vector>

class MArrayDataBuilder {
public:
    MArrayDataBuilder(const MArrayDataBuilder& other);
    MArrayDataBuilder& operator=(const MArrayDataBuilder& other);
    ~MArrayDataBuilder();

    MDataHandle addElement(unsigned int index, MStatus* ReturnStatus = nullptr);
    MDataHandle addLast(MStatus* ReturnStatus = nullptr);
    MStatus removeElement(unsigned int index);
    unsigned int elementCount(MStatus* ReturnStatus = nullptr) const;
    MStatus growArray(unsigned int amount);
    MStatus setGrowSize(unsigned int size);

private:
    friend class host::Access;
    MArrayDataBuilder();
    host::NodeBody* fNode = nullptr;
    const host::AttributeBody* fAttr = nullptr;
    std::vector<unsigned int> fIndices;
};
