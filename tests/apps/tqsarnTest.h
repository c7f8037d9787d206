#pragma once
// Shared pieces of the tqsarn suites: a fresh folder per test, files written into it, the
// program's command line run in process with its output and exit code, and a small scan.

#include "player.h"

#include <host/meshFiles.h>
#include <host/meshGenerators.h>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tqsarntest {

namespace fs = std::filesystem;

// Whether the text holds the part, showing the text when it does not.
inline ::testing::AssertionResult has(const std::string& text, const std::string& part)
{
    if (text.find(part) != std::string::npos)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "\"" << part << "\" is not in:\n" << text;
}

struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

class TqsarnTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        fDir = fs::temp_directory_path() /
               ("tqsarnTests-" + std::to_string(::getpid()) + "-" + info->test_suite_name() + "-" + info->name());
        fs::remove_all(fDir);
        fs::create_directories(fDir);
    }
    void TearDown() override
    {
        if (!HasFailure())
            fs::remove_all(fDir);
    }

    std::string path(const std::string& name) const { return (fDir / name).string(); }

    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(fDir / name, std::ios::binary) << text;
        return path(name);
    }

    // A unit sphere of 24 x 16 faces, centred at the origin: the scan of most tests.
    std::string writeSphere(const std::string& name = "sphere.obj") const
    {
        EXPECT_TRUE(host::writeMeshFile(path(name), {host::uvSphere(1.0f, 24, 16)}));
        return path(name);
    }

    static Outcome tqsarn(const std::vector<std::string>& args)
    {
        std::ostringstream out, err;
        Outcome run;
        run.code = tqsarn::run(args, out, err);
        run.out = out.str();
        run.err = err.str();
        return run;
    }

    nlohmann::json report(const std::string& outDir = "out") const
    {
        std::ifstream in(fDir / outDir / "report.json");
        return nlohmann::json::parse(in, nullptr, false);
    }

    fs::path fDir;
};

} // namespace tqsarntest
