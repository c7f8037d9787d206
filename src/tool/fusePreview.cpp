#include "tool/fusePreview.h"

#include "kernel/meshQueries.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/tqSarn.h"

#include <maya/MFnMesh.h>
#include <maya/MViewport2Renderer.h>

#include <algorithm>

namespace {

// `tq_bdiv` as the preview reads it when unset.
constexpr int kPreviewDivisions = 0;
// polyBridgeEdge takes at most 10000 divisions; a larger stored count draws no more lines.
constexpr int kMostLines = 10001;

} // namespace

namespace tq {

void overlayChanged()
{
    const MObject store = findStoreNode();
    if (!store.isNull())
        MHWRender::MRenderer::setGeometryDrawDirty(store, true);
}

MIntArray stripTriangles(int n)
{
    MIntArray indices;
    if (n < 2)
        return indices;
    for (int i = n; i + 1 - n < n; ++i) {
        for (const int k : {i, i - n, i - n + 1, i, i - n + 1, i + 1})
            indices.append(k);
    }
    return indices;
}

MStatus refreshSublines()
{
    const MObject store = findStoreNode();
    MPointArray facing, preview;
    readPointArrayAttr(storeAttr::kFusePoints, facing, store);
    readPointArrayAttr(storeAttr::kFuseMesh, preview, store);
    if (facing.length() == 0 || preview.length() == 0)
        return MStatus::kSuccess;
    const int lines = std::min(optionVarIntOr(optionVar::kBridgeDivisions, kPreviewDivisions), kMostLines - 1) + 1;
    MStatus status;
    const MPointArray row = vertexPositions(readPlayerVertices(status), MDagPath(), status);
    MPointArray sublines;
    for (int j = 0; j < lines; ++j) {
        for (unsigned int i = 0; i < facing.length(); ++i) {
            if (row.length() < facing.length())
                continue;
            const MVector step = (row[i] - facing[i]) / static_cast<double>(lines);
            sublines.append(facing[i] + step * static_cast<double>(j));
        }
    }
    return writePointArrayAttr(sublines, storeAttr::kSublines, store);
}

MPointArray mergeMidpoints(const MDagPath& meshPath, const MIntArray& rowA, const MIntArray& rowB)
{
    MStatus status;
    MFnMesh mesh(meshPath, &status);
    MPointArray all;
    if (status)
        mesh.getPoints(all, MSpace::kWorld);
    const auto known = [&all](const MIntArray& row, unsigned int i) {
        return i < row.length() && row[i] >= 0 && static_cast<unsigned int>(row[i]) < all.length();
    };
    MPointArray midpoints;
    for (unsigned int i = 0; i < rowA.length(); ++i) {
        const bool hasA = known(rowA, i), hasB = known(rowB, i);
        if (!hasA && !hasB)
            continue;
        const MPoint a = all[static_cast<unsigned int>(hasA ? rowA[i] : rowB[i])];
        const MPoint b = all[static_cast<unsigned int>(hasB ? rowB[i] : rowA[i])];
        midpoints.append(a + (b - a) * 0.5);
    }
    return midpoints;
}

} // namespace tq
