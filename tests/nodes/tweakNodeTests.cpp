// tqTweakNode on a real scan: reading its output snaps the selected vertices of the low mesh
// onto the scan the tool uses, and leaves the mesh alone when the selection or the scan is
// not the one it works on.

#include "../support/pluginTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MFnDagNode.h>
#include <maya/MMeshIntersector.h>

#include <algorithm>
#include <functional>

namespace {

using namespace plugintest;

const host::MeshArrays& elephant()
{
    static const host::MeshArrays mesh = [] {
        std::vector<host::MeshArrays> meshes;
        host::readMeshFile(std::string(TQSARN_SCAN_DIR) + "/refined_elephant.off", meshes);
        return meshes.empty() ? host::MeshArrays() : meshes[0];
    }();
    return mesh;
}

class TweakNode : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        ASSERT_GT(elephant().counts.size(), 0u) << "no scan in " << TQSARN_SCAN_DIR;
        MStatus status;
        ASSERT_TRUE(MDagPath::getAPathTo(host::addMesh(elephant(), "scan", &status), scan));
        ASSERT_TRUE(scan.extendToShape());
        // A small grid in front of the scan, moved by its transform, so that world and object
        // space differ.
        const MBoundingBox box = MFnDagNode(scan).boundingBox();
        ASSERT_TRUE(MDagPath::getAPathTo(host::addMesh(host::gridPlane(0.2f, 0.2f, 3, 3), "low", &status), low));
        ASSERT_TRUE(low.extendToShape());
        const MPoint centre = box.center();
        ASSERT_TRUE(host::setDouble("low.translateX", centre.x));
        ASSERT_TRUE(host::setDouble("low.translateY", centre.y));
        ASSERT_TRUE(host::setDouble("low.translateZ", box.max().z + 0.05));
        ASSERT_TRUE(host::setDouble("low.rotateX", 90.0));

        makeStore();
        ASSERT_TRUE(host::connect("scanShape.outMesh", "store.tqSarnMesh")) << host::logText();
        ASSERT_FALSE(host::createNode("tqTweakNode", "tweak").isNull()) << host::logText();
        ASSERT_TRUE(host::connect("scanShape.worldMesh[0]", "tweak.scanMesh")) << host::logText();
        ASSERT_TRUE(host::connect("lowShape.worldMesh[0]", "tweak.lowMesh")) << host::logText();
        before = worldPoints(low);
        MObject scanShape = scan.node();
        ASSERT_TRUE(onScan.create(scanShape, scan.inclusiveMatrix()));
    }

    static MPointArray worldPoints(const MDagPath& path)
    {
        MPointArray points;
        MFnMesh(path).getPoints(points, MSpace::kWorld);
        return points;
    }

    double distanceToScan(const MPoint& p)
    {
        MPointOnMesh nearest;
        EXPECT_TRUE(onScan.getClosestPoint(p, nearest));
        return p.distanceTo(MPoint(nearest.getPoint()) * scan.inclusiveMatrix());
    }

    // Reads the output, as anything that consumes it would, which runs the node.
    static void pull() { host::getDouble("tweak.tqTweakEval"); }

    MDagPath scan;
    MDagPath low;
    MPointArray before;
    MMeshIntersector onScan;
};

TEST_F(TweakNode, SnapsTheSelectedVerticesOfTheLowMeshOntoTheScan)
{
    const std::vector<unsigned int> chosen = {0, 5, 10};
    ASSERT_TRUE(host::select({"low.vtx[0]", "low.vtx[5]", "low.vtx[10]"}));
    pull();
    EXPECT_FALSE(loggedError()) << host::logText();
    EXPECT_FALSE(host::isDirty("tweak.tqTweakEval"));

    const MPointArray after = worldPoints(low);
    ASSERT_EQ(after.length(), before.length());
    for (unsigned int i = 0; i < after.length(); ++i) {
        const bool selected = std::find(chosen.begin(), chosen.end(), i) != chosen.end();
        if (selected) {
            EXPECT_GT(before[i].distanceTo(after[i]), 1e-3) << "vertex " << i << " did not move";
            EXPECT_LT(distanceToScan(after[i]), 1e-5) << "vertex " << i << " is off the scan";
        } else {
            EXPECT_LT(before[i].distanceTo(after[i]), 1e-6) << "vertex " << i << " moved";
        }
    }

    // The threshold is made but never added to the node.
    MStatus status;
    host::findPlug("tweak.threshold", &status);
    EXPECT_FALSE(status);
}

TEST_F(TweakNode, LeavesTheMeshAloneWhenTheSelectionOrTheScanIsNotItsOwn)
{
    struct Case {
        const char* name;
        std::function<void()> arrange;
    };
    const std::vector<Case> cases = {
        {"another mesh selected",
         [this] {
             makeMesh("other", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
             ASSERT_TRUE(host::select({"other.vtx[0]"}));
         }},
        {"a scan other than the store's",
         [this] {
             makeMesh("otherScan", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
             ASSERT_TRUE(host::connect("otherScanShape.outMesh", "store.tqSarnMesh", true)) << host::logText();
             ASSERT_TRUE(host::select({"low.vtx[0]", "low.vtx[5]"}));
         }},
        {"an empty selection", [] { ASSERT_TRUE(host::select({})); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SetUp();
        c.arrange();
        pull();
        EXPECT_TRUE(samePoints(worldPoints(low), before));
        EXPECT_TRUE(host::isDirty("tweak.tqTweakEval")) << "a refusal leaves the output to be computed again";
    }
}

} // namespace
