#include <maya/MFloatPoint.h>

#include <maya/MFloatMatrix.h>

#include <ostream>

const MFloatPoint MFloatPoint::origin(0.0f, 0.0f, 0.0f, 1.0f);

MFloatPoint& MFloatPoint::cartesianize()
{
    if (w != 0.0f && w != 1.0f) {
        x /= w;
        y /= w;
        z /= w;
        w = 1.0f;
    }
    return *this;
}

MFloatPoint& MFloatPoint::rationalize()
{
    if (w != 0.0f) {
        x /= w;
        y /= w;
        z /= w;
    }
    return *this;
}

MFloatPoint& MFloatPoint::homogenize()
{
    x *= w;
    y *= w;
    z *= w;
    return *this;
}

MFloatPoint MFloatPoint::operator*(const MFloatMatrix& m) const
{
    const auto& a = m.matrix;
    return MFloatPoint(x * a[0][0] + y * a[1][0] + z * a[2][0] + w * a[3][0],
                       x * a[0][1] + y * a[1][1] + z * a[2][1] + w * a[3][1],
                       x * a[0][2] + y * a[1][2] + z * a[2][2] + w * a[3][2],
                       x * a[0][3] + y * a[1][3] + z * a[2][3] + w * a[3][3]);
}

MFloatPoint& MFloatPoint::operator*=(const MFloatMatrix& m)
{
    *this = *this * m;
    return *this;
}

MFloatPoint operator*(const MFloatMatrix& m, const MFloatPoint& p)
{
    const auto& a = m.matrix;
    return MFloatPoint(a[0][0] * p.x + a[0][1] * p.y + a[0][2] * p.z + a[0][3] * p.w,
                       a[1][0] * p.x + a[1][1] * p.y + a[1][2] * p.z + a[1][3] * p.w,
                       a[2][0] * p.x + a[2][1] * p.y + a[2][2] * p.z + a[2][3] * p.w,
                       a[3][0] * p.x + a[3][1] * p.y + a[3][2] * p.z + a[3][3] * p.w);
}

std::ostream& operator<<(std::ostream& os, const MFloatPoint& p)
{
    return os << '[' << p.x << ", " << p.y << ", " << p.z << ", " << p.w << ']';
}

const char* MFloatPoint::className() { return "MFloatPoint"; }
