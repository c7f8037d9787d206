#pragma once
// An array of MString. Element access out of range asserts in debug builds and
// touches a throw-away element in release builds (see internal/HostArray.h).

#include <maya/MString.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/internal/HostArray.h>

#include <iosfwd>

class MStringArray
{
public:
    typedef MString* iterator;
    typedef const MString* const_iterator;

    MStringArray();
    MStringArray(const MStringArray& other);
    MStringArray(MStringArray&& other) noexcept;
    MStringArray(const MString strings[], unsigned int count);
    MStringArray(const char* strings[], unsigned int count);
    MStringArray(unsigned int initialSize, const MString& initialValue);
    ~MStringArray();

    MString operator[](unsigned int index) const;
    MStringArray& operator=(const MStringArray& other);
    MStringArray& operator=(MStringArray&& other) noexcept;
    MStatus set(const MString& element, unsigned int index);
    MStatus set(char* element, unsigned int index);
    // The char* pointers stay valid until the array or the string changes.
    MStatus get(MString array[]) const;
    MStatus get(char* array[]) const;
    // Position of the first element equal to `element`, or -1.
    int indexOf(const MString& element) const;
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MString& element, unsigned int index);
    MStatus append(const MString& element);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    MString& operator[](unsigned int index);

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    const_iterator cbegin() const;
    const_iterator cend() const;

    friend std::ostream& operator<<(std::ostream& os, const MStringArray& array);

    static const char* className();

private:
    host::internal::HostArray<MString> fArray;
};
