#include "store/storeWrites.h"

#include "kernel/meshQueries.h"
#include "store/hostWidgets.h"
#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/tqSarn.h"

#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MPoint.h>

#include <algorithm>

namespace tq {

using namespace storeAttr;

namespace {

constexpr const char* kModule = logModule::kFunctions;

MStatus emptyPoints(const char* name, const MObject& store) { return writePointArrayAttr(MPointArray(), name, store); }

MStatus emptyInts(const char* name, const MObject& store) { return writeIntArrayAttr(MIntArray(), name, store); }

// Keeps the first failure of a sequence that goes on after failures.
void keepFirstFailure(MStatus& result, const MStatus& status)
{
    if (result && !status)
        result = status;
}

} // namespace

MStatus clearStrokes()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MStatus status = emptyPoints(kStrokes, store);
    if (!status)
        return status;
    return emptyInts(kSizes, store);
}

bool popLastStroke()
{
    MObject store = findStoreNode();
    MIntArray sizes;
    readSizes(store, sizes);
    if (sizes.length() == 0)
        return false;
    const int last = sizes[sizes.length() - 1];
    sizes.setLength(sizes.length() - 1);
    writeIntArrayAttr(sizes, kSizes, store);

    MPointArray points;
    readStrokes(store, points);
    const unsigned int drop = std::min(points.length(), static_cast<unsigned int>(std::max(last, 0)));
    MPointArray kept;
    for (unsigned int i = 0; i + drop < points.length(); ++i)
        kept.append(points[i]);
    writePointArrayAttr(kept, kStrokes, store);
    return true;
}

MStatus appendStroke(const MPointArray& points)
{
    if (points.length() == 0)
        return MStatus::kInvalidParameter;
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    MPointArray strokes;
    readStrokes(store, strokes);
    for (unsigned int i = 0; i < points.length(); ++i)
        strokes.append(points[i]);
    MStatus status = writePointArrayAttr(strokes, kStrokes, store);
    if (!status)
        return status;
    MIntArray sizes;
    readSizes(store, sizes);
    sizes.append(static_cast<int>(points.length()));
    return writeIntArrayAttr(sizes, kSizes, store);
}

MStatus clearShadow()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MStatus result = emptyPoints(kStrokesShadow, store);
    keepFirstFailure(result, emptyInts(kSizesShadow, store));
    return result;
}

MStatus clearShadowIndices()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    for (const char* name : {kShadowIndices1, kShadowIndices2, kShadowIndices3}) {
        MStatus status = emptyInts(name, store);
        if (!status)
            return status;
    }
    return MStatus::kSuccess;
}

MStatus clearFuseData()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MStatus result = emptyPoints(kFusePoints, store);
    keepFirstFailure(result, emptyPoints(kFuseMesh, store));
    keepFirstFailure(result, emptyInts(kFuseIndices, store));
    // Deliberate: the shadow sizes go with the fuse preview, and the shadow positions stay.
    // hasShadow() is false afterwards; the next patch rewrites both.
    keepFirstFailure(result, emptyInts(kSizesShadow, store));
    return result;
}

MStatus clearNewFaces()
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kSuccess) : emptyInts(kNewFaces, store);
}

MStatus clearPlayerVertices()
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kSuccess) : emptyInts(kPlayerVertices, store);
}

MStatus clearPlayersLine()
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kUnknownParameter) : emptyPoints(kPlayersLine, store);
}

MStatus clearFreePoints()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MStatus status = emptyPoints(kFreePoints, store);
    setButtonChecked(widget::kFreezeButton, false);
    return status;
}

MStatus clearFreezeMedian()
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MStatus status = emptyPoints(kFreezeMedian, store);
    setButtonChecked(widget::kFreezeMedianButton, false);
    return status;
}

MStatus clearMagnetPoints()
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kSuccess) : emptyPoints(kMagnetPoints, store);
}

MStatus writePlayerPoints(const MPointArray& points)
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    MStatus result = writePointArrayAttr(points, kPlayersLine, store);
    keepFirstFailure(result, writePointArrayAttr(points, kPlayerPoints, store));
    return result;
}

MStatus writePlayersFromVertices(const MIntArray& ids)
{
    // No ids need no mesh: an empty chain is written as it is.
    MStatus status;
    const MPointArray positions = ids.length() == 0 ? MPointArray() : vertexPositions(ids, MDagPath(), status);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "anchor vertices");
        return status;
    }
    return writePlayerPoints(positions);
}

MStatus writePlayerVertices(const MIntArray& ids)
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kInvalidParameter) : writeIntArrayAttr(ids, kPlayerVertices, store);
}

MStatus writeNewFaces(const MIntArray& ids)
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kInvalidParameter) : writeIntArrayAttr(ids, kNewFaces, store);
}

MStatus writeShadowIndices(const MIntArray& row1, const MIntArray& row2, const MIntArray& row3)
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    MStatus result = writeIntArrayAttr(row1, kShadowIndices1, store);
    keepFirstFailure(result, writeIntArrayAttr(row2, kShadowIndices2, store));
    keepFirstFailure(result, writeIntArrayAttr(row3, kShadowIndices3, store));
    MIntArray sizes;
    for (const MIntArray* row : {&row1, &row2, &row3})
        if (row->length() > 0)
            sizes.append(static_cast<int>(row->length()));
    keepFirstFailure(result, writeIntArrayAttr(sizes, kSizesShadow, store));
    return result;
}

MStatus writeShadowStrokes(const MPointArray& row1, const MPointArray& row2, const MPointArray& row3)
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    RowList rows;
    if (row3.length() == 0)
        rows = {row1, row2};
    else
        rows = {row3};
    MPointArray points;
    MIntArray sizes;
    joinRows(rows, points, sizes);
    MStatus result = writePointArrayAttr(points, kStrokesShadow, store);
    keepFirstFailure(result, writeIntArrayAttr(sizes, kSizesShadow, store));
    return result;
}

MStatus writeNondestructRows(const RowList& rows)
{
    MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    MPointArray points;
    MIntArray sizes;
    joinRows(rows, points, sizes);
    MStatus result = writeIntArrayAttr(sizes, kSizesNondestruct, store);
    keepFirstFailure(result, writePointArrayAttr(points, kStrokesNondestruct, store));
    return result;
}

MStatus setPinch(double value)
{
    MObject store = findStoreNode();
    return store.isNull() ? MStatus(MStatus::kInvalidParameter) : writeDoubleAttr(value, kPinch, store);
}

} // namespace tq
