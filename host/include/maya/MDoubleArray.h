#pragma once
// An array of double. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MDoubleArray
{
public:
    typedef double* iterator;
    typedef const double* const_iterator;

    MDoubleArray();
    MDoubleArray(const MDoubleArray& other);
    MDoubleArray(MDoubleArray&& other) noexcept;
    MDoubleArray(const double src[], unsigned int count);
    MDoubleArray(const float src[], unsigned int count);
    MDoubleArray(unsigned int initialSize, double initialValue = 0);
    ~MDoubleArray();

    MDoubleArray& operator=(const MDoubleArray& other);
    MDoubleArray& operator=(MDoubleArray&& other) noexcept;
    MStatus set(double element, unsigned int index);
    MStatus set(float element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(double element, unsigned int index);
    MStatus append(double element);
    MStatus copy(const MDoubleArray& source);
    MStatus clear();
    MStatus get(double[]) const;
    MStatus get(float[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    double& operator[](unsigned int index);
    double operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MDoubleArray& array);

    static const char* className();

private:
    host::internal::HostArray<double> fArray;
};
