#include <maya/MFloatArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MFloatArray::MFloatArray(const float src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<float>())
{
}

MFloatArray::MFloatArray(const double src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<float>())
{
}

MFloatArray::MFloatArray(unsigned int initialSize, float initialValue)
    : fArray(initialSize, initialValue)
{
}

MFloatArray::MFloatArray() = default;
MFloatArray::MFloatArray(const MFloatArray& other) = default;
MFloatArray::MFloatArray(MFloatArray&& other) noexcept = default;
MFloatArray::~MFloatArray() = default;
MFloatArray& MFloatArray::operator=(const MFloatArray& other) = default;
MFloatArray& MFloatArray::operator=(MFloatArray&& other) noexcept = default;

MStatus MFloatArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MFloatArray::length() const { return fArray.length(); }
MStatus MFloatArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MFloatArray::clear() { return fArray.clear(); }
void MFloatArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MFloatArray::sizeIncrement() const { return fArray.sizeIncrement(); }

float& MFloatArray::operator[](unsigned int index) { return fArray.at(index); }
float MFloatArray::operator[](unsigned int index) const { return fArray.at(index); }

MFloatArray::iterator MFloatArray::begin() { return fArray.begin(); }
MFloatArray::iterator MFloatArray::end() { return fArray.end(); }
MFloatArray::const_iterator MFloatArray::begin() const { return fArray.begin(); }
MFloatArray::const_iterator MFloatArray::end() const { return fArray.end(); }
MFloatArray::const_iterator MFloatArray::cbegin() const { return fArray.begin(); }
MFloatArray::const_iterator MFloatArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MFloatArray& array) { return arrayOps::print(os, array); }

const char* MFloatArray::className() { return "MFloatArray"; }

MStatus MFloatArray::set(float element, unsigned int index) { return fArray.set(element, index); }
MStatus MFloatArray::set(double element, unsigned int index) { return fArray.set(static_cast<float>(element), index); }
MStatus MFloatArray::insert(float element, unsigned int index) { return fArray.insert(element, index); }
MStatus MFloatArray::append(float element) { return fArray.append(element); }

MStatus MFloatArray::copy(const MFloatArray& source) { return arrayOps::copy(*this, source); }

MStatus MFloatArray::get(float dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MFloatArray::get(double dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
