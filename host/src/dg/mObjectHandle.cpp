#include <maya/MObjectHandle.h>

#include "dg/access.h"

#include <functional>

MObjectHandle::MObjectHandle() = default;
MObjectHandle::MObjectHandle(const MObject& object) : fObject(object) {}
MObjectHandle::MObjectHandle(const MObjectHandle& handle) = default;
MObjectHandle::~MObjectHandle() = default;

MObject MObjectHandle::object() const { return isAlive() ? fObject : MObject::kNullObj; }
const MObject& MObjectHandle::objectRef() const { return isAlive() ? fObject : MObject::kNullObj; }

unsigned int MObjectHandle::hashCode() const
{
    return static_cast<unsigned int>(std::hash<const void*>()(host::Access::body(fObject).get()));
}

bool MObjectHandle::isValid() const { return isAlive(); }

bool MObjectHandle::isAlive() const
{
    const host::BodyPtr& body = host::Access::body(fObject);
    return body && body->alive();
}

bool MObjectHandle::operator==(const MObject& object) const { return fObject == object; }
bool MObjectHandle::operator==(const MObjectHandle& other) const { return fObject == other.fObject; }
bool MObjectHandle::operator!=(const MObject& object) const { return fObject != object; }
bool MObjectHandle::operator!=(const MObjectHandle& other) const { return fObject != other.fObject; }
MObjectHandle& MObjectHandle::operator=(const MObject& object)
{
    fObject = object;
    return *this;
}
MObjectHandle& MObjectHandle::operator=(const MObjectHandle& other) = default;
