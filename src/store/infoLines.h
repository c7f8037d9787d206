#pragma once
// The two info lines, the tool's only messages to the user, drawn by the overlay. Line 1
// (the lower one) tells the outcome of the last action; line 2 (the upper one) the help of
// the current state. They live in the option variables "tqSarn_info1" and "tqSarn_info2",
// so they outlive the call that sets them and the panel's scripts can read them. The
// store's `displayInfo` switches both: at 0 they read as empty.

#include <maya/MString.h>

namespace tq {

// Above this many polygons the source counts as heavy, and every line 1 carries a hint.
constexpr int kHeavySourcePolygons = 500000;

// Line 1. On a heavy source mesh that is not from a referenced file, the text gets the
// warning with the polygon count behind it.
void setInfo1(const MString& text);
// Line 2.
void setInfo2(const MString& text);
// Both, line 2 first. Mind the order: the second argument is line 1.
void setInfos(const MString& line2, const MString& line1);

// The lines as the overlay shows them: empty while `displayInfo` is 0, else the stored text,
// or "... 1" / "... 2" when nothing was stored yet.
MString getInfo1();
MString getInfo2();

} // namespace tq
