#include "store/tqSarn.h"

#include "kernel/entryBarrier.h"
#include "store/logModules.h"

#include <maya/MDataBlock.h>
#include <maya/MFnData.h>
#include <maya/MFnGenericAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MViewport2Renderer.h>

#include <initializer_list>
#include <utility>

using namespace tq::storeAttr;

const MTypeId tqSarn::id(0x80025);
const MString tqSarn::typeName("tqSarn");
const MString tqSarn::drawDbClassification("drawdb/geometry/tqSarn");

MObject tqSarn::strokes;
MObject tqSarn::playervtx;
MObject tqSarn::freepoints;
MObject tqSarn::freezeMedian;
MObject tqSarn::sizes;
MObject tqSarn::playersLine;
MObject tqSarn::playerpts;
MObject tqSarn::pointsDebug;
MObject tqSarn::strokesShadow;
MObject tqSarn::sizesShadow;
MObject tqSarn::strokesNondestruct;
MObject tqSarn::sizesNondestruct;
MObject tqSarn::newFaces;
MObject tqSarn::displayInfo;
MObject tqSarn::tweakRadius;
MObject tqSarn::tqSarnMesh;
MObject tqSarn::shadowIndices1;
MObject tqSarn::shadowIndices2;
MObject tqSarn::shadowIndices3;
MObject tqSarn::fusept;
MObject tqSarn::magnetPt;
MObject tqSarn::sublines;
MObject tqSarn::fusemesh;
MObject tqSarn::fuseindices;
MObject tqSarn::verticestweak;
MObject tqSarn::inputNormals;
MObject tqSarn::displaySize;
MObject tqSarn::pinch;
MObject tqSarn::mode;
MObject tqSarn::symmetry;
MObject tqSarn::radiusMoveInteractive;
MObject tqSarn::radiusRelaxInteractive;
MObject tqSarn::intensityRelaxInteractive;
MObject tqSarn::interPoint;
MObject tqSarn::interNormal;

namespace {

// Deliberate: the schema's log lines name the module "tqTweakNode", as they always have;
// log readers filter on that name.
constexpr const char* kSchemaModule = "tqTweakNode";

void logIfFailed(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kSchemaModule, line);
}

enum class Flag { kStorable, kKeyable, kHidden, kNotHidden, kWritable, kCached };

// Sets the flags in the order given; a flag not named keeps the host's default.
void setFlags(MFnAttribute& fn, std::initializer_list<Flag> flags)
{
    for (Flag flag : flags) {
        switch (flag) {
        case Flag::kStorable: fn.setStorable(true); break;
        case Flag::kKeyable: fn.setKeyable(true); break;
        case Flag::kHidden: fn.setHidden(true); break;
        case Flag::kNotHidden: fn.setHidden(false); break;
        case Flag::kWritable: fn.setWritable(true); break;
        case Flag::kCached: fn.setCached(true); break;
        }
    }
}

MObject createTyped(MFnTypedAttribute& fn, const char* longName, const char* shortName, MFnData::Type type, int line)
{
    MStatus status;
    MObject attr = fn.create(longName, shortName, type, MObject::kNullObj, &status);
    logIfFailed(status, line);
    return attr;
}

MObject createNumeric(MFnNumericAttribute& fn, const char* longName, const char* shortName,
                      MFnNumericData::Type type, double defaultValue, int line)
{
    MStatus status;
    MObject attr = fn.create(longName, shortName, type, defaultValue, &status);
    logIfFailed(status, line);
    return attr;
}

} // namespace

tqSarn::tqSarn() = default;
tqSarn::~tqSarn() = default;

void* tqSarn::creator() { return new tqSarn(); }

