#include "kernel/shadowRows.h"

#include "kernel/debugDump.h"
#include "kernel/meshQueries.h"
#include "kernel/patchPlumbing.h"
#include "kernel/rowArrays.h"
#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MItGeometry.h>

#include <algorithm>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

// The position of each number of `row` that is a vertex of the mesh; others are skipped.
MPointArray positionsOfExisting(const MIntArray& row, const MPointArray& positions)
{
    MPointArray out;
    for (const int v : row) {
        if (v >= 0 && static_cast<unsigned int>(v) < positions.length())
            out.append(positions[static_cast<unsigned int>(v)]);
    }
    return out;
}

// Every vertex of the mesh in world space; a failure is logged for `caller`.
MStatus worldPositions(const MDagPath& meshPath, MPointArray& positions, const char* caller)
{
    MStatus status;
    MItGeometry it(meshPath, &status);
    if (status)
        status = it.allPositions(positions, MSpace::kWorld);
    if (!status)
        status.pAPIerror(kModule, __LINE__, caller);
    return status;
}

} // namespace

MStatus stackSlices(MPointArray& points, MIntArray& indices)
{
    MIntArray row1, row2, row3;
    MStatus status = readShadowIndices(row1, row2, row3);
    if (!status)
        return status;
    indices = row3.length() != 0 ? row3 : row2;
    for (MIntArray* row : {&row1, &row2, &row3}) {
        status = closeIndexLoop(*row);
        if (!status)
            return status;
    }
    const RowList rows = readShadowRows(status);
    if (!status)
        return status;

    MPointArray p1 = rows.at(0);
    closePointLoop(p1);
    MPointArray p2 = rows.at(1);
    closePointLoop(p2);
    points = p2;
    MPointArray p3;
    if (rows.size() > 2) {
        p3 = rows[2];
        closePointLoop(p3);
        points = p3;
    }
    dumpIndices(row1, "(row1) stack slice indices");
    dumpIndices(row2, "(row2) stack slice indices");
    dumpIndices(row3, "(row3) stack slice indices");
    status = writeShadowIndices(row1, row2, row3);
    if (!status)
        return status;
    return writeShadowStrokes(p1, p2, p3);
}

void finition()
{
    MIntArray row1, row2, row3;
    MStatus status = readShadowIndices(row1, row2, row3);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "finition");
    dumpIndices(row1, "finition before");
    if (row1.length() == 0 || row2.length() == 0)
        return;
    if (row1[0] != row1[row1.length() - 1])
        row1.append(row1[0]);
    row2[row2.length() - 1] = row2[0];
    dumpIndices(row1, "finition after");

    status = writeShadowIndices(row1, row2, row3);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "finition");
    status = refreshShadowRows();
    if (!status)
        status.pAPIerror(kModule, __LINE__, "finition");
    status = writePlayersFromVertices(row2);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "finition");
    status = writePlayerVertices(row2);
    if (!status)
        status.pAPIerror(kModule, __LINE__, "finition");
}

MStatus twistRows(short direction)
{
    if (direction == 0)
        return MStatus::kSuccess;
    MIntArray row1, row2, row3;
    MStatus status = readShadowIndices(row1, row2, row3);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "twistRows");
        return status;
    }
    // The texts of the two refusals stay at their call sites; nobody shows them.
    if (row1.length() != row2.length())
        return MStatus(MStatus::kInvalidParameter); // "twist shadows not equals "
    if (row2.length() == 0)
        return MStatus(MStatus::kInvalidParameter); // "shadow length is 0"

    const unsigned int n = row2.length();
    if (direction > 0) {
        for (unsigned int i = 0; i + 1 < n; ++i)
            row2[i] = row2[i + 1];
        if (n >= 3)
            row2[n - 1] = row2[0];
    } else {
        for (unsigned int i = n - 1; i >= 1; --i)
            row2[i] = row2[i - 1];
        if (n >= 3)
            row2[0] = row2[n - 1];
    }
    status = writeShadowIndices(row1, row2, row3);
    if (!status)
        return status;
    MStatus positionsStatus;
    const MPointArray p1 = vertexPositions(row1, MDagPath(), positionsStatus);
    const MPointArray p2 = vertexPositions(row2, MDagPath(), positionsStatus);
    return writeShadowStrokes(p1, p2, MPointArray());
}

