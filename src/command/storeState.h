#pragma once
// The tool command's copies of the store's memory: what an operation found before it ran and
// left after, so that undo and redo can put the player row, the guide strokes and the shadow
// back as they stood. The working strokes, `newFaces`, the option variables and the
// selection are not part of any copy.

#include "store/strokeSet.h"

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

namespace tq {

struct StoreState {
    MPointArray playerPoints;  // playerpts
    MIntArray playerVertices;  // playervtx
    RowList nondestructRows;   // the guide rows (the shadow rows when none are kept)
    RowList shadowRows;        // strokesShadow cut by sizesShadow
    MIntArray shadowIndices1;
    MIntArray shadowIndices2;
    MIntArray shadowIndices3;
};

// Index rows only, for operations that change a patch in place.
struct SpanIndices {
    MIntArray playerVertices;
    MIntArray shadowIndices1;
    MIntArray shadowIndices2;
    MIntArray shadowIndices3;
};

// Reads the whole state from the store. A failing read (no store, an attribute never
// written) is logged and returned, with `state` left as it was.
MStatus readStoreState(StoreState& state);

// Writes `state` back: the player vertices and points, the guide rows, then the shadow.
// Deliberate: the second shadow position row written is the saved player row, not the saved
// second shadow row (the player row is the far side of the last patch, where the next one
// grows); with no saved shadow rows at all, the player row stands as row 2 in both faces.
MStatus writeStoreState(const StoreState& state);

// Reads the player vertices and the three shadow index rows. A failing read is logged and
// returned, with `indices` left as it was.
MStatus readSpanIndices(SpanIndices& indices);

// Writes the index rows back, with the player row's positions read off the retopo mesh.
MStatus writeSpanIndices(const SpanIndices& indices);

} // namespace tq
