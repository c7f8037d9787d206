// The topology commands the tool sends as text: polySplitRing, polyBridgeEdge and
// polyMergeVertex on real meshes, with their history nodes, undo and redo, and refusals.

#include "commandTest.h"

#include <host/meshArrays.h>
#include <host/meshFiles.h>

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>

namespace {

using Items = std::vector<std::string>;
using P3 = std::array<float, 3>;

// What a user sees of a mesh: its points and faces.
struct Shape {
    std::vector<P3> points;
    std::vector<int> counts, connects;
    int edges = 0;
    bool operator==(const Shape& o) const
    {
        return points == o.points && counts == o.counts && connects == o.connects && edges == o.edges;
    }
    bool allQuads() const
    {
        return std::all_of(counts.begin(), counts.end(), [](int c) { return c == 4; });
    }
};

void PrintTo(const Shape& s, std::ostream* os)
{
    *os << s.points.size() << " points, faces";
    for (std::size_t f = 0, at = 0; f < s.counts.size(); at += std::size_t(s.counts[f++])) {
        *os << " [";
        for (int i = 0; i < s.counts[f]; ++i)
            *os << (i ? " " : "") << s.connects[at + std::size_t(i)];
        *os << "]";
    }
    *os << ", " << s.edges << " edges";
}

class PolyTopologyTest : public CommandTest {
protected:
    // Adds a mesh under a transform `name`; returns the shape's full path.
    std::string addMesh(const std::string& name, const std::vector<P3>& points, const std::vector<int>& counts,
                        const std::vector<int>& connects)
    {
        host::MeshArrays arrays;
        for (const P3& p : points)
            arrays.points.insert(arrays.points.end(), p.begin(), p.end());
        arrays.counts = counts;
        arrays.connects = connects;
        MStatus status;
        MObject transform = host::addMesh(arrays, name, &status);
        EXPECT_TRUE(status) << host::logText();
        return "|" + name + "|" + hosttest::nameOf(MFnDagNode(transform).child(0));
    }

    // Two unit quads side by side with a gap of one: A [0,1,2,3] at x 0..1, B [4,5,6,7] at
    // x 2..3. Edges: A (0,1) 0, (1,2) 1, (2,3) 2, (3,0) 3; B (4,5) 4, (5,6) 5, (6,7) 6, (7,4) 7.
    std::string addPair(const std::string& name)
    {
        return addMesh(name, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}, {2, 0, 0}, {3, 0, 0}, {3, 0, 1}, {2, 0, 1}},
                       {4, 4}, {0, 1, 2, 3, 4, 5, 6, 7});
    }

    // A row of three quads: 0-3 at z = 0.5, 4-7 at z = -0.5, x from -1.5 to 1.5. The edges
    // across the row are 1 (1,5), 3 (4,0), 5 (2,6) and 8 (3,7).
    std::string addStrip(const std::string& name)
    {
        return addMesh(name,
                       {{-1.5f, 0, 0.5f}, {-0.5f, 0, 0.5f}, {0.5f, 0, 0.5f}, {1.5f, 0, 0.5f},
                        {-1.5f, 0, -0.5f}, {-0.5f, 0, -0.5f}, {0.5f, 0, -0.5f}, {1.5f, 0, -0.5f}},
                       {4, 4, 4}, {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6});
    }

    static Shape shapeOf(const std::string& path)
    {
        MSelectionList list;
        list.add(path.c_str());
        MDagPath dag;
        list.getDagPath(0, dag);
        MFnMesh fn(dag);
        Shape s;
        MFloatPointArray points;
        fn.getPoints(points);
        for (const MFloatPoint& p : points)
            s.points.push_back({p.x, p.y, p.z});
        MIntArray counts, connects;
        fn.getVertices(counts, connects);
        s.counts.assign(counts.begin(), counts.end());
        s.connects.assign(connects.begin(), connects.end());
        s.edges = fn.numEdges();
        return s;
    }

    static ::testing::AssertionResult at(const Shape& s, int v, float x, float y, float z)
    {
        if (v < 0 || v >= int(s.points.size()))
            return ::testing::AssertionFailure() << "no vertex " << v;
        const P3& p = s.points[std::size_t(v)];
        if (std::fabs(p[0] - x) < 1e-5f && std::fabs(p[1] - y) < 1e-5f && std::fabs(p[2] - z) < 1e-5f)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "vertex " << v << " at (" << p[0] << ", " << p[1] << ", " << p[2]
                                             << "), want (" << x << ", " << y << ", " << z << ")";
    }

    // Undo gives back `before` exactly, redo `after`.
    void expectUndoRedo(const std::string& path, const Shape& before, const Shape& after)
    {
        ASSERT_TRUE(host::undo());
        EXPECT_EQ(shapeOf(path), before) << "undo restores the mesh";
        ASSERT_TRUE(host::redo());
        EXPECT_EQ(shapeOf(path), after) << "redo repeats the operation";
    }
};

