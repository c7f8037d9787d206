// The relax and move brushes: vertices of the retopo mesh caught in a sphere around the
// cursor's hit, moved live during the drag and put back on the source surface through the
// context's intersector; the release hands the before and after positions to one tool
// command, so that the whole stroke is one undo step.
//
// Deliberate, and kept as the brushes have always behaved:
// - the sphere test compares an object-space distance with a world radius (the retopo mesh's
//   scale is not compensated), and an object-space normal with the world view direction;
// - the relax brush has no falloff and makes exactly one pass per drag event;
// - the relax brush zeroes a frozen median vertex's x in the source's object space, the move
//   brush in world space.

#include "tool/tqSarnContext.h"

#include "tool/toolLog.h"

#include "command/tqSarnToolCmd.h"
#include "display/overlayColors.h"
#include "kernel/meshQueries.h"
#include "kernel/shadowRows.h"
#include "store/infoLines.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"
#include "store/tqSarn.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnCamera.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshVertex.h>
#include <maya/MUIDrawManager.h>

#include <cfloat>

using tq::tool::logged;

namespace {

constexpr double kRelaxIntensityScale = 0.0005; // tq_sarnIntens into the brush
constexpr double kRelaxFactorScale = 6.0;        // the brush's intensity into relaxFactor
constexpr double kRelaxRadiusScale = 5.0;        // tq_sarnRadius into the brush's message value
constexpr double kRelaxWorldRadius = 0.05;       // tq_sarnRadius into a world radius
constexpr double kMoveWorldRadius = 0.03;        // tq_sarnTweakR into a world radius
constexpr double kCentreDistance2 = 100.0;       // squared distance that names the centre vertex
constexpr double kFarthest = DBL_MAX;            // no limit on the closest-point search
constexpr float kCircleWidth = 2.0f;

double relaxIntensityOption() { return tq::optionVarDoubleOr(tq::optionVar::kRelaxIntensity, tq::optionVarDefault::kRelaxIntensity); }
double relaxRadiusOption() { return tq::optionVarDoubleOr(tq::optionVar::kRelaxRadius, tq::optionVarDefault::kRelaxRadius); }
int moveRadiusOption() { return tq::optionVarIntOr(tq::optionVar::kMoveRadius, tq::optionVarDefault::kMoveRadius); }

bool listed(const MIntArray& list, int id)
{
    for (unsigned int i = 0; i < list.length(); ++i)
        if (list[i] == id)
            return true;
    return false;
}

MVector cameraDirection(M3dView& view)
{
    MDagPath camera;
    if (!view.getCamera(camera))
        return MVector(0.0, 0.0, -1.0);
    return MFnCamera(camera).viewDirection(MSpace::kWorld);
}

// The points of a shadow index row as they stand on the retopo mesh.
MPointArray rowPoints(const MIntArray& ids, MStatus& status)
{
    return tq::vertexPositions(ids, MDagPath(), status);
}

void writeStorePoint(const MPoint& point, const char* name)
{
    const MObject store = tq::findStoreNode();
    if (!store.isNull())
        logged(tq::writeTripleAttr(point, name, store), __LINE__);
}

// What both brushes read of the retopo mesh at each catch: its raw object-space points and
// its angle-weighted object-space vertex normals.
struct BrushMesh {
    BrushMesh(const MDagPath& meshPath, MStatus& status) : fn(meshPath, &status)
    {
        if (!status)
            return;
        raw = fn.getRawPoints(&status);
        count = fn.numVertices();
        fn.getVertexNormals(true, normals, MSpace::kObject);
    }
    MFnMesh fn;
    const float* raw = nullptr;
    int count = 0;
    MFloatVectorArray normals;
};

// With a row active, the vertices of its first shadow row: the brushes hold them still.
MIntArray heldVertices()
{
    MIntArray held, unused2, unused3;
    if (tq::hasPlayerVertices())
        tq::readShadowIndices(held, unused2, unused3);
    return held;
}

} // namespace

// ---- shared

