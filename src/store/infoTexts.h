#pragma once
// The texts of the two info lines, built once when the library loads. The overlay breaks a
// text at every comma, so the commas that end the help pieces are line ends and the row of
// underscores is a divider. The wording, typos included, is what users and the panel's
// scripts know; it is not to be corrected.

#include <maya/MString.h>

namespace tq {

namespace infoText {

// Pieces of the help of line 2.
extern const MString kDrawing;
extern const MString kSlicing;
extern const MString kSelecting;
extern const MString kDivider;
extern const MString kRelaxing;
extern const MString kMoving;
extern const MString kPressAndHold;
extern const MString kKeys;
extern const MString kDeleting;
extern const MString kApplying;
extern const MString kSpans;
extern const MString kTracing;
extern const MString kRedrawing;
extern const MString kPerpendicular;
extern const MString kBridgeOnOpposite;
extern const MString kMergeOnOpposite;
extern const MString kModifyAnchors;
extern const MString kRemovePoint;
extern const MString kCloseSelection;
extern const MString kMergeBoundary;
extern const MString kActivation;
extern const MString kSarnSelected;
extern const MString kSelectAnother;

// The help of line 2 for each state of the tool.
extern const MString kBrushHelp;  // part of the others
extern const MString kMainHelp;   // at activation and after Enter
extern const MString kPatchHelp;  // after a patch at the anchors
extern const MString kBridgeHelp; // after a bridge patch
extern const MString kSpanHelp;   // while spans change
extern const MString kFirstAnchorHelp; // after the first anchor
extern const MString kAnchorRowHelp;   // with two anchors: a row is selected

// Outcomes shown on line 1.
extern const MString kStrokesSuffix;      // behind the stroke count
extern const MString kAnchorsSuffix;      // behind the anchor count
extern const MString kSarnCreated;
extern const MString kSarnPatchCreated;   // a patch at the anchors
extern const MString kBridgePatchCreated; // a bridge patch
extern const MString kBridgeCreated;      // release of a stroke from the anchors
extern const MString kBridgeReleaseHelp;  // line 2 at that moment
extern const MString kBridgeByEnter;
extern const MString kBoundaryMerged;
extern const MString kOperationCancelled;
extern const MString kFreezeBorder;
extern const MString kFreezeMedian;
extern const MString kRelaxBrush;
extern const MString kMoveBrush;
extern const MString kReverseDirection;
extern const MString kRelaxBrushIntensity; // followed by the intensity
extern const MString kRelaxBrushRadius;    // followed by the radius
extern const MString kMoveBrushRadius;     // followed by the radius
extern const MString kMoveRadius;          // panel: followed by the radius
extern const MString kRelaxRadius;         // panel: followed by the radius
extern const MString kRelaxIntensity;      // panel: followed by the intensity
extern const MString kChangingSpans;
extern const MString kPinchValue;          // followed by the pinch
extern const MString kDeleteHistory;       // behind the activation text on a long history

// The warning appended to every line 1 on a heavy source mesh, around the polygon count.
extern const MString kHeavySourceHead;
extern const MString kHeavySourceTail;

} // namespace infoText

// Command texts the context sends to the host.
namespace hostCommand {
extern const MString kObjectSelectMode;
extern const MString kDgDirty; // followed by the store node's name
} // namespace hostCommand

// "<count> stroke(s)", the line 1 after a stroke was stored.
MString strokeCountText(int count);

} // namespace tq
