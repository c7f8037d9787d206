// Command text as a hostile user writes it: commands that fail part-way, deep nesting,
// patterns that make a naive matcher backtrack, indices and counts at the integer limits,
// and inputs that used to be accepted without a word. Each must fail with a line saying why
// and leave the scene as it was, or do what the reference does.

#include "commandTest.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <maya/MFnDagNode.h>

#include <random>
#include <set>
#include <string>

using Items = std::vector<std::string>;

class RobustnessTest : public CommandTest {
protected:
    // A 3 x 3 grid (16 vertices, 24 edges, 9 faces) under a transform; returns the shape.
    std::string addGrid(const std::string& name)
    {
        MStatus status;
        MObject transform = host::addMesh(host::gridPlane(3.0f, 3.0f, 3, 3), name, &status);
        EXPECT_TRUE(status) << host::logText();
        return hosttest::nameOf(MFnDagNode(transform).child(0));
    }
    static std::string repeat(const std::string& text, int times)
    {
        std::string out;
        for (int i = 0; i < times; ++i)
            out += text;
        return out;
    }
};

TEST_F(RobustnessTest, ACommandThatFailsPartWayChangesNothingAndUndoStaysSound)
{
    run("createNode transform -n a; createNode transform -n b; createNode transform -n p; select -cl");
    host::flushUndoQueue();
    const std::string log = failing("parent a b missing p");
    EXPECT_NE(log.find("missing"), std::string::npos) << log;
    // A later object that cannot move (p under its own child) must not leave the first moved.
    run("parent a p");
    failing("parent b p a");
    EXPECT_EQ(run("ls -l b a p").items, (Items{"|p|a", "|b", "|p"})) << "nothing moved";
    EXPECT_EQ(host::undoQueueLength(), 1u) << "a failed command records nothing";

    // The same holds for every built-in: a failing setAttr in one call leaves the earlier
    // statements of that call done and undoable as one entry.
    run("select -r a");
    failing("select -r b; rename b c; setAttr c.translateX nope");
    EXPECT_EQ(run("ls -sl").items, Items{"c"});
    EXPECT_EQ(host::getDouble("c.translateX"), 0.0);
    ASSERT_TRUE(host::undo());
    EXPECT_EQ(run("ls -sl").items, Items{"a"});
    EXPECT_TRUE(exists("b"));
    ASSERT_TRUE(host::redo());
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(host::undo());
    EXPECT_EQ(run("ls -l a b p").items, (Items{"|a", "|b", "|p"})) << "undo takes back the good parent";
}

TEST_F(RobustnessTest, NestingDeeperThanTheLimitIsRefusedWithoutRunningAnything)
{
    const int deep = 15000;
    for (const std::string& text :
         {repeat("{", deep) + "createNode transform -n deep" + repeat("}", deep),
          "if (" + repeat("(", deep) + "1" + repeat(")", deep) + ") createNode transform -n deep",
          "if (" + repeat("!", deep) + "1) createNode transform -n deep",
          repeat("if (1) ", deep) + "createNode transform -n deep",
          "if (0) ; " + repeat("else if (0) ; ", deep) + "else createNode transform -n deep"}) {
        const std::string log = failing(text);
        EXPECT_NE(log.find("nests deeper than 256 levels"), std::string::npos) << log.substr(0, 300);
        EXPECT_FALSE(exists("deep"));
    }
    // Within the limit, nesting works as before.
    run(repeat("{", 100) + "createNode transform -n shallow" + repeat("}", 100));
    run("if (" + repeat("(", 100) + "1" + repeat(")", 100) + ") createNode transform -n shallow2");
    EXPECT_TRUE(exists("shallow") && exists("shallow2"));
}

TEST_F(RobustnessTest, WildcardsMatchTheSameInLsAndSelectWithoutBacktracking)
{
    for (const char* name : {"alpha", "alpine", "beta", "alphabet", "al"})
        run(std::string("createNode transform -ss -n ") + name);
    struct Case {
        const char* pattern;
        Items transforms;
    };
    const Case cases[] = {{"al*", {"alpha", "alpine", "alphabet", "al"}},
                          {"*a", {"alpha", "beta"}},
                          {"a*p*a*", {"alpha", "alphabet"}},
                          {"al?h*", {"alpha", "alphabet"}},
                          {"*l*i*", {"alpine"}},
                          {"**al", {"al"}},
                          {"?", {}}};
    for (const Case& c : cases) {
        EXPECT_EQ(run(std::string("ls -tr ") + c.pattern).items, c.transforms) << c.pattern;
        // select sees every node, as ls without a type does.
        const Items all = run(std::string("ls ") + c.pattern).items;
        host::CommandOutput selected = host::runCommand(std::string("select -r ") + c.pattern);
        EXPECT_EQ(bool(selected.status), !all.empty()) << c.pattern;
        if (selected.status) {
            EXPECT_EQ(host::selection(), all) << c.pattern;
        }
    }
    // A backtracking matcher takes exponential time on these; a linear one answers at once.
    run("createNode transform -ss -n " + repeat("a", 60));
    const std::string stars = repeat("a*", 40) + "b";
    EXPECT_TRUE(run("ls " + stars).items.empty());
    failing("select " + stars);
    EXPECT_EQ(run("ls -tr " + repeat("*a", 60)).items, Items{repeat("a", 60)});
}