bool tqSarnContext::isFacingCamera(const MVector& normal)
{
    if (!tq::optionVarBoolOr(tq::optionVar::kBackFaceCulling, tq::optionVarDefault::kBackFaceCulling))
        return true;
    return cameraDirection(view) * normal < 0.0;
}

MStatus tqSarnContext::followMovedVertices(bool withThirdRow)
{
    const MDagPath mesh = tq::getActiveMeshPath();
    logged(tq::refreshPlayerLine(mesh), __LINE__);
    logged(tq::refreshShadowRows(), __LINE__);
    if (tq::hasPlayerVertices()) {
        MIntArray ids1, ids2, ids3;
        MStatus status = tq::readShadowIndices(ids1, ids2, ids3);
        if (!status)
            return logged(status, __LINE__);
        MPointArray row1 = rowPoints(ids1, status);
        MPointArray row2 = rowPoints(ids2, status);
        MPointArray row3 = withThirdRow ? rowPoints(ids3, status) : MPointArray();
        if (row1.length() && row2.length()) {
            if (tq::shadowIsClosed()) {
                row1[row1.length() - 1] = row1[0];
                row2[row2.length() - 1] = row2[0];
            }
            logged(tq::writeShadowStrokes(row1, row2, row3), __LINE__);
            if (!withThirdRow)
                logged(tq::writeNondestructRows(tq::RowList{row1, row2}), __LINE__);
        }
    }
    return MStatus::kSuccess;
}

// ---- relax brush

void tqSarnContext::setRelaxBrush(double intensity, double radius)
{
    relaxBrushOn = true;
    relaxRadiusValue = radius;
    relaxFactor = intensity * kRelaxFactorScale;
    MString text("Relax brush,Intensity: ");
    text += intensity / kRelaxIntensityScale;
    text += ",Radius: ";
    text += radius / kRelaxRadiusScale;
    tq::setInfo1(text);
}

void tqSarnContext::armRelaxBrushFromOptions()
{
    setRelaxBrush(relaxIntensityOption() * kRelaxIntensityScale, relaxRadiusOption() * kRelaxRadiusScale);
}

MObject tqSarnContext::collectBrushVertices(double radius, const MDagPath& meshPath, MVector& normal)
{
    MStatus status;
    const BrushMesh brushMesh(meshPath, status);
    if (!status)
        return MObject::kNullObj;
    const float* raw = brushMesh.raw;
    const int count = brushMesh.count;
    const MFloatVectorArray& normals = brushMesh.normals;
    MFnSingleIndexedComponent fnComponent;
    MObject component = fnComponent.create(MFn::kMeshVertComponent);

    MFloatPointArray hits;
    MIntArray hitFaces;
    if (!tq::rayHitAtPixel(meshPath, hits, normal, view, &accelParams, curX, curY, hitFaces, true))
        return collectBrushVerticesOffMesh(radius, meshPath, component);
    if (hits.length() == 0)
        return MObject::kNullObj;
    brushHitPoint = MPoint(hits[0]);
    const MPoint hit = brushHitPoint * meshPath.inclusiveMatrixInverse();

    const MIntArray held = heldVertices();
    const double radius2 = radius * radius;
    for (int v = 0; raw && v < count; ++v) {
        if (listed(held, v))
            continue;
        const MPoint p(raw[3 * v], raw[3 * v + 1], raw[3 * v + 2]);
        const double d2 = (p - hit) * (p - hit);
        // Deliberate: a vertex exactly on the sphere is in on this path, out on the other.
        if (!(radius2 >= d2) || static_cast<unsigned int>(v) >= normals.length())
            continue;
        if (!isFacingCamera(MVector(normals[static_cast<unsigned int>(v)])))
            continue;
        if (brushCentreVertex < 0 && d2 < kCentreDistance2)
            brushCentreVertex = v;
        if (!freezeBorder || !listed(freezeBorderVertices, v))
            fnComponent.addElement(v);
    }
    writeStorePoint(brushHitPoint, tq::storeAttr::kInterPoint);
    return component;
}