TEST_F(PolyTopologyTest, SplitRingInsertsALoopAcrossTheRing)
{
    const std::string strip = addStrip("strip");
    const Shape before = shapeOf(strip);
    // The tool's exact text: leading blank, stray blank after a dash, two blanks before ";".
    const std::string name =
        run(" polySplitRing -splitType 1 -weight 0.25 -smoothingAngle 30 -fixQuads 1 - insertWithEdgeFlow 0 " + strip +
            ".e[1]  ;")
            .text;
    EXPECT_EQ(name, "polySplitRing1");
    const Shape after = shapeOf(strip);
    EXPECT_EQ(after.points.size(), 12u);
    EXPECT_EQ(after.counts.size(), 6u);
    EXPECT_EQ(after.edges, 17);
    EXPECT_TRUE(after.allQuads());
    for (int v = 0; v < 8; ++v)
        EXPECT_EQ(after.points[std::size_t(v)], before.points[std::size_t(v)]) << "old vertex " << v << " moved";
    // One new vertex per ring edge, in edge order, a quarter of the way from the z = 0.5 side.
    EXPECT_TRUE(at(after, 8, -0.5f, 0, 0.25f));
    EXPECT_TRUE(at(after, 9, -1.5f, 0, 0.25f));
    EXPECT_TRUE(at(after, 10, 0.5f, 0, 0.25f));
    EXPECT_TRUE(at(after, 11, 1.5f, 0, 0.25f));

    // The node sits in the history with the flags it was given.
    EXPECT_EQ(run("getAttr polySplitRing1.weight").text, "0.25");
    EXPECT_EQ(run("getAttr polySplitRing1.splitType").text, "1");
    EXPECT_EQ(run("getAttr polySplitRing1.fixQuads").text, "1");
    EXPECT_EQ(run("getAttr polySplitRing1.insertWithEdgeFlow").text, "0");
    EXPECT_EQ(run("getAttr polySplitRing1.inputComponents").items, (Items{"e[1]"}));
    EXPECT_EQ(run("polySplitRing -q -weight polySplitRing1").text, "0.25");
    const Items history = run("listHistory " + strip).items;
    EXPECT_NE(std::find(history.begin(), history.end(), "polySplitRing1"), history.end());

    expectUndoRedo(strip, before, after);
    EXPECT_TRUE(exists("polySplitRing1"));
    ASSERT_TRUE(host::undo());
    EXPECT_FALSE(exists("polySplitRing1")) << "undo takes the node away";
    ASSERT_TRUE(host::redo());

    // Editing the node's weight moves the loop, and undoes.
    run("polySplitRing -e -weight 0.75 polySplitRing1");
    EXPECT_TRUE(at(shapeOf(strip), 8, -0.5f, 0, -0.25f));
    ASSERT_TRUE(host::undo());
    EXPECT_EQ(shapeOf(strip), after);
}

TEST_F(PolyTopologyTest, SplitRingStopsAtAFaceThatIsNoQuad)
{
    // A quad [0,1,2,3] and a triangle [1,4,2] on its edge (1,2); edges (0,1) 0, (1,2) 1,
    // (2,3) 2, (3,0) 3, (1,4) 4, (4,2) 5.
    const std::string mesh = addMesh("tri", {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}, {2, 0, 0.5f}}, {4, 3},
                                     {0, 1, 2, 3, 1, 4, 2});
    run("polySplitRing -weight 0.5 " + mesh + ".e[3]");
    const Shape after = shapeOf(mesh);
    EXPECT_EQ(after.points.size(), 7u);
    ASSERT_EQ(after.counts.size(), 3u);
    EXPECT_TRUE(after.allQuads()) << "the triangle gains the ring's vertex and the quad splits into two";
    EXPECT_TRUE(at(after, 5, 1, 0, 0.5f));
    EXPECT_TRUE(at(after, 6, 0, 0, 0.5f));
}

