#pragma once
// tqSarnContext: the interactive tool. The host makes one per context command (makeObj) and
// keeps it; while it is the active tool it receives the view's mouse events and the Enter,
// Backspace and Esc keys. It owns what is transient: the pixels of the gesture, the stroke
// being drawn, the closest-point intersector and the ray accelerator over the source mesh,
// and the row and mesh snapshots of the operation at hand. What must outlive a gesture goes
// to the scene store; nothing of the store is cached here.
//
// There is no state variable. The state follows from the gesture flags, the store and the
// host's calls:
//
//   not active ──toolOnSetup──► ready ──press──► gesture ──release──► ready
//                                 ▲                                     │
//                                 └── Enter / Esc / tool change ◄── strokes or anchors
//                                                                   pending on the store
//
// Each handler is a straight sequence of independent tests on the button and the modifiers;
// the order of those tests is the behaviour, and more than one may run for one event. A left
// drag grows `currentStroke` on the source surface; the release hands it to a new tool
// command, which appends it to the store's working strokes; Enter turns two of them into a
// sarn on the retopo mesh through one undoable tool command.
//
// The handlers live in files by role: the class and its lifecycle (tqSarnContext.cpp),
// stroke capture (strokeCapture.cpp), its feedback drawing (strokeFeedback.cpp), shaped and
// slicing strokes (shapedStrokes.cpp) and the event dispatch with its actions
// (eventDispatch.cpp, keyActions.cpp).

#include "command/patchFeed.h"
#include "command/storeState.h"

#include <maya/M3dView.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MMeshIntersector.h>
#include <maya/MMessage.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MPxContext.h>
#include <maya/MStatus.h>

class tqSarnToolCmd;

class tqSarnContext : public MPxContext {
public:
    tqSarnContext();
    ~tqSarnContext() override;

    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                    const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                      const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                   const MHWRender::MFrameContext& context) override;
    MStatus drawFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& context) override;
    MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                       const MHWRender::MFrameContext& context) override;
    void deleteAction() override;
    void completeAction() override;
    void abortAction() override;

    // Lifecycle pieces. Each returns its status and logs nothing of its own unless said.
    // Refreshes sourceIsMesh and sourceIsValid: kSuccess for a mesh source, kUnknownParameter
    // for a source that is no mesh, kInvalidParameter (flags untouched) with no source.
    MStatus checkSourceMesh();
    // The intersector, the accelerator and the store's inputNormals, from the source mesh.
    MStatus buildIntersector();
    // positionsBefore becomes every world position of the retopo mesh.
    MStatus capturePositions();
    // Empties the store's strokes, anchors, shadow and markers; the retopo mesh is kept.
    MStatus resetSession();
    MStatus showActivationInfo();
    bool isClosedFigure() const { return figureMode == 2 || figureMode == 3; }
    // Empties the anchor selections here and the anchor chain on the store.
    MStatus clearAnchors();

    // Set by the context command's flags.
    void setFigure(int mode) { figureMode = mode; }
    void setSlice() { sliceStroke = true; }
    // Each switch rebuilds its list of frozen vertices and the marks at once.
    void setFreezeBorder(bool on);
    void setFreezeMedian(bool on);
    void setMoveBrush(bool on);
    int figure() const { return figureMode; }
    // Arms the relax brush: the next press of any button relaxes. The factor is the
    // intensity times 6; the radius only feeds the message (each drag reads its own).
    void setRelaxBrush(double intensity, double radius);
    double relaxIntensity() const { return relaxFactor; }
    bool relaxBrushArmed() const { return relaxBrushOn; }
    bool hasAnchorSelection() const { return anchorPath.length() && anchorVertices.length(); }
    // The panel's refresh: the anchors go, and with an armed relax brush the shadow too.
    MStatus refreshFromPanel();
    // The last sarn generated again with the stored pinch and the present spans; the patch
    // node changes in place and no undo step is made.
    MStatus rebuildWithPinch();
    // Prepares the split of the two rows beside the last patch. kInvalidParameter when the
    // patch has no faces and no rows, or when the two rows' edges differ in number.
    MStatus bevelRows();
    bool intersectorBuilt() const { return intersector.isCreated(); }
    // The panel's reversal of a pending bridge: the facing row runs the other way. Nothing
    // happens without a bridge preview.
    MStatus reverseBridgeDirection();

    // Stroke capture on the source surface.
    // The surface point under pixel (x, y), or the glue target in glue mode.
    MPoint castStrokeRay(bool& hitFound, short x, short y);
    void recordFirstHit(const MPoint& hit);
    // Grows currentStroke by one sample; returns the preview against the anchor chain.
    MPointArray addStrokeSample(const MPoint& hit, const MEvent& event);
    // Casts every point anew towards the camera; points no ray reaches are dropped.
    void projectStrokeToSource(MPointArray& points);
    void lazySmoothTail();
    void updateHoverHit(const MEvent& event, const MHWRender::MFrameContext& frameContext, bool storeHit);
    MPoint nearestFaceVertex(int faceId, const MPoint& point);

    // Shaped strokes and the slicing stroke (shapedStrokes.cpp).
    // The nearest camera-facing hit of the ray through the pixel (x, y of `pixelPoint`), the
    // origin for none; the ray's facing hits that beat the nearest so far go to sliceFront, its
    // back-facing hits to sliceBack.
    MPoint throughHit(const MPoint& pixelPoint);
    // One drag event of the slicing stroke.
    MStatus sliceStrokeDrag(MHWRender::MUIDrawManager& drawManager, const MHWRender::MFrameContext& frameContext);
    // currentStroke becomes the facing hits under the view positions of `points`.
    void figureOnSource(const MPointArray& points);
    // A rectangle lined up with the camera, firstHit and `current` opposite corners, sampled
    // every 10 pixels and closed; appended to `out`.
    void figureRectangle(MPointArray& out, const MPoint& current);
    // A circle in the view plane through firstHit, around it through `current`, closed;
    // appended to `out`.
    void figureCircle(MPointArray& out, const MPoint& current);
    // At the release of a slicing stroke: its front and back rows joined into one closed loop
    // on the source, in currentStroke; empty when either row is.
    void closeSliceStroke();
    // Each point to its closest point on the source mesh, in place.
    MStatus snapToSource(MPointArray& points);
    // A closed figure laid on the row `rowIds` of the retopo mesh: as many points as the row
    // over the row's length, from the point under the cursor, the way the figure was drawn
    // (the other way with Shift held). Empty for an empty stroke.
    MPointArray matchFigureToRow(const MPointArray& stroke, const MIntArray& rowIds);
    // The index of the point of `stroke` nearest the cursor in the view, -1 for none.
    int nearestStrokePoint(const MPointArray& stroke) const;

    const MPointArray& stroke() const { return currentStroke; }

    // The feedback of a left drag (strokeFeedback.cpp), drawn with the event's draw manager.
    // The band the release would make between the anchor row (or, in a redraw, the last
    // shadow row) and `preview`, as addStrokeSample returned it; kUnknownParameter when either
    // has fewer than 2 points, the normal outcome of a drag with no anchors.
    MStatus drawPatchPreview(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& frameContext,
                             const MPointArray& preview);
    // The stroke so far, a dot at its start and three spinning arcs around `hit` (the hit of
    // this event; none at the origin), `hint` in a corner, and the outline of previewPoints.
    // Every call turns the marker a step. kUnknownParameter with no stroke.
    MStatus drawStrokeFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& frameContext,
                               const MPoint& hit, const MString& hint);
    // In glue mode, a ringed dot on the source vertex the stroke would glue to.
    void drawGlueMarker(MHWRender::MUIDrawManager& drawMgr);

