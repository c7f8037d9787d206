#include <maya/MPoint.h>

#include <maya/MMatrix.h>

#include <ostream>

const MPoint MPoint::origin(0.0, 0.0, 0.0, 1.0);

MPoint& MPoint::cartesianize()
{
    if (w != 0.0 && w != 1.0) {
        x /= w;
        y /= w;
        z /= w;
        w = 1.0;
    }
    return *this;
}

MPoint& MPoint::rationalize()
{
    if (w != 0.0) {
        x /= w;
        y /= w;
        z /= w;
    }
    return *this;
}

MPoint& MPoint::homogenize()
{
    x *= w;
    y *= w;
    z *= w;
    return *this;
}

MPoint MPoint::operator*(const MMatrix& m) const
{
    const auto& a = m.matrix;
    return MPoint(x * a[0][0] + y * a[1][0] + z * a[2][0] + w * a[3][0],
                  x * a[0][1] + y * a[1][1] + z * a[2][1] + w * a[3][1],
                  x * a[0][2] + y * a[1][2] + z * a[2][2] + w * a[3][2],
                  x * a[0][3] + y * a[1][3] + z * a[2][3] + w * a[3][3]);
}

MPoint& MPoint::operator*=(const MMatrix& m)
{
    *this = *this * m;
    return *this;
}

MPoint operator*(const MMatrix& m, const MPoint& p)
{
    const auto& a = m.matrix;
    return MPoint(a[0][0] * p.x + a[0][1] * p.y + a[0][2] * p.z + a[0][3] * p.w,
                  a[1][0] * p.x + a[1][1] * p.y + a[1][2] * p.z + a[1][3] * p.w,
                  a[2][0] * p.x + a[2][1] * p.y + a[2][2] * p.z + a[2][3] * p.w,
                  a[3][0] * p.x + a[3][1] * p.y + a[3][2] * p.z + a[3][3] * p.w);
}

std::ostream& operator<<(std::ostream& os, const MPoint& p)
{
    return os << '[' << p.x << ", " << p.y << ", " << p.z << ", " << p.w << ']';
}

const char* MPoint::className() { return "MPoint"; }
