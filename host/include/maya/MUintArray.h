#pragma once
// An array of unsigned int. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MUintArray
{
public:
    typedef unsigned int* iterator;
    typedef const unsigned int* const_iterator;

    MUintArray();
    MUintArray(const MUintArray& other);
    MUintArray(MUintArray&& other) noexcept;
    MUintArray(const unsigned int src[], unsigned int count);
    MUintArray(unsigned int initialSize, unsigned int initialValue = 0);
    ~MUintArray();

    MUintArray& operator=(const MUintArray& other);
    MUintArray& operator=(MUintArray&& other) noexcept;
    MStatus set(unsigned int element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(unsigned int element, unsigned int index);
    MStatus append(unsigned int element);
    MStatus copy(const MUintArray& source);
    MStatus clear();
    MStatus get(unsigned int[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    unsigned int& operator[](unsigned int index);
    unsigned int operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MUintArray& array);

    static const char* className();

private:
    host::internal::HostArray<unsigned int> fArray;
};
