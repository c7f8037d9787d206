#pragma once
// MObjectArray: an array of MObject handles.

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <ostream>
#include <vector>

class MObjectArray {
public:
    MObjectArray();
    MObjectArray(const MObjectArray& other);
    MObjectArray(unsigned int initialSize, const MObject& initialValue = MObject::kNullObj);
    ~MObjectArray();

    const MObject& operator[](unsigned int index) const;
    MObject& operator[](unsigned int index);
    MObjectArray& operator=(const MObjectArray& other);

    MStatus set(const MObject& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MObject& element, unsigned int index);
    MStatus append(const MObject& element);
    MStatus copy(const MObjectArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    std::vector<MObject>::iterator begin() { return fItems.begin(); }
    std::vector<MObject>::iterator end() { return fItems.end(); }
    std::vector<MObject>::const_iterator begin() const { return fItems.begin(); }
    std::vector<MObject>::const_iterator end() const { return fItems.end(); }

private:
    std::vector<MObject> fItems;
    unsigned int fIncrement = 0;
};
