#include <maya/MFloatPointArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MFloatPointArray::MFloatPointArray(const MFloatPoint points[], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MFloatPoint>())
{
}

MFloatPointArray::MFloatPointArray(const float points[][4], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MFloatPoint>())
{
}

MFloatPointArray::MFloatPointArray(const double points[][4], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MFloatPoint>())
{
}

MFloatPointArray::MFloatPointArray(unsigned int initialSize, const MFloatPoint& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MFloatPointArray::set(const MFloatPoint& element, unsigned int index) { return fArray.set(element, index); }

MStatus MFloatPointArray::set(unsigned int index, float x, float y, float z, float w)
{
    return fArray.set(MFloatPoint(x, y, z, w), index);
}

MStatus MFloatPointArray::set(float element[4], unsigned int index)
{
    return arrayOps::setFromRow<MFloatPoint>(fArray, element, index);
}

MStatus MFloatPointArray::set(double element[4], unsigned int index)
{
    return arrayOps::setFromRow<MFloatPoint>(fArray, element, index);
}

MStatus MFloatPointArray::append(float x, float y, float z, float w) { return fArray.append(MFloatPoint(x, y, z, w)); }

MStatus MFloatPointArray::get(float dest[][4]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MFloatPointArray::get(double dest[][4]) const { return fArray.get(dest, arrayOps::StoreElement()); }

MFloatPointArray::MFloatPointArray() = default;
MFloatPointArray::MFloatPointArray(const MFloatPointArray& other) = default;
MFloatPointArray::MFloatPointArray(MFloatPointArray&& other) noexcept = default;
MFloatPointArray::~MFloatPointArray() = default;
MFloatPointArray& MFloatPointArray::operator=(const MFloatPointArray& other) = default;
MFloatPointArray& MFloatPointArray::operator=(MFloatPointArray&& other) noexcept = default;

MStatus MFloatPointArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MFloatPointArray::length() const { return fArray.length(); }
MStatus MFloatPointArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MFloatPointArray::clear() { return fArray.clear(); }
void MFloatPointArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MFloatPointArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MFloatPoint& MFloatPointArray::operator[](unsigned int index) { return fArray.at(index); }
const MFloatPoint& MFloatPointArray::operator[](unsigned int index) const { return fArray.at(index); }

MFloatPointArray::iterator MFloatPointArray::begin() { return fArray.begin(); }
MFloatPointArray::iterator MFloatPointArray::end() { return fArray.end(); }
MFloatPointArray::const_iterator MFloatPointArray::begin() const { return fArray.begin(); }
MFloatPointArray::const_iterator MFloatPointArray::end() const { return fArray.end(); }
MFloatPointArray::const_iterator MFloatPointArray::cbegin() const { return fArray.begin(); }
MFloatPointArray::const_iterator MFloatPointArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MFloatPointArray& array) { return arrayOps::print(os, array); }

const char* MFloatPointArray::className() { return "MFloatPointArray"; }

MStatus MFloatPointArray::insert(const MFloatPoint& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MFloatPointArray::append(const MFloatPoint& element) { return fArray.append(element); }

MStatus MFloatPointArray::copy(const MFloatPointArray& source) { return arrayOps::copy(*this, source); }
