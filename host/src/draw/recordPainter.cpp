#include "draw/recordPainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <optional>

namespace host {
namespace {

using MHWRender::MUIDrawManager;

constexpr double kTwoPi = 6.28318530717958647692;
constexpr int kCircleSegments = 64;
constexpr double kPieceLength = 3.0; // pixels of a 3-D line tested against depth at once

QColor qcolor(const MColor& c)
{
    auto f = [](float v) { return std::isfinite(v) ? std::clamp(double(v), 0.0, 1.0) : 0.0; };
    return QColor::fromRgbF(float(f(c.r)), float(f(c.g)), float(f(c.b)), float(f(c.a)));
}

// A pixel pattern, on first, in pixels.
QVector<qreal> dashes(const DrawState& s)
{
    if (s.stipple) {
        QVector<qreal> runs;
        const double factor = std::max(1u, s.stippleFactor);
        bool on = true;
        int run = 0;
        for (int bit = 0; bit < 16; ++bit) {
            const bool set = (s.stipplePattern >> bit) & 1u;
            if (bit == 0 && !set)
                runs.push_back(0.0); // patterns start with a dash: an empty one
            if (bit == 0)
                on = set;
            if (set != on) {
                runs.push_back(run * factor);
                run = 0;
                on = set;
            }
            ++run;
        }
        runs.push_back(run * factor);
        if (runs.size() % 2)
            runs.push_back(0.0);
        return runs;
    }
    switch (s.lineStyle) {
    case MUIDrawManager::kShortDotted: return {1.0, 2.0};
    case MUIDrawManager::kShortDashed: return {4.0, 4.0};
    case MUIDrawManager::kDashed: return {8.0, 5.0};
    case MUIDrawManager::kDotted: return {1.0, 5.0};
    default: return {};
    }
}

class Painter {
public:
    Painter(QImage& image, const RasterTarget& depth, const ViewProjection* view)
        : fImage(image), fDepth(depth), fView(view), fPainter(&image)
    {
        fPainter.setRenderHint(QPainter::Antialiasing, true);
        fPainter.setRenderHint(QPainter::TextAntialiasing, true);
    }

    bool paint(const DrawRecord& r)
    {
        if (!r.is2d && !fView)
            return false;
        fRecord = &r;
        setPen();
        switch (r.primitive) {
        case DrawPrimitive::kLine:
        case DrawPrimitive::kLineList: lines(r.points, 2); break;
        case DrawPrimitive::kLineStrip: strip(r.points, false); break;
        case DrawPrimitive::kPoint:
        case DrawPrimitive::kPoints: points(r.points, r.state.color); break;
        case DrawPrimitive::kRect: rect(r); break;
        case DrawPrimitive::kSphere: sphere(r); break;
        case DrawPrimitive::kCircle: arc(r, 0.0, kTwoPi, false); break;
        case DrawPrimitive::kArc: arcBetween(r); break;
        case DrawPrimitive::kMesh: mesh(r); break;
        case DrawPrimitive::kText: text(r); break;
        }
        return true;
    }

private:
    double height() const { return fImage.height(); }
    QPointF toQt(double u, double v) const { return QPointF(u + 0.5, height() - 0.5 - v); }