TEST_F(PolyTopologyTest, SplitRingCarriesTweaksAndWorksWithoutHistory)
{
    const std::string strip = addStrip("strip");
    run("move -r 0 1 0 " + strip + ".vtx[1]");
    run("polySplitRing -weight 0.5 " + strip + ".e[1]");
    Shape after = shapeOf(strip);
    EXPECT_TRUE(at(after, 1, -0.5f, 1, 0.5f)) << "the tweak still moves vertex 1";
    EXPECT_TRUE(at(after, 8, -0.5f, 0.5f, 0)) << "the new vertex lies on the moved edge";
    EXPECT_EQ(run("getAttr " + strip + ".pnts[1]").items, (Items{"0", "0", "0"})) << "the tweak went into the history";
    ASSERT_TRUE(host::undo());
    EXPECT_TRUE(at(shapeOf(strip), 1, -0.5f, 1, 0.5f));
    EXPECT_EQ(shapeOf(strip).points.size(), 8u);

    // With construction history off a mesh without history is edited in place.
    const std::string plain = addStrip("plain");
    const Shape before = shapeOf(plain);
    run("constructionHistory -tgl false");
    EXPECT_EQ(run("polySplitRing -weight 0.5 " + plain + ".e[1]").text, hosttest::nameOf(host::findNode("plainShape")));
    run("constructionHistory -tgl true");
    EXPECT_EQ(run("listHistory " + plain).items.size(), 1u) << "no node was made";
    EXPECT_EQ(shapeOf(plain).points.size(), 12u);
    expectUndoRedo(plain, before, shapeOf(plain));
}

TEST_F(PolyTopologyTest, BridgeJoinsTwoBordersWithRowsOfQuads)
{
    const std::string pair = addPair("pair");
    const Shape before = shapeOf(pair);
    // The tool's text: quoted operands, no closing semicolon.
    EXPECT_EQ(run("polyBridgeEdge -divisions 2 -direction 0 \"" + pair + ".e[1]\" \"" + pair + ".e[7]\"").text,
              "polyBridgeEdge1");
    const Shape after = shapeOf(pair);
    EXPECT_EQ(after.points.size(), 12u);
    EXPECT_EQ(after.counts.size(), 5u);
    EXPECT_EQ(after.edges, 16) << "two rungs of three edges and two new rows";
    EXPECT_TRUE(after.allQuads());
    // Rows at thirds between x = 1 and x = 2, vertex 1 facing vertex 4 and 2 facing 7.
    EXPECT_TRUE(at(after, 8, 4.0f / 3, 0, 0));
    EXPECT_TRUE(at(after, 9, 4.0f / 3, 0, 1));
    EXPECT_TRUE(at(after, 10, 5.0f / 3, 0, 0));
    EXPECT_TRUE(at(after, 11, 5.0f / 3, 0, 1));
    EXPECT_EQ(run("getAttr polyBridgeEdge1.divisions").text, "2");
    EXPECT_EQ(run("getAttr polyBridgeEdge1.inputComponents").items, (Items{"e[1]", "e[7]"}));
    expectUndoRedo(pair, before, after);
}

TEST_F(PolyTopologyTest, BridgePairsInterleavedEdgesAsGiven)
{
    // Two strips of two quads facing each other across x = 1..2; the left border edges are
    // 1 (1,3) and 4 (3,5), the right ones 10 (8,6) and 13 (10,8).
    const std::string m = addMesh("two",
                                  {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {1, 0, 1}, {0, 0, 2}, {1, 0, 2},
                                   {2, 0, 0}, {3, 0, 0}, {2, 0, 1}, {3, 0, 1}, {2, 0, 2}, {3, 0, 2}},
                                  {4, 4, 4, 4}, {0, 1, 3, 2, 2, 3, 5, 4, 6, 7, 9, 8, 8, 9, 11, 10});
    run("polyBridgeEdge -divisions 0 -direction 0 \"" + m + ".e[1]\" \"" + m + ".e[10]\" \"" + m + ".e[4]\" \"" + m +
        ".e[13]\"");
    const Shape after = shapeOf(m);
    EXPECT_EQ(after.points.size(), 12u) << "no divisions, no new vertices";
    ASSERT_EQ(after.counts.size(), 6u);
    EXPECT_EQ(after.edges, 17);
    const std::vector<int> bridge(after.connects.end() - 8, after.connects.end());
    EXPECT_EQ(bridge, (std::vector<int>{3, 1, 6, 8, 5, 3, 8, 10}));
}

