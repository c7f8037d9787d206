#pragma once
// The hooks behind the kernel's debug labels ("multispit", "indicesToPoints", ...): each
// builds a one-line text of an array and shows it to nobody. The text is returned so that a
// debugging build or a test can look at it.

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

namespace tq {

// "<label> (len: <n>)" then " o-o empty o-o" when empty, or " <i>" per element.
MString dumpIndices(const MIntArray& indices, const MString& label);

// "<label> (len: <n>) [" then " o-o empty o-o" when empty, or " (x, y, z), " per point, then "]".
MString dumpPoints(const MPointArray& points, const MString& label);

} // namespace tq
