#include "display/infoDrawing.h"

#include "display/overlayColors.h"
#include "kernel/components.h"
#include "kernel/screen.h"
#include "store/infoLines.h"
#include "store/logModules.h"
#include "store/storeLookup.h"

#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

namespace tq {

namespace {

using MHWRender::MUIDrawManager;

constexpr unsigned int kTextPriority = 990;
constexpr unsigned int kInfoFontSize = 9;
constexpr double kLineLeft = 10.0;
constexpr double kLineStep = 16.0;
constexpr double kTopMargin = 20.0;
constexpr double kBottomMargin = 55.0;
constexpr double kSpikeDot = 3.0;

} // namespace

MStringArray infoTextLines(const MString& message)
{
    MStringArray lines;
    message.split(',', lines);
    return lines;
}

void drawInfoText(MUIDrawManager& dm, int height)
{
    dm.beginDrawInXray();
    dm.setDepthPriority(kTextPriority);
    dm.setFontName("Arial");
    dm.setFontSize(kInfoFontSize);
    MColor colour = overlay::kMidGrey;
    colour.a = 0.25f;
    dm.setColor(colour);
    const MStringArray upper = infoTextLines(getInfo2());
    for (unsigned int i = 0; i < upper.length(); ++i)
        dm.text2d(MPoint(kLineLeft, height - kTopMargin - kLineStep * i), upper[i]);
    const MStringArray lower = infoTextLines(getInfo1());
    for (unsigned int i = 0; i < lower.length(); ++i)
        dm.text2d(MPoint(kLineLeft, kBottomMargin + kLineStep * i), lower[i]);
    dm.endDrawInXray();
}

void drawDisplaySpikes(MUIDrawManager& dm, const OverlayData& data)
{
    MDagPath mesh = getActiveMeshPath();
    if (!mesh.isValid())
        return;
    MObject vertices = newFacesVertexComponent(mesh, MIntArray());
    if (vertices.isNull())
        return;
    const MColor slate = overlay::kSlate;
    dm.setColor(MColor(slate.r, slate.g, slate.b * 1.1f, 0.3f));
    MStatus status;
    MItGeometry it(mesh, vertices, &status);
    if (!status) {
        status.pAPIerror(logModule::kTool, __LINE__);
        return;
    }
    MPointArray spikes;
    for (; !it.isDone(); it.next()) {
        const MPoint p = it.position(MSpace::kWorld);
        const MVector n = it.normal(MSpace::kWorld);
        const MPoint inner = p - n * data.displaySize;
        const MPoint outer = p + n * data.displaySize;
        spikes.append(p);
        spikes.append(inner);
        dm.circle2d(worldToViewPoint(inner), kSpikeDot, true);
        spikes.append(p);
        spikes.append(outer);
        dm.circle2d(worldToViewPoint(outer), kSpikeDot, true);
    }
    dm.setLineWidth(1.0f);
    dm.setLineStyle(MUIDrawManager::kShortDashed);
    dm.lineList(spikes, false);
}

void drawSymmetryPlane(MUIDrawManager& dm)
{
    dm.setDepthPriority(0);
    MStatus status;
    const MDagPath source = getSourceMeshPath(status);
    if (!source.isValid())
        return;
    const MBoundingBox box = MFnDagNode(source).boundingBox();
    const MPoint c = box.center();
    const MPoint lo = box.min();
    const MPoint hi = box.max();

    dm.setColor(MColor(0.1f, 0.1f, 0.2f, 0.05f));
    // Deliberate: up (1, 0, 0) and normal (0, 1, 0) as the tool has always passed them, so the
    // sheet lies flat across the plane x = centre rather than in it; the guide lines below
    // are what show the plane itself.
    dm.rect(c, MVector(1.0, 0.0, 0.0), MVector(0.0, 1.0, 0.0), box.depth() * 0.6, box.height() * 0.6, true);

    dm.setLineStyle(MUIDrawManager::kSolid);
    dm.setLineWidth(1.0f);
    dm.setColor(MColor(1.0f, 1.0f, 0.2f, 0.1f));
    const double z = c.z + (lo.z - hi.z) * 0.6;
    dm.line(MPoint(c.x, c.y + (lo.y - hi.y) * 0.3, z), MPoint(c.x, c.y + (hi.y - lo.y) * 0.3, z));
    dm.setColor(MColor(0.2f, 0.2f, 1.0f, 0.1f));
    const double y = c.y + (hi.y - lo.y) * 0.6;
    dm.line(MPoint(c.x, y, c.z + (lo.z - hi.z) * 0.3), MPoint(c.x, y, c.z + (hi.z - lo.z) * 0.3));
}

} // namespace tq
