#include "kernel/commandTexts.h"

#include "store/storeLookup.h"

#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <algorithm>

namespace tq {

namespace {

// `<path>.<kind>[<index>]`
MString componentName(const MString& path, const char* kind, int index)
{
    MString text = path;
    text += ".";
    text += kind;
    text += "[";
    text += static_cast<double>(index);
    text += "]";
    return text;
}

// ` "<path>.<kind>[<index>]"`
MString quotedOperand(const MString& path, const char* kind, int index)
{
    MString text = " \"";
    text += componentName(path, kind, index);
    text += "\"";
    return text;
}

} // namespace

MString splitRingCommand(const MDagPath& meshPath, const MIntArray& edges, double weight)
{
    const MString path = meshPath.fullPathName();
    MString text = " polySplitRing -splitType 1 -weight ";
    text += weight;
    text += " -smoothingAngle 30 -fixQuads 1 - insertWithEdgeFlow 0 ";
    for (const int edge : edges) {
        text += componentName(path, "e", edge);
        text += " ";
    }
    text += " ;";
    return text;
}

MString bridgeEdgesCommand(const MDagPath& meshPath, const MIntArray& edgesA, const MIntArray& edgesB,
                           int divisions)
{
    const MString path = meshPath.fullPathName();
    MString text = "polyBridgeEdge ";
    text += "-divisions ";
    text += static_cast<double>(divisions);
    text += " -direction 0";
    const unsigned int pairs = std::min(edgesA.length(), edgesB.length());
    for (unsigned int k = 0; k < pairs; ++k) {
        text += quotedOperand(path, "e", edgesA[k]);
        text += quotedOperand(path, "e", edgesB[k]);
    }
    return text;
}

MString deleteIfExistsCommand(const MString& name)
{
    MString command = "if (`objExists ";
    command += name;
    command += "`) {delete ";
    command += name;
    command += "; }";
    return command;
}

MString mergePairCommand(const MIntArray& vertices, const MDagPath& meshPath)
{
    const MString path = meshPath.fullPathName();
    MString text = "polyMergeVertex -d 9999 - am 1 ";
    for (unsigned int k = 0; k < 2 && k < vertices.length(); ++k)
        text += quotedOperand(path, "vtx", vertices[k]);
    return text;
}

MString moveAndMergeCommand(const MDagPath& meshPath, const MIntArray& verticesA, const MIntArray& verticesB,
                            const MPointArray& positions)
{
    const MString path = meshPath.fullPathName();
    const unsigned int pairs = std::min({verticesA.length(), verticesB.length(), positions.length()});
    MString text;
    for (unsigned int k = 0; k < pairs; ++k) {
        const MPoint& q = positions[k];
        for (const int vertex : {verticesA[k], verticesB[k]}) {
            text += "move -a ";
            text += q.x;
            text += " ";
            text += q.y;
            text += " ";
            text += q.z;
            text += " ";
            text += componentName(path, "vtx", vertex);
            text += ";";
        }
    }
    text += "polyMergeVertex -am 1 -d 0.01 ";
    for (unsigned int k = 0; k < pairs; ++k) {
        text += componentName(path, "vtx", verticesA[k]);
        text += " ";
        text += componentName(path, "vtx", verticesB[k]);
        text += " ";
    }
    return text;
}

unsigned int historyLength()
{
    const MDagPath meshPath = getActiveMeshPath();
    if (!meshPath.isValid())
        return 0;
    MStringArray history;
    MString command = "listHistory -ac ";
    command += meshPath.fullPathName();
    if (!MGlobal::executeCommand(command, history))
        return 0;
    return history.length();
}

} // namespace tq
