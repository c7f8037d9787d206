// The fuzz campaign as a program: `hostFuzz [--target all|commands|sequences|meshfiles|gestures]
// [--seconds S] [--seed N] [--max-inputs N] [--first N] [--slow S] [--keep-inputs] [--out DIR]` runs
// each target for its share of the seconds and prints its inputs (sequences), steps and
// findings; an input is remade from the seed and its number (--first N --max-inputs 1
// --keep-inputs saves input N). `hostFuzz --replay FILE...` runs saved inputs. The exit
// status is 1 when anything was found.

#include "fuzzTargets.h"
#include "gestureTarget.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    fuzz::addGestureTarget();
    std::string which = "all", out = "fuzz-findings";
    double seconds = 60.0;
    double slow = fuzz::Budget().slowSeconds;
    std::uint64_t seed = 1, maxInputs = ~std::uint64_t(0);
    std::uint64_t first = 0;
    bool keep = false;
    std::vector<std::string> replay;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto next = [&]() -> std::string {
            if (i + 1 >= argc) {
                std::cerr << arg << " needs a value\n";
                std::exit(2);
            }
            return argv[++i];
        };
        if (arg == "--target")
            which = next();
        else if (arg == "--seconds")
            seconds = std::stod(next());
        else if (arg == "--seed")
            seed = std::stoull(next());
        else if (arg == "--max-inputs")
            maxInputs = std::stoull(next());
        else if (arg == "--slow")
            slow = std::stod(next());
        else if (arg == "--first")
            first = std::stoull(next());
        else if (arg == "--keep-inputs")
            keep = true;
        else if (arg == "--out")
            out = next();
        else if (arg == "--replay")
            while (i + 1 < argc)
                replay.push_back(argv[++i]);
        else {
            std::cerr << "unknown argument " << arg << "\n";
            return 2;
        }
    }
    std::uint64_t findings = 0;
    if (!replay.empty()) {
        for (const std::string& file : replay) {
            auto target = fuzz::targetFor(file, out);
            if (!target) {
                std::cerr << file << ": no target for this extension\n";
                return 2;
            }
            std::uint64_t steps = 0;
            const std::string problem = target->run(fuzz::readInput(file), steps);
            std::cout << file << ": " << (problem.empty() ? "clean" : problem) << "\n";
            findings += problem.empty() ? 0 : 1;
        }
        return findings ? 1 : 0;
    }
    std::vector<std::string> targets = fuzz::targetNames();
    if (which != "all")
        targets = {which};
    fuzz::Budget budget;
    budget.seconds = seconds / double(targets.size());
    budget.maxInputs = maxInputs;
    budget.first = first;
    budget.keepInputs = keep;
    budget.slowSeconds = slow;
    for (const std::string& name : targets) {
        auto target = fuzz::makeTarget(name, out);
        if (!target) {
            std::cerr << "unknown target " << name << "\n";
            return 2;
        }
        const fuzz::Stats stats = fuzz::runCampaign(*target, seed, budget, out, std::cout);
        std::cout << name << ": " << stats.inputs << " sequences, " << stats.steps << " steps, " << stats.findings
                  << " findings (seed " << seed << ", " << budget.seconds << " s)" << std::endl;
        findings += stats.findings;
    }
    return findings ? 1 : 0;
}
