// Scene files: a scene with transforms, meshes with history and tweaks, UVs and a camera
// saved and opened again is the same scene, and saves to the same text; malformed files are
// refused with their line and leave the open scene as it was.

#include "hostTestSupport.h"
#include "sceneDigest.h"

#include <host/commands.h>
#include <host/meshFiles.h>
#include <host/meshGenerators.h>
#include <host/sceneFiles.h>
#include <host/viewport.h>

#include <maya/MPoint.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace hosttest {
namespace {

namespace fs = std::filesystem;

class SceneFile : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::newScene();
        host::clearLog();
        fDir = fs::temp_directory_path() / ("fileTests-" + std::to_string(::getpid()));
        fs::create_directories(fDir);
    }
    void TearDown() override { fs::remove_all(fDir); }

    std::string path(const std::string& name) const { return (fDir / name).string(); }
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(fDir / name, std::ios::binary) << text;
        return path(name);
    }
    static std::string read(const std::string& file)
    {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static void run(const std::string& text)
    {
        const host::CommandOutput out = host::runCommand(text);
        ASSERT_TRUE(out.status) << text << "\n" << host::logText();
    }

    fs::path fDir;
};

TEST_F(SceneFile, ASavedSceneOpensAsTheSameSceneAndSavesToTheSameText)
{
    MStatus status;
    host::addMesh(host::gridPlane(2.0f, 2.0f, 3, 3), "plane", &status);
    ASSERT_TRUE(status);
    host::addMesh(host::uvSphere(0.5f, 8, 6), "ball", &status);
    ASSERT_TRUE(status);
    run("setAttr plane.translate -type double3 1 2.5 -3");
    run("setAttr plane.rotateY 30.25");
    run("setAttr ball.visibility 0");
    // A tweak, then a topology command: the tweak moves into a polyTweak, the mesh gets an
    // intermediate Orig shape and a polySplitRing node.
    const std::string shape = host::nodeName(MFnDagNode(host::findNode("plane")).child(0));
    run("setAttr " + shape + ".pnts[5] -type float3 0 0.25 0.125");
    run("setAttr " + shape + ".pnts[6] -type float3 0.5 0 0");
    run("polySplitRing -wt 0.3 " + shape + ".e[1]");
    run("setAttr " + shape + ".pnts[2] -type float3 0 0 1");
    host::makeCamera(MPoint(0, 1, 6), MPoint(0, 0, 0), 40.0, "shotCamera", &status);
    ASSERT_TRUE(status);

    const std::vector<std::string> before = sceneDigest();
    ASSERT_TRUE(host::saveScene(path("scene.ma"))) << host::logText();
    const std::string text = read(path("scene.ma"));
    // Maya's own layout for the geometry and the tweaks.
    for (const char* part : {"createNode polyTweak -n", "createNode polySplitRing -n", "\tsetAttr \".io\" yes;",
                             "\".vt[0:15]\"", "\".ed[0:23]\"", "-type \"polyFaces\"\n\t\tf 4 0 1 2 3\n\t\tmu 0 4 0 1 5 4",
                             "\".uvst[0].uvsn\" -type \"string\" \"map1\"", "-type \"float3\"", "connectAttr "})
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in:\n" << text;

    host::newScene();
    ASSERT_TRUE(host::openScene(path("scene.ma"))) << host::logText();
    EXPECT_EQ(sceneDigest(), before);
    EXPECT_EQ(host::getDouble("plane.rotateY"), 30.25);
    EXPECT_FALSE(host::getBool("ball.visibility"));
    ASSERT_TRUE(host::saveScene(path("again.ma")));
    std::string again = read(path("again.ma"));
    again.replace(again.find("again.ma"), 8, "scene.ma");
    again.replace(again.rfind("again.ma"), 8, "scene.ma");
    EXPECT_EQ(again, text);

    // The history is live: a new weight moves the new loop in the loaded scene.
    const std::string node = host::nodeNames("polySplitRing").at(0);
    run("setAttr " + node + ".weight 0.7");
    EXPECT_NE(sceneDigest(), before);
}

// Every cut of a saved scene, and bytes overwritten across it, either opens or is refused
// with a line; the sanitizer build checks that nothing reads out of bounds on the way.
TEST_F(SceneFile, DamagedFilesOpenOrAreRefusedWithALine)
{
    MStatus status;
    host::addMesh(host::gridPlane(1.0f, 1.0f, 2, 1), "plane", &status);
    ASSERT_TRUE(status);
    run("setAttr planeShape.pnts[1] -type float3 0 1 0");
    run("polySplitRing planeShape.e[1]");
    ASSERT_TRUE(host::saveScene(path("good.ma")));
    const std::string text = read(path("good.ma"));
    unsigned seed = 7;
    for (std::size_t cut = 0; cut < text.size(); cut += 1 + text.size() / 97) {
        std::string damaged = text.substr(0, cut);
        if (cut % 2) {
            damaged = text;
            for (int i = 0; i < 4; ++i) {
                seed = seed * 1103515245u + 12345u;
                const std::string bytes = "\";[]:.\n -9x";
                damaged[(seed >> 8) % damaged.size()] = bytes[(seed >> 20) % bytes.size()];
            }
        }
        std::string error;
        if (!host::openScene(write("cut.ma", damaged), &error)) {
            EXPECT_NE(error.find("cut.ma:"), std::string::npos) << error;
        }
    }
}

