#pragma once
// The 4x4 matrix algebra behind MMatrix and MFloatMatrix, written once over the class M and
// its element type. Element-wise algebra and products run in the element type; inversion,
// adjoint, determinants and homogenizing run in double and round once, so the float matrix
// gets the double matrix's results, rounded.

#include <maya/MStatus.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <type_traits>
#include <utility>

namespace host::matrixOps {

// The element type of a matrix class (double for MMatrix, float for MFloatMatrix).
template <class M>
using Element = std::remove_all_extents_t<decltype(M::matrix)>;

// A copy of `source` converted to M's element type; the identity for a null source.
template <class M, class Source>
M fromArray(const Source (*source)[4])
{
    M result;
    if (source == nullptr)
        return result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[r][c] = static_cast<Element<M>>(source[r][c]);
    return result;
}

template <class M, class Dest>
MStatus copyTo(const M& m, Dest (*dest)[4])
{
    if (dest == nullptr)
        return MStatus::kFailure;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            dest[r][c] = static_cast<Dest>(m.matrix[r][c]);
    return MStatus::kSuccess;
}

template <class M>
M transpose(const M& m)
{
    M result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[r][c] = m.matrix[c][r];
    return result;
}

template <class M>
M product(const M& left, const M& right)
{
    M result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            Element<M> sum = 0;
            for (int k = 0; k < 4; ++k)
                sum += left.matrix[r][k] * right.matrix[k][c];
            result.matrix[r][c] = sum;
        }
    }
    return result;
}

// m[r][c] = op(m[r][c], other[r][c]) for every element.
template <class M, class Op>
M& combine(M& m, const M& other, Op op)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m.matrix[r][c] = op(m.matrix[r][c], other.matrix[r][c]);
    return m;
}

template <class M>
M& scale(M& m, Element<M> factor)
{
    for (auto& values : m.matrix)
        for (auto& value : values)
            value *= factor;
    return m;
}

template <class M>
bool equal(const M& a, const M& b)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (a.matrix[r][c] != b.matrix[r][c])
                return false;
    return true;
}

template <class M>
bool equivalent(const M& a, const M& b, Element<M> tolerance)
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!(std::fabs(a.matrix[r][c] - b.matrix[r][c]) <= tolerance))
                return false;
    return true;
}

template <class M>
std::ostream& print(std::ostream& os, const M& m)
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

namespace detail {

inline double det3(double a, double b, double c, double d, double e, double f, double g, double h, double i)
{
    return a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
}

// Determinant of the 3x3 minor left after removing `row` and `col`.
inline double minor3(const double m[4][4], int row, int col)
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
inline bool invert(const double (&in)[4][4], double (&out)[4][4])
{
    const bool affine = in[0][3] == 0.0 && in[1][3] == 0.0 && in[2][3] == 0.0 && in[3][3] == 1.0;
    if (!affine)
        return gaussJordan(in, out);
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

template <class M>
void widen(const M& m, double (&out)[4][4])
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            out[r][c] = static_cast<double>(m.matrix[r][c]);
}

} // namespace detail

// The inverse, or the identity when the matrix is singular.
template <class M>
M inverse(const M& m)
{
    double wide[4][4];
    double result[4][4];
    detail::widen(m, wide);
    return detail::invert(wide, result) ? fromArray<M>(result) : M();
}

template <class M>
bool isSingular(const M& m)
{
    double wide[4][4];
    double unused[4][4];
    detail::widen(m, wide);
    return !detail::invert(wide, unused);
}

template <class M>
M adjoint(const M& m)
{
    double wide[4][4];
    detail::widen(m, wide);
    M result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[c][r] =
                static_cast<Element<M>>(((r + c) % 2 == 0 ? 1.0 : -1.0) * detail::minor3(wide, r, c));
    return result;
}

// Every element divided by element [3][3]; unchanged when that element is 0.
template <class M>
M homogenize(const M& m)
{
    const double w = m.matrix[3][3];
    if (w == 0.0)
        return m;
    const double factor = 1.0 / w;
    M result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.matrix[r][c] = static_cast<Element<M>>(static_cast<double>(m.matrix[r][c]) * factor);
    return result;
}

template <class M>
double det4x4(const M& m)
{
    double wide[4][4];
    detail::widen(m, wide);
    double det = 0.0;
    for (int c = 0; c < 4; ++c)
        det += (c % 2 == 0 ? 1.0 : -1.0) * wide[0][c] * detail::minor3(wide, 0, c);
    return det;
}

// Determinant of the upper-left 3x3 block.
template <class M>
double det3x3(const M& m)
{
    const auto& a = m.matrix;
    return detail::det3(a[0][0], a[0][1], a[0][2], a[1][0], a[1][1], a[1][2], a[2][0], a[2][1], a[2][2]);
}

} // namespace host::matrixOps
