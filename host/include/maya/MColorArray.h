#pragma once
// An array of MColor. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MColor.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MColorArray
{
public:
    typedef MColor* iterator;
    typedef const MColor* const_iterator;

    MColorArray();
    MColorArray(const MColorArray& other);
    MColorArray(MColorArray&& other) noexcept;
    MColorArray(const MColor src[], unsigned int count);
    MColorArray(const float src[][4], unsigned int count);
    MColorArray(const double src[][4], unsigned int count);
    MColorArray(unsigned int initialSize, const MColor& initialValue = MColor::kOpaqueBlack);
    ~MColorArray();

    const MColor& operator[](unsigned int index) const;
    MColorArray& operator=(const MColorArray& other);
    MColorArray& operator=(MColorArray&& other) noexcept;
    MStatus set(const MColor& element, unsigned int index);
    MStatus set(unsigned int index, float r, float g, float b, float a = 1);
    MStatus set(float val[4], unsigned int index);
    // Replace the whole array with `size` colors.
    MStatus set(float elements[][4], unsigned int size);
    MStatus set(double elements[][4], unsigned int size);
    MStatus append(float r, float g, float b, float a = 1);
    MStatus get(float dest[][4]) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MColor& element, unsigned int index);
    MStatus append(const MColor& element);
    MStatus copy(const MColorArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MColor& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MColorArray& array);

    static const char* className();

private:
    host::internal::HostArray<MColor> fArray;
};
