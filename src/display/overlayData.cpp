#include "display/overlayData.h"

#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/tqSarn.h"

namespace tq {

namespace {

constexpr double kBaseDepth = 50.0;

double readDouble(const char* name, const MObject& store)
{
    double value = 0.0;
    readDoubleAttr(name, value, store);
    return value;
}

int readInt(const char* name, const MObject& store)
{
    MStatus status;
    const int value = readIntAttr(name, store, status);
    return status ? value : 0;
}

} // namespace

void OverlayData::read(const MObject& store)
{
    *this = OverlayData();
    if (store.isNull())
        return;
    readPointArrayAttr(storeAttr::kPointsDebug, pointsDebug, store);
    readPointArrayAttr(storeAttr::kStrokesShadow, strokesShadow, store);
    readPointArrayAttr(storeAttr::kFreezeMedian, freezeMedian, store);
    readPointArrayAttr(storeAttr::kPlayersLine, playersLine, store);
    readPointArrayAttr(storeAttr::kVerticesTweak, verticestweak, store);
    readIntArrayAttr(storeAttr::kSizesShadow, sizesShadow, store);
    readPointArrayAttr(storeAttr::kFreePoints, freepoints, store);
    readIntArrayAttr(storeAttr::kTweakRadius, tweakRadius, store);
    displaySize = readDouble(storeAttr::kDisplaySize, store);
    readPointArrayAttr(storeAttr::kPlayerPoints, playerpts, store);
    readIntArrayAttr(storeAttr::kFuseIndices, fuseindices, store);
    readPointArrayAttr(storeAttr::kFuseMesh, fusemesh, store);
    readPointArrayAttr(storeAttr::kSublines, sublines, store);
    readPointArrayAttr(storeAttr::kMagnetPoints, magnetPt, store);
    readIntArrayAttr(storeAttr::kSizes, sizes, store);
    readPointArrayAttr(storeAttr::kStrokes, strokes, store);
    readPointArrayAttr(storeAttr::kFusePoints, fusept, store);
    intensityRelaxInteractive = readDouble(storeAttr::kIntensityRelaxInteractive, store);
    radiusRelaxInteractive = readDouble(storeAttr::kRadiusRelaxInteractive, store);
    radiusMoveInteractive = readDouble(storeAttr::kRadiusMoveInteractive, store);
    readPointAttr(storeAttr::kInterPoint, interPoint, store);
    readVectorAttr(storeAttr::kInterNormal, interNormal, store);
    displayInfo = readInt(storeAttr::kDisplayInfo, store);
    symmetry = readInt(storeAttr::kSymmetry, store);
    mode = readInt(storeAttr::kMode, store);
}

double depthOffset() { return optionVarDoubleOr(optionVar::kDepthPriority, optionVarDefault::kDepthPriority) + kBaseDepth; }

} // namespace tq
