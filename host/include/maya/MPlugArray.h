#pragma once
// MPlugArray: an array of plugs.

#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <vector>

class MPlugArray {
public:
    MPlugArray();
    MPlugArray(const MPlugArray& other);
    MPlugArray(unsigned int initialSize, const MPlug& initialValue);
    ~MPlugArray();

    const MPlug& operator[](unsigned int index) const;
    MPlug& operator[](unsigned int index);
    MPlugArray& operator=(const MPlugArray& other);

    MStatus set(const MPlug& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MPlug& element, unsigned int index);
    MStatus append(const MPlug& element);
    MStatus copy(const MPlugArray& source);
    MStatus clear();
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    std::vector<MPlug>::iterator begin() { return fItems.begin(); }
    std::vector<MPlug>::iterator end() { return fItems.end(); }
    std::vector<MPlug>::const_iterator begin() const { return fItems.begin(); }
    std::vector<MPlug>::const_iterator end() const { return fItems.end(); }

private:
    std::vector<MPlug> fItems;
    unsigned int fIncrement = 0;
};
