#pragma once
// An array of MFloatPoint. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MFloatPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MFloatPointArray
{
public:
    typedef MFloatPoint* iterator;
    typedef const MFloatPoint* const_iterator;

    MFloatPointArray();
    MFloatPointArray(const MFloatPointArray& other);
    MFloatPointArray(MFloatPointArray&& other) noexcept;
    MFloatPointArray(const MFloatPoint points[], unsigned int count);
    MFloatPointArray(const float points[][4], unsigned int count);
    MFloatPointArray(const double points[][4], unsigned int count);
    MFloatPointArray(unsigned int initialSize, const MFloatPoint& initialValue = MFloatPoint::origin);
    ~MFloatPointArray();

    const MFloatPoint& operator[](unsigned int index) const;
    MFloatPointArray& operator=(const MFloatPointArray& other);
    MFloatPointArray& operator=(MFloatPointArray&& other) noexcept;
    MStatus set(const MFloatPoint& element, unsigned int index);
    MStatus set(unsigned int index, float x, float y, float z = 0, float w = 1);
    MStatus set(float element[4], unsigned int index);
    MStatus set(double element[4], unsigned int index);
    MStatus append(float x, float y, float z = 0, float w = 1);
    MStatus get(float[][4]) const;
    MStatus get(double[][4]) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MFloatPoint& element, unsigned int index);
    MStatus append(const MFloatPoint& element);
    MStatus copy(const MFloatPointArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MFloatPoint& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MFloatPointArray& array);

    static const char* className();

private:
    host::internal::HostArray<MFloatPoint> fArray;
};
