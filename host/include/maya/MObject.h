#pragma once
// MObject: a generic, reference-counted handle to anything the host owns (a node, an
// attribute, a data object, a component). Function sets attach to it to operate on it.

#include <maya/MFn.h>
#include <maya/MStatus.h>

#include <memory>

namespace host {
class ObjectBody;
class Access;
} // namespace host

class MObject {
public:
    MObject();
    MObject(const MObject& other);
    MObject(MObject&& other) noexcept;
    ~MObject();

    MObject& operator=(const MObject& other);
    MObject& operator=(MObject&& other) noexcept;

    bool hasFn(MFn::Type fs) const;
    bool isNull() const;
    MFn::Type apiType() const;
    const char* apiTypeStr() const;

    bool operator==(const MObject& other) const;
    bool operator!=(const MObject& other) const;

    static MObject kNullObj;

private:
    friend class host::Access;
    std::shared_ptr<host::ObjectBody> fBody;
};
