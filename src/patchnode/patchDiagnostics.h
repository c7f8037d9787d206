#pragma once
// How the patch module reports: failed host calls go to the log with the module name and
// the line, as the devkit's pAPIerror writes them; and every entry point the host calls
// (compute, doIt, undoIt, redoIt) runs its body inside guardEntryPoint, so that nothing
// thrown below it crosses into the host.

#include "kernel/entryBarrier.h"
#include "store/logModules.h"

#include <maya/MStatus.h>

#include <utility>

namespace tq {

// The module name of every log line this subsystem writes.
constexpr const char* kPatchModule = logModule::kPatchNode;

// Logs `status` with the module name and `line` when it failed; returns it unchanged.
MStatus logIfFailed(const MStatus& status, int line);

// Runs `body` (returning MStatus) inside the plug-in's entry barrier: an exception becomes
// an error line naming this module and `entryPoint` ("tqPatchCmd::doIt"), and MS::kFailure.
template <class Body>
MStatus guardEntryPoint(const char* entryPoint, Body&& body) noexcept
{
    return guardEntryPoint(kPatchModule, entryPoint, std::forward<Body>(body));
}

} // namespace tq
