#pragma once
// tqSarn: the scene store. One locator node per scene holds everything the tool keeps between
// two gestures and everything the overlay shows: the working strokes, the shadow of the last
// patch (as positions and as vertex ids of the retopo mesh), the anchor chain, fuse and
// bridge previews, marker sets and a few interactive scalars. The attributes are storable,
// so a saved scene keeps the tool's memory; they are hidden and cached, so the user never
// sees them in the channel box. The node draws nothing itself: the draw override reads the
// attributes each frame.
//
// The one fixed relation of the system is the connection into `tqSarnMesh`: the script that
// launches the tool makes the node and connects the dense source mesh to it, and that
// connection is how every part of the program finds the source mesh.
//
//     sourceMeshShape.worldMesh ──► tqSarn.tqSarnMesh           (made by the launch script)
//
//     a stroke lands:   strokes += points, sizes += count  ──► sizes dirty
//     a patch is made:  strokes, sizes = {}                      working set consumed
//                       strokesShadow, sizesShadow = rows        positions of the new rows
//                       shadowIndices1..3 = vertex ids           the same rows as ids
//                       newFaces = face ids                      the patch on the retopo mesh
//
// The `attributeAffects` net computes nothing; it only makes the node dirty, so that
// `preEvaluation` and the draw override notice a change. Of all attributes it is `sizes`
// whose dirtiness asks for a redraw under parallel evaluation: whoever writes `strokes` writes
// `sizes` too. The net keeps two cycles (newFaces <-> sizesShadow, newFaces <-> strokesShadow);
// the host visits each plug once per propagation, so they end.
//
// Nothing caches the store: the free functions in store/ find the node anew on every call.

#include <maya/MDGContext.h>
#include <maya/MEvaluationNode.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

class MDataBlock;

class tqSarn : public MPxLocatorNode {
public:
    static void* creator();
    static MStatus initialize();

    static const MTypeId id;
    static const MString typeName;
    static const MString drawDbClassification;

    static MObject strokes;
    static MObject playervtx;
    static MObject freepoints;
    static MObject freezeMedian;
    static MObject sizes;
    static MObject playersLine;
    static MObject playerpts;
    static MObject pointsDebug;
    static MObject strokesShadow;
    static MObject sizesShadow;
    static MObject strokesNondestruct;
    static MObject sizesNondestruct;
    static MObject newFaces;
    static MObject displayInfo;
    static MObject tweakRadius;
    static MObject tqSarnMesh;
    static MObject shadowIndices1;
    static MObject shadowIndices2;
    static MObject shadowIndices3;
    static MObject fusept;
    static MObject magnetPt;
    static MObject sublines;
    static MObject fusemesh;
    static MObject fuseindices;
    static MObject verticestweak;
    static MObject inputNormals;
    static MObject displaySize;
    static MObject pinch;
    static MObject mode;
    static MObject symmetry;
    static MObject radiusMoveInteractive;
    static MObject radiusRelaxInteractive;
    static MObject intensityRelaxInteractive;
    static MObject interPoint;
    static MObject interNormal;

    tqSarn();
    ~tqSarn() override;

    // Computes nothing: the node holds data, it does not derive any.
    MStatus compute(const MPlug& plug, MDataBlock& data) override;
    // Asks the overlay to rebuild when `sizes` changed since the last frame.
    MStatus preEvaluation(const MDGContext& context, const MEvaluationNode& evaluationNode) override;

private:
    // Deliberate: nothing reads or writes it; the class has always carried it.
    MPointArray points;
};

namespace tq {

// Long names of the store's attributes, as the access functions address them.
namespace storeAttr {
constexpr const char* kStrokes = "strokes";
constexpr const char* kPlayerVertices = "playervtx";
constexpr const char* kFreePoints = "freepoints";
constexpr const char* kFreezeMedian = "freezeMedian";
constexpr const char* kSizes = "sizes";
constexpr const char* kPlayersLine = "playersLine";
constexpr const char* kPlayerPoints = "playerpts";
constexpr const char* kPointsDebug = "pointsDebug";
constexpr const char* kStrokesShadow = "strokesShadow";
constexpr const char* kSizesShadow = "sizesShadow";
constexpr const char* kStrokesNondestruct = "strokesNondestruct";
constexpr const char* kSizesNondestruct = "sizesNondestruct";
constexpr const char* kNewFaces = "newFaces";
constexpr const char* kDisplayInfo = "displayInfo";
constexpr const char* kTweakRadius = "tweakRadius";
constexpr const char* kSarnMesh = "tqSarnMesh";
constexpr const char* kShadowIndices1 = "shadowIndices1";
constexpr const char* kShadowIndices2 = "shadowIndices2";
constexpr const char* kShadowIndices3 = "shadowIndices3";
constexpr const char* kFusePoints = "fusept";
constexpr const char* kMagnetPoints = "magnetPt";
constexpr const char* kSublines = "sublines";
constexpr const char* kFuseMesh = "fusemesh";
constexpr const char* kFuseIndices = "fuseindices";
constexpr const char* kVerticesTweak = "verticestweak";
constexpr const char* kInputNormals = "inputNormals";
constexpr const char* kDisplaySize = "displaySize";
constexpr const char* kPinch = "pinch";
constexpr const char* kMode = "mode";
constexpr const char* kSymmetry = "symmetry";
constexpr const char* kRadiusMoveInteractive = "radiusMoveInteractive";
constexpr const char* kRadiusRelaxInteractive = "radiusRelaxInteractive";
constexpr const char* kIntensityRelaxInteractive = "intensityRelaxInteractive";
constexpr const char* kInterPoint = "interPoint";
constexpr const char* kInterNormal = "interNormal";
} // namespace storeAttr

} // namespace tq
