#pragma once
// The barrier around every entry point the host calls (doIt, undoIt, redoIt, compute, the
// event handlers): code inside may throw, nothing crosses into the host. An exception becomes
// one error line naming the module and the entry point, and the entry point fails.

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <exception>

namespace tq {

namespace detail {

inline void reportEscapedException(const char* module, const char* entryPoint, const char* what) noexcept
{
    try {
        MString message(entryPoint);
        message += ": ";
        message += what;
        MStatus(MStatus::kFailure).pAPIerror(module, 0, message.asChar());
    } catch (...) {
        // Nothing more can be said; the failed status still tells the host.
    }
}

} // namespace detail

template <class Body>
MStatus guardEntryPoint(const char* module, const char* entryPoint, Body&& body) noexcept
{
    try {
        return body();
    } catch (const std::exception& error) {
        detail::reportEscapedException(module, entryPoint, error.what());
    } catch (...) {
        detail::reportEscapedException(module, entryPoint, "unknown exception");
    }
    return MStatus::kFailure;
}

} // namespace tq