MStatus tqSarn::initialize()
{
    using F = Flag;
    MFnTypedAttribute tAttr;
    MFnNumericAttribute nAttr;
    MFnGenericAttribute gAttr;
    MStatus status;

    strokes = createTyped(tAttr, kStrokes, "stk", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kHidden, F::kCached});
    playervtx = createTyped(tAttr, kPlayerVertices, "pvt", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    freepoints = createTyped(tAttr, kFreePoints, "frt", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    freezeMedian = createTyped(tAttr, kFreezeMedian, "frm", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    sizes = createTyped(tAttr, kSizes, "sz", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kHidden, F::kWritable, F::kCached});
    playersLine = createTyped(tAttr, kPlayersLine, "pla", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    playerpts = createTyped(tAttr, kPlayerPoints, "ppt", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    pointsDebug = createTyped(tAttr, kPointsDebug, "pdb", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kHidden, F::kCached});
    strokesShadow = createTyped(tAttr, kStrokesShadow, "shtk", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kHidden, F::kCached});
    sizesShadow = createTyped(tAttr, kSizesShadow, "shz", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kHidden, F::kKeyable, F::kCached});
    strokesNondestruct = createTyped(tAttr, kStrokesNondestruct, "stnd", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kHidden, F::kKeyable, F::kCached});
    sizesNondestruct = createTyped(tAttr, kSizesNondestruct, "snd", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kHidden, F::kKeyable, F::kCached});
    newFaces = createTyped(tAttr, kNewFaces, "nf", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kHidden, F::kCached});

    displayInfo = createNumeric(nAttr, kDisplayInfo, "di", MFnNumericData::kInt, 1, __LINE__);
    // Deliberate: the not-hidden call goes to the typed set, which still holds newFaces. So
    // newFaces ends up visible despite its own hidden call, and displayInfo keeps the
    // default. Kept so the schema stays the one existing scenes and scripts were made with.
    setFlags(tAttr, {F::kNotHidden});
    setFlags(nAttr, {F::kStorable, F::kWritable, F::kCached});

    tweakRadius = createTyped(tAttr, kTweakRadius, "twr", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});

    tqSarnMesh = gAttr.create(kSarnMesh, "tm", &status);
    logIfFailed(status, __LINE__);
    status = gAttr.addDataAccept(MFnData::kMesh);
    logIfFailed(status, __LINE__);
    setFlags(gAttr, {F::kKeyable, F::kNotHidden, F::kStorable});

    shadowIndices1 = createTyped(tAttr, kShadowIndices1, "shio", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    shadowIndices2 = createTyped(tAttr, kShadowIndices2, "shis", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    shadowIndices3 = createTyped(tAttr, kShadowIndices3, "shit", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    fusept = createTyped(tAttr, kFusePoints, "fpt", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    magnetPt = createTyped(tAttr, kMagnetPoints, "mgn", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    sublines = createTyped(tAttr, kSublines, "sbl", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    fusemesh = createTyped(tAttr, kFuseMesh, "fmh", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kKeyable, F::kCached, F::kHidden});
    fuseindices = createTyped(tAttr, kFuseIndices, "fid", MFnData::kIntArray, __LINE__);
    setFlags(tAttr, {F::kStorable, F::kWritable, F::kCached, F::kHidden});
    verticestweak = createTyped(tAttr, kVerticesTweak, "tkv", MFnData::kPointArray, __LINE__);
    setFlags(tAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});
    inputNormals = createTyped(tAttr, kInputNormals, "ino", MFnData::kVectorArray, __LINE__);
    setFlags(tAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});

    displaySize = createNumeric(nAttr, kDisplaySize, "dsz", MFnNumericData::kDouble, 0.0, __LINE__);
    setFlags(nAttr, {F::kNotHidden, F::kStorable, F::kWritable, F::kCached});
    pinch = createNumeric(nAttr, kPinch, "pch", MFnNumericData::kDouble, 0.0, __LINE__);
    setFlags(nAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});
    mode = createNumeric(nAttr, kMode, "mo", MFnNumericData::kInt, 0, __LINE__);
    setFlags(nAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});
    symmetry = createNumeric(nAttr, kSymmetry, "sym", MFnNumericData::kInt, 0, __LINE__);
    setFlags(nAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});

    // Deliberate: the minimum is the float 0.1 (0.10000000149011612 once widened), and the
    // default 0 lies below it. Brush code reads the raw value, so a new node reads 0.
    radiusMoveInteractive =
        createNumeric(nAttr, kRadiusMoveInteractive, "rmi", MFnNumericData::kDouble, 0.0, __LINE__);
    nAttr.setMin(0.1f);
    setFlags(nAttr, {F::kNotHidden, F::kStorable, F::kWritable, F::kCached});
    radiusRelaxInteractive =
        createNumeric(nAttr, kRadiusRelaxInteractive, "rri", MFnNumericData::kDouble, 0.0, __LINE__);
    nAttr.setMin(0.1f);
    setFlags(nAttr, {F::kNotHidden, F::kStorable, F::kWritable, F::kCached});
    intensityRelaxInteractive =
        createNumeric(nAttr, kIntensityRelaxInteractive, "iri", MFnNumericData::kDouble, 0.0, __LINE__);
    nAttr.setMin(0.1f);
    setFlags(nAttr, {F::kNotHidden, F::kStorable, F::kWritable, F::kCached});

    interPoint = createNumeric(nAttr, kInterPoint, "ip", MFnNumericData::k3Double, 0.0, __LINE__);
    setFlags(nAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});
    interNormal = createNumeric(nAttr, kInterNormal, "in", MFnNumericData::k3Double, 0.0, __LINE__);
    // Deliberate: all four flag calls go to the typed set, which still holds inputNormals.
    // inputNormals gets them twice and interNormal keeps the host's defaults (not hidden),
    // the schema existing scenes and scripts were made with.
    setFlags(tAttr, {F::kHidden, F::kStorable, F::kWritable, F::kCached});

    // The order of adding differs from the order of creation; saved scenes list the
    // attributes in this order.
    for (const MObject* attr :
         {&pointsDebug, &intensityRelaxInteractive, &radiusRelaxInteractive, &radiusMoveInteractive, &interPoint,
          &interNormal, &symmetry, &sublines, &mode, &pinch, &sizes, &newFaces, &tweakRadius, &fusept, &strokes,
          &playerpts, &magnetPt, &fusemesh, &playervtx, &tqSarnMesh, &verticestweak, &shadowIndices1,
          &shadowIndices2, &shadowIndices3, &playersLine, &fuseindices, &displayInfo, &inputNormals, &freezeMedian,
          &sizesShadow, &freepoints, &strokesShadow, &displaySize, &sizesNondestruct, &strokesNondestruct}) {
        status = addAttribute(*attr);
        logIfFailed(status, __LINE__);
    }

    // Only there to make the node dirty; nothing is computed from it. The two cycles
    // (newFaces with sizesShadow and with strokesShadow) are part of the net.
    const std::pair<const MObject*, const MObject*> affects[] = {
        {&strokes, &sizes},           {&strokes, &newFaces},       {&tqSarnMesh, &sizes},
        {&tweakRadius, &tqSarnMesh},  {&strokes, &tqSarnMesh},     {&displayInfo, &strokes},
        {&strokes, &freepoints},      {&newFaces, &sizesShadow},   {&newFaces, &strokesShadow},
        {&playervtx, &strokesShadow}, {&sizesShadow, &newFaces},   {&strokesShadow, &newFaces},
        {&verticestweak, &newFaces},
    };
    for (const auto& [source, affected] : affects) {
        status = attributeAffects(*source, *affected);
        logIfFailed(status, __LINE__);
    }
    return MStatus::kSuccess;
}

MStatus tqSarn::compute(const MPlug& plug, MDataBlock& /*data*/)
{
    return tq::guardEntryPoint(tq::logModule::kTool, "tqSarn compute", [&]() -> MStatus {
        // `strokes` is affected by displayInfo, so a read of it after such a change lands
        // here; success keeps the stored strokes. Every other plug is not ours to compute.
        if (plug == strokes)
            return MStatus::kSuccess;
        return MStatus::kUnknownParameter;
    });
}

MStatus tqSarn::preEvaluation(const MDGContext& context, const MEvaluationNode& evaluationNode)
{
    // Under parallel evaluation the draw override is not told of plain attribute changes;
    // a change of `sizes` is the store's signal that strokes were added or removed.
    return tq::guardEntryPoint(tq::logModule::kTool, "tqSarn preEvaluation", [&]() -> MStatus {
        if (context.isNormal()) {
            MStatus status;
            if (evaluationNode.dirtyPlugExists(sizes, &status) && status)
                MHWRender::MRenderer::setGeometryDrawDirty(thisMObject(), true);
        }
        return MStatus::kSuccess;
    });
}
