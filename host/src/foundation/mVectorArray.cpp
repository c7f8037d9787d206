#include <maya/MVectorArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MVectorArray::MVectorArray(const MVector vectors[], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MVector>())
{
}

MVectorArray::MVectorArray(const double vectors[][3], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MVector>())
{
}

MVectorArray::MVectorArray(const float vectors[][3], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MVector>())
{
}

MVectorArray::MVectorArray(unsigned int initialSize, const MVector& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MVectorArray::set(const MVector& element, unsigned int index) { return fArray.set(element, index); }

MStatus MVectorArray::set(double element[3], unsigned int index)
{
    return arrayOps::setFromRow<MVector>(fArray, element, index);
}

MStatus MVectorArray::set(float element[3], unsigned int index)
{
    return arrayOps::setFromRow<MVector>(fArray, element, index);
}

MStatus MVectorArray::get(double dest[][3]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MVectorArray::get(float dest[][3]) const { return fArray.get(dest, arrayOps::StoreElement()); }

MVectorArray::MVectorArray() = default;
MVectorArray::MVectorArray(const MVectorArray& other) = default;
MVectorArray::MVectorArray(MVectorArray&& other) noexcept = default;
MVectorArray::~MVectorArray() = default;
MVectorArray& MVectorArray::operator=(const MVectorArray& other) = default;
MVectorArray& MVectorArray::operator=(MVectorArray&& other) noexcept = default;

MStatus MVectorArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MVectorArray::length() const { return fArray.length(); }
MStatus MVectorArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MVectorArray::clear() { return fArray.clear(); }
void MVectorArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MVectorArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MVector& MVectorArray::operator[](unsigned int index) { return fArray.at(index); }
const MVector& MVectorArray::operator[](unsigned int index) const { return fArray.at(index); }

MVectorArray::iterator MVectorArray::begin() { return fArray.begin(); }
MVectorArray::iterator MVectorArray::end() { return fArray.end(); }
MVectorArray::const_iterator MVectorArray::begin() const { return fArray.begin(); }
MVectorArray::const_iterator MVectorArray::end() const { return fArray.end(); }
MVectorArray::const_iterator MVectorArray::cbegin() const { return fArray.begin(); }
MVectorArray::const_iterator MVectorArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MVectorArray& array) { return arrayOps::print(os, array); }

const char* MVectorArray::className() { return "MVectorArray"; }

MStatus MVectorArray::insert(const MVector& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MVectorArray::append(const MVector& element) { return fArray.append(element); }

MStatus MVectorArray::copy(const MVectorArray& source) { return arrayOps::copy(*this, source); }
