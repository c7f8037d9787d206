#include <maya/MInt64Array.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MInt64Array::MInt64Array(const MInt64 src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<MInt64>())
{
}

MInt64Array::MInt64Array(unsigned int initialSize, MInt64 initialValue)
    : fArray(initialSize, initialValue)
{
}

MInt64Array::MInt64Array() = default;
MInt64Array::MInt64Array(const MInt64Array& other) = default;
MInt64Array::MInt64Array(MInt64Array&& other) noexcept = default;
MInt64Array::~MInt64Array() = default;
MInt64Array& MInt64Array::operator=(const MInt64Array& other) = default;
MInt64Array& MInt64Array::operator=(MInt64Array&& other) noexcept = default;

MStatus MInt64Array::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MInt64Array::length() const { return fArray.length(); }
MStatus MInt64Array::remove(unsigned int index) { return fArray.remove(index); }
MStatus MInt64Array::clear() { return fArray.clear(); }
void MInt64Array::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MInt64Array::sizeIncrement() const { return fArray.sizeIncrement(); }

MInt64& MInt64Array::operator[](unsigned int index) { return fArray.at(index); }
MInt64 MInt64Array::operator[](unsigned int index) const { return fArray.at(index); }

MInt64Array::iterator MInt64Array::begin() { return fArray.begin(); }
MInt64Array::iterator MInt64Array::end() { return fArray.end(); }
MInt64Array::const_iterator MInt64Array::begin() const { return fArray.begin(); }
MInt64Array::const_iterator MInt64Array::end() const { return fArray.end(); }
MInt64Array::const_iterator MInt64Array::cbegin() const { return fArray.begin(); }
MInt64Array::const_iterator MInt64Array::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MInt64Array& array) { return arrayOps::print(os, array); }

const char* MInt64Array::className() { return "MInt64Array"; }

MStatus MInt64Array::set(MInt64 element, unsigned int index) { return fArray.set(element, index); }
MStatus MInt64Array::insert(MInt64 element, unsigned int index) { return fArray.insert(element, index); }
MStatus MInt64Array::append(MInt64 element) { return fArray.append(element); }

MStatus MInt64Array::copy(const MInt64Array& source) { return arrayOps::copy(*this, source); }

MStatus MInt64Array::get(MInt64 dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
