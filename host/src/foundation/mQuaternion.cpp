#include <maya/MQuaternion.h>

#include <algorithm>
#include <cmath>
#include <ostream>

const MQuaternion MQuaternion::identity(0.0, 0.0, 0.0, 1.0);

namespace {

constexpr double kPi = 3.14159265358979323846;

double dot(const MQuaternion& a, const MQuaternion& b) { return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w; }

// A unit vector perpendicular to v (v non-zero).
MVector perpendicular(const MVector& v)
{
    const MVector axis = std::fabs(v.x) < 0.9 * v.length() ? MVector::xAxis : MVector::yAxis;
    return (v ^ axis).normal();
}

// Interpolates along the great arc from p to q, `extra` additional half turns included.
MQuaternion arc(const MQuaternion& p, const MQuaternion& q, double t, double cosine, int extra)
{
    cosine = std::clamp(cosine, -1.0, 1.0);
    const double omega = std::acos(cosine);
    const double sine = std::sin(omega);
    if (std::fabs(sine) < 1e-12) {
        // (Nearly) the same rotation, where the arc formula divides by zero: linear
        // interpolation is exact enough.
        return MQuaternion(p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t, p.z + (q.z - p.z) * t, p.w + (q.w - p.w) * t)
            .normal();
    }
    const double phi = omega + extra * kPi;
    const double a = std::sin(omega - t * phi) / sine;
    const double b = std::sin(t * phi) / sine;
    return MQuaternion(a * p.x + b * q.x, a * p.y + b * q.y, a * p.z + b * q.z, a * p.w + b * q.w);
}

} // namespace

MQuaternion::MQuaternion(const double q[4])
    : MQuaternion()
{
    if (q != nullptr) {
        x = q[0];
        y = q[1];
        z = q[2];
        w = q[3];
    }
}

MQuaternion::MQuaternion(const MVector& a, const MVector& b)
    : MQuaternion(a, b, 1.0)
{
}

MQuaternion::MQuaternion(const MVector& a, const MVector& b, double angleFactor)
    : MQuaternion()
{
    if (a.length() == 0.0 || b.length() == 0.0)
        return;
    const MVector na = a.normal();
    const MVector nb = b.normal();
    MVector axis = na ^ nb;
    const double angle = std::atan2(axis.length(), na * nb);
    if (axis.length() < 1e-12) {
        if (na * nb > 0.0)
            return;
        axis = perpendicular(na);
    }
    setAxisAngle(axis, angle * angleFactor);
}

MQuaternion::MQuaternion(double angle, const MVector& axisb)
    : MQuaternion()
{
    setAxisAngle(axisb, angle);
}

MQuaternion& MQuaternion::operator=(const MMatrix& matrix)
{
    // Normalize the rows so a scaled matrix still yields its rotation.
    double m[3][3];
    for (int r = 0; r < 3; ++r) {
        const double len = std::sqrt(matrix.matrix[r][0] * matrix.matrix[r][0] + matrix.matrix[r][1] * matrix.matrix[r][1] +
                                     matrix.matrix[r][2] * matrix.matrix[r][2]);
        for (int c = 0; c < 3; ++c)
            m[r][c] = len > 0.0 ? matrix.matrix[r][c] / len : 0.0;
    }
    // The row-vector matrix is the transpose of the textbook (column-vector) rotation.
    const double trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0.0) {
        const double s = std::sqrt(trace + 1.0) * 2.0;
        w = 0.25 * s;
        x = (m[1][2] - m[2][1]) / s;
        y = (m[2][0] - m[0][2]) / s;
        z = (m[0][1] - m[1][0]) / s;
    } else if (m[0][0] > m[1][1] && m[0][0] > m[2][2]) {
        const double s = std::sqrt(std::max(0.0, 1.0 + m[0][0] - m[1][1] - m[2][2])) * 2.0;
        w = s > 0.0 ? (m[1][2] - m[2][1]) / s : 1.0;
        x = 0.25 * s;
        y = s > 0.0 ? (m[1][0] + m[0][1]) / s : 0.0;
        z = s > 0.0 ? (m[2][0] + m[0][2]) / s : 0.0;
    } else if (m[1][1] > m[2][2]) {
        const double s = std::sqrt(std::max(0.0, 1.0 + m[1][1] - m[0][0] - m[2][2])) * 2.0;
        w = s > 0.0 ? (m[2][0] - m[0][2]) / s : 1.0;
        x = s > 0.0 ? (m[1][0] + m[0][1]) / s : 0.0;
        y = 0.25 * s;
        z = s > 0.0 ? (m[2][1] + m[1][2]) / s : 0.0;
    } else {
        const double s = std::sqrt(std::max(0.0, 1.0 + m[2][2] - m[0][0] - m[1][1])) * 2.0;
        w = s > 0.0 ? (m[0][1] - m[1][0]) / s : 1.0;
        x = s > 0.0 ? (m[2][0] + m[0][2]) / s : 0.0;
        y = s > 0.0 ? (m[2][1] + m[1][2]) / s : 0.0;
        z = 0.25 * s;
    }
    normalizeIt();
    return *this;
}

