// Finding the store and the two meshes; generic attribute access with its failures; a scene
// without a store; the anchor chain.

#include "storeTest.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storePredicates.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/strokeSet.h"

#include <host/meshGenerators.h>

#include <maya/MFnMesh.h>

namespace {

using namespace storetest;

class StoreAccess : public StoreTest {};

TEST_F(StoreAccess, FindsTheFirstStoreTheSourceAndTheSelectedMesh)
{
    makeStore("store");
    makeStore("second");
    EXPECT_EQ(host::nodeName(tq::findStoreNode()), "store");
    EXPECT_TRUE(tq::setPinch(0.25)); // writes reach the first store only
    EXPECT_EQ(host::getDouble("second.pinch"), 0.0);

    MStatus status = MStatus::kFailure;
    EXPECT_FALSE(tq::getSourceMeshPath(status).isValid()); // unconnected: no source, no failure
    EXPECT_TRUE(status);
    const std::string source = addSourceMesh(host::gridPlane(2.0f, 2.0f, 2, 2));
    EXPECT_EQ(std::string(tq::getSourceMeshPath(status).partialPathName().asChar()), source);

    const std::string retopo = addMeshShape(host::gridPlane(1.0f, 1.0f, 1, 1), "retopo");
    EXPECT_FALSE(tq::getActiveMeshPath().isValid()); // nothing selected
    ASSERT_TRUE(host::select({"retopo"}));            // a transform stands for its shape
    EXPECT_EQ(std::string(tq::getActiveMeshPath().partialPathName().asChar()), retopo);
    ASSERT_TRUE(host::select({retopo + ".vtx[2]"}));
    EXPECT_TRUE(tq::getActiveMeshPath().isValid());
    ASSERT_TRUE(host::select({"store", "retopo"})); // the first item decides: a locator
    EXPECT_FALSE(tq::getActiveMeshPath().isValid());
}

TEST_F(StoreAccess, GenericReadsAndWritesWithTheirFailures)
{
    MObject store = makeStore();
    // The tool ends by writing an int to displaySize, a double; the host converts it.
    EXPECT_TRUE(tq::writeIntAttr(4, "displaySize", store));
    EXPECT_EQ(host::getDouble("store.displaySize"), 4.0);
    // Never written: vectors read empty, other arrays fail and leave the output untouched;
    // neither is an error.
    MVectorArray normals(1, MVector(0, 1, 0));
    EXPECT_TRUE(tq::readVectorArrayAttr("inputNormals", normals, store));
    EXPECT_EQ(normals.length(), 0u);
    MIntArray ids = intArray({1, 2});
    EXPECT_EQ(tq::readIntArrayAttr("playervtx", ids, store), MStatus::kInvalidParameter);
    EXPECT_EQ(ints(ids), (Ints{1, 2}));
    EXPECT_FALSE(loggedError());
    // An empty array is stored as empty data, not as no data.
    EXPECT_TRUE(tq::writeIntArrayAttr(MIntArray(), "playervtx", store));
    EXPECT_TRUE(tq::readIntArrayAttr("playervtx", ids, store));
    EXPECT_EQ(ids.length(), 0u);

    MStatus status;
    EXPECT_EQ(tq::readIntAttr("noSuchAttr", store, status), -1);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_FALSE(tq::writeDoubleAttr(1.0, "noSuchAttr", store));
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "functions"));
}

TEST_F(StoreAccess, WithoutAStoreReadsAreEmptyAndWritesSkipped)
{
    MStatus status;
    EXPECT_TRUE(tq::readStrokeRows(status).empty());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_FALSE(tq::hasStrokePoints() || tq::hasShadow());
    EXPECT_EQ(tq::getPinch(), 0.0);
    EXPECT_TRUE(tq::clearStrokes() && tq::clearShadow() && tq::clearFuseData());
    EXPECT_FALSE(tq::appendStroke(points({{0, 0, 0}, {1, 0, 0}})));
    EXPECT_FALSE(tq::popLastStroke());
    EXPECT_FALSE(loggedError());
}

TEST_F(StoreAccess, AnchorPositionsComeFromTheSelectedMeshInWorldSpace)
{
    makeStore();
    addMeshShape(host::gridPlane(2.0f, 2.0f, 2, 2), "retopo");
    ASSERT_TRUE(host::setDouble("retopo.translateX", 5.0));
    ASSERT_TRUE(host::select({"retopo"}));
    MFnMesh mesh(tq::getActiveMeshPath());
    MPoint p0, p4;
    ASSERT_TRUE(mesh.getPoint(0, p0, MSpace::kWorld) && mesh.getPoint(4, p4, MSpace::kWorld));
    ASSERT_GT(p0.x, 3.0);

    ASSERT_TRUE(tq::writePlayersFromVertices(intArray({0, 4})));
    MStatus status;
    MPointArray line;
    EXPECT_TRUE(tq::readPointArrayAttr("playersLine", line, tq::findStoreNode()));
    EXPECT_TRUE(samePoints(line, points({p0, p4})));
    EXPECT_TRUE(samePoints(tq::readPlayerPoints(status), points({p0, p4})));
    // An id the mesh does not have: logged, and the anchors stay.
    EXPECT_FALSE(tq::writePlayersFromVertices(intArray({0, 99})));
    EXPECT_TRUE(loggedError());
    EXPECT_EQ(tq::readPlayerPoints(status).length(), 2u);

    ASSERT_TRUE(tq::writePlayerVertices(intArray({4, 5, 4})));
    EXPECT_TRUE(tq::playerLoopClosed());
    ASSERT_TRUE(tq::writePlayerVertices(intArray({4, 5})));
    EXPECT_FALSE(tq::playerLoopClosed());
}

} // namespace
