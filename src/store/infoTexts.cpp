#include "store/infoTexts.h"

namespace tq {

namespace infoText {

const MString kDrawing("LMB: Drag on the source surface to draw strokes,");
const MString kSlicing("SHIFT-LMB: Stroke through the main surface for slicing,");
const MString kSelecting("LMB-CTRL-SHIFT: Select the boundary vertices for sarn creation,");
const MString kDivider("_________________________,");
const MString kRelaxing("MMB-CTRL-SHIFT: Relax brush. Drag on the retopo mesh to proceed,");
const MString kMoving("MMB: Move brush.Drag on the retopo mesh to proceed,");
const MString kPressAndHold("Press and hold one of these keys to change the brush properties,");
const MString kKeys("n: (Relax intensity),b: (Relax radius),m: (Move radius),");
const MString kDeleting("BACKSPACE: Delete last stroke,");
const MString kApplying("ENTER: Apply the operation,ESC: Abort the operation,");
const MString kSpans("MMB-SHIFT: Hold SHIFT then MMB drag left/right to add/reduce subdivisions,");
const MString kTracing("LMB: Trace a stroke on the source mesh to generate a patch,");
const MString kRedrawing("CTRL-LMB: Drag to redraw the last sarn stroke,");
const MString kPerpendicular("LMB-SHIFT: Drag on the source surface to draw a perpendiclar patch,");
const MString kBridgeOnOpposite("MMB-CTRL = On an opposite boundary vertex to create a bridge,");
const MString kMergeOnOpposite("MMB-SHIFT = On an opposite boundary vertex to merge the sarns,");
const MString kModifyAnchors("LMB-CTRL-SHIFT: To modify the anchor selection, the latest");
const MString kRemovePoint("BACKSPACE: Remove the last point from selection");
const MString kCloseSelection(
    "LMB-CTRL-SHIFT: Reselect the same point to have a closed selection whenever it is possible,");
const MString kMergeBoundary("MMB-CTRL: On boundary vertices to merge them,");
const MString kActivation("tqSarn activated,");
const MString kSarnSelected("A sarn is selected,");
const MString kSelectAnother("Select another anchor point to have a sarn selection,");

// Built from the pieces above, which this file defines first.
const MString kBrushHelp = kRelaxing + kMoving + kPressAndHold + kKeys;
const MString kMainHelp =
    kDrawing + kSlicing + kSelecting + kDivider + kDivider + kBrushHelp + kDivider + kDeleting + kApplying;
const MString kPatchHelp = kDrawing + kSpans + kRedrawing + kDivider + kBrushHelp + kDivider + kApplying;
const MString kBridgeHelp = kSpans + kDivider + kBrushHelp + kDivider + kApplying;
const MString kSpanHelp = kSpans + kTracing + kRedrawing + kDivider + kMergeOnOpposite + kBridgeOnOpposite +
                          kDivider + kBrushHelp + kDivider + kApplying;
const MString kFirstAnchorHelp = kSelectAnother + kSelecting + kDivider + kBrushHelp;
const MString kAnchorRowHelp = kSarnSelected + kCloseSelection + kRemovePoint + kTracing + kPerpendicular +
                               kRedrawing + kDivider + kBridgeOnOpposite + kMergeOnOpposite + kDivider +
                               kBrushHelp + kDivider + kApplying;

const MString kStrokesSuffix(" stroke(s)");
const MString kAnchorsSuffix(" anchor point(s) selected,");
const MString kSarnCreated("sarn created");
const MString kSarnPatchCreated("Sarn Patch created");
const MString kBridgePatchCreated("Sarn_patch created");
const MString kBridgeCreated("Bridge created");
const MString kBridgeReleaseHelp("whatsup");
const MString kBridgeByEnter("Bridge creagted");
const MString kBoundaryMerged("Boundary edges merged");
const MString kOperationCancelled("Operation cancelled");
const MString kFreezeBorder("Freeze Border");
const MString kFreezeMedian("Freeze Median");
const MString kRelaxBrush("Relax Brush");
const MString kMoveBrush("Move Brush");
const MString kReverseDirection("Reverse direction");
const MString kRelaxBrushIntensity("Relax brush,Intensity: ");
const MString kRelaxBrushRadius(",Radius: ");
const MString kMoveBrushRadius("Move brush,Radius: ");
const MString kMoveRadius("Move Radius: ");
const MString kRelaxRadius("Relax Radius: ");
const MString kRelaxIntensity("Relax intensity: ");
const MString kChangingSpans("Changing spans,");
const MString kPinchValue("Pinch value: ");
const MString kDeleteHistory("You may delete the history for a faster computation");

const MString kHeavySourceHead(",The source mesh density is high (");
const MString kHeavySourceTail(
    " polys) you may decimate and/or split then import the mesh as a reference for a better performance.");

} // namespace infoText

namespace hostCommand {
const MString kObjectSelectMode("changeSelectMode -object");
const MString kDgDirty("dgdirty ");
} // namespace hostCommand

MString strokeCountText(int count)
{
    MString text;
    text += count;
    text += infoText::kStrokesSuffix;
    return text;
}

} // namespace tq
