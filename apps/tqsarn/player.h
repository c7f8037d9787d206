#pragma once
// tqsarn's commands: `play` replays a session on a scan through the real plug-in and writes
// the retopo mesh, frames and a report; `info` describes a scan. Both report bad input with
// a message and an exit code, and never let an exception out.

#include <iosfwd>
#include <string>
#include <vector>

namespace tqsarn {

enum ExitCode {
    kExitOk = 0,
    kExitStepFailed = 1,   // the session played to its end, but some step failed
    kExitUsage = 2,        // the command line is wrong
    kExitBadSession = 3,   // the session file is unreadable, not JSON, or breaks the schema
    kExitBadScan = 4,      // the scan is missing, unreadable, empty or not manifold
    kExitMissedPoint = 5,  // a world point of a step does not lie on the visible scan
    kExitHostFailure = 6,  // the plug-in or the scene could not be set up
};

struct PlayOptions {
    std::string sessionPath;
    std::string scanPath; // overrides the session's scan when not empty
    std::string outDir = "tqsarn-out";
    std::string pluginPath; // the tqSarn module; empty: TQSARN_PLUGIN, else the one built with this program
    std::vector<std::string> extraPlugins; // loaded after tqSarn, in order
    std::string contextCommand = "tqSarnContext";
    std::string scenePath; // not empty: the scene is saved there as a .ma file at the end
    bool progress = false; // a progress line on `err` for sessions longer than a second
};

int play(const PlayOptions& options, std::ostream& out, std::ostream& err);
int info(const std::string& scanPath, std::ostream& out, std::ostream& err);

// The command line without the program name. `terminal`: err is a terminal.
int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, bool terminal = false);

} // namespace tqsarn
