#pragma once
// The lines of host command text through which the tool has the host's own polygon commands
// change the retopo mesh. Each builder only builds: its caller runs the line with
// MGlobal::executeCommand, display and undo on, so each change is one entry of the host's undo
// queue. The texts are a wire format, kept byte for byte, stray blanks included: the host's
// parser reads "- am" as "-am" and "- insertWithEdgeFlow" as "-insertWithEdgeFlow".
// Numbers are written as the host writes a double: a whole number with no fraction.

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

namespace tq {

// polySplitRing across the ring of `edges`, at `weight` along each edge. Ends in " ;" after
// the operands' own trailing blanks.
MString splitRingCommand(const MDagPath& meshPath, const MIntArray& edges, double weight);

// polyBridgeEdge between edgesA[k] and edgesB[k] with `divisions` rows, the operands
// interleaved a0 b0 a1 b1 ... and walked by the length of `edgesA` (`edgesB` must be as long).
// No closing semicolon.
MString bridgeEdgesCommand(const MDagPath& meshPath, const MIntArray& edgesA, const MIntArray& edgesB,
                           int divisions);

// polyMergeVertex of vertices[0] and vertices[1], unconditional (distance 9999).
MString mergePairCommand(const MIntArray& vertices, const MDagPath& meshPath);

// For each k, moves verticesA[k] and verticesB[k] to positions[k], then one polyMergeVertex of
// all the pairs within 0.01. No closing semicolon.
MString moveAndMergeCommand(const MDagPath& meshPath, const MIntArray& verticesA, const MIntArray& verticesB,
                            const MPointArray& positions);

// "if (`objExists <name>`) {delete <name>; }": deletes the node when it is there.
MString deleteIfExistsCommand(const MString& name);

// The number of nodes in the retopo mesh's history ("listHistory -ac"); 0 when no mesh is
// selected or the command fails.
unsigned int historyLength();

} // namespace tq
