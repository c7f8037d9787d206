#pragma once
// MObjectHandle: tells whether the object behind an MObject still exists, and gives a
// hash code that stays the same for the object's whole life.

#include <maya/MObject.h>

class MObjectHandle {
public:
    MObjectHandle();
    MObjectHandle(const MObject& object);
    MObjectHandle(const MObjectHandle& handle);
    ~MObjectHandle();

    MObject object() const;
    const MObject& objectRef() const;
    unsigned int hashCode() const;
    bool isValid() const;
    bool isAlive() const;

    bool operator==(const MObject& object) const;
    bool operator==(const MObjectHandle& object) const;
    bool operator!=(const MObject& object) const;
    bool operator!=(const MObjectHandle& object) const;
    MObjectHandle& operator=(const MObject& object);
    MObjectHandle& operator=(const MObjectHandle& other);

private:
    MObject fObject;
};
