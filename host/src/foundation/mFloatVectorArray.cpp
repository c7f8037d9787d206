#include <maya/MFloatVectorArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MFloatVectorArray::MFloatVectorArray(const MFloatVector vectors[], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MFloatVector>())
{
}

MFloatVectorArray::MFloatVectorArray(const double vectors[][3], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MFloatVector>())
{
}

MFloatVectorArray::MFloatVectorArray(const float vectors[][3], unsigned int count)
    : fArray(vectors, count, arrayOps::MakeElement<MFloatVector>())
{
}

MFloatVectorArray::MFloatVectorArray(unsigned int initialSize, const MFloatVector& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MFloatVectorArray::set(const MFloatVector& element, unsigned int index) { return fArray.set(element, index); }

MStatus MFloatVectorArray::set(double element[3], unsigned int index)
{
    return arrayOps::setFromRow<MFloatVector>(fArray, element, index);
}

MStatus MFloatVectorArray::set(float element[3], unsigned int index)
{
    return arrayOps::setFromRow<MFloatVector>(fArray, element, index);
}

MStatus MFloatVectorArray::get(double dest[][3]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MFloatVectorArray::get(float dest[][3]) const { return fArray.get(dest, arrayOps::StoreElement()); }

MFloatVectorArray::MFloatVectorArray() = default;
MFloatVectorArray::MFloatVectorArray(const MFloatVectorArray& other) = default;
MFloatVectorArray::MFloatVectorArray(MFloatVectorArray&& other) noexcept = default;
MFloatVectorArray::~MFloatVectorArray() = default;
MFloatVectorArray& MFloatVectorArray::operator=(const MFloatVectorArray& other) = default;
MFloatVectorArray& MFloatVectorArray::operator=(MFloatVectorArray&& other) noexcept = default;

MStatus MFloatVectorArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MFloatVectorArray::length() const { return fArray.length(); }
MStatus MFloatVectorArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MFloatVectorArray::clear() { return fArray.clear(); }
void MFloatVectorArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MFloatVectorArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MFloatVector& MFloatVectorArray::operator[](unsigned int index) { return fArray.at(index); }
const MFloatVector& MFloatVectorArray::operator[](unsigned int index) const { return fArray.at(index); }

MFloatVectorArray::iterator MFloatVectorArray::begin() { return fArray.begin(); }
MFloatVectorArray::iterator MFloatVectorArray::end() { return fArray.end(); }
MFloatVectorArray::const_iterator MFloatVectorArray::begin() const { return fArray.begin(); }
MFloatVectorArray::const_iterator MFloatVectorArray::end() const { return fArray.end(); }
MFloatVectorArray::const_iterator MFloatVectorArray::cbegin() const { return fArray.begin(); }
MFloatVectorArray::const_iterator MFloatVectorArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MFloatVectorArray& array) { return arrayOps::print(os, array); }

const char* MFloatVectorArray::className() { return "MFloatVectorArray"; }

MStatus MFloatVectorArray::insert(const MFloatVector& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MFloatVectorArray::append(const MFloatVector& element) { return fArray.append(element); }

MStatus MFloatVectorArray::copy(const MFloatVectorArray& source) { return arrayOps::copy(*this, source); }