TEST_F(PolyTopologyTest, MergeTextsOfTheToolWeldVertices)
{
    const std::string pair = addPair("pair");
    const Shape before = shapeOf(pair);
    // The stray blank reads as -am: the two named vertices merge, one unit apart.
    EXPECT_EQ(run("polyMergeVertex -d 9999 - am 1  \"" + pair + ".vtx[1]\" \"" + pair + ".vtx[4]\"").text,
              "polyMergeVert1");
    const Shape after = shapeOf(pair);
    EXPECT_EQ(after.points.size(), 7u);
    EXPECT_TRUE(at(after, 1, 1.5f, 0, 0)) << "the survivor is the lower number, at the mean";
    EXPECT_TRUE(at(after, 4, 3, 0, 0)) << "later vertices close up";
    EXPECT_EQ(after.connects, (std::vector<int>{0, 1, 2, 3, 1, 4, 5, 6}));
    EXPECT_EQ(run("getAttr polyMergeVert1.alwaysMergeTwoVertices").text, "1");
    EXPECT_EQ(run("getAttr polyMergeVert1.distance").text, "9999");
    expectUndoRedo(pair, before, after);
    ASSERT_TRUE(host::undo());

    // Without -am, vertices farther apart than the distance stay.
    run("polyMergeVertex -d 0.01 " + pair + ".vtx[1] " + pair + ".vtx[4]");
    EXPECT_EQ(shapeOf(pair), before);
    ASSERT_TRUE(host::undo());

    // Pulled together and merged pair by pair, as the tool stitches two borders.
    run("move -a 1.5 0 0 " + pair + ".vtx[1];move -a 1.5 0 0 " + pair + ".vtx[4];move -a 1.5 0 1 " + pair +
        ".vtx[2];move -a 1.5 0 1 " + pair + ".vtx[7];polyMergeVertex -am 1 -d 0.01 " + pair + ".vtx[1] " + pair +
        ".vtx[4] " + pair + ".vtx[2] " + pair + ".vtx[7] ");
    const Shape stitched = shapeOf(pair);
    EXPECT_EQ(stitched.points.size(), 6u);
    EXPECT_EQ(stitched.edges, 7) << "the two borders became one shared edge";
    EXPECT_EQ(stitched.connects, (std::vector<int>{0, 1, 2, 3, 1, 4, 5, 2}));
}

TEST_F(PolyTopologyTest, BadOperandsFailAndChangeNothing)
{
    const std::string pair = addPair("pair");
    const std::string other = addPair("other");
    const Shape before = shapeOf(pair);
    const unsigned entries = host::undoQueueLength();
    struct Case {
        std::string text, expected;
    };
    const std::vector<Case> cases = {
        {"polySplitRing -weight 0.5 " + pair + ".e[99]", "does not exist"},
        {"polySplitRing -weight 0.5 nothingHere.e[1]", "nothingHere"},
        {"polySplitRing -weight 1.5 " + pair + ".e[1]", "between 0 and 1"},
        {"polySplitRing -weight 0.5 " + pair + ".vtx[1]", "is not a mesh edge component"},
        {"polySplitRing -weight 0.5 -insertWithEdgeFlow 1 " + pair + ".e[1]", "-insertWithEdgeFlow 1"},
        {"polyBridgeEdge -divisions 1 " + pair + ".e[1] " + other + ".e[7]", "different meshes"},
        {"polyBridgeEdge -divisions 1 " + pair + ".e[1] " + pair + ".e[7] " + pair + ".e[4]", "have 1 and 2 edges"},
        {"polyBridgeEdge -divisions 1 " + pair + ".e[1] " + pair + ".e[2]", "one connected set"},
        {"polyMergeVertex -d 9999 -am 1 " + pair + ".vtx[0] " + pair + ".vtx[2]", "use vertex 0 twice"},
        {"polyMergeVertex -d -1 " + pair + ".vtx[0] " + pair + ".vtx[2]", "0 or more"},
        {"polyBridgeEdge -divisions 20000 " + pair + ".e[1] " + pair + ".e[7]", "between 0 and 10000"},
        {"polySplitRing -splitType 1e12 " + pair + ".e[1]", "-splitType does not take"},
    };
    for (const Case& c : cases) {
        const std::string log = failing(c.text);
        EXPECT_NE(log.find(c.expected), std::string::npos) << c.text << "\nlogged: " << log;
        EXPECT_EQ(shapeOf(pair), before) << c.text;
    }
    EXPECT_EQ(host::undoQueueLength(), entries) << "refused commands leave no undo entry";
    EXPECT_FALSE(exists("polySplitRing1") || exists("polyBridgeEdge1") || exists("polyMergeVert1"));
}

} // namespace
