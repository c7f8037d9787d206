#pragma once
// 4x4 float matrix, row-major; the float counterpart of MMatrix (row vectors, p * M).

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

#define MFloatMatrix_kTol 1.0e-5F

class MFloatMatrix
{
public:
    // The identity.
    constexpr MFloatMatrix()
        : matrix{{1.0f, 0.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 0.0f, 1.0f}}
    {
    }
    constexpr MFloatMatrix(const MFloatMatrix& src) = default;
    // A null source gives the identity.
    MFloatMatrix(const double m[4][4]);
    MFloatMatrix(const float m[4][4]);
    ~MFloatMatrix() = default;

    MFloatMatrix& operator=(const MFloatMatrix&) = default;
    // Indices above 3 are clamped to 3.
    float operator()(unsigned int row, unsigned int col) const;
    const float* operator[](unsigned int row) const;
    MStatus get(double dest[4][4]) const;
    MStatus get(float dest[4][4]) const;
    MFloatMatrix transpose() const;
    MFloatMatrix& setToIdentity();
    MFloatMatrix& setToProduct(const MFloatMatrix& left, const MFloatMatrix& right);
    MFloatMatrix& operator+=(const MFloatMatrix& right);
    MFloatMatrix operator+(const MFloatMatrix& right) const;
    MFloatMatrix& operator-=(const MFloatMatrix& right);
    MFloatMatrix operator-(const MFloatMatrix& right) const;
    MFloatMatrix& operator*=(const MFloatMatrix& right);
    MFloatMatrix operator*(const MFloatMatrix& right) const;
    MFloatMatrix& operator*=(float);
    MFloatMatrix operator*(float) const;
    bool operator==(const MFloatMatrix& other) const;
    bool operator!=(const MFloatMatrix& other) const;
    // The inverse, or the identity when the matrix is singular.
    MFloatMatrix inverse() const;
    MFloatMatrix adjoint() const;
    // Every element divided by element [3][3]; unchanged when that element is 0.
    MFloatMatrix homogenize() const;
    float det4x4() const;
    // Determinant of the upper-left 3x3 block.
    float det3x3() const;
    // Element-wise comparison within the tolerance.
    bool isEquivalent(const MFloatMatrix& other, float tolerance = MFloatMatrix_kTol) const;

    float& operator()(unsigned int row, unsigned int col);
    float* operator[](unsigned int row);

    friend MFloatMatrix operator*(float, const MFloatMatrix& right);
    friend std::ostream& operator<<(std::ostream& os, const MFloatMatrix& m);

    float matrix[4][4];

    static const char* className();
};

inline float MFloatMatrix::operator()(unsigned int row, unsigned int col) const
{
    return matrix[row < 4 ? row : 3][col < 4 ? col : 3];
}

inline float& MFloatMatrix::operator()(unsigned int row, unsigned int col)
{
    return matrix[row < 4 ? row : 3][col < 4 ? col : 3];
}

inline const float* MFloatMatrix::operator[](unsigned int row) const { return matrix[row < 4 ? row : 3]; }
inline float* MFloatMatrix::operator[](unsigned int row) { return matrix[row < 4 ? row : 3]; }
