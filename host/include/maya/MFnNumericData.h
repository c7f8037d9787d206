#pragma once
// MFnNumericData: data objects of two to four numbers, for generic attributes and for
// reading numeric compounds as one object.

#include <maya/MFnData.h>

class MFnNumericData : public MFnData {
    TQHOST_DECLARE_MFN(MFnNumericData, MFnData)

    enum Type {
        kInvalid,
        kBoolean,
        kByte,
        kChar,
        kShort,
        k2Short,
        k3Short,
        kLong,
        kInt = kLong,
        k2Long,
        k2Int = k2Long,
        k3Long,
        k3Int = k3Long,
        kInt64,
        kFloat,
        k2Float,
        k3Float,
        kDouble,
        k2Double,
        k3Double,
        k4Double,
        kAddr,
        kLast
    };

    MObject create(Type dataType, MStatus* ReturnStatus = nullptr);
    Type numericType(MStatus* ReturnStatus = nullptr);

    MStatus getData2Short(short& val1, short& val2);
    MStatus getData2Int(int& val1, int& val2);
    MStatus getData2Float(float& val1, float& val2);
    MStatus getData2Double(double& val1, double& val2);
    MStatus getData3Short(short& val1, short& val2, short& val3);
    MStatus getData3Int(int& val1, int& val2, int& val3);
    MStatus getData3Float(float& val1, float& val2, float& val3);
    MStatus getData3Double(double& val1, double& val2, double& val3);
    MStatus getData4Double(double& val1, double& val2, double& val3, double& val4);
    MStatus setData2Short(short val1, short val2);
    MStatus setData2Int(int val1, int val2);
    MStatus setData2Float(float val1, float val2);
    MStatus setData2Double(double val1, double val2);
    MStatus setData3Short(short val1, short val2, short val3);
    MStatus setData3Int(int val1, int val2, int val3);
    MStatus setData3Float(float val1, float val2, float val3);
    MStatus setData3Double(double val1, double val2, double val3);
    MStatus setData4Double(double val1, double val2, double val3, double val4);

    MStatus getData(int& val1, int& val2, int& val3);
    MStatus getData(float& val1, float& val2, float& val3);
    MStatus getData(double& val1, double& val2, double& val3);
    MStatus setData(int val1, int val2, int val3);
    MStatus setData(float val1, float val2, float val3);
    MStatus setData(double val1, double val2, double val3);
};
