#pragma once
// MCallbackIdArray: an array of callback ids.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <vector>

class MCallbackIdArray {
public:
    MCallbackIdArray();
    MCallbackIdArray(const MCallbackIdArray& other);
    ~MCallbackIdArray();

    MCallbackId operator[](unsigned int index) const;
    MCallbackId& operator[](unsigned int index);
    MCallbackIdArray& operator=(const MCallbackIdArray& other);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(MCallbackId element, unsigned int index);
    MStatus append(MCallbackId element);
    MStatus clear();

private:
    std::vector<MCallbackId> fItems;
};
