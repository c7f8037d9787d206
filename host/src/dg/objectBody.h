#pragma once
// The host side of an MObject: everything a handle can point at (nodes, attributes, data,
// components) derives from ObjectBody. MObject holds a shared pointer to one; a deleted
// node keeps its body alive for the handles that still refer to it, marked dead.

#include <maya/MFn.h>

#include <memory>

namespace host {

class ObjectBody {
public:
    virtual ~ObjectBody() = default;
    virtual MFn::Type apiType() const = 0;
    // Dead objects (deleted nodes) answer as null handles to MObjectHandle::isAlive.
    virtual bool alive() const { return true; }
};

using BodyPtr = std::shared_ptr<ObjectBody>;

} // namespace host
