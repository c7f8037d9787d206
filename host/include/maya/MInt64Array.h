#pragma once
// An array of 64-bit signed integers. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MInt64Array
{
public:
    typedef MInt64* iterator;
    typedef const MInt64* const_iterator;

    MInt64Array();
    MInt64Array(const MInt64Array& other);
    MInt64Array(MInt64Array&& other) noexcept;
    MInt64Array(const MInt64 src[], unsigned int count);
    MInt64Array(unsigned int initialSize, MInt64 initialValue = 0);
    ~MInt64Array();

    MInt64Array& operator=(const MInt64Array& other);
    MInt64Array& operator=(MInt64Array&& other) noexcept;
    MStatus set(MInt64 element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(MInt64 element, unsigned int index);
    MStatus append(MInt64 element);
    MStatus copy(const MInt64Array& source);
    MStatus clear();
    MStatus get(MInt64[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MInt64& operator[](unsigned int index);
    MInt64 operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MInt64Array& array);

    static const char* className();

private:
    host::internal::HostArray<MInt64> fArray;
};
