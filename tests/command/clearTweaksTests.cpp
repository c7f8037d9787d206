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
        path = makeRetopo();
        // What moving the tweaks into the history leaves: zero offsets on two vertices, the
        // vertices themselves placed through the function set.
        MFnMesh fn(path);
        ASSERT_TRUE(fn.setPoint(1, MPoint(101, 0, 2), MSpace::kWorld));
        for (const char* command : {"setAttr retopoShape.pnts[1] 0 0 0", "setAttr retopoShape.pnts[2] 0 0 0"})
            ASSERT_TRUE(host::runCommand(command).status) << host::logText();
        ASSERT_EQ(tweakCount(), 2u);
    }

    static unsigned tweakCount() { return host::findPlug("retopoShape.pnts").numElements(); }

    MDagPath path;
};

TEST_F(ClearTweaks, EmptiesTheSelectedMeshsTweaksAndLeavesItsPoints)
{
    MFnMesh fn(path);
    const MPointArray shown = meshPoints(fn);

    // Nothing selected: no retopo mesh, nothing touched.
    ASSERT_TRUE(host::select({}));
    EXPECT_EQ(tqSarnToolCmd::clearTweaks(), MStatus::kInvalidParameter);
    EXPECT_EQ(tweakCount(), 2u);

    ASSERT_TRUE(host::select({"retopo"}));
    EXPECT_TRUE(tqSarnToolCmd::clearTweaks());
    EXPECT_EQ(tweakCount(), 0u);
    const MPointArray after = meshPoints(fn);
    ASSERT_EQ(after.length(), shown.length());
    for (unsigned v = 0; v < shown.length(); ++v)
        EXPECT_TRUE(after[v].isEquivalent(shown[v], 1e-6)) << "vertex " << v;
}

TEST_F(ClearTweaks, BuildingAPatchClearsThemFirst)
{
    MFnMesh fn(path);
    bool ok = false;
    MObject owner;
    const tq::RowList rows{patchtest::straightRow({0, 0, 0}, {1, 0, 0}, 3),
                           patchtest::straightRow({0, 1, 0}, {1, 0, 0}, 3)};
    tq::buildPatchFaces(fn, rows, 2, 1, false, ok, owner);
    EXPECT_TRUE(ok);
    EXPECT_EQ(tweakCount(), 0u);
    EXPECT_EQ(fn.numPolygons(), 3);
    MPoint moved;
    ASSERT_TRUE(fn.getPoint(1, moved, MSpace::kWorld));
    EXPECT_TRUE(moved.isEquivalent(MPoint(101, 0, 2), 1e-6));
}

} // namespace