private:
    MStatus press(MEvent& event);
    MStatus drag(MEvent& event, MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& frameContext);
    MStatus release(MEvent& event, const MHWRender::MFrameContext& frameContext);
    MStatus storeStroke(MEvent& event, const MHWRender::MFrameContext& frameContext);
    MStatus redrawFromStroke(tqSarnToolCmd* command);
    MStatus finishSpanChange(tqSarnToolCmd* command);
    // The row snapshots of the gesture, "redo" then "undo", to the command.
    void handRowsTo(tqSarnToolCmd* command);
    MStatus sendStrokeToCommand();
    MStatus appendPatchFromStroke();
    MStatus continueSarn(tqSarnToolCmd* command);
    MStatus createSarnPatch();
    MStatus finishSarnLoop();
    MStatus anchorStepBack();
    MStatus mergeMagnetVertices();
    tqSarnToolCmd* makeToolCommand();
    MStatus refreshView(bool all, bool force);
    // One step of the middle-Shift drag: spans and pinch from the pointer, and the last
    // sarn generated again with them.
    MStatus changeSpansInteractive(bool keepPinch);
    // The brushes (brushes.cpp). The relax brush: armed from the option variables at a
    // middle-Shift-Ctrl press; each drag relaxes the vertices in its sphere once and puts them
    // back on the source; the release is one undo step of positions.
    void armRelaxBrushFromOptions();
    MStatus relaxBrushDrag(MHWRender::MUIDrawManager& drawManager);
    MStatus relaxBrushFinish();
    MObject collectBrushVertices(double radius, const MDagPath& meshPath, MVector& normal);
    MObject collectBrushVerticesOffMesh(double radius, const MDagPath& meshPath, MObject& component);
    MStatus relaxVertices(MObject& component, const MDagPath& meshPath);
    bool isFacingCamera(const MVector& normal);
    // The player row, the shadow strokes (and with a row active, the stored rows) follow the
    // vertices the brushes moved.
    MStatus followMovedVertices(bool withThirdRow);
    // The move brush: the vertices caught at the press follow the cursor with a parabolic
    // falloff, always from their positions at the press, and stay on the source.
    MStatus moveBrushBegin();
    MObject collectMoveVertices(double radius, const MDagPath& meshPath);
    MVector moveDelta(MPoint& nearPoint);
    MStatus moveBrushDrag();
    MStatus moveBrushEnd();
    MStatus storeTweakRadius(bool clear);
    void drawMoveCircle(MHWRender::MUIDrawManager& drawManager);
    // Freeze border and median (freezeMarks.cpp).
    MStatus refreshFreezeBorder();
    MStatus refreshFreezeMedian();
    static bool onMedianSide(const MPoint& point, const MString& side);
    // The twist of a closed anchor loop, one step per 4 pixels of a middle-Ctrl drag.
    MStatus twistDrag();
    // Anchors (anchors.cpp): a Ctrl-Shift-left click picks a border vertex of the retopo
    // mesh; two make the run of border vertices between them the anchor chain on the store.
    // The first border vertex in index order within `pixels` of the press (or of the cursor),
    // facing the camera; -1 when there is none.
    int pickBoundaryVertex(double pixels, bool useCursor);
    MStatus anchorPress();
    // A Ctrl-left stroke with an anchor chain: the chain's vertices moved onto the stroke
    // (no shadow), or the last patch rebuilt to the stroke (with a shadow). Each one undo step.
    MStatus anchorDraw();
    MStatus anchorRedraw();
    // Bridges and merges (bridges.cpp): with an anchor row, a middle-button press on another
    // border previews the bridge (Ctrl) or the merge (Shift) to its facing row; Enter sends
    // it to the host as command text. The magnet pairs two single border vertices.
    MStatus bridgePreview(int vertex);
    MStatus mergePreview();
    MStatus magnetPreview();
    MStatus writeMagnetPoints();
    MIntArray oppositeRow(int vertex);
    int rowDirectionEdge(const MDagPath& meshPath, int edgeA, int edgeB);
    MStatus updateFusePreview(int mode);
    MStatus adjustBridgeSpin();
    // Enter with a pending bridge or merge; returns the line 1 text of the outcome.
    MString completeBridgeOrMerge();

    // The gestures' captures for the tool command: "redo" at the press, "undo" at release.
    MStatus snapshotRows(const MString& label);
    MStatus snapshotMesh(const MString& label);

    static void onUndo(void* clientData);
    static void onToolChanged(void* clientData);

    MCallbackId undoCallbackId = 0;
    MCallbackId toolChangedCallbackId = 0;
    MIntArray magnetVertices;
    MMeshIntersector intersector;
    MMeshIsectAccelParams accelParams;
    MPointArray positionsBefore;
    int figureMode = 0;
    bool moveBrushHover = false;
    bool relaxBrushOn = false;
    bool moveBrushOn = false;
    bool redrawStroke = false;
    bool bridgeStroke = false;
    bool freezeBorder = false;
    bool freezeMedian = false;
    bool twistActive = false;
    bool moveBrushActive = false;
    bool sliceStroke = false;
    bool reverseFigure = false;
    bool reverseBridge = false;
    MPoint firstHit;
    MPoint glueHit;
    int moveHit = -1;
    MObject moveVertices;
    int brushCentreVertex = -1;
    MIntArray unfilledRowA;
    MIntArray unfilledRowB;
    MPointArray moveBasePoints;
    MDoubleArray moveWeights;
    MPointArray sliceFront;
    MPointArray sliceBack;
    double relaxFactor = 0.0;
    double relaxRadiusValue = 0.0;
    MPoint brushHitPoint;
    double markerAngle = 0.0;
    MIntArray anchorVertices;
    MIntArray freezeBorderVertices;
    MIntArray freezeMedianVertices;
    MMatrix sourceMatrix;
    MPointArray currentStroke;
    MPointArray previewPoints;
    M3dView view;
    short bridgeDivBase = 0;
    short spanBase = 0;
    short lastY = 0;
    short lastX = 0;
    short curX = 0;
    short curY = 0;
    short pressX = 0;
    short pressY = 0;
    bool sourceIsValid = false;
    bool sourceIsMesh = false;
    MIntArray anchorPath;
    MIntArray bridgeTargetEdges;
    MIntArray bridgeTargetVertices;
    MIntArray mergeTargetVertices;
    tq::PatchFeed redoSnapshot;
    tq::PatchFeed undoSnapshot;
    tq::SpanIndices redoRows;
    tq::SpanIndices undoRows;
};