    void setPen()
    {
        const DrawState& s = fRecord->state;
        const double width = std::isfinite(s.lineWidth) ? std::max(1.0, double(s.lineWidth)) : 1.0;
        QPen pen(qcolor(s.color), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
        QVector<qreal> pattern = dashes(s);
        if (s.stipple && s.stipplePattern == 0)
            pen = QPen(Qt::NoPen);
        else if (!pattern.isEmpty() && !(s.stipple && s.stipplePattern == 0xFFFF)) {
            for (qreal& d : pattern)
                d /= width; // Qt measures dashes in pen widths
            pen.setDashPattern(pattern);
        }
        fPainter.setPen(pen);
        fPainter.setBrush(Qt::NoBrush);
    }

    QBrush brush(const MColor& c) const
    {
        return QBrush(qcolor(c), fRecord->state.paintStyle == MUIDrawManager::kStippled ? Qt::Dense4Pattern
                                                                                         : Qt::SolidPattern);
    }

    double tolerance() const { return 0.002 + fRecord->state.depthPriority * 2e-6; }

    // A 2-D record's pixel, or a 3-D point projected; empty when it cannot be placed.
    std::optional<QPointF> place(const MPoint& p, double* depth = nullptr) const
    {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return std::nullopt;
        if (fRecord->is2d)
            return toQt(p.x, p.y);
        double u, v, d;
        if (!fView->project(p, u, v, d) || (!fView->orthographic && d < fView->nearClip))
            return std::nullopt;
        if (depth)
            *depth = d;
        return toQt(u, v);
    }

    // Whether a 3-D thing at this image position and depth shows.
    bool shows(const QPointF& q, double depth) const
    {
        if (fRecord->is2d || fRecord->state.xray)
            return true;
        return depthVisible(fDepth, int(std::floor(q.x())), int(std::floor(q.y())), depth, tolerance());
    }

    bool anchorShows(const MPoint& p) const
    {
        double d = 0.0;
        const std::optional<QPointF> q = place(p, &d);
        return q && shows(*q, d);
    }

    // One segment, clipped to the near plane and cut where something nearer hides it.
    void segment(const MPoint& a, const MPoint& b, QPainterPath& path)
    {
        if (fRecord->is2d) {
            const auto qa = place(a), qb = place(b);
            if (qa && qb) {
                path.moveTo(*qa);
                path.lineTo(*qb);
            }
            return;
        }
        MPoint p = a, q = b;
        if (!fView->orthographic) {
            const double near = fView->nearClip * 1.000001;
            const double da = (p - fView->eye) * fView->forward, db = (q - fView->eye) * fView->forward;
            if (da < near && db < near)
                return;
            if (da < near)
                p = p + (q - p) * ((near - da) / (db - da));
            else if (db < near)
                q = p + (q - p) * ((near - da) / (db - da));
        }
        double dp = 0.0, dq = 0.0;
        const auto sp = place(p, &dp), sq = place(q, &dq);
        if (!sp || !sq)
            return;
        const double length = std::hypot(sq->x() - sp->x(), sq->y() - sp->y());
        const int pieces = std::clamp(int(std::ceil(length / kPieceLength)), 1, 4096);
        bool drawing = false;
        for (int i = 0; i < pieces; ++i) {
            const double s0 = double(i) / pieces, s1 = double(i + 1) / pieces;
            const MPoint m = p + (q - p) * (0.5 * (s0 + s1));
            double dm = 0.0;
            const auto sm = place(m, &dm);
            const bool visible = sm && shows(*sm, dm);
            if (visible && !drawing)
                path.moveTo(*sp + (*sq - *sp) * s0);
            if (visible)
                path.lineTo(*sp + (*sq - *sp) * s1);
            drawing = visible;
        }
    }

    void lines(const std::vector<MPoint>& pts, std::size_t step)
    {
        QPainterPath path;
        for (std::size_t i = 0; i + 1 < pts.size(); i += step)
            segment(pts[i], pts[i + 1], path);
        fPainter.drawPath(path);
    }

    void strip(const std::vector<MPoint>& pts, bool closed)
    {
        QPainterPath path;
        for (std::size_t i = 0; i + 1 < pts.size(); ++i)
            segment(pts[i], pts[i + 1], path);
        if (closed && pts.size() > 2)
            segment(pts.back(), pts.front(), path);
        fPainter.drawPath(path);
    }

    void points(const std::vector<MPoint>& pts, const MColor& color)
    {
        const double size = std::isfinite(fRecord->state.pointSize) ? std::max(1.0, double(fRecord->state.pointSize))
                                                                   : 1.0;
        for (const MPoint& p : pts) {
            double d = 0.0;
            const auto q = place(p, &d);
            if (q && shows(*q, d))
                fPainter.fillRect(QRectF(q->x() - size / 2, q->y() - size / 2, size, size), qcolor(color));
        }
    }

    // A closed outline or a filled shape through world or pixel points.
    void shape(const std::vector<MPoint>& outline, bool filled, const MColor& color)
    {
        QPolygonF polygon;
        for (const MPoint& p : outline) {
            const auto q = place(p);
            if (!q)
                return;
            polygon << *q;
        }
        if (filled) {
            fPainter.save();
            fPainter.setPen(Qt::NoPen);
            fPainter.setBrush(brush(color));
            fPainter.drawPolygon(polygon);
            fPainter.restore();
        } else {
            fPainter.drawPolygon(polygon);
        }
    }

    // Unit vectors spanning the plane of a 3-D record with this normal, or the view plane.
    void planeAxes(const MVector& normal, MVector& x, MVector& y) const
    {
        if (fRecord->is2d) {
            x = MVector::xAxis;
            y = MVector::yAxis;
            return;
        }
        MVector n = normal.length() > 0.0 ? normal.normal() : -fView->forward;
        x = n ^ (std::fabs(n.y) < 0.9 ? MVector::yAxis : MVector::xAxis);
        x.normalize();
        y = n ^ x;
    }

    void arc(const DrawRecord& r, double from, double sweep, bool pie)
    {
        if (r.points.empty() || !(r.radius >= 0.0) || !anchorShows(r.points.front()))
            return;
        MVector x, y;
        planeAxes(r.normal, x, y);
        if (r.primitive == DrawPrimitive::kArc) {
            // The arc starts along `arcStart`, laid into its plane.
            const MVector n = x ^ y;
            const MVector s = r.arcStart - n * (r.arcStart * n);
            if (s.length() > 0.0) {
                x = s.normal();
                y = n ^ x;
            }
        }
        const MPoint& c = r.points.front();
        std::vector<MPoint> outline;
        const int segments = std::max(2, int(std::ceil(kCircleSegments * sweep / kTwoPi)));
        if (pie)
            outline.push_back(c);
        for (int i = 0; i <= segments; ++i) {
            if (i == segments && sweep >= kTwoPi)
                break;
            const double t = from + sweep * i / segments;
            outline.push_back(c + (x * std::cos(t) + y * std::sin(t)) * r.radius);
        }
        if (r.filled || sweep >= kTwoPi) {
            shape(outline, r.filled, r.state.color);
            return;
        }
        QPolygonF line;
        for (const MPoint& p : outline) {
            const auto q = place(p);
            if (!q)
                return;
            line << *q;
        }
        fPainter.drawPolyline(line);
    }

    void arcBetween(const DrawRecord& r)
    {
        MVector x, y;
        planeAxes(r.normal, x, y);
        const MVector n = x ^ y;
        auto flat = [&](const MVector& v) { return v - n * (v * n); };
        const MVector s = flat(r.arcStart), e = flat(r.arcEnd);
        double sweep = std::atan2((s ^ e) * n, s * e); // counter-clockwise about the normal
        if (sweep <= 0.0)
            sweep += kTwoPi;
        arc(r, 0.0, sweep, r.filled);
    }

    void rect(const DrawRecord& r)
    {
        if (r.points.empty() || !anchorShows(r.points.front()))
            return;
        const MPoint& c = r.points.front();
        MVector up = r.up, right;
        if (r.is2d) {
            up.z = 0.0;
            up = up.length() > 0.0 ? up.normal() : MVector::yAxis;
            right = MVector(up.y, -up.x, 0.0);
        } else {
            up = up.length() > 0.0 ? up.normal() : fView->up;
            right = up ^ (r.normal.length() > 0.0 ? r.normal.normal() : -fView->forward);
            right = right.length() > 0.0 ? right.normal() : fView->right;
        }
        const MVector h = right * r.scaleX, v = up * r.scaleY;
        shape({c - h - v, c + h - v, c + h + v, c - h + v}, r.filled, r.state.color);
    }

    void sphere(const DrawRecord& r)
    {
        if (r.points.empty())
            return;
        double d = 0.0;
        const auto q = place(r.points.front(), &d);
        if (!q || !shows(*q, d))
            return;
        const double perPixel = fView->orthographic ? fView->halfWidth / (0.5 * fView->width)
                                                    : d * fView->tanHalfWidth / (0.5 * fView->width);
        const double radius = r.radius / perPixel;
        if (!std::isfinite(radius))
            return;
        if (r.filled) {
            fPainter.save();
            fPainter.setPen(Qt::NoPen);
            fPainter.setBrush(brush(r.state.color));
            fPainter.drawEllipse(*q, radius, radius);
            fPainter.restore();
        } else {
            fPainter.drawEllipse(*q, radius, radius);
        }
    }

    MColor vertexColor(const DrawRecord& r, std::size_t vertex) const
    {
        return r.colors.size() == r.points.size() && vertex < r.colors.size() ? r.colors[vertex] : r.state.color;
    }

    void mesh(const DrawRecord& r)
    {
        std::vector<std::size_t> order;
        if (r.indices.empty())
            for (std::size_t i = 0; i < r.points.size(); ++i)
                order.push_back(i);
        else
            for (unsigned int i : r.indices)
                if (i < r.points.size())
                    order.push_back(i);
        auto at = [&](std::size_t k) { return r.points[order[k]]; };
        switch (r.meshMode) {
        case MUIDrawManager::kPoints: {
            for (std::size_t k = 0; k < order.size(); ++k)
                points({at(k)}, vertexColor(r, order[k]));
            break;
        }
        case MUIDrawManager::kLines: {
            std::vector<MPoint> pts;
            for (std::size_t k = 0; k < order.size(); ++k)
                pts.push_back(at(k));
            lines(pts, 2);
            break;
        }
        case MUIDrawManager::kLineStrip:
        case MUIDrawManager::kClosedLine: {
            std::vector<MPoint> pts;
            for (std::size_t k = 0; k < order.size(); ++k)
                pts.push_back(at(k));
            strip(pts, r.meshMode == MUIDrawManager::kClosedLine);
            break;
        }
        case MUIDrawManager::kTriangles:
        case MUIDrawManager::kTriStrip: {
            const bool stripMode = r.meshMode == MUIDrawManager::kTriStrip;
            const std::size_t step = stripMode ? 1 : 3;
            for (std::size_t k = 0; k + 2 < order.size(); k += step) {
                const MPoint a = at(k), b = at(k + 1), c = at(k + 2);
                const MPoint centre((a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3, (a.z + b.z + c.z) / 3);
                if (!anchorShows(centre))
                    continue;
                const MColor colour = (vertexColor(r, order[k]) + vertexColor(r, order[k + 1]) +
                                       vertexColor(r, order[k + 2])) /
                                      3.0f;
                shape({a, b, c}, true, colour);
            }
            break;
        }
        }
    }

    void text(const DrawRecord& r)
    {
        if (r.points.empty() || r.text.empty())
            return;
        double d = 0.0;
        const auto q = place(r.points.front(), &d);
        if (!q || !shows(*q, d))
            return;
        QFont font(r.state.fontName.empty() ? QStringLiteral("DejaVu Sans") : QString::fromStdString(r.state.fontName));
        font.setPixelSize(int(std::clamp(r.state.fontSize, 1u, 512u)));
        fPainter.setFont(font);
        const QString s = QString::fromUtf8(r.text.c_str());
        const QFontMetricsF metrics(font);
        const double width = metrics.horizontalAdvance(s);
        const double shift = r.alignment == MUIDrawManager::kCenter ? -0.5 * width
                             : r.alignment == MUIDrawManager::kRight ? -width
                                                                     : 0.0;
        const QPointF baseline(q->x() + shift, q->y());
        if (r.hasBackground)
            fPainter.fillRect(QRectF(baseline.x() - 2, baseline.y() - metrics.ascent() - 1, width + 4,
                                     metrics.height() + 2),
                              qcolor(r.backgroundColor));
        fPainter.setPen(qcolor(r.state.color));
        fPainter.drawText(baseline, s);
    }

    QImage& fImage;
    const RasterTarget& fDepth;
    const ViewProjection* fView;
    QPainter fPainter;
    const DrawRecord* fRecord = nullptr;
};

} // namespace

std::size_t paintRecords(QImage& image, const RasterTarget& depth, const ViewProjection* view,
                         const std::vector<DrawRecord>& records)
{
    Painter painter(image, depth, view);
    std::size_t painted = 0;
    // Depth-tested 3-D drawing first, x-ray over it, and the 2-D overlay on top.
    for (int layer = 0; layer < 3; ++layer)
        for (const DrawRecord& r : records) {
            const int own = r.is2d ? 2 : r.state.xray ? 1 : 0;
            if (own == layer && painter.paint(r))
                ++painted;
        }
    return painted;
}

} // namespace host
