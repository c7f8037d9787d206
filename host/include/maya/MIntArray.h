#pragma once
// An array of int. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MIntArray
{
public:
    typedef int* iterator;
    typedef const int* const_iterator;

    MIntArray();
    MIntArray(const MIntArray& other);
    MIntArray(MIntArray&& other) noexcept;
    MIntArray(const int src[], unsigned int count);
    MIntArray(unsigned int initialSize, int initialValue = 0);
    ~MIntArray();

    MIntArray& operator=(const MIntArray& other);
    MIntArray& operator=(MIntArray&& other) noexcept;
    MStatus set(int element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(int element, unsigned int index);
    MStatus append(int element);
    MStatus copy(const MIntArray& source);
    MStatus clear();
    MStatus get(int[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    int& operator[](unsigned int index);
    int operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MIntArray& array);

    static const char* className();

private:
    host::internal::HostArray<int> fArray;
};
