#pragma once
// Stroke sets: how the store keeps a list of rows in two attributes. The points of all rows
// lie end to end in a point array, in drawing order; an int array holds the point count of
// each row. Three sets live on the store:
//   working          strokes / sizes                         strokes drawn since the last patch
//   shadow           strokesShadow / sizesShadow             rows of the last patch
//   non-destructive  strokesNondestruct / sizesNondestruct   guide strokes of the last patch
// The sizes are the authority: a reader walks by them and ignores points past their sum,
// which is how the shadow set is left after `writeShadowIndices` or `clearFuseData`.

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

#include <vector>

namespace tq {

struct StrokeSet {
    const char* points; // long name of the point array attribute
    const char* sizes;  // long name of the int array of point counts
};

extern const StrokeSet kWorkingStrokes;
extern const StrokeSet kShadowStrokes;
extern const StrokeSet kNondestructStrokes;

// An ordered list of rows; consecutive rows bound a band of quads.
using RowList = std::vector<MPointArray>;

// Splits `points` by `sizes`: one row per entry, in order, an entry of 0 giving an empty row
// that stays in the list. A row that would run past the end of `points` gets the points
// that are there, and a negative entry counts as 0, so an inconsistent pair from a damaged
// scene decodes without reading out of bounds.
RowList decodeStrokeSet(const MPointArray& points, const MIntArray& sizes);

// The inverse: the rows end to end in `points` and their lengths in `sizes`.
void joinRows(const RowList& rows, MPointArray& points, MIntArray& sizes);

// The working set, one row per entry of `sizes`. No store: empty rows and kInvalidParameter.
// Never-written attributes read as empty.
RowList readStrokeRows(MStatus& status);
// The same for the shadow set.
RowList readShadowRows(MStatus& status);
// The guide rows of the last patch: the non-destructive set, or the shadow rows when either
// of its two attributes is empty.
RowList readGuideRows(MStatus& status);

} // namespace tq
