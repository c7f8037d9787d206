// Meshes into and out of the scene: what addMesh and importMesh make is what MFnMesh reads
// back, names follow the file, failures leave the scene untouched, and exportMesh writes
// what the scene holds.

#include "meshTestSupport.h"

#include <hostTestSupport.h>

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>

namespace {

using meshtest::samePolygons;

class MeshScene : public meshtest::MeshFileTest {
protected:
    void SetUp() override
    {
        host::newScene();
        meshtest::MeshFileTest::SetUp();
    }

    // The mesh shape under a transform, as MeshArrays read through MFnMesh.
    host::MeshArrays meshUnder(const MObject& transform)
    {
        host::MeshArrays mesh;
        MFnDagNode dag(transform);
        EXPECT_EQ(dag.childCount(), 1u) << hosttest::nameOf(transform);
        if (dag.childCount() != 1 || !dag.child(0).hasFn(MFn::kMesh)) {
            ADD_FAILURE() << hosttest::nameOf(transform) << " has no mesh shape";
            return mesh;
        }
        MFnMesh fn(dag.child(0));
        MFloatPointArray points;
        MIntArray counts, connects, uvCounts, uvIds;
        MFloatArray u, v;
        EXPECT_TRUE(fn.getPoints(points));
        EXPECT_TRUE(fn.getVertices(counts, connects));
        EXPECT_TRUE(fn.getUVs(u, v));
        EXPECT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
        for (const MFloatPoint& p : points)
            mesh.points.insert(mesh.points.end(), {p.x, p.y, p.z});
        mesh.counts.assign(counts.begin(), counts.end());
        mesh.connects.assign(connects.begin(), connects.end());
        mesh.u.assign(u.begin(), u.end());
        mesh.v.assign(v.begin(), v.end());
        mesh.uvIds.assign(uvIds.begin(), uvIds.end());
        return mesh;
    }

