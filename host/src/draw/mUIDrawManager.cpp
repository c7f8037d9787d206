#include <maya/MUIDrawManager.h>

#include "draw/drawAccess.h"
#include "ui/application.h"

#include "host/log.h"

#include <maya/MColorArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MUintArray.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

#include <QFontDatabase>
#include <QStringList>

using host::DrawPrimitive;
using host::DrawRecord;
using host::DrawRecorder;

namespace MHWRender {
namespace {

std::string ownerOf(const DrawRecorder& r) { return r.owner.empty() ? std::string("a draw manager") : r.owner; }

// A new record in the current state. Drawing outside a bracket is kept (the records show
// it) and reported once per manager, since Viewport 2.0 would not draw it reliably.
DrawRecord& add(DrawRecorder& r, DrawPrimitive primitive, bool is2d, const char* call)
{
    if (!r.state.inDrawable && !r.warnedOutside) {
        r.warnedOutside = true;
        host::writeLog(host::LogLevel::kWarning, std::string("MUIDrawManager::") + call + " by " + ownerOf(r) +
                                                     " outside beginDrawable/endDrawable");
    }
    DrawRecord rec;
    rec.primitive = primitive;
    rec.is2d = is2d;
    rec.state = r.state;
    r.records.push_back(std::move(rec));
    return r.records.back();
}

void openBracket(DrawRecorder& r, bool xray, MUIDrawManager::Selectability selectability, unsigned int name,
                 const char* call)
{
    if (r.state.inDrawable && !r.warnedNesting) {
        r.warnedNesting = true;
        host::writeLog(host::LogLevel::kWarning, std::string("MUIDrawManager::") + call + " by " + ownerOf(r) +
                                                     " inside an open drawable; the open one ends here");
    }
    r.state = host::DrawState();
    r.state.inDrawable = true;
    r.state.xray = xray;
    r.state.drawable = r.brackets++;
    r.state.selectability = selectability;
    r.state.selectionName = name;
}

void closeBracket(DrawRecorder& r, bool xray, const char* call)
{
    if ((!r.state.inDrawable || r.state.xray != xray) && !r.warnedNesting) {
        r.warnedNesting = true;
        host::writeLog(host::LogLevel::kWarning, std::string("MUIDrawManager::") + call + " by " + ownerOf(r) +
                                                     " without its matching begin");
    }
    r.state = host::DrawState();
}

std::vector<MPoint> pointsOf(const MPointArray& a)
{
    std::vector<MPoint> out;
    out.reserve(a.length());
    for (unsigned int i = 0; i < a.length(); ++i)
        out.push_back(a[i]);
    return out;
}

MStatus addPoints(DrawRecorder& r, DrawPrimitive primitive, const MPointArray& points, bool draw2D,
                  unsigned int minimum, const char* call)
{
    if (points.length() < minimum) {
        host::writeLog(host::LogLevel::kWarning, std::string("MUIDrawManager::") + call + " by " + ownerOf(r) +
                                                     " with " + std::to_string(points.length()) +
                                                     " points draws nothing");
        return MStatus::kInvalidParameter;
    }
    add(r, primitive, draw2D, call).points = pointsOf(points);
    return MStatus::kSuccess;
}

void addMesh(DrawRecorder& r, MUIDrawManager::Primitive mode, const MPointArray& position,
             const MVectorArray* normal, const MColorArray* color, const MUintArray* index, bool is2d,
             const char* call)
{
    DrawRecord& rec = add(r, DrawPrimitive::kMesh, is2d, call);
    rec.meshMode = mode;
    rec.points = pointsOf(position);
    if (normal)
        for (unsigned int i = 0; i < normal->length(); ++i)
            rec.normals.push_back((*normal)[i]);
    if (color)
        for (unsigned int i = 0; i < color->length(); ++i)
            rec.colors.push_back((*color)[i]);
    bool outOfRange = false;
    if (index)
        for (unsigned int i = 0; i < index->length(); ++i) {
            rec.indices.push_back((*index)[i]);
            outOfRange = outOfRange || (*index)[i] >= position.length();
        }
    if (outOfRange)
        host::writeLog(host::LogLevel::kWarning, std::string("MUIDrawManager::") + call + " by " + ownerOf(r) +
                                                     ": an index is past the last of " +
                                                     std::to_string(position.length()) +
                                                     " positions; those primitives are not drawn");
}

void addText(DrawRecorder& r, const MPoint& position, const MString& text, MUIDrawManager::TextAlignment alignment,
             const MColor* backgroundColor, bool is2d, const char* call)
{
    DrawRecord& rec = add(r, DrawPrimitive::kText, is2d, call);
    rec.points.push_back(position);
    rec.text = text.asChar();
    rec.alignment = alignment;
    if (backgroundColor) {
        rec.hasBackground = true;
        rec.backgroundColor = *backgroundColor;
    }
}

} // namespace

MUIDrawManager::MUIDrawManager()
    : fRecorder(new DrawRecorder())
{
}

MUIDrawManager::~MUIDrawManager() { delete fRecorder; }

void MUIDrawManager::beginDrawable(Selectability selectability, unsigned int selectionName)
{
    openBracket(*fRecorder, false, selectability, selectionName, "beginDrawable");
}

void MUIDrawManager::endDrawable() { closeBracket(*fRecorder, false, "endDrawable"); }

void MUIDrawManager::beginDrawInXray() { openBracket(*fRecorder, true, kNonSelectable, 0, "beginDrawInXray"); }

void MUIDrawManager::endDrawInXray() { closeBracket(*fRecorder, true, "endDrawInXray"); }

void MUIDrawManager::setColor(const MColor& color) { fRecorder->state.color = color; }

void MUIDrawManager::setPointSize(float value) { fRecorder->state.pointSize = value; }

void MUIDrawManager::setLineWidth(float value) { fRecorder->state.lineWidth = value; }

void MUIDrawManager::setLineStyle(LineStyle style)
{
    fRecorder->state.lineStyle = style;
    fRecorder->state.stipple = false;
}

void MUIDrawManager::setLineStyle(unsigned int factor, unsigned short pattern)
{
    fRecorder->state.stipple = true;
    fRecorder->state.stippleFactor = factor;
    fRecorder->state.stipplePattern = pattern;
}

void MUIDrawManager::setPaintStyle(PaintStyle style) { fRecorder->state.paintStyle = style; }

unsigned int MUIDrawManager::depthPriority() const { return fRecorder->state.depthPriority; }

void MUIDrawManager::setDepthPriority(unsigned int priority) { fRecorder->state.depthPriority = priority; }

void MUIDrawManager::line(const MPoint& startPoint, const MPoint& endPoint)
{
    add(*fRecorder, DrawPrimitive::kLine, false, "line").points = {startPoint, endPoint};
}

void MUIDrawManager::line2d(const MPoint& startPoint, const MPoint& endPoint)
{
    add(*fRecorder, DrawPrimitive::kLine, true, "line2d").points = {startPoint, endPoint};
}

MStatus MUIDrawManager::lineList(const MPointArray& points, bool draw2D)
{
    return addPoints(*fRecorder, DrawPrimitive::kLineList, points, draw2D, 2, "lineList");
}

MStatus MUIDrawManager::lineStrip(const MPointArray& points, bool draw2D)
{
    return addPoints(*fRecorder, DrawPrimitive::kLineStrip, points, draw2D, 2, "lineStrip");
}

void MUIDrawManager::point(const MPoint& point)
{
    add(*fRecorder, DrawPrimitive::kPoint, false, "point").points = {point};
}

void MUIDrawManager::point2d(const MPoint& point)
{
    add(*fRecorder, DrawPrimitive::kPoint, true, "point2d").points = {point};
}

MStatus MUIDrawManager::points(const MPointArray& points, bool draw2D)
{
    return addPoints(*fRecorder, DrawPrimitive::kPoints, points, draw2D, 1, "points");
}

void MUIDrawManager::rect(const MPoint& center, const MVector& up, const MVector& normal, double scaleX,
                          double scaleY, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kRect, false, "rect");
    rec.points = {center};
    rec.up = up;
    rec.normal = normal;
    rec.scaleX = scaleX;
    rec.scaleY = scaleY;
    rec.filled = filled;
}

