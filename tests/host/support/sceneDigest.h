#pragma once
// A scene as a user would compare two of them: every node with its type and parent, each
// mesh shape's evaluated points, polygons and current UVs, and every connection, as sorted
// text lines, so that a failed comparison shows what differs.

#include <host/harness.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace hosttest {

inline std::vector<std::string> sceneDigest()
{
    std::vector<std::string> lines;
    for (const std::string& name : host::nodeNames()) {
        MObject node = host::findNode(name);
        MFnDependencyNode fn(node);
        std::string line = name + " " + fn.typeName().asChar();
        if (node.hasFn(MFn::kDagNode)) {
            MFnDagNode dag(node);
            if (dag.parentCount() > 0 && !dag.parent(0).hasFn(MFn::kWorld))
                line += " under " + host::nodeName(dag.parent(0));
            if (dag.isIntermediateObject())
                line += " intermediate";
        }
        lines.push_back(line);
        if (node.hasFn(MFn::kMesh)) {
            MFnMesh mesh(node);
            MPointArray points;
            mesh.getPoints(points);
            std::string text = name + " points";
            char buffer[64];
            for (const MPoint& p : points) {
                std::snprintf(buffer, sizeof buffer, " %.9g,%.9g,%.9g", p.x, p.y, p.z);
                text += buffer;
            }
            MIntArray counts, ids;
            mesh.getVertices(counts, ids);
            text += " faces";
            for (unsigned i = 0; i < ids.length(); ++i)
                text += " " + std::to_string(ids[i]);
            MFloatArray u, v;
            mesh.getUVs(u, v);
            text += " uvs " + std::to_string(u.length());
            for (unsigned i = 0; i < u.length(); ++i) {
                std::snprintf(buffer, sizeof buffer, " %.9g,%.9g", u[i], v[i]);
                text += buffer;
            }
            lines.push_back(text);
        }
        MPlugArray plugs;
        fn.getConnections(plugs);
        for (const MPlug& plug : plugs) {
            MPlugArray sources;
            if (plug.connectedTo(sources, true, false) && sources.length() > 0)
                lines.push_back(std::string(sources[0].name().asChar()) + " -> " + plug.name().asChar());
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace hosttest
