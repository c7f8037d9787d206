#include <maya/MEulerRotation.h>

#include <algorithm>
#include <cmath>
#include <ostream>

const MEulerRotation MEulerRotation::identity(0.0, 0.0, 0.0, MEulerRotation::kXYZ);

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

struct Axes {
    int first;
    int second;
    int third;
    bool even;
};

// Which axis each order turns about first, second and third; even orders are the cyclic
// ones (XYZ, YZX, ZXY).
Axes axesOf(MEulerRotation::RotationOrder order)
{
    switch (order) {
    case MEulerRotation::kXYZ: return {0, 1, 2, true};
    case MEulerRotation::kYZX: return {1, 2, 0, true};
    case MEulerRotation::kZXY: return {2, 0, 1, true};
    case MEulerRotation::kXZY: return {0, 2, 1, false};
    case MEulerRotation::kYXZ: return {1, 0, 2, false};
    case MEulerRotation::kZYX: return {2, 1, 0, false};
    }
    return {0, 1, 2, true};
}

MEulerRotation::RotationOrder reversed(MEulerRotation::RotationOrder order)
{
    switch (order) {
    case MEulerRotation::kXYZ: return MEulerRotation::kZYX;
    case MEulerRotation::kYZX: return MEulerRotation::kXZY;
    case MEulerRotation::kZXY: return MEulerRotation::kYXZ;
    case MEulerRotation::kXZY: return MEulerRotation::kYZX;
    case MEulerRotation::kYXZ: return MEulerRotation::kZXY;
    case MEulerRotation::kZYX: return MEulerRotation::kXYZ;
    }
    return MEulerRotation::kXYZ;
}

const char* orderName(MEulerRotation::RotationOrder order)
{
    switch (order) {
    case MEulerRotation::kXYZ: return "kXYZ";
    case MEulerRotation::kYZX: return "kYZX";
    case MEulerRotation::kZXY: return "kZXY";
    case MEulerRotation::kXZY: return "kXZY";
    case MEulerRotation::kYXZ: return "kYXZ";
    case MEulerRotation::kZYX: return "kZYX";
    }
    return "kXYZ";
}

// Row-vector rotation about one axis.
MMatrix axisRotation(int axis, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    MMatrix m;
    m.matrix[u][u] = c;
    m.matrix[u][v] = s;
    m.matrix[v][u] = -s;
    m.matrix[v][v] = c;
    return m;
}

double wrap(double angle) { return std::isfinite(angle) ? std::remainder(angle, kTwoPi) : angle; }

double nearestTurn(double angle, double target)
{
    if (!std::isfinite(angle) || !std::isfinite(target))
        return angle;
    return angle + kTwoPi * std::round((target - angle) / kTwoPi);
}

double distance(const MEulerRotation& a, const MEulerRotation& b)
{
    return std::fabs(a.x - b.x) + std::fabs(a.y - b.y) + std::fabs(a.z - b.z);
}

} // namespace

MEulerRotation::MEulerRotation(const MVector& v, RotationOrder ord)
    : x(v.x), y(v.y), z(v.z), order(ord)
{
}

MEulerRotation& MEulerRotation::operator=(const MQuaternion& q)
{
    *this = decompose(q.asMatrix(), order);
    return *this;
}

MEulerRotation& MEulerRotation::operator=(const MMatrix& m)
{
    *this = decompose(m, order);
    return *this;
}

MEulerRotation& MEulerRotation::operator=(const MVector& v)
{
    x = v.x;
    y = v.y;
    z = v.z;
    return *this;
}

MEulerRotation& MEulerRotation::setValue(const MVector& v, RotationOrder ord)
{
    return setValue(v.x, v.y, v.z, ord);
}

MEulerRotation& MEulerRotation::setValue(double xx, double yy, double zz, RotationOrder ord)
{
    x = xx;
    y = yy;
    z = zz;
    order = ord;
    return *this;
}

MQuaternion MEulerRotation::asQuaternion() const
{
    MQuaternion q;
    q = asMatrix();
    return q;
}