MObject tqSarnContext::collectBrushVerticesOffMesh(double radius, const MDagPath& meshPath, MObject& component)
{
    bool hitFound = false;
    const MPoint hit = castStrokeRay(hitFound, curX, curY);
    if (!hitFound)
        return MObject::kNullObj;
    brushHitPoint = hit;
    brushCentreVertex = -1;
    const MIntArray held = heldVertices();
    MFnSingleIndexedComponent fnComponent(component);
    const double radius2 = radius * radius;
    MStatus status;
    for (MItMeshVertex it(meshPath, MObject::kNullObj, &status); status && !it.isDone(); it.next()) {
        const int v = it.index();
        if (listed(held, v))
            continue;
        const MPoint p = it.position(MSpace::kWorld);
        if (!(radius2 > (p - brushHitPoint) * (p - brushHitPoint)))
            continue;
        MVector vertexNormal;
        it.getNormal(vertexNormal, MSpace::kWorld);
        if (!isFacingCamera(vertexNormal))
            continue;
        if (!freezeBorder || !listed(freezeBorderVertices, v))
            fnComponent.addElement(v);
    }
    writeStorePoint(brushHitPoint, tq::storeAttr::kInterPoint);
    return component;
}

MStatus tqSarnContext::relaxVertices(MObject& component, const MDagPath& meshPath)
{
    MStatus status;
    MItMeshVertex it(meshPath, component, &status);
    if (!status)
        return logged(status, __LINE__);
    for (; !it.isDone(); it.next()) {
        const MPoint p = it.position(MSpace::kWorld, &status);
        if (!status)
            return logged(status, __LINE__);
        MIntArray neighbours;
        if (!(status = it.getConnectedVertices(neighbours)))
            return logged(status, __LINE__);
        const float weight = 1.0f / static_cast<float>(neighbours.length());
        MFnSingleIndexedComponent fnNeighbours;
        MObject around = fnNeighbours.create(MFn::kMeshVertComponent);
        fnNeighbours.addElements(neighbours);
        MPointArray positions;
        MItGeometry geometry(meshPath, around, &status);
        if (!status || !(status = geometry.allPositions(positions, MSpace::kWorld)))
            return logged(status, __LINE__);
        MPoint centroid(0.0, 0.0, 0.0);
        for (const MPoint& q : positions)
            centroid += MVector(q) * static_cast<double>(weight);
        const MPoint moved = p - (p - centroid) * relaxFactor;

        MPointOnMesh onSource;
        if (!(status = intersector.getClosestPoint(moved, onSource, kFarthest)))
            return logged(status, __LINE__);
        MPoint local(onSource.getPoint());
        if (freezeMedian && listed(freezeMedianVertices, it.index()))
            local.x = 0.0;
        if (!(status = it.setPosition(local * sourceMatrix, MSpace::kWorld)))
            return logged(status, __LINE__);
    }
    return view.refresh(false, false);
}

MStatus tqSarnContext::relaxBrushDrag(MHWRender::MUIDrawManager& drawManager)
{
    const MDagPath mesh = tq::getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kUnknownParameter;
    const double radius = relaxRadiusOption() * kRelaxWorldRadius;
    MVector normal;
    MObject component = collectBrushVertices(radius, mesh, normal);
    if (!component.isNull()) {
        MStatus status = relaxVertices(component, mesh);
        if (!status)
            return status;
    }
    drawManager.beginDrawable();
    drawManager.setLineWidth(kCircleWidth);
    drawManager.setLineStyle(MHWRender::MUIDrawManager::kSolid);
    MColor lime = tq::overlay::kLime;
    lime.a = 1.0f;
    drawManager.setColor(lime);
    drawManager.circle(brushHitPoint, normal, relaxRadiusOption() * kRelaxWorldRadius, false);
    drawManager.endDrawable();

    logged(followMovedVertices(false), __LINE__);
    if (tq::boundaryEditMode()) {
        MIntArray ids1, ids2, ids3;
        tq::readShadowIndices(ids1, ids2, ids3);
        MStatus status;
        logged(tq::writeNondestructRows(tq::RowList{rowPoints(ids3, status)}), __LINE__);
    }
    return MStatus::kSuccess;
}

