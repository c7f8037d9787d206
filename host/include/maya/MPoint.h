#pragma once
// Double-precision homogeneous point (x, y, z, w), w defaulting to 1. Points are rows
// multiplied on the left of a matrix (p * M), so the matrix's fourth row translates them.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cmath>
#include <iosfwd>

class MMatrix;
class MVector;
class MFloatPoint;
class MFloatVector;

#define MPoint_kTol 1.0e-10

class MPoint
{
public:
    constexpr MPoint()
        : x(0.0), y(0.0), z(0.0), w(1.0)
    {
    }
    constexpr MPoint(const MPoint& srcpt) = default;
    MPoint(const MFloatPoint& srcpt);
    MPoint(const MVector& src);
    MPoint(const MFloatVector& src);
    constexpr MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0)
        : x(xx), y(yy), z(zz), w(ww)
    {
    }
    MPoint(const double d[4]);
    MPoint(const float d[4]);
    ~MPoint() = default;

    MStatus get(double[4]) const;
    MStatus get(float[4]) const;
    // Index 1 is y, 2 is z, 3 is w, anything else is x.
    double operator[](unsigned int i) const;
    double operator()(unsigned int i) const;
    MPoint& operator=(const MPoint& src) = default;
    MVector operator-(const MPoint& other) const;
    MPoint operator+(const MVector& other) const;
    MPoint operator-(const MVector& other) const;
    MPoint& operator+=(const MVector& vector);
    MPoint& operator-=(const MVector& vector);
    // Scaling leaves w unchanged.
    MPoint operator*(const int scale) const;
    MPoint operator*(const short scale) const;
    MPoint operator*(const unsigned int scale) const;
    MPoint operator*(const unsigned short scale) const;
    MPoint operator*(const float scale) const;
    MPoint operator*(const double scale) const;
    MPoint operator/(const double scale) const;
    // Full homogeneous product of the row (x, y, z, w) with the matrix; w is not divided out.
    MPoint operator*(const MMatrix&) const;
    MPoint& operator*=(const MMatrix&);
    bool operator==(const MPoint& other) const;
    bool operator!=(const MPoint& other) const;
    // (W*x, W*y, W*z, W) -> (x, y, z, 1); a point with w == 0 is left as it is.
    MPoint& cartesianize();
    // (W*x, W*y, W*z, W) -> (x, y, z, W); a point with w == 0 is left as it is.
    MPoint& rationalize();
    // (x, y, z, W) -> (W*x, W*y, W*z, W).
    MPoint& homogenize();
    double distanceTo(const MPoint& other) const;
    bool isEquivalent(const MPoint& other, double tolerance = MPoint_kTol) const;

    double& operator[](unsigned int i);
    double& operator()(unsigned int i);

    friend MPoint operator*(int, const MPoint&);
    friend MPoint operator*(short, const MPoint&);
    friend MPoint operator*(unsigned int, const MPoint&);
    friend MPoint operator*(unsigned short, const MPoint&);
    friend MPoint operator*(float, const MPoint&);
    friend MPoint operator*(double, const MPoint&);
    // Column-vector product M * p.
    friend MPoint operator*(const MMatrix&, const MPoint&);
    friend std::ostream& operator<<(std::ostream& os, const MPoint& p);

    static const MPoint origin;

    double x;
    double y;
    double z;
    double w;

    static const char* className();
};

#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MVector.h>

inline MPoint::MPoint(const MFloatPoint& srcpt)
    : x(srcpt.x), y(srcpt.y), z(srcpt.z), w(srcpt.w)
{
}

inline MPoint::MPoint(const MVector& src)
    : x(src.x), y(src.y), z(src.z), w(1.0)
{
}

inline MPoint::MPoint(const MFloatVector& src)
    : x(src.x), y(src.y), z(src.z), w(1.0)
{
}

inline MPoint::MPoint(const double d[4])
    : x(d != nullptr ? d[0] : 0.0), y(d != nullptr ? d[1] : 0.0), z(d != nullptr ? d[2] : 0.0),
      w(d != nullptr ? d[3] : 1.0)
{
}