MStatus refreshShadowRows()
{
    MIntArray row1, row2, row3;
    MStatus status = readShadowIndices(row1, row2, row3);
    if (!status) {
        status.pAPIerror(kModule, __LINE__, "refreshShadowRows");
        return status;
    }
    if (!hasPlayerVertices() && !boundaryEditMode())
        return MStatus::kSuccess;
    if (row1.length() != row2.length() && row3.length() == 0)
        return MStatus::kFailure;

    MPointArray rows[3];
    const MIntArray* indexRows[3] = {&row1, &row2, &row3};
    for (int r = 0; r < 3; ++r) {
        rows[r] = vertexPositions(*indexRows[r], MDagPath(), status);
        if (!status)
            return status;
    }
    if (rows[0].length() != rows[1].length() && row3.length() == 0) {
        writeShadowStrokes(MPointArray(), MPointArray(), MPointArray());
        return MStatus(MStatus::kInvalidParameter); // "Not same amount of pos comp: "
    }
    return writeShadowStrokes(rows[0], rows[1], rows[2]);
}

MStatus repositionShadow(const MIntArray& row1, const MIntArray& row2, const MIntArray& row3)
{
    MPointArray rows[3];
    const MIntArray* indexRows[3] = {&row1, &row2, &row3};
    for (int r = 0; r < 3; ++r) {
        MStatus status;
        rows[r] = vertexPositions(*indexRows[r], MDagPath(), status);
        if (!status)
            return status;
    }
    return writeShadowStrokes(rows[0], rows[1], rows[2]);
}

MStatus repositionShadowFromMesh(const MDagPath& meshPath)
{
    if (!meshPath.isValid())
        return MStatus::kFailure;
    MIntArray row1, row2, row3;
    MStatus status = readShadowIndices(row1, row2, row3);
    if (!status)
        return status;
    MPointArray positions;
    if (!(status = worldPositions(meshPath, positions, "repositionShadowFromMesh")))
        return status;
    return writeShadowStrokes(positionsOfExisting(row1, positions), positionsOfExisting(row2, positions),
                              positionsOfExisting(row3, positions));
}

MStatus finishPatchEdit(const MObject& patchNode)
{
    clearStrokes();
    if (!patchNode.isNull())
        resumePatchNode(patchNode);
    refreshShadowRows();
    return MStatus::kSuccess;
}

MStatus lastShadowRow(MIntArray& sizes, MPointArray& points)
{
    const MObject store = findStoreNode();
    MPointArray shadowPoints;
    MIntArray shadowSizes;
    readPointArrayAttr(storeAttr::kStrokesShadow, shadowPoints, store);
    readIntArrayAttr(storeAttr::kSizesShadow, shadowSizes, store);
    if (shadowSizes.length() == 0)
        return MStatus::kInvalidParameter;

    unsigned int offset = 0;
    for (unsigned int i = 0; i + 1 < shadowSizes.length(); ++i)
        offset += static_cast<unsigned int>(std::max(shadowSizes[i], 0));
    const int last = shadowSizes[shadowSizes.length() - 1];
    sizes.append(last);
    // A damaged scene may claim more points than are stored: only those that exist are read.
    for (unsigned int i = offset; i < offset + static_cast<unsigned int>(std::max(last, 0)) && i < shadowPoints.length(); ++i)
        points.append(shadowPoints[i]);
    return MStatus::kSuccess;
}

MStatus refreshPlayerLine(const MDagPath& meshPath)
{
    MPointArray positions;
    MStatus status = worldPositions(meshPath, positions, "refreshPlayerLine");
    if (!status)
        return status;
    const MIntArray players = readPlayerVertices(status);
    if (players.length() == 0)
        return MStatus::kSuccess;
    MPointArray line;
    for (const int v : players) {
        // A number past the mesh (a stale chain) is refused rather than read out of bounds.
        if (v < 0 || static_cast<unsigned int>(v) >= positions.length())
            return MStatus::kInvalidParameter;
        line.append(positions[static_cast<unsigned int>(v)]);
    }
    return writePlayerPoints(line);
}

MStatus closeIndexRows(MIntArray& a, MIntArray& b)
{
    closeIndexLoop(a);
    closeIndexLoop(b);
    return a.length() > 2 && b.length() > 2 ? MStatus::kSuccess : MStatus::kFailure;
}

} // namespace tq
