#include <maya/MIntArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MIntArray::MIntArray(const int src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<int>())
{
}

MIntArray::MIntArray(unsigned int initialSize, int initialValue)
    : fArray(initialSize, initialValue)
{
}

MIntArray::MIntArray() = default;
MIntArray::MIntArray(const MIntArray& other) = default;
MIntArray::MIntArray(MIntArray&& other) noexcept = default;
MIntArray::~MIntArray() = default;
MIntArray& MIntArray::operator=(const MIntArray& other) = default;
MIntArray& MIntArray::operator=(MIntArray&& other) noexcept = default;

MStatus MIntArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MIntArray::length() const { return fArray.length(); }
MStatus MIntArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MIntArray::clear() { return fArray.clear(); }
void MIntArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MIntArray::sizeIncrement() const { return fArray.sizeIncrement(); }

int& MIntArray::operator[](unsigned int index) { return fArray.at(index); }
int MIntArray::operator[](unsigned int index) const { return fArray.at(index); }

MIntArray::iterator MIntArray::begin() { return fArray.begin(); }
MIntArray::iterator MIntArray::end() { return fArray.end(); }
MIntArray::const_iterator MIntArray::begin() const { return fArray.begin(); }
MIntArray::const_iterator MIntArray::end() const { return fArray.end(); }
MIntArray::const_iterator MIntArray::cbegin() const { return fArray.begin(); }
MIntArray::const_iterator MIntArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MIntArray& array) { return arrayOps::print(os, array); }

const char* MIntArray::className() { return "MIntArray"; }

MStatus MIntArray::set(int element, unsigned int index) { return fArray.set(element, index); }
MStatus MIntArray::insert(int element, unsigned int index) { return fArray.insert(element, index); }
MStatus MIntArray::append(int element) { return fArray.append(element); }

MStatus MIntArray::copy(const MIntArray& source) { return arrayOps::copy(*this, source); }

MStatus MIntArray::get(int dest[]) const { return fArray.get(dest, arrayOps::StoreElement()); }
