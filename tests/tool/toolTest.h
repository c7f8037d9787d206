#pragma once
// The tool suites' scene: a real scan as the source mesh, connected to the store, seen by a
// perspective camera through a 640 x 480 view, and the tool made by its context command and
// active. Gestures go through the host's harness as a user's would.

#include "../support/pluginTest.h"

#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/tqSarn.h"

#include <host/meshFiles.h>
#include <host/tools.h>
#include <host/viewport.h>

#include <maya/MBoundingBox.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MMeshIntersector.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace tooltest {

using plugintest::ints;

// The scan is read once per process and added to each test's new scene.
inline const host::MeshArrays& elephant()
{
    static const host::MeshArrays mesh = [] {
        std::vector<host::MeshArrays> meshes;
        host::readMeshFile(std::string(TQSARN_SCAN_DIR) + "/refined_elephant.off", meshes);
        return meshes.empty() ? host::MeshArrays() : meshes[0];
    }();
    return mesh;
}

struct Drag {
    int x0, y0, x1, y1;
    int steps = 20;
};

class ToolTest : public plugintest::PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        ASSERT_GT(elephant().counts.size(), 0u) << "no scan in " << TQSARN_SCAN_DIR;
        host::setToolTo("selectSuperContext");
        host::mouseRelease(0, 0); // a test that stopped mid-gesture leaves its button down
        host::holdModifiers({});
        host::clearLog();
        MStatus status;
        MFnDagNode(host::addMesh(elephant(), "scan", &status)).getPath(scan);
        ASSERT_TRUE(status);
        scan.extendToShape();
        box = MFnDagNode(scan).boundingBox();
        const MPoint centre = box.center();
        MObject camera = host::makeCamera(centre + MVector(0.0, 0.0, 1.6 * box.width()), centre, 54.43, "", &status);
        ASSERT_TRUE(host::setActiveView(host::makeView(640, 480, camera, &status)));
        MObject shape = scan.node();
        ASSERT_TRUE(onSurface.create(shape, scan.inclusiveMatrix()));
        if (std::getenv("TQSARN_TOOL_PNG"))
            host::renderFrame(std::getenv("TQSARN_TOOL_PNG"));
    }

    void TearDown() override
    {
        host::setToolTo("selectSuperContext");
        PluginTest::TearDown();
    }

    // A store with the scan as its source.
    void connectStore()
    {
        makeStore();
        ASSERT_TRUE(host::connect(scan.partialPathName().asChar() + std::string(".outMesh"), "store.tqSarnMesh"));
    }

    // The tool, made by its context command and activated.
    void activate()
    {
        host::CommandOutput made = host::runCommand("tqSarnContext");
        ASSERT_TRUE(made.status) << host::logText();
        contextName = made.text;
        ASSERT_TRUE(host::setToolTo(contextName)) << host::logText();
    }

    // Press, drag in `steps` even steps from (x0, y0) to (x1, y1), release there.
    static MStatus stroke(const Drag& d, host::Modifiers held = {})
    {
        MStatus status = host::mousePress(d.x0, d.y0, host::MouseButton::kLeft, held);
        for (int i = 0; i <= d.steps; ++i) {
            const int x = d.x0 + (d.x1 - d.x0) * i / d.steps;
            const int y = d.y0 + (d.y1 - d.y0) * i / d.steps;
            MStatus moved = host::mouseDrag(x, y, held);
            if (!moved)
                status = moved;
        }
        MStatus released = host::mouseRelease(d.x1, d.y1, held);
        return status ? released : status;
    }

    static MPointArray storedStrokes()
    {
        MPointArray out;
        tq::readStrokes(tq::findStoreNode(), out);
        return out;
    }

    static std::vector<int> storedSizes()
    {
        MIntArray out;
        tq::readSizes(tq::findStoreNode(), out);
        return ints(out);
    }

    static std::string info1() { return MGlobal::optionVarStringValue("tqSarn_info1").asChar(); }

    // The largest distance from any of the points to the scan's surface.
    double farthestFromScan(const MPointArray& points) const
    {
        double worst = 0.0;
        for (const MPoint& p : points) {
            MPointOnMesh nearest;
            onSurface.getClosestPoint(p, nearest);
            worst = std::max(worst, p.distanceTo(MPoint(nearest.getPoint())));
        }
        return worst;
    }

    // Distances on the scan are compared with this, a millionth of its size: the stroke
    // carries single precision.
    double surfaceTolerance() const { return 1e-5 * box.width() + 1e-5; }

    // Every mesh shape but the scan and the history's intermediate shapes.
    std::vector<MDagPath> retopoMeshes() const
    {
        std::vector<MDagPath> out;
        for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
            MDagPath path;
            it.getPath(path);
            if (!(path == scan) && !MFnDagNode(path).isIntermediateObject())
                out.push_back(path);
        }
        return out;
    }

    MDagPath scan;
    MBoundingBox box;
    MMeshIntersector onSurface;
    std::string contextName;
};

} // namespace tooltest