MStatus tqSarnContext::relaxBrushFinish()
{
    tqSarnToolCmd* command = makeToolCommand();
    MStatus status;
    const MPointArray positions = tq::allVertexPositions(status);
    if (!status)
        return logged(status, __LINE__);
    if (!command)
        return tq::tool::failWith("no tool command");
    // Deliberate: the two index rows handed over are members nothing fills; the mode's undo
    // and redo never read them.
    command->setBrushRelaxData(positionsBefore, positions, unfilledRowA, unfilledRowB);
    logged(command->redoIt(), __LINE__);
    return logged(command->finalize(), __LINE__);
}

// ---- move brush

MStatus tqSarnContext::storeTweakRadius(bool clear)
{
    const MObject store = tq::findStoreNode();
    if (store.isNull())
        return MStatus::kInvalidParameter;
    MIntArray values;
    if (!clear) {
        values.append(moveRadiusOption());
        values.append(curX);
        values.append(curY);
    }
    return logged(tq::writeIntArrayAttr(values, tq::storeAttr::kTweakRadius, store), __LINE__);
}

MObject tqSarnContext::collectMoveVertices(double radius, const MDagPath& meshPath)
{
    MStatus status;
    const BrushMesh brushMesh(meshPath, status);
    if (!status)
        return MObject::kNullObj;
    const float* raw = brushMesh.raw;
    const int count = brushMesh.count;
    const MFloatVectorArray& normals = brushMesh.normals;
    const MVector direction = cameraDirection(view);
    const bool skipBackFaces = tq::optionVarBoolOr(tq::optionVar::kBackFaceCulling, tq::optionVarDefault::kBackFaceCulling);
    MFnSingleIndexedComponent fnComponent;
    MObject component = fnComponent.create(MFn::kMeshVertComponent);
    const MIntArray held = heldVertices();
    const double radius2 = radius * radius;

    MFloatPointArray hits;
    MIntArray hitFaces;
    MVector normal;
    if (tq::rayHitAtPixel(meshPath, hits, normal, view, &accelParams, pressX, pressY, hitFaces, true) &&
        hits.length()) {
        moveHit = 1;
        brushHitPoint = MPoint(hits[0]);
        const MPoint hit = brushHitPoint * meshPath.inclusiveMatrixInverse();
        for (int v = 0; raw && v < count; ++v) {
            if (listed(held, v) || static_cast<unsigned int>(v) >= normals.length())
                continue;
            // Deliberate: the facing test the other way round; a normal at right angles stays.
            if (skipBackFaces && direction * MVector(normals[static_cast<unsigned int>(v)]) > 0.0)
                continue;
            const MPoint p(raw[3 * v], raw[3 * v + 1], raw[3 * v + 2]);
            const double d2 = (p - hit) * (p - hit);
            if (!(radius2 >= d2))
                continue;
            fnComponent.addElement(v);
            moveBasePoints.append(p);
            moveWeights.append(1.0 - d2 / radius2);
        }
        writeStorePoint(MPoint(normal), tq::storeAttr::kInterNormal);
        return component;
    }

    bool hitFound = false;
    brushHitPoint = castStrokeRay(hitFound, pressX, pressY);
    moveHit = hitFound ? 1 : -1;
    for (MItMeshVertex it(meshPath, MObject::kNullObj, &status); status && !it.isDone(); it.next()) {
        const int v = it.index();
        if (listed(held, v))
            continue;
        const MPoint p = it.position(MSpace::kWorld);
        const double d2 = (p - brushHitPoint) * (p - brushHitPoint);
        if (!(radius2 > d2))
            continue;
        MVector vertexNormal;
        it.getNormal(vertexNormal, MSpace::kWorld);
        if (!isFacingCamera(vertexNormal))
            continue;
        fnComponent.addElement(v);
        moveBasePoints.append(p);
        moveWeights.append((radius2 - d2) / radius2);
    }
    return component;
}