    std::vector<std::string> sceneMeshes() { return host::nodeNames("mesh"); }
};

TEST_F(MeshScene, AddMeshMakesANamedTransformWithTheMeshUnderIt)
{
    const host::MeshArrays sphere = host::uvSphere(1.5f, 10, 7);
    MStatus status;
    const MObject transform = host::addMesh(sphere, "ball", &status);
    ASSERT_TRUE(status) << host::logText();
    ASSERT_FALSE(transform.isNull());
    EXPECT_TRUE(transform.hasFn(MFn::kTransform));
    EXPECT_EQ(host::nodeName(transform), "ball");
    EXPECT_EQ(sceneMeshes(), std::vector<std::string>{"ballShape"});

    const host::MeshArrays back = meshUnder(transform);
    EXPECT_EQ(back.points, sphere.points) << "vertex order is kept";
    EXPECT_EQ(back.connects, sphere.connects);
    EXPECT_TRUE(samePolygons(sphere, back, true));
}

TEST_F(MeshScene, AddMeshNamesAreValidAndUnique)
{
    host::MeshArrays plane = host::gridPlane(1.0f, 1.0f, 1, 1);
    plane.name = "Cube.001";
    EXPECT_EQ(host::nodeName(host::addMesh(plane, "")), "Cube_001");
    EXPECT_EQ(host::nodeName(host::addMesh(plane, "left arm")), "left_arm");
    EXPECT_EQ(host::nodeName(host::addMesh(plane, "3d")), "_3d");
    const std::string again = host::nodeName(host::addMesh(plane, "left arm"));
    EXPECT_NE(again, "left_arm");
    EXPECT_FALSE(again.empty());
    EXPECT_EQ(sceneMeshes().size(), 4u);
}

TEST_F(MeshScene, AddMeshRefusesABadMeshAndLeavesNoNode)
{
    const std::size_t before = host::nodeNames().size();
    host::MeshArrays broken = host::gridPlane(1.0f, 1.0f, 2, 2);
    broken.connects[0] = -4;
    MStatus status;
    EXPECT_TRUE(host::addMesh(broken, "broken", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "broken"));

    // What a generator gives for bad arguments is refused too, not added as nothing.
    EXPECT_TRUE(host::addMesh(host::gridPlane(-1.0f, 1.0f, 1, 1), "nothing", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_EQ(host::nodeNames().size(), before);
}

TEST_F(MeshScene, ImportMeshMakesOneTransformPerMesh)
{
    const std::vector<host::MeshArrays> written = {host::uvSphere(1.0f, 8, 6), host::torus(2.0f, 0.5f, 12, 6)};
    std::vector<host::MeshArrays> named = written;
    named[0].name = "ball";
    named[1].name = "ring";
    const std::string file = path("pair.obj");
    ASSERT_TRUE(host::writeMeshFile(file, named));

    MObjectArray transforms;
    std::string error;
    ASSERT_TRUE(host::importMesh(file, transforms, &error)) << error;
    ASSERT_EQ(transforms.length(), 2u);
    EXPECT_EQ(host::nodeName(transforms[0]), "ball");
    EXPECT_EQ(host::nodeName(transforms[1]), "ring");
    EXPECT_TRUE(samePolygons(written[0], meshUnder(transforms[0]), true));
    EXPECT_TRUE(samePolygons(written[1], meshUnder(transforms[1]), true));

    // The single-result form gives the first.
    MStatus status;
    const MObject first = host::importMesh(file, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(samePolygons(written[0], meshUnder(first), true));
    EXPECT_EQ(sceneMeshes().size(), 4u);
}

TEST_F(MeshScene, AnUnnamedMeshIsNamedAfterTheFile)
{
    const std::string file = path("scan01.ply");
    ASSERT_TRUE(host::writeMeshFile(file, {host::sculptSurface(2000)}));
    MStatus status;
    const MObject transform = host::importMesh(file, &status);
    ASSERT_TRUE(status) << host::logText();
    EXPECT_EQ(host::nodeName(transform), "scan01");
    EXPECT_TRUE(meshtest::isClosed(meshUnder(transform)));
}

TEST_F(MeshScene, ImportingABadFileChangesNothing)
{
    const std::size_t before = host::nodeNames().size();
    MStatus status;
    std::string error;
    const std::string file = writeText("broken.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 3\n");
    EXPECT_TRUE(host::importMesh(file, &status, &error).isNull());
    EXPECT_FALSE(status);
    EXPECT_NE(error.find(file), std::string::npos) << error;
    MObjectArray transforms;
    EXPECT_FALSE(host::importMesh(path("absent.obj"), transforms, &error));
    EXPECT_EQ(transforms.length(), 0u);
    EXPECT_NE(error.find("absent.obj"), std::string::npos) << error;
    EXPECT_EQ(host::nodeNames().size(), before);
}

TEST_F(MeshScene, ExportMeshWritesWhatTheSceneHolds)
{
    const host::MeshArrays ring = host::torus(2.0f, 0.75f, 16, 8);
    const MObject transform = host::addMesh(ring, "ring");
    ASSERT_FALSE(transform.isNull()) << host::logText();

    // From the transform or from the shape, the same mesh and name.
    const MObject shape = MFnDagNode(transform).child(0);
    for (const MObject& object : {transform, shape}) {
        const std::string file = path(object.hasFn(MFn::kMesh) ? "shape.obj" : "transform.obj");
        std::string error;
        ASSERT_TRUE(host::exportMesh(object, file, &error)) << error;
        std::vector<host::MeshArrays> back;
        ASSERT_TRUE(host::readMeshFile(file, back, &error)) << error;
        ASSERT_EQ(back.size(), 1u);
        EXPECT_EQ(back[0].name, "ring");
        EXPECT_TRUE(samePolygons(ring, back[0], true));
    }
}

TEST_F(MeshScene, ExportMeshPlacesTheMeshWhereItsTransformIs)
{
    const host::MeshArrays plane = host::gridPlane(2.0f, 2.0f, 2, 2);
    const MObject transform = host::addMesh(plane, "floor");
    ASSERT_TRUE(host::setDouble("floor.translateY", 3.0));
    const std::string file = path("floor.off");
    ASSERT_TRUE(host::exportMesh(transform, file));
    std::vector<host::MeshArrays> back;
    ASSERT_TRUE(host::readMeshFile(file, back));
    ASSERT_EQ(back.size(), 1u);
    host::MeshArrays raised = plane;
    for (std::size_t i = 1; i < raised.points.size(); i += 3)
        raised.points[i] += 3.0f;
    EXPECT_TRUE(samePolygons(raised, back[0], false));
}

TEST_F(MeshScene, ExportMeshRefusesWhatIsNotAMesh)
{
    const MObject empty = host::createNode("transform", "empty");
    std::string error;
    EXPECT_FALSE(host::exportMesh(empty, path("empty.obj"), &error));
    EXPECT_NE(error.find("empty"), std::string::npos) << error;
    EXPECT_NE(error.find("no mesh"), std::string::npos) << error;
    EXPECT_FALSE(host::exportMesh(MObject(), path("null.obj"), &error));
    EXPECT_NE(error.find("null.obj"), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(path("empty.obj")));
    EXPECT_FALSE(std::filesystem::exists(path("null.obj")));

    // A mesh going to an unknown format fails in the writer, naming the file.
    const MObject ball = host::addMesh(host::uvSphere(1.0f, 6, 4), "ball");
    EXPECT_FALSE(host::exportMesh(ball, path("ball.xyz"), &error));
    EXPECT_NE(error.find("ball.xyz"), std::string::npos) << error;
}

} // namespace
