// Vertex tweaks of the retopo mesh: emptied on the selected mesh, by themselves and before a
// patch is built, with the vertices left where the user sees them.

#include "command/buildPatchFaces.h"
#include "command/tqSarnToolCmd.h"

#include "patchTest.h"

#include <host/commands.h>

#include <maya/MPlug.h>

namespace {

class ClearTweaks : public patchtest::PatchTest {
protected:
    void SetUp() override
    {
        PatchTest::SetUp();
        // What moving the tweaks into the history leaves: zero offsets on two vertices, the
        // vertices themselves placed through the function set.
        fn.setObject(makeRetopo());
        ASSERT_TRUE(fn.setPoint(1, MPoint(101, 0, 2), MSpace::kWorld));
        for (const char* command : {"setAttr retopoShape.pnts[1] 0 0 0", "setAttr retopoShape.pnts[2] 0 0 0"})
            ASSERT_TRUE(host::runCommand(command).status) << host::logText();
        ASSERT_EQ(tweakCount(), 2u);
    }

    static unsigned tweakCount() { return host::findPlug("retopoShape.pnts").numElements(); }

    MFnMesh fn;
};

TEST_F(ClearTweaks, EmptiesTheSelectedMeshsTweaksAndLeavesItsPoints)
{
    const MPointArray shown = meshPoints(fn);
    ASSERT_TRUE(host::select({}));
    EXPECT_EQ(tqSarnToolCmd::clearTweaks(), MStatus::kInvalidParameter);
    EXPECT_EQ(tweakCount(), 2u) << "no retopo mesh, nothing touched";

    ASSERT_TRUE(host::select({"retopo"}));
    EXPECT_TRUE(tqSarnToolCmd::clearTweaks());
    EXPECT_EQ(tweakCount(), 0u);
    EXPECT_TRUE(plugintest::samePoints(meshPoints(fn), shown));
}

TEST_F(ClearTweaks, BuildingAPatchClearsThemFirst)
{
    bool ok = false;
    MObject owner;
    const tq::RowList rows{patchtest::straightRow({0, 0, 0}, {1, 0, 0}, 3),
                           patchtest::straightRow({0, 1, 0}, {1, 0, 0}, 3)};
    tq::buildPatchFaces(fn, rows, 2, 1, false, ok, owner);
    EXPECT_TRUE(ok);
    EXPECT_EQ(tweakCount(), 0u);
    EXPECT_EQ(fn.numPolygons(), 3);
    EXPECT_TRUE(meshPoints(fn)[1].isEquivalent(MPoint(101, 0, 2), 1e-6));
}

} // namespace