TEST_F(SceneFile, MalformedFilesNameTheirLineAndLeaveTheSceneAsItWas)
{
    MStatus status;
    host::addMesh(host::gridPlane(1.0f, 1.0f, 1, 1), "keeper", &status);
    ASSERT_TRUE(status);
    const std::vector<std::string> scene = sceneDigest();
    const std::string head = "//Maya ASCII 2025 scene\nrequires maya \"2025\";\ncreateNode transform -n \"t\";\n";
    const std::string mesh = "createNode mesh -n \"s\" -p \"t\";\n"
                             "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
                             "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n";
    const struct {
        std::string text, message;
    } cases[] = {
        {head + "\tsetAttr \".t\" -type \"double3\" 1 2\n", "bad.ma:4: the file ends inside this statement"},
        {head + "\tsetAttr \".noSuch\" 1;\n", "bad.ma:4: the node type 'transform' has no attribute 'noSuch'"},
        {head + "\tsetAttr \".t\" -type \"double3\" 1 two 3;\n", "bad.ma:4: 'two' is not a value for '.t'"},
        {head + "\tsetAttr \".t\" -type \"double3\" 1 2;\n", "bad.ma:4: '.t' takes 3 value(s), got 2"},
        {head + "connectAttr \"ghost.t\" \"t.t\";\n", "bad.ma:4: no node named 'ghost' was made before this line"},
        {"requires -nodeType \"tqThing\" \"thingPlugin\" \"1.0\";\ncreateNode tqThing -n \"x\";\n",
         "bad.ma:2: unknown node type 'tqThing': the file requires it of the plug-in 'thingPlugin', which is not loaded"},
        {head + "createNode transform -n \"t\";\n", "bad.ma:4: a node named 't' exists already (line 3)"},
        {head + "\tsetAttr \".v\" \"no;\n", "bad.ma:4: a string is not closed"},
        {head + "polyCube -n \"c\";\n", "bad.ma:4: the command 'polyCube' is not part of"},
        {head + mesh + "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 7;\n", "bad.ma:7: face 0 names edge 7 of 3"},
        {head + mesh + "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 -2 2;\n",
         "bad.ma:7: the edges of face 0 do not form a loop"},
        {head + mesh + "\tsetAttr -s 2 \".vt[9:10]\" 0 0 0 1 1 1;\n", "bad.ma:7: '.vt[9:10]': the vertices before 9"},
    };
    for (const auto& c : cases) {
        std::string error;
        EXPECT_FALSE(host::openScene(write("bad.ma", c.text), &error)) << c.text;
        EXPECT_NE(error.find(c.message), std::string::npos) << "got: " << error << "\nwanted: " << c.message;
        EXPECT_TRUE(host::logContains(host::LogLevel::kError, c.message));
        EXPECT_EQ(sceneDigest(), scene) << c.text;
    }
    std::string error;
    EXPECT_FALSE(host::openScene(path("absent.ma"), &error));
    EXPECT_NE(error.find("absent.ma: the file cannot be read"), std::string::npos) << error;
}

TEST_F(SceneFile, TheFileCommandSavesUnderTheSceneNameAndOpens)
{
    MStatus status;
    host::addMesh(host::gridPlane(1.0f, 1.0f, 2, 2), "plane", &status);
    ASSERT_TRUE(status);
    const std::vector<std::string> saved = sceneDigest();
    EXPECT_FALSE(host::runCommand("file -save").status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "file: the scene has no name"));
    run("file -rename \"" + path("named.ma") + "\"");
    EXPECT_FALSE(host::runCommand("file -save -type \"mayaBinary\"").status);
    run("file -save -type \"mayaAscii\"");
    run("createNode transform -n extra");
    // Opening after a change in the same call would leave an undo entry for a lost scene.
    EXPECT_FALSE(host::runCommand("createNode transform -n more; file -f -open \"" + path("named.ma") + "\"").status);
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "as a call of their own"));
    run("file -f -open \"" + path("named.ma") + "\"");
    EXPECT_EQ(sceneDigest(), saved);
    EXPECT_EQ(host::runCommand("file -q -sn").text, path("named.ma"));
    EXPECT_EQ(host::undoQueueLength(), 0u);
}

} // namespace
} // namespace hosttest