// The plain definition, exponential in the worst case but fine on short names.
bool naiveMatch(const char* pattern, const char* name)
{
    if (*pattern == '\0')
        return *name == '\0';
    if (*pattern == '*')
        return naiveMatch(pattern + 1, name) || (*name && naiveMatch(pattern, name + 1));
    return *name && (*pattern == '?' || *pattern == *name) && naiveMatch(pattern + 1, name + 1);
}

TEST_F(RobustnessTest, WildcardsAgreeWithThePlainDefinition)
{
    std::mt19937 random(19);
    auto text = [&](const char* alphabet, int alphabetSize, int maxLength) {
        std::string out(1 + random() % unsigned(maxLength), 'a');
        for (char& c : out)
            c = alphabet[random() % unsigned(alphabetSize)];
        return out;
    };
    std::set<std::string> names;
    while (names.size() < 40)
        names.insert(text("ab", 2, 8));
    for (const std::string& name : names)
        run("createNode transform -ss -n " + name);
    for (int i = 0; i < 300; ++i) {
        const std::string pattern = text("ab*?", 4, 10);
        Items expected;
        for (const std::string& name : run("ls -tr").items)
            if (naiveMatch(pattern.c_str(), name.c_str()))
                expected.push_back(name);
        host::CommandOutput listed = host::runCommand("ls -tr " + pattern);
        ASSERT_TRUE(listed.status) << pattern;
        EXPECT_EQ(listed.items, expected) << pattern;
    }
}

TEST_F(RobustnessTest, ComponentIndicesAreCheckedAgainstTheMeshBeforeAnythingIsMade)
{
    const std::string shape = addGrid("grid");
    host::clearLog();
    for (const char* item :
         {"grid.vtx[16]", "grid.vtx[2147483647]", "grid.vtx[2147483648]", "grid.vtx[4294967295]",
          "grid.vtx[2147483640:2147483647]", "grid.vtx[0:4294967295]", "grid.e[24]", "grid.f[9]",
          "grid.f[0:100000000]", "grid.vtx[-1]", "grid.vtx[3:1]"}) {
        const std::string log = failing(std::string("select -r ") + item);
        EXPECT_NE(log.find(item), std::string::npos) << log;
        failing(std::string("move -r 1 0 0 ") + item);
    }
    EXPECT_TRUE(host::selection().empty());
    // The last index of each kind is fine, and select and move agree on it.
    run("select -r grid.vtx[15] grid.e[0:23] grid.f[8]");
    run("move -r 0 1 0 grid.vtx[15]");
    EXPECT_EQ(run("getAttr " + shape + ".pnts[15]").items, (Items{"0", "1", "0"}));
}

TEST_F(RobustnessTest, ValuesAtTheIntegerLimitsAreErrorsWithClearMessages)
{
    create("dgAttrKinds", "arr");
    create("dgArraySum", "sum");
    create("dgAffects", "src");
    // An element at the top of the index range leaves -nextAvailable nowhere to go.
    run("connectAttr src.b sum.inputs[2147483647]");
    std::string log = failing("connectAttr -na src.c sum.inputs");
    EXPECT_NE(log.find("no free index after 2147483647"), std::string::npos) << log;
    log = failing("connectAttr src.c sum.inputs[2147483648]");
    EXPECT_NE(log.find("Invalid index"), std::string::npos) << log;

    // Counts times widths that overflow are compared by division and printed exactly.
    log = failing("setAttr arr.pointsAttr -type pointArray 4611686018427387904 1 2 3 4");
    EXPECT_NE(log.find("needs more than 18446744073709551615 value(s), got 4"), std::string::npos) << log;
    log = failing("setAttr arr.pointsAttr -type pointArray 4611686018427387904");
    EXPECT_NE(log.find("got 0"), std::string::npos) << log;
    log = failing("setAttr arr.vectorsAttr -type vectorArray 9000000000000000000 1 2 3");
    EXPECT_NE(log.find("needs more than"), std::string::npos) << log;
    log = failing("setAttr arr.intsAttr -type Int32Array 2 1 2147483648");
    EXPECT_NE(log.find("'2147483648' is not a 32-bit integer"), std::string::npos) << log;
    failing("setAttr arr.intsAttr -type Int32Array 1 1.5");
    run("setAttr arr.intsAttr -type Int32Array 2 -2147483648 2147483647");
    EXPECT_EQ(run("getAttr arr.intsAttr").items, (Items{"-2147483648", "2147483647"}));
    log = failing("setAttr arr.intAttr 2147483648");
    EXPECT_NE(log.find("'2147483648' is outside the range of 'arr.intAttr'"), std::string::npos) << log;
}

TEST_F(RobustnessTest, InputsThatUsedToBeAcceptedSilently)
{
    const std::string shape = addGrid("grid");
    create("dgAffects", "up");
    run("connectAttr grid.translateX up.a");
    // An optional boolean does not swallow the object after it.
    EXPECT_EQ(run("listHistory -f grid").items, (Items{shape})) << "nothing downstream of the shape";
    EXPECT_EQ(run("listHistory -f true grid").items, (Items{shape}));

    // A name nothing can address is refused by createNode as by rename.
    for (const char* bad : {"a|b", "a.b", "a[0]", "a b"}) {
        const std::string log = failing(std::string("createNode transform -n \"") + bad + "\"");
        EXPECT_NE(log.find("is not a valid name"), std::string::npos) << log;
    }
    EXPECT_EQ(run("ls -tr").items, (Items{"grid"}));

    // A vertex that does not exist is no more selectable than movable.
    failing("select -r grid.vtx[99]");
    failing("move -r 1 0 0 grid.vtx[99]");
}
