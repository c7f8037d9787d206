#pragma once
// An array of MVector. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MVectorArray
{
public:
    typedef MVector* iterator;
    typedef const MVector* const_iterator;

    MVectorArray();
    MVectorArray(const MVectorArray& other);
    MVectorArray(MVectorArray&& other) noexcept;
    MVectorArray(const MVector vectors[], unsigned int count);
    MVectorArray(const double vectors[][3], unsigned int count);
    MVectorArray(const float vectors[][3], unsigned int count);
    MVectorArray(unsigned int initialSize, const MVector& initialValue = MVector::zero);
    ~MVectorArray();

    const MVector& operator[](unsigned int index) const;
    MVectorArray& operator=(const MVectorArray& other);
    MVectorArray& operator=(MVectorArray&& other) noexcept;
    MStatus set(const MVector& element, unsigned int index);
    MStatus set(double element[3], unsigned int index);
    MStatus set(float element[3], unsigned int index);
    MStatus get(double[][3]) const;
    MStatus get(float[][3]) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MVector& element, unsigned int index);
    MStatus append(const MVector& element);
    MStatus copy(const MVectorArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MVector& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MVectorArray& array);

    static const char* className();

private:
    host::internal::HostArray<MVector> fArray;
};
