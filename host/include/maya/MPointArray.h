#pragma once
// An array of MPoint. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MPointArray
{
public:
    typedef MPoint* iterator;
    typedef const MPoint* const_iterator;

    MPointArray();
    MPointArray(const MPointArray& other);
    MPointArray(MPointArray&& other) noexcept;
    MPointArray(const MPoint points[], unsigned int count);
    MPointArray(const double points[][4], unsigned int count);
    MPointArray(const float points[][4], unsigned int count);
    MPointArray(unsigned int initialSize, const MPoint& initialValue = MPoint::origin);
    ~MPointArray();

    const MPoint& operator[](unsigned int index) const;
    MPointArray& operator=(const MPointArray& other);
    MPointArray& operator=(MPointArray&& other) noexcept;
    MStatus set(const MPoint& element, unsigned int index);
    MStatus set(unsigned int index, double x, double y, double z = 0, double w = 1);
    MStatus set(double element[4], unsigned int index);
    MStatus set(float element[4], unsigned int index);
    MStatus append(double x, double y, double z = 0, double w = 1);
    MStatus get(double[][4]) const;
    MStatus get(float[][4]) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MPoint& element, unsigned int index);
    MStatus append(const MPoint& element);
    MStatus copy(const MPointArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MPoint& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MPointArray& array);

    static const char* className();

private:
    host::internal::HostArray<MPoint> fArray;
};
