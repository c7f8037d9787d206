#include <maya/MMatrix.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

const MMatrix MMatrix::identity;

namespace {

double det3(double a, double b, double c, double d, double e, double f, double g, double h, double i)
{
    return a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
}

// Determinant of the 3x3 minor left after removing `row` and `col`.
double minor3(const double m[4][4], int row, int col)
{
    double v[9];
    int k = 0;
    for (int r = 0; r < 4; ++r) {
        if (r == row)
            continue;
        for (int c = 0; c < 4; ++c) {
            if (c != col)
                v[k++] = m[r][c];
        }
    }
    return det3(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
}

// Gauss-Jordan elimination with scaled partial pivoting. Each pivot is judged against the
// largest entry of the row it came from, so a uniformly small or large matrix is not
// mistaken for a degenerate one. Returns false when singular.
template <int N>
bool gaussJordan(const double (&in)[N][N], double (&out)[N][N])
{
    double a[N][N];
    double rowScale[N];
    for (int r = 0; r < N; ++r) {
        rowScale[r] = 0.0;
        for (int c = 0; c < N; ++c) {
            a[r][c] = in[r][c];
            out[r][c] = r == c ? 1.0 : 0.0;
            if (!std::isfinite(a[r][c]))
                return false;
            rowScale[r] = std::max(rowScale[r], std::fabs(a[r][c]));
        }
        if (rowScale[r] == 0.0)
            return false;
    }
    for (int col = 0; col < N; ++col) {
        int pivot = col;
        double best = std::fabs(a[col][col]) / rowScale[col];
        for (int r = col + 1; r < N; ++r) {
            const double candidate = std::fabs(a[r][col]) / rowScale[r];
            if (candidate > best) {
                best = candidate;
                pivot = r;
            }
        }
        if (!(best > 1e-12))
            return false;
        if (pivot != col) {
            std::swap(a[pivot], a[col]);
            std::swap(out[pivot], out[col]);
            std::swap(rowScale[pivot], rowScale[col]);
        }
        const double scale = 1.0 / a[col][col];
        for (int c = 0; c < N; ++c) {
            a[col][c] *= scale;
            out[col][c] *= scale;
        }
        for (int r = 0; r < N; ++r) {
            const double factor = a[r][col];
            if (r == col || factor == 0.0)
                continue;
            for (int c = 0; c < N; ++c) {
                a[r][c] -= factor * a[col][c];
                out[r][c] -= factor * out[col][c];
            }
        }
    }
    for (int r = 0; r < N; ++r)
        for (int c = 0; c < N; ++c)
            if (!std::isfinite(out[r][c]))
                return false;
    return true;
}

// Transform matrices (last column 0, 0, 0, 1) invert through their 3x3 block, so a large
// translation neither hides nor fakes a singularity.
bool invert(const double in[4][4], double out[4][4])
{
    const bool affine = in[0][3] == 0.0 && in[1][3] == 0.0 && in[2][3] == 0.0 && in[3][3] == 1.0;
    if (!affine) {
        double a[4][4];
        double result[4][4];
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                a[r][c] = in[r][c];
        if (!gaussJordan(a, result))
            return false;
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                out[r][c] = result[r][c];
        return true;
    }
    double block[3][3];
    double blockInverse[3][3];
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            block[r][c] = in[r][c];
    if (!std::isfinite(in[3][0]) || !std::isfinite(in[3][1]) || !std::isfinite(in[3][2]) ||
        !gaussJordan(block, blockInverse))
        return false;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c)
            out[r][c] = blockInverse[r][c];
        out[r][3] = 0.0;
    }
    // The translation row becomes -t * B^-1.
    for (int c = 0; c < 3; ++c)
        out[3][c] = -(in[3][0] * blockInverse[0][c] + in[3][1] * blockInverse[1][c] + in[3][2] * blockInverse[2][c]);
    out[3][3] = 1.0;
    return true;
}

} // namespace

