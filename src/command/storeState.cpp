#include "command/storeState.h"

#include "store/logModules.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

namespace tq {

namespace {

constexpr const char* kModule = logModule::kToolCommand;

MStatus failed(const MStatus& status, int line)
{
    status.pAPIerror(kModule, line, "store state");
    return status;
}

} // namespace

MStatus readSpanIndices(SpanIndices& indices)
{
    SpanIndices read;
    MStatus status;
    read.playerVertices = readPlayerVertices(status);
    if (!status)
        return failed(status, __LINE__);
    status = readShadowIndices(read.shadowIndices1, read.shadowIndices2, read.shadowIndices3);
    if (!status)
        return failed(status, __LINE__);
    indices = read;
    return MStatus::kSuccess;
}

MStatus readStoreState(StoreState& state)
{
    StoreState read;
    MStatus status;
    read.playerPoints = readPlayerPoints(status);
    if (!status)
        return failed(status, __LINE__);
    read.playerVertices = readPlayerVertices(status);
    if (!status)
        return failed(status, __LINE__);
    read.nondestructRows = readGuideRows(status);
    if (!status)
        return failed(status, __LINE__);
    read.shadowRows = readShadowRows(status);
    if (!status)
        return failed(status, __LINE__);
    status = readShadowIndices(read.shadowIndices1, read.shadowIndices2, read.shadowIndices3);
    if (!status)
        return failed(status, __LINE__);
    state = read;
    return MStatus::kSuccess;
}

MStatus writeStoreState(const StoreState& state)
{
    MStatus status = writePlayerVertices(state.playerVertices);
    if (!status)
        return failed(status, __LINE__);
    if (!(status = writePlayerPoints(state.playerPoints)))
        return failed(status, __LINE__);
    if (!(status = writeNondestructRows(state.nondestructRows)))
        return failed(status, __LINE__);

    MPointArray r1, r2, r3;
    MIntArray indices2 = state.shadowIndices2;
    const RowList& rows = state.shadowRows;
    if (!rows.empty())
        r1 = rows[0];
    if (rows.size() > 1)
        r2 = state.playerPoints;
    if (rows.size() > 2)
        r3 = rows[2];
    if (rows.empty()) {
        r2 = state.playerPoints;
        indices2 = state.playerVertices;
    }
    if (!(status = writeShadowIndices(state.shadowIndices1, indices2, state.shadowIndices3)))
        return failed(status, __LINE__);
    return writeShadowStrokes(r1, r2, r3);
}

MStatus writeSpanIndices(const SpanIndices& indices)
{
    MStatus status = writePlayerVertices(indices.playerVertices);
    if (!status)
        return failed(status, __LINE__);
    if (!(status = writePlayersFromVertices(indices.playerVertices)))
        return failed(status, __LINE__);
    return writeShadowIndices(indices.shadowIndices1, indices.shadowIndices2, indices.shadowIndices3);
}

} // namespace tq
