#pragma once
// An array of float. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MFloatArray
{
public:
    typedef float* iterator;
    typedef const float* const_iterator;

    MFloatArray();
    MFloatArray(const MFloatArray& other);
    MFloatArray(MFloatArray&& other) noexcept;
    MFloatArray(const float src[], unsigned int count);
    MFloatArray(const double src[], unsigned int count);
    MFloatArray(unsigned int initialSize, float initialValue = 0);
    ~MFloatArray();

    MFloatArray& operator=(const MFloatArray& other);
    MFloatArray& operator=(MFloatArray&& other) noexcept;
    MStatus set(float element, unsigned int index);
    MStatus set(double element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(float element, unsigned int index);
    MStatus append(float element);
    MStatus copy(const MFloatArray& source);
    MStatus clear();
    MStatus get(float[]) const;
    MStatus get(double[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    float& operator[](unsigned int index);
    float operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MFloatArray& array);

    static const char* className();

private:
    host::internal::HostArray<float> fArray;
};
