#pragma once
// Quaternion (x, y, z, w) with w the real part. Products follow Maya's row-vector
// convention: a * b rotates by a first and then by b, so
// (a * b).asMatrix() == a.asMatrix() * b.asMatrix().

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MEulerRotation;
class MMatrix;
class MVector;

#define kQuaternionEpsilon 1.0e-10

class MQuaternion
{
public:
    // The identity rotation (0, 0, 0, 1).
    constexpr MQuaternion()
        : x(0.0), y(0.0), z(0.0), w(1.0)
    {
    }
    constexpr MQuaternion(const MQuaternion& src) = default;
    constexpr MQuaternion(double xx, double yy, double zz, double ww)
        : x(xx), y(yy), z(zz), w(ww)
    {
    }
    // A null array gives the identity.
    MQuaternion(const double q[4]);
    // The shortest rotation taking direction a to direction b.
    MQuaternion(const MVector& a, const MVector& b);
    // That rotation scaled: angleFactor 0.5 goes half way, 2 twice as far.
    MQuaternion(const MVector& a, const MVector& b, double angleFactor);
    // Rotation of `angle` radians about `axisb`; a zero axis gives the identity.
    MQuaternion(double angle, const MVector& axisb);
    ~MQuaternion() = default;

    MQuaternion& operator=(const MQuaternion& src) = default;
    MQuaternion& operator=(const MMatrix& matrix);
    MQuaternion& operator=(const MEulerRotation& matrix);
    MMatrix asMatrix() const;
    // In kXYZ order.
    MEulerRotation asEulerRotation() const;
    MQuaternion& setAxisAngle(const MVector& axis, double theta);
    // False for a zero quaternion. The identity reports angle 0 about the z axis.
    bool getAxisAngle(MVector& axis, double& theta) const;
    MQuaternion& setToXAxis(double theta);
    MQuaternion& setToYAxis(double theta);
    MQuaternion& setToZAxis(double theta);
    MStatus get(double dest[4]) const;
    // Index 0 is x, 1 is y, 2 is z, anything else is w.
    double operator[](unsigned int i) const;
    MQuaternion operator+(const MQuaternion& other) const;
    MQuaternion operator*(const MQuaternion& other) const;
    MQuaternion& operator*=(const MQuaternion& rhs);
    MQuaternion operator-(const MQuaternion& other) const;
    MQuaternion operator-() const;
    MQuaternion& negateIt();
    bool operator==(const MQuaternion& other) const;
    bool operator!=(const MQuaternion& other) const;
    // Component-wise within the tolerance (q and -q, the same rotation, are not equivalent).
    bool isEquivalent(const MQuaternion& other, double tolerance = kQuaternionEpsilon) const;
    MQuaternion& scaleIt(double scale);
    MQuaternion normal() const;
    MQuaternion& normalizeIt();
    MQuaternion conjugate() const;
    MQuaternion& conjugateIt();
    MQuaternion inverse() const;
    MQuaternion& invertIt();
    MQuaternion log() const;
    MQuaternion exp() const;
    operator MMatrix() const;

    double& operator[](unsigned int i);

    friend MQuaternion operator*(double scale, const MQuaternion& other);
    // Spherical interpolation along the shorter arc.
    friend MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
    // `spin` adds that many extra half turns.
    friend MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t, short spin);
    // dir == 0 takes the shorter way; dir > 0 heads for q as given and dir < 0 for -q (the
    // same rotation, reached the other way round).
    friend MQuaternion dslerp(const MQuaternion& p, const MQuaternion& q, double t, int dir);
    friend MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b,
                             const MQuaternion& q, double t, short spin);
    friend MQuaternion squadPt(const MQuaternion& q0, const MQuaternion& q1, const MQuaternion& q2);
    friend std::ostream& operator<<(std::ostream& os, const MQuaternion& q);

    static const MQuaternion identity;

    double x;
    double y;
    double z;
    double w;
};

MQuaternion operator*(double scale, const MQuaternion& other);
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t, short spin);
MQuaternion dslerp(const MQuaternion& p, const MQuaternion& q, double t, int dir);
MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t,
                  short spin = 0);
MQuaternion squadPt(const MQuaternion& q0, const MQuaternion& q1, const MQuaternion& q2);

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MVector.h>
