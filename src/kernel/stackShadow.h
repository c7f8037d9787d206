#pragma once
// The shadow told as vertex numbers: after a patch is made, the rows it left as positions
// are matched to the retopo mesh's vertices, so that they stay true when the user moves
// vertices afterwards.

#include <maya/MStatus.h>

namespace tq {

// Rebuilds `shadowIndices1` and `shadowIndices2` (and `shadowIndices3` when the shadow has a
// third row) from the shadow's position rows, by indicesToPoints on the retopo mesh. When
// any shadow row is closed, each index row's last entry is made its first, closing it too.
// `sizesShadow` is left as it is, and `shadowIndices3` is not touched for two rows.
//
// kInvalidParameter with no retopo mesh selected; the failure of reading the shadow rows is
// returned as it stands, or else that of the first write that failed. Fewer than two shadow
// rows is a broken invariant of the patch generators, raised as std::out_of_range.
MStatus stackShadow();

} // namespace tq
