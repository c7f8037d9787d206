// renderFrame (host/viewport.h): the host's viewport picture.

#include "host/viewport.h"

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/scene.h"
#include "draw/dagVisibility.h"
#include "draw/drawOverrides.h"
#include "draw/meshRaster.h"
#include "draw/recordPainter.h"
#include "mesh/meshNode.h"
#include "ui/application.h"
#include "view/cameraNode.h"
#include "view/views.h"

#include "host/harness.h"
#include "host/log.h"

#include <QImage>
#include <QString>

#include <chrono>
#include <set>

namespace host {
namespace {

const MColor kSurface(0.62f, 0.62f, 0.64f);
const MColor kRetopologyFace(0.30f, 0.55f, 1.0f, 0.28f);
const MColor kRetopologyEdge(0.05f, 0.16f, 0.75f, 1.0f);

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

MStatus fail(const std::string& why)
{
    writeLog(LogLevel::kError, "renderFrame: " + why);
    return MStatus::kFailure;
}

// Maya's default viewport gradient, light at the top.
void paintBackground(QImage& image)
{
    const int h = image.height();
    for (int row = 0; row < h; ++row) {
        const double t = h > 1 ? double(row) / (h - 1) : 0.0;
        const auto mix = [&](double top, double bottom) { return int((top + (bottom - top) * t) * 255.0 + 0.5); };
        const QRgb c = qRgb(mix(0.54, 0.05), mix(0.62, 0.05), mix(0.70, 0.06));
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
        std::fill(line, line + image.width(), c);
    }
}

std::set<const NodeBody*> wireframeShapes(const std::vector<std::string>& names)
{
    std::set<const NodeBody*> out;
    for (const std::string& name : names) {
        NodeBody* node = Access::node(findNode(name));
        if (!node) {
            writeLog(LogLevel::kWarning, "renderFrame: no mesh '" + name + "' to draw as a wireframe");
            continue;
        }
        if (isMeshShape(node))
            out.insert(node);
        for (NodeBody* child : node->children)
            if (isMeshShape(child))
                out.insert(child);
    }
    return out;
}

} // namespace

MStatus renderFrame(const std::string& pngPath, const RenderOptions& options, RenderStats* stats)
{
    ensureApplication(); // fonts need the GUI application, even offscreen
    ensureCameraType();
    const View* found = viewOrActive(options.view);
    if (!found)
        return fail(options.view ? "there is no view " + std::to_string(options.view) : "there is no active view");
    const unsigned int viewId = found->id;

    auto start = std::chrono::steady_clock::now();
    FrameRecords frame = drawFrameOf(viewId);
    const double drawMs = millisecondsSince(start);

    const View* view = findView(viewId); // the frame's plug-in code may have changed the views
    ViewProjection projection;
    if (!view || !viewProjection(*view, projection))
        return fail("the view has no camera to render with");

    start = std::chrono::steady_clock::now();
    QImage image(projection.width, projection.height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return fail("cannot make an image of " + std::to_string(projection.width) + " x " +
                    std::to_string(projection.height) + " pixels");
    paintBackground(image);
    RasterTarget target(image.width(), image.height(), reinterpret_cast<std::uint32_t*>(image.bits()),
                        int(image.bytesPerLine() / 4));

    const std::set<const NodeBody*> wire = wireframeShapes(options.wireframeMeshes);
    std::vector<NodeBody*> later;
    long long triangles = 0;
    for (const NodePtr& node : Scene::current().nodes()) {
        if (!isMeshShape(node.get()) || !shownInViewport(node.get()))
            continue;
        if (wire.count(node.get())) {
            later.push_back(node.get());
            continue;
        }
        if (const MeshGeometry* g = shapeGeometry(node.get()))
            triangles += rasterShaded(target, projection, *g, worldMatrix(node.get()), kSurface);
    }
    // Wireframes go over every shaded surface, so that they are tested against all of them.
    for (NodeBody* node : later)
        if (const MeshGeometry* g = shapeGeometry(node))
            triangles += rasterWireframe(target, projection, *g, worldMatrix(node), kRetopologyFace, kRetopologyEdge);

    std::size_t painted = 0;
    if (options.drawRecords)
        painted = paintRecords(image, target, &projection, frame.all());
    const double renderMs = millisecondsSince(start);

    if (!image.save(QString::fromStdString(pngPath), "PNG"))
        return fail("cannot write '" + pngPath + "'");
    if (stats) {
        stats->width = image.width();
        stats->height = image.height();
        stats->triangles = triangles;
        stats->records = painted;
        stats->drawMilliseconds = drawMs;
        stats->renderMilliseconds = renderMs;
        stats->frame = std::move(frame);
    }
    return MStatus::kSuccess;
}

} // namespace host
