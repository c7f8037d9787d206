#pragma once
// tqSarnToolCmd: the one undoable command of the tool, registered as "tqSarnCmd" with the
// tool's context command. Every change of the retopo mesh that the user undoes step by step
// passes through one instance: the context makes it (newToolCommand), hands it data through
// the set... operations, lets it generate or apply, and calls finalize, which journals one
// line and gives the instance to the host's undo queue. From then on undoIt and redoIt may
// alternate; they act on whatever mesh is selected at that moment.
//
// The mesh itself is edited directly (addPolygon, setAllPositions). Undo has three tools,
// chosen by the mode:
//
//   mode                       redoIt                               undoIt
//   1, 2, 8  append            attach patch node, feed it, store    detach node, store
//   7        scratch new mesh  new mesh shape, attach, feed, store  delete the mesh, store
//   0, 4     redraw            after positions, store               before positions, store
//   3        redraw boundary   after positions                      before positions, clear player row
//   5        change spans      feed node (after), indices           feed node (before), indices
//   15       twist             attach, feed (after), indices        feed node (before), indices
//   6, 14    relax, tweak      after positions, refresh rows        before positions, refresh rows
//   10, 12   text, close       nothing                              nothing
//
// "store" is the copy of the store's memory (StoreState) from before ("undo") or after
// ("redo") the operation. Deliberate: the feed and index labels are crossed: a change of spans
// saves with "redo" before it changes anything and with "undo" afterwards, so "redo" means
// beforeFeed/beforeIndices and "undo" means afterFeed/afterIndices. The store-state labels
// say what they mean.

#include "command/patchFeed.h"
#include "command/storeState.h"

#include <maya/MDGModifier.h>
#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MPxToolCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class tqSarnContext;

class tqSarnToolCmd : public MPxToolCommand {
public:
    static void* creator();
    static MSyntax newSyntax();
    static const MString commandName;

    enum Mode : unsigned int {
        kRedrawScratch = 0,
        kAppendPatch = 1,
        kReservedAppend = 2, // set by nothing; handled like an append
        kRedrawBoundary = 3,
        kRedrawPatch = 4,
        kChangeSpans = 5,
        kBrushRelax = 6,
        kScratchNewMesh = 7,
        kScratchOrphan = 8,
        kCommandText = 10,
        kCloseStrokes = 12,
        kTweak = 14,
        kTwist = 15,
        // Before anything sets a mode: redoIt and undoIt then change nothing but the selection.
        kNoMode = 0xffffffffu
    };

    tqSarnToolCmd();
    ~tqSarnToolCmd() override;

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;
    // Journals the mode's text and hands the instance to the undo queue.
    MStatus finalize() override;
    // A new tool on the heap, for whoever wants one without the context command.
    virtual tqSarnContext* newContext();

    // Hand-over from the context; each returns kSuccess. `before` and `after` are the world
    // positions of all vertices of the retopo mesh.
    MStatus setCommandText(const MString& text);
    MStatus setRedrawPatchPositions(const MPointArray& before, const MPointArray& after);
    MStatus setRedrawBoundaryPositions(const MPointArray& before, const MPointArray& after);
    MStatus setRedrawScratchPositions(const MPointArray& before, const MPointArray& after);
    MStatus setBeforeFeed(const tq::PatchFeed& feed);
    MStatus setAfterFeed(const tq::PatchFeed& feed);
    MStatus setTweakPositions(const MPointArray& before, const MPointArray& after);
    MStatus setSpanIndices(const MIntArray& beforePlayerVertices, const MIntArray& beforeShadow1,
                           const MIntArray& beforeShadow2, const MIntArray& beforeShadow3,
                           const MIntArray& afterPlayerVertices, const MIntArray& afterShadow1,
                           const MIntArray& afterShadow2, const MIntArray& afterShadow3);
    // Deliberate: the two index arrays are kept in redoState and read by nothing afterwards.
    MStatus setBrushRelaxData(const MPointArray& before, const MPointArray& after, const MIntArray& playerVertices,
                              const MIntArray& shadowIndices);

    // The operations the context sets up directly.
    void setMode(Mode mode) { fMode = mode; }
    Mode mode() const { return fMode; }
    void setPatchName(const MString& name) { patchName = name; }
    const MString& getPatchName() const { return patchName; }
    void setMeshPath(const MDagPath& path) { meshPath = path; }
    const MDagPath& getMeshPath() const { return meshPath; }

    // ---- generators (each leaves the mesh, its patch node and the store as one step)

    // Sweeps the player row along the one working stroke: rows of the same width follow the
    // stroke, the new vertices go onto the source, and the patch node receives the mesh. The
    // store's copies are not saved (its undo removes the node, and then refuses the restore).
    // A stroke count other than 1 discards the strokes and makes nothing.
    MStatus appendPatchAlongStroke(const MPointArray& playerPoints, MMeshIsectAccelParams& accelParams);
    // Fills the bands between the player row and the working strokes, in order. The far row
    // becomes the new player row. No faces made: the strokes are discarded, kSuccess.
    MStatus appendPatchBetweenStrokes(const MPointArray& playerPoints, MMeshIsectAccelParams& accelParams,
                                      bool closedFlag);
    // A new sarn from two or more free strokes (the guide rows), with no player row, on
    // `meshPath`, whose patch node the context has attached. With `closedFlag` the V spans are
    // raised to 3 for this call.
    MStatus scratchPatch(const MDagPath& meshPath, MMeshIsectAccelParams& accelParams, bool closedFlag);
    // Keeps the working strokes as the guide rows: as they are (`density` 0), or with each
    // segment cut into `density` parts (slices pass 1).
    MStatus saveNondestructStrokes(int density);
    // Reads the whole mesh into afterFeed and writes it to `patchNode`. With `flip` the new
    // faces (the last ones, all quads) are turned over in the copy only: their corners are
    // reversed in `polyconnect`, while the normals, corner lists and UVs keep the mesh's order.
    MStatus feedPatchNode(MFnMesh& fnMesh, bool flip, const MObject& patchNode, const MIntArray& newFaces);

