// Freeze border and freeze median: the boundary vertices the brushes must leave where they
// are (border, relax brush only) or keep on the symmetry plane (median, both brushes). The
// lists are rebuilt from the mesh as it is whenever a switch is set and on every feedback
// frame; the marks written for the viewport are the subset that faces the camera.
//
// Deliberate: the border marks need the normal to face the camera by more than 0.5, the median
// marks by more than 0.2, so a vertex can be frozen and show no mark.

#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "store/hostWidgets.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/tqSarn.h"

#include <maya/MBoundingBox.h>
#include <maya/MFnCamera.h>
#include <maya/MFnDagNode.h>
#include <maya/MItMeshVertex.h>

using tq::tool::logged;

namespace {

constexpr double kBorderMarkFacing = -0.5;
constexpr double kMedianMarkFacing = -0.2;

MVector viewDirectionOf(M3dView& view)
{
    MDagPath camera;
    if (!view.getCamera(camera))
        return MVector(0.0, 0.0, -1.0);
    return MFnCamera(camera).viewDirection(MSpace::kWorld);
}

MStatus writeMarks(const MPointArray& marks, const char* name)
{
    const MObject store = tq::findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    return logged(tq::writePointArrayAttr(marks, name, store), __LINE__);
}

} // namespace

bool tqSarnContext::onMedianSide(const MPoint& point, const MString& side)
{
    return (side == "right" && 0.0 >= point.x) || (side == "left" && point.x >= 0.0);
}

void tqSarnContext::setFreezeBorder(bool on)
{
    freezeBorder = on;
    logged(refreshFreezeBorder(), __LINE__);
}

void tqSarnContext::setFreezeMedian(bool on)
{
    freezeMedian = on;
    logged(refreshFreezeMedian(), __LINE__);
}

MStatus tqSarnContext::refreshFreezeBorder()
{
    freezeBorderVertices.clear();
    MPointArray marks;
    const MVector direction = viewDirectionOf(view);
    if (freezeBorder) {
        tq::setButtonChecked(tq::widget::kFreezeButton, true);
        MStatus status;
        const MDagPath mesh = tq::getActiveMeshPath();
        MItMeshVertex it(mesh, MObject::kNullObj, &status);
        if (!status)
            logged(status, __LINE__);
        for (; status && !it.isDone(); it.next()) {
            if (!it.onBoundary())
                continue;
            freezeBorderVertices.append(it.index());
            MVector normal;
            it.getNormal(normal, MSpace::kWorld);
            if (kBorderMarkFacing > normal * direction)
                marks.append(it.position(MSpace::kWorld));
        }
    }
    return writeMarks(marks, tq::storeAttr::kFreePoints);
}

MStatus tqSarnContext::refreshFreezeMedian()
{
    const MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kSuccess;
    const MPoint centre = MFnDagNode(mesh).boundingBox().center();
    MString side;
    if (0.0 >= centre.x)
        side = "left";
    // Deliberate: a centre exactly on the plane is named "right".
    if (centre.x >= 0.0)
        side = "right";
    freezeMedianVertices.clear();
    MPointArray marks;
    const MVector direction = viewDirectionOf(view);
    if (freezeMedian) {
        tq::setButtonChecked(tq::widget::kFreezeMedianButton, true);
        MStatus status;
        for (MItMeshVertex it(mesh, MObject::kNullObj, &status); status && !it.isDone(); it.next()) {
            if (!it.onBoundary())
                continue;
            const MPoint position = it.position(MSpace::kWorld);
            if (!onMedianSide(position, side))
                continue;
            freezeMedianVertices.append(it.index());
            MVector normal;
            it.getNormal(normal, MSpace::kWorld);
            if (kMedianMarkFacing > normal * direction)
                marks.append(position);
        }
    }
    return writeMarks(marks, tq::storeAttr::kFreezeMedian);
}
