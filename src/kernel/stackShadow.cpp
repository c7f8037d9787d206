#include "kernel/stackShadow.h"

#include "kernel/debugDump.h"
#include "kernel/indicesToPoints.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>

#include <stdexcept>

namespace tq {

namespace {

// Ends an index row on its first entry, as a closed row's loop is stored.
void closeOnFirst(MIntArray& indices)
{
    if (indices.length() != 0)
        indices[indices.length() - 1] = indices[0];
}

void keepFirstFailure(MStatus& result, const MStatus& next)
{
    if (result && !next)
        result = next;
}

} // namespace

MStatus stackShadow()
{
    const MDagPath meshPath = getActiveMeshPath();
    if (!meshPath.isValid())
        return MStatus::kInvalidParameter;

    MStatus status;
    const RowList rows = readShadowRows(status);
    if (!status)
        return status;
    const bool closed = anyShadowRowClosed();

    // The generators always leave two rows; fewer is their fault, not the user's.
    if (rows.size() < 2)
        throw std::out_of_range("invalid vector subscript");

    // An empty row gives an empty index row with kInvalidParameter: that is what is stored.
    MStatus ignored;
    MIntArray idx1 = indicesToPoints(meshPath, rows[0], ignored);
    MIntArray idx2 = indicesToPoints(meshPath, rows[1], ignored);

    const MObject store = findStoreNode();
    MStatus result;
    if (rows.size() > 2) {
        MIntArray idx3 = indicesToPoints(meshPath, rows[2], ignored);
        if (closed)
            closeOnFirst(idx3);
        keepFirstFailure(result, writeIntArrayAttr(idx3, storeAttr::kShadowIndices3, store));
    }
    if (closed && idx1.length() != 0 && idx2.length() != 0) {
        closeOnFirst(idx1);
        closeOnFirst(idx2);
    }
    keepFirstFailure(result, writeIntArrayAttr(idx1, storeAttr::kShadowIndices1, store));
    keepFirstFailure(result, writeIntArrayAttr(idx2, storeAttr::kShadowIndices2, store));
    dumpIndices(idx1, "(indices1) stack shadow");
    dumpIndices(idx2, "(indices2) stack shadow");
    return result;
}

} // namespace tq
