// The gesture fuzz target in the suite: its kept reproducers (sessions that once broke the
// tool, fixed since) replay clean; the checks catch a broken scene and name the step; what
// the generator writes is a session that tqsarn plays. The campaign itself is the ctest
// gestureFuzz.campaign (make fuzz FUZZ_TARGET=gestures for a long one).

#include "gestureTarget.h"
#include "player.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class GestureFuzzTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fuzz::addGestureTarget();
        target = fuzz::makeTarget("gestures", "");
        ASSERT_TRUE(target);
        work = fs::temp_directory_path() / ("gestureFuzzTests-" + std::to_string(::getpid()));
        fs::create_directories(work);
    }
    void TearDown() override
    {
        std::error_code ec;
        fs::remove_all(work, ec);
    }

    // A session on the elephant: a sarn from two strokes, then the given steps.
    static std::string sarnThen(const json& more)
    {
        json steps = json::array();
        steps.push_back({{"kind", "camera"}, {"position", {0, 0, 2.2}}, {"target", {0, 0, 0}}, {"fov", 40}});
        for (int x : {280, 360}) {
            json points = json::array();
            for (int y = 180; y <= 300; y += 20)
                points.push_back({{"pixel", {x, y}}});
            steps.push_back({{"kind", "press"}, {"button", "left"}, {"at", points[0]}});
            steps.push_back({{"kind", "drag"}, {"points", points}});
            steps.push_back({{"kind", "release"}, {"at", points.back()}});
        }
        steps.push_back({{"kind", "key"}, {"key", "enter"}});
        for (const json& s : more)
            steps.push_back(s);
        return json{{"version", 1}, {"scan", "refined_elephant.off"}, {"view", {{"width", 640}, {"height", 480}}}, {"steps", steps}}
            .dump(1);
    }

    // Through the target that reports every problem, known ones too.
    std::string run(const std::string& text)
    {
        if (!strict)
            strict = fuzz::makeStrictGestureTarget();
        std::uint64_t steps = 0;
        return strict->run(fuzz::Input{"json", text}, steps);
    }

    std::unique_ptr<fuzz::Target> target, strict;
    fs::path work;
};

TEST_F(GestureFuzzTest, EveryKeptReproducerReplaysClean)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(GESTURE_REPRODUCERS))
        if (entry.path().extension() == ".json")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    if (files.empty())
        GTEST_SKIP() << "no reproducers kept";
    for (const fs::path& file : files) {
        std::uint64_t steps = 0;
        EXPECT_EQ(target->run(fuzz::readInput(file), steps), "") << file;
        EXPECT_GT(steps, 0u) << file;
    }
}

TEST_F(GestureFuzzTest, TheChecksCatchABrokenSceneAndNameTheStep)
{
    ASSERT_EQ(run(sarnThen(json::array())), "");
    // Vertex numbers past the retopo mesh, as a store that lost track of its mesh holds.
    const std::string outside =
        run(sarnThen({{{"kind", "command"}, {"text", "setAttr tqSarn.playervtx -type Int32Array 2 0 100000"}}}));
    EXPECT_NE(outside.find("step 9 (command): tqSarn.playervtx[1] is 100000"), std::string::npos) << outside;
    EXPECT_NE(outside.find("replays on a fresh scene"), std::string::npos) << outside;
    // A change that no undo takes back (a new camera): the scene after undo-all differs.
    const std::string kept =
        run(sarnThen({{{"kind", "camera"}, {"position", {0, 1, 2.2}}, {"target", {0, 0, 0}}, {"fov", 30}}}));
    EXPECT_NE(kept.find("after undo-all the scene differs"), std::string::npos) << kept;
}

TEST_F(GestureFuzzTest, ACampaignSavesItsInputsAsSessionsThatTqsarnPlays)
{
    fuzz::Budget budget;
    budget.maxInputs = 6;
    budget.keepInputs = true;
    std::ostringstream report;
    const fuzz::Stats stats = fuzz::runCampaign(*target, 11, budget, work / "found", report);
    EXPECT_EQ(stats.findings, 0u) << report.str();
    EXPECT_EQ(stats.inputs, budget.maxInputs);
    EXPECT_GE(stats.steps, 10u * budget.maxInputs);
    int played = 0;
    for (const auto& entry : fs::directory_iterator(work / "found")) {
        tqsarn::PlayOptions options;
        options.sessionPath = entry.path().string();
        options.outDir = (work / ("out-" + entry.path().stem().string())).string();
        std::ostringstream out, err;
        const int code = tqsarn::play(options, out, err);
        // Played to the end; some steps may fail (refusals, an undo with nothing to undo).
        EXPECT_TRUE(code == tqsarn::kExitOk || code == tqsarn::kExitStepFailed) << entry.path() << "\n" << err.str();
        ++played;
    }
    EXPECT_EQ(played, int(budget.maxInputs));
}

} // namespace
