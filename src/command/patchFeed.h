#pragma once
// The feed: the full description of a mesh as the tool command carries it and as a patch node
// stores it, one field per attribute of the node. Feeding a node the whole mesh after every
// edit is what lets undo remove a patch by deleting its node, and redo bring it back by
// writing the same feed into a new node, with no regeneration.

#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MVectorArray.h>

namespace tq {

// The fields in the order they are handed over and written; the patch node's attribute of
// each is named after it.
struct PatchFeed {
    MPointArray vertices;     // vertexarray: positions, object space
    MIntArray polygonCounts;  // polycount: vertices per polygon
    MIntArray polygonConnects; // polyconnect: vertex per polygon corner
    int polygonTotal = 0;     // numpolys
    int vertexTotal = 0;      // numverts
    MFloatArray uValues;      // uarray: u of the current UV set
    MFloatArray vValues;      // varray
    MVectorArray normals;     // normalsin: one per polygon corner, object space
    MIntArray faceList;       // facelist: polygon of each polygon corner
    MIntArray vertexList;     // vertexlist: vertex of each polygon corner
    MIntArray smoothFlags;    // hardenvalues: 1 for a smooth edge
    MIntArray edgeIds;        // edgesharden: 0 .. edges - 1
    MIntArray uvCounts;       // polycountUV: UVs per polygon
    MIntArray uvIds;          // polyconnUV: UV per polygon corner

    // Empties every field and sets both totals to 0.
    void clear() { *this = PatchFeed(); }
};

// Reads the whole mesh of `fnMesh` into `feed`. The per-corner normals come from a walk of
// the retopo mesh (the active selection's), which is the same mesh whenever the tool feeds.
// A failing read is logged and returned, with `feed` left as it was.
MStatus readPatchFeed(MFnMesh& fnMesh, PatchFeed& feed);

// Writes the fourteen attributes of `patchNode` in field order, stopping at the first failure.
// `polyconnUV` goes last on purpose: its write is what dirties the node's output.
MStatus writePatchFeed(const PatchFeed& feed, const MObject& patchNode);

} // namespace tq
