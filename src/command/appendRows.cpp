#include "command/appendRows.h"

#include "kernel/debugDump.h"
#include "kernel/segmentSampling.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MVector.h>

namespace tq {

namespace {

// Deliberate: not pi/2; the sweep's turn has always been scaled by this divisor.
constexpr double kTurnDivisor = 1.5757;

} // namespace

RowList rowsAlongStroke(MPointArray firstRow, MPointArray guide)
{
    if (firstRow.length() == 0)
        return RowList();
    RowList rows{firstRow};
    const int n = static_cast<int>(firstRow.length());
    MPoint a = firstRow[0];
    MPoint b = firstRow[firstRow.length() - 1];
    for (const MPoint& g : guide) {
        const MVector chord = b - a;
        const MPoint mid = a + chord * 0.5;
        const MVector d = g - mid;
        // A guide point on the row's own middle (the stroke's first point, anchored there)
        // gives no direction to turn to: it adds no row, rather than a row of non-finite
        // points or a band of no width.
        if (d.length() == 0.0)
            continue;
        const double turn = chord.angle(d) / kTurnDivisor;
        const double r = chord.length() / d.length();
        const MPoint bTurned = b + (d * r) * turn;
        const MPoint aTurned = a + (d * r) + (d * r) * (1.0 - turn);
        const MVector turnedChord = bTurned - aTurned;
        if (turnedChord.length() == 0.0)
            continue;
        const double keep = chord.length() / turnedChord.length();
        a = g - (turnedChord * 0.5) * keep;
        b = g + (turnedChord * 0.5) * keep;
        rows.push_back(sampleSegmentByCount(a, b, n));
    }
    return rows;
}

MStatus anchorStrokeToPlayerMidpoint(RowList& rows)
{
    MStatus status;
    const MPointArray players = readPlayerPoints(status);
    if (rows.empty() || rows[0].length() == 0 || players.length() == 0)
        return MStatus::kInvalidParameter;
    const unsigned int count = players.length();
    MPoint middle;
    if (count % 2 == 1) {
        middle = players[count / 2];
    } else {
        const unsigned int left = (count - 1) / 2;
        const MPoint& p = players[left];
        const MPoint& q = players[left + 1];
        middle = MPoint((p.x + q.x) * 0.5, (p.y + q.y) * 0.5, (p.z + q.z) * 0.5);
    }
    rows[0][0] = middle;
    return MStatus::kSuccess;
}

MStatus insertPlayerStroke(const MPointArray& playerPoints)
{
    const MObject store = findStoreNode();
    MPointArray points;
    MIntArray sizes;
    readStrokes(store, points);
    readSizes(store, sizes);
    MPointArray joined(playerPoints);
    MIntArray joinedSizes;
    joinedSizes.append(static_cast<int>(playerPoints.length()));
    if (sizes.length() != 0) {
        for (const MPoint& p : points)
            joined.append(p);
        for (const int size : sizes)
            joinedSizes.append(size);
    }
    MStatus status = writePointArrayAttr(joined, storeAttr::kStrokes, store);
    if (!status)
        return status;
    return writeIntArrayAttr(joinedSizes, storeAttr::kSizes, store);
}

MIntArray calculateLAST(int spans, int vSpans, int oldVertexCount)
{
    MIntArray last;
    if (spans < 1)
        return last;
    const int c = oldVertexCount - 1 + 2 * vSpans;
    last.append(c);
    last.append(c - 1);
    for (int k = 1; k < spans; ++k)
        last.append(c + k * vSpans);
    dumpIndices(last, "calculateLAST sarn");
    return last;
}

} // namespace tq
