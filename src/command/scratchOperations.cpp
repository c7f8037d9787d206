// The scratch family of the tool command: a new sarn from free strokes, with no player row.

#include "command/buildPatchFaces.h"
#include "command/projectVertices.h"
#include "command/tqSarnToolCmd.h"
#include "kernel/components.h"
#include "kernel/meshQueries.h"
#include "kernel/nodeLookup.h"
#include "kernel/patchPlumbing.h"
#include "kernel/shadowRows.h"
#include "kernel/stackShadow.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kToolCommand;
constexpr double kClosedStroke = 0.0001;
constexpr int kFewestClosedSpans = 3;

MStatus reported(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

bool anyStrokeClosed()
{
    MStatus status;
    for (const MPointArray& stroke : readStrokeRows(status)) {
        if (stroke.length() != 0 && stroke[0].distanceTo(stroke[stroke.length() - 1]) < kClosedStroke)
            return true;
    }
    return false;
}

} // namespace

MStatus tqSarnToolCmd::saveNondestructStrokes(int density)
{
    MStatus status;
    const RowList strokes = readStrokeRows(status);
    if (!status)
        return reported(status, __LINE__);
    if (strokes.size() < 2)
        return MStatus::kSuccess;
    RowList kept;
    if (density == 0) {
        kept = strokes;
    } else {
        for (const MPointArray& stroke : strokes) {
            MPointArray cut;
            for (unsigned int i = 0; i + 1 < stroke.length(); ++i) {
                const MPoint& p = stroke[i];
                const MVector step = stroke[i + 1] - p;
                for (int m = 0; m < density; ++m)
                    cut.append(p + step * (double(m) / double(density)));
                cut.append(stroke[i + 1]);
            }
            kept.push_back(cut);
        }
    }
    return writeNondestructRows(kept);
}

MStatus tqSarnToolCmd::scratchPatch(const MDagPath& mesh, MMeshIsectAccelParams& accelParams, bool closedFlag)
{
    MStatus status = saveStoreState("undo");
    if (!status)
        return reported(status, __LINE__);
    const RowList rows = readGuideRows(status);
    if (rows.size() < 2)
        return MStatus::kSuccess;
    int vSpans = getVSpans();
    if (closedFlag && vSpans < kFewestClosedSpans)
        vSpans = kFewestClosedSpans;

    MObject node;
    if (!patchNodeOfActiveMesh(node, status))
        reported(status, __LINE__);
    const int oldCount = vertexCount(mesh);
    MFnMesh fnMesh(mesh);
    // Deliberate: the raised span count is written back; the panel then shows it.
    if (getUSpans() < kFewestClosedSpans && anyStrokeClosed())
        setUSpans(getUSpans() + 1);
    bool ok = false;
    MObject owner;
    const MIntArray newFaces = buildPatchFaces(fnMesh, rows, static_cast<unsigned int>(getUSpans() + 1),
                                               static_cast<unsigned int>(vSpans), closedFlag, ok, owner);
    MObject added = strip_vertices(oldCount, fnMesh.numVertices(), status, mesh);

    MDagPath fnPath;
    fnMesh.getPath(fnPath);
    if (!fnPath.isValid())
        fnPath = findMeshByName(fnMesh.name(), status);
    const bool flip = projectVertices(fnPath, added, accelParams, status);
    reported(feedPatchNode(fnMesh, flip, node, newFaces), __LINE__);
    clearTweaks();

    // An empty shape makes addPolygon build a mesh object of its own, whose faces reached the
    // retopo mesh through the patch node: the throw-away object goes, its transform with it.
    if (oldCount == 0)
        reported(deleteThrowAwayMesh(owner, mesh), __LINE__);
    stackShadow();
    refreshShadowRows();
    writeNewFaces(newFaces);
    return reported(saveStoreState("redo"), __LINE__);
}
