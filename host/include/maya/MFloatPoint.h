#pragma once
// Single-precision homogeneous point; the float counterpart of MPoint (row vector, p * M).

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cmath>
#include <iosfwd>

class MFloatMatrix;
class MFloatVector;
class MPoint;
class MVector;

#define MFloatPoint_kTol 1.0e-10

class MFloatPoint
{
public:
    constexpr MFloatPoint()
        : x(0.0f), y(0.0f), z(0.0f), w(1.0f)
    {
    }
    constexpr MFloatPoint(const MFloatPoint& srcpt) = default;
    MFloatPoint(const MPoint& srcpt);
    MFloatPoint(const MFloatVector& src);
    MFloatPoint(const MVector& src);
    constexpr MFloatPoint(float xx, float yy, float zz = 0.0, float ww = 1.0)
        : x(xx), y(yy), z(zz), w(ww)
    {
    }
    MFloatPoint(const float f[4]);
    MFloatPoint(const double d[4]);
    ~MFloatPoint() = default;

    MStatus get(double dest[4]) const;
    MStatus get(float dest[4]) const;
    MStatus setCast(const MPoint& srcpt);
    MStatus setCast(const MVector& src);
    MStatus setCast(const double d[4]);
    MFloatPoint& operator=(const MFloatPoint& src) = default;
    // Index 1 is y, 2 is z, 3 is w, anything else is x.
    float operator()(unsigned int i) const;
    float operator[](unsigned int i) const;
    MFloatVector operator-(const MFloatPoint& other) const;
    MFloatPoint operator+(const MFloatVector& other) const;
    MFloatPoint operator-(const MFloatVector& other) const;
    MFloatPoint& operator+=(const MFloatVector& vector);
    MFloatPoint& operator-=(const MFloatVector& vector);
    // Scaling leaves w unchanged.
    MFloatPoint operator*(const int scale) const;
    MFloatPoint operator*(const short scale) const;
    MFloatPoint operator*(const unsigned int scale) const;
    MFloatPoint operator*(const unsigned short scale) const;
    MFloatPoint operator*(const float scale) const;
    MFloatPoint operator*(const double scale) const;
    MFloatPoint operator/(const float scale) const;
    // Full homogeneous product of the row (x, y, z, w) with the matrix; w is not divided out.
    MFloatPoint operator*(const MFloatMatrix&) const;
    MFloatPoint& operator*=(const MFloatMatrix&);
    bool operator==(const MFloatPoint& other) const;
    bool operator!=(const MFloatPoint& other) const;
    MFloatPoint& cartesianize();
    MFloatPoint& rationalize();
    MFloatPoint& homogenize();
    float distanceTo(const MFloatPoint& other) const;
    bool isEquivalent(const MFloatPoint& other, float tolerance = MFloatPoint_kTol) const;

    float& operator()(unsigned int i);
    float& operator[](unsigned int i);

    friend MFloatPoint operator*(int, const MFloatPoint&);
    friend MFloatPoint operator*(short, const MFloatPoint&);
    friend MFloatPoint operator*(unsigned int, const MFloatPoint&);
    friend MFloatPoint operator*(unsigned short, const MFloatPoint&);
    friend MFloatPoint operator*(float, const MFloatPoint&);
    friend MFloatPoint operator*(double, const MFloatPoint&);
    // Column-vector product M * p.
    friend MFloatPoint operator*(const MFloatMatrix&, const MFloatPoint&);
    friend std::ostream& operator<<(std::ostream& os, const MFloatPoint& p);

    static const MFloatPoint origin;

    float x;
    float y;
    float z;
    float w;

    static const char* className();
};

#include <maya/MFloatVector.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

inline MFloatPoint::MFloatPoint(const MPoint& srcpt)
    : x(static_cast<float>(srcpt.x)), y(static_cast<float>(srcpt.y)), z(static_cast<float>(srcpt.z)),
      w(static_cast<float>(srcpt.w))
{
}

inline MFloatPoint::MFloatPoint(const MFloatVector& src)
    : x(src.x), y(src.y), z(src.z), w(1.0f)
{
}

inline MFloatPoint::MFloatPoint(const MVector& src)
    : x(static_cast<float>(src.x)), y(static_cast<float>(src.y)), z(static_cast<float>(src.z)), w(1.0f)
{
}

inline MFloatPoint::MFloatPoint(const float f[4])
    : x(f != nullptr ? f[0] : 0.0f), y(f != nullptr ? f[1] : 0.0f), z(f != nullptr ? f[2] : 0.0f),
      w(f != nullptr ? f[3] : 1.0f)
{
}

