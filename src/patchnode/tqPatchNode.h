#pragma once
// tqPatchNode: the history node that holds a patch mesh. tqPatchCmd puts it between whatever
// fed the retopo mesh and the mesh's inMesh. The tool grows a patch by editing the shape
// directly while the node is suspended (nodeState 1), copies the whole mesh into the node's
// arrays (positions, faces, UVs, hard edges), and resumes it; from then on the node's output
// is the mesh rebuilt from those arrays and its input is ignored. So the node keeps a full,
// storable snapshot of the patch: edits survive a re-evaluation of the history and a
// save and load, and a deleted patch comes back by writing the arrays into a new node.
//
//     source ──► (polyTweak) ──► tqPatchNode.inMesh   tqPatchNode.outMesh ──► mesh.inMesh
//
//     nodeState 1      output = input, with `vertexarray` as its positions when not empty
//     any other state  output = the stored mesh; with nothing stored, the input
//
// Only `vertexarray`, `inMesh` and `nodeState` affect `outMesh` through attributeAffects;
// `polyconnUV` reaches it through setDependentsDirty. A writer of the arrays therefore
// writes `polyconnUV` (or `vertexarray`) last, so that the output goes dirty once all the
// arrays are in.

#include <maya/MDataBlock.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

class tqPatchNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();

    static const MTypeId id;
    static const MString typeName;
    // Not passed at registration: no draw override is tied to this node.
    static const MString drawDbClassification;

    static MObject numpolys;     // faces of the stored mesh
    static MObject numverts;     // vertices of the stored mesh
    static MObject polycount;    // vertices per face
    static MObject polyconnect;  // vertex ids of all faces, in a row
    static MObject uarray;       // u of each UV
    static MObject varray;       // v of each UV
    static MObject vertexarray;  // vertex positions, object space
    static MObject polycountUV;  // UVs per face
    static MObject polyconnUV;   // UV ids of all faces, in a row
    static MObject normalsin;    // one normal per face corner; stored, read, not used
    static MObject facelist;     // face of each face corner; stored, read, not used
    static MObject vertexlist;   // vertex of each face corner; stored, read, not used
    static MObject hardenvalues; // smooth flag (1 smooth) of each edge of `edgesharden`
    static MObject edgesharden;  // edge ids
    static MObject inMesh;
    static MObject outMesh;

    tqPatchNode();
    ~tqPatchNode() override;

    MStatus compute(const MPlug& plug, MDataBlock& dataBlock) override;
    MStatus setDependentsDirty(const MPlug& plug, MPlugArray& affected) override;

    // The name of the node fed by the first destination of `outMesh`, through `name` and as
    // the result; empty when nothing reads the output.
    MString patchDownstreamName(MString& name) const;

private:
    MStatus computeOutput(const MPlug& plug, MDataBlock& dataBlock) const;
};
