#include "store/strokeSet.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/tqSarn.h"

#include <algorithm>
#include <cstdint>

namespace tq {

const StrokeSet kWorkingStrokes{storeAttr::kStrokes, storeAttr::kSizes};
const StrokeSet kShadowStrokes{storeAttr::kStrokesShadow, storeAttr::kSizesShadow};
const StrokeSet kNondestructStrokes{storeAttr::kStrokesNondestruct, storeAttr::kSizesNondestruct};

namespace {

// Both attributes of a set; a never-written attribute reads as empty (its failure is only
// the missing data, which is not an error).
RowList readSet(const StrokeSet& set, MStatus& status, MPointArray* pointsOut = nullptr,
                MIntArray* sizesOut = nullptr)
{
    status = MStatus::kSuccess;
    MObject store = findStoreNode();
    if (store.isNull()) {
        status = MStatus::kInvalidParameter;
        return RowList();
    }
    MPointArray points;
    MIntArray sizes;
    readPointArrayAttr(set.points, points, store);
    readIntArrayAttr(set.sizes, sizes, store);
    RowList rows = decodeStrokeSet(points, sizes);
    if (pointsOut)
        *pointsOut = points;
    if (sizesOut)
        *sizesOut = sizes;
    return rows;
}

} // namespace

RowList decodeStrokeSet(const MPointArray& points, const MIntArray& sizes)
{
    RowList rows;
    rows.reserve(sizes.length());
    const unsigned int available = points.length();
    unsigned int offset = 0;
    for (unsigned int i = 0; i < sizes.length(); ++i) {
        const unsigned int count = sizes[i] > 0 ? static_cast<unsigned int>(sizes[i]) : 0u;
        MPointArray row;
        for (unsigned int k = 0; k < count && offset + k < available; ++k)
            row.append(points[offset + k]);
        rows.push_back(row);
        offset = static_cast<unsigned int>(std::min<std::uint64_t>(available, std::uint64_t(offset) + count));
    }
    return rows;
}

void joinRows(const RowList& rows, MPointArray& points, MIntArray& sizes)
{
    points.clear();
    sizes.clear();
    for (const MPointArray& row : rows) {
        for (unsigned int k = 0; k < row.length(); ++k)
            points.append(row[k]);
        sizes.append(static_cast<int>(row.length()));
    }
}

RowList readStrokeRows(MStatus& status) { return readSet(kWorkingStrokes, status); }

RowList readShadowRows(MStatus& status) { return readSet(kShadowStrokes, status); }

RowList readGuideRows(MStatus& status)
{
    MPointArray points;
    MIntArray sizes;
    RowList rows = readSet(kNondestructStrokes, status, &points, &sizes);
    if (!status)
        return rows;
    if (points.length() == 0 || sizes.length() == 0)
        return readShadowRows(status);
    return rows;
}

} // namespace tq
