// The host command lines of bevel, bridge and merge, byte for byte: they are a wire format
// the host parses, stray blanks and all.

#include "kernel/commandTexts.h"

#include "kernelTest.h"

namespace {

using kerneltest::intArray;

class CommandTexts : public kerneltest::SceneTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        mesh = makeMesh("patch", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {4}, {0, 1, 2, 3});
        path = mesh.fullPathName().asChar();
    }

    MDagPath mesh;
    std::string path;
};

TEST_F(CommandTexts, SplitRing)
{
    EXPECT_EQ(tq::splitRingCommand(mesh, intArray({12}), 0.1).asChar(),
              " polySplitRing -splitType 1 -weight 0.1 -smoothingAngle 30 -fixQuads 1 - insertWithEdgeFlow 0 " + path +
                  ".e[12]  ;");
    EXPECT_EQ(tq::splitRingCommand(mesh, intArray({3, 7}), 0.5).asChar(),
              " polySplitRing -splitType 1 -weight 0.5 -smoothingAngle 30 -fixQuads 1 - insertWithEdgeFlow 0 " + path +
                  ".e[3] " + path + ".e[7]  ;");
    EXPECT_EQ(std::string(tq::splitRingCommand(mesh, MIntArray(), 1.0).asChar()),
              " polySplitRing -splitType 1 -weight 1 -smoothingAngle 30 -fixQuads 1 - insertWithEdgeFlow 0  ;");
}

TEST_F(CommandTexts, BridgeInterleavesThePairs)
{
    EXPECT_EQ(tq::bridgeEdgesCommand(mesh, intArray({1, 2}), intArray({8, 9}), 3).asChar(),
              "polyBridgeEdge -divisions 3 -direction 0 \"" + path + ".e[1]\" \"" + path + ".e[8]\" \"" + path +
                  ".e[2]\" \"" + path + ".e[9]\"");
    EXPECT_EQ(std::string(tq::bridgeEdgesCommand(mesh, MIntArray(), MIntArray(), 0).asChar()),
              "polyBridgeEdge -divisions 0 -direction 0");
}

TEST_F(CommandTexts, MergeTemplatesKeepTheirOwnFlags)
{
    EXPECT_EQ(tq::mergePairCommand(intArray({4, 9, 11}), mesh).asChar(),
              "polyMergeVertex -d 9999 - am 1  \"" + path + ".vtx[4]\" \"" + path + ".vtx[9]\"");

    MPointArray positions;
    positions.append(MPoint(1.5, -2, 0.25));
    EXPECT_EQ(tq::moveAndMergeCommand(mesh, intArray({4}), intArray({9}), positions).asChar(),
              "move -a 1.5 -2 0.25 " + path + ".vtx[4];move -a 1.5 -2 0.25 " + path +
                  ".vtx[9];polyMergeVertex -am 1 -d 0.01 " + path + ".vtx[4] " + path + ".vtx[9] ");
    EXPECT_EQ(std::string(tq::moveAndMergeCommand(mesh, MIntArray(), MIntArray(), MPointArray()).asChar()),
              "polyMergeVertex -am 1 -d 0.01 ");
}

TEST_F(CommandTexts, HistoryLengthCountsTheSelectedMeshsHistory)
{
    EXPECT_EQ(tq::historyLength(), 0u);
    ASSERT_TRUE(host::select({"patch"}));
    EXPECT_GE(tq::historyLength(), 1u);
}

} // namespace