inline MFloatPoint::MFloatPoint(const double d[4])
    : x(d != nullptr ? static_cast<float>(d[0]) : 0.0f), y(d != nullptr ? static_cast<float>(d[1]) : 0.0f),
      z(d != nullptr ? static_cast<float>(d[2]) : 0.0f), w(d != nullptr ? static_cast<float>(d[3]) : 1.0f)
{
}

inline MStatus MFloatPoint::get(double dest[4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    dest[3] = w;
    return MStatus::kSuccess;
}

inline MStatus MFloatPoint::get(float dest[4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    dest[3] = w;
    return MStatus::kSuccess;
}

inline MStatus MFloatPoint::setCast(const MPoint& srcpt)
{
    *this = MFloatPoint(srcpt);
    return MStatus::kSuccess;
}

inline MStatus MFloatPoint::setCast(const MVector& src)
{
    *this = MFloatPoint(src);
    return MStatus::kSuccess;
}

inline MStatus MFloatPoint::setCast(const double d[4])
{
    if (d == nullptr)
        return MStatus::kFailure;
    *this = MFloatPoint(d);
    return MStatus::kSuccess;
}

inline float MFloatPoint::operator[](unsigned int i) const { return i == 1 ? y : (i == 2 ? z : (i == 3 ? w : x)); }
inline float MFloatPoint::operator()(unsigned int i) const { return (*this)[i]; }
inline float& MFloatPoint::operator[](unsigned int i) { return i == 1 ? y : (i == 2 ? z : (i == 3 ? w : x)); }
inline float& MFloatPoint::operator()(unsigned int i) { return (*this)[i]; }

inline MFloatVector MFloatPoint::operator-(const MFloatPoint& other) const
{
    if (w == 1.0f && other.w == 1.0f)
        return MFloatVector(x - other.x, y - other.y, z - other.z);
    MFloatPoint a(*this);
    MFloatPoint b(other);
    a.cartesianize();
    b.cartesianize();
    return MFloatVector(a.x - b.x, a.y - b.y, a.z - b.z);
}

inline MFloatPoint MFloatPoint::operator+(const MFloatVector& v) const
{
    MFloatPoint p(*this);
    p.cartesianize();
    return MFloatPoint(p.x + v.x, p.y + v.y, p.z + v.z);
}

inline MFloatPoint MFloatPoint::operator-(const MFloatVector& v) const
{
    MFloatPoint p(*this);
    p.cartesianize();
    return MFloatPoint(p.x - v.x, p.y - v.y, p.z - v.z);
}

inline MFloatPoint& MFloatPoint::operator+=(const MFloatVector& v)
{
    x += v.x;
    y += v.y;
    z += v.z;
    return *this;
}

inline MFloatPoint& MFloatPoint::operator-=(const MFloatVector& v)
{
    x -= v.x;
    y -= v.y;
    z -= v.z;
    return *this;
}

inline MFloatPoint MFloatPoint::operator*(const float s) const { return MFloatPoint(x * s, y * s, z * s, w); }
inline MFloatPoint MFloatPoint::operator*(const double s) const { return *this * static_cast<float>(s); }
inline MFloatPoint MFloatPoint::operator*(const int s) const { return *this * static_cast<float>(s); }
inline MFloatPoint MFloatPoint::operator*(const short s) const { return *this * static_cast<float>(s); }
inline MFloatPoint MFloatPoint::operator*(const unsigned int s) const { return *this * static_cast<float>(s); }
inline MFloatPoint MFloatPoint::operator*(const unsigned short s) const { return *this * static_cast<float>(s); }
inline MFloatPoint MFloatPoint::operator/(const float s) const { return MFloatPoint(x / s, y / s, z / s, w); }

inline bool MFloatPoint::operator==(const MFloatPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
inline bool MFloatPoint::operator!=(const MFloatPoint& o) const { return !(*this == o); }

inline float MFloatPoint::distanceTo(const MFloatPoint& other) const { return (*this - other).length(); }

inline bool MFloatPoint::isEquivalent(const MFloatPoint& other, float tolerance) const
{
    const MFloatVector d = *this - other;
    return d * d <= tolerance * tolerance;
}

inline MFloatPoint operator*(float s, const MFloatPoint& p) { return MFloatPoint(p.x * s, p.y * s, p.z * s, p.w); }
inline MFloatPoint operator*(double s, const MFloatPoint& p) { return static_cast<float>(s) * p; }
inline MFloatPoint operator*(int s, const MFloatPoint& p) { return static_cast<float>(s) * p; }
inline MFloatPoint operator*(short s, const MFloatPoint& p) { return static_cast<float>(s) * p; }
inline MFloatPoint operator*(unsigned int s, const MFloatPoint& p) { return static_cast<float>(s) * p; }
inline MFloatPoint operator*(unsigned short s, const MFloatPoint& p) { return static_cast<float>(s) * p; }
