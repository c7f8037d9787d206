#pragma once
// MPlug: one attribute of one node, with the logical indices of the array levels on its
// path. Reading a plug evaluates the graph as needed; writing one marks what it affects
// dirty.

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MPlugArray;
class MDataHandle;
class MIntArray;
class MDGContext;

class MPlug {
public:
    MPlug();
    MPlug(const MPlug& other);
    MPlug(const MObject& node, const MObject& attribute);
    ~MPlug();
    MPlug& operator=(const MPlug& other);

    MObject attribute(MStatus* ReturnStatus = nullptr) const;
    MObject node(MStatus* ReturnStatus = nullptr) const;
    MString name(MStatus* ReturnStatus = nullptr) const;
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false,
                        bool useFullAttributePath = false, bool useLongNames = false,
                        MStatus* ReturnStatus = nullptr) const;
    MString info(MStatus* ReturnStatus = nullptr) const;

    bool isNull(MStatus* ReturnStatus = nullptr) const;
    bool isArray(MStatus* ReturnStatus = nullptr) const;
    bool isElement(MStatus* ReturnStatus = nullptr) const;
    bool isCompound(MStatus* ReturnStatus = nullptr) const;
    bool isChild(MStatus* ReturnStatus = nullptr) const;
    bool isConnected(MStatus* ReturnStatus = nullptr) const;
    bool isSource(MStatus* ReturnStatus = nullptr) const;
    bool isDestination(MStatus* ReturnStatus = nullptr) const;
    bool isNetworked(MStatus* ReturnStatus = nullptr) const;
    bool isKeyable(MStatus* ReturnStatus = nullptr) const;
    bool isDynamic(MStatus* ReturnStatus = nullptr) const;

    unsigned int logicalIndex(MStatus* ReturnStatus = nullptr) const;
    MPlug elementByLogicalIndex(unsigned int logicalIndex, MStatus* ReturnStatus = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int physicalIndex, MStatus* ReturnStatus = nullptr) const;
    unsigned int numElements(MStatus* ReturnStatus = nullptr) const;
    unsigned int evaluateNumElements(MStatus* ReturnStatus = nullptr);
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* ReturnStatus = nullptr);
    MPlug array(MStatus* ReturnStatus = nullptr) const;
    unsigned int numChildren(MStatus* ReturnStatus = nullptr) const;
    MPlug child(const MObject& attr, MStatus* ReturnStatus = nullptr) const;
    MPlug child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MPlug parent(MStatus* ReturnStatus = nullptr) const;

    bool connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* ReturnStatus = nullptr) const;
    MPlug source(MStatus* ReturnStatus = nullptr) const;
    MPlug sourceWithConversion(MStatus* ReturnStatus = nullptr) const;
    bool destinations(MPlugArray& theDestinations, MStatus* ReturnStatus = nullptr) const;
    bool destinationsWithConversions(MPlugArray& theDestinations, MStatus* ReturnStatus = nullptr) const;

    MStatus getValue(MObject& val) const;
    MStatus getValue(double& val) const;
    MStatus getValue(float& val) const;
    MStatus getValue(int& val) const;
    MStatus getValue(short& val) const;
    MStatus getValue(bool& val) const;
    MStatus getValue(MString& val) const;
    MStatus setValue(const MObject& val);
    MStatus setValue(double val);
    MStatus setValue(float val);
    MStatus setValue(int val);
    MStatus setValue(short val);
    MStatus setValue(bool val);
    MStatus setValue(const MString& val);
    MStatus setValue(const char* val);
    MStatus setValue(MDataHandle& handle);

    bool asBool(MStatus* ReturnStatus = nullptr) const;
    char asChar(MStatus* ReturnStatus = nullptr) const;
    short asShort(MStatus* ReturnStatus = nullptr) const;
    int asInt(MStatus* ReturnStatus = nullptr) const;
    float asFloat(MStatus* ReturnStatus = nullptr) const;
    double asDouble(MStatus* ReturnStatus = nullptr) const;
    MString asString(MStatus* ReturnStatus = nullptr) const;
    MObject asMObject(MStatus* ReturnStatus = nullptr) const;
    MDataHandle asMDataHandle(MStatus* ReturnStatus = nullptr) const;
    void destructHandle(MDataHandle& handle) const;

    MStatus setBool(bool value);
    MStatus setChar(char value);
    MStatus setShort(short value);
    MStatus setInt(int value);
    MStatus setFloat(float value);
    MStatus setDouble(double value);
    MStatus setString(const MString& value);
    MStatus setMObject(const MObject& value);
    MStatus setMDataHandle(const MDataHandle& handle);

    bool operator==(const MPlug& other) const;
    bool operator==(const MObject& attribute) const;
    bool operator!=(const MPlug& other) const;
    bool operator!=(const MObject& attribute) const;
    MPlug operator[](const MObject& attr) const;
    MPlug operator[](unsigned int index) const;
    operator MObject() const;

private:
    friend class host::Access;
    MObject fNode;
    MObject fAttr;
    std::vector<unsigned int> fIndices;
};
