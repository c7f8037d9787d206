#include <maya/MVector.h>

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>

#include <cmath>
#include <ostream>

const MVector MVector::zero(0.0, 0.0, 0.0);
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);
const MVector MVector::xNegAxis(-1.0, 0.0, 0.0);
const MVector MVector::yNegAxis(0.0, -1.0, 0.0);
const MVector MVector::zNegAxis(0.0, 0.0, -1.0);

MVector MVector::operator*(const MMatrix& m) const
{
    const auto& a = m.matrix;
    return MVector(x * a[0][0] + y * a[1][0] + z * a[2][0], x * a[0][1] + y * a[1][1] + z * a[2][1],
                   x * a[0][2] + y * a[1][2] + z * a[2][2]);
}

MVector& MVector::operator*=(const MMatrix& m)
{
    *this = *this * m;
    return *this;
}

MVector operator*(const MMatrix& m, const MVector& v)
{
    const auto& a = m.matrix;
    return MVector(a[0][0] * v.x + a[0][1] * v.y + a[0][2] * v.z, a[1][0] * v.x + a[1][1] * v.y + a[1][2] * v.z,
                   a[2][0] * v.x + a[2][1] * v.y + a[2][2] * v.z);
}

MVector MVector::rotateBy(double qx, double qy, double qz, double qw) const
{
    return rotateBy(MQuaternion(qx, qy, qz, qw));
}

MVector MVector::rotateBy(MVector::Axis axis, const double angle) const
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    switch (axis) {
    case kXaxis: return MVector(x, y * c - z * s, y * s + z * c);
    case kYaxis: return MVector(x * c + z * s, y, -x * s + z * c);
    case kZaxis: return MVector(x * c - y * s, x * s + y * c, z);
    case kWaxis: break;
    }
    return *this;
}

MVector MVector::rotateBy(const MQuaternion& q) const { return *this * q.normal().asMatrix(); }

MVector MVector::rotateBy(const MEulerRotation& e) const { return *this * e.asMatrix(); }

MQuaternion MVector::rotateTo(const MVector& target) const { return MQuaternion(*this, target); }

double MVector::angle(const MVector& other) const
{
    if (length() == 0.0 || other.length() == 0.0)
        return 0.0;
    return std::atan2((*this ^ other).length(), *this * other);
}

bool MVector::isParallel(const MVector& other, double tolerance) const
{
    if (length() == 0.0 || other.length() == 0.0)
        return true;
    const MVector a = normal();
    const MVector b = other.normal();
    return a.isEquivalent(b, tolerance) || a.isEquivalent(-b, tolerance);
}

MVector MVector::transformAsNormal(const MMatrix& matrix) const
{
    const MMatrix inverse = matrix.inverse();
    const auto& a = inverse.matrix;
    // Row vector times the transpose of the inverse.
    MVector result(x * a[0][0] + y * a[0][1] + z * a[0][2], x * a[1][0] + y * a[1][1] + z * a[1][2],
                   x * a[2][0] + y * a[2][1] + z * a[2][2]);
    result.normalize();
    return result;
}

std::ostream& operator<<(std::ostream& os, const MVector& v)
{
    return os << '[' << v.x << ", " << v.y << ", " << v.z << ']';
}

const char* MVector::className() { return "MVector"; }
