#pragma once
// A 128-bit universally unique identifier, written as 36 characters
// "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX" in upper-case hexadecimal. A default-constructed
// MUuid is not valid until generate() or a successful construction from a value.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MString;

class MUuid
{
public:
    MUuid();
    MUuid(const MUuid& other);
    // Four words, most significant first; a null pointer leaves the MUuid invalid.
    MUuid(const unsigned int* uuid);
    // Sixteen bytes; a null pointer leaves the MUuid invalid.
    MUuid(const unsigned char* uuid);
    // Parses the 36-character form (either case); anything else leaves the MUuid invalid
    // and reports kInvalidParameter.
    MUuid(const MString& value, MStatus* ReturnStatus = NULL);
    ~MUuid();

    MUuid& operator=(const MUuid& rhs);
    bool operator==(const MUuid& rhs) const;
    bool operator!=(const MUuid& rhs) const;
    // Writes the sixteen bytes; fails for a null pointer or an invalid MUuid.
    MStatus get(unsigned char* uuid) const;
    // Empty for an invalid MUuid.
    MString asString() const;
    operator MString() const;
    void copy(const MUuid& rhs);

    bool valid() const;
    // A new random (version 4) identifier.
    MStatus generate();

    static const char* className();

private:
    unsigned char fBytes[16];
    bool fValid;
};