MQuaternion& MQuaternion::operator=(const MEulerRotation& rotation)
{
    return *this = rotation.asMatrix();
}

MMatrix MQuaternion::asMatrix() const
{
    const MQuaternion q = normal();
    const double xx = q.x * q.x, yy = q.y * q.y, zz = q.z * q.z;
    const double xy = q.x * q.y, xz = q.x * q.z, yz = q.y * q.z;
    const double wx = q.w * q.x, wy = q.w * q.y, wz = q.w * q.z;
    MMatrix m;
    m.matrix[0][0] = 1.0 - 2.0 * (yy + zz);
    m.matrix[0][1] = 2.0 * (xy + wz);
    m.matrix[0][2] = 2.0 * (xz - wy);
    m.matrix[1][0] = 2.0 * (xy - wz);
    m.matrix[1][1] = 1.0 - 2.0 * (xx + zz);
    m.matrix[1][2] = 2.0 * (yz + wx);
    m.matrix[2][0] = 2.0 * (xz + wy);
    m.matrix[2][1] = 2.0 * (yz - wx);
    m.matrix[2][2] = 1.0 - 2.0 * (xx + yy);
    return m;
}

MQuaternion::operator MMatrix() const { return asMatrix(); }

MEulerRotation MQuaternion::asEulerRotation() const
{
    return MEulerRotation::decompose(asMatrix(), MEulerRotation::kXYZ);
}

MQuaternion& MQuaternion::setAxisAngle(const MVector& axis, double theta)
{
    const double len = axis.length();
    if (len == 0.0 || !std::isfinite(len)) {
        *this = MQuaternion();
        return *this;
    }
    const double s = std::sin(theta * 0.5) / len;
    x = axis.x * s;
    y = axis.y * s;
    z = axis.z * s;
    w = std::cos(theta * 0.5);
    return *this;
}

bool MQuaternion::getAxisAngle(MVector& axis, double& theta) const
{
    const double len = std::sqrt(dot(*this, *this));
    if (len == 0.0 || !std::isfinite(len)) {
        axis = MVector::zAxis;
        theta = 0.0;
        return false;
    }
    const MQuaternion q = normal();
    const double s = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    theta = 2.0 * std::atan2(s, q.w);
    axis = s > 0.0 ? MVector(q.x / s, q.y / s, q.z / s) : MVector::zAxis;
    return true;
}

MQuaternion& MQuaternion::setToXAxis(double theta) { return setAxisAngle(MVector::xAxis, theta); }
MQuaternion& MQuaternion::setToYAxis(double theta) { return setAxisAngle(MVector::yAxis, theta); }
MQuaternion& MQuaternion::setToZAxis(double theta) { return setAxisAngle(MVector::zAxis, theta); }

MStatus MQuaternion::get(double dest[4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    dest[0] = x;
    dest[1] = y;
    dest[2] = z;
    dest[3] = w;
    return MStatus::kSuccess;
}

double MQuaternion::operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : (i == 2 ? z : w)); }
double& MQuaternion::operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : (i == 2 ? z : w)); }

MQuaternion MQuaternion::operator+(const MQuaternion& o) const { return MQuaternion(x + o.x, y + o.y, z + o.z, w + o.w); }
MQuaternion MQuaternion::operator-(const MQuaternion& o) const { return MQuaternion(x - o.x, y - o.y, z - o.z, w - o.w); }
MQuaternion MQuaternion::operator-() const { return MQuaternion(-x, -y, -z, -w); }

