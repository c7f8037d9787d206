#pragma once
// 4x4 double matrix, row-major. Maya multiplies row vectors on the left (p * M): the
// fourth row holds the translation, and A * B applies A first, then B.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

#define MMatrix_kTol 1.0e-10

class MMatrix
{
public:
    // The identity.
    constexpr MMatrix()
        : matrix{{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}}
    {
    }
    constexpr MMatrix(const MMatrix& src) = default;
    // A null source gives the identity.
    MMatrix(const double m[4][4]);
    MMatrix(const float m[4][4]);
    ~MMatrix() = default;

    MMatrix& operator=(const MMatrix&) = default;
    // Indices above 3 are clamped to 3.
    double operator()(unsigned int row, unsigned int col) const;
    const double* operator[](unsigned int row) const;
    MStatus get(double dest[4][4]) const;
    MStatus get(float dest[4][4]) const;
    MMatrix transpose() const;
    MMatrix& setToIdentity();
    MMatrix& setToProduct(const MMatrix& left, const MMatrix& right);
    MMatrix& operator+=(const MMatrix& right);
    MMatrix operator+(const MMatrix& right) const;
    MMatrix& operator-=(const MMatrix& right);
    MMatrix operator-(const MMatrix& right) const;
    MMatrix& operator*=(const MMatrix& right);
    MMatrix operator*(const MMatrix& right) const;
    MMatrix& operator*=(double);
    MMatrix operator*(double) const;
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const;
    // The inverse, or the identity when the matrix is singular (see isSingular).
    MMatrix inverse() const;
    MMatrix adjoint() const;
    // Every element divided by element [3][3]; unchanged when that element is 0.
    MMatrix homogenize() const;
    double det4x4() const;
    // Determinant of the upper-left 3x3 block.
    double det3x3() const;
    // Element-wise comparison within the tolerance.
    bool isEquivalent(const MMatrix& other, double tolerance = MMatrix_kTol) const;
    // True when elimination meets a pivot below 1e-12 of its row's largest entry (or the
    // matrix holds an infinity or NaN); such a matrix has no usable inverse. A transform
    // matrix (last column 0, 0, 0, 1) is judged by its upper 3x3 block alone.
    bool isSingular() const;

    double& operator()(unsigned int row, unsigned int col);
    double* operator[](unsigned int row);

    friend MMatrix operator*(double, const MMatrix& right);
    friend std::ostream& operator<<(std::ostream& os, const MMatrix& m);

    double matrix[4][4];

    static const MMatrix identity;

    static const char* className();
};

inline double MMatrix::operator()(unsigned int row, unsigned int col) const
{
    return matrix[row < 4 ? row : 3][col < 4 ? col : 3];
}

inline double& MMatrix::operator()(unsigned int row, unsigned int col)
{
    return matrix[row < 4 ? row : 3][col < 4 ? col : 3];
}

inline const double* MMatrix::operator[](unsigned int row) const { return matrix[row < 4 ? row : 3]; }
inline double* MMatrix::operator[](unsigned int row) { return matrix[row < 4 ? row : 3]; }
