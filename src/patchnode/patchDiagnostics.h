#pragma once
// How the patch module reports: failed host calls go to the log with the module name and
// the line, as the devkit's pAPIerror writes them; and every entry point the host calls
// (compute, doIt, undoIt, redoIt) runs its body inside guardEntryPoint, so that nothing
// thrown below it crosses into the host.

#include <maya/MStatus.h>

#include <exception>

namespace tq {

// The module name of every log line this subsystem writes.
constexpr const char* kPatchModule = "tqPatchNode";

// Logs `status` with the module name and `line` when it failed; returns it unchanged.
MStatus logIfFailed(const MStatus& status, int line);

// Writes the error line for an exception that reached `entryPoint` ("tqPatchCmd::doIt").
void reportEscapedException(const char* entryPoint, const char* what) noexcept;

// Runs `body` (returning MStatus); an exception becomes an error line naming `entryPoint`
// and MS::kFailure.
template <class Body>
MStatus guardEntryPoint(const char* entryPoint, Body&& body) noexcept
{
    try {
        return body();
    } catch (const std::exception& e) {
        reportEscapedException(entryPoint, e.what());
    } catch (...) {
        reportEscapedException(entryPoint, "unknown exception");
    }
    return MS::kFailure;
}

} // namespace tq
