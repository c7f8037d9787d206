// The change of spans: the last patch generated again with other U and V counts, from the
// shadow that remembers its rows, on the mesh as it was before that patch. The patch node
// keeps its name; the undo step holds the whole mesh from before and after (mode 5).

#include "command/tqSarnToolCmd.h"
#include "kernel/debugDump.h"
#include "kernel/meshQueries.h"
#include "kernel/patchPlumbing.h"
#include "kernel/shadowRows.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <limits>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kToolCommand;
constexpr unsigned int kLargestSpans = static_cast<unsigned int>(std::numeric_limits<int>::max());

MStatus reported(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

MStatus failWith(const char* /*message*/) { return MStatus::kInvalidParameter; }

bool inMeshHasSource(const MDagPath& mesh)
{
    MStatus status;
    MFnDependencyNode fn(mesh.node(), &status);
    if (!status)
        return false;
    const MPlug inMesh = fn.findPlug("inMesh", false, &status);
    return status && !inMesh.source().isNull();
}

} // namespace

MStatus tqSarnToolCmd::changeSpansFromFlags(unsigned int uSpans, unsigned int vSpans)
{
    if (!setUSpans(static_cast<int>(std::min(uSpans, kLargestSpans))) ||
        !setVSpans(static_cast<int>(std::min(vSpans, kLargestSpans))))
        return failWith("Cannot set u or v span ");
    if (findStoreNode().isNull())
        return failWith("Cannot find tqsarnnode");
    if (shadowCount() == 0)
        return failWith("has no shadow");
    fMode = kChangeSpans;
    MStatus status = saveFeed("redo");
    if (!status)
        return status;
    readSpanIndices(beforeIndices);
    // Deliberate: a fresh accelerator, the host's default with no grid asked for: the flag path
    // gives the gesture's result, only slower.
    MMeshIsectAccelParams accelParams;
    status = changeSpans(accelParams, shadowIsClosed());
    if (!status)
        return status;
    if (!(status = saveFeed("undo")))
        return status;
    readSpanIndices(afterIndices);
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::changeSpans(MMeshIsectAccelParams& accelParams, bool closedFlag)
{
    const MDagPath path = getActiveMeshPath();
    MStatus status;
    const RowList rows = readShadowRows(status);
    MIntArray shadow1, shadow2, shadow3;
    readShadowIndices(shadow1, shadow2, shadow3);
    dumpIndices(shadow1, ".....  firstRow");
    if (!path.isValid())
        return failWith("No mesh selected");
    if (rows.empty())
        return MStatus::kSuccess;
    if (!inMeshHasSource(path)) {
        clearShadow();
        return failWith("Please make sure that we have a tqpatch node in the history so we can act on it ");
    }

    const int vSpans = getVSpans();
    const bool interior = hasInteriorVertex(path, shadow1);
    const bool closed = playerLoopClosed();
    MObject node;
    if (closed && interior) {
        // A closed row inside the mesh: a slice loop, rebuilt between its stacked rows.
        MPointArray outerPoints;
        MIntArray outerIndices;
        reported(stackSlices(outerPoints, outerIndices), __LINE__);
        if (!patchNodeOfActiveMesh(node, status))
            return status;
        status = rebuildPatchFromShadow(path, accelParams, false);
        reported(stackSlices(outerPoints, outerIndices), __LINE__);
        return status;
    }
    if (!closed) {
        if (boundaryEditMode() && patchNodeOfActiveMesh(node, status))
            return redrawAlongStroke(path, accelParams);
        const bool player = hasPlayerVertices();
        if (player || !patchNodeOfActiveMesh(node, status)) {
            if (!player)
                return MStatus::kUnknownParameter;
            if (shadow1.length() == 0 && shadow2.length() == 0)
                return MStatus::kInvalidParameter;
            lastVSpans = static_cast<unsigned int>(vSpans);
            return rebuildPatchFromShadow(path, accelParams, closedFlag);
        }
    }
    return redrawPatchFromStrokes(path, accelParams, closedFlag || shadowIsClosed());
}
