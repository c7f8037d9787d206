#pragma once
// Double-precision 3D vector. Vectors are rows multiplied on the left of a matrix (v * M),
// and a vector ignores the matrix's translation row.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cmath>
#include <iosfwd>

class MMatrix;
class MFloatPoint;
class MFloatVector;
class MPoint;
class MQuaternion;
class MEulerRotation;

#define MVector_kTol 1.0e-10

class MVector
{
public:
    enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };

    constexpr MVector()
        : x(0.0), y(0.0), z(0.0)
    {
    }
    constexpr MVector(const MVector&) = default;
    MVector(const MFloatVector&);
    MVector(const MPoint&);
    MVector(const MFloatPoint&);
    constexpr MVector(double xx, double yy, double zz = 0.0)
        : x(xx), y(yy), z(zz)
    {
    }
    MVector(const double d[3]);
    MVector(const float f[3]);
    ~MVector() = default;

    MVector& operator=(const MVector& src) = default;
    // Index 0 is x, 1 is y, anything else is z.
    double operator()(unsigned int i) const;
    double operator[](unsigned int i) const;
    MVector operator^(const MVector& right) const;
    double operator*(const MVector& right) const;
    MVector& operator/=(double scalar);
    MVector operator/(double scalar) const;
    MVector& operator*=(double scalar);
    MVector operator*(double scalar) const;
    MVector operator+(const MVector& other) const;
    MVector& operator+=(const MVector& other);
    MVector operator-() const;
    MVector& operator-=(const MVector& other);
    MVector operator-(const MVector& other) const;
    MVector operator*(const MMatrix&) const;
    MVector& operator*=(const MMatrix&);
    bool operator!=(const MVector& other) const;
    bool operator==(const MVector& other) const;
    // Rotation by the quaternion (x, y, z, w).
    MVector rotateBy(double x, double y, double z, double w) const;
    MVector rotateBy(MVector::Axis axis, const double angle) const;
    MVector rotateBy(const MQuaternion&) const;
    MVector rotateBy(const MEulerRotation&) const;
    MQuaternion rotateTo(const MVector&) const;
    MStatus get(double[3]) const;
    double length() const;
    MVector normal() const;
    // Leaves a (near) zero vector unchanged.
    MStatus normalize();
    // Angle in radians between the two vectors; 0 when either has zero length.
    double angle(const MVector& other) const;
    bool isEquivalent(const MVector& other, double tolerance = MVector_kTol) const;
    // Parallel or anti-parallel within the tolerance; a zero vector counts as parallel.
    bool isParallel(const MVector& other, double tolerance = MVector_kTol) const;
    // Multiplies by the inverse transpose of the matrix and normalizes.
    MVector transformAsNormal(const MMatrix& matrix) const;

    double& operator()(unsigned int i);
    double& operator[](unsigned int i);

    friend MVector operator*(const MMatrix&, const MVector&);
    friend MVector operator*(int, const MVector&);
    friend MVector operator*(short, const MVector&);
    friend MVector operator*(unsigned int, const MVector&);
    friend MVector operator*(unsigned short, const MVector&);
    friend MVector operator*(float, const MVector&);
    friend MVector operator*(double, const MVector&);
    friend std::ostream& operator<<(std::ostream& os, const MVector& v);

    static const MVector zero;
    static const MVector one;
    static const MVector xAxis;
    static const MVector yAxis;
    static const MVector zAxis;
    static const MVector xNegAxis;
    static const MVector yNegAxis;
    static const MVector zNegAxis;

    double x;
    double y;
    double z;

    static const char* className();
};

#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MPoint.h>

inline MVector::MVector(const MFloatVector& src)
    : x(src.x), y(src.y), z(src.z)
{
}

inline MVector::MVector(const MPoint& src)
    : x(src.x), y(src.y), z(src.z)
{
}

inline MVector::MVector(const MFloatPoint& src)
    : x(src.x), y(src.y), z(src.z)
{
}

inline MVector::MVector(const double d[3])
    : x(d != nullptr ? d[0] : 0.0), y(d != nullptr ? d[1] : 0.0), z(d != nullptr ? d[2] : 0.0)
{
}

inline MVector::MVector(const float f[3])
    : x(f != nullptr ? f[0] : 0.0), y(f != nullptr ? f[1] : 0.0), z(f != nullptr ? f[2] : 0.0)
{
}

inline double MVector::operator()(unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
inline double MVector::operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
inline double& MVector::operator()(unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }
inline double& MVector::operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }

inline MVector MVector::operator^(const MVector& r) const
{
    return MVector(y * r.z - z * r.y, z * r.x - x * r.z, x * r.y - y * r.x);
}

inline double MVector::operator*(const MVector& r) const { return x * r.x + y * r.y + z * r.z; }

inline MVector& MVector::operator/=(double scalar)
{
    x /= scalar;
    y /= scalar;
    z /= scalar;
    return *this;
}

inline MVector MVector::operator/(double scalar) const { return MVector(x / scalar, y / scalar, z / scalar); }

inline MVector& MVector::operator*=(double scalar)
{
    x *= scalar;
    y *= scalar;
    z *= scalar;
    return *this;
}

inline MVector MVector::operator*(double scalar) const { return MVector(x * scalar, y * scalar, z * scalar); }
inline MVector MVector::operator+(const MVector& o) const { return MVector(x + o.x, y + o.y, z + o.z); }

inline MVector& MVector::operator+=(const MVector& o)
{
    x += o.x;
    y += o.y;
    z += o.z;
    return *this;
}

inline MVector MVector::operator-() const { return MVector(-x, -y, -z); }

inline MVector& MVector::operator-=(const MVector& o)
{
    x -= o.x;
    y -= o.y;
    z -= o.z;
    return *this;
}

inline MVector MVector::operator-(const MVector& o) const { return MVector(x - o.x, y - o.y, z - o.z); }
inline bool MVector::operator==(const MVector& o) const { return x == o.x && y == o.y && z == o.z; }
inline bool MVector::operator!=(const MVector& o) const { return !(*this == o); }

inline MStatus MVector::get(double dest[3]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    return MStatus::kSuccess;
}

inline double MVector::length() const { return std::sqrt(x * x + y * y + z * z); }

inline MStatus MVector::normalize()
{
    const double lengthSquared = x * x + y * y + z * z;
    if (lengthSquared > 1e-20) {
        const double factor = 1.0 / std::sqrt(lengthSquared);
        x *= factor;
        y *= factor;
        z *= factor;
    }
    return MStatus::kSuccess;
}

inline MVector MVector::normal() const
{
    MVector result(*this);
    result.normalize();
    return result;
}

inline bool MVector::isEquivalent(const MVector& other, double tolerance) const
{
    const MVector d = *this - other;
    return d * d <= tolerance * tolerance;
}

inline MVector operator*(double s, const MVector& v) { return MVector(s * v.x, s * v.y, s * v.z); }
inline MVector operator*(float s, const MVector& v) { return static_cast<double>(s) * v; }
inline MVector operator*(int s, const MVector& v) { return static_cast<double>(s) * v; }
inline MVector operator*(short s, const MVector& v) { return static_cast<double>(s) * v; }
inline MVector operator*(unsigned int s, const MVector& v) { return static_cast<double>(s) * v; }
inline MVector operator*(unsigned short s, const MVector& v) { return static_cast<double>(s) * v; }
