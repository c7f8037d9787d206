#pragma once
// An array of MFloatVector. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MFloatVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MFloatVectorArray
{
public:
    typedef MFloatVector* iterator;
    typedef const MFloatVector* const_iterator;

    MFloatVectorArray();
    MFloatVectorArray(const MFloatVectorArray& other);
    MFloatVectorArray(MFloatVectorArray&& other) noexcept;
    MFloatVectorArray(const MFloatVector vectors[], unsigned int count);
    MFloatVectorArray(const double vectors[][3], unsigned int count);
    MFloatVectorArray(const float vectors[][3], unsigned int count);
    MFloatVectorArray(unsigned int initialSize, const MFloatVector& initialValue = MFloatVector::zero);
    ~MFloatVectorArray();

    const MFloatVector& operator[](unsigned int index) const;
    MFloatVectorArray& operator=(const MFloatVectorArray& other);
    MFloatVectorArray& operator=(MFloatVectorArray&& other) noexcept;
    MStatus set(const MFloatVector& element, unsigned int index);
    MStatus set(double element[3], unsigned int index);
    MStatus set(float element[3], unsigned int index);
    MStatus get(double[][3]) const;
    MStatus get(float[][3]) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MFloatVector& element, unsigned int index);
    MStatus append(const MFloatVector& element);
    MStatus copy(const MFloatVectorArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MFloatVector& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MFloatVectorArray& array);

    static const char* className();

private:
    host::internal::HostArray<MFloatVector> fArray;
};
