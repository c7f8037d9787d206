#include <maya/MStringArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

MStringArray::MStringArray(const MString strings[], unsigned int count)
    : fArray(strings, count, arrayOps::MakeElement<MString>())
{
}

MStringArray::MStringArray(const char* strings[], unsigned int count)
    : fArray(strings, count, [](const char* s) { return MString(s); })
{
}

MStringArray::MStringArray(unsigned int initialSize, const MString& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MStringArray::set(const MString& element, unsigned int index) { return fArray.set(element, index); }

MStatus MStringArray::set(char* element, unsigned int index) { return fArray.set(MString(element), index); }

MStatus MStringArray::get(MString array[]) const
{
    return fArray.get(array, [](const MString& from, MString& to) { to = from; });
}

MStatus MStringArray::get(char* array[]) const
{
    return fArray.get(array, [](const MString& from, char*& to) { to = const_cast<char*>(from.asChar()); });
}

int MStringArray::indexOf(const MString& element) const
{
    for (unsigned int i = 0; i < fArray.length(); ++i)
        if (fArray.at(i) == element)
            return static_cast<int>(i);
    return -1;
}

MStringArray::MStringArray() = default;
MStringArray::MStringArray(const MStringArray& other) = default;
MStringArray::MStringArray(MStringArray&& other) noexcept = default;
MStringArray::~MStringArray() = default;
MStringArray& MStringArray::operator=(const MStringArray& other) = default;
MStringArray& MStringArray::operator=(MStringArray&& other) noexcept = default;

MStatus MStringArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MStringArray::length() const { return fArray.length(); }
MStatus MStringArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MStringArray::clear() { return fArray.clear(); }
void MStringArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MStringArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MString& MStringArray::operator[](unsigned int index) { return fArray.at(index); }
MString MStringArray::operator[](unsigned int index) const { return fArray.at(index); }

MStringArray::iterator MStringArray::begin() { return fArray.begin(); }
MStringArray::iterator MStringArray::end() { return fArray.end(); }
MStringArray::const_iterator MStringArray::begin() const { return fArray.begin(); }
MStringArray::const_iterator MStringArray::end() const { return fArray.end(); }
MStringArray::const_iterator MStringArray::cbegin() const { return fArray.begin(); }
MStringArray::const_iterator MStringArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MStringArray& array) { return arrayOps::print(os, array); }

const char* MStringArray::className() { return "MStringArray"; }

MStatus MStringArray::insert(const MString& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MStringArray::append(const MString& element) { return fArray.append(element); }
