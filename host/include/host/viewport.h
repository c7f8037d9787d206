#pragma once
// The harness's viewport: cameras and views, drawn frames and their draw records, and frames
// rendered to PNG. A frame is what Viewport 2.0 would draw: every draw override's UI
// drawables plus the tool context's feedback, recorded call by call with the draw state each
// call was made in; rendering paints the scene's meshes and then those records.

#include <maya/MColor.h>
#include <maya/MFrameContext.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MUIDrawManager.h>
#include <maya/MVector.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

// ---- Cameras ------------------------------------------------------------------------------

// A perspective camera (a transform and a camera shape) at `position` aimed at `target`, with
// world +Y up (+Z when looking straight along Y) and the given horizontal field of view in
// degrees. Returns the camera shape; a null object with a failed status and a log line when
// the position and target coincide or the field of view is outside (0, 180).
MObject makeCamera(const MPoint& position, const MPoint& target, double horizontalFovDegrees = 54.43,
                   const std::string& name = "", MStatus* status = nullptr);
// The same with an orthographic projection `orthographicWidth` world units across.
MObject makeOrthoCamera(const MPoint& position, const MPoint& target, double orthographicWidth,
                        const std::string& name = "", MStatus* status = nullptr);

// ---- Views --------------------------------------------------------------------------------

// Views are numbered from 1 in the order they are made; 0 names no view (and, as an
// argument, the active view). A view is dropped when its camera is deleted.
using ViewId = unsigned int;

// A view of width x height pixels looking through the camera (a camera shape or its
// transform). The first view made, or any view made while none is active, becomes active.
ViewId makeView(int width, int height, const MObject& camera, MStatus* status = nullptr);
MStatus setActiveView(ViewId view);
ViewId activeView();
std::vector<ViewId> views();
MStatus setViewCamera(ViewId view, const MObject& camera);
MStatus resizeView(ViewId view, int width, int height);
MStatus removeView(ViewId view);
// How many times M3dView::refresh and scheduleRefresh asked the view to redraw.
unsigned int refreshCount(ViewId view = 0);

// What MFrameContext::userChangingViewContext and inUserInteraction report (false at start).
void setUserChangingView(bool changing);

// ---- Draw records -------------------------------------------------------------------------

enum class DrawPrimitive { kLine, kLineList, kLineStrip, kPoint, kPoints, kRect, kSphere, kCircle, kArc, kMesh, kText };

// The draw state a call was made in. Every bracket (beginDrawable, beginDrawInXray) starts
// from these defaults, and so does drawing outside any bracket.
struct DrawState {
    MColor color = MColor(1.0f, 1.0f, 1.0f, 1.0f); // as given: channels above 1 are kept
    float lineWidth = 1.0f;
    MHWRender::MUIDrawManager::LineStyle lineStyle = MHWRender::MUIDrawManager::kSolid;
    bool stipple = false; // the line style was set as factor and pattern
    unsigned int stippleFactor = 1;
    unsigned short stipplePattern = 0xFFFF;
    float pointSize = 1.0f;
    unsigned int depthPriority = 0;
    MHWRender::MUIDrawManager::PaintStyle paintStyle = MHWRender::MUIDrawManager::kFlat;
    std::string fontName; // empty: the default face
    unsigned int fontSize = MHWRender::MUIDrawManager::kDefaultFontSize;
    bool inDrawable = false; // inside beginDrawable/endDrawable or beginDrawInXray/endDrawInXray
    bool xray = false;       // inside beginDrawInXray/endDrawInXray
    int drawable = -1;       // which bracket of this manager, counting from 0; -1 outside
    MHWRender::MUIDrawManager::Selectability selectability = MHWRender::MUIDrawManager::kNonSelectable;
    unsigned int selectionName = 0;
};