void MUIDrawManager::rect2d(const MPoint& center, const MVector& up, double scaleX, double scaleY, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kRect, true, "rect2d");
    rec.points = {center};
    rec.up = up;
    rec.normal = MVector::zAxis;
    rec.scaleX = scaleX;
    rec.scaleY = scaleY;
    rec.filled = filled;
}

void MUIDrawManager::sphere(const MPoint& center, double radius, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kSphere, false, "sphere");
    rec.points = {center};
    rec.radius = radius;
    rec.filled = filled;
}

void MUIDrawManager::circle(const MPoint& center, const MVector& normal, double radius, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kCircle, false, "circle");
    rec.points = {center};
    rec.normal = normal;
    rec.radius = radius;
    rec.filled = filled;
}

void MUIDrawManager::circle2d(const MPoint& center, double radius, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kCircle, true, "circle2d");
    rec.points = {center};
    rec.normal = MVector::zAxis;
    rec.radius = radius;
    rec.filled = filled;
}

void MUIDrawManager::arc(const MPoint& center, const MVector& start, const MVector& end, const MVector& normal,
                         double radius, bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kArc, false, "arc");
    rec.points = {center};
    rec.arcStart = start;
    rec.arcEnd = end;
    rec.normal = normal;
    rec.radius = radius;
    rec.filled = filled;
}