    // ---- regenerators of the last patch: its patch node passes its input through while the
    // faces are built again on the mesh as it was before the patch, is fed the result and
    // switched on again. The node keeps its name; nothing is added to the history.

    // The shadow's first row swept anew along the one non-destructive stroke (a patch made
    // along one stroke). A stroke of fewer than 2 points changes nothing.
    MStatus redrawAlongStroke(const MDagPath& meshPath, MMeshIsectAccelParams& accelParams);
    // The patch between the shadow's rows as they stand, with the present spans. The far row
    // becomes the player row.
    MStatus rebuildPatchFromShadow(const MDagPath& meshPath, MMeshIsectAccelParams& accelParams, bool closedFlag);
    // The patch between the non-destructive strokes (a sarn from scratch), with the present
    // spans. Fewer than 2 rows or no patch node: nothing done, kSuccess.
    MStatus redrawPatchFromStrokes(const MDagPath& meshPath, MMeshIsectAccelParams& accelParams, bool closedFlag);
    // Every world position of the mesh, with `vertices` moved onto `stroke`, spread by arc
    // length from its first point to its last.
    static MStatus placeVerticesOnStroke(const MPointArray& stroke, const MIntArray& vertices,
                                         const MDagPath& meshPath, MPointArray& positions);
    // Mode 4: the shadow's middle row becomes `stroke` and the patch is built again; undo and
    // redo move the vertices between `positionsBefore` and the result. Finalizes.
    MStatus redrawPatch(const MPointArray& stroke, const MPointArray& positionsBefore,
                        MMeshIsectAccelParams& accelParams, bool closedFlag, const tq::SpanIndices& beforeRows,
                        const tq::SpanIndices& afterRows);
    // Mode 3: the player row's vertices move onto `stroke`, no change of topology. Finalizes.
    MStatus redrawBoundary(const MPointArray& stroke, const MPointArray& positionsBefore,
                           const tq::SpanIndices& beforeRows, const MIntArray& afterPlayerVertices);
    // The last patch generated again with the option variables' spans, by the regenerator
    // that the shadow's state calls for. An empty shadow is success with nothing done.
    MStatus changeSpans(MMeshIsectAccelParams& accelParams, bool closedFlag);

    // A finished stroke joins the store's working strokes. Empty points: kInvalidParameter.
    MStatus appendStroke(const MPointArray& points);
    // Writes each working stroke's first point over its last. No store is success.
    MStatus closeStrokes();
    void clearAfterFeed();
    // Empties the vertex tweaks (`pnts`) of the retopo mesh, so that no per-vertex offset is
    // added on top of what the patch node delivers. No mesh selected: kInvalidParameter.
    static MStatus clearTweaks();
    // Vertices merge within `tq_mergThreshold` (0.001); projection looks `tq_distancesnap`
    // (100.0) units along the normal.
    static double mergeThreshold();
    static double distanceSnap();

    // "undo" fills undoState, "redo" redoState, from the store as it is now.
    MStatus saveStoreState(const MString& label);
    MStatus restoreStoreState(const MString& label);
    // "redo" fills beforeFeed, "undo" afterFeed, from the retopo mesh as it is now.
    MStatus saveFeed(const MString& label);
    MStatus writeAfterFeed(const MObject& node);
    MStatus writeBeforeFeed(const MObject& node);
    // Moves every vertex of the mesh; a count that differs from the mesh's moves nothing and
    // gives kInvalidParameter.
    MStatus applyPositions(const MDagPath& path, const MPointArray& positions);
    MStatus restoreIndices(const MString& label);
    // Positions of the player row and the shadow follow their vertices after they moved.
    MStatus refreshPlayerAndShadows();

private:
    // Deliberate: made and never used; the class has always carried it.
    MDGModifier dgModifier;
    Mode fMode = kNoMode;
    MString patchName;
    MDagPath meshPath;
    tq::StoreState undoState;
    tq::StoreState redoState;
    MPointArray beforePositions;
    MPointArray afterPositions;
    tq::PatchFeed afterFeed;
    tq::PatchFeed beforeFeed;
    tq::SpanIndices beforeIndices; // labelled "redo"
    tq::SpanIndices afterIndices;  // labelled "undo"
    MString commandText;           // stored by mode 10 and run by nothing
    unsigned int lastVSpans = 0;   // noted by a change of spans, read by nothing

    MStatus setPositions(Mode mode, const MPointArray& before, const MPointArray& after);
    MStatus changeSpansFromFlags(unsigned int uSpans, unsigned int vSpans);
    MStatus runRedo(const MDagPath& mesh);
    MStatus runUndo(const MDagPath& mesh);
    MStatus attachAndFeed(const MDagPath& mesh);
    MStatus feedActivePatchNode(const tq::PatchFeed& feed);
};
