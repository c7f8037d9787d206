#pragma once
// The bodies the M*Array classes share beyond HostArray's storage: converting what callers
// pass in or ask out, copying and printing. Each class's members forward here in one line.

#include <maya/MStatus.h>

#include <cstddef>
#include <ostream>

namespace host::arrayOps {

// One element built from one source item: an element, a scalar of another precision, or a
// row of scalars (a C array) that the element's own constructor converts.
template <class Element>
struct MakeElement
{
    template <class Source>
    Element operator()(const Source& source) const
    {
        return Element(source);
    }
};

// One element written into the caller's buffer: a scalar cast to the buffer's type, or the
// components of a point or vector, in index order, into a row of scalars.
struct StoreElement
{
    template <class Element, class Scalar, std::size_t N>
    void operator()(const Element& element, Scalar (&row)[N]) const
    {
        for (std::size_t i = 0; i < N; ++i)
            row[i] = static_cast<Scalar>(element[static_cast<unsigned int>(i)]);
    }

    template <class Element, class Dest>
    void operator()(const Element& element, Dest& dest) const
    {
        dest = static_cast<Dest>(element);
    }
};

// A row of scalars from the caller stored as one element; a null row is refused, not read.
template <class Element, class Storage, class Scalar>
MStatus setFromRow(Storage& storage, const Scalar* row, unsigned int index)
{
    if (row == nullptr)
        return MStatus::kInvalidParameter;
    return storage.set(Element(row), index);
}

template <class Array>
MStatus copy(Array& target, const Array& source)
{
    target = source;
    return MStatus::kSuccess;
}

template <class Array>
std::ostream& print(std::ostream& os, const Array& array)
{
    os << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        os << (i == 0 ? "" : ", ") << array[i];
    return os << ']';
}

} // namespace host::arrayOps
