#pragma once
// Rotation as three angles in radians applied in a given order: kXYZ rotates about X
// first, then Y, then Z, so its matrix is Rx * Ry * Rz in the row-vector convention.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MMatrix;
class MQuaternion;
class MVector;

#define kEulerRotationEpsilon 1.0e-10

class MEulerRotation
{
public:
    enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

    constexpr MEulerRotation()
        : x(0.0), y(0.0), z(0.0), order(kXYZ)
    {
    }
    constexpr MEulerRotation(const MEulerRotation& src) = default;
    MEulerRotation(const MVector& v, RotationOrder ord = kXYZ);
    constexpr MEulerRotation(double xx, double yy, double zz, RotationOrder ord = kXYZ)
        : x(xx), y(yy), z(zz), order(ord)
    {
    }
    ~MEulerRotation() = default;

    MEulerRotation& operator=(const MEulerRotation& src) = default;
    // The next three keep the current order.
    MEulerRotation& operator=(const MQuaternion& q);
    MEulerRotation& operator=(const MMatrix& m);
    MEulerRotation& operator=(const MVector& v);
    MEulerRotation& setValue(const MVector& v, RotationOrder ord = kXYZ);
    MEulerRotation& setValue(double xx, double yy, double zz, RotationOrder ord = kXYZ);
    MQuaternion asQuaternion() const;
    MMatrix asMatrix() const;
    MVector asVector() const;
    // Index 0 is x, 1 is y, anything else is z.
    double operator[](unsigned int i) const;
    // Component-wise sums and differences; the right operand is first reordered to this order.
    MEulerRotation operator+(const MEulerRotation& other) const;
    MEulerRotation& operator+=(const MEulerRotation& other);
    MEulerRotation operator-(const MEulerRotation& other) const;
    MEulerRotation& operator-=(const MEulerRotation& other);
    MEulerRotation operator-() const;
    // This rotation followed by the other, expressed in this rotation's order.
    MEulerRotation operator*(const MEulerRotation& other) const;
    MEulerRotation operator*(const MQuaternion& other) const;
    // Scales the angles.
    MEulerRotation operator*(double other) const;
    MEulerRotation& operator*=(const MEulerRotation& other);
    MEulerRotation& operator*=(const MQuaternion& other);
    MEulerRotation& operator*=(double other);
    bool operator==(const MEulerRotation& other) const;
    bool operator!=(const MEulerRotation& other) const;
    // Same order and angles within the tolerance.
    bool isEquivalent(const MEulerRotation& other, double tolerance = kEulerRotationEpsilon) const;
    bool isZero(double tolerance = kEulerRotationEpsilon) const;
    // Adds a rotation of `angle` about `axis`, staying close to the current angles.
    MEulerRotation& incrementalRotateBy(const MVector& axis, double angle);
    // The opposite rotation: negated angles in the reversed order.
    MEulerRotation inverse() const;
    MEulerRotation& invertIt();
    // The same rotation expressed in another order.
    MEulerRotation reorder(RotationOrder ord) const;
    MEulerRotation& reorderIt(RotationOrder ord);
    // Each angle wrapped into [-pi, pi].
    MEulerRotation bound() const;
    MEulerRotation& boundIt(const MEulerRotation& src);
    MEulerRotation& boundIt();
    // The other angle triple giving the same rotation: (x + pi, pi - y, z + pi), bounded.
    MEulerRotation alternateSolution() const;
    MEulerRotation& setToAlternateSolution(const MEulerRotation& src);
    MEulerRotation& setToAlternateSolution();
    // Of this rotation's two solutions, each shifted by whole turns, the one closest to dst.
    MEulerRotation closestSolution(const MEulerRotation& dst) const;
    MEulerRotation& setToClosestSolution(const MEulerRotation& src, const MEulerRotation& dst);
    MEulerRotation& setToClosestSolution(const MEulerRotation& dst);
    // Each angle shifted by whole turns to lie closest to the matching angle of dst.
    MEulerRotation closestCut(const MEulerRotation& dst) const;
    MEulerRotation& setToClosestCut(const MEulerRotation& src, const MEulerRotation& dst);
    MEulerRotation& setToClosestCut(const MEulerRotation& dst);

    // Extracts the rotation of a matrix (scale is divided out of the rows first).
    static MEulerRotation decompose(const MMatrix& matrix, RotationOrder ord);
    static MEulerRotation alternateSolution(const MEulerRotation& src);
    static MEulerRotation bound(const MEulerRotation& src);
    static MEulerRotation closestSolution(const MEulerRotation& src, const MEulerRotation& dst);
    static MEulerRotation closestCut(const MEulerRotation& src, const MEulerRotation& dst);

    double& operator[](unsigned int i);

    friend MEulerRotation operator*(double, const MEulerRotation&);
    friend std::ostream& operator<<(std::ostream& os, const MEulerRotation& rotation);

    static const MEulerRotation identity;

    double x;
    double y;
    double z;
    RotationOrder order;
};

#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>
