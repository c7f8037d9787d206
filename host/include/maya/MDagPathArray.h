#pragma once
// MDagPathArray: an array of DAG paths.

#include <maya/MDagPath.h>

#include <vector>

class MDagPathArray {
public:
    MDagPathArray();
    MDagPathArray(const MDagPathArray& other);
    ~MDagPathArray();

    const MDagPath& operator[](unsigned int index) const;
    MDagPath& operator[](unsigned int index);
    MDagPathArray& operator=(const MDagPathArray& other);
    MStatus set(const MDagPath& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MDagPath& element, unsigned int index);
    MStatus append(const MDagPath& element);
    MStatus copy(const MDagPathArray& source);
    MStatus clear();

    std::vector<MDagPath>::const_iterator begin() const { return fItems.begin(); }
    std::vector<MDagPath>::const_iterator end() const { return fItems.end(); }

private:
    std::vector<MDagPath> fItems;
};