MMatrix MEulerRotation::asMatrix() const
{
    const Axes axes = axesOf(order);
    return axisRotation(axes.first, (*this)[axes.first]) * axisRotation(axes.second, (*this)[axes.second]) *
           axisRotation(axes.third, (*this)[axes.third]);
}

MVector MEulerRotation::asVector() const { return MVector(x, y, z); }

double MEulerRotation::operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
double& MEulerRotation::operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }

MEulerRotation MEulerRotation::operator+(const MEulerRotation& other) const
{
    const MEulerRotation o = other.order == order ? other : other.reorder(order);
    return MEulerRotation(x + o.x, y + o.y, z + o.z, order);
}

MEulerRotation& MEulerRotation::operator+=(const MEulerRotation& other) { return *this = *this + other; }

MEulerRotation MEulerRotation::operator-(const MEulerRotation& other) const
{
    const MEulerRotation o = other.order == order ? other : other.reorder(order);
    return MEulerRotation(x - o.x, y - o.y, z - o.z, order);
}

MEulerRotation& MEulerRotation::operator-=(const MEulerRotation& other) { return *this = *this - other; }

MEulerRotation MEulerRotation::operator-() const { return MEulerRotation(-x, -y, -z, order); }

MEulerRotation MEulerRotation::operator*(const MEulerRotation& other) const
{
    return decompose(asMatrix() * other.asMatrix(), order);
}

MEulerRotation MEulerRotation::operator*(const MQuaternion& other) const
{
    return decompose(asMatrix() * other.asMatrix(), order);
}

MEulerRotation MEulerRotation::operator*(double other) const
{
    return MEulerRotation(x * other, y * other, z * other, order);
}

MEulerRotation& MEulerRotation::operator*=(const MEulerRotation& other) { return *this = *this * other; }
MEulerRotation& MEulerRotation::operator*=(const MQuaternion& other) { return *this = *this * other; }
MEulerRotation& MEulerRotation::operator*=(double other) { return *this = *this * other; }

MEulerRotation operator*(double scale, const MEulerRotation& rotation) { return rotation * scale; }

bool MEulerRotation::operator==(const MEulerRotation& o) const
{
    return x == o.x && y == o.y && z == o.z && order == o.order;
}

bool MEulerRotation::operator!=(const MEulerRotation& o) const { return !(*this == o); }

bool MEulerRotation::isEquivalent(const MEulerRotation& o, double tolerance) const
{
    return order == o.order && std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
           std::fabs(z - o.z) <= tolerance;
}

bool MEulerRotation::isZero(double tolerance) const
{
    return std::fabs(x) <= tolerance && std::fabs(y) <= tolerance && std::fabs(z) <= tolerance;
}

MEulerRotation& MEulerRotation::incrementalRotateBy(const MVector& axis, double angle)
{
    const MEulerRotation turned = decompose(asMatrix() * MQuaternion(angle, axis).asMatrix(), order);
    *this = turned.closestSolution(*this);
    return *this;
}

MEulerRotation MEulerRotation::inverse() const { return MEulerRotation(-x, -y, -z, reversed(order)); }

MEulerRotation& MEulerRotation::invertIt() { return *this = inverse(); }

MEulerRotation MEulerRotation::reorder(RotationOrder ord) const { return decompose(asMatrix(), ord); }

MEulerRotation& MEulerRotation::reorderIt(RotationOrder ord) { return *this = reorder(ord); }

MEulerRotation MEulerRotation::bound() const { return MEulerRotation(wrap(x), wrap(y), wrap(z), order); }

MEulerRotation& MEulerRotation::boundIt(const MEulerRotation& src) { return *this = src.bound(); }

MEulerRotation& MEulerRotation::boundIt() { return *this = bound(); }

MEulerRotation MEulerRotation::alternateSolution() const
{
    const Axes axes = axesOf(order);
    MEulerRotation result(*this);
    result[axes.first] += kPi;
    result[axes.second] = kPi - result[axes.second];
    result[axes.third] += kPi;
    return result.bound();
}