void MUIDrawManager::arc2d(const MPoint& center, const MVector& start, const MVector& end, double radius,
                           bool filled)
{
    DrawRecord& rec = add(*fRecorder, DrawPrimitive::kArc, true, "arc2d");
    rec.points = {center};
    rec.arcStart = start;
    rec.arcEnd = end;
    rec.normal = MVector::zAxis;
    rec.radius = radius;
    rec.filled = filled;
}

void MUIDrawManager::mesh(Primitive mode, const MPointArray& position, const MVectorArray* normal,
                          const MColorArray* color, const MUintArray* index, const MPointArray* /*texcoord*/)
{
    addMesh(*fRecorder, mode, position, normal, color, index, false, "mesh");
}

void MUIDrawManager::mesh2d(Primitive mode, const MPointArray& position, const MColorArray* color,
                            const MUintArray* index, const MPointArray* /*texcoord*/)
{
    addMesh(*fRecorder, mode, position, nullptr, color, index, true, "mesh2d");
}

unsigned int MUIDrawManager::getFontList(MStringArray& list)
{
    host::ensureApplication();
    list.clear();
    for (const QString& family : QFontDatabase::families())
        list.append(MString(family.toUtf8().constData()));
    return list.length();
}

void MUIDrawManager::setFontSize(const unsigned int fontSize) { fRecorder->state.fontSize = fontSize; }

void MUIDrawManager::setFontName(const MString& faceName) { fRecorder->state.fontName = faceName.asChar(); }

void MUIDrawManager::text(const MPoint& position, const MString& text, TextAlignment alignment,
                          const int* /*backgroundSize*/, const MColor* backgroundColor, bool /*dynamic*/)
{
    addText(*fRecorder, position, text, alignment, backgroundColor, false, "text");
}

void MUIDrawManager::text2d(const MPoint& position, const MString& text, TextAlignment alignment,
                            const int* /*backgroundSize*/, const MColor* backgroundColor, bool /*dynamic*/)
{
    addText(*fRecorder, position, text, alignment, backgroundColor, true, "text2d");
}

} // namespace MHWRender

namespace host {

void DrawManagerDeleter::operator()(MHWRender::MUIDrawManager* manager) const { DrawAccess::destroy(manager); }

DrawManagerPtr DrawAccess::makeManager(const std::string& owner)
{
    DrawManagerPtr m(new MHWRender::MUIDrawManager());
    m->fRecorder->owner = owner;
    return m;
}

} // namespace host
