#pragma once
// MDataBlock: a node's values as its compute sees them. inputValue evaluates what is
// upstream; outputValue hands out the stored value for writing; setClean ends a plug's
// dirty state.

#include <maya/MArrayDataHandle.h>
#include <maya/MDGContext.h>
#include <maya/MDataHandle.h>
#include <maya/MStatus.h>

class MPlug;

class MDataBlock {
public:
    MDataBlock(const MDataBlock& other);
    MDataBlock& operator=(const MDataBlock& other);
    ~MDataBlock();

    MDataHandle inputValue(const MPlug& plug, MStatus* ReturnStatus = nullptr);
    MDataHandle inputValue(const MObject& attribute, MStatus* ReturnStatus = nullptr);
    MDataHandle outputValue(const MPlug& plug, MStatus* ReturnStatus = nullptr);
    MDataHandle outputValue(const MObject& attribute, MStatus* ReturnStatus = nullptr);
    MArrayDataHandle inputArrayValue(const MPlug& plug, MStatus* ReturnStatus = nullptr);
    MArrayDataHandle inputArrayValue(const MObject& attribute, MStatus* ReturnStatus = nullptr);
    MArrayDataHandle outputArrayValue(const MPlug& plug, MStatus* ReturnStatus = nullptr);
    MArrayDataHandle outputArrayValue(const MObject& attribute, MStatus* ReturnStatus = nullptr);
    MStatus setClean(const MPlug& plug);
    MStatus setClean(const MObject& attribute);
    bool isClean(const MObject& attribute, MStatus* ReturnStatus = nullptr);
    bool isClean(const MPlug& plug);
    MDGContext context(MStatus* ReturnStatus = nullptr);

private:
    friend class host::Access;
    MDataBlock();
    host::NodeBody* fNode = nullptr;
};
