// The fuzz targets inside the test suite: every reproducer kept in reproducers/ (inputs that
// once crashed, hung or misbehaved, fixed since) must now run clean, and a short campaign
// of each target must find nothing. The long campaigns run under the sanitizers (ctest label
// "fuzz") and by `make fuzz`.

#include "fuzzTargets.h"

#include <host/log.h>

#include <gtest/gtest.h>

#include <sstream>
#include <unistd.h>

#ifndef FUZZ_REPRODUCERS
#error "FUZZ_REPRODUCERS must name the folder of saved inputs"
#endif

namespace {

namespace fs = std::filesystem;

class FuzzTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fWork = fs::temp_directory_path() / ("hostFuzzTests-" + std::to_string(::getpid()));
        fs::create_directories(fWork);
    }
    void TearDown() override
    {
        std::error_code ec;
        fs::remove_all(fWork, ec);
    }
    fs::path fWork;
};

TEST_F(FuzzTest, EveryKeptReproducerRunsClean)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(FUZZ_REPRODUCERS))
        if (entry.is_regular_file() && entry.path().extension() != ".md")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    ASSERT_FALSE(files.empty());
    for (const fs::path& file : files) {
        auto target = fuzz::targetFor(file, fWork);
        ASSERT_TRUE(target) << file << " has no target";
        std::uint64_t steps = 0;
        EXPECT_EQ(target->run(fuzz::readInput(file), steps), "") << file;
        EXPECT_GT(steps, 0u) << file;
    }
}

TEST_F(FuzzTest, AShortCampaignOfEachTargetFindsNothing)
{
    fuzz::Budget budget;
    budget.seconds = 60.0;
    budget.maxInputs = 40;
    for (const char* name : {"commands", "sequences", "meshfiles"}) {
        auto target = fuzz::makeTarget(name, fWork);
        ASSERT_TRUE(target);
        std::ostringstream report;
        const fuzz::Stats stats = fuzz::runCampaign(*target, 7, budget, fWork / "findings", report);
        EXPECT_EQ(stats.findings, 0u) << report.str();
        EXPECT_EQ(stats.inputs, budget.maxInputs) << name;
    }
}

} // namespace
