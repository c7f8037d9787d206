#pragma once
// A node or data type identifier. The two-part form combines a 24-bit vendor prefix with
// an 8-bit local id: (prefix << 8) | (id & 0xff).

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MTypeId
{
public:
    // Id 0.
    MTypeId();
    ~MTypeId();

    MTypeId(unsigned int id);
    MTypeId(unsigned int prefix, unsigned int id);

    MTypeId(const MTypeId& src);
    MTypeId& operator=(const MTypeId& rhs);
    bool operator==(const MTypeId& rhs) const;
    bool operator!=(const MTypeId& rhs) const;
    unsigned int id(MStatus* ReturnStatus = NULL) const;

    static const char* className();

private:
    unsigned int fId;
};