inline MPoint::MPoint(const float d[4])
    : x(d != nullptr ? d[0] : 0.0), y(d != nullptr ? d[1] : 0.0), z(d != nullptr ? d[2] : 0.0),
      w(d != nullptr ? d[3] : 1.0)
{
}

inline MStatus MPoint::get(double dest[4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    dest[3] = w;
    return MStatus::kSuccess;
}

inline MStatus MPoint::get(float dest[4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = static_cast<float>(x);
    dest[1] = static_cast<float>(y);
    dest[2] = static_cast<float>(z);
    dest[3] = static_cast<float>(w);
    return MStatus::kSuccess;
}

inline double MPoint::operator[](unsigned int i) const { return i == 1 ? y : (i == 2 ? z : (i == 3 ? w : x)); }
inline double MPoint::operator()(unsigned int i) const { return (*this)[i]; }
inline double& MPoint::operator[](unsigned int i) { return i == 1 ? y : (i == 2 ? z : (i == 3 ? w : x)); }
inline double& MPoint::operator()(unsigned int i) { return (*this)[i]; }

inline MVector MPoint::operator-(const MPoint& other) const
{
    if (w == 1.0 && other.w == 1.0)
        return MVector(x - other.x, y - other.y, z - other.z);
    MPoint a(*this);
    MPoint b(other);
    a.cartesianize();
    b.cartesianize();
    return MVector(a.x - b.x, a.y - b.y, a.z - b.z);
}

inline MPoint MPoint::operator+(const MVector& v) const
{
    MPoint p(*this);
    p.cartesianize();
    return MPoint(p.x + v.x, p.y + v.y, p.z + v.z);
}

inline MPoint MPoint::operator-(const MVector& v) const
{
    MPoint p(*this);
    p.cartesianize();
    return MPoint(p.x - v.x, p.y - v.y, p.z - v.z);
}

inline MPoint& MPoint::operator+=(const MVector& v)
{
    x += v.x;
    y += v.y;
    z += v.z;
    return *this;
}

inline MPoint& MPoint::operator-=(const MVector& v)
{
    x -= v.x;
    y -= v.y;
    z -= v.z;
    return *this;
}

inline MPoint MPoint::operator*(const double s) const { return MPoint(x * s, y * s, z * s, w); }
inline MPoint MPoint::operator*(const float s) const { return *this * static_cast<double>(s); }
inline MPoint MPoint::operator*(const int s) const { return *this * static_cast<double>(s); }
inline MPoint MPoint::operator*(const short s) const { return *this * static_cast<double>(s); }
inline MPoint MPoint::operator*(const unsigned int s) const { return *this * static_cast<double>(s); }
inline MPoint MPoint::operator*(const unsigned short s) const { return *this * static_cast<double>(s); }
inline MPoint MPoint::operator/(const double s) const { return MPoint(x / s, y / s, z / s, w); }

inline bool MPoint::operator==(const MPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
inline bool MPoint::operator!=(const MPoint& o) const { return !(*this == o); }

inline double MPoint::distanceTo(const MPoint& other) const { return (*this - other).length(); }

inline bool MPoint::isEquivalent(const MPoint& other, double tolerance) const
{
    const MVector d = *this - other;
    return d * d <= tolerance * tolerance;
}

inline MPoint operator*(double s, const MPoint& p) { return MPoint(p.x * s, p.y * s, p.z * s, p.w); }
inline MPoint operator*(float s, const MPoint& p) { return static_cast<double>(s) * p; }
inline MPoint operator*(int s, const MPoint& p) { return static_cast<double>(s) * p; }
inline MPoint operator*(short s, const MPoint& p) { return static_cast<double>(s) * p; }
inline MPoint operator*(unsigned int s, const MPoint& p) { return static_cast<double>(s) * p; }
inline MPoint operator*(unsigned short s, const MPoint& p) { return static_cast<double>(s) * p; }
