#pragma once
// MHWRender::MUIDrawManager: queues simple UI drawing (lines, circles, text, small meshes)
// for Viewport 2.0. Only the host makes one: it hands one to a draw override's
// addUIDrawables and to a tool context's Viewport 2.0 event handlers. The host records every
// call together with the draw state it was made in, and renders the records into its frames.
//
// Drawing belongs between beginDrawable()/endDrawable() or beginDrawInXray()/endDrawInXray();
// each of these resets the draw state (colour, widths, styles, font) to its defaults.

#include <maya/MColor.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class MColorArray;
class MPoint;
class MPointArray;
class MStringArray;
class MUintArray;
class MVector;
class MVectorArray;

namespace host {
class DrawAccess;
struct DrawRecorder;
} // namespace host

namespace MHWRender {

class MUIDrawManager {
public:
    enum FontSize { kDefaultFontSize = 12, kSmallFontSize = 9 };

    enum TextAlignment { kLeft, kCenter, kRight };

    enum LineStyle { kSolid, kShortDotted, kShortDashed, kDashed, kDotted };

    enum PaintStyle { kFlat, kStippled, kShaded };

    enum Primitive { kPoints, kLines, kLineStrip, kClosedLine, kTriangles, kTriStrip };

    enum Selectability { kNonSelectable, kSelectable, kAutomatic };

    void beginDrawable(Selectability selectability = kAutomatic, unsigned int selectionName = 0);
    void endDrawable();

    void beginDrawInXray();
    void endDrawInXray();

    void setColor(const MColor& color);
    void setPointSize(float value);
    void setLineWidth(float value);
    void setLineStyle(LineStyle style);
    // An OpenGL-style stipple: each bit of `pattern`, from the lowest, covers `factor` pixels.
    void setLineStyle(unsigned int factor, unsigned short pattern);
    void setPaintStyle(PaintStyle style);
    unsigned int depthPriority() const;
    void setDepthPriority(unsigned int priority);

    void line(const MPoint& startPoint, const MPoint& endPoint);
    void line2d(const MPoint& startPoint, const MPoint& endPoint);
    MStatus lineList(const MPointArray& points, bool draw2D);
    MStatus lineStrip(const MPointArray& points, bool draw2D);

    void point(const MPoint& point);
    void point2d(const MPoint& point);
    MStatus points(const MPointArray& points, bool draw2D);

    void rect(const MPoint& center, const MVector& up, const MVector& normal, double scaleX, double scaleY,
              bool filled = false);
    void rect2d(const MPoint& center, const MVector& up, double scaleX, double scaleY, bool filled = false);

    void sphere(const MPoint& center, double radius, bool filled = false);

    void circle(const MPoint& center, const MVector& normal, double radius, bool filled = false);
    void circle2d(const MPoint& center, double radius, bool filled = false);

    void arc(const MPoint& center, const MVector& start, const MVector& end, const MVector& normal, double radius,
             bool filled = false);
    void arc2d(const MPoint& center, const MVector& start, const MVector& end, double radius, bool filled = false);

    void mesh(Primitive mode, const MPointArray& position, const MVectorArray* normal = nullptr,
              const MColorArray* color = nullptr, const MUintArray* index = nullptr,
              const MPointArray* texcoord = nullptr);
    void mesh2d(Primitive mode, const MPointArray& position, const MColorArray* color = nullptr,
                const MUintArray* index = nullptr, const MPointArray* texcoord = nullptr);

    static unsigned int getFontList(MStringArray& list);
    void setFontSize(const unsigned int fontSize);
    void setFontName(const MString& faceName);
    void text(const MPoint& position, const MString& text, TextAlignment alignment = kLeft,
              const int* backgroundSize = nullptr, const MColor* backgroundColor = nullptr, bool dynamic = false);
    void text2d(const MPoint& position, const MString& text, TextAlignment alignment = kLeft,
                const int* backgroundSize = nullptr, const MColor* backgroundColor = nullptr, bool dynamic = false);

private:
    friend class host::DrawAccess;
    MUIDrawManager();
    ~MUIDrawManager();
    MUIDrawManager(const MUIDrawManager&) = delete;
    MUIDrawManager& operator=(const MUIDrawManager&) = delete;

    host::DrawRecorder* fRecorder;
};

} // namespace MHWRender
