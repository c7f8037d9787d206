// MItDag: depth- and breadth-first walks in creation order, filters, roots and pruning.

#include "dagTest.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MItDag.h>

#include <set>
#include <string>
#include <vector>

namespace {

using hosttest::joined;
using hosttest::str;

class DagIteration : public DagTest {
protected:
    void SetUp() override
    {
        DagTest::SetUp();
        if (HasFatalFailure())
            return;
        // A: C (F), E     B: D     -- created in the order A B C D E F.
        create("transform", "A");
        create("transform", "B");
        create("transform", "C", "A");
        create("transform", "D", "B");
        create("transform", "E", "A");
        create("dgLocator", "F", "|A|C");
        mine = {"A", "B", "C", "D", "E", "F"};
    }

    // The partial path names of this test's nodes, in the order the iterator gives them;
    // default nodes of the scene (cameras and the like) are left out.
    std::vector<std::string> walk(MItDag& it)
    {
        std::vector<std::string> seen;
        for (; !it.isDone(); it.next()) {
            MDagPath path;
            it.getPath(path);
            const std::string name = str(path.partialPathName());
            if (mine.count(name))
                seen.push_back(name);
        }
        return seen;
    }

    std::set<std::string> mine;
};

TEST_F(DagIteration, DepthFirstVisitsChildrenInCreationOrder)
{
    MItDag it(MItDag::kDepthFirst);
    const std::vector<std::string> seen = walk(it);
    EXPECT_EQ(seen, (std::vector<std::string>{"A", "C", "F", "E", "B", "D"})) << joined(seen);
}

TEST_F(DagIteration, BreadthFirstVisitsLevelByLevel)
{
    MItDag it(MItDag::kBreadthFirst);
    EXPECT_EQ(it.getType(), MItDag::kBreadthFirst);
    const std::vector<std::string> seen = walk(it);
    EXPECT_EQ(seen, (std::vector<std::string>{"A", "B", "C", "E", "D", "F"})) << joined(seen);
}

TEST_F(DagIteration, FilterRootAndPrune)
{
    MItDag transforms(MItDag::kDepthFirst, MFn::kTransform);
    const std::vector<std::string> onlyTransforms = walk(transforms);
    EXPECT_EQ(onlyTransforms, (std::vector<std::string>{"A", "C", "E", "B", "D"})) << joined(onlyTransforms);

    MItDag locators(MItDag::kDepthFirst, MFn::kPluginLocatorNode);
    std::vector<std::string> found;
    for (; !locators.isDone(); locators.next())
        found.push_back(str(locators.fullPathName()));
    EXPECT_EQ(found, (std::vector<std::string>{"|A|C|F"})) << joined(found);

    // From a root: that node and what is below it.
    MItDag below;
    ASSERT_TRUE(below.reset(pathTo("A"), MItDag::kDepthFirst));
    std::vector<std::string> underA;
    std::vector<unsigned int> depths;
    for (; !below.isDone(); below.next()) {
        underA.push_back(str(below.partialPathName()));
        depths.push_back(below.depth());
    }
    EXPECT_EQ(underA, (std::vector<std::string>{"A", "C", "F", "E"})) << joined(underA);
    ASSERT_EQ(depths.size(), 4u);
    EXPECT_EQ(depths[1], depths[0] + 1) << "C is one level below A";
    EXPECT_EQ(depths[2], depths[0] + 2) << "F is two levels below A";
    EXPECT_EQ(depths[3], depths[0] + 1) << "E is one level below A";

    // Pruning at A skips everything below it.
    MItDag pruned(MItDag::kDepthFirst);
    std::vector<std::string> seen;
    for (; !pruned.isDone(); pruned.next()) {
        const std::string name = str(pruned.partialPathName());
        if (mine.count(name))
            seen.push_back(name);
        if (name == "A")
            pruned.prune();
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"A", "B", "D"})) << joined(seen);
}

} // namespace
