#pragma once
// The drawing state a tool context shares with the frames: the feedback layer (the draw
// manager handed to doPress, doDrag, doRelease and doPtrMoved) and the frame context of the
// active view. What a context draws stays in the feedback layer, and shows in every frame
// of the active view, until clearFeedback: the event dispatch clears it before each event.

#include <maya/MFrameContext.h>
#include <maya/MUIDrawManager.h>

#include <vector>

namespace host {

struct DrawRecord;

MHWRender::MUIDrawManager& feedbackDrawManager();
void clearFeedback();
const std::vector<DrawRecord>& feedbackRecords();

// The frame context of the active view; with no view it reports no camera and a 0 x 0 port.
const MHWRender::MFrameContext& currentFrameContext();

} // namespace host
