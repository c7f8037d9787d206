#include <maya/MFloatMatrix.h>

#include "foundation/matrixOps.h"

#include <functional>
#include <ostream>

namespace matrixOps = host::matrixOps;

MFloatMatrix::MFloatMatrix(const double m[4][4])
    : MFloatMatrix(matrixOps::fromArray<MFloatMatrix>(m))
{
}

MFloatMatrix::MFloatMatrix(const float m[4][4])
    : MFloatMatrix(matrixOps::fromArray<MFloatMatrix>(m))
{
}

MStatus MFloatMatrix::get(double dest[4][4]) const { return matrixOps::copyTo(*this, dest); }
MStatus MFloatMatrix::get(float dest[4][4]) const { return matrixOps::copyTo(*this, dest); }

MFloatMatrix MFloatMatrix::transpose() const { return matrixOps::transpose(*this); }
MFloatMatrix& MFloatMatrix::setToIdentity() { return *this = MFloatMatrix(); }

MFloatMatrix& MFloatMatrix::setToProduct(const MFloatMatrix& left, const MFloatMatrix& right)
{
    return *this = matrixOps::product(left, right);
}

MFloatMatrix& MFloatMatrix::operator+=(const MFloatMatrix& right)
{
    return matrixOps::combine(*this, right, std::plus<>());
}

MFloatMatrix MFloatMatrix::operator+(const MFloatMatrix& right) const { return MFloatMatrix(*this) += right; }

MFloatMatrix& MFloatMatrix::operator-=(const MFloatMatrix& right)
{
    return matrixOps::combine(*this, right, std::minus<>());
}

MFloatMatrix MFloatMatrix::operator-(const MFloatMatrix& right) const { return MFloatMatrix(*this) -= right; }
MFloatMatrix& MFloatMatrix::operator*=(const MFloatMatrix& right) { return setToProduct(*this, right); }
MFloatMatrix MFloatMatrix::operator*(const MFloatMatrix& right) const { return matrixOps::product(*this, right); }
MFloatMatrix& MFloatMatrix::operator*=(float scale) { return matrixOps::scale(*this, scale); }
MFloatMatrix MFloatMatrix::operator*(float scale) const { return MFloatMatrix(*this) *= scale; }
MFloatMatrix operator*(float scale, const MFloatMatrix& right) { return right * scale; }

bool MFloatMatrix::operator==(const MFloatMatrix& other) const { return matrixOps::equal(*this, other); }
bool MFloatMatrix::operator!=(const MFloatMatrix& other) const { return !(*this == other); }

MFloatMatrix MFloatMatrix::inverse() const { return matrixOps::inverse(*this); }
MFloatMatrix MFloatMatrix::adjoint() const { return matrixOps::adjoint(*this); }
MFloatMatrix MFloatMatrix::homogenize() const { return matrixOps::homogenize(*this); }
float MFloatMatrix::det4x4() const { return static_cast<float>(matrixOps::det4x4(*this)); }
float MFloatMatrix::det3x3() const { return static_cast<float>(matrixOps::det3x3(*this)); }

bool MFloatMatrix::isEquivalent(const MFloatMatrix& other, float tolerance) const
{
    return matrixOps::equivalent(*this, other, tolerance);
}

std::ostream& operator<<(std::ostream& os, const MFloatMatrix& m) { return matrixOps::print(os, m); }

const char* MFloatMatrix::className() { return "MFloatMatrix"; }
