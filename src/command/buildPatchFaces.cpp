#include "command/buildPatchFaces.h"

#include "command/tqSarnToolCmd.h"
#include "command/pinch.h"
#include "kernel/resample.h"
#include "kernel/stackShadow.h"
#include "store/optionVars.h"
#include "store/storeWrites.h"

#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MVector.h>

#include <algorithm>
#include <climits>
#include <cstdint>

namespace tq {

namespace {

constexpr const char* kModule = "tqSarnToolCmd";

// A closed loop needs three quads at least to go round.
constexpr unsigned int kFewestClosedSpans = 3;

// What one band is built with, the same for all its columns.
struct BandSettings {
    unsigned int bandSpans = 0;
    double pinch = 0.0;
    double mergeTolerance = 0.0;
};

// MPoint's comparison is exact in all four coordinates: only a row drawn back onto its very
// start counts as closed.
bool endsOnStart(const MPointArray& row)
{
    return row.length() != 0 && row[0] == row[row.length() - 1];
}

int asCount(unsigned int count) { return static_cast<int>(std::min<unsigned int>(count, INT_MAX)); }

// One column of a band: the quads between the edge a0-b0 and the edge a1-b1, from the a row
// across to the b row. Neighbouring quads give the same positions for the loop they share,
// pinched or not, so merging joins them.
void addColumn(MFnMesh& fnMesh, const MPoint& a0, const MPoint& a1, const MPoint& b0, const MPoint& b1,
               const BandSettings& band, MIntArray& faces, MObject& lastOwner)
{
    if (band.bandSpans == 0)
        return;
    const MVector stepL = (b0 - a0) / band.bandSpans;
    const MVector stepR = (b1 - a1) / band.bandSpans;
    for (unsigned int k = 0; k < band.bandSpans; ++k) {
        const LoopShifts shift = pinchShifts(k, band.bandSpans, band.pinch);
        const double startLoop = k + shift.start;
        const double endLoop = k + 1 + shift.end;
        MPointArray quad;
        quad.append(a0 + stepL * startLoop);
        quad.append(a1 + stepR * startLoop);
        quad.append(a1 + stepR * endLoop);
        quad.append(a0 + stepL * endLoop);

        MStatus status;
        int faceIndex = -1;
        lastOwner = fnMesh.addPolygon(quad, faceIndex, true, band.mergeTolerance, MObject::kNullObj, &status);
        if (status)
            faces.append(faceIndex);
        else
            status.pAPIerror(kModule, __LINE__, "addPolygon");
    }
}

} // namespace

MIntArray buildPatchFaces(MFnMesh& fnMesh, const RowList& rows, unsigned int rowSpans, unsigned int bandSpans,
                          bool tolerateUnevenRows, bool& ok, MObject& lastOwner)
{
    ok = true;
    BandSettings band;
    band.bandSpans = bandSpans;
    band.mergeTolerance = optionVarDoubleOr(optionVar::kMergeThreshold, optionVarDefault::kMergeThreshold);
    band.pinch = bandPinch(bandSpans);

    if (rows.empty() || rows.front().length() == 0) {
        ok = false;
        return MIntArray();
    }
    if (endsOnStart(rows.front()) && rowSpans < kFewestClosedSpans)
        rowSpans = kFewestClosedSpans;

    // Whether there is a retopo mesh or not, the generation goes on; nothing to report.
    tqSarnToolCmd::clearTweaks();

    MIntArray faces;
    MPointArray shadowFirst;
    MPointArray shadowLast;
    for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
        MPointArray a = rows[i];
        if (std::uint64_t(a.length()) != std::uint64_t(rowSpans) + 1)
            a = resampleRow(rows[i], asCount(rowSpans));
        MPointArray b = rows[i + 1];
        if (b.length() != a.length())
            b = resampleRow(rows[i + 1], asCount(a.length()));
        if (b.length() != a.length() && !tolerateUnevenRows) {
            ok = false;
            return MIntArray();
        }
        shadowFirst = a;
        shadowLast = b;
        if (a.length() < 2 || b.length() < 2) {
            ok = false;
            return MIntArray();
        }

        // Uneven rows that were let through are cut to the shorter one's columns.
        const unsigned int columns = std::min(a.length(), b.length()) - 1;
        for (unsigned int j = 0; j < columns; ++j) {
            // The column that ends on point rowSpans takes the rows' last points as its far
            // edge: for even rows the same points as j + 1.
            const bool lastColumn = j + 1 == rowSpans;
            const MPoint& a1 = lastColumn ? a[a.length() - 1] : a[j + 1];
            const MPoint& b1 = lastColumn ? b[b.length() - 1] : b[j + 1];
            addColumn(fnMesh, a[j], a1, b[j], b1, band, faces, lastOwner);
        }
    }

    MStatus status = writeShadowStrokes(shadowFirst, shadowLast, MPointArray());
    if (!status)
        status.pAPIerror(kModule, __LINE__, "shadow rows");
    status = stackShadow();
    if (!status)
        status.pAPIerror(kModule, __LINE__, "shadow indices");
    return faces;
}

} // namespace tq