MQuaternion MQuaternion::operator*(const MQuaternion& o) const
{
    // The Hamilton product o (x) this: rotating by this first, then by o.
    return MQuaternion(o.w * x + o.x * w + o.y * z - o.z * y, o.w * y - o.x * z + o.y * w + o.z * x,
                       o.w * z + o.x * y - o.y * x + o.z * w, o.w * w - o.x * x - o.y * y - o.z * z);
}

MQuaternion& MQuaternion::operator*=(const MQuaternion& rhs)
{
    *this = *this * rhs;
    return *this;
}

MQuaternion& MQuaternion::negateIt()
{
    *this = -*this;
    return *this;
}

bool MQuaternion::operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
bool MQuaternion::operator!=(const MQuaternion& o) const { return !(*this == o); }

bool MQuaternion::isEquivalent(const MQuaternion& o, double tolerance) const
{
    return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance &&
           std::fabs(w - o.w) <= tolerance;
}

MQuaternion& MQuaternion::scaleIt(double scale)
{
    x *= scale;
    y *= scale;
    z *= scale;
    w *= scale;
    return *this;
}

MQuaternion MQuaternion::normal() const
{
    MQuaternion result(*this);
    return result.normalizeIt();
}

MQuaternion& MQuaternion::normalizeIt()
{
    const double len = std::sqrt(dot(*this, *this));
    if (len > 0.0 && std::isfinite(len))
        scaleIt(1.0 / len);
    return *this;
}

MQuaternion MQuaternion::conjugate() const { return MQuaternion(-x, -y, -z, w); }

MQuaternion& MQuaternion::conjugateIt()
{
    *this = conjugate();
    return *this;
}

MQuaternion MQuaternion::inverse() const
{
    const double normSquared = dot(*this, *this);
    if (normSquared == 0.0)
        return *this;
    MQuaternion result = conjugate();
    return result.scaleIt(1.0 / normSquared);
}

MQuaternion& MQuaternion::invertIt()
{
    *this = inverse();
    return *this;
}

MQuaternion MQuaternion::log() const
{
    const double s = std::sqrt(x * x + y * y + z * z);
    const double len = std::sqrt(dot(*this, *this));
    if (len == 0.0)
        return MQuaternion(0.0, 0.0, 0.0, 0.0);
    const double angle = std::atan2(s, w);
    const double factor = s > 0.0 ? angle / s : 1.0 / len;
    return MQuaternion(x * factor, y * factor, z * factor, std::log(len));
}

MQuaternion MQuaternion::exp() const
{
    const double angle = std::sqrt(x * x + y * y + z * z);
    const double scale = std::exp(w);
    const double factor = angle > 0.0 ? scale * std::sin(angle) / angle : scale;
    return MQuaternion(x * factor, y * factor, z * factor, scale * std::cos(angle));
}

MQuaternion operator*(double scale, const MQuaternion& q)
{
    MQuaternion result(q);
    return result.scaleIt(scale);
}

MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t) { return dslerp(p, q, t, 0); }

MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t, short spin)
{
    const double cosine = dot(p, q);
    const MQuaternion target = cosine < 0.0 ? -q : q;
    return arc(p, target, t, std::fabs(cosine), spin);
}

MQuaternion dslerp(const MQuaternion& p, const MQuaternion& q, double t, int dir)
{
    const double cosine = dot(p, q);
    const bool flip = dir == 0 ? cosine < 0.0 : dir < 0;
    const MQuaternion target = flip ? -q : q;
    return arc(p, target, t, flip ? -cosine : cosine, 0);
}

MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t,
                  short spin)
{
    return slerp(slerp(p, q, t, spin), slerp(a, b, t), 2.0 * t * (1.0 - t));
}

MQuaternion squadPt(const MQuaternion& q0, const MQuaternion& q1, const MQuaternion& q2)
{
    const MQuaternion inv = q1.inverse();
    const MQuaternion a = (q0 * inv).log();
    const MQuaternion b = (q2 * inv).log();
    const MQuaternion sum = -0.25 * (a + b);
    return sum.exp() * q1;
}

std::ostream& operator<<(std::ostream& os, const MQuaternion& q)
{
    return os << '[' << q.x << ", " << q.y << ", " << q.z << ", " << q.w << ']';
}
