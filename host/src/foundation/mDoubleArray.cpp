#include <maya/MDoubleArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MDoubleArray::MDoubleArray(const double src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<double>())
{
}

MDoubleArray::MDoubleArray(const float src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<double>())
{
}

MDoubleArray::MDoubleArray(unsigned int initialSize, double initialValue)
    : fArray(initialSize, initialValue)
{
}

MDoubleArray::MDoubleArray() = default;
MDoubleArray::MDoubleArray(const MDoubleArray& other) = default;
MDoubleArray::MDoubleArray(MDoubleArray&& other) noexcept = default;
MDoubleArray::~MDoubleArray() = default;
MDoubleArray& MDoubleArray::operator=(const MDoubleArray& other) = default;
MDoubleArray& MDoubleArray::operator=(MDoubleArray&& other) noexcept = default;

MStatus MDoubleArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MDoubleArray::length() const { return fArray.length(); }
MStatus MDoubleArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MDoubleArray::clear() { return fArray.clear(); }
void MDoubleArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MDoubleArray::sizeIncrement() const { return fArray.sizeIncrement(); }

double& MDoubleArray::operator[](unsigned int index) { return fArray.at(index); }
double MDoubleArray::operator[](unsigned int index) const { return fArray.at(index); }

MDoubleArray::iterator MDoubleArray::begin() { return fArray.begin(); }
MDoubleArray::iterator MDoubleArray::end() { return fArray.end(); }
MDoubleArray::const_iterator MDoubleArray::begin() const { return fArray.begin(); }
MDoubleArray::const_iterator MDoubleArray::end() const { return fArray.end(); }
MDoubleArray::const_iterator MDoubleArray::cbegin() const { return fArray.begin(); }
MDoubleArray::const_iterator MDoubleArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MDoubleArray& array) { return arrayOps::print(os, array); }

const char* MDoubleArray::className() { return "MDoubleArray"; }

MStatus MDoubleArray::set(double element, unsigned int index) { return fArray.set(element, index); }
MStatus MDoubleArray::set(float element, unsigned int index) { return fArray.set(static_cast<double>(element), index); }
MStatus MDoubleArray::insert(double element, unsigned int index) { return fArray.insert(element, index); }
MStatus MDoubleArray::append(double element) { return fArray.append(element); }

MStatus MDoubleArray::copy(const MDoubleArray& source) { return arrayOps::copy(*this, source); }

MStatus MDoubleArray::get(double dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MDoubleArray::get(float dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
