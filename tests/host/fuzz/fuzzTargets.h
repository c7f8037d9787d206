#pragma once
// Fuzz targets for the headless host: seeded, bounded generators of hostile input and the
// checks each input must pass. There is no coverage feedback (GCC has no libFuzzer): each
// generator mutates a corpus of well-formed inputs, so most inputs are nearly right, which
// is where robustness faults hide.
//
//   commands    one call of command text (grammar-built statements, then mutated: special
//               characters, numbers at the integer limits, deep nesting, wildcard storms).
//               A failure must log a line; undoing everything must restore the scene.
//   sequences   20 to 60 calls of command text with undo and redo among them. Every failure
//               logs a line; undo-all restores the starting scene, also after redo-all.
//   meshfiles   a mesh file of every format the host reads, damaged (bytes, lengths, counts,
//               truncation). A refusal names the file; what is read is a valid mesh that
//               the scene takes.
//
// An input is one text: command text, a sequence file (one call per line, "\n" and "\\"
// escaped), or the bytes of a mesh file; its extension (.mel, .seq, or the mesh format)
// names its target, so a saved input replays on its own. run() returns what went wrong, or
// an empty string; a crash or a hang is seen by the campaign around it.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace fuzz {

struct Input {
    std::string extension; // without the dot
    std::string data;
};

class Target {
public:
    virtual ~Target() = default;
    virtual const char* name() const = 0;
    virtual Input generate(std::mt19937_64& random) = 0;
    // Runs one input; `steps` counts the calls or reads it made. Empty when all is well.
    virtual std::string run(const Input& input, std::uint64_t& steps) = 0;
};

// "commands", "sequences", "meshfiles" or an added target; `work` is a folder the target may
// write into.
std::unique_ptr<Target> makeTarget(const std::string& name, const std::filesystem::path& work);

// Targets from outside the host (the plug-in's gesture sessions) join the driver here: the
// name that --target takes, the extension of their saved inputs, and their maker.
using TargetMaker = std::unique_ptr<Target> (*)(const std::filesystem::path& work);
void addTarget(const std::string& name, const std::string& extension, TargetMaker make);
// The host's targets, then the added ones in the order they were added.
std::vector<std::string> targetNames();
// The target that runs a saved input, by its extension; null for an unknown one.
std::unique_ptr<Target> targetFor(const std::filesystem::path& file, const std::filesystem::path& work);
Input readInput(const std::filesystem::path& file);

struct Budget {
    double seconds = 60.0;
    std::uint64_t maxInputs = ~std::uint64_t(0);
    double slowSeconds = 5.0;  // an input slower than this is a finding
    double hangSeconds = 60.0; // past this the campaign stops the process, input saved
    std::uint64_t first = 0;   // the number of the first input (inputs are remade by number)
    bool keepInputs = false;   // save every input, not only the findings
};

struct Stats {
    std::uint64_t inputs = 0;
    std::uint64_t steps = 0;
    std::uint64_t findings = 0;
};

// Runs inputs from `seed` until the budget is spent. Each finding is saved in `out` as
// "<target>-<seed>-<n>.<ext>" and reported on `report`; the input being run is kept in
// `out` as "pending-<target>.<ext>" until it is done, so a crash leaves it behind.
Stats runCampaign(Target& target, std::uint64_t seed, const Budget& budget, const std::filesystem::path& out,
                  std::ostream& report);

} // namespace fuzz