MMatrix::MMatrix(const double m[4][4])
    : MMatrix()
{
    if (m == nullptr)
        return;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] = m[r][c];
}

MMatrix::MMatrix(const float m[4][4])
    : MMatrix()
{
    if (m == nullptr)
        return;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] = m[r][c];
}

MStatus MMatrix::get(double dest[4][4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            dest[r][c] = matrix[r][c];
    return MStatus::kSuccess;
}

MStatus MMatrix::get(float dest[4][4]) const
{
    if (dest == nullptr)
        return MStatus::kFailure;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            dest[r][c] = static_cast<float>(matrix[r][c]);
    return MStatus::kSuccess;
}

MMatrix MMatrix::transpose() const
{
    MMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[r][c] = matrix[c][r];
    return result;
}

MMatrix& MMatrix::setToIdentity()
{
    *this = MMatrix();
    return *this;
}

MMatrix& MMatrix::setToProduct(const MMatrix& left, const MMatrix& right)
{
    MMatrix result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += left.matrix[r][k] * right.matrix[k][c];
            result.matrix[r][c] = sum;
        }
    }
    *this = result;
    return *this;
}

MMatrix& MMatrix::operator+=(const MMatrix& right)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] += right.matrix[r][c];
    return *this;
}

MMatrix MMatrix::operator+(const MMatrix& right) const
{
    MMatrix result(*this);
    return result += right;
}

MMatrix& MMatrix::operator-=(const MMatrix& right)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            matrix[r][c] -= right.matrix[r][c];
    return *this;
}

MMatrix MMatrix::operator-(const MMatrix& right) const
{
    MMatrix result(*this);
    return result -= right;
}

MMatrix& MMatrix::operator*=(const MMatrix& right) { return setToProduct(*this, right); }

MMatrix MMatrix::operator*(const MMatrix& right) const
{
    MMatrix result;
    return result.setToProduct(*this, right);
}

MMatrix& MMatrix::operator*=(double scale)
{
    for (auto& row : matrix)
        for (double& value : row)
            value *= scale;
    return *this;
}

MMatrix MMatrix::operator*(double scale) const
{
    MMatrix result(*this);
    return result *= scale;
}

MMatrix operator*(double scale, const MMatrix& right) { return right * scale; }

bool MMatrix::operator==(const MMatrix& other) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (matrix[r][c] != other.matrix[r][c])
                return false;
    return true;
}

bool MMatrix::operator!=(const MMatrix& other) const { return !(*this == other); }

MMatrix MMatrix::inverse() const
{
    double result[4][4];
    return invert(matrix, result) ? MMatrix(result) : MMatrix();
}

MMatrix MMatrix::adjoint() const
{
    MMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[c][r] = ((r + c) % 2 == 0 ? 1.0 : -1.0) * minor3(matrix, r, c);
    return result;
}

MMatrix MMatrix::homogenize() const
{
    const double w = matrix[3][3];
    if (w == 0.0)
        return *this;
    MMatrix result(*this);
    return result *= 1.0 / w;
}

double MMatrix::det4x4() const
{
    double det = 0.0;
    for (int c = 0; c < 4; ++c)
        det += (c % 2 == 0 ? 1.0 : -1.0) * matrix[0][c] * minor3(matrix, 0, c);
    return det;
}

double MMatrix::det3x3() const
{
    return det3(matrix[0][0], matrix[0][1], matrix[0][2], matrix[1][0], matrix[1][1], matrix[1][2], matrix[2][0],
                matrix[2][1], matrix[2][2]);
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!(std::fabs(matrix[r][c] - other.matrix[r][c]) <= tolerance))
                return false;
    return true;
}

bool MMatrix::isSingular() const
{
    double unused[4][4];
    return !invert(matrix, unused);
}

std::ostream& operator<<(std::ostream& os, const MMatrix& m)
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

const char* MMatrix::className() { return "MMatrix"; }
