#include <maya/MUintArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MUintArray::MUintArray(const unsigned int src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<unsigned int>())
{
}

MUintArray::MUintArray(unsigned int initialSize, unsigned int initialValue)
    : fArray(initialSize, initialValue)
{
}

MUintArray::MUintArray() = default;
MUintArray::MUintArray(const MUintArray& other) = default;
MUintArray::MUintArray(MUintArray&& other) noexcept = default;
MUintArray::~MUintArray() = default;
MUintArray& MUintArray::operator=(const MUintArray& other) = default;
MUintArray& MUintArray::operator=(MUintArray&& other) noexcept = default;

MStatus MUintArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MUintArray::length() const { return fArray.length(); }
MStatus MUintArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MUintArray::clear() { return fArray.clear(); }
void MUintArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MUintArray::sizeIncrement() const { return fArray.sizeIncrement(); }

unsigned int& MUintArray::operator[](unsigned int index) { return fArray.at(index); }
unsigned int MUintArray::operator[](unsigned int index) const { return fArray.at(index); }

MUintArray::iterator MUintArray::begin() { return fArray.begin(); }
MUintArray::iterator MUintArray::end() { return fArray.end(); }
MUintArray::const_iterator MUintArray::begin() const { return fArray.begin(); }
MUintArray::const_iterator MUintArray::end() const { return fArray.end(); }
MUintArray::const_iterator MUintArray::cbegin() const { return fArray.begin(); }
MUintArray::const_iterator MUintArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MUintArray& array) { return arrayOps::print(os, array); }

const char* MUintArray::className() { return "MUintArray"; }

MStatus MUintArray::set(unsigned int element, unsigned int index) { return fArray.set(element, index); }
MStatus MUintArray::insert(unsigned int element, unsigned int index) { return fArray.insert(element, index); }
MStatus MUintArray::append(unsigned int element) { return fArray.append(element); }

MStatus MUintArray::copy(const MUintArray& source) { return arrayOps::copy(*this, source); }

MStatus MUintArray::get(unsigned int dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