// One drawing call. `points` holds what the call positions: both ends of a line, every point
// of a list, strip or point set, the centre of a rect, circle, arc or sphere, the position of
// a text, the vertices of a mesh. 2-D calls give pixels (origin bottom left, z ignored).
struct DrawRecord {
    DrawPrimitive primitive = DrawPrimitive::kLine;
    bool is2d = false;
    std::vector<MPoint> points;
    MVector normal;     // circle, arc, rect (3-D)
    MVector up;         // rect, rect2d
    MVector arcStart;   // arc, arc2d
    MVector arcEnd;
    double radius = 0.0; // circle, arc, sphere
    double scaleX = 0.0; // rect
    double scaleY = 0.0;
    bool filled = false;
    MHWRender::MUIDrawManager::Primitive meshMode = MHWRender::MUIDrawManager::kTriangles;
    std::vector<unsigned int> indices; // mesh: empty means the points in order
    std::vector<MVector> normals;      // mesh: per vertex, may be empty
    std::vector<MColor> colors;        // mesh: per vertex, may be empty
    std::string text;
    MHWRender::MUIDrawManager::TextAlignment alignment = MHWRender::MUIDrawManager::kLeft;
    bool hasBackground = false;
    MColor backgroundColor;
    DrawState state;
};

// A draw manager of the tests' own, for calling drawing code directly and reading what it
// recorded.
class RecordingDrawManager {
public:
    RecordingDrawManager();
    ~RecordingDrawManager();
    RecordingDrawManager(const RecordingDrawManager&) = delete;
    RecordingDrawManager& operator=(const RecordingDrawManager&) = delete;

    MHWRender::MUIDrawManager& manager();
    const std::vector<DrawRecord>& records() const;
    void clear();

private:
    struct Holder;
    std::unique_ptr<Holder> fHolder;
};

// The frame context of a view (the active one by default), as draw overrides and tool
// contexts get it.
const MHWRender::MFrameContext& frameContext(ViewId view = 0);

// The tool context's feedback layer: the manager its Viewport 2.0 event handlers draw into.
// What is drawn there shows in the active view's frames until clearFeedback, which the event
// dispatch calls before each event.
MHWRender::MUIDrawManager& feedbackDrawManager();
void clearFeedback();

// ---- Frames -------------------------------------------------------------------------------

struct OverrideRecords {
    std::string node;      // full path of the node the override draws
    bool updated = false;  // prepareForDraw (and addUIDrawables) ran in this frame
    std::vector<DrawRecord> records;
};

struct FrameRecords {
    ViewId view = 0; // 0 when there was no view to draw
    std::vector<OverrideRecords> overrides; // in the nodes' creation order
    std::vector<DrawRecord> feedback;       // the tool context's drawing, in the active view only

    // The records of the node with this name or path, or null.
    const OverrideRecords* find(const std::string& nodeNameOrPath) const;
    // Every record of the frame: the overrides' in order, then the feedback.
    std::vector<DrawRecord> all() const;
};

// Draws a frame of the view (the active one by default): preEvaluation on plug-in nodes with
// dirty plugs, then every draw override in the nodes' creation order, then the feedback.
FrameRecords drawFrame(ViewId view = 0);

// ---- Rendering ----------------------------------------------------------------------------

struct RenderOptions {
    ViewId view = 0; // 0: the active view
    // Mesh shapes or transforms (names or paths) drawn as a wireframe over translucent
    // faces instead of shaded, as a retopology mesh is shown over its source.
    std::vector<std::string> wireframeMeshes;
    bool drawRecords = true; // paint the frame's draw records over the meshes
};

struct RenderStats {
    int width = 0;
    int height = 0;
    long long triangles = 0;   // mesh triangles sent to the rasterizer
    std::size_t records = 0;   // draw records painted
    double drawMilliseconds = 0.0;   // drawing the frame's records
    double renderMilliseconds = 0.0; // rasterizing and painting
    FrameRecords frame;              // the frame that was rendered
};

// Draws a frame of the view and renders it to a PNG file: a background gradient, every
// visible mesh shape shaded with a headlight, then the frame's records (3-D ones projected
// through the camera and hidden behind meshes unless drawn in x-ray, x-ray ones over
// everything, 2-D ones on top). A failed status and a log line when there is no view or the
// file cannot be written.
MStatus renderFrame(const std::string& pngPath, const RenderOptions& options = RenderOptions(),
                    RenderStats* stats = nullptr);

} // namespace host
