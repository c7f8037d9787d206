#pragma once
// Single-precision 3D vector; the float counterpart of MVector (row vector, v * M).

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cmath>
#include <iosfwd>

class MFloatMatrix;
class MFloatPoint;
class MVector;
class MPoint;

#define MFloatVector_kTol 1.0e-5F

class MFloatVector
{
public:
    constexpr MFloatVector()
        : x(0.0f), y(0.0f), z(0.0f)
    {
    }
    constexpr MFloatVector(const MFloatVector&) = default;
    MFloatVector(const MVector&);
    MFloatVector(const MFloatPoint&);
    MFloatVector(const MPoint&);
    constexpr MFloatVector(float xx, float yy, float zz = 0.0)
        : x(xx), y(yy), z(zz)
    {
    }
    MFloatVector(const float f[3]);
    MFloatVector(const double d[3]);
    ~MFloatVector() = default;

    MFloatVector& operator=(const MFloatVector& src) = default;
    // Index 0 is x, 1 is y, anything else is z.
    float operator()(unsigned int i) const;
    float operator[](unsigned int i) const;
    MFloatVector operator^(const MFloatVector& right) const;
    MFloatVector& operator/=(float scalar);
    MFloatVector operator/(float scalar) const;
    MFloatVector& operator*=(float scalar);
    MFloatVector operator*(float scalar) const;
    MFloatVector operator+(const MFloatVector& other) const;
    MFloatVector& operator+=(const MFloatVector& other);
    MFloatVector operator-() const;
    MFloatVector operator-(const MFloatVector& other) const;
    MFloatVector& operator-=(const MFloatVector& other);
    MFloatVector operator*(const MFloatMatrix&) const;
    MFloatVector& operator*=(const MFloatMatrix&);
    float operator*(const MFloatVector& other) const;
    bool operator!=(const MFloatVector& other) const;
    bool operator==(const MFloatVector& other) const;
    MStatus get(float[3]) const;
    float length() const;
    MFloatVector normal() const;
    // Leaves a (near) zero vector unchanged.
    MStatus normalize();
    // Angle in radians; 0 when either vector has zero length.
    float angle(const MFloatVector& other) const;
    bool isEquivalent(const MFloatVector& other, float tolerance = MFloatVector_kTol) const;
    // Parallel or anti-parallel within the tolerance; a zero vector counts as parallel.
    bool isParallel(const MFloatVector& other, float tolerance = MFloatVector_kTol) const;

    float& operator()(unsigned int i);
    float& operator[](unsigned int i);
    // Multiplies by the inverse transpose of the matrix and normalizes.
    MFloatVector transformAsNormal(const MFloatMatrix& matrix) const;

    friend MFloatVector operator*(int, const MFloatVector&);
    friend MFloatVector operator*(short, const MFloatVector&);
    friend MFloatVector operator*(unsigned int, const MFloatVector&);
    friend MFloatVector operator*(unsigned short, const MFloatVector&);
    friend MFloatVector operator*(float, const MFloatVector&);
    friend MFloatVector operator*(double, const MFloatVector&);
    friend MFloatVector operator*(const MFloatMatrix&, const MFloatVector&);
    friend std::ostream& operator<<(std::ostream& os, const MFloatVector& v);

    static const MFloatVector zero;
    static const MFloatVector one;
    static const MFloatVector xAxis;
    static const MFloatVector yAxis;
    static const MFloatVector zAxis;
    static const MFloatVector xNegAxis;
    static const MFloatVector yNegAxis;
    static const MFloatVector zNegAxis;

    float x;
    float y;
    float z;

    static const char* className();
};

#include <maya/MFloatPoint.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

inline MFloatVector::MFloatVector(const MVector& src)
    : x(static_cast<float>(src.x)), y(static_cast<float>(src.y)), z(static_cast<float>(src.z))
{
}

inline MFloatVector::MFloatVector(const MFloatPoint& src)
    : x(src.x), y(src.y), z(src.z)
{
}

inline MFloatVector::MFloatVector(const MPoint& src)
    : x(static_cast<float>(src.x)), y(static_cast<float>(src.y)), z(static_cast<float>(src.z))
{
}

