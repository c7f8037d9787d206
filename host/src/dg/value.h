#pragma once
// What one plug holds: a numeric value of up to four components, a data object
// (typed, generic and string attributes), or a matrix. Message attributes hold nothing.

#include <maya/MMatrix.h>
#include <maya/MObject.h>

namespace host {

struct Value {
    enum class Kind : unsigned char { kNone, kNumeric, kData, kMatrix };
    Kind kind = Kind::kNone;
    double num[4] = {0.0, 0.0, 0.0, 0.0};
    MObject data;
    MMatrix matrix;

    static Value numeric(double a, double b = 0.0, double c = 0.0, double d = 0.0)
    {
        Value v;
        v.kind = Kind::kNumeric;
        v.num[0] = a;
        v.num[1] = b;
        v.num[2] = c;
        v.num[3] = d;
        return v;
    }
    static Value ofData(const MObject& object)
    {
        Value v;
        v.kind = Kind::kData;
        v.data = object;
        return v;
    }
    static Value ofMatrix(const MMatrix& m)
    {
        Value v;
        v.kind = Kind::kMatrix;
        v.matrix = m;
        return v;
    }
};

} // namespace host
