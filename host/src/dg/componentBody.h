#pragma once
// Components: a kind (mesh vertices, edges or faces) and the element indices, in the
// order they were given.

#include "dg/objectBody.h"

#include <vector>

namespace host {

class ComponentBody : public ObjectBody {
public:
    explicit ComponentBody(MFn::Type kind) : fKind(kind) {}
    MFn::Type apiType() const override { return fKind; }

    std::vector<int> elements;
    bool complete = false; // "[*]": every element of the shape
    int completeCount = 0;

private:
    MFn::Type fKind;
};

} // namespace host
