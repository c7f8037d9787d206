#pragma once
// tqTweakNode: keeps the selected vertices of a low mesh on the scan the tool works on. The
// two meshes are connected to `lowMesh` and `scanMesh`; any change of either, or of
// `selectionAttr`, dirties `tqTweakEval`, and reading that output snaps the selected vertices
// of the low mesh to their closest points on the scan. The result is no output value: it is
// written straight into the mesh feeding `lowMesh`, as a side effect of compute.
//
//     scanShape.worldMesh ──► scanMesh ─┐
//                                       ├─► tqTweakEval ──► (any reader pulls it)
//     lowShape.worldMesh  ──► lowMesh  ─┘         │
//            ▲                                    │
//            └──── positions written back ◄───────┘
//
// The node acts only when the scan is the one connected to the store's `tqSarnMesh` and the
// first selected item is the low mesh; otherwise it leaves the mesh alone and stays dirty.
// Registered as a plain dependency node, though it derives from the constraint base, whose
// own attribute getters it leaves as they are.

#include <maya/MDataBlock.h>
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MMeshIntersector.h>
#include <maya/MMessage.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPxConstraint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

class tqTweakNode : public MPxConstraint {
public:
    static void* creator();
    static MStatus initialize();

    static const MTypeId id;
    static const MString typeName;

    static MObject scanMesh;      // the scan, mesh data (connect a world mesh)
    static MObject lowMesh;       // the low mesh whose selected vertices are snapped
    static MObject tqTweakEval;   // the output a reader pulls to run the snap; carries nothing
    static MObject threshold;     // made and never added to the node
    static MObject selectionAttr; // points; a write dirties the output

    tqTweakNode();
    ~tqTweakNode() override;

    void postConstructor() override;
    MStatus compute(const MPlug& plug, MDataBlock& dataBlock) override;
    MStatus connectionMade(const MPlug& plug, const MPlug& otherPlug, bool asSrc) override;

    // The node feeding `attributeName` of `node`, through `source`; false when that plug has
    // no source.
    static bool sourceOf(const MObject& node, const MString& attributeName, MObject& source);
    // True when the scan connected here is not the one feeding the store's `tqSarnMesh`
    // (compared by name; no store reads as an empty name).
    bool sourceDiffersFromScan() const;
    // True when the node feeding `lowMesh` is the node of `path`, compared by uuid.
    bool lowIsSelected(const MDagPath& path) const;

private:
    MStatus snapSelected(const MPlug& plug, MDataBlock& dataBlock);
    MStatus buildIntersector(const MPlug& otherPlug);

    MCallbackId attributeCallbackId = 0;
    MMeshIntersector intersector;
    MMatrix scanMatrix;
};