MEulerRotation& MEulerRotation::setToAlternateSolution(const MEulerRotation& src)
{
    return *this = src.alternateSolution();
}

MEulerRotation& MEulerRotation::setToAlternateSolution() { return *this = alternateSolution(); }

MEulerRotation MEulerRotation::closestSolution(const MEulerRotation& dst) const
{
    const MEulerRotation direct = closestCut(dst);
    const MEulerRotation alternate = alternateSolution().closestCut(dst);
    return distance(alternate, dst) < distance(direct, dst) ? alternate : direct;
}

MEulerRotation& MEulerRotation::setToClosestSolution(const MEulerRotation& src, const MEulerRotation& dst)
{
    return *this = src.closestSolution(dst);
}

MEulerRotation& MEulerRotation::setToClosestSolution(const MEulerRotation& dst)
{
    return *this = closestSolution(dst);
}

MEulerRotation MEulerRotation::closestCut(const MEulerRotation& dst) const
{
    return MEulerRotation(nearestTurn(x, dst.x), nearestTurn(y, dst.y), nearestTurn(z, dst.z), order);
}

MEulerRotation& MEulerRotation::setToClosestCut(const MEulerRotation& src, const MEulerRotation& dst)
{
    return *this = src.closestCut(dst);
}

MEulerRotation& MEulerRotation::setToClosestCut(const MEulerRotation& dst) { return *this = closestCut(dst); }

MEulerRotation MEulerRotation::decompose(const MMatrix& matrix, RotationOrder ord)
{
    // Work on the textbook column-vector form C (the transpose of Maya's row-vector matrix),
    // relabelled so the order reads as X then Y then Z: P = Rz(c) * Ry(b) * Rx(a). An odd
    // relabelling mirrors the axes, which negates all three angles.
    double m[3][3];
    for (int r = 0; r < 3; ++r) {
        const double len = std::sqrt(matrix.matrix[r][0] * matrix.matrix[r][0] + matrix.matrix[r][1] * matrix.matrix[r][1] +
                                     matrix.matrix[r][2] * matrix.matrix[r][2]);
        for (int c = 0; c < 3; ++c)
            m[r][c] = len > 0.0 ? matrix.matrix[r][c] / len : 0.0;
    }
    const Axes axes = axesOf(ord);
    const int p[3] = {axes.first, axes.second, axes.third};
    auto P = [&](int r, int c) { return m[p[c]][p[r]]; };

    const double sinB = std::clamp(-P(2, 0), -1.0, 1.0);
    double a = 0.0;
    double b = std::asin(sinB);
    double c = 0.0;
    if (std::fabs(sinB) < 1.0 - 1e-12) {
        a = std::atan2(P(2, 1), P(2, 2));
        c = std::atan2(P(1, 0), P(0, 0));
    } else {
        // Gimbal lock: only a + c (or a - c) is determined; put it all in the first angle.
        a = std::atan2(-P(1, 2), P(1, 1));
    }
    if (!axes.even) {
        a = -a;
        b = -b;
        c = -c;
    }
    MEulerRotation result(0.0, 0.0, 0.0, ord);
    result[axes.first] = a;
    result[axes.second] = b;
    result[axes.third] = c;
    return result;
}

MEulerRotation MEulerRotation::alternateSolution(const MEulerRotation& src) { return src.alternateSolution(); }
MEulerRotation MEulerRotation::bound(const MEulerRotation& src) { return src.bound(); }

MEulerRotation MEulerRotation::closestSolution(const MEulerRotation& src, const MEulerRotation& dst)
{
    return src.closestSolution(dst);
}

MEulerRotation MEulerRotation::closestCut(const MEulerRotation& src, const MEulerRotation& dst)
{
    return src.closestCut(dst);
}

std::ostream& operator<<(std::ostream& os, const MEulerRotation& rotation)
{
    return os << '[' << rotation.x << ", " << rotation.y << ", " << rotation.z << ", " << orderName(rotation.order)
              << ']';
}
