#include <maya/MMatrix.h>

#include "foundation/matrixOps.h"

#include <functional>
#include <ostream>

namespace matrixOps = host::matrixOps;

const MMatrix MMatrix::identity;

MMatrix::MMatrix(const double m[4][4])
    : MMatrix(matrixOps::fromArray<MMatrix>(m))
{
}

MMatrix::MMatrix(const float m[4][4])
    : MMatrix(matrixOps::fromArray<MMatrix>(m))
{
}


MStatus MMatrix::get(double dest[4][4]) const { return matrixOps::copyTo(*this, dest); }
MStatus MMatrix::get(float dest[4][4]) const { return matrixOps::copyTo(*this, dest); }

MMatrix MMatrix::transpose() const { return matrixOps::transpose(*this); }
MMatrix& MMatrix::setToIdentity() { return *this = MMatrix(); }

MMatrix& MMatrix::setToProduct(const MMatrix& left, const MMatrix& right)
{
    return *this = matrixOps::product(left, right);
}

MMatrix& MMatrix::operator+=(const MMatrix& right) { return matrixOps::combine(*this, right, std::plus<>()); }
MMatrix MMatrix::operator+(const MMatrix& right) const { return MMatrix(*this) += right; }
MMatrix& MMatrix::operator-=(const MMatrix& right) { return matrixOps::combine(*this, right, std::minus<>()); }
MMatrix MMatrix::operator-(const MMatrix& right) const { return MMatrix(*this) -= right; }
MMatrix& MMatrix::operator*=(const MMatrix& right) { return setToProduct(*this, right); }
MMatrix MMatrix::operator*(const MMatrix& right) const { return matrixOps::product(*this, right); }
MMatrix& MMatrix::operator*=(double scale) { return matrixOps::scale(*this, scale); }
MMatrix MMatrix::operator*(double scale) const { return MMatrix(*this) *= scale; }
MMatrix operator*(double scale, const MMatrix& right) { return right * scale; }

bool MMatrix::operator==(const MMatrix& other) const { return matrixOps::equal(*this, other); }
bool MMatrix::operator!=(const MMatrix& other) const { return !(*this == other); }

MMatrix MMatrix::inverse() const { return matrixOps::inverse(*this); }
MMatrix MMatrix::adjoint() const { return matrixOps::adjoint(*this); }
MMatrix MMatrix::homogenize() const { return matrixOps::homogenize(*this); }
double MMatrix::det4x4() const { return matrixOps::det4x4(*this); }
double MMatrix::det3x3() const { return matrixOps::det3x3(*this); }

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
    return matrixOps::equivalent(*this, other, tolerance);
}

bool MMatrix::isSingular() const { return matrixOps::isSingular(*this); }

std::ostream& operator<<(std::ostream& os, const MMatrix& m) { return matrixOps::print(os, m); }

const char* MMatrix::className() { return "MMatrix"; }
