#pragma once
// The MFn type hierarchy behind MObject::hasFn, MFnBase::hasObj and the type filters of the
// iterators (MItDependencyNodes, MItDag, MItSelectionList).

#include <maya/MFn.h>

namespace host {

// True when an object whose API type is `actual` is also a `wanted` (the same type, or one
// of its ancestors). Every valid type is a kBase; kInvalid is nothing, not even itself.
// Out-of-range values are never a match.
bool fnIsA(MFn::Type actual, MFn::Type wanted);

} // namespace host
