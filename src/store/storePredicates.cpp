#include "store/storePredicates.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

namespace tq {

namespace {

constexpr double kStrokeClosure = 0.001;
constexpr double kRowClosure = 0.0001;

MIntArray intArrayOf(const char* name)
{
    MIntArray out;
    readIntArrayAttr(name, out, findStoreNode());
    return out;
}

bool closesWithin(const MPointArray& row, double tolerance)
{
    return row.length() > 0 && row[0].distanceTo(row[row.length() - 1]) < tolerance;
}

} // namespace

bool hasStrokePoints()
{
    MPointArray points;
    readPointArrayAttr(storeAttr::kStrokes, points, findStoreNode());
    return points.length() > 0;
}

bool hasPlayerVertices() { return intArrayOf(storeAttr::kPlayerVertices).length() > 0; }

bool hasShadow() { return intArrayOf(storeAttr::kSizesShadow).length() > 0; }

int strokeCount() { return static_cast<int>(intArrayOf(storeAttr::kSizes).length()); }

int shadowCount() { return static_cast<int>(intArrayOf(storeAttr::kSizesShadow).length()); }

bool playerLoopClosed()
{
    const MIntArray ids = intArrayOf(storeAttr::kPlayerVertices);
    return ids.length() > 0 && ids[0] == ids[ids.length() - 1];
}

bool boundaryEditMode()
{
    MObject store = findStoreNode();
    MIntArray row1, row2, row3;
    readIntArrayAttr(storeAttr::kShadowIndices1, row1, store);
    readIntArrayAttr(storeAttr::kShadowIndices2, row2, store);
    readIntArrayAttr(storeAttr::kShadowIndices3, row3, store);
    return row1.length() > 0 && row3.length() > 0 && row2.length() == 0;
}

bool shadowIsClosed()
{
    MStatus status;
    const RowList rows = readShadowRows(status);
    if (!rows.empty() && closesWithin(rows[0], kStrokeClosure))
        return true;
    return firstStrokeClosed(0);
}

bool firstStrokeClosed(int n)
{
    MStatus status;
    const RowList rows = readStrokeRows(status);
    if (n < 0 || static_cast<std::size_t>(n) >= rows.size())
        return false;
    return closesWithin(rows[static_cast<std::size_t>(n)], kStrokeClosure);
}

bool anyShadowRowClosed()
{
    MStatus status;
    for (const MPointArray& row : readShadowRows(status))
        if (closesWithin(row, kRowClosure))
            return true;
    return false;
}

} // namespace tq
