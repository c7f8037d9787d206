// The tool's activation and end: the intersector and the normals made once per session of the
// context, the selection trimmed to the retopo mesh, the callbacks given back at the end, and
// the refusals of a source that is missing or no mesh.

#include "toolTest.h"

#include "store/storeAttributes.h"
#include "store/storeWrites.h"

#include <maya/MFnMesh.h>
#include <maya/MVectorArray.h>

namespace {

using namespace tooltest;

class ContextLifecycle : public ToolTest {};

MVectorArray storedNormals()
{
    MVectorArray out;
    tq::readVectorArrayAttr(tq::storeAttr::kInputNormals, out, tq::findStoreNode());
    return out;
}

TEST_F(ContextLifecycle, ActivationBuildsTheSourceOnceAndWritesOneNormalPerPolygon)
{
    connectStore();
    ASSERT_NO_FATAL_FAILURE(activate());
    EXPECT_EQ(host::toolCursor(), "doubleCrossHairCursor");
    const MVectorArray normals = storedNormals();
    ASSERT_EQ(int(normals.length()), MFnMesh(scan).numPolygons());
    // Each is the mean of the face's vertex normals: it points out of the face, its length
    // at most 1.
    MFnMesh mesh(scan);
    for (int face : {0, 1000, 40000}) {
        MVector faceNormal;
        mesh.getPolygonNormal(face, faceNormal, MSpace::kWorld);
        EXPECT_GT(normals[unsigned(face)] * faceNormal, 0.0) << "face " << face;
        EXPECT_LE(normals[unsigned(face)].length(), 1.0 + 1e-9) << "face " << face;
    }

    // A second activation of the same context neither rebuilds nor rewrites the normals.
    ASSERT_TRUE(tq::writeVectorArrayAttr(MVectorArray(), tq::storeAttr::kInputNormals, tq::findStoreNode()));
    ASSERT_TRUE(host::setToolTo("selectSuperContext"));
    ASSERT_TRUE(host::setToolTo(contextName));
    EXPECT_EQ(storedNormals().length(), 0u);
    // The stroke still lands: the first session's intersector serves.
    EXPECT_TRUE(stroke({250, 130, 390, 130}));
    EXPECT_EQ(storedSizes().size(), 1u);
}

TEST_F(ContextLifecycle, ActivationKeepsTheFirstSelectedMeshAloneAndEndGivesTheEventsBack)
{
    connectStore();
    makeMesh("retopo", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {3}, {0, 1, 2});
    ASSERT_TRUE(host::select({"retopo", "scan", "store"}));
    ASSERT_NO_FATAL_FAILURE(activate());
    EXPECT_EQ(host::selection(), std::vector<std::string>{"retopoShape"});

    ASSERT_TRUE(stroke({250, 130, 390, 130}));
    ASSERT_EQ(storedSizes().size(), 1u);
    // A tool change while active drops the session, as Esc does.
    host::sendEvent("ToolChanged");
    EXPECT_TRUE(storedSizes().empty());
    EXPECT_EQ(info1(), "");

    ASSERT_TRUE(host::setToolTo(contextName));
    ASSERT_TRUE(stroke({250, 130, 390, 130}));
    ASSERT_TRUE(host::setToolTo("selectSuperContext")); // the end clears, then lets go of the events
    ASSERT_TRUE(tq::appendStroke(plugintest::pointArray({{1, 2, 3}, {2, 3, 4}})));
    host::sendEvent("ToolChanged");
    EXPECT_EQ(storedSizes().size(), 1u) << "a callback outlived the tool";
    EXPECT_FALSE(loggedError()) << host::logText();
}

TEST_F(ContextLifecycle, DragsOnABadSourceAreRefusedAndStoreNothing)
{
    struct Case {
        const char* name;
        void (*build)();
    };
    const Case cases[] = {
        {"no store", [] {}},
        {"a store with no source", [] { host::createNode("tqSarn", "store"); }},
        {"a source that is no mesh",
         [] {
             host::createNode("tqSarn", "store");
             host::createNode("transform", "empty");
             host::connect("empty.message", "store.tqSarnMesh", true);
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        host::setToolTo("selectSuperContext");
        host::deleteNode("store");
        host::deleteNode("empty");
        c.build();
        ASSERT_NO_FATAL_FAILURE(activate());
        EXPECT_TRUE(host::mousePress(300, 240));
        EXPECT_EQ(host::mouseDrag(320, 240).statusCode(), MStatus::kInvalidParameter);
        EXPECT_EQ(host::mouseDrag(340, 240).statusCode(), MStatus::kInvalidParameter);
        EXPECT_TRUE(host::mouseRelease(340, 240));
        EXPECT_TRUE(storedSizes().empty());
        // Enter after a second refused stroke makes nothing either.
        stroke({250, 200, 390, 200});
        EXPECT_TRUE(host::pressKey(host::Key::kEnter));
        EXPECT_TRUE(host::nodeNames("tqPatchNode").empty());
        EXPECT_EQ(host::nodeNames("mesh").size(), 1u);
    }
}

} // namespace
