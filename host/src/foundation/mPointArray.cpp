#include <maya/MPointArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MPointArray::MPointArray(const MPoint points[], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MPoint>())
{
}

MPointArray::MPointArray(const double points[][4], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MPoint>())
{
}

MPointArray::MPointArray(const float points[][4], unsigned int count)
    : fArray(points, count, arrayOps::MakeElement<MPoint>())
{
}

MPointArray::MPointArray(unsigned int initialSize, const MPoint& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MPointArray::set(const MPoint& element, unsigned int index) { return fArray.set(element, index); }

MStatus MPointArray::set(unsigned int index, double x, double y, double z, double w)
{
    return fArray.set(MPoint(x, y, z, w), index);
}

MStatus MPointArray::set(double element[4], unsigned int index)
{
    return arrayOps::setFromRow<MPoint>(fArray, element, index);
}

MStatus MPointArray::set(float element[4], unsigned int index)
{
    return arrayOps::setFromRow<MPoint>(fArray, element, index);
}

MStatus MPointArray::append(double x, double y, double z, double w) { return fArray.append(MPoint(x, y, z, w)); }

MStatus MPointArray::get(double dest[][4]) const { return fArray.get(dest, arrayOps::StoreElement()); }
MStatus MPointArray::get(float dest[][4]) const { return fArray.get(dest, arrayOps::StoreElement()); }

MPointArray::MPointArray() = default;
MPointArray::MPointArray(const MPointArray& other) = default;
MPointArray::MPointArray(MPointArray&& other) noexcept = default;
MPointArray::~MPointArray() = default;
MPointArray& MPointArray::operator=(const MPointArray& other) = default;
MPointArray& MPointArray::operator=(MPointArray&& other) noexcept = default;

MStatus MPointArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MPointArray::length() const { return fArray.length(); }
MStatus MPointArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MPointArray::clear() { return fArray.clear(); }
void MPointArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MPointArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MPoint& MPointArray::operator[](unsigned int index) { return fArray.at(index); }
const MPoint& MPointArray::operator[](unsigned int index) const { return fArray.at(index); }

MPointArray::iterator MPointArray::begin() { return fArray.begin(); }
MPointArray::iterator MPointArray::end() { return fArray.end(); }
MPointArray::const_iterator MPointArray::begin() const { return fArray.begin(); }
MPointArray::const_iterator MPointArray::end() const { return fArray.end(); }
MPointArray::const_iterator MPointArray::cbegin() const { return fArray.begin(); }
MPointArray::const_iterator MPointArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MPointArray& array) { return arrayOps::print(os, array); }

const char* MPointArray::className() { return "MPointArray"; }

MStatus MPointArray::insert(const MPoint& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MPointArray::append(const MPoint& element) { return fArray.append(element); }

MStatus MPointArray::copy(const MPointArray& source) { return arrayOps::copy(*this, source); }
