// The session file and the scan as tqsarn checks them before anything plays: every fault
// named with its file, line, step and field, and its exit code; and `tqsarn info`.

#include "jsonSchema.h"
#include "scanInfo.h"
#include "session.h"
#include "tqsarnTest.h"

#include <host/harness.h>

namespace tqsarntest {
namespace {

class SessionFaults : public TqsarnTest {
protected:
    // Plays a session text on the sphere and expects it refused before it plays.
    Outcome refused(const std::string& text)
    {
        const std::string session = write("session.json", text);
        return tqsarn({"play", session, "--scan", writeSphere(), "--out", path("out")});
    }
};

TEST_F(SessionFaults, MalformedJsonNamesTheLine)
{
    const Outcome run = refused("{\n  \"version\": 1,\n  \"steps\": [\n    {\"kind\": \"undo\",}\n  ]\n}\n");
    EXPECT_EQ(run.code, tqsarn::kExitBadSession);
    EXPECT_TRUE(has(run.err, "session.json:4: not valid JSON"));
    EXPECT_TRUE(run.out.empty());
}

TEST_F(SessionFaults, SchemaFaultsNameStepFieldAndLine)
{
    struct Case {
        const char* steps;
        const char* message;
    };
    const Case cases[] = {
        {"{\"kind\": \"undo\"},\n    {\"kind\": \"press\", \"button\": \"side\", \"at\": {\"pixel\": [1, 2]}}",
         ":5: step 2 (press), field button: is \"side\"; it must be one of \"left\", \"middle\", \"right\""},
        {"{\"kind\": \"press\", \"button\": \"left\"}", ":4: step 1 (press), field at: is missing"},
        {"{\"kind\": \"wiggle\"}", ":4: step 1 (wiggle), field kind: is \"wiggle\"; it must be one of \"camera\""},
        {"{\"kind\": \"drag\",\n     \"points\": [{\"pixel\": [1, 2]},\n                {\"pixel\": [1]}]}",
         ":6: step 1 (drag), field points[1].pixel: needs at least 2 items, not 1"},
        {"{\"kind\": \"drag\", \"points\": [{\"pixel\": [1, 2], \"world\": [0, 0, 0]}]}",
         "step 1 (drag), field points[0]: takes at most 1 field, not 2"},
        {"{\"kind\": \"undo\", \"count\": 0}", ":4: step 1 (undo), field count: must be at least 1, not 0"},
        {"{\"kind\": \"frame\", \"name\": \"../escape\"}", "step 1 (frame), field name: is \"../escape\"; it must match"},
        {"{\"kind\": \"key\", \"key\": \"enter\", \"shift\": true}",
         "step 1 (key), field shift: is not a field here (fields: comment, key)"},
        {"{\"kind\": \"camera\", \"position\": [0, 0, 5], \"target\": [0, 0, 0], \"fov\": 180}",
         "step 1 (camera), field fov: must be below 180, not 180"},
    };
    for (const Case& c : cases) {
        const Outcome run = refused(std::string("{\n  \"version\": 1,\n  \"steps\": [\n    ") + c.steps + "\n  ]\n}\n");
        EXPECT_EQ(run.code, tqsarn::kExitBadSession) << c.steps;
        EXPECT_TRUE(has(run.err, c.message)) << c.steps;
    }
    const Outcome top = refused("{\n  \"version\": 2,\n  \"steps\": []\n}");
    EXPECT_TRUE(has(top.err, "session.json:2: field version: must be 1, not 2"));
    EXPECT_EQ(refused("[]").code, tqsarn::kExitBadSession);
}

TEST_F(SessionFaults, UsageAndUnreadableFiles)
{
    EXPECT_EQ(tqsarn({}).code, tqsarn::kExitUsage);
    EXPECT_EQ(tqsarn({"play"}).code, tqsarn::kExitUsage);
    EXPECT_EQ(tqsarn({"replay", "x.json"}).code, tqsarn::kExitUsage);
    const Outcome missing = tqsarn({"play", path("nowhere.json")});
    EXPECT_EQ(missing.code, tqsarn::kExitBadSession);
    EXPECT_TRUE(has(missing.err, "nowhere.json: cannot read the session file"));
}

// The schema file is what the program checks against: it is built in, it uses only rules
// the checker knows, and the checker refuses one it does not know rather than ignore it.
TEST(SessionSchema, ProgramChecksAgainstTheSchemaFile)
{
    std::ifstream in(TQSARN_SCHEMA_FILE);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(nlohmann::json::parse(text.str()), nlohmann::json::parse(tqsarn::sessionSchemaText()));

    tqsarn::JsonSchema checker;
    std::string error;
    EXPECT_TRUE(checker.load(nlohmann::json::parse(text.str()), &error)) << error;
    EXPECT_FALSE(checker.load({{"type", "object"}, {"patternProperties", nlohmann::json::object()}}, &error));
    EXPECT_TRUE(has(error, "patternProperties"));
    EXPECT_FALSE(checker.load({{"$ref", "#/$defs/nothing"}}, &error));
}

TEST(SessionSchema, ExamplesConformAndNameRealScans)
{
    int examples = 0;
    for (const auto& entry : fs::directory_iterator(TQSARN_EXAMPLES_DIR)) {
        if (entry.path().extension() != ".json")
            continue;
        ++examples;
        tqsarn::Session session;
        std::string error;
        EXPECT_TRUE(tqsarn::loadSession(entry.path().string(), session, &error)) << error;
        ASSERT_TRUE(session.document.contains("scan")) << entry.path();
        EXPECT_TRUE(fs::exists(fs::path(TQSARN_SCAN_DIR) / session.document["scan"].get<std::string>()))
            << entry.path() << " names a scan that scripts/scans does not fetch";
    }
    EXPECT_GE(examples, 1);
}

TEST(SessionSchema, ReadmeExampleConforms)
{
    std::ifstream in(TQSARN_README);
    std::stringstream text;
    text << in.rdbuf();
    const std::string readme = text.str();
    const std::size_t start = readme.find("```json\n");
    ASSERT_NE(start, std::string::npos);
    const std::size_t end = readme.find("```", start + 8);
    tqsarn::Session session;
    std::string error;
    EXPECT_TRUE(tqsarn::parseSession(readme.substr(start + 8, end - start - 8), "README.md", session, &error)) << error;
    EXPECT_EQ(session.steps.size(), 9u);
}

// ---- tqsarn info ----------------------------------------------------------------------------

class ScanInfoTest : public TqsarnTest {};

TEST_F(ScanInfoTest, ClosedScanHasNoHolesAndNoWarning)
{
    const Outcome run = tqsarn({"info", writeSphere()});
    EXPECT_EQ(run.code, tqsarn::kExitOk) << run.err;
    // 24 x 16 faces: two fans of 24 triangles and 14 bands of 24 quads.
    EXPECT_TRUE(has(run.out, "triangles: 720\n"));
    EXPECT_TRUE(has(run.out, "vertices: 362\n"));
    EXPECT_TRUE(has(run.out, "bounds: min -1 -1 -1, max 1 1 1"));
    EXPECT_TRUE(has(run.out, "non-manifold edges: 0\n"));
    EXPECT_TRUE(has(run.out, "holes: 0 (0 boundary edges)\n"));
    EXPECT_TRUE(has(run.out, "heavy-source warning: none (384 polygons, the warning starts above 500000)"));
}

TEST_F(ScanInfoTest, CountsHolesAndNonManifoldEdges)
{
    ASSERT_TRUE(host::writeMeshFile(path("plane.obj"), {host::gridPlane(2.0f, 2.0f, 3, 3)}));
    EXPECT_TRUE(has(tqsarn({"info", path("plane.obj")}).out, "holes: 1 (12 boundary edges)"));
    // Three triangles on one edge (a fin), and an open quad strip beside them.
    const std::string fin = write("fin.off", "OFF\n5 3 0\n0 0 0\n1 0 0\n0 1 0\n0 -1 0\n0 0 1\n"
                                             "3 0 1 2\n3 1 0 3\n3 0 1 4\n");
    const Outcome run = tqsarn({"info", fin});
    EXPECT_EQ(run.code, tqsarn::kExitOk);
    EXPECT_TRUE(has(run.out, "non-manifold edges: 1\n"));
}

TEST_F(ScanInfoTest, HeavySourceGetsTheToolsWarning)
{
    host::MeshArrays heavy;
    heavy.points = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    heavy.counts.assign(500001, 3);
    heavy.connects.assign(3 * 500001, 0);
    for (std::size_t f = 0; f < heavy.counts.size(); ++f)
        heavy.connects[3 * f + 1] = 1, heavy.connects[3 * f + 2] = 2;
    EXPECT_EQ(tqsarn::scanInfo(heavy).heavyWarning,
              "The source mesh density is high (500001 polys) you may decimate and/or split then import the mesh "
              "as a reference for a better performance.");
    heavy.counts.pop_back();
    heavy.connects.resize(3 * 500000);
    EXPECT_EQ(tqsarn::scanInfo(heavy).heavyWarning, "");
}

TEST_F(ScanInfoTest, BadScansAreRefused)
{
    const Outcome missing = tqsarn({"info", path("none.obj")});
    EXPECT_EQ(missing.code, tqsarn::kExitBadScan);
    EXPECT_TRUE(has(missing.err, "none.obj does not exist"));
    const Outcome garbage = tqsarn({"info", write("garbage.ply", "this is not a mesh\n")});
    EXPECT_EQ(garbage.code, tqsarn::kExitBadScan);
    EXPECT_TRUE(has(garbage.err, "cannot read the scan"));
}

} // namespace
} // namespace tqsarntest
