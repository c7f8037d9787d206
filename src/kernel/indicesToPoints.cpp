#include "kernel/indicesToPoints.h"

#include "kernel/debugDump.h"
#include "store/logModules.h"
#include "store/storeLookup.h"

#include <maya/MItGeometry.h>
#include <maya/MPoint.h>
#include <maya/MTypes.h>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

// Deliberate: distances are kept and compared in single precision, as the tool always has;
// ties, and so the higher vertex winning them, are decided at float resolution.
constexpr float kNoneWithin = 9999.0f;
constexpr double kSameVertex = 0.001;

int nearestVertexFromTop(const MPoint& point, const MPointArray& positions)
{
    float best = kNoneWithin;
    int bestVertex = -1;
    for (int v = static_cast<int>(positions.length()) - 1; v >= 1; --v) {
        const float distance = static_cast<float>(point.distanceTo(positions[static_cast<unsigned int>(v)]));
        if (distance < kSameVertex)
            return v;
        if (distance < best) {
            best = distance;
            bestVertex = v;
        }
    }
    return bestVertex;
}

} // namespace

MIntArray indicesToPoints(const MDagPath& meshPath, const MPointArray& points, MStatus& status)
{
    MIntArray result;
    if (points.length() == 0) {
        status = MStatus::kInvalidParameter;
        return result;
    }
    status = MStatus::kSuccess;

    const MDagPath path = meshPath.isValid() ? meshPath : getActiveMeshPath();
    MPointArray positions;
    MStatus hostStatus;
    MItGeometry it(path, &hostStatus);
    if (hostStatus)
        hostStatus = it.allPositions(positions, MSpace::kWorld);
    if (!hostStatus)
        hostStatus.pAPIerror(kModule, __LINE__, "indicesToPoints");
    if (positions.length() < 3)
        return result;

    for (const MPoint& point : points)
        result.append(nearestVertexFromTop(point, positions));
    dumpIndices(result, "indicesToPoints");
    return result;
}

} // namespace tq
