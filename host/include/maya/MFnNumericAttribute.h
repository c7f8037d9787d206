#pragma once
// MFnNumericAttribute: attributes of numbers, with up to four components, defaults and
// hard and soft limits.

#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>

class MFnNumericAttribute : public MFnAttribute {
    TQHOST_DECLARE_MFN(MFnNumericAttribute, MFnAttribute)

    MObject create(const MString& fullName, const MString& briefName, MFnNumericData::Type unitType,
                   double defaultValue = 0, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, const MObject& child1,
                   const MObject& child2, const MObject& child3 = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject createColor(const MString& fullName, const MString& briefName, MStatus* ReturnStatus = nullptr);
    MObject createPoint(const MString& fullName, const MString& briefName, MStatus* ReturnStatus = nullptr);

    MFnNumericData::Type unitType(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    bool hasMin(MStatus* ReturnStatus = nullptr) const;
    bool hasMax(MStatus* ReturnStatus = nullptr) const;
    bool hasSoftMin(MStatus* ReturnStatus = nullptr) const;
    bool hasSoftMax(MStatus* ReturnStatus = nullptr) const;

    MStatus getMin(int& min1) const;
    MStatus getMin(float& min1) const;
    MStatus getMin(double& min1) const;
    MStatus getMin(double& min1, double& min2, double& min3) const;
    MStatus getMax(int& max1) const;
    MStatus getMax(float& max1) const;
    MStatus getMax(double& max1) const;
    MStatus getMax(double& max1, double& max2, double& max3) const;
    MStatus getSoftMin(double& min1) const;
    MStatus getSoftMax(double& max1) const;

    MStatus setMin(int min1);
    MStatus setMin(int min1, int min2);
    MStatus setMin(int min1, int min2, int min3);
    MStatus setMin(float min1);
    MStatus setMin(float min1, float min2);
    MStatus setMin(float min1, float min2, float min3);
    MStatus setMin(double min1);
    MStatus setMin(double min1, double min2);
    MStatus setMin(double min1, double min2, double min3);
    MStatus setMin(double min1, double min2, double min3, double min4);
    MStatus setMax(int max1);
    MStatus setMax(int max1, int max2);
    MStatus setMax(int max1, int max2, int max3);
    MStatus setMax(float max1);
    MStatus setMax(float max1, float max2);
    MStatus setMax(float max1, float max2, float max3);
    MStatus setMax(double max1);
    MStatus setMax(double max1, double max2);
    MStatus setMax(double max1, double max2, double max3);
    MStatus setMax(double max1, double max2, double max3, double max4);
    MStatus setSoftMin(double min1);
    MStatus setSoftMax(double max1);

    MStatus getDefault(bool& def1);
    MStatus getDefault(int& def1);
    MStatus getDefault(float& def1);
    MStatus getDefault(double& def1);
    MStatus getDefault(double& def1, double& def2, double& def3);
    MStatus getDefault(float& def1, float& def2, float& def3);
    MStatus setDefault(bool def1);
    MStatus setDefault(char def1);
    MStatus setDefault(short def1);
    MStatus setDefault(int def1);
    MStatus setDefault(int def1, int def2);
    MStatus setDefault(int def1, int def2, int def3);
    MStatus setDefault(float def1);
    MStatus setDefault(float def1, float def2);
    MStatus setDefault(float def1, float def2, float def3);
    MStatus setDefault(double def1);
    MStatus setDefault(double def1, double def2);
    MStatus setDefault(double def1, double def2, double def3);
    MStatus setDefault(double def1, double def2, double def3, double def4);
};
