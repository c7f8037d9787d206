#include <maya/MFloatMatrix.h>

#include <maya/MMatrix.h>

#include <cmath>
#include <ostream>

// The non-trivial algebra runs in double precision through MMatrix and rounds once.

namespace {

MMatrix widen(const MFloatMatrix& m) { return MMatrix(m.matrix); }

MFloatMatrix narrow(const MMatrix& m) { return MFloatMatrix(m.matrix); }

} // namespace

MFloatMatrix::MFloatMatrix(const double m[4][4])
    : MFloatMatrix()
{
    if (m == nullptr)
        return;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] = static_cast<float>(m[r][c]);
}

MFloatMatrix::MFloatMatrix(const float m[4][4])
    : MFloatMatrix()
{
    if (m == nullptr)
        return;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] = m[r][c];
}

MStatus MFloatMatrix::get(double dest[4][4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            dest[r][c] = matrix[r][c];
    return MStatus::kSuccess;
}

MStatus MFloatMatrix::get(float dest[4][4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            dest[r][c] = matrix[r][c];
    return MStatus::kSuccess;
}

MFloatMatrix MFloatMatrix::transpose() const
{
    MFloatMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[r][c] = matrix[c][r];
    return result;
}

MFloatMatrix& MFloatMatrix::setToIdentity()
{
    *this = MFloatMatrix();
    return *this;
}

MFloatMatrix& MFloatMatrix::setToProduct(const MFloatMatrix& left, const MFloatMatrix& right)
{
    MFloatMatrix result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k)
                sum += left.matrix[r][k] * right.matrix[k][c];
            result.matrix[r][c] = sum;
        }
    }
    *this = result;
    return *this;
}

MFloatMatrix& MFloatMatrix::operator+=(const MFloatMatrix& right)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] += right.matrix[r][c];
    return *this;
}

MFloatMatrix MFloatMatrix::operator+(const MFloatMatrix& right) const
{
    MFloatMatrix result(*this);
    return result += right;
}

MFloatMatrix& MFloatMatrix::operator-=(const MFloatMatrix& right)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] -= right.matrix[r][c];
    return *this;
}

MFloatMatrix MFloatMatrix::operator-(const MFloatMatrix& right) const
{
    MFloatMatrix result(*this);
    return result -= right;
}

MFloatMatrix& MFloatMatrix::operator*=(const MFloatMatrix& right) { return setToProduct(*this, right); }

MFloatMatrix MFloatMatrix::operator*(const MFloatMatrix& right) const
{
    MFloatMatrix result;
    return result.setToProduct(*this, right);
}

MFloatMatrix& MFloatMatrix::operator*=(float scale)
{
    for (auto& row : matrix)
        for (float& value : row)
            value *= scale;
    return *this;
}

MFloatMatrix MFloatMatrix::operator*(float scale) const
{
    MFloatMatrix result(*this);
    return result *= scale;
}

MFloatMatrix operator*(float scale, const MFloatMatrix& right) { return right * scale; }

bool MFloatMatrix::operator==(const MFloatMatrix& other) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (matrix[r][c] != other.matrix[r][c])
                return false;
    return true;
}

bool MFloatMatrix::operator!=(const MFloatMatrix& other) const { return !(*this == other); }

MFloatMatrix MFloatMatrix::inverse() const { return narrow(widen(*this).inverse()); }
MFloatMatrix MFloatMatrix::adjoint() const { return narrow(widen(*this).adjoint()); }
MFloatMatrix MFloatMatrix::homogenize() const { return narrow(widen(*this).homogenize()); }
float MFloatMatrix::det4x4() const { return static_cast<float>(widen(*this).det4x4()); }
float MFloatMatrix::det3x3() const { return static_cast<float>(widen(*this).det3x3()); }

bool MFloatMatrix::isEquivalent(const MFloatMatrix& other, float tolerance) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!(std::fabs(matrix[r][c] - other.matrix[r][c]) <= tolerance))
                return false;
    return true;
}

std::ostream& operator<<(std::ostream& os, const MFloatMatrix& m)
{
    os << '[';
    for (int r = 0; r < 4; ++r) {
        os << (r == 0 ? "[" : ", [");
        for (int c = 0; c < 4; ++c)
            os << (c == 0 ? "" : ", ") << m.matrix[r][c];
        os << ']';
    }
    return os << ']';
}

const char* MFloatMatrix::className() { return "MFloatMatrix"; }