inline MFloatVector::MFloatVector(const float f[3])
    : x(f != nullptr ? f[0] : 0.0f), y(f != nullptr ? f[1] : 0.0f), z(f != nullptr ? f[2] : 0.0f)
{
}

inline MFloatVector::MFloatVector(const double d[3])
    : x(d != nullptr ? static_cast<float>(d[0]) : 0.0f), y(d != nullptr ? static_cast<float>(d[1]) : 0.0f),
      z(d != nullptr ? static_cast<float>(d[2]) : 0.0f)
{
}

inline float MFloatVector::operator()(unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
inline float MFloatVector::operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
inline float& MFloatVector::operator()(unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }
inline float& MFloatVector::operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }

inline MFloatVector MFloatVector::operator^(const MFloatVector& r) const
{
    return MFloatVector(y * r.z - z * r.y, z * r.x - x * r.z, x * r.y - y * r.x);
}

inline float MFloatVector::operator*(const MFloatVector& r) const { return x * r.x + y * r.y + z * r.z; }

inline MFloatVector& MFloatVector::operator/=(float scalar)
{
    x /= scalar;
    y /= scalar;
    z /= scalar;
    return *this;
}

inline MFloatVector MFloatVector::operator/(float s) const { return MFloatVector(x / s, y / s, z / s); }

inline MFloatVector& MFloatVector::operator*=(float scalar)
{
    x *= scalar;
    y *= scalar;
    z *= scalar;
    return *this;
}

inline MFloatVector MFloatVector::operator*(float s) const { return MFloatVector(x * s, y * s, z * s); }
inline MFloatVector MFloatVector::operator+(const MFloatVector& o) const { return MFloatVector(x + o.x, y + o.y, z + o.z); }

inline MFloatVector& MFloatVector::operator+=(const MFloatVector& o)
{
    x += o.x;
    y += o.y;
    z += o.z;
    return *this;
}

inline MFloatVector MFloatVector::operator-() const { return MFloatVector(-x, -y, -z); }
inline MFloatVector MFloatVector::operator-(const MFloatVector& o) const { return MFloatVector(x - o.x, y - o.y, z - o.z); }

inline MFloatVector& MFloatVector::operator-=(const MFloatVector& o)
{
    x -= o.x;
    y -= o.y;
    z -= o.z;
    return *this;
}

inline bool MFloatVector::operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
inline bool MFloatVector::operator!=(const MFloatVector& o) const { return !(*this == o); }

inline MStatus MFloatVector::get(float dest[3]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    return MStatus::kSuccess;
}

inline float MFloatVector::length() const { return std::sqrt(x * x + y * y + z * z); }

inline MStatus MFloatVector::normalize()
{
    const float lengthSquared = x * x + y * y + z * z;
    if (lengthSquared > 1e-20f) {
        const float factor = 1.0f / std::sqrt(lengthSquared);
        x *= factor;
        y *= factor;
        z *= factor;
    }
    return MStatus::kSuccess;
}

inline MFloatVector MFloatVector::normal() const
{
    MFloatVector result(*this);
    result.normalize();
    return result;
}

inline bool MFloatVector::isEquivalent(const MFloatVector& other, float tolerance) const
{
    const MFloatVector d = *this - other;
    return d * d <= tolerance * tolerance;
}

inline MFloatVector operator*(float s, const MFloatVector& v) { return MFloatVector(s * v.x, s * v.y, s * v.z); }
inline MFloatVector operator*(double s, const MFloatVector& v) { return static_cast<float>(s) * v; }
inline MFloatVector operator*(int s, const MFloatVector& v) { return static_cast<float>(s) * v; }
inline MFloatVector operator*(short s, const MFloatVector& v) { return static_cast<float>(s) * v; }
inline MFloatVector operator*(unsigned int s, const MFloatVector& v) { return static_cast<float>(s) * v; }
inline MFloatVector operator*(unsigned short s, const MFloatVector& v) { return static_cast<float>(s) * v; }
