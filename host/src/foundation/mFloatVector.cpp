#include <maya/MFloatVector.h>

#include <maya/MFloatMatrix.h>
#include <maya/MMatrix.h>

#include <cmath>
#include <ostream>

const MFloatVector MFloatVector::zero(0.0f, 0.0f, 0.0f);
const MFloatVector MFloatVector::one(1.0f, 1.0f, 1.0f);
const MFloatVector MFloatVector::xAxis(1.0f, 0.0f, 0.0f);
const MFloatVector MFloatVector::yAxis(0.0f, 1.0f, 0.0f);
const MFloatVector MFloatVector::zAxis(0.0f, 0.0f, 1.0f);
const MFloatVector MFloatVector::xNegAxis(-1.0f, 0.0f, 0.0f);
const MFloatVector MFloatVector::yNegAxis(0.0f, -1.0f, 0.0f);
const MFloatVector MFloatVector::zNegAxis(0.0f, 0.0f, -1.0f);

MFloatVector MFloatVector::operator*(const MFloatMatrix& m) const
{
    const auto& a = m.matrix;
    return MFloatVector(x * a[0][0] + y * a[1][0] + z * a[2][0], x * a[0][1] + y * a[1][1] + z * a[2][1],
                        x * a[0][2] + y * a[1][2] + z * a[2][2]);
}

MFloatVector& MFloatVector::operator*=(const MFloatMatrix& m)
{
    *this = *this * m;
    return *this;
}

MFloatVector operator*(const MFloatMatrix& m, const MFloatVector& v)
{
    const auto& a = m.matrix;
    return MFloatVector(a[0][0] * v.x + a[0][1] * v.y + a[0][2] * v.z, a[1][0] * v.x + a[1][1] * v.y + a[1][2] * v.z,
                        a[2][0] * v.x + a[2][1] * v.y + a[2][2] * v.z);
}

float MFloatVector::angle(const MFloatVector& other) const
{
    return static_cast<float>(MVector(*this).angle(MVector(other)));
}

bool MFloatVector::isParallel(const MFloatVector& other, float tolerance) const
{
    if (length() == 0.0f || other.length() == 0.0f)
        return true;
    const MFloatVector a = normal();
    const MFloatVector b = other.normal();
    return a.isEquivalent(b, tolerance) || a.isEquivalent(-b, tolerance);
}

MFloatVector MFloatVector::transformAsNormal(const MFloatMatrix& matrix) const
{
    return MFloatVector(MVector(*this).transformAsNormal(MMatrix(matrix.matrix)));
}

std::ostream& operator<<(std::ostream& os, const MFloatVector& v)
{
    return os << '[' << v.x << ", " << v.y << ", " << v.z << ']';
}

const char* MFloatVector::className() { return "MFloatVector"; }
