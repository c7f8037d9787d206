#pragma once
// MDataHandle: a handle to one value in a node's data block (or a standalone value given
// out by MPlug::asMDataHandle). Numeric compounds expose their components as children.

#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MMatrix.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatVector.h>
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>
#include <vector>

class MPlug;

namespace host {
class NodeBody;
class AttributeBody;
struct Value;
} // namespace host

class MDataHandle {
public:
    MDataHandle();
    MDataHandle(const MDataHandle& other);
    MDataHandle& operator=(const MDataHandle& other);
    ~MDataHandle();

    bool isNumeric() const;
    bool isGeneric(bool& isNumeric, bool& isNull) const;
    MFnNumericData::Type numericType() const;
    MFnData::Type type() const;
    MObject attribute();

    bool& asBool() const;
    char& asChar() const;
    unsigned char& asUChar() const;
    short& asShort() const;
    int& asInt() const;
    float& asFloat() const;
    double& asDouble() const;
    double2& asDouble2() const;
    double3& asDouble3() const;
    float2& asFloat2() const;
    float3& asFloat3() const;
    int2& asInt2() const;
    int3& asInt3() const;
    short2& asShort2() const;
    short3& asShort3() const;
    MVector& asVector() const;
    MFloatVector& asFloatVector() const;
    MMatrix& asMatrix() const;
    MFloatMatrix& asFloatMatrix() const;
    MString& asString() const;
    MObject data();
    MObject asMesh() const;
    MObject asMeshTransformed() const;
    const MMatrix& geometryTransformMatrix() const;

    void set(bool val);
    void set(char val);
    void set(short val);
    void set(int val);
    void set(float val);
    void set(double val);
    void set(const MMatrix& val);
    void set(const MFloatMatrix& val);
    void set(const MVector& val);
    void set(const MFloatVector& val);
    void set(const MString& val);
    void set(double val1, double val2);
    void set(double val1, double val2, double val3);
    void set(float val1, float val2, float val3);
    void set(int val1, int val2, int val3);
    MStatus set(const MObject& val);
    void set2Double(double val1, double val2);
    void set3Double(double val1, double val2, double val3);
    void set3Float(float val1, float val2, float val3);
    void set3Int(int val1, int val2, int val3);

    void setBool(bool val);
    void setChar(char val);
    void setShort(short val);
    void setInt(int val);
    void setFloat(float val);
    void setDouble(double val);
    void setMMatrix(const MMatrix& val);
    void setMFloatMatrix(const MFloatMatrix& val);
    void setMVector(const MVector& val);
    void setMFloatVector(const MFloatVector& val);
    MStatus setMObject(const MObject& val);
    void setString(const MString& val);

    void setClean();
    MStatus copy(const MDataHandle& src);
    MStatus copyWritable(const MDataHandle& src);
    MDataHandle child(const MPlug& plug);
    MDataHandle child(const MObject& attribute);

private:
    friend class host::Access;
    struct Scratch;
    host::Value* value() const;
    double& component(int i) const;
    Scratch& scratch() const;
    void written();

    host::NodeBody* fNode = nullptr;
    const host::AttributeBody* fAttr = nullptr;
    std::vector<unsigned int> fIndices;
    std::shared_ptr<host::Value> fOwned; // standalone handles own their value
    host::Value* fValue = nullptr;
    int fComponent = -1; // >= 0: one component of a numeric compound
    mutable std::shared_ptr<Scratch> fScratch; // typed views handed out by reference, made on first use
};