MStatus tqSarnContext::moveBrushBegin()
{
    const MDagPath mesh = tq::getActiveMeshPath();
    moveHit = -1;
    moveWeights.clear();
    moveBasePoints.clear();
    const double radius = moveRadiusOption() * kMoveWorldRadius;
    moveVertices = mesh.isValid() ? collectMoveVertices(radius, mesh) : MObject::kNullObj;
    moveBrushActive = true;
    MString text("Move brush,Radius: ");
    text += radius / kMoveWorldRadius;
    tq::setInfo1(text);
    return MStatus::kSuccess;
}

MVector tqSarnContext::moveDelta(MPoint& nearPoint)
{
    MPoint farPoint;
    view.viewToWorld(pressX, pressY, nearPoint, farPoint);
    const double depth = (brushHitPoint - nearPoint).length() / (farPoint - nearPoint).length();
    MPoint dropped;
    MPoint farNow;
    view.viewToWorld(curX, curY, dropped, farNow);
    return (farNow - nearPoint) * depth;
}

MStatus tqSarnContext::moveBrushDrag()
{
    if (moveHit == -1)
        return MStatus::kUnknownParameter;
    MPoint nearPoint;
    const MVector delta = moveDelta(nearPoint);
    const MPoint target = nearPoint + delta;
    const MDagPath mesh = tq::getActiveMeshPath();
    MStatus status;
    MItGeometry it(mesh, moveVertices, &status);
    if (!status || it.count() == 0)
        return MStatus::kUnknownParameter;
    if (moveBasePoints.length() != static_cast<unsigned int>(it.count()))
        return MStatus::kFailure;
    if (intersector.isCreated()) {
        const MVector offset = target - brushHitPoint;
        for (unsigned int i = 0; !it.isDone(); it.next(), ++i) {
            const MPoint wanted = moveBasePoints[i] + offset * moveWeights[i];
            MPointOnMesh onSource;
            if (!(status = intersector.getClosestPoint(wanted, onSource, kFarthest)))
                return logged(status, __LINE__);
            MPoint world = MPoint(onSource.getPoint()) * sourceMatrix;
            if (freezeMedian && listed(freezeMedianVertices, it.index()))
                world.x = 0.0;
            if (!(status = it.setPosition(world, MSpace::kWorld)))
                return logged(status, __LINE__);
        }
    }
    logged(followMovedVertices(true), __LINE__);
    MStatus rowsStatus;
    logged(tq::writeNondestructRows(tq::readShadowRows(rowsStatus)), __LINE__);
    storeTweakRadius(false);
    writeStorePoint(target, tq::storeAttr::kInterPoint);
    return view.refresh(false, false);
}

MStatus tqSarnContext::moveBrushEnd()
{
    tqSarnToolCmd* command = makeToolCommand();
    moveBrushActive = false;
    relaxBrushOn = false;
    storeTweakRadius(true);
    MStatus status;
    const MPointArray positions = tq::allVertexPositions(status);
    if (!status)
        return logged(status, __LINE__);
    if (!command)
        return tq::tool::failWith("no tool command");
    command->setTweakPositions(positionsBefore, positions);
    logged(command->redoIt(), __LINE__);
    return logged(command->finalize(), __LINE__);
}

void tqSarnContext::drawMoveCircle(MHWRender::MUIDrawManager& drawManager)
{
    const MDagPath mesh = tq::getActiveMeshPath();
    MFloatPointArray hits;
    MIntArray hitFaces;
    MVector normal;
    if (!mesh.isValid() || !tq::rayHitAtPixel(mesh, hits, normal, view, &accelParams, curX, curY, hitFaces, true) ||
        hits.length() == 0)
        return;
    const MPoint hit(hits[0]);
    drawManager.beginDrawable();
    drawManager.setLineWidth(kCircleWidth);
    drawManager.setLineStyle(MHWRender::MUIDrawManager::kSolid);
    MColor red = tq::overlay::kDeepRed;
    red.a = 1.0f;
    drawManager.setColor(red);
    drawManager.circle(hit, normal, moveRadiusOption() * kMoveWorldRadius, false);
    drawManager.endDrawable();
    writeStorePoint(hit, tq::storeAttr::kInterPoint);
    writeStorePoint(MPoint(normal), tq::storeAttr::kInterNormal);
}
